#include "evaluation/unterschied.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarvel {

Unterschied mittelunterschied(const Kennzahlen& a, const Kennzahlen& b) {
    Unterschied u{a.mittelwert - b.mittelwert, {}};
    if (!a.standardabweichung || !b.standardabweichung) {
        return u;
    }
    const double va = *a.standardabweichung * *a.standardabweichung / a.anzahl;
    const double vb = *b.standardabweichung * *b.standardabweichung / b.anzahl;
    const double summe = va + vb;
    if (summe <= 0) {
        u.bereich = {u.differenz, u.differenz};
        return u;
    }
    const double grade = summe * summe / (va * va / (a.anzahl - 1) + vb * vb / (b.anzahl - 1));
    // Rounding must not take one away where both samples have the same size and spread.
    const double ganze = std::floor(grade + 1e-9);
    const double halb =
        studentT(static_cast<int>(std::clamp<double>(ganze, 1, std::numeric_limits<int>::max()))) *
        std::sqrt(summe);
    u.bereich = {u.differenz - halb, u.differenz + halb};
    return u;
}

Unterschied anteilsunterschied(int anzahlA, int gesamtA, int anzahlB, int gesamtB) {
    constexpr double Hundert = 100;
    const double a = Hundert * anzahlA / gesamtA;
    const double b = Hundert * anzahlB / gesamtB;
    const Vertrauensintervall wa = anteilsbereich(anzahlA, gesamtA);
    const Vertrauensintervall wb = anteilsbereich(anzahlB, gesamtB);
    return {a - b, Vertrauensintervall{a - b - std::hypot(a - wa.von, wb.bis - b),
                                       a - b + std::hypot(wa.bis - a, b - wb.von)}};
}

} // namespace tarvel
