#include "lang/hinweise.h"

#include "lang/texte.h"

namespace tarvel {

QString hinweistext(const Texte& texte, int nummer, int flügel) {
    switch (nummer) {
    case 1:
        return texte(Text::HinweisBildLaden);
    case 2:
        return texte(Text::HinweisRechteckSchieben);
    case 3:
        return texte(Text::HinweisPunkteFehlen);
    case 4:
        return texte(Text::HinweisPunkteKlicken);
    case 5:
        return texte(Text::HinweisÜbernehmen);
    case 6:
        return texte(Text::HinweisRechteckAufFlügel) +
               QString::number(flügel).rightJustified(3, u'0');
    case 7:
        return texte(Text::HinweisMessungWiederholen);
    case 8:
        return texte(Text::HinweisSpeichern);
    case 9:
        return texte(Text::HinweisKreuzZeigen);
    case 10:
        return texte(Text::HinweisMerkmaleJeBiene);
    case 11:
        return texte(Text::HinweisMerkmaleSummen);
    case 12:
        return texte(Text::HinweisUntersuchungÖffnen);
    case 13:
        return texte(Text::ProtokollWirdGedruckt);
    case 14:
        return texte(Text::HinweisAngabenEintragen);
    case 15:
        return texte(Text::BildWirdGeladen);
    default:
        return {};
    }
}

} // namespace tarvel
