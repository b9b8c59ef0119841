#pragma once

#include "feld.h"

#include "detect/gradientenfeld.h"

#include <QString>

#include <optional>

namespace tarvel {

/// A measured wing to learn from.
struct Übungsflügel {
    QString name;
    QString volk; ///< the name up to its second hyphen
    double dpi = 0;
    Graubild bild;
    std::vector<QPointF> marken; ///< pixels, origin the corner
    Punktsatz punkte;            ///< the measuring points among them

    Affin ausMittel; ///< from the frame of the mean wing to the picture
    Feld halb;       ///< at 1200 dpi, 1 as bright as its brightest tenth
    Affin zuHalb;
    /// The wing over white paper at the frame's resolution: what light it lets through.
    Feld durchsicht;
    Affin zuDurchsicht;
};

/// The mean shape of several wings, by generalised Procrustes analysis: frame and places.
struct Mittelflügel {
    std::vector<QPointF> marken;
    Punktsatz punkte;
};

/// Reads the wings that "landmarks.csv" in @p ordner lists (file, width, height, dpi, x1, y1, … of
/// 19 landmarks in the usual order, whole pixels). nullopt, with @p grund, when something is
/// missing.
[[nodiscard]] std::optional<std::vector<Übungsflügel>> liesÜbungsflügel(const QString& ordner,
                                                                        QString& grund);

/// The mean of @p flügel, as large as they are at 2400 dpi.
[[nodiscard]] Mittelflügel mittle(const std::vector<const Übungsflügel*>& flügel);

/// Fits @p mittel to each wing and cuts out what training needs.
void richteAus(std::vector<Übungsflügel>& flügel, const Mittelflügel& mittel);

} // namespace tarvel
