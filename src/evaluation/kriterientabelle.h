#pragma once

#include "evaluation/kriterien.h"
#include "lang/texte.h"
#include "platform/zahlen.h"

#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace tarvel {

inline constexpr std::size_t Kriterienspaltenzahl = 7;

/// A check of the judgement with what it rests on: criterion, measured, allowed, margin, bees,
/// interval, outcome.
struct Kriterienzeile {
    std::array<QString, Kriterienspaltenzahl> spalten;
    bool fett = false; ///< what was measured is beyond the standard
    /// Nothing can fail it, or it was not recorded.
    bool blass = false;
    /// Empty for a mean without a limit, and for a group of marks that was not recorded, which has
    /// one row.
    std::optional<Prüfwert> prüfwert = {};

    bool operator==(const Kriterienzeile&) const = default;
};

/// The words of the table. Those of a report may be the user's own.
struct Kriterienworte {
    QString nichtGemessen;
    QString mittelwert;
    QString CI;
    QString HI;
    QString DV;
    QString klasse;
    QString nebengipfel;
    QString panzer;
    QString haarlänge;
    QString filz;
    QString haarfarbe;
    const Texte& texte;
    Zahlenformat format;
    bool weitere = false; ///< an open outcome says how many more bees, not how many, it takes
    /// What was measured of the marks stands as numbers of bees, where shares stand elsewhere.
    bool merkmaleAlsZahl = false;
};
/// @p worte texts of the program, or those of a report.
template <typename Worte>
[[nodiscard]] Kriterienworte kriterienworte(const Worte& worte, const Texte& texte,
                                            const Zahlenformat& format) {
    return {.nichtGemessen = worte(Text::NichtGemessen),
            .mittelwert = worte(Text::Mittelwert),
            .CI = worte(Text::CI),
            .HI = worte(Text::HI),
            .DV = worte(Text::DV),
            .klasse = worte(Text::Klasse),
            .nebengipfel = worte(Text::Nebengipfel),
            .panzer = worte(Text::PanzerzeichenProtokoll),
            .haarlänge = worte(Text::HaarlängeProtokoll),
            .filz = worte(Text::FilzbindenProtokoll),
            .haarfarbe = worte(Text::Haarfarbe),
            .texte = texte,
            .format = format};
}

/// Names of the columns.
[[nodiscard]] std::array<QString, Kriterienspaltenzahl> kriterienspalten(const Texte& texte);

/// The checks of @p urteil in its order, then the means that it does not limit; none while nothing
/// is judged.
[[nodiscard]] std::vector<Kriterienzeile>
kriterientabelle(const Prüfling& prüfling, const Urteil& urteil, const Kriterienworte& worte);

} // namespace tarvel
