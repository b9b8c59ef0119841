#include "measure/bild.h"

#include "measure/lupe.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include <gmock/gmock.h>

#include <optional>

using namespace tarvel;

namespace {

QImage einfarbig(QSize größe, QRgb farbe) {
    QImage bild(größe, QImage::Format_RGB888);
    bild.fill(farbe);
    return bild;
}

/// How many pixels of @p a differ clearly from those of @p b.
int tinte(const QImage& a, const QImage& b) {
    int anzahl = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            anzahl += std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))) > 60 ? 1 : 0;
    return anzahl;
}

class BildTest : public testing::Test {
protected:
    BildTest() {
        bild_.resize(404, 304);
        bild_.beiDruck([this](const Zeigerereignis& e) { gedrückt_.push_back(e); });
        bild_.beiBewegung([this](const Zeigerereignis& e) { bewegt_.push_back(e); });
        bild_.show();
    }

    void sende(QEvent::Type art, QPointF ort, Qt::MouseButton taste, Qt::MouseButtons tasten) {
        QWidget* fläche = bild_.viewport();
        QMouseEvent ereignis(art, ort, fläche->mapToGlobal(ort), taste, tasten, Qt::NoModifier);
        QApplication::sendEvent(fläche, &ereignis);
    }

    void dreheRad(QPoint winkel, Qt::KeyboardModifiers umschalt = Qt::NoModifier) {
        QWheelEvent ereignis({50, 50}, bild_.viewport()->mapToGlobal(QPointF(50, 50)), {}, winkel,
                             Qt::NoButton, umschalt, Qt::NoScrollPhase, false);
        QApplication::sendEvent(bild_.viewport(), &ereignis);
    }

    [[nodiscard]] QPoint stand() const {
        return {bild_.horizontalScrollBar()->value(), bild_.verticalScrollBar()->value()};
    }

    QImage gesehen() { return bild_.viewport()->grab().toImage(); }

    Bild bild_;
    std::vector<Zeigerereignis> gedrückt_;
    std::vector<Zeigerereignis> bewegt_;
};

TEST_F(BildTest, clickAtAnyZoomAndPlace_givesZoomedPicturePixels) {
    bild_.setzeBild(einfarbig({1000, 800}, qRgb(200, 200, 200)));
    const struct {
        int zoom;
        QPoint gerollt;
        QPoint klick;
        QPointF erwartet;
    } fälle[] = {
        {1, {0, 0}, {1, 2}, {1, 2}},           {1, {123, 45}, {10, 20}, {133, 65}},
        {2, {0, 0}, {10, 20}, {10, 20}},       {2, {1500, 1200}, {7, 9}, {1507, 1209}},
        {3, {777, 333}, {50, 60}, {827, 393}}, {4, {3000, 2500}, {99, 1}, {3099, 2501}},
    };
    for (const auto& fall : fälle) {
        bild_.setzeZoomfaktor(fall.zoom);
        bild_.horizontalScrollBar()->setValue(fall.gerollt.x());
        bild_.verticalScrollBar()->setValue(fall.gerollt.y());
        gedrückt_.clear();
        QTest::mouseClick(bild_.viewport(), Qt::LeftButton, Qt::NoModifier, fall.klick);
        ASSERT_EQ(gedrückt_.size(), 1U);
        EXPECT_EQ(QPointF(gedrückt_[0].x, gedrückt_[0].y), fall.erwartet) << fall.zoom;
        EXPECT_EQ(bild_.zuFenster(fall.erwartet), QPointF(fall.klick));
        EXPECT_EQ(gedrückt_[0].taste, Qt::LeftButton);
    }
}

TEST_F(BildTest, positionBetweenPixels_keepsItsFraction) {
    bild_.setzeBild(einfarbig({1000, 800}, qRgb(200, 200, 200)));
    sende(QEvent::MouseButtonPress, {10.25, 20.75}, Qt::LeftButton, Qt::LeftButton);
    sende(QEvent::MouseMove, {11.5, 21.125}, Qt::NoButton, Qt::NoButton);
    ASSERT_EQ(gedrückt_.size(), 1U);
    EXPECT_EQ(gedrückt_[0].x, 10.25F);
    EXPECT_EQ(gedrückt_[0].y, 20.75F);
    ASSERT_EQ(bewegt_.size(), 1U);
    EXPECT_EQ(bewegt_[0].x, 11.5F);
    EXPECT_EQ(bewegt_[0].y, 21.125F);
}

