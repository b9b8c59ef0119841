#include "detect/fluegellage.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tarvel {
namespace {

/// Pixels of the mean wing darker than this, and two around them, belong to the pattern.
constexpr int Musterschwelle = 7;
constexpr int Maskenrand = 2;
/// Least variation (of values 0 to 255) that counts as a picture at all, so that noise on blank
/// paper cannot correlate.
constexpr double Mindeststreuung = 0.3 * 255;
/// What is blurred by this many pixels and more is the same at neighbouring pixels.
constexpr int GroberSchritt = 9;
constexpr int MittlererSchritt = 3;
constexpr float Hoffnungslos = 0.45F;
constexpr float SicherGetroffen = 0.82F;
constexpr double Grad = std::numbers::pi / 180;

double drehabstand(double a, double b) {
    return std::abs(std::remainder(a - b, 2 * std::numbers::pi));
}

/// The best of @p lagen that are not nearly the same, at most @p anzahl.
std::vector<Flügellage> beste(std::vector<Flügellage> lagen, std::size_t anzahl, double umkreis,
                              double größenabstand) {
    std::stable_sort(lagen.begin(), lagen.end(),
                     [](const auto& a, const auto& b) { return a.güte > b.güte; });
    std::vector<Flügellage> gewählt;
    for (const Flügellage& q : lagen) {
        const bool neu = std::none_of(gewählt.begin(), gewählt.end(), [&](const Flügellage& u) {
            return u.gespiegelt == q.gespiegelt && std::hypot(u.x - q.x, u.y - q.y) <= umkreis &&
                   drehabstand(u.winkel, q.winkel) <= 0.5 &&
                   std::abs(u.größe - q.größe) <= größenabstand;
        });
        if (neu)
            gewählt.push_back(q);
        if (gewählt.size() == anzahl)
            break;
    }
    return gewählt;
}

} // namespace

Flügelmuster::Flügelmuster(const Erkennungsmodell& modell)
    : muster_(modell.muster) {
    maske_ = Graubild(muster_.breite, muster_.höhe);
    for (int y = 0; y < muster_.höhe; ++y)
        for (int x = 0; x < muster_.breite; ++x) {
            if (muster_.zeile(y)[x] < Musterschwelle)
                continue;
            for (int v = std::max(0, y - Maskenrand);
                 v <= std::min(muster_.höhe - 1, y + Maskenrand); ++v)
                for (int u = std::max(0, x - Maskenrand);
                     u <= std::min(muster_.breite - 1, x + Maskenrand); ++u)
                    maske_.zeile(v)[u] = 1;
        }
    alle_ = auswahl(1);
    dritte_ = auswahl(MittlererSchritt);
    neunte_ = auswahl(GroberSchritt);
}

Flügelmuster::Auswahl Flügelmuster::auswahl(int schritt) const {
    Auswahl aus;
    std::vector<std::size_t> stellen;
    int n = 0;
    for (int y = 0; y < muster_.höhe; ++y)
        for (int x = 0; x < muster_.breite; ++x) {
            if (!maske_.zeile(y)[x])
                continue;
            if (schritt == GroberSchritt ? x % 3 || y % 3 : n++ % schritt)
                continue;
            stellen.push_back(std::size_t(y) * std::size_t(muster_.breite) + std::size_t(x));
            aus.x.push_back(float(x) - float(muster_.breite - 1) / 2);
            aus.y.push_back(float(y) - float(muster_.höhe - 1) / 2);
        }
    for (std::size_t s = 0; s < aus.werte.size(); ++s) {
        const Graubild bild = s ? unscharf(muster_, Dunkelkarte::Unschärfe[s]) : muster_;
        auto& werte = aus.werte[s];
        werte.reserve(stellen.size());
        double summe = 0;
        for (std::size_t stelle : stellen) {
            werte.push_back(bild.werte[stelle]);
            summe += werte.back();
        }
        const auto mittel = float(summe / double(stellen.size()));
        double quadrate = 0;
        for (float& w : werte) {
            w -= mittel;
            quadrate += double(w) * w;
        }
        const auto faktor = float(1 / std::sqrt(std::max(quadrate, 1.0)));
        for (float& w : werte)
            w *= faktor;
    }
    return aus;
}

