#pragma once

#include "evaluation/geschlecht.h"
#include "evaluation/rassestandard.h"
#include "measure/statistik.h"
#include "results/ergebnissatz.h"
#include "results/untersuchungssatz.h"

#include <QDate>
#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace tarvel {

/// The three indices of a wing, in the order of all that is shown of them.
enum class Größe { CI, HI, DV };
inline constexpr std::array Größen{Größe::CI, Größe::HI, Größe::DV};

/// Boundary lines that wings are counted by.
struct Koloniegrenzen {
    std::array<double, 3> werte{}; ///< by Größe
    bool darunter = false;         ///< wings of the race lie below them

    [[nodiscard]] double operator[](Größe g) const { return werte.at(static_cast<std::size_t>(g)); }

    bool operator==(const Koloniegrenzen&) const = default;
};

/// What a sample says of one index. Wings left out count nowhere.
struct Indexwerte {
    /// Number of classes that any index has, with class 0 for what lies outside them.
    static constexpr std::size_t Klassenzahl = 38;

    Kennzahlen kennzahlen; ///< anzahl is 0 without a wing that has the index
    int unter = 0;         ///< wings below the boundary line, as precisely as indices are written
    int über = 0;          ///< wings above it; those on it are neither
    std::array<quint8, Klassenzahl> klassen{}; ///< wings by class
};

/// One examination, as it stands beside others.
struct Koloniewerte {
    static constexpr int Unbekannt = 0;  ///< for dpi: nothing says it
    static constexpr int Gemischt = -1;  ///< for dpi: its wings differ, so its DV has no meaning
    static constexpr int OhneRasse = -1; ///< for rasse: no standard, so no boundary lines

    // Texts without the blanks around them.
    QString UNr;
    QString Satznummer; ///< UNr as it is stored, blanks included
    QString Volk;
    QString Königin;
    QString Züchter;
    QString Besitzer;
    QString Begattung;
    QString Rasse;
    int rasse = OhneRasse; ///< position in the race list
    Geschlecht tiere = Geschlecht::Arbeiterinnen;
    QDate datum;
    std::optional<bool> urteil; ///< as it is stored; empty when nothing was judged
    int dpi = Unbekannt;        ///< of the wings with a discoidal shift
    int ausgelassen = 0;        ///< wings left out
    bool teilweise = false;     ///< not all of the row was understood
    std::array<Indexwerte, 3> index;

    [[nodiscard]] const Indexwerte& operator[](Größe g) const {
        return index.at(static_cast<std::size_t>(g));
    }
    [[nodiscard]] Indexwerte& operator[](Größe g) { return index.at(static_cast<std::size_t>(g)); }
    /// Season of the examination; empty without a date.
    [[nodiscard]] std::optional<int> saison() const {
        return datum.isValid() ? std::optional(datum.year()) : std::nullopt;
    }
    /// The most wings that any index has.
    [[nodiscard]] int flügel() const;
    /// Its discoidal shifts compare with those of others that have the same dpi.
    [[nodiscard]] bool dpiEindeutig() const { return dpi > 0; }
};

/// What examinations are read by.
struct Kolonieregeln {
    Satzumgebung satz;
    std::vector<Grenzlinien> linien; ///< in the order of the race list

    /// Those of a race and caste; empty for a race that is not in the list.
    [[nodiscard]] std::optional<Koloniegrenzen> grenzen(int rasse, Geschlecht tiere) const;
    /// A number that changes when the same row could give other figures.
    [[nodiscard]] quint64 marke() const;
};

/// Rules by the settings.
[[nodiscard]] Kolonieregeln kolonieregeln(const Satzumgebung& satz,
                                          const Einstellungen& einstellungen);

/// Number of classes of an index, without class 0.
[[nodiscard]] int klassenzahl(Größe größe);
/// Parts of 1 that values of an index are compared with a boundary line by: hundredths for CI.
[[nodiscard]] double feinheit(Größe größe);

/// The figures of the examination that @p satz keeps.
[[nodiscard]] Koloniewerte koloniewerte(const Ergebnissatz& satz, const Kolonieregeln& regeln);

} // namespace tarvel
