#pragma once

#include "app/umgebung.h"
#include "lang/hinweise.h"
#include "results/schritte.h"

namespace tarvel {

class Arbeitsplatz;
struct Änderung;
class Hinweiszeile;

/// What the hint line says: hints by number, sentences of their own, and the warnings that are said
/// only once.
class Hinweisgeber {
public:
    /// The hint line is made here and belongs to the window it is put into.
    Hinweisgeber(const Umgebung& umgebung, const Arbeitsplatz& arbeitsplatz);

    [[nodiscard]] Hinweiszeile& zeile() const { return *lab_H_; }

    /// Shows a hint, 0 to 15.
    void ZeigeHinweis(int nummer);
    void zeige(const Hinweis& hinweis);
    /// The hint that is shown.
    [[nodiscard]] const Hinweis& gezeigter() const;
    void TexteAnwenden();
    /// Says which step was undone or done again.
    void zeigeSchritt(const Schritt& schritt, bool wiederhergestellt);

    /// Says what a person is to be told about a change: hints, points that are missing, and why a
    /// wing was not taken over.
    void sage(const Änderung& änderung);
    /// Says whose the resolution is that was just chosen, and whether it is low.
    void sageAuflösung();
    /// Says once that the resolution is low; @p neu after another was chosen, which counts anew.
    void warneVorGeringerAuflösung(bool neu = false);
    /// Says once each that settings or journal could not be written.
    void warneVorSchreibfehlern();
    /// Before this nothing is said of settings: at the start another hint would take its place.
    void beginne() { begonnen_ = true; }

private:
    /// Says why the wing that was taken over can hardly be right, and what can be done about it.
    void sageZweifel(int flügel);

    Umgebung umgebung_;
    const Arbeitsplatz& arbeitsplatz_;
    Hinweiszeile* lab_H_;
    std::optional<Schritt> schritt_; ///< of the hint about undo that was shown last
    bool begonnen_ = false;
    bool auflösungGemeldet_ = false;
    bool schreibfehlerGemeldet_ = false;
    bool sitzungsfehlerGemeldet_ = false;
};

} // namespace tarvel
