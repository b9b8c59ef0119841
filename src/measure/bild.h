#pragma once

#include "measure/fundrahmen.h"
#include "measure/marken.h"

#include <QAbstractScrollArea>
#include <QImage>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace tarvel {

/// What the pointer did over the picture.
struct Zeigerereignis {
    /// The button that was pressed or let go; none for a movement.
    Qt::MouseButton taste = Qt::NoButton;
    /// The buttons that are held.
    Qt::MouseButtons tasten = Qt::NoButton;
    Qt::KeyboardModifiers umschalt = Qt::NoModifier;
    /// Pixels of the zoomed picture, origin at its top left corner, fractions kept.
    float x = 0;
    float y = 0;
    bool doppelt = false; ///< the second press of a double click
};

/// The wing picture on which points are set: scrolls and shows marks, but knows nothing of what
/// the points mean. It is the one place where places in the window become places in the picture.
///
/// The wheel scrolls (with Shift sideways), the middle button drags the picture, Ctrl and the
/// wheel ask for another zoom. Keys go to beiTaste() first and scroll if it does not want them.
class Bild : public QAbstractScrollArea {
public:
    static constexpr int KleinsterZoom = 1;
    static constexpr int GrößterZoom = 4;

    explicit Bild(QWidget* parent = nullptr);

    /// A button went down. Not called for the left button beside the picture, nor for the middle
    /// one. Without a picture the places count from the view's corner.
    void beiDruck(std::function<void(const Zeigerereignis&)> h) { gedrückt_ = std::move(h); }
    /// The pointer moved, or the picture below it did. Beside the picture the nearest place on its
    /// edge is reported.
    void beiBewegung(std::function<void(const Zeigerereignis&)> h) { bewegt_ = std::move(h); }
    void beiLoslassen(std::function<void(const Zeigerereignis&)> h) { losgelassen_ = std::move(h); }
    /// A key went down; returns true when it was used.
    void beiTaste(std::function<bool(QKeyEvent*)> h) { taste_ = std::move(h); }
    /// The next larger (+1) or smaller (-1) zoom is wanted. The zoom does not change by itself,
    /// for points may be set already. The place is that of the pointer in the viewport.
    void beiZoomwunsch(std::function<void(int richtung, QPointF imFenster)> h) {
        zoomwunsch_ = std::move(h);
    }
    /// Another part of the picture is shown.
    void beiAusschnitt(std::function<void()> h) { andererAusschnitt_ = std::move(h); }

    /// Shows @p bild, whose pixels are shared, from its top left corner; a null image shows
    /// nothing. Marks go.
    void setzeBild(const QImage& bild);
    [[nodiscard]] const QImage& bild() const { return bild_; }

    /// Sets the zoom, 1 to 4, others to the nearest; the middle of the view stays where it is.
    /// Marks stay at their coordinates: set them anew.
    void setzeZoomfaktor(int zoom);
    [[nodiscard]] int Zoomfaktor() const { return zoom_; }

    /// Marks of the wing being measured; the selected one is painted on top.
    void setzeMarken(std::vector<Marke> marken);
    [[nodiscard]] const std::vector<Marke>& marken() const { return marken_; }
    /// Marks of wings that are already measured.
    void setzeErledigte(std::vector<Marke> erledigte);

    /// Frames of wings that were found and are not measured.
    void setzeFunde(std::vector<Fundrahmen> funde);

    /// Brings a place of the picture (unzoomed pixels) to the middle of the view as far as the
    /// picture's edges allow.
    void zeige(QPointF pixelPosition);
    /// Brings it as near to a place of the viewport instead.
    void zeige(QPointF pixelPosition, QPointF imFenster);
    /// Scrolls as little as needed to show a place (zoomed pixels) with some room around it.
    void macheSichtbar(QPointF position);
    /// The part of the picture that is seen, in unzoomed pixels.
    [[nodiscard]] QRectF ausschnitt() const;

    /// Whether the pointer is over the view, so that a key can mean the place below it.
    [[nodiscard]] bool zeigerHier() const { return zeiger_.has_value(); }
    /// Finds out where the pointer is, after the view came up below it.
    void sucheZeiger();

    /// From a place in the viewport to zoomed pixels of the picture, and back.
    [[nodiscard]] QPointF zuBild(QPointF imFenster) const;
    [[nodiscard]] QPointF zuFenster(QPointF imBild) const;

    [[nodiscard]] QSize sizeHint() const override { return {900, 600}; }

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    struct Schieben {
        QPointF beginn;
        QPoint stand;
    };

    void meldeAusschnitt();
    void meldeZeiger();
    [[nodiscard]] bool gehalten(const QKeyEvent& event) const;
    [[nodiscard]] QSize gezoomt() const { return bild_.size() * zoom_; }
    [[nodiscard]] QPoint ursprung() const;
    [[nodiscard]] QPoint stand() const;
    void setzeStand(QPoint stand);
    [[nodiscard]] QPointF mitteDesPunkts(QPointF imBild) const;
    void stelleLeisten();
    void zeichneNeu(const std::vector<Marke>& marken);
    [[nodiscard]] Zeigerereignis ereignis(const QMouseEvent& event) const;

    std::function<void(const Zeigerereignis&)> gedrückt_;
    std::function<void(const Zeigerereignis&)> bewegt_;
    std::function<void(const Zeigerereignis&)> losgelassen_;
    std::function<bool(QKeyEvent*)> taste_;
    std::function<void(int richtung, QPointF imFenster)> zoomwunsch_;
    std::function<void()> andererAusschnitt_;
    QImage bild_;
    int zoom_ = KleinsterZoom;
    std::vector<Marke> marken_;
    std::vector<Marke> erledigte_;
    std::vector<Fundrahmen> funde_;
    std::optional<Schieben> schieben_;
    /// Where the pointer is in the viewport; empty while it is elsewhere.
    std::optional<QPointF> zeiger_;
    /// Way scrolled so far while both bars are being moved.
    std::optional<QPoint> gesammelt_;
    int radrest_ = 0;
    /// The last press of a button was over this view.
    bool hierGedrückt_ = false;
    struct {
        int taste = 0;
        quint64 zeit = 0;
    } losgelasseneTaste_;
};

} // namespace tarvel
