#include "results/dbprobe.h"

#include <gmock/gmock.h>

namespace tarvel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

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
    const std::tuple<int, QString> eingaben[] = {{0, u"001"_s}, {0, u" "_s}, {8, u"morgen"_s}};
    for (const auto& [spalte, text] : eingaben) {
        dialoge.meldungen.clear();
        tippe(0, spalte, text);
        QApplication::processEvents();
        EXPECT_THAT(dialoge.meldungen, SizeIs(1)) << text.toStdString();
        EXPECT_EQ(fremd(u"SELECT * FROM Ergebnisse"_s), vorher);
        auto* feld = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        ASSERT_NE(feld, nullptr) << "what was typed is still there to be mended";
        EXPECT_EQ(feld->text(), text);
        QTest::mouseClick(grid().viewport(), Qt::LeftButton, {},
                          grid().visualRect(grid().model()->index(3, 2)).center());
        QApplication::processEvents();
        EXPECT_THAT(dialoge.meldungen, SizeIs(2)) << "leaving it does not drop it either";
        ASSERT_EQ(QApplication::focusWidget(), feld);
        EXPECT_EQ(grid().currentIndex().row(), 0);
        taste(Qt::Key_Escape);
        EXPECT_TRUE(grid().hasFocus());
        EXPECT_TRUE(db->isVisible());
    }
    gehe(0, 0);
    taste(Qt::Key_F2);
    QTest::keyClicks(QApplication::focusWidget(), u"123456789012345"_s);
    auto* nummer = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(nummer, nullptr);
    EXPECT_EQ(nummer->text(), u"1234567890"_s) << "as much as the column takes";
    taste(Qt::Key_Escape);
    tippe(0, 8, u"morgen"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), u"3.4.2024"_s);
    taste(Qt::Key_Return);
    EXPECT_EQ(fremd(u"SELECT date(DATUM) FROM Ergebnisse WHERE U_NR='006'"_s), u"2024-04-03"_s);
    EXPECT_EQ(zelle(0, 0), u"006"_s);
}

TEST_F(DBFiltertest, ClosingAndOpeningWriteTheCellThatIsBeingEditedFirst) {
    const auto beginne = [this](const QString& text) {
        öffne();
        gehe(0, 2);
        wähle(u"men_Sort_1"_s);
        gehe(5, 8);
        taste(Qt::Key_F2);
        auto* feld = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        ASSERT_NE(feld, nullptr);
        feld->setText(text);
        dialoge.meldungen.clear();
    };
    const std::function<void()> wege[] = {[this] { db->close(); }, [this] { db->reject(); },
                                          [this] { db->ÖffnenStart(); }};
    const QString lies = u"SELECT date(DATUM) FROM Ergebnisse WHERE U_NR='006'"_s;
    int tag = 10;
    for (const auto& weg : wege) {
        const QString vorher = fremd(lies);
        beginne(u"morgen"_s);
        weg();
        EXPECT_THAT(dialoge.meldungen, SizeIs(1));
        EXPECT_TRUE(db->isVisible());
        EXPECT_EQ(fremd(lies), vorher);
        QApplication::processEvents();
        EXPECT_THAT(dialoge.meldungen, SizeIs(1)) << "told once";
        taste(Qt::Key_Escape); // gives up what was typed
        weg();
        EXPECT_FALSE(db->isVisible());

        const QString neu = u"2022-02-%1"_s.arg(++tag);
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

} // namespace
} // namespace tarvel
