#pragma once

#include "detect/graubild.h"

#include <array>

namespace tarvel {

/// How much darker than its surroundings a picture is, at 300 dpi: thin dark lines such as veins
/// stand out, broad shades, membranes and the light of the scanner do not. 0 is as the ground, 255
/// a quarter darker or more.
struct Dunkelkarte {
    static constexpr int Dpi = 300;
    /// Zeros around the map, so that what reaches past the picture needs no question.
    static constexpr int Rand = 100;
    /// Standard deviations in pixels by which the levels are blurred.
    static constexpr std::array<double, 4> Unschärfe{0, 1, 2, 3};

    QSize größe; ///< without the margin
    std::array<Graubild, 4> stufen;

    [[nodiscard]] bool leer() const { return größe.isEmpty(); }
};

/// Dark lines of @p grau, a picture at 300 dpi, without margin and blurring.
[[nodiscard]] Graubild dunkelheit(const Graubild& grau, int fäden = 1);

/// The map of a picture scanned at @p dpi, 300 at least. Empty for a coarser one, for a
/// picture smaller than a wing, and for one larger than A3, which no scanner makes: its resolution
/// is another.
[[nodiscard]] Dunkelkarte dunkelkarte(const Pixelquelle& quelle, double dpi, int fäden = 1);

/// Blurred by a bell curve of the standard deviation @p breite pixels; what lies beyond the edge
/// counts as 0.
[[nodiscard]] Graubild unscharf(const Graubild& bild, double breite, int fäden = 1);

} // namespace tarvel
