#include "evaluation/diagrammansicht.h"
#include "platform/vektorbild.h"

#include "diagrammprobe.h"
#include "lang/texte.h"
#include "support/kinder.h"
#include "support/testdialoge.h"
#include "support/testordner.h"

#include <QAction>
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QTest>
#include <QToolTip>
#include <gmock/gmock.h>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

class DiagrammansichtTest : public testing::Test {
protected:
    DiagrammansichtTest() {
        ansicht.resize(820, 520);
        Korrelbild bild;
        bild.bereich = {0.92, 0, false};
        bild.flügel = {{1, 1.1, 2, true}, {2, 1.0, 1, true}, {7, 0.9, -1, false}};
        ansicht.zeige(bild);
        ansicht.beiWahl([this](const std::vector<int>& flügel) { gewählt.push_back(flügel); });
    }

    [[nodiscard]] QPoint kreuz(std::size_t i) {
        return ansicht.stellen().at(i).fläche.center().toPoint();
    }

    void löseAus(int befehl) { kind<QAction>(ansicht, u"men_Diagramm_%1"_s.arg(befehl)).trigger(); }

    Testordner ordner;
    Texte texte{u"/"_s};
    TestDialoge dialoge;
    Diagrammansicht ansicht{Diagrammansicht::Art::Korrel, texte, dialoge};
    std::vector<std::vector<int>> gewählt;
};

TEST_F(DiagrammansichtTest, pointer_namesTheWingAndEmptySpotsNothing) {
    const auto tipp = [this](QPoint ort) {
        QHelpEvent zeigen(QEvent::ToolTip, ort, ansicht.mapToGlobal(ort));
        QCoreApplication::sendEvent(&ansicht, &zeigen);
        return zeigen.isAccepted() ? QToolTip::text() : QString();
    };
    ansicht.show();
    EXPECT_TRUE(tipp(kreuz(2)).startsWith(u"Flügel 007\n"_s));
    EXPECT_EQ(tipp(kreuz(0) + QPoint(60, 60)), QString());
}

TEST_F(DiagrammansichtTest, click_choosesTheWingsAndBesideThemNone) {
    const QPoint leer = kreuz(2) + QPoint(40, 40);
    QTest::mouseClick(&ansicht, Qt::LeftButton, {}, leer);
    EXPECT_TRUE(gewählt.empty()); // nothing was chosen yet
    QTest::mouseClick(&ansicht, Qt::LeftButton, {}, kreuz(2));
    EXPECT_THAT(ansicht.hervorgehoben(), ElementsAre(7));
    QTest::mouseClick(&ansicht, Qt::LeftButton, {}, leer);
    EXPECT_THAT(ansicht.hervorgehoben(), testing::IsEmpty());
    EXPECT_THAT(gewählt, ElementsAre(ElementsAre(7), ElementsAre()));
}

TEST_F(DiagrammansichtTest, keys_walkThroughTheWingsAndChoose) {
    struct Fall {
        Qt::Key taste;
        int flügel;
    };
    const Fall fälle[] = {{Qt::Key_Right, 1}, {Qt::Key_Right, 2}, {Qt::Key_Down, 7},
                          {Qt::Key_Right, 7}, {Qt::Key_Left, 2},  {Qt::Key_Up, 1},
                          {Qt::Key_Left, 1},  {Qt::Key_End, 7},   {Qt::Key_Home, 1}};
    QTest::keyClick(&ansicht, Qt::Key_Return);
    EXPECT_TRUE(gewählt.empty());
    for (const Fall& f : fälle) {
        QTest::keyClick(&ansicht, f.taste);
        EXPECT_TRUE(ansicht.accessibleDescription().startsWith(u"Flügel 00%1\n"_s.arg(f.flügel)));
        QTest::keyClick(&ansicht, Qt::Key_Space);
        EXPECT_THAT(gewählt.back(), ElementsAre(f.flügel));
    }
}

TEST_F(DiagrammansichtTest, keyboardFocus_isVisible) {
    ansicht.show();
    ansicht.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&ansicht));
    ansicht.clearFocus();
    const QImage ohne = ansicht.grab().toImage();
    ansicht.setFocus();
    QTest::keyClick(&ansicht, Qt::Key_Right);
    const QImage mit = ansicht.grab().toImage();
    EXPECT_NE(mit.pixel(1, 100), ohne.pixel(1, 100));
    const QRect stelle = ansicht.stellen().front().fläche.toAlignedRect().adjusted(-4, -4, 4, 4);
    EXPECT_NE(mit.copy(stelle), ohne.copy(stelle));
}

