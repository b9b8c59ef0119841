#pragma once

#include "evaluation/beurteilung.h"
#include "lang/texte.h"
#include "platform/zahlen.h"

namespace tarvel {

/// One sentence why a check failed: "1R: 4 %, erlaubt 0 %".
[[nodiscard]] QString mangeltext(const Prüfwert& mangel, const Texte& texte,
                                 const Zahlenformat& format);

/// The measured mean of a check of the mean, with as many decimals as show on which side of the
/// limit it lies.
[[nodiscard]] QString mitteltext(const Prüfwert& wert, const Zahlenformat& format);
/// "2.61 ≥ 2.5", or, where it fails, "2.31 < 2.5"; the limit alone without a mean.
[[nodiscard]] QString mittelvergleich(const Prüfwert& wert, const Zahlenformat& format);

/// Why there is no verdict; empty when there is one. @p rasse name of the race.
[[nodiscard]] QString unbeurteilttext(const Beurteilung& beurteilung, const QString& rasse,
                                      const Texte& texte);

/// What a verdict rests on: "12 von 50 Flügeln, Körpermerkmale fehlen: vorläufig".
[[nodiscard]] QString grundlagentext(const Umfang& umfang, const Texte& texte);

} // namespace tarvel
