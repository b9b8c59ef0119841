#pragma once

#include <QString>

#include <optional>

class QIODevice;

namespace tarvel {

/// Resolutions that a picture of wings can have been scanned with, in dots per inch. Programs write
/// 72 or 96 into any picture.
inline constexpr int GeringsteBildauflösung = 300;
inline constexpr int HöchsteBildauflösung = 9600;

/// The resolution in dots per inch that a picture file says of itself, when it can be true: 300 to
/// 9600, and the same in both directions within 1 %. Reads the header only, of BMP, JPEG (JFIF and
/// EXIF), PNG and TIFF; contents decide, not the name. Empty for anything else, damaged files
/// included.
[[nodiscard]] std::optional<int> bildauflösung(QIODevice& datei);
[[nodiscard]] std::optional<int> bildauflösung(const QString& pfad);

} // namespace tarvel
