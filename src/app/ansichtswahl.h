#pragma once

#include "app/auswertung.h"
#include "app/fensterflaeche.h"
#include "app/hinweisgeber.h"
#include "app/protokollausgabe.h"
#include "measure/verteiler.h"

#include <functional>

namespace tarvel {

/// Which view is seen: goes to those of the command words, with the hint that fits, and to the
/// place where wings are measured.
class Ansichtswahl {
public:
    /// Takes the command words of the views. Everything outlives it.
    Ansichtswahl(Verteiler& verteiler, const Arbeitsplatz& arbeitsplatz, Fensterfläche& fläche,
                 Auswertung& auswertung, Protokollausgabe& protokoll, Hinweisgeber& hinweise);

    void zeigeAlle();
    void zeigeMerkmale();
    /// Overview of the scan, or measuring view.
    void zeigeMessplatz(bool übersicht);
    /// The place of measuring as it is, with a hint, 0 to 15.
    void messmodus(int hinweisnummer);
    /// Shows the place of measuring for what @p tun does there. When that is false, the former view
    /// comes back.
    bool zumMessplatz(const std::function<bool()>& tun);

    /// The hint that fits the view that is seen.
    void zeigeStandhinweis();

private:
    void zeige(QWidget& ansicht, int hinweisnummer);
    [[nodiscard]] int reihenhinweis() const;
    [[nodiscard]] int korrelhinweis() const;
    [[nodiscard]] int merkmalhinweis() const;

    const Arbeitsplatz& arbeitsplatz_;
    Fensterfläche& fläche_;
    Hinweisgeber& hinweise_;
};

} // namespace tarvel
