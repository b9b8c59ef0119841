#pragma once

#include "measure/bilddatei.h"
#include "measure/messreihe.h"

#include <QImage>
#include <QRect>
#include <QString>

#include <optional>
#include <set>

namespace tarvel {

class OffenesBild;

/// Cuts measured wings out of their scans, for as long as one job needs them: out of the open
/// picture, or out of others that are read without a word, one at a time.
class Flügelbilder {
public:
    /// Both outlive it.
    Flügelbilder(OffenesBild& offen, const Messreihe& reihe)
        : offen_(offen)
        , reihe_(reihe) {}

    /// The part @p ausschnitt, in pixels of the unzoomed picture, at most GrößteBreite wide or
    /// high; paper white beyond the picture. Null where the scan is not at hand, or once the user
    /// stopped its loading.
    [[nodiscard]] QImage hole(const Flügelmessung& flügel, const QRect& ausschnitt);

    static constexpr int GrößteBreite = 320;

private:
    [[nodiscard]] const QImage* pixel(const Flügelmessung& flügel);

    OffenesBild& offen_;
    const Messreihe& reihe_;
    std::optional<Bilddatei> anderes_;
    std::set<QString> vergeblich_;
};

} // namespace tarvel
