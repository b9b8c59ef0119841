#pragma once

#include <QPointF>
#include <QRectF>

class QImage;
class QPainter;

namespace tarvel {

/// Paints the part of a large picture that lies in @p sicht (in the painter's units). The
/// picture's top left corner is at @p ursprung and a pixel of it is @p faktor units wide.
/// Costs what is seen, not what the picture holds: nothing of the rest is touched or converted.
void maleAusschnitt(QPainter& painter, const QImage& bild, QPointF ursprung, double faktor,
                    const QRectF& sicht);

} // namespace tarvel
