#include "print/systemdrucker.h"

#ifdef Q_OS_WIN
#include "print/windows_druckersystem.h"
#else
#include "print/cups_druckersystem.h"
#endif

namespace tarvel {

#ifdef Q_OS_WIN
std::unique_ptr<Druckersystem> systemdrucker(Dialoge& dialoge, const Texte& texte) {
    return std::make_unique<WindowsDruckersystem>(windowsDruckertabelle(), dialoge, texte);
}
#else
std::unique_ptr<Druckersystem> systemdrucker(Dialoge& /*dialoge*/, const Texte& /*texte*/) {
    return std::make_unique<CupsDruckersystem>();
}
#endif

} // namespace tarvel
