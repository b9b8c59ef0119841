#include "platform/vektorbild.h"

namespace tarvel {

struct Vektorbild::Zeichner {};

bool kannSvg() {
    return false;
}

Vektorbild::Vektorbild() = default;
Vektorbild::Vektorbild(const QByteArray& /*svg*/) {}
Vektorbild::Vektorbild(Vektorbild&&) noexcept = default;
Vektorbild& Vektorbild::operator=(Vektorbild&&) noexcept = default;
Vektorbild::~Vektorbild() = default;

QSizeF Vektorbild::format() const {
    return {};
}

void Vektorbild::male(QPainter& /*painter*/, const QRectF& /*rahmen*/) const {}

void schreibeSvg(QIODevice& /*ziel*/, const QSizeF& /*größe*/, const QString& /*titel*/,
                 const std::function<void(QPainter&, const QRectF&)>& /*maler*/) {}

} // namespace tarvel
