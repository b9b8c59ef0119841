#pragma once

#include "print/protokolldaten.h"
#include "print/protokollseite.h"

#include <QByteArray>

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace tarvel {

/// An examination in the summary of a series of reports.
struct Serienzeile {
    QString nummer;
    QString königin; ///< her number in the stud book
    QString volk;
    QString rasse;
    QString flügel; ///< number of wings
    QString CI;     ///< means; empty where nothing was measured
    QString HI;
    QString DV;
    std::optional<bool> entspricht; ///< empty when it was not judged
    bool vorläufig = false;         ///< on fewer wings or bees than a full verdict needs
};

[[nodiscard]] Serienzeile serienzeile(const Protokolldaten& daten);

/// The pages that list @p zeilen, with how many of them conform.
[[nodiscard]] std::vector<Protokollseite> serienübersicht(const std::vector<Serienzeile>& zeilen,
                                                          const Texte& texte,
                                                          const Protokolleinstellungen& aussehen);

/// The reports of several examinations as one PDF/A-1b, behind the pages that list them as
/// @p zeilen says. @p protokoll gives the report at a place when its turn comes, so that there is
/// one at a time in memory; nullopt gives all up. Empty then, and when it could not be painted.
[[nodiscard]] QByteArray
serieAlsPdf(const std::vector<Serienzeile>& zeilen,
            const std::function<std::optional<Protokolldaten>(std::size_t)>& protokoll,
            const Protokolleinstellungen& aussehen, const Briefkopfgrafik& grafik,
            const Texte& texte);

} // namespace tarvel
