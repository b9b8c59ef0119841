#include "abwandlung.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tarvel {
namespace {

constexpr int CB = Flügelausschnitt::Breite;
constexpr int CH = Flügelausschnitt::Höhe;

/// A smooth random field of shifts over the frame.
class Biegung {
public:
    Biegung(Zufall& zufall, double stärke, double weite)
        : weite_(weite)
        , breite_(int(CB * 2 / weite) + 6)
        , höhe_(int(CH * 2 / weite) + 6)
        , x_(breite_, höhe_)
        , y_(breite_, höhe_) {
        for (float& w : x_.werte)
            w = float(zufall.normal(0, stärke));
        for (float& w : y_.werte)
            w = float(zufall.normal(0, stärke));
    }
    [[nodiscard]] QPointF bei(QPointF p) const {
        const auto u = float((p.x() - Flügelausschnitt::Links) / weite_ + 2);
        const auto v = float((p.y() - Flügelausschnitt::Oben) / weite_ + 2);
        return {double(kubisch(x_, u, v)), double(kubisch(y_, u, v))};
    }

private:
    double weite_;
    int breite_, höhe_;
    Feld x_, y_;
};

struct Beule {
    QPointF mitte, schub;
    double weite;
};

void fotografiere(Feld& d, Zufall& z) {
    const auto gamma = float(std::exp(z.normal(0, 0.35)));
    for (float& w : d.werte)
        w = std::pow(w, gamma);
    if (z.mit(0.5)) {
        const Feld licht = wolken(z, 6, 4, 0.5, 1.3, CB, CH);
        for (std::size_t i = 0; i < d.werte.size(); ++i)
            d.werte[i] *= licht.werte[i];
    }
    if (z.mit(0.5)) {
        const Feld schleier = wolken(z, 7, 5, 0, 0.25, CB, CH);
        for (std::size_t i = 0; i < d.werte.size(); ++i)
            d.werte[i] += schleier.werte[i];
    }
    for (int i = z.poisson(3); i > 0; --i)
        maleScheibe(d, {z.gleich(0, CB), z.gleich(0, CH)}, z.gleich(1, 4), float(z.gleich(0, 0.9)));
    if (z.mit(0.2))
        maleHaar(d, z, {z.gleich(0, CB), z.gleich(0, CH)}, 12, z.gleich(0.8, 2),
                 float(z.gleich(0.3, 0.8)));
    if (z.mit(0.12)) {
        const int x = z.ganz(CB);
        const int y = z.ganz(CH);
        const auto w = float(z.gleich());
        const int r = std::min(CB, x + 5 + z.ganz(20));
        const int u = std::min(CH, y + 5 + z.ganz(20));
        for (int v = y; v < u; ++v)
            for (int s = x; s < r; ++s)
                d.bei(s, v) = w;
    }
    if (z.mit(0.3)) {
        Feld korn(CB, CH);
        for (float& w : korn.werte)
            w = float(z.normal());
        korn = unscharf(korn, z.gleich(0.6, 1.5));
        double quadrate = 0;
        for (float w : korn.werte)
            quadrate += double(w) * w;
        const auto faktor =
            float(z.gleich(0, 0.06) / std::sqrt(quadrate / double(korn.werte.size()) + 1e-9));
        for (std::size_t i = 0; i < d.werte.size(); ++i)
            d.werte[i] += std::abs(korn.werte[i]) * faktor;
    }
    const double r = z.gleich();
    if (r < 0.6)
        d = unscharf(d, r < 0.52 ? z.gleich(0.3, 1.8) : z.gleich(1.8, 3.2));
    else if (r < 0.8)
        d = gestreckt(verkleinert(d, 1 / z.gleich(0.35, 0.9)), CB, CH);
    const auto tiefe = float(z.gleich(0.5, 1.1));
    const double rauschen = z.gleich(0, 0.03);
    for (float& w : d.werte)
        w = w * tiefe + float(z.normal(0, rauschen));
}

double kreuz(QPointF a, QPointF b) {
    return a.x() * b.y() - a.y() * b.x();
}

/// Distance of two convex outlines; below 0 they overlap.
double abstand(const std::vector<QPointF>& a, const std::vector<QPointF>& b) {
    double größter = -1e9;
    for (const auto* eins : {&a, &b}) {
        const auto& andere = eins == &a ? b : a;
        for (std::size_t i = 0; i < eins->size(); ++i) {
            const QPointF p = (*eins)[i];
            QPointF kante = (*eins)[(i + 1) % eins->size()] - p;
            kante /= std::hypot(kante.x(), kante.y());
            double mitte = 0;
            for (const QPointF& q : *eins)
                mitte += kreuz(kante, q - p);
            const double sinn = mitte < 0 ? 1 : -1;
            double kleinster = 1e9;
            for (const QPointF& q : andere)
                kleinster = std::min(kleinster, sinn * kreuz(kante, q - p));
            größter = std::max(größter, kleinster);
        }
    }
    return größter;
}

void durchJpeg(QImage& bild, int güte) {
    if (güte <= 0)
        return;
    QBuffer puffer;
    puffer.open(QIODevice::WriteOnly);
    bild.save(&puffer, "JPEG", güte);
    bild.loadFromData(puffer.data(), "JPEG");
}

/// The outline of a wing in the frame.
const std::vector<QPointF> Umriss{{15, 150}, {60, 80},   {200, 15},  {420, 20}, {890, 60},
                                  {890, 95}, {480, 215}, {300, 305}, {180, 280}};

/// Lays what the field @p was shows through @p lage (from its pixels to those of the sheet).
void durchscheine(Feld& blatt, const Feld& was, const Affin& lage) {
    Feld quelle = was;
    Affin hin = lage;
    while (hin.maßstab() < 0.75) {
        quelle = verkleinert(quelle, 2);
        hin = hin.nach(Affin::streckung(2));
    }
    double l = 1e9, r = -1e9, o = 1e9, u = -1e9;
    for (QPointF ecke : {QPointF(0, 0), QPointF(quelle.breite, 0), QPointF(0, quelle.höhe),
                         QPointF(quelle.breite, quelle.höhe)}) {
        const QPointF p = hin(ecke);
        l = std::min(l, p.x());
        r = std::max(r, p.x());
        o = std::min(o, p.y());
        u = std::max(u, p.y());
    }
    const Affin zurück = hin.umkehrung();
    for (int y = std::max(0, int(o)); y <= std::min(blatt.höhe - 1, int(u)); ++y)
        for (int x = std::max(0, int(l)); x <= std::min(blatt.breite - 1, int(r)); ++x) {
            const QPointF p = zurück({x + 0.5, y + 0.5});
            if (p.x() < 0 || p.y() < 0 || p.x() > quelle.breite || p.y() > quelle.höhe)
                continue;
            blatt.bei(x, y) *=
                std::clamp(kubisch(quelle, float(p.x()), float(p.y())), 0.02F, 1.05F);
        }
}

/// Something that is no fore wing of a bee: a wing pulled out of shape, a part of one, or scribble.
void legeFremdes(Feld& blatt, const Übungsflügel& flügel, QPointF mitte, double dpi, Zufall& z) {
    const int art = z.ganz(4);
    const double f = dpi / 2400;
    if (art == 3) {
        for (int i = 0; i < 6; ++i)
            maleHaar(blatt, z, mitte + QPointF(z.normal(0, 200 * f), z.normal(0, 80 * f)), 60 * f,
                     z.gleich(4, 10) * f, 0.4F);
        return;
    }
    Feld teil = flügel.durchsicht;
    if (art == 1) { // the root half alone
        Feld halb(teil.breite / 2, teil.höhe);
        for (int y = 0; y < halb.höhe; ++y)
            for (int x = 0; x < halb.breite; ++x)
                halb.bei(x, y) = teil.bei(x + teil.breite / 2, y);
        teil = std::move(halb);
    }
    // A fly's or a wasp's: much longer, much broader.
    const double quer = art == 0 ? z.gleich(1.8, 2.4) : art == 2 ? z.gleich(0.4, 0.55) : 1;
    const double w = z.gleich(0, 2 * std::numbers::pi);
    const Affin lage = Affin::verschiebung(mitte)
                           .nach(Affin::drehung(w, f))
                           .nach(Affin{1, 0, 0, quer, 0, 0})
                           .nach(Affin::verschiebung({-teil.breite / 2.0, -teil.höhe / 2.0}));
    durchscheine(blatt, teil, lage);
}

} // namespace

