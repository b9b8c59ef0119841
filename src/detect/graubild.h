#pragma once

#include <QRect>
#include <QSize>

#include <cstdint>
#include <vector>

namespace tarvel {

/// A grey picture, row by row without gaps, 0 black to 255 white.
struct Graubild {
    int breite = 0;
    int höhe = 0;
    std::vector<std::uint8_t> werte;

    Graubild() = default;
    Graubild(int b, int h, std::uint8_t wert = 0)
        : breite(b)
        , höhe(h)
        , werte(std::size_t(b) * std::size_t(h), wert) {}

    [[nodiscard]] const std::uint8_t* zeile(int y) const {
        return werte.data() + std::size_t(y) * std::size_t(breite);
    }
    [[nodiscard]] std::uint8_t* zeile(int y) {
        return werte.data() + std::size_t(y) * std::size_t(breite);
    }
};

/// The grey values of a picture that lies elsewhere. Read by several threads at once.
class Pixelquelle {
public:
    virtual ~Pixelquelle() = default;
    [[nodiscard]] virtual QSize größe() const = 0;
    /// Writes @p anzahl grey values of row @p y from column @p x on; all of them are in the
    /// picture.
    virtual void lies(int x, int y, int anzahl, std::uint8_t* ziel) const = 0;
};

/// @p ausschnitt, which lies in the picture, @p teiler times smaller in each direction (1 or more,
/// also with fractions): each pixel is the mean of the area it stands for. Pixels that only a part
/// of the picture would fill are left out at the right and lower edge. Works on @p fäden threads.
[[nodiscard]] Graubild verkleinert(const Pixelquelle& quelle, const QRect& ausschnitt,
                                   double teiler, int fäden = 1);

/// The value at a place between pixels (origin the corner of the picture), by cubic convolution
/// (Keys, a = -0.75). Outside the edge goes on.
[[nodiscard]] float kubisch(const Graubild& bild, double x, double y);

} // namespace tarvel
