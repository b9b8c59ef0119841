#include "results/db.h"

#include "results/browserprobe.h"
#include "results/ergebnisgitter.h"
#include "support/kinder.h"
#include "support/testdialoge.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <gmock/gmock.h>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

struct DBTest : Browserprobe {
    Texte texte{QString()};
    TestDialoge dialoge;
    QStringList gewählt;
    QStringList geladen;
    bool lädt = true;
    std::unique_ptr<DB> db;

    DBTest() { texte.SpracheDeutsch(); }

    void öffne(const QString& datei) {
        db = std::make_unique<DB>(DbUmgebung{
            .texte = texte,
            .dialoge = dialoge,
            .DatenbankPfad = datei,
            .dokumente = ordner_.path(),
            .DatenbankWählen =
                [this](const QString& neu) {
                    try {
                        Ergebnistabelle(neu).öffneProbeweise();
                    } catch (const Datenbankfehler& fehler) {
                        dialoge.meldung({}, meldungstext(texte, fehler), Meldungsart::Ausruf);
                        return false;
                    }
                    gewählt << neu;
                    return true;
                },
            .LadenDB =
                [this](const QString& nummer) {
                    geladen << nummer;
                    return lädt;
                }});
        db->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(db.get()));
        QApplication::processEvents(); // what waits for the first painting
    }
    void öffne() { öffne(pfad_); }

    template <typename T>
    T& kind(const QString& name) const {
        return tarvel::kind<T>(*db, name);
    }
    Ergebnisgitter& grid() const {
        return static_cast<Ergebnisgitter&>(kind<QTableView>(u"Grid"_s));
    }
    QAction& aktion(const QString& name) const { return kind<QAction>(name); }
    void wähle(const QString& name) const { aktion(name).trigger(); }
    QString zelle(int zeile, int spalte) const {
        return grid().model()->index(zeile, spalte).data().toString();
    }
    /// Examination numbers that are shown, in their order.
    QString gezeigt() const {
        QStringList nummern;
        for (int zeile = 0; zeile < grid().model()->rowCount(); ++zeile) {
            nummern << zelle(zeile, 0);
        }
        return nummern.join(u' ');
    }
    QString anzahl() const { return kind<QLabel>(u"lab_Anzahl"_s).text(); }

    void taste(Qt::Key key, Qt::KeyboardModifiers umschalt = Qt::NoModifier) const {
        QTest::keyClick(QApplication::focusWidget(), key, umschalt);
        QApplication::processEvents();
    }
    void gehe(int zeile, int spalte) const {
        grid().setFocus();
        grid().setCurrentIndex(grid().model()->index(zeile, spalte));
    }
    /// Types into a cell as a person does and ends with Enter.
    void tippe(int zeile, int spalte, const QString& text) const {
        gehe(zeile, spalte);
        taste(Qt::Key_F2);
        QWidget* editor = QApplication::focusWidget();
        if (auto* auswahl = qobject_cast<QComboBox*>(editor)) {
            auswahl->setEditText(text);
        } else if (auto* feld = qobject_cast<QLineEdit*>(editor)) {
            feld->setText(text);
        } else {
            ADD_FAILURE() << "no editor";
        }
        taste(Qt::Key_Return);
    }
    void doppelklick(int zeile) const {
        const QPoint ort = grid().visualRect(grid().model()->index(zeile, 2)).center();
        QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, ort);
        QTest::mouseDClick(grid().viewport(), Qt::LeftButton, {}, ort);
    }
};

