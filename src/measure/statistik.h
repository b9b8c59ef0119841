#pragma once

#include "measure/messreihe.h"

#include <optional>
#include <span>

namespace tarvel {

/// Figures of one index over the wings of a sample.
struct Kennzahlen {
    int anzahl = 0;
    double mittelwert = 0;
    double minimum = 0;
    double maximum = 0;
    /// Standard deviation of the sample (divisor n − 1); empty below two wings.
    std::optional<double> standardabweichung;
};

/// Empty when there is no value. Values that are KeinWert are left out.
[[nodiscard]] std::optional<Kennzahlen> kennzahlen(std::span<const float> werte);

/// One figure of every wing that counts, in list order, KeinWert where a wing has none.
[[nodiscard]] std::vector<float> werte(const Messreihe& reihe, float Chartwerte::*größe);

} // namespace tarvel
