#include "measure/bilddatei.h"

#include "measure/bmpleser.h"
#include "measure/jpegleser.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <optional>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;
using Art = Bildfehler::Art;

template <typename T>
using Oder = std::variant<T, Bildfehler>;

constexpr qint64 HöchstensBytes = qint64{2000} * 1024 * 1024;
// No lossless format packs more pixels of a scanned page into a byte.
constexpr qint64 DichtestePackung = 5000;
// Formats with a pixel grid of their own; a drawing scales to anything and cannot be measured.
constexpr std::array Rasterformate{"bmp", "gif", "pbm", "pgm", "png", "ppm", "tif", "tiff", "webp"};

std::optional<Bildfehler> öffneDatei(QFile& datei) {
    const QFileInfo angaben(datei.fileName());
    if (!angaben.exists())
        return Bildfehler{Art::NichtGefunden};
    if (!angaben.isFile())
        return Bildfehler{Art::Unlesbar};
    if (!datei.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        const bool recht = datei.error() == QFileDevice::PermissionsError || !angaben.isReadable();
        return Bildfehler{recht ? Art::KeinRecht : Art::Unlesbar, datei.errorString()};
    }
    if (datei.size() == 0)
        return Bildfehler{Art::Leer};
    return {};
}

Bildfehler zuGroß(QSize größe) {
    return {Art::ZuGross,
            u"%1 × %2"_s.arg(QString::number(größe.width()), QString::number(größe.height()))};
}

std::optional<Bildfehler> prüfeGröße(QSize größe) {
    if (größe.isEmpty())
        return Bildfehler{Art::Unlesbar};
    if (qint64{größe.width()} * größe.height() > Bilddatei::HöchstensBildpunkte)
        return zuGroß(größe);
    return {};
}

int länge(QSize größe) {
    return std::max(größe.width(), größe.height());
}

Bildfehler fehlerAus(const Jpegleser& leser) {
    return {leser.fehler() == Jpegleser::Fehler::Abgeschnitten ? Art::Abgeschnitten : Art::Unlesbar,
            QString::fromLatin1(leser.meldung())};
}

/// What was read: size of the whole picture, a reduced picture or all pixels, or both.
struct Gelesen {
    QSize größe;
    QImage übersicht;
    QImage pixel;
};

Oder<Gelesen> liesJpeg(QFile& datei, bool ganz) {
    datei.seek(0);
    Jpegleser leser(datei);
    if (!leser.liesKopf())
        return fehlerAus(leser);
    Gelesen gelesen{leser.größe(), {}, {}};
    if (const auto fehler = prüfeGröße(gelesen.größe))
        return *fehler;
    if (datei.size() < leser.mindestBytes())
        return Bildfehler{Art::Abgeschnitten};
    int achtel = 8;
    if (!ganz) {
        achtel = 1;
        while (achtel < 8 && länge(gelesen.größe) * achtel / 8 < Bilddatei::Übersichtslänge)
            ++achtel;
    }
    const QSize größe = leser.verkleinere(achtel);
    if (größe.isEmpty())
        return fehlerAus(leser);
    QImage bild(größe, leser.grau() ? QImage::Format_Grayscale8 : QImage::Format_RGB888);
    if (bild.isNull())
        return Bildfehler{Art::KeinSpeicher};
    if (!leser.liesZeilen(bild.bits(), bild.bytesPerLine()))
        return fehlerAus(leser);
    if (achtel == 8)
        gelesen.pixel = bild;
    if (!ganz)
        gelesen.übersicht = bild;
    return gelesen;
}

/// Any picture as one of the formats that are painted without detours.
QImage vereinheitlicht(QImage bild) {
    switch (bild.format()) {
    case QImage::Format_Grayscale8:
    case QImage::Format_RGB888:
    case QImage::Format_BGR888:
    case QImage::Format_RGB32:
        return bild;
    default:
        break;
    }
    if (bild.hasAlphaChannel()) {
        QImage papier(bild.size(), QImage::Format_RGB32);
        if (papier.isNull())
            return {};
        papier.fill(Qt::white);
        QPainter(&papier).drawImage(0, 0, bild);
        return papier;
    }
    const bool grau = bild.format() == QImage::Format_Grayscale16 || bild.allGray();
    return std::move(bild).convertToFormat(grau ? QImage::Format_Grayscale8 : QImage::Format_RGB32);
}

