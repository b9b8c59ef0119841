#pragma once

#include "collection/uebersichtsblatt.h"

namespace tarvel {

/// The most colonies whose histograms lie over each other.
inline constexpr int HöchsteÜberlagerung = 6;

/// Histograms of some colonies over each other, as shares of their wings.
struct Überlagerungsbild {
    Größe größe = Größe::CI;
    Kolonieauswahl kolonien;  ///< at most HöchsteÜberlagerung, of one caste
    Kolonieauswahl andereDpi; ///< chosen, but not comparable: another resolution
    std::size_t gewählt = 0;  ///< how many were chosen
    std::optional<Koloniegrenzen> grenzen;
};
/// The first of @p gewählt. Of discoidal shifts only those with the resolution of the first one.
[[nodiscard]] Überlagerungsbild überlagerungsbild(const Kolonieauswahl& gewählt, Größe größe,
                                                  const Kolonieregeln& regeln);

void maleÜberlagerung(QPainter& painter, const QRectF& rahmen, const Überlagerungsbild& bild,
                      const Übersichtsworte& worte, const Diagrammstil& stil);

} // namespace tarvel
