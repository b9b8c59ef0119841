#include "app/fundgang.h"

#include "measure/messplatz.h"

#include <utility>

namespace tarvel {

namespace {

/// Position in the race list of the race that most of the wings were of that the model learnt from.
constexpr int GelernteRasse = 0;
/// Mean of the expected errors, in pixels at 2400 dpi, above which a wing is unlike those.
constexpr float GroßerFehler = 3;

} // namespace

std::optional<int> passendeAuflösung(const Arbeitsplatz& arbeitsplatz, const Flügelfunde& funde) {
    return arbeitsplatz.untersuchung().angaben().Tiere == Geschlecht::Drohnen
               ? std::nullopt
               : funde.passendeAuflösung();
}

Fundgang::Fundgang(const Arbeitsplatz& arbeitsplatz, const Fensterfläche& fläche,
                   Hinweisgeber& hinweise)
    : arbeitsplatz_(arbeitsplatz)
    , fläche_(fläche)
    , hinweise_(hinweise) {
    fläche_.messplatz->beiVorschlag([this](const Flügelfund& fund) { return vorbehalte(&fund); });
}

void Fundgang::sage() {
    const Flügelfunde& funde = fläche_.messplatz->funde();
    if (const auto fehler = funde.modellfehler(); fehler && !std::exchange(modellGemeldet_, true)) {
        hinweise_.zeige(*fehler == Modellfehler::AndereFassung ? Meldung::ErkennungAndereFassung
                                                               : Meldung::ErkennungBeschädigt);
    }
    const int dpi = arbeitsplatz_.messung().aufnahme().dpi;
    if (const auto passend = passendeAuflösung(arbeitsplatz_, funde); passend && *passend != dpi) {
        hinweise_.zeige(
            {Meldung::FlügelauflösungAnders, {QString::number(*passend), QString::number(dpi)}});
    }
}

void Fundgang::folge(const Änderung& änderung) {
    if (änderung.Untersuchung) {
        gesagt_.clear();
    } else if (änderung.Angaben && arbeitsplatz_.messung().punkte().vorgeschlagen()) {
        hinweise_.zeigeSätze(vorbehalte(nullptr));
    }
}

std::vector<Hinweis> Fundgang::vorbehalte(const Flügelfund* fund) {
    const Kolonieangaben& angaben = arbeitsplatz_.untersuchung().angaben();
    std::vector<Hinweis> sätze;
    for (const auto& [gilt, meldung] :
         {std::pair{angaben.Tiere == Geschlecht::Drohnen, Meldung::VorschlagBeiDrohnen},
          {angaben.Rasse != GelernteRasse, Meldung::VorschlagAndereRasse},
          {fund != nullptr && fund->vorschlag.mittlererFehler() > GroßerFehler,
           Meldung::VorschlagUnsicher}}) {
        if (gilt && gesagt_.insert(meldung).second) {
            sätze.emplace_back(meldung);
        }
    }
    return sätze;
}

} // namespace tarvel
