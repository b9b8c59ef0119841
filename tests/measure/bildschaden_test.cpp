// Pictures that are cut off, lie about themselves or are none at all. Whatever the file holds, it
// is read to the last pixel or refused for a reason, and no part of a picture is ever shown.

#include "measure/bilddatei.h"

#include "measure/bilderproben.h"
#include "support/testordner.h"

#include <gmock/gmock.h>

#include <limits>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::AnyOf;
using Art = Bildfehler::Art;

namespace {

class Bildschaden : public testing::Test {
protected:
    QString datei(const QByteArray& bytes) const {
        return ordner_.schreibe(u"flügel.jpg"_s, bytes);
    }
    Lesung lies(const QByteArray& bytes) const { return liesBild(datei(bytes)); }

    Testordner ordner_;
};

} // namespace

TEST_F(Bildschaden, cutAnywhere_isWholeOrRefused) {
    const QSize größe = qEnvironmentVariableIsSet("TARVEL_LONG") ? QSize(640, 480) : QSize(96, 80);
    for (const Bildprobe& probe : bildproben(größe)) {
        SCOPED_TRACE(probe.was);
        const QString pfad = datei(probe.bytes);
        const Lesung ganz = liesBild(pfad);
        ASSERT_FALSE(ganz.fehler) << ganz.fehler->grund.toStdString();
        // The last bytes of the others carry nothing of the picture.
        const bool bisZuletzt = probe.was.starts_with("jpeg") || probe.was.starts_with("bmp") ||
                                probe.was.starts_with("tiff");
        // Within the first kilobyte, where the headers are, at every place.
        for (qsizetype rest = probe.bytes.size() - 1; rest >= 0; rest -= rest > 1024 ? 1024 : 1) {
            ASSERT_TRUE(QFile::resize(pfad, rest));
            const Lesung lesung = liesBild(pfad);
            if (lesung.fehler) {
                ASSERT_THAT(lesung.fehler->art, AnyOf(Art::Abgeschnitten, Art::Unlesbar, Art::Leer))
                    << rest;
            } else {
                ASSERT_FALSE(bisZuletzt) << "cut to " << rest;
                ASSERT_EQ(lesung.bild, ganz.bild) << "cut to " << rest;
            }
        }
    }
}

TEST_F(Bildschaden, endInTheMiddleOfJpeg_isAFault) {
    QByteArray bytes = gespeichert(rauschen({300, 200}), "jpg");
    bytes.replace(bytes.size() / 2, 2, QByteArray::fromHex("ffd9"));
    EXPECT_EQ(lies(bytes).art(), Art::Abgeschnitten);
}

TEST_F(Bildschaden, headerPromisesTooMuch_isRefusedBeforeMemoryIsTaken) {
    for (const Bildprobe& probe : bildproben({40, 30})) {
        for (const auto& [seite, art] :
             {std::pair{60000, Art::ZuGross}, {17000, Art::Abgeschnitten}, {0, Art::Unlesbar}}) {
            const QByteArray bytes = mitGröße(probe.bytes, {seite, seite});
            if (bytes.isEmpty()) {
                continue;
            }
            SCOPED_TRACE(probe.was + ' ' + std::to_string(seite));
            const QString pfad = datei(bytes);
            const auto fehler = liesBild(pfad).fehler;
            ASSERT_TRUE(fehler);
            // As many pixels are allowed, but not at eight bytes each.
            const bool tief = seite > 0 && probe.was == "png 16 bits, alpha";
            EXPECT_TRUE(seite == 0 || fehler->art == (tief ? Art::ZuGross : art));
            EXPECT_TRUE(fehler->art != Art::ZuGross ||
                        fehler->grund.contains(u"%1 × %1"_s.arg(seite)));
            int fragen = 0; // whoever decodes asks whether to go on
            (void)Bilddatei::öffne(pfad, [&](qint64, qint64) { return ++fragen > 0; });
            EXPECT_EQ(fragen, 0);
        }
    }
    const auto maße = [](const char* anfang) { return QByteArray(anfang) + "60000 60000\n255\n0"; };
    for (const QByteArray& bytes :
         {maße("P5\n"), maße("P6\n"), maße("P3\n"), QByteArray("P4\n60000 60000\n0"),
          tiff({60000, 60000}, 8, QByteArray(100, 'x')),
          tiff({60000, 60000}, 1, QByteArray(100, 'x')),
          png({60000, 60000}, 1, 0, QByteArray(1000, '\0')),
          png({60000, 60000}, 8, 2, QByteArray(1000, '\0'), true)}) {
        EXPECT_THAT(lies(bytes).art(), AnyOf(Art::ZuGross, Art::Unlesbar)) << bytes.toStdString();
    }
    QByteArray fläche = gif({4, 3}, 1);
    setze<quint16>(fläche, 6, 19000);
    setze<quint16>(fläche, 8, 19000);
    EXPECT_TRUE(lies(fläche).fehler) << "a small picture on a huge area";
    const QByteArray bmp = gespeichert(rauschen({13, 7}), "bmp");
    for (const QSize verkehrt : {QSize(13, std::numeric_limits<int>::min()), QSize(-13, 7)}) {
        EXPECT_TRUE(lies(mitGröße(bmp, verkehrt)).fehler);
    }
}

