#include "measure/fluegelprobe.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

struct Ort {
    double x = 0;
    double y = 0;
};
using Orte = std::array<std::optional<Ort>, Messpunkte::Anzahl + 1>;

/// Mean shape of measured wings: point 1 at the origin, point 2 at (1, 0). Other races and drones
/// keep the order of the points and come near its proportions.
constexpr std::array<Ort, Messpunkte::Anzahl + 1> Musterflügel{{{},
                                                                {0, 0},
                                                                {1, 0},
                                                                {0.129, 0.022},
                                                                {0.354, 0.020},
                                                                {0.379, 0.193},
                                                                {0.553, 0.274},
                                                                {0.617, 0.263},
                                                                {0.384, 0.466}}};
/// Triangles flatter than this, in lengths of the base line, may turn over by inexact clicks.
constexpr double GeringsteHöhe = 0.05;
/// How far a distance may be from that of the mean shape. Among measured wings the largest is 1.43
/// times the smallest.
constexpr double Spielraum = 1.6;
/// Segment 6-7, the short side of the cubital cell, decides on the cubital index: 0.7 to 9 of them
/// must pass.
constexpr double SpielraumSegmentB = 3;

double abstand(Ort a, Ort b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

/// Twice the area, positive when c lies to the left of the way from a to b.
double fläche(Ort a, Ort b, Ort c) {
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

struct Dreieck {
    std::array<int, 3> p;
    int richtung;
};

std::vector<Dreieck> dreiecke() {
    std::vector<Dreieck> liste;
    for (int a = 1; a <= Messpunkte::Anzahl; ++a) {
        for (int b = a + 1; b <= Messpunkte::Anzahl; ++b) {
            for (int c = b + 1; c <= Messpunkte::Anzahl; ++c) {
                const Ort A = Musterflügel.at(a);
                const Ort B = Musterflügel.at(b);
                const Ort C = Musterflügel.at(c);
                const double f = fläche(A, B, C);
                const double seite = std::max({abstand(A, B), abstand(A, C), abstand(B, C)});
                if (std::abs(f) > GeringsteHöhe * seite) {
                    liste.push_back({{a, b, c}, f > 0 ? 1 : -1});
                }
            }
        }
    }
    return liste;
}

/// The points that explain all of @p verstöße with the fewest: one that is in every one of them, or
/// those that are in the most.
template <std::size_t Anzahl>
std::vector<int> beteiligte(const std::vector<std::array<int, Anzahl>>& verstöße) {
    std::array<int, Messpunkte::Anzahl + 1> zahl{};
    for (const auto& verstoß : verstöße) {
        for (const int punkt : verstoß) {
            ++zahl.at(punkt);
        }
    }
    const int größte = *std::max_element(zahl.begin(), zahl.end());
    std::vector<int> punkte;
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        if (zahl.at(i) == größte) {
            punkte.push_back(i);
        }
    }
    return punkte;
}

/// Triangles that turn the other way than most. All of them do on a mirrored wing.
std::vector<std::array<int, 3>> verdrehte(const Orte& orte) {
    static const std::vector<Dreieck> alle = dreiecke();
    std::vector<std::array<int, 3>> links;
    std::vector<std::array<int, 3>> rechts;
    for (const Dreieck& d : alle) {
        const auto& a = orte.at(d.p[0]);
        const auto& b = orte.at(d.p[1]);
        const auto& c = orte.at(d.p[2]);
        if (a && b && c) {
            (fläche(*a, *b, *c) * d.richtung > 0 ? links : rechts).push_back(d.p);
        }
    }
    return links.size() >= rechts.size() ? rechts : links;
}

std::vector<std::array<int, 2>> unverhältnismäßige(const Orte& orte) {
    struct Paar {
        std::array<int, 2> p;
        double verhältnis;
    };
    std::vector<Paar> paare;
    for (int a = 1; a <= Messpunkte::Anzahl; ++a) {
        for (int b = a + 1; b <= Messpunkte::Anzahl; ++b) {
            if (orte.at(a) && orte.at(b)) {
                paare.push_back({{a, b},
                                 abstand(*orte.at(a), *orte.at(b)) /
                                     abstand(Musterflügel.at(a), Musterflügel.at(b))});
            }
        }
    }
    std::vector<std::array<int, 2>> verstöße;
    if (paare.empty()) {
        return verstöße;
    }
    // The middle one gives the scale, so a few wrong points do not spoil it.
    std::sort(paare.begin(), paare.end(),
              [](const Paar& x, const Paar& y) { return x.verhältnis < y.verhältnis; });
    const double maßstab = paare[paare.size() / 2].verhältnis;
    for (const Paar& paar : paare) {
        const double spielraum = paar.p == std::array{6, 7} ? SpielraumSegmentB : Spielraum;
        if (!(paar.verhältnis >= maßstab / spielraum && paar.verhältnis <= maßstab * spielraum)) {
            verstöße.push_back(paar.p);
        }
    }
    return verstöße;
}

/// The cubital cell alone: 5-7 spans the other two sides, on every wing whatever its index.
std::optional<Flügelzweifel> zweifelAnCubitalzelle(const Orte& orte) {
    const double a = abstand(*orte[5], *orte[6]);
    const double b = abstand(*orte[6], *orte[7]);
    const double spanne = abstand(*orte[5], *orte[7]);
    if (spanne > a && spanne > b) {
        return std::nullopt;
    }
    return Flügelzweifel{Flügelzweifel::Art::Vertauscht,
                         a > b ? std::vector{6, 7} : std::vector{5, 6}};
}

std::optional<Flügelzweifel> formzweifel(const Orte& orte) {
    const auto lage = verdrehte(orte);
    const auto verhältnis = unverhältnismäßige(orte);
    if (lage.empty() && verhältnis.empty()) {
        return std::nullopt;
    }
    std::vector<std::vector<int>> tausche;
    for (int a = 1; a <= Messpunkte::Anzahl; ++a) {
        for (int b = a + 1; b <= Messpunkte::Anzahl; ++b) {
            Orte getauscht = orte;
            std::swap(getauscht.at(a), getauscht.at(b));
            if (verdrehte(getauscht).empty() && unverhältnismäßige(getauscht).empty()) {
                tausche.push_back({a, b});
            }
        }
    }
    if (tausche.size() == 1) {
        return Flügelzweifel{Flügelzweifel::Art::Vertauscht, tausche.front()};
    }
    return lage.empty() ? Flügelzweifel{Flügelzweifel::Art::Verhältnis, beteiligte(verhältnis)}
                        : Flügelzweifel{Flügelzweifel::Art::Lage, beteiligte(lage)};
}

// --- Far from the sample

/// Below this many wings nobody can say what is usual in a sample.
constexpr std::size_t GeringsteProbe = 8;
/// Score from which a value is far: 0.6745 · |x − median| / MAD, the usual limit for a sample of
/// which only the middle is trusted.
constexpr double FernerWert = 3.5;
constexpr double Normalmaß = 0.6745;
/// Least median deviation that counts, about one step of the last digit shown, so that in a very
/// even sample not every other wing is far.
struct Größe {
    float Chartwerte::*wert;
    double geringsteStreuung;
};
constexpr std::array Größen{Größe{&Chartwerte::CI, 0.05}, Größe{&Chartwerte::HI, 0.01},
                            Größe{&Chartwerte::DV, 0.1}};

double median(std::vector<double> werte) {
    const auto mitte = werte.begin() + static_cast<std::ptrdiff_t>(werte.size() / 2);
    std::nth_element(werte.begin(), mitte, werte.end());
    if (werte.size() % 2 == 1) {
        return *mitte;
    }
    return (*mitte + *std::max_element(werte.begin(), mitte)) / 2;
}

void sammleFerne(const Messreihe& reihe, const Größe& größe, std::vector<int>& ferne) {
    std::vector<std::pair<int, double>> werte;
    std::vector<double> zahlen;
    for (const int nummer : reihe.gewertete()) {
        if (const float wert = reihe.chartwerte(nummer).*größe.wert; wert != Chartwerte::KeinWert) {
            werte.emplace_back(nummer, wert);
            zahlen.push_back(wert);
        }
    }
    if (zahlen.size() < GeringsteProbe) {
        return;
    }
    const double mitte = median(zahlen);
    for (double& zahl : zahlen) {
        zahl = std::abs(zahl - mitte);
    }
    const double streuung = std::max(median(zahlen), größe.geringsteStreuung);
    for (const auto& [nummer, wert] : werte) {
        if (Normalmaß * std::abs(wert - mitte) / streuung > FernerWert) {
            ferne.push_back(nummer);
        }
    }
}

QString aufzählung(const std::vector<int>& punkte) {
    QStringList liste;
    for (const int punkt : punkte) {
        liste += QString::number(punkt);
    }
    return liste.join(u", "_s);
}

} // namespace

