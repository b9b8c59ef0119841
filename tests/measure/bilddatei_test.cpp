#include "measure/bilddatei.h"

#include "measure/bilderproben.h"
#include "support/testordner.h"

#include <QImageReader>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <semaphore>
#include <thread>
#include <vector>

#include <jpeglib.h>

using namespace tarvel;
using namespace Qt::StringLiterals;
using Art = Bildfehler::Art;

namespace {

/// Every pixel differs from its neighbours, and rows need padding in every format.
QImage muster(int breite = 13, int höhe = 7) {
    QImage bild(breite, höhe, QImage::Format_RGB888);
    for (int y = 0; y < höhe; ++y)
        for (int x = 0; x < breite; ++x)
            bild.setPixel(x, y, qRgb(x * 19 % 256, y * 36 % 256, (x + y) * 12 % 256));
    return bild;
}

QImage graumuster(int breite = 13, int höhe = 7) {
    return muster(breite, höhe).convertToFormat(QImage::Format_Grayscale8);
}

/// Without sharp edges, so that lossy formats keep it.
QImage verlauf(int breite, int höhe) {
    QImage bild(breite, höhe, QImage::Format_RGB888);
    for (int y = 0; y < höhe; ++y)
        for (int x = 0; x < breite; ++x)
            bild.setPixel(x, y, qRgb(255 * x / breite, 255 * y / höhe, 128));
    return bild;
}

/// A bitmap of 32 bits a pixel whose fourth bytes are zero, top row first.
QByteArray bmp32VonOben(const QImage& bild) {
    QByteArray bytes = gespeichert(bild, "bmp").left(54);
    setze<qint32>(bytes, 22, -bild.height());
    setze<quint16>(bytes, 28, 32);
    for (int y = 0; y < bild.height(); ++y)
        for (int x = 0; x < bild.width(); ++x) {
            const QRgb p = bild.pixel(x, y);
            for (const int farbe : {qBlue(p), qGreen(p), qRed(p), 0})
                bytes.append(static_cast<char>(farbe));
        }
    return bytes;
}

/// 2 x 1 pixels, black and white.
const QByteArray Gif = QByteArray::fromHex("47494638396102000100800000000000ffffff"
                                           "2c000000000200010000020244"
                                           "0a003b");

/// A picture of four inks, all pixels alike; with the marker the inks are stored inverted.
QByteArray druckfarbenJpeg(bool adobe, std::array<JSAMPLE, 4> farbe) {
    jpeg_compress_struct jpeg{};
    jpeg_error_mgr melder{};
    jpeg.err = jpeg_std_error(&melder);
    jpeg_create_compress(&jpeg);
    unsigned char* bytes = nullptr;
    unsigned long anzahl = 0;
    jpeg_mem_dest(&jpeg, &bytes, &anzahl);
    jpeg.image_width = 16;
    jpeg.image_height = 16;
    jpeg.input_components = 4;
    jpeg.in_color_space = JCS_CMYK;
    jpeg_set_defaults(&jpeg);
    jpeg.write_Adobe_marker = adobe ? TRUE : FALSE;
    jpeg_start_compress(&jpeg, TRUE);
    std::array<JSAMPLE, 64> zeile{};
    for (std::size_t i = 0; i < zeile.size(); ++i)
        zeile[i] = farbe[i % 4];
    JSAMPROW zeiger = zeile.data();
    for (int y = 0; y < 16; ++y)
        jpeg_write_scanlines(&jpeg, &zeiger, 1);
    jpeg_finish_compress(&jpeg);
    QByteArray ergebnis(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(anzahl));
    jpeg_destroy_compress(&jpeg);
    std::free(bytes);
    return ergebnis;
}

double größterUnterschied(const QImage& a, const QImage& b) {
    if (a.size() != b.size())
        return 1e9;
    int unterschied = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            unterschied =
                std::max({unterschied, std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                          std::abs(qBlue(p) - qBlue(q)), 255 - qAlpha(p)});
        }
    return unterschied;
}

