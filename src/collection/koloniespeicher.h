#pragma once

#include "collection/koloniewerte.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace tarvel {

/// Figures of a row and the mark of the content that they come from.
struct Koloniesatz {
    quint64 marke = 0;
    bool unlesbar = false; ///< only the number is known
    Koloniewerte werte;
};

/// What is kept of a results file.
struct Koloniespeicher {
    /// State of the results file that the rows are complete for; empty when they are not.
    QByteArray stand;
    std::vector<Koloniesatz> sätze; ///< in the order of the results file
};

/// The kept figures as a file. @p regelmarke is that of Kolonieregeln.
[[nodiscard]] QByteArray alsDatei(const Koloniespeicher& speicher, quint64 regelmarke);
/// nullopt for any bytes that alsDatei() did not write for these rules.
[[nodiscard]] std::optional<Koloniespeicher> speicherAus(const QByteArray& bytes,
                                                         quint64 regelmarke);

} // namespace tarvel
