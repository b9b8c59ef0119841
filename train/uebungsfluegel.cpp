#include "uebungsfluegel.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <numeric>

namespace tarvel {
namespace {

constexpr int Marken = 19;
/// Landmarks that are the measuring points 1 to 8.
constexpr std::array Messmarken{7, 18, 5, 2, 3, 1, 0, 4};

/// Where the points of a wing lie in the frame, about: it fixes the frame's origin and direction.
constexpr std::array Bezug{QPointF(395, 44),  QPointF(89, 73),   QPointF(356, 55),
                           QPointF(285, 63),  QPointF(284, 118), QPointF(236, 146),
                           QPointF(218, 144), QPointF(294, 198)};

float anteilswert(std::vector<std::uint8_t> werte, double anteil) {
    const auto stelle = werte.begin() + std::ptrdiff_t(anteil * double(werte.size() - 1));
    std::nth_element(werte.begin(), stelle, werte.end());
    return float(*stelle);
}

std::vector<QPointF> abgebildet(const Affin& lage, const std::vector<QPointF>& orte) {
    std::vector<QPointF> bild;
    std::transform(orte.begin(), orte.end(), std::back_inserter(bild), lage);
    return bild;
}

/// Root of the sum of squared distances from the middle.
double ausdehnung(const std::vector<QPointF>& orte) {
    const QPointF mitte =
        std::accumulate(orte.begin(), orte.end(), QPointF()) / double(orte.size());
    double summe = 0;
    for (const QPointF& p : orte)
        summe += QPointF::dotProduct(p - mitte, p - mitte);
    return std::sqrt(summe);
}

} // namespace

std::optional<std::vector<Übungsflügel>> liesÜbungsflügel(const QString& ordner, QString& grund) {
    QFile datei(QDir(ordner).filePath(QStringLiteral("landmarks.csv")));
    if (!datei.open(QIODevice::ReadOnly | QIODevice::Text)) {
        grund = datei.fileName() + QStringLiteral(": ") + datei.errorString();
        return std::nullopt;
    }
    (void)datei.readLine();
    std::vector<Übungsflügel> alle;
    while (!datei.atEnd()) {
        const auto felder = QString::fromUtf8(datei.readLine()).trimmed().split(QLatin1Char(','));
        if (felder.size() < 4 + 2 * Marken)
            continue;
        Übungsflügel f;
        f.name = felder[0].section(QLatin1Char('.'), 0, 0);
        f.volk = f.name.section(QLatin1Char('-'), 0, 1);
        f.dpi = felder[3].toDouble();
        QImage bild(QDir(ordner).filePath(felder[0]));
        if (bild.isNull() || f.dpi <= 0) {
            grund = felder[0];
            return std::nullopt;
        }
        bild.convertTo(QImage::Format_Grayscale8);
        f.bild = Graubild(bild.width(), bild.height());
        for (int y = 0; y < bild.height(); ++y)
            std::copy_n(bild.constScanLine(y), bild.width(), f.bild.zeile(y));
        for (int i = 0; i < Marken; ++i)
            f.marken.emplace_back(felder[4 + 2 * i].toDouble() + 0.5,
                                  felder[5 + 2 * i].toDouble() + 0.5);
        for (std::size_t k = 0; k < Messmarken.size(); ++k)
            f.punkte[k] = f.marken[std::size_t(Messmarken[k])];
        alle.push_back(std::move(f));
    }
    if (alle.empty()) {
        grund = datei.fileName();
        return std::nullopt;
    }
    return alle;
}

Mittelflügel mittle(const std::vector<const Übungsflügel*>& flügel) {
    std::vector<QPointF> mittel = flügel[0]->marken;
    const std::vector<QPointF> erster = mittel;
    double größe = 0;
    for (const auto* f : flügel)
        größe += ausdehnung(f->marken) * 2400 / f->dpi / double(flügel.size());
    constexpr int Runden = 10;
    for (int runde = 0; runde < Runden; ++runde) {
        std::vector<QPointF> summe(mittel.size());
        for (const auto* f : flügel) {
            const auto lage = ähnlichkeit(f->marken, mittel);
            for (std::size_t i = 0; i < summe.size(); ++i)
                summe[i] += lage(f->marken[i]) / double(flügel.size());
        }
        mittel = abgebildet(ähnlichkeit(summe, erster), summe);
    }
    const double faktor = größe / ausdehnung(mittel);
    for (QPointF& p : mittel)
        p *= faktor;
    Punktsatz punkte;
    for (std::size_t k = 0; k < Messmarken.size(); ++k)
        punkte[k] = mittel[std::size_t(Messmarken[k])];
    Affin insBezugssystem = ähnlichkeit(punkte, Bezug);
    insBezugssystem = Affin::verschiebung(insBezugssystem(QPointF()))
                          .nach(Affin::drehung(std::atan2(insBezugssystem.yx, insBezugssystem.xx)));
    // Turned and moved only; the size stays that of the wings.
    QPointF abstand;
    Mittelflügel aus;
    aus.marken = abgebildet(insBezugssystem, mittel);
    for (std::size_t k = 0; k < Messmarken.size(); ++k) {
        aus.punkte[k] = aus.marken[std::size_t(Messmarken[k])];
        abstand += (Bezug[k] - aus.punkte[k]) / double(Messmarken.size());
    }
    for (QPointF& p : aus.marken)
        p += abstand;
    for (QPointF& p : aus.punkte)
        p += abstand;
    return aus;
}

void richteAus(std::vector<Übungsflügel>& flügel, const Mittelflügel& mittel) {
    for (Übungsflügel& f : flügel) {
        f.ausMittel = ähnlichkeit(mittel.marken, f.marken);
        const float hell = anteilswert(f.bild.werte, 0.9);
        Feld ganz(f.bild.breite, f.bild.höhe);
        std::transform(f.bild.werte.begin(), f.bild.werte.end(), ganz.werte.begin(),
                       [&](std::uint8_t w) { return float(w) / hell; });
        const double teiler = f.ausMittel.maßstab() * Flügelausschnitt::Maßstab;
        f.halb = verkleinert(ganz, teiler);
        f.zuHalb = Affin::streckung(1 / teiler).nach(f.ausMittel);
        // The edge of the picture fades into the paper.
        constexpr double Saum = 6;
        for (int y = 0; y < ganz.höhe; ++y)
            for (int x = 0; x < ganz.breite; ++x) {
                const int rand =
                    std::min(std::min(x, ganz.breite - 1 - x), std::min(y, ganz.höhe - 1 - y));
                const auto a = float(std::min(1.0, rand / Saum));
                ganz.bei(x, y) = 1 + (std::clamp(ganz.bei(x, y), 0.02F, 1.03F) - 1) * a;
            }
        f.durchsicht = std::move(ganz);
        f.zuDurchsicht = f.ausMittel;
    }
}

} // namespace tarvel
