#include "results/untersuchung.h"

#include <algorithm>

namespace tarvel {

QString untersucher(const Untersuchung& untersuchung, const QString& hier) {
    const Untersuchungszusatz& zusatz = untersuchung.zusatz();
    if (!zusatz.Untersucher.isEmpty() || !zusatz.Herkunft.isEmpty() ||
        untersuchung.datum().isValid()) {
        return zusatz.Untersucher;
    }
    const auto& messungen = untersuchung.reihe().messungen();
    const bool eingelesen = std::any_of(messungen.begin(), messungen.end(), [](const auto& eine) {
        return eine.second.punkte.Herkunft[1] == Punktherkunft::Eingelesen;
    });
    return eingelesen ? QString() : hier;
}

} // namespace tarvel
