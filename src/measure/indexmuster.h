#pragma once

#include <QStringView>

/// How indices are written everywhere: lists, table, charts, report and text output. A value that
/// would look different in two places would be taken for two values.
namespace tarvel::muster {

inline constexpr QStringView CI = u"0.00";
inline constexpr QStringView HI = u"0.000";
/// In twentieths of a millimetre, always with its sign; 0 is "+0.0".
inline constexpr QStringView DV = u"+0.0;-0.0";
/// Standard deviation of the discoidal shift, which has no sign.
inline constexpr QStringView StreuungDV = u"0.0";
/// Class position of either index.
inline constexpr QStringView Klasse = u"0.0";

} // namespace tarvel::muster
