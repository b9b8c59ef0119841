#pragma once

#include <QString>

namespace tarvel {

class Texte;

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

} // namespace tarvel
