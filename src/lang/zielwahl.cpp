#include "lang/zielwahl.h"

#include "platform/dialoge.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace tarvel {

QString wähleZiel(const Texte& texte, Dialoge& dialoge, const Zielfrage& frage) {
    const QString gewählt = dialoge.dateiSpeichern(frage.titel, frage.vorschlag, frage.muster);
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
    if (QFileInfo::exists(pfad) &&
        dialoge.frage(
            {.titel = frage.titel,
             .text = texte(Meldung::DateiErsetzenFrage).arg(QDir::toNativeSeparators(pfad)),
             .art = Meldungsart::Ausruf,
             .verwirft = true,
             .ja = texte(Meldung::Ersetzen),
             .nein = texte(Meldung::NichtErsetzen)}) != Antwort::Ja) {
        return {};
    }
    return pfad;
}

} // namespace tarvel