TEST_F(BildTest, clickSentToTheAreaItself_isAClickOnThePicture) {
    bild_.setzeBild(einfarbig({1000, 800}, qRgb(200, 200, 200)));
    QTest::mouseClick(&bild_, Qt::LeftButton, Qt::NoModifier,
                      bild_.viewport()->pos() + QPoint(50, 60));
    ASSERT_EQ(gedrückt_.size(), 1U);
    EXPECT_EQ(QPointF(gedrückt_[0].x, gedrückt_[0].y), QPointF(50, 60));
}

TEST_F(BildTest, smallPicture_isInTheMiddleAndItsEdgeIsTheBorder) {
    bild_.setzeBild(einfarbig({100, 50}, qRgb(200, 200, 200)));
    bild_.setzeZoomfaktor(2);
    const QSize sicht = bild_.viewport()->size();
    const QPoint ecke((sicht.width() - 200) / 2, (sicht.height() - 100) / 2);

    QTest::mouseClick(bild_.viewport(), Qt::LeftButton, Qt::NoModifier, ecke + QPoint(31, 17));
    ASSERT_EQ(gedrückt_.size(), 1U);
    EXPECT_EQ(QPointF(gedrückt_[0].x, gedrückt_[0].y), QPointF(31, 17));

    QTest::mouseClick(bild_.viewport(), Qt::LeftButton, Qt::NoModifier, ecke - QPoint(5, 5));
    EXPECT_EQ(gedrückt_.size(), 1U) << "no point beside the picture";
    QTest::mouseClick(bild_.viewport(), Qt::RightButton, Qt::NoModifier, ecke - QPoint(5, 5));
    EXPECT_EQ(gedrückt_.size(), 2U) << "a wing can be taken over from anywhere";

    bewegt_.clear();
    sende(QEvent::MouseMove, ecke + QPoint(500, 30), Qt::NoButton, Qt::NoButton);
    ASSERT_EQ(bewegt_.size(), 1U);
    EXPECT_EQ(QPointF(bewegt_[0].x, bewegt_[0].y), QPointF(200, 30));
}

TEST_F(BildTest, twoQuickClicks_areTwoClicks) {
    bild_.setzeBild(einfarbig({1000, 800}, qRgb(200, 200, 200)));
    for (const auto art : {QEvent::MouseButtonPress, QEvent::MouseButtonDblClick}) {
        sende(art, {10, 10}, Qt::LeftButton, Qt::LeftButton);
        sende(QEvent::MouseButtonRelease, {10, 10}, Qt::LeftButton, Qt::NoButton);
    }
    EXPECT_EQ(gedrückt_.size(), 2U);
}

TEST_F(BildTest, paintedAtAnyZoomAndDensity_picturePixelsLieAtTheirCoordinates) {
    QImage bild = einfarbig({1000, 800}, qRgb(255, 255, 255));
    const QRect fleck(500, 400, 4, 4);
    QPainter(&bild).fillRect(fleck, Qt::black);
    bild_.setzeBild(bild);
    for (int zoom = 1; zoom <= 4; ++zoom)
        for (const int dichte : {1, 2}) {
            bild_.setzeZoomfaktor(zoom);
            bild_.zeige(QPointF(500, 400));
            QImage schirm(bild_.viewport()->size() * dichte, QImage::Format_RGB32);
            schirm.setDevicePixelRatio(dichte);
            bild_.viewport()->render(&schirm);
            const QPointF mitte = bild_.zuFenster(QRectF(fleck).center() * zoom) * dichte;
            const double halb = 2.0 * zoom * dichte;
            const auto grau = [&](double dx, double dy) {
                return qGray(schirm.pixel((mitte + QPointF(dx, dy)).toPoint()));
            };
            EXPECT_LT(grau(0, 0), 60) << zoom << dichte;
            for (const double seite : {-1.0, 1.0}) {
                const double aussen = seite * (halb + zoom * dichte + 1);
                EXPECT_GT(grau(aussen, 0), 200) << zoom << dichte << seite;
                EXPECT_GT(grau(0, aussen), 200) << zoom << dichte << seite;
            }
        }
}

