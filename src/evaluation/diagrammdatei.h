#pragma once

#include "evaluation/diagramm.h"

#include <QImage>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <functional>
#include <vector>

class QPainter;

namespace tarvel {

/// What a chart can be saved as.
enum class Diagrammformat { PNG, SVG, PDF };

/// Those that this build writes.
[[nodiscard]] const std::vector<Diagrammformat>& diagrammformate();

/// "PNG".
[[nodiscard]] QString formatname(Diagrammformat format);
/// ".png".
[[nodiscard]] QString dateiendung(Diagrammformat format);
/// What a file of that name is to be; a PNG with an unknown extension.
[[nodiscard]] Diagrammformat formatNach(const QString& pfad);

/// Paints a chart into a rectangle.
using Diagrammmaler = std::function<void(QPainter&, const QRectF&)>;

/// What stands below a chart that leaves the program. Empty parts are left out.
struct Bildunterschrift {
    QString untersuchung; ///< with its number
    QString rasse;
    QString tiere;
    QString datum;
    QString bemerkungen; ///< wings left out, how points came about

    bool operator==(const Bildunterschrift&) const = default;
};

/// Paints with @p maler and the legend below, within the same rectangle.
[[nodiscard]] Diagrammmaler mitUnterschrift(Diagrammmaler maler, Bildunterschrift unterschrift,
                                            Diagrammstil stil);

/// The chart as a picture of 2000 pixels width at 300 dpi, in the proportions of @p größe.
[[nodiscard]] QImage diagrammbild(const QSizeF& größe, const Diagrammmaler& maler);

/// Writes the chart to the file @p pfad in the proportions of @p größe; an existing file is
/// replaced only when all was written. Returns the reason when that failed, else an empty text.
[[nodiscard]] QString speichereDiagramm(const QString& pfad, Diagrammformat format,
                                        const QSizeF& größe, const QString& titel,
                                        const Diagrammmaler& maler);

} // namespace tarvel