class BilddateiTest : public testing::Test {
protected:
    QString datei(const QByteArray& bytes, const QString& name = u"flügel.dat"_s) {
        return ordner_.schreibe(name, bytes);
    }

    Testordner ordner_;
};

TEST_F(BilddateiTest, openEachFormatUnderAnyName_givesSizeAndPixels) {
    const QImage bunt = muster();
    const QImage grau = graumuster();
    const QImage weich = verlauf(64, 48);
    QImage tafel = bunt.convertToFormat(QImage::Format_Indexed8);
    QImage durchsichtig(3, 2, QImage::Format_ARGB32);
    durchsichtig.fill(Qt::transparent);
    QImage papier(3, 2, QImage::Format_RGB32);
    papier.fill(Qt::white);
    QImage schwarzweiß(2, 1, QImage::Format_RGB32);
    schwarzweiß.setPixel(0, 0, qRgb(0, 0, 0));
    schwarzweiß.setPixel(1, 0, qRgb(255, 255, 255));

    const struct {
        const char* was;
        QByteArray bytes;
        QImage erwartet;
        QImage::Format format;
        double unterschied;
    } fälle[] = {
        {"jpeg", gespeichert(weich, "jpg"), weich, QImage::Format_RGB888, 6},
        {"jpeg progressive", gespeichert(weich, "jpg", -1, true), weich, QImage::Format_RGB888, 6},
        {"jpeg grey", gespeichert(weich.convertToFormat(QImage::Format_Grayscale8), "jpg"),
         weich.convertToFormat(QImage::Format_Grayscale8), QImage::Format_Grayscale8, 4},
        {"bmp 24", gespeichert(bunt, "bmp"), bunt, QImage::Format_BGR888, 0},
        {"bmp 8 colours", gespeichert(tafel, "bmp"), tafel, QImage::Format_RGB888, 0},
        {"bmp 8 grey", gespeichert(grau.convertToFormat(QImage::Format_Indexed8), "bmp"), grau,
         QImage::Format_Grayscale8, 0},
        {"bmp 32 top down", bmp32VonOben(bunt), bunt, QImage::Format_RGB32, 0},
        {"bmp 1", gespeichert(schwarzweiß.convertToFormat(QImage::Format_Mono), "bmp"), schwarzweiß,
         QImage::Format_Grayscale8, 0},
        {"png", gespeichert(bunt, "png"), bunt, QImage::Format_RGB32, 0},
        {"png grey", gespeichert(grau, "png"), grau, QImage::Format_Grayscale8, 0},
        {"png grey 16", gespeichert(grau.convertToFormat(QImage::Format_Grayscale16), "png"), grau,
         QImage::Format_Grayscale8, 0},
        {"png on paper", gespeichert(durchsichtig, "png"), papier, QImage::Format_RGB32, 0},
        {"tiff", gespeichert(bunt, "tiff"), bunt, QImage::Format_RGB32, 0},
        {"gif", Gif, schwarzweiß, QImage::Format_RGB32, 0},
    };
    for (const auto& fall : fälle) {
        SCOPED_TRACE(fall.was);
        auto offen = Bilddatei::öffne(datei(fall.bytes));
        auto* bild = std::get_if<Bilddatei>(&offen);
        if (bild == nullptr) {
            ADD_FAILURE() << qPrintable(std::get<Bildfehler>(offen).grund);
            continue;
        }
        EXPECT_EQ(bild->größe(), fall.erwartet.size());
        EXPECT_EQ(bild->übersicht().size(), fall.erwartet.size());
        const QImage* pixel = bild->pixel(nullptr);
        ASSERT_NE(pixel, nullptr);
        EXPECT_EQ(pixel->format(), fall.format);
        EXPECT_LE(größterUnterschied(*pixel, fall.erwartet), fall.unterschied);
    }
}