Übungsausschnitt abgewandelt(const Übungsflügel& flügel, Zufall& z) {
    constexpr double Grad = std::numbers::pi / 180;
    const double winkel = z.normal(0, 2.2 * Grad);
    const double größe = 1 + z.normal(0, 0.025);
    const double seiten = 1 + z.normal(0, 0.02);
    const double scherung = z.normal(0, 0.02);
    const QPointF schub(z.normal(0, 5), z.normal(0, 5));
    const QPointF mitte = Flügelausschnitt::inRahmen({CB / 2.0, CH / 2.0});
    const Affin verformt = Affin::verschiebung(mitte + schub)
                               .nach(Affin::drehung(winkel))
                               .nach({größe * seiten, scherung, 0, größe / seiten, 0, 0})
                               .nach(Affin::verschiebung(-mitte));
    const double stärke = z.mit(0.8) ? z.gleich(0, 6) : 0;
    const double weite = z.gleich(45, 110);
    const Biegung biegung(z, stärke * weite / 80, weite);
    const Affin insMittel = flügel.ausMittel.umkehrung();
    std::vector<Beule> beulen;
    if (z.mit(0.6)) {
        const double schubstärke = z.gleich(2, 7);
        for (const QPointF& p : flügel.punkte)
            beulen.push_back({insMittel(p) + QPointF(z.normal(0, 4), z.normal(0, 4)),
                              {z.normal(0, schubstärke), z.normal(0, schubstärke)},
                              z.gleich(18, 42)});
        if (z.mit(0.5)) {
            // The short segments 6-7 and 3-4, which vary most between races, on their own.
            beulen[6].schub += (beulen[6].mitte - beulen[5].mitte) / 20 * z.gleich(-5, 11);
            beulen[3].schub += (beulen[3].mitte - beulen[2].mitte) / 70 * z.gleich(-10, 16);
        }
    }
    const auto verschoben = [&](QPointF p) {
        QPointF d = biegung.bei(p);
        for (const Beule& b : beulen) {
            const QPointF a = p - b.mitte;
            const double fern = QPointF::dotProduct(a, a) / (2 * b.weite * b.weite);
            if (fern < 12)
                d -= b.schub * std::exp(-fern);
        }
        return p + d;
    };
    // The bend is smooth: known at every other pixel, it is known between them.
    constexpr int GB = CB / 2 + 1;
    std::vector<QPointF> gitter;
    gitter.reserve(std::size_t(GB) * (CH / 2 + 1));
    for (int y = 0; y <= CH; y += 2)
        for (int x = 0; x <= CB; x += 2)
            gitter.push_back(flügel.zuHalb(
                verformt(verschoben(Flügelausschnitt::inRahmen({double(x), double(y)})))));
    Feld d(CB, CH);
    for (int y = 0; y < CH; ++y)
        for (int x = 0; x < CB; ++x) {
            const QPointF* g = gitter.data() + std::ptrdiff_t(y / 2) * GB + x / 2;
            const double fx = x % 2 ? 0.75 : 0.25;
            const double fy = y % 2 ? 0.75 : 0.25;
            const QPointF p =
                (g[0] * (1 - fx) + g[1] * fx) * (1 - fy) + (g[GB] * (1 - fx) + g[GB + 1] * fx) * fy;
            d.bei(x, y) =
                std::clamp(1 - kubisch(flügel.halb, float(p.x()), float(p.y())), 0.0F, 1.0F);
        }
    Übungsausschnitt aus;
    const Affin zurück = verformt.umkehrung();
    for (std::size_t k = 0; k < aus.punkte.size(); ++k) {
        const QPointF ziel = zurück(insMittel(flügel.punkte[k]));
        QPointF p = ziel;
        constexpr int Runden = 25;
        for (int i = 0; i < Runden; ++i)
            p += 0.5 * (ziel - verschoben(p));
        aus.punkte[k] = Flügelausschnitt::ausRahmen(p);
    }
    fotografiere(d, z);
    std::transform(d.werte.begin(), d.werte.end(), aus.ausschnitt.werte.begin(),
                   [](float w) { return 1 - w; });
    aus.ausschnitt.gleicheAus();
    return aus;
}

