#include "platform/vektorbild.h"

#include <QPainter>
#include <QSvgGenerator>
#include <QSvgRenderer>

namespace tarvel {

struct Vektorbild::Zeichner {
    QSvgRenderer svg;
};

bool kannSvg() {
    return true;
}

Vektorbild::Vektorbild() = default;
Vektorbild::Vektorbild(Vektorbild&&) noexcept = default;
Vektorbild& Vektorbild::operator=(Vektorbild&&) noexcept = default;
Vektorbild::~Vektorbild() = default;

Vektorbild::Vektorbild(const QByteArray& svg)
    : zeichner_(std::make_unique<Zeichner>()) {
    zeichner_->svg.load(svg);
    zeichner_->svg.setAspectRatioMode(Qt::KeepAspectRatio);
    if (!zeichner_->svg.isValid()) {
        zeichner_.reset();
    }
}

QSizeF Vektorbild::format() const {
    return zeichner_ ? zeichner_->svg.viewBoxF().size() : QSizeF();
}

void Vektorbild::male(QPainter& painter, const QRectF& rahmen) const {
    if (zeichner_) {
        zeichner_->svg.render(&painter, rahmen);
    }
}

void schreibeSvg(QIODevice& ziel, const QSizeF& größe, const QString& titel,
                 const std::function<void(QPainter&, const QRectF&)>& maler) {
    const QRectF rahmen(QPointF(), größe);
    QSvgGenerator svg;
    svg.setOutputDevice(&ziel);
    svg.setTitle(titel);
    svg.setSize(größe.toSize());
    svg.setViewBox(rahmen);
    QPainter painter(&svg);
    maler(painter, rahmen);
}

} // namespace tarvel
