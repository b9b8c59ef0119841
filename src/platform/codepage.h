#pragma once

#include <QByteArray>
#include <QString>

namespace tarvel {

/// @p text in Windows code page 1252, the alphabet of the settings and measurement files. A
/// character that the page does not have becomes '?'. The five bytes without a character (0x81,
/// 0x8D, 0x8F, 0x90, 0x9D) stand for the control characters of the same number, as on Windows.
[[nodiscard]] QByteArray nachCodepage1252(const QString& text);

/// The text of @p bytes in Windows code page 1252. Never fails: every byte has a character, so
/// nachCodepage1252 gives the same bytes back.
[[nodiscard]] QString ausCodepage1252(QByteArrayView bytes);

} // namespace tarvel
