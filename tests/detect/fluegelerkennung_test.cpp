#include "../bench/musterblatt.h"
#include "detect/bildpixel.h"
#include "detect/faeden.h"
#include "detect/fluegelerkennung.h"

#include <QTransform>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <new>

using namespace tarvel;

namespace {

constexpr int Dpi = 1200;

const Flügelerkennung& erkennung() {
    static const Flügelerkennung eine(
        std::get<std::shared_ptr<const Erkennungsmodell>>(eingebautesModell()));
    return eine;
}

std::vector<Flügelfund> finde(const QImage& bild, double dpi = Dpi, int fäden = 2) {
    Suchverlauf verlauf;
    return erkennung().finde(Bildpixel(bild), dpi, verlauf, fäden);
}

const Musterblatt& blatt() {
    static const Musterblatt eines = male({.flügel = 4, .spalten = 2, .dpi = Dpi, .grau = true});
    return eines;
}

/// Distance of proposed points from the true ones, in pixels at 2400 dpi: mean and largest.
std::pair<double, double> abstand(const Flügelfund& fund, const std::array<QPointF, 9>& wahr,
                                  double dpi = Dpi) {
    double summe = 0;
    double größter = 0;
    for (std::size_t k = 0; k < 8; ++k) {
        const QPointF d = fund.vorschlag.punkte[k] - wahr[k + 1];
        const double e = std::hypot(d.x(), d.y()) * 2400 / dpi;
        summe += e / 8;
        größter = std::max(größter, e);
    }
    return {summe, größter};
}

} // namespace

TEST(Flügelerkennung, wingsOfASheet_areFoundInReadingOrderWithTheirPoints) {
    const auto funde = finde(blatt().bild);
    ASSERT_EQ(funde.size(), 4U);
    for (std::size_t i = 0; i < funde.size(); ++i) {
        const auto [mittel, größter] = abstand(funde[i], blatt().punkte[i]);
        EXPECT_LT(mittel, 4) << i;
        EXPECT_LT(größter, 10) << i;
        EXPECT_EQ(funde[i].stand, Flügelfund::Stand::Sicher) << i << ' ' << funde[i].güte;
        EXPECT_FALSE(funde[i].gespiegelt);
        EXPECT_NEAR(std::remainder(funde[i].winkel, 360), 0, 8);
        for (std::size_t k = 1; k <= 8; ++k)
            EXPECT_TRUE(funde[i].rahmen().contains(blatt().punkte[i][k]));
    }
}

TEST(Flügelerkennung, turnedMirroredAndOtherwiseScannedWings_areFoundAlike) {
    struct Fall {
        const char* name;
        QTransform wie;
        double dpi;
    };
    const QPointF mitte = QRectF(blatt().bild.rect()).center();
    const auto gedreht = [&](double grad) {
        return QTransform()
            .translate(mitte.x(), mitte.y())
            .rotate(grad)
            .translate(-mitte.x(), -mitte.y());
    };
    for (const Fall& fall :
         {Fall{"90", gedreht(90), Dpi}, Fall{"143", gedreht(143), Dpi},
          Fall{"mirrored", QTransform(-1, 0, 0, 1, blatt().bild.width(), 0), Dpi},
          Fall{"600", QTransform::fromScale(0.5, 0.5), 600}}) {
        // Everything on paper of its own.
        const QRect rahmen = fall.wie.mapRect(QRectF(blatt().bild.rect())).toAlignedRect();
        QImage bild(rahmen.size(), QImage::Format_Grayscale8);
        bild.fill(235);
        const QImage verwandelt = blatt()
                                      .bild.convertToFormat(QImage::Format_ARGB32)
                                      .transformed(fall.wie, Qt::SmoothTransformation);
        for (int y = 0; y < std::min(bild.height(), verwandelt.height()); ++y)
            for (int x = 0; x < std::min(bild.width(), verwandelt.width()); ++x)
                if (const QRgb p = verwandelt.pixel(x, y); qAlpha(p) == 255)
                    bild.scanLine(y)[x] = uchar(qGray(p));
        const auto funde = finde(bild, fall.dpi);
        EXPECT_EQ(funde.size(), 4U) << fall.name;
        const QTransform wahr =
            QImage::trueMatrix(fall.wie, blatt().bild.width(), blatt().bild.height());
        for (const Flügelfund& fund : funde) {
            double bester = 1e9;
            for (auto punkte : blatt().punkte) {
                for (QPointF& p : punkte)
                    p = wahr.map(p);
                bester = std::min(bester, abstand(fund, punkte, fall.dpi).first);
            }
            EXPECT_LT(bester, 5) << fall.name;
            EXPECT_EQ(fund.gespiegelt, fall.wie.determinant() < 0) << fall.name;
        }
    }
}

TEST(Flügelerkennung, theNumberOfThreads_changesNothing) {
    const auto einer = finde(blatt().bild, Dpi, 1);
    const auto viele = finde(blatt().bild, Dpi, 5);
    ASSERT_EQ(einer.size(), viele.size());
    for (std::size_t i = 0; i < einer.size(); ++i) {
        EXPECT_EQ(einer[i].vorschlag.punkte, viele[i].vorschlag.punkte);
        EXPECT_EQ(einer[i].vorschlag.fehler, viele[i].vorschlag.fehler);
        EXPECT_EQ(einer[i].güte, viele[i].güte);
    }
}

