#include "measure/bildhoehe.h"

#include "measure/bilddatei.h"

namespace tarvel {

std::optional<float> bildhöhe(const QString& pfad) {
    const std::optional<QSize> größe = Bilddatei::liesGröße(pfad);
    return größe ? std::optional(static_cast<float>(größe->height())) : std::nullopt;
}

} // namespace tarvel
