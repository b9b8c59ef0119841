#pragma once

#include "measure/leseproblem.h"
#include "measure/messpunkte.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <variant>
#include <vector>

namespace tarvel {

/// The points of one wing as another program or a person wrote them down.
struct Koordinatensatz {
    QString name = {};      ///< of the wing: column "wing" or ID=; may be empty
    QString bilddatei = {}; ///< of its picture: column "file" or IMAGE=; may be empty
    Messpunkte punkte{Messart::AlleMessungen}; ///< as they stand in the file, nothing scaled
    std::optional<float> maßstab = {}; ///< SCALE=: length of a pixel, in the file's own unit
    std::optional<int> auflösung = {}; ///< column "dpi": resolution of its picture
    /// Column "zoom": the points are pixels of the picture, whatever the zoom they were measured
    /// at.
    bool inBildpunkten = false;
    bool ausgelassen = false; ///< column "left_out": the wing is not part of the sample
    bool ungeprüft = false;   ///< nobody looked at its points since a program found them
    int zeile = 0;            ///< where the wing begins

    /// What names the wing: its name, else its picture.
    [[nodiscard]] const QString& bezeichnung() const { return name.isEmpty() ? bilddatei : name; }

    bool operator==(const Koordinatensatz&) const = default;
};

/// A coordinate file.
struct Koordinaten {
    std::vector<Koordinatensatz> flügel; ///< 1 to 200
    /// True when y is counted from the lower edge of the picture, as is usual in TPS. To lay such
    /// points onto the picture, see gespiegelt.
    ///
    /// No index depends on it. All are made of distances between points, which a reflection does
    /// not change; that goes for the sign of the discoidal shift too, because the feet of points 4
    /// and 8 keep their order along the base line.
    bool yNachOben = false;
};

/// Reads the points of wings from CSV or TPS; the content decides which of the two it is. UTF-8,
/// UTF-16 with a byte order mark or Windows-1252; any line ends. Nothing is half read: the first
/// thing that cannot be understood is the result.
///
/// CSV: a header with x1, y1 … x8, y8 in any order, upper or lower case; points that @p messart
/// does not use may be left out. "wing" and "file" name the wing, "dpi" is its resolution,
/// "left_out" says yes or no; "checked" with no, or without it "state" with sure or doubtful, that
/// nobody looked at points that were found by themselves; other columns are passed over. Comma,
/// semicolon or tab; a decimal comma only with the latter two. Fields may be quoted. An empty cell
/// or NA means that the point is not set.
///
/// TPS: LM=8 and eight lines "x y" a wing, decimals with point or comma; a negative number or NA
/// means that the point is not set. IMAGE=, ID= and SCALE= (which may be empty) belong to the wing
/// before them; comments, curves and all other keys are passed over.
///
/// Two wings with the same name are an error, unless they belong to different pictures.
[[nodiscard]] std::variant<Koordinaten, Leseproblem>
liesKoordinaten(QByteArrayView bytes, Messart messart = Messart::AlleMessungen);

/// @p punkte with y counted from the other horizontal edge of a picture that is @p bildhöhe high;
/// nullopt when that cannot be the picture the points are from.
[[nodiscard]] std::optional<Messpunkte> gespiegelt(const Messpunkte& punkte, float bildhöhe);
/// The height that turns a wing over about its own middle: its shape is right then, its place is
/// not.
[[nodiscard]] float eigeneHöhe(const Messpunkte& punkte);

} // namespace tarvel
