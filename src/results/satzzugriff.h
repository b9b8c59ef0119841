#pragma once

#include "results/ergebnisdatei.h"
#include "results/ergebnissatz.h"
#include "results/papierkorb.h"

#include <QByteArray>

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace tarvel {

/// A value as the engine holds it.
using Rohwert = std::variant<std::monostate, std::int64_t, double, std::string, std::vector<char>>;
struct Rohspalte {
    std::string name;
    Rohwert wert;
};
using Rohzeile = std::vector<Rohspalte>;

/// A row, and its values as they stand in the file.
struct Rohsatz {
    qint64 id = 0; ///< its place there
    Ergebnissatz satz;
    Rohzeile roh;
};

/// @name One row of an open file, within a transaction of the caller
/// @{

/// The rows that a number stands for, each as what follows SELECT or DELETE. The exact spelling
/// where it is stored, else all that differ only in case.
[[nodiscard]] std::vector<std::string> zielzeilen(Ergebnisdatei& datei, const QString& nummer);
/// The places of those rows in the file.
[[nodiscard]] std::vector<qint64> zielstellen(Ergebnisdatei& datei, const QString& nummer);
/// The row of @p ziel, column by column.
[[nodiscard]] Ergebnissatz lies(Ergebnisdatei& datei, const std::string& ziel);
struct GeleseneSätze {
    std::vector<Ergebnissatz> sätze;
    QStringList zuGroß; ///< numbers of rows with a value beyond all measure, which is not read
};
/// The rows at those places of the file; one that has gone is left out.
[[nodiscard]] GeleseneSätze lies(Ergebnisdatei& datei, std::span<const qint64> ids);
/// Whether both stand in the file alike: an empty text is written as a blank, and the words of
/// caste and verdict are the same in every language, because a change of language rewrites them.
[[nodiscard]] bool stehenGleich(const Ergebnissatz& a, const Ergebnissatz& b);
/// A short text that rows share when they stand alike, and otherwise practically never.
[[nodiscard]] QString satzmarke(const Ergebnissatz& satz);
/// Puts @p satz in the place of @p ziele. What other programs keep in columns of their own goes
/// over from the first of them. Those that stand otherwise go into the bin, unless @p anlass is
/// empty.
void setzeAnStelle(Ergebnisdatei& datei, const std::vector<std::string>& ziele,
                   const Ergebnissatz& satz, std::optional<Korbanlass> anlass);

/// Where rows are that have the columns of the table, and which others of theirs are read.
struct Rohort {
    std::string tabelle;
    std::string platz;
    std::vector<std::string> weitere = {};
};
/// Gives the rows at @p ids until @p nimm returns false; one that has gone is left out. @p
/// übergehe, where there is one, gets the number of a row with a value beyond all measure.
void liesRoh(Ergebnisdatei& datei, const Rohort& ort, std::span<const qint64> ids,
             const std::function<bool(const Rohsatz&)>& nimm,
             const std::function<void(const QString&)>& übergehe);
/// Adds a row.
void füge(Ergebnisdatei& datei, const Rohzeile& zeile);
void entferneZeile(Ergebnisdatei& datei, qint64 id);
/// What other programs keep in columns of their own of the row at @p id.
[[nodiscard]] Rohzeile fremdwerte(Ergebnisdatei& datei, qint64 id);
/// The names of the columns of a table.
[[nodiscard]] std::vector<std::string> spaltennamen(Ergebnisdatei& datei,
                                                    const std::string& tabelle);
/// @}

/// A name as a statement takes it.
[[nodiscard]] std::string bezeichner(std::string name);
/// @p satz as it is written.
[[nodiscard]] Rohzeile rohzeile(const Ergebnissatz& satz);
/// The bytes of a value, to be compared.
[[nodiscard]] QByteArray rohbytes(const Rohwert& wert);
/// Gives a row another number.
void setzeNummer(Rohsatz& zeile, const QString& nummer);
/// Puts the words of caste and verdict into @p sprache; what is none of them stays.
void setzeWörter(Rohsatz& zeile, Sprache sprache);

/// A text as it is written: an empty one as a single blank.
[[nodiscard]] QString geschrieben(const QString& wert);

} // namespace tarvel
