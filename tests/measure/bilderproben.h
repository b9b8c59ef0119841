#pragma once

#include "measure/bilddatei.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>
#include <QtEndian>

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>
#include <vector>

// Pictures of every kind that the program reads, and the parts they are made of, so that a test can
// make each part say something wrong.

namespace tarvel {

/// Pixels that no format packs, so that a file has as many bytes as it can.
inline QImage rauschen(QSize größe) {
    std::mt19937 zufall{1}; // NOLINT(cert-msc32-c,cert-msc51-cpp): the same in every run
    QImage bild(größe, QImage::Format_RGB32);
    for (int y = 0; y < größe.height(); ++y) {
        for (int x = 0; x < größe.width(); ++x) {
            bild.setPixel(x, y, static_cast<QRgb>(zufall()) | 0xFF000000U);
        }
    }
    return bild;
}

/// Writes a number of a file's head at its place.
template <typename T>
void setze(QByteArray& bytes, int stelle, T wert) {
    qToLittleEndian(wert, bytes.data() + stelle);
}

inline QByteArray gespeichert(const QImage& bild, const QByteArray& format, int packung = -1,
                              bool stufenweise = false) {
    QBuffer puffer;
    puffer.open(QIODevice::WriteOnly);
    QImageWriter schreiber(&puffer, format);
    schreiber.setCompression(packung);
    schreiber.setQuality(format == "tiff" ? -1 : 100);
    schreiber.setProgressiveScanWrite(stufenweise);
    EXPECT_TRUE(schreiber.write(bild)) << format.toStdString();
    return puffer.data();
}

template <typename T>
QByteArray groß(T wert) {
    QByteArray bytes(sizeof wert, '\0');
    qToBigEndian(wert, bytes.data());
    return bytes;
}
template <typename T>
QByteArray klein(T wert) {
    QByteArray bytes(sizeof wert, '\0');
    qToLittleEndian(wert, bytes.data());
    return bytes;
}

/// @name PNG: sections of length, name, content and check sum
/// @{
inline quint32 prüfsumme(QByteArrayView bytes) {
    quint32 summe = 0xFFFFFFFFU;
    for (const char zeichen : bytes) {
        summe ^= static_cast<uchar>(zeichen);
        for (int i = 0; i < 8; ++i) {
            summe = (summe >> 1U) ^ ((summe & 1U) != 0 ? 0xEDB88320U : 0U);
        }
    }
    return ~summe;
}
inline QByteArray abschnitt(const QByteArray& name, const QByteArray& inhalt) {
    return groß(static_cast<quint32>(inhalt.size())) + name + inhalt +
           groß(prüfsumme(name + inhalt));
}
/// @p gepackt the rows as they stand in the file.
inline QByteArray pngAus(QSize größe, int bits, int farbart, const QByteArray& gepackt,
                         bool verschränkt) {
    const QByteArray kopf = groß(static_cast<quint32>(größe.width())) +
                            groß(static_cast<quint32>(größe.height())) + static_cast<char>(bits) +
                            static_cast<char>(farbart) + QByteArray(2, '\0') +
                            (verschränkt ? '\1' : '\0');
    return "\x89PNG\r\n\x1A\n" + abschnitt("IHDR", kopf) + abschnitt("IDAT", gepackt) +
           abschnitt("IEND", {});
}
inline QByteArray png(QSize größe, int bits, int farbart, const QByteArray& zeilen,
                      bool verschränkt = false) {
    return pngAus(größe, bits, farbart, qCompress(zeilen).mid(4), verschränkt);
}
inline QByteArray mitPixeln(QSize größe, const QByteArray& gepackt) {
    return pngAus(größe, 8, 0, gepackt, false);
}
inline QByteArray mitAbschnitt(QByteArray png, const QByteArray& name, const QByteArray& inhalt) {
    constexpr int hinterDemKopf = 33;
    return png.insert(hinterDemKopf, abschnitt(name, inhalt));
}
/// A PNG whose header was changed with a check sum that is right again; others as they are.
inline QByteArray mitPrüfsummen(QByteArray bytes) {
    if (bytes.startsWith("\x89PNG") && bytes.size() > 33) {
        bytes.replace(29, 4, groß(prüfsumme(QByteArrayView(bytes).sliced(12, 17))));
    }
    return bytes;
}
/// Every pass of an interlaced picture, noise.
inline QByteArray verschränktesPng(QSize größe) {
    struct Durchgang {
        int x, y, dx, dy;
    } static constexpr durchgänge[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                                       {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
    const QImage bild = rauschen(größe);
    QByteArray zeilen;
    for (const Durchgang& d : durchgänge) {
        for (int y = d.y; y < größe.height() && d.x < größe.width(); y += d.dy) {
            zeilen += '\0';
            for (int x = d.x; x < größe.width(); x += d.dx) {
                zeilen += static_cast<char>(qRed(bild.pixel(x, y)));
            }
        }
    }
    return png(größe, 8, 0, zeilen, true);
}
/// @}

/// A TIFF of one strip; with four values a pixel the last is alpha.
inline QByteArray tiff(QSize größe, int bits, const QByteArray& pixel, int werte = 1,
                       bool gepackt = false) {
    struct Eintrag {
        quint16 was;
        quint32 wert;
    };
    constexpr int anzahl = 9;
    constexpr quint32 tiefen = 8 + 2 + anzahl * 12 + 4;
    const quint32 ort = tiefen + 8;
    const Eintrag einträge[anzahl] = {{256, static_cast<quint32>(größe.width())},
                                      {257, static_cast<quint32>(größe.height())},
                                      {258, werte == 1 ? static_cast<quint32>(bits) : tiefen},
                                      {259, gepackt ? 8U : 1U},
                                      {262, werte == 1 ? 1U : 2U},
                                      {273, ort},
                                      {277, static_cast<quint32>(werte)},
                                      {278, static_cast<quint32>(größe.height())},
                                      {279, static_cast<quint32>(pixel.size())}};
    QByteArray bytes = QByteArray("II*\0", 4) + klein(quint32{8}) + klein(quint16{anzahl});
    for (const Eintrag& eintrag : einträge) {
        const bool reihe = eintrag.was == 258 && werte > 1;
        bytes += klein(eintrag.was) + klein(quint16(reihe ? 3 : 4)) +
                 klein(quint32(reihe ? werte : 1)) + klein(eintrag.wert);
    }
    return bytes + klein(quint32{0}) + klein(static_cast<quint16>(bits)).repeated(4) + pixel;
}

/// A bitmap of eight bits a pixel in runs of ever the same length, or a map written as text.
inline QByteArray bmpInLäufen(QSize größe) {
    constexpr quint32 vorPixeln = 14 + 40 + 256 * 4;
    QByteArray läufe;
    for (int y = 0; y < größe.height(); ++y) {
        for (int x = 0; x < größe.width(); x += 2) {
            läufe += QByteArray("\2", 1) + static_cast<char>(x + y);
        }
        läufe += QByteArray(2, '\0');
    }
    return "BM" + klein(static_cast<quint32>(vorPixeln + läufe.size() + 2)) + klein(quint32{0}) +
           klein(vorPixeln) + klein(quint32{40}) + klein(qint32{größe.width()}) +
           klein(qint32{größe.height()}) + klein(quint16{1}) + klein(quint16{8}) +
           klein(quint32{1}) + klein(static_cast<quint32>(läufe.size() + 2)) +
           QByteArray(16 + 256 * 4, '\0') + läufe + QByteArray("\0\1", 2);
}
inline QByteArray pgmAlsText(QSize größe) {
    return "P2\n" + QByteArray::number(größe.width()) + ' ' + QByteArray::number(größe.height()) +
           "\n255\n" + QByteArray("7 ").repeated(größe.width() * größe.height());
}

/// A GIF with as many pictures; its codes are never packed.
inline QByteArray gif(QSize größe, int bilder) {
    const QByteArray maße =
        klein(static_cast<quint16>(größe.width())) + klein(static_cast<quint16>(größe.height()));
    QByteArray bytes = "GIF89a" + maße + "\xF7" + QByteArray(2, '\0');
    for (int i = 0; i < 256; ++i) {
        bytes += QByteArray(3, static_cast<char>(i));
    }
    const QImage bild = rauschen(größe);
    QByteArray codes;
    quint32 rest = 0;
    int bits = 0;
    const auto schreibe = [&](quint32 code) {
        rest |= code << bits;
        for (bits += 9; bits >= 8; bits -= 8, rest >>= 8U) {
            codes += static_cast<char>(rest & 0xFFU);
        }
    };
    constexpr quint32 neuanfang = 256;
    int seitNeuanfang = 0;
    for (int i = 0; i < größe.width() * größe.height(); ++i) {
        if (seitNeuanfang-- == 0) { // before codes become longer
            schreibe(neuanfang);
            seitNeuanfang = 250;
        }
        schreibe(static_cast<quint32>(qRed(bild.pixel(i % größe.width(), i / größe.width()))));
    }
    schreibe(neuanfang + 1);
    codes += static_cast<char>(rest);
    QByteArray blöcke;
    for (qsizetype i = 0; i < codes.size(); i += 255) {
        const QByteArray block = codes.mid(i, 255);
        blöcke += static_cast<char>(block.size()) + block;
    }
    for (int i = 0; i < bilder; ++i) {
        bytes += QByteArray("!\xF9\4\0\5\0\0\0", 8) + "," + QByteArray(4, '\0') + maße +
                 QByteArray(1, '\0') + '\x08' + blöcke + '\0';
    }
    return bytes + ';';
}

/// A JPEG whose last scan comes that many times more.
inline QByteArray vielstufig(QSize größe, int anzahl) {
    QImage grau(größe, QImage::Format_Grayscale8);
    grau.fill(100);
    QByteArray bytes = gespeichert(grau, "jpg", -1, true);
    const qsizetype letzter = bytes.lastIndexOf(QByteArray::fromHex("ffda"));
    const QByteArray durchgang = bytes.sliced(letzter).chopped(2);
    return bytes.chopped(2) + durchgang.repeated(anzahl) + QByteArray::fromHex("ffd9");
}

/// The same file with another size in its header; empty for kinds whose header has no fixed place.
inline QByteArray mitGröße(QByteArray bytes, QSize größe) {
    const auto setze = [&bytes](qsizetype stelle, const QByteArray& was) {
        bytes.replace(stelle, was.size(), was);
    };
    const int b = größe.width();
    const int h = größe.height();
    if (bytes.startsWith("\x89PNG")) {
        setze(16, groß(qint32{b}) + groß(qint32{h}));
    } else if (bytes.startsWith("BM")) {
        setze(18, klein(qint32{b}) + klein(qint32{h}));
    } else if (bytes.startsWith("GIF")) {
        const QByteArray maße = klein(static_cast<quint16>(b)) + klein(static_cast<quint16>(h));
        const QByteArray bisher = bytes.mid(6, 4); // stands there again for each picture
        setze(6, maße);
        bytes.replace(',' + QByteArray(4, '\0') + bisher, ',' + QByteArray(4, '\0') + maße);
    } else if (bytes.startsWith("\xFF\xD8")) {
        const qsizetype einfach = bytes.indexOf(QByteArray::fromHex("ffc0"));
        const qsizetype rahmen =
            einfach >= 0 ? einfach : bytes.indexOf(QByteArray::fromHex("ffc2"));
        setze(rahmen + 5, groß(static_cast<quint16>(h)) + groß(static_cast<quint16>(b)));
    } else {
        return {};
    }
    return mitPrüfsummen(bytes);
}

/// A picture with all its pixels, or why there is none.
struct Lesung {
    std::optional<Bildfehler> fehler;
    QImage bild;

    [[nodiscard]] std::optional<Bildfehler::Art> art() const {
        return fehler ? std::optional(fehler->art) : std::nullopt;
    }
};

/// Opens the file and reads all pixels.
inline Lesung liesBild(const QString& pfad) {
    auto offen = Bilddatei::öffne(pfad);
    if (const auto* fehler = std::get_if<Bildfehler>(&offen)) {
        return {*fehler, {}};
    }
    auto& datei = std::get<Bilddatei>(offen);
    Bildfehler fehler;
    const QImage* pixel = datei.pixel(&fehler);
    if (pixel == nullptr) {
        return {fehler, {}};
    }
    EXPECT_EQ(pixel->size(), datei.größe());
    EXPECT_FALSE(datei.übersicht().isNull());
    return {{}, *pixel};
}

struct Bildprobe {
    std::string was;
    QByteArray bytes;
};

/// One of each kind that the program reads.
inline std::vector<Bildprobe> bildproben(QSize größe) {
    const QImage bild = rauschen(größe);
    const QImage grau = bild.convertToFormat(QImage::Format_Grayscale8);
    const QImage tafel = grau.convertToFormat(QImage::Format_Indexed8);
    QByteArray zeilen;
    for (int y = 0; y < größe.height(); ++y) {
        zeilen += QByteArray(reinterpret_cast<const char*>(grau.constScanLine(y)), größe.width());
    }
    std::vector<Bildprobe> proben = {
        {"jpeg", gespeichert(bild, "jpg")},
        {"jpeg in steps", gespeichert(bild, "jpg", -1, true)},
        {"jpeg grey", gespeichert(grau, "jpg")},
        {"bmp 24", gespeichert(bild, "bmp")},
        {"bmp 8", gespeichert(tafel, "bmp")},
        {"bmp 1", gespeichert(bild.convertToFormat(QImage::Format_Mono), "bmp")},
        {"png", gespeichert(bild, "png")},
        {"png of a palette", gespeichert(tafel, "png")},
        {"png 16 bits, alpha", gespeichert(bild.convertToFormat(QImage::Format_RGBA64), "png")},
        {"png interlaced", verschränktesPng(größe)},
        {"gif", gif(größe, 1)},
        {"gif animated", gif(größe, 3)},
        {"tiff plain", tiff(größe, 8, zeilen)},
        {"ppm", gespeichert(bild, "ppm")},
    };
    const QByteArrayList schreibbar = QImageWriter::supportedImageFormats();
    if (schreibbar.contains("tiff")) {
        proben.push_back({"tiff", gespeichert(bild, "tiff", 0)});
        proben.push_back({"tiff packed", gespeichert(bild, "tiff", 1)});
        proben.push_back(
            {"tiff 16 bits", gespeichert(bild.convertToFormat(QImage::Format_RGBA64), "tiff", 0)});
    }
    if (schreibbar.contains("webp")) {
        proben.push_back({"webp", gespeichert(bild, "webp")});
    }
    return proben;
}

} // namespace tarvel
