#include "evaluation/kurven.h"

#include "diagrammprobe.h"
#include "evaluation/beurteilung.h"
#include "evaluation/klassen.h"
#include "evaluation/kurvenlayout.h"
#include "lang/texte.h"
#include "platform/vektorbild.h"

#include <QBuffer>
#include <gmock/gmock.h>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

constexpr QSize Bildgröße(820, 520);
constexpr QRectF Bildrahmen(0, 0, 820, 520);

Kurvenbild kurvenVon(const Messreihe& reihe, Kurvenform form = Kurvenform::Balken,
                     ZweiteKurve zweite = ZweiteKurve::Keine,
                     Geschlecht tiere = Geschlecht::Arbeiterinnen) {
    const Texte texte(u"/"_s);
    const Rassestandard standard;
    const Beurteilung beurteilung =
        beurteile({.Tiere = tiere, .Klassen = klassenCI(reihe), .Merkmale = {}}, standard, true);
    Kurvenbild bild = kurvenbild(reihe, standard, tiere, beurteilung, form, zweite);
    bild.worte = Diagrammworte::bildschirm(texte);
    bild.rasse = u"Carnica"_s;
    return bild;
}

QImage gemalt(const Kurvenbild& bild, const QSize& größe = Bildgröße,
              const Diagrammstil& stil = prüfstil()) {
    return leinwand(größe, [&](QPainter& painter, const QRectF& rahmen) {
        maleKurven(painter, rahmen, bild, stil);
    });
}

/// Middle of the column of a class at a height that is given in bees.
QPointF ort(const Kurvenbild& bild, double klasse, double bienen) {
    const Klassenfeld feld = kurvenanordnung(Bildrahmen, bild, prüfstil()).CI;
    return {feld.lage.ort(klasse + 0.5), feld.anzahl.ort(bienen)};
}

TEST(Kurvenoptionen, storedNumber_givesItsFormOrTheDefault) {
    struct Fall {
        int option;
        Kurvenform form;
        ZweiteKurve zweite;
    };
    const Fall fälle[] = {{0, Kurvenform::Balken, ZweiteKurve::Keine},
                          {1, Kurvenform::Stufen, ZweiteKurve::Hantelindex},
                          {2, Kurvenform::Linie, ZweiteKurve::Discoidalverschiebung},
                          {3, Kurvenform::Stufen, ZweiteKurve::Hantelindex},
                          {-1, Kurvenform::Stufen, ZweiteKurve::Hantelindex}};
    for (const Fall& f : fälle) {
        EXPECT_EQ(kurvenform(f.option), f.form) << f.option;
        EXPECT_EQ(zweiteKurve(f.option), f.zweite) << f.option;
    }
}

TEST(Kurvenbild, series_givesClassesOfTheListsAndFigures) {
    Messreihe reihe;
    misst(reihe, {.CI = 2, .HI = 1, .DV = -0.04F});
    misst(reihe, {.CI = 50}); // beyond class 30
    misst(reihe, {.CI = 3, .HI = 0.95F, .DV = 0.5F});
    misst(reihe, {.CI = 3, .HI = 0.95F, .DV = -0.004F});
    const Kurvenbild hi = kurvenVon(reihe, Kurvenform::Balken, ZweiteKurve::Hantelindex);
    EXPECT_THAT(hi.CI.flügel, ElementsAre(Flügelklasse{1, 16}, Flügelklasse{2, 0},
                                          Flügelklasse{3, 21}, Flügelklasse{4, 21}));
    EXPECT_THAT(hi.zweite.flügel,
                ElementsAre(Flügelklasse{1, 25}, Flügelklasse{3, 23}, Flügelklasse{4, 23}));
    EXPECT_EQ(hi.CI.kennzahlen->anzahl, 4);
    EXPECT_EQ(hi.zweite.grenzlinie, 0.92);
    const Kurvenbild dv = kurvenVon(reihe, Kurvenform::Balken, ZweiteKurve::Discoidalverschiebung);
    // The list says "-0.0" of the first and the last. The correlation draws the first left of the
    // line at 0 and takes the last, less than a hundredth beside it, to be on the line.
    EXPECT_THAT(dv.zweite.flügel,
                ElementsAre(Flügelklasse{1, 12}, Flügelklasse{3, 14}, Flügelklasse{4, 13}));
    EXPECT_NEAR(dv.zweite.kennzahlen->mittelwert, 0.152, 1e-6);
    reihe.lassAus(2, true);
    const Kurvenbild weniger = kurvenVon(reihe, Kurvenform::Balken, ZweiteKurve::Hantelindex);
    EXPECT_EQ(weniger.CI.ausgelassen, 1);
    EXPECT_EQ(weniger.zweite.ausgelassen, 0);
}

