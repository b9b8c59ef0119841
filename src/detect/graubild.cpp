#include "detect/graubild.h"

#include "detect/faeden.h"

#include <algorithm>
#include <cmath>

namespace tarvel {
namespace {

/// Which pixels of the source a pixel of the result covers along one axis, and how much of the
/// first and the last.
struct Spanne {
    int von;
    int bis; ///< the last one
    float erstes;
    float letztes;
};

std::vector<Spanne> spannen(int länge, double teiler) {
    const int anzahl = std::max(1, int(std::floor(länge / teiler + 1e-6)));
    std::vector<Spanne> alle;
    alle.reserve(std::size_t(anzahl));
    for (int i = 0; i < anzahl; ++i) {
        const double a = i * teiler;
        const double b = std::min<double>(länge, (i + 1) * teiler);
        const int von = std::min(länge - 1, int(a + 1e-6));
        const int bis = std::clamp(int(std::ceil(b - 1e-6)) - 1, von, länge - 1);
        alle.push_back({von, bis, float(std::min<double>(b, von + 1) - a), float(b - bis)});
    }
    return alle;
}

} // namespace

Graubild verkleinert(const Pixelquelle& quelle, const QRect& ausschnitt, double teiler, int fäden) {
    if (teiler <= 1) {
        Graubild bild(ausschnitt.width(), ausschnitt.height());
        for (int y = 0; y < bild.höhe; ++y)
            quelle.lies(ausschnitt.x(), ausschnitt.y() + y, bild.breite, bild.zeile(y));
        return bild;
    }
    const auto spalten = spannen(ausschnitt.width(), teiler);
    const auto zeilen = spannen(ausschnitt.height(), teiler);
    Graubild bild(int(spalten.size()), int(zeilen.size()));
    constexpr int Band = 32;
    verteile((bild.höhe + Band - 1) / Band, fäden, [&](int band) {
        std::vector<std::uint8_t> roh(std::size_t(ausschnitt.width()));
        std::vector<float> summe(spalten.size());
        const int ende = std::min(bild.höhe, (band + 1) * Band);
        for (int y = band * Band; y < ende; ++y) {
            std::fill(summe.begin(), summe.end(), 0.0F);
            const Spanne& z = zeilen[std::size_t(y)];
            float fläche = 0;
            for (int q = z.von; q <= z.bis; ++q) {
                const float anteil = q == z.von ? z.erstes : q == z.bis ? z.letztes : 1.0F;
                fläche += anteil;
                quelle.lies(ausschnitt.x(), ausschnitt.y() + q, ausschnitt.width(), roh.data());
                for (std::size_t x = 0; x < spalten.size(); ++x) {
                    const Spanne& s = spalten[x];
                    float w = s.erstes * float(roh[std::size_t(s.von)]);
                    if (s.bis > s.von) {
                        int mitte = 0;
                        for (int p = s.von + 1; p < s.bis; ++p)
                            mitte += roh[std::size_t(p)];
                        w += float(mitte) + s.letztes * float(roh[std::size_t(s.bis)]);
                    }
                    summe[x] += anteil * w;
                }
            }
            std::uint8_t* ziel = bild.zeile(y);
            for (std::size_t x = 0; x < spalten.size(); ++x) {
                const Spanne& s = spalten[x];
                const float breite =
                    s.bis > s.von ? s.erstes + s.letztes + float(s.bis - s.von - 1) : s.erstes;
                ziel[x] = std::uint8_t(summe[x] / (breite * fläche) + Halbes);
            }
        }
    });
    return bild;
}

} // namespace tarvel
