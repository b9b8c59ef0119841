#pragma once

#include <QString>
#include <QStringList>

namespace tarvel {

/// Name patterns of the picture files that can be measured.
[[nodiscard]] QStringList bildmuster();

/// The picture that comes @p schritt places after @p pfad among the pictures of its folder, in the
/// order of their names with numbers by value. Empty at the ends of the folder.
[[nodiscard]] QString nachbarbild(const QString& pfad, int schritt);

} // namespace tarvel
