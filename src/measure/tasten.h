#pragma once

#include "measure/messung.h"

#include <QKeyEvent>
#include <QPoint>

namespace tarvel {

/// The key code that measuring knows a key by; 0 for a key that means nothing to it. The digit
/// keys count by their place, so they work on keyboards where digits need the shift key.
[[nodiscard]] int tastencode(const QKeyEvent& ereignis);

/// One step in the direction of an arrow key code; null for other keys.
[[nodiscard]] QPoint pfeilrichtung(int tastencode);

namespace umschaltung {

/// The shift keys of an event of the toolkit.
[[nodiscard]] int von(Qt::KeyboardModifiers tasten);

} // namespace umschaltung

} // namespace tarvel
