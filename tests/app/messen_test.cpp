#include "app/fenster.h"
#include "measure/bilderproben.h"
#include "measure/bildzugang.h"
#include "measure/messplatz.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableView>
#include <QTimer>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

// A plausible wing at 2400 dpi; its values were worked out outside this program.
const std::vector<QPointF> flügel{{400, 50},  {92, 75},   {360, 56},  {288, 62},
                                  {286, 116}, {237, 147}, {216, 143}, {292, 201}};
const QString zeileCi = u"001  CI=2.71  Klasse 19.8"_s;
const QString zeileHiDv = u"001  HI=1.038  Klasse 26.4   DV=+0.9"_s;

struct Messentest : Fenstertest {
    void SetUp() override {
        ASSERT_TRUE(starte());
        hg().resize(1280, 800);
        hg().show();
        wähleAuflösung(u"2400 dpi"_s);
    }
    void wähleAuflösung(const QString& dpi) const {
        auto& liste = kind<QComboBox>(u"cbo_dpi"_s);
        liste.setCurrentText(dpi);
        Q_EMIT liste.activated(liste.currentIndex());
    }
    void klickeFlügel(QPointF versatz = {}, double zoom = 1) const {
        for (const QPointF& punkt : flügel) {
            klick((punkt + versatz) * zoom);
        }
    }
    void übernimm() const { klick({500, 250}, Qt::RightButton); }
    QStringList zeilen(const QString& liste) const {
        QStringList texte;
        const QAbstractItemModel& alle = *kind<QListView>(liste).model();
        for (int i = 0; i < alle.rowCount(); ++i) {
            texte << alle.index(i, 0).data().toString();
        }
        return texte;
    }
    QString ansicht() const {
        return QString::fromLatin1(
            kind<QStackedWidget>(u"Ansichten"_s).currentWidget()->metaObject()->className());
    }
};

} // namespace

TEST_F(Messentest, wholeWingByMouse_entersItsLines) {
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    EXPECT_TRUE(bild().isVisible()); // small enough to be measured at once
    EXPECT_TRUE(hinweis().startsWith(u"Mit der linken Maustaste auf die Messpunkte klicken"_s));
    klickeFlügel();
    EXPECT_EQ(hinweis(), u"Übernehmen Sie die Messung mit der rechten Maustaste."_s);
    EXPECT_THAT(bild().marken(), SizeIs(8));
    übernimm();
    EXPECT_THAT(zeilen(u"Liste_CI"_s), ElementsAre(zeileCi));
    EXPECT_THAT(zeilen(u"Liste_HI_DV"_s), ElementsAre(zeileHiDv));
    EXPECT_THAT(bild().marken(), IsEmpty());
    EXPECT_TRUE(hg().isWindowModified());
}

TEST_F(Messentest, sameWingAtEveryZoom_givesTheSameLines) {
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    dialoge.antworten = {Antwort::Ja, Antwort::Ja}; // the same wing again is asked about
    for (int zoom = 2; zoom <= 4; ++zoom) {
        wähle(u"men_Zoom_%1"_s.arg(zoom));
        wähle(u"men_Ansicht_7"_s);
        klickeFlügel({}, zoom);
        übernimm();
        EXPECT_EQ(reihe().ciZeilen().back().wert, u"2.71"_s) << zoom;
        EXPECT_EQ(reihe().hiDvZeilen().back().dv, u"+0.9"_s) << zoom;
        EXPECT_EQ(reihe().messung(reihe().letzteNummer())->aufnahme,
                  (Aufnahme{qint16(zoom), 2400}));
    }
}

TEST_F(Messentest, wholeWingByKeyboard_entersTheSameLines) {
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    int nummer = 0;
    for (const QPointF& punkt : flügel) {
        maus(QEvent::MouseMove, punkt - QPointF(1, 0), Qt::NoButton);
        QTest::keyClick(&bild(), static_cast<Qt::Key>(Qt::Key_1 + nummer),
                        nummer % 2 == 0 ? Qt::NoModifier : Qt::KeypadModifier);
        QTest::keyClick(&bild(), Qt::Key_Right);
        ++nummer;
    }
    QTest::keyClick(&bild(), Qt::Key_Return);
    EXPECT_THAT(zeilen(u"Liste_CI"_s), ElementsAre(zeileCi));
    EXPECT_THAT(zeilen(u"Liste_HI_DV"_s), ElementsAre(zeileHiDv));
}

