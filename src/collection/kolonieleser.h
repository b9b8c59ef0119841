#pragma once

#include "collection/koloniewerte.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

namespace tarvel {

/// All examinations of a results file as figures.
struct Koloniesammlung {
    std::vector<Koloniewerte> kolonien; ///< in the order of the file
    QStringList unlesbar;               ///< numbers of rows that are beyond all measure

    [[nodiscard]] int teilweise() const; ///< rows that were understood only in part
};

/// Before a row is read for the first time: how many were, and how many rows there are. False when
/// the user wants to stop.
using Lesestand = std::function<bool(int gelesen, int gesamt)>;

/// Reads all examinations of a results file, which stays as it is. nullopt when it was stopped.
/// Throws Datenbankfehler.
///
/// What was read is kept in a file of the folder @p speicher, which may be empty for none. As long
/// as the results file is untouched its figures come from there; otherwise every row is compared
/// by its content, and only rows that are new are evaluated. That file may be missing, old or
/// damaged; it is then made again.
[[nodiscard]] std::optional<Koloniesammlung> liesKolonien(const QString& datenbank,
                                                          const QString& speicher,
                                                          const Kolonieregeln& regeln,
                                                          const Lesestand& stand);

/// Name of the folder that figures are kept in, beside the settings.
inline constexpr QStringView Übersichtsordner = u"Overview";

} // namespace tarvel
