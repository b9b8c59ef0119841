#include "measure/messung.h"

#include <gmock/gmock.h>

#include <functional>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

const Zahlenformat punktformat{};

/// A measuring with a record of everything it says.
struct MessungTest : testing::Test {
    bool nimm(Messergebnis ergebnis) {
        if (ergebnis.hinweis != HinweisKeiner) {
            hinweise.push_back(ergebnis.hinweis);
        }
        if (ergebnis.reihe) {
            reihe = *ergebnis.reihe;
        }
        if (ergebnis.übernommen) {
            übernommen.push_back(ergebnis.übernommen->nummer);
            fehlend = ergebnis.übernommen->ohne;
        }
        if (ergebnis.fehler) {
            fehlerliste.push_back(*ergebnis.fehler);
        }
        voll += ergebnis.reiheVoll ? 1 : 0;
        return ergebnis.verstanden;
    }
    void klick(float x, float y) {
        nimm(messung.Bild_MouseDown(Maustaste::Links, umschaltung::Keine, x, y));
    }
    void rechts() { nimm(messung.Bild_MouseDown(Maustaste::Rechts, umschaltung::Keine, 0, 0)); }
    bool taste(int code, int umschalt = umschaltung::Keine) {
        return nimm(messung.Bild_KeyDown(code, umschalt));
    }
    /// Clicks all points of a plausible wing, moved by @p dx.
    void klickeFlügel(float dx = 0) {
        const std::pair<float, float> punkte[] = {{400, 50},  {92, 75},   {360, 56},  {288, 62},
                                                  {286, 116}, {237, 147}, {216, 143}, {292, 201}};
        for (const auto& [x, y] : punkte) {
            klick(x + dx, y);
        }
    }

    Messreihe reihe;
    Messung messung{reihe, punktformat};
    std::vector<int> hinweise;
    std::vector<int> übernommen;
    std::vector<int> fehlend;
    std::vector<Rechenfehler> fehlerliste;
    int voll = 0;
};

const Zeilenwörter deutsch{u"CI"_s, u"HI"_s, u"DV"_s, u"Klasse"_s};

} // namespace

TEST_F(MessungTest, clicks_cycleThroughThePointsOfTheKind) {
    for (const int erwartet : {1, 2, 3, 4, 5, 6, 7, 8, 1}) {
        klick(1, 1);
        EXPECT_EQ(messung.punkte().AktuellerPunkt, erwartet);
        EXPECT_EQ(messung.punkte().GewählterPunkt, erwartet);
    }
    messung.setzeMessart(Messart::NurCubitalindex);
    EXPECT_EQ(messung.punkte().AktuellerPunkt, 4);
    for (const int erwartet : {5, 6, 7, 5}) {
        klick(1, 1);
        EXPECT_EQ(messung.punkte().AktuellerPunkt, erwartet);
    }
    EXPECT_FALSE(messung.punkte().gemessen(4));
}

TEST_F(MessungTest, digitKeys_setPointsAtTheLastMousePosition) {
    messung.Bild_MouseMove(Maustaste::Links, umschaltung::Keine, 12.25F, 34.5F);
    EXPECT_TRUE(taste(taste::ZiffernblockEins + 7));
    EXPECT_EQ(messung.punkte().AktuellerPunkt, 8);
    EXPECT_EQ(messung.punkte().PunktX[8], 12.25F);
    EXPECT_EQ(messung.punkte().PunktY[8], 34.5F);
    EXPECT_TRUE(taste(taste::Eins + 2));
    EXPECT_EQ(messung.punkte().AktuellerPunkt, 3);
    EXPECT_FALSE(taste(taste::Eins + 8));               // "9"
    EXPECT_FALSE(taste(taste::Eins, umschaltung::Alt)); // held with a shift key
    EXPECT_FALSE(messung.punkte().gemessen(1));

    messung.setzeMessart(Messart::NurCubitalindex);
    EXPECT_FALSE(taste(taste::Eins + 3));
    EXPECT_FALSE(messung.punkte().begonnen());
    EXPECT_TRUE(taste(taste::Eins + 6));
    EXPECT_TRUE(messung.punkte().fertig(Messart::NurCubitalindex));
}

TEST_F(MessungTest, arrows_moveTheSelectedPointByOnePixel) {
    EXPECT_FALSE(taste(taste::Rechts)); // there is none
    klick(10, 20);
    klick(30, 40);
    EXPECT_TRUE(taste(taste::Eins, umschaltung::Strg));
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(taste(taste::Rechts));
    }
    taste(taste::Ab);
    EXPECT_EQ(messung.punkte().PunktX[1], 14.0F);
    EXPECT_EQ(messung.punkte().PunktY[1], 21.0F);
    EXPECT_EQ(messung.punkte().PunktX[2], 30.0F);
    EXPECT_EQ(messung.punkte().AktuellerPunkt, 2);

    // A selected point that is not set must not become one by being moved.
    taste(taste::Eins + 4, umschaltung::Strg);
    EXPECT_FALSE(taste(taste::Rechts));
    EXPECT_FALSE(messung.punkte().gemessen(5));
}