TEST_F(DBTest, CaptionHeadingsAndMenusFollowTheLanguage) {
    struct Fall {
        void (Texte::*lade)();
        QString titel, unbekannt, kopf, eintrag;
    };
    const Fall fälle[] = {{&Texte::SpracheDeutsch, u"Ergebnisse [%1]"_s,
                           u"Ergebnisse [(unbekannt)]"_s, u"Nummer der Königin"_s,
                           u"Entspricht nicht"_s},
                          {&Texte::SpracheEnglisch, u"Results [%1]"_s, u"Results [(unknown)]"_s,
                           u"Number of Queen"_s, u"Not matching"_s},
                          {&Texte::SpracheFranzösisch, u"Résultats [%1]"_s,
                           u"Résultats [(inconnu)]"_s, u"Reine N°"_s, u"Ne conforme pas"_s}};
    for (const Fall& fall : fälle) {
        (texte.*fall.lade)();
        öffne();
        EXPECT_EQ(db->windowTitle(), fall.titel.arg(QFileInfo(pfad_).fileName()));
        EXPECT_EQ(grid().model()->headerData(1, Qt::Horizontal).toString(), fall.kopf);
        EXPECT_EQ(aktion(u"men_Ergebnis_2"_s).text().remove(u'&'), fall.eintrag);
        öffne(QString());
        EXPECT_EQ(db->windowTitle(), fall.unbekannt);
        EXPECT_FALSE(kind<QPushButton>(u"bef_Öffnen"_s).isEnabled());
    }
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
}

TEST_F(DBTest, ColumnsHaveTheirWidthsAndKeepThoseOfTheUser) {
    fülle(3);
    öffne();
    const QHeaderView& kopf = *grid().horizontalHeader();
    const int twips[] = {1050, 1500, 1800, 1800, 900, 800, 800, 1500, 900};
    for (int spalte = 0; spalte < 9; ++spalte) {
        EXPECT_EQ(kopf.sectionSize(spalte), qRound(twips[spalte] * grid().logicalDpiX() / 1440.0));
        EXPECT_FALSE(grid().isColumnHidden(spalte));
    }
    grid().setColumnWidth(2, 222);
    wähle(u"men_Sort_3"_s);
    wähle(u"men_Rasse_2"_s);
    EXPECT_EQ(grid().columnWidth(2), 222);
}

TEST_F(DBTest, OpensAtTheLastRowAndReadsTheRestAfterTheFirstPage) {
    fülle(700);
    öffne();
    EXPECT_EQ(grid().model()->rowCount(), 700);
    EXPECT_EQ(grid().currentIndex().row(), 699);
    EXPECT_TRUE(grid().viewport()->rect().intersects(grid().visualRect(grid().currentIndex())));
    EXPECT_EQ(anzahl(), u"700 Untersuchungen"_s);
    EXPECT_TRUE(grid().hasFocus());
    taste(Qt::Key_Home);
    EXPECT_EQ(grid().currentIndex().row(), 0);
    taste(Qt::Key_End);
    EXPECT_EQ(grid().currentIndex().row(), 699);
    wähle(u"men_Sort_1"_s);
    EXPECT_EQ(anzahl(), u"mehr als 64 Untersuchungen"_s);
    taste(Qt::Key_End);
    EXPECT_EQ(zelle(grid().currentIndex().row(), 2), u"Züchter 0700"_s);
    EXPECT_EQ(anzahl(), u"700 Untersuchungen"_s);
}

TEST_F(DBTest, AnEmptyFileSaysSo) {
    öffne();
    EXPECT_EQ(anzahl(), u"0 Untersuchungen"_s);
    EXPECT_EQ(grid().leertext(), texte(Meldung::NochKeineUntersuchung));
    wähle(u"men_Rasse_1"_s);
    EXPECT_EQ(grid().leertext(), texte(Meldung::KeineUntersuchungGefunden));
}

TEST_F(DBTest, AFileThatCannotBeReadIsToldAndLeavesTheBrowserUsable) {
    schreibe(pfad_, "no database at all, but long enough to be looked at");
    öffne();
    EXPECT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_EQ(grid().model()->rowCount(), 0);
    EXPECT_THAT(grid().leertext().toStdString(), HasSubstr("neu'.tdb"));
}