TEST_F(DiagrammansichtTest, languageChange_renamesChartAndCommands) {
    for (const Sprache sprache : {Sprache::Englisch, Sprache::Französisch, Sprache::Deutsch}) {
        texte.SpracheEinstellen(static_cast<int>(sprache));
        EXPECT_EQ(ansicht.accessibleName(),
                  Texte::eintrag(Text::KorrelationHantelindexDiscoidalverschiebung, sprache));
        EXPECT_TRUE(
            kind<QAction>(ansicht, u"men_Diagramm_%1"_s.arg(diagrammformate().size() - 1))
                .text()
                .startsWith(Texte::eintrag(Meldung::DiagrammSpeichern, sprache).arg(u"PDF"_s)));
    }
}

TEST_F(DiagrammansichtTest, paletteChange_repaintsInItsColours) {
    QPalette dunkel = ansicht.palette();
    dunkel.setColor(QPalette::Base, QColor(20, 20, 20));
    dunkel.setColor(QPalette::Text, Qt::white);
    ansicht.setPalette(dunkel);
    EXPECT_EQ(ansicht.grab().toImage().pixelColor(5, 300), QColor(20, 20, 20));
}

TEST_F(DiagrammansichtTest, newChart_keepsTheHighlightedWings) {
    ansicht.hebeHervor({2});
    ansicht.zeige(Kurvenbild());
    EXPECT_THAT(ansicht.hervorgehoben(), ElementsAre(2));
    EXPECT_TRUE(ansicht.stellen().empty());
    EXPECT_EQ(ansicht.accessibleName(), u"Cubitalindex – Bienen je Klasse"_s);
}

TEST_F(DiagrammansichtTest, saveCommands_writeTheirFormatAndAddItsExtension) {
    if (!kannSvg()) {
        GTEST_SKIP() << "this build writes no SVG";
    }
    struct Fall {
        int befehl;
        QString getippt;
        QString datei;
        QByteArray anfang;
        QString filter;
    };
    const Fall fälle[] = {{0, u"a"_s, u"a.png"_s, "\x89PNG", u"PNG-Dateien (*.png)"_s},
                          {1, u"b.svg"_s, u"b.svg"_s, "<?xml", u"SVG-Dateien (*.svg)"_s},
                          {2, u"c.PDF"_s, u"c.PDF"_s, "%PDF-", u"PDF-Dateien (*.pdf)"_s},
                          {2, u"c.png"_s, u"c.png.pdf"_s, "%PDF-", u"PDF-Dateien (*.pdf)"_s}};
    for (const Fall& f : fälle) {
        dialoge.dateien << ordner.filePath(f.getippt);
        löseAus(f.befehl);
        EXPECT_TRUE(ordner.lies(f.datei).startsWith(f.anfang)) << f.datei.toStdString();
        EXPECT_GT(ordner.lies(f.datei).size(), 2000) << f.datei.toStdString();
        EXPECT_EQ(dialoge.filter.back(), f.filter);
    }
    EXPECT_TRUE(dialoge.meldungen.isEmpty());
    const QImage png(ordner.filePath(u"a.png"_s));
    EXPECT_EQ(png.size(), QSize(2000, 1268));
    EXPECT_TRUE(ordner.lies(u"b.svg"_s).contains("Hantelindex"));
}