TEST_F(Messentest, largeScan_goesFromOverviewToWingAndBackForTheNext) {
    ASSERT_TRUE(hg().ladeBild(maleBild({3000, 2400})));
    EXPECT_TRUE(übersicht().isVisible());
    EXPECT_TRUE(hinweis().startsWith(u"Drücken Sie die linke Maustaste und schieben Sie"_s));
    const QPointF ort = übersicht().zuFenster({2000, 1500});
    QTest::mousePress(&übersicht(), Qt::LeftButton, {}, übersicht().rect().center());
    QTest::mouseMove(&übersicht(), ort.toPoint());
    QTest::mouseRelease(&übersicht(), Qt::LeftButton, {}, ort.toPoint());
    ASSERT_TRUE(bild().isVisible());
    const QPointF mitte = bild().ausschnitt().center();
    EXPECT_NEAR(mitte.x(), 2000, 20);
    EXPECT_NEAR(mitte.y(), 1500, 20);
    klickeFlügel({1700, 1400});
    klick({2000, 1500}, Qt::RightButton);
    EXPECT_THAT(zeilen(u"Liste_CI"_s), ElementsAre(zeileCi));
    EXPECT_TRUE(übersicht().isVisible());
    EXPECT_EQ(hinweis(),
              u"Drücken Sie die linke Maustaste und schieben Sie das Rechteck auf Flügel 002"_s);
}

