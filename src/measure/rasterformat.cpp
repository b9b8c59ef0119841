#include "measure/rasterformat.h"

#include <QIODevice>
#include <QSet>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

namespace tarvel {
namespace {

/// Numbers of a TIFF file, in its order of bytes.
class Tiffzahlen {
public:
    Tiffzahlen(QIODevice& quelle, bool vorne, bool groß)
        : quelle_(quelle)
        , vorne_(vorne)
        , groß_(groß) {}

    /// A number of @p bytes bytes (2, 4 or 8) at the present place; false at the end of the file.
    bool lies(int bytes, quint64& wert) {
        const QByteArray roh = quelle_.read(bytes);
        wert = zahl(roh);
        return roh.size() == bytes;
    }
    /// A place in the file, or a count of values.
    bool liesOrt(quint64& wert) { return lies(ortslänge(), wert); }
    /// All bytes of a number.
    [[nodiscard]] quint64 zahl(QByteArrayView roh) const {
        quint64 wert = 0;
        for (qsizetype i = 0; i < roh.size(); ++i)
            wert = wert << 8U | static_cast<uchar>(roh[vorne_ ? roh.size() - 1 - i : i]);
        return wert;
    }
    [[nodiscard]] bool groß() const { return groß_; }
    [[nodiscard]] int ortslänge() const { return groß_ ? 8 : 4; }

private:
    QIODevice& quelle_;
    bool vorne_; ///< the lowest byte comes first
    bool groß_;  ///< places take eight bytes
};

constexpr quint64 Unterart = 254;
constexpr quint64 Breite = 256;
constexpr quint64 Höhe = 257;
constexpr quint64 BitsProWert = 258;
constexpr quint64 WerteProPixel = 277;
constexpr quint64 ZeilenProStreifen = 278;
constexpr quint64 Kachelhöhe = 323;

/// The value of an entry, of several the first. Empty when it lies elsewhere in the file, where
/// only depths are looked for: all of them are the same. False when there is none.
bool liesWert(QIODevice& quelle, Tiffzahlen& zahlen, QByteArrayView eintrag,
              std::optional<quint64>& wert) {
    const int ortslänge = zahlen.ortslänge();
    const quint64 art = zahlen.zahl(eintrag.sliced(2, 2));
    const quint64 anzahl = zahlen.zahl(eintrag.sliced(4, ortslänge));
    const QByteArrayView platz = eintrag.sliced(4 + ortslänge, ortslänge);
    const int bytes = art == 3 ? 2 : art == 16 ? 8 : 4;
    if (bytes <= ortslänge && anzahl <= static_cast<quint64>(ortslänge / bytes)) {
        wert = zahlen.zahl(platz.first(bytes));
        return true;
    }
    if (zahlen.zahl(eintrag.first(2)) != BitsProWert)
        return true;
    const quint64 ort = zahlen.zahl(platz);
    quint64 tiefe = 0;
    if (ort >= static_cast<quint64>(quelle.size()) || !quelle.seek(static_cast<qint64>(ort)) ||
        !zahlen.lies(bytes, tiefe))
        return false;
    wert = tiefe;
    return true;
}

/// Reads the entries at the present place and stays behind them. False when they end early.
bool liesSeite(QIODevice& quelle, Tiffzahlen& zahlen, quint64 einträge, TiffSeite& seite) {
    quint64 breite = 0;
    quint64 höhe = 0;
    quint64 streifen = std::numeric_limits<quint64>::max();
    quint64 bits = 1;
    quint64 werte = 1;
    const int länge = zahlen.groß() ? 20 : 12;
    const QByteArray alle = quelle.read(static_cast<qint64>(einträge) * länge);
    const qint64 ende = quelle.pos();
    if (alle.size() != static_cast<qsizetype>(einträge) * länge)
        return false;
    for (qsizetype anfang = 0; anfang < alle.size(); anfang += länge) {
        const QByteArrayView eintrag = QByteArrayView(alle).sliced(anfang, länge);
        std::optional<quint64> wert;
        if (!liesWert(quelle, zahlen, eintrag, wert))
            return false;
        if (!wert)
            continue;
        switch (zahlen.zahl(eintrag.first(2))) {
        case Unterart:
            seite.verkleinert = (*wert & 1U) != 0;
            break;
        case Breite:
            breite = *wert;
            break;
        case Höhe:
            höhe = *wert;
            break;
        case BitsProWert:
            bits = *wert;
            break;
        case WerteProPixel:
            werte = *wert;
            break;
        case ZeilenProStreifen:
        case Kachelhöhe:
            streifen = *wert;
            break;
        default:
            break;
        }
    }
    constexpr quint64 größte = std::numeric_limits<int>::max();
    seite.größe =
        QSize(static_cast<int>(std::min(breite, größte)), static_cast<int>(std::min(höhe, größte)));
    seite.bits =
        static_cast<int>(std::min<quint64>(bits, 64) * std::clamp<quint64>(werte, 1, 0xFFFF));
    seite.streifenhöhe = static_cast<qint64>(std::min({streifen, höhe, größte}));
    return quelle.seek(ende);
}

} // namespace

QByteArray rasterformat(QIODevice& quelle) {
    if (!quelle.seek(0)) {
        return {};
    }
    const QByteArray anfang = quelle.read(12);
    constexpr std::array<std::pair<QByteArrayView, const char*>, 11> Anfänge{{
        {"\xFF\xD8", "jpeg"},
        {"BM", "bmp"},
        {"GIF87a", "gif"},
        {"GIF89a", "gif"},
        {"\x89PNG\r\n\x1A\n", "png"},
        {QByteArrayView("II\x2A\0", 4), "tiff"},
        {QByteArrayView("MM\0\x2A", 4), "tiff"},
        {QByteArrayView("II\x2B\0", 4), "tiff"},
        {QByteArrayView("MM\0\x2B", 4), "tiff"},
        {"P", "pnm"},
        {"RIFF", "webp"},
    }};
    for (const auto& [zeichen, format] : Anfänge) {
        if (!anfang.startsWith(zeichen)) {
            continue;
        }
        QByteArray name = format;
        if (name == "webp") {
            return anfang.mid(8) == "WEBP" ? name : QByteArray();
        }
        if (name != "pnm") {
            return name;
        }
        const char art = anfang.size() > 2 ? anfang[1] : '0';
        if (art < '1' || art > '6' || !QByteArrayView(" \t\r\n").contains(anfang[2])) {
            return {};
        }
        constexpr std::array Karten{"pbm", "pgm", "ppm"};
        return Karten.at(static_cast<std::size_t>(art - '1') % 3);
    }
    return {};
}

QList<TiffSeite> tiffSeiten(QIODevice& quelle) {
    if (!quelle.seek(0)) {
        return {};
    }
    const QByteArray anfang = quelle.read(4);
    if (anfang.size() != 4) {
        return {};
    }
    const bool vorne = anfang[0] == 'I';
    Tiffzahlen zahlen(quelle, vorne, anfang[vorne ? 2 : 3] == 0x2B);
    if (zahlen.groß()) {
        quelle.seek(8);
    }
    QList<TiffSeite> seiten;
    QSet<quint64> gesehen;
    quint64 ort = 0;
    quint64 gesamt = 0;
    while (seiten.size() < HöchstensSeiten && zahlen.liesOrt(ort) && ort != 0 &&
           ort < static_cast<quint64>(quelle.size()) && !gesehen.contains(ort)) {
        gesehen.insert(ort);
        quint64 einträge = 0;
        TiffSeite seite;
        seite.nummer = static_cast<int>(seiten.size()) + 1;
        if (!quelle.seek(static_cast<qint64>(ort)) ||
            !zahlen.lies(zahlen.groß() ? 8 : 2, einträge)) {
            break;
        }
        // Pages that tell this many things about themselves are none, and reading them takes time.
        constexpr quint64 HöchstensEinträge = 4096;
        gesamt += einträge;
        if (einträge > HöchstensEinträge || gesamt > 20 * HöchstensEinträge ||
            !liesSeite(quelle, zahlen, einträge, seite)) {
            break;
        }
        seiten << seite;
    }
    return seiten;
}

QSize gifGröße(QIODevice& quelle) {
    std::array<uchar, 10> kopf{};
    quelle.seek(0);
    if (quelle.read(reinterpret_cast<char*>(kopf.data()), kopf.size()) != kopf.size()) {
        return {};
    }
    return {qFromLittleEndian<quint16>(&kopf[6]), qFromLittleEndian<quint16>(&kopf[8])};
}

bool gifVollständig(QIODevice& quelle) {
    const auto tabelle = [](uchar angaben) {
        return (angaben & 0x80U) != 0 ? 3LL << ((angaben & 7U) + 1) : 0LL;
    };
    const auto überspringe = [&](qint64 anzahl) {
        return quelle.pos() + anzahl <= quelle.size() && quelle.seek(quelle.pos() + anzahl);
    };
    const auto byte = [&](uchar& wert) { return quelle.getChar(reinterpret_cast<char*>(&wert)); };
    uchar wert = 0;
    if (!quelle.seek(10) || !byte(wert) || !überspringe(2 + tabelle(wert))) {
        return false;
    }
    while (byte(wert)) {
        const bool bild = wert == 0x2C;
        if (bild && !(überspringe(8) && byte(wert) && überspringe(tabelle(wert)))) {
            return false;
        }
        // One byte before the blocks: the kind of an extension or the width of the first code.
        if (!byte(wert)) {
            return false;
        }
        do {
            if (!byte(wert) || !überspringe(wert)) {
                return false;
            }
        } while (wert != 0);
        if (bild) {
            return true;
        }
    }
    return false;
}

} // namespace tarvel