TEST_F(BilddateiTest, openLargePicture_showsReducedOverviewFirst) {
    const QImage bild = verlauf(3400, 90);
    const struct {
        const char* was;
        QByteArray bytes;
        QSize übersicht;
    } fälle[] = {
        {"jpeg, four eighths", gespeichert(bild, "jpg"), {1700, 45}},
        {"bmp, one half", gespeichert(bild, "bmp"), {1700, 45}},
        {"bmp grey, one half",
         gespeichert(bild.convertToFormat(QImage::Format_Grayscale8)
                         .convertToFormat(QImage::Format_Indexed8),
                     "bmp"),
         {1700, 45}},
        {"png, one half", gespeichert(bild, "png"), {1700, 45}},
    };
    for (const auto& fall : fälle) {
        SCOPED_TRACE(fall.was);
        auto offen = Bilddatei::öffne(datei(fall.bytes));
        ASSERT_TRUE(std::holds_alternative<Bilddatei>(offen));
        auto& geöffnet = std::get<Bilddatei>(offen);
        EXPECT_EQ(geöffnet.größe(), bild.size());
        ASSERT_EQ(geöffnet.übersicht().size(), fall.übersicht);
        for (const QPoint ort : {QPoint(10, 5), QPoint(850, 22), QPoint(1690, 40)}) {
            QImage ganz(1, 1, QImage::Format_RGB888);
            ganz.setPixel(0, 0, bild.pixel(ort * 2));
            ganz.convertTo(geöffnet.übersicht().format());
            EXPECT_LE(größterUnterschied(geöffnet.übersicht().copy(QRect(ort, QSize(1, 1))), ganz),
                      8);
        }
        ASSERT_NE(geöffnet.pixel(nullptr), nullptr);
        EXPECT_EQ(geöffnet.pixel(nullptr)->size(), bild.size());
    }
}

TEST_F(BilddateiTest, openJpegOfFourInks_givesItsColours) {
    for (const bool adobe : {true, false}) {
        // Full cyan on white paper, in the way each kind of file stores it.
        const auto farbe =
            adobe ? std::array<JSAMPLE, 4>{0, 255, 255, 255} : std::array<JSAMPLE, 4>{255, 0, 0, 0};
        auto offen = Bilddatei::öffne(datei(druckfarbenJpeg(adobe, farbe)));
        ASSERT_TRUE(std::holds_alternative<Bilddatei>(offen));
        const QRgb p = std::get<Bilddatei>(offen).pixel(nullptr)->pixel(8, 8);
        EXPECT_LT(qRed(p), 10) << adobe;
        EXPECT_GT(qGreen(p), 245) << adobe;
        EXPECT_GT(qBlue(p), 245) << adobe;
    }
}

/// A file with two grey pictures of 4 × 3 and 2 × 2 pixels between which lies a preview; the
/// first is noted as lying on its side.
QByteArray seitenTiff() {
    const struct {
        int breite, höhe, vorschau, lage;
    } seiten[] = {{4, 3, 0, 6}, {1, 1, 1, 1}, {2, 2, 0, 1}};
    QByteArray bytes("II*\0\x08\0\0\0", 8);
    for (int nummer = 0; nummer < 3; ++nummer) {
        const auto& seite = seiten[nummer];
        const int anzahl = seite.breite * seite.höhe;
        constexpr int Einträge = 11;
        const auto pixel = static_cast<int>(bytes.size()) + 2 + Einträge * 12 + 4;
        const std::pair<int, int> werte[Einträge] = {{254, seite.vorschau},
                                                     {256, seite.breite},
                                                     {257, seite.höhe},
                                                     {258, 8},
                                                     {259, 1},
                                                     {262, 1},
                                                     {273, pixel},
                                                     {274, seite.lage},
                                                     {277, 1},
                                                     {278, seite.höhe},
                                                     {279, anzahl}};
        bytes += QByteArray("\x0B\0", 2);
        for (const auto& [was, wert] : werte) {
            QByteArray eintrag(12, '\0');
            setze<quint16>(eintrag, 0, static_cast<quint16>(was));
            setze<quint16>(eintrag, 2, 4);
            setze<quint32>(eintrag, 4, 1);
            setze<quint32>(eintrag, 8, static_cast<quint32>(wert));
            bytes += eintrag;
        }
        QByteArray nächste(4, '\0');
        if (nummer < 2)
            setze<quint32>(nächste, 0, static_cast<quint32>(pixel + anzahl));
        bytes += nächste;
        for (int i = 0; i < anzahl; ++i)
            bytes += static_cast<char>(10 * (nummer + 1) + i);
    }
    return bytes;
}

