#include "measure/koordinatenreihe.h"

#include <algorithm>
#include <cmath>

namespace tarvel {

QString text(const Flügelmangel& mangel, const Texte& texte) {
    if (!mangel.fehler) {
        return texte(Meldung::PunkteFehlen);
    }
    return texte(*mangel.fehler == Rechenfehler::WurzelNegativ ? Meldung::WurzelNegativ
                                                               : Meldung::PunkteFallenZusammen);
}

Koordinatenreihe reiheAus(const Koordinaten& koordinaten, const Reihenvorgabe& vorgabe) {
    Koordinatenreihe ergebnis;
    for (const Koordinatensatz& satz : koordinaten.flügel) {
        Flügelmessung messung{.punkte = satz.punkte,
                              .messart = vorgabe.messart,
                              .aufnahme = vorgabe.aufnahme,
                              .bilddatei = satz.bilddatei,
                              .ungeprüft = satz.ungeprüft};
        for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
            if (messung.punkte.gemessen(i)) {
                messung.punkte.Herkunft[i] = Punktherkunft::Eingelesen;
            }
        }
        if (satz.inBildpunkten) {
            messung.aufnahme.Zoomfaktor = 1;
        }
        if (vorgabe.eigeneAuflösung) {
            messung.aufnahme.dpi = auflösungAus(satz).value_or(vorgabe.aufnahme.dpi);
        }
        const Indizes indizes = berechneIndizes(messung.punkte, vorgabe.messart, messung.aufnahme);
        if (vorgabe.lage) {
            vorgabe.lage(messung);
        }
        const auto nummer = static_cast<qint16>(ergebnis.messungen.size() + 1);
        if (ergebnis.reihe.trageEin(nummer, indizes, messung, vorgabe.format)) {
            ergebnis.reihe.lassAus(nummer, satz.ausgelassen);
        }
        const bool alle =
            indizes.CI && (!misstAchtPunkte(vorgabe.messart) || (indizes.HI && indizes.DV));
        if (!alle) {
            ergebnis.mängel.push_back({satz.zeile, satz.bezeichnung(), indizes.fehler});
        }
        ergebnis.messungen.push_back(std::move(messung));
    }
    return ergebnis;
}

std::optional<int> auflösungAus(const Koordinatensatz& satz) {
    constexpr double MillimeterJeZoll = 25.4;
    constexpr double gering = 100;
    constexpr double hoch = 10'000;
    double wert = satz.auflösung.value_or(0);
    if (satz.maßstab && *satz.maßstab > 0) {
        wert = MillimeterJeZoll / double{*satz.maßstab};
    }
    return wert < gering || wert > hoch ? std::nullopt
                                        : std::optional(static_cast<int>(std::lround(wert)));
}

std::optional<int> auflösungAus(const Koordinaten& koordinaten) {
    std::optional<int> dpi;
    for (const Koordinatensatz& satz : koordinaten.flügel) {
        const std::optional<int> eigene = auflösungAus(satz);
        if (!eigene || (dpi && dpi != eigene)) {
            return std::nullopt;
        }
        dpi = eigene;
    }
    return dpi;
}

} // namespace tarvel
