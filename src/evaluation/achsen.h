#pragma once

#include <span>
#include <vector>

namespace tarvel {

/// A straight axis: values of one quantity onto places along one direction of a picture. The two
/// values differ; places may run against the values, as they do on an axis that points up.
struct Achse {
    double wertAnfang = 0;
    double wertEnde = 1;
    double ortAnfang = 0;
    double ortEnde = 1;

    /// Also outside the axis, on its straight continuation.
    [[nodiscard]] double ort(double wert) const;
    [[nodiscard]] double wert(double ort) const;
    /// Whether a value lies between the ends, both included.
    [[nodiscard]] bool enthält(double wert) const;

    bool operator==(const Achse&) const = default;
};

/// Where an axis is marked: multiples of a step that is 1, 2 or 5 times a power of ten.
struct Teilung {
    double schritt = 0;
    int nachkommastellen = 0; ///< digits behind the point that tell two neighbours apart
    std::vector<double> marken;
};

/// The finest marking of @p von to @p bis with at most @p höchstens marks, two at least. Empty when
/// the values are not finite or @p bis is not above @p von.
[[nodiscard]] Teilung teilung(double von, double bis, int höchstens);

/// The marking of an axis that counts from 0 to @p größte: whole numbers, the last one not below
/// @p größte, so its end is a good end of the axis. A largest count below 1 is taken for 1.
[[nodiscard]] Teilung zählteilung(int größte, int höchstens);

/// Values from the lower end to the upper one.
struct Bereich {
    double von = 0;
    double bis = 0;

    bool operator==(const Bereich&) const = default;
};
/// @p bereich, its ends moved outwards in whole steps of @p schritt so that it also holds @p werte,
/// but not beyond @p äußerster. Values that are not finite are passed over.
[[nodiscard]] Bereich erweitert(Bereich bereich, std::span<const float> werte, double schritt,
                                Bereich äußerster);

/// Class position of a cubital index on its axis, unlike klassenpositionCI() also where it has no
/// class. 1 gives 6; no index reaches 36.01.
[[nodiscard]] double klassenlageCI(double CI);
/// The cubital index at a class position below 36.01, the inverse of klassenlageCI().
[[nodiscard]] double CIBeiKlassenlage(double lage);

/// The same for the hantel index: 1 gives 25; no index reaches 100.08.
[[nodiscard]] double klassenlageHI(double HI);
[[nodiscard]] double HIBeiKlassenlage(double lage);

/// Number of classes of each index, counted from 1. Class k holds the positions from k to below
/// k + 1.
inline constexpr int KlassenzahlCI = 30;
inline constexpr int KlassenzahlHI = 37;

/// Classes of the discoidal shift, for which the trade knows none: half units (fortieths of a
/// millimetre) from -6 to below +6, counted from 1.
inline constexpr int KlassenzahlDV = 24;
[[nodiscard]] double klassenlageDV(double DV);
[[nodiscard]] double DVBeiKlassenlage(double lage);
/// The whole class of a discoidal shift; 0 when it lies outside all classes.
[[nodiscard]] int klasseDV(double DV);

/// A labelled value of an axis and its place.
struct Achsenstrich {
    double wert = 0;
    double ort = 0;
};
/// Picks from @p wünsche, the most wanted first, those whose places on an uneven axis are at least
/// @p abstand from each other and between @p anfang and @p ende. Returned in the order of places.
[[nodiscard]] std::vector<Achsenstrich> ungleicheStriche(std::span<const double> wünsche,
                                                         double (*ort)(double wert), double anfang,
                                                         double ende, double abstand);

} // namespace tarvel