TEST_F(BildTest, scrolledByDragAndWheel_showsWhatAFreshPaintWouldShow) {
    QImage bild(1000, 800, QImage::Format_Grayscale8);
    for (int y = 0; y < bild.height(); ++y)
        for (int x = 0; x < bild.width(); ++x)
            bild.scanLine(y)[x] = static_cast<uchar>((x * 7) ^ (y * 13));
    bild_.setzeBild(bild);
    bild_.setzeZoomfaktor(2);
    bild_.zeige(QPointF(500, 400));
    const QPoint vorher = stand();

    sende(QEvent::MouseButtonPress, {200, 150}, Qt::MiddleButton, Qt::MiddleButton);
    sende(QEvent::MouseMove, {170, 165}, Qt::NoButton, Qt::MiddleButton);
    sende(QEvent::MouseButtonRelease, {170, 165}, Qt::MiddleButton, Qt::NoButton);
    EXPECT_EQ(stand(), vorher + QPoint(30, -15));
    EXPECT_TRUE(gedrückt_.empty());
    // Whoever sets a point by key means the place that is below the pointer now.
    ASSERT_FALSE(bewegt_.empty());
    EXPECT_EQ(QPointF(bewegt_.back().x, bewegt_.back().y), bild_.zuBild({170, 165}));

    const QPoint gezogen = stand();
    dreheRad({0, -120});
    EXPECT_GT(stand().y(), gezogen.y());
    EXPECT_EQ(stand().x(), gezogen.x());
    dreheRad({0, -120}, Qt::ShiftModifier);
    EXPECT_GT(stand().x(), gezogen.x());

    // What stayed in view was only shifted; it must look as if it had been painted anew.
    bild_.setzeMarken({{QPointF(900, 800), QStringLiteral("1")}});
    QApplication::processEvents();
    bild_.zeige({470, 380});
    bild_.setzeMarken({{QPointF(920, 790), QStringLiteral("1"), true}});
    QApplication::processEvents();
    const QImage schirm = bild_.screen()->grabWindow(bild_.winId()).toImage();
    ASSERT_FALSE(schirm.isNull());
    EXPECT_EQ(tinte(schirm.copy(bild_.viewport()->geometry()), gesehen()), 0);
}

TEST_F(BildTest, controlAndWheel_asksForZoomAndKeepsIt) {
    bild_.setzeBild(einfarbig({1000, 800}, qRgb(200, 200, 200)));
    std::vector<int> wünsche;
    bild_.beiZoomwunsch([&](int richtung, QPointF ort) {
        wünsche.push_back(richtung);
        EXPECT_EQ(ort, QPointF(50, 50));
    });
    dreheRad({0, 120}, Qt::ControlModifier);
    dreheRad({0, -60}, Qt::ControlModifier);
    dreheRad({0, -60}, Qt::ControlModifier);
    EXPECT_THAT(wünsche, testing::ElementsAre(1, -1));
    EXPECT_EQ(bild_.Zoomfaktor(), 1);
}

TEST_F(BildTest, zoomChanges_middleStays) {
    bild_.setzeBild(einfarbig({1000, 800}, qRgb(200, 200, 200)));
    bild_.zeige({500, 400});
    for (const int zoom : {3, 2, 4, 1}) {
        bild_.setzeZoomfaktor(zoom);
        const QPointF ab = bild_.ausschnitt().center() - QPointF(500, 400);
        EXPECT_LE(ab.manhattanLength(), 2) << zoom;
    }
    bild_.setzeZoomfaktor(9);
    EXPECT_EQ(bild_.Zoomfaktor(), 4);
}

TEST_F(BildTest, keyPressed_goesToWhoMeasuresFirstThenScrolls) {
    bild_.setzeBild(einfarbig({1000, 800}, qRgb(200, 200, 200)));
    std::vector<int> tasten;
    bild_.beiTaste([&](QKeyEvent* e) {
        tasten.push_back(e->key());
        return e->key() == Qt::Key_Down;
    });
    QTest::keyClick(&bild_, Qt::Key_Down);
    EXPECT_EQ(stand().y(), 0);
    QTest::keyClick(&bild_, Qt::Key_PageDown);
    EXPECT_GT(stand().y(), 100);
    EXPECT_THAT(tasten, testing::ElementsAre(Qt::Key_Down, Qt::Key_PageDown));
}

