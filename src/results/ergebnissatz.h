#pragma once

#include "lang/texte.h"

#include <QDate>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <array>
#include <span>

namespace tarvel {

/// One row of the table `Ergebnisse`, as the results file holds it. Texts are what the columns
/// contain: an empty one is written as a single blank and a single blank comes back.
struct Ergebnissatz {
    QString U_NR;  ///< examination number, the key
    QString ZB_NR; ///< queen number
    QString Z_NAME;
    QString A_D; ///< caste, in the language the row was written in
    QString RASSE;
    QString B_NAME;
    QString ERGEBNIS; ///< yes or no, in the language the row was written in
    QDate DATUM;      ///< invalid when the column holds no date
    QString VATER;    ///< mating
    QString VOLK;
    QString CI;
    QString HI_DV;
    QString PROZENT;
    QString MERKMAL;
    std::array<QString, 4> Grafik;
    /// Names of the columns whose content another program wrote in a form that can't be read: a
    /// date that is none, bytes that are no text. Filled when loading, not stored.
    QStringList unlesbar;

    bool operator==(const Ergebnissatz&) const = default;
};

/// Characters that an examination number has at most.
inline constexpr int LängsteNummer = 10;

/// A text column of the table with its width in characters.
struct Textspalte {
    QStringView name;
    int breite;
    QString Ergebnissatz::*wert;
};

/// Whether a stored word of caste or verdict is the entry @p text in any language.
[[nodiscard]] bool bedeutet(QStringView wort, Text text);

/// The text columns of fixed width, in the order of the table.
[[nodiscard]] std::span<const Textspalte> textspalten();

/// The columns of the table in its order.
[[nodiscard]] QStringList tabellenspalten();
/// The text of @p satz in the column of that name; null for `DATUM` and for any other name.
[[nodiscard]] QString* spaltentext(Ergebnissatz& satz, QStringView spalte);

/// What the width of a column counts: a character beyond the basic plane is one.
[[nodiscard]] int zeichenzahl(QStringView text);

} // namespace tarvel