TEST_F(Messentest, digitAfterScrolling_setsThePointBelowThePointer) {
    ASSERT_TRUE(hg().ladeBild(maleBild({3000, 2400})));
    wähle(u"men_Ansicht_7"_s);
    const QPointF zeiger(100, 120);
    QWidget& fläche = *bild().viewport();
    QMouseEvent bewegung(QEvent::MouseMove, zeiger, fläche.mapToGlobal(zeiger), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&fläche, &bewegung);
    QWheelEvent rad(zeiger, fläche.mapToGlobal(zeiger), {}, {0, -240}, Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
    QApplication::sendEvent(&fläche, &rad);
    QTest::keyClick(&bild(), Qt::Key_1);
    ASSERT_THAT(bild().marken(), SizeIs(1));
    EXPECT_EQ(bild().zuFenster(bild().marken().front().position), zeiger);
    QEvent weg(QEvent::Leave);
    QApplication::sendEvent(&fläche, &weg);
    QTest::keyClick(&bild(), Qt::Key_2); // the pointer is elsewhere: no place is meant
    EXPECT_THAT(bild().marken(), SizeIs(1));
}

TEST_F(Messentest, sheetWithSeveralWings_opensInTheOverview) {
    ASSERT_TRUE(hg().ladeBild(u":/tarvel/musterblatt.png"_s));
    EXPECT_TRUE(übersicht().isVisible());
}

TEST_F(Messentest, selectionAndNudging_workThroughButtonsAndKeys) {
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    klick({400, 50});
    klick({92, 75});
    auto& eins = kind<QAbstractButton>(u"opt_Fein_1"_s);
    QTest::mouseClick(&eins, Qt::LeftButton, {}, QPoint(8, eins.height() / 2));
    EXPECT_TRUE(bild().hasFocus());
    QTest::keyClick(&bild(), Qt::Key_Left);
    QTest::keyClick(&bild(), Qt::Key_2, Qt::ControlModifier);
    EXPECT_TRUE(kind<QAbstractButton>(u"opt_Fein_2"_s).isEnabled());
    QTest::keyClick(&bild(), Qt::Key_Up);
    EXPECT_EQ(bild().marken().front().position, QPointF(399, 50));
    EXPECT_EQ(bild().marken().back().position, QPointF(92, 74));
    // Ctrl and the left button take hold of a mark and drag it.
    maus(QEvent::MouseButtonPress, {400, 52}, Qt::LeftButton, Qt::ControlModifier);
    maus(QEvent::MouseMove, {410, 60}, Qt::NoButton, Qt::ControlModifier, Qt::LeftButton);
    maus(QEvent::MouseMove, {411, 61}, Qt::NoButton, Qt::ControlModifier, Qt::LeftButton);
    maus(QEvent::MouseButtonRelease, {411, 61}, Qt::LeftButton, Qt::ControlModifier);
    EXPECT_THAT(bild().marken(), SizeIs(2));
    wähle(u"men_Bearbeiten_3"_s);
    QTest::keyClick(&bild(), Qt::Key_Backspace);
    EXPECT_EQ(bild().marken().back().position, QPointF(92, 75));
    for (const auto& [abstand, greift] : {std::pair{13, true}, {15, false}}) {
        const QPointF vorher = bild().marken().back().position;
        const QPointF griff = vorher + QPointF(0, abstand);
        maus(QEvent::MouseButtonPress, griff, Qt::LeftButton, Qt::ControlModifier);
        const QPointF ziel = griff + QPointF(5, 5);
        maus(QEvent::MouseMove, ziel, Qt::NoButton, Qt::ControlModifier, Qt::LeftButton);
        maus(QEvent::MouseButtonRelease, ziel, Qt::LeftButton, Qt::ControlModifier);
        EXPECT_EQ(bild().marken().back().position != vorher, greift) << abstand;
    }
}

TEST_F(Messentest, zoomChangeWithPoints_asksAndStartsTheWingAnew) {
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    klick({400, 50});
    dialoge.antworten = {Antwort::Nein, Antwort::Ja};
    wähle(u"men_Zoom_2"_s);
    EXPECT_EQ(bild().Zoomfaktor(), 1);
    EXPECT_TRUE(kind<QAction>(u"men_Zoom_1"_s).isChecked());
    EXPECT_THAT(bild().marken(), SizeIs(1));
    EXPECT_EQ(dialoge.fragen[0].text,
              u"Wollen Sie den Zoomfaktor ändern?\nWenn Sie den Zoomfaktor jetzt ändern, dann "
              "müssen Sie mit der Messung des Flügels neu beginnen. "_s);
    wähle(u"men_Zoom_2"_s);
    EXPECT_EQ(bild().Zoomfaktor(), 2);
    EXPECT_THAT(bild().marken(), IsEmpty());
    wähle(u"men_Zoom_3"_s); // nothing to lose: no question
    EXPECT_THAT(dialoge.fragen, SizeIs(2));
}

TEST_F(Messentest, faultsOfTheComputation_areSaidAndThePointsKept) {
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    klickeFlügel();
    maus(QEvent::MouseMove, {237, 147}, Qt::NoButton);
    QTest::keyClick(&bild(), Qt::Key_7);
    maus(QEvent::MouseMove, {292, 201}, Qt::NoButton);
    QTest::keyClick(&bild(), Qt::Key_8);
    übernimm();
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(dialoge.meldungen[0].startsWith(u"Fehler: Zwei Messpunkte fallen zusammen"_s));
    EXPECT_THAT(bild().marken(), SizeIs(8));
    EXPECT_TRUE(reihe().leer());
}

TEST_F(Messentest, repeatedWing_comesBackOntoItsPictureAndReplacesItsLines) {
    const QString eins = maleBild({906, 320}, u"eins.png"_s);
    ASSERT_TRUE(hg().ladeBild(eins));
    klickeFlügel();
    übernimm();
    ASSERT_TRUE(hg().ladeBild(maleBild({700, 300}, u"zwei.png"_s)));
    wähle(u"men_Ansicht_0"_s);
    QTest::mouseClick(kind<QListView>(u"Liste_CI"_s).viewport(), Qt::LeftButton, {}, {20, 8});
    wähle(u"men_Bearbeiten_1"_s);
    EXPECT_EQ(bild().bild().size(), QSize(906, 320));
    EXPECT_THAT(bild().marken(), SizeIs(8));
    EXPECT_EQ(kind<QLabel>(u"lab_Flügel"_s).text(), u"Flügel 001 (Wiederholung)"_s);
    maus(QEvent::MouseMove, {230, 147}, Qt::NoButton);
    QTest::keyClick(&bild(), Qt::Key_6);
    maus(QEvent::MouseMove, {292, 201}, Qt::NoButton);
    QTest::keyClick(&bild(), Qt::Key_8);
    übernimm();
    EXPECT_THAT(reihe().ciZeilen(), SizeIs(1));
    EXPECT_NE(zeilen(u"Liste_CI"_s), QStringList(zeileCi));

    ASSERT_TRUE(hg().ladeBild(maleBild({700, 300}, u"zwei.png"_s)));
    QFile::remove(eins);
    wähle(u"men_Bearbeiten_1"_s);
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_TRUE(dialoge.fragen[0].text.contains(u"eins.png' wurde nicht gefunden"_s));
    EXPECT_EQ(bild().bild().size(), QSize(700, 300));
}

TEST_F(Messentest, unreadablePictures_areSaidAndChangeNothing) {
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    klickeFlügel();
    übernimm();
    struct Zeile {
        QString pfad, erwartet;
    };
    const Zeile zeilen[] = {
        {ordner.filePath(u"fehlt.png"_s), u"Die Bilddatei wurde nicht gefunden."_s},
        {ordner.schreibe(u"leer.png"_s, {}), u"ist leer"_s},
        {ordner.schreibe(u"text.jpg"_s, "kein Bild"), u"kann nicht als Bild gelesen werden"_s},
        {ordner.schreibe(u"riese.bmp"_s,
                         QByteArray::fromHex("424d3600000000000000360000002800000060ea0000"
                                             "60ea0000010018000000000000000000000000000000"
                                             "00000000000000000000")),
         u"zu groß"_s},
    };
    for (const Zeile& z : zeilen) {
        dialoge.meldungen.clear();
        EXPECT_FALSE(hg().ladeBild(z.pfad));
        ASSERT_THAT(dialoge.meldungen, SizeIs(1)) << qPrintable(z.pfad);
        EXPECT_TRUE(dialoge.meldungen[0].startsWith(u"Fehler: "_s));
        EXPECT_TRUE(dialoge.meldungen[0].contains(z.erwartet)) << qPrintable(dialoge.meldungen[0]);
        EXPECT_EQ(bild().bild().size(), QSize(906, 320));
        EXPECT_THAT(reihe().ciZeilen(), SizeIs(1));
    }
}

TEST_F(Messentest, pictureThatVanishesBeforeMeasuring_leavesTheOverviewAndNoPlaceForPoints) {
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320}, u"klein.png"_s))); // the measuring view is open
    const QString bmp = maleBild({3600, 2400}, u"groß.bmp"_s);
    ASSERT_TRUE(hg().ladeBild(bmp));
    ASSERT_TRUE(QFile::remove(bmp));
    wähle(u"men_Ansicht_7"_s);
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"Die Bilddatei wurde nicht gefunden."_s));
    EXPECT_TRUE(übersicht().isVisible());
    EXPECT_FALSE(bild().isVisible());
    maus(QEvent::MouseButtonPress, {10, 10}, Qt::LeftButton);
    EXPECT_THAT(bild().marken(), IsEmpty());
}

