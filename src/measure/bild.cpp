#include "measure/bild.h"

#include "measure/ausschnitt.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPixmap>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

namespace tarvel {
namespace {

constexpr int Randbreite = 2;
/// Room that is kept around a place scrolled to.
constexpr int Luft = 40;
constexpr int Schrittweite = 20;
constexpr int RasteDesRades = 120;
constexpr int ZeilenJeRaste = 3;

/// A fine cross, dark with a light edge, whose middle leaves the vein visible.
QCursor feinesKreuz(double dpr) {
    constexpr int Größe = 31;
    constexpr int Mitte = Größe / 2;
    QPixmap bild(QSize(Größe, Größe) * dpr);
    bild.setDevicePixelRatio(dpr);
    bild.fill(Qt::transparent);
    QPainter painter(&bild);
    for (const auto& [farbe, stärke] : {std::pair(Qt::white, 3.0), std::pair(Qt::black, 1.0)}) {
        painter.setPen(QPen(QColor(farbe), stärke, Qt::SolidLine, Qt::FlatCap));
        const QPointF m(Mitte + 0.5, Mitte + 0.5);
        for (const QPointF arm : {QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1), QPointF(0, -1)}) {
            painter.drawLine(m + arm * 3.5, m + arm * (Mitte + 0.5));
        }
    }
    painter.end();
    return QCursor(bild, Mitte, Mitte);
}

} // namespace

Bild::Bild(QWidget* parent)
    : QAbstractScrollArea(parent) {
    setObjectName(QStringLiteral("Bild"));
    setFrameShape(QFrame::NoFrame);
    setViewportMargins(Randbreite, Randbreite, Randbreite, Randbreite);
    setFocusPolicy(Qt::StrongFocus);
    // The right button takes a wing over; no menu may come between.
    setContextMenuPolicy(Qt::PreventContextMenu);
    viewport()->setContextMenuPolicy(Qt::PreventContextMenu);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setMouseTracking(true);
    viewport()->setCursor(feinesKreuz(devicePixelRatioF()));
    stelleLeisten();
}

void Bild::setzeBild(const QImage& bild) {
    bild_ = bild;
    marken_.clear();
    erledigte_.clear();
    funde_.clear();
    stelleLeisten();
    setzeStand({0, 0});
    viewport()->update();
    meldeAusschnitt();
}

void Bild::setzeZoomfaktor(int zoom) {
    zoom = std::clamp(zoom, KleinsterZoom, GrößterZoom);
    if (zoom == zoom_) {
        return;
    }
    const QPointF mitte = ausschnitt().center();
    zoom_ = zoom;
    stelleLeisten();
    zeige(mitte);
    viewport()->update();
    meldeAusschnitt();
}

void Bild::setzeMarken(std::vector<Marke> marken) {
    if (marken == marken_) {
        return;
    }
    zeichneNeu(marken_);
    marken_ = std::move(marken);
    zeichneNeu(marken_);
}

void Bild::setzeErledigte(std::vector<Marke> erledigte) {
    zeichneNeu(erledigte_);
    erledigte_ = std::move(erledigte);
    zeichneNeu(erledigte_);
}

void Bild::setzeFunde(std::vector<Fundrahmen> funde) {
    if (funde != funde_) {
        funde_ = std::move(funde);
        viewport()->update();
    }
}

void Bild::zeige(QPointF pixelPosition) {
    zeige(pixelPosition, QPointF(viewport()->width() / 2.0, viewport()->height() / 2.0));
}

void Bild::zeige(QPointF pixelPosition, QPointF imFenster) {
    setzeStand((pixelPosition * zoom_ - imFenster).toPoint());
}

void Bild::macheSichtbar(QPointF position) {
    const QPoint ort = position.toPoint();
    const QSize sicht = viewport()->size();
    const QPoint jetzt = stand();
    const auto passend = [](int wert, int anfang, int länge) {
        const int rand = std::min(Luft, länge / 2);
        return std::clamp(anfang, wert + rand - länge, wert - rand);
    };
    setzeStand(
        {passend(ort.x(), jetzt.x(), sicht.width()), passend(ort.y(), jetzt.y(), sicht.height())});
}

QRectF Bild::ausschnitt() const {
    const QRectF sicht(zuBild({0, 0}), QSizeF(viewport()->size()));
    const QRectF gesehen = sicht & QRectF(QPointF(), QSizeF(gezoomt()));
    return {gesehen.topLeft() / zoom_, gesehen.size() / zoom_};
}

QPointF Bild::zuBild(QPointF imFenster) const {
    return imFenster - QPointF(ursprung());
}

QPointF Bild::zuFenster(QPointF imBild) const {
    return imBild + QPointF(ursprung());
}

