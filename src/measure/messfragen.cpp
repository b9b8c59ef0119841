#include "measure/messfragen.h"

#include "measure/fluegelort.h"

namespace tarvel {

Messfragen::Messfragen(const Texte& texte, Dialoge& dialoge, const Messung& messung,
                       const Messreihe& reihe)
    : texte_(texte)
    , dialoge_(dialoge)
    , messung_(messung)
    , reihe_(reihe) {}

bool Messfragen::gibPunkteAuf(Meldung frage, Meldung ja) const {
    return !messung_.punkte().eigene() ||
           dialoge_.frage({.titel = texte_(ja),
                           .text = texte_(frage),
                           .art = Meldungsart::Frage,
                           .verwirft = true,
                           .ja = texte_(ja),
                           .nein = texte_(Meldung::WeiterMessen)}) == Antwort::Ja;
}

bool Messfragen::gibPunkteAufFürZoom() const {
    return !messung_.punkte().eigene() ||
           dialoge_.frage(
               {.titel = texte_(Text::MenüZoomBeiMessen),
                .text = texte_(Text::ZoomfaktorFrage) + u'\n' + texte_(Text::ZoomfaktorWarnung),
                .art = Meldungsart::Frage,
                .verwirft = true}) == Antwort::Ja;
}

bool Messfragen::verlässtFlügel(Meldung frage, Meldung ja) const {
    if (!messung_.etwasZuVerlieren()) {
        return true;
    }
    if (!messung_.wiederholt()) {
        return gibPunkteAuf(frage, ja);
    }
    return dialoge_.frage(
               {.titel = texte_(Meldung::WiederholungAufgeben),
                .text =
                    texte_(Meldung::WiederholungAufgebenFrage).arg(dreistellig(messung_.nummer())),
                .art = Meldungsart::Frage,
                .verwirft = true,
                .ja = texte_(Meldung::WiederholungAufgeben),
                .nein = texte_(Meldung::WeiterMessen)}) == Antwort::Ja;
}

bool Messfragen::darfÜbernehmen() const {
    const std::optional<int> anderer = liegtAufFlügel(reihe_, messung_.flügel(), messung_.nummer());
    return !anderer ||
           dialoge_.frage(
               {.titel = texte_(Meldung::FlügelNummer).arg(dreistellig(messung_.nummer())),
                .text = texte_(Meldung::FlügelSchonGemessenFrage)
                            .arg(dreistellig(*anderer), dreistellig(messung_.nummer())),
                .art = Meldungsart::Frage,
                .verwirft = true, // the key that takes over shall not answer it
                .ja = texte_(Meldung::TrotzdemÜbernehmen),
                .nein = texte_(Meldung::NichtÜbernehmen)}) == Antwort::Ja;
}

void Messfragen::meldeNichtsZuWiederholen() const {
    dialoge_.meldung(texte_(Text::MessungWiederholen), texte_(Meldung::NichtsZuWiederholen),
                     Meldungsart::Hinweis);
}

} // namespace tarvel
