#pragma once

#include <QPolygonF>
#include <QRectF>
#include <QString>

class QFont;
class QPainter;

namespace tarvel {

/// A wing that was found and is not measured yet, as the views frame it.
struct Fundrahmen {
    QPolygonF umriss; ///< pixels of the unzoomed picture
    /// The number that it is likely to get; empty where the series has no room.
    QString nummer = {};
    /// It may be no wing: dashed, with a question mark.
    bool zweifelhaft = false;

    bool operator==(const Fundrahmen&) const = default;
};

/// Paints the outline @p umriss, places of the view, and the number of @p rahmen above it, but not
/// above the picture, which fills @p bildfeld.
void maleFundrahmen(QPainter& painter, const QFont& schrift, const QPolygonF& umriss,
                    const Fundrahmen& rahmen, const QRectF& bildfeld);

/// Rectangle around @p umriss outside of which that does not paint.
[[nodiscard]] QRectF fundrahmenFeld(const QFont& schrift, const QPolygonF& umriss);

} // namespace tarvel
