#include "detect/bildpixel.h"

#include <algorithm>

namespace tarvel {
namespace {

/// Light of a colour as the eye weighs it, as qGray() does.
std::uint8_t grau(int rot, int grün, int blau) {
    return std::uint8_t((rot * 11 + grün * 16 + blau * 5) / 32);
}

} // namespace

Bildpixel::Bildpixel(QImage bild)
    : bild_(std::move(bild)) {
    switch (bild_.format()) {
    case QImage::Format_Grayscale8:
    case QImage::Format_RGB888:
    case QImage::Format_BGR888:
    case QImage::Format_RGB32:
        break;
    default:
        bild_.convertTo(QImage::Format_RGB32);
    }
}

void Bildpixel::lies(int x, int y, int anzahl, std::uint8_t* ziel) const {
    const uchar* zeile = bild_.constScanLine(y);
    switch (bild_.format()) {
    case QImage::Format_Grayscale8:
        std::copy_n(zeile + x, anzahl, ziel);
        break;
    case QImage::Format_RGB888:
        for (const uchar* p = zeile + 3 * x; anzahl > 0; --anzahl, p += 3)
            *ziel++ = grau(p[0], p[1], p[2]);
        break;
    case QImage::Format_BGR888:
        for (const uchar* p = zeile + 3 * x; anzahl > 0; --anzahl, p += 3)
            *ziel++ = grau(p[2], p[1], p[0]);
        break;
    default:
        for (const QRgb* p = reinterpret_cast<const QRgb*>(zeile) + x; anzahl > 0; --anzahl, ++p)
            *ziel++ = grau(qRed(*p), qGreen(*p), qBlue(*p));
    }
}

} // namespace tarvel
