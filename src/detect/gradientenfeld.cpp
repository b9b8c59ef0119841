#include "detect/gradientenfeld.h"

#include "detect/graubild.h"

#include <algorithm>
#include <cmath>

namespace tarvel {
namespace {

constexpr int W = Flügelausschnitt::Breite;
constexpr int H = Flügelausschnitt::Höhe;
constexpr int R = Gradientenfeld::Richtungen;
/// Steps per unit of a gradient.
constexpr float Auflösung = 256;

/// A bell curve of standard deviation 0.8 pixels.
void glätte(const std::vector<float>& quelle, std::vector<float>& ziel) {
    constexpr float Mitte = 0.4987F;
    constexpr float Neben = 0.2283F;
    constexpr float Fern = 0.02235F;
    std::vector<float> quer(quelle.size());
    for (int y = 0; y < H; ++y) {
        std::array<float, W + 4> z{};
        const float* q = quelle.data() + y * W;
        std::copy_n(q, W, z.begin() + 2);
        z[0] = z[1] = q[0];
        z[W + 2] = z[W + 3] = q[W - 1];
        for (int x = 0; x < W; ++x)
            quer[std::size_t(y) * W + std::size_t(x)] =
                Mitte * z[x + 2] + Neben * (z[x + 1] + z[x + 3]) + Fern * (z[x] + z[x + 4]);
    }
    const auto zeile = [&](int y) { return quer.data() + std::clamp(y, 0, H - 1) * W; };
    for (int y = 0; y < H; ++y) {
        const float *a = zeile(y - 2), *b = zeile(y - 1), *c = zeile(y), *d = zeile(y + 1),
                    *e = zeile(y + 2);
        float* z = ziel.data() + y * W;
        for (int x = 0; x < W; ++x)
            z[x] = Mitte * c[x] + Neben * (b[x] + d[x]) + Fern * (a[x] + e[x]);
    }
}

} // namespace

void Flügelausschnitt::gleicheAus() {
    double summe = 0;
    for (float w : werte)
        summe += w;
    const auto mittel = float(summe / double(werte.size()));
    double quadrate = 0;
    for (float w : werte)
        quadrate += double(w - mittel) * (w - mittel);
    const auto teiler = float(std::sqrt(quadrate / double(werte.size())) + 1e-3);
    for (float& w : werte)
        w = (w - mittel) / teiler;
}

Gradientenfeld::Gradientenfeld(const Flügelausschnitt& ausschnitt)
    : summen_(std::size_t(W + 1) * (H + 1) * R) {
    std::vector<float> bild(ausschnitt.werte.size());
    glätte(ausschnitt.werte, bild);
    std::array<float, R> cosinus{};
    std::array<float, R> sinus{};
    for (int r = 0; r < R; ++r) {
        cosinus[std::size_t(r)] = std::cos(float(r) * 6.2831853F / R);
        sinus[std::size_t(r)] = std::sin(float(r) * 6.2831853F / R);
    }
    // A direction takes part of what points less than 45 degrees away from it.
    constexpr float Öffnung = 0.70710678F;
    constexpr float Grenze = 30000;
    for (int y = 0; y < H; ++y) {
        const float* a = bild.data() + std::max(0, y - 1) * W;
        const float* b = bild.data() + y * W;
        const float* c = bild.data() + std::min(H - 1, y + 1) * W;
        std::array<std::int32_t, R> lauf{};
        const std::int32_t* oben = summen_.data() + std::size_t(y) * (W + 1) * R;
        std::int32_t* unten = summen_.data() + std::size_t(y + 1) * (W + 1) * R;
        for (int x = 0; x < W; ++x) {
            const int l = std::max(0, x - 1);
            const int r = std::min(W - 1, x + 1);
            const float gx = b[r] - b[l] + 0.5F * (a[r] - a[l] + c[r] - c[l]);
            const float gy = c[x] - a[x] + 0.5F * (c[l] - a[l] + c[r] - a[r]);
            const float m = Öffnung * std::sqrt(gx * gx + gy * gy);
            for (int k = 0; k < R; ++k) {
                const float anteil = gx * cosinus[std::size_t(k)] + gy * sinus[std::size_t(k)] - m;
                lauf[std::size_t(k)] +=
                    std::int32_t(std::clamp(anteil * Auflösung, 0.0F, Grenze) + Halbes);
                unten[(x + 1) * R + k] = oben[(x + 1) * R + k] + lauf[std::size_t(k)];
            }
        }
    }
}

void Gradientenfeld::beschreibe(QPointF ort, int fenster, int zelle, float* ziel) const {
    const int n = fenster / zelle;
    // The corners of the cells, each shared by up to four of them.
    constexpr int HöchstensEcken = 97;
    std::array<float, HöchstensEcken> xs{};
    std::array<float, HöchstensEcken> ys{};
    for (int i = 0; i <= n; ++i) {
        const auto abstand = float(i * zelle) - float(fenster) / 2;
        xs[std::size_t(i)] = std::clamp(float(ort.x()) + abstand, 0.0F, float(W));
        ys[std::size_t(i)] = std::clamp(float(ort.y()) + abstand, 0.0F, float(H));
    }
    std::vector<float> ecken(std::size_t(n + 1) * std::size_t(n + 1) * R);
    for (int i = 0; i <= n; ++i) {
        const int y = std::min(int(ys[std::size_t(i)]), H - 1);
        const float fy = ys[std::size_t(i)] - float(y);
        for (int j = 0; j <= n; ++j) {
            const int x = std::min(int(xs[std::size_t(j)]), W - 1);
            const float fx = xs[std::size_t(j)] - float(x);
            const std::int32_t* p =
                summen_.data() + (std::size_t(y) * (W + 1) + std::size_t(x)) * R;
            const std::int32_t* q = p + (W + 1) * R;
            float* e = ecken.data() + std::size_t(i * (n + 1) + j) * R;
            for (int k = 0; k < R; ++k) {
                // Differences first: the sums themselves need more digits than a float has.
                const float oben = fx * float(p[R + k] - p[k]);
                const float unten = float(q[k] - p[k]) + fx * float(q[R + k] - q[k]);
                e[k] = oben + fy * (unten - oben);
            }
        }
    }
    const auto basis = [&](int i, int j) {
        const int y = std::min(int(ys[std::size_t(i)]), H - 1);
        const int x = std::min(int(xs[std::size_t(j)]), W - 1);
        return summen_.data() + (std::size_t(y) * (W + 1) + std::size_t(x)) * R;
    };
    float länge = 0;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) {
            const std::int32_t *a = basis(i, j), *b = basis(i, j + 1), *c = basis(i + 1, j),
                               *d = basis(i + 1, j + 1);
            const float* ea = ecken.data() + std::size_t(i * (n + 1) + j) * R;
            const float* eb = ea + R;
            const float* ec = ea + std::size_t(n + 1) * R;
            const float* ed = ec + R;
            float* z = ziel + std::size_t(i * n + j) * R;
            for (int k = 0; k < R; ++k) {
                const float ganz = float((d[k] - c[k]) - (b[k] - a[k]));
                z[k] = std::max(0.0F, (ganz + (ed[k] - ec[k]) - (eb[k] - ea[k])) / Auflösung);
                länge += z[k] * z[k];
            }
        }
    // A window without anything to see must not be stretched to full contrast.
    const float faktor = 1 / (std::sqrt(länge) + float(fenster) / 5);
    for (int i = 0; i < n * n * R; ++i)
        ziel[i] = std::sqrt(ziel[i] * faktor);
}

} // namespace tarvel