TEST_F(BilddateiTest, pagesOfAFile_areToldAndReadByTheirNames) {
    const QString pfad = datei(seitenTiff(), u"seiten#1.tif"_s);
    const QList<Bildseite> seiten = Bilddatei::seiten(pfad);
    ASSERT_EQ(seiten.size(), 2); // the preview is none
    EXPECT_EQ(seiten[1].nummer, 3);
    EXPECT_EQ(seiten[1].größe, QSize(2, 2));
    const struct {
        QString name;
        QSize größe;
        int ersterPixel;
    } fälle[] = {{pfad, {4, 3}, 10}, {pfad + u"#2"_s, {1, 1}, 20}, {pfad + u"#3"_s, {2, 2}, 30}};
    for (const auto& fall : fälle) {
        auto offen = Bilddatei::öffne(fall.name);
        ASSERT_TRUE(std::holds_alternative<Bilddatei>(offen)) << qPrintable(fall.name);
        auto& bild = std::get<Bilddatei>(offen);
        EXPECT_EQ(bild.pfad(), fall.name);
        EXPECT_EQ(bild.größe(), fall.größe);
        EXPECT_EQ(Bilddatei::liesGröße(fall.name), fall.größe);
        EXPECT_EQ(qGray(bild.pixel(nullptr)->pixel(0, 0)), fall.ersterPixel);
    }
    EXPECT_TRUE(liesBild(pfad + u"#4"_s).fehler);
    EXPECT_TRUE(liesBild(pfad + u"#01"_s).fehler); // names no page
    EXPECT_TRUE(Bilddatei::seiten(datei(gespeichert(muster(), "tiff"))).isEmpty());
    // A chain of pages that leads back to its beginning.
    QByteArray kreis = seitenTiff();
    setze<quint32>(kreis, 8 + 2 + 11 * 12, 8);
    EXPECT_TRUE(Bilddatei::seiten(datei(kreis)).isEmpty());
}

TEST_F(BilddateiTest, notedOrientation_leavesPixelsWhereTheyAreStored) {
    const QImage bild = verlauf(64, 48);
    QByteArray jpeg = gespeichert(bild, "jpg");
    // Exif with one entry: to be turned by a quarter.
    jpeg.insert(2, QByteArray::fromHex("ffe100224578696600004d4d002a00000008"
                                       "00010112000300000001000600000000"
                                       "0000"));
    std::vector<QByteArray> gedrehte{jpeg};
    for (const QImage::Format art : {QImage::Format_RGB888, QImage::Format_ARGB32}) {
        QBuffer puffer(&gedrehte.emplace_back());
        QImageWriter schreiber(&puffer, "tiff");
        schreiber.setTransformation(QImageIOHandler::TransformationRotate90); // noted, not done
        ASSERT_TRUE(schreiber.write(bild.convertToFormat(art)));
    }
    for (const QByteArray& bytes : gedrehte) {
        const QString pfad = datei(bytes);
        EXPECT_EQ(QImageReader(pfad).transformation(), QImageIOHandler::TransformationRotate90);
        auto offen = Bilddatei::öffne(pfad);
        ASSERT_TRUE(std::holds_alternative<Bilddatei>(offen));
        EXPECT_EQ(Bilddatei::liesGröße(pfad), QSize(64, 48));
        EXPECT_LE(größterUnterschied(*std::get<Bilddatei>(offen).pixel(nullptr), bild), 6);
    }
}

