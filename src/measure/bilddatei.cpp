#include "measure/bilddatei.h"

#include "measure/bildort.h"
#include "measure/bmpleser.h"
#include "measure/jpegleser.h"
#include "measure/rasterformat.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <chrono>
#include <memory>
#include <new>
#include <optional>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;
using Art = Bildfehler::Art;

template <typename T>
using Oder = std::variant<T, Bildfehler>;

// No lossless format packs more pixels of a scanned page into a byte.
constexpr double DichtestePackung = 5000;
// What a decoder may read until it knows the size.
constexpr qint64 LängsterKopf = qint64{8} * 1024 * 1024;

std::optional<Bildfehler> öffneDatei(QFile& datei) {
    const QFileInfo angaben(datei.fileName());
    if (!angaben.exists()) {
        return Bildfehler{Art::NichtGefunden};
    }
    if (!angaben.isFile()) {
        return Bildfehler{Art::Unlesbar};
    }
    if (!datei.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        const bool recht = datei.error() == QFileDevice::PermissionsError || !angaben.isReadable();
        return Bildfehler{recht ? Art::KeinRecht : Art::Unlesbar, datei.errorString()};
    }
    if (datei.size() == 0) {
        return Bildfehler{Art::Leer};
    }
    return {};
}

/// @p bytes is the memory that all of the picture takes.
std::optional<Bildfehler> prüfeGröße(QSize größe, double bytes) {
    if (größe.isEmpty()) {
        return Bildfehler{Art::Unlesbar};
    }
    const qint64 bildpunkte = qint64{größe.width()} * größe.height();
    const double jeBildpunkt = bytes / static_cast<double>(bildpunkte);
    const qint64 höchstens =
        std::min(Bilddatei::HöchstensBildpunkte,
                 static_cast<qint64>(static_cast<double>(Bilddatei::HöchstensBytes) / jeBildpunkt));
    if (bildpunkte <= höchstens) {
        return {};
    }
    return Bildfehler{
        Art::ZuGross,
        u"%1 × %2"_s.arg(QString::number(größe.width()), QString::number(größe.height())),
        höchstens};
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

qint64 bildpunkte(QSize größe) {
    return qint64{größe.width()} * größe.height();
}

/// How much of a picture is wanted.
enum class Umfang { Größe, Übersicht, Ganz };

Oder<Gelesen> liesJpeg(QFile& datei, Umfang umfang, const Weiter& weiter) {
    datei.seek(0);
    Jpegleser leser(datei, weiter);
    if (!leser.liesKopf()) {
        return fehlerAus(leser);
    }
    Gelesen gelesen{leser.größe(), {}, {}};
    const qint64 bytes = bildpunkte(gelesen.größe) * (leser.grau() ? 1 : 3);
    if (const auto fehler =
            prüfeGröße(gelesen.größe, static_cast<double>(bytes + leser.zwischenspeicher()))) {
        return *fehler;
    }
    if (umfang == Umfang::Größe) {
        return gelesen;
    }
    if (datei.size() < leser.mindestBytes()) {
        return Bildfehler{Art::Abgeschnitten};
    }
    const bool ganz = umfang == Umfang::Ganz;
    int achtel = 8;
    if (!ganz) {
        achtel = 1;
        while (achtel < 8 && länge(gelesen.größe) * achtel / 8 < Bilddatei::Übersichtslänge) {
            ++achtel;
        }
    }
    const QSize größe = leser.verkleinere(achtel);
    if (größe.isEmpty()) {
        return fehlerAus(leser);
    }
    QImage bild(größe, leser.grau() ? QImage::Format_Grayscale8 : QImage::Format_RGB888);
    if (bild.isNull()) {
        return Bildfehler{Art::KeinSpeicher};
    }
    if (!leser.liesZeilen(bild.bits(), bild.bytesPerLine())) {
        return fehlerAus(leser);
    }
    if (achtel == 8) {
        gelesen.pixel = bild;
    }
    if (!ganz) {
        gelesen.übersicht = bild;
    }
    return gelesen;
}

/// Size and memory of a picture that the toolkit decodes.
struct Angaben {
    QSize größe;
    double bytes = 0; ///< a file may name more than whole numbers hold
};

std::optional<Angaben> liesAngaben(QFile& datei, const QByteArray& format, int seite) {
    Angaben angaben;
    QList<TiffSeite> seiten;
    if (format == "tiff") {
        seiten = tiffSeiten(datei);
        if (seite > seiten.size()) {
            return {};
        }
        angaben.größe = seiten[seite - 1].größe;
    }
    datei.seek(0);
    Bildquelle quelle(datei, LängsterKopf);
    if (!quelle.open(QIODevice::ReadOnly)) {
        return {};
    }
    QImageReader leser(&quelle, format);
    leser.setAutoDetectImageFormat(false);
    if (seite > 1 && !leser.jumpToImage(seite - 1)) {
        return {};
    }
    const QImage::Format art = leser.imageFormat();
    if (format == "gif") {
        angaben.größe = gifGröße(datei);
    } else if (format != "tiff") {
        angaben.größe = leser.size();
    }
    const auto anzahl = static_cast<double>(bildpunkte(angaben.größe));
    angaben.bytes = anzahl * speicherJeBildpunkt(art);
    // These decoders keep more than the picture.
    if (format == "tiff" && QImage::toPixelFormat(art).bitsPerPixel() == 32) {
        angaben.bytes += static_cast<double>(seiten[seite - 1].streifenhöhe) *
                         angaben.größe.width() * seiten[seite - 1].bits / 8;
    } else if (format == "webp") {
        angaben.bytes += anzahl * 4 + static_cast<double>(datei.size());
    }
    return angaben;
}

/// Formats that cannot be reduced while decoding: all pixels at once.
Oder<Gelesen> liesAndere(std::unique_ptr<QFile> datei, const QByteArray& format, int seite,
                         Umfang umfang, const Weiter& weiter) {
    QImageReader::setAllocationLimit(Bilddatei::HöchstensBytes / (1024 * 1024));
    const auto angaben = liesAngaben(*datei, format, seite);
    if (!angaben) {
        return Bildfehler{Art::Unlesbar};
    }
    if (const auto fehler = prüfeGröße(angaben->größe, angaben->bytes)) {
        return *fehler;
    }
    Gelesen gelesen{angaben->größe, {}, {}};
    if (umfang == Umfang::Größe) {
        return gelesen;
    }
    if (angaben->bytes / DichtestePackung > static_cast<double>(datei->size())) {
        return Bildfehler{Art::Abgeschnitten};
    }
    Entziffert entziffert =
        entziffere(std::move(datei), format, seite, Bilddatei::Übersichtslänge, weiter);
    if (entziffert.abgebrochen) {
        return Bildfehler{Art::Abgebrochen};
    }
    if (entziffert.abgeschnitten) {
        return Bildfehler{Art::Abgeschnitten};
    }
    if (entziffert.keinSpeicher) {
        return Bildfehler{Art::KeinSpeicher};
    }
    if (entziffert.pixel.isNull() || entziffert.pixel.size() != gelesen.größe) {
        return Bildfehler{Art::Unlesbar, entziffert.grund};
    }
    gelesen.pixel = std::move(entziffert.pixel);
    gelesen.übersicht = std::move(entziffert.übersicht);
    return gelesen;
}

/// @p weiter for rows, @p wartend for a decoder that is waited for.
Oder<Gelesen> liesBitmap(std::unique_ptr<QFile> datei, const BmpKopf& kopf, Umfang umfang,
                         const Weiter& weiter, const Weiter& wartend) {
    const int bytes = !kopf.unmittelbar || kopf.grau() ? 1 : kopf.bits == 32 ? 4 : 3;
    if (const auto fehler =
            prüfeGröße(kopf.größe, static_cast<double>(bildpunkte(kopf.größe)) * bytes)) {
        return *fehler;
    }
    if (umfang != Umfang::Größe && datei->size() < kopf.ende()) {
        return Bildfehler{Art::Abgeschnitten};
    }
    if (!kopf.unmittelbar) {
        return liesAndere(std::move(datei), "bmp", 1, umfang, wartend);
    }
    Gelesen gelesen{kopf.größe, {}, {}};
    if (umfang == Umfang::Größe) {
        return gelesen;
    }
    const int teiler = std::max(1, länge(kopf.größe) / Bilddatei::Übersichtslänge);
    const bool ganz = umfang == Umfang::Ganz || teiler == 1;
    QImage& bild = ganz ? gelesen.pixel : gelesen.übersicht;
    bild = ganz ? liesBmp(*datei, kopf, weiter) : liesBmpVerkleinert(*datei, kopf, teiler, weiter);
    if (bild.isNull()) {
        return Bildfehler{datei->error() == QFileDevice::NoError ? Art::Abgeschnitten
                                                                 : Art::Unlesbar,
                          datei->errorString()};
    }
    if (gelesen.übersicht.isNull()) {
        gelesen.übersicht = gelesen.pixel;
    }
    return gelesen;
}

Oder<Gelesen> lies(const QString& name, Umfang umfang, const Weiter& weiter) {
    const Bildort ort = Bildort::aus(name);
    auto datei = std::make_unique<QFile>(ort.datei);
    if (auto fehler = öffneDatei(*datei)) {
        return *std::move(fehler);
    }
    bool abgebrochen = false;
    const Weiter merkend = [&](qint64 getan, qint64 gesamt) {
        abgebrochen = abgebrochen || (weiter && !weiter(getan, gesamt));
        return !abgebrochen;
    };
    const QByteArray format = rasterformat(*datei);
    Oder<Gelesen> gelesen = Bildfehler{Art::Unlesbar};
    // Only one of these formats has pages.
    if (format.isEmpty() || (ort.seite > 1 && format != "tiff")) {
        return gelesen;
    }
    if (format == "jpeg") {
        gelesen = liesJpeg(*datei, umfang, merkend);
    } else if (format == "bmp") {
        if (const auto kopf = liesBmpKopf(*datei)) {
            gelesen = liesBitmap(std::move(datei), *kopf, umfang, merkend, weiter);
        }
    } else {
        gelesen = liesAndere(std::move(datei), format, ort.seite, umfang, weiter);
    }
    return abgebrochen ? Bildfehler{Art::Abgebrochen} : std::move(gelesen);
}

} // namespace

