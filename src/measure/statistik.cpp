#include "measure/statistik.h"

#include <algorithm>
#include <cmath>

namespace tarvel {

std::optional<Kennzahlen> kennzahlen(std::span<const float> werte) {
    Kennzahlen k;
    double summe = 0;
    for (const float wert : werte) {
        if (wert == Chartwerte::KeinWert) {
            continue;
        }
        const double x = wert;
        k.minimum = k.anzahl == 0 ? x : std::min(k.minimum, x);
        k.maximum = k.anzahl == 0 ? x : std::max(k.maximum, x);
        summe += x;
        ++k.anzahl;
    }
    if (k.anzahl == 0) {
        return std::nullopt;
    }
    k.mittelwert = summe / k.anzahl;
    if (k.anzahl > 1) {
        double abweichungen = 0;
        for (const float wert : werte) {
            if (wert != Chartwerte::KeinWert) {
                const double abstand = static_cast<double>(wert) - k.mittelwert;
                abweichungen += abstand * abstand;
            }
        }
        k.standardabweichung = std::sqrt(abweichungen / (k.anzahl - 1));
    }
    return k;
}

std::vector<float> werte(const Messreihe& reihe, float Chartwerte::*größe) {
    std::vector<float> liste;
    for (const int nummer : reihe.gewertete()) {
        liste.push_back(reihe.chartwerte(nummer).*größe);
    }
    return liste;
}

} // namespace tarvel
