#pragma once

#include "batch/ausgabe.h"
#include "batch/befehle.h"

namespace tarvel {

// Tables are UTF-8 with a header in English, a comma between cells and a point in numbers, whatever
// the language. Means and standard deviations are those of the values, not of the rounded lines. An
// empty cell is a value that there is none of.

/// The command export. Examinations come in the order of their numbers. What could not be read of
/// one is named, and the rest of it is written.
[[nodiscard]] Status exportiere(const Ausfuhrbefehl& befehl, const Batchumgebung& umgebung);

} // namespace tarvel
