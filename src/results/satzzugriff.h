#pragma once

#include "results/ergebnisdatei.h"
#include "results/ergebnissatz.h"

#include <span>
#include <string>
#include <vector>

namespace tarvel {

/// @name One row of an open file, within a transaction of the caller
/// @{

/// The rows that a number stands for, each as what follows SELECT or DELETE. The exact spelling
/// where it is stored, else all that differ only in case.
[[nodiscard]] std::vector<std::string> zielzeilen(Ergebnisdatei& datei, const QString& nummer);
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
/// over from the first of them.
void setzeAnStelle(Ergebnisdatei& datei, const std::vector<std::string>& ziele,
                   const Ergebnissatz& satz);
/// @}

/// A text as it is written: an empty one as a single blank.
[[nodiscard]] QString geschrieben(const QString& wert);

} // namespace tarvel
