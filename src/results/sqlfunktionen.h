#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace SQLite {
class Database;
}

namespace tarvel {

/// The number that @p text begins with, for the running part of an examination number: blanks
/// before it are skipped, a sign and a decimal point are understood. It ends at the first letter,
/// whichever that is, so a short sign "E" is no exponent. 0 when there is no number.
[[nodiscard]] double zahlAmAnfang(std::string_view text);

/// The year of a date text "yyyy-MM-dd…"; 0 when it is none.
[[nodiscard]] int jahrVon(std::string_view text);

/// Whether @p text is like @p muster (both UTF-8), letters of any alphabet without regard to case:
/// '%' stands for any characters, '_' for one. The character after @p flucht (0: none) stands for
/// itself.
[[nodiscard]] bool istWie(std::string_view text, std::string_view muster, char32_t flucht = 0);

/// Gives a connection the functions VAL and Year. Both are for queries only: in an index they would
/// keep other programs from the file.
void registriereVALundYear(SQLite::Database& verbindung);

/// Lets LIKE compare umlauts without regard to case on this connection. The engine then scans
/// instead of using an index.
void registriereLIKE(SQLite::Database& verbindung);

/// Gives a connection the function findet(text, …): whether each of @p worte (UTF-8), in one of its
/// forms, occurs in one of the texts, letters of any alphabet without regard to case. An umlaut and
/// the letter with an e are one, as are ß and ss.
void registriereSuche(SQLite::Database& verbindung,
                      const std::vector<std::vector<std::string>>& worte);

} // namespace tarvel
