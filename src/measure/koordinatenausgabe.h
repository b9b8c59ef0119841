#pragma once

#include "measure/messreihe.h"
#include "platform/csv.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <span>

namespace tarvel {

/// A measured wing that is to be written down.
struct Ausgabeflügel {
    int nummer = 0; ///< names the wing where it has no name
    QString name;
    Flügelmessung messung;
    std::optional<float> bildhöhe; ///< of its picture, in pixels; only TPS needs it
    bool ausgelassen = false;      ///< not part of the sample
};

// UTF-8 with LF; numbers in full single precision with a point. Coordinates are pixels of the
// picture as it was scanned, whatever the zoom.

/// TPS as morphometrics programs read it: LM=8, "-1 -1" for a point that is not set, IMAGE=
/// (without folder), ID=, SCALE= in millimetres a pixel.
///
/// There y is counted from the lower edge of the picture, so its height must be known.
struct Tps {
    QByteArray inhalt;
    /// "7 (a.png)": wings that are left out, because the height of their picture is not known or
    /// cannot be that of the picture they were measured on.
    QStringList ohneBildhöhe;
};
[[nodiscard]] Tps alsTps(std::span<const Ausgabeflügel> flügel);

/// @name The points of a wing in a table: x1, y1 … x8, y8; y down from the upper edge, empty cells
/// for a point that is not set
/// @{
[[nodiscard]] QByteArray punktspalten();
void schreibePunkte(CsvTabelle& tabelle, const Flügelmessung& messung);
/// @}

/// The name of a picture without its folder, which only means something where it was scanned. The
/// path may come from another system.
[[nodiscard]] QString bildname(const QString& pfad);

/// Indices as a table: wing, ci, ci_class, hi, hi_class, dv, left_out (yes or no); empty cells for
/// an index that cannot be computed.
[[nodiscard]] QByteArray alsIndextabelle(std::span<const Ausgabeflügel> flügel);

} // namespace tarvel
