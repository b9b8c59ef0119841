// From measured wings and recorded marks to charts and verdict, in the real window.

#include "app/fenster.h"
#include "evaluation/diagrammansicht.h"
#include "platform/vektorbild.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QListView>
#include <QTableView>
#include <QTextDocumentFragment>
#include <QTimer>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

struct Auswertungstest : Fenstertest {
    void SetUp() override {
        ASSERT_TRUE(starte());
        hg().resize(1280, 800);
    }
    /// Measures a wing whose cubital index is @p a / 20 by clicks, with sensible other points;
    /// @p verschoben pixels change its discoidal shift.
    void miss(double a, double verschoben = 0) {
        for (const QPointF& punkt : {QPointF(400, 50), QPointF(92, 75), QPointF(360, 56),
                                     QPointF(288, 62), QPointF(237 + a, 147), QPointF(237, 147),
                                     QPointF(217, 147), QPointF(292 + verschoben, 201)}) {
            klick(punkt);
        }
        if (!reihe().leer()) {
            dialoge.antworten.push_front(Antwort::Ja); // it lies where another one was measured
        }
        klick({500, 250}, Qt::RightButton);
    }
    QString text(const QString& label) const {
        const auto& gezeigt = kind<QLabel>(label);
        return gezeigt.textFormat() == Qt::RichText
                   ? QTextDocumentFragment::fromHtml(gezeigt.text()).toPlainText()
                   : gezeigt.text();
    }
    void drücke(const QString& knopf) const { kind<QAbstractButton>(knopf).click(); }
    void tippe(const QString& feld, const QString& eingabe) const {
        auto& zeile = kind<QLineEdit>(feld);
        zeile.setFocus();
        zeile.selectAll();
        QTest::keyClicks(&zeile, eingabe);
    }
    /// The wing numbers that the selected lines of a list or table begin with.
    std::vector<int> gewählt(const QString& liste) const {
        std::vector<int> nummern;
        const auto& ansicht = kind<QAbstractItemView>(liste);
        for (const QModelIndex& index : ansicht.selectionModel()->selectedIndexes()) {
            if (index.column() == 0) {
                nummern.push_back(index.data().toString().left(3).toInt());
            }
        }
        return nummern;
    }
    Diagrammansicht& diagramm(const QString& name) const {
        return static_cast<Diagrammansicht&>(kind<QWidget>(name));
    }
    /// Clicks the cross or bar of one wing.
    void klickeAuf(Diagrammansicht& diagramm, int flügel) const {
        for (const Diagrammstelle& stelle : std::vector(diagramm.stellen())) {
            if (stelle.flügel == std::vector{flügel}) {
                QTest::mouseClick(&diagramm, Qt::LeftButton, {}, stelle.fläche.center().toPoint());
            }
        }
    }
    /// Does something in the options dialog and presses one of its buttons.
    void inOptionen(const std::function<void(QDialog&)>& tun,
                    const QString& knopf = u"bef_OK"_s) const {
        QTimer::singleShot(0, &hg(), [tun, knopf] {
            auto& dialog = dynamic_cast<QDialog&>(*QApplication::activeModalWidget());
            tun(dialog);
            tarvel::kind<QAbstractButton>(dialog, knopf).click();
        });
        wähle(u"men_Extras_9"_s);
    }
};

} // namespace

