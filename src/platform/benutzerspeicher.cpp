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

// The file is a profile whose names and values are spelled as QSettings does, in ASCII and UTF-8:
//
//   [Index]
//   0ptionen\Tabelle="/home/Jürgen/Meine Tabelle.tdb"
//   Grenzlinien\CI%20ArbeitC-=195

bool istHexziffer(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

QByteArray namensform(const QString& name) {
    QByteArray form;
    for (const QChar c : name) {
        const char16_t u = c.unicode();
        const bool schlicht = u < 0x80 && (c.isLetterOrNumber() || QStringView(u"_-.").contains(c));
        if (schlicht) {
            form += static_cast<char>(u);
        } else {
            const bool kurz = u <= 0xFF;
            form += (kurz ? "%" : "%U") +
                    QByteArray::number(u, 16).toUpper().rightJustified(kurz ? 2 : 4, '0');
        }
    }
    return form;
}

QByteArray werteform(const QString& wert) {
    QByteArray form = "\"";
    bool nachZahl = false; // a digit would be taken for one of the number before it
    for (const char c : (wert.startsWith(u'@') ? u'@' + wert : wert).toUtf8()) {
        const auto byte = static_cast<uchar>(c);
        if (byte < 0x20 || byte == 0x7F || (nachZahl && istHexziffer(c))) {
            form += "\\x" + QByteArray::number(byte, 16);
            nachZahl = true;
            continue;
        }
        nachZahl = false;
        if (c == '"' || c == '\\') {
            form += '\\';
        }
        form += c;
    }
    return form + '"';
}

/// Reads what werteform() and QSettings write for a text; nullopt for another kind of value.
std::optional<QString> textAus(const QByteArray& form) {
    QString text;
    QByteArray utf8;
    for (qsizetype i = 0; i < form.size(); ++i) {
        if (form[i] != '\\' || i + 1 == form.size()) {
            utf8 += form[i];
            continue;
        }
        constexpr QByteArrayView Kürzel("abfnrtv0");
        constexpr QByteArrayView Zeichen("\a\b\f\n\r\t\v\0", Kürzel.size());
        const char art = form[++i];
        if (art == 'x') {
            qsizetype ende = i + 1;
            while (ende < form.size() && istHexziffer(form[ende])) {
                ++ende;
            }
            text += QString::fromUtf8(utf8) +
                    QChar(form.sliced(i + 1, ende - i - 1).toUShort(nullptr, 16));
            utf8.clear();
            i = ende - 1;
        } else if (const qsizetype stelle = Kürzel.indexOf(art); stelle >= 0) {
            utf8 += Zeichen[stelle];
        } else {
            utf8 += art;
        }
    }
    text += QString::fromUtf8(utf8);
    if (!text.startsWith(u'@')) {
        return text;
    }
    return text.startsWith(u"@@") ? std::optional(text.sliced(1)) : std::nullopt;
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
        return profil.setze(namensform(app), namensform(section) + '\\' + namensform(key),
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
        const auto form =
            Profil(pfad_).wert(namensform(app), namensform(section) + '\\' + namensform(key));
        return (form ? textAus(*form) : std::nullopt).value_or(vorgabe);
    }
    const QVariant wert =
        QSettings(pfad_, QSettings::NativeFormat).value(app + u'/' + section + u'/' + key);
    return wert.metaType() == QMetaType::fromType<QString>() ? wert.toString() : vorgabe;
}

} // namespace tarvel
