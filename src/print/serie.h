#pragma once

#include "print/protokolldaten.h"
#include "print/protokollseite.h"

#include <QByteArray>

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
};

[[nodiscard]] Serienzeile serienzeile(const Protokolldaten& daten);

/// The pages that list @p zeilen, with how many of them conform.
[[nodiscard]] std::vector<Protokollseite> serienübersicht(const std::vector<Serienzeile>& zeilen,
                                                          const Texte& texte,
                                                          const Protokolleinstellungen& aussehen);

/// The reports of several examinations as one PDF/A-1b, behind the pages that list them; empty when
/// it could not be painted.
[[nodiscard]] QByteArray serieAlsPdf(const std::vector<Protokolldaten>& daten,
                                     const Briefkopfgrafik& grafik, const Texte& texte);

} // namespace tarvel
