#include "print/systemdrucker.h"

#include "print/windows_druckersystem.h"

namespace tarvel {

std::unique_ptr<Druckersystem> systemdrucker(Dialoge& dialoge, const Texte& texte) {
    return std::make_unique<WindowsDruckersystem>(windowsDruckertabelle(), dialoge, texte);
}

} // namespace tarvel