TEST_F(Messentest, loadingStoppedByEscape_keepsThePicturePointsAndSilence) {
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320}, u"eins.png"_s)));
    klickeFlügel();
    übernimm();
    auto& platz = kind<Messplatz>(u"Messplatz"_s);
    platz.zugang().zeigeLadenNach = 0;
    const auto stoppe = [] {
        QTimer::singleShot(0, [] {
            auto* fenster = QApplication::activeModalWidget();
            ASSERT_NE(fenster, nullptr);
            EXPECT_EQ(fenster->objectName(), u"Fortschritt"_s);
            QTest::keyClick(fenster, Qt::Key_Escape);
        });
    };
    for (const QString& name : {u"zwei.png"_s, u"zwei.bmp"_s, u"zwei.jpg"_s, u"zwei.tif"_s}) {
        const QString pfad = maleBild({3600, 2400}, name);
        stoppe();
        EXPECT_FALSE(hg().ladeBild(pfad)) << qPrintable(name);
        EXPECT_EQ(platz.bild().pfad(), ordner.filePath(u"eins.png"_s));
        EXPECT_EQ(bild().bild().size(), QSize(906, 320));
    }
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);

    const QString zwei = ordner.filePath(u"zwei.bmp"_s);
    platz.zugang().zeigeLadenNach = 100'000;
    ASSERT_TRUE(hg().ladeBild(zwei));
    maleBild({3600, 2400}, u"eins.png"_s); // the name now belongs to another picture
    QTest::mouseClick(kind<QListView>(u"Liste_CI"_s).viewport(), Qt::LeftButton, {}, {20, 8});
    wähle(u"men_Bearbeiten_1"_s);
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_TRUE(dialoge.fragen[0].text.contains(u"ein anderes Bild als das gemessene"_s));
    EXPECT_EQ(platz.bild().pfad(), zwei);
    EXPECT_TRUE(übersicht().isVisible());
}

