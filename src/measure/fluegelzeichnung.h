#pragma once

#include <QColor>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>

#include <array>
#include <vector>

class QPainter;
class QPalette;

namespace tarvel {

/// A vein as a smooth line through places, each with the width of the vein there.
struct Ader {
    struct Stelle {
        QPointF ort;   ///< millimetres
        double breite; ///< millimetres
    };
    std::vector<Stelle> verlauf;
    /// The vein fades into the membrane at its last place.
    bool läuftAus = false;
};

/// The cells of the fore wing that the measuring points are named after. The cubital cells are
/// counted from the wing root.
enum class Zelle { Radial, Cubital1, Cubital2, Cubital3, Discoidal };

/// Shape of a worker's fore wing, wing tip to the left and costal edge up. Millimetres, x to the
/// right, y down, origin near the top left corner of the wing.
struct Flügelform {
    /// The measuring points 1 to 8; index 0 is unused. Every vein that belongs to a point runs
    /// exactly through it.
    std::array<QPointF, 9> punkte;
    std::vector<Ader> adern;
    /// Corners of the membrane's smooth closed edge and of the hard root.
    std::vector<QPointF> umriss;
    std::vector<QPointF> wurzel;

    /// The mean wing: cubital index 2.8, hantel index 1.11, discoidal shift +1.6.
    [[nodiscard]] static Flügelform normal();

    /// The wing whose measuring points are @p punkte, all other places moved along with them.
    /// Points should lie within a few tenths of a millimetre of those of normal().
    [[nodiscard]] static Flügelform ausPunkten(const std::array<QPointF, 9>& punkte);

    /// Area of a cell between the middle lines of its veins.
    [[nodiscard]] QPainterPath zelle(Zelle zelle) const;

    /// Area of the membrane.
    [[nodiscard]] QPainterPath häutchen() const;

    /// Rectangle around everything that is painted.
    [[nodiscard]] QRectF rahmen() const;
};

/// How a wing is painted.
struct Flügelstil {
    QColor häutchen;
    QColor rand;
    QColor adern;
    QColor costa; ///< the thick veins at the costal edge and the wing root
    /// Bristles on the membrane, as a scan shows them.
    bool borsten = false;

    /// Line drawing in the colours of a window.
    [[nodiscard]] static Flügelstil zeichnung(const QPalette& palette);
};

/// Paints the wing. The painter's unit is the millimetre; a transformation gives place and size.
void maleFlügel(QPainter& painter, const Flügelform& form, const Flügelstil& stil);

} // namespace tarvel
