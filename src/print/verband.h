#pragma once

#include "lang/texte.h"

#include <QStringList>

namespace tarvel {

/// Emblems that the letterhead of the report can carry. The position is what the settings store;
/// the last one stands for a picture of the user's own.
enum class Verband { Biene, Wabe, Flügel, Andere };

inline constexpr int Verbandzahl = 4;

/// The emblem at a stored position; a position that there is not gives the default, the wing.
[[nodiscard]] Verband verband(int position);

/// Names of the emblems in the language of @p texte, in the order of the enumeration.
[[nodiscard]] QStringList verbandsnamen(const Texte& texte);

/// The drawing of an emblem inside the program's resources; empty for the user's own picture.
[[nodiscard]] QString emblem(Verband verband);

} // namespace tarvel
