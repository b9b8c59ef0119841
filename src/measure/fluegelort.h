#pragma once

#include "measure/messreihe.h"

#include <QPointF>

#include <optional>
#include <span>

namespace tarvel {

/// Middle of the set points of a wing in pixels of its unzoomed picture; nullopt without points.
[[nodiscard]] std::optional<QPointF> flügelmitte(const Flügelmessung& flügel);

/// Number of the wing of @p reihe that was measured on the picture @p bilddatei, told by @p bild,
/// around @p ort, unzoomed pixels. Of several the one whose middle is nearest; nullopt where there
/// is none.
[[nodiscard]] std::optional<int> flügelAn(const Messreihe& reihe, const QString& bilddatei,
                                          QPointF ort, const Bildkennung& bild = {});

/// Number of the wing of @p reihe, other than @p eigene, that counts and that the points of @p
/// flügel lie on: the same picture, and the points that both have less than half a wing apart.
/// Different wings never come so close. nullopt where there is none.
[[nodiscard]] std::optional<int> liegtAufFlügel(const Messreihe& reihe, const Flügelmessung& flügel,
                                                int eigene);

/// Number of the wing of @p reihe that the places of points 1 to 8 (index 0 is point 1; pixels of
/// the unzoomed picture) belong to, whether it counts or not; 0 where there is none.
[[nodiscard]] int gemessenerFlügel(const Messreihe& reihe, const QString& bilddatei,
                                   const Bildkennung& bild, std::span<const QPointF, 8> orte);

} // namespace tarvel
