// Leaving wings out, taking them back and deleting them, and wings in doubt, in the real window.

#include "app/fenster.h"
#include "evaluation/diagrammansicht.h"
#include "measure/reihenmodelle.h"

#include <QComboBox>
#include <QHelpEvent>
#include <QListView>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTableView>
#include <QToolTip>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace {

struct Flügeltest : Fenstertest {
    /// Another wing beside the first.
    void missDaneben(QPointF drei = {360, 56}, QPointF vier = {288, 62}) const {
        for (const QPointF& punkt : {QPointF{400, 50},
                                     {92, 75},
                                     drei,
                                     vier,
                                     {286, 116},
                                     {237, 147},
                                     {216, 143},
                                     {292, 201}}) {
            klick(punkt + QPointF(300, 60));
        }
        klick({500, 250}, Qt::RightButton);
    }
    void missZwei() {
        missFlügel();
        missDaneben();
    }
    void drücke(Qt::Key taste, Qt::KeyboardModifiers umschalt) const {
        QTest::keyClick(QApplication::focusWidget(), taste, umschalt);
    }
    QModelIndex zeile(int nummer) const {
        return kind<QListView>(u"Liste_CI"_s).model()->index(nummer - 1, 0);
    }
    void wähleInListe(int nummer) const {
        auto& liste = kind<QListView>(u"Liste_CI"_s);
        QTest::mouseClick(liste.viewport(), Qt::LeftButton, {},
                          liste.visualRect(zeile(nummer)).center());
    }
};

} // namespace

TEST_F(Flügeltest, key_leavesTheChosenWingOutAndTakesItBack) {
    ASSERT_TRUE(starte());
    missZwei();
    // Just taken over: it is the chosen one.
    drücke(Qt::Key_D, Qt::ControlModifier);
    EXPECT_THAT(reihe().ausgelassene(), ElementsAre(2));
    EXPECT_EQ(kind<QLabel>(u"lab_Fortschritt"_s).text(), u"1 von 50, 1 ausgelassen"_s);
    EXPECT_EQ(hinweis(), u"1 Flügel ausgelassen: 002"_s);
    EXPECT_TRUE(
        kind<QLabel>(u"lab_Statistik"_s).text().startsWith(u"Mittelwert (1, 1 ausgelassen):"_s));
    const char* const gesagt[] = {"n = 1 (1 ausgelassen)\n", "n = 1 (1 left out)\n",
                                  "n = 1 (écartées : 1)\n"};
    for (const int sprache : {1, 2, 0}) {
        wähle(u"men_Sprache_%1"_s.arg(sprache));
        for (const QString& bild : {u"pic_Kurven"_s, u"pic_Korrel"_s}) {
            EXPECT_TRUE(kind<QWidget>(bild).accessibleDescription().startsWith(
                QString::fromUtf8(gesagt[sprache])));
        }
    }
    drücke(Qt::Key_D, Qt::ControlModifier);
    EXPECT_THAT(reihe().ausgelassene(), IsEmpty());

    wähle(u"men_Ansicht_0"_s);
    wähleInListe(1);
    for (const std::vector<int>& erwartet : {std::vector{1}, {}, {1}}) {
        drücke(Qt::Key_D, Qt::ControlModifier);
        EXPECT_EQ(reihe().ausgelassene(), erwartet);
    }
    wähle(u"men_Bearbeiten_3"_s);
    EXPECT_THAT(reihe().ausgelassene(), IsEmpty());
    EXPECT_EQ(kind<QAction>(u"men_Bearbeiten_4"_s).iconText(),
              u"Wiederherstellen: Flügel 001 auslassen"_s);
    EXPECT_EQ(hinweis(), u"Rückgängig: Flügel 001 auslassen"_s);
    wähle(u"men_Sprache_1"_s);
    EXPECT_EQ(hinweis(), u"Undo: Leave out wing 001"_s);
}

TEST_F(Flügeltest, wingChosenInOneView_isTheChosenOneInAll) {
    ASSERT_TRUE(starte());
    missZwei();
    wähle(u"men_Ansicht_3"_s);
    EXPECT_THAT(static_cast<Diagrammansicht&>(kind<QWidget>(u"pic_Kurven"_s)).hervorgehoben(),
                ElementsAre(2)); // just taken over
    wähle(u"men_Ansicht_0"_s);
    wähleInListe(1);
    wähle(u"men_Ansicht_3"_s);
    drücke(Qt::Key_D, Qt::ControlModifier);
    EXPECT_THAT(reihe().ausgelassene(), ElementsAre(1));
    // A wing of that number in another examination was not chosen.
    const QString csv = ordner.schreibe(
        u"a.csv"_s, "dpi,x1,y1,x2,y2,x3,y3,x4,y4,x5,y5,x6,y6,x7,y7,x8,y8\n"
                    "2400,400,50,92,75,360,56,288,62,286,116,237,147,216,143,292,201\n");
    dialoge.antworten = {Antwort::Nein};
    ASSERT_TRUE(hg().öffneDatei(csv));
    EXPECT_EQ(kind<QComboBox>(u"cbo_dpi"_s).currentText(), u"2400 dpi"_s); // for what follows, too
    EXPECT_THAT(static_cast<Diagrammansicht&>(kind<QWidget>(u"pic_Kurven"_s)).hervorgehoben(),
                IsEmpty());
}

