// Correcting in the real window: repeating wings, undo and redo.

#include "app/fenster.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QStackedWidget>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

struct Korrekturtest : Fenstertest {
    QString eins;
    QString zwei;

    void SetUp() override {
        ASSERT_TRUE(starte());
        hg().resize(1280, 800);
        eins = maleBild({906, 320}, u"eins.png"_s);
        zwei = maleBild({700, 300}, u"zwei.png"_s);
    }
    void klickeAlle(QPointF versatz = {}, double zoom = 1) const {
        for (const QPointF& punkt : {QPointF{400, 50},
                                     {92, 75},
                                     {360, 56},
                                     {288, 62},
                                     {286, 116},
                                     {237, 147},
                                     {216, 143},
                                     {292, 201}}) {
            klick((punkt + versatz) * zoom);
        }
    }
    void rechts() const { klick(bild().ausschnitt().center(), Qt::RightButton); }
    void setzePunkt(int nummer, QPointF ort) const {
        maus(QEvent::MouseMove, ort, Qt::NoButton);
        QTest::keyClick(&bild(), static_cast<Qt::Key>(Qt::Key_0 + nummer));
    }
    /// Repeats the first wing of the list.
    void wiederholeErsten() const {
        wähle(u"men_Ansicht_0"_s);
        QTest::mouseClick(kind<QListView>(u"Liste_CI"_s).viewport(), Qt::LeftButton, {}, {20, 8});
        wähle(u"men_Bearbeiten_1"_s);
    }
    QString flügel() const { return kind<QLabel>(u"lab_Flügel"_s).text(); }
    QString status() const { return kind<QLabel>(u"lab_Status"_s).text(); }
    QString menü(int index) const {
        return kind<QAction>(u"men_Bearbeiten_%1"_s.arg(index)).text().remove(u'&');
    }
    void zurück() const { wähle(u"men_Bearbeiten_3"_s); }
    void vor() const { wähle(u"men_Bearbeiten_4"_s); }
    void wähleAuflösung(int position) const {
        auto& liste = kind<QComboBox>(u"cbo_dpi"_s);
        liste.setCurrentIndex(position);
        Q_EMIT liste.activated(position);
    }
};

const QString Wiederholt = u"Flügel 001 (Wiederholung)"_s;

} // namespace

TEST_F(Korrekturtest, repeatedWing_keepsItsNumberWhateverChangesUntilItIsTakenOver) {
    ASSERT_TRUE(hg().ladeBild(eins));
    klickeAlle();
    rechts();
    klickeAlle({5, 0});
    dialoge.antworten = {Antwort::Ja};
    rechts(); // asks, for it lies on the first
    dialoge.fragen.clear();
    wiederholeErsten();
    ASSERT_EQ(flügel(), Wiederholt);
    wähle(u"men_Bearbeiten_2"_s); // clears the points
    EXPECT_EQ(flügel(), Wiederholt);
    klick({50, 50});
    dialoge.antworten = {Antwort::Ja, Antwort::Ja};
    wähle(u"men_Zoom_2"_s); // asks because of the point
    EXPECT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_EQ(flügel(), Wiederholt);
    wähle(u"men_Betriebsart_0"_s);
    EXPECT_EQ(flügel(), Wiederholt);
    for (const QPointF& punkt : {QPointF{286, 116}, {237, 147}, {216, 143}}) {
        klick(punkt * 2);
    }
    rechts();
    EXPECT_THAT(reihe().nummern(), ElementsAre(1, 2));
    EXPECT_THAT(reihe().hiDvZeilen(), SizeIs(1)); // what was measured again counts
    EXPECT_EQ(flügel(), u"Flügel 003"_s);
    EXPECT_EQ(bild().Zoomfaktor(), 1);
    EXPECT_TRUE(kind<QAction>(u"men_Betriebsart_1"_s).isChecked());
    EXPECT_FALSE(ini().contains("Betriebsart="));
}