TEST_F(Auswertungstest, verdict_followsWingsMarksAndRaceAtOnce) {
    ASSERT_TRUE(hg().ladeBild(maleBild({700, 320})));
    miss(60); // cubital index 3, class 21: no objection
    EXPECT_EQ(text(u"lab_Urteil"_s), u"✓ Entspricht den Merkmalen der Rasse Carnica"_s);
    const QString vorgaben =
        u"\nStandard dieser Rasse: noch die Vorgaben des Programms (Extras › Optionen)"_s;
    EXPECT_TRUE(text(u"lab_Grundlage"_s).endsWith(vorgaben));
    inOptionen([](QDialog& dialog) {
        auto& feld = tarvel::kind<QLineEdit>(dialog, u"txt_Filz_1"_s);
        feld.setText(u"40%"_s);
        Q_EMIT feld.editingFinished();
    });
    EXPECT_FALSE(text(u"lab_Grundlage"_s).contains(vorgaben));
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

TEST_F(Auswertungstest, verdict_isWithheldWhileAShareCannotBeComputed) {
    ASSERT_TRUE(hg().ladeBild(maleBild({700, 320})));
    miss(60);
    wähle(u"men_Ansicht_2"_s);
    drücke(u"opt_Modus_1"_s);
    tippe(u"txt_Anzahl_A_3"_s, u"400"_s); // 2R: none is allowed
    EXPECT_EQ(
        text(u"lab_Urteil"_s),
        u"Die Probe ist zu groß für eine Beurteilung: mehr als 327 gleiche Bienen oder Flügel."_s);
    EXPECT_EQ(hg().beurteilung().urteil(), std::nullopt);
    tippe(u"txt_Anzahl_A_3"_s, u"0"_s);
    tippe(u"txt_Anzahl_A_4"_s, u"5"_s); // hair but no colour
    EXPECT_EQ(text(u"lab_Urteil"_s),
              u"Die Anteile können nicht berechnet werden: Bei 'Panzerzeichen' ist keine Biene "
              "eingetragen. Tragen Sie dort die Zahl der Bienen ein."_s);
    tippe(u"txt_Anzahl_A_0"_s, u"5"_s);
    EXPECT_TRUE(text(u"lab_Urteil"_s).startsWith(u"✓"_s));
}

TEST_F(Auswertungstest, savedChart_namesTheExaminationInTheLanguageOfTheDay) {
    ASSERT_TRUE(hg().ladeBild(maleBild({700, 320})));
    miss(60);
    miss(30);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_D, Qt::ControlModifier);
    if (!kannSvg()) {
        GTEST_SKIP() << "this build writes no SVG";
    }
    tippe(u"txt_UNr"_s, u"001AB2026"_s);
    const QString heute = QString::number(uhr.now().date().year());
    for (const auto& [sprache, text] :
         {std::pair{u"men_Sprache_0"_s, u"Untersuchung Nr. 001AB2026  ·  Carnica  ·  Arbeiter"_s},
          {u"men_Sprache_2"_s, u"Examen N° 001AB2026  ·  Carnica  ·  Ouvrières"_s}}) {
        wähle(sprache);
        for (const QString& ansicht : {u"pic_Kurven"_s, u"pic_Korrel"_s}) {
            const QString pfad = ordner.filePath(ansicht + u".svg"_s);
            ASSERT_TRUE(diagramm(ansicht).speichere(pfad, Diagrammformat::SVG));
            const QString svg = QString::fromUtf8(liesGanz(pfad));
            EXPECT_TRUE(svg.contains(text)) << qPrintable(pfad);
            EXPECT_TRUE(svg.contains(heute));
            EXPECT_TRUE(svg.contains(u": 002"_s));
        }
    }
}

TEST_F(Auswertungstest, reasons_useThePersonsDecimalSeparator) {
    schreibeIni("[Start]\r\nNeu=False\r\n[Merkmale Arbeiterinnen]\r\nPanzer EC-=12.5%\r\n");
    ASSERT_TRUE(starte(Zahlenformat{u',', u'.'}));
    wähle(u"men_Ansicht_2"_s);
    drücke(u"opt_Panzer_A_1"_s);
    drücke(u"bef_Übernehmen"_s);
    EXPECT_EQ(text(u"lab_Mängel"_s), u"• E: 100 %, erlaubt 12,5 %"_s);
}

TEST_F(Auswertungstest, charts_showTheSeriesAndAClickSelectsInTheLists) {
    ASSERT_TRUE(hg().ladeBild(maleBild({700, 320})));
    miss(60);
    miss(30, 6);
    for (const auto& [befehl, ansicht] :
         {std::pair{u"men_Ansicht_3"_s, u"pic_Kurven"_s}, {u"men_Ansicht_4"_s, u"pic_Korrel"_s}}) {
        wähle(befehl);
        Diagrammansicht& bild = diagramm(ansicht);
        ASSERT_TRUE(bild.isVisible());
        EXPECT_TRUE(kind<QAction>(befehl).isChecked());
        for (const int flügel : {2, 1}) {
            klickeAuf(bild, flügel);
            EXPECT_THAT(bild.hervorgehoben(), ElementsAre(flügel));
            for (const QString& liste : {u"Liste_CI"_s, u"Liste_HI_DV"_s, u"Leiste_CI"_s,
                                         u"Leiste_HI_DV"_s, u"Tabelle_Flügel"_s}) {
                EXPECT_THAT(gewählt(liste), ElementsAre(flügel)) << qPrintable(liste);
            }
        }
        QTest::mouseClick(&bild, Qt::LeftButton, {}, {2, 2});
        EXPECT_THAT(gewählt(u"Liste_CI"_s), IsEmpty());
        EXPECT_THAT(gewählt(u"Tabelle_Flügel"_s), IsEmpty());
    }
}

