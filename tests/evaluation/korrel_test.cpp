#include "evaluation/korrel.h"

#include "diagrammprobe.h"
#include "lang/texte.h"

#include <gmock/gmock.h>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

constexpr QSize Größe(820, 520);
constexpr QRectF Rahmen(0, 0, 820, 520);

struct Flügelwerte {
    float HI;
    float DV;
};

Korrelbild bildVon(const std::vector<Flügelwerte>& flügel, const Grenzlinien& linien = {},
                   Geschlecht tiere = Geschlecht::Arbeiterinnen) {
    Messreihe reihe;
    for (const Flügelwerte& f : flügel)
        misst(reihe, {.HI = f.HI, .DV = f.DV});
    Korrelbild bild = korrelbild(reihe, linien, tiere);
    bild.worte = Diagrammworte::bildschirm(Texte(u"/"_s));
    return bild;
}

/// Lines of a standard that holds the defaults.
Grenzlinien linien(qint16 korrelation = -1, qint16 richtung = 0) {
    Grenzlinien g = Rassestandard().linien;
    g.Korrelation = korrelation;
    g.DVRichtung = richtung;
    return g;
}

QImage gemalt(const Korrelbild& bild, const Diagrammstil& stil = prüfstil()) {
    return leinwand(Größe, [&](QPainter& painter, const QRectF& rahmen) {
        maleKorrel(painter, rahmen, bild, stil);
    });
}

QPointF ort(const Korrelbild& bild, double HI, double DV) {
    const Korrelanordnung a = korrelanordnung(Rahmen, bild);
    return {a.DV.ort(DV), a.HI.ort(HI)};
}

TEST(Vertrauensbereich, wing_isInsideBeyondBothLinesAndOnThem) {
    struct Fall {
        bool darunter;
        double HI;
        double DV;
        bool innen;
    };
    // clang-format off
    const Fall fälle[] = {
        {false, 1.000,  0.5,  true},
        {false, 0.920,  0.0,  true},
        {false, 0.920, -0.0,  true},
        {false, 0.919,  0.5, false},
        {false, 1.000, -0.1, false},
        {false, 0.900, -0.5, false},
        {true,  0.900, -0.5,  true},
        {true,  0.920,  0.0,  true},
        {true,  0.921, -0.5, false},
        {true,  0.900,  0.1, false},
        {true,  1.000,  0.5, false},
    };
    // clang-format on
    for (const Fall& f : fälle) {
        const Vertrauensbereich bereich{0.92, 0, f.darunter};
        EXPECT_EQ(bereich.enthält(f.HI, f.DV), f.innen) << f.darunter << ' ' << f.HI << ' ' << f.DV;
        EXPECT_EQ(bereich.enthält(static_cast<float>(f.HI), static_cast<float>(f.DV)), f.innen);
    }
}

TEST(Vertrauensbereich, option_choosesTheLinesAfterKruberOrOwnOnes) {
    Grenzlinien eigene = linien(0, 1);
    eigene.Arbeit.HI.gespeichert = 950;
    eigene.Arbeit.DV.gespeichert = -125;
    EXPECT_EQ(Vertrauensbereich::für(eigene, Geschlecht::Arbeiterinnen),
              (Vertrauensbereich{0.95, -1.25, true}));
    EXPECT_EQ(Vertrauensbereich::für(eigene, Geschlecht::Drohnen),
              (Vertrauensbereich{0.88, 0.5, true}));
    eigene.Korrelation = -1;
    eigene.DVRichtung = 0;
    EXPECT_EQ(Vertrauensbereich::für(eigene, Geschlecht::Arbeiterinnen),
              (Vertrauensbereich{0.92, 0, false}));
}

