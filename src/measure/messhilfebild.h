#pragma once

#include <QSizeF>

class QPainter;
class QPalette;
class QRectF;

namespace tarvel {

class Texte;

/// Proportions of the drawing, width to height.
inline constexpr QSizeF MessHilfeFormat(10.3, 5.3);

/// Paints the measuring help as large as it fits into the middle of @p rahmen: the fore wing with
/// the eight numbered points, the cells they are named after, and a magnified view of points 5 to
/// 7. The colours come from @p palette, on its window colour; the font is the painter's.
void maleMessHilfe(QPainter& painter, const QRectF& rahmen, const QPalette& palette,
                   const Texte& texte);

} // namespace tarvel
