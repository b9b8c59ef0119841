#pragma once

#include "app/umgebung.h"
#include "evaluation/beurteilung.h"
#include "evaluation/merkmale.h"
#include "evaluation/rassestandard.h"
#include "results/untersuchung.h"

#include <functional>
#include <vector>

namespace tarvel {

class Diagrammansicht;
class Merkmalansicht;
class Urteilsanzeige;

/// Judges the open examination by the standard of its race, and keeps everything that shows the
/// outcome up to date: both charts, the body marks and the verdict.
class Auswertung {
public:
    /// The views are made here and belong to the window they are put into.
    Auswertung(const Umgebung& umgebung, Untersuchung& untersuchung);

    /// Called with the wings that were chosen in a chart.
    std::function<void(const std::vector<int>&)> flügelGewählt;
    /// Called after the user changed the body marks.
    std::function<void()> merkmaleGeändert;

    [[nodiscard]] Diagrammansicht& kurven() const { return *kurven_; }
    [[nodiscard]] Diagrammansicht& korrel() const { return *korrel_; }
    [[nodiscard]] Merkmalansicht& merkmal() const { return *merkmal_; }
    [[nodiscard]] Urteilsanzeige& urteil() { return *urteil_; }
    [[nodiscard]] const Beurteilung& beurteilung() const { return beurteilung_; }
    [[nodiscard]] const Rassestandard& standard() const { return standard_; }

    /// Loads the standard of the examination's race and the settings of the charts, then brings
    /// everything up to date. To be called when the race changes and when settings were edited.
    void ladeStandard();
    /// To be called after every change of the examination and of the language.
    void aktualisiere();
    /// Shows the body marks of the examination, after they were changed elsewhere.
    void zeigeMerkmale();
    /// Points out wings in both charts.
    void hebeHervor(const std::vector<int>& flügel);

private:
    Umgebung umgebung_;
    Untersuchung& untersuchung_;
    Rassestandard standard_;
    Beurteilung beurteilung_;
    Diagrammansicht* kurven_;
    Diagrammansicht* korrel_;
    Merkmalansicht* merkmal_;
    Urteilsanzeige* urteil_;
};

} // namespace tarvel