std::optional<double> längeRadialzelle(const Messpunkte& punkte, const Aufnahme& aufnahme) {
    constexpr double MillimeterJeZoll = 25.4;
    if (!punkte.gemessen(1) || !punkte.gemessen(2)) {
        return std::nullopt;
    }
    const double pixel = std::hypot(double{punkte.PunktX[1]} - double{punkte.PunktX[2]},
                                    double{punkte.PunktY[1]} - double{punkte.PunktY[2]});
    return pixel / aufnahme.Zoomfaktor / aufnahme.dpi * MillimeterJeZoll;
}

std::optional<int> passendeAuflösung(const Messpunkte& punkte, const Aufnahme& aufnahme) {
    constexpr std::array Übliche{150, 300, 600, 1200, 2400, 3200, 4800, 6400, 9600};
    constexpr double MittlereLänge = 3.25;
    const std::optional<double> länge = längeRadialzelle(punkte, aufnahme);
    const auto möglich = [](double mm) {
        return mm >= KürzesteRadialzelle && mm <= LängsteRadialzelle;
    };
    if (!länge || möglich(*länge)) {
        return std::nullopt;
    }
    const double ideal = aufnahme.dpi * *länge / MittlereLänge;
    const auto abweichung = [ideal](int dpi) { return std::abs(std::log(dpi / ideal)); };
    const int beste = *std::min_element(Übliche.begin(), Übliche.end(), [&](int a, int b) {
        return abweichung(a) < abweichung(b);
    });
    return möglich(*länge * aufnahme.dpi / beste) ? std::optional(beste) : std::nullopt;
}

