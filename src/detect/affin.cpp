#include "detect/affin.h"

namespace tarvel {

Affin Affin::nach(const Affin& zuerst) const {
    return {xx * zuerst.xx + xy * zuerst.yx,      xx * zuerst.xy + xy * zuerst.yy,
            yx * zuerst.xx + yy * zuerst.yx,      yx * zuerst.xy + yy * zuerst.yy,
            xx * zuerst.dx + xy * zuerst.dy + dx, yx * zuerst.dx + yy * zuerst.dy + dy};
}

Affin Affin::umkehrung() const {
    const double d = determinante();
    Affin um{yy / d, -xy / d, -yx / d, xx / d, 0, 0};
    um.dx = -(um.xx * dx + um.xy * dy);
    um.dy = -(um.yx * dx + um.yy * dy);
    return um;
}

Affin Affin::drehung(double winkel, double faktor, bool gespiegelt) {
    const double c = std::cos(winkel) * faktor;
    const double s = std::sin(winkel) * faktor;
    const double m = gespiegelt ? -1 : 1;
    return {c * m, -s, s * m, c, 0, 0};
}

Affin ähnlichkeit(std::span<const QPointF> von, std::span<const QPointF> nach, bool gespiegelt) {
    const double m = gespiegelt ? -1 : 1;
    QPointF mitteVon;
    QPointF mitteNach;
    for (std::size_t i = 0; i < von.size(); ++i) {
        mitteVon += QPointF(m * von[i].x(), von[i].y());
        mitteNach += nach[i];
    }
    mitteVon /= double(von.size());
    mitteNach /= double(von.size());
    double gleich = 0;
    double quer = 0;
    double länge = 0;
    for (std::size_t i = 0; i < von.size(); ++i) {
        const QPointF a = QPointF(m * von[i].x(), von[i].y()) - mitteVon;
        const QPointF b = nach[i] - mitteNach;
        gleich += a.x() * b.x() + a.y() * b.y();
        quer += a.x() * b.y() - a.y() * b.x();
        länge += a.x() * a.x() + a.y() * a.y();
    }
    const double c = gleich / länge;
    const double s = quer / länge;
    Affin bild{c * m, -s, s * m, c, 0, 0};
    bild.dx = mitteNach.x() - (c * mitteVon.x() - s * mitteVon.y());
    bild.dy = mitteNach.y() - (s * mitteVon.x() + c * mitteVon.y());
    return bild;
}

} // namespace tarvel
