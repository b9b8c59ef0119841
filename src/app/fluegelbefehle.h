#pragma once

#include "app/umgebung.h"
#include "measure/reihenmodelle.h"

#include <vector>

namespace tarvel {

class Ansichtswahl;
class Arbeitsplatz;
class Auswertung;
class Befehlsleiste;
class Fensterfläche;
class Hinweisgeber;

/// What is done with wings by menu, key and context menu: the ones chosen in the shown view are
/// left out of the sample, taken back, deleted or repeated; steps are undone. And what all views
/// show of wings: the lists, the choice, the doubts.
class Flügelbefehle {
public:
    /// Gives the views their context menus. Everything handed over outlives it.
    Flügelbefehle(const Umgebung& umgebung, Arbeitsplatz& arbeitsplatz, Reihenmodelle& modelle,
                  Fensterfläche& fläche, Auswertung& auswertung, Hinweisgeber& hinweise,
                  Ansichtswahl& ansichten, const Befehlsleiste& befehle);

    /// Leaves the chosen wings out, or takes them back when all of them are left out.
    void lassAusOderNimmAuf();
    void lösche();
    void löscheLetzte();
    /// After a question.
    void löscheAlle();
    /// Measures the chosen one again, or else the last.
    void wiederhole();
    /// Measures some of the sample again, apart from the series.
    void missNach();
    /// Begins a new one.
    void beginneNeuen();
    /// One step back, or forward again. Points that come back are shown.
    void geheZurück(bool wiederherstellen);

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
    Ansichtswahl& ansichten_;
};

} // namespace tarvel
