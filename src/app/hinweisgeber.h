#pragma once

#include "app/umgebung.h"
#include "lang/hinweise.h"
#include "results/schritte.h"

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace tarvel {

class Arbeitsplatz;
struct Änderung;
class Hinweiszeile;

/// What the hint line says: hints by number, sentences of their own, and the warnings that are said
/// only once. A hint that tells of a state goes with it.
class Hinweisgeber {
public:
    /// The hint line is made here and belongs to the window it is put into.
    Hinweisgeber(const Umgebung& umgebung, const Arbeitsplatz& arbeitsplatz);

    [[nodiscard]] Hinweiszeile& zeile() const { return *lab_H_; }

    /// Shows a hint, 0 to 15.
    void ZeigeHinweis(int nummer);
    void zeige(const Hinweis& hinweis);
    /// Shows several, one after the other; nothing without any.
    void zeigeSätze(const std::vector<Hinweis>& sätze);
    /// Called to say what fits the view that is seen, where a hint is no longer so.
    void beiErsatz(std::function<void()> ersatz) { ersatz_ = std::move(ersatz); }
    /// The hint took the place of one that was no longer so.
    [[nodiscard]] bool istErsatz() const { return istErsatz_; }
    /// The hint that is shown.
    [[nodiscard]] const Hinweis& gezeigter() const;
    void TexteAnwenden();
    /// Says which step was undone or done again.
    void zeigeSchritt(const Schritt& schritt, bool wiederhergestellt);

    /// Says what a person is to be told about a change: hints, points that are missing, and why a
    /// wing was not taken over. What the line told of is taken back if the change made it untrue.
    void sage(const Änderung& änderung);
    /// Says whose the resolution is that was just chosen, and whether it is low.
    void sageAuflösung();
    /// Says once that the resolution is low.
    void warneVorGeringerAuflösung();
    /// That sentence for somebody who has more to say, nullopt without a reason; @p neu after
    /// another resolution was chosen, which counts anew.
    [[nodiscard]] std::optional<Hinweis> geringeAuflösung(bool neu);
    /// What is to be known of the resolution beside its number.
    [[nodiscard]] std::optional<Hinweis> auflösungshinweis() const;
    /// Says once each that settings or journal could not be written.
    void warneVorSchreibfehlern();
    /// Before this nothing is said of settings: at the start another hint would take its place.
    void beginne() { begonnen_ = true; }

private:
    /// Says why the wing that was taken over can hardly be right, and what can be done about it.
    void sageZweifel(int flügel);
    /// Whether what the hint tells of is still so. Hints that tell of an event always hold.
    [[nodiscard]] bool gilt(const Hinweis& hinweis) const;
    [[nodiscard]] bool gilt(int hinweisnummer, int flügel) const;
    [[nodiscard]] bool gilt(Meldung meldung, const Hinweis& hinweis) const;

    Umgebung umgebung_;
    const Arbeitsplatz& arbeitsplatz_;
    Hinweiszeile* lab_H_;
    std::function<void()> ersatz_ = [] {};
    bool istErsatz_ = false;
    std::optional<Schritt> schritt_; ///< of the hint about undo that was shown last
    bool begonnen_ = false;
    bool auflösungGemeldet_ = false;
    bool schreibfehlerGemeldet_ = false;
    bool sitzungsfehlerGemeldet_ = false;
};

} // namespace tarvel
