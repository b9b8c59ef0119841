#include "detect/grobsuche.h"

#include "detect/faeden.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tarvel {
namespace {

constexpr int Teiler = 4; ///< from 300 to 75 dpi
constexpr double Weichzeichner = 0.6;
constexpr int Winkelschritt = 10; ///< degrees
/// Around a place where a wing can lie this much is dark, in whole dark pixels at 75 dpi.
constexpr int Fensterradius = 10;
constexpr double Mindestdunkel = 6;
constexpr float Schwelle = 0.5F;
/// On every other pixel first; places this near to the threshold are looked at closely.
constexpr float Vorschwelle = 0.4F;
constexpr double Mindestvarianz = 0.05 * 255 * 255;
constexpr int Trennweite = 3;
constexpr std::size_t HöchstensStellen = 900;
constexpr int Rand = 26;

} // namespace

Grobmuster::Grobmuster(const Flügelmuster& muster) {
    const QSize größe = muster.größe();
    const double halbeDiagonale = std::hypot(größe.width(), größe.height()) / 2 / Teiler;
    const int r = std::min(Rand - 1, int(std::ceil(halbeDiagonale)) + 1);
    const int n = 2 * r + 1;
    for (int spiegel = 0; spiegel < 2; ++spiegel)
        for (int grad = 0; grad < 360; grad += Winkelschritt) {
            Drehung d{grad * std::numbers::pi / 180, spiegel == 1, {}, {}, 0};
            const double c = std::cos(d.winkel);
            const double s = std::sin(d.winkel);
            Graubild bild(n, n);
            std::vector<bool> gilt(bild.werte.size());
            for (int y = 0; y < n; ++y)
                for (int x = 0; x < n; ++x) {
                    float summe = 0;
                    int drin = 0;
                    for (int v = 0; v < Teiler; ++v)
                        for (int u = 0; u < Teiler; ++u) {
                            const double px = (x - r) * Teiler + u - (Teiler - 1) / 2.0;
                            const double py = (y - r) * Teiler + v - (Teiler - 1) / 2.0;
                            double mx = c * px + s * py;
                            const double my = -s * px + c * py;
                            if (spiegel)
                                mx = -mx;
                            const double tx = mx + (größe.width() - 1) / 2.0;
                            const double ty = my + (größe.height() - 1) / 2.0;
                            summe += muster.wert(tx, ty);
                            drin += muster.gilt(tx, ty);
                        }
                    bild.zeile(y)[x] = std::uint8_t(summe / (Teiler * Teiler) + Halbes);
                    gilt[std::size_t(y) * std::size_t(n) + std::size_t(x)] =
                        2 * drin > Teiler * Teiler;
                }
            bild = unscharf(bild, Weichzeichner);
            double summe = 0;
            int anzahl = 0;
            for (std::size_t i = 0; i < gilt.size(); ++i)
                if (gilt[i]) {
                    summe += bild.werte[i];
                    ++anzahl;
                }
            const double mittel = summe / std::max(anzahl, 1);
            double quadrate = 0;
            for (int y = 0; y < n; ++y)
                for (int x = 0; x < n;) {
                    if (!gilt[std::size_t(y) * std::size_t(n) + std::size_t(x)]) {
                        ++x;
                        continue;
                    }
                    Strecke strecke{x - r, y - r, 0, d.werte.size()};
                    for (; x < n && gilt[std::size_t(y) * std::size_t(n) + std::size_t(x)];
                         ++x, ++strecke.länge) {
                        d.werte.push_back(std::int16_t(std::lround(bild.zeile(y)[x] - mittel)));
                        quadrate += double(d.werte.back()) * d.werte.back();
                    }
                    d.strecken.push_back(strecke);
                }
            d.norm = std::sqrt(std::max(quadrate, 1.0));
            drehungen_.push_back(std::move(d));
        }
}

