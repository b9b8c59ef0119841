// detect_bench FILE DPI WINGS [ROUNDS]: what finding the wings of a scan costs once its pixels are
// there, and what proposing the points of one wing does.

#include "tabelle.h"

#include "detect/bildpixel.h"
#include "detect/fluegelerkennung.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImageReader>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

using namespace tarvel;

namespace {

double mitte(std::vector<double> zeiten) {
    std::nth_element(zeiten.begin(), zeiten.begin() + std::ptrdiff_t(zeiten.size() / 2),
                     zeiten.end());
    return zeiten[zeiten.size() / 2];
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::printf("detect_bench FILE DPI WINGS [ROUNDS]\n");
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication app(argc, argv);
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
    const Bildpixel quelle(std::move(bild));
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
    tabellenzeile("F3", "memory of finding, beside the picture", speicher, {}, {.höchstens = 60},
                  "MiB");
    if (funde.size() != erwartet) {
        std::printf("%zu wings found, not %zu\n", funde.size(), erwartet);
        return 1;
    }
    return 0;
}
