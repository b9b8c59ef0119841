#pragma once

#include <iterator>

#ifndef Q_MOC_RUN // moc takes no umlauts in the names of an enumeration

namespace tarvel {

/// A message, heading or name that is no text of the fixed table: what this program has beyond it.
/// Texte holds both. A row in the table is all that a new message needs.
enum class Meldung : int {
#define TARVEL_MELDUNG(id, de, en, fr) id,
#include "lang/meldungstabelle.inc"
#undef TARVEL_MELDUNG
};

inline constexpr Meldung alleMeldungen[] = {
#define TARVEL_MELDUNG(id, de, en, fr) Meldung::id,
#include "lang/meldungstabelle.inc"
#undef TARVEL_MELDUNG
};
inline constexpr int anzahlMeldungen = static_cast<int>(std::size(alleMeldungen));

/// Where measuring point @p nummer lies on the wing and what it is used for. 1 to 8; any other
/// number is taken for the nearest of them.
[[nodiscard]] Meldung messpunktbeschreibung(int nummer);

} // namespace tarvel

#endif
