#pragma once

#include "lang/texte.h"

#include <QString>

#include <variant>
#include <vector>

namespace tarvel {

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

/// What the hint line says: which hint it is and what stands in it. The words are made when it is
/// shown, so that they follow the language.
struct Hinweis {
    /// Words that follow the language too, or that are the same in all of them.
    using Argument = std::variant<QString, Text, Meldung>;

    /// A hint by its number, 0 for none.
    Hinweis(int nummer = 0, int flügelnummer = 0)
        : was(nummer)
        , flügel(flügelnummer) {}
    Hinweis(Text text)
        : was(text) {}
    /// @p werte the arguments %1, %2, … of the message.
    Hinweis(Meldung meldung, std::vector<Argument> werte = {})
        : was(meldung)
        , argumente(std::move(werte)) {}
    /// Words that stay as they are.
    Hinweis(QString wortlaut)
        : was(std::move(wortlaut)) {}

    std::variant<int, Text, Meldung, QString> was;
    std::vector<Argument> argumente;
    int flügel = 0;
    std::vector<Hinweis> weitere = {}; ///< sentences that follow

    bool operator==(const Hinweis&) const = default;
};

[[nodiscard]] QString hinweistext(const Texte& texte, const Hinweis& hinweis);

} // namespace tarvel
