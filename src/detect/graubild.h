#pragma once

#include <QRect>
#include <QSize>

#include <algorithm>
#include <array>
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

/// Weights of the four pixels around a place that lies @p f (0 to 1) behind the second of them:
/// cubic convolution (Keys, a = -0.75).
[[nodiscard]] inline std::array<float, 4> kubischeGewichte(float f) {
    constexpr float A = -0.75F;
    const auto nah = [](float t) { return ((A + 2) * t - (A + 3)) * t * t + 1; };
    const auto fern = [](float t) { return A * (((t - 5) * t + 8) * t - 4); };
    return {fern(1 + f), nah(f), nah(1 - f), fern(2 - f)};
}

/// The value at a place between pixels (origin the corner of the picture) by cubic convolution.
/// Outside the edge goes on. For any picture that has breite, höhe and zeile() as Graubild.
template <typename Bild>
[[nodiscard]] float kubisch(const Bild& bild, float x, float y) {
    const int w = bild.breite;
    const int h = bild.höhe;
    // From some pixels outside on everything is the edge.
    constexpr float Weit = 4;
    x = std::clamp(x - 0.5F, -Weit, float(w) + Weit);
    y = std::clamp(y - 0.5F, -Weit, float(h) + Weit);
    // Rounded down, below 0 too.
    constexpr int Versatz = 16;
    const int xi = int(x + Versatz) - Versatz;
    const int yi = int(y + Versatz) - Versatz;
    const auto gx = kubischeGewichte(x - float(xi));
    const auto gy = kubischeGewichte(y - float(yi));
    float summe = 0;
    if (xi >= 1 && yi >= 1 && xi < w - 2 && yi < h - 2) {
        const auto* z = bild.zeile(yi - 1) + xi - 1;
        for (std::size_t j = 0; j < 4; ++j, z += w)
            summe += gy[j] * (gx[0] * float(z[0]) + gx[1] * float(z[1]) + gx[2] * float(z[2]) +
                              gx[3] * float(z[3]));
        return summe;
    }
    for (int j = 0; j < 4; ++j) {
        const auto* z = bild.zeile(std::clamp(yi + j - 1, 0, h - 1));
        for (int i = 0; i < 4; ++i)
            summe += gy[std::size_t(j)] * gx[std::size_t(i)] *
                     float(z[std::clamp(xi + i - 1, 0, w - 1)]);
    }
    return summe;
}

/// Added before digits are cut off, to round what is not negative.
inline constexpr float Halbes = 0.5F;

} // namespace tarvel
