#include "evaluation/merkmalansicht.h"

#include "evaluation/merkmaltasten.h"
#include "support/kinder.h"
#include "support/testdialoge.h"

#include <QApplication>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

struct MerkmalansichtTest : testing::Test {
    Texte texte{u"/"_s};
    TestDialoge dialoge;
    Merkmalansicht ansicht{texte, dialoge};
    std::vector<Merkmale> gemeldet;

    void SetUp() override {
        ansicht.beiÄnderung([this](const Merkmale& m) { gemeldet.push_back(m); });
        ansicht.show();
        ansicht.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&ansicht));
    }
    template <typename T>
    T& kind(const QString& name) {
        return tarvel::kind<T>(ansicht, name);
    }
    void klicke(const QString& option) {
        auto& knopf = kind<QRadioButton>(option);
        QTest::mouseClick(&knopf, Qt::LeftButton, {}, QPoint(8, knopf.height() / 2));
    }
    void übernimm() { QTest::mouseClick(&kind<QPushButton>(u"bef_Übernehmen"_s), Qt::LeftButton); }
    void tippe(const QString& feld, const QString& text) {
        auto& zahl = kind<QLineEdit>(feld);
        zahl.setFocus();
        zahl.selectAll();
        QTest::keyClicks(&zahl, text);
    }
    QString summe(const QString& gruppe) { return kind<QLabel>(u"lab_Summe_"_s + gruppe).text(); }
};

} // namespace

TEST_F(MerkmalansichtTest, threeWorkers_giveLinesCountsAndSummary) {
    übernimm(); // O, k, F are set from the start
    klicke(u"opt_HaarL_1"_s);
    klicke(u"opt_Filz_1"_s);
    übernimm();
    klicke(u"opt_Panzer_A_1"_s);
    klicke(u"opt_HaarL_0"_s);
    klicke(u"opt_Filz_0"_s);
    QTest::keyClick(&kind<QRadioButton>(u"opt_Filz_0"_s), Qt::Key_Return);

    EXPECT_EQ(ansicht.merkmale().Liste,
              (QStringList{u"001   O, k,  F"_s, u"002   O, m, ff"_s, u"003   E, k,  F"_s}));
    EXPECT_EQ(kind<QListView>(u"Liste"_s).model()->rowCount(), 3);
    EXPECT_EQ(summe(u"Panzer_A"_s), u"O=67%  E=33%  1R=0%  2R=0%"_s);
    EXPECT_EQ(summe(u"HaarL"_s), u"k=67%  m=33%  l=0%"_s);
    EXPECT_EQ(summe(u"Filz"_s), u"F=67%  ff=33%  f=0%"_s);
    EXPECT_EQ(kind<QLineEdit>(u"txt_Anzahl_A_0"_s).text(), u"2"_s);
    EXPECT_EQ(kind<QLabel>(u"lab_Bienen"_s).text(), u"3 Arbeiterinnen wurden untersucht"_s);
    ASSERT_EQ(gemeldet.size(), 3U);
    EXPECT_EQ(gemeldet.back(), ansicht.merkmale());
    EXPECT_TRUE(dialoge.meldungen.isEmpty());
}

TEST_F(MerkmalansichtTest, removed_isTheChosenLineOrTheLast) {
    for (int i = 0; i < 3; ++i) {
        übernimm();
    }
    auto& liste = kind<QListView>(u"Liste"_s);
    QTest::mouseClick(liste.viewport(), Qt::LeftButton, {},
                      liste.visualRect(liste.model()->index(1, 0)).center());
    QTest::mouseClick(&kind<QPushButton>(u"bef_Entfernen"_s), Qt::LeftButton);
    EXPECT_EQ(ansicht.merkmale().Liste, (QStringList{u"001   O, k,  F"_s, u"003   O, k,  F"_s}));
    liste.setFocus();
    QTest::keyClick(&liste, Qt::Key_Delete);
    EXPECT_EQ(ansicht.merkmale().Liste, QStringList{u"001   O, k,  F"_s});
    kind<QPushButton>(u"bef_Entfernen"_s).setFocus();
    QTest::keyClick(&kind<QPushButton>(u"bef_Entfernen"_s), Qt::Key_Return);
    EXPECT_TRUE(ansicht.merkmale().Liste.isEmpty());
    QTest::mouseClick(&kind<QPushButton>(u"bef_Entfernen"_s), Qt::LeftButton);
    EXPECT_EQ(gemeldet.size(), 6U);
}

