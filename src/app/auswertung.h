#pragma once

#include "app/umgebung.h"
#include "evaluation/diagrammdatei.h"
#include "measure/reihenmodelle.h"
#include "results/arbeitsplatz.h"

#include <functional>
#include <utility>
#include <vector>

namespace tarvel {

class Diagrammansicht;
class Kriterienansicht;
class Merkmalansicht;
class Urteilsanzeige;

/// The views of the judgement: both charts, the body marks, the verdict and its criteria.
class Auswertung {
public:
    /// The views are made here and belong to the window they are put into.
    Auswertung(const Umgebung& umgebung, Arbeitsplatz& arbeitsplatz);

    /// Called with the wings that were chosen in a chart.
    void beiWahl(std::function<void(const std::vector<int>&)> wahl) { beiWahl_ = std::move(wahl); }
    /// Called with places in the list of body marks, those of the bees behind a reason.
    void beiMerkmalwahl(std::function<void(const std::vector<int>&)> wahl) {
        beiMerkmalwahl_ = std::move(wahl);
    }

    [[nodiscard]] Diagrammansicht& kurven() const { return *kurven_; }
    [[nodiscard]] Diagrammansicht& korrel() const { return *korrel_; }
    /// Made when it is asked for the first time: its many fields would hold up the start.
    [[nodiscard]] Merkmalansicht& merkmal();
    /// The same: it is shown only where the user wants to see it.
    [[nodiscard]] Kriterienansicht& kriterien();
    [[nodiscard]] Urteilsanzeige& urteil() { return *urteil_; }

    /// To be called with every notice of the workplace.
    void folge(const Änderung& änderung);
    /// Draws charts and verdict; to be called after a change of the language, too.
    void aktualisiere();
    /// Points out wings in both charts.
    void hebeHervor(const std::vector<int>& flügel);
    /// Marks wings in doubt in both charts.
    void zeigeZweifel(const Zweifelsfälle& zweifel);

private:
    [[nodiscard]] Bildunterschrift unterschrift() const;
    void benenneBilder();
    void zeigeKriterien();
    void zeigeVerursacher(const Prüfwert& mangel);

    std::function<void(const std::vector<int>&)> beiWahl_;
    std::function<void(const std::vector<int>&)> beiMerkmalwahl_;
    Umgebung umgebung_;
    Arbeitsplatz& arbeitsplatz_;
    Diagrammansicht* kurven_;
    Diagrammansicht* korrel_;
    Merkmalansicht* merkmal_ = nullptr;
    Kriterienansicht* kriterien_ = nullptr;
    Urteilsanzeige* urteil_;
};

} // namespace tarvel