TEST_F(Flügeltest, longList_showsTheWingThatIsRepeatedAndItsMarkBesideTheValues) {
    ASSERT_TRUE(starte());
    hg().resize(1000, 600);
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    wähle(u"men_Ansicht_7"_s);
    dialoge.antworten.assign(32, Antwort::Ja); // one lies on the other
    for (int i = 0; i < 30; ++i) {
        klickeFlügel();
    }
    ASSERT_THAT(reihe().nummern(), SizeIs(30));
    auto& liste = kind<QListView>(u"Leiste_HI_DV"_s);
    ASSERT_TRUE(liste.verticalScrollBar()->isVisible());
    EXPECT_GE(liste.viewport()->width(), liste.sizeHintForColumn(0) + liste.fontMetrics().height() +
                                             liste.fontMetrics().horizontalAdvance(u'0'));
    wähle(u"men_Ansicht_0"_s);
    wähleInListe(2);
    wähle(u"men_Bearbeiten_1"_s);
    QTest::qWait(0);
    EXPECT_TRUE(liste.viewport()->rect().contains(liste.visualRect(liste.model()->index(1, 0))));
    QTest::keyClick(&bild(), Qt::Key_Return);
    klickeFlügel();
    ASSERT_THAT(reihe().nummern(), SizeIs(31));
    EXPECT_TRUE(liste.viewport()->rect().contains(liste.visualRect(liste.model()->index(30, 0))));
}

TEST_F(Flügeltest, deletingAWing_keepsTheOtherNumbersAndIsUndone) {
    ASSERT_TRUE(starte());
    missZwei();
    wähle(u"men_Ansicht_11"_s);
    auto& tabelle = kind<QTableView>(u"Tabelle_Flügel"_s);
    tabelle.clearSelection();
    wähle(u"men_Bearbeiten_13"_s);
    EXPECT_THAT(reihe().nummern(), ElementsAre(1, 2));
    EXPECT_THAT(hinweis().toStdString(), HasSubstr("Wählen Sie zuerst einen Flügel"));
    QTest::mouseClick(tabelle.viewport(), Qt::LeftButton, {},
                      tabelle.visualRect(tabelle.model()->index(0, 1)).center());
    drücke(Qt::Key_Delete, Qt::ShiftModifier);
    EXPECT_THAT(reihe().nummern(), ElementsAre(2));
    EXPECT_EQ(reihe().nächsteNummer(), 3);
    wähle(u"men_Bearbeiten_0"_s); // Ctrl+Delete can be undone, too
    EXPECT_TRUE(reihe().leer());
    wähle(u"men_Bearbeiten_3"_s);
    wähle(u"men_Bearbeiten_3"_s);
    EXPECT_THAT(reihe().nummern(), ElementsAre(1, 2));
}

TEST_F(Flügeltest, keyWhileAWingIsRepeated_meansThatWing) {
    ASSERT_TRUE(starte());
    missZwei(); // the second is chosen in the list
    wähle(u"men_Ansicht_6"_s);
    QTest::mouseClick(&übersicht(), Qt::LeftButton, {},
                      übersicht().zuFenster({270, 110}).toPoint());
    ASSERT_EQ(kind<QLabel>(u"lab_Flügel"_s).text(), u"Flügel 001 (Wiederholung)"_s);
    for (const std::vector<int>& erwartet : {std::vector{1}, {}, {1}}) {
        drücke(Qt::Key_D, Qt::ControlModifier);
        EXPECT_EQ(reihe().ausgelassene(), erwartet);
        EXPECT_THAT(bild().marken(), SizeIs(8)); // the repeat goes on
    }
    klick({400, 52}, Qt::LeftButton, Qt::ControlModifier);
    drücke(Qt::Key_Return, Qt::NoModifier);
    EXPECT_THAT(hinweis().toStdString(), HasSubstr("Flügel 001 ist übernommen und bleibt "
                                                   "ausgelassen; Strg+D nimmt ihn wieder auf."));
    EXPECT_THAT(reihe().ausgelassene(), ElementsAre(1));
    wähle(u"men_Bearbeiten_3"_s);
    EXPECT_EQ(kind<QLabel>(u"lab_Flügel"_s).text(), u"Flügel 001 (Wiederholung)"_s);
    EXPECT_THAT(reihe().ausgelassene(), ElementsAre(1));
    wähle(u"men_Bearbeiten_3"_s);
    EXPECT_THAT(reihe().ausgelassene(), IsEmpty());
}

