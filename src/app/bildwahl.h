#pragma once

#include "app/umgebung.h"

#include <QString>

namespace tarvel {

/// Asks for a wing picture, in the folder of the present one @p bisher or the user's working
/// folder. Empty when the user gave up.
[[nodiscard]] QString wähleBild(const Umgebung& umgebung, const QString& bisher);
/// Opens a picture in the user's graphics program; a message says when there is none.
void öffneImGrafikprogramm(const Umgebung& umgebung, const QString& bild);

} // namespace tarvel
