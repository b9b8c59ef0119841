#include "measure/bildaufloesung.h"
#include "measure/bildhoehe.h"
#include "measure/bildort.h"
#include "measure/bildsuche.h"
#include "support/testordner.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QImageReader>
#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;
using Fundart = Bildfund::Art;

namespace {

struct BildsucheTest : testing::Test {
    Testordner ordner;
    Bildsuche suche{[](const QString& pfad) { return QImageReader(pfad).size(); }};

    [[nodiscard]] QString in(const QString& name) const { return ordner.filePath(name); }
    /// A picture of one shade, so that @p grau decides on the content.
    QString male(const QString& name, int grau, QSize größe = {40, 30}) const {
        QImage bild(größe, QImage::Format_RGB32);
        bild.fill(qRgb(grau, grau, grau));
        EXPECT_TRUE(QDir().mkpath(QFileInfo(in(name)).path()));
        EXPECT_TRUE(bild.save(in(name), "BMP"));
        return in(name);
    }
    [[nodiscard]] GesuchtesBild gemessen(const QString& pfad) const {
        return {.pfad = pfad, .kennung = {{40, 30}, inhaltsmarke(pfad)}, .mindestens = {}};
    }
};

} // namespace

TEST_F(BildsucheTest, movedPicture_isFoundInEveryPlaceItCanBe) {
    for (const char* ziel : {"alt/1.bmp", "ergebnisse/1.bmp", "ergebnisse/alt/1.bmp"}) {
        const QString alt = male(u"alt/1.bmp"_s, 10);
        const GesuchtesBild bild = gemessen(alt);
        const QString neu = in(QString::fromLatin1(ziel));
        male(QString::fromLatin1(ziel), 10);
        if (neu != alt) {
            QFile::remove(alt);
        }
        Bildsuche frisch{[](const QString& pfad) { return QImageReader(pfad).size(); }};
        frisch.setzeErgebnisdatei(in(u"ergebnisse/2025.tdb"_s));
        EXPECT_EQ(frisch.suche(bild), (Bildfund{Fundart::Gefunden, neu})) << ziel;
        QDir(in(u"ergebnisse"_s)).removeRecursively();
    }
    // Stored on another system.
    GesuchtesBild fremd = gemessen(male(u"neu/9.bmp"_s, 50));
    fremd.pfad = uR"(C:\Scans\Volk 3\9.bmp)"_s;
    EXPECT_EQ(suche.suche(fremd).art, Fundart::Fehlt);
    suche.zeigeOrdner(fremd, in(u"neu"_s));
    EXPECT_EQ(suche.suche(fremd), (Bildfund{Fundart::Gefunden, in(u"neu/9.bmp"_s)}));
}

TEST_F(BildsucheTest, folderShownOnce_servesAllOfTheOldFolder_andTheNextOneBesideIt) {
    const GesuchtesBild eins = gemessen(male(u"neu/1.bmp"_s, 1));
    const GesuchtesBild zwei = gemessen(male(u"neu/2.bmp"_s, 2));
    GesuchtesBild alt1 = eins;
    alt1.pfad = u"/weg/1.bmp"_s;
    GesuchtesBild alt2 = zwei;
    alt2.pfad = u"/anderswo/2.bmp"_s;
    suche.zeigeOrdner(alt1, in(u"neu"_s));
    EXPECT_EQ(suche.suche(alt1), (Bildfund{Fundart::Gefunden, eins.pfad}));
    EXPECT_EQ(suche.suche(alt2), (Bildfund{Fundart::Gefunden, zwei.pfad})); // beside the last one
}

