// Scans that are drawn. Whether their points are where they are said to be shows where wings are
// found on them.

#include "../bench/musterblatt.h"

#include <QLineF>

#include <gtest/gtest.h>

using namespace tarvel;

TEST(Musterblatt, sameChoice_givesSameSheet_inAnyResolution) {
    const Musterblattwahl wahl{.flügel = 3, .dpi = 600, .saat = 9};
    const Musterblatt eins = male(wahl);
    EXPECT_EQ(eins.bild, male(wahl).bild);
    EXPECT_NEAR(eins.bild.dotsPerMeterX(), 600 / 0.0254, 1);
    Musterblattwahl andere = wahl;
    andere.saat = 10;
    EXPECT_NE(male(andere).punkte, eins.punkte);
    const Musterblatt fein = male({.flügel = 3, .dpi = 2400, .saat = 9, .grau = true});
    EXPECT_NEAR(fein.bild.width(), 4 * eins.bild.width(), 4);
    for (std::size_t nummer = 0; nummer < eins.punkte.size(); ++nummer) {
        for (std::size_t i = 1; i < 9; ++i) {
            const QPointF ort = 4 * eins.punkte[nummer][i];
            EXPECT_LT(QLineF(fein.punkte.at(nummer)[i], ort).length(), 1e-6);
        }
    }
}

TEST(Musterblatt, impossibleChoice_givesNothing) {
    for (const Musterblattwahl& wahl : {Musterblattwahl{.flügel = 0},
                                        {.flügel = 2, .dpi = 0},
                                        {.flügel = 5000, .dpi = 2400},
                                        {.flügel = 100, .blatt = QSizeF(22, 30)}}) {
        EXPECT_TRUE(male(wahl).bild.isNull());
    }
}
