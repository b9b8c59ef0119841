#pragma once

#include "batch/ausgabe.h"
#include "batch/befehle.h"

namespace tarvel {

/// The command measure. Pictures that cannot be read are named, the others are measured all the
/// same. Painting needs a QGuiApplication.
[[nodiscard]] Status missBilder(const Bildmessbefehl& befehl, const Batchumgebung& umgebung);

} // namespace tarvel
