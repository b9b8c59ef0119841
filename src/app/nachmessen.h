#pragma once

#include "app/umgebung.h"
#include "measure/fluegelbilder.h"

class QWidget;

namespace tarvel {

/// Lets the person measure some wings of @p reihe again, over @p fenster, or says that there are
/// too few.
void missNach(const Umgebung& umgebung, const Messreihe& reihe, Flügelbilder bilder,
              QWidget& fenster);

} // namespace tarvel
