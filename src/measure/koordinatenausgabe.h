#pragma once

#include "measure/messreihe.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <span>

namespace tarvel {

/// A measured wing that is to be written down.
struct Ausgabeflügel {
    int nummer = 0; ///< names the wing where it has no name
    QString name;
    Flügelmessung messung;
    std::optional<float> bildhöhe; ///< of its picture, in pixels; nullopt when not known
};

// UTF-8 with LF; numbers in full single precision with a point. Coordinates are pixels of the
// picture as it was scanned, whatever the zoom.

/// TPS as morphometrics programs read it: LM=8, "-1 -1" for a point that is not set, IMAGE=
/// (without folder), ID=, SCALE= in millimetres a pixel.
///
/// There y is counted from the lower edge of the picture. Where the height of the picture is not
/// known, the wing is turned over about its own middle: its shape is right, its place is not.
[[nodiscard]] QByteArray alsTps(std::span<const Ausgabeflügel> flügel);

/// Points as a table: wing, file, x1, y1 … x8, y8; y down from the upper edge, empty cells for a
/// point that is not set.
[[nodiscard]] QByteArray alsPunktetabelle(std::span<const Ausgabeflügel> flügel);

/// Indices as a table: wing, ci, ci_class, hi, hi_class, dv; empty cells for an index that cannot
/// be computed.
[[nodiscard]] QByteArray alsIndextabelle(std::span<const Ausgabeflügel> flügel);

} // namespace tarvel
