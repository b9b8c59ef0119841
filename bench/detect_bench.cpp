// detect_bench FILE DPI WINGS [ROUNDS]: what finding the wings of a scan costs once its pixels are
// there, what proposing the points of one wing does, and how the picture moves meanwhile.

#include "tabelle.h"

#include "detect/bildpixel.h"
#include "detect/fluegelerkennung.h"
#include "measure/bild.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImageReader>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

using namespace tarvel;

namespace {

double mitte(std::vector<double> zeiten) {
    std::nth_element(zeiten.begin(), zeiten.begin() + std::ptrdiff_t(zeiten.size() / 2),
                     zeiten.end());
    return zeiten[zeiten.size() / 2];
}

/// Frames of a view that is dragged while wings are being found, sixty a second.
std::vector<double> bilderBeimSuchen(const QImage& pixel, const Flügelerkennung& erkennung,
                                     const Pixelquelle& quelle, double dpi, int runden) {
    Bild bild;
    bild.resize(1400, 900);
    bild.setzeBild(pixel);
    bild.show();
    QCoreApplication::processEvents();
    std::vector<double> zeiten;
    std::atomic_bool fertig = false;
    const std::jthread sucher([&] {
        for (int i = 0; i < runden; ++i) {
            Suchverlauf verlauf;
            (void)erkennung.finde(quelle, dpi, verlauf);
        }
        fertig = true;
    });
    constexpr auto Takt = std::chrono::microseconds(16667);
    for (auto nächstes = std::chrono::steady_clock::now(); !fertig; nächstes += Takt) {
        std::this_thread::sleep_until(nächstes);
        // Late waking counts: it is what the hand on the mouse would feel.
        const auto anfang = std::min(nächstes, std::chrono::steady_clock::now());
        bild.zeige(bild.ausschnitt().center() + QPointF(13, 11));
        QCoreApplication::processEvents();
        const auto ende = std::chrono::steady_clock::now();
        zeiten.push_back(std::chrono::duration<double, std::milli>(ende - anfang).count());
        nächstes = std::max(nächstes, ende - Takt);
    }
    return zeiten;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::printf("detect_bench FILE DPI WINGS [ROUNDS]\n");
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    QImageReader::setAllocationLimit(0);
    QImage bild(QString::fromLocal8Bit(argv[1]));
    const double dpi = std::atof(argv[2]);
    const auto erwartet = std::size_t(std::atoi(argv[3]));
    const int runden = argc > 4 ? std::max(1, std::atoi(argv[4])) : 5;
    const auto modell = eingebautesModell();
    const auto* gelesen = std::get_if<std::shared_ptr<const Erkennungsmodell>>(&modell);
    if (bild.isNull() || gelesen == nullptr) {
        std::printf("cannot be read: %s\n", argv[1]);
        return 1;
    }
    const Bildpixel quelle(bild);
    const Flügelerkennung erkennung(*gelesen);
    const Punktsucher sucher(**gelesen);
    const double vorher = spitzenspeicher();
    std::vector<double> suchen;
    std::vector<double> punkte;
    std::vector<Flügelfund> funde;
    QElapsedTimer uhr;
    for (int i = 0; i < runden; ++i) {
        Suchverlauf verlauf;
        uhr.start();
        funde = erkennung.finde(quelle, dpi, verlauf);
        suchen.push_back(double(uhr.nsecsElapsed()) / 1e6);
        uhr.start();
        for (const Flügelfund& fund : funde)
            (void)sucher.suche(quelle, fund.vorschlag.lage);
        if (!funde.empty())
            punkte.push_back(double(uhr.nsecsElapsed()) / 1e6 / double(funde.size()));
    }
    const double speicher = spitzenspeicher() - vorher;
    tabellenzeile("F1", "wings of an A4 sheet found, two threads", mitte(suchen), {},
                  {.höchstens = 1500}, "ms");
    tabellenzeile("F2", "points of a wing, one thread", punkte.empty() ? 0 : mitte(punkte), {},
                  {.höchstens = 20}, "ms");
    auto bilder = bilderBeimSuchen(bild, erkennung, quelle, dpi, runden);
    std::sort(bilder.begin(), bilder.end());
    tabellenzeile("P5", "a frame while wings are found, 95 of 100",
                  bilder[bilder.size() * 95 / 100], {}, {.höchstens = 8}, "ms");
    tabellenzeile("P5", "a frame while wings are found, the worst", bilder.back(), {},
                  {.höchstens = 16}, "ms");
    tabellenzeile("F3", "memory of finding, beside the picture", speicher, {}, {.höchstens = 60},
                  "MiB");
    if (funde.size() != erwartet) {
        std::printf("%zu wings found, not %zu\n", funde.size(), erwartet);
        return 1;
    }
    return 0;
}