TEST_F(Auswertungstest, repeating_takesTheWingMarkedInTheChart) {
    ASSERT_TRUE(hg().ladeBild(maleBild({700, 320})));
    miss(60);
    miss(30, 6);
    miss(40, 12); // the panel's list now stands on wing 3
    for (const auto& [befehl, ansicht] :
         {std::pair{u"men_Ansicht_4"_s, u"pic_Korrel"_s}, {u"men_Ansicht_3"_s, u"pic_Kurven"_s}}) {
        wähle(befehl);
        klickeAuf(diagramm(ansicht), 1);
        wähle(u"men_Bearbeiten_1"_s);
        EXPECT_EQ(text(u"lab_Flügel"_s), u"Flügel 001 (Wiederholung)"_s);
        QTest::keyClick(&bild(), Qt::Key_Escape);
    }
    wähle(u"men_Ansicht_4"_s);
    klickeAuf(diagramm(u"pic_Korrel"_s), 2);
    wähle(u"men_Ansicht_11"_s);
    wähle(u"men_Bearbeiten_1"_s);
    EXPECT_EQ(text(u"lab_Flügel"_s), u"Flügel 002 (Wiederholung)"_s);
    QTest::keyClick(&bild(), Qt::Key_Escape);

    // A marked wing that is gone gives way to the last one.
    wähle(u"men_Ansicht_4"_s);
    klickeAuf(diagramm(u"pic_Korrel"_s), 3);
    wähle(u"men_Bearbeiten_0"_s);
    wähle(u"men_Ansicht_4"_s);
    wähle(u"men_Bearbeiten_1"_s);
    EXPECT_EQ(text(u"lab_Flügel"_s), u"Flügel 002 (Wiederholung)"_s);
}

TEST_F(Auswertungstest, criteria_standBelowTheViewsAndChooseTheirBees) {
    ASSERT_TRUE(hg().ladeBild(maleBild({700, 320})));
    miss(60);
    miss(30, 6);
    wähle(u"men_Ansicht_3"_s);
    EXPECT_EQ(hg().findChild<QTableView*>(u"Tabelle_Kriterien"_s), nullptr);
    Q_EMIT kind<QLabel>(u"lab_Kriterien"_s).linkActivated(u"kriterien"_s);
    auto& tabelle = kind<QTableView>(u"Tabelle_Kriterien"_s);
    ASSERT_TRUE(tabelle.isVisible());
    EXPECT_TRUE(tabelle.hasFocus());
    const auto zeile = [&tabelle](const QString& anfang) {
        const QModelIndexList treffer = tabelle.model()->match(
            tabelle.model()->index(0, 0), Qt::DisplayRole, anfang, 1, Qt::MatchContains);
        return treffer.value(0);
    };
    const QModelIndex klasse = zeile(u"01-15"_s);
    EXPECT_EQ(klasse.data().toString(), u"✗ Klasse 01-15"_s);
    tabelle.scrollTo(klasse);
    QTest::mouseClick(tabelle.viewport(), Qt::LeftButton, {}, tabelle.visualRect(klasse).center());
    EXPECT_THAT(diagramm(u"pic_Kurven"_s).hervorgehoben(), ElementsAre(2));
    tabelle.setCurrentIndex(zeile(u"15-17"_s));
    QTest::keyClick(&tabelle, Qt::Key_Return);
    EXPECT_THAT(diagramm(u"pic_Kurven"_s).hervorgehoben(), IsEmpty());
    tabelle.setCurrentIndex(zeile(u"Panzerzeichen"_s)); // not recorded: no bees
    QTest::keyClick(&tabelle, Qt::Key_Return);
    EXPECT_TRUE(diagramm(u"pic_Kurven"_s).isVisible());

    // From the marks a row about wings goes where wings are seen, one about marks stays.
    wähle(u"men_Ansicht_2"_s);
    drücke(u"opt_Panzer_A_3"_s);
    drücke(u"bef_Übernehmen"_s);
    tabelle.setFocus();
    tabelle.setCurrentIndex(zeile(u"2R"_s));
    QTest::keyClick(&tabelle, Qt::Key_Return);
    EXPECT_THAT(gewählt(u"Liste"_s), ElementsAre(1));
    tabelle.setFocus();
    tabelle.setCurrentIndex(zeile(u"01-15"_s));
    QTest::keyClick(&tabelle, Qt::Key_Return);
    EXPECT_TRUE(kind<QWidget>(u"Liste_CI"_s).isVisible());
    EXPECT_THAT(gewählt(u"Liste_CI"_s), ElementsAre(2));

    wähle(u"men_Sprache_1"_s);
    EXPECT_EQ(zeile(u"01-15"_s).data().toString(), u"✗ Class 01-15"_s);
    wähle(u"men_Datei_9"_s); // the preview has room for itself alone
    EXPECT_FALSE(tabelle.isVisible());
    wähle(u"men_Ansicht_3"_s);
    EXPECT_TRUE(tabelle.isVisible());
    inOptionen([](QDialog& dialog) {
        tarvel::kind<QAbstractButton>(dialog, u"chk_Beurteilung"_s).click();
    });
    EXPECT_FALSE(tabelle.isVisible());
    EXPECT_EQ(text(u"lab_KriterienStatt"_s), u"The judgement is switched off in the options."_s);

    dialoge.antworten = {Antwort::Nein, Antwort::Nein};
    hg().close();
    ASSERT_TRUE(starte());
    EXPECT_TRUE(kind<QAction>(u"men_Ansicht_24"_s).isChecked());
    EXPECT_TRUE(kind<QWidget>(u"Kriterien"_s).isVisible());
    QTest::keyClick(&hg(), Qt::Key_F9, Qt::ShiftModifier);
    EXPECT_FALSE(kind<QWidget>(u"Kriterien"_s).isVisible());
}

