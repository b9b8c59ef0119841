#pragma once

#include "evaluation/beurteilung.h"
#include "lang/texte.h"
#include "platform/zahlen.h"

namespace tarvel {

/// One sentence why a check failed: "1R: 4 %, erlaubt 0 %".
[[nodiscard]] QString mangeltext(const Prüfwert& mangel, const Texte& texte,
                                 const Zahlenformat& format);

/// Why there is no verdict; empty when there is one. @p rasse name of the race.
[[nodiscard]] QString unbeurteilttext(const Beurteilung& beurteilung, const QString& rasse,
                                      const Texte& texte);

/// What a verdict rests on: "12 von 50 Flügeln, Körpermerkmale fehlen: vorläufig".
[[nodiscard]] QString grundlagentext(const Umfang& umfang, const Texte& texte);

} // namespace tarvel
