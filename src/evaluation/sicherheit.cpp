#include "evaluation/sicherheit.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarvel {

namespace {

constexpr double Normalquantil = 1.959963984540054; // two-sided 95 %
constexpr double Hundert = 100;

/// Wilson's interval of the share @p p among @p n, as a part of 1.
Vertrauensintervall wilson(double p, double n) {
    constexpr double z2 = Normalquantil * Normalquantil;
    const double mitte = p + z2 / (2 * n);
    const double breite = Normalquantil * std::sqrt(p * (1 - p) / n + z2 / (4 * n * n));
    const double nenner = 1 + z2 / n;
    return {std::max(0.0, (mitte - breite) / nenner), std::min(1.0, (mitte + breite) / nenner)};
}

bool lässtAus(const Vertrauensintervall& bereich, double grenze) {
    return grenze < bereich.von || bereich.bis < grenze;
}

} // namespace

Vertrauensintervall anteilsbereich(int anzahl, int gesamt) {
    const Vertrauensintervall teil = wilson(static_cast<double>(anzahl) / gesamt, gesamt);
    return {teil.von * Hundert, teil.bis * Hundert};
}

double studentT(int freiheitsgrade) {
    // The expansion below is exact to three digits only from here on.
    static constexpr std::array<double, 6> Kleine{12.7062, 4.3027, 3.1824, 2.7764, 2.5706, 2.4469};
    if (freiheitsgrade <= static_cast<int>(Kleine.size())) {
        return Kleine.at(static_cast<std::size_t>(std::max(freiheitsgrade, 1) - 1));
    }
    // Cornish and Fisher's expansion around the normal distribution.
    const double z = Normalquantil;
    const double n = freiheitsgrade;
    const double z3 = z * z * z;
    const double z5 = z3 * z * z;
    const double z7 = z5 * z * z;
    const double z9 = z7 * z * z;
    return z + (z3 + z) / (4 * n) + (5 * z5 + 16 * z3 + 3 * z) / (96 * n * n) +
           (3 * z7 + 19 * z5 + 17 * z3 - 15 * z) / (384 * n * n * n) +
           (79 * z9 + 776 * z7 + 1482 * z5 - 1920 * z3 - 945 * z) / (92160 * n * n * n * n);
}

std::optional<Vertrauensintervall> mittelbereich(const Kennzahlen& k) {
    if (k.anzahl < 2 || !k.standardabweichung) {
        return std::nullopt;
    }
    const double halb = studentT(k.anzahl - 1) * *k.standardabweichung / std::sqrt(k.anzahl);
    return Vertrauensintervall{k.mittelwert - halb, k.mittelwert + halb};
}

std::optional<int> festAb(int anzahl, int gesamt, double grenze, int höchstens) {
    const double anteil = static_cast<double>(anzahl) / gesamt;
    for (int n = gesamt; n <= höchstens; ++n) {
        if (lässtAus(wilson(anteil, n), grenze / Hundert)) {
            return n;
        }
    }
    return std::nullopt;
}

std::optional<int> festAb(const Kennzahlen& kennzahlen, double grenze, int höchstens) {
    Kennzahlen k = kennzahlen;
    for (; k.anzahl <= höchstens; ++k.anzahl) {
        const auto bereich = mittelbereich(k);
        if (bereich && lässtAus(*bereich, grenze)) {
            return k.anzahl;
        }
    }
    return std::nullopt;
}

} // namespace tarvel
