#pragma once

#include <QByteArray>
#include <QList>
#include <QSize>

class QIODevice;

namespace tarvel {

/// Kind of the picture that the contents of @p quelle are, by their first bytes: "jpeg", "bmp",
/// "gif", "png", "tiff", "webp", "pbm", "pgm", "ppm". Empty for everything else: only formats with
/// a pixel grid of their own can be measured, a drawing scales to anything.
[[nodiscard]] QByteArray rasterformat(QIODevice& quelle);

/// One picture of a TIFF file.
struct TiffSeite {
    int nummer = 1; ///< its place in the file, from 1
    QSize größe;
    int bits = 1; ///< of a pixel
    /// Rows that are packed together, which a decoder unpacks at once.
    qint64 streifenhöhe = 0;
    /// A preview of another page.
    bool verkleinert = false;
};

/// More pages of a file are left out.
constexpr int HöchstensSeiten = 999;

/// The pages in the order of the file, up to the first place where it is damaged.
[[nodiscard]] QList<TiffSeite> tiffSeiten(QIODevice& quelle);

/// Size of the area that the pictures of a GIF file are put onto, for which memory is taken.
[[nodiscard]] QSize gifGröße(QIODevice& quelle);

/// True when a GIF file holds its first picture to the last block. A decoder fills up what is
/// missing with the background and says nothing.
[[nodiscard]] bool gifVollständig(QIODevice& quelle);

} // namespace tarvel