Flügelaufnahme nimmAuf(const Übungsflügel& flügel, const Aufnahmeart& art, Zufall& z) {
    constexpr int Seite = 1160;
    const double winkel = art.winkel.value_or(z.gleich(0, 2 * std::numbers::pi));
    const bool spiegel = art.gespiegelt.value_or(z.mit(0.5));
    const double f = art.größe / flügel.ausMittel.maßstab();
    const Affin lage =
        Affin::verschiebung({Seite / 2.0 + z.gleich(-0.5, 0.5), Seite / 2.0 + z.gleich(-0.5, 0.5)})
            .nach(Affin::drehung(winkel, f, spiegel))
            .nach(Affin::verschiebung(
                {-flügel.durchsicht.breite / 2.0, -flügel.durchsicht.höhe / 2.0}));
    Feld blatt(Seite, Seite, 1);
    durchscheine(blatt, flügel.durchsicht, lage);
    for (float& w : blatt.werte)
        w = 1 - std::clamp(1 - w, 0.0F, 1.0F) * float(art.kontrast);
    Flügelaufnahme aus;
    std::transform(flügel.punkte.begin(), flügel.punkte.end(), aus.punkte.begin(), lage);
    for (int i = 0; i < art.staub; ++i)
        maleScheibe(blatt, {z.gleich(0, Seite), z.gleich(0, Seite)}, z.gleich(2, 9),
                    float(z.gleich(0.1, 0.9)));
    for (int i = 0; i < art.verdeckt; ++i) {
        const QPointF p =
            aus.punkte[std::size_t(z.ganz(8))] + QPointF(z.normal(0, 10), z.normal(0, 10));
        const double r = z.gleich(15, 30);
        constexpr std::array Töne{0.15F, 1.0F, 0.6F};
        maleScheibe(blatt, p, r, Töne[std::size_t(z.ganz(3))]);
        for (std::size_t k = 0; k < 8; ++k) {
            const QPointF a = aus.punkte[k] - p;
            if (std::hypot(a.x(), a.y()) < r)
                aus.verdeckt[k] = true;
        }
    }
    for (int i = 0; i < art.haare; ++i) {
        const auto k = std::size_t(z.ganz(8));
        const double w = z.gleich(0, std::numbers::pi);
        const QPointF richtung(std::cos(w), std::sin(w));
        const QPointF p = aus.punkte[k] + QPointF(z.normal(0, 5), z.normal(0, 5));
        maleLinie(blatt, p - 120 * richtung, p + 120 * richtung, z.gleich(4, 8), 0.4F);
        aus.verdeckt[k] = true;
    }
    const double teiler = 2400 / art.dpi;
    if (teiler > 1)
        blatt = verkleinert(blatt, teiler);
    if (art.unschärfe > 0)
        blatt = unscharf(blatt, std::max(0.3, art.unschärfe / teiler));
    for (float& w : blatt.werte)
        w = std::pow(std::clamp(w, 0.0F, 1.0F), float(art.gamma));
    aus.bild = alsGrau(blatt, 235 * art.helligkeit, art.rauschen, z);
    if (art.jpeg > 0) {
        QImage bild = alsBild(aus.bild);
        durchJpeg(bild, art.jpeg);
        bild.convertTo(QImage::Format_Grayscale8);
        for (int y = 0; y < aus.bild.höhe; ++y)
            std::copy_n(bild.constScanLine(y), aus.bild.breite, aus.bild.zeile(y));
    }
    for (QPointF& p : aus.punkte)
        p /= teiler;
    aus.lage = Affin::streckung(1 / teiler).nach(lage).nach(flügel.zuDurchsicht);
    return aus;
}