TEST_F(Auswertungstest, marks_areCountedAgainstTheWingsAndBeginAnewWithTheExamination) {
    ASSERT_TRUE(hg().ladeBild(maleBild({700, 320})));
    miss(60);
    wähle(u"men_Ansicht_2"_s);
    QTest::keyClicks(QApplication::focusWidget(), u"2wx"_s);
    EXPECT_EQ(text(u"lab_MerkmalFortschritt"_s), u"1 von 1"_s);
    wähle(u"men_Bearbeiten_3"_s);
    EXPECT_EQ(text(u"lab_MerkmalFortschritt"_s), u"0 von 1"_s);
    wähle(u"men_Bearbeiten_4"_s);
    dialoge.antworten = {Antwort::Nein, Antwort::Nein};
    wähle(u"men_Datei_0"_s);
    wähle(u"men_Ansicht_2"_s);
    EXPECT_TRUE(kind<QAbstractButton>(u"opt_Panzer_A_0"_s).isChecked());
    EXPECT_EQ(text(u"lab_MerkmalFortschritt"_s), QString());
}

TEST_F(Auswertungstest, hintOfTheBodyMarks_followsTheMode) {
    wähle(u"men_Ansicht_2"_s);
    const QString jeBiene = hinweis();
    drücke(u"opt_Modus_1"_s);
    EXPECT_EQ(hinweis(), Texte::eintrag(Text::HinweisMerkmaleSummen, Sprache::Deutsch));
    drücke(u"opt_Modus_0"_s);
    EXPECT_EQ(hinweis(), jeBiene);
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

TEST_F(Auswertungstest, otherCaste_asksForTheMarksOfTheOtherModeToo) {
    auto& geschlecht = kind<QComboBox>(u"cbo_Geschlecht"_s);
    wähle(u"men_Ansicht_2"_s);
    drücke(u"opt_Modus_1"_s);
    tippe(u"txt_Anzahl_A_0"_s, u"7"_s);
    drücke(u"opt_Modus_0"_s); // an empty list
    dialoge.antworten = {Antwort::Nein, Antwort::Ja};
    QTest::keyClick(&geschlecht, Qt::Key_Down);
    EXPECT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_EQ(hg().untersuchung().merkmale().Summen[0], 7);
    QTest::keyClick(&geschlecht, Qt::Key_Down);
    EXPECT_FALSE(hg().untersuchung().merkmale().etwasEingetragen());

    drücke(u"bef_Übernehmen"_s);
    drücke(u"opt_Modus_1"_s);
    for (const QString& feld : {u"txt_Anzahl_D_0"_s, u"txt_Anzahl_D_4"_s}) {
        tippe(feld, u"0"_s); // no sums, but a list behind them
    }
    EXPECT_TRUE(hg().untersuchung().merkmale().leer());
    QTest::keyClick(&geschlecht, Qt::Key_Up);
    EXPECT_THAT(dialoge.fragen, SizeIs(3));
    EXPECT_THAT(hg().untersuchung().merkmale().Liste, SizeIs(1));
}

TEST_F(Auswertungstest, optionsConfirmedUntouched_leaveTheRunningMeasurement) {
    const QString vorher = text(u"lab_Status"_s);
    ASSERT_TRUE(vorher.contains(u"1200 dpi"_s)) << qPrintable(vorher);
    inOptionen([](QDialog&) {});
    EXPECT_EQ(text(u"lab_Status"_s), vorher);
    // The dialog shows and writes its own default. What that means is said.
    EXPECT_TRUE(ini().contains("Scann=1\r\nDefault Zoom=1\r\n"));
    EXPECT_EQ(
        hinweis(),
        u"Gemessen wird weiter mit 1200 dpi. Beim nächsten Start gelten die 600 dpi der Optionen. "
        "Der nächste Start beginnt mit dem Zoom 2 der Optionen statt mit 1."_s);
    kind<QComboBox>(u"cbo_dpi"_s).setCurrentText(u"2400 dpi"_s);
    Q_EMIT kind<QComboBox>(u"cbo_dpi"_s).activated(3);
    EXPECT_FALSE(hinweis().contains(u"Gemessen wird weiter"_s)) << qPrintable(hinweis());
    Q_EMIT kind<QComboBox>(u"cbo_dpi"_s).activated(2);
    wähle(u"men_Ansicht_2"_s);
    const QString anderer = hinweis();
    inOptionen([](QDialog&) {}); // once is enough
    EXPECT_EQ(hinweis(), anderer);
    EXPECT_EQ(text(u"lab_Status"_s), vorher);
}

TEST_F(Auswertungstest, optionsChanged_reachTheRunningMeasurementOnlyWhenConfirmed) {
    const auto ändere = [](QDialog& dialog) {
        tarvel::kind<QComboBox>(dialog, u"cbo_dpi"_s).setCurrentIndex(3);
        tarvel::kind<QAbstractButton>(dialog, u"opt_Zoom_2"_s).click();
        tarvel::kind<QAbstractButton>(dialog, u"opt_Betriebsart_0"_s).click();
    };
    inOptionen(ändere, u"bef_Abbrechen"_s);
    EXPECT_TRUE(text(u"lab_Status"_s).contains(u"1200 dpi"_s));
    EXPECT_TRUE(kind<QAction>(u"men_Betriebsart_1"_s).isChecked());
    for (const auto& [position, dpi] : {std::pair{0, 300}, {1, 600}, {2, 1200}}) {
        inOptionen([position = position](QDialog& dialog) {
            tarvel::kind<QComboBox>(dialog, u"cbo_dpi"_s).setCurrentIndex(position);
        });
        // Of each that is too low, also when another was before.
        EXPECT_EQ(hinweis().startsWith(u"Mit %1 dpi"_s.arg(dpi)), dpi < 1200)
            << qPrintable(hinweis());
    }
    missFlügel();
    inOptionen(ändere);
    EXPECT_TRUE(hinweis().contains(u"2400"_s))
        << qPrintable(hinweis()); // what was measured keeps 1200
    EXPECT_TRUE(text(u"lab_Status"_s).contains(u"2400 dpi"_s));
    EXPECT_TRUE(text(u"lab_Status"_s).contains(u"Zoomfaktor 3"_s));
    EXPECT_TRUE(kind<QAction>(u"men_Betriebsart_0"_s).isChecked());
}

TEST_F(Auswertungstest, judgementSwitchedOff_givesNoVerdict) {
    schreibeIni("[Start]\r\nNeu=False\r\n[Protokoll]\r\nBeurteilung=0\r\n");
    ASSERT_TRUE(starte());
    EXPECT_EQ(text(u"lab_Urteil"_s), u"Die Beurteilung ist in den Optionen ausgeschaltet."_s);
}
