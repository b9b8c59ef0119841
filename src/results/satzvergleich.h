#pragma once

#include "results/ergebnissatz.h"
#include "results/untersuchungssatz.h"

#include <QString>

#include <vector>

namespace tarvel {

/// A figure in which two rows differ, in words that a person knows.
struct Vergleichszeile {
    QString name;
    QString links;
    QString rechts;
};

/// What differs between two rows, figure by figure: the fields, then number of wings, means,
/// resolution and body marks; where wings differ and none of those shows it, a line says so. Empty
/// when both stand alike. The word that caste and verdict are stored by does not matter.
[[nodiscard]] std::vector<Vergleichszeile> vergleicheSätze(const Ergebnissatz& links,
                                                           const Ergebnissatz& rechts,
                                                           const Satzumgebung& umgebung);

} // namespace tarvel
