#pragma once

#include "detect/erkennungsmodell.h"
#include "detect/gradientenfeld.h"

namespace tarvel {

/// Moves points to where the veins meet, step by step: each step describes the surroundings of the
/// points and corrects them by a linear regression (supervised descent).
class Punktkaskade {
public:
    explicit Punktkaskade(const std::vector<Kaskadenstufe>& stufen)
        : stufen_(stufen) {}

    /// Corrects @p punkte, pixels of the crop.
    void führe(const Gradientenfeld& feld, Punktsatz& punkte) const;
    /// Only the steps that look at each point by itself.
    void führeEinzeln(const Gradientenfeld& feld, Punktsatz& punkte) const;

    /// What a step adds to the points.
    static void schritt(const Kaskadenstufe& stufe, const Gradientenfeld& feld, Punktsatz& punkte);

private:
    const std::vector<Kaskadenstufe>& stufen_;
};

} // namespace tarvel
