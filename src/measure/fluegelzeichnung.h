#pragma once

#include <QColor>
#include <QPointF>
#include <QRectF>

#include <array>

class QPainter;
class QPalette;

namespace tarvel {

/// The drawn fore wing of a worker, wing tip to the left and costal edge up: the mean of real
/// wings. Places are millimetres, x to the right, y down. The lines themselves lie in data/wing.
/// This is the room that they take up.
inline constexpr QRectF Zeichnungsrahmen(0, 0, 9.6, 3.4);

/// The measuring points 1 to 8; index 0 is unused. Cubital index 2.8, hantel index 1.11, discoidal
/// shift +1.6.
inline constexpr std::array<QPointF, 9> Zeichnungspunkte{{{},
                                                          {4.170, 0.477},
                                                          {0.968, 0.805},
                                                          {3.765, 0.590},
                                                          {3.043, 0.657},
                                                          {3.019, 1.219},
                                                          {2.489, 1.537},
                                                          {2.269, 1.522},
                                                          {3.095, 2.095}}};

struct Zeichnungsfarben {
    QColor häutchen;
    QColor rand;
    QColor adern;

    /// Line drawing in the colours of a window.
    [[nodiscard]] static Zeichnungsfarben zeichnung(const QPalette& palette);
};

/// Paints the wing. The painter's unit is the millimetre; a transformation gives place and size.
void maleFlügel(QPainter& painter, const Zeichnungsfarben& farben);

/// Paints the radial, the third cubital and the discoidal cell onto it.
void maleZellen(QPainter& painter, const QColor& farbe);

} // namespace tarvel