TEST_F(BildsucheTest, pictureOfTheSameName_isTakenOnlyWhenItIsTheSame) {
    const QString pfad = male(u"1.bmp"_s, 10);
    const GesuchtesBild bild = gemessen(pfad);
    struct Fall {
        const char* was;
        int grau;
        QSize größe;
        bool mitMarke, mitGröße;
        QSize mindestens;
        Fundart art;
    };
    for (const Fall& f :
         {Fall{"same", 10, {40, 30}, true, true, {}, Fundart::Gefunden},
          {"other content", 11, {40, 30}, true, true, {}, Fundart::AndererInhalt},
          {"other size", 10, {41, 30}, true, true, {}, Fundart::AndererInhalt},
          {"size alone", 11, {40, 30}, false, true, {}, Fundart::Gefunden},
          {"old row", 11, {50, 60}, false, false, {50, 60}, Fundart::Gefunden},
          {"points outside", 11, {50, 60}, false, false, {51, 9}, Fundart::AndererInhalt}}) {
        male(u"1.bmp"_s, f.grau, f.größe);
        GesuchtesBild gesucht{.pfad = pfad, .kennung = {}, .mindestens = f.mindestens};
        gesucht.kennung.marke = f.mitMarke ? bild.kennung.marke : QString();
        gesucht.kennung.größe = f.mitGröße ? QSize(40, 30) : QSize();
        EXPECT_EQ(suche.suche(gesucht), (Bildfund{f.art, pfad})) << f.was;
    }
    lege(pfad, "no picture");
    EXPECT_EQ(suche.suche(bild).art, Fundart::AndererInhalt);
    EXPECT_EQ(suche.suche({}).art, Fundart::Fehlt);
}

TEST_F(BildsucheTest, otherComputer_isAskedOnlyWhenTheUserChoseItsFiles) {
    for (const auto& [pfad, rechner] : {std::pair{uR"(\\Host\s\1.bmp)"_s, u"host"_s},
                                        {u"//host/s/1.bmp"_s, u"host"_s},
                                        {uR"(\/host/s)"_s, u"host"_s},
                                        {uR"(\\?\UNC\host\s)"_s, u"host"_s},
                                        {uR"(\\?\C:\s)"_s, QString()},
                                        {uR"(C:\s\1.bmp)"_s, QString()},
                                        {u"/s/1.bmp"_s, QString()}}) {
        EXPECT_EQ(netzrechner(pfad), rechner) << pfad.toStdString();
    }
#ifndef Q_OS_WIN
    // Here such a path is one of this computer, so only not looking keeps it from being found.
    GesuchtesBild bild = gemessen(male(u"1.bmp"_s, 10));
    bild.pfad = u'/' + bild.pfad;
    EXPECT_EQ(suche.suche(bild).art, Fundart::Fehlt);
    EXPECT_FALSE(suche.gehörtZu(bild, in(u"1.bmp"_s), bild.kennung));
    EXPECT_EQ(bildhöhe(bild.pfad, in(u"a.tdb"_s)), std::nullopt);
    EXPECT_EQ(bildhöhe(bild.pfad, u'/' + in(u"a.tdb"_s)), 30.F);
    suche.vertraue(bild.pfad);
    EXPECT_EQ(suche.suche(bild).art, Fundart::Gefunden);
#endif
}

TEST_F(BildsucheTest, picturesOfASeries_areEachAskedForOnceWithAllTheirPoints) {
    Messreihe reihe;
    for (const auto& [nummer, pfad, x] : {std::tuple{1, u"/a.bmp"_s, 90.F},
                                          {2, u"/b.bmp"_s, 10.F},
                                          {3, u"/a.bmp"_s, 201.F},
                                          {4, QString(), 10.F}}) {
        Flügelmessung m;
        m.bilddatei = pfad;
        m.aufnahme.Zoomfaktor = 2;
        m.punkte.setze(m.messart, 5, x, 30);
        reihe.trageEin(static_cast<qint16>(nummer), {.CI = 2, .HI = {}, .DV = {}, .fehler = {}}, m,
                       {});
    }
    EXPECT_THAT(gesuchteBilder(reihe),
                testing::ElementsAre(GesuchtesBild{u"/a.bmp"_s, {}, {101, 15}},
                                     GesuchtesBild{u"/b.bmp"_s, {}, {5, 15}}));
    EXPECT_THAT(reihe.flügelAufBild(u"/a.bmp"_s), testing::ElementsAre(1, 3));
}

