#include "../bench/musterblatt.h"
#include "measure/fluegelprobe.h"

#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using Zweifelsart = Flügelzweifel::Art;

namespace {

/// Points 1 to 8, x and y, of workers' wings that were scanned and measured: seventeen at 2400 dpi,
/// then two of another scanner at 3048 dpi.
constexpr int Flügel[][16] = {
    {395, 44, 89, 73, 356, 55, 285, 63, 284, 118, 236, 146, 218, 144, 294, 198},
    {390, 46, 86, 77, 353, 55, 274, 63, 279, 114, 229, 143, 212, 142, 284, 199},
    {383, 45, 87, 70, 342, 56, 277, 61, 273, 114, 227, 142, 208, 141, 286, 194},
    {371, 40, 79, 76, 336, 49, 270, 55, 262, 109, 215, 136, 196, 135, 270, 187},
    {396, 44, 88, 71, 357, 54, 290, 59, 284, 113, 227, 145, 209, 143, 290, 199},
    {391, 45, 92, 69, 358, 54, 288, 59, 287, 109, 232, 143, 211, 143, 287, 199},
    {389, 41, 88, 70, 351, 51, 283, 57, 284, 110, 237, 139, 213, 138, 287, 191},
    {390, 43, 91, 69, 354, 53, 285, 59, 285, 108, 239, 139, 216, 138, 290, 187},
    {398, 44, 90, 73, 360, 54, 289, 60, 282, 118, 231, 146, 213, 143, 292, 204},
    {397, 44, 89, 73, 352, 56, 287, 62, 284, 117, 233, 144, 215, 142, 299, 199},
    {382, 43, 87, 78, 347, 54, 285, 60, 280, 115, 230, 146, 209, 145, 287, 197},
    {399, 37, 94, 74, 361, 47, 288, 57, 290, 103, 235, 138, 216, 136, 293, 188},
    {389, 38, 85, 75, 352, 50, 280, 57, 281, 106, 228, 140, 206, 139, 283, 190},
    {392, 43, 88, 74, 350, 56, 283, 61, 286, 116, 237, 146, 217, 145, 291, 198},
    {406, 39, 91, 80, 365, 52, 298, 59, 295, 112, 240, 145, 219, 143, 303, 195},
    {381, 42, 84, 80, 345, 53, 283, 59, 274, 115, 227, 144, 209, 142, 289, 194},
    {387, 45, 86, 70, 347, 56, 281, 61, 277, 119, 233, 145, 213, 143, 284, 203},
    {699, 52, 312, 73, 645, 66, 544, 71, 553, 143, 508, 173, 471, 170, 572, 244},
    {680, 47, 293, 84, 631, 64, 518, 72, 537, 145, 488, 176, 450, 175, 566, 245},
};
constexpr int Fremde = 2;

Flügelmessung messung(const int (&xy)[16], double winkel = 0, double maßstab = 1,
                      bool gespiegelt = false) {
    Flügelmessung m;
    m.aufnahme.dpi = 2400;
    for (int i = 1; i <= 8; ++i) {
        const double x = xy[2 * i - 2] * maßstab * (gespiegelt ? -1 : 1);
        const double y = xy[2 * i - 1] * maßstab;
        m.punkte.setze(m.messart, i,
                       static_cast<float>(x * std::cos(winkel) - y * std::sin(winkel)),
                       static_cast<float>(x * std::sin(winkel) + y * std::cos(winkel)));
    }
    return m;
}

void tausche(Messpunkte& p, int a, int b) {
    std::swap(p.PunktX[a], p.PunktX[b]);
    std::swap(p.PunktY[a], p.PunktY[b]);
}

} // namespace

TEST(Flügelprobe, realWings_areNotDoubted_howeverTheyLie) {
    for (const auto& xy : Flügel) {
        for (int lauf = 0; lauf < 24; ++lauf) {
            const Flügelmessung m =
                messung(xy, lauf * std::numbers::pi / 6, lauf % 3 * 3 + 0.25, lauf >= 12);
            EXPECT_THAT(flügelzweifel(m), IsEmpty()) << xy[0] << ' ' << lauf;
        }
        Flügelmessung nurCI = messung(xy);
        nurCI.messart = Messart::NurCubitalindex;
        EXPECT_THAT(flügelzweifel(nurCI), IsEmpty());
    }
    const Musterblatt blatt = male({.flügel = 20, .dpi = 600});
    for (const auto& punkte : blatt.punkte) {
        Flügelmessung m;
        for (int i = 1; i <= 8; ++i) {
            m.punkte.setze(m.messart, i, static_cast<float>(punkte.at(i).x()),
                           static_cast<float>(punkte.at(i).y()));
        }
        EXPECT_THAT(flügelzweifel(m), IsEmpty());
    }
}

