#include "measure/indizes.h"

#include <gmock/gmock.h>

#include <array>
#include <utility>

using namespace tarvel;
using testing::FloatNear;
using testing::Optional;

namespace {

using Achtpunkte = std::array<std::pair<float, float>, 8>;

Messpunkte setze(const Achtpunkte& koordinaten) {
    Messpunkte punkte(Messart::AlleMessungen);
    for (int i = 1; i <= 8; ++i) {
        const auto& [x, y] = koordinaten.at(static_cast<std::size_t>(i - 1));
        punkte.setze(Messart::AlleMessungen, i, x, y);
    }
    return punkte;
}

// Base line 1-2 along the x axis, so that feet, height and shift can be worked out by hand:
// 5-6 = 50, 6-7 = 20, 5-7 = 70, 3-4 = 70; feet of 4 and 8 at 100 and 112 from point 1 towards
// point 2; point 8 lies 118 below the line, so the correction at 1200 dpi and zoom 1 is
// 2.5 · 47.2 / (1.5 · 47.2 + 118) = 118 / 188.8 = 0.625, and the shift 12 · 0.625 / 2.36.
const Achtpunkte handgerechnet{
    {{400, 50}, {100, 50}, {370, 60}, {300, 60}, {300, 100}, {250, 100}, {230, 100}, {288, 168}}};
constexpr float DvHandgerechnet = 12.0F * 0.625F / 2.36F;

Achtpunkte gezoomt(Achtpunkte koordinaten, float zoom) {
    for (auto& [x, y] : koordinaten) {
        x *= zoom;
        y *= zoom;
    }
    return koordinaten;
}

} // namespace

TEST(Indizes, handComputedWing_givesItsIndices) {
    Achtpunkte koordinaten = handgerechnet;
    koordinaten[3] = {300, 60}; // foot of point 4: 100 from point 1
    const Indizes indizes =
        berechneIndizes(setze(koordinaten), Messart::AlleMessungen, {.Zoomfaktor = 1, .dpi = 1200});
    EXPECT_THAT(indizes.CI, Optional(FloatNear(2.5F, 1e-6F)));
    EXPECT_THAT(indizes.HI, Optional(FloatNear(1.0F, 1e-6F)));
    EXPECT_THAT(indizes.DV, Optional(FloatNear(DvHandgerechnet, 1e-3F)));
    EXPECT_FALSE(indizes.fehler);
}

TEST(Indizes, zoomOfTheSamePicture_changesNothing) {
    for (const qint16 zoom : std::array<qint16, 4>{1, 2, 3, 4}) {
        const Indizes indizes =
            berechneIndizes(setze(gezoomt(handgerechnet, zoom)), Messart::Korrelation,
                            {.Zoomfaktor = zoom, .dpi = 1200});
        EXPECT_THAT(indizes.CI, Optional(FloatNear(2.5F, 1e-6F))) << zoom;
        EXPECT_THAT(indizes.HI, Optional(FloatNear(1.0F, 1e-6F))) << zoom;
        EXPECT_THAT(indizes.DV, Optional(FloatNear(DvHandgerechnet, 1e-3F))) << zoom;
    }
}

TEST(Indizes, resolution_scalesTheDiscoidalShiftOnly) {
    for (const auto& [dpi, faktor] :
         {std::pair{300, 4.0F}, {600, 2.0F}, {1200, 1.0F}, {2400, 0.5F}}) {
        const Indizes indizes = berechneIndizes(setze(handgerechnet), Messart::AlleMessungen,
                                                {.Zoomfaktor = 1, .dpi = dpi});
        EXPECT_THAT(indizes.CI, Optional(FloatNear(2.5F, 1e-6F))) << dpi;
        EXPECT_THAT(indizes.DV, Optional(FloatNear(DvHandgerechnet * faktor, 2e-3F))) << dpi;
    }
}

// Values worked out outside this program in double precision from whole pixels at 2400 dpi.
TEST(Indizes, pointsOfPlausibleWings_giveTheirKnownValues) {
    struct Zeile {
        Achtpunkte punkte;
        double CI;
        double HI;
        double DV;
    };
    const Zeile zeilen[] = {
        {{{{400, 50},
           {92, 75},
           {360, 56},
           {288, 62},
           {286, 116},
           {237, 147},
           {216, 143},
           {292, 201}}},
         2.712319,
         1.038438,
         0.853681},
        {{{{380, 41},
           {88, 72},
           {345, 50},
           {280, 58},
           {270, 111},
           {222, 140},
           {202, 138},
           {282, 190}}},
         2.790099,
         1.117173,
         1.431608},
    };
    for (const Zeile& zeile : zeilen) {
        const Indizes indizes = berechneIndizes(setze(zeile.punkte), Messart::AlleMessungen,
                                                {.Zoomfaktor = 1, .dpi = 2400});
        EXPECT_NEAR(indizes.CI.value(), zeile.CI, 1e-5);
        EXPECT_NEAR(indizes.HI.value(), zeile.HI, 1e-5);
        EXPECT_NEAR(indizes.DV.value(), zeile.DV, 1e-3);
    }
}

