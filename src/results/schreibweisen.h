#pragma once

#include "results/ergebnistabelle.h"

#include <vector>

namespace tarvel {

/// Names that are written differently and probably mean the same, the most frequent first.
using Schreibweisen = std::vector<Ergebnistabelle::Anzahl>;

/// The groups of at least two spellings among @p texte: they differ only in case, blanks, accents,
/// or in an umlaut written with its e. In the order of the alphabet.
[[nodiscard]] std::vector<Schreibweisen>
gruppiereSchreibweisen(const std::vector<Ergebnistabelle::Anzahl>& texte);

} // namespace tarvel
