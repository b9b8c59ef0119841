#include "measure/fluegelskizze.h"

#include "measure/fluegelzeichnung.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>

namespace tarvel {

namespace {

/// The part of the wing that the points lie on, in millimetres: the rest would only make it
/// smaller.
QRectF ausschnitt() {
    constexpr double Rand = 0.45;
    QRectF feld;
    for (std::size_t i = 1; i < Zeichnungspunkte.size(); ++i) {
        feld |= QRectF(Zeichnungspunkte[i] - QPointF(Rand, Rand), QSizeF(2 * Rand, 2 * Rand));
    }
    return feld;
}

} // namespace

Flügelskizze::Flügelskizze(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("pic_Skizze"));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
}

void Flügelskizze::zeige(const Messpunkte& punkte, Messart messart, int nächster) {
    punkte_ = punkte;
    messart_ = messart;
    nächster_ = nächster;
    update();
}

QTransform Flügelskizze::lage() const {
    const QRectF feld = ausschnitt();
    const double maßstab = std::min(width() / feld.width(), height() / feld.height());
    QTransform lage;
    lage.translate(width() / 2.0, height() / 2.0);
    lage.scale(maßstab, maßstab);
    lage.translate(-feld.center().x(), -feld.center().y());
    return lage;
}

void Flügelskizze::paintEvent(QPaintEvent*) {
    const double dpr = devicePixelRatioF();
    if (flügel_.size() != (QSizeF(size()) * dpr).toSize()) {
        flügel_ = QPixmap((QSizeF(size()) * dpr).toSize());
        flügel_.setDevicePixelRatio(dpr);
        flügel_.fill(Qt::transparent);
        QPainter painter(&flügel_);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setTransform(lage(), true);
        maleFlügel(painter, Zeichnungsfarben::zeichnung(palette()));
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawPixmap(0, 0, flügel_);

    const QColor farbe = palette().color(QPalette::Highlight);
    const QColor blass = palette().color(QPalette::WindowText);
    const double klein = 3;
    const double groß = std::max(8.0, 0.6 * fontMetrics().height());
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        const QPointF ort = lage().map(Zeichnungspunkte.at(static_cast<std::size_t>(i)));
        if (!benutzt(messart_, i) || i == nächster_) {
            continue;
        }
        painter.setPen(QPen(blass, 1));
        painter.setBrush(punkte_.gemessen(i) ? QBrush(blass) : QBrush(palette().window()));
        painter.drawEllipse(ort, klein, klein);
    }
    if (nächster_ != 0) {
        const QPointF ort = lage().map(Zeichnungspunkte.at(static_cast<std::size_t>(nächster_)));
        painter.setPen(Qt::NoPen);
        painter.setBrush(farbe);
        painter.drawEllipse(ort, groß, groß);
        QFont fett = font();
        fett.setBold(true);
        painter.setFont(fett);
        painter.setPen(palette().color(QPalette::HighlightedText));
        painter.drawText(QRectF(ort.x() - groß, ort.y() - groß, 2 * groß, 2 * groß),
                         Qt::AlignCenter, QString::number(nächster_));
    }
}

void Flügelskizze::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        flügel_ = {};
    }
    QWidget::changeEvent(event);
}

} // namespace tarvel
