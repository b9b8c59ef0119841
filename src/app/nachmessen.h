#pragma once

#include "app/umgebung.h"

namespace tarvel {

class Messplatz;
class Messreihe;

/// Lets the person measure some wings of @p reihe again, in a window over that of @p messplatz, or
/// says that there are too few.
void missNach(const Umgebung& umgebung, const Messreihe& reihe, Messplatz& messplatz);

} // namespace tarvel
