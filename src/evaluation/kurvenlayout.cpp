#include "evaluation/kurvenlayout.h"

#include "evaluation/urteilstext.h"

#include "measure/indexmuster.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

using M = Kurvenmaße;

constexpr double Fahnenluft = 5; ///< behind a label
constexpr double Zahlenhöhe = 18;
constexpr double Gipfelhöhe = 42;
constexpr double AnteilCI = 0.62; ///< of the height that two curves share

// The most wanted values first: those that do not fit are left out from the end.
constexpr std::array WerteCI{1.0, 2.0, 3.0, 4.0, 1.5, 5.0, 2.5, 8.0, 3.5, 0.8, 1.2};
constexpr std::array WerteHI{1.0, 0.8, 1.2, 0.6, 1.4, 0.9, 1.1, 0.7, 1.3};
constexpr std::array WerteDV{0.0, 2.0, -2.0, 4.0, -4.0, 6.0, -6.0, 1.0, -1.0, 3.0, -3.0, 5.0, -5.0};

const Indexachse AchseCI{.klassen = KlassenzahlCI,
                         .lage = &klassenlageCI,
                         .werte = WerteCI,
                         .wertformat = muster::CI,
                         .grenzformat = muster::CI,
                         .markenformat = u"0.0",
                         .streuungsformat = muster::CI,
                         .klassennummern = true,
                         .name = &Diagrammworte::CI};
const Indexachse AchseHI{.klassen = KlassenzahlHI,
                         .lage = &klassenlageHI,
                         .werte = WerteHI,
                         .wertformat = muster::HI,
                         .grenzformat = muster::HI,
                         .markenformat = u"0.0",
                         .streuungsformat = muster::HI,
                         .klassennummern = true,
                         .name = &Diagrammworte::HI};
const Indexachse AchseDV{.klassen = KlassenzahlDV,
                         .lage = &klassenlageDV,
                         .werte = WerteDV,
                         .wertformat = muster::DV,
                         .grenzformat = u"+0.00;-0.00;0.00",
                         .markenformat = u"+0;-0;0",
                         .streuungsformat = muster::StreuungDV,
                         .klassennummern = false,
                         .name = &Diagrammworte::DV};

const Indexachse& zweiteAchse(ZweiteKurve art) {
    return art == ZweiteKurve::Hantelindex ? AchseHI : AchseDV;
}

std::vector<std::vector<int>> nachKlassen(const Klassenverteilung& verteilung, int klassen) {
    std::vector<std::vector<int>> flügel(static_cast<std::size_t>(klassen) + 1);
    for (const Flügelklasse& f : verteilung.flügel) {
        const int klasse = f.klasse >= 1 && f.klasse <= klassen ? f.klasse : 0;
        flügel[static_cast<std::size_t>(klasse)].push_back(f.nummer);
    }
    for (std::vector<int>& klasse : flügel) {
        std::sort(klasse.begin(), klasse.end());
    }
    return flügel;
}

Feld feld(const Indexachse& achse, const Klassenverteilung& verteilung) {
    Feld f;
    f.achse = &achse;
    f.verteilung = &verteilung;
    f.flügel = nachKlassen(verteilung, achse.klassen);
    return f;
}

/// @p nebengipfel class that is marked as the secondary peak, 0 for none.
void legeFest(Feld& f, const QRectF& fläche, int nebengipfel) {
    f.fläche = fläche;
    f.lage = {1, f.achse->klassen + 1.0, fläche.left(), fläche.right()};
    int größte = 0;
    for (int klasse = 1; klasse <= f.achse->klassen; ++klasse) {
        größte = std::max(größte, f.bienen(klasse));
    }
    f.teilung =
        zählteilung(std::max(größte, 4), std::max(3, static_cast<int>(fläche.height() / 28)));
    // The number above the highest bar needs room, and so does the mark above a secondary peak.
    double ende = std::max(f.teilung.marken.back(), größte / (1 - Zahlenhöhe / fläche.height()));
    if (nebengipfel > 0) {
        ende = std::max(ende, f.bienen(nebengipfel) / (1 - Gipfelhöhe / fläche.height()));
    }
    while (f.teilung.marken.back() + f.teilung.schritt <= ende) {
        f.teilung.marken.push_back(f.teilung.marken.back() + f.teilung.schritt);
    }
    f.anzahl = {0, ende, fläche.bottom(), fläche.top()};
}

bool kreuzen(double von1, double bis1, double von2, double bis2) {
    return von1 < bis2 && von2 < bis1;
}

