#include "print/vorschau.h"

#include "print/briefkopfbild.h"
#include "support/kinder.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>
#include <gmock/gmock.h>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;

struct VorschauTest : testing::Test {
    Texte texte{u"/p"_s};
    Vorschau vorschau{texte};
    QTransform maß; ///< from millimetres to pixels of the device when the page was painted last

    void SetUp() override {
        texte.SpracheDeutsch();
        vorschau.zeige([this](QPainter& painter) {
            maß = painter.deviceTransform();
            painter.fillRect(QRectF({}, PapierA4), Qt::yellow);
            painter.fillRect(QRectF(100, 140, 10, 10), Qt::red);
        });
        vorschau.resize(500, 600);
        vorschau.show();
        vorschau.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&vorschau));
        blatt().setFocus();
    }
    QAbstractScrollArea& blatt() { return kind<QAbstractScrollArea>(vorschau, u"pic_Vorschau"_s); }
    QRadioButton& knopf(const QString& name) { return kind<QRadioButton>(vorschau, name); }
    void klicke(const QString& name) {
        QTest::mouseClick(&knopf(name), Qt::LeftButton, {},
                          QPoint(8, knopf(name).height() / 2)); // on the mark itself
    }
    QScrollBar& leiste() { return *blatt().verticalScrollBar(); }
    QImage bild() { return blatt().viewport()->grab().toImage(); }
    /// The rectangle around all pixels of a colour.
    static QRect fläche(const QImage& bild, const QColor& farbe) {
        QRect rahmen;
        for (int y = 0; y < bild.height(); ++y) {
            for (int x = 0; x < bild.width(); ++x) {
                if (bild.pixelColor(x, y) == farbe)
                    rahmen |= QRect(x, y, 1, 1);
            }
        }
        return rahmen;
    }
    void drehe(int winkel, Qt::KeyboardModifiers dazu, QPoint ort) {
        QWheelEvent rad(ort, blatt().viewport()->mapToGlobal(ort), {}, {0, winkel}, Qt::NoButton,
                        dazu, Qt::NoScrollPhase, false);
        QApplication::sendEvent(blatt().viewport(), &rad);
    }
};

TEST_F(VorschauTest, wholePage_fitsAndKeepsItsProportions) {
    for (const QSize größe : {QSize(500, 600), QSize(700, 300), QSize(160, 600)}) {
        vorschau.resize(größe);
        QCoreApplication::processEvents();
        const QImage gemalt = bild();
        const QRect papier = fläche(gemalt, Qt::yellow);
        EXPECT_TRUE(gemalt.rect().adjusted(8, 8, -8, -8).contains(papier));
        EXPECT_NEAR(papier.height(), papier.width() * 297.0 / 210.0, 2.5);
        EXPECT_NEAR(papier.center().x(), gemalt.rect().center().x(), 1.5);
        EXPECT_EQ(leiste().maximum(), 0);
        EXPECT_EQ(blatt().horizontalScrollBar()->maximum(), 0);
    }
    EXPECT_TRUE(knopf(u"opt_GanzeSeite"_s).isChecked());
}

TEST_F(VorschauTest, realSize_scrollsOverTheWholePaper) {
    klicke(u"opt_Originalgröße"_s);
    EXPECT_TRUE(knopf(u"opt_Originalgröße"_s).isChecked());
    EXPECT_FALSE(knopf(u"opt_GanzeSeite"_s).isChecked());
    EXPECT_DOUBLE_EQ(vorschau.zoom(), 1);
    EXPECT_EQ(kind<QLabel>(vorschau, u"lab_Zoom"_s).text(), u"100 %"_s);
    leiste().setValue(0);
    blatt().horizontalScrollBar()->setValue(0);
    const QPoint anfang = fläche(bild(), Qt::yellow).topLeft();
    EXPECT_GT(anfang.x(), 0);
    EXPECT_GT(anfang.y(), 0);
    leiste().setValue(leiste().maximum());
    blatt().horizontalScrollBar()->setValue(blatt().horizontalScrollBar()->maximum());
    const QPoint ende = fläche(bild(), Qt::yellow).bottomRight();
    EXPECT_NEAR(blatt().viewport()->width() - 1 - ende.x(), anfang.x(), 1);
    EXPECT_NEAR(blatt().viewport()->height() - 1 - ende.y(), anfang.y(), 1);
    klicke(u"opt_GanzeSeite"_s);
    EXPECT_EQ(leiste().maximum(), 0);
}

