#include "measure/bildarbeiter.h"

#include "measure/rasterformat.h"

#include <QImageReader>
#include <QSemaphore>
#include <QThreadPool>

#include <algorithm>
#include <limits>
#include <new>
#include <vector>

namespace tarvel {
namespace {

/// Pictures with transparent places as they look on paper, without a second picture.
QImage aufPapier(QImage bild) {
    const bool vorgerechnet = bild.format() == QImage::Format_ARGB32_Premultiplied;
    for (int y = 0; y < bild.height(); ++y) {
        auto* zeile = reinterpret_cast<QRgb*>(bild.scanLine(y));
        for (int x = 0; x < bild.width(); ++x) {
            const QRgb p = vorgerechnet ? zeile[x] : qPremultiply(zeile[x]);
            const int weiß = 255 - qAlpha(p);
            zeile[x] = qRgb(qRed(p) + weiß, qGreen(p) + weiß, qBlue(p) + weiß);
        }
    }
    bild.reinterpretAsFormat(QImage::Format_RGB32);
    return bild;
}

/// Any picture as one of the formats that are painted without detours.
QImage vereinheitlicht(QImage bild) {
    switch (bild.format()) {
    case QImage::Format_Grayscale8:
    case QImage::Format_RGB888:
    case QImage::Format_BGR888:
    case QImage::Format_RGB32:
        return bild;
    case QImage::Format_ARGB32:
    case QImage::Format_ARGB32_Premultiplied:
        return aufPapier(std::move(bild));
    default:
        break;
    }
    if (bild.hasAlphaChannel()) {
        return aufPapier(std::move(bild).convertToFormat(QImage::Format_ARGB32_Premultiplied));
    }
    const bool grau = bild.format() == QImage::Format_Grayscale16 || bild.allGray();
    return std::move(bild).convertToFormat(grau ? QImage::Format_Grayscale8 : QImage::Format_RGB32);
}

/// The means of squares of pixels. The toolkit would first make a colour picture of a grey one.
QImage verkleinert(const QImage& bild, int übersichtslänge) {
    const int teiler = std::max(bild.width(), bild.height()) / übersichtslänge;
    if (teiler < 2) {
        return bild;
    }
    const int breite = (bild.width() + teiler - 1) / teiler;
    QImage klein(breite, (bild.height() + teiler - 1) / teiler, bild.format());
    if (klein.isNull()) {
        return {};
    }
    const int kanäle = bild.depth() / 8;
    std::vector<quint32> summe(static_cast<std::size_t>(breite) * kanäle);
    for (int oben = 0; oben < bild.height(); oben += teiler) {
        const int zeilen = std::min(teiler, bild.height() - oben);
        std::fill(summe.begin(), summe.end(), 0U);
        for (int y = oben; y < oben + zeilen; ++y) {
            const uchar* von = bild.constScanLine(y);
            quint32* nach = summe.data();
            for (int links = 0; links < bild.width(); links += teiler, nach += kanäle) {
                const int spalten = std::min(teiler, bild.width() - links);
                for (int x = 0; x < spalten; ++x) {
                    for (int kanal = 0; kanal < kanäle; ++kanal) {
                        nach[kanal] += *von++;
                    }
                }
            }
        }
        uchar* ziel = klein.scanLine(oben / teiler);
        for (int x = 0; x < breite; ++x) {
            const int flächenpunkte = std::min(teiler, bild.width() - x * teiler) * zeilen;
            for (int kanal = 0; kanal < kanäle; ++kanal, ++ziel) {
                *ziel = static_cast<uchar>(summe[static_cast<std::size_t>(x) * kanäle + kanal] /
                                           static_cast<quint32>(flächenpunkte));
            }
        }
    }
    return klein;
}

Entziffert lies(Bildquelle& quelle, const QByteArray& format, int seite, int übersichtslänge) {
    Entziffert ergebnis;
    QImageReader leser(&quelle, format);
    leser.setAutoDetectImageFormat(false);
    if (seite > 1 && !leser.jumpToImage(seite - 1)) {
        ergebnis.grund = leser.errorString();
        return ergebnis;
    }
    QImage bild;
    if (!leser.read(&bild)) {
        ergebnis.grund = leser.errorString();
        return ergebnis;
    }
    if (format == "gif" && !gifVollständig(quelle)) {
        ergebnis.abgeschnitten = true;
        return ergebnis;
    }
    ergebnis.pixel = vereinheitlicht(std::move(bild));
    if (!ergebnis.pixel.isNull()) {
        ergebnis.übersicht = verkleinert(ergebnis.pixel, übersichtslänge);
    }
    ergebnis.keinSpeicher = ergebnis.übersicht.isNull();
    return ergebnis;
}

/// What the thread is given, and where it leaves the picture. Lives as long as either side needs.
struct Auftrag {
    Auftrag(std::unique_ptr<QFile> eigene, QByteArray art, int nummer, int länge)
        : datei(std::move(eigene))
        , quelle(*datei, std::numeric_limits<qint64>::max())
        , format(std::move(art))
        , seite(nummer)
        , übersichtslänge(länge) {}

