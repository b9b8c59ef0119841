#pragma once

#include "app/fensterflaeche.h"
#include "app/hinweisgeber.h"
#include "results/arbeitsplatz.h"

#include <optional>
#include <set>

namespace tarvel {

class Flügelfunde;
struct Flügelfund;

/// The resolution that the wings found look like, where that says something: drones have larger
/// ones than those that were learnt, which looks like a finer scan.
[[nodiscard]] std::optional<int> passendeAuflösung(const Arbeitsplatz& arbeitsplatz,
                                                   const Flügelfunde& funde);

/// What is said of wings that the program found and of the points that it proposes: that there is
/// no model, that the wings look like another resolution, and, once a sample each, why proposals
/// are less to be trusted than usual.
class Fundgang {
public:
    /// Everything outlives it.
    Fundgang(const Arbeitsplatz& arbeitsplatz, const Fensterfläche& fläche, Hinweisgeber& hinweise);

    /// After the search ended, was stopped, or begins anew.
    void sage();
    void folge(const Änderung& änderung);

private:
    /// Of proposals for the sample, and for the wing @p fund; each is given once a sample.
    [[nodiscard]] std::vector<Hinweis> vorbehalte(const Flügelfund* fund);

    const Arbeitsplatz& arbeitsplatz_;
    const Fensterfläche& fläche_;
    Hinweisgeber& hinweise_;
    std::set<Meldung> gesagt_; ///< of the open sample
    bool modellGemeldet_ = false;
};

} // namespace tarvel
