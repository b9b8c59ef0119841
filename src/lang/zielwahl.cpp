#include "lang/zielwahl.h"

#include "platform/dialoge.h"

#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>

#include <algorithm>

namespace tarvel {

QString wähleZiel(const Texte& texte, Dialoge& dialoge, const Zielfrage& frage) {
    QString gewählt = dialoge.wähleZieldatei(frage.titel, frage.vorschlag, frage.muster);
    // A name may hold a point of its own, such as that of a year and month.
    const bool vollständig =
        std::any_of(frage.endungen.begin(), frage.endungen.end(), [&](const QString& endung) {
            return gewählt.endsWith(endung, Qt::CaseInsensitive);
        });
    if (gewählt.isEmpty() || vollständig) {
        return gewählt;
    }
    // The file chooser asked about the name as it was typed.
    QString pfad = gewählt + frage.endungen.front();
    return darfErsetzen(texte, dialoge, frage.titel, pfad) ? pfad : QString();
}

bool darfErsetzen(const Texte& texte, Dialoge& dialoge, const QString& titel, const QString& pfad) {
    return !QFileInfo::exists(pfad) ||
           dialoge.frage(
               {.titel = titel,
                .text = texte(Meldung::DateiErsetzenFrage).arg(QDir::toNativeSeparators(pfad)),
                .art = Meldungsart::Ausruf,
                .verwirft = true,
                .ja = texte(Meldung::Ersetzen),
                .nein = texte(Meldung::NichtErsetzen)}) == Antwort::Ja;
}

QString alsDateiname(const QString& nummer) {
    QString name = nummer.trimmed();
    for (QChar& zeichen : name) {
        zeichen = zeichen.isLetterOrNumber() || zeichen == u'-' ? zeichen : QChar(u'_');
    }
    return name;
}

QString nichtGeschrieben(const Texte& texte, const QString& pfad, const QString& systemgrund) {
    const QFileInfo datei(pfad);
    const QFileInfo ordner(datei.absolutePath());
    const auto nenne = [&texte](Meldung grund, const QFileInfo& wen) {
        return texte(grund).arg(QDir::toNativeSeparators(wen.absoluteFilePath()));
    };
    constexpr qint64 knapp = 1024 * 1024;
    QString grund = systemgrund;
    if (!ordner.isDir()) {
        grund = nenne(Meldung::OrdnerFehlt, ordner);
    } else if (datei.isDir()) {
        grund = nenne(Meldung::DateiIstOrdner, datei);
    } else if (datei.exists() && !datei.isFile()) {
        grund = nenne(Meldung::DateiBesondere, datei);
    } else if (datei.exists() && !datei.isWritable()) {
        grund = nenne(Meldung::DateiSchreibgeschützt, datei);
    } else if (!ordner.isWritable()) {
        grund = nenne(Meldung::OrdnerSchreibgeschützt, ordner);
    } else if (const QStorageInfo platz(ordner.absoluteFilePath());
               platz.isValid() && platz.bytesAvailable() < knapp) {
        grund = texte(Meldung::KeinPlatz);
    }
    return texte(Meldung::DateiNichtGeschrieben).arg(QDir::toNativeSeparators(pfad)) + u'\n' +
           grund;
}

} // namespace tarvel
