#include "measure/lupenpaar.h"

#include "measure/bild.h"
#include "measure/lupe.h"

#include <QEvent>

namespace tarvel {

Lupenpaar::Lupenpaar(Bild& bild)
    : bild_(bild)
    , feste_(new Lupe)
    , zeigerlupe_(new Lupe(&bild)) {
    zeigerlupe_->setObjectName(QStringLiteral("pic_Zeigerlupe"));
    zeigerlupe_->setAttribute(Qt::WA_TransparentForMouseEvents);
    constexpr int Lupengröße = 180;
    zeigerlupe_->resize(Lupengröße, Lupengröße);
    zeigerlupe_->hide();
    bild_.viewport()->installEventFilter(this);
}

void Lupenpaar::setzeAmZeiger(bool amZeiger) {
    amZeiger_ = amZeiger;
    feste_->setVisible(!amZeiger);
    zeigerlupe_->hide(); // until the pointer moves over the picture
}

void Lupenpaar::setzeBild(const QImage& bild, int zoomfaktor) {
    for (Lupe* lupe : {feste_, zeigerlupe_}) {
        lupe->setzeBild(bild, zoomfaktor);
    }
}

void Lupenpaar::setzeMarken(const std::vector<Marke>& marken) {
    for (Lupe* lupe : {feste_, zeigerlupe_}) {
        lupe->setzeMarken(marken);
    }
}

void Lupenpaar::setzeName(const QString& name) {
    for (Lupe* lupe : {feste_, zeigerlupe_}) {
        lupe->setAccessibleName(name);
    }
}

void Lupenpaar::zeige(QPointF ort) {
    for (Lupe* lupe : {feste_, zeigerlupe_}) {
        lupe->setzeMitte(ort);
    }
    if (!amZeiger_ || !bild_.isVisible()) {
        return;
    }
    // Beside the place, on the side where there is room: never over what is being looked at.
    constexpr int Abstand = 28;
    const QRect feld = bild_.viewport()->geometry();
    const QPoint hier = bild_.zuFenster(ort).toPoint() + feld.topLeft();
    const auto neben = [](int stelle, int länge, int ende) {
        return stelle + Abstand + länge <= ende ? stelle + Abstand : stelle - Abstand - länge;
    };
    zeigerlupe_->move(neben(hier.x(), zeigerlupe_->width(), feld.right()),
                      neben(hier.y(), zeigerlupe_->height(), feld.bottom()));
    zeigerlupe_->setVisible(bild_.zeigerHier());
}

bool Lupenpaar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Leave) {
        zeigerlupe_->hide();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tarvel
