#pragma once

#include "measure/messreihe.h"

#include <QColor>
#include <QRectF>
#include <QString>

#include <span>
#include <vector>

class QFont;
class QPalette;

namespace tarvel {

class Texte;
struct Protokolltexte;

/// Colours and font of a chart. What a colour tells, a shape, a hatching or a word tells too, so
/// the black-and-white style shows the same chart.
struct Diagrammstil {
    QString schriftart; ///< family; sizes follow from the chart's rectangle
    bool kursiv = false;
    QColor grund; ///< painted first; invalid leaves what is there
    QColor schrift;
    QColor blass;    ///< axes and their numbers
    QColor gitter;   ///< lines of the grid
    QColor probe;    ///< the measured wings and their mean
    QColor fläche;   ///< filling of bars and below curves
    QColor rasse;    ///< what the standard demands
    QColor bereich;  ///< filling of the standard's ranges
    QColor verfehlt; ///< what does not meet the standard
    QColor gewählt;  ///< wings pointed out

    /// On a window: its colours, light or dark.
    [[nodiscard]] static Diagrammstil bildschirm(const QPalette& palette, const QFont& schrift);
    /// In colour on white: pictures and colour printers.
    [[nodiscard]] static Diagrammstil farbdruck(const QFont& schrift);
    /// Black and greys on white.
    [[nodiscard]] static Diagrammstil schwarzweiß(const QFont& schrift);

    bool operator==(const Diagrammstil&) const = default;
};

/// The words of the charts in one language. Those of the printed report are the user's own where
/// he translated them.
struct Diagrammworte {
    QString cubitalindex;
    QString hantelindex;
    QString discoidalverschiebung;
    QString CI;
    QString HI;
    QString DV;
    QString klasse;
    QString bienenJeKlasse;
    QString mittelwert;
    QString nebengipfel;
    QString keinNebengipfel;
    QString hantelklassen; ///< title of the second curve
    QString dvKlassen;     ///< the same for the discoidal shift
    QString korrelation;
    QString imVertrauensbereich;
    QString nichtImVertrauensbereich;
    QString grenzlinie;
    QString flügel;
    QString außerhalbDerAchse;
    QString keineMessung;
    QString keineKorrelation;
    QString ausgelassen; ///< "%1 left out"; empty where the page around the chart says so

    [[nodiscard]] static Diagrammworte bildschirm(const Texte& texte);
    [[nodiscard]] static Diagrammworte protokoll(const Texte& texte, const Protokolltexte& eigene);
};

/// "n = 25 (2 left out)"
[[nodiscard]] QString flügelzahl(std::size_t n, int ausgelassen, const Diagrammworte& worte);

/// A place of a chart that stands for wings: a bar or a cross.
struct Diagrammstelle {
    QRectF fläche;           ///< where a pointer finds it, in the units of the chart's rectangle
    std::vector<int> flügel; ///< wing numbers, ascending; at least one
    QString beschreibung;    ///< what is there, without the wings: "Klasse 17: 2"
};

/// A figure of wing @p nummer for a chart: in full precision, or, for a wing that has none so, what
/// its line says. KeinWert when that is no number either.
[[nodiscard]] float chartwert(const Messreihe& reihe, int nummer, float Chartwerte::*größe,
                              const QString& zeilenwert);

/// The wings whose places lie under @p ort, ascending and each once; none for an empty spot.
[[nodiscard]] std::vector<int> flügelAn(QPointF ort, std::span<const Diagrammstelle> stellen);

/// "Flügel 003, 007", with @p umbruch instead of a blank before every twelfth number. Empty without
/// wings.
[[nodiscard]] QString flügelliste(std::span<const int> flügel, const QString& wort,
                                  QChar umbruch = u'\n');

} // namespace tarvel
