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
    /// Numbered from 1 in the order of the file, without those that have no index. Those that the
    /// file leaves out are left out of it.
    Messreihe reihe;
    /// All wings of the file, as they were entered.
    std::vector<Flügelmessung> messungen;
    std::vector<Flügelmangel> mängel;
};

/// Brings the points of a wing onto its picture, before the wing is kept. Its indices are those of
/// the points as they stand in the file.
using Lagebestimmung = std::function<void(Flügelmessung& messung)>;

/// How the wings of a coordinate file are computed.
struct Reihenvorgabe {
    Messart messart = Messart::AlleMessungen;
    /// How their pictures were taken. Points in pixels of the picture have zoom 1 in any case.
    Aufnahme aufnahme = {};
    /// The resolution that a wing brings along counts before that of aufnahme.
    bool eigeneAuflösung = false;
    Zahlenformat format = {};
    Lagebestimmung lage = {};
};

[[nodiscard]] Koordinatenreihe reiheAus(const Koordinaten& koordinaten,
                                        const Reihenvorgabe& vorgabe);

/// @name Resolution in dots per inch that a wing brings along, by column "dpi" or by its scale,
/// read as millimetres a pixel; nullopt where there is none, or none of a scanner
/// @{
[[nodiscard]] std::optional<int> auflösungAus(const Koordinatensatz& satz);
/// That of all wings; nullopt where they disagree.
[[nodiscard]] std::optional<int> auflösungAus(const Koordinaten& koordinaten);
/// @}

} // namespace tarvel
