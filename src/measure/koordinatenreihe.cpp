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

Koordinatenreihe reiheAus(const Koordinaten& koordinaten, Messart messart, const Aufnahme& aufnahme,
                          const Zahlenformat& format, const Lagebestimmung& lage) {
    Koordinatenreihe ergebnis;
    for (const Koordinatensatz& satz : koordinaten.flügel) {
        Flügelmessung messung{.punkte = satz.punkte,
                              .messart = messart,
                              .aufnahme = aufnahme,
                              .bilddatei = satz.bilddatei};
        for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
            if (messung.punkte.gemessen(i)) {
                messung.punkte.Herkunft[i] = Punktherkunft::Eingelesen;
            }
        }
        const Indizes indizes = berechneIndizes(messung.punkte, messart, aufnahme);
        if (lage) {
            lage(messung);
        }
        const auto nummer = static_cast<qint16>(ergebnis.messungen.size() + 1);
        (void)ergebnis.reihe.trageEin(nummer, indizes, messung, format);
        const bool alle = indizes.CI && (!misstAchtPunkte(messart) || (indizes.HI && indizes.DV));
        if (!alle) {
            ergebnis.mängel.push_back({satz.zeile, satz.bezeichnung(), indizes.fehler});
        }
        ergebnis.messungen.push_back(std::move(messung));
    }
    return ergebnis;
}

std::optional<int> auflösungAus(const Koordinaten& koordinaten) {
    constexpr double MillimeterJeZoll = 25.4;
    constexpr double gering = 100;
    constexpr double hoch = 10'000;
    std::optional<int> dpi;
    for (const Koordinatensatz& satz : koordinaten.flügel) {
        double wert = satz.auflösung.value_or(0);
        if (satz.maßstab && *satz.maßstab > 0) {
            wert = MillimeterJeZoll / double{*satz.maßstab};
        }
        if (wert < gering || wert > hoch) {
            return std::nullopt;
        }
        const int gerundet = static_cast<int>(std::lround(wert));
        if (dpi && *dpi != gerundet) {
            return std::nullopt;
        }
        dpi = gerundet;
    }
    return dpi;
}

} // namespace tarvel