struct DBFiltertest : DBTest {
    struct Fall {
        QString nummer, ergebnis, rasse, tiere, züchter;
    };
    void SetUp() override {
        DBTest::SetUp();
        const Fall fälle[] = {{u"001"_s, u"Ja"_s, u"Carnica"_s, u"Arbeiter"_s, u"d"_s},
                              {u"002"_s, u"No"_s, u"carnica"_s, u"Drones"_s, u"c"_s},
                              {u"003"_s, u"Oui"_s, u"Mellifera"_s, u"Mâles"_s, u"b"_s},
                              {u"004"_s, u" "_s, u"Ligustica"_s, u"Workers"_s, u"a"_s},
                              {u"005"_s, u"Yes"_s, u"Buckfast"_s, u"OUVRIÈRES"_s, u"e"_s},
                              {u"006"_s, u"nein"_s, u"Carpatica"_s, u"Workers"_s, u"f"_s}};
        int tag = 10;
        for (const Fall& fall : fälle) {
            Ergebnissatz neu = vollerSatz(fall.nummer);
            neu.ERGEBNIS = fall.ergebnis;
            neu.RASSE = fall.rasse;
            neu.A_D = fall.tiere;
            neu.Z_NAME = fall.züchter;
            neu.B_NAME = fall.tiere + fall.nummer;
            neu.ZB_NR = QString(u'9').repeated(tag);
            neu.DATUM = QDate(2025, 1, tag--);
            speichere(neu);
        }
        öffne();
    }
    bool filtert() const { return aktion(u"men_Filter_0"_s).isChecked(); }
};

TEST_F(DBFiltertest, EachMenuNarrowsAndShowsItsChoice) {
    EXPECT_FALSE(filtert());
    EXPECT_EQ(gezeigt(), u"006 005 004 003 002 001"_s);
    const std::pair<QString, QString> wahlen[] = {{u"men_Ergebnis_1"_s, u"003 001"_s},
                                                  {u"men_Ergebnis_2"_s, u"006 002"_s},
                                                  {u"men_Ergebnis_0"_s, u"006 003 002 001"_s},
                                                  {u"men_Geschlecht_1"_s, u"006 001"_s},
                                                  {u"men_Geschlecht_2"_s, u"003 002"_s},
                                                  {u"men_Rasse_1"_s, u"002"_s},
                                                  {u"men_Geschlecht_0"_s, u"002 001"_s},
                                                  {u"men_Rasse_2"_s, u"003"_s},
                                                  {u"men_Rasse_3"_s, u""_s},
                                                  {u"men_Rasse_4"_s, u"006"_s},
                                                  {u"men_Rasse_0"_s, u"006 003 002 001"_s}};
    for (const auto& [menü, nummern] : wahlen) {
        wähle(menü);
        EXPECT_EQ(gezeigt(), nummern) << menü.toStdString();
        EXPECT_TRUE(aktion(menü).isChecked());
        EXPECT_TRUE(filtert());
    }
    EXPECT_FALSE(aktion(u"men_Rasse_4"_s).isChecked());
}

TEST_F(DBFiltertest, SwitchedOffShowsRowsWithoutVerdictAndOtherRaces) {
    wähle(u"men_Rasse_1"_s);
    wähle(u"men_Filter_0"_s);
    EXPECT_FALSE(filtert());
    EXPECT_TRUE(aktion(u"men_Rasse_1"_s).isChecked());
    EXPECT_EQ(gezeigt(), u"006 005 004 003 002 001"_s);
    wähle(u"men_Filter_0"_s);
    EXPECT_EQ(gezeigt(), u"002 001"_s);
    wähle(u"men_Filter_1"_s);
    EXPECT_TRUE(aktion(u"men_Rasse_0"_s).isChecked());
    EXPECT_EQ(gezeigt(), u"006 003 002 001"_s);
    EXPECT_EQ(anzahl(), u"4 Untersuchungen"_s);
}

TEST_F(DBFiltertest, SortsByTheChosenColumn) {
    const std::pair<QString, QString> ordnungen[] = {
        {u"men_Sort_1"_s, u"001 002 003 004 005 006"_s},
        {u"men_Sort_2"_s, u"006 005 004 003 002 001"_s},
        {u"men_Sort_3"_s, u"004 003 002 001 005 006"_s},
        {u"men_Sort_4"_s, u"001 002 003 005 004 006"_s},
        {u"men_Sort_0"_s, u"006 005 004 003 002 001"_s}};
    for (const auto& [menü, nummern] : ordnungen) {
        wähle(menü);
        EXPECT_EQ(gezeigt(), nummern) << menü.toStdString();
        EXPECT_FALSE(filtert());
    }
}

