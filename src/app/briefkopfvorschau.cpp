#include "app/briefkopfvorschau.h"

#include <QPainter>

#include <algorithm>

namespace tarvel {

namespace {

constexpr double Ausschnitt = 90; // millimetres of the page's height

} // namespace

Briefkopfvorschau::Briefkopfvorschau(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("pic_Briefkopf"));
    QSizePolicy größe(QSizePolicy::Preferred, QSizePolicy::Preferred);
    größe.setHeightForWidth(true);
    setSizePolicy(größe);
    setMinimumSize(QSize(315, heightForWidth(315)));
}

void Briefkopfvorschau::zeige(const Briefkopf& kopf) {
    if (kopf.Ikone != kopf_.Ikone || kopf.Datei != kopf_.Datei || !grafik_.vorhanden()) {
        grafik_ = Briefkopfgrafik(kopf);
    }
    kopf_ = kopf;
    update();
}

QSize Briefkopfvorschau::sizeHint() const {
    constexpr int Breite = 420; // two pixels a millimetre
    return {Breite, heightForWidth(Breite)};
}

int Briefkopfvorschau::heightForWidth(int breite) const {
    return qRound(breite * Ausschnitt / PapierA4.width());
}

void Briefkopfvorschau::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const double faktor = std::min(width() / PapierA4.width(), height() / Ausschnitt);
    const QRectF papier(0, 0, PapierA4.width() * faktor - 1, Ausschnitt * faktor - 1);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(Qt::white);
    painter.drawRect(papier);
    painter.setClipRect(papier.adjusted(1, 1, 0, 0));
    painter.scale(faktor, faktor);
    maleBriefkopf(painter, kopf_, grafik_);
}

} // namespace tarvel
