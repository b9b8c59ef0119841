#pragma once

#include "lang/texte.h"
#include "measure/messung.h"
#include "platform/dialoge.h"

namespace tarvel {

/// What is asked before points would be lost that are not taken over yet, or one wing would count
/// twice. Nothing is asked where nothing is at stake.
class Messfragen {
public:
    /// Everything outlives it.
    Messfragen(const Texte& texte, Dialoge& dialoge, const Messung& messung,
               const Messreihe& reihe);

    /// True when the current wing has no points but those of a proposal, or when the user gives
    /// them up. @p ja is title and button of what gives them up.
    [[nodiscard]] bool gibPunkteAuf(Meldung frage, Meldung ja) const;
    /// The same for another zoom.
    [[nodiscard]] bool gibPunkteAufFürZoom() const;
    /// True when leaving the current wing loses nothing, or when the user gives it up.
    [[nodiscard]] bool verlässtFlügel(Meldung frage, Meldung ja) const;
    /// Asks when the points lie on those of another wing.
    [[nodiscard]] bool darfÜbernehmen() const;
    /// Says that there is no such wing.
    void meldeNichtsZuWiederholen() const;

private:
    const Texte& texte_;
    Dialoge& dialoge_;
    const Messung& messung_;
    const Messreihe& reihe_;
};

} // namespace tarvel