TEST_F(Korrekturtest, escape_givesARepeatUpSoThatTheNextWingIsANewOne) {
    ASSERT_TRUE(hg().ladeBild(maleBild({3000, 2400}, u"groß.png"_s)));
    wähle(u"men_Ansicht_7"_s);
    klickeAlle({1200, 1000});
    rechts();
    const Flügelmessung vorher = *reihe().messung(1);
    wiederholeErsten();
    ASSERT_TRUE(bild().isVisible());
    setzePunkt(6, {1400, 1150});
    QTest::keyClick(&bild(), Qt::Key_Escape); // asks, and the answer is No
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_TRUE(dialoge.fragen[0].text.startsWith(u"Flügel 001 wird wiederholt"_s));
    EXPECT_TRUE(bild().isVisible());
    EXPECT_EQ(flügel(), Wiederholt);
    dialoge.antworten = {Antwort::Ja};
    wähle(u"men_Ansicht_6"_s); // the same by the menu
    EXPECT_TRUE(übersicht().isVisible());
    EXPECT_EQ(flügel(), u"Flügel 002"_s);

    wiederholeErsten();
    QTest::keyClick(&bild(), Qt::Key_Escape); // nothing was moved: no question
    EXPECT_THAT(dialoge.fragen, SizeIs(2));
    QTest::mouseClick(&übersicht(), Qt::LeftButton, {},
                      übersicht().zuFenster({2000, 1500}).toPoint());
    ASSERT_TRUE(bild().isVisible());
    klickeAlle({1700, 1400});
    rechts();
    EXPECT_EQ(*reihe().messung(1), vorher);
    EXPECT_THAT(reihe().nummern(), ElementsAre(1, 2));

    // What undo brings back is seen, wherever the measuring view is.
    wiederholeErsten();
    rechts();
    wähle(u"men_Ansicht_7"_s);
    ASSERT_FALSE(bild().ausschnitt().contains(QPointF(1292, 1075)));
    zurück();
    ASSERT_EQ(flügel(), Wiederholt);
    EXPECT_TRUE(bild().ausschnitt().contains(QRectF(1292, 1050, 308, 151)));
}

TEST_F(Korrekturtest, afterARepeat_measuringGoesOnWhereTheSeriesStood) {
    wähleAuflösung(3);
    ASSERT_TRUE(hg().ladeBild(eins));
    klickeAlle();
    rechts();
    ASSERT_TRUE(hg().ladeBild(zwei));
    wähle(u"men_Zoom_2"_s);
    wähleAuflösung(2);
    bild().zeige({550, 220});
    const QPointF mitte = bild().ausschnitt().center();
    enum class Ende { Übernommen, Aufgegeben, Rückgängig };
    for (const Ende ende : {Ende::Übernommen, Ende::Aufgegeben, Ende::Rückgängig}) {
        const bool übernommen = ende == Ende::Übernommen;
        wiederholeErsten();
        EXPECT_EQ(bild().bild().size(), QSize(906, 320));
        EXPECT_EQ(bild().Zoomfaktor(), 1);
        EXPECT_TRUE(status().contains(übernommen ? u"2400 dpi"_s : u"1200 dpi"_s));
        if (übernommen) {
            wähleAuflösung(2); // the wing was scanned at 1200
            EXPECT_TRUE(hinweis().startsWith(u"1200 dpi gelten für Flügel 001."_s))
                << qPrintable(hinweis());
            rechts();
            EXPECT_EQ(reihe().messung(1)->aufnahme, (Aufnahme{1, 1200}));
        } else if (ende == Ende::Aufgegeben) {
            QTest::keyClick(&bild(), Qt::Key_Escape);
        } else {
            zurück();
        }
        EXPECT_TRUE(status().startsWith(u"zwei.png"_s)) << qPrintable(status());
        EXPECT_TRUE(kind<QAction>(u"men_Zoom_2"_s).isChecked());
        EXPECT_TRUE(status().contains(u"1200 dpi"_s));
        EXPECT_TRUE(bild().isVisible());
        EXPECT_EQ(bild().ausschnitt().center(), mitte);
        EXPECT_EQ(bild().bild().size(), QSize(700, 300));
        EXPECT_EQ(bild().Zoomfaktor(), 2);
        EXPECT_THAT(bild().marken(), IsEmpty());
    }
    EXPECT_THAT(dialoge.fragen, IsEmpty());
    EXPECT_TRUE(ini().contains("Scann=2"));
}

