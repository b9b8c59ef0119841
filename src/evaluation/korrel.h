#pragma once

#include "evaluation/achsen.h"
#include "evaluation/diagramm.h"
#include "evaluation/rassestandard.h"
#include "measure/statistik.h"
#include "platform/zahlen.h"

#include <QRectF>
#include <QString>

#include <optional>
#include <vector>

class QPainter;

namespace tarvel {

/// The part of the correlation chart in which the wings of a race lie: beyond both boundary lines.
struct Vertrauensbereich {
    double HI = 0; ///< boundary line of the hantel index
    double DV = 0; ///< boundary line of the discoidal shift, twentieths of a millimetre
    /// The race lies below both lines, as Mellifera does, instead of above both, as Carnica does.
    bool darunter = false;

    /// By the lines in force for a caste and the direction chosen in `cbo_DV`.
    [[nodiscard]] static Vertrauensbereich für(const Grenzlinien& linien, Geschlecht tiere);

    /// On a line is inside. Thousandths of the hantel index and hundredths of the shift count.
    [[nodiscard]] bool enthält(double wertHI, double wertDV) const;

    bool operator==(const Vertrauensbereich&) const = default;
};

/// One wing of the chart.
struct Korrelpunkt {
    int nummer = 0;
    double HI = 0;
    double DV = 0;
    bool imBereich = false;

    bool operator==(const Korrelpunkt&) const = default;
};

/// All that the chart "Korrel" shows.
struct Korrelbild {
    std::vector<Korrelpunkt> flügel;
    int ausgelassen = 0; ///< wings with both figures that do not count
    Vertrauensbereich bereich;
    /// False for a race without a standard: no boundary lines, and no wing is in or out.
    bool begrenzt = true;
    std::optional<Kennzahlen> HI;
    std::optional<Kennzahlen> DV;
    /// Numbers and means stand in the heading, unless they stand above the chart already.
    bool mitKennzahlen = true;
    std::vector<int> hervorgehoben; ///< wings to point out, such as those selected in the lists
    Diagrammworte worte;
    Zahlenformat format;

    [[nodiscard]] int anzahlImBereich() const;
    /// Share of the wings inside in percent, halves to the even number; 0 without wings.
    [[nodiscard]] int anteilImBereich() const;
};

/// The correlation of a series, without words. A wing is inside by the figures that its cross is
/// drawn from: the chart values, or what its line in the list says where there are none. Wings
/// whose line lacks one of the two figures are left out.
[[nodiscard]] Korrelbild korrelbild(const Messreihe& reihe, const Grenzlinien& linien,
                                    Geschlecht tiere, bool begrenzt = true);

/// The field of the chart in the units of its rectangle: discoidal shift to the right, hantel index
/// upwards. The axes hold all wings and both boundary lines; a wing beyond -10 to +10 or 0.5 to 1.5
/// is drawn at the edge.
struct Korrelanordnung {
    QRectF fläche;
    Achse DV; ///< onto x
    Achse HI; ///< onto y
};
[[nodiscard]] Korrelanordnung korrelanordnung(const QRectF& rahmen, const Korrelbild& bild);

/// The crosses in the order of their wing numbers.
[[nodiscard]] std::vector<Diagrammstelle> korrelstellen(const QRectF& rahmen,
                                                        const Korrelbild& bild);

/// Paints the correlation of hantel index and discoidal shift into @p rahmen; a rectangle without
/// an area stays empty. The same bild gives the same picture at every size, only larger or smaller.
void maleKorrel(QPainter& painter, const QRectF& rahmen, const Korrelbild& bild,
                const Diagrammstil& stil);

} // namespace tarvel
