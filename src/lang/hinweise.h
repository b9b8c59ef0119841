#pragma once

#include "lang/texte.h"

#include <QString>

#include <variant>
#include <vector>

namespace tarvel {

/// Text of a hint for the hint line, by its number:
///  0 none                        8 save with the right button
///  1 load a picture              9 crosses show their wing
///  2 move the rectangle         10 body marks bee by bee
///  3 points are missing         11 body marks as totals
///  4 set the points             12 open an examination
///  5 take the wing over         13 the record is being printed
///  6 rectangle onto wing n      14 breeder and queen are missing
///  7 measure a wing again       15 the picture is being loaded
/// Any other number gives no text. @p flügel is the wing of hint 6, shown with three digits.
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

    bool operator==(const Hinweis&) const = default;
};

[[nodiscard]] QString hinweistext(const Texte& texte, const Hinweis& hinweis);

} // namespace tarvel
