#pragma once

#include <QPointF>

#include <cmath>
#include <span>

namespace tarvel {

/// An affine map of the plane: (x, y) goes to (xx x + xy y + dx, yx x + yy y + dy).
struct Affin {
    double xx = 1, xy = 0, yx = 0, yy = 1, dx = 0, dy = 0;

    [[nodiscard]] QPointF operator()(QPointF p) const {
        return {xx * p.x() + xy * p.y() + dx, yx * p.x() + yy * p.y() + dy};
    }
    /// First @p zuerst, then this.
    [[nodiscard]] Affin nach(const Affin& zuerst) const;
    /// The map back. The determinant must not be 0.
    [[nodiscard]] Affin umkehrung() const;
    [[nodiscard]] double determinante() const { return xx * yy - xy * yx; }
    /// Length that a unit becomes, by area.
    [[nodiscard]] double maßstab() const { return std::sqrt(std::abs(determinante())); }
    [[nodiscard]] bool spiegelt() const { return determinante() < 0; }

    [[nodiscard]] static Affin verschiebung(QPointF um) { return {1, 0, 0, 1, um.x(), um.y()}; }
    [[nodiscard]] static Affin streckung(double faktor) { return {faktor, 0, 0, faktor, 0, 0}; }
    /// Turned by @p winkel (radians, from x towards y) and stretched about the origin; with @p
    /// gespiegelt x changes its sign first.
    [[nodiscard]] static Affin drehung(double winkel, double faktor = 1, bool gespiegelt = false);
};

/// The turned, moved, stretched and, with @p gespiegelt, mirrored image of @p von that comes
/// nearest to @p nach by least squares (Procrustes). Both have the same number of places, two at
/// least.
[[nodiscard]] Affin ähnlichkeit(std::span<const QPointF> von, std::span<const QPointF> nach,
                                bool gespiegelt = false);

} // namespace tarvel