TEST_F(DBFiltertest, SearchBoxNarrowsWhatIsShown) {
    auto& suche = kind<QLineEdit>(u"txt_Suche"_s);
    EXPECT_FALSE(suche.isVisible());
    taste(Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(suche.hasFocus());
    suche.setText(u"  ouvrières00 "_s);
    EXPECT_EQ(gezeigt(), u"005"_s);
    suche.setText(u"00%"_s);
    EXPECT_EQ(gezeigt(), QString());
    EXPECT_EQ(grid().leertext(), texte(Meldung::KeineUntersuchungGefunden));
    suche.setText(u"Mâles"_s);
    EXPECT_EQ(gezeigt(), u"003"_s);
    taste(Qt::Key_Return);
    EXPECT_TRUE(grid().hasFocus());
    EXPECT_EQ(gezeigt(), u"003"_s);
    taste(Qt::Key_F, Qt::ControlModifier);
    taste(Qt::Key_Escape);
    EXPECT_FALSE(suche.isVisible());
    EXPECT_TRUE(db->isVisible());
    EXPECT_EQ(gezeigt(), u"006 005 004 003 002 001"_s);
    taste(Qt::Key_Escape);
    EXPECT_FALSE(db->isVisible());
}

TEST_F(DBFiltertest, DeletesOnlyOnYes) {
    gehe(1, 3);
    taste(Qt::Key_Delete);
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_EQ(dialoge.fragen.front().titel, u"Zeile löschen"_s);
    EXPECT_EQ(dialoge.fragen.front().text, u"Wollen Sie diese Zeile löschen."_s);
    EXPECT_TRUE(dialoge.fragen.front().verwirft);
    EXPECT_EQ(nummern(), u"001;002;003;004;005;006"_s);
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
    dialoge.antworten = {Antwort::Ja, Antwort::Ja};
    wähle(u"men_Tabelle_3"_s);
    EXPECT_EQ(nummern(), u"001;002;003;004;006"_s);
    EXPECT_EQ(zelle(grid().currentIndex().row(), 0), u"004"_s);
    EXPECT_EQ(anzahl(), u"5 Untersuchungen"_s);
    gehe(4, 0);
    taste(Qt::Key_Delete);
    EXPECT_EQ(gezeigt(), u"006 004 003 002"_s);
    EXPECT_EQ(grid().currentIndex().row(), 3);
}

TEST_F(DBFiltertest, OpensTheSelectedExamination) {
    lädt = false;
    gehe(2, 0);
    QTest::mouseClick(&kind<QPushButton>(u"bef_Öffnen"_s), Qt::LeftButton);
    gehe(3, 5);
    taste(Qt::Key_Return);
    doppelklick(4);
    EXPECT_THAT(geladen, ElementsAre(u"004"_s, u"003"_s, u"002"_s));
    EXPECT_TRUE(db->isVisible());
    lädt = true;
    taste(Qt::Key_Enter);
    EXPECT_FALSE(db->isVisible());
    EXPECT_EQ(db->result(), QDialog::Accepted);
}

TEST_F(DBFiltertest, EditsInPlaceAndTrimsTheRow) {
    fremd(u"UPDATE Ergebnisse SET VATER=' Insel ' WHERE U_NR='006'"_s);
    wähle(u"men_Sort_0"_s);
    tippe(0, 3, u"  Karl Öhler "_s);
    EXPECT_EQ(fremd(u"SELECT B_NAME,VATER FROM Ergebnisse WHERE U_NR='006'"_s),
              u"Karl Öhler|Insel"_s);
    tippe(0, 4, u"Drohnen"_s);
    tippe(0, 8, u"1.2.2023"_s);
    EXPECT_EQ(fremd(u"SELECT A_D,date(DATUM) FROM Ergebnisse WHERE U_NR='006'"_s),
              u"Drohnen|2023-02-01"_s);
    EXPECT_THAT(geladen, IsEmpty()) << "Enter that ends an edit opens nothing";
    EXPECT_TRUE(db->isVisible());
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
}

TEST_F(DBFiltertest, ARefusedEditIsToldOnceAndChangesNothing) {
    const QString vorher = fremd(u"SELECT * FROM Ergebnisse"_s);
    const std::tuple<int, QString> eingaben[] = {
        {0, u"001"_s}, {0, u"12345678901"_s}, {4, u"Biene"_s}, {5, u"nicht"_s}, {8, u"morgen"_s}};
    for (const auto& [spalte, text] : eingaben) {
        dialoge.meldungen.clear();
        tippe(0, spalte, text);
        QApplication::processEvents();
        EXPECT_THAT(dialoge.meldungen, SizeIs(1)) << text.toStdString();
        EXPECT_EQ(fremd(u"SELECT * FROM Ergebnisse"_s), vorher);
    }
    EXPECT_EQ(zelle(0, 0), u"006"_s);
}

TEST_F(DBFiltertest, ClosingAndOpeningWriteTheCellThatIsBeingEditedFirst) {
    const auto beginne = [this](const QString& text) {
        öffne();
        gehe(0, 4);
        taste(Qt::Key_F2);
        auto* auswahl = qobject_cast<QComboBox*>(QApplication::focusWidget());
        ASSERT_NE(auswahl, nullptr);
        auswahl->setEditText(text);
        dialoge.meldungen.clear();
    };
    const std::function<void()> wege[] = {[this] { db->close(); }, [this] { db->reject(); },
                                          [this] { db->ÖffnenStart(); }};
    const QString lies = u"SELECT A_D FROM Ergebnisse WHERE U_NR='006'"_s;
    for (const auto& weg : wege) {
        const QString vorher = fremd(lies);
        beginne(u"Biene"_s);
        weg();
        EXPECT_THAT(dialoge.meldungen, SizeIs(1));
        EXPECT_TRUE(db->isVisible());
        EXPECT_EQ(fremd(lies), vorher);
        QApplication::processEvents();
        EXPECT_THAT(dialoge.meldungen, SizeIs(1)) << "told once";
        weg(); // nothing is being edited any more
        EXPECT_FALSE(db->isVisible());

        const QString neu = vorher == u"Drohnen"_s ? u"Arbeiter"_s : u"Drohnen"_s;
        beginne(neu);
        weg();
        EXPECT_FALSE(db->isVisible());
        EXPECT_EQ(fremd(lies), neu);
        EXPECT_THAT(dialoge.meldungen, IsEmpty());
    }
    EXPECT_THAT(geladen, ElementsAre(u"006"_s, u"006"_s));
}

TEST_F(DBFiltertest, AnEditThatWasJustRefusedIsToldBeforeTheWindowCloses) {
    gehe(0, 4);
    EXPECT_FALSE(grid().model()->setData(grid().currentIndex(), u"Biene"_s));
    db->close();
    EXPECT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(db->isVisible());
}

TEST_F(DBFiltertest, MenusWriteTheCellThatIsBeingEditedFirst) {
    gehe(0, 2);
    taste(Qt::Key_F2);
    auto* feld = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(feld, nullptr);
    feld->setText(u"neu"_s);
    wähle(u"men_Sort_1"_s);
    EXPECT_EQ(fremd(u"SELECT Z_NAME FROM Ergebnisse WHERE U_NR='006'"_s), u"neu"_s);
    gehe(0, 8);
    taste(Qt::Key_F2);
    qobject_cast<QLineEdit*>(QApplication::focusWidget())->setText(u"morgen"_s);
    wähle(u"men_Sort_2"_s);
    EXPECT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(aktion(u"men_Sort_1"_s).isChecked());
    EXPECT_EQ(gezeigt(), u"001 002 003 004 005 006"_s);
}

TEST_F(DBFiltertest, ARowWhosePlaceAnotherOneTookIsToldAndShownAnew) {
    const QString tausche = u"UPDATE Ergebnisse SET U_NR='%2', Z_NAME='fremd' WHERE U_NR='%1'"_s;
    gehe(1, 0);
    fremd(tausche.arg(u"005"_s, u"105"_s));
    tippe(1, 2, u"x"_s);
    QApplication::processEvents();
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_THAT(dialoge.meldungen.first().toStdString(), HasSubstr("'005' steht nicht"));
    EXPECT_EQ(gezeigt(), u"006 105 004 003 002 001"_s);
    EXPECT_EQ(grid().currentIndex().row(), 1);

    fremd(tausche.arg(u"105"_s, u"205"_s));
    dialoge.antworten = {Antwort::Ja};
    taste(Qt::Key_Delete);
    EXPECT_THAT(dialoge.meldungen, SizeIs(2));
    EXPECT_EQ(gezeigt(), u"006 205 004 003 002 001"_s);
    EXPECT_EQ(fremd(u"SELECT Z_NAME FROM Ergebnisse WHERE U_NR='205'"_s), u"fremd"_s);
}

TEST_F(DBFiltertest, SaysWhyARowWithoutNumberDoesNotOpen) {
    fremd(u"UPDATE Ergebnisse SET U_NR=NULL WHERE U_NR='006'"_s);
    wähle(u"men_Sort_0"_s);
    gehe(0, 0);
    taste(Qt::Key_Return);
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_THAT(dialoge.meldungen.first().toStdString(), HasSubstr("keine Nummer"));
    EXPECT_THAT(geladen, IsEmpty());
    tippe(0, 0, u"006"_s);
    taste(Qt::Key_Return);
    EXPECT_THAT(geladen, ElementsAre(u"006"_s));
}

TEST_F(DBFiltertest, OnlyTypingReplacesATextNotABlank) {
    gehe(0, 2);
    taste(Qt::Key_Space);
    EXPECT_EQ(QApplication::focusWidget(), &grid());
    taste(Qt::Key_X);
    taste(Qt::Key_Return);
    EXPECT_EQ(zelle(0, 2), u"x"_s);
    gehe(0, 2);
    taste(Qt::Key_Y);
    taste(Qt::Key_Escape);
    EXPECT_EQ(zelle(0, 2), u"x"_s);
    EXPECT_TRUE(db->isVisible());
}

TEST_F(DBFiltertest, OnlyASecondClickOnTheSameCellEdits) {
    const int üblich = QApplication::doubleClickInterval();
    QApplication::setDoubleClickInterval(1);
    const auto klicke = [this](int spalte) {
        const QPoint ort = grid().visualRect(grid().model()->index(1, spalte)).center();
        QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, ort);
    };
    const auto istEditor = [] {
        return qobject_cast<QLineEdit*>(QApplication::focusWidget()) != nullptr;
    };
    klicke(2);
    klicke(3); // the row is selected already, the cell is another
    EXPECT_FALSE(QTest::qWaitFor(istEditor, 20));
    klicke(3);
    EXPECT_TRUE(QTest::qWaitFor(istEditor));
    QApplication::setDoubleClickInterval(üblich);
    EXPECT_THAT(geladen, IsEmpty());
}

