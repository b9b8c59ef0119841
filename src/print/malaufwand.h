#pragma once

#include <QSizeF>

#include <functional>

class QPainter;

namespace tarvel {

/// What painting takes, counted without painting.
struct Malaufwand {
    double fläche =
        0; ///< square units that are filled, as often as they are; pixels of pictures too
    double umriss = 0; ///< units of all outlines, those of lines and their dashes too
    double teile = 0;  ///< forms, lines, pictures and letters
};

/// What @p male would take on a sheet of @p größe units; what lies off the sheet takes little.
[[nodiscard]] Malaufwand malaufwand(QSizeF größe, const std::function<void(QPainter&)>& male);

} // namespace tarvel
