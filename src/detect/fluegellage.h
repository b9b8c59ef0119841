#pragma once

#include "detect/affin.h"
#include "detect/dunkelkarte.h"
#include "detect/erkennungsmodell.h"

#include <vector>

namespace tarvel {

/// Where and how a wing lies on a picture.
struct Flügellage {
    double x = 0; ///< middle of the wing, pixels of the map at 300 dpi, origin its corner
    double y = 0;
    double winkel = 0;       ///< radians by which the mean wing is turned, from x towards y
    double größe = 1;        ///< times the mean wing
    bool gespiegelt = false; ///< a right wing, or a left one seen from below
    float güte = 0;          ///< correlation with the mean wing, -1 to 1
};

/// The mean wing as a pattern to be laid over a map of darkness, and the search for the place where
/// it fits. Values, to be used by several threads at once.
class Flügelmuster {
public:
    static constexpr double KleinsteGröße = 0.8;
    static constexpr double GrößteGröße = 1.25;

    explicit Flügelmuster(const Erkennungsmodell& modell);

    /// The pose near @p anfang that fits best; the start may lie some pixels, an angle of a few
    /// degrees, half a turn or a mirror image off. Where the pattern does not decide, others that
    /// fit nearly as well follow. Empty where nothing like a wing lies.
    [[nodiscard]] std::vector<Flügellage> suche(const Dunkelkarte& karte,
                                                const Flügellage& anfang) const;
    /// Normalised correlation of the pattern, blurred like level @p stufe, with the map there. Of
    /// each @p schritt-th pixel only: 1, 3 or 9.
    [[nodiscard]] float güte(const Dunkelkarte& karte, int stufe, const Flügellage& lage,
                             int schritt = 1) const;

    /// From the frame of the mean wing to the picture that was scanned at @p dpi.
    [[nodiscard]] Affin abbildung(const Flügellage& lage, double dpi) const;

    /// Darkness of the pattern at its pixel; 0 outside.
    [[nodiscard]] float wert(double x, double y) const;
    [[nodiscard]] bool gilt(double x, double y) const;
    [[nodiscard]] QSize größe() const { return {muster_.breite, muster_.höhe}; }

private:
    struct Schritte {
        double weite; ///< pixels
        double winkel;
        double größe;
    };
    void steige(const Dunkelkarte& karte, Flügellage& lage, int stufe, const Schritte& schritte,
                int schritt) const;
    void feinsuche(const Dunkelkarte& karte, Flügellage& lage) const;

    Graubild muster_;
    Graubild maske_;
    struct Auswahl {
        std::vector<float> x, y;                 ///< from the middle of the pattern
        std::array<std::vector<float>, 4> werte; ///< of each level: mean 0, length 1
    };
    /// All pixels of the pattern, each third, and each third of each third row.
    Auswahl alle_, dritte_, neunte_;
    [[nodiscard]] Auswahl auswahl(int schritt) const;
};

} // namespace tarvel
