#pragma once

#include "results/datumsformen.h"

#include <QDate>
#include <QString>

#include <chrono>
#include <optional>
#include <vector>

namespace tarvel {

/// A row whose date does not stand as this program writes it.
struct AltesDatum {
    qint64 id = 0; ///< its place in the file
    QString nummer;
    QString text; ///< as it stands
};

/// Brings the dates of a results file into the form that it is sorted and numbered by. All
/// operations throw Datenbankfehler and leave the file as it was then.
class Datumswandlung {
public:
    explicit Datumswandlung(QString DatenbankPfad,
                            std::chrono::milliseconds wartezeit = std::chrono::seconds(2));

    /// Whether there may be any; an index alone is looked at.
    [[nodiscard]] bool gibtEs() const;
    /// The rows in the order of the file.
    [[nodiscard]] std::vector<AltesDatum> finde() const;
    /// Converts those that are a date in that order, all or none; a row that was changed meanwhile
    /// stays as it is. How many were converted.
    int wandle(const std::vector<AltesDatum>& daten, Tagesfolge folge, const QDate& heute) const;

private:
    QString pfad_;
    std::chrono::milliseconds wartezeit_;
};

} // namespace tarvel
