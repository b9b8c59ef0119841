#include "measure/lupe.h"

#include "measure/ausschnitt.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace tarvel {

Lupe::Lupe(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("pic_Lupe"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus);
}

void Lupe::setzeBild(const QImage& bild, int zoomfaktor) {
    bild_ = bild;
    zoom_ = std::max(1, zoomfaktor);
    update();
}

void Lupe::setzeVergrößerung(int vergrößerung) {
    vergrößerung_ = std::max(1, vergrößerung);
    update();
}

void Lupe::setzeMitte(QPointF mitte) {
    mitte_ = mitte;
    update();
}

void Lupe::setzeMarken(std::vector<Marke> marken) {
    marken_ = std::move(marken);
    update();
}

void Lupe::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().brush(QPalette::Mid));
    if (bild_.isNull()) {
        return;
    }
    // As in the measuring view, a coordinate means the middle of the screen pixel it names.
    const double halb = 0.5 / devicePixelRatioF();
    const QPointF mitte(int(width() / 2) + halb, int(height() / 2) + halb);
    const QPointF ursprung = mitte - (mitte_ + QPointF(halb, halb)) * vergrößerung_;
    maleAusschnitt(painter, bild_, ursprung, double(zoom_) * vergrößerung_, QRectF(rect()));

    constexpr double Lücke = 8.0;
    const double weit = width() + height();
    for (const auto& [farbe, stärke] : {std::pair(Qt::white, 3.0), std::pair(Qt::black, 1.0)}) {
        painter.setPen(QPen(QColor(farbe), stärke, Qt::SolidLine, Qt::FlatCap));
        for (const QPointF arm : {QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1), QPointF(0, -1)}) {
            painter.drawLine(mitte + arm * Lücke, mitte + arm * weit);
        }
    }
    for (const Marke& marke : marken_) {
        const QPointF ort = ursprung + (marke.position + QPointF(halb, halb)) * vergrößerung_;
        if (markenRahmen(font(), marke, ort).intersects(QRectF(rect()))) {
            maleMarke(painter, font(), marke, ort);
        }
    }
}

} // namespace tarvel