TEST(Kurvenbild, caste_decidesRangesMeanAndLine) {
    const Messreihe reihe = ciReihe({18, 18, 16, 12});
    const Kurvenbild arbeit = kurvenVon(reihe);
    ASSERT_EQ(arbeit.bereiche.size(), 3U);
    EXPECT_EQ(arbeit.bereiche[0].klassen, (Klassenbereich{15, 17}));
    EXPECT_EQ(arbeit.bereiche[0].anteil, 25);
    EXPECT_TRUE(arbeit.bereiche[0].verfehlt);
    EXPECT_EQ(arbeit.bereiche[1].nummer, 1);
    EXPECT_EQ(arbeit.bereiche[1].erlaubt, 2);
    EXPECT_EQ(arbeit.bereiche[2].erlaubt, std::nullopt);
    EXPECT_EQ(arbeit.rassemittel, 2.5);
    EXPECT_EQ(arbeit.CI.grenzlinie, 2.0);
    const Kurvenbild drohn =
        kurvenVon(reihe, Kurvenform::Balken, ZweiteKurve::Keine, Geschlecht::Drohnen);
    ASSERT_EQ(drohn.bereiche.size(), 1U);
    EXPECT_EQ(drohn.bereiche[0].nummer, 3);
    EXPECT_FALSE(drohn.bereiche[0].verfehlt);
    EXPECT_EQ(drohn.rassemittel, 1.8);
    EXPECT_EQ(drohn.CI.grenzlinie, 1.4);
}

TEST(PaintKurven, everyForm_fillsTheClassUpToItsNumberOfBees) {
    const Messreihe reihe = ciReihe({20, 20, 20, 20, 20, 20, 8});
    for (const Kurvenform form : {Kurvenform::Balken, Kurvenform::Stufen, Kurvenform::Linie}) {
        const Kurvenbild bild = kurvenVon(reihe, form);
        const QImage picture = gemalt(bild);
        const Diagrammstil stil = prüfstil();
        for (const double bienen : {0.5, 2.5, 4.5})
            EXPECT_EQ(farbe(picture, ort(bild, 20, bienen)), stil.fläche) << bienen;
        EXPECT_NE(farbe(picture, ort(bild, 20, 6.3)), stil.fläche);
        EXPECT_EQ(farbe(picture, ort(bild, 8, 0.5)), stil.fläche);
        // As in the correlation, the tint is where the wings of the race lie.
        EXPECT_EQ(farbe(picture, ort(bild, 8, 2.5)), stil.grund);
        EXPECT_EQ(farbe(picture, ort(bild, 25, 2.5)), stil.bereich);
    }
}

TEST(PaintKurven, means_standAtTheirIndex) {
    const Kurvenbild bild = kurvenVon(ciReihe({22, 22, 22}));
    const QImage picture = gemalt(bild);
    const Klassenfeld feld = kurvenanordnung(Bildrahmen, bild, prüfstil()).CI;
    const auto linie = [&](double lage, const QColor& gesucht) {
        const QRectF streifen(feld.lage.ort(lage) - 2, feld.fläche.top(), 4, feld.fläche.height());
        return zähle(picture, gesucht, streifen);
    };
    EXPECT_GT(linie(22.5, prüfstil().probe), 50);
    EXPECT_GT(linie(klassenlageCI(2.5), prüfstil().rasse), 50);
    EXPECT_EQ(linie(25, prüfstil().probe) + linie(25, prüfstil().rasse), 0);
}

