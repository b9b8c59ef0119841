#pragma once

#include "batch/ausgabe.h"

namespace tarvel {

/// overview. Figures are read from the database each time; nothing is kept, and the database stays
/// as it is. A picture needs an application object.
[[nodiscard]] Status schreibeÜbersicht(const Übersichtsbefehl& befehl,
                                       const Batchumgebung& umgebung);

} // namespace tarvel