TEST(Flügelerkennung, coveredPoints_areExpectedToBeOff) {
    QImage bild = blatt().bild;
    const QPointF ort = blatt().punkte[0][6];
    for (int y = -22; y <= 22; ++y)
        for (int x = -22; x <= 22; ++x)
            if (x * x + y * y < 22 * 22)
                bild.scanLine(int(ort.y()) + y)[int(ort.x()) + x] = 60;
    const auto funde = finde(bild);
    ASSERT_EQ(funde.size(), 4U);
    EXPECT_GT(funde[0].vorschlag.fehler[5], Punktvorschlag::Zweifelhaft);
    EXPECT_GT(funde[0].vorschlag.fehler[5], funde[1].vorschlag.fehler[5]);
}

TEST(Flügelerkennung, whatIsNoWing_isNotFound) {
    QImage leer(1500, 1000, QImage::Format_Grayscale8);
    leer.fill(230);
    EXPECT_TRUE(finde(leer).empty());
    quint32 zufall = 1;
    QImage rauschen = leer;
    for (int y = 0; y < rauschen.height(); ++y)
        for (int x = 0; x < rauschen.width(); ++x)
            rauschen.scanLine(y)[x] = uchar((zufall = zufall * 1664525 + 1013904223) >> 24);
    EXPECT_TRUE(finde(rauschen).empty());
    // A wing pulled to twice its height, as other insects have.
    const QImage breit = blatt().bild.scaled(blatt().bild.width(), 2 * blatt().bild.height());
    EXPECT_TRUE(finde(breit).empty());
    for (const QSize größe : {QSize(1, 1), QSize(3000, 2), QSize(2, 3000), QSize(200, 100)}) {
        QImage klein(größe, QImage::Format_RGB32);
        klein.fill(Qt::black);
        EXPECT_TRUE(finde(klein).empty());
    }
    EXPECT_TRUE(finde(blatt().bild, 100).empty());
}

TEST(Flügelerkennung, wrongResolution_isTold) {
    Suchverlauf verlauf;
    const Musterblatt einer = male({.flügel = 1, .dpi = Dpi, .grau = true});
    const Bildpixel quelle(einer.bild);
    for (const int gesetzt : {600, 2400}) {
        EXPECT_TRUE(erkennung().finde(quelle, gesetzt, verlauf).empty()) << gesetzt;
        EXPECT_EQ(erkennung().andereAuflösung(quelle, gesetzt, verlauf), Dpi) << gesetzt;
    }
    // A little off shows in the size.
    const auto funde = erkennung().finde(quelle, 1100, verlauf);
    ASSERT_EQ(funde.size(), 1U);
    EXPECT_GT(funde[0].größe, 1.05);
    QImage leer(300, 200, QImage::Format_Grayscale8);
    leer.fill(230);
    EXPECT_EQ(erkennung().andereAuflösung(Bildpixel(leer), Dpi, verlauf), std::nullopt);
}

TEST(Flügelerkennung, toldToStop_findsNothing) {
    Suchverlauf verlauf;
    verlauf.halt = true;
    EXPECT_TRUE(erkennung().finde(Bildpixel(blatt().bild), Dpi, verlauf).empty());
}

TEST(Flügelerkennung, aPictureLargerThanAnyGlass_isNotEvenRead) {
    // 600 megapixels at 300 dpi would be two metres high, and their map gigabytes.
    struct Riese final : Pixelquelle {
        mutable std::atomic<int> gelesen = 0;
        [[nodiscard]] QSize größe() const override { return {24'000, 25'000}; }
        void lies(int, int, int anzahl, std::uint8_t* ziel) const override {
            ++gelesen;
            std::fill_n(ziel, anzahl, std::uint8_t{230});
        }
    } riese;
    Suchverlauf verlauf;
    EXPECT_TRUE(erkennung().finde(riese, 300, verlauf).empty());
    EXPECT_EQ(riese.gelesen, 0);
}

TEST(Fäden, whatACallThrows_reachesTheCaller) {
    for (const int fäden : {1, 4}) {
        std::atomic<int> getan = 0;
        const auto arbeit = [&](int i) {
            if (i == 3)
                throw std::bad_alloc();
            ++getan;
        };
        EXPECT_THROW(verteile(1000, fäden, arbeit), std::bad_alloc);
        EXPECT_LT(getan, 1000);
    }
}

TEST(Leserichtung, rowsFromTheTopLeft_evenWhenTheyClimb) {
    const std::vector<QPointF> orte{{900, 130}, {100, 100}, {500, 112}, {120, 420}, {480, 395}};
    EXPECT_EQ(leserichtung(orte, 200), (std::vector{1, 2, 0, 3, 4}));
    EXPECT_TRUE(leserichtung({}, 0).empty());
}

TEST(Graubild, partsOfPixels_countByTheirArea) {
    QImage bild(5, 3, QImage::Format_Grayscale8);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 5; ++x)
            bild.scanLine(y)[x] = uchar(50 * x);
    const Graubild klein = verkleinert(Bildpixel(bild), bild.rect(), 2.5);
    ASSERT_EQ(klein.breite, 2);
    ASSERT_EQ(klein.höhe, 1);
    EXPECT_EQ(klein.zeile(0)[0], 40);  // (0 + 50 + 100 / 2) / 2.5
    EXPECT_EQ(klein.zeile(0)[1], 160); // (100 / 2 + 150 + 200) / 2.5
}
