#pragma once

#include "measure/reihenmodelle.h"

#include <QPointF>
#include <QRectF>
#include <QString>

class QFont;
class QPainter;

namespace tarvel {

/// A mark on the wing picture.
struct Marke {
    /// Pixels of the zoomed picture, as in Messpunkte.
    QPointF position;
    /// Number that stands beside it; may be empty.
    QString text = {};
    /// The point that the arrow keys move: ringed, its number on a plate.
    bool gewählt = false;
    /// The point that was set last: its number is underlined.
    bool aktiv = false;
    /// The program proposed it: a broken ring instead of the cross.
    bool vorgeschlagen = false;
    /// It may well be wrong: a frame around it, a question mark behind its number.
    bool fraglich = false;
    /// A measured wing that is left out of the sample: its number is struck out on a light plate.
    bool ausgelassen = false;
    /// A measured wing in doubt: its sign stands beside the number.
    Zweifelsgrad zweifel = Zweifelsgrad::Keiner;

    bool operator==(const Marke&) const = default;
};

/// Paints a mark with its centre at @p ort: a cross that is open in the middle, so that the vein
/// below stays visible, dark with a light edge, so that it shows on any part of the picture.
/// @p schrift is the font of the numbers.
void maleMarke(QPainter& painter, const QFont& schrift, const Marke& marke, QPointF ort);

/// Paints the mark of a wing that is already measured: its number on a pale plate, or a small dot
/// where there is no text.
void maleErledigte(QPainter& painter, const QFont& schrift, const Marke& marke, QPointF ort);

/// Marks a wing in doubt: filled triangle with an exclamation mark for one that can hardly be
/// measured right, hollow diamond for one far from the others. @p feld is a square.
void maleZweifel(QPainter& painter, const QRectF& feld, Zweifelsgrad grad);

/// Rectangle around @p ort outside of which neither of the two paints.
[[nodiscard]] QRectF markenRahmen(const QFont& schrift, const Marke& marke, QPointF ort);

/// Paints a frame that shows on any part of a picture: a dark line between two light ones.
void maleRahmen(QPainter& painter, const QRectF& rahmen, double stärke);

} // namespace tarvel
