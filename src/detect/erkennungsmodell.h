#pragma once

#include "detect/graubild.h"

#include <QByteArray>
#include <QPointF>
#include <QString>

#include <array>
#include <cstdint>
#include <memory>
#include <variant>
#include <vector>

namespace tarvel {

/// One step of the cascade: how the surroundings of the points are described, and the regression
/// from that to how far the points are off.
struct Kaskadenstufe {
    int fenster; ///< side of the square described around a point, in pixels of the crop
    int zelle;   ///< side of its cells, which divides the window
    /// All points at once, so that each sees where the others are; else each on its own.
    bool gemeinsam;
    /// Joint: (8 F + 1) rows of 16, the last row is the constant; else 8 times (F + 1) rows of 2. F
    /// is merkmale() of the step.
    std::vector<float> gewichte;

    [[nodiscard]] int merkmale() const { return (fenster / zelle) * (fenster / zelle) * 8; }
    [[nodiscard]] std::size_t gewichtszahl() const;
};

/// How descriptors of well-placed points look: their mean and the directions they vary in, for
/// each point.
struct Merkmalsraum {
    static constexpr int Richtungen = 12;
    int fenster = 0;
    int zelle = 0;
    std::vector<float> mitte;      ///< 8 x F
    std::vector<float> richtungen; ///< 8 x Richtungen x F, orthonormal

    [[nodiscard]] int merkmale() const { return (fenster / zelle) * (fenster / zelle) * 8; }
};

/// From what a proposal looks like to the error to expect.
struct Fehlermodell {
    /// Logarithms of: spread of the crops, distance from each descriptor space, disagreement of
    /// displaced starts, distance from the mean shape.
    static constexpr int Zeichen = 5;
    std::array<Merkmalsraum, 2> räume;
    std::array<float, Zeichen> mitte{};
    std::array<float, Zeichen> streuung{};
    /// Constant, linear and square terms.
    std::array<float, 2 * Zeichen + 1> gewichte{};
    /// What the sum of the terms means: pairs of sum and error in pixels at 2400 dpi, rising.
    std::vector<std::pair<float, float>> eichung;
};

/// What was learnt from measured wings: where veins lie on a mean fore wing, and how its points
/// look. The frame of the mean wing is in pixels at 2400 dpi, origin top left, y down, wing tip to
/// the left and the front edge up, as a left wing lies.
struct Erkennungsmodell {
    static constexpr quint32 Fassung = 1;

    /// Darkness of the mean wing at 300 dpi, with a margin of Musterrand pixels.
    static constexpr int Musterrand = 4;
    Graubild muster;
    /// Places 1 to 8 of the mean wing (index 0 is point 1).
    std::array<QPointF, 8> punkte;
    /// Corners of the wing's outline, convex.
    std::vector<QPointF> umriss;
    std::vector<Kaskadenstufe> stufen;
    Fehlermodell fehler;
    /// What it was made from, in words for a log: "19 wings of 9 colonies".
    QString herkunft;

    /// Version, length, checksum and contents, weights in half precision.
    [[nodiscard]] QByteArray alsDatei() const;
};

/// Why a model file is of no use.
enum class Modellfehler { KeinModell, AndereFassung, Beschädigt };

using Modellergebnis = std::variant<std::shared_ptr<const Erkennungsmodell>, Modellfehler>;

/// Reads what alsDatei() wrote. Everything in it is checked; other bytes are refused.
[[nodiscard]] Modellergebnis liesErkennungsmodell(const QByteArray& datei);

/// The model that comes with the program.
[[nodiscard]] Modellergebnis eingebautesModell();

} // namespace tarvel
