#include "measure/bmpleser.h"

#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <vector>

namespace tarvel {
namespace {

constexpr int Dateikopf = 14;
constexpr quint32 Unkomprimiert = 0;
constexpr quint32 MitMasken = 3;

template <typename T>
T lies(const QByteArray& bytes, int stelle) {
    return qFromLittleEndian<T>(bytes.constData() + stelle);
}

bool liesZeile(QIODevice& quelle, const BmpKopf& kopf, int y, uchar* ziel) {
    const qint64 nummer = kopf.vonOben ? y : kopf.größe.height() - 1 - y;
    return quelle.seek(kopf.anfang + nummer * kopf.zeile) &&
           quelle.read(reinterpret_cast<char*>(ziel), kopf.zeile) == kopf.zeile;
}

} // namespace

bool BmpKopf::grau() const {
    for (int i = 0; i < farben.size(); ++i) {
        if ((farben[i] & 0xFFFFFFU) != static_cast<QRgb>(i) * 0x010101U) {
            return false;
        }
    }
    return !farben.isEmpty();
}

std::optional<BmpKopf> liesBmpKopf(QIODevice& quelle) {
    quelle.seek(0);
    const QByteArray bytes = quelle.read(Dateikopf + 124);
    if (bytes.size() < Dateikopf + 12 || !bytes.startsWith("BM")) {
        return {};
    }
    BmpKopf kopf;
    kopf.anfang = lies<quint32>(bytes, 10);
    const auto kopfgröße = lies<quint32>(bytes, Dateikopf);
    if (kopfgröße == 12) {
        kopf.größe = QSize(lies<quint16>(bytes, 18), lies<quint16>(bytes, 20));
        kopf.bits = lies<quint16>(bytes, 24);
        kopf.zeile = (qint64{kopf.größe.width()} * kopf.bits + 31) / 32 * 4;
        return kopf;
    }
    if (kopfgröße < 40 || bytes.size() < Dateikopf + 40) {
        return {};
    }
    const qint64 höhe = lies<qint32>(bytes, 22);
    if (höhe == std::numeric_limits<qint32>::min()) {
        return {};
    }
    kopf.größe = QSize(lies<qint32>(bytes, 18), static_cast<int>(std::abs(höhe)));
    kopf.vonOben = höhe < 0;
    kopf.bits = lies<quint16>(bytes, 28);
    kopf.zeile = (qint64{kopf.größe.width()} * kopf.bits + 31) / 32 * 4;
    const auto verfahren = lies<quint32>(bytes, 30);
    if (verfahren != Unkomprimiert && verfahren != MitMasken) {
        kopf.gepackt = lies<quint32>(bytes, 34);
    }
    bool üblicheMasken = false;
    if (verfahren == MitMasken && bytes.size() >= Dateikopf + 52) {
        üblicheMasken = lies<quint32>(bytes, 54) == 0xFF0000 &&
                        lies<quint32>(bytes, 58) == 0x00FF00 && lies<quint32>(bytes, 62) == 0xFF;
    }
    if (verfahren == Unkomprimiert) {
        kopf.unmittelbar = kopf.bits == 8 || kopf.bits == 24 || kopf.bits == 32;
    } else {
        kopf.unmittelbar = kopf.bits == 32 && üblicheMasken;
    }
    if (kopf.unmittelbar && kopf.bits == 8) {
        const auto genannt = lies<quint32>(bytes, 46);
        const int anzahl = genannt == 0 || genannt > 256 ? 256 : static_cast<int>(genannt);
        if (!quelle.seek(Dateikopf + qint64{kopfgröße})) {
            return {};
        }
        const QByteArray tabelle = quelle.read(qint64{4} * anzahl);
        kopf.farben.fill(0xFF000000U, 256);
        for (int i = 0; i < tabelle.size() / 4; ++i) {
            kopf.farben[i] = lies<quint32>(tabelle, 4 * i) | 0xFF000000U;
        }
    }
    return kopf;
}

QImage liesBmpVerkleinert(QIODevice& quelle, const BmpKopf& kopf, int teiler,
                          const Weiter& weiter) {
    const int breite = (kopf.größe.width() + teiler - 1) / teiler;
    const int höhe = (kopf.größe.height() + teiler - 1) / teiler;
    const bool grau = kopf.grau();
    const int kanäle = grau ? 1 : 3;
    QImage bild(breite, höhe, grau ? QImage::Format_Grayscale8 : QImage::Format_RGB888);
    if (bild.isNull()) {
        return {};
    }
    // Two rows out of each strip: a vein is wider than half a strip, so none falls through.
    const int schritt = std::max(1, teiler / 2);
    std::vector<uchar> zeile(static_cast<std::size_t>(kopf.zeile));
    std::vector<quint32> summe(static_cast<std::size_t>(breite) * kanäle);
    const int bytes = kopf.bits / 8;
    for (int oben = 0, y = 0; y < höhe; ++y, oben += teiler) {
        if (!weiter(y, höhe)) {
            return {};
        }
        std::fill(summe.begin(), summe.end(), 0U);
        const int unten = std::min(oben + teiler, kopf.größe.height());
        const quint32 zeilen = oben + schritt < unten ? 2 : 1;
        for (int k = 0; k < static_cast<int>(zeilen); ++k) {
            if (!liesZeile(quelle, kopf, oben + k * schritt, zeile.data())) {
                return {};
            }
            quint32* ziel = summe.data();
            const uchar* pixel = zeile.data();
            for (int links = 0; links < kopf.größe.width(); links += teiler, ziel += kanäle) {
                const int anzahl = std::min(teiler, kopf.größe.width() - links);
                if (kopf.bits == 8 && !grau) {
                    for (int i = 0; i < anzahl; ++i) {
                        const QRgb farbe = kopf.farben[*pixel++];
                        ziel[0] += static_cast<quint32>(qRed(farbe));
                        ziel[1] += static_cast<quint32>(qGreen(farbe));
                        ziel[2] += static_cast<quint32>(qBlue(farbe));
                    }
                } else if (grau) {
                    for (int i = 0; i < anzahl; ++i) {
                        ziel[0] += *pixel++;
                    }
                } else {
                    for (int i = 0; i < anzahl; ++i, pixel += bytes) {
                        ziel[0] += pixel[2];
                        ziel[1] += pixel[1];
                        ziel[2] += pixel[0];
                    }
                }
            }
        }
        uchar* ziel = bild.scanLine(y);
        for (int x = 0; x < breite; ++x) {
            const auto spalten =
                static_cast<quint32>(std::min(teiler, kopf.größe.width() - x * teiler));
            for (int kanal = 0; kanal < kanäle; ++kanal) {
                const int i = x * kanäle + kanal;
                ziel[i] =
                    static_cast<uchar>(summe[static_cast<std::size_t>(i)] / (spalten * zeilen));
            }
        }
    }
    return bild;
}

QImage liesBmp(QIODevice& quelle, const BmpKopf& kopf, const Weiter& weiter) {
    const bool grau = kopf.grau();
    const bool bunt = kopf.bits == 8 && !grau;
    const QImage::Format format = grau              ? QImage::Format_Grayscale8
                                  : bunt            ? QImage::Format_RGB888
                                  : kopf.bits == 24 ? QImage::Format_BGR888
                                                    : QImage::Format_RGB32;
    QImage bild(kopf.größe, format);
    if (bild.isNull()) {
        return {};
    }
    std::vector<uchar> zeile(bunt ? static_cast<std::size_t>(kopf.zeile) : 0);
    for (int y = 0; y < kopf.größe.height(); ++y) {
        uchar* ziel = bild.scanLine(y);
        // Rows of both are padded to whole words, so those of equal depth fit as they are.
        if (!weiter(y, kopf.größe.height()) ||
            !liesZeile(quelle, kopf, y, bunt ? zeile.data() : ziel)) {
            return {};
        }
        if (bunt) {
            for (int x = 0; x < kopf.größe.width(); ++x) {
                const QRgb farbe = kopf.farben[zeile[static_cast<std::size_t>(x)]];
                *ziel++ = static_cast<uchar>(qRed(farbe));
                *ziel++ = static_cast<uchar>(qGreen(farbe));
                *ziel++ = static_cast<uchar>(qBlue(farbe));
            }
        } else if (kopf.bits == 32) {
            // The fourth byte means nothing in the file but must be full in memory.
            auto* pixel = reinterpret_cast<QRgb*>(ziel);
            for (int x = 0; x < kopf.größe.width(); ++x) {
                pixel[x] = qFromLittleEndian(pixel[x]) | 0xFF000000U;
            }
        }
    }
    return bild;
}

} // namespace tarvel
