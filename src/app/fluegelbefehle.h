#pragma once

#include "app/umgebung.h"
#include "measure/reihenmodelle.h"

#include <vector>

namespace tarvel {

class Arbeitsplatz;
class Auswertung;
class Befehlsleiste;
class Fensterfläche;
class Hinweisgeber;

/// What is done with the wings that are chosen in the shown view, by menu, key and context menu:
/// leave them out of the sample, take them back, delete them. And what all views show of wings: the
/// lists, the choice, the doubts.
class Flügelbefehle {
public:
    /// Gives the views their context menus. Everything handed over outlives it.
    Flügelbefehle(const Umgebung& umgebung, Arbeitsplatz& arbeitsplatz, Reihenmodelle& modelle,
                  Fensterfläche& fläche, Auswertung& auswertung, Hinweisgeber& hinweise,
                  const Befehlsleiste& befehle);

    /// Leaves the chosen wings out, or takes them back when all of them are left out.
    void lassAusOderNimmAuf();
    void lösche();

    /// Brings lists and doubts up to date after a change of the series or the language. What was
    /// chosen stays chosen.
    void aktualisiere();

private:
    /// Says what is to be done first where none is chosen.
    [[nodiscard]] std::vector<int> gewählte() const;

    const Umgebung& umgebung_;
    Arbeitsplatz& arbeitsplatz_;
    Reihenmodelle& modelle_;
    Fensterfläche& fläche_;
    Auswertung& auswertung_;
    Hinweisgeber& hinweise_;
};

} // namespace tarvel
