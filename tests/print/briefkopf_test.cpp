#include "print/briefkopf.h"
#include "print/briefkopfbild.h"
#include "support/testordner.h"

#include <QImage>
#include <QPainter>
#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

constexpr int Pixel = 4; // a millimetre

/// The smallest rectangle around all ink of the page, in millimetres.
QRectF tinte(const Briefkopf& kopf) {
    QImage blatt((PapierA4 * Pixel).toSize(), QImage::Format_RGB32);
    blatt.fill(Qt::white);
    QPainter painter(&blatt);
    painter.scale(Pixel, Pixel);
    maleBriefkopf(painter, kopf, Briefkopfgrafik(kopf));
    painter.end();
    QRect bemalt;
    for (int y = 0; y < blatt.height(); ++y) {
        for (int x = 0; x < blatt.width(); ++x) {
            if (qGray(blatt.pixel(x, y)) < 200) {
                bemalt |= QRect(x, y, 1, 1);
            }
        }
    }
    return {QPointF(bemalt.topLeft()) / Pixel, QSizeF(bemalt.size()) / Pixel};
}

struct BriefkopfTest : testing::Test {
    Testordner ordner;

    QString bild(QSize größe, const QString& name = u"wappen.png"_s) {
        QImage neu(größe, QImage::Format_RGB32);
        neu.fill(Qt::black);
        const QString pfad = ordner.filePath(name);
        EXPECT_TRUE(neu.save(pfad));
        return pfad;
    }
};

} // namespace

TEST_F(BriefkopfTest, missingFile_usesDefaults) {
    const Briefkopf kopf = ladeBriefkopf(Einstellungen(ordner.filePath(u"Index.ini"_s)));
    EXPECT_EQ(kopf, Briefkopf());
    EXPECT_EQ(kopf.TextLinks, 60);
    EXPECT_EQ(kopf.TextOben, 20);
    EXPECT_EQ(kopf.GrafikLinks, 20);
    EXPECT_EQ(kopf.GrafikOben, 10);
    EXPECT_EQ(kopf.SchriftArt, u"Arial"_s);
    EXPECT_EQ(kopf.SchriftGröße, 10);
}

TEST_F(BriefkopfTest, lines_breakOnDemandAndSkipWhatIsEmpty) {
    Briefkopf kopf;
    EXPECT_TRUE(briefkopfzeilen(kopf).isEmpty());
    kopf.Name = u"Huber"_s;
    kopf.Ort = u"Graz"_s;
    EXPECT_EQ(briefkopfzeilen(kopf), QStringList{u"Huber, Graz"_s});
    kopf.Zeilenwechsel = true;
    EXPECT_EQ(briefkopfzeilen(kopf), (QStringList{u"Huber"_s, u"Graz"_s}));
}

TEST_F(BriefkopfTest, text_standsWhereTheMillimetresSay) {
    Briefkopf kopf;
    kopf.Ikone = Verband::Andere;
    kopf.Name = u"HHH"_s;
    for (const auto& [links, oben] : {std::pair{60, 20}, {0, 0}, {150, 80}}) {
        kopf.TextLinks = links;
        kopf.TextOben = oben;
        const QRectF ort = tinte(kopf);
        EXPECT_NEAR(ort.left(), links, 1);
        EXPECT_GE(ort.top(), oben - 0.5);
        EXPECT_LE(ort.bottom(), oben + 5);
    }
    kopf.SchriftGröße = 40;
    EXPECT_GT(tinte(kopf).height(), 8); // capitals of 40 points are about 10 mm high
}

TEST_F(BriefkopfTest, picture_keepsItsProportionsOnThePaper) {
    Briefkopf kopf;
    kopf.Ikone = Verband::Andere;
    kopf.GrafikLinks = 30;
    kopf.GrafikOben = 12;
    struct Fall {
        QSize bild;
        QSizeF papier;
    };
    for (const Fall& f : {Fall{{100, 100}, {25, 25}},
                          {{400, 100}, {100, 25}},
                          {{6000, 100}, {180, 3}}}) { // no wider than the paper
        kopf.Datei = bild(f.bild);
        const QRectF ort = tinte(kopf);
        EXPECT_NEAR(ort.left(), 30, 0.5);
        EXPECT_NEAR(ort.top(), 12, 0.5);
        EXPECT_NEAR(ort.width(), f.papier.width(), 1);
        EXPECT_NEAR(ort.height(), f.papier.height(), 1);
    }
}

TEST_F(BriefkopfTest, text_neverRunsOverTheGraphic) {
    Briefkopf üblich;
    üblich.Ikone = Verband::Andere;
    üblich.Name = u"Landesverband der Bienenzüchter"_s;
    üblich.Straße = u"Lindenweg 7"_s;
    üblich.Ort = u"Graz"_s;
    üblich.Zeilenwechsel = true;
    for (const QSize größe : {QSize(100, 100), {300, 100}, {400, 100}, {900, 100}, {3000, 100}}) {
        for (const QPoint text : {QPoint(60, 20), {0, 0}, {150, 30}}) {
            Briefkopf kopf = üblich;
            kopf.Datei = bild(größe);
            kopf.TextLinks = text.x();
            kopf.TextOben = text.y();
            const Briefkopfgrafik grafik(kopf);
            const Briefkopf neu = eingepasst(kopf, grafik, 55);
            const QRectF ort = briefkopftext(neu, grafik);
            EXPECT_FALSE(ort.intersects(grafik.rahmen(neu))) << größe.width() << ' ' << text.x();
            EXPECT_LE(ort.bottom(), 55);
            EXPECT_LE(ort.right(), PapierA4.width());
        }
    }
}

TEST_F(BriefkopfTest, unreadablePicture_leavesTheTextAlone) {
    Briefkopf kopf;
    kopf.Ikone = Verband::Andere;
    for (const QString& datei : {QString(), u"/gibt/es/nicht.png"_s, ordner.path(),
                                 ordner.schreibe(u"kaputt.svg"_s, "<svg")}) {
        kopf.Datei = datei;
        EXPECT_FALSE(Briefkopfgrafik(kopf).vorhanden()) << qPrintable(datei);
        EXPECT_TRUE(tinte(kopf).isEmpty());
    }
}
