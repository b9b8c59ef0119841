#pragma once

#include "collection/uebersichtsblatt.h"

namespace tarvel {

/// Colonies by their means: CI against DV and HI against DV, with the spread of their wings.
struct Kreuzbild {
    Kolonieauswahl kolonien;
    Kolonieauswahl gewählt;                ///< pointed out with their numbers
    std::optional<Koloniegrenzen> grenzen; ///< of the race, where it is one
    bool mehrereRassen = false;
};

[[nodiscard]] Kreuzbild kreuzbild(const Kolonieauswahl& kolonien, const Kolonieauswahl& gewählt,
                                  const Kolonieregeln& regeln);

/// Beyond this number of colonies their spread is not drawn.
inline constexpr int HöchsteKreuzzahl = 150;

/// A sign of a colony, in the units of the rectangle.
struct Kreuzstelle {
    QPointF ort;
    const Koloniewerte* kolonie = nullptr;
};
[[nodiscard]] std::vector<Kreuzstelle> kreuzstellen(const QRectF& rahmen, const Kreuzbild& bild,
                                                    const Übersichtsworte& worte,
                                                    const Diagrammstil& stil);

void maleKreuze(QPainter& painter, const QRectF& rahmen, const Kreuzbild& bild,
                const Übersichtsworte& worte, const Diagrammstil& stil);

} // namespace tarvel
