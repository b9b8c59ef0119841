#pragma once

#include "evaluation/sicherheit.h"
#include "measure/statistik.h"

#include <optional>

namespace tarvel {

/// How far two samples are apart.
struct Unterschied {
    double differenz = 0; ///< first less second
    /// Where the difference of the whole colonies lies with a probability of 95 %; empty when the
    /// samples are too small to tell.
    std::optional<Vertrauensintervall> bereich;

    /// The interval leaves 0 out.
    [[nodiscard]] bool gesichert() const {
        return bereich && (bereich->von > 0 || bereich->bis < 0);
    }
};

/// Of two means, in their unit: Welch's interval, which does not take the spreads for equal. Its
/// degrees of freedom are rounded down. Both samples have a value at least.
[[nodiscard]] Unterschied mittelunterschied(const Kennzahlen& a, const Kennzahlen& b);

/// Of two shares, in percentage points: Newcombe's interval, made of Wilson's of each. Both samples
/// are above 0.
[[nodiscard]] Unterschied anteilsunterschied(int anzahlA, int gesamtA, int anzahlB, int gesamtB);

} // namespace tarvel
