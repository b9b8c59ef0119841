#pragma once

#include "collection/kolonievergleich.h"
#include "collection/uebersichtsblatt.h"

namespace tarvel {

/// Two colonies side by side; with another number of them it asks for two.
struct Vergleichsbild {
    const Koloniewerte* a = nullptr;
    const Koloniewerte* b = nullptr;
    Kolonievergleich vergleich;
    std::optional<Koloniegrenzen> grenzen; ///< where both have the same
};
[[nodiscard]] Vergleichsbild vergleichsbild(const Kolonieauswahl& gewählt,
                                            const Kolonieregeln& regeln);

void maleVergleich(QPainter& painter, const QRectF& rahmen, const Vergleichsbild& bild,
                   const Übersichtsworte& worte, const Diagrammstil& stil);

} // namespace tarvel
