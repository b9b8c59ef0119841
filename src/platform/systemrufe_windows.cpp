#include "platform/systemrufe.h"

namespace tarvel {

std::span<const Ersatzruf> ersatzrufe(void (* /*merke*/)(int grund)) {
    return {};
}

bool warUnterbrochen(int /*grund*/) {
    return false;
}

} // namespace tarvel
