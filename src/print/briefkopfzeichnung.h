#pragma once

#include <QString>
#include <QSvgRenderer>

#include <memory>

namespace tarvel {

/// A drawing for a letterhead, or none.
struct Zeichnung {
    std::unique_ptr<QSvgRenderer> maler; ///< keeps its proportions
    bool zuAufwendig = false;            ///< it is one, but not shown
};

/// Reads a drawing that needs nothing but itself and is painted in about a second at the most,
/// whatever it holds.
[[nodiscard]] Zeichnung leseZeichnung(const QString& datei);

} // namespace tarvel
