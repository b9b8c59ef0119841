#pragma once

#include "measure/marken.h"
#include "measure/messung.h"

#include <functional>
#include <vector>

namespace tarvel {

/// Marks of the set points of a wing; @p fragliche are those whose proposal is doubtful.
[[nodiscard]] std::vector<Marke> punktmarken(const Messpunkte& punkte,
                                             const std::vector<int>& fragliche = {});

/// Marks of the wings that are measured on a picture already.
struct Erledigtmarken {
    std::vector<Marke> imScan; ///< numbers; pixels of the picture
    std::vector<Marke> imBild; ///< numbers and points; pixels of the zoomed picture
};

/// Those of @p reihe on the picture @p bilddatei, as it is shown and zoomed in @p messung. The wing
/// that is being repeated is not among them. @p zweifel says how a wing is marked in the scan.
[[nodiscard]] Erledigtmarken erledigtmarken(const Messreihe& reihe, const Messung& messung,
                                            const QString& bilddatei,
                                            const std::function<Zweifelsgrad(int)>& zweifel);

} // namespace tarvel
