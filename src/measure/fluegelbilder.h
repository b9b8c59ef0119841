#pragma once

#include "measure/bilddatei.h"
#include "measure/bildsuche.h"
#include "measure/messreihe.h"

#include <QImage>
#include <QRect>
#include <QString>

#include <functional>
#include <optional>
#include <set>

namespace tarvel {

/// Where the pixels of scans come from.
struct Scanquelle {
    /// Finds scans that were moved; it outlives its users.
    Bildsuche& suche;
    /// A scan with all its pixels; nullopt, without a word, when it cannot be had.
    std::function<std::optional<Bilddatei>(const QString& pfad)> öffne;
    /// The scan of a wing where it is open already; nullopt for another one, null when its pixels
    /// cannot be had.
    std::function<std::optional<const QImage*>(const Flügelmessung& flügel)> offener = {};
};

/// Cuts measured wings out of their scans, for as long as one job needs them. Scans that are not
/// open are read one at a time.
class Flügelbilder {
public:
    /// @p reihe outlives it.
    Flügelbilder(Scanquelle quelle, const Messreihe& reihe)
        : quelle_(std::move(quelle))
        , reihe_(reihe) {}

    /// The part @p ausschnitt, in pixels of the unzoomed picture, at most GrößteBreite wide or
    /// high; paper white beyond the picture. Null where the scan is not at hand, or once the user
    /// stopped its loading.
    [[nodiscard]] QImage hole(const Flügelmessung& flügel, const QRect& ausschnitt);

    /// The same in the size of the scan.
    [[nodiscard]] QImage schneide(const Flügelmessung& flügel, const QRect& ausschnitt);

    static constexpr int GrößteBreite = 320;

private:
    [[nodiscard]] const QImage* pixel(const Flügelmessung& flügel);

    Scanquelle quelle_;
    const Messreihe& reihe_;
    std::optional<Bilddatei> anderer_;
    std::set<QString> vergeblich_;
};

} // namespace tarvel