TEST_F(DBFiltertest, TakesAnotherFileOnlyWhenItIsOne) {
    const QString andere = ordner_.filePath(u"andere.tdb"_s);
    NeueDatenbank(andere);
    Ergebnistabelle(andere).speichere(vollerSatz(u"900"_s));
    const QString schlecht = ordner_.filePath(u"schlecht.tdb"_s);
    schreibe(schlecht, "nothing");
    wähle(u"men_Rasse_1"_s);
    dialoge.dateien = {schlecht, QString(), andere};
    wähle(u"men_Tabelle_0"_s);
    EXPECT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_EQ(gezeigt(), u"002 001"_s);
    wähle(u"men_Tabelle_0"_s); // cancelled
    EXPECT_THAT(gewählt, IsEmpty());
    wähle(u"men_Tabelle_0"_s);
    EXPECT_THAT(gewählt, ElementsAre(andere));
    EXPECT_EQ(db->windowTitle(), u"Ergebnisse [andere.tdb]"_s);
    EXPECT_EQ(gezeigt(), u"900"_s);
    EXPECT_FALSE(filtert());
    EXPECT_THAT(dialoge.filter, Contains(u"Tarvel Ergebnisse (*.tdb)"_s));
}

TEST_F(DBFiltertest, MakesANewFileButNeverOverAnother) {
    const QString neu = ordner_.filePath(u"neu"_s);
    const QByteArray vorher = bytes(pfad_);
    dialoge.dateien = {pfad_, neu, ordner_.filePath(u"kein Ordner/x.tdb"_s),
                       ordner_.filePath(u"Verein 2025.06"_s)};
    wähle(u"men_Tabelle_1"_s);
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_THAT(dialoge.meldungen.first().toStdString(), HasSubstr("ist bereits vorhanden."));
    EXPECT_EQ(bytes(pfad_), vorher);
    wähle(u"men_Tabelle_1"_s);
    EXPECT_THAT(gewählt, ElementsAre(neu + u".tdb"_s));
    EXPECT_EQ(gezeigt(), QString());
    wähle(u"men_Tabelle_1"_s);
    EXPECT_THAT(dialoge.meldungen, SizeIs(2));
    EXPECT_EQ(db->windowTitle(), u"Ergebnisse [neu.tdb]"_s);
    wähle(u"men_Tabelle_1"_s);
    EXPECT_EQ(db->windowTitle(), u"Ergebnisse [Verein 2025.06.tdb]"_s);
}

