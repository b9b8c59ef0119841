#pragma once

#include "lang/texte.h"
#include "results/datumsformen.h"
#include "results/satzquelle.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace tarvel {

/// Another collection, opened by what it is.
struct Sammlungsquelle {
    std::unique_ptr<Satzquelle> quelle; ///< null when it cannot be read, or was stopped
    QString grund;                      ///< why it cannot, as a sentence; empty when it was stopped
    QStringList hinweise;               ///< lines and columns of a table that are not taken over
    std::optional<QString> datum;       ///< a date that needs to know what comes first in it
};

/// Opens the file @p pfad to be taken over into @p DatenbankPfad: a results file, a table of text
/// (see liesTabelle), or a database of the former kind (see liesJetDatei). Its content says which.
/// @p weiter is asked while it takes its time. Throws Datenbankfehler as Dateiquelle does.
[[nodiscard]] Sammlungsquelle öffneSammlung(const QString& pfad, const QString& DatenbankPfad,
                                            std::optional<Tagesfolge> folge, const QDate& heute,
                                            const Texte& texte,
                                            const std::function<bool()>& weiter);

} // namespace tarvel
