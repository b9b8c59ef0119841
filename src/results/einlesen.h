#pragma once

#include "measure/messdatei.h"
#include "platform/zahlen.h"
#include "results/untersuchung.h"

#include <optional>

namespace tarvel {

/// The examination that a measurement file holds.
struct EingeleseneUntersuchung {
    /// Counts as changed, since it is stored nowhere yet. Values keep the decimal separator of the
    /// file.
    Untersuchung untersuchung;
    /// Kind of examination that the file asks for: the correlation kind when it holds correlation
    /// entries, else cubital index alone.
    Messart messart = Messart::NurCubitalindex;
    /// False when the body-mark lines could not be brought into counts; Messdatei::merkmaltext then
    /// is all there is of them.
    bool merkmaleVerstanden = true;
};

/// @p datei as an examination of the race at position @p Rasse of the race list. Year and numbers
/// are completed as if they had been typed, read in @p format. @p herkunft names the file.
[[nodiscard]] EingeleseneUntersuchung untersuchungAusMessdatei(const Messdatei& datei, int Rasse,
                                                               const Zahlenformat& format,
                                                               const QString& herkunft = {});

/// The body marks of a measurement file as numbers of bees. A line is understood when it holds
/// - the numbers of one group in the order of its codes, "18;2;0;0", in the group's own line, or
/// - codes with numbers, "O 18, E 2" or "O=18", or shares of them, "O=90%  E=10%", in any line,
/// and an empty line means that the group was left out. They are taken only when they agree with
/// the number of bees: the colours cover all of them, no group more, and shares come out the same.
/// No lines are no marks. nullopt for anything else: nothing is guessed.
[[nodiscard]] std::optional<Merkmale> merkmaleAus(const Messdatei& datei);

} // namespace tarvel
