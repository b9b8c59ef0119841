#include "evaluation/rassen.h"

namespace tarvel {

using namespace Qt::StringLiterals;

QStringList rassenliste(const Einstellungen& einstellungen) {
    return {u"Carnica"_s, u"Mellifera"_s, u"Ligustica"_s,
            einstellungen.text(Einstellung::VierteRasse)};
}

} // namespace tarvel