Kunstblatt legeBlatt(const std::vector<const Übungsflügel*>& vorrat, const Blattart& art,
                     Zufall& z) {
    const double k = art.dpi / 25.4;
    const int breite = int(art.breite * k);
    const int höhe = int(art.höhe * k);
    Feld blatt(breite, höhe, 1);
    Kunstblatt aus;
    std::vector<std::vector<QPointF>> belegt;
    const auto passt = [&](const std::vector<QPointF>& umriss) {
        for (const QPointF& p : umriss)
            if (p.x() < 0 || p.y() < 0 || p.x() >= breite || p.y() >= höhe)
                return false;
        return std::none_of(belegt.begin(), belegt.end(), [&](const auto& anderer) {
            return abstand(umriss, anderer) < art.abstand * k;
        });
    };
    int fremde = 0;
    for (int versuch = 0; versuch < art.anzahl * 400; ++versuch) {
        const int liegen = int(aus.flügel.size()) + fremde;
        if (liegen == art.anzahl + art.fremde)
            break;
        const Übungsflügel& f = *vorrat[(aus.flügel.size() * 7 + 3) % vorrat.size()];
        const double winkel = art.schwankung ? z.normal(0, *art.schwankung) * std::numbers::pi / 180
                                             : z.gleich(0, 2 * std::numbers::pi);
        const bool spiegel = art.spiegeln && z.mit(0.5);
        const double maßstab = art.dpi / 2400 * z.gleich(0.97, 1.03) / f.ausMittel.maßstab();
        const QPointF ort(z.gleich(6, art.breite - 6) * k, z.gleich(6, art.höhe - 6) * k);
        const Affin lage =
            Affin::verschiebung(ort)
                .nach(Affin::drehung(winkel, maßstab, spiegel))
                .nach(Affin::verschiebung({-f.durchsicht.breite / 2.0, -f.durchsicht.höhe / 2.0}));
        std::vector<QPointF> umriss;
        for (const QPointF& p : Umriss)
            umriss.push_back(lage(f.zuDurchsicht(p)));
        if (!passt(umriss))
            continue;
        belegt.push_back(umriss);
        if (fremde < art.fremde) {
            legeFremdes(blatt, f, ort, art.dpi, z);
            ++fremde;
            continue;
        }
        durchscheine(blatt, f.durchsicht, lage);
        Kunstblatt::Flügel gelegt{f.name, {}, ort};
        std::transform(f.punkte.begin(), f.punkte.end(), gelegt.punkte.begin(), lage);
        aus.flügel.push_back(gelegt);
    }
    for (int i = 0; i < art.staub; ++i)
        maleScheibe(blatt, {z.gleich(0, breite), z.gleich(0, höhe)},
                    std::max(0.7, z.exponential(0.05) * k), float(z.gleich(0.2, 0.9)));
    for (int i = 0; i < art.haare; ++i)
        maleHaar(blatt, z, {z.gleich(0, breite), z.gleich(0, höhe)}, 0.6 * k,
                 std::max(1.0, 0.03 * k), 0.4F);
    if (art.klebeband)
        for (int i = 0; i < 3; ++i) {
            const int y = z.ganz(höhe);
            const int ende = std::min(höhe, y + int(12 * k));
            for (int v = y; v < ende; ++v)
                for (int x = 0; x < breite; ++x)
                    blatt.bei(x, v) *= v < y + 2 || v >= ende - 2 ? 0.85F : 0.96F;
        }
    if (art.schrift) {
        QImage schrift(breite, höhe, QImage::Format_Grayscale8);
        schrift.fill(255);
        QPainter maler(&schrift);
        QFont font;
        font.setPixelSize(std::max(6, int(2.5 * k)));
        maler.setFont(font);
        maler.setPen(QColor(64, 64, 64));
        for (int i = 0; i < 6; ++i) {
            const QString text =
                QStringLiteral("%1-%2/26 K%3").arg(i).arg(z.ganz(999)).arg(z.ganz(40));
            const QRectF platz = QFontMetricsF(font).boundingRect(text);
            // Beside the wings, as one writes.
            for (int versuch = 0; versuch < 50; ++versuch) {
                const QPointF ort(z.gleich(0, 0.7) * breite, z.gleich(0.05, 0.98) * höhe);
                const QRectF r = platz.translated(ort);
                const std::vector<QPointF> umriss{r.topLeft(), r.topRight(), r.bottomRight(),
                                                  r.bottomLeft()};
                if (std::any_of(belegt.begin(), belegt.end(),
                                [&](const auto& f) { return abstand(umriss, f) < 0; }))
                    continue;
                maler.drawText(ort, text);
                break;
            }
        }
        maler.end();
        for (int y = 0; y < höhe; ++y)
            for (int x = 0; x < breite; ++x)
                if (const uchar g = schrift.constScanLine(y)[x]; g < 255)
                    blatt.bei(x, y) = std::min(blatt.bei(x, y), float(g) / 255);
    }
    if (art.unschärfe > 0)
        blatt = unscharf(blatt, art.unschärfe * art.dpi / 2400);
    for (int y = 0; y < höhe; ++y)
        for (int x = 0; x < breite; ++x)
            blatt.bei(x, y) *=
                float((1 - 0.07 * x / breite) * (0.97 + 0.03 * y / höhe)); // the scanner's lamp
    const Graubild grau = alsGrau(blatt, 235 * art.helligkeit, art.rauschen, z);
    aus.bild = alsBild(grau);
    if (art.farbstich) {
        QImage bunt(breite, höhe, QImage::Format_RGB32);
        for (int y = 0; y < höhe; ++y)
            for (int x = 0; x < breite; ++x) {
                const int g = grau.zeile(y)[x];
                bunt.setPixel(x, y, qRgb(g, g * 93 / 100, g * 82 / 100));
            }
        aus.bild = std::move(bunt);
    }
    durchJpeg(aus.bild, art.jpeg);
    return aus;
}

} // namespace tarvel
