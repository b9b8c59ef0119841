#pragma once

#include "abwandlung.h"

#include "detect/erkennungsmodell.h"
#include "detect/punktvorschlag.h"

#include <functional>

namespace tarvel {

/// How much is made of the wings there are.
struct Lernumfang {
    int ausschnitte = 8500;
    /// Pictures of each left-out wing from which the errors are learnt.
    int aufnahmen = 40;
    std::uint64_t saat = 2;
    int fäden = 2;
};

/// A line for who waits.
using Meldung = std::function<void(const QString&)>;

/// The mean wing and the cascade of steps, learnt from varied crops of @p flügel by ridge
/// regression; the errors are left empty.
[[nodiscard]] Erkennungsmodell lerneKaskade(const std::vector<const Übungsflügel*>& flügel,
                                            const Mittelflügel& mittel, const Lernumfang& umfang,
                                            const Meldung& melde);

/// What is known of a proposal for a picture with known points.
struct Vorschlagsprobe {
    Vorschlagszeichen zeichen;
    std::array<double, 8> fehler; ///< pixels at 2400 dpi
};

/// Proposals for degraded pictures of @p flügel, which the model must not have been learnt from.
[[nodiscard]] std::vector<Vorschlagsprobe> probiere(const Erkennungsmodell& modell,
                                                    const std::vector<const Übungsflügel*>& flügel,
                                                    const Lernumfang& umfang, Zufall& zufall);

/// Fits what error to expect to what proposals looked like and how far off they were.
void lerneFehler(Fehlermodell& modell, const std::vector<Vorschlagsprobe>& proben);

} // namespace tarvel
