#pragma once

#include <QString>

namespace tarvel {

class Texte;

/// Hints of the hint line, by number.
enum Hinweisnummer : int {
    HinweisKeiner = 0,
    HinweisBildLaden,         ///< load a picture
    HinweisRechteck,          ///< move the rectangle
    HinweisPunkteFehlen,      ///< points are missing
    HinweisPunkteSetzen,      ///< set the points
    HinweisÜbernehmen,        ///< take the wing over
    HinweisRechteckAufFlügel, ///< rectangle onto wing n
    HinweisWiederholen,       ///< measure a wing again
    HinweisErneutSpeichern,   ///< save with the right button
    HinweisKreuzZeigen,       ///< crosses show their wing
    HinweisMerkmaleJeBiene,   ///< body marks bee by bee
    HinweisMerkmaleSummen,    ///< body marks as totals
    HinweisÖffnen,            ///< open an examination
    HinweisDruckt,            ///< the record is being printed
    HinweisAngabenFehlen,     ///< breeder and queen are missing
    HinweisBildWirdGeladen,   ///< the picture is being loaded
};

/// Text of a hint. Any other number gives no text. @p flügel is the wing of
/// HinweisRechteckAufFlügel.
[[nodiscard]] QString hinweistext(const Texte& texte, int nummer, int flügel = 0);

} // namespace tarvel
