#pragma once

#include <QString>

#include <optional>

namespace tarvel {

/// Height in pixels of a picture that the file or folder @p quelle names; nullopt when it is not
/// there or cannot be read. Whoever wrote @p quelle may name any computer; another one is asked
/// only when @p quelle itself lies there.
[[nodiscard]] std::optional<float> bildhöhe(const QString& pfad, const QString& quelle);

} // namespace tarvel
