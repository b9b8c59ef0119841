#include "results/dbprobe.h"

#include <QHeaderView>
#include <QPushButton>
#include <QSpinBox>
#include <gmock/gmock.h>

namespace tarvel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

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
    QTest::keyClick(&grid(), Qt::Key_A, Qt::ControlModifier); // before the rest is read
    EXPECT_EQ(anzahl(), u"700 Untersuchungen · 700 gewählt"_s);
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
    EXPECT_EQ(anzahl(), u"4 von 6, gefiltert"_s);
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

TEST_F(DBFiltertest, WordsAreSearchedInEveryColumnAndTheColony) {
    fremd(u"UPDATE Ergebnisse SET VOLK='Volk 9', VATER='Insel Süd' WHERE U_NR='004'"_s);
    auto& suche = kind<QLineEdit>(u"txt_Suche"_s);
    EXPECT_TRUE(suche.isVisible());
    const std::pair<QString, QString> suchen[] = {
        {u"  ouvrières00 "_s, u"005"_s},   // part of a word
        {u"99999999"_s, u"003 002 001"_s}, // the queen
        {u"volk 9 SÜD"_s, u"004"_s},       // colony and mating
        {u"workers lig"_s, u"004"_s},      // caste and race
        {u"10.01.25"_s, u"001"_s},         // the date as it is shown
        {u"1.2025 nein"_s, u"006"_s},      // a month
        {u"00%"_s, QString()},             // no wildcard
        {u"no 001"_s, QString()}};         // all words
    taste(Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(suche.hasFocus());
    for (const auto& [worte, nummern] : suchen) {
        suche.setText(worte);
        EXPECT_EQ(gezeigt(), nummern) << worte.toStdString();
    }
    EXPECT_EQ(grid().leertext(), texte(Meldung::KeineUntersuchungGefunden));
    EXPECT_EQ(anzahl(), u"0 von 6, gefiltert"_s);
    suche.setText(u"Mâles"_s);
    taste(Qt::Key_Return);
    EXPECT_TRUE(grid().hasFocus());
    EXPECT_EQ(gezeigt(), u"003"_s);
    taste(Qt::Key_F, Qt::ControlModifier);
    taste(Qt::Key_Escape);
    EXPECT_TRUE(db->isVisible());
    EXPECT_EQ(gezeigt(), u"006 005 004 003 002 001"_s);
    suche.setText(u"Mâles"_s);
    gehe(0, 2);
    taste(Qt::Key_Escape); // what is searched for stands above the grid, too
    EXPECT_TRUE(db->isVisible());
    EXPECT_EQ(gezeigt(), u"006 005 004 003 002 001"_s);
    taste(Qt::Key_Escape);
    EXPECT_FALSE(db->isVisible());
}

TEST_F(DBFiltertest, LettersInTheGridSearchAndNeverEdit) {
    const QString vorher = fremd(u"SELECT * FROM Ergebnisse"_s);
    gehe(0, 2);
    taste(Qt::Key_Space);
    EXPECT_TRUE(grid().hasFocus());
    QTest::keyClicks(QApplication::focusWidget(), u"m"_s);
    QTest::keyClicks(QApplication::focusWidget(), u"ell"_s);
    EXPECT_EQ(kind<QLineEdit>(u"txt_Suche"_s).text(), u"mell"_s);
    EXPECT_EQ(gezeigt(), u"003"_s);
    taste(Qt::Key_Down); // back to the rows; another letter begins anew
    QTest::keyClicks(QApplication::focusWidget(), u"5"_s);
    EXPECT_EQ(kind<QLineEdit>(u"txt_Suche"_s).text(), u"5"_s);
    EXPECT_EQ(fremd(u"SELECT * FROM Ergebnisse"_s), vorher);
}

TEST_F(DBFiltertest, TheLineOfFiltersNarrowsBesideMenusAndWords) {
    fremd(u"UPDATE Ergebnisse SET CI=replace(hex(zeroblob(15)),'00','#1; ') WHERE U_NR>='004'"_s);
    fremd(u"UPDATE Ergebnisse SET DATUM='2023-07-01' WHERE U_NR='002'"_s);
    fremd(u"UPDATE Ergebnisse SET DATUM='46347' WHERE U_NR='005'"_s);
    const auto liste = [this](const QString& name) {
        auto& box = kind<QComboBox>(name);
        box.setFocus(); // the lists are read when somebody comes to them
        return &box;
    };
    const auto worte = [](const QComboBox* box) {
        QStringList w;
        for (int i = 0; i < box->count(); ++i) {
            w << box->itemText(i);
        }
        return w.join(u'|');
    };
    EXPECT_EQ(worte(liste(u"cbo_Saison"_s)), u"Alle Saisons|2025|2023|ohne lesbares Jahr"_s);
    EXPECT_EQ(worte(liste(u"cbo_Züchter"_s)), u"Alle Züchter|a|b|c|d|e|f"_s);
    EXPECT_EQ(worte(liste(u"cbo_Rasse"_s)),
              u"Alle Rassen|Buckfast|Carnica|Carpatica|Ligustica|Mellifera"_s);
    const std::tuple<QString, QString, QString> wahlen[] = {
        {u"cbo_Saison"_s, u"2023"_s, u"002"_s},
        {u"cbo_Saison"_s, u"ohne lesbares Jahr"_s, u"005"_s},
        {u"cbo_Züchter"_s, u"c"_s, u"002"_s},
        {u"cbo_Rasse"_s, u"Carnica"_s, u"002 001"_s},
        {u"cbo_Rasse"_s, u"Buckfast"_s, u"005"_s}, // also one that the menu does not know
        {u"cbo_Geschlecht"_s, u"Drohnen"_s, u"002 003"_s},
        {u"cbo_Ergebnis"_s, u"Entspricht der Rasse"_s, u"005 003 001"_s}};
    for (const auto& [name, wort, nummern] : wahlen) {
        liste(name)->setCurrentText(wort);
        EXPECT_EQ(gezeigt(), nummern) << wort.toStdString();
        EXPECT_FALSE(filtert()) << "the menus stay as they are";
        taste(Qt::Key_R, Qt::ControlModifier); // all again
    }
    auto& flügel = kind<QSpinBox>(u"spn_Flügel"_s);
    EXPECT_EQ(flügel.text(), u"Flügelzahl beliebig"_s);
    flügel.setValue(15);
    EXPECT_EQ(gezeigt(), u"005 006 004"_s);
    liste(u"cbo_Geschlecht"_s)->setCurrentIndex(1);
    kind<QLineEdit>(u"txt_Suche"_s).setText(u"carpatica"_s);
    EXPECT_EQ(gezeigt(), u"006"_s);
    EXPECT_EQ(anzahl(), u"1 von 6, gefiltert"_s);
    flügel.setValue(16);
    EXPECT_EQ(gezeigt(), QString());
    QTest::mouseClick(&kind<QPushButton>(u"bef_AllesZeigen"_s), Qt::LeftButton);
    EXPECT_EQ(grid().model()->rowCount(), 6);
    EXPECT_EQ(flügel.value(), 0);
    EXPECT_FALSE(kind<QPushButton>(u"bef_AllesZeigen"_s).isEnabled());
}

TEST_F(DBFiltertest, HeadingsSortBothWaysAndShowIt) {
    fremd(u"UPDATE Ergebnisse SET Z_NAME='Ärmel' WHERE U_NR='006'"_s);
    fremd(u"UPDATE Ergebnisse SET VATER='Öland' WHERE U_NR='002'"_s);
    fremd(u"UPDATE Ergebnisse SET VATER='norderney' WHERE U_NR='003'"_s);
    fremd(u"UPDATE Ergebnisse SET VATER='Pellworm' WHERE U_NR='004'"_s);
    QHeaderView& kopf = *grid().horizontalHeader();
    const auto klicke = [&](Ergebnisspalte spalte) {
        const int i = static_cast<int>(spalte);
        QTest::mouseClick(kopf.viewport(), Qt::LeftButton, {},
                          {kopf.sectionViewportPosition(i) + kopf.sectionSize(i) / 2, 5});
        EXPECT_EQ(kopf.sortIndicatorSection(), i);
    };
    klicke(Ergebnisspalte::Züchter);
    EXPECT_EQ(gezeigt(), u"004 006 003 002 001 005"_s);
    EXPECT_TRUE(aktion(u"men_Sort_3"_s).isChecked());
    klicke(Ergebnisspalte::Züchter);
    EXPECT_EQ(gezeigt(), u"005 001 002 003 006 004"_s);
    EXPECT_EQ(kopf.sortIndicatorOrder(), Qt::DescendingOrder);
    klicke(Ergebnisspalte::Begattung); // none of the menu
    EXPECT_EQ(gezeigt(), u"001 005 006 003 002 004"_s);
    EXPECT_FALSE(aktion(u"men_Sort_3"_s).isChecked());
    taste(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(gezeigt(), u"004 002 003 006 005 001"_s);
    gehe(0, static_cast<int>(Ergebnisspalte::Datum));
    taste(Qt::Key_F3);
    EXPECT_EQ(gezeigt(), u"006 005 004 003 002 001"_s);
    taste(Qt::Key_F3);
    EXPECT_EQ(gezeigt(), u"001 002 003 004 005 006"_s);
    wähle(u"men_Sort_1"_s); // the menu sorts upwards
    EXPECT_EQ(gezeigt(), u"001 002 003 004 005 006"_s);
    EXPECT_FALSE(aktion(u"men_Sort_6"_s).isChecked());
}

TEST_F(DBFiltertest, TheSelectionIsThatOfTheRowsHoweverTheyAreShown) {
    const auto auswahl = [this] {
        QStringList nummern;
        for (const QModelIndex& index : grid().selectionModel()->selectedRows()) {
            nummern << index.data().toString();
        }
        nummern.sort();
        return zelle(grid().currentIndex().row(), 0) + u": "_s + nummern.join(u' ');
    };
    gehe(1, 2); // 005
    taste(Qt::Key_Down, Qt::ShiftModifier);
    ASSERT_EQ(auswahl(), u"004: 004 005"_s);
    wähle(u"men_Sort_1"_s);
    EXPECT_EQ(auswahl(), u"004: 004 005"_s);
    auto& suche = kind<QLineEdit>(u"txt_Suche"_s);
    suche.setText(u"carnica"_s); // neither is shown
    EXPECT_EQ(auswahl(), u"001: 001"_s);
    suche.setText(u"buckfast"_s);
    EXPECT_EQ(auswahl(), u"005: 005"_s);
    suche.clear();
    EXPECT_EQ(auswahl(), u"004: 004 005"_s) << "and back";
    fremd(u"DELETE FROM Ergebnisse WHERE U_NR='004'"_s);
    taste(Qt::Key_F5);
    EXPECT_EQ(auswahl(), u"005: 005"_s);
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

} // namespace
} // namespace tarvel
