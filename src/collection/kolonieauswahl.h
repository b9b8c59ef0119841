#pragma once

#include "collection/kolonieleser.h"
#include "evaluation/sicherheit.h"

#include <QStringList>

#include <map>
#include <optional>
#include <span>
#include <vector>

namespace tarvel {

/// The text columns that a collection is narrowed and grouped by.
enum class Merkmalsfeld { Züchter, Besitzer, Rasse, Begattung, Königin };
inline constexpr std::array Merkmalsfelder{Merkmalsfeld::Züchter, Merkmalsfeld::Besitzer,
                                           Merkmalsfeld::Rasse, Merkmalsfeld::Begattung,
                                           Merkmalsfeld::Königin};
[[nodiscard]] const QString& feld(const Koloniewerte& kolonie, Merkmalsfeld feld);

/// Which examinations are looked at. Castes never mix: their indices are not the same.
struct Koloniefilter {
    Geschlecht tiere = Geschlecht::Arbeiterinnen;
    /// Whole texts without regard to case; empty for any.
    std::array<QString, Merkmalsfelder.size()> texte;
    std::optional<int> saison;
    std::optional<int> dpi; ///< also Koloniewerte::Unbekannt and Gemischt

    [[nodiscard]] const QString& operator[](Merkmalsfeld f) const {
        return texte.at(static_cast<std::size_t>(f));
    }
    [[nodiscard]] QString& operator[](Merkmalsfeld f) {
        return texte.at(static_cast<std::size_t>(f));
    }
    bool operator==(const Koloniefilter&) const = default;
};

/// Examinations of a collection, in an order.
using Kolonieauswahl = std::vector<const Koloniewerte*>;

[[nodiscard]] Kolonieauswahl wähle(const Koloniesammlung& sammlung, const Koloniefilter& filter);

/// What a filter can be set to: what the examinations of the caste have.
struct Filterwerte {
    std::array<QStringList, Merkmalsfelder.size()> texte; ///< each once, whatever its case, sorted
    std::vector<int> saisons;                             ///< the latest first
    std::vector<int> dpi;
};
[[nodiscard]] Filterwerte filterwerte(const Koloniesammlung& sammlung, Geschlecht tiere);
/// The caste that most examinations are of.
[[nodiscard]] Geschlecht häufigsteTiere(const Koloniesammlung& sammlung);

/// A text that sorts as a reader expects: without regard to case, Ä beside A.
[[nodiscard]] QString sortiertext(const QString& text);

/// Columns of the table of examinations, in their order. Of each index there are five.
enum class Kolonienspalte { Nummer, Volk, Königin, Züchter, Datum, Dpi, Index };
inline constexpr int SpaltenJeIndex = 5; ///< n, mean, s, share below, share above
inline constexpr int SpalteUrteil = static_cast<int>(Kolonienspalte::Index) + 3 * SpaltenJeIndex;
inline constexpr int SpalteHistogramm = SpalteUrteil + 1;
inline constexpr int Kolonienspalten = SpalteHistogramm + 1;

/// The text in a column before that of the date.
[[nodiscard]] const QString& textIn(const Koloniewerte& kolonie, int spalte);
/// The figure in a column of an index; empty where there is none.
[[nodiscard]] std::optional<double> indexzahl(const Koloniewerte& kolonie, int spalte);
/// Sorts by a column; equal rows keep their order, those without a value stand at the end.
void sortiere(Kolonieauswahl& auswahl, int spalte, bool absteigend);

/// The races of examinations, the most frequent first.
[[nodiscard]] QStringList rassenVon(const Kolonieauswahl& auswahl);
/// The resolutions of those with a discoidal shift, ascending.
[[nodiscard]] std::vector<int> auflösungenVon(const Kolonieauswahl& auswahl);
/// Wings that a pre-judgement takes; with fewer, mean and shares say little.
inline constexpr int WenigeFlügel = 25;
/// How many have fewer, but some.
[[nodiscard]] int mitWenigenFlügeln(const Kolonieauswahl& auswahl);
/// A figure of the discoidal shift that compares with that of no other examination.
[[nodiscard]] bool DVUnvergleichbar(const Koloniewerte& kolonie);

/// The colonies of a season: the mean of their means.
struct Jahresmittel {
    int jahr = 0;
    Kennzahlen kennzahlen;                      ///< of the means of colonies
    std::optional<Vertrauensintervall> bereich; ///< between colonies; empty with one of them
};

/// One index over the years. Discoidal shifts of different resolution have a series each.
struct Jahresreihe {
    Größe größe = Größe::CI;
    int dpi = 0; ///< of a series of discoidal shifts
    std::vector<Jahresmittel> jahre;
};

struct Jahresstand {
    int kolonien = 0;
    int beurteilt = 0;
    int konform = 0; ///< of those that were judged
};

/// Examinations of one race and caste over the years.
struct Jahresverlauf {
    std::map<int, Jahresstand> jahre;
    std::vector<Jahresreihe> reihen; ///< CI, HI, then DV by resolution
    int ohneDatum = 0;
    int ohneDpi = 0;  ///< with a discoidal shift but no definite resolution
    int mehrmals = 0; ///< examinations of a colony that has an earlier one in the same season
};
[[nodiscard]] Jahresverlauf jahresverlauf(const Kolonieauswahl& auswahl);

/// Examinations that share the text of a field, its case aside; without a text they are in no
/// group. Sorted by that text, then by race.
struct Koloniegruppe {
    QString name;
    QString rasse;
    Kolonieauswahl kolonien;
};
[[nodiscard]] std::vector<Koloniegruppe> gruppen(const Kolonieauswahl& auswahl, Merkmalsfeld nach);

} // namespace tarvel
