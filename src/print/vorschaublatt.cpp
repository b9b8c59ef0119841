#include "print/vorschaublatt.h"

#include "print/briefkopfbild.h"

#include <QKeyEvent>
#include <QScreen>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <array>

namespace tarvel {
namespace {

constexpr int Rand = 16; // pixels around the paper
constexpr int Schattenbreite = 6;
constexpr int RasteDesRades = 120;
constexpr int Schrittweite = 30;
constexpr std::array Stufen{0.25, 0.33, 0.5, 0.67, 0.75, 1.0, 1.25, 1.5, 2.0, 3.0, 4.0};

/// The desk the paper lies on: darker than the window around in light and in dark colours.
QColor unterlage(const QPalette& palette) {
    constexpr int Dunkler = 115; // percent
    return palette.color(QPalette::Window).darker(Dunkler);
}

void maleSchatten(QPainter& painter, const QRect& papier) {
    painter.setPen(Qt::NoPen);
    for (int i = Schattenbreite; i > 0; --i) {
        painter.setBrush(QColor(0, 0, 0, 14));
        painter.drawRoundedRect(papier.adjusted(2 - i, 3 - i, i, i + 1), i, i);
    }
}

} // namespace

Vorschaublatt::Vorschaublatt(QWidget* parent)
    : QAbstractScrollArea(parent) {
    setObjectName(QStringLiteral("pic_Vorschau"));
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    horizontalScrollBar()->setSingleStep(Schrittweite);
    verticalScrollBar()->setSingleStep(Schrittweite);
}

double Vorschaublatt::originalmaß() const {
    constexpr double ZollInMillimetern = 25.4;
    const double echt = screen()->physicalDotsPerInch();
    // Projectors and virtual screens claim sizes that no screen has.
    const bool glaubhaft = echt > 40 && echt < 400;
    return (glaubhaft ? echt : screen()->logicalDotsPerInch()) / ZollInMillimetern;
}

double Vorschaublatt::ganzesMaß() const {
    // Without its scroll bars, which the whole page does not need.
    const QSize platz = maximumViewportSize() - QSize(2 * Rand, 2 * Rand);
    const double maß =
        std::min(platz.width() / PapierA4.width(), platz.height() / PapierA4.height());
    return std::max(maß, 0.1);
}

double Vorschaublatt::zoom() const {
    return zoom_.value_or(ganzesMaß() / originalmaß());
}

QSize Vorschaublatt::papiergröße() const {
    return (PapierA4 * (zoom() * originalmaß())).toSize();
}

QRect Vorschaublatt::papier() const {
    const QSize größe = papiergröße();
    const auto beginn = [](int platz, int länge, int verschoben) {
        return std::max((platz - länge) / 2, Rand) - verschoben;
    };
    return {QPoint(beginn(viewport()->width(), größe.width(), horizontalScrollBar()->value()),
                   beginn(viewport()->height(), größe.height(), verticalScrollBar()->value())),
            größe};
}

void Vorschaublatt::stelleLeisten() {
    const QSize größe = papiergröße() + QSize(2 * Rand, 2 * Rand);
    const auto stelle = [this](QScrollBar* leiste, int länge, int platz) {
        leiste->setRange(0, ganz() ? 0 : std::max(0, länge - platz));
        leiste->setPageStep(platz);
    };
    stelle(horizontalScrollBar(), größe.width(), viewport()->width());
    stelle(verticalScrollBar(), größe.height(), viewport()->height());
    zeigeZeiger();
    viewport()->update();
}

void Vorschaublatt::zeigeZeiger() {
    const bool beweglich =
        horizontalScrollBar()->maximum() > 0 || verticalScrollBar()->maximum() > 0;
    if (griff_) {
        viewport()->setCursor(Qt::ClosedHandCursor);
    } else if (beweglich) {
        viewport()->setCursor(Qt::OpenHandCursor);
    } else {
        viewport()->unsetCursor();
    }
}

void Vorschaublatt::setzeZoom(std::optional<double> zoom) {
    setzeZoomUm(zoom, QRectF(viewport()->rect()).center());
}

void Vorschaublatt::stufe(int um) {
    stufeUm(um, QRectF(viewport()->rect()).center());
}

void Vorschaublatt::setzeZoomUm(std::optional<double> zoom, QPointF anker) {
    const QRectF vorher = papier();
    const QPointF anteil((anker.x() - vorher.x()) / vorher.width(),
                         (anker.y() - vorher.y()) / vorher.height());
    zoom_ = zoom;
    stelleLeisten();
    // What was under the anchor stays under it, as far as the paper can be scrolled.
    const QRectF nachher = papier();
    const QPointF abweichung = QPointF(nachher.x() + anteil.x() * nachher.width(),
                                       nachher.y() + anteil.y() * nachher.height()) -
                               anker;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + qRound(abweichung.x()));
    verticalScrollBar()->setValue(verticalScrollBar()->value() + qRound(abweichung.y()));
    beiZoom_();
}