TEST_F(MessungTest, rightButtonBeforeTheLastPoint_showsTheHintAndKeepsThePoints) {
    for (int i = 0; i < 7; ++i) {
        klick(static_cast<float>(i), 5);
    }
    rechts();
    EXPECT_THAT(hinweise, ElementsAre(3));
    EXPECT_EQ(messung.punkte().AktuellerPunkt, 7);
    EXPECT_TRUE(reihe.leer());
    klick(9, 9);
    EXPECT_THAT(hinweise, ElementsAre(3, 5));
}

TEST_F(MessungTest, takenOverWing_entersItsLinesAndStartsTheNext) {
    klickeFlügel();
    messung.setzeAuflösung(2400);
    rechts();
    EXPECT_THAT(reihe.ciTexte(deutsch), ElementsAre(u"001  CI=2.71  Klasse 19.8"_s));
    EXPECT_THAT(reihe.hiDvTexte(deutsch), ElementsAre(u"001  HI=1.038  Klasse 26.4   DV=+0.9"_s));
    EXPECT_THAT(übernommen, ElementsAre(1));
    EXPECT_TRUE(fehlend.empty());
    EXPECT_FALSE(messung.punkte().begonnen());
    EXPECT_TRUE(reihe.geändert());
    EXPECT_EQ(messung.nummer(), 2);
}

TEST_F(MessungTest, lastPointByKeyAlone_entersWhatCanBeComputedAndNamesTheRest) {
    messung.Bild_MouseMove(Maustaste::Links, 0, 292, 201);
    taste(taste::Eins + 7);
    rechts(); // nothing can be computed from point 8
    EXPECT_THAT(hinweise, ElementsAre(5, 3));
    EXPECT_TRUE(messung.punkte().gemessen(8));
    EXPECT_TRUE(reihe.leer());

    for (const auto& [nummer, x] : {std::pair{5, 286.0F}, {6, 237.0F}, {7, 216.0F}, {8, 292.0F}}) {
        messung.Bild_MouseMove(Maustaste::Links, 0, x, 140);
        taste(taste::Eins + nummer - 1);
    }
    rechts();
    EXPECT_EQ(reihe.ciZeilen().size(), 1U);
    EXPECT_TRUE(reihe.hiDvZeilen().empty());
    EXPECT_THAT(fehlend, ElementsAre(1, 2, 3, 4));
}

TEST_F(MessungTest, arithmeticFault_keepsThePointsAndTheCorrectedWingKeepsItsNumber) {
    klickeFlügel();
    messung.Bild_MouseMove(Maustaste::Links, 0, 360, 56);
    taste(taste::Eins + 3); // 4 onto 3
    taste(taste::Eins + 7);
    rechts();
    EXPECT_THAT(fehlerliste, ElementsAre(Rechenfehler::DivisionDurchNull));
    EXPECT_TRUE(messung.punkte().gemessen(1));
    EXPECT_EQ(reihe.ciZeilen().size(), 1U); // the entry made before the fault stays
    EXPECT_TRUE(reihe.hiDvZeilen().empty());

    messung.Bild_MouseMove(Maustaste::Links, 0, 288, 62);
    taste(taste::Eins + 3);
    messung.Bild_MouseMove(Maustaste::Links, 0, 292, 201);
    taste(taste::Eins + 7);
    rechts();
    EXPECT_EQ(reihe.ciZeilen().size(), 1U);
    EXPECT_EQ(reihe.hiDvZeilen().size(), 1U);
    EXPECT_THAT(übernommen, ElementsAre(1));
}

TEST_F(MessungTest, repeatedWing_replacesItsLinesAndGivesBackWhereTheSeriesStood) {
    messung.setzeAuflösung(2400);
    messung.setzeZoomfaktor(2);
    messung.setzeBilddatei(u"/bilder/eins.png"_s);
    klickeFlügel();
    rechts();
    klickeFlügel(5);
    rechts();
    messung.setzeBilddatei(u"/bilder/zwei.png"_s);
    messung.setzeAuflösung(1200);
    messung.setzeMessart(Messart::NurCubitalindex);

    ASSERT_TRUE(messung.wiederhole(1));
    EXPECT_EQ(messung.nummer(), 1);
    EXPECT_EQ(messung.aufnahme(), (Aufnahme{2, 2400}));
    EXPECT_EQ(messung.bilddatei(), u"/bilder/eins.png"_s);
    EXPECT_EQ(messung.punkte().PunktX[1], 400.0F);
    EXPECT_TRUE(messung.standhinweis() == HinweisErneutSpeichern);
    messung.zieh(6, 240, 147);
    rechts();
    EXPECT_EQ(reihe.ciZeilen().size(), 2U);
    EXPECT_EQ(reihe.ciZeilen().front().nummer, 1);
    EXPECT_NE(reihe.ciZeilen().front().wert, u"2.71"_s);
    EXPECT_EQ(reihe.messung(1)->punkte.PunktX[6], 240.0F);
    EXPECT_EQ(messung.messart(), Messart::NurCubitalindex);
    EXPECT_EQ(messung.aufnahme(), (Aufnahme{2, 1200}));
    EXPECT_EQ(messung.bilddatei(), u"/bilder/zwei.png"_s);
    EXPECT_EQ(messung.nummer(), 3);
    EXPECT_FALSE(messung.wiederhole(99));
}

