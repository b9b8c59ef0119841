#pragma once

#include "batch/ausgabe.h"
#include "batch/befehle.h"

namespace tarvel {

/// The command report. Needs a QGuiApplication for the fonts, on any platform.
[[nodiscard]] Status schreibeProtokoll(const Protokollbefehl& befehl,
                                       const Batchumgebung& umgebung);

} // namespace tarvel