std::vector<Flügellage> Grobmuster::suche(const Dunkelkarte& karte, int fäden,
                                          const std::atomic<bool>& halt) const {
    const int w = karte.größe.width() / Teiler;
    const int h = karte.größe.height() / Teiler;
    Graubild klein(w + 2 * Rand, h + 2 * Rand);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            int summe = 0;
            for (int v = 0; v < Teiler; ++v) {
                const std::uint8_t* z = karte.stufen[0].zeile(Dunkelkarte::Rand + y * Teiler + v) +
                                        Dunkelkarte::Rand + x * Teiler;
                for (int u = 0; u < Teiler; ++u)
                    summe += z[u];
            }
            klein.zeile(y + Rand)[x + Rand] = std::uint8_t(summe / (Teiler * Teiler));
        }
    klein = unscharf(klein, Weichzeichner);

    // The grain of the paper is no darkness: half of any sheet is paper.
    std::array<int, 256> häufigkeit{};
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            ++häufigkeit[klein.zeile(y + Rand)[x + Rand]];
    int korn = 0;
    for (int unter = häufigkeit[0]; unter < w * h / 2; unter += häufigkeit[std::size_t(korn)])
        ++korn;

    const int breite = klein.breite;
    std::vector<std::int16_t> pixel(klein.werte.begin(), klein.werte.end());
    std::vector<std::int64_t> integral(std::size_t(breite + 1) * std::size_t(klein.höhe + 1));
    for (int y = 0; y < klein.höhe; ++y) {
        std::int64_t zeile = 0;
        for (int x = 0; x < breite; ++x) {
            zeile += std::max(0, klein.zeile(y)[x] - korn);
            integral[std::size_t(y + 1) * std::size_t(breite + 1) + std::size_t(x) + 1] =
                integral[std::size_t(y) * std::size_t(breite + 1) + std::size_t(x) + 1] + zeile;
        }
    }
    const auto dunkel = [&](int x, int y) {
        const auto bei = [&](int u, int v) {
            return integral[std::size_t(v) * std::size_t(breite + 1) + std::size_t(u)];
        };
        const int a = x - Fensterradius;
        const int b = x + Fensterradius + 1;
        const int c = y - Fensterradius;
        const int d = y + Fensterradius + 1;
        return double(bei(b, d) - bei(a, d) - bei(b, c) + bei(a, c)) / 255;
    };

    std::vector<float> best(std::size_t(w) * std::size_t(h), -1.0F);
    std::vector<std::uint8_t> welche(best.size(), 0);
    const auto schau = [&](int x, int y) {
        const std::int16_t* mitte = pixel.data() + std::ptrdiff_t(y + Rand) * breite + x + Rand;
        float höchste = -1;
        std::size_t dazu = 0;
        for (std::size_t k = 0; k < drehungen_.size(); ++k) {
            const Drehung& d = drehungen_[k];
            int treffer = 0;
            int summe = 0;
            int quadrate = 0;
            for (const Strecke& s : d.strecken) {
                const std::int16_t* p = mitte + std::ptrdiff_t(s.dy) * breite + s.dx;
                const std::int16_t* t = d.werte.data() + s.stelle;
                for (int i = 0; i < s.länge; ++i) {
                    treffer += p[i] * t[i];
                    summe += p[i];
                    quadrate += p[i] * p[i];
                }
            }
            const double varianz =
                double(quadrate) - double(summe) * summe / double(d.werte.size());
            const auto v = float(treffer / (d.norm * std::sqrt(std::max(varianz, Mindestvarianz))));
            if (v > höchste) {
                höchste = v;
                dazu = k;
            }
        }
        best[std::size_t(y) * std::size_t(w) + std::size_t(x)] = höchste;
        welche[std::size_t(y) * std::size_t(w) + std::size_t(x)] = std::uint8_t(dazu);
    };
    verteile((h + 1) / 2, fäden, [&](int zeile) {
        if (halt)
            return;
        for (int x = 0; x < w; x += 2)
            if (dunkel(x + Rand, 2 * zeile + Rand) >= Mindestdunkel)
                schau(x, 2 * zeile);
    });
    // Between the places looked at, where they promise something: rows are shared out so that each
    // thread writes only its own.
    const auto verspricht = [&](int x, int y) {
        return x >= 0 && y >= 0 && x < w && y < h &&
               best[std::size_t(y) * std::size_t(w) + std::size_t(x)] > Vorschwelle;
    };
    std::vector<std::uint8_t> gesucht(best.size(), 0);
    for (int y = 0; y < h; y += 2)
        for (int x = 0; x < w; x += 2) {
            if (!verspricht(x, y))
                continue;
            for (int v = std::max(0, y - 1); v <= std::min(h - 1, y + 1); ++v)
                for (int u = std::max(0, x - 1); u <= std::min(w - 1, x + 1); ++u)
                    if (u % 2 || v % 2)
                        gesucht[std::size_t(v) * std::size_t(w) + std::size_t(u)] = 1;
        }
    verteile(h, fäden, [&](int y) {
        if (halt)
            return;
        for (int x = 0; x < w; ++x)
            if (gesucht[std::size_t(y) * std::size_t(w) + std::size_t(x)])
                schau(x, y);
    });

    std::vector<Flügellage> stellen;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const float wert = best[std::size_t(y) * std::size_t(w) + std::size_t(x)];
            if (wert <= Schwelle)
                continue;
            bool gipfel = true;
            for (int v = std::max(0, y - Trennweite);
                 gipfel && v <= std::min(h - 1, y + Trennweite); ++v)
                for (int u = std::max(0, x - Trennweite); u <= std::min(w - 1, x + Trennweite); ++u)
                    if (best[std::size_t(v) * std::size_t(w) + std::size_t(u)] > wert)
                        gipfel = false;
            if (!gipfel)
                continue;
            const Drehung& d = drehungen_[welche[std::size_t(y) * std::size_t(w) + std::size_t(x)]];
            stellen.push_back(
                {(x + 0.5) * Teiler, (y + 0.5) * Teiler, d.winkel, 1, d.gespiegelt, wert});
        }
    std::stable_sort(stellen.begin(), stellen.end(),
                     [](const auto& a, const auto& b) { return a.güte > b.güte; });
    if (stellen.size() > HöchstensStellen)
        stellen.resize(HöchstensStellen);
    return stellen;
}

} // namespace tarvel