bool Bild::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::Paint: {
        const bool ergebnis = QAbstractScrollArea::event(event);
        if (hasFocus()) {
            QPainter painter(this);
            painter.setPen(QPen(palette().color(QPalette::Highlight), Randbreite));
            painter.drawRect(viewport()->geometry().adjusted(-1, -1, 1, 1));
        }
        return ergebnis;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove: {
        // Only what was sent to the area itself gets here; the viewport takes the rest.
        auto& maus = static_cast<QMouseEvent&>(*event);
        const QPointF ort = maus.position() - QPointF(viewport()->pos());
        if (!QRectF(viewport()->rect()).contains(ort)) {
            return QAbstractScrollArea::event(event);
        }
        QMouseEvent imFenster(maus.type(), ort, maus.globalPosition(), maus.button(),
                              maus.buttons(), maus.modifiers(), maus.pointingDevice());
        return QAbstractScrollArea::viewportEvent(&imFenster);
    }
    default:
        return QAbstractScrollArea::event(event);
    }
}

void Bild::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const QRect bildfeld(ursprung(), gezoomt());
    for (const QRect& teil : event->region()) {
        if (!bildfeld.contains(teil)) {
            painter.fillRect(teil, palette().brush(QPalette::Mid));
        }
        if (!bild_.isNull()) {
            maleAusschnitt(painter, bild_, bildfeld.topLeft(), zoom_, QRectF(teil & bildfeld));
        }
    }
    const QRectF sicht = event->rect();
    QTransform imFenster = QTransform::fromTranslate(bildfeld.x(), bildfeld.y());
    imFenster.scale(zoom_, zoom_);
    for (const Fundrahmen& fund : funde_) {
        const QPolygonF umriss = imFenster.map(fund.umriss);
        if (fundrahmenFeld(font(), umriss).intersects(sicht)) {
            maleFundrahmen(painter, font(), umriss, fund, bildfeld);
        }
    }
    const auto male = [&](const Marke& marke, auto maler) {
        const QPointF ort = mitteDesPunkts(marke.position);
        if (markenRahmen(font(), marke, ort).intersects(sicht)) {
            maler(painter, font(), marke, ort);
        }
    };
    for (const Marke& marke : erledigte_) {
        male(marke, maleErledigte);
    }
    for (const bool gewählt : {false, true}) {
        for (const Marke& marke : marken_) {
            if (marke.gewählt == gewählt) {
                male(marke, maleMarke);
            }
        }
    }
}

void Bild::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    stelleLeisten();
    meldeAusschnitt();
}

void Bild::scrollContentsBy(int dx, int dy) {
    if (gesammelt_) {
        *gesammelt_ += QPoint(dx, dy);
        return;
    }
    viewport()->scroll(dx, dy);
    meldeAusschnitt();
}

/// Another part of the picture is below the pointer now, and a key pressed there means that part.
void Bild::meldeAusschnitt() {
    if (andererAusschnitt_) {
        andererAusschnitt_();
    }
    if (zeiger_) {
        meldeZeiger();
    }
}

void Bild::meldeZeiger() {
    if (!bewegt_ || bild_.isNull()) {
        return;
    }
    QMouseEvent ereignisDaheim(QEvent::MouseMove, *zeiger_, viewport()->mapToGlobal(*zeiger_),
                               Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    bewegt_(ereignis(ereignisDaheim));
}

void Bild::sucheZeiger() {
    const QPointF ort = viewport()->mapFromGlobal(QPointF(QCursor::pos()));
    zeiger_.reset();
    if (QRectF(viewport()->rect()).contains(ort)) {
        zeiger_ = ort;
        meldeZeiger();
    }
}

bool Bild::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave) {
        zeiger_.reset();
    } else if (event->type() == QEvent::Enter) {
        zeiger_ = static_cast<QEnterEvent*>(event)->position();
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void Bild::mousePressEvent(QMouseEvent* event) {
    event->accept();
    zeiger_ = event->position();
    hierGedrückt_ = true;
    if (event->button() == Qt::MiddleButton) {
        schieben_ = Schieben{event->position(), stand()};
        viewport()->setCursor(Qt::ClosedHandCursor);
        return;
    }
    const bool daneben = !bild_.isNull() &&
                         !QRectF(QPointF(), QSizeF(gezoomt())).contains(zuBild(event->position()));
    if (gedrückt_ && !(daneben && event->button() == Qt::LeftButton)) {
        gedrückt_(ereignis(*event));
    }
}

// The second of two quick clicks is a click like any other, unless the first one was meant for what
// stood here before.
void Bild::mouseDoubleClickEvent(QMouseEvent* event) {
    if (hierGedrückt_) {
        mousePressEvent(event);
    }
    event->accept();
}

void Bild::hideEvent(QHideEvent* event) {
    QAbstractScrollArea::hideEvent(event);
    hierGedrückt_ = false;
}

void Bild::mouseMoveEvent(QMouseEvent* event) {
    zeiger_ = event->position();
    event->accept();
    if (schieben_) {
        setzeStand(schieben_->stand - (event->position() - schieben_->beginn).toPoint());
    } else if (bewegt_) {
        bewegt_(ereignis(*event));
    }
}

void Bild::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
    if (event->button() == Qt::MiddleButton) {
        schieben_.reset();
        viewport()->setCursor(feinesKreuz(devicePixelRatioF()));
    } else if (losgelassen_) {
        losgelassen_(ereignis(*event));
    }
}

