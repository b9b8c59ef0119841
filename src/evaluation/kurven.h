#pragma once

#include "evaluation/achsen.h"
#include "evaluation/beurteilung.h"
#include "evaluation/diagramm.h"
#include "evaluation/rassestandard.h"
#include "measure/statistik.h"
#include "platform/zahlen.h"

#include <QRectF>
#include <QString>

#include <optional>
#include <vector>

class QPainter;

namespace tarvel {

/// How the bees per class are drawn; the values are the positions of `opt_Kurvenform`.
enum class Kurvenform { Balken = 0, Stufen = 1, Linie = 2 };

/// What is shown below the cubital index; the values are the positions of `opt_CubiDis`.
enum class ZweiteKurve { Keine = 0, Hantelindex = 1, Discoidalverschiebung = 2 };

/// The stored option; any number that is none gives the default.
[[nodiscard]] Kurvenform kurvenform(int option);
[[nodiscard]] ZweiteKurve zweiteKurve(int option);

/// One wing in the classes of an index; class 0 lies outside the axis.
struct Flügelklasse {
    int nummer = 0;
    int klasse = 0;

    bool operator==(const Flügelklasse&) const = default;
};

/// The wings of a sample in the classes of one index.
struct Klassenverteilung {
    std::vector<Flügelklasse> flügel;
    int ausgelassen = 0;                  ///< wings with the index that do not count
    std::optional<Kennzahlen> kennzahlen; ///< of the index; empty without wings
    std::optional<double> grenzlinie;     ///< of the standard, in values of the index
};

/// A class range of the standard, "Klasse 0" to "Klasse 3", and what the sample makes of it.
struct Bereichsangabe {
    int nummer = 0;
    Klassenbereich klassen;
    /// Measured share and the highest allowed one in percent. The range that is searched for a
    /// secondary peak has neither; a sample without wings, or too large for a share, none measured.
    std::optional<int> anteil;
    std::optional<double> erlaubt;
    bool verfehlt = false;
};

/// All that the histogram "Kurven" shows.
struct Kurvenbild {
    Klassenverteilung CI;
    ZweiteKurve art = ZweiteKurve::Keine;
    Klassenverteilung zweite; ///< classes of what art says
    Kurvenform form = Kurvenform::Stufen;
    std::vector<Bereichsangabe> bereiche; ///< drawn from the top in this order
    std::optional<int> nebengipfel;       ///< class of a secondary peak
    QString rasse;                        ///< name of the race, at the line of its mean
    std::optional<double> rassemittel;    ///< mean cubital index of the race
    /// The rule for the mean of the sample, where the standard has one; it is that of the race.
    std::optional<Prüfwert> mittelregel;
    /// The race lies below the boundary line of the second curve instead of above it.
    bool darunter = false;
    /// Whether ranges and secondary peak are marked as met or missed.
    bool beurteilt = true;
    /// Number and deviation stand in the heading, unless they stand above the chart already.
    bool mitKennzahlen = true;
    std::vector<int> hervorgehoben; ///< wings to point out, such as those selected in the lists
    Diagrammworte worte;
    Zahlenformat format;
};

/// The histogram of a series, without words. Classes are those of the lists, as the judgement
/// counts them, those of the discoidal shift its exact values, as the correlation takes them;
/// ranges, shares and secondary peak are those of @p beurteilung. A race without a standard has no
/// limits.
[[nodiscard]] Kurvenbild kurvenbild(const Messreihe& reihe, const Rassestandard& standard,
                                    Geschlecht tiere, const Beurteilung& beurteilung,
                                    Kurvenform form, ZweiteKurve zweite);

/// Where the bees per class are drawn, in the units of the chart's rectangle.
struct Klassenfeld {
    QRectF fläche;
    Achse lage;   ///< class positions onto x: class k lies from k to k + 1
    Achse anzahl; ///< numbers of bees onto y
};

struct Kurvenanordnung {
    Klassenfeld CI;
    std::optional<Klassenfeld> zweite;
};
[[nodiscard]] Kurvenanordnung kurvenanordnung(const QRectF& rahmen, const Kurvenbild& bild,
                                              const Diagrammstil& stil);

/// The bars that hold wings, from the left, first those of the cubital index.
[[nodiscard]] std::vector<Diagrammstelle>
kurvenstellen(const QRectF& rahmen, const Kurvenbild& bild, const Diagrammstil& stil);

/// Paints the histogram of bees per class into @p rahmen; a rectangle without an area stays empty.
/// The same bild gives the same picture at every size, only larger or smaller.
void maleKurven(QPainter& painter, const QRectF& rahmen, const Kurvenbild& bild,
                const Diagrammstil& stil);

} // namespace tarvel
