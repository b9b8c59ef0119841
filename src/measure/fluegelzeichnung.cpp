#include "measure/fluegelzeichnung.h"

#include <QLineF>
#include <QLinearGradient>
#include <QPainter>
#include <QRandomGenerator>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <iterator>

namespace tarvel {

namespace {

struct Ort {
    double x;
    double y;
};

constexpr std::array<Ort, 9> Normalpunkte{{{0, 0},
                                           {4.170, 0.477},
                                           {0.968, 0.805},
                                           {3.765, 0.590},
                                           {3.043, 0.657},
                                           {3.019, 1.219},
                                           {2.489, 1.537},
                                           {2.269, 1.522},
                                           {3.095, 2.095}}};
constexpr Ort P1 = Normalpunkte[1];
constexpr Ort P2 = Normalpunkte[2];
constexpr Ort P3 = Normalpunkte[3];
constexpr Ort P4 = Normalpunkte[4];
constexpr Ort P5 = Normalpunkte[5];
constexpr Ort P6 = Normalpunkte[6];
constexpr Ort P7 = Normalpunkte[7];
constexpr Ort P8 = Normalpunkte[8];

// Junctions of veins that are no measuring points.
constexpr Ort StigmaInnen{5.080, 0.307};
constexpr Ort StigmaAußen{4.271, 0.220};
constexpr Ort GabelRadius{4.549, 0.831};
constexpr Ort GabelCubitus{4.214, 1.078};
constexpr Ort GabelBasal{5.503, 0.692};
constexpr Ort Basalfuß{6.244, 1.110};
constexpr Ort DiscoidalOben{4.699, 1.374};
constexpr Ort DiscoidalUnten{4.783, 1.797};
constexpr Ort QueraderOben{6.667, 1.126};
constexpr Ort QueraderUnten{6.741, 1.444};
constexpr Ort Analecke{4.962, 2.178};

/// Places in the table of veins.
enum Adernummer : std::size_t {
    Costa,
    Stigma,
    Radialbogen,
    Radius43,
    Radius31,
    Radius1Stigma,
    Quer35,
    Quer47,
    Cubitus56,
    Cubitus67,
    Cubitus5Gabel,
    GabelVerbindung,
    Quer1Gabel,
    GabelZuBasal,
    BasalOben,
    BasalUnten,
    DiscoidalInnen,
    MedianOben,
    MedianInnen,
    MedianWurzel,
    QuerWurzel,
    AnalWurzel,
    AnalAußen,
    DiscoidalQuer,
    AnalQuer,
    DiscoidalUnterseite,
    Ruecklaufend,
    Auslauf8,
    Auslauf7,
    Falz,
    AnzahlAdern
};

struct Tabellenstelle {
    Ort ort;
    double breite;
};

struct Tabellenader {
    Adernummer nummer;
    std::initializer_list<Tabellenstelle> verlauf;
};

/// Veins of the mean of real wings, from the wing root outwards.
const Tabellenader Adertabelle[] = {
    {Costa,
     {{{9.356, 0.571}, 0.095},
      {{9.049, 0.560}, 0.122},
      {{7.906, 0.465}, 0.122},
      {{6.773, 0.417}, 0.132},
      {{5.641, 0.375}, 0.153},
      {StigmaInnen, 0.159}}},
    {Stigma, {{StigmaInnen, 0.159}, {{4.654, 0.245}, 0.148}, {StigmaAußen, 0.138}}},
    {Radialbogen,
     {{StigmaAußen, 0.138},
      {{3.785, 0.168}, 0.095},
      {{3.229, 0.155}, 0.079},
      {{2.655, 0.181}, 0.074},
      {{2.120, 0.247}, 0.069},
      {{1.709, 0.348}, 0.069},
      {{1.296, 0.511}, 0.069},
      {{1.062, 0.676}, 0.064},
      {P2, 0.055},
      {{1.031, 0.884}, 0.055},
      {{1.165, 0.906}, 0.053},
      {{1.318, 0.883}, 0.051},
      {{1.705, 0.787}, 0.051},
      {{2.115, 0.703}, 0.051},
      {{2.613, 0.637}, 0.053},
      {P4, 0.055}}},
    {Radius43, {{P4, 0.055}, {{3.401, 0.600}, 0.055}, {P3, 0.064}}},
    {Radius31, {{P3, 0.064}, {{4.010, 0.532}, 0.069}, {P1, 0.074}}},
    {Radius1Stigma, {{P1, 0.074}, {{4.246, 0.386}, 0.069}, {StigmaAußen, 0.085}}},
    {Quer35,
     {{P3, 0.053},
      {{3.526, 0.768}, 0.053},
      {{3.227, 0.991}, 0.053},
      {{3.066, 1.122}, 0.048},
      {P5, 0.048}}},
    {Quer47,
     {{P4, 0.051},
      {{2.929, 0.807}, 0.049},
      {{2.724, 0.951}, 0.049},
      {{2.444, 1.123}, 0.049},
      {{2.282, 1.315}, 0.049},
      {P7, 0.047}}},
    {Cubitus56, {{P5, 0.046}, {{2.767, 1.388}, 0.042}, {P6, 0.044}}},
    {Cubitus67, {{P6, 0.044}, {{2.376, 1.522}, 0.044}, {P7, 0.044}}},
    {Cubitus5Gabel,
     {{P5, 0.044},
      {{3.255, 1.156}, 0.042},
      {{3.520, 1.081}, 0.042},
      {{3.785, 1.046}, 0.042},
      {{4.015, 1.048}, 0.044},
      {GabelCubitus, 0.051}}},
    {GabelVerbindung, {{GabelCubitus, 0.051}, {{4.361, 0.979}, 0.048}, {GabelRadius, 0.051}}},
    {Quer1Gabel,
     {{P1, 0.064}, {{4.344, 0.607}, 0.053}, {{4.484, 0.721}, 0.051}, {GabelRadius, 0.053}}},
    {GabelZuBasal,
     {{GabelRadius, 0.048}, {{4.762, 0.799}, 0.048}, {{5.080, 0.754}, 0.048}, {GabelBasal, 0.053}}},
    {BasalOben, {{StigmaInnen, 0.095}, {{5.302, 0.550}, 0.064}, {GabelBasal, 0.064}}},
    {BasalUnten,
     {{GabelBasal, 0.053}, {{5.948, 0.877}, 0.051}, {{6.107, 0.983}, 0.053}, {Basalfuß, 0.064}}},
    {DiscoidalInnen,
     {{GabelCubitus, 0.049},
      {{4.351, 1.247}, 0.049},
      {{4.498, 1.326}, 0.049},
      {DiscoidalOben, 0.053}}},
    {MedianOben,
     {{DiscoidalOben, 0.051},
      {{4.995, 1.274}, 0.049},
      {{5.450, 1.205}, 0.049},
      {{5.905, 1.158}, 0.051},
      {Basalfuß, 0.058}}},
    {MedianInnen, {{Basalfuß, 0.058}, {{6.456, 1.131}, 0.058}, {QueraderOben, 0.074}}},
    {MedianWurzel,
     {{QueraderOben, 0.069},
      {{7.038, 1.057}, 0.064},
      {{7.419, 0.968}, 0.069},
      {{7.906, 0.825}, 0.074},
      {{8.287, 0.719}, 0.079},
      {{8.668, 0.650}, 0.085},
      {{9.220, 0.640}, 0.080}}},
    {QuerWurzel, {{QueraderOben, 0.074}, {{6.689, 1.301}, 0.064}, {QueraderUnten, 0.064}}},
    {AnalWurzel,
     {{QueraderUnten, 0.058},
      {{7.154, 1.343}, 0.069},
      {{7.641, 1.190}, 0.079},
      {{8.287, 1.026}, 0.085},
      {{8.858, 0.883}, 0.090},
      {{9.292, 0.836}, 0.095}}},
    {AnalAußen,
     {{QueraderUnten, 0.055},
      {{6.403, 1.560}, 0.053},
      {{6.022, 1.745}, 0.053},
      {{5.450, 1.993}, 0.049},
      {Analecke, 0.047}}},
    {DiscoidalQuer,
     {{DiscoidalOben, 0.053},
      {{4.720, 1.543}, 0.051},
      {{4.783, 1.702}, 0.064},
      {DiscoidalUnten, 0.058}}},
    {AnalQuer, {{DiscoidalUnten, 0.051}, {{4.846, 1.998}, 0.047}, {Analecke, 0.047}}},
    {DiscoidalUnterseite,
     {{DiscoidalUnten, 0.049},
      {{4.348, 1.875}, 0.047},
      {{3.773, 1.949}, 0.047},
      {{3.385, 2.027}, 0.047},
      {P8, 0.049}}},
    {Ruecklaufend, {{P6, 0.044}, {{2.577, 1.669}, 0.042}, {{2.760, 1.868}, 0.042}, {P8, 0.047}}},
    {Auslauf8,
     {{P8, 0.044}, {{2.970, 2.267}, 0.042}, {{2.782, 2.454}, 0.040}, {{2.468, 2.770}, 0.034}}},
    {Auslauf7,
     {{P7, 0.040}, {{2.050, 1.665}, 0.036}, {{1.692, 1.886}, 0.032}, {{1.203, 2.107}, 0.023}}},
    {Falz,
     {{Analecke, 0.04},
      {{4.84, 2.262}, 0.045},
      {{5.259, 2.183}, 0.035},
      {{6.021, 2.025}, 0.03},
      {{6.773, 1.845}, 0.02}}},
};
static_assert(std::size(Adertabelle) == AnzahlAdern);

constexpr Ort Umriss[] = {
    {9.200, 0.570}, {7.906, 0.435}, {6.773, 0.380}, {5.641, 0.325}, {5.080, 0.250}, {4.272, 0.145},
    {3.784, 0.115}, {3.228, 0.107}, {2.654, 0.133}, {2.120, 0.199}, {1.709, 0.301}, {1.295, 0.462},
    {0.978, 0.666}, {0.656, 0.831}, {0.373, 1.043}, {0.188, 1.281}, {0.154, 1.490}, {0.216, 1.700},
    {0.404, 1.983}, {0.719, 2.267}, {1.129, 2.561}, {1.582, 2.803}, {2.110, 2.998}, {2.639, 3.168},
    {2.979, 3.236}, {3.254, 3.231}, {3.487, 3.184}, {3.773, 3.025}, {4.081, 2.792}, {4.379, 2.601},
    {4.591, 2.485}, {4.718, 2.337}, {4.814, 2.268}, {5.259, 2.189}, {6.021, 2.031}, {6.773, 1.851},
    {7.345, 1.693}, {7.906, 1.481}, {8.668, 1.206}, {9.280, 0.950}};

constexpr Ort Wurzel[] = {{9.017, 0.486}, {9.356, 0.518}, {9.409, 0.656}, {9.514, 0.783},
                          {9.504, 0.878}, {9.398, 0.984}, {9.271, 0.910}, {9.123, 0.889},
                          {9.229, 0.783}, {9.165, 0.666}};

QPointF punkt(Ort ort) {
    return {ort.x, ort.y};
}

double abstandsquadrat(QPointF a, QPointF b) {
    const QPointF d = a - b;
    return QPointF::dotProduct(d, d);
}

/// Moves a place of the mean wing as the measuring points around it have moved: their shifts
/// weighted with the inverse square of the distance, against a pull to stay.
QPointF mitgenommen(QPointF ort, const std::array<QPointF, 9>& punkte) {
    constexpr double Beharrung = 1;
    QPointF summe;
    double gewichte = Beharrung;
    for (std::size_t i = 1; i < punkte.size(); ++i) {
        const QPointF normal = punkt(Normalpunkte[i]);
        const double quadrat = abstandsquadrat(ort, normal);
        if (quadrat == 0) {
            return punkte[i];
        }
        summe += (punkte[i] - normal) / quadrat;
        gewichte += 1 / quadrat;
    }
    return ort + summe / gewichte;
}

/// Place on the curve between b and c (Catmull-Rom, centripetal: no loops where places lie close).
QPointF aufKurve(QPointF a, QPointF b, QPointF c, QPointF d, double t) {
    const auto schritt = [](QPointF von, QPointF nach) {
        return std::max(std::sqrt(std::sqrt(abstandsquadrat(von, nach))), 1e-6);
    };
    const double ab = schritt(a, b);
    const double bc = schritt(b, c);
    const double cd = schritt(c, d);
    const QPointF mb = c - b + ((b - a) / ab - (c - a) / (ab + bc)) * bc;
    const QPointF mc = c - b + ((d - c) / cd - (d - b) / (bc + cd)) * bc;
    const double t2 = t * t;
    const double t3 = t2 * t;
    return b * (2 * t3 - 3 * t2 + 1) + mb * (t3 - 2 * t2 + t) + c * (3 * t2 - 2 * t3) +
           mc * (t3 - t2);
}

constexpr int TeileJeStrecke = 8;

using Stellen = std::vector<Ader::Stelle>;

Stellen fein(const Stellen& verlauf) {
    Stellen feine;
    const std::size_t n = verlauf.size();
    feine.reserve(n * TeileJeStrecke);
    for (std::size_t i = 0; i + 1 < n; ++i) {
        const QPointF b = verlauf[i].ort;
        const QPointF c = verlauf[i + 1].ort;
        const QPointF a = i > 0 ? verlauf[i - 1].ort : b * 2 - c;
        const QPointF d = i + 2 < n ? verlauf[i + 2].ort : c * 2 - b;
        for (int k = 0; k < TeileJeStrecke; ++k) {
            const double t = static_cast<double>(k) / TeileJeStrecke;
            feine.push_back(
                {aufKurve(a, b, c, d, t), std::lerp(verlauf[i].breite, verlauf[i + 1].breite, t)});
        }
    }
    feine.push_back(verlauf.back());
    return feine;
}

QPolygonF geschlossen(const std::vector<QPointF>& ecken) {
    QPolygonF kurve;
    const std::size_t n = ecken.size();
    for (std::size_t i = 0; i < n; ++i) {
        for (int k = 0; k < TeileJeStrecke; ++k) {
            kurve.append(aufKurve(ecken[(i + n - 1) % n], ecken[i], ecken[(i + 1) % n],
                                  ecken[(i + 2) % n], static_cast<double>(k) / TeileJeStrecke));
        }
    }
    return kurve;
}

void maleAder(QPainter& painter, const Ader& ader) {
    const Stellen feine = fein(ader.verlauf);
    QPolygonF oben;
    QPolygonF unten;
    for (std::size_t i = 0; i < feine.size(); ++i) {
        const QPointF vor = feine[i > 0 ? i - 1 : i].ort;
        const QPointF nach = feine[std::min(i + 1, feine.size() - 1)].ort;
        const double länge = std::max(QLineF(vor, nach).length(), 1e-9);
        const QPointF quer =
            QPointF(-(nach - vor).y(), (nach - vor).x()) / länge * (feine[i].breite / 2);
        oben.append(feine[i].ort + quer);
        unten.prepend(feine[i].ort - quer);
    }
    painter.drawPolygon(oben + unten, Qt::WindingFill);
    const auto rundesEnde = [&](const Ader::Stelle& ende) {
        painter.drawEllipse(ende.ort, ende.breite / 2, ende.breite / 2);
    };
    rundesEnde(feine.front());
    if (!ader.läuftAus) {
        rundesEnde(feine.back());
    }
}

/// Colour of a vein: black where the costal edge and the wing root stiffen the wing, paler towards
/// the tip.
QBrush farbe(const Flügelform& form, std::size_t nummer, const Flügelstil& stil) {
    const Stellen& bogen = form.adern[Radialbogen].verlauf;
    switch (nummer) {
    case Costa:
    case Stigma:
        return stil.costa;
    case Radialbogen: {
        // From the costal edge straight across the radial cell.
        QLinearGradient verlauf(bogen[4].ort, bogen[13].ort);
        verlauf.setColorAt(0, stil.costa);
        verlauf.setColorAt(1, stil.adern);
        return verlauf;
    }
    case Auslauf7:
    case Auslauf8:
    case Falz: {
        const Stellen& stellen = form.adern[nummer].verlauf;
        QLinearGradient verlauf(stellen.front().ort, stellen.back().ort);
        QColor ende = stil.adern;
        ende.setAlpha(0);
        verlauf.setColorAt(0, stil.adern);
        verlauf.setColorAt(0.3, stil.adern);
        verlauf.setColorAt(1, ende);
        return verlauf;
    }
    default: {
        QLinearGradient verlauf(form.punkte[7], form.adern[MedianWurzel].verlauf.front().ort);
        verlauf.setColorAt(0, stil.adern);
        verlauf.setColorAt(1, stil.costa);
        return verlauf;
    }
    }
}

/// Fine hairs in rows along the wing.
void maleBorsten(QPainter& painter, const Flügelform& form, const QColor& farbe) {
    constexpr double Abstand = 0.05;
    const QPainterPath häutchen = form.häutchen();
    const QRectF rahmen = häutchen.boundingRect();
    QRandomGenerator zufall(0x5eed);
    const int reihen = static_cast<int>(rahmen.height() / Abstand);
    const int spalten = static_cast<int>(rahmen.width() / Abstand);
    painter.save();
    painter.setClipPath(häutchen);
    for (int reihe = 0; reihe < reihen; ++reihe) {
        for (int spalte = 0; spalte < spalten; ++spalte) {
            const double links = zufall.generateDouble();
            const double tief = zufall.generateDouble();
            const double kräftig = zufall.generateDouble();
            const QPointF ort(rahmen.left() + (spalte + links) * Abstand,
                              rahmen.top() + (reihe + tief) * Abstand);
            QColor ton = farbe;
            ton.setAlphaF(static_cast<float>(0.1 + 0.4 * kräftig * kräftig));
            painter.setPen(QPen(ton, 0.011 + 0.01 * kräftig, Qt::SolidLine, Qt::RoundCap));
            painter.drawLine(ort, ort + QPointF(-0.012, 0.006 * (links - 0.5)));
        }
    }
    painter.restore();
}

} // namespace

Flügelform Flügelform::normal() {
    std::array<QPointF, 9> punkte;
    std::transform(Normalpunkte.begin(), Normalpunkte.end(), punkte.begin(), punkt);
    return ausPunkten(punkte);
}

Flügelform Flügelform::ausPunkten(const std::array<QPointF, 9>& punkte) {
    Flügelform form;
    form.punkte = punkte;
    form.adern.resize(AnzahlAdern);
    for (const Tabellenader& zeile : Adertabelle) {
        Ader& ader = form.adern[zeile.nummer];
        for (const Tabellenstelle& stelle : zeile.verlauf) {
            ader.verlauf.push_back({mitgenommen(punkt(stelle.ort), punkte), stelle.breite});
        }
        ader.läuftAus = zeile.nummer >= Auslauf8;
    }
    for (const Ort& ort : Umriss) {
        form.umriss.push_back(mitgenommen(punkt(ort), punkte));
    }
    for (const Ort& ort : Wurzel) {
        form.wurzel.push_back(mitgenommen(punkt(ort), punkte));
    }
    return form;
}

QPainterPath Flügelform::zelle(Zelle zelle) const {
    struct Kante {
        Adernummer ader;
        bool rückwärts;
    };
    const auto kanten = [zelle]() -> std::vector<Kante> {
        switch (zelle) {
        case Zelle::Radial:
            return {
                {Radialbogen, false}, {Radius43, false}, {Radius31, false}, {Radius1Stigma, false}};
        case Zelle::Cubital1:
            return {{Stigma, false},
                    {Radius1Stigma, true},
                    {Quer1Gabel, false},
                    {GabelZuBasal, false},
                    {BasalOben, true}};
        case Zelle::Cubital2:
            return {{Radius31, false},
                    {Quer1Gabel, false},
                    {GabelVerbindung, true},
                    {Cubitus5Gabel, true},
                    {Quer35, true}};
        case Zelle::Cubital3:
            return {{Radius43, false},
                    {Quer35, false},
                    {Cubitus56, false},
                    {Cubitus67, false},
                    {Quer47, true}};
        case Zelle::Discoidal:
            return {{Cubitus56, true},      {Cubitus5Gabel, false},       {DiscoidalInnen, false},
                    {DiscoidalQuer, false}, {DiscoidalUnterseite, false}, {Ruecklaufend, true}};
        }
        return {};
    }();
    QPolygonF rand;
    for (const Kante& kante : kanten) {
        Stellen feine = fein(adern[kante.ader].verlauf);
        if (kante.rückwärts) {
            std::reverse(feine.begin(), feine.end());
        }
        for (const Ader::Stelle& stelle : feine) {
            rand.append(stelle.ort);
        }
    }
    QPainterPath pfad;
    pfad.addPolygon(rand);
    pfad.closeSubpath();
    return pfad;
}

QPainterPath Flügelform::häutchen() const {
    QPainterPath pfad;
    pfad.addPolygon(geschlossen(umriss));
    pfad.closeSubpath();
    return pfad;
}

QRectF Flügelform::rahmen() const {
    // Half of the thickest vein may stand out.
    return häutchen()
        .boundingRect()
        .united(geschlossen(wurzel).boundingRect())
        .adjusted(-0.08, -0.08, 0.08, 0.08);
}

void maleFlügel(QPainter& painter, const Flügelform& form, const Flügelstil& stil) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(stil.rand, 0.014));
    painter.setBrush(stil.häutchen);
    painter.drawPath(form.häutchen());
    if (stil.borsten) {
        maleBorsten(painter, form, stil.adern);
    }
    painter.setPen(Qt::NoPen);
    // The thick veins come first in the table and are painted last: they cover the ends of others.
    for (std::size_t i = form.adern.size(); i-- > 0;) {
        painter.setBrush(farbe(form, i, stil));
        maleAder(painter, form.adern[i]);
    }
    painter.setBrush(stil.costa);
    painter.drawPolygon(geschlossen(form.wurzel));
    painter.restore();
}

} // namespace tarvel
