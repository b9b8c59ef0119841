#pragma once

#include "batch/ausgabe.h"
#include "batch/befehle.h"

namespace tarvel {

/// The command import-bee. Each file is stored whole or not at all, whatever becomes of the others;
/// a file with a fault, or with the number of an examination that is there already, is not stored
/// and named. The database is made when the first file is stored.
[[nodiscard]] Status importiere(const Einfuhrbefehl& befehl, const Batchumgebung& umgebung);

} // namespace tarvel