TEST(Indizes, feetOfPoints4And8_decideTheSignOfTheShift) {
    Achtpunkte koordinaten = handgerechnet;
    for (const auto& [x4, vorzeichen] : {std::pair{300.0F, 1}, {288.0F, 0}, {280.0F, -1}}) {
        koordinaten[3] = {x4, 60};
        const float DV = *berechneIndizes(setze(koordinaten), Messart::AlleMessungen, {}).DV;
        if (vorzeichen == 0) {
            EXPECT_NEAR(DV, 0.0F, 1e-4F);
        } else {
            EXPECT_GT(DV * static_cast<float>(vorzeichen), 1.0F);
        }
    }
}

TEST(Indizes, cubitalIndexOnly_leavesTheOthersOut) {
    const Indizes indizes = berechneIndizes(setze(handgerechnet), Messart::NurCubitalindex, {});
    EXPECT_TRUE(indizes.CI);
    EXPECT_FALSE(indizes.HI);
    EXPECT_FALSE(indizes.DV);
}

TEST(Indizes, missingPoint_leavesOutWhatNeedsIt) {
    struct Zeile {
        int ohne;
        bool CI, HI, DV;
    };
    for (const Zeile& zeile : {Zeile{1, true, true, false},
                               {2, true, true, false},
                               {3, true, false, true},
                               {4, true, false, false},
                               {5, false, false, true},
                               {6, false, true, true},
                               {7, false, false, true},
                               {8, true, true, false}}) {
        Messpunkte punkte = setze(handgerechnet);
        punkte.PunktX[zeile.ohne] = Messpunkte::NichtGemessen;
        const Indizes indizes = berechneIndizes(punkte, Messart::AlleMessungen, {});
        EXPECT_EQ(indizes.CI.has_value(), zeile.CI) << zeile.ohne;
        EXPECT_EQ(indizes.HI.has_value(), zeile.HI) << zeile.ohne;
        EXPECT_EQ(indizes.DV.has_value(), zeile.DV) << zeile.ohne;
        EXPECT_FALSE(indizes.fehler);
    }
}

TEST(Indizes, coincidingPoints_stopTheComputationAndKeepWhatCameBefore) {
    struct Zeile {
        int a, b;
        bool CI, HI;
    };
    for (const Zeile& zeile :
         {Zeile{6, 7, false, false}, {3, 4, true, false}, {1, 2, true, true}}) {
        Messpunkte punkte = setze(handgerechnet);
        punkte.PunktX[zeile.a] = punkte.PunktX[zeile.b];
        punkte.PunktY[zeile.a] = punkte.PunktY[zeile.b];
        const Indizes indizes = berechneIndizes(punkte, Messart::AlleMessungen, {});
        EXPECT_EQ(indizes.fehler, Rechenfehler::DivisionDurchNull) << zeile.a;
        EXPECT_EQ(indizes.CI.has_value(), zeile.CI) << zeile.a;
        EXPECT_EQ(indizes.HI.has_value(), zeile.HI) << zeile.a;
        EXPECT_FALSE(indizes.DV) << zeile.a;
    }
}

TEST(Indizes, point8OnTheBaseLine_isAFaultOrAHeightOfZero) {
    bool negativ = false;
    for (int i = 0; i < 500; ++i) {
        Achtpunkte koordinaten = handgerechnet;
        koordinaten[0] = {400.3F, 50.7F};
        koordinaten[1] = {100.1F, 75.9F};
        const float t = 0.1F + 0.0015F * static_cast<float>(i);
        koordinaten[7] = {koordinaten[0].first + t * (koordinaten[1].first - koordinaten[0].first),
                          koordinaten[0].second +
                              t * (koordinaten[1].second - koordinaten[0].second)};
        const Indizes indizes = berechneIndizes(setze(koordinaten), Messart::AlleMessungen, {});
        EXPECT_NE(indizes.fehler.has_value(), indizes.DV.has_value());
        negativ = negativ || indizes.fehler == Rechenfehler::WurzelNegativ;
    }
    EXPECT_TRUE(negativ);
}

TEST(Klassenposition, table) {
    EXPECT_EQ(klassenpositionCI(1.0F), 6.0F);
    EXPECT_NEAR(klassenpositionCI(0.7F), 0.704, 0.001);
    EXPECT_NEAR(klassenpositionCI(9.0F), 30.01, 0.01);
    EXPECT_EQ(klassenpositionCI(11.0F), 0.0F);
    EXPECT_EQ(klassenpositionCI(0.5F), 0.0F);
    EXPECT_EQ(klassenpositionHI(1.0F), 25.0F);
    EXPECT_NEAR(klassenpositionHI(0.993F), 24.736, 0.001);
    EXPECT_EQ(klassenpositionHI(1.5F), 0.0F);
    EXPECT_EQ(klassenpositionHI(0.4F), 0.0F);
}