TEST_F(DiagrammansichtTest, savedChart_saysWhatItShows) {
    if (!kannSvg()) {
        GTEST_SKIP() << "this build writes no SVG";
    }
    ansicht.setzeUnterschrift([] {
        return Bildunterschrift{u"Untersuchung Nr. 001AB2026"_s, u"Carnica"_s, u"Drohnen"_s,
                                u"5. März 2026"_s, u"2 Flügel ausgelassen: 003, 004"_s};
    });
    dialoge.dateien << ordner.filePath(u"a.svg"_s) << ordner.filePath(u"b.svg"_s)
                    << ordner.filePath(u"a.png"_s);
    löseAus(1);
    const QString svg = QString::fromUtf8(ordner.lies(u"a.svg"_s));
    EXPECT_TRUE(svg.contains(u"Untersuchung Nr. 001AB2026  ·  Carnica  ·  Drohnen  ·  5. März"_s));
    EXPECT_TRUE(svg.contains(u"2 Flügel ausgelassen: 003, 004"_s));
    EXPECT_TRUE(svg.contains(u"<title>Untersuchung Nr. 001AB2026 – Korrelation"_s));
    ansicht.zeige(Kurvenbild());
    löseAus(1);
    EXPECT_TRUE(
        QString::fromUtf8(ordner.lies(u"b.svg"_s)).contains(u"Nr. 001AB2026  ·  Carnica"_s));
    löseAus(0);
    EXPECT_TRUE(QImage(ordner.filePath(u"a.png"_s)).text(u"Title"_s).contains(u"001AB2026"_s));
}

TEST_F(DiagrammansichtTest, doubtAboutAWing_leavesTheCountsReadable) {
    Kurvenbild bild;
    for (int nummer = 1; nummer <= 9; ++nummer) {
        bild.CI.flügel.push_back({nummer, nummer == 9 ? 12 : 20});
    }
    ansicht.zeige(bild);
    const QImage ohne = ansicht.grab().toImage();
    const std::vector<Flügelzweifel> grund{{Flügelzweifel::Art::Lage, {1, 2}}};
    ansicht.zeigeZweifel({{3, grund}, {9, grund}});
    const QImage mit = ansicht.grab().toImage();
    for (const Diagrammstelle& stelle : ansicht.stellen()) {
        const double oben = std::min(stelle.fläche.top(), stelle.fläche.bottom() - 14);
        const QRect zahl =
            QRectF(stelle.fläche.left(), oben - 16, stelle.fläche.width(), 14).toAlignedRect();
        EXPECT_EQ(mit.copy(zahl), ohne.copy(zahl)) << stelle.flügel.size();
        EXPECT_NE(mit.copy(stelle.fläche.adjusted(0, -40, 0, 0).toAlignedRect()),
                  ohne.copy(stelle.fläche.adjusted(0, -40, 0, 0).toAlignedRect()));
    }
}

TEST_F(DiagrammansichtTest, cancelledChooser_writesNothing) {
    löseAus(0);
    EXPECT_TRUE(QDir(ordner.path()).isEmpty());
    EXPECT_TRUE(dialoge.meldungen.isEmpty());
}

TEST_F(DiagrammansichtTest, fileOfTheCompletedName_isReplacedOnlyWhenConfirmed) {
    if (!kannSvg()) {
        GTEST_SKIP() << "this build writes no SVG";
    }
    ordner.schreibe(u"a.svg"_s, "alt");
    dialoge.antworten = {Antwort::Nein, Antwort::Ja};
    dialoge.dateien << ordner.filePath(u"a"_s) << ordner.filePath(u"a"_s);
    löseAus(1);
    EXPECT_EQ(ordner.lies(u"a.svg"_s), "alt");
    löseAus(1);
    EXPECT_TRUE(ordner.lies(u"a.svg"_s).startsWith("<?xml"));
    EXPECT_EQ(dialoge.fragen.size(), 2U);
}

TEST_F(DiagrammansichtTest, unwritablePlace_isReportedWithItsPath) {
    const QString pfad = ordner.filePath(u"fehlt/%1/a.png"_s);
    dialoge.dateien << pfad;
    löseAus(0);
    ASSERT_EQ(dialoge.meldungen.size(), 1);
    EXPECT_TRUE(dialoge.meldungen[0].contains(QDir::toNativeSeparators(pfad)));
    EXPECT_FALSE(ansicht.speichere(ordner.path(), Diagrammformat::PDF));
}

TEST_F(DiagrammansichtTest, copyKey_putsThePictureWithoutHighlightsOnTheClipboard) {
    ansicht.kopiere();
    const QImage ohne = QGuiApplication::clipboard()->image();
    QGuiApplication::clipboard()->clear();
    ansicht.hebeHervor({1, 7});
    QTest::keyClick(&ansicht, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->image(), ohne);
    EXPECT_EQ(ohne.width(), 2000);
}

} // namespace
} // namespace tarvel
