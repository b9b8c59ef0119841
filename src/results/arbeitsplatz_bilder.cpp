#include "measure/aufloesung.h"
#include "results/arbeitsplatz.h"

#include <algorithm>
#include <utility>

// Pictures of the workplace, and the resolution that belongs to each.

namespace tarvel {

void Arbeitsplatz::setzeBild(const QString& pfad) {
    führeAus([&]() -> std::optional<Schritt> {
        const bool verloren = messung_.wiederholt() || messung_.punkte().begonnen();
        messung_.setzeBilddatei(pfad);
        // That of the picture before says nothing about the first one of another examination.
        const int bisher = reihe().leer() ? einstellungen_.auflösung : messung_.aufnahme().dpi;
        messung_.setzeAuflösung(bildauflösung().value_or(bisher));
        return verloren ? std::optional(Schritt{Schrittart::Bild}) : std::nullopt;
    });
}

void Arbeitsplatz::setzeAuflösung(int dpi) {
    führeAus([&]() -> std::optional<Schritt> {
        const bool andere = dpi != messung_.aufnahme().dpi;
        messung_.setzeAuflösung(dpi);
        merkeWahl(Schrittart::Auflösung);
        return andere ? std::optional(Schritt{Schrittart::Auflösung}) : std::nullopt;
    });
}

/// Keeps the kind, or the resolution, of the series for the next start.
void Arbeitsplatz::merkeWahl(Schrittart art) {
    if (messung_.wiederholt()) {
        return;
    }
    if (art == Schrittart::Messart) {
        einstellungen_.messart = messung_.messart();
        ini_.schreibe(Einstellung::Betriebsart, static_cast<int>(einstellungen_.messart));
    } else if (art == Schrittart::Auflösung) {
        const int dpi = messung_.aufnahme().dpi;
        if (!messung_.bilddatei().isEmpty()) {
            bildauflösungen_.insert_or_assign(messung_.bilddatei(), dpi);
        }
        if (const int position = scannerposition(dpi); position >= 0) {
            einstellungen_.auflösung = dpi;
            ini_.schreibe(Einstellung::ScannMessung, position);
        }
    }
}

std::optional<int> Arbeitsplatz::bildauflösung() const {
    const QString& bild = messung_.bilddatei();
    if (bild.isEmpty()) {
        return std::nullopt;
    }
    if (const auto gewählt = bildauflösungen_.find(bild); gewählt != bildauflösungen_.end()) {
        return gewählt->second;
    }
    const std::vector<int> flügel = reihe().flügelAufBild(bild, messung_.bild());
    return flügel.empty() ? std::nullopt
                          : std::optional(reihe().messung(flügel.back())->aufnahme.dpi);
}

void Arbeitsplatz::verlegeBild(const GesuchtesBild& bild, const QString& jetzt, QSize größe,
                               bool messung) {
    führeAus([&] {
        // States share series, and shall go on to do so.
        using Reihe = std::shared_ptr<const Messreihe>;
        std::map<Reihe, Reihe> verlegte;
        const auto reihe = [&](const Reihe& alt) {
            Reihe& neu = verlegte[alt];
            if (!neu) {
                Messreihe probe = *alt;
                neu = probe.verlegeBild(bild.pfad, bild.kennung, jetzt, größe)
                          ? std::make_shared<const Messreihe>(probe)
                          : alt;
            }
            return neu;
        };
        const auto stand = [&](Messstand alt) {
            if (messung && alt.bilddatei == bild.pfad && verträglich(alt.bild, bild.kennung)) {
                alt.bilddatei = jetzt;
            }
            if (messung && alt.wiederholung && alt.wiederholung->bilddatei == bild.pfad &&
                verträglich(alt.wiederholung->bild, bild.kennung)) {
                alt.wiederholung->bilddatei = jetzt;
            }
            return alt;
        };
        for (std::vector<Rückschritt>* schritte : {&zurück_, &vor_}) {
            for (Rückschritt& r : *schritte) {
                r.vorher.reihe = reihe(r.vorher.reihe);
                r.vorher.messung = stand(r.vorher.messung);
            }
        }
        const bool angaben = untersuchung_.angabenGeändert();
        const bool messungen = untersuchung_.messungenGeändert();
        untersuchung_.setzeReihe(*reihe(jetzt_.reihe));
        untersuchung_.alsGeändertMerken(angaben, messungen);
        messung_.setzeStand(stand(messung_.stand()));
    });
}

bool Arbeitsplatz::setzeAuflösung(std::span<const int> nummern, int dpi) {
    Messreihe neu = reihe();
    if (!neu.setzeAuflösung(nummern, dpi)) {
        return false;
    }
    führeAus([&]() -> std::optional<Schritt> {
        const auto gemeint = [&](const QString& bild) {
            return !bild.isEmpty() && std::any_of(nummern.begin(), nummern.end(), [&](int nummer) {
                const Flügelmessung* flügel = neu.messung(nummer);
                return flügel != nullptr && flügel->bilddatei == bild;
            });
        };
        Messstand stand = messung_.stand();
        if (gemeint(stand.bilddatei)) {
            stand.aufnahme.dpi = dpi;
        }
        if (stand.wiederholung && gemeint(stand.wiederholung->bilddatei)) {
            stand.wiederholung->aufnahme.dpi = dpi;
        }
        for (const int nummer : nummern) {
            if (const Flügelmessung* flügel = neu.messung(nummer)) {
                bildauflösungen_.erase(flügel->bilddatei); // what the wings say holds from now on
            }
        }
        messung_.setzeStand(stand);
        untersuchung_.setzeReihe(neu);
        return Schritt{Schrittart::Flügelauflösung};
    });
    return true;
}

} // namespace tarvel