std::variant<Bilddatei, Bildfehler> Bilddatei::öffne(const QString& pfad, const Weiter& weiter) {
    auto gelesen = lies(pfad, Umfang::Übersicht, weiter);
    if (auto* fehler = std::get_if<Bildfehler>(&gelesen)) {
        return std::move(*fehler);
    }
    auto& teile = std::get<Gelesen>(gelesen);
    Bilddatei datei;
    datei.pfad_ = pfad;
    datei.größe_ = teile.größe;
    datei.übersicht_ = std::move(teile.übersicht);
    datei.pixel_ = teile.pixel;
    datei.ladung_ = std::make_shared<Pixelladung>(pfad, datei.größe_, std::move(teile.pixel));
    return datei;
}

std::optional<QSize> Bilddatei::liesGröße(const QString& pfad) {
    const auto gelesen = lies(pfad, Umfang::Größe, {});
    const auto* teile = std::get_if<Gelesen>(&gelesen);
    return teile == nullptr ? std::nullopt : std::optional(teile->größe);
}

QList<Bildseite> Bilddatei::seiten(const QString& pfad) {
    QFile datei(pfad);
    if (öffneDatei(datei) || rasterformat(datei) != "tiff") {
        return {};
    }
    QList<Bildseite> seiten;
    for (const TiffSeite& seite : tiffSeiten(datei)) {
        if (seite.nummer == 1 || !seite.verkleinert) {
            seiten << Bildseite{seite.nummer, seite.größe};
        }
    }
    return seiten.size() > 1 ? seiten : QList<Bildseite>();
}

