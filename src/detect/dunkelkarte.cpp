#include "detect/dunkelkarte.h"

#include "detect/faeden.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace tarvel {
namespace {

/// Lines narrower than this are closed over to see the ground below them: 0.7 mm, several veins.
constexpr int Schließweite = 9;
/// Darkness that counts as full: veins of a pale and of a dark bee then look alike.
constexpr double Vollton = 0.25;
/// Grounds darker than this are none.
constexpr int DunkelsterGrund = 16;

constexpr int Band = 64;

/// Greatest or least value of Schließweite pixels along the rows and then the columns; @p auswahl
/// picks one of two.
template <typename Auswahl>
void gleite(Graubild& bild, int fäden, const Auswahl& auswahl) {
    constexpr int Halb = Schließweite / 2;
    const int w = bild.breite;
    const int h = bild.höhe;
    // Doubling: of 2, of 4, of 8, and the ninth.
    const auto bänder = (h + Band - 1) / Band;
    verteile(bänder, fäden, [&](int band) {
        std::vector<std::uint8_t> t(std::size_t(w) + 2 * Schließweite);
        for (int y = band * Band; y < std::min(h, (band + 1) * Band); ++y) {
            std::uint8_t* z = bild.zeile(y);
            std::fill_n(t.begin(), Halb, z[0]);
            std::copy_n(z, w, t.begin() + Halb);
            std::fill(t.begin() + Halb + w, t.end(), z[w - 1]);
            const int n = w + Schließweite - 1;
            for (int i = 0; i < n; ++i)
                t[i] = auswahl(t[i], t[i + 1]);
            for (int i = 0; i < n; ++i)
                t[i] = auswahl(t[i], t[i + 2]);
            for (int i = 0; i < n - 1; ++i)
                t[i] = auswahl(t[i], t[i + 4]);
            // t[i] covers i to i + 7; the window of w pixels ends at i + 8.
            for (int i = 0; i < w; ++i)
                z[i] = auswahl(t[i], t[i + 1]);
        }
    });
    Graubild quer(w, h);
    verteile(bänder, fäden, [&](int band) {
        for (int y = band * Band; y < std::min(h, (band + 1) * Band); ++y) {
            std::uint8_t* ziel = quer.zeile(y);
            std::copy_n(bild.zeile(std::clamp(y - Halb, 0, h - 1)), w, ziel);
            for (int k = 1 - Halb; k <= Halb; ++k) {
                const std::uint8_t* z = bild.zeile(std::clamp(y + k, 0, h - 1));
                for (int x = 0; x < w; ++x)
                    ziel[x] = auswahl(ziel[x], z[x]);
            }
        }
    });
    bild = std::move(quer);
}

/// A bell curve in steps of 1/256, which together are 1.
std::vector<std::uint16_t> glocke(double breite) {
    const int r = std::max(1, int(std::ceil(3 * breite)));
    std::vector<double> k(std::size_t(2 * r + 1));
    double summe = 0;
    for (int i = -r; i <= r; ++i)
        summe += k[std::size_t(i) + std::size_t(r)] = std::exp(-i * i / (2 * breite * breite));
    std::vector<std::uint16_t> ganz(k.size());
    int rest = 256;
    for (std::size_t i = 0; i < k.size(); ++i) {
        ganz[i] = std::uint16_t(std::lround(k[i] / summe * 256));
        rest -= ganz[i];
    }
    ganz[std::size_t(r)] = std::uint16_t(ganz[std::size_t(r)] + rest);
    return ganz;
}

} // namespace

