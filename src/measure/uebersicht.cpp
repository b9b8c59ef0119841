#include "measure/uebersicht.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace tarvel {
namespace {

constexpr int Rand = 6;
constexpr double Rahmenstärke = 2.0;

QImage angepasst(const QImage& bild, QSize größe) {
    // Below one half, sampling between neighbours would lose thin veins.
    if (größe.width() * 2 < bild.width()) {
        return bild.scaled(größe, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    QImage ergebnis(größe, QImage::Format_RGB32);
    QPainter painter(&ergebnis);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRect(QPoint(), größe), bild);
    return ergebnis;
}

double eingegrenzt(double mitte, double rahmen, double ganz) {
    return rahmen >= ganz ? ganz / 2 : std::clamp(mitte, rahmen / 2, ganz - rahmen / 2);
}

} // namespace

Übersicht::Übersicht(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("Übersicht"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setMouseTracking(true);
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

void Übersicht::setzeBild(const QImage& bild, QSize größe) {
    bild_ = bild.convertToFormat(QImage::Format_RGB32);
    größe_ = größe;
    zeiger_.reset();
    angepasst_ = {};
    erledigte_.clear();
    funde_.clear();
    vorDemZiehen_.reset();
    setzeMitte({});
    update();
}

void Übersicht::setzeRahmen(QSizeF größe) {
    rahmen_ = größe;
    setzeMitte(mitte_);
    update();
}

void Übersicht::setzeMitte(QPointF mitte) {
    const auto alt = rahmenfeld();
    mitte_ = {eingegrenzt(mitte.x(), rahmen_.width(), größe_.width()),
              eingegrenzt(mitte.y(), rahmen_.height(), größe_.height())};
    const int breite = static_cast<int>(3 * Rahmenstärke);
    for (const QRectF& feld : {alt, rahmenfeld()}) {
        update(feld.toAlignedRect().adjusted(-breite, -breite, breite, breite));
    }
}

void Übersicht::setzeErledigte(std::vector<Marke> erledigte) {
    erledigte_ = std::move(erledigte);
    update();
}

void Übersicht::setzeFunde(std::vector<Fundrahmen> funde) {
    if (funde != funde_) {
        funde_ = std::move(funde);
        angepasst_ = {};
        update();
    }
}

QPointF Übersicht::zuBild(QPointF imFenster) const {
    const QRectF feld = bildfeld();
    if (feld.isEmpty()) {
        return {};
    }
    return {(imFenster.x() - feld.left()) * größe_.width() / feld.width(),
            (imFenster.y() - feld.top()) * größe_.height() / feld.height()};
}

QPointF Übersicht::zuFenster(QPointF imBild) const {
    const QRectF feld = bildfeld();
    if (größe_.isEmpty()) {
        return feld.topLeft();
    }
    return {feld.left() + imBild.x() * feld.width() / größe_.width(),
            feld.top() + imBild.y() * feld.height() / größe_.height()};
}

bool Übersicht::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto& hilfe = static_cast<const QHelpEvent&>(*event);
        QToolTip::showText(
            hilfe.globalPos(),
            erklärung_ && !bild_.isNull() ? erklärung_(zuBild(hilfe.pos())) : QString(), this);
        return true;
    }
    return QWidget::event(event);
}

void Übersicht::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.fillRect(event->rect(), palette().brush(QPalette::Mid));
    const QRect feld = bildfeld();
    if (!bild_.isNull() && !feld.isEmpty()) {
        const QSize fein = (QSizeF(feld.size()) * devicePixelRatioF()).toSize();
        if (angepasst_.size() != fein) {
            angepasst_ = angepasst(bild_, fein);
            angepasst_.setDevicePixelRatio(devicePixelRatioF());
            // Many frames take longer than one picture on the screen may.
            QPainter rahmen(&angepasst_);
            rahmen.translate(-feld.topLeft());
            for (const Fundrahmen& fund : funde_) {
                QPolygonF umriss = fund.umriss;
                for (QPointF& ecke : umriss) {
                    ecke = zuFenster(ecke);
                }
                maleFundrahmen(rahmen, font(), umriss, fund, feld);
            }
        }
        angepasst_.setDevicePixelRatio(devicePixelRatioF());
        painter.drawImage(feld.topLeft(), angepasst_);
        for (const Marke& marke : erledigte_) {
            maleErledigte(painter, font(), marke, zuFenster(marke.position));
        }
        maleRahmen(painter, rahmenfeld(), Rahmenstärke);
    }
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

void Übersicht::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton && !vorDemZiehen_ && gezeigt_ && !bild_.isNull()) {
        zeiger_.reset(); // it goes to the menu
        gezeigt_(zuBild(event->position()));
        return;
    }
    if (event->button() != Qt::LeftButton || bild_.isNull()) {
        event->ignore();
        return;
    }
    vorDemZiehen_ = mitte_;
    setzeMitte(zuBild(event->position()));
}

void Übersicht::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

void Übersicht::mouseMoveEvent(QMouseEvent* event) {
    zeiger_ = zuBild(event->position());
    if (vorDemZiehen_) {
        setzeMitte(zuBild(event->position()));
    }
}

void Übersicht::leaveEvent(QEvent*) {
    zeiger_.reset();
}

void Übersicht::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !vorDemZiehen_) {
        return;
    }
    vorDemZiehen_.reset();
    const QPointF ort = zuBild(event->position());
    setzeMitte(ort);
    wähle(ort, event->modifiers());
}

void Übersicht::keyPressEvent(QKeyEvent* event) {
    const double weite = event->modifiers().testFlag(Qt::ShiftModifier) ? 1.0 : 0.25;
    const QPointF schritt(rahmen_.width() * weite, rahmen_.height() * weite);
    switch (event->key()) {
    case Qt::Key_Left:
        setzeMitte(mitte_ - QPointF(schritt.x(), 0));
        break;
    case Qt::Key_Right:
        setzeMitte(mitte_ + QPointF(schritt.x(), 0));
        break;
    case Qt::Key_Up:
        setzeMitte(mitte_ - QPointF(0, schritt.y()));
        break;
    case Qt::Key_Down:
        setzeMitte(mitte_ + QPointF(0, schritt.y()));
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        wähle(mitte_, event->modifiers());
        break;
    case Qt::Key_Escape:
        if (vorDemZiehen_) {
            setzeMitte(*vorDemZiehen_);
            vorDemZiehen_.reset();
            break;
        }
        [[fallthrough]];
    default:
        QWidget::keyPressEvent(event);
    }
}

void Übersicht::focusInEvent(QFocusEvent*) {
    update();
}

void Übersicht::focusOutEvent(QFocusEvent*) {
    update();
}

QRect Übersicht::bildfeld() const {
    const QRect raum = rect().adjusted(Rand, Rand, -Rand, -Rand);
    if (größe_.isEmpty() || raum.isEmpty()) {
        return {};
    }
    QRect feld(QPoint(), größe_.scaled(raum.size(), Qt::KeepAspectRatio).expandedTo({1, 1}));
    feld.moveCenter(raum.center());
    return feld;
}

QRectF Übersicht::rahmenfeld() const {
    const QPointF halb(rahmen_.width() / 2, rahmen_.height() / 2);
    QRectF feld(zuFenster(mitte_ - halb), zuFenster(mitte_ + halb));
    return feld & QRectF(bildfeld());
}

void Übersicht::wähle(QPointF ort, Qt::KeyboardModifiers umschalt) {
    if (gewählt_ && !bild_.isNull()) {
        gewählt_({mitte_, ort, umschalt.testFlag(Qt::ControlModifier)});
    }
}

} // namespace tarvel
