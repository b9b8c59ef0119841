#pragma once

#include <QPointF>

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace tarvel {

/// A piece of a picture around the measuring points in the frame of the mean wing, at 1200 dpi,
/// brought to mean 0 and standard deviation 1.
struct Flügelausschnitt {
    static constexpr int Breite = 208;
    static constexpr int Höhe = 128;
    /// Place of its corner in the frame of the mean wing.
    static constexpr double Links = 40;
    static constexpr double Oben = -12;
    /// Pixels of the frame to one of the crop.
    static constexpr double Maßstab = 2;

    std::vector<float> werte = std::vector<float>(std::size_t(Breite) * Höhe);

    /// Subtracts the mean and divides by the standard deviation.
    void gleicheAus();

    [[nodiscard]] static QPointF ausRahmen(QPointF p) {
        return {(p.x() - Links) / Maßstab, (p.y() - Oben) / Maßstab};
    }
    [[nodiscard]] static QPointF inRahmen(QPointF p) {
        return {p.x() * Maßstab + Links, p.y() * Maßstab + Oben};
    }
};

/// How strong grey changes in each of eight directions, summed so that the sum over any rectangle
/// is had at once. Describes the surroundings of a point by a grid of cells, each with eight
/// directions (a histogram of oriented gradients).
class Gradientenfeld {
public:
    static constexpr int Richtungen = 8;

    explicit Gradientenfeld(const Flügelausschnitt& ausschnitt);

    /// Writes (@p fenster / @p zelle)² times eight numbers: the cells row by row around @p ort
    /// (pixels of the crop, origin its corner), the root of each share. What lies outside counts as
    /// the edge.
    void beschreibe(QPointF ort, int fenster, int zelle, float* ziel) const;

private:
    std::vector<std::int32_t> summen_;
};

/// The eight points of a wing.
using Punktsatz = std::array<QPointF, 8>;

} // namespace tarvel