Graubild unscharf(const Graubild& bild, double breite, int fäden) {
    // 256 steps of 255 still fit into 16 bits, of which a processor adds many at once.
    const auto kern = glocke(breite);
    const int r = int(kern.size()) / 2;
    const int w = bild.breite;
    const int h = bild.höhe;
    Graubild aus(w, h);
    verteile((h + Band - 1) / Band, fäden, [&](int band) {
        std::vector<std::uint16_t> summe(static_cast<std::size_t>(w));
        std::vector<std::uint16_t> spalte(std::size_t(w) + 2 * std::size_t(r), 0);
        constexpr std::uint16_t Aufrundung = 128;
        for (int y = band * Band; y < std::min(h, (band + 1) * Band); ++y) {
            std::fill(summe.begin(), summe.end(), Aufrundung);
            for (int k = -r; k <= r; ++k) {
                if (y + k < 0 || y + k >= h)
                    continue;
                const std::uint8_t* z = bild.zeile(y + k);
                const std::uint16_t g = kern[std::size_t(k) + std::size_t(r)];
                std::uint16_t* s = summe.data();
                for (int x = 0; x < w; ++x)
                    s[x] = std::uint16_t(s[x] + g * z[x]);
            }
            for (int x = 0; x < w; ++x)
                spalte[std::size_t(x) + std::size_t(r)] = std::uint16_t(summe[std::size_t(x)] >> 8);
            std::fill(summe.begin(), summe.end(), Aufrundung);
            for (int k = 0; k <= 2 * r; ++k) {
                const std::uint16_t* q = spalte.data() + k;
                const std::uint16_t g = kern[std::size_t(k)];
                std::uint16_t* s = summe.data();
                for (int x = 0; x < w; ++x)
                    s[x] = std::uint16_t(s[x] + g * q[x]);
            }
            std::uint8_t* ziel = aus.zeile(y);
            for (int x = 0; x < w; ++x)
                ziel[x] = std::uint8_t(summe[std::size_t(x)] >> 8);
        }
    });
    return aus;
}

Graubild dunkelheit(const Graubild& grau, int fäden) {
    Graubild grund = grau;
    gleite(grund, fäden, [](auto a, auto b) { return std::max(a, b); });
    gleite(grund, fäden, [](auto a, auto b) { return std::min(a, b); });
    Graubild dunkel(grau.breite, grau.höhe);
    verteile((grau.höhe + Band - 1) / Band, fäden, [&](int band) {
        for (int y = band * Band; y < std::min(grau.höhe, (band + 1) * Band); ++y) {
            const std::uint8_t* g = grau.zeile(y);
            const std::uint8_t* b = grund.zeile(y);
            std::uint8_t* ziel = dunkel.zeile(y);
            for (int x = 0; x < grau.breite; ++x) {
                const float tiefe = float(b[x] - g[x]) /
                                    (float(std::max<int>(b[x], DunkelsterGrund)) * float(Vollton));
                ziel[x] = std::uint8_t(std::min(1.0F, tiefe) * 255 + Halbes);
            }
        }
    });
    return dunkel;
}

Dunkelkarte dunkelkarte(const Pixelquelle& quelle, double dpi, int fäden) {
    const QSize größe = quelle.größe();
    const double teiler = dpi / Dunkelkarte::Dpi;
    // A3 at 300 dpi, with some play. Without it a picture whose resolution is set much too low
    // would take gigabytes.
    constexpr double GrößteFläche = 20e6;
    if (teiler < 1 || größe.width() / teiler * (größe.height() / teiler) > GrößteFläche)
        return {};
    // A third of a wing's length.
    constexpr int Kleinste = 40;
    if (größe.width() / teiler < Kleinste || 2 * größe.height() / teiler < Kleinste)
        return {};
    Graubild dunkel;
    {
        Graubild grau = verkleinert(quelle, QRect({0, 0}, größe), teiler, fäden);
        dunkel = dunkelheit(grau, fäden);
    }
    Dunkelkarte karte;
    karte.größe = {dunkel.breite, dunkel.höhe};
    Graubild& scharf = karte.stufen[0];
    scharf = Graubild(dunkel.breite + 2 * Dunkelkarte::Rand, dunkel.höhe + 2 * Dunkelkarte::Rand);
    for (int y = 0; y < dunkel.höhe; ++y)
        std::copy_n(dunkel.zeile(y), dunkel.breite,
                    scharf.zeile(y + Dunkelkarte::Rand) + Dunkelkarte::Rand);
    for (std::size_t i = 1; i < karte.stufen.size(); ++i)
        karte.stufen[i] = unscharf(scharf, Dunkelkarte::Unschärfe[i], fäden);
    return karte;
}

} // namespace tarvel
