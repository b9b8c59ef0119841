#pragma once

#include "measure/statistik.h"

#include <optional>

namespace tarvel {

/// Where the value of the whole colony lies with a probability of 95 %, both ends included.
struct Vertrauensintervall {
    double von = 0;
    double bis = 0;

    bool operator==(const Vertrauensintervall&) const = default;
};

/// Of a share, in percent: Wilson's score interval of @p anzahl among @p gesamt, which is above 0.
[[nodiscard]] Vertrauensintervall anteilsbereich(int anzahl, int gesamt);

/// Of a mean, in its unit: Student's t with n − 1 degrees of freedom. Empty below two values.
[[nodiscard]] std::optional<Vertrauensintervall> mittelbereich(const Kennzahlen& kennzahlen);

/// The two-sided 95 % quantile of Student's t for @p freiheitsgrade of at least 1: 12.706, 4.303,
/// … 1.960.
[[nodiscard]] double studentT(int freiheitsgrade);

/// How large a sample with the same share must be until its interval leaves @p grenze, in percent,
/// on one side; at least @p gesamt. Empty when @p höchstens is not enough.
[[nodiscard]] std::optional<int> festAb(int anzahl, int gesamt, double grenze, int höchstens);
/// The same for a mean with the same standard deviation.
[[nodiscard]] std::optional<int> festAb(const Kennzahlen& kennzahlen, double grenze, int höchstens);

} // namespace tarvel
