#pragma once

#include "measure/koordinatenausgabe.h"
#include "platform/csv.h"
#include "results/untersuchungssatz.h"

#include <QByteArray>
#include <QStringList>

#include <functional>
#include <optional>

namespace tarvel {

enum class Ausfuhrart {
    Untersuchungen, ///< a table row an examination
    Flügel,         ///< a table row a wing, with its points
    Tps,            ///< the stored points
};

/// How a point came about, in the English of tables: clicked, key, moved, proposed, file; empty
/// when it is not known.
[[nodiscard]] QStringView ursprung(Punktherkunft herkunft);

/// Height of a picture in pixels; nullopt when it cannot be had.
using Bildhöhe = std::function<std::optional<float>(const QString& pfad)>;

/// Examinations for other programs, collected one after the other.
///
/// Tables are UTF-8 with a header in English, a comma between cells and a point in numbers,
/// whatever the language. Means and standard deviations are those of the values, not of the rounded
/// lines. An empty cell is a value that there is none of.
class Ausfuhr {
public:
    /// @p bildhöhe lays the points of a TPS file into pictures whose size is not stored.
    explicit Ausfuhr(Ausfuhrart art, Bildhöhe bildhöhe = {});

    /// Adds the examination that @p satz keeps. Returns the columns whose content was not
    /// understood; the rest is there.
    QStringList nimm(const Ergebnissatz& satz, const Satzumgebung& umgebung);

    /// The file so far. Of points it is empty when there are none.
    [[nodiscard]] const QByteArray& inhalt() const;
    /// Wings whose points have no place in TPS, each with its picture; see alsTps.
    [[nodiscard]] const QStringList& ohneBildhöhe() const { return tps_.ohneBildhöhe; }

private:
    void nimmUntersuchung(const Ergebnissatz& satz, const GeleseneUntersuchung& gelesen);
    void nimmFlügel(const Ergebnissatz& satz, const GeleseneUntersuchung& gelesen);
    void nimmPunkte(const Ergebnissatz& satz, const GeleseneUntersuchung& gelesen);

    Ausfuhrart art_;
    Bildhöhe bildhöhe_;
    CsvTabelle tabelle_;
    Tps tps_;
};

} // namespace tarvel
