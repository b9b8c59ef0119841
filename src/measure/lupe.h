#pragma once

#include "measure/marken.h"

#include <QImage>
#include <QWidget>

#include <vector>

namespace tarvel {

/// Magnifier: shows the surroundings of a place of the measuring picture larger than there, with
/// cross hairs over the place and the marks around it.
class Lupe : public QWidget {
public:
    explicit Lupe(QWidget* parent = nullptr);

    /// Takes over picture (shared) and zoom of the measuring view. A null image shows nothing.
    void setzeBild(const QImage& bild, int zoomfaktor);
    /// How many times larger than the measuring view, at least 1; 4 to begin with.
    void setzeVergrößerung(int vergrößerung);
    /// The place in the middle and the marks, in zoomed pixels as in the measuring view.
    void setzeMitte(QPointF mitte);
    void setzeMarken(std::vector<Marke> marken);

    [[nodiscard]] QSize sizeHint() const override { return {220, 220}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {120, 44}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage bild_;
    int zoom_ = 1;
    int vergrößerung_ = 4;
    QPointF mitte_;
    std::vector<Marke> marken_;
};

} // namespace tarvel
