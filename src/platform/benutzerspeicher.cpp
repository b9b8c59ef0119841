#include "platform/benutzerspeicher.h"

#include <QStandardPaths>
#include <QStringList>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

bool gültigerName(const QString& name) {
    return !name.isEmpty() && !name.contains(u'/') && !name.contains(u'\\');
}

/// Path of a setting in the store; empty when a name is not valid.
QString ort(const QString& app, const QString& section, const QString& key) {
    if (!gültigerName(app) || !gültigerName(section) || !gültigerName(key)) {
        return {};
    }
    return app + u'/' + section + u'/' + key;
}

} // namespace

#ifdef Q_OS_WIN
Benutzerspeicher::Benutzerspeicher()
    : pfad_(uR"(HKEY_CURRENT_USER\Software\VB and VBA Program Settings)"_s)
    , format_(QSettings::NativeFormat) {}
#else
// Paths of files may hold characters that the code page of Index.ini lacks, so this file is not
// written as a Profil.
Benutzerspeicher::Benutzerspeicher()
    : Benutzerspeicher(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                       u"/tarvel/benutzer.ini"_s) {}
#endif

Benutzerspeicher::Benutzerspeicher(QString pfad)
    : pfad_(std::move(pfad))
    , format_(QSettings::IniFormat) {}

bool Benutzerspeicher::SaveSetting(const QString& app, const QString& section, const QString& key,
                                   const QString& value) {
    const QString name = ort(app, section, key);
    if (name.isEmpty()) {
        return false;
    }
    QSettings speicher(pfad_, format_);
    if (speicher.status() != QSettings::NoError || !speicher.isWritable()) {
        return false;
    }
    speicher.setValue(name, value);
    speicher.sync();
    return speicher.status() == QSettings::NoError;
}

QString Benutzerspeicher::GetSetting(const QString& app, const QString& section, const QString& key,
                                     const QString& vorgabe) const {
    const QString name = ort(app, section, key);
    if (name.isEmpty()) {
        return vorgabe;
    }
    const QVariant wert = QSettings(pfad_, format_).value(name);
    return wert.metaType() == QMetaType::fromType<QString>() ? wert.toString() : vorgabe;
}

} // namespace tarvel
