#include "measure/musterblatt.h"

#include <QColor>

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

TEST(Musterblatt, truePoints_lieOnVeins) {
    for (const bool grau : {true, false}) {
        for (const int dpi : {600, 1200, 2400}) {
            const Musterblatt muster = male({.flügel = 6, .dpi = dpi, .saat = 4, .grau = grau});
            ASSERT_EQ(muster.punkte.size(), 6U);
            for (const auto& punkte : muster.punkte) {
                for (std::size_t i = 1; i < punkte.size(); ++i) {
                    const auto [dunkel, hell] = graustufen(muster.bild, punkte[i]);
                    EXPECT_LT(dunkel, 150) << dpi << " dpi, point " << i;
                    // Four pixels wide is the vein there: its edge would show a misplaced point.
                    if (dpi == 2400) {
                        EXPECT_LT(hell, 170) << "point " << i;
                    }
                }
            }
            // The ground is light, but not white.
            const int grund = qGray(muster.bild.pixel(3, 3));
            EXPECT_TRUE(grund > 220 && grund < 250) << grund;
        }
    }
}

TEST(Musterblatt, sameChoice_givesSameSheet) {
    const Musterblattwahl wahl{.flügel = 3, .dpi = 600, .saat = 9};
    const Musterblatt eins = male(wahl);
    const Musterblatt zwei = male(wahl);
    EXPECT_EQ(eins.bild, zwei.bild);
    EXPECT_EQ(eins.punkte, zwei.punkte);
    Musterblattwahl andere = wahl;
    andere.saat = 10;
    EXPECT_NE(male(andere).punkte, eins.punkte);
}

TEST(Musterblatt, resolution_scalesThePointsOnly) {
    const Musterblatt grob = male({.flügel = 4, .dpi = 300, .saat = 6, .grau = true});
    const Musterblatt fein = male({.flügel = 4, .dpi = 1200, .saat = 6, .grau = true});
    ASSERT_EQ(grob.punkte.size(), fein.punkte.size());
    for (std::size_t nummer = 0; nummer < grob.punkte.size(); ++nummer) {
        for (std::size_t i = 1; i < 9; ++i) {
            EXPECT_NEAR(4 * grob.punkte[nummer][i].x(), fein.punkte[nummer][i].x(), 1e-6);
            EXPECT_NEAR(4 * grob.punkte[nummer][i].y(), fein.punkte[nummer][i].y(), 1e-6);
        }
    }
    EXPECT_NEAR(fein.bild.dotsPerMeterX(), 47244, 1);
}

TEST(Musterblatt, sheet_isFilledRowByRow) {
    const Musterblatt muster =
        male({.flügel = 6, .dpi = 300, .blatt = QSizeF(40, 30), .saat = 1, .grau = true});
    EXPECT_EQ(muster.bild.size(), QSize(472, 354));
    ASSERT_EQ(muster.punkte.size(), 6U);
    for (std::size_t i = 1; i < 6; ++i) {
        if (i % 3 == 0) {
            EXPECT_GT(muster.punkte[i][1].y(), muster.punkte[i - 1][1].y() + 50);
        } else {
            EXPECT_GT(muster.punkte[i][1].x(), muster.punkte[i - 1][1].x() + 100);
        }
    }
}

TEST(Musterblatt, impossibleChoice_givesNothing) {
    const Musterblattwahl fälle[] = {{.flügel = 0},
                                     {.flügel = -3},
                                     {.flügel = 100000},
                                     {.flügel = 2, .spalten = -1},
                                     {.flügel = 2, .dpi = 0},
                                     {.flügel = 2, .dpi = 1000000},
                                     {.flügel = 2, .rauschen = -1},
                                     {.flügel = 2, .rauschen = std::nan("")},
                                     {.flügel = 5000, .dpi = 2400},
                                     {.flügel = 1, .blatt = QSizeF(5, 5)},
                                     {.flügel = 4, .spalten = 3, .blatt = QSizeF(22, 30)},
                                     {.flügel = 100, .blatt = QSizeF(22, 30)},
                                     {.flügel = 1, .blatt = QSizeF(1e12, 1e12)},
                                     {.flügel = 1, .blatt = QSizeF(std::nan(""), 20)}};
    for (const Musterblattwahl& wahl : fälle) {
        const Musterblatt muster = male(wahl);
        EXPECT_TRUE(muster.bild.isNull());
        EXPECT_TRUE(muster.punkte.empty());
    }
}
