#pragma once

#include "detect/fluegelerkennung.h"

#include <QImage>

#include <span>

namespace tarvel {

/// How a picture with its wings is drawn.
struct Fundzeichnungswahl {
    int längsteSeite = 5000; ///< pixels; larger pictures are reduced by a whole factor
    /// Points whose error to expect is larger, in pixels at 2400 dpi, are ringed.
    float höchsterFehler = Punktvorschlag::Zweifelhaft;
    int ersterPunkt = 1; ///< the points that are drawn
    int letzterPunkt = 8;
};

/// The picture in grey with the outline of every wing, numbered from 1 as they stand in @p funde,
/// and its points with theirs, to look through: a doubtful wing has a broken outline. Null when
/// there is no memory for it.
[[nodiscard]] QImage fundzeichnung(const Pixelquelle& quelle, std::span<const Flügelfund> funde,
                                   const Fundzeichnungswahl& wahl);

} // namespace tarvel