TEST(PaintKurven, secondaryPeak_isMarkedAboveItsClass) {
    const Diagrammstil stil = prüfstil();
    const std::pair<std::vector<int>, std::optional<int>> fälle[] = {
        {{15, 15, 15, 16, 16, 16, 16, 16, 17, 17, 17, 17, 17, 18, 18}, 16},
        {{15, 15, 15, 15, 15, 16, 16, 16, 16, 16, 17, 17, 17, 17, 18, 18}, std::nullopt},
    };
    for (const auto& [klassen, gipfel] : fälle) {
        const Kurvenbild bild = kurvenVon(ciReihe(klassen));
        ASSERT_EQ(bild.nebengipfel, gipfel);
        const QPointF oben = ort(bild, 16, 5);
        const QRectF darüber(oben - QPointF(8, 34), QSizeF(16, 20));
        EXPECT_EQ(zähle(gemalt(bild), stil.verfehlt, darüber) > 20, gipfel.has_value());
    }
}

TEST(PaintKurven, secondCurve_isTintedOnTheSideOfTheRace) {
    Messreihe reihe;
    misst(reihe, {.CI = 2.5F, .HI = 1, .DV = 0.3F});
    for (const bool darunter : {false, true}) {
        Kurvenbild bild = kurvenVon(reihe, Kurvenform::Balken, ZweiteKurve::Discoidalverschiebung);
        bild.darunter = darunter;
        const Klassenfeld feld = *kurvenanordnung(Bildrahmen, bild, prüfstil()).zweite;
        const auto getönt = [&, picture = gemalt(bild)](double DV) {
            const QPointF ort(feld.lage.ort(klassenlageDV(DV)), feld.anzahl.ort(0.5));
            return farbe(picture, ort) == prüfstil().bereich;
        };
        EXPECT_EQ(getönt(-2.2), darunter);
        EXPECT_EQ(getönt(2.2), !darunter);
    }
}

TEST(PaintKurven, endlessRaceName_leavesTheFieldItsPlace) {
    Kurvenbild bild = kurvenVon(ciReihe({18}));
    const QRectF kurz = kurvenanordnung(Bildrahmen, bild, prüfstil()).CI.fläche;
    bild.rasse = QString(500, u'x');
    EXPECT_NEAR(kurvenanordnung(Bildrahmen, bild, prüfstil()).CI.fläche.height(), kurz.height(),
                45);
}

TEST(PaintKurven, judgementOff_marksNothing) {
    Kurvenbild bild = kurvenVon(ciReihe({3, 4, 5, 6}));
    const Diagrammstil stil = prüfstil();
    EXPECT_GT(zähle(gemalt(bild), stil.verfehlt, Bildrahmen), 50);
    bild.beurteilt = false;
    EXPECT_EQ(zähle(gemalt(bild), stil.verfehlt, Bildrahmen), 0);
    // Nor does it name limits or say that there is no secondary peak, which was not looked for.
    const QImage ohneGrenzen = gemalt(bild);
    for (Bereichsangabe& bereich : bild.bereiche) {
        if (bereich.erlaubt) {
            bereich.erlaubt = 99;
        }
    }
    bild.worte.keinNebengipfel = u"x"_s;
    EXPECT_EQ(gemalt(bild), ohneGrenzen);
}

TEST(PaintKurven, blackAndWhite_stillTellsMissedFromMet) {
    Kurvenbild bild = kurvenVon(ciReihe({20}));
    const Diagrammstil stil = Diagrammstil::schwarzweiß({});
    const QImage erfüllt = gemalt(bild, Bildgröße, stil);
    bild.bereiche[0].verfehlt = true;
    EXPECT_GT(unterschied(erfüllt, gemalt(bild, Bildgröße, stil)), 0.01);
    for (int y = 0; y < erfüllt.height(); ++y)
        for (int x = 0; x < erfüllt.width(); ++x)
            ASSERT_EQ(erfüllt.pixelColor(x, y).saturation(), 0) << x << ' ' << y;
}

