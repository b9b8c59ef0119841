#pragma once

#include "lang/meldungen.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <optional>
#include <vector>

namespace tarvel {

class Texte;

/// Texts of the program in a language of the user's own, laid over one of its three languages.
///
/// The file is UTF-8, a line a text: "Name = words", "\n" for a line break. It begins with the line
/// Sprachpaketkopf; '#' begins a comment. "language" names the language, "locale" ("sl") gives the
/// names of the months. A name without words leaves the program's own text.
struct Sprachpaket {
    QString name;
    QString gebiet;
    std::map<int, QString> texte;     ///< by the number of their Text
    std::map<int, QString> meldungen; ///< by the number of their Meldung
    /// Numbers of lines that were not taken: an unknown or repeated name, a word that stands in
    /// files, or a text that lacks one of its places "%1".
    std::vector<int> abgewiesen;

    [[nodiscard]] int anzahl() const { return static_cast<int>(texte.size() + meldungen.size()); }
    bool operator==(const Sprachpaket&) const = default;
};

inline constexpr char Sprachpaketkopf[] = "Tarvel language pack";
/// The most bytes that a pack may have.
inline constexpr qint64 GrößtesSprachpaket = 2 * 1024 * 1024;

/// How many texts a pack can hold.
[[nodiscard]] int umfangSprachpaket();

/// nullopt when @p inhalt does not begin as a pack does or is no UTF-8.
[[nodiscard]] std::optional<Sprachpaket> leseSprachpaket(const QByteArray& inhalt);
/// The same of a file; nullopt for one that cannot be read or is too large, too.
[[nodiscard]] std::optional<Sprachpaket> ladeSprachpaket(const QString& pfad);

/// A pack to be filled in: every name with the words of the current language as a comment, and
/// what the present pack has of it.
[[nodiscard]] QByteArray sprachpaketvorlage(const Texte& texte);

} // namespace tarvel
