// What the header of a picture file says: kind, resolution, pages, sizes. Input: the file.

#include "fuzz/fuzz.h"
#include "measure/bildaufloesung.h"
#include "measure/bmpleser.h"
#include "measure/rasterformat.h"

#include <QBuffer>

using namespace tarvel;

namespace {

/// A file that counts how often it is read.
class Quelle : public QBuffer {
public:
    using QBuffer::QBuffer;
    int gelesen = 0;

protected:
    qint64 readData(char* ziel, qint64 anzahl) override {
        ++gelesen;
        return QBuffer::readData(ziel, anzahl);
    }
};

void prüfeSeiten(Quelle& datei) {
    datei.gelesen = 0;
    const QList<TiffSeite> seiten = tiffSeiten(datei);
    constexpr int Genug = 100'000;
    verlange(datei.gelesen < Genug, "pages are found without reading for ever");
    verlange(seiten.size() <= HöchstensSeiten, "as many pages as may be");
    int nummer = 0;
    for (const TiffSeite& seite : seiten) {
        verlange(seite.nummer == ++nummer, "pages in their order");
        verlange(seite.größe.width() >= 0 && seite.größe.height() >= 0 && seite.bits >= 0 &&
                     seite.streifenhöhe >= 0 && seite.streifenhöhe <= seite.größe.height(),
                 "a page of a size");
    }
    const QList<TiffSeite> nochmals = tiffSeiten(datei);
    verlange(nochmals.size() == seiten.size(), "the same pages every time");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t größe) {
    QByteArray inhalt = eingabe(daten, größe).toByteArray();
    Quelle datei(&inhalt);
    datei.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    const std::optional<int> dpi = bildauflösung(datei);
    verlange(!dpi || (*dpi >= GeringsteBildauflösung && *dpi <= HöchsteBildauflösung),
             "a resolution that a scan can have, or none");
    verlange(dpi == bildauflösung(datei), "the same every time");
    const QByteArray format = rasterformat(datei);
    if (format == "tiff") {
        prüfeSeiten(datei);
    } else if (format == "gif") {
        (void)gifGröße(datei);
        (void)gifVollständig(datei);
    } else if (const auto kopf = liesBmpKopf(datei)) {
        verlange(kopf->größe.height() >= 0 && kopf->anfang >= 0, "rows at a place of the file");
        verlange(!kopf->unmittelbar || kopf->bits != 8 || kopf->farben.size() == 256,
                 "a colour for every pixel");
    }
    return 0;
}
