#pragma once

#include "batch/ausgabe.h"
#include "batch/befehle.h"

namespace tarvel {

/// The command merge. Each of the others comes in whole or not at all, one after the other. Rows
/// that are new, and conflicting ones with what became of them, are listed. Without a choice the
/// conflicting ones stay as they are, and the status says so.
[[nodiscard]] Status führeZusammen(const Zusammenführungsbefehl& befehl,
                                   const Batchumgebung& umgebung);

} // namespace tarvel
