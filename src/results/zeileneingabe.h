#pragma once

#include "lang/texte.h"

#include <QDate>
#include <QLocale>
#include <QString>
#include <QStringList>

namespace tarvel {

#ifndef Q_MOC_RUN // moc takes no umlauts in the names of an enumeration

/// The columns of the browser in their order: first those of Ergebnistabelle::spalten(), then
/// those that are shown on demand and not edited.
enum class Ergebnisspalte {
    Nummer,
    Königin,
    Züchter,
    Besitzer,
    Geschlecht,
    Entspricht,
    Rasse,
    Begattung,
    Datum,
    Volk,
    Flügel,
    MittelCI,
    MittelHI,
    MittelDV,
    Anteile,
    Auflösung
};
inline constexpr int ErsteZusatzspalte = static_cast<int>(Ergebnisspalte::Volk);
inline constexpr int AnzahlZusatzspalten = 7;
inline constexpr int AnzahlErgebnisspalten = ErsteZusatzspalte + AnzahlZusatzspalten;

#endif

/// Heading of a column.
[[nodiscard]] QString spaltentitel(const Texte& texte, Ergebnisspalte spalte);

/// The words that a column is restricted to, in the language of the program; empty for a column
/// that takes any text.
[[nodiscard]] QStringList spaltenworte(const Texte& texte, Ergebnisspalte spalte);

/// Characters that a text of a column has at most.
[[nodiscard]] int spaltenbreite(Ergebnisspalte spalte);

/// How the program's language writes numbers of rows and dates.
[[nodiscard]] QLocale sprachraum(const Texte& texte);

/// A date as the program's language writes it in short, with two digits for the year. An invalid
/// date gives an empty text.
[[nodiscard]] QString kurzesDatum(const Texte& texte, const QDate& datum);
/// The same with all digits of the year, for editing.
[[nodiscard]] QString vollesDatum(const Texte& texte, const QDate& datum);
/// Reads what kurzesDatum and vollesDatum write, and "yyyy-MM-dd". A year of two digits lies
/// between 1970 and 2069. Invalid when the text is no date.
[[nodiscard]] QDate datumAusText(const Texte& texte, const QString& text);

/// What a word of a search means in stored dates ("yyyy-MM-dd"): a date as kurzesDatum and
/// vollesDatum write it, or a month and year, "6.2025". None for any other word.
[[nodiscard]] QStringList gesuchteDaten(const Texte& texte, const QString& wort);

/// What a text that was typed into a cell becomes in the file, or what speaks against it.
struct Zelleneingabe {
    QString wert;
    QString einwand; ///< a message in the program's language; empty when the text is accepted
};

/// Caste and verdict take their words in any of the three languages, a date becomes "yyyy-MM-dd",
/// the examination number must not be empty; every other text is taken as it is.
[[nodiscard]] Zelleneingabe prüfeEingabe(const Texte& texte, Ergebnisspalte spalte,
                                         const QString& text);

} // namespace tarvel
