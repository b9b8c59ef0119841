#include "measure/fluegelzeichnung.h"

#include <QImage>
#include <QLineF>
#include <QPainter>
#include <QPalette>

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

using namespace tarvel;

namespace {

/// The mean wing and one whose points lie elsewhere.
std::vector<Flügelform> formen() {
    std::array<QPointF, 9> punkte = Flügelform::normal().punkte;
    for (std::size_t i = 1; i < punkte.size(); ++i)
        punkte[i] += QPointF(i % 2 == 0 ? 0.03 : -0.03, i % 3 == 0 ? 0.02 : -0.02);
    return {Flügelform::normal(), Flügelform::ausPunkten(punkte)};
}

} // namespace

TEST(Fluegelzeichnung, points_lieWhereVeinsMeet) {
    // How many veins begin, end or pass at each point.
    constexpr std::array<int, 9> Adern{0, 3, 1, 3, 3, 3, 3, 3, 3};
    for (const Flügelform& form : formen()) {
        for (std::size_t i = 1; i < form.punkte.size(); ++i) {
            int treffer = 0;
            for (const Ader& ader : form.adern) {
                for (const Ader::Stelle& stelle : ader.verlauf)
                    treffer += QLineF(stelle.ort, form.punkte[i]).length() < 1e-9 ? 1 : 0;
            }
            EXPECT_EQ(treffer, Adern[i]) << "point " << i;
        }
    }
}

TEST(Fluegelzeichnung, points_lieInTheOrderOfTheWing) {
    for (const Flügelform& form : formen()) {
        const auto& p = form.punkte;
        EXPECT_GT(p[1].x(), p[3].x());
        EXPECT_GT(p[3].x(), p[4].x());
        EXPECT_GT(p[4].x(), p[2].x() + 1);
        EXPECT_GT(p[5].x(), p[6].x());
        EXPECT_GT(p[6].x(), p[7].x());
        EXPECT_GT(p[7].x(), p[2].x());
        for (std::size_t i = 1; i < 8; ++i)
            EXPECT_GT(p[8].y(), p[i].y()) << "point " << i;
        const QRectF rahmen = form.rahmen();
        EXPECT_NEAR(rahmen.width(), 9.5, 0.5);
        EXPECT_NEAR(rahmen.height(), 3.5, 0.8);
    }
}

TEST(Fluegelzeichnung, cells_borderOnThePointsThatAreNamedAfterThem) {
    struct {
        Zelle zelle;
        std::vector<std::size_t> ecken;
    } const fälle[] = {{Zelle::Radial, {1, 2, 3, 4}},
                       {Zelle::Cubital1, {1}},
                       {Zelle::Cubital2, {1, 3, 5}},
                       {Zelle::Cubital3, {3, 4, 5, 6, 7}},
                       {Zelle::Discoidal, {5, 6, 8}}};
    const Flügelform form = Flügelform::normal();
    for (const auto& fall : fälle) {
        const QPainterPath zelle = form.zelle(fall.zelle);
        for (std::size_t i = 1; i < form.punkte.size(); ++i) {
            double nächster = 1e9;
            for (int k = 0; k < zelle.elementCount(); ++k)
                nächster = std::min(nächster, QLineF(zelle.elementAt(k), form.punkte[i]).length());
            const bool ecke =
                std::find(fall.ecken.begin(), fall.ecken.end(), i) != fall.ecken.end();
            EXPECT_EQ(nächster < 1e-9, ecke) << static_cast<int>(fall.zelle) << " point " << i;
        }
        // Simple outlines of very different cells: none may be torn or crossed.
        EXPECT_EQ(zelle.simplified().toSubpathPolygons().size(), 1);
        EXPECT_TRUE(form.häutchen().contains(zelle.boundingRect().center()));
    }
}

TEST(Fluegelzeichnung, painted_isDarkAtThePointsAndLightInTheCells) {
    constexpr double Maßstab = 1200 / 25.4;
    QPalette palette;
    palette.setColor(QPalette::WindowText, Qt::black);
    palette.setColor(QPalette::Window, Qt::white);
    for (const Flügelform& form : formen()) {
        QImage bild(520, 240, QImage::Format_RGB32);
        bild.fill(Qt::white);
        const QPointF ursprung = QPointF(10, 10) - form.rahmen().topLeft() * Maßstab;
        QPainter painter(&bild);
        painter.translate(ursprung);
        painter.scale(Maßstab, Maßstab);
        maleFlügel(painter, form, Flügelstil::zeichnung(palette));
        painter.end();
        const auto grau = [&](QPointF ort) {
            const QPointF pixel = ort * Maßstab + ursprung;
            return qGray(bild.pixel(static_cast<int>(pixel.x()), static_cast<int>(pixel.y())));
        };
        for (std::size_t i = 1; i < form.punkte.size(); ++i)
            EXPECT_LT(grau(form.punkte[i]), 130) << "point " << i;
        // 0.3 mm beside a point, away from its veins.
        const std::pair<std::size_t, QPointF> daneben[] = {
            {1, {-0.2, -0.18}}, {2, {0.3, -0.05}},  {2, {-0.3, 0.1}}, {3, {-0.1, -0.2}},
            {4, {0, -0.22}},    {5, {-0.1, -0.22}}, {6, {0.3, 0.05}}, {7, {-0.02, 0.3}},
            {8, {0.1, -0.3}},   {8, {0.2, 0.25}},   {8, {-0.3, 0}}};
        for (const auto& [i, versatz] : daneben)
            EXPECT_GT(grau(form.punkte[i] + versatz), 150)
                << "beside point " << i << ": " << versatz.x() << ' ' << versatz.y();
    }
}
