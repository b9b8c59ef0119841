// How the browser shows rows, keeps up with other programs, and asks before it replaces something.

#include "results/dbprobe.h"
#include "results/untersuchungssatz.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTimer>
#include <gmock/gmock.h>

namespace tarvel {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// Presses F2 on a cell of a list, chooses @p wort and leaves it with Enter.
void wähleWort(const DBTest& t, int zeile, Ergebnisspalte spalte, const QString& wort) {
    t.tippe(zeile, static_cast<int>(spalte), wort);
    QApplication::processEvents();
}

TEST_F(DBTest, ColumnsOnDemandSayWhatLiesInTheLongTexts) {
    Ergebnissatz satz = vollerSatz(u"001"_s);
    satz.CI = u"#001;2,31;12,3; #002;2,51;12,9; "_s;
    satz.PROZENT = u"10;20;2"_s;
    satz.Grafik[0] = u"x 1200dpi;001/2.31/0.9;002/2.51/0.9;"_s;
    speichere(satz);
    speichere(vollerSatz(u"002"_s));
    öffne();
    EXPECT_TRUE(grid().isColumnHidden(static_cast<int>(Ergebnisspalte::Volk)));
    for (int i = 0; i < AnzahlZusatzspalten; ++i) {
        wähle(u"men_Spalten_%1"_s.arg(i));
        EXPECT_TRUE(aktion(u"men_Spalten_%1"_s.arg(i)).isChecked());
    }
    QStringList werte;
    for (int spalte = ErsteZusatzspalte; spalte < AnzahlErgebnisspalten; ++spalte) {
        EXPECT_FALSE(grid().isColumnHidden(spalte));
        werte << zelle(0, spalte) + u'|' + zelle(1, spalte);
    }
    EXPECT_EQ(werte.join(u' '), u"Volk 7|Volk 7 2|0 2.41| | | 10;20| 1200 dpi|"_s);
    // They are looked at, neither edited nor sorted by.
    gehe(0, static_cast<int>(Ergebnisspalte::MittelCI));
    taste(Qt::Key_F2);
    EXPECT_TRUE(grid().hasFocus());
    wähle(u"men_Spalten_0"_s);
    EXPECT_TRUE(grid().isColumnHidden(ErsteZusatzspalte));
}

TEST_F(DBTest, TheOverviewIsOpenedByItsKeyAndButton) {
    fülle(2);
    int geöffnet = 0;
    zuchtübersicht = [&] { return ++geöffnet == 2; }; // an examination is opened the second time
    öffne();
    taste(Qt::Key_U, Qt::ControlModifier);
    EXPECT_EQ(geöffnet, 1);
    EXPECT_TRUE(db->isVisible());
    auto& knopf = kind<QPushButton>(u"bef_Zuchtübersicht"_s);
    EXPECT_THAT(knopf.toolTip().toStdString(), HasSubstr("+U)"));
    QTest::mouseClick(&knopf, Qt::LeftButton);
    EXPECT_EQ(geöffnet, 2);
    EXPECT_EQ(db->result(), QDialog::Accepted);
}

TEST_F(DBTest, WidthsColumnsAndPlaceComeBackAndTheGridFillsTheWindow) {
    fülle(2);
    einstellungen = std::make_unique<Einstellungen>(ordner_.filePath(u"Index.ini"_s));
    öffne();
    const auto gesamt = [this] { return grid().horizontalHeader()->length(); };
    db->resize(1200, 500);
    QApplication::processEvents();
    EXPECT_EQ(gesamt(), grid().viewport()->width());
    const int besitzer = static_cast<int>(Ergebnisspalte::Besitzer);
    EXPECT_GT(grid().columnWidth(besitzer), qRound(1800 * grid().logicalDpiX() / 1440.0));
    grid().setColumnWidth(besitzer, 111); // as the mouse would
    wähle(u"men_Spalten_2"_s);
    db->resize(1210, 510);
    QApplication::processEvents();
    EXPECT_EQ(grid().columnWidth(besitzer), 111);
    EXPECT_EQ(gesamt(), grid().viewport()->width());
    const QSize größe = db->size();
    db->close();
    öffne();
    EXPECT_EQ(db->size(), größe);
    EXPECT_EQ(grid().columnWidth(besitzer), 111);
    EXPECT_FALSE(grid().isColumnHidden(static_cast<int>(Ergebnisspalte::MittelCI)));
    EXPECT_TRUE(aktion(u"men_Spalten_2"_s).isChecked());
    wähle(u"men_Spalten_7"_s);
    EXPECT_GT(grid().columnWidth(besitzer), 111);
    db->close();
    // What is no list of widths changes nothing.
    einstellungen->schreibe(Einstellung::FensterErgebnisspalten, u"1,2,x"_s);
    einstellungen->schreibe(Einstellung::FensterErgebnisse, u"@@"_s);
    öffne();
    EXPECT_GT(grid().columnWidth(besitzer), 111);
}

TEST_F(DBFiltertest, LookingChangesNoByte_alsoOfAFileWithoutIndexes) {
    db.reset();
    for (const QString& spalte :
         {u"DATUM"_s, u"U_NR"_s, u"ZB_NR"_s, u"Z_NAME"_s, u"B_NAME"_s, u"Klein"_s}) {
        fremd(u"DROP INDEX Ergebnisse_"_s + spalte);
    }
    const QByteArray vorher = bytes(pfad_);
    lädt = false;
    öffne();
    dialoge.dateien = {pfad_};
    wähle(u"men_Tabelle_0"_s); // opened once more
    ASSERT_THAT(gewählt, SizeIs(1));
    for (int i = 0; i < AnzahlZusatzspalten; ++i) {
        wähle(u"men_Spalten_%1"_s.arg(i));
    }
    kind<QLineEdit>(u"txt_Suche"_s).setText(u"workers"_s);
    EXPECT_EQ(gezeigt(), u"006 004"_s);
    wähle(u"men_Sort_3"_s);
    doppelklick(0);
    taste(Qt::Key_F5);
    db->close();
    EXPECT_EQ(bytes(pfad_), vorher);
}

TEST_F(DBFiltertest, TheRowThatIsOpenInTheMainWindowIsSelected) {
    fremd(u"UPDATE Ergebnisse SET DATUM = '2025-01-10'"_s);
    for (const auto& [nummer, zeile] : {std::pair(u"003"_s, u"003"_s), {u"fehlt"_s, u"006"_s}}) {
        offene = nummer;
        öffne();
        EXPECT_EQ(zelle(grid().currentIndex().row(), 0), zeile);
    }
}

TEST_F(DBFiltertest, WhatAnotherProgramWritesIsShownWithoutLosingAnything) {
    gehe(3, 2); // 003
    fremd(u"INSERT INTO Ergebnisse(U_NR,DATUM,Z_NAME) VALUES('000','2024-01-01','neu')"_s);
    fremd(u"UPDATE Ergebnisse SET Z_NAME='anders' WHERE U_NR='003'"_s);
    const auto werdeAktiv = [this] {
        QEvent aktiv(QEvent::WindowActivate);
        QApplication::sendEvent(db.get(), &aktiv);
        QApplication::processEvents();
    };
    werdeAktiv();
    EXPECT_EQ(gezeigt(), u"000 006 005 004 003 002 001"_s);
    EXPECT_EQ(zelle(grid().currentIndex().row(), 2), u"anders"_s);
    // What is being typed stays, and so does the row that it is typed into.
    taste(Qt::Key_F2);
    auto* feld = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(feld, nullptr);
    feld->setText(u"getippt"_s);
    fremd(u"DELETE FROM Ergebnisse WHERE U_NR='000'"_s);
    werdeAktiv();
    EXPECT_EQ(feld->text(), u"getippt"_s);
    taste(Qt::Key_Return);
    EXPECT_EQ(fremd(u"SELECT Z_NAME FROM Ergebnisse WHERE U_NR='003'"_s), u"getippt"_s);
    taste(Qt::Key_F5);
    EXPECT_EQ(gezeigt(), u"006 005 004 003 002 001"_s);
    EXPECT_EQ(zelle(grid().currentIndex().row(), 0), u"003"_s);
}

TEST_F(DBFiltertest, ARowThatOthersChangedIsReplacedOnlyOnYes) {
    const QString lies = u"SELECT Z_NAME, B_NAME FROM Ergebnisse WHERE U_NR='006'"_s;
    fremd(u"UPDATE Ergebnisse SET B_NAME='fremd' WHERE U_NR='006'"_s);
    dialoge.beiFrage = [this] { // a box before the window takes the focus along
        QDialog frage(db.get());
        QTimer::singleShot(0, &frage, &QDialog::reject);
        frage.exec();
    };
    const auto werdeWiederAktiv = [this] {
        db->activateWindow();
        QApplication::setActiveWindow(db.get());
        QApplication::processEvents();
    };
    tippe(0, 2, u"meins"_s);
    QApplication::processEvents();
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_THAT(dialoge.fragen.front().text.toStdString(), HasSubstr("Besitzer: fremd"));
    EXPECT_TRUE(dialoge.fragen.front().verwirft);
    EXPECT_EQ(fremd(lies), u"f|fremd"_s);
    EXPECT_EQ(zelle(0, 3), u"fremd"_s);
    EXPECT_EQ(db->focusWidget(), &grid());
    werdeWiederAktiv();
    fremd(u"UPDATE Ergebnisse SET B_NAME='wieder' WHERE U_NR='006'"_s);
    dialoge.antworten = {Antwort::Ja};
    tippe(0, 2, u"meins"_s);
    QApplication::processEvents();
    EXPECT_EQ(fremd(lies), u"meins|wieder"_s) << "only the cell is written";
    EXPECT_EQ(db->focusWidget(), &grid());
    werdeWiederAktiv();
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
}

TEST_F(DBFiltertest, CasteVerdictAndRaceComeFromLists) {
    wähleWort(*this, 0, Ergebnisspalte::Geschlecht, u"Biene"_s); // not offered: stays
    wähleWort(*this, 0, Ergebnisspalte::Entspricht, u"Ja"_s);
    wähleWort(*this, 0, Ergebnisspalte::Rasse, u"Ligustica"_s);
    const QString lies = u"SELECT A_D,ERGEBNIS,RASSE FROM Ergebnisse WHERE U_NR='%1'"_s;
    EXPECT_EQ(fremd(lies.arg(u"006"_s)), u"Workers|Ja|Ligustica"_s);
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
    gehe(1, static_cast<int>(Ergebnisspalte::Rasse));
    taste(Qt::Key_F2);
    auto* auswahl = qobject_cast<QComboBox*>(QApplication::focusWidget());
    ASSERT_NE(auswahl, nullptr);
    EXPECT_FALSE(auswahl->isEditable());
    EXPECT_EQ(auswahl->currentText(), u"Buckfast"_s) << "a race of another list stays";
    taste(Qt::Key_Return);
    EXPECT_EQ(fremd(lies.arg(u"005"_s)), u"OUVRIÈRES|Yes|Buckfast"_s);
}

TEST_F(DBTest, AnotherCasteAsksWhereThereAreBodyMarks) {
    const Satzumgebung umgebung{texte, {}, {u"Carnica"_s}, false};
    Untersuchung u;
    Kolonieangaben angaben;
    angaben.UNr = u"001"_s;
    u.setzeAngaben(angaben);
    Merkmale merkmale;
    ASSERT_TRUE(MerkmalÜbernehmen(merkmale, {1, 0, 0}, false));
    u.setzeMerkmale(merkmale);
    tabelle().speichere(satzAus(u, true, 1200, QDate(2024, 5, 1), umgebung));
    öffne();
    const Ergebnissatz alt = tabelle().lade(u"001"_s).value();
    wähleWort(*this, 0, Ergebnisspalte::Geschlecht, u"Drohnen"_s);
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_THAT(dialoge.fragen.front().text.toStdString(), HasSubstr("KÖRPERMERKMALE gelöscht"));
    EXPECT_EQ(tabelle().lade(u"001"_s).value(), alt);
    EXPECT_EQ(zelle(0, 4), u"Arbeiter"_s);
    dialoge.antworten = {Antwort::Ja};
    wähleWort(*this, 0, Ergebnisspalte::Geschlecht, u"Drohnen"_s);
    Ergebnissatz neu = tabelle().lade(u"001"_s).value();
    const GeleseneUntersuchung gelesen = untersuchungAus(neu, umgebung);
    EXPECT_EQ(gelesen.angaben.Tiere, Geschlecht::Drohnen);
    EXPECT_FALSE(gelesen.merkmale.etwasEingetragen());
    EXPECT_THAT(gelesen.nichtGelesen, IsEmpty());
    neu.A_D = alt.A_D;
    neu.MERKMAL = alt.MERKMAL;
    neu.PROZENT = alt.PROZENT;
    EXPECT_EQ(neu, alt) << "all else stays";
    EXPECT_EQ(zelle(grid().currentIndex().row(), 4), u"Drohnen"_s);
    wähleWort(*this, 0, Ergebnisspalte::Geschlecht, u"Arbeiter"_s); // nothing is lost now
    EXPECT_THAT(dialoge.fragen, SizeIs(2));
    EXPECT_EQ(zelle(0, 4), u"Arbeiter"_s);
}

} // namespace
} // namespace tarvel
