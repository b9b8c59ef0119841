#include "print/systemdrucker.h"

#include "print/cups_druckersystem.h"

namespace tarvel {

std::unique_ptr<Druckersystem> systemdrucker(Dialoge& /*dialoge*/, const Texte& /*texte*/) {
    return std::make_unique<CupsDruckersystem>();
}

} // namespace tarvel