TEST_F(Korrekturtest, undo_isNamedInTheMenuAndShowsWhatComesBack) {
    EXPECT_EQ(menü(3), u"Rückgängig"_s);
    EXPECT_FALSE(kind<QAction>(u"men_Bearbeiten_3"_s).isEnabled());
    ASSERT_TRUE(hg().ladeBild(eins));
    klickeAlle();
    EXPECT_EQ(menü(3), u"Rückgängig: Punkt 8"_s);
    rechts();
    EXPECT_EQ(menü(3), u"Rückgängig: Flügel 001 übernehmen"_s);
    wähle(u"men_Sprache_1"_s);
    EXPECT_EQ(menü(3), u"Undo: Save wing 001"_s);
    ASSERT_TRUE(hg().ladeBild(zwei));
    wähle(u"men_Ansicht_0"_s);

    QTest::keyClick(&hg(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(reihe().leer());
    EXPECT_TRUE(bild().isVisible());
    EXPECT_THAT(bild().marken(), SizeIs(8));
    EXPECT_EQ(bild().bild().size(), QSize(906, 320)); // the picture that they belong to
    QTest::keyClick(&hg(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_THAT(bild().marken(), SizeIs(7));
    EXPECT_EQ(menü(4), u"Redo: Point 8"_s);
    QTest::keyClick(&hg(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(&hg(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_THAT(reihe().nummern(), ElementsAre(1));
    EXPECT_FALSE(kind<QAction>(u"men_Bearbeiten_4"_s).isEnabled());

    dialoge.antworten = {Antwort::Ja};
    wähle(u"men_Bearbeiten_11"_s);
    EXPECT_TRUE(reihe().leer());
    zurück();
    EXPECT_THAT(reihe().nummern(), ElementsAre(1));
    EXPECT_EQ(kind<QListView>(u"Liste_CI"_s).model()->rowCount(), 1);
    dialoge.antworten = {Antwort::Nein};
    wähle(u"men_Datei_0"_s); // another examination
    EXPECT_FALSE(kind<QAction>(u"men_Bearbeiten_3"_s).isEnabled());
}

TEST_F(Korrekturtest, undoWithoutItsPicture_saysSoAndLeavesNoPlaceForPoints) {
    ASSERT_TRUE(hg().ladeBild(eins));
    klickeAlle();
    rechts();
    ASSERT_TRUE(hg().ladeBild(zwei));
    ASSERT_TRUE(QFile::remove(eins));
    zurück();
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_TRUE(dialoge.fragen[0].text.contains(u"eins.png"_s));
    EXPECT_FALSE(bild().isVisible());
    EXPECT_TRUE(reihe().leer());
    vor();
    EXPECT_THAT(reihe().nummern(), ElementsAre(1));
    EXPECT_TRUE(status().startsWith(u"zwei.png"_s));
}

TEST_F(Korrekturtest, undoOntoANameThatAnotherPictureHasByNow_showsNoPointsOnIt) {
    ASSERT_TRUE(hg().ladeBild(eins));
    klickeAlle();
    rechts();
    ASSERT_TRUE(hg().ladeBild(zwei));
    QImage andere(906, 320, QImage::Format_Grayscale8);
    andere.fill(90);
    ASSERT_TRUE(andere.save(eins));
    for (const bool offen : {false, true}) {
        if (offen) {
            ASSERT_TRUE(hg().ladeBild(eins)); // the other picture itself is shown
        }
        dialoge.fragen.clear();
        zurück();
        ASSERT_THAT(dialoge.fragen, SizeIs(1));
        EXPECT_TRUE(dialoge.fragen[0].text.contains(u"ein anderes Bild als das gemessene"_s));
        EXPECT_FALSE(bild().isVisible());
        vor();
        EXPECT_THAT(reihe().nummern(), ElementsAre(1));
        EXPECT_TRUE(status().startsWith(offen ? u"eins.png"_s : u"zwei.png"_s));
    }
}

TEST_F(Korrekturtest, ctrlZInAField_isTheFieldsOwnUntilItIsLeft) {
    ASSERT_TRUE(hg().ladeBild(eins));
    klickeAlle();
    rechts();
    auto& volk = kind<QLineEdit>(u"txt_Volk"_s);
    auto& knr = kind<QLineEdit>(u"txt_KNr"_s);
    volk.setFocus();
    QTest::keyClicks(&volk, u"ab"_s);
    QTest::keyClick(&volk, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(volk.text(), u"ab"_s);
    EXPECT_THAT(reihe().nummern(), ElementsAre(1));
    volk.selectAll();
    QTest::keyClick(&volk, Qt::Key_Delete);
    QTest::keyClicks(&volk, u"9"_s);
    knr.setFocus();
    QTest::keyClicks(&knr, u"7"_s);
    bild().setFocus(); // leaving completes the number, in the same step
    EXPECT_EQ(knr.text(), u"007"_s);
    zurück();
    EXPECT_EQ(knr.text(), QString());
    EXPECT_EQ(volk.text(), u"9"_s);
    zurück();
    EXPECT_EQ(volk.text(), QString());
    EXPECT_EQ(menü(3), u"Rückgängig: Flügel 001 übernehmen"_s);
    vor();
    vor();
    EXPECT_EQ(knr.text(), u"007"_s);

    auto& geschlecht = kind<QComboBox>(u"cbo_Geschlecht"_s);
    wähle(u"men_Ansicht_2"_s);
    kind<QAbstractButton>(u"bef_Übernehmen"_s).click();
    dialoge.antworten = {Antwort::Ja};
    QTest::keyClick(&geschlecht, Qt::Key_Down);
    EXPECT_TRUE(hg().untersuchung().merkmale().leer());
    zurück();
    EXPECT_EQ(geschlecht.currentIndex(), 0);
    EXPECT_THAT(hg().untersuchung().merkmale().Liste, SizeIs(1));
}
