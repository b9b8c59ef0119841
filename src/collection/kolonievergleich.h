#pragma once

#include "collection/koloniewerte.h"
#include "evaluation/unterschied.h"

#include <optional>
#include <vector>

namespace tarvel {

/// A figure of two colonies.
struct Kolonievergleichszeile {
    enum class Art { Mittelwert, AnteilUnter, AnteilÜber };
    Größe größe = Größe::CI;
    Art art = Art::Mittelwert;
    std::optional<double> a; ///< a mean, or a share in percent; empty where there is none
    std::optional<double> b;
    /// First less second; empty where a figure is missing or the two do not compare.
    std::optional<Unterschied> unterschied;
};

/// Two colonies figure by figure: means, then shares below and above the boundary line, of each
/// index. Nothing compares between castes, the discoidal shift not between resolutions, shares not
/// between boundary lines.
struct Kolonievergleich {
    std::vector<Kolonievergleichszeile> zeilen;
    bool tiereVerschieden = false;
    bool dpiVerschieden = false; ///< or not definite, of colonies that have a discoidal shift
    bool grenzenVerschieden = false;
};
[[nodiscard]] Kolonievergleich vergleiche(const Koloniewerte& a, const Koloniewerte& b,
                                          const Kolonieregeln& regeln);

} // namespace tarvel
