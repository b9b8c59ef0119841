#pragma once

#include <cmath>
#include <cstdint>
#include <random>

namespace tarvel {

/// Random numbers that are the same everywhere: the standard fixes its generators, not its
/// distributions.
class Zufall {
public:
    explicit Zufall(std::uint64_t saat, std::uint64_t folge = 0)
        : quelle_(saat * 0x9E3779B97F4A7C15ULL + folge * 0xD1B54A32D192ED03ULL + 1) {}

    /// 0 up to, not with, 1.
    [[nodiscard]] double gleich() { return double(quelle_() >> 11) * 0x1p-53; }
    [[nodiscard]] double gleich(double von, double bis) { return von + (bis - von) * gleich(); }
    [[nodiscard]] int ganz(int unter) { return int(gleich() * unter); }
    [[nodiscard]] bool mit(double wahrscheinlichkeit) { return gleich() < wahrscheinlichkeit; }
    /// Box and Muller.
    [[nodiscard]] double normal(double mitte = 0, double streuung = 1) {
        const double r = std::sqrt(-2 * std::log(1 - gleich()));
        return mitte + streuung * r * std::cos(6.283185307179586 * gleich());
    }
    [[nodiscard]] double exponential(double mittel) { return -mittel * std::log(1 - gleich()); }
    /// Knuth's way; for small means.
    [[nodiscard]] int poisson(double mittel) {
        int n = 0;
        for (double p = gleich(); p > std::exp(-mittel); p *= gleich())
            ++n;
        return n;
    }

private:
    std::mt19937_64 quelle_;
};

} // namespace tarvel
