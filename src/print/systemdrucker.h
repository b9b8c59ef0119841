#pragma once

#include "lang/texte.h"
#include "platform/dialoge.h"
#include "print/druckersystem.h"

#include <memory>

namespace tarvel {

/// The printers of this computer. @p dialoge and @p texte outlive them.
[[nodiscard]] std::unique_ptr<Druckersystem> systemdrucker(Dialoge& dialoge, const Texte& texte);

} // namespace tarvel