TEST(Korrelbild, wing_countsWhereItsCrossIsDrawn) {
    // The list says "-0.0" of the first two.
    Korrelbild bild = bildVon({{1, -0.04F}, {1, -0.004F}, {1, 1}, {0.9194F, 1}}, linien());
    const auto innen = [&bild](std::size_t i) { return bild.flügel.at(i).imBereich; };
    EXPECT_FALSE(innen(0));
    EXPECT_TRUE(innen(1)); // on the line
    EXPECT_FALSE(innen(3));
    EXPECT_EQ(bild.anzahlImBereich(), 2);
    EXPECT_EQ(bild.anteilImBereich(), 50);
    const auto stellen = korrelstellen(Rahmen, bild);
    EXPECT_LT(stellen[0].fläche.center().x(), korrelanordnung(Rahmen, bild).DV.ort(0));
    EXPECT_EQ(stellen[0].beschreibung, u"HI 1.000, DV -0.04, nicht im Vertrauensbereich"_s);
    Grenzlinien eigene = linien(0);
    eigene.Arbeit.DV.gespeichert = 55;
    bild = bildVon({{1, 0.56F}, {1, 0.54F}}, eigene);
    EXPECT_TRUE(innen(0));
    EXPECT_FALSE(innen(1));
    EXPECT_EQ(bildVon({}, linien()).anteilImBereich(), 0);
}

TEST(Korrelbild, wingThatHasOnlyItsLine_countsByThat) {
    Messreihe reihe;
    reihe.stelleHer({}, {{1, u"0,880"_s, u"20,1"_s, u"+0,5"_s}}, {}, {});
    const Korrelbild bild = korrelbild(reihe, linien(), Geschlecht::Drohnen);
    ASSERT_EQ(bild.flügel.size(), 1U);
    EXPECT_TRUE(bild.flügel[0].imBereich); // on both lines
}

TEST(Korrelbild, wingWithoutBothFigures_isLeftOut) {
    Messreihe reihe;
    misst(reihe, {.CI = 2.5F});
    misst(reihe, {.CI = 2.5F, .HI = 1.1F, .DV = 1});
    const Korrelbild bild = korrelbild(reihe, linien(), Geschlecht::Arbeiterinnen);
    ASSERT_EQ(bild.flügel.size(), 1U);
    EXPECT_EQ(bild.flügel[0].nummer, 2);
    EXPECT_EQ(bild.HI->anzahl, 1);
    EXPECT_EQ(bild.ausgelassen, 0);
    reihe.lassAus(2, true);
    EXPECT_EQ(korrelbild(reihe, linien(), Geschlecht::Arbeiterinnen).ausgelassen, 1);
}

TEST(PaintKorrel, wings_lieAtTheirValuesAndDifferInShape) {
    const Korrelbild bild =
        bildVon({{1.2F, 2}, {1.2F, 2.01F}, {0.85F, 2}, {1.05F, -3}, {1.05F, 3}}, linien());
    const QImage picture = gemalt(bild);
    const Diagrammstil stil = prüfstil();
    const auto tinte = [&](double HI, double DV, const QColor& gesucht) {
        return zähle(picture, gesucht, QRectF(ort(bild, HI, DV) - QPointF(9, 9), QSizeF(18, 18)));
    };
    EXPECT_GT(tinte(1.2, 2, stil.probe), 8);
    EXPECT_EQ(tinte(1.2, 2, stil.verfehlt), 0);
    EXPECT_GT(tinte(0.85, 2, stil.verfehlt), 8);
    EXPECT_GT(tinte(1.05, -3, stil.verfehlt), 8);
    EXPECT_EQ(tinte(1.05, -3, stil.probe), 0);
    EXPECT_EQ(tinte(1.1, 1, stil.probe) + tinte(1.1, 1, stil.verfehlt), 0);
    // Without colour the ring around the cross remains.
    const QImage grau = gemalt(bild, Diagrammstil::schwarzweiß({}));
    const auto ring = [&](double HI, double DV) {
        return qGray(grau.pixel((ort(bild, HI, DV) + QPointF(7.5, 0)).toPoint()));
    };
    EXPECT_LT(ring(1.05, -3), 120);
    EXPECT_GT(ring(1.05, 3), 200);
}

TEST(PaintKorrel, direction_tintsTheSideOfTheRace) {
    struct Fall {
        qint16 richtung;
        double HI;
        double DV;
        bool getönt;
    };
    const Fall fälle[] = {{0, 1.23, 2.5, true},  {0, 0.87, 2.5, false}, {0, 1.23, -2.5, false},
                          {1, 0.87, -2.5, true}, {1, 1.23, 2.5, false}, {1, 0.87, 2.5, false}};
    for (const Fall& f : fälle) {
        const Korrelbild bild = bildVon({{1, 1}}, linien(-1, f.richtung));
        EXPECT_EQ(farbe(gemalt(bild), ort(bild, f.HI, f.DV)) == prüfstil().bereich, f.getönt)
            << f.richtung << ' ' << f.HI << ' ' << f.DV;
    }
}

