#include "measure/bildhoehe.h"

#include "measure/bilddatei.h"
#include "measure/bildort.h"

namespace tarvel {

std::optional<float> bildhöhe(const QString& pfad, const QString& quelle) {
    const QString rechner = netzrechner(pfad);
    if (!rechner.isEmpty() && rechner != netzrechner(quelle)) {
        return std::nullopt;
    }
    const std::optional<QSize> größe = Bilddatei::liesGröße(pfad);
    return größe ? std::optional(static_cast<float>(größe->height())) : std::nullopt;
}

} // namespace tarvel
