#include "evaluation/achsen.h"

#include "measure/indizes.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarvel {

namespace {

constexpr double SchrittDV = 0.5;
constexpr double AnfangDV = -6;

double indexBeiKlassenlage(double lage, const Klassenteilung& teilung) {
    const double verhältnis = (lage - teilung.mitte) * teilung.breite / 50;
    return (1 + verhältnis) / (1 - verhältnis);
}

/// Index of the first multiple of the step at or above @p wert; a value that misses a multiple by
/// rounding only is taken for it.
double aufgerundet(double wert, double schritt) {
    return std::ceil(wert / schritt - 1e-9);
}

double abgerundet(double wert, double schritt) {
    return std::floor(wert / schritt + 1e-9);
}

Teilung mitSchritt(double von, double bis, double stufe, int zehnerpotenz) {
    Teilung t;
    t.schritt = stufe * std::pow(10.0, zehnerpotenz);
    t.nachkommastellen = std::max(0, -zehnerpotenz);
    const double erste = aufgerundet(von, t.schritt);
    const double schritte = abgerundet(bis, t.schritt) - erste;
    for (double i = 0; i <= schritte; ++i) {
        t.marken.push_back((erste + i) * t.schritt);
    }
    return t;
}

constexpr std::array Stufen{1.0, 2.0, 5.0};

} // namespace

double Achse::ort(double wert) const {
    return ortAnfang + (wert - wertAnfang) * (ortEnde - ortAnfang) / (wertEnde - wertAnfang);
}

double Achse::wert(double ort) const {
    return wertAnfang + (ort - ortAnfang) * (wertEnde - wertAnfang) / (ortEnde - ortAnfang);
}

bool Achse::enthält(double wert) const {
    return wert >= std::min(wertAnfang, wertEnde) && wert <= std::max(wertAnfang, wertEnde);
}

Teilung teilung(double von, double bis, int höchstens) {
    if (!std::isfinite(von) || !std::isfinite(bis) || !(bis > von)) {
        return {};
    }
    const double erlaubt = std::max(höchstens, 2);
    int zehnerpotenz = static_cast<int>(std::floor(std::log10((bis - von) / erlaubt)));
    for (;; ++zehnerpotenz) {
        for (const double stufe : Stufen) {
            const double schritt = stufe * std::pow(10.0, zehnerpotenz);
            if (abgerundet(bis, schritt) - aufgerundet(von, schritt) < erlaubt) {
                return mitSchritt(von, bis, stufe, zehnerpotenz);
            }
        }
    }
}

Teilung zählteilung(int größte, int höchstens) {
    const double ende = std::max(größte, 1);
    for (int zehnerpotenz = 0;; ++zehnerpotenz) {
        for (const double stufe : Stufen) {
            const double schritt = stufe * std::pow(10.0, zehnerpotenz);
            const double schritte = aufgerundet(ende, schritt);
            if (schritte < std::max(höchstens, 2)) {
                return mitSchritt(0, schritte * schritt, stufe, zehnerpotenz);
            }
        }
    }
}

Bereich erweitert(Bereich bereich, std::span<const float> werte, double schritt,
                  Bereich äußerster) {
    for (const float wert : werte) {
        const double x = wert;
        if (!std::isfinite(x)) {
            continue;
        }
        if (x < bereich.von) {
            bereich.von = abgerundet(x, schritt) * schritt;
        }
        if (x > bereich.bis) {
            bereich.bis = aufgerundet(x, schritt) * schritt;
        }
    }
    return {std::max(bereich.von, äußerster.von), std::min(bereich.bis, äußerster.bis)};
}

double klassenlageCI(double CI) {
    return KlassenteilungCI.lage(CI);
}

double CIBeiKlassenlage(double lage) {
    return indexBeiKlassenlage(lage, KlassenteilungCI);
}

double klassenlageHI(double HI) {
    return KlassenteilungHI.lage(HI);
}

double HIBeiKlassenlage(double lage) {
    return indexBeiKlassenlage(lage, KlassenteilungHI);
}

double klassenlageDV(double DV) {
    return (DV - AnfangDV) / SchrittDV + 1;
}

double DVBeiKlassenlage(double lage) {
    return (lage - 1) * SchrittDV + AnfangDV;
}

int klasseDV(double DV) {
    const double klasse = std::floor(klassenlageDV(DV));
    return klasse >= 1 && klasse <= KlassenzahlDV ? static_cast<int>(klasse) : 0;
}

std::vector<Achsenstrich> ungleicheStriche(std::span<const double> wünsche,
                                           double (*ort)(double wert), double anfang, double ende,
                                           double abstand) {
    std::vector<Achsenstrich> marken;
    for (const double wert : wünsche) {
        const Achsenstrich neu{wert, ort(wert)};
        const bool frei = std::all_of(marken.begin(), marken.end(), [&](const Achsenstrich& m) {
            return std::abs(m.ort - neu.ort) >= abstand;
        });
        if (frei && neu.ort >= anfang && neu.ort <= ende) {
            marken.push_back(neu);
        }
    }
    std::sort(marken.begin(), marken.end(),
              [](const Achsenstrich& a, const Achsenstrich& b) { return a.ort < b.ort; });
    return marken;
}

} // namespace tarvel
