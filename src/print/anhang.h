#pragma once

#include "lang/texte.h"
#include "platform/zahlen.h"

#include <QImage>
#include <QPointF>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace tarvel {

class Untersuchung;
struct Flügelmessung;

/// A wing as the appendix of the report shows it.
struct Anhangflügel {
    /// "003  CI 2.71  Klasse 19.4", with "!" when it is doubtful or far from the sample.
    QString kopf;
    QString werte; ///< "HI 0.912  DV +0.9"
    bool ausgelassen = false;
    std::vector<QPointF> punkte; ///< the points that were set, in pixels of the cut-out
    QSize größe;                 ///< of the cut-out; empty for a wing whose points are not known
    QImage bild;                 ///< the cut-out, at any scale; null where the scan is not at hand

    bool operator==(const Anhangflügel&) const = default;
};

/// Every wing and every bee of an examination, as they stand behind a report.
struct Anhang {
    std::vector<Anhangflügel> flügel;
    QStringList bienen; ///< "001   O, k,  F"; empty when marks were typed as totals

    bool operator==(const Anhang&) const = default;
};

/// The words of the appendix.
struct Anhangworte {
    QString flügel; ///< above the wings
    QString bienen; ///< above the bees
    QString seite;  ///< %1 number of the page, %2 how many there are
    QString erklärung;

    bool operator==(const Anhangworte&) const = default;
};

/// The part @p ausschnitt of the scan of a wing, in pixels of the unzoomed picture; null where the
/// scan is not at hand.
using Flügelbild = std::function<QImage(const Flügelmessung& flügel, const QRect& ausschnitt)>;

/// Puts the appendix together; without @p bild there are no pictures.
[[nodiscard]] Anhang anhang(const Untersuchung& untersuchung, const Texte& texte,
                            const Zahlenformat& format, const Flügelbild& bild);

} // namespace tarvel
