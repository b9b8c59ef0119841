#include "platform/benutzerspeicher.h"

#include "platform/profil.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

bool gültigerName(const QString& name) {
    return !name.isEmpty() && !name.contains(u'/') && !name.contains(u'\\');
}

bool gültigeNamen(const QString& app, const QString& section, const QString& key) {
    return gültigerName(app) && gültigerName(section) && gültigerName(key);
}

// The file is a profile in UTF-8. What has a meaning in one, and '%', stands as in an address:
//
//   [Index]
//   0ptionen\Tabelle="/home/Jürgen/Meine Tabelle.tdb"
//   Grenzlinien\CI%20ArbeitC-="195"

QByteArray name(const QString& section, const QString& key) {
    return section.toUtf8().toPercentEncoding() + '\\' + key.toUtf8().toPercentEncoding();
}

/// Values stay readable: only '"', '%' and what a line cannot hold is spelled.
QByteArray werteform(const QString& wert) {
    QByteArray lesbar;
    for (int c = ' '; c <= 0xFF; ++c) {
        lesbar += c == '"' || c == 0x7F ? QByteArray() : QByteArray(1, static_cast<char>(c));
    }
    return '"' + wert.toUtf8().toPercentEncoding(lesbar) + '"';
}

QString textAus(const QByteArray& form) {
    return QString::fromUtf8(QByteArray::fromPercentEncoding(form));
}

} // namespace

#ifdef Q_OS_WIN
Benutzerspeicher::Benutzerspeicher()
    : pfad_(uR"(HKEY_CURRENT_USER\Software\VB and VBA Program Settings)"_s)
    , istDatei_(false) {}
#else
Benutzerspeicher::Benutzerspeicher()
    : Benutzerspeicher(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                       u"/tarvel/benutzer.ini"_s) {}
#endif

Benutzerspeicher::Benutzerspeicher(QString pfad)
    : pfad_(std::move(pfad)) {}

bool Benutzerspeicher::vorhanden() const {
    return istDatei_
               ? QFileInfo::exists(pfad_)
               : !QSettings(pfad_ + u"\\Index"_s, QSettings::NativeFormat).allKeys().isEmpty();
}

bool Benutzerspeicher::SaveSetting(const QString& app, const QString& section, const QString& key,
                                   const QString& value) {
    if (!gültigeNamen(app, section, key)) {
        return false;
    }
    if (istDatei_) {
        Profil profil(pfad_);
        return profil.setze(app.toUtf8().toPercentEncoding(), name(section, key),
                            werteform(value)) &&
               QDir().mkpath(QFileInfo(pfad_).absolutePath()) && profil.sichere();
    }
    QSettings speicher(pfad_, QSettings::NativeFormat);
    speicher.setValue(app + u'/' + section + u'/' + key, value);
    speicher.sync();
    return speicher.status() == QSettings::NoError;
}

QString Benutzerspeicher::GetSetting(const QString& app, const QString& section, const QString& key,
                                     const QString& vorgabe) const {
    if (!gültigeNamen(app, section, key)) {
        return vorgabe;
    }
    if (istDatei_) {
        const auto form = Profil(pfad_).wert(app.toUtf8().toPercentEncoding(), name(section, key));
        return form ? textAus(*form) : vorgabe;
    }
    const QVariant wert =
        QSettings(pfad_, QSettings::NativeFormat).value(app + u'/' + section + u'/' + key);
    return wert.metaType() == QMetaType::fromType<QString>() ? wert.toString() : vorgabe;
}

} // namespace tarvel
