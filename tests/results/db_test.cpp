#include "results/dbprobe.h"

#include <QHeaderView>
#include <QPushButton>
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