float Flügelmuster::wert(double x, double y) const {
    const int i = int(std::floor(x));
    const int j = int(std::floor(y));
    const auto bei = [&](int u, int v) {
        return u < 0 || v < 0 || u >= muster_.breite || v >= muster_.höhe
                   ? 0.0F
                   : float(muster_.zeile(v)[u]);
    };
    const auto fx = float(x - i);
    const auto fy = float(y - j);
    return (bei(i, j) * (1 - fx) + bei(i + 1, j) * fx) * (1 - fy) +
           (bei(i, j + 1) * (1 - fx) + bei(i + 1, j + 1) * fx) * fy;
}

bool Flügelmuster::gilt(double x, double y) const {
    const int i = int(std::lround(x));
    const int j = int(std::lround(y));
    return i >= 0 && j >= 0 && i < muster_.breite && j < muster_.höhe && maske_.zeile(j)[i];
}

float Flügelmuster::güte(const Dunkelkarte& karte, int stufe, const Flügellage& lage,
                         int schritt) const {
    const Auswahl& a = schritt == 1 ? alle_ : schritt == MittlererSchritt ? dritte_ : neunte_;
    const Graubild& bild = karte.stufen[std::size_t(stufe)];
    // The middle inside the map and the size within its limits: then the margin holds all of it.
    if (!(lage.x >= 0 && lage.y >= 0 && lage.x < karte.größe.width() &&
          lage.y < karte.größe.height()))
        return -1;
    const auto c = float(std::cos(lage.winkel) * lage.größe);
    const auto s = float(std::sin(lage.winkel) * lage.größe);
    const float m = lage.gespiegelt ? -1.0F : 1.0F;
    const auto x0 = float(lage.x + Dunkelkarte::Rand - 0.5);
    const auto y0 = float(lage.y + Dunkelkarte::Rand - 0.5);
    const float* werte = a.werte[std::size_t(stufe)].data();
    const std::uint8_t* pixel = bild.werte.data();
    const int w = bild.breite;
    const std::size_t n = a.x.size();
    float summe = 0;
    float quadrate = 0;
    float treffer = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const float u = a.x[i] * m;
        const float v = a.y[i];
        const float x = x0 + c * u - s * v;
        const float y = y0 + s * u + c * v;
        const int xi = int(x);
        const int yi = int(y);
        const float fx = x - float(xi);
        const float fy = y - float(yi);
        const std::uint8_t* p = pixel + std::ptrdiff_t(yi) * w + xi;
        const float oben = float(p[0]) + fx * float(p[1] - p[0]);
        const float unten = float(p[w]) + fx * float(p[w + 1] - p[w]);
        const float g = oben + fy * (unten - oben);
        summe += g;
        quadrate += g * g;
        treffer += g * werte[i];
    }
    const double varianz = std::max(0.0, double(quadrate) - double(summe) * summe / double(n));
    return float(treffer / std::max(std::sqrt(varianz), Mindeststreuung / std::sqrt(schritt)));
}

void Flügelmuster::steige(const Dunkelkarte& karte, Flügellage& lage, int stufe,
                          const Schritte& schritte, int schritt) const {
    lage.güte = güte(karte, stufe, lage, schritt);
    constexpr int HöchstensRunden = 6;
    for (int runde = 0; runde < HöchstensRunden; ++runde) {
        bool besser = false;
        for (int richtung = 0; richtung < 8; ++richtung)
            for (;;) {
                const double vz = richtung % 2 ? -1 : 1;
                Flügellage q = lage;
                switch (richtung / 2) {
                case 0:
                    q.winkel += vz * schritte.winkel;
                    break;
                case 1:
                    q.x += vz * schritte.weite;
                    break;
                case 2:
                    q.y += vz * schritte.weite;
                    break;
                default:
                    q.größe += vz * schritte.größe;
                    break;
                }
                if (q.größe < KleinsteGröße || q.größe > GrößteGröße)
                    break;
                q.güte = güte(karte, stufe, q, schritt);
                if (q.güte <= lage.güte + 1e-5F)
                    break;
                lage = q;
                besser = true;
            }
        if (!besser)
            break;
    }
}

void Flügelmuster::feinsuche(const Dunkelkarte& karte, Flügellage& lage) const {
    steige(karte, lage, 1, {1.3, 2.5 * Grad, 0.02}, MittlererSchritt);
    steige(karte, lage, 0, {0.6, 1 * Grad, 0.01}, MittlererSchritt);
    steige(karte, lage, 0, {0.25, 0.4 * Grad, 0.004}, 1);
}

