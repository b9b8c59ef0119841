#pragma once

#include "measure/indizes.h"
#include "measure/messreihe.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace tarvel {

/// Wings of a sample that are measured again tell how exactly their person measures.
inline constexpr int NachmessFlügel = 5;
/// Fewer tell nothing.
inline constexpr int WenigsteNachmessFlügel = 2;

/// Numbers of the wings of the sample that a person measured point by point on a picture, in random
/// order. @p zufall gives any number. Wings with a proposed point are not among them: who measures
/// those again would be compared with the program.
[[nodiscard]] std::vector<int> nachmessbare(const Messreihe& reihe,
                                            const std::function<std::uint32_t()>& zufall);

/// A wing that was measured twice.
struct Nachmessung {
    Indizes erste;
    Indizes zweite;
    std::optional<Indizes> vorschlag; ///< where the program finds the wing
};

/// Which two measurements of a wing are compared.
enum class Nachmessvergleich {
    ErsteMitZweiter,
    ErsteMitVorschlag,
};

/// Standard deviation of a single measurement, from pairs of them (Dahlberg): the root of the sum
/// of the squared differences over twice their number. nullopt with fewer than two pairs that have
/// the index.
[[nodiscard]] std::optional<double>
einzelmessfehler(const std::vector<Nachmessung>& messungen, std::optional<float> Indizes::*index,
                 Nachmessvergleich vergleich = Nachmessvergleich::ErsteMitZweiter);

} // namespace tarvel
