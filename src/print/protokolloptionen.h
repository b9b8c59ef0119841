#pragma once

namespace tarvel {

/// The date that the report carries; the values are the positions of `opt_Datum`. Today's date in
/// its long form is what a file without the key gets.
enum class Datumsform { HeuteLang = 0, HeuteKurz = 1, ÄnderungLang = 2, ÄnderungKurz = 3 };

/// What the report shows; the values are the positions of `opt_Protokoll`.
enum class Protokollart {
    Cubitalindex = 0,               ///< one page
    CubitalindexUndKorrelation = 1, ///< two pages
    CubitalindexUndDV = 2,          ///< one page
};

/// Pages that a report of this kind has.
[[nodiscard]] constexpr int seitenzahl(Protokollart art) {
    return art == Protokollart::CubitalindexUndKorrelation ? 2 : 1;
}

} // namespace tarvel
