#include "detect/punktvorschlag.h"

#include "detect/punktkaskade.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>

namespace tarvel {
namespace {

/// A crop that lies a little differently: radians, stretch, pixels of the frame.
struct Abwandlung {
    double winkel, streckung, dx, dy;
};
/// The crops whose median is proposed.
constexpr std::array Abwandlungen{Abwandlung{0, 1, 0, 0}, Abwandlung{0.035, 1, 3, 2},
                                  Abwandlung{-0.035, 1, -3, -2}, Abwandlung{0, 1.03, -4, 3},
                                  Abwandlung{0, 0.97, 4, -3}};
/// Starts, in pixels of the crop, from which a sure point finds back.
constexpr std::array Versätze{QPointF(2.5, 0), QPointF(-2.5, 0), QPointF(0, 2.5), QPointF(0, -2.5),
                              QPointF(4, 4),   QPointF(-4, -4),  QPointF(4, -4),  QPointF(-4, 4)};

/// The frame of a crop varied about its middle.
Affin abgewandelt(const Affin& lage, const Abwandlung& a) {
    const QPointF mitte(
        Flügelausschnitt::Links + Flügelausschnitt::Breite * Flügelausschnitt::Maßstab / 2,
        Flügelausschnitt::Oben + Flügelausschnitt::Höhe * Flügelausschnitt::Maßstab / 2);
    return lage.nach(Affin::verschiebung(mitte + QPointF(a.dx, a.dy)))
        .nach(Affin::drehung(a.winkel, a.streckung))
        .nach(Affin::verschiebung(-mitte));
}

Punktsatz abgebildet(const Affin& lage, const Punktsatz& punkte) {
    Punktsatz bild;
    std::transform(punkte.begin(), punkte.end(), bild.begin(), lage);
    return bild;
}

double länge(QPointF p) {
    return std::hypot(p.x(), p.y());
}

template <std::size_t N>
double median(std::array<double, N> werte) {
    std::nth_element(werte.begin(), werte.begin() + N / 2, werte.end());
    if constexpr (N % 2)
        return werte[N / 2];
    return (werte[N / 2] + *std::max_element(werte.begin(), werte.begin() + N / 2)) / 2;
}

/// Per point: the median of several sets, and how far the sets lie around their mean.
template <std::size_t N>
std::pair<Punktsatz, std::array<double, 8>> mitteUndStreuung(const std::array<Punktsatz, N>& sätze,
                                                             bool umMedian) {
    Punktsatz mitte;
    std::array<double, 8> streuung{};
    for (std::size_t k = 0; k < mitte.size(); ++k) {
        std::array<double, N> x{};
        std::array<double, N> y{};
        QPointF mittel;
        for (std::size_t i = 0; i < N; ++i) {
            x[i] = sätze[i][k].x();
            y[i] = sätze[i][k].y();
            mittel += sätze[i][k] / double(N);
        }
        mitte[k] = {median(x), median(y)};
        const QPointF um = umMedian ? mitte[k] : mittel;
        double quadrate = 0;
        for (std::size_t i = 0; i < N; ++i)
            quadrate += std::pow(x[i] - um.x(), 2) + std::pow(y[i] - um.y(), 2);
        streuung[k] = std::sqrt(quadrate / double(N));
    }
    return {mitte, streuung};
}

/// Distance of a descriptor from the space of good ones.
float abstand(const Merkmalsraum& raum, std::size_t punkt, std::vector<float>& merkmale) {
    const auto f = std::size_t(raum.merkmale());
    const float* mitte = raum.mitte.data() + punkt * f;
    for (std::size_t i = 0; i < f; ++i)
        merkmale[i] -= mitte[i];
    for (int r = 0; r < Merkmalsraum::Richtungen; ++r) {
        const float* richtung =
            raum.richtungen.data() + (punkt * Merkmalsraum::Richtungen + std::size_t(r)) * f;
        float anteil = 0;
        for (std::size_t i = 0; i < f; ++i)
            anteil += merkmale[i] * richtung[i];
        for (std::size_t i = 0; i < f; ++i)
            merkmale[i] -= anteil * richtung[i];
    }
    float quadrate = 0;
    for (std::size_t i = 0; i < f; ++i)
        quadrate += merkmale[i] * merkmale[i];
    return std::sqrt(quadrate);
}

} // namespace

float Punktvorschlag::mittlererFehler() const {
    return std::accumulate(fehler.begin(), fehler.end(), 0.0F) / float(fehler.size());
}

Bildstück::Bildstück(const Pixelquelle& quelle, const Affin& lage) {
    constexpr double Spiel = 40;
    const double r = Flügelausschnitt::Links + Flügelausschnitt::Breite * Flügelausschnitt::Maßstab;
    const double u = Flügelausschnitt::Oben + Flügelausschnitt::Höhe * Flügelausschnitt::Maßstab;
    QRectF bedarf;
    for (QPointF ecke :
         {QPointF(Flügelausschnitt::Links - Spiel, Flügelausschnitt::Oben - Spiel),
          QPointF(r + Spiel, Flügelausschnitt::Oben - Spiel), QPointF(r + Spiel, u + Spiel),
          QPointF(Flügelausschnitt::Links - Spiel, u + Spiel)}) {
        const QPointF p = lage(ecke);
        bedarf |= QRectF(p - QPointF(2, 2), QSizeF(4, 4));
    }
    QRect teil = bedarf.toAlignedRect() & QRect({0, 0}, quelle.größe());
    if (teil.isEmpty())
        teil = QRect(0, 0, 1, 1);
    const double jePixel = lage.maßstab() * Flügelausschnitt::Maßstab;
    // Finer pictures are brought to the crop's resolution; nearly as coarse ones are taken as they
    // are.
    const double teiler = jePixel > 4.0 / 3 ? jePixel : 1;
    bild_ = verkleinert(quelle, teil, teiler);
    zuBild_ = Affin::streckung(1 / teiler).nach(Affin::verschiebung(-QPointF(teil.topLeft())));
}

Flügelausschnitt Bildstück::schneide(const Affin& lage) const {
    const Affin ausRahmen{
        Flügelausschnitt::Maßstab, 0, 0, Flügelausschnitt::Maßstab, Flügelausschnitt::Links,
        Flügelausschnitt::Oben};
    const Affin weg = zuBild_.nach(lage).nach(ausRahmen);
    Flügelausschnitt aus;
    float* ziel = aus.werte.data();
    for (int v = 0; v < Flügelausschnitt::Höhe; ++v) {
        const QPointF anfang = weg({0.5, v + 0.5});
        const auto x = float(anfang.x());
        const auto y = float(anfang.y());
        for (int u = 0; u < Flügelausschnitt::Breite; ++u)
            *ziel++ = kubisch(bild_, x + float(u * weg.xx), y + float(u * weg.yx));
    }
    aus.gleicheAus();
    return aus;
}

std::pair<Punktvorschlag, Vorschlagszeichen> Punktsucher::sucheMitZeichen(const Pixelquelle& quelle,
                                                                          const Affin& lage) const {
    const Punktkaskade kaskade(modell_.stufen);
    Punktsatz anfang;
    std::transform(modell_.punkte.begin(), modell_.punkte.end(), anfang.begin(),
                   Flügelausschnitt::ausRahmen);
    const auto imRahmen = [](Punktsatz punkte) {
        std::transform(punkte.begin(), punkte.end(), punkte.begin(), Flügelausschnitt::inRahmen);
        return punkte;
    };

    const Bildstück stück(quelle, lage);
    Affin besser;
    {
        Punktsatz punkte = anfang;
        kaskade.führe(Gradientenfeld(stück.schneide(lage)), punkte);
        besser = ähnlichkeit(modell_.punkte, abgebildet(lage, imRahmen(punkte)), lage.spiegelt());
    }
    std::array<Punktsatz, Abwandlungen.size()> sätze;
    std::optional<Gradientenfeld> gerade;
    for (std::size_t i = 0; i < Abwandlungen.size(); ++i) {
        const Affin so = abgewandelt(besser, Abwandlungen[i]);
        Gradientenfeld feld(stück.schneide(so));
        Punktsatz punkte = anfang;
        kaskade.führe(feld, punkte);
        sätze[i] = abgebildet(so, imRahmen(punkte));
        if (i == 0)
            gerade = std::move(feld);
    }
    Punktvorschlag vorschlag;
    const auto [mitte, streuung] = mitteUndStreuung(sätze, false);
    vorschlag.punkte = mitte;
    vorschlag.lage = besser;

    // What the error is told from.
    const double maßstab = besser.maßstab();
    const Affin zurück = besser.umkehrung();
    const Punktsatz rahmen = abgebildet(zurück, mitte);
    Punktsatz imAusschnitt;
    std::transform(rahmen.begin(), rahmen.end(), imAusschnitt.begin(), Flügelausschnitt::ausRahmen);
    std::array<Punktsatz, Versätze.size()> stimmen;
    for (std::size_t i = 0; i < Versätze.size(); ++i) {
        stimmen[i] = imAusschnitt;
        for (QPointF& p : stimmen[i])
            p += Versätze[i];
        kaskade.führeEinzeln(*gerade, stimmen[i]);
    }
    const auto uneins = mitteUndStreuung(stimmen, true).second;
    Vorschlagszeichen zeichen{};
    for (std::size_t k = 0; k < zeichen.size(); ++k) {
        zeichen[k][0] = float(std::log(streuung[k] / maßstab + 0.05));
        for (std::size_t r = 0; r < modell_.fehler.räume.size(); ++r) {
            const Merkmalsraum& raum = modell_.fehler.räume[r];
            std::vector<float> merkmale(std::size_t(raum.merkmale()));
            gerade->beschreibe(imAusschnitt[k], raum.fenster, raum.zelle, merkmale.data());
            zeichen[k][1 + r] = std::log(abstand(raum, k, merkmale) + 1e-3F);
        }
        zeichen[k][3] = float(std::log(uneins[k] * Flügelausschnitt::Maßstab + 0.05));
        zeichen[k][4] = float(std::log(länge(rahmen[k] - modell_.punkte[k]) + 1));
    }
    return {vorschlag, zeichen};
}

float Punktsucher::erwarteterFehler(const Fehlermodell& modell,
                                    const std::array<float, Fehlermodell::Zeichen>& z) {
    float summe = modell.gewichte[0];
    for (std::size_t i = 0; i < z.size(); ++i) {
        const float t = (z[i] - modell.mitte[i]) / modell.streuung[i];
        summe += modell.gewichte[1 + i] * t + modell.gewichte[1 + z.size() + i] * t * t;
    }
    const auto& e = modell.eichung;
    const auto danach =
        std::find_if(e.begin(), e.end(), [&](const auto& p) { return p.first > summe; });
    if (danach == e.begin())
        return e.front().second;
    if (danach == e.end())
        return e.back().second;
    const auto davor = danach - 1;
    const float t = (summe - davor->first) / (danach->first - davor->first);
    return davor->second + t * (danach->second - davor->second);
}

Punktvorschlag Punktsucher::suche(const Pixelquelle& quelle, const Affin& lage) const {
    auto [vorschlag, zeichen] = sucheMitZeichen(quelle, lage);
    for (std::size_t k = 0; k < zeichen.size(); ++k)
        vorschlag.fehler[k] = erwarteterFehler(modell_.fehler, zeichen[k]);
    return vorschlag;
}

} // namespace tarvel
