#pragma once

#include "app/umgebung.h"
#include "lang/uebersetz.h"

namespace tarvel {

/// Loads a language pack, writes a template of one, or goes on without, as the user wishes.
class Sprachpaketgang {
public:
    /// It outlives this.
    explicit Sprachpaketgang(const Umgebung& umgebung)
        : umgebung_(umgebung) {}

    void führeAus(Paketwunsch wunsch);
    /// Brings back the pack of the last run. Says so when it cannot be read.
    static void bringeZurück(const Einstellungen& einstellungen, Texte& texte, Dialoge& dialoge);

private:
    void lade();
    void schreibeVorlage();

    Umgebung umgebung_;
};

} // namespace tarvel
