#include "measure/fluegelzeichnung.h"

#include <QImage>
#include <QPainter>
#include <QPalette>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <utility>

using namespace tarvel;

namespace {

constexpr double Maßstab = 4800 / 25.4;

/// A painted sheet to ask for the grey at a place of the wing, 0 to 255.
class Blatt {
public:
    Blatt(const QColor& grund, const std::function<void(QPainter&)>& maler)
        : bild_((Zeichnungsrahmen.size() * Maßstab).toSize(), QImage::Format_RGB32) {
        bild_.fill(grund);
        QPainter painter(&bild_);
        painter.scale(Maßstab, Maßstab);
        maler(painter);
    }

    [[nodiscard]] int grau(QPointF ort) const {
        const QPoint pixel(static_cast<int>(ort.x() * Maßstab),
                           static_cast<int>(ort.y() * Maßstab));
        return bild_.valid(pixel) ? qGray(bild_.pixel(pixel)) : -1;
    }

    /// The strongest colour, 0 on a sheet in shades of grey.
    [[nodiscard]] int buntheit() const {
        int höchste = 0;
        for (int y = 0; y < bild_.height(); ++y) {
            for (int x = 0; x < bild_.width(); ++x) {
                const QRgb p = bild_.pixel(x, y);
                const auto [von, bis] = std::minmax({qRed(p), qGreen(p), qBlue(p)});
                höchste = std::max(höchste, bis - von);
            }
        }
        return höchste;
    }

private:
    QImage bild_;
};

} // namespace

TEST(Fluegelzeichnung, wing_hasVeinsAtThePointsAndNoneBeside_inTheColoursOfTheWindow) {
    const std::pair<QColor, QColor> fälle[] = {{Qt::white, Qt::black},
                                               {QColor(15, 15, 15), Qt::white}};
    for (const auto& [grund, schrift] : fälle) {
        QPalette palette;
        palette.setColor(QPalette::WindowText, schrift);
        palette.setColor(QPalette::Window, grund);
        const Blatt blatt(grund, [&](QPainter& painter) {
            maleFlügel(painter, Zeichnungsfarben::zeichnung(palette));
        });
        const auto unterschied = [&, leer = qGray(grund.rgb())](QPointF ort) {
            return std::abs(blatt.grau(ort) - leer);
        };
        for (std::size_t i = 1; i < Zeichnungspunkte.size(); ++i) {
            // Half a vein is twice as wide: none lies beside its point.
            for (const QPointF& weg :
                 {QPointF(0.01, 0.01), {-0.01, 0.01}, {0.01, -0.01}, {-0.01, -0.01}})
                EXPECT_GT(unterschied(Zeichnungspunkte[i] + weg), 125) << "point " << i;
        }
        // 0.2 to 0.3 mm beside a point, between its veins: nothing but the membrane.
        const std::pair<std::size_t, QPointF> daneben[] = {
            {1, {-0.2, -0.18}}, {2, {0.3, -0.05}},  {2, {-0.3, 0.1}}, {3, {-0.1, -0.2}},
            {4, {0, -0.22}},    {5, {-0.1, -0.22}}, {6, {0.3, 0.05}}, {7, {-0.02, 0.3}},
            {8, {0.1, -0.3}},   {8, {0.2, 0.25}},   {8, {-0.3, 0}}};
        for (const auto& [i, versatz] : daneben) {
            EXPECT_NEAR(unterschied(Zeichnungspunkte[i] + versatz), 15, 4)
                << "beside point " << i << ": " << versatz.x() << ' ' << versatz.y();
        }
        EXPECT_EQ(unterschied({0.2, 3.2}), 0) << "outside the wing";
        EXPECT_LE(blatt.buntheit(), 2) << "a colour of the drawing itself";
    }
}

TEST(Fluegelzeichnung, cells_lieBetweenThePointsThatAreNamedAfterThem) {
    const Blatt blatt(Qt::white,
                      [](QPainter& painter) { maleZellen(painter, QColor(0, 0, 0, 51)); });
    const auto mitte = [](std::initializer_list<std::size_t> punkte) {
        QPointF summe;
        for (const std::size_t i : punkte)
            summe += Zeichnungspunkte[i];
        return summe / static_cast<double>(punkte.size());
    };
    for (const QPointF ort :
         {mitte({1, 2}) - QPointF(0, 0.2), mitte({3, 4, 5, 7}), mitte({5, 6, 8})})
        EXPECT_NEAR(blatt.grau(ort), 204, 1) << ort.x() << ' ' << ort.y(); // a fifth black
    // The second cubital cell; below the discoidal cell; the membrane at the tip.
    for (const QPointF ort :
         {mitte({1, 3, 5}) + QPointF(0.2, 0), Zeichnungspunkte[8] + QPointF(0.2, 0.3),
          Zeichnungspunkte[7] - QPointF(0.5, 0.2)})
        EXPECT_EQ(blatt.grau(ort), 255) << ort.x() << ' ' << ort.y();
}
