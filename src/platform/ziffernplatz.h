#pragma once

class QKeyEvent;

namespace tarvel {

/// Digit 1 to 8 that stands on the key of the main keyboard whatever the layout; 0 for other keys,
/// and where the system does not tell which key it was.
[[nodiscard]] int ziffernplatz(const QKeyEvent& ereignis);

} // namespace tarvel
