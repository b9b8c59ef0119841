#pragma once

#include "app/umgebung.h"
#include "measure/fluegelbilder.h"
#include "measure/nachmessfenster.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace tarvel {

/// Wings of @p reihe to be measured again with their parts of the scans, NachmessFlügel of those
/// whose picture is at hand.
[[nodiscard]] std::vector<Nachmessflügel>
nachmessflügel(const Messreihe& reihe, Flügelbilder bilder,
               const std::function<std::uint32_t()>& zufall);

/// Lets the person measure some wings of @p reihe again, over @p fenster, or says that there are
/// too few.
void missNach(const Umgebung& umgebung, const Messreihe& reihe, Flügelbilder bilder,
              QWidget& fenster);

} // namespace tarvel
