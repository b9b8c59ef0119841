#pragma once

#include "evaluation/kurven.h"
#include "evaluation/zeichenflaeche.h"

#include <optional>
#include <span>
#include <vector>

namespace tarvel {

/// Heights and margins of the histogram that layout and painting share, in units of the chart.
struct Kurvenmaße {
    static constexpr double RandLinks = 66;
    static constexpr double RandRechts = 18;
    static constexpr double Kopfhöhe = 38;
    static constexpr double Bereichshöhe = 22;
    static constexpr double Fahnenhöhe = 20;
    static constexpr double Klassenzeile = 18;
    static constexpr double Wertezeile = 20;
    static constexpr double Zwischentitel = 30;
    static constexpr double Fußzeile = 20;
    static constexpr double Luft = 6;
};

/// What tells the indices apart on their axes.
struct Indexachse {
    int klassen;
    double (*lage)(double);        ///< class position of a value
    std::span<const double> werte; ///< at the axis, the most wanted first
    QStringView wertformat;        ///< of the mean
    QStringView grenzformat;       ///< of the boundary line, as it is defined
    QStringView markenformat;      ///< of the values at the axis
    QStringView streuungsformat;
    bool klassennummern;
    QString Diagrammworte::*name;
};

/// What a label of the histogram points at.
enum class Fahnenziel {
    Linie,  ///< an upright line at its place
    Links,  ///< a value before the axis
    Rechts, ///< a value behind the axis
    Säule,  ///< the bar below it, as the secondary peak
};

/// A labelled upright line at a class position.
struct Fahne {
    double x = 0;
    QString text = {};
    QColor farbe = {};
    Qt::PenStyle art = Qt::SolidLine;
    bool fett = false;
    Qt::AlignmentFlag bündig = Qt::AlignLeft; ///< AlignLeft: the text stands right of the line
    int zeile = 0;
    Fahnenziel ziel = Fahnenziel::Linie;

    /// From the line to its text.
    [[nodiscard]] double abstand() const {
        const bool pfeil = ziel == Fahnenziel::Links || ziel == Fahnenziel::Rechts;
        return pfeil ? 16 : ziel == Fahnenziel::Säule ? 9 : 5;
    }
};

/// One histogram with its axis, laid out in units of the chart.
struct Feld {
    const Indexachse* achse = nullptr;
    const Klassenverteilung* verteilung = nullptr;
    QRectF fläche;
    Achse lage;
    Achse anzahl;
    Teilung teilung;
    std::vector<std::vector<int>> flügel; ///< by class, the first entry those outside the axis
    std::vector<Fahne> fahnen;            ///< their rows stand directly above the field

    [[nodiscard]] int fahnenzeilen() const;
    [[nodiscard]] int bienen(int klasse) const {
        return static_cast<int>(flügel[static_cast<std::size_t>(klasse)].size());
    }
    [[nodiscard]] QRectF säule(int klasse) const {
        const double oben = anzahl.ort(bienen(klasse));
        return {QPointF(lage.ort(klasse), oben), QPointF(lage.ort(klasse + 1), fläche.bottom())};
    }
};

/// Where every part of the histogram stands, in units of the chart. The fields refer to the picture
/// they were laid out for.
struct Kurvenlayout {
    Diagrammmaß maß;
    Feld CI;
    std::optional<Feld> zweite; ///< empty without wings for it, whatever the picture asks for
    QString fuß;                ///< names the wings outside the axes; empty without any
};

/// Place of a value along x; that of the axis's end where the value lies beyond.
[[nodiscard]] double ortAufAchse(const Feld& feld, double wert);

[[nodiscard]] Kurvenlayout kurvenlayout(const QRectF& rahmen, const Kurvenbild& bild,
                                        const Diagrammstil& stil);

} // namespace tarvel
