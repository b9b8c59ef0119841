#pragma once

#include "platform/vektorbild.h"

#include <QString>

namespace tarvel {

/// A drawing for a letterhead, or none.
struct Zeichnung {
    Vektorbild bild;
    bool zuAufwendig = false; ///< it is one, but not shown
};

/// Reads a drawing that needs nothing but itself and is painted in about a second at the most,
/// whatever it holds.
[[nodiscard]] Zeichnung leseZeichnung(const QString& datei);

} // namespace tarvel
