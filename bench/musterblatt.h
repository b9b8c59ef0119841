#pragma once

#include <QImage>
#include <QPointF>
#include <QSizeF>

#include <array>
#include <vector>

namespace tarvel {

/// What a sample scan shall show.
struct Musterblattwahl {
    int flügel = 8;
    /// Wings side by side; 0 fills the width of the sheet.
    int spalten = 0;
    /// Resolution in dots per inch.
    int dpi = 1200;
    /// Sheet in millimetres; an empty size is a sheet just large enough for the wings.
    QSizeF blatt = {};
    quint32 saat = 1;
    /// 8 bits grey in place of colour.
    bool grau = false;
    /// Standard deviation of the scanner's noise in grey levels, 0 to 20.
    double rauschen = 1.5;
};

/// A scan of mounted wings as a flatbed scanner delivers it, with the truth about it.
struct Musterblatt {
    /// Null when the choice is out of range or the wings do not fit on the sheet.
    QImage bild;
    /// True measuring points 1 to 8 of each wing, row by row; index 0 is unused. Pixels of the
    /// picture with fractions: origin at its top left corner, y down, a pixel's middle at .5.
    std::vector<std::array<QPointF, 9>> punkte;
};

/// Paints a sample scan: wings that vary and are not quite straight on a light ground, with dust
/// and noise. The same choice gives the same sheet.
[[nodiscard]] Musterblatt male(const Musterblattwahl& wahl);

} // namespace tarvel