    std::unique_ptr<QFile> datei;
    Bildquelle quelle;
    QByteArray format;
    int seite;
    int übersichtslänge;
    Entziffert ergebnis;
    QSemaphore fertig;

    void erledige() {
        try {
            if (quelle.open(QIODevice::ReadOnly)) {
                ergebnis = lies(quelle, format, seite, übersichtslänge);
            }
        } catch (const std::bad_alloc&) {
            ergebnis = {};
            ergebnis.keinSpeicher = true;
        }
    }
};

/// One after the other, so that a picture that was given up and the next never take memory at once.
QThreadPool& werkstatt() {
    static QThreadPool eine;
    eine.setMaxThreadCount(1);
    return eine;
}

} // namespace

Bildquelle::Bildquelle(QFile& datei, qint64 höchstens)
    : datei_(datei)
    , rest_(höchstens) {}

bool Bildquelle::seek(qint64 stelle) {
    return stelle >= 0 && stelle <= size() && datei_.seek(stelle) && QIODevice::seek(stelle);
}

qint64 Bildquelle::readData(char* ziel, qint64 anzahl) {
    // An end, never an error: a decoder for TIFF takes -1 for a number of bytes.
    if (halt_ || rest_ <= 0) {
        return 0;
    }
    const qint64 gelesen = std::max<qint64>(0, datei_.read(ziel, std::min(anzahl, rest_)));
    rest_ -= gelesen;
    stelle_ = datei_.pos();
    return gelesen;
}

double speicherJeBildpunkt(QImage::Format format) {
    const double bytes = std::max<int>(1, QImage::toPixelFormat(format).bitsPerPixel()) / 8.0;
    switch (format) {
    case QImage::Format_Invalid: // said by none before it decodes; all of them then make this
        return 4;
    case QImage::Format_Grayscale8:
    case QImage::Format_RGB888:
    case QImage::Format_BGR888:
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32:
    case QImage::Format_ARGB32_Premultiplied:
        return bytes;
    case QImage::Format_Grayscale16:
        return 3;
    default:
        return bytes + 4;
    }
}

Entziffert entziffere(std::unique_ptr<QFile> datei, const QByteArray& format, int seite,
                      int übersichtslänge, const Weiter& weiter) {
    const qint64 gesamt = datei->size();
    datei->seek(0);
    const auto auftrag =
        std::make_shared<Auftrag>(std::move(datei), format, seite, übersichtslänge);
    if (!weiter) {
        auftrag->erledige();
        return std::move(auftrag->ergebnis);
    }
    Entziffert abgebrochen;
    abgebrochen.abgebrochen = true;
    if (!weiter(0, gesamt)) {
        return abgebrochen;
    }
    werkstatt().start([auftrag] {
        auftrag->erledige();
        auftrag->fertig.release();
    });
    constexpr int Takt = 15; // milliseconds
    while (!auftrag->fertig.tryAcquire(1, Takt)) {
        if (!weiter(auftrag->quelle.stelle(), gesamt)) {
            auftrag->quelle.halte();
            return abgebrochen;
        }
    }
    return std::move(auftrag->ergebnis);
}

} // namespace tarvel