QImage verkleinert(const QImage& bild) {
    const int teiler = länge(bild.size()) / Bilddatei::Übersichtslänge;
    if (teiler < 2)
        return bild;
    return bild.scaled((bild.width() + teiler - 1) / teiler, (bild.height() + teiler - 1) / teiler,
                       Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

/// Size of the area that the pictures of the file are put onto, for which memory is taken.
QSize gifGröße(QFile& datei) {
    const qint64 stand = datei.pos();
    std::array<uchar, 10> kopf{};
    datei.seek(0);
    const bool da = datei.read(reinterpret_cast<char*>(kopf.data()), kopf.size()) == kopf.size();
    datei.seek(stand);
    return da ? QSize(qFromLittleEndian<quint16>(&kopf[6]), qFromLittleEndian<quint16>(&kopf[8]))
              : QSize();
}

/// True when the file holds its first picture to the last block. A decoder fills up what is missing
/// with the background and says nothing.
bool gifVollständig(QFile& datei) {
    const auto tabelle = [](uchar angaben) {
        return (angaben & 0x80U) != 0 ? 3LL << ((angaben & 7U) + 1) : 0LL;
    };
    const auto überspringe = [&](qint64 anzahl) {
        return datei.pos() + anzahl <= datei.size() && datei.seek(datei.pos() + anzahl);
    };
    const auto byte = [&](uchar& wert) { return datei.getChar(reinterpret_cast<char*>(&wert)); };
    uchar wert = 0;
    if (!datei.seek(10) || !byte(wert) || !überspringe(2 + tabelle(wert)))
        return false;
    while (byte(wert)) {
        const bool bild = wert == 0x2C;
        if (bild && !(überspringe(8) && byte(wert) && überspringe(tabelle(wert))))
            return false;
        // One byte before the blocks: the kind of an extension or the width of the first code.
        if (!byte(wert))
            return false;
        do {
            if (!byte(wert) || !überspringe(wert))
                return false;
        } while (wert != 0);
        if (bild)
            return true;
    }
    return false;
}

/// Formats that cannot be reduced while decoding: all pixels at once.
Oder<Gelesen> liesAndere(QFile& datei) {
    datei.seek(0);
    QImageReader::setAllocationLimit(2048);
    QImageReader leser(&datei);
    leser.setDecideFormatFromContent(true);
    const QByteArray format = leser.format();
    if (std::find(Rasterformate.begin(), Rasterformate.end(), format) == Rasterformate.end())
        return Bildfehler{Art::Unlesbar};
    Gelesen gelesen{format == "gif" ? gifGröße(datei) : leser.size(), {}, {}};
    if (const auto fehler = prüfeGröße(gelesen.größe))
        return *fehler;
    const qint64 bildpunkte = qint64{gelesen.größe.width()} * gelesen.größe.height();
    const int bits = std::max<int>(1, QImage::toPixelFormat(leser.imageFormat()).bitsPerPixel());
    if (bildpunkte * bits / 8 > HöchstensBytes)
        return zuGroß(gelesen.größe);
    if (bildpunkte * bits / 8 / DichtestePackung > datei.size())
        return Bildfehler{Art::Abgeschnitten};
    QImage bild;
    if (!leser.read(&bild))
        return Bildfehler{Art::Unlesbar, leser.errorString()};
    if (format == "gif" && !gifVollständig(datei))
        return Bildfehler{Art::Abgeschnitten};
    gelesen.pixel = vereinheitlicht(std::move(bild));
    if (gelesen.pixel.isNull() || gelesen.pixel.size() != gelesen.größe)
        return Bildfehler{Art::Unlesbar};
    gelesen.übersicht = verkleinert(gelesen.pixel);
    return gelesen;
}

Oder<Gelesen> liesBitmap(QFile& datei, const BmpKopf& kopf, bool ganz) {
    if (const auto fehler = prüfeGröße(kopf.größe))
        return *fehler;
    if (datei.size() < kopf.ende())
        return Bildfehler{Art::Abgeschnitten};
    if (!kopf.unmittelbar)
        return liesAndere(datei);
    Gelesen gelesen{kopf.größe, {}, {}};
    const int teiler = std::max(1, länge(kopf.größe) / Bilddatei::Übersichtslänge);
    QImage& bild = ganz || teiler == 1 ? gelesen.pixel : gelesen.übersicht;
    bild = ganz || teiler == 1 ? liesBmp(datei, kopf) : liesBmpVerkleinert(datei, kopf, teiler);
    if (bild.isNull())
        return Bildfehler{datei.error() == QFileDevice::NoError ? Art::Abgeschnitten
                                                                : Art::Unlesbar,
                          datei.errorString()};
    if (gelesen.übersicht.isNull())
        gelesen.übersicht = gelesen.pixel;
    return gelesen;
}

Oder<Gelesen> lies(const QString& pfad, bool ganz) {
    QFile datei(pfad);
    if (auto fehler = öffneDatei(datei))
        return *std::move(fehler);
    const QByteArray anfang = datei.read(3);
    if (anfang.startsWith("\xFF\xD8"))
        return liesJpeg(datei, ganz);
    if (anfang.startsWith("BM")) {
        const auto kopf = liesBmpKopf(datei);
        return kopf ? liesBitmap(datei, *kopf, ganz) : Bildfehler{Art::Unlesbar};
    }
    return liesAndere(datei);
}

} // namespace

std::variant<Bilddatei, Bildfehler> Bilddatei::oeffnen(const QString& pfad) {
    auto gelesen = lies(pfad, false);
    if (auto* fehler = std::get_if<Bildfehler>(&gelesen))
        return std::move(*fehler);
    auto& teile = std::get<Gelesen>(gelesen);
    Bilddatei datei;
    datei.pfad_ = pfad;
    datei.größe_ = teile.größe;
    datei.übersicht_ = std::move(teile.übersicht);
    datei.pixel_ = std::move(teile.pixel);
    return datei;
}

const QImage* Bilddatei::pixel(Bildfehler* fehler) {
    if (!pixel_.isNull())
        return &pixel_;
    auto gelesen = lies(pfad_, true);
    Bildfehler grund;
    if (auto* art = std::get_if<Bildfehler>(&gelesen)) {
        grund = *art;
    } else if (auto& teile = std::get<Gelesen>(gelesen); teile.größe == größe_) {
        pixel_ = std::move(teile.pixel);
        return &pixel_;
    }
    if (fehler != nullptr)
        *fehler = grund;
    return nullptr;
}

} // namespace tarvel