TEST(PaintKorrel, wildValues_stayAtTheEdgeAndLeaveRoomForTheOthers) {
    const Korrelbild bild = bildVon({{1, 300}, {30, -2}, {1, 1}}, linien());
    const Korrelanordnung a = korrelanordnung(Rahmen, bild);
    EXPECT_EQ(a.DV.wertEnde, 10);
    EXPECT_EQ(a.HI.wertEnde, 1.5);
    const auto stellen = korrelstellen(Rahmen, bild);
    EXPECT_THAT(flügelAn({a.fläche.right(), a.HI.ort(1)}, stellen), ElementsAre(1));
    EXPECT_THAT(flügelAn({a.DV.ort(-2), a.fläche.top()}, stellen), ElementsAre(2));
    const QImage picture = gemalt(bild);
    EXPECT_GT(
        zähle(picture, prüfstil().probe, QRectF(a.fläche.right() - 14, a.HI.ort(1) - 8, 14, 16)),
        20);
}

TEST(PaintKorrel, withoutColour_edgeStillTellsInsideFromOutside) {
    const Korrelbild bild = bildVon({{1, 300}, {1.6F, -2}, {1, 1}}, linien());
    const QImage grau = gemalt(bild, Diagrammstil::schwarzweiß({}));
    const Korrelanordnung a = korrelanordnung(Rahmen, bild);
    // The ring of a wing outside runs beside its wedge.
    EXPECT_LT(qGray(grau.pixel(QPointF(a.DV.ort(-2) - 7.5, a.fläche.top() + 7.5).toPoint())), 120);
    EXPECT_GT(qGray(grau.pixel(QPointF(a.fläche.right() - 7.5, a.HI.ort(1) - 7.5).toPoint())), 200);
}

TEST(PaintKorrel, noWings_hasLinesAndASentence) {
    const Korrelbild bild = bildVon({}, linien());
    const QImage picture = gemalt(bild);
    const QPointF mitte = korrelanordnung(Rahmen, bild).fläche.center();
    EXPECT_GT(zähle(picture, Qt::black, QRectF(mitte - QPointF(100, 8), QSizeF(200, 16))), 40);
    const double y = korrelanordnung(Rahmen, bild).HI.ort(0.92);
    EXPECT_GT(zähle(picture, prüfstil().rasse, QRectF(80, y - 2, 700, 4)), 200);
}

TEST(PaintKorrel, otherSize_showsTheSamePicture) {
    const Korrelbild bild = bildVon({{1, 1}, {0.9F, -1}, {1.1F, 2}, {1.15F, 0.4F}}, linien());
    const Diagrammstil stil = Diagrammstil::farbdruck({});
    const auto maler = [&](QPainter& painter, const QRectF& rahmen) {
        maleKorrel(painter, rahmen, bild, stil);
    };
    const QImage groß =
        leinwand(Größe * 3, maler).scaled(Größe, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    EXPECT_LT(unterschied(gemalt(bild, stil), groß), 2);
}

TEST(Korrelstellen, pointer_findsEveryCrossUnderIt) {
    const Korrelbild bild = bildVon({{1.1F, 1}, {1.1F, 1.02F}, {1.1F, -2}}, linien());
    const auto stellen = korrelstellen(Rahmen, bild);
    EXPECT_THAT(flügelAn(ort(bild, 1.1, 1.01), stellen), ElementsAre(1, 2));
    EXPECT_THAT(flügelAn(ort(bild, 1.1, -2) + QPointF(8, -8), stellen), ElementsAre(3));
    EXPECT_THAT(flügelAn(ort(bild, 1.1, -2) + QPointF(10, 0), stellen), testing::IsEmpty());
    EXPECT_EQ(stellen[2].beschreibung, u"HI 1.100, DV -2.0, nicht im Vertrauensbereich"_s);
}

} // namespace
} // namespace tarvel
