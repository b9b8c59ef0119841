#pragma once

#include "batch/ausgabe.h"
#include "batch/befehle.h"

namespace tarvel {

/// The command export. Examinations come in the order of their numbers. What could not be read of
/// one is named, and the rest of it is written.
[[nodiscard]] Status exportiere(const Ausfuhrbefehl& befehl, const Batchumgebung& umgebung);

} // namespace tarvel
