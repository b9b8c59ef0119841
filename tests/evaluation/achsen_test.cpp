#include "evaluation/achsen.h"

#include "measure/indizes.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <limits>

namespace tarvel {
namespace {

TEST(Achse, valueAndPlace_areEachOthersInverse) {
    struct Fall {
        Achse achse;
        double wert;
        double ort;
    };
    // clang-format off
    const Fall fälle[] = {
        {{0, 10, 100, 200},    0, 100},
        {{0, 10, 100, 200},    5, 150},
        {{0, 10, 100, 200},   10, 200},
        {{0, 10, 100, 200},   -1,  90},
        {{0, 10, 400, 100},    0, 400},
        {{0, 10, 400, 100},    2, 340},
        {{-4, 4, 50, 450},     0, 250},
        {{0.8, 1.3, 300, 0}, 0.9, 240},
    };
    // clang-format on
    for (const Fall& f : fälle) {
        EXPECT_NEAR(f.achse.ort(f.wert), f.ort, 1e-9) << f.wert;
        EXPECT_NEAR(f.achse.wert(f.ort), f.wert, 1e-9) << f.ort;
    }
}

TEST(Teilung, range_getsTheFinestRoundStepThatFits) {
    struct Fall {
        double von;
        double bis;
        int höchstens;
        double schritt;
        int stellen;
        double erste;
        double letzte;
    };
    // clang-format off
    const Fall fälle[] = {
        {   0,   10,  6,   2, 0,    0,   10},
        {   0,   10, 11,   1, 0,    0,   10},
        {   0,   10, 10,   2, 0,    0,   10},
        {  -4,    4,  9,   1, 0,   -4,    4},
        {  -4,   10,  9,   2, 0,   -4,   10},
        { 0.8,  1.3, 11, 0.05, 2, 0.8,  1.3},
        { 0.8,  1.3, 10, 0.1, 1,  0.8,  1.3},
        { 0.9, 1.28,  5, 0.1, 1,  0.9,  1.2},
        {   0,  200,  5,  50, 0,    0,  200},
        {   3, 3000,  2, 2000, 0, 2000, 2000},
    };
    // clang-format on
    for (const Fall& f : fälle) {
        const Teilung t = teilung(f.von, f.bis, f.höchstens);
        ASSERT_FALSE(t.marken.empty()) << f.von << ' ' << f.bis;
        EXPECT_NEAR(t.schritt, f.schritt, 1e-12) << f.von << ' ' << f.bis;
        EXPECT_EQ(t.nachkommastellen, f.stellen) << f.von << ' ' << f.bis;
        EXPECT_NEAR(t.marken.front(), f.erste, 1e-9);
        EXPECT_NEAR(t.marken.back(), f.letzte, 1e-9);
        EXPECT_LE(t.marken.size(), static_cast<std::size_t>(f.höchstens));
    }
}

TEST(Teilung, senselessRange_hasNoMarks) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double unendlich = std::numeric_limits<double>::infinity();
    const std::pair<double, double> bereiche[] = {
        {1, 1}, {2, 1}, {nan, 1}, {0, nan}, {0, unendlich}};
    for (const auto& [von, bis] : bereiche)
        EXPECT_TRUE(teilung(von, bis, 5).marken.empty()) << von << ' ' << bis;
    // Two neighbours among the doubles must not run forever.
    EXPECT_LE(teilung(1, std::nextafter(1.0, 2.0), 5).marken.size(), 5U);
}

TEST(Zählteilung, largestCount_endsAtAWholeMarkAbove) {
    struct Fall {
        int größte;
        int höchstens;
        double schritt;
        double letzte;
    };
    const Fall fälle[] = {{0, 6, 1, 1},    {1, 6, 1, 1},    {4, 6, 1, 4},      {6, 6, 2, 6},
                          {7, 6, 2, 8},    {41, 6, 10, 50}, {200, 6, 50, 200}, {201, 5, 100, 300},
                          {11, 12, 1, 11}, {12, 12, 2, 12}, {-3, 6, 1, 1}};
    for (const Fall& f : fälle) {
        const Teilung t = zählteilung(f.größte, f.höchstens);
        EXPECT_EQ(t.schritt, f.schritt) << f.größte;
        EXPECT_EQ(t.marken.front(), 0) << f.größte;
        EXPECT_EQ(t.marken.back(), f.letzte) << f.größte;
    }
}

TEST(Erweitert, valuesBeyond_moveTheEndsInWholeStepsUpToTheOutermost) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN();
    struct Fall {
        std::vector<float> werte;
        Bereich ergebnis;
    };
    const Fall fälle[] = {{{}, {-4, 4}},         {{0, 4, -4}, {-4, 4}}, {{4.1F}, {-4, 5}},
                          {{-4.5F, 6}, {-5, 6}}, {{300}, {-4, 10}},     {{-1e30F}, {-10, 4}},
                          {{nan, 4.5F}, {-4, 5}}};
    for (const Fall& f : fälle)
        EXPECT_EQ(erweitert({-4, 4}, f.werte, 1, {-10, 10}), f.ergebnis);
}

