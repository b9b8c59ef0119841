#pragma once

#include "lang/texte.h"
#include "results/datumsformen.h"
#include "results/ergebnissatz.h"

#include <QByteArrayView>
#include <QDate>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace tarvel {

/// A line of a table that was not taken, and why.
struct Zeilenproblem {
    int zeile = 0;
    Meldung grund = Meldung::TabelleOffen;
    QStringList teile; ///< arguments of the message
};
/// "Line 7: '31.02.2020' is no date."
[[nodiscard]] QString problemtext(const Zeilenproblem& problem, const Texte& texte);

/// Examinations of a table of text.
struct Tabelleninhalt {
    bool istTabelle = false; ///< its first line names the column U_NR
    std::vector<Ergebnissatz> sätze;
    std::vector<Zeilenproblem> probleme;
    QStringList fremdeSpalten;    ///< that a results file has no place for
    std::optional<QString> datum; ///< one that needs to know whether its day or month comes first
};

/// Reads a table as spreadsheets and other databases write it: separated by comma, semicolon or
/// tab, in UTF-8 or Windows-1252, its first line with names of the columns of `Ergebnisse` in any
/// order and case. Dates are read by datumAusForm(); without @p folge as the column itself says,
/// else day first, and then Tabelleninhalt::datum is set. A line with a date that is none, a text
/// wider than its column or too many fields is left out.
[[nodiscard]] Tabelleninhalt liesTabelle(QByteArrayView bytes, std::optional<Tagesfolge> folge,
                                         const QDate& heute);

/// The most bytes that such a table may have.
inline constexpr qsizetype GrößteTabelle = qsizetype{512} * 1024 * 1024;

} // namespace tarvel
