#include "measure/bildaufloesung.h"

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace tarvel {

namespace {

constexpr double ZollJeMeter = 1 / 0.0254;
constexpr double ZentimeterJeZoll = 2.54;
// Notes stand in front of the picture; what does not come within this is not looked for.
constexpr int HöchstensAbschnitte = 200;
constexpr int HöchstensEinträge = 1000;

std::optional<int> glaubhaft(double x, double y) {
    const bool möglich = x >= GeringsteBildauflösung - 0.5 && x <= HöchsteBildauflösung + 0.5 &&
                         std::abs(x - y) <= 0.01 * std::max(x, y);
    return möglich ? std::optional(static_cast<int>(std::lround(x))) : std::nullopt;
}

/// Numbers at places of a file; 0 behind its end.
class Leser {
public:
    explicit Leser(QIODevice& datei, qint64 anfang = 0, bool groß = false)
        : datei_(datei)
        , anfang_(anfang)
        , groß_(groß) {}

    [[nodiscard]] QByteArray bytes(qint64 stelle, qint64 anzahl) const {
        const qint64 ort = anfang_ + stelle;
        return ort < datei_.size() && datei_.seek(ort) ? datei_.read(anzahl) : QByteArray();
    }
    [[nodiscard]] quint8 byte(qint64 stelle) const { return zahl<quint8>(stelle); }
    [[nodiscard]] quint16 wort(qint64 stelle) const { return zahl<quint16>(stelle); }
    [[nodiscard]] quint32 lang(qint64 stelle) const { return zahl<quint32>(stelle); }

private:
    template <typename Zahl>
    [[nodiscard]] Zahl zahl(qint64 stelle) const {
        const QByteArray b = bytes(stelle, sizeof(Zahl));
        if (b.size() != sizeof(Zahl)) {
            return 0;
        }
        return groß_ ? qFromBigEndian<Zahl>(b.constData()) : qFromLittleEndian<Zahl>(b.constData());
    }

    QIODevice& datei_;
    qint64 anfang_;
    bool groß_;
};

std::optional<int> ausBmp(QIODevice& datei) {
    const Leser l(datei);
    constexpr quint32 Kopflänge = 40; // older headers have no resolution
    if (l.lang(14) < Kopflänge) {
        return std::nullopt;
    }
    return glaubhaft(l.lang(38) / ZollJeMeter, l.lang(42) / ZollJeMeter);
}

std::optional<int> ausPng(QIODevice& datei) {
    const Leser l(datei, 0, true);
    qint64 stelle = 8;
    for (int i = 0; i < HöchstensAbschnitte; ++i) {
        const QByteArray art = l.bytes(stelle + 4, 4);
        if (art == "pHYs" && l.byte(stelle + 16) == 1) {
            return glaubhaft(l.lang(stelle + 8) / ZollJeMeter, l.lang(stelle + 12) / ZollJeMeter);
        }
        if (art.size() != 4 || art == "IDAT") {
            break;
        }
        stelle += qint64{12} + l.lang(stelle);
    }
    return std::nullopt;
}

/// A TIFF file, or the EXIF notes of a JPEG, which are laid out like one, at @p anfang.
std::optional<int> ausTiff(QIODevice& datei, qint64 anfang) {
    const QByteArray kennung = Leser(datei, anfang).bytes(0, 4);
    const bool groß = kennung == QByteArrayView("MM\0*", 4);
    if (!groß && kennung != QByteArrayView("II*\0", 4)) {
        return std::nullopt;
    }
    const Leser l(datei, anfang, groß);
    enum Merkmal : quint16 { BreiteJeEinheit = 282, HöheJeEinheit = 283, Einheit = 296 };
    constexpr quint16 Zentimeter = 3;
    const auto bruch = [&l](qint64 eintrag) {
        const qint64 stelle = l.lang(eintrag + 8);
        const double nenner = l.lang(stelle + 4);
        return nenner > 0 ? l.lang(stelle) / nenner : 0.0;
    };
    double x = 0;
    double y = 0;
    double einheit = 1;
    const qint64 verzeichnis = l.lang(4);
    const int einträge = std::min<int>(l.wort(verzeichnis), HöchstensEinträge);
    for (int i = 0; i < einträge; ++i) {
        const qint64 eintrag = verzeichnis + 2 + qint64{12} * i;
        switch (l.wort(eintrag)) {
        case BreiteJeEinheit:
            x = bruch(eintrag);
            break;
        case HöheJeEinheit:
            y = bruch(eintrag);
            break;
        case Einheit:
            einheit = l.wort(eintrag + 8) == Zentimeter ? ZentimeterJeZoll : 1;
            break;
        default:
            break;
        }
    }
    return glaubhaft(x * einheit, y * einheit);
}

std::optional<int> ausJpeg(QIODevice& datei) {
    const Leser l(datei, 0, true);
    std::optional<int> gefunden;
    qint64 stelle = 2;
    for (int i = 0; i < HöchstensAbschnitte && !gefunden && l.byte(stelle) == 0xFF; ++i) {
        const quint8 marke = l.byte(stelle + 1);
        if (marke == 0xDA || marke == 0xD9) { // the picture itself
            break;
        }
        if (marke == 0xE0 && l.bytes(stelle + 4, 5) == QByteArrayView("JFIF\0", 5)) {
            const quint8 einheit = l.byte(stelle + 11);
            const double faktor = einheit == 2 ? ZentimeterJeZoll : einheit == 1 ? 1 : 0;
            gefunden = glaubhaft(l.wort(stelle + 12) * faktor, l.wort(stelle + 14) * faktor);
        } else if (marke == 0xE1 && l.bytes(stelle + 4, 6) == QByteArrayView("Exif\0\0", 6)) {
            gefunden = ausTiff(datei, stelle + 10);
        }
        stelle += 2 + std::max<qint64>(l.wort(stelle + 2), 2);
    }
    return gefunden;
}

} // namespace

std::optional<int> bildauflösung(QIODevice& datei) {
    const QByteArray kennung = Leser(datei).bytes(0, 4);
    if (kennung.startsWith("BM")) {
        return ausBmp(datei);
    }
    if (kennung.startsWith("\xFF\xD8")) {
        return ausJpeg(datei);
    }
    return kennung == "\x89PNG" ? ausPng(datei) : ausTiff(datei, 0);
}

std::optional<int> bildauflösung(const QString& pfad) {
    QFile datei(pfad);
    return datei.open(QIODevice::ReadOnly) ? bildauflösung(datei) : std::nullopt;
}

} // namespace tarvel
