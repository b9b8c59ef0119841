// From measured wings and recorded marks to charts and verdict, in the real window.

#include "app/fenster.h"
#include "evaluation/diagrammansicht.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QStackedWidget>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

struct Auswertungstest : Fenstertest {
    void SetUp() override {
        ASSERT_TRUE(starte());
        hg().resize(1280, 800);
    }
    /// Measures a wing whose cubital index is @p a / 20 by clicks, with sensible other points.
    void miss(double a) const {
        for (const QPointF& punkt :
             {QPointF(400, 50), QPointF(92, 75), QPointF(360, 56), QPointF(288, 62),
              QPointF(237 + a, 147), QPointF(237, 147), QPointF(217, 147), QPointF(292, 201)}) {
            klick(punkt);
        }
        klick({500, 250}, Qt::RightButton);
    }
    QString text(const QString& label) const { return kind<QLabel>(label).text(); }
    void drücke(const QString& knopf) const { kind<QAbstractButton>(knopf).click(); }
};

} // namespace

TEST_F(Auswertungstest, verdict_followsWingsMarksAndRaceAtOnce) {
    ASSERT_TRUE(hg().ladeBild(maleBild({700, 320})));
    miss(60); // cubital index 3, class 21: no objection
    EXPECT_EQ(text(u"lab_Urteil"_s), u"✓ Entspricht den Merkmalen der Rasse Carnica"_s);
    miss(30); // cubital index 1.5, class 12: one wing in two in the range 01-15
    EXPECT_EQ(text(u"lab_Urteil"_s), u"✗ Entspricht nicht den Merkmalen der Rasse Carnica"_s);
    EXPECT_EQ(text(u"lab_Mängel"_s), u"• Klassen 01-15: 50 %, erlaubt 2 %"_s);

    programm->einstellungen().schreibe(Einstellung::VierteRasse, u"Buckfast"_s);
    QTest::keyClick(&kind<QComboBox>(u"cbo_Rasse"_s), Qt::Key_Down);
    EXPECT_TRUE(text(u"lab_Urteil"_s).endsWith(u"Mellifera"_s));
    wähle(u"men_Bearbeiten_0"_s);
    EXPECT_TRUE(text(u"lab_Urteil"_s).startsWith(u"✓"_s));

    wähle(u"men_Ansicht_2"_s);
    drücke(u"opt_Panzer_A_3"_s);
    drücke(u"bef_Übernehmen"_s);
    EXPECT_TRUE(text(u"lab_Mängel"_s).contains(u"• 2R: 100 %, erlaubt 0 %"_s));
    wähle(u"men_Sprache_1"_s);
    EXPECT_TRUE(text(u"lab_Mängel"_s).contains(u"• 2R: 100 %, allowed 0 %"_s));
}

TEST_F(Auswertungstest, charts_showTheSeriesAndAClickSelectsInTheLists) {
    ASSERT_TRUE(hg().ladeBild(maleBild({700, 320})));
    miss(60);
    miss(62);
    for (const auto& [befehl, ansicht] :
         {std::pair{u"men_Ansicht_3"_s, u"pic_Kurven"_s}, {u"men_Ansicht_4"_s, u"pic_Korrel"_s}}) {
        wähle(befehl);
        auto& diagramm = static_cast<Diagrammansicht&>(kind<QWidget>(ansicht));
        ASSERT_TRUE(diagramm.isVisible());
        EXPECT_TRUE(kind<QAction>(befehl).isChecked());
        ASSERT_FALSE(diagramm.stellen().empty());
        const Diagrammstelle stelle = diagramm.stellen().front();
        QTest::mouseClick(&diagramm, Qt::LeftButton, {}, stelle.fläche.center().toPoint());
        EXPECT_EQ(diagramm.hervorgehoben(), stelle.flügel);
    }
}

TEST_F(Auswertungstest, otherCaste_asksWhileMarksAreListed) {
    auto& geschlecht = kind<QComboBox>(u"cbo_Geschlecht"_s);
    QTest::keyClick(&geschlecht, Qt::Key_Down);
    EXPECT_TRUE(dialoge.fragen.empty()); // nothing to lose yet
    QTest::keyClick(&geschlecht, Qt::Key_Up);
    wähle(u"men_Ansicht_2"_s);
    drücke(u"bef_Übernehmen"_s);
    dialoge.antworten = {Antwort::Nein, Antwort::Ja};
    QTest::keyClick(&geschlecht, Qt::Key_Down);
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_EQ(dialoge.fragen[0].text,
              u"Wenn Sie jetzt zwischen ARBEITERRINNEN und DROHNEN umschalten, dann wird die Liste "
              "KÖRPERMERKMALE gelöscht.\nWollen Sie umschalten?"_s);
    EXPECT_EQ(geschlecht.currentIndex(), 0);
    EXPECT_THAT(hg().untersuchung().merkmale().Liste, SizeIs(1));
    QTest::keyClick(&geschlecht, Qt::Key_Down);
    EXPECT_EQ(geschlecht.currentIndex(), 1);
    EXPECT_TRUE(hg().untersuchung().merkmale().leer());
    EXPECT_EQ(hg().untersuchung().merkmale().Tiere, Geschlecht::Drohnen);
    EXPECT_EQ(hg().untersuchung().angaben().Tiere, Geschlecht::Drohnen);
}

TEST_F(Auswertungstest, judgementSwitchedOff_givesNoVerdict) {
    schreibeIni("[Start]\r\nNeu=False\r\n[Protokoll]\r\nBeurteilung=0\r\n");
    ASSERT_TRUE(starte());
    EXPECT_EQ(text(u"lab_Urteil"_s), u"Die Beurteilung ist in den Optionen ausgeschaltet."_s);
}