std::vector<Flügellage> Flügelmuster::suche(const Dunkelkarte& karte,
                                            const Flügellage& anfang) const {
    // Half a turn and the mirror image look alike from afar, with the middle elsewhere along the
    // wing.
    std::vector<Flügellage> anfänge;
    for (int art = 0; art < 4; ++art)
        for (double größe : {0.94, 1.06})
            for (double drehung : {-0.1, 0.0, 0.1})
                for (double längs = -14; längs <= 14; längs += 7) {
                    Flügellage q = anfang;
                    q.winkel += (art & 1 ? std::numbers::pi : 0) + drehung;
                    q.gespiegelt = anfang.gespiegelt != bool(art & 2);
                    q.x += längs * std::cos(q.winkel);
                    q.y += längs * std::sin(q.winkel);
                    q.größe *= größe;
                    q.güte = güte(karte, 3, q, GroberSchritt);
                    anfänge.push_back(q);
                }
    auto lagen = beste(std::move(anfänge), 5, 8, 9);
    const auto nachGüte = [](const auto& a, const auto& b) { return a.güte > b.güte; };
    for (Flügellage& q : lagen)
        steige(karte, q, 3, {4, 5 * Grad, 0.04}, GroberSchritt);
    const float abgeschlagen =
        std::max_element(lagen.begin(), lagen.end(),
                         [](const auto& a, const auto& b) { return a.güte < b.güte; })
            ->güte -
        0.25F;
    std::erase_if(lagen, [&](const Flügellage& q) { return q.güte < abgeschlagen; });
    for (Flügellage& q : lagen)
        steige(karte, q, 2, {2.5, 4 * Grad, 0.03}, MittlererSchritt);
    std::stable_sort(lagen.begin(), lagen.end(), nachGüte);
    if (lagen[0].güte < Hoffnungslos)
        return {};

    std::vector<Flügellage> feine;
    float höchste = -1;
    const auto versuche = [&](Flügellage q) {
        feinsuche(karte, q);
        höchste = std::max(höchste, q.güte);
        feine.push_back(q);
    };
    const float schwelle = lagen[0].güte - 0.12F;
    for (std::size_t i = 0; i < lagen.size(); ++i) {
        // A wing beyond doubt needs no comparison with more than one other.
        if (i > 0 && (lagen[i].güte < schwelle || (i > 1 && höchste > SicherGetroffen)))
            break;
        versuche(lagen[i]);
    }
    const Flügellage best = *std::min_element(feine.begin(), feine.end(), nachGüte);
    if (höchste > Hoffnungslos && höchste < SicherGetroffen) {
        // Caught beside the best place, as on a much larger or smaller wing.
        std::vector<Flügellage> neu;
        for (double größe : {0.9, 0.96, 1.04, 1.1, 1.16})
            for (double drehung : {-0.06, 0.0, 0.06})
                for (double längs = -18; längs <= 18; längs += 6)
                    for (double quer : {-3.0, 3.0}) {
                        Flügellage q = best;
                        q.winkel += drehung;
                        const double c = std::cos(q.winkel);
                        const double s = std::sin(q.winkel);
                        q.x += längs * c - quer * s;
                        q.y += längs * s + quer * c;
                        q.größe = std::clamp(q.größe * größe, 0.82, 1.22);
                        q.güte = güte(karte, 2, q, GroberSchritt);
                        neu.push_back(q);
                    }
        for (Flügellage& q : beste(std::move(neu), 4, 5, 0.05)) {
            steige(karte, q, 2, {2.5, 3 * Grad, 0.03}, GroberSchritt);
            versuche(q);
        }
    }
    feine = beste(std::move(feine), höchste > SicherGetroffen ? 1 : 4, 6, 0.1);
    std::erase_if(feine, [&](const Flügellage& q) { return q.güte < höchste - 0.15F; });
    return feine;
}

Affin Flügelmuster::abbildung(const Flügellage& lage, double dpi) const {
    const double rahmen = 2400.0 / Dunkelkarte::Dpi;
    const QPointF mitte((muster_.breite / 2.0 - Erkennungsmodell::Musterrand) * rahmen,
                        (muster_.höhe / 2.0 - Erkennungsmodell::Musterrand) * rahmen);
    const double jeKarte = dpi / Dunkelkarte::Dpi;
    return Affin::verschiebung({lage.x * jeKarte, lage.y * jeKarte})
        .nach(Affin::drehung(lage.winkel, lage.größe * dpi / 2400, lage.gespiegelt))
        .nach(Affin::verschiebung(-mitte));
}

} // namespace tarvel
