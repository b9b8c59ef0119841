#include "measure/fundrahmen.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace tarvel {
namespace {

const QColor Dunkel(0x10, 0x10, 0x10);
const QColor Hoffarbe(0xFF, 0xFF, 0xFF);
const QColor Zweifel(0xD5, 0x5E, 0x00);
constexpr double Textabstand = 3;

} // namespace

void maleFundrahmen(QPainter& painter, const QFont& schrift, const QPolygonF& umriss,
                    const Fundrahmen& rahmen, const QRectF& bildfeld) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Hoffarbe, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolygon(umriss);
    QPen linie(rahmen.zweifelhaft ? Zweifel : Dunkel, 1, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
    if (rahmen.zweifelhaft) {
        linie.setWidthF(1.5);
        linie.setDashPattern({5, 4});
    }
    painter.setPen(linie);
    painter.drawPolygon(umriss);

    const QString text = rahmen.zweifelhaft ? rahmen.nummer + QStringLiteral(" ?") : rahmen.nummer;
    if (!text.isEmpty()) {
        const QFontMetricsF maße(schrift);
        const QSizeF größe(maße.horizontalAdvance(text), maße.height());
        const QRectF feld = umriss.boundingRect();
        const QPointF ort(feld.center().x() - größe.width() / 2,
                          std::max(feld.top() - Textabstand - größe.height(), bildfeld.top()));
        QPainterPath ziffern;
        ziffern.addText(ort + QPointF(0, maße.ascent()), schrift, text);
        painter.setPen(QPen(Hoffarbe, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(ziffern);
        painter.fillPath(ziffern, Dunkel);
    }
    painter.restore();
}

QRectF fundrahmenFeld(const QFont& schrift, const QPolygonF& umriss) {
    const double rand = QFontMetricsF(schrift).height() + 2 * Textabstand;
    return umriss.boundingRect().adjusted(-2 * rand, -rand, 2 * rand, rand);
}

} // namespace tarvel
