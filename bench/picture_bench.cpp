// picture_bench FILE [ROUNDS]: what opening, decoding and panning one scan costs, beside what the
// bare decoder or the bare file costs on the same machine in the same run.
// picture_bench --limit FILE: the bare decoder or file alone, for a reduced picture, as a process.

#include "tabelle.h"

#include "measure/bild.h"
#include "measure/bilddatei.h"
#include "measure/lupe.h"
#include "measure/uebersicht.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <vector>

#include <jpeglib.h>

using namespace tarvel;

namespace {

double gemessen(const std::function<void()>& arbeit) {
    QElapsedTimer uhr;
    uhr.start();
    arbeit();
    return static_cast<double>(uhr.nsecsElapsed()) / 1e6;
}

double anteil(std::vector<double> zeiten, double stelle) {
    std::sort(zeiten.begin(), zeiten.end());
    return zeiten[static_cast<std::size_t>(stelle * static_cast<double>(zeiten.size() - 1))];
}

/// The decoder alone: reads a sound file row by row.
void nurDekoder(const QString& pfad, unsigned achtel) {
    std::FILE* datei = std::fopen(QFile::encodeName(pfad).constData(), "rb");
    if (datei == nullptr)
        return;
    jpeg_decompress_struct jpeg{};
    jpeg_error_mgr melder{};
    jpeg.err = jpeg_std_error(&melder);
    jpeg_create_decompress(&jpeg);
    jpeg_stdio_src(&jpeg, datei);
    jpeg_read_header(&jpeg, TRUE);
    jpeg.scale_num = achtel;
    jpeg.scale_denom = 8;
    jpeg_start_decompress(&jpeg);
    const std::size_t zeile = std::size_t{jpeg.output_width} * jpeg.output_components;
    const auto pixel = std::make_unique_for_overwrite<JSAMPLE[]>(zeile * jpeg.output_height);
    while (jpeg.output_scanline < jpeg.output_height) {
        JSAMPROW ziel = pixel.get() + zeile * jpeg.output_scanline;
        jpeg_read_scanlines(&jpeg, &ziel, 1);
    }
    jpeg_finish_decompress(&jpeg);
    jpeg_destroy_decompress(&jpeg);
    std::fclose(datei);
}

/// The file alone, in one piece or every eighth row of a page at 1200 dpi.
void nurDatei(const QString& pfad, bool ganz) {
    constexpr qint64 Zeile = 29764;
    QFile datei(pfad);
    if (!datei.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return;
    const auto pixel =
        std::make_unique_for_overwrite<char[]>(static_cast<std::size_t>(datei.size()));
    if (ganz)
        datei.read(pixel.get(), datei.size());
    else
        for (qint64 ort = 0; ort < datei.size(); ort += 8 * Zeile) {
            datei.seek(ort);
            datei.read(pixel.get(), Zeile);
        }
}

void zeile(const std::string& was, const std::vector<double>& zeiten) {
    tabellenzeile("P5", was + ", p95", anteil(zeiten, 0.95), {}, {.höchstens = 8}, "ms");
    tabellenzeile("P5", was + ", worst", anteil(zeiten, 1.0), {}, {.höchstens = 16}, "ms");
}

bool istJpeg(const QString& pfad) {
    return !pfad.endsWith(QStringLiteral(".bmp"), Qt::CaseInsensitive);
}

/// The least that a reduced picture costs.
void nurÜbersicht(const QString& pfad) {
    istJpeg(pfad) ? nurDekoder(pfad, 1) : nurDatei(pfad, false);
}

void misstLaden(const QString& pfad, int runden) {
    const bool jpeg = istJpeg(pfad);
    const std::string name = QFileInfo(pfad).fileName().toStdString();
    const bool grau = name.find("grey") != std::string::npos;
    std::vector<double> öffnen, ganz, grenzeÖffnen, grenzeGanz;
    for (int i = 0; i < runden; ++i) {
        {
            auto datei = Bilddatei::öffne(pfad);
            if (!std::holds_alternative<Bilddatei>(datei))
                return;
            ganz.push_back(gemessen([&] { (void)std::get<Bilddatei>(datei).pixel(nullptr); }));
        }
        if (i == 0)
            tabellenzeile("P4", name + ": peak memory, all pixels there", spitzenspeicher(), {},
                          {.höchstens = grau ? 260 : 560}, "MiB");
        öffnen.push_back(gemessen([&] { (void)Bilddatei::öffne(pfad); }));
        grenzeÖffnen.push_back(gemessen([&] { nurÜbersicht(pfad); }));
        grenzeGanz.push_back(gemessen([&] { jpeg ? nurDekoder(pfad, 8) : nurDatei(pfad, true); }));
    }
    tabellenzeile("P3", name + ": reduced picture", anteil(öffnen, 0.5), anteil(grenzeÖffnen, 0.5),
                  {}, "ms");
    tabellenzeile("P3", name + ": all pixels", anteil(ganz, 0.5), anteil(grenzeGanz, 0.5),
                  {.verhältnis = 1.5}, "ms");
}

void misstBilder(Bilddatei& datei) {
    constexpr int Bilder = 200;
    const QImage pixel = *datei.pixel(nullptr);
    Bild bild;
    bild.resize(1400, 900);
    bild.setzeBild(pixel);
    bild.show();
    QCoreApplication::processEvents();
    for (int zoom = Bild::KleinsterZoom; zoom <= Bild::GrößterZoom; ++zoom) {
        bild.setzeZoomfaktor(zoom);
        std::vector<Marke> marken;
        for (int i = 1; i <= 8; ++i)
            marken.push_back({QPointF(3000 + 90 * i, 3000 + 70 * i), QString::number(i), i == 3});
        bild.setzeMarken(marken);
        bild.zeige(QPointF(2500, 2500) / zoom);
        QCoreApplication::processEvents();
        std::vector<double> ganz, schieben;
        for (int i = 0; i < Bilder; ++i) {
            ganz.push_back(gemessen([&] { bild.viewport()->repaint(); }));
            schieben.push_back(gemessen([&] {
                bild.zeige(bild.ausschnitt().center() + QPointF(13, 11) / zoom);
                QCoreApplication::processEvents();
            }));
        }
        zeile("zoom " + std::to_string(zoom) + ", whole view", ganz);
        zeile("zoom " + std::to_string(zoom) + ", dragged", schieben);
    }

    Lupe lupe;
    lupe.resize(lupe.sizeHint());
    lupe.setzeBild(pixel, bild.Zoomfaktor());
    lupe.show();
    QCoreApplication::processEvents();
    std::vector<double> zeiten;
    for (int i = 0; i < Bilder; ++i) {
        lupe.setzeMitte(QPointF(4000 + 3 * i, 4000 + 2 * i));
        zeiten.push_back(gemessen([&] { lupe.repaint(); }));
    }
    zeile("magnifier", zeiten);

    Übersicht übersicht;
    übersicht.resize(1400, 900);
    übersicht.setzeBild(datei.übersicht(), datei.größe());
    übersicht.setzeRahmen(QSizeF(1400, 900));
    übersicht.show();
    QCoreApplication::processEvents();
    zeiten.clear();
    for (int i = 0; i < Bilder; ++i)
        zeiten.push_back(gemessen([&] {
            übersicht.setzeMitte(QPointF(1000 + 20 * i, 1000 + 30 * i));
            QCoreApplication::processEvents();
        }));
    zeile("overview, frame dragged", zeiten);
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::printf("picture_bench FILE [ROUNDS] | --limit FILE\n");
        return 2;
    }
    if (argc == 3 && std::strcmp(argv[1], "--limit") == 0) {
        nurÜbersicht(QString::fromLocal8Bit(argv[2]));
        return 0;
    }
    const QApplication app(argc, argv);
    const QString pfad = QString::fromLocal8Bit(argv[1]);
    misstLaden(pfad, argc > 2 ? std::max(1, std::atoi(argv[2])) : 5);
    auto datei = Bilddatei::öffne(pfad);
    auto* offen = std::get_if<Bilddatei>(&datei);
    if (offen == nullptr || offen->pixel(nullptr) == nullptr) {
        std::printf("cannot be read: %s\n", argv[1]);
        return 1;
    }
    misstBilder(*offen);
    return 0;
}