TEST(Klassenlage, agreesWithThePositionOfAMeasuredWing) {
    EXPECT_EQ(klassenlageCI(1), 6);
    EXPECT_EQ(klassenlageHI(1), 25);
    EXPECT_NEAR(klassenlageCI(2), 16, 0.005);
    for (const float index : {0.75F, 0.9F, 1.0F, 1.23F, 2.71F, 5.0F, 9.0F})
        EXPECT_NEAR(klassenlageCI(static_cast<double>(index)), klassenpositionCI(index), 1e-5);
    for (const float index : {0.6F, 0.92F, 1.0F, 1.1F, 1.35F})
        EXPECT_NEAR(klassenlageHI(static_cast<double>(index)), klassenpositionHI(index), 1e-5);
}

TEST(Klassenlage, everyClassEdge_leadsBackToItself) {
    for (int lage = 1; lage <= KlassenzahlCI + 1; ++lage)
        EXPECT_NEAR(klassenlageCI(CIBeiKlassenlage(lage)), lage, 1e-9);
    for (int lage = 1; lage <= KlassenzahlHI + 1; ++lage)
        EXPECT_NEAR(klassenlageHI(HIBeiKlassenlage(lage)), lage, 1e-9);
    for (int lage = 1; lage <= KlassenzahlDV + 1; ++lage)
        EXPECT_NEAR(klassenlageDV(DVBeiKlassenlage(lage)), lage, 1e-9);
}

TEST(KlasseDV, shift_fallsIntoHalfUnits) {
    const std::pair<double, int> fälle[] = {{-6, 1}, {-5.6, 1}, {-0.1, 12}, {-0.0, 13},
                                            {0, 13}, {0.4, 13}, {0.5, 14},  {5.9, 24},
                                            {6, 0},  {-6.1, 0}, {-1000, 0}, {1e9, 0}};
    for (const auto& [DV, klasse] : fälle)
        EXPECT_EQ(klasseDV(DV), klasse) << DV;
}

TEST(UngleicheMarken, crowdedValues_leaveOutTheLeastWanted) {
    constexpr std::array wünsche{1.0, 2.0, 3.0, 4.0, 1.1, 2.5, 50.0};
    const auto quadrat = +[](double wert) { return wert * wert; };
    std::vector<double> werte;
    for (const Achsenstrich& marke : ungleicheStriche(wünsche, quadrat, 0, 20, 2.1)) {
        EXPECT_EQ(marke.ort, marke.wert * marke.wert);
        werte.push_back(marke.wert);
    }
    EXPECT_THAT(werte, testing::ElementsAre(1, 2, 2.5, 3, 4));
    EXPECT_THAT(ungleicheStriche(wünsche, quadrat, 0, 20, 4), testing::SizeIs(3));
}

} // namespace
} // namespace tarvel
