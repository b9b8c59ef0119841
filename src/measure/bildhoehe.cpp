#include "measure/bildhoehe.h"

#include <QImageReader>

namespace tarvel {

std::optional<float> bildhöhe(const QString& pfad) {
    const QSize größe = pfad.isEmpty() ? QSize() : QImageReader(pfad).size();
    return größe.isValid() ? std::optional(static_cast<float>(größe.height())) : std::nullopt;
}

} // namespace tarvel