/// Gives each label the first row and side where it is inside the field and meets no other.
void verteile(std::vector<Fahne>& fahnen, double links, double rechts, const Diagrammstil& stil) {
    struct Platz {
        int zeile;
        double von;
        double bis;
    };
    std::vector<Platz> belegt;
    for (Fahne& fahne : fahnen) {
        const double breite =
            textbreite(fahne.text, diagrammschrift(stil, Schriftgrad::Normal, fahne.fett)) +
            fahne.abstand() + Fahnenluft;
        const auto anders = fahne.bündig == Qt::AlignLeft ? Qt::AlignRight : Qt::AlignLeft;
        bool frei = false;
        // A row beyond those in use is always free.
        const auto zeilen = static_cast<int>(belegt.size());
        for (int zeile = 0; !frei && zeile <= zeilen; ++zeile) {
            for (const Qt::AlignmentFlag seite : {fahne.bündig, anders}) {
                const double von = seite == Qt::AlignLeft ? fahne.x : fahne.x - breite;
                const bool passt = von >= links && von + breite <= rechts;
                frei = passt && std::none_of(belegt.begin(), belegt.end(), [&](const Platz& p) {
                           return p.zeile == zeile && kreuzen(p.von, p.bis, von, von + breite);
                       });
                if (frei) {
                    fahne.bündig = seite;
                    fahne.zeile = zeile;
                    belegt.push_back({zeile, von, von + breite});
                    break;
                }
            }
        }
    }
}

/// Where a value lies: on the axis, before it or behind it. Beyond its pole the place of an index
/// starts again from the other end.
Fahnenziel ziel(const Indexachse& achse, double wert) {
    const double inmitten = achse.werte.front();
    const double lage = achse.lage(wert);
    if (wert < inmitten && !(lage >= 1 && lage < achse.lage(inmitten))) {
        return Fahnenziel::Links;
    }
    return wert > inmitten && lage > achse.klassen + 1 ? Fahnenziel::Rechts : Fahnenziel::Linie;
}

/// The labels of one field.
class Fahnenreihe {
public:
    Fahnenreihe(const Feld& feld, const Diagrammstil& stil)
        : f_(feld)
        , stil_(stil) {}

    /// Labels a value with @p wort and @p zahl.
    void füge(double wert, const QString& wort, const QString& zahl, Fahne fahne) {
        fahne.ziel = ziel(*f_.achse, wert);
        fahne.x = ortAufAchse(f_, wert);
        nimm(wort, zahl, std::move(fahne));
    }

    void fügeGipfel(int klasse, const QString& wort) {
        nimm(wort, {},
             {.x = f_.lage.ort(klasse + 0.5),
              .farbe = stil_.verfehlt,
              .fett = true,
              .ziel = Fahnenziel::Säule});
    }

    [[nodiscard]] std::vector<Fahne> verteilt() && {
        verteile(liste_, f_.fläche.left(), f_.fläche.right(), stil_);
        return std::move(liste_);
    }

private:
    void nimm(const QString& wort, const QString& zahl, Fahne fahne) {
        const QFont schrift = diagrammschrift(stil_, Schriftgrad::Normal, fahne.fett);
        // Half the field: on one side of its line a label always has room.
        fahne.text = eingepasst(f_.fläche.width() / 2 - 30, schrift, [&](double breite) {
            return (gekürzt(wort, schrift, breite) + u' ' + zahl).trimmed();
        });
        liste_.push_back(std::move(fahne));
    }

    const Feld& f_;
    const Diagrammstil& stil_;
    std::vector<Fahne> liste_;
};

/// Labels of the race's mean, the boundary line, the sample's mean and the class @p nebengipfel, 0
/// for none.
std::vector<Fahne> fahnen(const Feld& f, const Kurvenbild& bild, std::optional<double> rassemittel,
                          int nebengipfel, const Diagrammstil& stil) {
    Fahnenreihe reihe(f, stil);
    if (rassemittel) {
        const bool verfehlt = bild.mittelregel && bild.mittelregel->fett;
        reihe.füge(*rassemittel, bild.rasse,
                   bild.mittelregel ? mittelvergleich(*bild.mittelregel, bild.format)
                                    : Format(*rassemittel, u"0.0", bild.format),
                   {.farbe = verfehlt ? stil.verfehlt : stil.rasse,
                    .art = Qt::DashLine,
                    .fett = verfehlt});
    }
    if (const auto grenze = f.verteilung->grenzlinie) {
        reihe.füge(*grenze, bild.worte.grenzlinie,
                   Format(*grenze, f.achse->grenzformat, bild.format),
                   {.farbe = stil.blass, .art = Qt::DashDotLine, .bündig = Qt::AlignRight});
    }
    if (f.verteilung->kennzahlen) {
        const double mittel = f.verteilung->kennzahlen->mittelwert;
        reihe.füge(mittel, bild.worte.mittelwert, Format(mittel, f.achse->wertformat, bild.format),
                   {.farbe = stil.probe});
    }
    if (nebengipfel > 0) {
        reihe.fügeGipfel(nebengipfel, bild.worte.nebengipfel);
    }
    return std::move(reihe).verteilt();
}

