#pragma once

#include "batch/auswerten.h"

#include <QByteArray>

#include <vector>

namespace tarvel {

// All of it is UTF-8. In CSV and JSON values stand in full single precision with a point, whatever
// the language.

/// Series lines, figures, classes, shares against the standard and verdict, in the words of the
/// program.
[[nodiscard]] QByteArray alsText(const std::vector<Auswertungsprobe>& proben, const Texte& texte);

/// alsIndextabelle() of all wings under one header. With several files a wing is named "FILE:WING".
[[nodiscard]] QByteArray alsCsv(const std::vector<Auswertungsprobe>& proben);

/// {"samples": [{"file": …, "wings": […], "checks": […], "conforms": …, "reasons": […]}]}. What
/// there is no value for is null.
[[nodiscard]] QByteArray alsJson(const std::vector<Auswertungsprobe>& proben, const Texte& texte);

} // namespace tarvel
