#pragma once

#include "measure/fundrahmen.h"
#include "measure/marken.h"

#include <QImage>
#include <QWidget>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace tarvel {

/// The whole scan, fitted into the view, and on it a frame of the size that the measuring view
/// shows. The frame is dragged onto a wing and let go, or moved with the arrow keys (a quarter of
/// itself, with Shift a whole one) and confirmed with Enter. Escape takes a drag back. Ctrl with
/// button or Enter asks for a new wing.
class Übersicht : public QWidget {
public:
    explicit Übersicht(QWidget* parent = nullptr);

    /// Where the frame was put, in pixels of the scan.
    struct Wahl {
        QPointF mitte; ///< of the frame
        QPointF ort;   ///< that was pointed at; at the edge of the scan not the middle
        /// With Ctrl: a new wing is meant, whatever is there already.
        bool neu = false;
    };
    /// The frame was put onto a wing.
    void beiWahl(std::function<void(const Wahl&)> handlung) { gewählt_ = std::move(handlung); }
    /// The right button was pressed there; what the context menu offers is the widget's actions.
    void beiRechtsklick(std::function<void(QPointF)> handlung) { gezeigt_ = std::move(handlung); }
    /// Asked what is said about a place that the pointer rests on; nothing when empty.
    void beiErklärung(std::function<QString(QPointF)> antwort) { erklärung_ = std::move(antwort); }

    /// Shows @p bild, a reduced picture of a scan of @p größe pixels. A null image shows nothing.
    void setzeBild(const QImage& bild, QSize größe);
    /// Size of the frame in pixels of the scan.
    void setzeRahmen(QSizeF größe);
    /// Moves the frame; it stays inside the picture.
    void setzeMitte(QPointF mitte);
    [[nodiscard]] QPointF mitte() const { return mitte_; }
    /// Wings already measured: places in pixels of the scan with their numbers.
    void setzeErledigte(std::vector<Marke> erledigte);
    /// Frames of wings that were found and are not measured.
    void setzeFunde(std::vector<Fundrahmen> funde);

    /// Where the pointer rests, in pixels of the scan; empty while it is elsewhere, such as in a
    /// menu.
    [[nodiscard]] std::optional<QPointF> zeiger() const { return zeiger_; }

    /// From a place in the widget to pixels of the scan, and back.
    [[nodiscard]] QPointF zuBild(QPointF imFenster) const;
    [[nodiscard]] QPointF zuFenster(QPointF imBild) const;

    [[nodiscard]] QSize sizeHint() const override { return {600, 800}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, 120}; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] QRect bildfeld() const;
    [[nodiscard]] QRectF rahmenfeld() const;
    void wähle(QPointF ort, Qt::KeyboardModifiers umschalt);

    std::function<void(const Wahl&)> gewählt_;
    std::function<void(QPointF)> gezeigt_;
    std::function<QString(QPointF)> erklärung_;
    QImage bild_;
    QSize größe_;
    QSizeF rahmen_;
    QPointF mitte_;
    std::vector<Marke> erledigte_;
    std::vector<Fundrahmen> funde_;
    /// Where the frame was before the drag that is going on.
    std::optional<QPointF> vorDemZiehen_;
    std::optional<QPointF> zeiger_;
    /// The picture in the size it is shown in, scaled once.
    QImage angepasst_;
};

} // namespace tarvel