TEST_F(DBFiltertest, BackupIsACopyAndNeverTheFileItself) {
    const QString kopie = ordner_.filePath(u"kopie"_s);
    dialoge.dateien = {pfad_, kopie, kopie};
    wähle(u"men_Tabelle_2"_s);
    EXPECT_THAT(dialoge.meldungen.last().toStdString(), HasSubstr("geöffnete Datei selbst"));
    EXPECT_EQ(nummern(), u"001;002;003;004;005;006"_s);
    wähle(u"men_Tabelle_2"_s);
    EXPECT_THAT(dialoge.meldungen.last().toStdString(), HasSubstr("kopie.tdb"));
    EXPECT_EQ(dialoge.arten.back(), Meldungsart::Hinweis);
    EXPECT_EQ(Ergebnistabelle(kopie + u".tdb"_s).anzahl(), 6);
    EXPECT_EQ(db->windowTitle(), u"Ergebnisse [%1]"_s.arg(QFileInfo(pfad_).fileName()));
    // A copy that is there already is replaced only on Yes.
    fremd(u"DELETE FROM Ergebnisse WHERE U_NR='001'"_s);
    wähle(u"men_Tabelle_2"_s);
    EXPECT_EQ(Ergebnistabelle(kopie + u".tdb"_s).anzahl(), 6);
}