TEST_F(BildTest, placeOutsideTheView_isScrolledInto) {
    bild_.setzeBild(einfarbig({1000, 800}, qRgb(200, 200, 200)));
    bild_.macheSichtbar({600, 500});
    EXPECT_TRUE(QRectF(bild_.viewport()->rect()).contains(bild_.zuFenster({600, 500})));
    const QPoint jetzt = stand();
    bild_.macheSichtbar({590, 490});
    EXPECT_EQ(stand(), jetzt) << "seen already";
}

TEST_F(BildTest, marksOnLightAndDark_showAndLeaveTheVeinOpen) {
    for (const QRgb grund : {qRgb(255, 255, 255), qRgb(0, 0, 0), qRgb(128, 128, 128)}) {
        SCOPED_TRACE(qRed(grund));
        bild_.setzeBild(einfarbig({1000, 800}, grund));
        const QImage leer = gesehen();
        bild_.setzeMarken({{QPointF(100, 120), QStringLiteral("7")}});
        const QImage einfach = gesehen();
        EXPECT_GT(tinte(einfach, leer), 40);
        EXPECT_EQ(einfach.pixel(100, 120), leer.pixel(100, 120));
        EXPECT_EQ(tinte(einfach.copy(200, 0, 100, 300), leer.copy(200, 0, 100, 300)), 0);

        bild_.setzeMarken({{QPointF(100, 120), QStringLiteral("7"), true}});
        const QImage gewählt = gesehen();
        EXPECT_GT(tinte(gewählt, leer), tinte(einfach, leer) + 50);
        EXPECT_EQ(gewählt.pixel(100, 120), leer.pixel(100, 120));

        bild_.setzeMarken({});
        bild_.setzeErledigte({{QPointF(100, 120), QStringLiteral("012")}});
        EXPECT_GT(tinte(gesehen(), leer), 20);
    }
}

TEST_F(BildTest, scrolledPicture_marksStayOnTheirVein) {
    bild_.setzeBild(einfarbig({1000, 800}, qRgb(255, 255, 255)));
    bild_.setzeZoomfaktor(2);
    bild_.zeige({400, 300});
    bild_.setzeMarken({{QPointF(800, 600)}});
    const QImage sicht = gesehen();
    const QPoint ort = bild_.zuFenster({800, 600}).toPoint();
    EXPECT_LT(qGray(sicht.pixel(ort + QPoint(7, 0))), 100);
    EXPECT_LT(qGray(sicht.pixel(ort - QPoint(0, 7))), 100);
    EXPECT_EQ(qGray(sicht.pixel(ort)), 255);
}

TEST(Marken, paintedAnyhow_staysInsideTheFrameThatIsRepainted) {
    const QFont schrift = QApplication::font();
    for (const QString& text : {QString(), QStringLiteral("8"), QStringLiteral("200")})
        for (const bool gewählt : {false, true}) {
            const Marke marke{{}, text, gewählt, true};
            const QPointF ort(80.5, 80.5);
            QImage fläche = einfarbig({160, 160}, qRgb(0, 0, 0));
            QPainter painter(&fläche);
            maleMarke(painter, schrift, marke, ort);
            maleErledigte(painter, schrift, marke, ort);
            painter.setCompositionMode(QPainter::CompositionMode_Source);
            painter.fillRect(markenRahmen(schrift, marke, ort).toAlignedRect(), Qt::black);
            painter.end();
            EXPECT_EQ(tinte(fläche, einfarbig({160, 160}, qRgb(0, 0, 0))), 0)
                << qPrintable(text) << gewählt;
        }
}

TEST(LupeTest, placeUnderThePointer_isMagnifiedInTheMiddle) {
    QImage bild = einfarbig({1000, 800}, qRgb(255, 255, 255));
    QPainter(&bild).fillRect(QRect(500, 400, 2, 2), Qt::black);
    Lupe lupe;
    lupe.resize(220, 220);
    lupe.setzeBild(bild, 2);
    lupe.setzeMitte({1002, 802});
    const QImage sicht = lupe.grab().toImage();
    // Two pixels at zoom 2, four times magnified: sixteen dark ones about the middle.
    EXPECT_LT(qGray(sicht.pixel(110, 110)), 60);
    EXPECT_LT(qGray(sicht.pixel(105, 105)), 120);
    EXPECT_GT(qGray(sicht.pixel(124, 124)), 200);
    EXPECT_GT(qGray(sicht.pixel(92, 92)), 200);
    EXPECT_LT(qGray(sicht.pixel(110, 20)), 60) << "cross hair";
}

} // namespace
