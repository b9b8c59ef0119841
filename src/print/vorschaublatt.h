#pragma once

#include <QAbstractScrollArea>
#include <QPainter>

#include <functional>
#include <optional>
#include <utility>

namespace tarvel {

/// The scrolled sheet of paper inside the preview.
class Vorschaublatt : public QAbstractScrollArea {
public:
    explicit Vorschaublatt(QWidget* parent = nullptr);

    /// What paints the page in millimetres.
    void setzeSeite(std::function<void(QPainter&)> seite) { seite_ = std::move(seite); }
    void beiZoom(std::function<void()> handlung) { beiZoom_ = std::move(handlung); }
    /// Beyond the end (+1) or the beginning (-1).
    void beiBlättern(std::function<void(int)> handlung) { beiBlättern_ = std::move(handlung); }

    /// Zoom 1 is real size; without a value the page is as large as the room for it.
    void setzeZoom(std::optional<double> zoom);
    /// The next step larger (+1) or smaller (-1); the middle of the view stays where it is.
    void stufe(int um);
    [[nodiscard]] bool ganz() const { return !zoom_.has_value(); }
    [[nodiscard]] double zoom() const;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    /// Pixels per millimetre at zoom 1.
    [[nodiscard]] double originalmaß() const;
    [[nodiscard]] double ganzesMaß() const;
    [[nodiscard]] QSize papiergröße() const;
    /// Where the paper lies in the viewport.
    [[nodiscard]] QRect papier() const;
    void stufeUm(int um, QPointF anker);
    void setzeZoomUm(std::optional<double> zoom, QPointF anker);
    void stelleLeisten();
    void zeigeZeiger();

    std::function<void(QPainter&)> seite_;
    std::function<void()> beiZoom_ = [] {};
    std::function<void(int)> beiBlättern_;
    std::optional<double> zoom_;
    int raste_ = 0;               ///< what a fine wheel turned short of a step
    std::optional<QPoint> griff_; ///< last place of the hand that moves the paper
};

} // namespace tarvel