TEST(PaintKurven, emptySample_hasAxesAndASentenceButNoPlaces) {
    const Kurvenbild bild = kurvenVon({}, Kurvenform::Linie, ZweiteKurve::Hantelindex);
    const QImage picture = gemalt(bild);
    EXPECT_EQ(zähle(picture, prüfstil().fläche, Bildrahmen), 0);
    const Klassenfeld feld = kurvenanordnung(Bildrahmen, bild, prüfstil()).CI;
    const QRectF mitte(feld.fläche.center() - QPointF(60, 8), QSizeF(120, 16));
    EXPECT_GT(zähle(picture, Qt::black, mitte), 20);
    EXPECT_TRUE(kurvenstellen(Bildrahmen, bild, prüfstil()).empty());
}

TEST(PaintKurven, rectangleWithoutArea_paintsNothing) {
    const Kurvenbild bild = kurvenVon(ciReihe({20}));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const QRectF& rahmen :
         {QRectF(), QRectF(10, 10, 0, 50), QRectF(10, 10, -5, 50), QRectF(0, 0, nan, nan)}) {
        const QImage picture = leinwand({50, 50}, [&](QPainter& painter, const QRectF&) {
            maleKurven(painter, rahmen, bild, prüfstil());
        });
        EXPECT_EQ(zähle(picture, Qt::magenta, {0, 0, 50, 50}), 2500);
        EXPECT_TRUE(kurvenstellen(rahmen, bild, prüfstil()).empty());
    }
}

TEST(Kurvenlayout, boundaryLine_isNamedAsOnTheRacePage) {
    struct Fall {
        ZweiteKurve art;
        double linie;
        QString text;
    };
    const Fall fälle[] = {{ZweiteKurve::Hantelindex, 0.925, u"Grenzlinie 0.925"_s},
                          {ZweiteKurve::Discoidalverschiebung, 0.55, u"Grenzlinie +0.55"_s},
                          {ZweiteKurve::Discoidalverschiebung, -1.5, u"Grenzlinie -1.50"_s},
                          {ZweiteKurve::Discoidalverschiebung, 0, u"Grenzlinie 0.00"_s}};
    for (const Fall& f : fälle) {
        Messreihe reihe;
        misst(reihe, {.CI = 2.5F, .HI = 1, .DV = 0});
        Kurvenbild bild = kurvenVon(reihe, Kurvenform::Balken, f.art);
        bild.zweite.grenzlinie = f.linie;
        const Kurvenlayout l = kurvenlayout(Bildrahmen, bild, prüfstil());
        ASSERT_EQ(l.zweite->fahnen.size(), 2U);
        EXPECT_EQ(l.zweite->fahnen[0].text, f.text);
    }
}

TEST(Kurvenlayout, valueBeyondTheAxis_isNamedAtItsEnd) {
    struct Fall {
        double linie;
        Fahnenziel ziel;
    };
    const Fall fälle[] = {{0.6, Fahnenziel::Links},
                          {0, Fahnenziel::Links},
                          {-2, Fahnenziel::Links}, // past the pole its class position is 96
                          {2, Fahnenziel::Linie},
                          {12, Fahnenziel::Rechts}};
    for (const Fall& f : fälle) {
        Kurvenbild bild = kurvenVon({});
        bild.CI.grenzlinie = f.linie;
        const Kurvenlayout l = kurvenlayout(Bildrahmen, bild, prüfstil());
        ASSERT_EQ(l.CI.fahnen.size(), 2U) << f.linie;
        const Fahne& fahne = l.CI.fahnen[1];
        EXPECT_EQ(fahne.ziel, f.ziel) << f.linie;
        EXPECT_EQ(fahne.text, u"Grenzlinie "_s + Format(f.linie, u"0.00", {}));
        EXPECT_TRUE(l.CI.fläche.left() <= fahne.x && fahne.x <= l.CI.fläche.right());
    }
}

TEST(Kurvenlayout, seriesWithoutTheIndex_hasNoSecondCurve) {
    Messreihe reihe = ciReihe({18, 19});
    for (const ZweiteKurve art : {ZweiteKurve::Hantelindex, ZweiteKurve::Discoidalverschiebung}) {
        EXPECT_FALSE(kurvenlayout(Bildrahmen, kurvenVon(reihe, Kurvenform::Balken, art), prüfstil())
                         .zweite.has_value());
    }
    misst(reihe, {.CI = 2.5F, .HI = 1, .DV = 0});
    EXPECT_TRUE(kurvenlayout(Bildrahmen,
                             kurvenVon(reihe, Kurvenform::Balken, ZweiteKurve::Hantelindex),
                             prüfstil())
                    .zweite.has_value());
}

