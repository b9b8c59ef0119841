#pragma once

#include "detect/fluegellage.h"

#include <atomic>
#include <vector>

namespace tarvel {

/// The mean wing, small and turned in steps, for a first look over a whole sheet at 75 dpi.
class Grobmuster {
public:
    explicit Grobmuster(const Flügelmuster& muster);

    /// Places where something like a wing may lie, the most likely first; the pose is rough. Only
    /// where something dark lies is looked. Ends early, with what there is, once @p halt is set.
    [[nodiscard]] std::vector<Flügellage> suche(const Dunkelkarte& karte, int fäden,
                                                const std::atomic<bool>& halt) const;

private:
    struct Strecke {
        int dx, dy, länge;
        std::size_t stelle; ///< of its first value
    };
    struct Drehung {
        double winkel;
        bool gespiegelt;
        std::vector<Strecke> strecken;
        std::vector<std::int16_t> werte; ///< mean 0
        double norm;                     ///< root of the sum of their squares
    };
    std::vector<Drehung> drehungen_;
};

} // namespace tarvel