TEST_F(Messentest, repeatWhosePictureIsStoppedWhileLoading_leavesEverythingAsItWas) {
    ASSERT_TRUE(hg().ladeBild(maleBild({3600, 2400}, u"eins.bmp"_s)));
    QTest::mouseClick(&übersicht(), Qt::LeftButton, {},
                      übersicht().zuFenster({1950, 1500}).toPoint());
    klickeFlügel({1700, 1400});
    klick({2000, 1500}, Qt::RightButton);
    ASSERT_THAT(zeilen(u"Liste_CI"_s), ElementsAre(zeileCi));
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320}, u"zwei.png"_s)));
    const Messreihe vorher = reihe();
    auto& platz = kind<Messplatz>(u"Messplatz"_s);
    platz.zugang().zeigeLadenNach = 0;
    QTimer::singleShot(0, [] {
        auto* fenster = QApplication::activeModalWidget();
        ASSERT_NE(fenster, nullptr);
        QTest::keyClick(fenster, Qt::Key_Escape);
    });
    wähle(u"men_Bearbeiten_1"_s);
    EXPECT_EQ(platz.bild().pfad(), ordner.filePath(u"zwei.png"_s));
    EXPECT_EQ(bild().bild().size(), QSize(906, 320));
    EXPECT_TRUE(bild().isVisible());
    EXPECT_EQ(kind<QLabel>(u"lab_Flügel"_s).text(), u"Flügel 002"_s);
    EXPECT_EQ(reihe(), vorher);
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
    platz.zugang().zeigeLadenNach = 100'000;
    klickeFlügel({300, 60});
    übernimm(); // a wing of its own, not in place of the first
    EXPECT_THAT(reihe().nummern(), ElementsAre(1, 2));
    EXPECT_EQ(reihe().ciZeilen().at(0), vorher.ciZeilen().at(0));
    EXPECT_EQ(*reihe().messung(1), *vorher.messung(1));
}

TEST_F(Messentest, fileOfSeveralPages_isAskedAboutOnceAndItsWingsFindTheirPage) {
    QByteArray bytes = tiff({906, 320}, 8, QByteArray(906 * 320, '\xDC'));
    constexpr int anfang = 8;
    constexpr int verweis = anfang + 2 + 9 * 12; // where the first page names the place of the next
    QByteArray zweite = bytes.sliced(anfang, verweis + 4 - anfang);
    bytes.replace(verweis, 4, klein(static_cast<quint32>(bytes.size())));
    bytes += zweite;
    const QString datei = ordner.schreibe(u"seiten.tif"_s, bytes);
    const auto& platz = kind<Messplatz>(u"Messplatz"_s);

    dialoge.wahl = -1;
    EXPECT_FALSE(hg().ladeBild(datei));
    EXPECT_EQ(platz.bild().pfad(), QString());
    dialoge.wahl = 1;
    ASSERT_TRUE(hg().ladeBild(datei));
    klickeFlügel();
    übernimm();
    EXPECT_EQ(reihe().messung(1)->bilddatei, datei + u"#2"_s);
    dialoge.wahl = 0;
    ASSERT_TRUE(hg().ladeBild(datei));
    EXPECT_EQ(platz.bild().pfad(), datei);
    QTest::mouseClick(kind<QListView>(u"Liste_CI"_s).viewport(), Qt::LeftButton, {}, {20, 8});
    wähle(u"men_Bearbeiten_1"_s);
    EXPECT_EQ(platz.bild().pfad(), datei + u"#2"_s);
    EXPECT_THAT(dialoge.auswahlen, SizeIs(3));
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
}