TEST_F(BilddateiTest, stoppedAtAnyTime_givesNoPictureAndNoFault) {
    const QImage bild = muster(1700, 40);
    for (const char* format : {"jpg", "bmp", "png", "tiff"}) {
        const QString pfad = datei(gespeichert(bild, format, -1, true));
        int fragen = 0;
        const Weiter zähle = [&](qint64 getan, qint64 gesamt) {
            EXPECT_LE(getan, gesamt) << format;
            ++fragen;
            return true;
        };
        ASSERT_TRUE(std::holds_alternative<Bilddatei>(Bilddatei::öffne(pfad, zähle))) << format;
        ASSERT_GT(fragen, 0) << format;
        const auto offen = Bilddatei::öffne(pfad, [](qint64, qint64) { return false; });
        const auto* f = std::get_if<Bildfehler>(&offen);
        ASSERT_NE(f, nullptr) << format;
        EXPECT_EQ(f->art, Art::Abgebrochen) << format;
    }
}

TEST_F(BilddateiTest, pixelsForSeveralThreads_areDecodedOnce_whoeverGivesUp) {
    const QImage bild = verlauf(3400, 900);
    const QString pfad = datei(gespeichert(bild, "jpg"));
    const struct {
        bool gibtAuf;
        bool fürAlle;
    } fälle[] = {{true, true}, {true, false}, {false, true}};
    for (const auto& fall : fälle) {
        SCOPED_TRACE(fall.gibtAuf * 2 + fall.fürAlle);
        auto offen = Bilddatei::öffne(pfad);
        Pixelladung& ladung = *std::get<Bilddatei>(offen).ladung();
        std::binary_semaphore begonnen{0};
        std::atomic<bool> gewartet = false;
        QImage erstes;
        std::jthread erster([&] {
            erstes = ladung.hole(nullptr, [&](qint64, qint64) {
                if (!gewartet) {
                    begonnen.release();
                    gewartet.wait(false);
                }
                return true;
            });
        });
        begonnen.acquire();
        Bildfehler fehler;
        const QImage zweites = ladung.hole(
            &fehler,
            [&](qint64, qint64) {
                if (!fall.gibtAuf) {
                    gewartet = true;
                    gewartet.notify_all();
                }
                return !fall.gibtAuf;
            },
            fall.fürAlle);
        gewartet = true;
        gewartet.notify_all();
        erster.join();
        EXPECT_EQ(zweites.isNull(), fall.gibtAuf);
        EXPECT_EQ(erstes.isNull(), fall.gibtAuf && fall.fürAlle);
        EXPECT_TRUE(!fall.gibtAuf || fehler.art == Art::Abgebrochen);
        EXPECT_TRUE(fall.gibtAuf || erstes.cacheKey() == zweites.cacheKey());
        ASSERT_NE(std::get<Bilddatei>(offen).pixel(nullptr), nullptr);
    }
}

TEST_F(BilddateiTest, fileChangesAfterOpening_pixelsAreAllOrNone) {
    const QImage bild = verlauf(3400, 90);
    for (const char* format : {"jpg", "bmp"}) {
        const QByteArray bytes = gespeichert(bild, format);
        const struct {
            const char* was;
            std::function<void(const QString&)> tue;
            Art art;
        } fälle[] = {
            {"gone", [](const QString& pfad) { QFile::remove(pfad); }, Art::NichtGefunden},
            {"cut", [&](const QString& pfad) { QFile::resize(pfad, bytes.size() / 2); },
             Art::Abgeschnitten},
            {"emptied", [](const QString& pfad) { QFile::resize(pfad, 0); }, Art::Leer},
            {"another", [&](const QString&) { datei(gespeichert(verlauf(50, 40), format)); },
             Art::Unlesbar},
        };
        for (const auto& fall : fälle) {
            SCOPED_TRACE(fall.was);
            auto offen = Bilddatei::öffne(datei(bytes));
            ASSERT_TRUE(std::holds_alternative<Bilddatei>(offen));
            auto& geöffnet = std::get<Bilddatei>(offen);
            fall.tue(geöffnet.pfad());
            Bildfehler f;
            EXPECT_EQ(geöffnet.pixel(&f), nullptr);
            EXPECT_EQ(f.art, fall.art);

            datei(bytes);
            ASSERT_NE(geöffnet.pixel(&f), nullptr) << "the file is back";
            EXPECT_EQ(geöffnet.pixel(&f)->size(), bild.size());
        }
    }
}

} // namespace
