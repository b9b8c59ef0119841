#pragma once

#include <array>

namespace tarvel {

/// Scanner resolutions in dots per inch in the order of the list `cbo_dpi`; the settings store the
/// position in this list.
inline constexpr std::array<int, 4> Scannerauflösungen{300, 600, 1200, 2400};

/// Below this resolution a click beside the point weighs more than the races differ.
inline constexpr int EmpfohleneAuflösung = 1200;

/// Resolution at a position of the list; a position outside it gives the nearest end.
[[nodiscard]] constexpr int scannerauflösung(int position) {
    const int letzte = static_cast<int>(Scannerauflösungen.size()) - 1;
    const int p = position < 0 ? 0 : position > letzte ? letzte : position;
    return Scannerauflösungen[static_cast<std::size_t>(p)];
}

/// Position of a resolution in the list, -1 when it is not in it.
[[nodiscard]] constexpr int scannerposition(int dpi) {
    for (std::size_t i = 0; i < Scannerauflösungen.size(); ++i) {
        if (Scannerauflösungen[i] == dpi) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

} // namespace tarvel
