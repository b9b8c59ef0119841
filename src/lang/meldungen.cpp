#include "lang/meldungen.h"

#include <algorithm>

namespace tarvel {

static_assert(static_cast<int>(Meldung::Messpunkt8) == static_cast<int>(Meldung::Messpunkt1) + 7,
              "the descriptions of the measuring points stand in their order");

Meldung messpunktbeschreibung(int nummer) {
    return static_cast<Meldung>(static_cast<int>(Meldung::Messpunkt1) + std::clamp(nummer, 1, 8) -
                                1);
}

} // namespace tarvel
