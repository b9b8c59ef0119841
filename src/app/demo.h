#pragma once

#include "app/befehlszeile.h"

namespace tarvel {

/// Works through a sample examination as a person would, through the event handlers of the
/// windows, leaves a picture of each view in the demo's folder and prints what was measured.
/// Returns the program's exit status: 0 when everything measured agrees with what is known of the
/// sample, 1 otherwise.
[[nodiscard]] int demo(const Befehlszeile& zeile);

} // namespace tarvel
