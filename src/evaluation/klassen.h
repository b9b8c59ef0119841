#pragma once

#include "evaluation/rassestandard.h"

#include <QStringList>

#include <optional>
#include <span>
#include <vector>

namespace tarvel {

class Messreihe;

/// Why a share could not be computed.
enum class Anteilfehler {
    Überlauf,    ///< more than 327 of one kind: a hundred times that does not fit into 16 bits
    KeineBienen, ///< shares of nothing
};

/// The most bees of one kind whose share can be computed.
inline constexpr int HöchsteAnzahl = 327;

/// A share in whole percent, or why there is none.
struct Anteil {
    int prozent = 0;
    std::optional<Anteilfehler> fehler;

    bool operator==(const Anteil&) const = default;
};

/// Whole part of a class position with either decimal separator: 17 for "17.3" and "17,3", 0 for
/// "0.0", which is outside all classes, and for text that is no number.
[[nodiscard]] int klasseAusPosition(QStringView position);
/// Class of a line such as "001  CI=3.07  Klasse 17.3"; the word may be that of any language.
/// nullopt without such a word.
[[nodiscard]] std::optional<int> klasseAusZeile(QStringView zeile);
/// Classes of the cubital-index lines of a series, one for each wing that counts, in the order of
/// the list.
[[nodiscard]] std::vector<int> klassenCI(const Messreihe& reihe);

/// Wings whose class is @p von to @p bis, both included.
[[nodiscard]] int ZähleKlassen(std::span<const int> klassen, int von, int bis);
/// The same for the lines of a list; lines without a class word are passed over.
[[nodiscard]] int ZähleKlassen(const QStringList& zeilen, int von, int bis);

/// @p anzahl of @p gesamt in percent, halves to the even number.
[[nodiscard]] Anteil klassenanteil(int anzahl, int gesamt);

/// What a range of classes holds compared with the classes just outside it. A worker sample with a
/// secondary peak is taken for crossed.
struct Gipfel {
    int bezug = 0;  ///< the larger count of the two classes next to the range
    int größte = 0; ///< largest count of a single class in the range
    int klasse = 0; ///< the lowest class with that count; 0 when the range holds no wing

    [[nodiscard]] bool nebengipfel() const { return größte > bezug; }

    bool operator==(const Gipfel&) const = default;
};
[[nodiscard]] Gipfel gipfel(std::span<const int> klassen, Klassenbereich bereich);

} // namespace tarvel
