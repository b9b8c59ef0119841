#pragma once

#include "measure/bildarbeiter.h"

#include <QImage>
#include <QList>
#include <QSize>

#include <optional>

class QIODevice;

namespace tarvel {

/// What the header of an uncompressed bitmap says about where its rows lie.
struct BmpKopf {
    QSize größe;
    /// First row in the file is the top one; usually it is the bottom one.
    bool vonOben = false;
    /// Bits of one pixel.
    int bits = 0;
    /// Place of the first row in the file, and bytes from row to row.
    qint64 anfang = 0;
    qint64 zeile = 0;
    /// Bytes of all rows when they are packed.
    std::optional<qint64> gepackt;
    /// The rows can be read as they are: 8, 24 or 32 bits a pixel, uncompressed.
    bool unmittelbar = false;
    /// Colours of an 8 bit picture, always 256.
    QList<QRgb> farben;
    /// The 256 colours are the greys in their order: a pixel's byte is its brightness.
    [[nodiscard]] bool grau() const;
    /// Bytes the file must have to hold every row of a picture of sensible size.
    [[nodiscard]] qint64 ende() const { return anfang + gepackt.value_or(zeile * größe.height()); }
};

/// Reads the header at the beginning of @p quelle. Nothing when it is no usable bitmap header.
[[nodiscard]] std::optional<BmpKopf> liesBmpKopf(QIODevice& quelle);

/// Reduces the picture @p teiler times (1 or more) from a sample of its rows. Null when a row
/// could not be read. Rows are read, not mapped: a file that shrinks meanwhile gives an error.
[[nodiscard]] QImage liesBmpVerkleinert(QIODevice& quelle, const BmpKopf& kopf, int teiler,
                                        const Weiter& weiter);

/// Reads all pixels as Grayscale8, RGB888, BGR888 or RGB32, whichever needs least work. Null when
/// a row or the memory is missing, or when @p weiter says so.
[[nodiscard]] QImage liesBmp(QIODevice& quelle, const BmpKopf& kopf, const Weiter& weiter);

} // namespace tarvel