TEST_F(VorschauTest, twiceTheSize_isPaintedAndNotEnlarged) {
    vorschau.zeigeOriginalgröße();
    bild();
    const double einfach = maß.m11();
    while (vorschau.zoom() < 2)
        vorschau.vergrößere();
    bild();
    EXPECT_DOUBLE_EQ(maß.m11(), 2 * einfach);
    EXPECT_DOUBLE_EQ(maß.m22(), maß.m11());
    // The middle of the page stayed in the middle, and has sharp edges.
    const QRect quadrat = fläche(bild(), Qt::red);
    EXPECT_NEAR(quadrat.width(), 10 * maß.m11(), 2);
    EXPECT_TRUE(blatt().viewport()->rect().contains(quadrat));
}

TEST_F(VorschauTest, denseScreen_getsItsPixels) {
    bild();
    const double einfach = maß.m11();
    QImage dicht(blatt().viewport()->size() * 2, QImage::Format_RGB32);
    dicht.setDevicePixelRatio(2);
    blatt().viewport()->render(&dicht);
    EXPECT_DOUBLE_EQ(maß.m11(), 2 * einfach);
}

TEST_F(VorschauTest, wheelWithCtrl_zoomsAroundThePointer) {
    vorschau.zeigeOriginalgröße();
    bild();
    const QPoint ort(200, 200);
    const QPointF vorher = maß.inverted().map(QPointF(ort));
    drehe(60, Qt::ControlModifier, ort);
    EXPECT_DOUBLE_EQ(vorschau.zoom(), 1);
    drehe(60, Qt::ControlModifier, ort);
    EXPECT_DOUBLE_EQ(vorschau.zoom(), 1.25);
    bild();
    const QPointF nachher = maß.inverted().map(QPointF(ort));
    EXPECT_NEAR(nachher.x(), vorher.x(), 0.5);
    EXPECT_NEAR(nachher.y(), vorher.y(), 0.5);
    drehe(-120, Qt::ControlModifier, ort);
    EXPECT_DOUBLE_EQ(vorschau.zoom(), 1);
    const int stelle = leiste().value();
    drehe(-120, Qt::NoModifier, ort);
    EXPECT_DOUBLE_EQ(vorschau.zoom(), 1);
    EXPECT_GT(leiste().value(), stelle);
}

TEST_F(VorschauTest, keys_zoomScrollAndTurnThePage) {
    std::vector<int> geblättert;
    vorschau.beiBlättern([&geblättert](int um) { geblättert.push_back(um); });
    QTest::keyClick(&blatt(), Qt::Key_PageDown);
    EXPECT_THAT(geblättert, testing::ElementsAre(1));
    vorschau.zeigeOriginalgröße();
    leiste().setValue(0);
    QTest::keyClick(&blatt(), Qt::Key_PageDown);
    EXPECT_EQ(geblättert.size(), 1U);
    EXPECT_GT(leiste().value(), 0);
    leiste().setValue(0);
    QTest::keyClick(&blatt(), Qt::Key_PageUp);
    EXPECT_THAT(geblättert, testing::ElementsAre(1, -1));

    QTest::keyClick(&blatt(), Qt::Key_Plus);
    EXPECT_DOUBLE_EQ(vorschau.zoom(), 1.25);
    QTest::keyClick(&blatt(), Qt::Key_Minus);
    EXPECT_DOUBLE_EQ(vorschau.zoom(), 1);
    for (int i = 0; i < 30; ++i)
        QTest::keyClick(&blatt(), Qt::Key_Minus);
    EXPECT_DOUBLE_EQ(vorschau.zoom(), 0.25);
    for (int i = 0; i < 30; ++i)
        QTest::keyClick(&blatt(), Qt::Key_Plus);
    EXPECT_DOUBLE_EQ(vorschau.zoom(), 4);
}

TEST_F(VorschauTest, drag_movesThePaper) {
    vorschau.zeigeOriginalgröße();
    leiste().setValue(50);
    QWidget* fläche = blatt().viewport();
    QTest::mousePress(fläche, Qt::LeftButton, {}, QPoint(100, 100));
    QTest::mouseMove(fläche, QPoint(100, 80));
    EXPECT_EQ(leiste().value(), 70);
    QTest::mouseRelease(fläche, Qt::LeftButton, {}, QPoint(100, 80));
    QTest::mouseMove(fläche, QPoint(100, 20));
    EXPECT_EQ(leiste().value(), 70);
}

TEST_F(VorschauTest, words_followTheLanguage) {
    texte.SpracheFranzösisch();
    EXPECT_EQ(knopf(u"opt_GanzeSeite"_s).text(), u"Page entière"_s);
    EXPECT_EQ(knopf(u"opt_Originalgröße"_s).text(), u"Taille originale"_s);
    EXPECT_FALSE(knopf(u"opt_GanzeSeite"_s).toolTip().isEmpty());
    EXPECT_EQ(blatt().accessibleName(), u"Aperçu du résultat"_s);
}

} // namespace
} // namespace tarvel