const QImage* Bilddatei::pixel(Bildfehler* fehler, const Weiter& weiter) {
    if (pixel_.isNull()) {
        pixel_ = ladung_->hole(fehler, weiter);
    }
    return pixel_.isNull() ? nullptr : &pixel_;
}

Pixelladung::Pixelladung(QString pfad, QSize größe, QImage pixel)
    : pfad_(std::move(pfad))
    , größe_(größe)
    , pixel_(std::move(pixel)) {}

int Pixelladung::prozent() const {
    return static_cast<int>(100 * std::min(getan_.load(), gesamt_.load()) /
                            std::max<qint64>(1, gesamt_));
}

/// Until the one who decodes is done. False when @p weiter said no.
bool Pixelladung::warte(std::unique_lock<std::mutex>& sperre, const Weiter& weiter) {
    constexpr std::chrono::milliseconds Takt{15};
    while (lädt_) {
        if (fertig_.wait_for(sperre, Takt, [this] { return !lädt_; })) {
            break;
        }
        sperre.unlock(); // it may show windows
        const bool gehtWeiter = !weiter || weiter(getan_, gesamt_);
        sperre.lock();
        if (!gehtWeiter) {
            return false;
        }
    }
    return true;
}

QImage Pixelladung::hole(Bildfehler* fehler, const Weiter& weiter, bool fürAlle) {
    std::unique_lock sperre(riegel_);
    const auto ohne = [fehler](const Bildfehler& grund) {
        if (fehler != nullptr) {
            *fehler = grund;
        }
        return QImage();
    };
    if (lädt_) {
        if (!warte(sperre, weiter)) {
            halt_ = halt_ || fürAlle;
            return ohne({Art::Abgebrochen});
        }
        if (pixel_.isNull() && fehler_ && fehler_->art != Art::Abgebrochen) {
            return ohne(*fehler_);
        }
    }
    if (!pixel_.isNull()) {
        return pixel_;
    }
    lädt_ = true;
    halt_ = false;
    getan_ = 0;
    sperre.unlock();
    const Weiter merkend = [&](qint64 getan, qint64 gesamt) {
        getan_ = getan;
        gesamt_ = gesamt;
        return !halt_ && (!weiter || weiter(getan, gesamt));
    };
    Oder<Gelesen> gelesen = Bildfehler{Art::KeinSpeicher};
    try {
        gelesen = lies(pfad_, Umfang::Ganz, weiter ? merkend : Weiter());
    } catch (const std::bad_alloc&) {
        gelesen = Bildfehler{Art::KeinSpeicher};
    }
    sperre.lock();
    lädt_ = false;
    fehler_.reset();
    if (auto* art = std::get_if<Bildfehler>(&gelesen)) {
        fehler_ = *art;
    } else if (auto& teile = std::get<Gelesen>(gelesen); teile.größe == größe_) {
        pixel_ = std::move(teile.pixel);
    } else {
        fehler_ = Bildfehler();
    }
    fertig_.notify_all();
    return fehler_ ? ohne(*fehler_) : pixel_;
}

} // namespace tarvel
