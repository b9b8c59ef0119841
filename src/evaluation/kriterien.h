#pragma once

#include "evaluation/beurteilung.h"
#include "evaluation/sicherheit.h"

#include <optional>
#include <vector>

namespace tarvel {

/// How firm the outcome of a criterion is.
enum class Gewissheit {
    NichtGemessen,
    OhneStreuung, ///< no interval: a secondary peak, or marks that contradict each other
    ImmerErfüllt, ///< a limit that nothing can exceed
    Sicher,       ///< the interval lies on one side of the limit
    Offen,        ///< more bees could turn it
};

/// One check of a judgement with what it rests on.
struct Kriterium {
    Prüfwert prüfwert;
    int anzahl = 0; ///< wings or bees that count against it; of a mean those that were averaged
    int gesamt = 0; ///< wings or bees that were looked at
    /// Of the share in percent, or of the mean. Empty without measurements.
    std::optional<Vertrauensintervall> bereich;
    Gewissheit gewissheit = Gewissheit::NichtGemessen;
    /// Sample size that would make an open outcome firm if its value stayed; empty when none would.
    std::optional<int> festAb;
    /// Numbers of the wings that are counted; of a mean those on the wrong side of its limit.
    std::vector<int> flügel;
    std::vector<int> bienen; ///< places from 0 in the list of body marks

    /// How far the value is from its limit: above 0 where it passes. Empty without measurements.
    [[nodiscard]] std::optional<double> abstand() const;
};

/// The checks of @p urteil in its order.
[[nodiscard]] std::vector<Kriterium> kriterien(const Prüfling& prüfling, const Urteil& urteil);

/// The mean of an index with its interval.
struct Mittelangabe {
    Kennzahlen kennzahlen;
    std::optional<Vertrauensintervall> bereich;
};
/// Empty without a value.
[[nodiscard]] std::optional<Mittelangabe> mittelangabe(const Messreihe& reihe,
                                                       float Chartwerte::*index);

} // namespace tarvel
