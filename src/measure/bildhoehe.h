#pragma once

#include <QString>

#include <optional>

namespace tarvel {

/// Height of a picture in pixels; nullopt when it is not there or cannot be read.
[[nodiscard]] std::optional<float> bildhöhe(const QString& pfad);

} // namespace tarvel