TEST_F(MerkmalansichtTest, withoutHairLength_linesLeaveItOutAndNothingIsMissed) {
    ansicht.setzeOhneHaarlänge(true);
    EXPECT_FALSE(kind<QRadioButton>(u"opt_HaarL_0"_s).isEnabled());
    klicke(u"opt_Panzer_A_3"_s);
    klicke(u"opt_Filz_2"_s);
    übernimm();
    EXPECT_EQ(ansicht.merkmale().Liste, QStringList{u"001  2R, -,  f"_s});
    EXPECT_EQ(summe(u"HaarL"_s), u"k=0%  m=0%  l=0%"_s);
    EXPECT_TRUE(dialoge.meldungen.isEmpty());
    // Measured from now on: the bee without it is missing in that group.
    ansicht.setzeOhneHaarlänge(false);
    übernimm();
    EXPECT_THAT(
        dialoge.meldungen,
        ElementsAre(u"Körper-Merkmale: Unterschiedliche Zahl der Bienen bei den Merkmalen."_s));
    EXPECT_THAT(dialoge.arten, ElementsAre(Meldungsart::Ausruf));
}

TEST_F(MerkmalansichtTest, keys_enterABeeAndTheNextFollows) {
    ansicht.setFocus();
    ansicht.setzeFlügelzahl(50);
    QTest::keyClicks(&ansicht, u"1qy"_s);
    QTest::keyClicks(&kind<QListView>(u"Liste"_s), u"2"_s); // the list does not search for it
    QTest::keyClick(&kind<QRadioButton>(u"opt_Filz_0"_s), Qt::Key_Z); // an English keyboard
    EXPECT_EQ(kind<QLabel>(u"lab_Biene"_s).text(), u"Biene 002: noch Haarlänge"_s);
    QTest::keyClicks(&ansicht, u"w"_s);
    EXPECT_EQ(ansicht.merkmale().Liste, (QStringList{u"001   O, k,  F"_s, u"002   E, m,  F"_s}));
    EXPECT_EQ(kind<QLabel>(u"lab_MerkmalFortschritt"_s).text(), u"2 von 50"_s);
    ASSERT_EQ(gemeldet.size(), 2U);

    // A bee that was begun is given up by Escape; keys that mean nothing, and those with others
    // held, change nothing.
    QTest::keyClicks(&ansicht, u"4e"_s);
    QTest::keyClick(&ansicht, Qt::Key_Escape);
    QTest::keyClicks(&ansicht, u"xr5p"_s);
    QTest::keyClick(&ansicht, Qt::Key_1, Qt::AltModifier);
    QTest::keyClick(&ansicht, Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(kind<QLabel>(u"lab_Biene"_s).text(), u"Biene 003: noch Panzerzeichen, Haarlänge"_s);
    QKeyEvent gehalten(QEvent::KeyPress, Qt::Key_1, Qt::NoModifier, u"1"_s, true);
    QApplication::sendEvent(&ansicht, &gehalten);
    EXPECT_EQ(gemeldet.size(), 2U);

    // Undone from outside: what was begun is not the bee that comes next.
    Merkmale eine = ansicht.merkmale();
    eine.Liste.removeLast();
    ansicht.zeige(eine);
    QTest::keyClicks(&ansicht, u"3q"_s);
    EXPECT_EQ(ansicht.merkmale().Liste.size(), 1);
    // Another examination does not begin with the choice for the last bee.
    ansicht.beginneNeu();
    EXPECT_TRUE(kind<QRadioButton>(u"opt_Panzer_A_0"_s).isChecked());
    QTest::keyClicks(&ansicht, u"y"_s);
    EXPECT_EQ(ansicht.merkmale().Liste.size(), 1);
}

TEST_F(MerkmalansichtTest, keys_followCasteModeAndHairLength) {
    ansicht.setFocus();
    ansicht.setzeOhneHaarlänge(true);
    QTest::keyClicks(&ansicht, u"1qc"_s);
    EXPECT_EQ(ansicht.merkmale().Liste, QStringList{u"001   O, -,  f"_s});
    Merkmale drohnen;
    drohnen.Tiere = Geschlecht::Drohnen;
    ansicht.zeige(drohnen);
    QTest::keyClicks(&ansicht, u"4ry"_s);
    EXPECT_EQ(ansicht.merkmale().Liste, QStringList{u"001  2R, sch"_s});
    klicke(u"opt_Modus_1"_s);
    QTest::keyClicks(&ansicht, u"1q"_s);
    EXPECT_EQ(gemeldet.size(), 3U); // two bees, and the other mode
    EXPECT_EQ(kind<QLabel>(u"lab_Biene"_s).text(), QString());
}

TEST(Merkmaltasten, places_areThoseOfTheKeyboardWhateverTheyType) {
    using Taste = std::optional<Merkmaltaste>;
    for (const auto& [code, plattform, taste] :
         {std::tuple{10U, u"xcb", Taste({0, 0})},
          {13U, u"xcb", Taste({0, 3})},
          {24U, u"wayland", Taste({1, 0})},
          {52U, u"xcb", Taste({2, 0})}, // Y in German, Z in English, W in French
          {29U, u"xcb", Taste()},
          {0x2CU, u"windows", Taste({2, 0})},
          {0x05U, u"windows", Taste({0, 3})},
          {24U, u"offscreen", Taste()}}) {
        EXPECT_EQ(tasteAmPlatz(code, plattform), taste) << code;
    }
    EXPECT_EQ(tastenname({1, 0}, Sprache::Französisch), u"A"_s);
    EXPECT_EQ(tastenname({2, 0}, Sprache::Englisch), u"Z"_s);
}

TEST_F(MerkmalansichtTest, bee328OfOneMark_isRefusedWithAMessage) {
    Merkmale viele;
    for (int i = 0; i < HöchsteAnzahl; ++i) {
        ASSERT_TRUE(MerkmalÜbernehmen(viele, {}, false));
    }
    ansicht.zeige(viele);
    übernimm();
    EXPECT_EQ(ansicht.merkmale(), viele);
    ASSERT_EQ(dialoge.meldungen.size(), 1);
    EXPECT_TRUE(dialoge.meldungen.first().contains(u"327"_s));
    EXPECT_TRUE(gemeldet.empty());
}

TEST_F(MerkmalansichtTest, drones_areTakenWithTheirOwnMarks) {
    Merkmale drohnen;
    setzeTiere(drohnen, Geschlecht::Drohnen);
    ansicht.zeige(drohnen);
    EXPECT_FALSE(kind<QRadioButton>(u"opt_Panzer_A_0"_s).isVisible());
    klicke(u"opt_Panzer_D_1"_s);
    klicke(u"opt_HaarF_3"_s);
    übernimm();
    klicke(u"opt_Panzer_D_2"_s);
    klicke(u"opt_HaarF_1"_s);
    übernimm();
    EXPECT_EQ(ansicht.merkmale().Liste, (QStringList{u"001   I, sch"_s, u"002  1R,  ge"_s}));
    EXPECT_EQ(summe(u"HaarF"_s), u"gr=0%  br=0%  ge=50%  sch=50%"_s);
    EXPECT_EQ(kind<QLabel>(u"lab_Bienen"_s).text(), u"2 Drohnen wurden untersucht"_s);
}

TEST_F(MerkmalansichtTest, sums_areTypedAsDigitsAndReportedAtOnce) {
    EXPECT_TRUE(kind<QLineEdit>(u"txt_Anzahl_A_0"_s).isReadOnly());
    klicke(u"opt_Modus_1"_s);
    EXPECT_FALSE(kind<QPushButton>(u"bef_Entfernen"_s).isEnabled());
    tippe(u"txt_Anzahl_A_0"_s, u"a1-2,"_s);
    EXPECT_EQ(kind<QLineEdit>(u"txt_Anzahl_A_0"_s).text(), u"12"_s);
    ASSERT_FALSE(gemeldet.empty());
    EXPECT_EQ(gemeldet.back().Summen[0], 12);
    tippe(u"txt_Anzahl_A_4"_s, u"12"_s);
    EXPECT_EQ(summe(u"HaarL"_s), u"k=100%  m=0%  l=0%"_s);
    EXPECT_TRUE(dialoge.meldungen.isEmpty()); // tomentum is still to be typed
    QTest::keyClick(&kind<QLineEdit>(u"txt_Anzahl_A_4"_s), Qt::Key_Enter);
    EXPECT_THAT(
        dialoge.meldungen,
        ElementsAre(u"Körper-Merkmale: Unterschiedliche Zahl der Bienen bei den Merkmalen."_s));
    tippe(u"txt_Anzahl_A_7"_s, u"12"_s);
    übernimm();
    EXPECT_EQ(dialoge.meldungen.size(), 1);
    EXPECT_EQ(ansicht.auswertung().Satz, u"A12;12;0;0;0;12;0;0;12;0;0"_s);
}

TEST_F(MerkmalansichtTest, sumsThatCannotBeShared_areAMessageAndStay) {
    klicke(u"opt_Modus_1"_s);
    tippe(u"txt_Anzahl_A_4"_s, u"3"_s); // no colour at all
    übernimm();
    ASSERT_EQ(dialoge.meldungen.size(), 2);
    EXPECT_TRUE(dialoge.meldungen.back().contains(u"Panzerzeichen"_s));
    tippe(u"txt_Anzahl_A_0"_s, u"99999"_s);
    übernimm();
    EXPECT_TRUE(dialoge.meldungen.back().contains(u"327"_s));
    EXPECT_EQ(ansicht.merkmale().Summen[4], 3);
}

TEST_F(MerkmalansichtTest, modes_keepTheListAndStartTheSumsWithItsCounts) {
    übernimm();
    übernimm();
    klicke(u"opt_Modus_1"_s);
    EXPECT_EQ(kind<QLineEdit>(u"txt_Anzahl_A_0"_s).text(), u"2"_s);
    tippe(u"txt_Anzahl_A_0"_s, u"5"_s);
    klicke(u"opt_Modus_0"_s);
    EXPECT_EQ(ansicht.merkmale().Liste.size(), 2);
    EXPECT_EQ(kind<QLineEdit>(u"txt_Anzahl_A_0"_s).text(), u"2"_s);
    übernimm();
    klicke(u"opt_Modus_1"_s); // what was typed is still there
    EXPECT_EQ(kind<QLineEdit>(u"txt_Anzahl_A_0"_s).text(), u"5"_s);
}

TEST_F(MerkmalansichtTest, altDigit_goesToAGroup) {
    QTest::keyClick(&ansicht, Qt::Key_3, Qt::AltModifier);
    EXPECT_TRUE(kind<QRadioButton>(u"opt_Filz_0"_s).hasFocus());
    QTest::keyClick(&ansicht, Qt::Key_1, Qt::AltModifier);
    EXPECT_TRUE(kind<QRadioButton>(u"opt_Panzer_A_0"_s).hasFocus());
}

TEST_F(MerkmalansichtTest, languageChange_relabels) {
    texte.SpracheFranzösisch();
    EXPECT_EQ(kind<QPushButton>(u"bef_Übernehmen"_s).text(), u"Valider"_s);
    EXPECT_EQ(kind<QPushButton>(u"bef_Entfernen"_s).text(), u"Retirer"_s);
    EXPECT_EQ(kind<QRadioButton>(u"opt_Modus_1"_s).text(), u"Entrer les sommes"_s);
    QStringList titel;
    for (const QGroupBox* gruppe : ansicht.findChildren<QGroupBox*>()) {
        titel << gruppe->title();
    }
    EXPECT_TRUE(titel.contains(u"Longueur des poils"_s));
    EXPECT_TRUE(titel.contains(u"Couleur des poils"_s));
}
