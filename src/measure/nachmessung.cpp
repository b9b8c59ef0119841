#include "measure/nachmessung.h"

#include <algorithm>
#include <cmath>

namespace tarvel {

namespace {

bool selbstGemessen(const Flügelmessung& m) {
    return !m.bilddatei.isEmpty() && !m.ohneBildhöhe && !m.ungeprüft &&
           m.punkte.vollständig(m.messart) && !m.punkte.vorgeschlagen();
}

} // namespace

std::vector<int> nachmessbare(const Messreihe& reihe,
                              const std::function<std::uint32_t()>& zufall) {
    std::vector<int> nummern;
    for (const int nummer : reihe.gewertete()) {
        const Flügelmessung* m = reihe.messung(nummer);
        if (m != nullptr && selbstGemessen(*m)) {
            nummern.push_back(nummer);
        }
    }
    for (std::size_t rest = nummern.size(); rest > 1; --rest) {
        std::swap(nummern[rest - 1], nummern[zufall() % rest]);
    }
    return nummern;
}

std::optional<double> einzelmessfehler(const std::vector<Nachmessung>& messungen,
                                       std::optional<float> Indizes::*index,
                                       Nachmessvergleich vergleich) {
    double summe = 0;
    int paare = 0;
    for (const Nachmessung& m : messungen) {
        const std::optional<Indizes> andere =
            vergleich == Nachmessvergleich::ErsteMitZweiter ? m.zweite : m.vorschlag;
        if (m.erste.*index && andere && (*andere).*index) {
            const double d = double{*(m.erste.*index)} - double{*((*andere).*index)};
            summe += d * d;
            ++paare;
        }
    }
    return paare < WenigsteNachmessFlügel ? std::nullopt
                                          : std::optional(std::sqrt(summe / (2.0 * paare)));
}

} // namespace tarvel
