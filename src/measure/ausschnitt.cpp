#include "measure/ausschnitt.h"

#include <QImage>
#include <QPainter>

namespace tarvel {

void maleAusschnitt(QPainter& painter, const QImage& bild, QPointF ursprung, double faktor,
                    const QRectF& sicht) {
    const QRectF gesehen((sicht.topLeft() - ursprung) / faktor, sicht.size() / faktor);
    // One pixel more all round, for smoothing mixes each pixel with its neighbours.
    const QRect teil = gesehen.toAlignedRect().adjusted(-1, -1, 1, 1) & bild.rect();
    if (teil.isEmpty()) {
        return;
    }
    // Only the small part is brought into the screen's format; the view of it shares its memory.
    const QImage ansicht(bild.constScanLine(teil.top()) + qsizetype{teil.left()} * bild.depth() / 8,
                         teil.width(), teil.height(), bild.bytesPerLine(), bild.format());
    const QRectF ziel(ursprung + QPointF(teil.topLeft()) * faktor, QSizeF(teil.size()) * faktor);
    painter.save();
    painter.setClipRect(sicht, Qt::IntersectClip);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(ziel, ansicht.convertToFormat(QImage::Format_RGB32));
    painter.restore();
}

} // namespace tarvel