TEST_F(BildsucheTest, contentMark_changesWithSizeAndWithAnyThirdOfALargeFile) {
    const auto schreibe = [this](const QString& name, qint64 länge, qint64 anders) {
        QByteArray inhalt(länge, 'x');
        if (anders >= 0) {
            inhalt.replace(anders, 20'000, QByteArray(20'000, 'y'));
        }
        return lege(in(name), inhalt);
    };
    constexpr qint64 groß = 1'000'000;
    const QString marke = inhaltsmarke(schreibe(u"a"_s, groß, -1));
    EXPECT_EQ(inhaltsmarke(schreibe(u"b"_s, groß, -1)), marke);
    for (const qint64 stelle : {qint64{0}, groß / 3, groß / 2, groß - 20'000}) {
        EXPECT_NE(inhaltsmarke(schreibe(u"c"_s, groß, stelle)), marke) << stelle;
    }
    EXPECT_NE(inhaltsmarke(schreibe(u"d"_s, groß + 1, -1)), marke);
    EXPECT_NE(inhaltsmarke(schreibe(u"e"_s, 0, -1)), QString());
    EXPECT_EQ(inhaltsmarke(in(u"none"_s)), QString());
}

TEST(Bildauflösung, writtenByPrograms_countsWhenItCanBeTrue) {
    struct Fall {
        double x, y;
        std::optional<int> dpi;
    };
    for (const Fall& f : {Fall{1200, 1200, 1200},
                          {300, 300, 300},
                          {9600, 9600, 9600},
                          {72, 72, {}},
                          {96, 96, {}},
                          {299, 299, {}},
                          {9700, 9700, {}},
                          {1200, 1205, 1200},
                          {1200, 2400, {}},
                          {3048, 3048, 3048}}) {
        QImage bild(8, 8, QImage::Format_RGB32);
        bild.fill(Qt::white);
        bild.setDotsPerMeterX(qRound(f.x / 0.0254));
        bild.setDotsPerMeterY(qRound(f.y / 0.0254));
        for (const char* format : {"BMP", "PNG", "JPG"}) {
            QBuffer datei;
            datei.open(QIODevice::ReadWrite);
            ASSERT_TRUE(bild.save(&datei, format));
            EXPECT_EQ(bildauflösung(datei), f.dpi) << format << ' ' << f.x << ' ' << f.y;
            for (const qsizetype länge : {0, 3, 16}) { // cut short: nothing, and no fault
                QByteArray stück = datei.data().first(länge);
                QBuffer kurz(&stück);
                kurz.open(QIODevice::ReadOnly);
                EXPECT_EQ(bildauflösung(kurz), std::nullopt);
            }
        }
    }
    EXPECT_EQ(bildauflösung(u"/no/such/file.jpg"_s), std::nullopt);
}

TEST(Bildauflösung, tiffAndExif_areReadInBothByteOrders) {
    // Header, three entries (x, y, unit), two fractions.
    const auto verzeichnis = [](bool groß, quint32 zähler, quint32 nenner, quint16 einheit) {
        QByteArray b;
        QDataStream s(&b, QIODevice::WriteOnly);
        s.setByteOrder(groß ? QDataStream::BigEndian : QDataStream::LittleEndian);
        s.writeRawData(groß ? "MM" : "II", 2);
        s << quint16{42} << quint32{8} << quint16{3};
        s << quint16{282} << quint16{5} << quint32{1} << quint32{50};
        s << quint16{283} << quint16{5} << quint32{1} << quint32{50};
        s << quint16{296} << quint16{3} << quint32{1} << einheit << quint16{0};
        s << quint32{0} << zähler << nenner;
        return b;
    };
    struct Fall {
        quint32 zähler, nenner;
        quint16 einheit;
        std::optional<int> dpi;
    };
    for (const Fall& f :
         {Fall{12000, 10, 2, 1200}, {4724, 10, 3, 1200}, {72, 1, 2, {}}, {1200, 0, 2, {}}}) {
        for (const bool groß : {false, true}) {
            const QByteArray tiff = verzeichnis(groß, f.zähler, f.nenner, f.einheit);
            const QByteArray jfif72("\xFF\xE0\0\x10JFIF\0\1\1\1\0\x48\0\x48\0\0", 18);
            const QByteArray exif = QByteArray("\xFF\xE1\0\x48"
                                               "Exif\0\0",
                                               10) +
                                    tiff;
            for (const QByteArray& inhalt : {tiff, "\xFF\xD8" + jfif72 + exif + "\xFF\xD9"}) {
                QByteArray kopie = inhalt;
                QBuffer datei(&kopie);
                datei.open(QIODevice::ReadOnly);
                EXPECT_EQ(bildauflösung(datei), f.dpi) << f.zähler << groß;
            }
        }
    }
}