double achshöhe(const Feld& f) {
    return M::Luft + M::Wertezeile + (f.achse->klassennummern ? M::Klassenzeile : 0);
}

/// The wings that no class of an axis holds, each index with its name; how many, where the line is
/// too short to name them.
QString fußzeile(const Kurvenlayout& l, const Kurvenbild& bild, double breite,
                 const QFont& schrift) {
    QString text;
    for (const bool namentlich : {true, false}) {
        QStringList teile;
        for (const Feld* f : {&l.CI, l.zweite ? &*l.zweite : nullptr}) {
            if (f != nullptr && !f->flügel[0].empty()) {
                teile << gekürzt(bild.worte.*(f->achse->name), schrift, 80) + u' ' +
                             (namentlich ? flügelliste(f->flügel[0], bild.worte.flügel, u' ')
                                         : u"n = %1"_s.arg(f->flügel[0].size()));
            }
        }
        text = teile.isEmpty() ? QString() : bild.worte.außerhalbDerAchse.arg(teile.join(u"; "_s));
        if (textbreite(text, schrift) <= breite) {
            break;
        }
    }
    return text;
}

} // namespace

double ortAufAchse(const Feld& feld, double wert) {
    switch (ziel(*feld.achse, wert)) {
    case Fahnenziel::Links:
        return feld.fläche.left();
    case Fahnenziel::Rechts:
        return feld.fläche.right();
    default:
        return std::clamp(feld.lage.ort(feld.achse->lage(wert)), feld.fläche.left(),
                          feld.fläche.right());
    }
}

Kurvenlayout kurvenlayout(const QRectF& rahmen, const Kurvenbild& bild, const Diagrammstil& stil) {
    Kurvenlayout l;
    l.maß = Diagrammmaß::für(rahmen);
    l.CI = feld(AchseCI, bild.CI);
    if (bild.art != ZweiteKurve::Keine && !bild.zweite.flügel.empty()) {
        l.zweite = feld(zweiteAchse(bild.art), bild.zweite);
    }
    if (l.maß.faktor <= 0) {
        return l;
    }
    const int gipfel = bild.beurteilt ? bild.nebengipfel.value_or(0) : 0;
    const int gezeigterGipfel = gipfel >= 1 && gipfel <= KlassenzahlCI ? gipfel : 0;

    const double links = M::RandLinks;
    const double rechts = std::max(links + 1, l.maß.größe.width() - M::RandRechts);
    l.fuß = fußzeile(l, bild, rechts - links, diagrammschrift(stil, Schriftgrad::Klein));
    // Labels are placed along x, which decides how many rows of them stand above each field.
    legeFest(l.CI, {links, 0, rechts - links, 100}, 0);
    l.CI.fahnen = fahnen(l.CI, bild, bild.rassemittel, gezeigterGipfel, stil);
    if (l.zweite) {
        legeFest(*l.zweite, {links, 0, rechts - links, 100}, 0);
        l.zweite->fahnen = fahnen(*l.zweite, bild, std::nullopt, 0, stil);
    }

    const double oben = M::Kopfhöhe + M::Bereichshöhe * static_cast<double>(bild.bereiche.size()) +
                        M::Luft + M::Fahnenhöhe * l.CI.fahnenzeilen();
    const double unten = l.maß.größe.height() - (l.fuß.isEmpty() ? 0 : M::Fußzeile) - M::Luft;
    double frei = unten - oben - achshöhe(l.CI);
    double höheCI = frei;
    if (l.zweite) {
        frei -= M::Zwischentitel + M::Fahnenhöhe * l.zweite->fahnenzeilen() + achshöhe(*l.zweite);
        höheCI = frei * AnteilCI;
        const double höhe = frei - höheCI;
        legeFest(*l.zweite, {links, unten - achshöhe(*l.zweite) - höhe, rechts - links, höhe}, 0);
    }
    legeFest(l.CI, {links, oben, rechts - links, höheCI}, gezeigterGipfel);
    return l;
}

int Feld::fahnenzeilen() const {
    int zeilen = 0;
    for (const Fahne& fahne : fahnen) {
        zeilen = std::max(zeilen, fahne.zeile + 1);
    }
    return zeilen;
}

} // namespace tarvel