TEST_F(Messentest, anotherPictureWithPointsSet_asksFirst) {
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    klick({400, 50});
    dialoge.antworten = {Antwort::Nein, Antwort::Ja};
    const QString anderes = maleBild({700, 300}, u"zwei.png"_s);
    EXPECT_FALSE(hg().ladeBild(anderes));
    EXPECT_THAT(bild().marken(), SizeIs(1));
    EXPECT_TRUE(hg().ladeBild(anderes));
    EXPECT_THAT(bild().marken(), IsEmpty());
    QTest::keyClick(&bild(), Qt::Key_Backspace); // the points of the former picture stay gone
    EXPECT_THAT(bild().marken(), IsEmpty());
}

TEST_F(Messentest, deleting_removesTheLastOrAfterAQuestionAll) {
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    dialoge.antworten = {Antwort::Ja, Antwort::Ja};
    for (int i = 0; i < 3; ++i) {
        klickeFlügel();
        übernimm();
    }
    wähle(u"men_Bearbeiten_0"_s);
    EXPECT_THAT(zeilen(u"Liste_CI"_s), SizeIs(2));
    EXPECT_TRUE(kind<QListView>(u"Liste_CI"_s).isVisible());
    dialoge.antworten = {Antwort::Nein, Antwort::Ja};
    wähle(u"men_Bearbeiten_11"_s);
    EXPECT_THAT(zeilen(u"Liste_CI"_s), SizeIs(2));
    EXPECT_EQ(dialoge.fragen.back().text,
              u"Sind Sie sicher, dass Sie alle Messungen löschen wollen?"_s);
    wähle(u"men_Bearbeiten_11"_s);
    EXPECT_TRUE(reihe().leer());
    wähle(u"men_Ansicht_7"_s);
    EXPECT_EQ(kind<QLabel>(u"lab_Flügel"_s).text(), u"Flügel 001"_s);
}

TEST_F(Messentest, lowResolution_isPointedOutOnce) {
    wähleAuflösung(u"600 dpi"_s);
    EXPECT_TRUE(hinweis().contains(u"600 dpi"_s));
    EXPECT_TRUE(ini().contains("Scann=1"));
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    EXPECT_FALSE(hinweis().contains(u"600 dpi"_s));
}

TEST_F(Messentest, newLanguage_relabelsLinesTablesAndHint) {
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    klickeFlügel();
    übernimm();
    wähle(u"men_Sprache_2"_s);
    EXPECT_THAT(zeilen(u"Liste_CI"_s), ElementsAre(u"001  IC=2.71  Classe 19.8"_s));
    EXPECT_THAT(zeilen(u"Liste_HI_DV"_s), ElementsAre(u"001  IH=1.038  Classe 26.4   DD=+0.9"_s));
    const QAbstractItemModel& tabelle = *kind<QTableView>(u"Tabelle_Flügel"_s).model();
    EXPECT_EQ(tabelle.headerData(0, Qt::Horizontal).toString(), u"Aile"_s);
    EXPECT_TRUE(hinweis().startsWith(u"Cliquer avec la touche gauche"_s));
    EXPECT_TRUE(ini().contains("Sprache=2\r\n"));
}

TEST_F(Messentest, modeSwitch_changesPointsAndIsRemembered) {
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    wähle(u"men_Betriebsart_0"_s);
    EXPECT_TRUE(ini().contains("Betriebsart=0"));
    klick({286, 116});
    klick({237, 147});
    klick({216, 143});
    übernimm();
    EXPECT_THAT(zeilen(u"Liste_CI"_s), ElementsAre(zeileCi));
    EXPECT_THAT(zeilen(u"Liste_HI_DV"_s), IsEmpty());
}