void Vorschaublatt::stufeUm(int um, QPointF anker) {
    constexpr double Spiel = 0.005; // less than this from a step counts as the step
    const double jetzt = zoom();
    if (um > 0) {
        const auto* größer = std::upper_bound(Stufen.begin(), Stufen.end(), jetzt + Spiel);
        if (größer != Stufen.end()) {
            setzeZoomUm(*größer, anker);
        }
    } else {
        const auto* nichtKleiner = std::lower_bound(Stufen.begin(), Stufen.end(), jetzt - Spiel);
        if (nichtKleiner != Stufen.begin()) {
            setzeZoomUm(*(nichtKleiner - 1), anker);
        }
    }
}

void Vorschaublatt::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), unterlage(palette()));
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect blatt = papier();
    maleSchatten(painter, blatt);
    painter.fillRect(blatt, Qt::white);
    if (!seite_) {
        return;
    }
    painter.setClipRect(blatt.intersected(event->rect()));
    painter.translate(blatt.topLeft());
    const double maß = zoom() * originalmaß();
    painter.scale(maß, maß);
    painter.setPen(Qt::black);
    painter.setBrush(Qt::NoBrush);
    seite_(painter);
}

bool Vorschaublatt::event(QEvent* event) {
    // On another screen real size is another number of pixels.
    if (event->type() == QEvent::ScreenChangeInternal) {
        stelleLeisten();
        beiZoom_();
    }
    return QAbstractScrollArea::event(event);
}

void Vorschaublatt::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    stelleLeisten();
    beiZoom_();
}

void Vorschaublatt::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    event->accept();
    raste_ += event->angleDelta().y();
    for (; raste_ >= RasteDesRades; raste_ -= RasteDesRades) {
        stufeUm(1, event->position());
    }
    for (; raste_ <= -RasteDesRades; raste_ += RasteDesRades) {
        stufeUm(-1, event->position());
    }
}

void Vorschaublatt::keyPressEvent(QKeyEvent* event) {
    const QScrollBar& leiste = *verticalScrollBar();
    switch (event->key()) {
    case Qt::Key_Plus:
        stufe(1);
        return;
    case Qt::Key_Minus:
        stufe(-1);
        return;
    case Qt::Key_PageDown:
        if (leiste.value() == leiste.maximum() && beiBlättern_) {
            return beiBlättern_(1);
        }
        break;
    case Qt::Key_PageUp:
        if (leiste.value() == leiste.minimum() && beiBlättern_) {
            return beiBlättern_(-1);
        }
        break;
    default:
        break;
    }
    QAbstractScrollArea::keyPressEvent(event);
}

void Vorschaublatt::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        griff_ = event->pos();
        zeigeZeiger();
    }
}

void Vorschaublatt::mouseMoveEvent(QMouseEvent* event) {
    if (!griff_) {
        return;
    }
    const QPoint weg = event->pos() - *griff_;
    griff_ = event->pos();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - weg.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - weg.y());
}

void Vorschaublatt::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        griff_.reset();
        zeigeZeiger();
    }
}

} // namespace tarvel
