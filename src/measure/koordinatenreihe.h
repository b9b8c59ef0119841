#pragma once

#include "measure/koordinatendatei.h"
#include "measure/messreihe.h"

#include <functional>
#include <optional>
#include <vector>

namespace tarvel {

/// A wing of a coordinate file that has no indices, or not all.
struct Flügelmangel {
    int zeile = 0; ///< of the file
    QString name;
    std::optional<Rechenfehler> fehler; ///< nullopt: points are missing
};

/// Why, as a sentence.
[[nodiscard]] QString text(const Flügelmangel& mangel, const Texte& texte);

/// The wings of a coordinate file as a series.
struct Koordinatenreihe {
    /// Numbered from 1 in the order of the file; those without an index are left out.
    Messreihe reihe;
    /// All wings of the file, as they were entered.
    std::vector<Flügelmessung> messungen;
    std::vector<Flügelmangel> mängel;
};

/// Brings the points of a wing onto its picture, before the wing is kept. Its indices are those of
/// the points as they stand in the file.
using Lagebestimmung = std::function<void(Flügelmessung& messung)>;

/// Computes the wings of @p koordinaten as points of a picture that was taken as @p aufnahme says.
[[nodiscard]] Koordinatenreihe reiheAus(const Koordinaten& koordinaten, Messart messart,
                                        const Aufnahme& aufnahme, const Zahlenformat& format,
                                        const Lagebestimmung& lage = {});

/// Resolution in dots per inch that a file names, or that its scales stand for, read as millimetres
/// a pixel; nullopt where wings disagree, have none, or it would not be that of a scanner.
[[nodiscard]] std::optional<int> auflösungAus(const Koordinaten& koordinaten);

} // namespace tarvel