TEST_F(Flügeltest, rightButton_choosesTheWingBelowItInChartAndOverview) {
    ASSERT_TRUE(starte());
    missFlügel();
    wähle(u"men_Ansicht_4"_s);
    auto& korrel = kind<Diagrammansicht>(u"pic_Korrel"_s);
    const QPoint kreuz = korrel.stellen().at(0).fläche.center().toPoint();
    QTest::mouseClick(&korrel, Qt::RightButton, {}, kreuz);
    EXPECT_THAT(korrel.hervorgehoben(), ElementsAre(1));
    EXPECT_TRUE(korrel.actions().contains(&kind<QAction>(u"men_Bearbeiten_12"_s)));
    wähle(u"men_Bearbeiten_12"_s);
    EXPECT_THAT(reihe().ausgelassene(), ElementsAre(1));
    EXPECT_THAT(korrel.stellen(), IsEmpty());

    wähle(u"men_Ansicht_6"_s);
    const auto rechts = [&](QPointF ort) {
        QTest::mouseClick(&übersicht(), Qt::RightButton, {}, übersicht().zuFenster(ort).toPoint());
    };
    rechts({880, 300});
    wähle(u"men_Bearbeiten_12"_s);
    EXPECT_THAT(reihe().ausgelassene(), ElementsAre(1)); // none was meant
    rechts({270, 110});
    wähle(u"men_Bearbeiten_12"_s);
    EXPECT_THAT(reihe().ausgelassene(), IsEmpty());
    rechts({880, 300});
    const QPointF dort = übersicht().zuFenster({272, 112});
    QMouseEvent zug(QEvent::MouseMove, dort, übersicht().mapToGlobal(dort), Qt::NoButton,
                    Qt::NoButton, {});
    QApplication::sendEvent(&übersicht(), &zug);
    drücke(Qt::Key_D, Qt::ControlModifier);
    EXPECT_THAT(reihe().ausgelassene(), ElementsAre(1));
}

TEST_F(Flügeltest, wingThatCanHardlyBeRight_isTakenOverMarkedAndToldOfInEveryLanguage) {
    ASSERT_TRUE(starte());
    missFlügel();
    EXPECT_EQ(zeile(1).data(zeilenrolle::Zweifel), static_cast<int>(Zweifelsgrad::Keiner));
    missDaneben({288, 62}, {360, 56}); // points 3 and 4 swapped
    ASSERT_THAT(reihe().nummern(), ElementsAre(1, 2));
    const std::string gesagt = hinweis().toStdString();
    EXPECT_THAT(gesagt, HasSubstr("Flügel 002 ist übernommen, aber fraglich."));
    EXPECT_THAT(gesagt, HasSubstr("Die Punkte 3, 4 sind wohl vertauscht."));
    EXPECT_THAT(gesagt, HasSubstr("Strg+D"));
    wähle(u"men_Sprache_1"_s);
    EXPECT_THAT(hinweis().toStdString(), HasSubstr("Points 3, 4 seem to be swapped. Ctrl+D"));
    wähle(u"men_Sprache_0"_s);
    EXPECT_EQ(zeile(2).data(zeilenrolle::Zweifel), static_cast<int>(Zweifelsgrad::Fraglich));
    EXPECT_THAT(zeile(2).data(Qt::ToolTipRole).toString().toStdString(), HasSubstr("3, 4"));
    const auto zeichenImScan = [this] {
        const QImage scan = übersicht().grab().toImage();
        int farbig = 0;
        for (int y = 0; y < scan.height(); ++y) {
            for (int x = 0; x < scan.width(); ++x) {
                farbig += scan.pixelColor(x, y) == QColor(0xD5, 0x5E, 0x00) ? 1 : 0;
            }
        }
        return farbig;
    };
    wähle(u"men_Ansicht_6"_s);
    EXPECT_GT(zeichenImScan(), 10);
    const QPoint zwei = übersicht().zuFenster({570, 170}).toPoint();
    QHelpEvent zeigen(QEvent::ToolTip, zwei, übersicht().mapToGlobal(zwei));
    QApplication::sendEvent(&übersicht(), &zeigen);
    EXPECT_THAT(QToolTip::text().toStdString(), HasSubstr("Die Punkte 3, 4"));
    wähle(u"men_Bearbeiten_3"_s);
    EXPECT_EQ(zeichenImScan(), 0);
    wähle(u"men_Bearbeiten_4"_s);
    wähle(u"men_Sprache_1"_s);
    EXPECT_THAT(zeile(2).data(Qt::ToolTipRole).toString().toStdString(),
                HasSubstr("Points 3, 4 seem to be swapped."));
}

TEST_F(Flügeltest, firstWingOfAPicture_tellsWhichResolutionItWouldFit) {
    ASSERT_TRUE(starte({.dezimal = u','}));
    missFlügel(); // 309 pixels from point 1 to 2, at 1200 dpi
    EXPECT_THAT(hinweis().toStdString(), AllOf(HasSubstr("Bei 1200 dpi"), HasSubstr("6,5 mm"),
                                               HasSubstr("Dazu würden 2400 dpi passen.")));
    missDaneben();
    ASSERT_THAT(reihe().nummern(), ElementsAre(1, 2));
    EXPECT_THAT(hinweis().toStdString(), Not(HasSubstr("2400"))); // said once a picture
}