TEST_F(Bildschaden, countsOfAPage_areTakenForWhatTheyCanBe) {
    // Hundreds of pages that share their entries, thousands each.
    constexpr int Einträge = 4096;
    constexpr int Ende = 2 + Einträge * 12;
    QByteArray viele("II*\0\x08\0\0\0", 8);
    viele += QByteArray(Ende + 8 * 999, '\0');
    for (int i = 0; i < 999; ++i) {
        setze<quint16>(viele, 8 + 8 * i, Einträge);
        setze<quint32>(viele, 8 + 8 * i + Ende, static_cast<quint32>(8 + 8 * (i + 1)));
    }
    EXPECT_LT(Bilddatei::seiten(datei(viele)).size(), 30);
    // As many values that their length in bytes is none.
    QByteArray groß("II+\0\x08\0\0\0\x10\0\0\0\0\0\0\0\x02\0\0\0\0\0\0\0", 24);
    for (const int marke : {256, 257}) {
        QByteArray eintrag(20, '\0');
        setze<quint16>(eintrag, 0, static_cast<quint16>(marke));
        setze<quint16>(eintrag, 2, 3);
        setze<quint64>(eintrag, 4, 1);
        setze<quint64>(eintrag, 12, 7);
        groß += eintrag;
    }
    groß += QByteArray(8, '\0');
    EXPECT_EQ(Bilddatei::liesGröße(datei(groß)), QSize(7, 7));
    setze<quint64>(groß, 24 + 4, quint64{1} << 63U);
    EXPECT_EQ(Bilddatei::liesGröße(datei(groß)), std::nullopt);
    for (const int stelle : {24, 44}) { // more pixels than a number holds
        setze<quint16>(groß, stelle + 2, 4);
        setze<quint64>(groß, stelle + 4, 1);
        setze<quint32>(groß, stelle + 12, 0x7FFFFFFF);
    }
    EXPECT_EQ(lies(groß).art(), Art::ZuGross);
}

TEST_F(Bildschaden, whatIsNoPicture_isRefusedWhateverItsName) {
    EXPECT_EQ(liesBild(ordner_.filePath(u"fehlt.jpg"_s)).art(), Art::NichtGefunden);
    EXPECT_EQ(liesBild(ordner_.path()).art(), Art::Unlesbar);
    EXPECT_EQ(lies({}).art(), Art::Leer);
    const QByteArrayList raster = {"bmp", "gif", "jpeg", "jpg",  "pbm", "pgm",
                                   "png", "ppm", "tif",  "tiff", "webp"};
    const QByteArrayList schreibbar = QImageWriter::supportedImageFormats();
    for (const QByteArray& format : schreibbar) {
        if (!raster.contains(format)) {
            EXPECT_EQ(lies(gespeichert(rauschen({16, 16}), format)).art(), Art::Unlesbar)
                << format.toStdString();
        }
    }
    for (const QByteArray& bytes :
         {QByteArray("Carnica, 31 Flügel\n"),
          QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='60000' height='60000'/>"),
          QByteArray("%PDF-1.7\n"), QByteArray("#!/bin/sh\ntouch getan\n"),
          QByteArray("MZ\x90\0", 4),
          QByteArray("\x8AMNG\r\n\x1A\n\0\0\0\x1CMHDR\0\0\xEA\x60\0\0\xEA\x60", 24),
          QByteArray("icns\0\0\0\x10ic10\0\0\0\x08", 16),
          QByteArray("\0\0\x02\0\0\0\0\0\0\0\0\0\x60\xEA\x60\xEA\x20\x08", 18),
          QByteArray("/* XPM */\nstatic char*x[]={\"60000 60000 1 1\",\"a c #000\"};"),
          QByteArray("#define x_width 60000\n#define x_height 60000\n"),
          QByteArray("\0\0\0\x18"
                     "ftypheic\0\0\0\0",
                     16)}) {
        EXPECT_EQ(lies(bytes).art(), Art::Unlesbar) << bytes.toStdString();
    }
}
