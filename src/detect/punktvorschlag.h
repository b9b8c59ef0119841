#pragma once

#include "detect/affin.h"
#include "detect/erkennungsmodell.h"
#include "detect/gradientenfeld.h"

namespace tarvel {

/// Where the eight points of a wing are likely to lie, and how far off each may be.
struct Punktvorschlag {
    /// Points 1 to 8 (index 0 is point 1) in pixels of the picture with fractions, origin its
    /// corner.
    Punktsatz punkte;
    /// Error to expect of each, as a root mean square in pixels at 2400 dpi.
    std::array<float, 8> fehler{};
    /// From the frame of the mean wing to the picture, fitted to the points.
    Affin lage;

    /// Errors above this make a point doubtful.
    static constexpr float Zweifelhaft = 2;
    [[nodiscard]] float mittlererFehler() const;
};

/// What a proposal looks like, for judging how good it is. Index 0 is point 1.
using Vorschlagszeichen = std::array<std::array<float, Fehlermodell::Zeichen>, 8>;

/// Finds the points of wings whose pose is known about. Values, to be used by several threads.
class Punktsucher {
public:
    explicit Punktsucher(const Erkennungsmodell& modell)
        : modell_(modell) {}

    /// The points of the wing that @p lage puts the mean wing onto. @p quelle was scanned so that a
    /// pixel of the frame is about lage.maßstab() pixels of the picture.
    [[nodiscard]] Punktvorschlag suche(const Pixelquelle& quelle, const Affin& lage) const;

    /// The same without the errors, and what they would be formed from; for training.
    [[nodiscard]] std::pair<Punktvorschlag, Vorschlagszeichen>
    sucheMitZeichen(const Pixelquelle& quelle, const Affin& lage) const;

    [[nodiscard]] static float erwarteterFehler(const Fehlermodell& modell,
                                                const std::array<float, Fehlermodell::Zeichen>& z);

private:
    const Erkennungsmodell& modell_;
};

/// A part of a picture, at 1200 dpi or what there is, from which crops are taken.
class Bildstück {
public:
    /// What a crop on @p lage may need, with some play around it.
    Bildstück(const Pixelquelle& quelle, const Affin& lage);

    /// The crop whose frame lies on the picture as @p lage says. Edges go on as they are.
    [[nodiscard]] Flügelausschnitt schneide(const Affin& lage) const;

private:
    Graubild bild_;
    Affin zuBild_; ///< from the whole picture to bild_
};

} // namespace tarvel