TEST_F(DBTest, Export_WritesTheRowsThatAreShownInTheirOrder) {
    fülle(100);
    Ergebnissatz andere = vollerSatz(u"X, \"1\""_s);
    andere.RASSE = u"Ligustica"_s;
    speichere(andere);
    andere.U_NR = u"Y"_s;
    speichere(andere);
    öffne();
    wähle(u"men_Rasse_3"_s);
    ASSERT_EQ(grid().model()->rowCount(), 2);
    dialoge.dateien = {ordner_.filePath(u"Auszug"_s), ordner_.filePath(u"fehlt/a.csv"_s)};
    wähle(u"men_Tabelle_4"_s);
    QFile datei(ordner_.filePath(u"Auszug.csv"_s));
    ASSERT_TRUE(datei.open(QIODevice::ReadOnly));
    const QList<QByteArray> zeilen = datei.readAll().split('\n');
    ASSERT_THAT(zeilen, SizeIs(4));
    EXPECT_TRUE(zeilen[1].startsWith("\"X, \"\"1\"\"\","));
    EXPECT_TRUE(zeilen[2].startsWith("Y,"));
    EXPECT_EQ(zeilen[1].count(",\"") + zeilen[1].count(','), zeilen[0].count(',') + 1);
    wähle(u"men_Tabelle_4"_s);
    EXPECT_THAT(dialoge.meldungen, SizeIs(2));
    EXPECT_TRUE(dialoge.meldungen[1].contains(u"a.csv"_s));
    wähle(u"men_Rasse_2"_s); // shows nothing
    EXPECT_FALSE(aktion(u"men_Tabelle_4"_s).isEnabled());
}

} // namespace
} // namespace tarvel