TEST(Flügelprobe, anyTwoSwappedPoints_areFoundAndNamed) {
    for (const auto& xy : Flügel) {
        for (int a = 1; a <= 8; ++a) {
            for (int b = a + 1; b <= 8; ++b) {
                Flügelmessung m = messung(xy, a, 1, b % 2 == 0);
                tausche(m.punkte, a, b);
                EXPECT_THAT(flügelzweifel(m),
                            Contains(Flügelzweifel{Zweifelsart::Vertauscht, {a, b}}))
                    << xy[0] << ' ' << a << ' ' << b;
            }
        }
        for (const auto& [a, b] : {std::pair{5, 6}, {6, 7}}) {
            Flügelmessung m = messung(xy);
            m.messart = Messart::NurCubitalindex;
            tausche(m.punkte, a, b);
            EXPECT_THAT(flügelzweifel(m), Contains(Flügelzweifel{Zweifelsart::Vertauscht, {a, b}}));
        }
    }
}

TEST(Flügelprobe, misplacedPoint_isNamedWithTheIndexThatHasNoClass) {
    const Texte texte{QString()};
    Flügelmessung m = messung(Flügel[0]);
    m.punkte.PunktX[7] = m.punkte.PunktX[5] + 3;
    m.punkte.PunktY[7] = m.punkte.PunktY[5] + 3;
    const std::vector<Flügelzweifel> nahe = flügelzweifel(m);
    EXPECT_THAT(nahe, Contains(Flügelzweifel{Zweifelsart::HIAußerhalb, {}}));
    EXPECT_THAT(nahe.front().punkte, Contains(7));

    m = messung(Flügel[0]);
    m.punkte.PunktY[8] += 250; // on its side, but far out
    EXPECT_THAT(flügelzweifel(m), ElementsAre(Flügelzweifel{Zweifelsart::Verhältnis, {8}}));

    m = messung(Flügel[0]);
    m.punkte.PunktY[3] += 150; // beyond the base line
    EXPECT_THAT(flügelzweifel(m).front().punkte, ElementsAre(3));

    m = messung(Flügel[0]);
    m.punkte.NeuerFlügel(m.messart);
    EXPECT_THAT(flügelzweifel(m), IsEmpty());
    m.punkte.setze(m.messart, 1, 5, 5);
    m.punkte.setze(m.messart, 2, 5, 5);
    EXPECT_NO_THROW((void)flügelzweifel(m)); // no length, no proportion
    EXPECT_EQ(text({Zweifelsart::Vertauscht, {3, 4}}, texte),
              u"Die Punkte 3, 4 sind wohl vertauscht."_s);
}

TEST(Flügelprobe, baseLineSaysWhichResolutionFits) {
    const Flügelmessung m = messung(Flügel[0]); // 307.4 pixels
    struct Fall {
        int zoom, dpi;
        std::optional<int> passt;
    };
    for (const Fall& f : {Fall{1, 2400, {}},
                          {1, 1200, 2400},
                          {1, 4800, 2400},
                          {1, 600, 2400},
                          {2, 1200, {}},
                          {4, 300, 600},
                          {4, 600, {}},
                          {1, 100'000, 2400},
                          {1, 3200, {}},
                          {1, 1600, 2400}}) {
        EXPECT_EQ(passendeAuflösung(m.punkte, {static_cast<qint16>(f.zoom), f.dpi}), f.passt)
            << f.zoom << ' ' << f.dpi;
    }
    EXPECT_NEAR(längeRadialzelle(m.punkte, {1, 2400}).value(), 3.253, 0.001);
    EXPECT_EQ(längeRadialzelle(Messpunkte(Messart::AlleMessungen), {}), std::nullopt);
    for (std::size_t i = std::size(Flügel) - Fremde; i < std::size(Flügel); ++i) {
        EXPECT_EQ(passendeAuflösung(messung(Flügel[i]).punkte, {1, 3048}), std::nullopt);
    }
}

TEST(Flügelprobe, wingFarFromItsSample_isFoundFromEightWingsOn) {
    Messreihe reihe;
    const auto misst = [&reihe](float CI, float HI, float DV) {
        reihe.trageEin(reihe.nächsteNummer(), {.CI = CI, .HI = HI, .DV = DV, .fehler = {}}, {}, {});
    };
    misst(5.9F, 1.0F, 0.5F);
    for (int i = 0; i < 6; ++i) {
        misst(2.4F + 0.1F * static_cast<float>(i), 1.0F, 0.5F);
    }
    EXPECT_THAT(ausreißer(reihe), IsEmpty());
    misst(2.7F, 1.0F, 0.6F);
    EXPECT_THAT(ausreißer(reihe), ElementsAre(1));
    misst(2.8F, 1.02F, -4.0F); // an even sample has some play: 1.02 is near enough to 1.00
    EXPECT_THAT(ausreißer(reihe), ElementsAre(1, 9));
    const Flügelzweifel abseits{Zweifelsart::AbseitsDerProbe, {}};
    EXPECT_EQ(flügelzweifel(reihe).at(9), std::vector{abseits});
    reihe.lassAus(1, true);
    EXPECT_THAT(ausreißer(reihe), ElementsAre(9));
    reihe.lassAus(9, true);
    EXPECT_THAT(ausreißer(reihe), IsEmpty());
}
