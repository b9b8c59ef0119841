#include "measure/uebersicht.h"

#include <QTest>

#include <gmock/gmock.h>

using namespace tarvel;

namespace {

/// A scan of 4000 x 2000 pixels in a view where ten of them make one.
class ÜbersichtTest : public testing::Test {
protected:
    ÜbersichtTest() {
        übersicht_.resize(412, 212);
        QImage bild(1000, 500, QImage::Format_RGB888);
        bild.fill(Qt::white);
        übersicht_.setzeBild(bild, {4000, 2000});
        übersicht_.setzeRahmen({800, 400});
        übersicht_.beiWahl([this](const Übersicht::Wahl& wahl) {
            gewählt_.push_back(wahl.mitte);
            letzte_ = wahl;
        });
        übersicht_.show();
    }

    QPoint imFenster(double x, double y) const { return übersicht_.zuFenster({x, y}).toPoint(); }

    Übersicht übersicht_;
    std::vector<QPointF> gewählt_;
    Übersicht::Wahl letzte_;
};

TEST_F(ÜbersichtTest, frameDraggedAndLetGo_choosesItsCentre) {
    QTest::mousePress(&übersicht_, Qt::LeftButton, Qt::NoModifier, imFenster(1000, 1000));
    EXPECT_EQ(übersicht_.mitte(), QPointF(1000, 1000));
    QTest::mouseMove(&übersicht_, imFenster(2000, 900));
    EXPECT_TRUE(gewählt_.empty());
    QTest::mouseRelease(&übersicht_, Qt::LeftButton, Qt::NoModifier, imFenster(2500, 1200));
    EXPECT_THAT(gewählt_, testing::ElementsAre(QPointF(2500, 1200)));
}

TEST_F(ÜbersichtTest, clickNearOrBesideTheEdge_keepsTheFrameInside) {
    const struct {
        QPoint klick;
        QPointF mitte;
    } fälle[] = {
        {imFenster(0, 0), {400, 200}},
        {imFenster(4000, 2000), {3600, 1800}},
        {{1, 1}, {400, 200}},
        {imFenster(2000, 10), {2000, 200}},
    };
    for (const auto& fall : fälle) {
        gewählt_.clear();
        QTest::mouseClick(&übersicht_, Qt::LeftButton, Qt::NoModifier, fall.klick);
        EXPECT_THAT(gewählt_, testing::ElementsAre(fall.mitte));
        EXPECT_EQ(letzte_.ort, übersicht_.zuBild(fall.klick)); // at the edge not the middle
        EXPECT_FALSE(letzte_.neu);
    }
    übersicht_.setzeRahmen({9000, 9000});
    EXPECT_EQ(übersicht_.mitte(), QPointF(2000, 1000));
}

TEST_F(ÜbersichtTest, keys_moveTheFrameAndEnterChooses) {
    übersicht_.setzeMitte({2000, 1000});
    const struct {
        Qt::Key taste;
        Qt::KeyboardModifiers umschalt;
        QPointF mitte;
    } fälle[] = {
        {Qt::Key_Right, Qt::NoModifier, {2200, 1000}},
        {Qt::Key_Down, Qt::NoModifier, {2200, 1100}},
        {Qt::Key_Left, Qt::ShiftModifier, {1400, 1100}},
        {Qt::Key_Up, Qt::ShiftModifier, {1400, 700}},
    };
    for (const auto& fall : fälle) {
        QTest::keyClick(&übersicht_, fall.taste, fall.umschalt);
        EXPECT_EQ(übersicht_.mitte(), fall.mitte);
    }
    EXPECT_TRUE(gewählt_.empty());
    QTest::keyClick(&übersicht_, Qt::Key_Return);
    EXPECT_THAT(gewählt_, testing::ElementsAre(QPointF(1400, 700)));
    EXPECT_FALSE(letzte_.neu);
    QTest::keyClick(&übersicht_, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(letzte_.neu);
}

TEST_F(ÜbersichtTest, escapeWhileDragging_takesTheFrameBack) {
    übersicht_.setzeMitte({2000, 1000});
    QTest::mousePress(&übersicht_, Qt::LeftButton, Qt::NoModifier, imFenster(1000, 500));
    QTest::keyClick(&übersicht_, Qt::Key_Escape);
    QTest::mouseRelease(&übersicht_, Qt::LeftButton, Qt::NoModifier, imFenster(1000, 500));
    EXPECT_TRUE(gewählt_.empty());
    EXPECT_EQ(übersicht_.mitte(), QPointF(2000, 1000));
}

TEST_F(ÜbersichtTest, paintedOnLightAndDark_showsFrameAndWings) {
    for (const Qt::GlobalColor grund : {Qt::white, Qt::black}) {
        QImage bild(1000, 500, QImage::Format_Grayscale8);
        bild.fill(grund);
        übersicht_.setzeBild(bild, {4000, 2000});
        übersicht_.setzeMitte({2000, 1000});
        const auto unterschied = [&](const QImage& sicht, QPoint ort) {
            int größter = 0;
            for (int dx = -3; dx <= 3; ++dx)
                größter = std::max(größter, std::abs(qGray(sicht.pixel(ort + QPoint(dx, 0))) -
                                                     qGray(QColor(grund).rgb())));
            return größter;
        };
        QImage sicht = übersicht_.grab().toImage();
        EXPECT_GT(unterschied(sicht, imFenster(1600, 1000)), 150) << "left side of the frame";
        EXPECT_EQ(unterschied(sicht, imFenster(2000, 1000)), 0);
        übersicht_.setzeErledigte({{QPointF(3500, 1500), QStringLiteral("003")}});
        sicht = übersicht_.grab().toImage();
        EXPECT_GT(unterschied(sicht, imFenster(3500, 1500)), 60);
    }
}

TEST_F(ÜbersichtTest, noPicture_choosesNothing) {
    übersicht_.setzeBild({}, {});
    QTest::mouseClick(&übersicht_, Qt::LeftButton, Qt::NoModifier, {100, 100});
    QTest::keyClick(&übersicht_, Qt::Key_Return);
    (void)übersicht_.grab();
    EXPECT_TRUE(gewählt_.empty());
}

} // namespace
