#pragma once

#include "lang/hinweise.h"
#include "lang/texte.h"
#include "measure/messreihe.h"

#include <optional>
#include <vector>

namespace tarvel {

/// @name Whether the resolution can be right
/// @{

/// Lengths of a worker's radial cell, the base line 1-2, that no doubt is cast on, in millimetres.
/// Measured ones are 3.1 to 3.4 long.
inline constexpr double KürzesteRadialzelle = 2.4;
inline constexpr double LängsteRadialzelle = 4.8;

/// Length of the base line 1-2 in millimetres at the wing's resolution. Empty when one of its
/// points is not set.
[[nodiscard]] std::optional<double> längeRadialzelle(const Messpunkte& punkte,
                                                     const Aufnahme& aufnahme);

/// The usual resolution, 150 to 9600 dots per inch, at which the base line would be as long as on
/// real wings. Empty when the length is not in doubt at the resolution the wing has, or no usual
/// resolution makes it possible.
[[nodiscard]] std::optional<int> passendeAuflösung(const Messpunkte& punkte,
                                                   const Aufnahme& aufnahme);
/// @}

/// Why a wing can hardly be measured right.
struct Flügelzweifel {
    enum class Art {
        Vertauscht,      ///< two points, which swapped make it a wing
        Lage,            ///< points that lie on a wrong side of others
        Verhältnis,      ///< points too near to or too far from others
        CIAußerhalb,     ///< no class for the cubital index
        HIAußerhalb,     ///< no class for the hantel index
        AbseitsDerProbe, ///< far from the other wings of the sample
    };
    Art art;
    std::vector<int> punkte; ///< numbers in ascending order; empty for the last three

    bool operator==(const Flügelzweifel&) const = default;
};

/// Doubts about the wing itself: its points as a shape, compared with real wings, whichever way it
/// lies, left or right, near or far; and its indices. Empty for a wing that can be one. Only points
/// that are set are looked at.
[[nodiscard]] std::vector<Flügelzweifel> flügelzweifel(const Flügelmessung& messung);

/// Wings far from the rest of the sample, in ascending order. Wings left out are not part of it.
[[nodiscard]] std::vector<int> ausreißer(const Messreihe& reihe);

/// Every wing in doubt with its reasons; wings left out are looked at too, but not compared.
[[nodiscard]] std::map<int, std::vector<Flügelzweifel>> flügelzweifel(const Messreihe& reihe);

/// The same for a series that changes: only wings that did are examined anew.
class Flügelprüfer {
public:
    [[nodiscard]] std::map<int, std::vector<Flügelzweifel>> prüfe(const Messreihe& reihe);

private:
    struct Geprüft {
        Flügelmessung messung;
        std::vector<Flügelzweifel> zweifel;
    };
    std::map<int, Geprüft> geprüfte_;
};

/// "Points 3 and 4 seem to be swapped."
[[nodiscard]] Hinweis hinweis(const Flügelzweifel& zweifel);
[[nodiscard]] QString text(const Flügelzweifel& zweifel, const Texte& texte);

} // namespace tarvel
