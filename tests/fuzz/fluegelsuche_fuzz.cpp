// Pictures that wings are looked for on. Input: width less 1 (two bytes, low one first), a byte for
// the resolution, then grey values row by row.

#include "detect/bildpixel.h"
#include "detect/fluegelerkennung.h"
#include "fuzz/fuzz.h"

#include <algorithm>
#include <cmath>

using namespace tarvel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t größe) {
    static const Flügelerkennung erkennung(
        std::get<std::shared_ptr<const Erkennungsmodell>>(eingebautesModell()));
    constexpr std::size_t Kopf = 3;
    if (größe <= Kopf) {
        return 0;
    }
    constexpr std::array Auflösungen{300, 600, 1200, 100, 2400, 333};
    const int breite = (daten[0] + 256 * daten[1]) % 1024 + 1;
    const int dpi = Auflösungen.at(daten[2] % Auflösungen.size());
    constexpr std::size_t GenugFürEinen = 7000; // wings take long with every check compiled in
    const auto pixel = static_cast<int>(std::min(größe - Kopf, GenugFürEinen));
    QImage bild(breite, (pixel - 1) / breite + 1, QImage::Format_Grayscale8);
    bild.fill(230);
    for (int i = 0; i < pixel; ++i) {
        bild.scanLine(i / breite)[i % breite] = daten[Kopf + static_cast<std::size_t>(i)];
    }
    Suchverlauf verlauf;
    const auto funde = erkennung.finde(Bildpixel(bild), dpi, verlauf, 1);
    verlange(funde.size() <= static_cast<std::size_t>(pixel), "no more wings than pixels");
    const double weit = 4.0 * (bild.width() + bild.height()) + 4.0 * dpi;
    for (const Flügelfund& fund : funde) {
        verlange(QRectF(bild.rect()).contains(fund.mitte), "a wing lies on its picture");
        verlange(fund.größe > 0 && std::isfinite(fund.größe) && fund.winkel >= 0 &&
                     fund.winkel <= 360 && fund.güte >= Flügelerkennung::Zweifelsgrenze &&
                     fund.güte <= 1.001F,
                 "a pose that a wing can have");
        for (std::size_t i = 0; i < fund.vorschlag.punkte.size(); ++i) {
            const QPointF ort = fund.vorschlag.punkte.at(i);
            verlange(std::abs(ort.x()) < weit && std::abs(ort.y()) < weit,
                     "points at or near the picture");
            verlange(std::isfinite(fund.vorschlag.fehler.at(i)) && fund.vorschlag.fehler.at(i) > 0,
                     "an error to expect");
        }
    }
    return 0;
}
