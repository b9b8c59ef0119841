#include "print/verband.h"

#include "lang/meldungen.h"

namespace tarvel {

using namespace Qt::StringLiterals;

Verband verband(int position) {
    return position >= 0 && position < Verbandzahl ? static_cast<Verband>(position)
                                                   : Verband::Flügel;
}

QStringList verbandsnamen(const Texte& texte) {
    return {texte(Meldung::EmblemBiene), texte(Meldung::EmblemWabe), texte(Meldung::EmblemFlügel),
            texte(Text::AndereOrganisation)};
}

QString emblem(Verband verband) {
    switch (verband) {
    case Verband::Biene:
        return u":/tarvel/emblems/biene.svg"_s;
    case Verband::Wabe:
        return u":/tarvel/emblems/wabe.svg"_s;
    case Verband::Flügel:
        return u":/tarvel/emblems/fluegel.svg"_s;
    case Verband::Andere:
        return {};
    }
    return {};
}

} // namespace tarvel