TEST_F(Messentest, panel_namesTheNextPointAndShowsValuesAndProgress) {
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    const auto text = [this](const QString& name) { return kind<QLabel>(name).text(); };
    EXPECT_TRUE(text(u"lab_Nächster"_s).startsWith(u"Als Nächstes Punkt 1, "_s));
    EXPECT_EQ(text(u"lab_Werte"_s), u"CI=–  HI=–  DV=–"_s);
    EXPECT_EQ(text(u"lab_Fortschritt"_s), u"0 von 50"_s);
    for (std::size_t i = 0; i < 7; ++i) {
        klick(flügel[i]);
    }
    EXPECT_TRUE(text(u"lab_Nächster"_s).startsWith(u"Als Nächstes Punkt 8, "_s));
    EXPECT_EQ(text(u"lab_Werte"_s), u"CI=2.71  HI=1.038  DV=–"_s);
    EXPECT_FALSE(kind<QLabel>(u"lab_Werte"_s).isEnabled());
    klick(flügel[7]);
    EXPECT_EQ(text(u"lab_Nächster"_s), u"Alle Punkte sind gesetzt."_s);
    EXPECT_EQ(text(u"lab_Werte"_s), u"CI=2.71  HI=1.038  DV=+0.9"_s);
    wähleAuflösung(u"1200 dpi"_s);
    EXPECT_NE(text(u"lab_Werte"_s), u"CI=2.71  HI=1.038  DV=+0.9"_s);
    übernimm();
    EXPECT_EQ(text(u"lab_Werte"_s), u"CI=–  HI=–  DV=–"_s);
    EXPECT_EQ(text(u"lab_Fortschritt"_s), u"1 von 50"_s);
}

TEST_F(Messentest, pointSetOnceMore_hintSaysHowTheWingIsTakenOver) {
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    klickeFlügel();
    maus(QEvent::MouseMove, {286, 116}, Qt::NoButton);
    QTest::keyClick(&bild(), Qt::Key_6);
    const QString wie = u"Alle Punkte sind gesetzt: Übernehmen Sie die Messung mit der "
                        "Eingabetaste. Für die rechte Maustaste setzen Sie zuerst Punkt 8 noch "
                        "einmal."_s;
    EXPECT_EQ(hinweis(), wie);
    übernimm();
    EXPECT_EQ(hinweis(), wie);
    EXPECT_TRUE(reihe().leer());
    wähle(u"men_Sprache_1"_s);
    EXPECT_TRUE(hinweis().startsWith(u"All points are set"_s));
    wähle(u"men_Sprache_0"_s);
    QTest::keyClick(&bild(), Qt::Key_Right);
    wähle(u"men_Ansicht_0"_s);
    wähle(u"men_Bearbeiten_3"_s);
    EXPECT_EQ(hinweis(), wie);
    // The advice of the message is followed, and leads to the end.
    maus(QEvent::MouseMove, {237, 147}, Qt::NoButton);
    QTest::keyClick(&bild(), Qt::Key_7);
    QTest::keyClick(&bild(), Qt::Key_6);
    QTest::keyClick(&bild(), Qt::Key_Return);
    ASSERT_THAT(dialoge.meldungen, SizeIs(1)); // 6 and 7 coincide
    maus(QEvent::MouseMove, {216, 143}, Qt::NoButton);
    QTest::keyClick(&bild(), Qt::Key_7);
    QTest::keyClick(&bild(), Qt::Key_Return);
    EXPECT_THAT(zeilen(u"Liste_CI"_s), ElementsAre(zeileCi));
}

TEST_F(Messentest, hintOfAState_goesWithTheState) {
    QImage scan(906, 320, QImage::Format_Grayscale8);
    scan.fill(220);
    scan.setDotsPerMeterX(qRound(1600 / 0.0254));
    scan.setDotsPerMeterY(qRound(1600 / 0.0254));
    ASSERT_TRUE(scan.save(ordner.filePath(u"1600.png"_s)));
    dialoge.antworten = {Antwort::Ja};
    const struct {
        QString hinweis;
        std::function<void()> tun, dann;
    } fälle[] = {
        {u"Mit 600 dpi werden"_s, [&] { wähleAuflösung(u"600 dpi"_s); },
         [&] { wähleAuflösung(u"2400 dpi"_s); }},
        {u"Das Bild nennt 1600 dpi"_s,
         [&] { EXPECT_TRUE(hg().ladeBild(ordner.filePath(u"1600.png"_s))); },
         [&] { QTest::mouseClick(&kind<QPushButton>(u"bef_Bildauflösung"_s), Qt::LeftButton); }},
        {u"Übernehmen Sie die Messung"_s, [&] { klickeFlügel(); },
         [&] { wähle(u"men_Betriebsart_0"_s); }},
        {u"1 Flügel ausgelassen: 001"_s,
         [&] {
             wähle(u"men_Betriebsart_1"_s);
             klickeFlügel();
             übernimm();
             wähle(u"men_Bearbeiten_12"_s);
         },
         [&] { wähle(u"men_Bearbeiten_13"_s); }},
        {u"Strg+Z holt ihn zurück"_s, [] {},
         [&] { QTest::keyClicks(&kind<QLineEdit>(u"txt_Volk"_s), u"7"_s); }}};
    for (const auto& fall : fälle) {
        fall.tun();
        EXPECT_TRUE(hinweis().contains(fall.hinweis)) << qPrintable(hinweis());
        fall.dann();
        EXPECT_FALSE(hinweis().contains(fall.hinweis)) << qPrintable(hinweis());
    }
    EXPECT_TRUE(hinweis().startsWith(u"Mit der linken Maustaste"_s)) << qPrintable(hinweis());
}