TEST_F(MessungTest, faultWhileRepeating_leavesTheOldValuesOfTheWing) {
    klickeFlügel();
    rechts();
    const QStringList vorher = reihe.hiDvTexte(deutsch);
    ASSERT_TRUE(messung.wiederhole(1));
    messung.zieh(4, 360, 56); // onto point 3
    rechts();
    EXPECT_THAT(fehlerliste, ElementsAre(Rechenfehler::DivisionDurchNull));
    EXPECT_TRUE(messung.gibWiederholungAuf());
    EXPECT_EQ(reihe.hiDvTexte(deutsch), vorher);
    EXPECT_EQ(reihe.messung(1)->punkte.PunktX[4], 288.0F);
    EXPECT_EQ(messung.nummer(), 2);
}

TEST_F(MessungTest, repeatedWing_keepsItsNumberThroughAnythingButGivingUp) {
    klickeFlügel();
    rechts();
    klickeFlügel(5);
    rechts();
    ASSERT_TRUE(messung.wiederhole(1));
    for (const int dpi : {2400, 1200}) { // the resolution alone, and back again
        messung.setzeAuflösung(dpi);
        EXPECT_EQ(messung.etwasZuVerlieren(), dpi != 1200);
    }
    const std::function<void()> ändern[] = {[&] { messung.NeuerFlügel(); },
                                            [&] { messung.setzeZoomfaktor(2); },
                                            [&] { messung.setzeMessart(Messart::NurCubitalindex); },
                                            [&] { messung.setzeAuflösung(2400); }};
    for (const auto& ändere : ändern) {
        ändere();
        EXPECT_EQ(messung.nummer(), 1);
        EXPECT_TRUE(messung.etwasZuVerlieren());
    }
    for (const float x : {286.F, 237.F, 216.F}) {
        klick(x, 120);
    }
    rechts();
    EXPECT_THAT(reihe.nummern(), ElementsAre(1, 2));            // no third bee
    EXPECT_EQ(reihe.messung(1)->aufnahme, (Aufnahme{2, 2400})); // the wing's own
    EXPECT_EQ(messung.aufnahme(), (Aufnahme{1, 1200}));         // the series' again
    EXPECT_EQ(messung.messart(), Messart::AlleMessungen);
    EXPECT_EQ(messung.nummer(), 3);
    EXPECT_FALSE(messung.gibWiederholungAuf());
}

TEST_F(MessungTest, arrows_stopAtTheEdgeOfThePicture) {
    klick(0.5F, 10);
    EXPECT_FALSE(taste(taste::Links));
    EXPECT_EQ(messung.punkte().PunktX[1], 0.5F);
    klick(10, 0.5F);
    EXPECT_FALSE(taste(taste::Auf));
    EXPECT_EQ(messung.punkte().PunktY[2], 0.5F);
    messung.setzeZoomfaktor(2);
    messung.zeigtBild({.größe = {100, 50}, .marke = {}});
    klick(199, 99);
    EXPECT_FALSE(taste(taste::Rechts));
    EXPECT_FALSE(taste(taste::Ab));
    EXPECT_TRUE(taste(taste::Auf));
    EXPECT_EQ(messung.punkte().PunktX[1], 199.0F);
    EXPECT_EQ(messung.punkte().PunktY[1], 98.0F);
}

TEST_F(MessungTest, digitsAndDrags_putNoPointBesideThePicture) {
    messung.zeigtBild({.größe = {100, 50}, .marke = {}});
    for (const auto& [x, y] : {std::pair(-0.5F, 10.F), {10.F, -1.F}, {100.F, 10.F}, {10.F, 50.F}}) {
        messung.Bild_MouseMove(Maustaste::Links, umschaltung::Keine, x, y);
        hinweise.clear();
        EXPECT_TRUE(taste(taste::Eins));
        EXPECT_FALSE(messung.punkte().begonnen()) << x << ' ' << y;
        EXPECT_THAT(hinweise, ElementsAre(4));
    }
    klick(10, 10);
    messung.zieh(1, 120, -3);
    EXPECT_EQ(messung.punkte().PunktX[1], 99.0F);
    EXPECT_EQ(messung.punkte().PunktY[1], 0.0F);
}

TEST_F(MessungTest, wing201_isRefusedWithItsPointsKept) {
    for (int i = 0; i < Messreihe::HöchsteFlügelzahl; ++i) {
        klickeFlügel();
        rechts();
    }
    EXPECT_EQ(reihe.letzteNummer(), 200);
    klickeFlügel();
    rechts();
    EXPECT_EQ(voll, 1);
    EXPECT_EQ(reihe.letzteNummer(), 200);
    EXPECT_TRUE(messung.punkte().fertig(Messart::AlleMessungen));
    EXPECT_TRUE(messung.wiederhole(200)); // but one of the two hundred can still be repeated
    rechts();
    EXPECT_EQ(voll, 1);
}
