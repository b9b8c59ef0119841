#pragma once

#include "measure/messpunkte.h"

#include <optional>

namespace tarvel {

/// How the picture of a wing was looked at when its points were set.
struct Aufnahme {
    qint16 Zoomfaktor = 1; ///< 1 to 4: points are pixels of the picture times this factor
    int dpi = 1200;        ///< resolution of the scan as set by the user, above 0

    bool operator==(const Aufnahme&) const = default;
};

/// Why an index could not be computed from points that are all set.
enum class Rechenfehler {
    DivisionDurchNull, ///< two points that span a segment coincide
    WurzelNegativ,     ///< point 8 lies on the base line within rounding
};

/// The indices of one wing. An index is empty when one of its points is not set, or when the
/// computation stopped before it with a fault.
struct Indizes {
    std::optional<float> CI; ///< cubital index, segment 5-6 over segment 6-7
    std::optional<float> HI; ///< hantel index, span 5-7 over segment 3-4
    std::optional<float> DV; ///< discoidal shift in twentieths of a millimetre
    std::optional<Rechenfehler> fehler;
};

/// Computes what the set points allow: the cubital index, and for the kinds that measure all
/// eight points the hantel index and the discoidal shift, in this order; a fault ends the
/// computation and keeps what came before it. Everything is held in single precision.
///
/// The discoidal shift compares the feet of points 4 and 8 on the base line 1-2 and is positive
/// when the foot of point 8 lies nearer to the wing tip (point 2) than that of point 4.
[[nodiscard]] Indizes berechneIndizes(const Messpunkte& punkte, Messart messart,
                                      const Aufnahme& aufnahme);

/// Ends of the axes that class positions stand on.
inline constexpr float HöchsteKlasseCI = 31;
inline constexpr float HöchsteKlasseHI = 38;

/// Where an index stands on its axis. Both are quotients of two lengths a / b, and their axes are
/// even in (a - b) / (a + b), which treats a twice as long as b like b twice as long as a.
struct Klassenteilung {
    double breite; ///< of a class, in fiftieths
    double mitte;  ///< class position of the index 1

    [[nodiscard]] constexpr double lage(double index) const {
        return ((index - 1) * 50) / ((index + 1) * breite) + mitte;
    }
};
inline constexpr Klassenteilung KlassenteilungCI{1.666, 6};
inline constexpr Klassenteilung KlassenteilungHI{0.666, 25};

/// Class position of a cubital index on the histogram's axis: 1 gives 6, 9 gives about 30.
/// 0 when the position is not between 0 and 31.
[[nodiscard]] float klassenpositionCI(float CI);

/// Position of a hantel index on its axis: 1 gives 25. 0 when it is not between 0 and 38.
[[nodiscard]] float klassenpositionHI(float HI);

} // namespace tarvel