TEST_F(Messentest, measuredWingInTheOverview_opensForCorrectionAndWithCtrlAsANewOne) {
    ASSERT_TRUE(hg().ladeBild(maleBild({3000, 2400})));
    const auto klickeInÜbersicht = [this](QPointF ort, Qt::KeyboardModifiers umschalt = {}) {
        wähle(u"men_Ansicht_6"_s);
        QTest::mouseClick(&übersicht(), Qt::LeftButton, umschalt,
                          übersicht().zuFenster(ort).toPoint());
    };
    klickeInÜbersicht({1950, 1500});
    klickeFlügel({1700, 1400});
    klick({2000, 1500}, Qt::RightButton);
    ASSERT_TRUE(übersicht().isVisible());
    klickeInÜbersicht({1960, 1520});
    EXPECT_THAT(bild().marken(), SizeIs(8));
    EXPECT_TRUE(hinweis().startsWith(u"Flügel 001 ist zum Korrigieren geöffnet."_s));
    klick({2000, 1500}, Qt::RightButton);
    EXPECT_THAT(zeilen(u"Liste_CI"_s), ElementsAre(zeileCi));
    // Beside it, and with Ctrl upon it, a new one begins.
    klickeInÜbersicht({1000, 700});
    EXPECT_THAT(bild().marken(), IsEmpty());
    klickeInÜbersicht({1960, 1520}, Qt::ControlModifier);
    EXPECT_THAT(bild().marken(), IsEmpty());
    klickeFlügel({1702, 1399});
    klick({2000, 1500}, Qt::RightButton);
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_TRUE(
        dialoge.fragen[0].text.startsWith(u"Die Punkte liegen auf denen von Flügel 001."_s));
    EXPECT_THAT(zeilen(u"Liste_CI"_s), SizeIs(1));
    EXPECT_THAT(bild().marken(), SizeIs(8));
    dialoge.antworten = {Antwort::Ja};
    QTest::keyClick(&bild(), Qt::Key_Return);
    EXPECT_THAT(zeilen(u"Liste_CI"_s), SizeIs(2));
}

TEST_F(Messentest, magnifierAtThePointer_followsItAndStaysOutOfTheWay) {
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    auto& imFeld = kind<QWidget>(u"pic_Lupe"_s);
    auto& amZeiger = kind<QWidget>(u"pic_Zeigerlupe"_s);
    EXPECT_TRUE(imFeld.isVisible());
    wähle(u"men_Ansicht_23"_s);
    EXPECT_TRUE(ini().contains("Lupe am Zeiger=1"));
    EXPECT_FALSE(imFeld.isVisible());
    for (const QPointF& ort : {QPointF(10, 10), QPointF(900, 310), QPointF(450, 160)}) {
        maus(QEvent::MouseMove, ort, Qt::NoButton);
        EXPECT_TRUE(amZeiger.isVisible());
        const QPoint zeiger =
            bild().zuFenster(ort).toPoint() + bild().viewport()->geometry().topLeft();
        EXPECT_FALSE(amZeiger.geometry().adjusted(-20, -20, 20, 20).contains(zeiger));
    }
    QEvent weg(QEvent::Leave);
    QApplication::sendEvent(bild().viewport(), &weg);
    EXPECT_FALSE(amZeiger.isVisible());
    wähle(u"men_Ansicht_23"_s);
    EXPECT_TRUE(imFeld.isVisible());
}