void Bild::wheelEvent(QWheelEvent* event) {
    event->accept();
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        radrest_ += event->angleDelta().y();
        const int rasten = radrest_ / RasteDesRades;
        radrest_ -= rasten * RasteDesRades;
        if (rasten != 0 && zoomwunsch_) {
            zoomwunsch_(rasten > 0 ? 1 : -1, event->position());
        }
        return;
    }
    QPoint weg = event->pixelDelta();
    if (weg.isNull()) {
        weg = event->angleDelta() * (ZeilenJeRaste * Schrittweite) / RasteDesRades;
    }
    if (event->modifiers().testFlag(Qt::ShiftModifier) && weg.x() == 0) {
        weg = weg.transposed();
    }
    setzeStand(stand() - weg);
}

// X11 sends a held key as let go and pressed again at one time, and not all of that comes out of
// the toolkit as repeated.
void Bild::keyReleaseEvent(QKeyEvent* event) {
    losgelasseneTaste_ = {event->key(), event->timestamp()};
    QAbstractScrollArea::keyReleaseEvent(event);
}

bool Bild::gehalten(const QKeyEvent& event) const {
    constexpr quint64 Augenblick = 10; // milliseconds
    return event.isAutoRepeat() ||
           (event.timestamp() != 0 && event.key() == losgelasseneTaste_.taste &&
            event.timestamp() - losgelasseneTaste_.zeit <= Augenblick);
}

void Bild::keyPressEvent(QKeyEvent* event) {
    QKeyEvent gleicher(event->type(), event->key(), event->modifiers(), event->nativeScanCode(),
                       event->nativeVirtualKey(), event->nativeModifiers(), event->text(),
                       gehalten(*event), static_cast<quint16>(event->count()));
    if (taste_ && taste_(&gleicher)) {
        event->accept();
    } else {
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void Bild::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    update();
}

void Bild::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    update();
}

QPoint Bild::ursprung() const {
    if (bild_.isNull()) {
        return {};
    }
    const QSize frei = viewport()->size() - gezoomt();
    return {frei.width() > 0 ? frei.width() / 2 : -horizontalScrollBar()->value(),
            frei.height() > 0 ? frei.height() / 2 : -verticalScrollBar()->value()};
}

QPoint Bild::stand() const {
    return {horizontalScrollBar()->value(), verticalScrollBar()->value()};
}

void Bild::setzeStand(QPoint stand) {
    // Both ways at once: what stays in view is shifted only one time.
    gesammelt_ = QPoint();
    horizontalScrollBar()->setValue(stand.x());
    verticalScrollBar()->setValue(stand.y());
    const QPoint weg = *std::exchange(gesammelt_, std::nullopt);
    if (!weg.isNull()) {
        scrollContentsBy(weg.x(), weg.y());
    }
}

/// Where in the view a coordinate is shown: the pointer covers a whole pixel of the screen and
/// names its corner, so the mark belongs half a pixel further.
QPointF Bild::mitteDesPunkts(QPointF imBild) const {
    const double halb = 0.5 / devicePixelRatioF();
    return zuFenster(imBild) + QPointF(halb, halb);
}

void Bild::stelleLeisten() {
    const QSize sicht = viewport()->size();
    const QSize ganz = gezoomt();
    const auto stelle = [](QScrollBar& leiste, int länge, int sichtbar) {
        leiste.setRange(0, std::max(0, länge - sichtbar));
        leiste.setPageStep(sichtbar);
        leiste.setSingleStep(Schrittweite);
    };
    stelle(*horizontalScrollBar(), ganz.width(), sicht.width());
    stelle(*verticalScrollBar(), ganz.height(), sicht.height());
}

void Bild::zeichneNeu(const std::vector<Marke>& marken) {
    for (const Marke& marke : marken) {
        viewport()->update(
            markenRahmen(font(), marke, mitteDesPunkts(marke.position)).toAlignedRect());
    }
}

Zeigerereignis Bild::ereignis(const QMouseEvent& event) const {
    QPointF ort = zuBild(event.position());
    if (!bild_.isNull()) {
        ort.setX(std::clamp(ort.x(), 0.0, double(gezoomt().width())));
        ort.setY(std::clamp(ort.y(), 0.0, double(gezoomt().height())));
    }
    return {.taste = event.button(),
            .tasten = event.buttons(),
            .umschalt = event.modifiers(),
            .x = static_cast<float>(ort.x()),
            .y = static_cast<float>(ort.y()),
            .doppelt = event.type() == QEvent::MouseButtonDblClick};
}

} // namespace tarvel
