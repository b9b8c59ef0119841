#include "measure/indizes.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace tarvel {

namespace {

// Picture pixels per millimetre and per twentieth of a millimetre at 1200 dpi. The published
// classes of the discoidal shift rest on these rounded figures, so 1200 / 25.4 would shift them.
constexpr double PixelJeMillimeter = 47.2;
constexpr double PixelJeZwanzigstel = 2.36;
constexpr double Bezugsauflösung = 1200.0;

double quadrat(float wert) {
    return static_cast<double>(wert) * static_cast<double>(wert);
}

class Strecken {
public:
    explicit Strecken(const Messpunkte& punkte)
        : p_(punkte) {}

    [[nodiscard]] float operator()(int a, int b) const {
        const float dx = p_.PunktX[a] - p_.PunktX[b];
        const float dy = p_.PunktY[a] - p_.PunktY[b];
        return static_cast<float>(std::sqrt(quadrat(dx) + quadrat(dy)));
    }

private:
    const Messpunkte& p_;
};

bool alleGemessen(const Messpunkte& punkte, std::initializer_list<int> nummern) {
    return std::all_of(nummern.begin(), nummern.end(),
                       [&](int nummer) { return punkte.gemessen(nummer); });
}

/// Foot of a point on the base line 1-2, measured from point 1 and negative towards point 2, from
/// its distances to point 2 and point 1 and the length of the base line.
float fußpunkt(float zuPunkt2, float zuPunkt1, float basis) {
    return static_cast<float>((quadrat(zuPunkt2) - quadrat(zuPunkt1) - quadrat(basis)) /
                              (2.0 * static_cast<double>(basis)));
}

void berechneDV(Indizes& indizes, const Strecken& d, const Aufnahme& aufnahme) {
    const float d12 = d(1, 2);
    if (d12 == 0.0F) {
        indizes.fehler = Rechenfehler::DivisionDurchNull;
        return;
    }
    const float d18 = d(1, 8);
    const float u4 = fußpunkt(d(2, 4), d(1, 4), d12);
    const float u8 = fußpunkt(d(2, 8), d18, d12);
    const double höheQuadrat = quadrat(d18) - quadrat(u8);
    if (höheQuadrat < 0.0) {
        indizes.fehler = Rechenfehler::WurzelNegativ;
        return;
    }
    const auto h = static_cast<float>(std::sqrt(höheQuadrat));
    const double zoom = aufnahme.Zoomfaktor;
    const auto q = static_cast<float>((2.5 * PixelJeMillimeter * zoom) /
                                      (1.5 * PixelJeMillimeter * zoom + static_cast<double>(h)));
    const auto DV = static_cast<float>(static_cast<double>(u4 - u8) * static_cast<double>(q) /
                                       (PixelJeZwanzigstel * zoom));
    indizes.DV = static_cast<float>(static_cast<double>(DV) * Bezugsauflösung / aufnahme.dpi);
}

float klassenposition(float index, const Klassenteilung& teilung, float ende) {
    const auto p = static_cast<float>(teilung.lage(static_cast<double>(index)));
    return p > 0.0F && p < ende ? p : 0.0F;
}

} // namespace

Indizes berechneIndizes(const Messpunkte& punkte, Messart messart, const Aufnahme& aufnahme) {
    Indizes indizes;
    const Strecken d(punkte);

    if (alleGemessen(punkte, {5, 6, 7})) {
        const float b = d(6, 7);
        if (b == 0.0F) {
            indizes.fehler = Rechenfehler::DivisionDurchNull;
            return indizes;
        }
        indizes.CI = d(5, 6) / b;
    }
    if (!misstAchtPunkte(messart)) {
        return indizes;
    }
    if (alleGemessen(punkte, {3, 4, 5, 7})) {
        const float d34 = d(3, 4);
        if (d34 == 0.0F) {
            indizes.fehler = Rechenfehler::DivisionDurchNull;
            return indizes;
        }
        indizes.HI = d(5, 7) / d34;
    }
    if (alleGemessen(punkte, {1, 2, 4, 8})) {
        berechneDV(indizes, d, aufnahme);
    }
    return indizes;
}

float klassenpositionCI(float CI) {
    return klassenposition(CI, KlassenteilungCI, HöchsteKlasseCI);
}

float klassenpositionHI(float HI) {
    return klassenposition(HI, KlassenteilungHI, HöchsteKlasseHI);
}

} // namespace tarvel
