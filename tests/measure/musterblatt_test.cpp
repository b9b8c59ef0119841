#include "measure/musterblatt.h"

#include <QColor>
#include <QLineF>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace tarvel;

namespace {

/// Darkest and lightest grey of the nine pixels around a place.
std::pair<int, int> graustufen(const QImage& bild, QPointF ort) {
    std::pair<int, int> stufen{255, 0};
    for (int dy = -1; dy <= 1; ++dy) {
        for (int dx = -1; dx <= 1; ++dx) {
            const int grau = qGray(bild.pixel(static_cast<int>(std::floor(ort.x())) + dx,
                                              static_cast<int>(std::floor(ort.y())) + dy));
            stufen = {std::min(stufen.first, grau), std::max(stufen.second, grau)};
        }
    }
    return stufen;
}

} // namespace

TEST(Musterblatt, truePoints_lieOnVeinsInAnyResolution) {
    constexpr int Spalten = 3;
    const auto erstes = male({.flügel = 6, .spalten = Spalten, .dpi = 600, .saat = 4}).punkte;
    for (const bool grau : {true, false}) {
        for (const int dpi : {600, 1200, 2400}) {
            const Musterblatt muster =
                male({.flügel = 6, .spalten = Spalten, .dpi = dpi, .saat = 4, .grau = grau});
            ASSERT_EQ(muster.punkte.size(), 6U);
            for (std::size_t nummer = 0; nummer < 6; ++nummer) {
                const auto& punkte = muster.punkte[nummer];
                for (std::size_t i = 1; i < punkte.size(); ++i) {
                    const QPointF ort = erstes[nummer][i] * dpi / 600.0;
                    EXPECT_LT(QLineF(punkte[i], ort).length(), 1e-6);
                    const auto [dunkel, hell] = graustufen(muster.bild, punkte[i]);
                    EXPECT_LT(dunkel, 150) << dpi << " dpi, point " << i;
                    // Four pixels wide is the vein there: its edge would show a misplaced point.
                    if (dpi == 2400) {
                        EXPECT_LT(hell, 170) << "point " << i;
                    }
                }
                if (nummer > 0) { // row by row
                    const QPointF schritt = punkte[1] - muster.punkte[nummer - 1][1];
                    EXPECT_GT(nummer % Spalten == 0 ? schritt.y() : schritt.x(), dpi / 10);
                }
            }
            // The ground is light, but not white.
            const int grund = qGray(muster.bild.pixel(3, 3));
            EXPECT_TRUE(grund > 220 && grund < 250) << grund;
            EXPECT_NEAR(muster.bild.dotsPerMeterX(), dpi / 0.0254, 1);
        }
    }
}

TEST(Musterblatt, sameChoice_givesSameSheet) {
    const Musterblattwahl wahl{.flügel = 3, .dpi = 600, .saat = 9};
    const Musterblatt eins = male(wahl);
    EXPECT_EQ(eins.bild, male(wahl).bild);
    Musterblattwahl andere = wahl;
    andere.saat = 10;
    EXPECT_NE(male(andere).punkte, eins.punkte);
}

TEST(Musterblatt, impossibleChoice_givesNothing) {
    const Musterblattwahl fälle[] = {{.flügel = 0},
                                     {.flügel = 2, .spalten = -1},
                                     {.flügel = 2, .dpi = 0},
                                     {.flügel = 2, .rauschen = std::nan("")},
                                     {.flügel = 5000, .dpi = 2400},
                                     {.flügel = 4, .spalten = 3, .blatt = QSizeF(22, 30)},
                                     {.flügel = 100, .blatt = QSizeF(22, 30)},
                                     {.flügel = 1, .blatt = QSizeF(std::nan(""), 20)}};
    for (const Musterblattwahl& wahl : fälle) {
        EXPECT_TRUE(male(wahl).bild.isNull());
        EXPECT_TRUE(male(wahl).punkte.empty());
    }
}
