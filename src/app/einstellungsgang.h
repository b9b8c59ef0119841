#pragma once

#include "app/befehlsleiste.h"
#include "app/fensterflaeche.h"
#include "app/hinweisgeber.h"
#include "app/umgebung.h"
#include "platform/benutzerspeicher.h"
#include "results/arbeitsplatz.h"

namespace tarvel {

/// How settings come into the window: at the start, from the options dialog, and by the switches of
/// the menus, which are kept.
class Einstellungsgang {
public:
    /// Everything outlives it.
    Einstellungsgang(const Umgebung& umgebung, Benutzerspeicher& speicher,
                     Arbeitsplatz& arbeitsplatz, Fensterfläche& fläche, Hinweisgeber& hinweise,
                     Befehlsleiste& befehle);

    /// Sets workplace and views up by the settings.
    void richteEin();
    /// Lets the user change them.
    void optionen(QWidget* fenster);
    /// Changes the language of program and results file; @p index as in Texte::SpracheEinstellen.
    void wähleSprache(int index);
    void schalteLupe();
    void schalteWerkzeugtexte();

private:
    void übernimmVorschlagswahl();

    Umgebung umgebung_;
    Benutzerspeicher& speicher_;
    Arbeitsplatz& arbeitsplatz_;
    Fensterfläche& fläche_;
    Hinweisgeber& hinweise_;
    Befehlsleiste& befehle_;
};

} // namespace tarvel
