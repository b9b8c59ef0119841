#pragma once

#include "evaluation/geschlecht.h"
#include "evaluation/klassen.h"

#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <span>
#include <vector>

namespace tarvel {

/// Groups of body marks: workers have the first three, drones the first and the last.
enum class Merkmalgruppe { Panzer, HaarLänge, Filz, Haarfarbe };

/// One mark: its code and the piece that stands for it in a line of the list.
struct Merkmalcode {
    QStringView code;
    QStringView stück;
};

/// The groups of a caste in the order in which they stand in lines, counts and summary.
[[nodiscard]] std::span<const Merkmalgruppe> merkmalgruppen(Geschlecht tiere);
/// The codes of a group in the index order of its option buttons. Empty when the caste does not
/// have the group.
[[nodiscard]] std::span<const Merkmalcode> merkmalcodes(Geschlecht tiere, Merkmalgruppe gruppe);
/// All codes of a caste in the order of the counts: ten for workers, eight for drones.
[[nodiscard]] std::vector<QString> merkmalcodes(Geschlecht tiere);

inline constexpr int HöchsteMerkmalzahl = 10;
/// Counts of the codes of a caste: O, E, 1R, 2R, k, m, l, F, ff, f or O, I, 1R, 2R, gr, ge, br,
/// sch. What drones do not have stays 0.
using Merkmalzahlen = std::array<int, HöchsteMerkmalzahl>;
/// Place of the first code of a group in the counts; -1 when the caste does not have the group.
[[nodiscard]] int ersterPlatz(Geschlecht tiere, Merkmalgruppe gruppe);

/// State of the option buttons for one bee: the index set in each group.
struct Merkmalwahl {
    int Panzer = 0;
    int Haar = 0; ///< hair length of a worker, hair colour of a drone
    int Filz = 0; ///< workers only

    bool operator==(const Merkmalwahl&) const = default;
};

/// Marks are taken bee by bee into a list or as numbers of bees.
enum class Merkmalmodus { Liste, Summen };

/// The body marks of one examination.
struct Merkmale {
    Geschlecht Tiere = Geschlecht::Arbeiterinnen;
    Merkmalmodus Modus = Merkmalmodus::Liste;
    QStringList Liste;      ///< one line a bee: "001   O, k,  F"; counts in list mode
    Merkmalzahlen Summen{}; ///< numbers of bees that a person typed; count in sums mode

    /// Nothing was entered in the mode that counts.
    [[nodiscard]] bool leer() const;
    /// Something was entered in either mode, which clearing would lose.
    [[nodiscard]] bool etwasEingetragen() const;

    bool operator==(const Merkmale&) const = default;
};

/// All that follows from the marks. It is formed anew after every change of them.
struct Merkmalauswertung {
    Geschlecht Tiere = Geschlecht::Arbeiterinnen;
    Merkmalzahlen Anzahl{};
    int Bienen = 0; ///< the colour total, which all shares are taken of
    /// The groups do not cover the same number of bees. The rest is valid all the same; whoever
    /// shows it says so (text BienenzahlUnterschiedlich).
    bool Unterschiedlich = false;
    /// Set when shares could not be computed; there are no texts then. No marks are no fault.
    std::optional<Anteilfehler> Fehler;
    /// Summary, one text a group in their order: "O=67%  E=33%  1R=0%  2R=0%". Drones' hair colours
    /// stand in the order gr, br, ge, sch. Empty without marks.
    QStringList Texte;
    /// The stored record; empty without marks. See merkmaleAusSatz.
    QString Satz;

    bool operator==(const Merkmalauswertung&) const = default;
};

/// Number that the next bee of the list receives: that of the last line plus 1.
[[nodiscard]] int nächsteBiene(const Merkmale& merkmale);
/// The last bee number that fits the three digits of a line.
inline constexpr int HöchsteBienennummer = 999;

/// Adds a line for one bee at the end of the list. With @p OhneHaarlänge a worker's hair length is
/// left out: ", -". False, and nothing changes, in sums mode, for an index that the group does not
/// have, and after bee 999.
[[nodiscard]] bool MerkmalÜbernehmen(Merkmale& merkmale, const Merkmalwahl& wahl,
                                     bool OhneHaarlänge);
/// Removes a line of the list by its place from 0; the other bees keep their numbers, because a
/// number belongs to a bee. False when there is no such line.
[[nodiscard]] bool MerkmalEntfernen(Merkmale& merkmale, int zeile);
/// Changes between list and sums. Both stay and count again when their mode comes back. Sums into
/// which nothing was typed begin with the counts of the list; if they are left with just these,
/// they are empty again and follow the list.
void setzeModus(Merkmale& merkmale, Merkmalmodus modus);
/// Places from 0 of the bees in the list that have the mark @p code; none in sums mode.
[[nodiscard]] std::vector<int> zeilenMitCode(const Merkmale& merkmale, QStringView code);
/// Another caste has other marks, so changing it clears list and sums. The mode stays.
void setzeTiere(Merkmale& merkmale, Geschlecht tiere);
/// Removes all marks; caste and mode stay.
void löscheMerkmale(Merkmale& merkmale);

/// Number of bees in a count box: the number the text begins with, 0 to 32767.
[[nodiscard]] int anzahlAusText(QStringView text);

/// Counts the marks and forms all that follows from them. With @p OhneHaarlänge hair length does
/// not need to cover all bees, and numbers typed for it do not count; the record keeps them.
[[nodiscard]] Merkmalauswertung MerkmaleAuswerten(const Merkmale& merkmale, bool OhneHaarlänge);

/// Summary and number of bees as the results table keeps them, at most 70 characters for shares up
/// to 100%: "O=67% E=33% 1R=0% 2R=0%;k=67% m=33% l=0%;F=67% ff=33% f=0%;3". Empty without texts.
[[nodiscard]] QString prozentfeld(const Merkmalauswertung& auswertung);

/// The marks that a stored record was formed from:
/// - workers' list "L#001;OkF; #002;RmF; ": last characters of the three codes. 1R and 2R both
///   read "R" and ff and f both "f"; @p prozent, a prozentfeld, tells how many are which, and the
///   first bees then become 1R or ff. So the summary comes back exactly, and up to 100 bees
///   the counts, but in a mixed sample not which bee was which. Without a summary they become 1R
///   and f.
/// - drones' list "L#001;1Rgr; ": the full codes
/// - sums "A3;2;1;0;0;2;1;0;2;1;0": number of bees, then the counts of merkmalcodes
/// An empty or blank record means no marks. nullopt for anything else: the caller keeps the text.
[[nodiscard]] std::optional<Merkmale> merkmaleAusSatz(QStringView satz, QStringView prozent,
                                                      Geschlecht tiere);

/// Share of a code in percent as a summary text names it, behind the code and "="; codes match as
/// whole words with their case, so "f" is not found in "ff=". nullopt when the text lacks the code.
[[nodiscard]] std::optional<int> merkmalanteil(QStringView text, QStringView code);

} // namespace tarvel
