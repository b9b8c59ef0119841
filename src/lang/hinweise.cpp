#include "lang/hinweise.h"

#include "lang/texte.h"
#include "platform/zahlen.h"

namespace tarvel {

QString hinweistext(const Texte& texte, int nummer, int flügel) {
    switch (nummer) {
    case HinweisBildLaden:
        return texte(Text::HinweisBildLaden);
    case HinweisRechteck:
        return texte(Text::HinweisRechteckSchieben);
    case HinweisPunkteFehlen:
        return texte(Text::HinweisPunkteFehlen);
    case HinweisPunkteSetzen:
        return texte(Text::HinweisPunkteKlicken);
    case HinweisÜbernehmen:
        return texte(Text::HinweisÜbernehmen);
    case HinweisRechteckAufFlügel:
        return texte(Text::HinweisRechteckAufFlügel) + dreistellig(flügel);
    case HinweisWiederholen:
        return texte(Text::HinweisMessungWiederholen);
    case HinweisErneutSpeichern:
        return texte(Text::HinweisSpeichern);
    case HinweisKreuzZeigen:
        return texte(Text::HinweisKreuzZeigen);
    case HinweisMerkmaleJeBiene:
        return texte(Text::HinweisMerkmaleJeBiene);
    case HinweisMerkmaleSummen:
        return texte(Text::HinweisMerkmaleSummen);
    case HinweisÖffnen:
        return texte(Text::HinweisUntersuchungÖffnen);
    case HinweisDruckt:
        return texte(Text::ProtokollWirdGedruckt);
    case HinweisAngabenFehlen:
        return texte(Text::HinweisAngabenEintragen);
    case HinweisBildWirdGeladen:
        return texte(Text::BildWirdGeladen);
    default:
        return {};
    }
}

} // namespace tarvel