TEST(PaintKurven, otherSizesAndVectorFile_showTheSamePicture) {
    const Kurvenbild bild = kurvenVon(ciReihe({12, 18, 18, 19, 20, 20, 20, 21, 24}),
                                      Kurvenform::Stufen, ZweiteKurve::Hantelindex);
    const Diagrammstil stil = Diagrammstil::farbdruck({});
    const QImage klein = gemalt(bild, Bildgröße, stil);
    const QImage groß = gemalt(bild, Bildgröße * 3, stil)
                            .scaled(Bildgröße, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    EXPECT_LT(unterschied(klein, groß), 2);

    QBuffer datei;
    datei.open(QIODevice::WriteOnly);
    schreibeSvg(datei, Bildgröße, {}, [&](QPainter& painter, const QRectF& rahmen) {
        maleKurven(painter, rahmen, bild, stil);
    });
    const Vektorbild svg(datei.data());
    ASSERT_EQ(svg.gültig(), kannSvg());
    if (svg.gültig()) {
        const QImage gelesen = leinwand(
            Bildgröße, [&](QPainter& painter, const QRectF& rahmen) { svg.male(painter, rahmen); });
        EXPECT_LT(unterschied(klein, gelesen), 3);
    }

    const auto stellen = kurvenstellen(Bildrahmen, bild, stil);
    const auto dreifach = kurvenstellen(QRectF(100, 50, 2460, 1560), bild, stil);
    ASSERT_EQ(stellen.size(), dreifach.size());
    for (std::size_t i = 0; i < stellen.size(); ++i) {
        EXPECT_NEAR(100 + 3 * stellen[i].fläche.left(), dreifach[i].fläche.left(), 1e-6);
        EXPECT_NEAR(50 + 3 * stellen[i].fläche.top(), dreifach[i].fläche.top(), 1e-6);
        EXPECT_NEAR(3 * stellen[i].fläche.height(), dreifach[i].fläche.height(), 1e-6);
    }
}

TEST(Kurvenstellen, bar_namesItsWings) {
    Messreihe reihe = ciReihe({20, 9, 20});
    misst(reihe, {.CI = 2.7F, .HI = 1, .DV = 0});
    const Kurvenbild bild = kurvenVon(reihe, Kurvenform::Stufen, ZweiteKurve::Hantelindex);
    const auto stellen = kurvenstellen(Bildrahmen, bild, prüfstil());
    const Kurvenanordnung a = kurvenanordnung(Bildrahmen, bild, prüfstil());
    const auto an = [&](const Klassenfeld& feld, double klasse, double bienen) {
        return flügelAn({feld.lage.ort(klasse + 0.5), feld.anzahl.ort(bienen)}, stellen);
    };
    EXPECT_THAT(an(a.CI, 20, 1.5), ElementsAre(1, 3));
    EXPECT_THAT(an(a.CI, 9, 0.2), ElementsAre(2));
    EXPECT_THAT(an(a.CI, 9, 3), testing::IsEmpty());
    EXPECT_THAT(an(a.CI, 10, 0.2), testing::IsEmpty());
    EXPECT_THAT(an(*a.zweite, 25, 0.5), ElementsAre(4));
    EXPECT_EQ(stellen.front().beschreibung, u"CI, Klasse 9: 1"_s);
}

TEST(Flügelliste, numbers_haveThreeDigitsAndShortLines) {
    EXPECT_EQ(flügelliste(std::vector<int>{}, u"Flügel"_s), QString());
    EXPECT_EQ(flügelliste(std::vector{3, 7, 112}, u"Flügel"_s), u"Flügel 003, 007, 112"_s);
    std::vector<int> viele(200);
    EXPECT_EQ(flügelliste(viele, u"Wing"_s).count(u'\n'), 16);
}

} // namespace
} // namespace tarvel