std::vector<Flügelzweifel> flügelzweifel(const Flügelmessung& messung) {
    std::vector<Flügelzweifel> liste;
    Orte orte;
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        if (benutzt(messung.messart, i) && messung.punkte.gemessen(i)) {
            orte.at(i) = {messung.punkte.PunktX[i], messung.punkte.PunktY[i]};
        }
    }
    std::optional<Flügelzweifel> form;
    if (misstAchtPunkte(messung.messart)) {
        form = formzweifel(orte);
    } else if (orte[5] && orte[6] && orte[7]) {
        form = zweifelAnCubitalzelle(orte);
    }
    if (form) {
        liste.push_back(*std::move(form));
    }
    const Indizes indizes = berechneIndizes(messung.punkte, messung.messart, messung.aufnahme);
    if (indizes.CI && klassenpositionCI(*indizes.CI) == 0) {
        liste.push_back({Flügelzweifel::Art::CIAußerhalb, {}});
    }
    if (indizes.HI && klassenpositionHI(*indizes.HI) == 0) {
        liste.push_back({Flügelzweifel::Art::HIAußerhalb, {}});
    }
    return liste;
}

std::vector<int> ausreißer(const Messreihe& reihe) {
    std::vector<int> ferne;
    for (const Größe& größe : Größen) {
        sammleFerne(reihe, größe, ferne);
    }
    std::sort(ferne.begin(), ferne.end());
    ferne.erase(std::unique(ferne.begin(), ferne.end()), ferne.end());
    return ferne;
}

std::map<int, std::vector<Flügelzweifel>> flügelzweifel(const Messreihe& reihe) {
    return Flügelprüfer().prüfe(reihe);
}

std::map<int, std::vector<Flügelzweifel>> Flügelprüfer::prüfe(const Messreihe& reihe) {
    std::map<int, std::vector<Flügelzweifel>> alle;
    std::map<int, Geprüft> jetzt;
    for (const auto& [nummer, messung] : reihe.messungen()) {
        auto bekannter = geprüfte_.extract(nummer);
        if (bekannter.empty() || bekannter.mapped().messung != messung) {
            jetzt[nummer] = {messung, flügelzweifel(messung)};
        } else {
            jetzt.insert(std::move(bekannter));
        }
        if (const auto& zweifel = jetzt[nummer].zweifel; !zweifel.empty()) {
            alle[nummer] = zweifel;
        }
    }
    geprüfte_ = std::move(jetzt);
    for (const int nummer : ausreißer(reihe)) {
        alle[nummer].push_back({Flügelzweifel::Art::AbseitsDerProbe, {}});
    }
    return alle;
}

Hinweis hinweis(const Flügelzweifel& zweifel) {
    using enum Flügelzweifel::Art;
    const QString punkte = aufzählung(zweifel.punkte);
    switch (zweifel.art) {
    case Vertauscht:
        return {Meldung::PunkteVertauscht, {punkte}};
    case Lage:
        return {Meldung::PunkteFalscheLage, {punkte}};
    case Verhältnis:
        return {Meldung::PunkteUnverhältnismäßig, {punkte}};
    case CIAußerhalb:
        return {Meldung::IndexOhneKlasse, {Text::CI}};
    case HIAußerhalb:
        return {Meldung::IndexOhneKlasse, {Text::HI}};
    case AbseitsDerProbe:
        break;
    }
    return Meldung::FlügelAbseits;
}

QString text(const Flügelzweifel& zweifel, const Texte& texte) {
    return hinweistext(texte, hinweis(zweifel));
}

} // namespace tarvel
