#pragma once

#include "evaluation/merkmale.h"
#include "lang/texte.h"
#include "results/kolonieangaben.h"

#include <QString>

namespace tarvel {

/// What a step that can be undone did.
enum class Schrittart {
    Punkt,         ///< a point was set or moved
    PunkteLöschen, ///< the points of the current wing were discarded
    Übernehmen,
    FlügelLöschen,
    AlleLöschen,
    Wiederholen,
    WiederholungAufgeben,
    Bild, ///< another picture, which discarded points
    Zoom, ///< another zoom, which discarded points
    Messart,
    Auflösung,
    Vorschlag, ///< all points of the wing were proposed
    Feld,      ///< a text of the colony data
    Rasse,
    Tiere,
    Merkmale,
    Auslassen,
    Wiederaufnehmen,
    Flügelauflösung, ///< that of wings of the series
    Beurteilung      ///< the stored verdict gave way to the present one
};

struct Schritt {
    Schrittart art = Schrittart::Punkt;
    int nummer = 0;                          ///< of the point or wing; 0 for several wings
    QString Kolonieangaben::*feld = nullptr; ///< of Schrittart::Feld

    bool operator==(const Schritt&) const = default;
};

/// True when the step changed what is being measured.
[[nodiscard]] constexpr bool istMessschritt(Schrittart art) {
    return art < Schrittart::Feld && art != Schrittart::FlügelLöschen &&
           art != Schrittart::AlleLöschen;
}

/// What the menu calls the step: "Punkt 5".
[[nodiscard]] QString schrittname(const Schritt& schritt, const Texte& texte);

/// The first text in which two colony data differ; null for none.
[[nodiscard]] QString Kolonieangaben::*geändertesFeld(const Kolonieangaben& a,
                                                      const Kolonieangaben& b);

/// Place of the only sum in which two sets of marks differ, from 1; 0 when more than that differs.
[[nodiscard]] int getippteSumme(const Merkmale& alt, const Merkmale& neu);

} // namespace tarvel
