#pragma once

#include "evaluation/geschlecht.h"
#include "platform/zahlen.h"

#include <QString>

namespace tarvel {

/// Identification of the examined queen and colony, as typed on the main window. Region, breeder
/// number, queen number and year together identify the queen.
struct Kolonieangaben {
    QString Jahr;
    QString KNr; ///< queen number
    QString LV;  ///< region
    QString ZNr; ///< breeder number
    QString UNr; ///< examination number
    QString Volk;
    QString Name; ///< breeder
    QString Besitzer;
    QString Begattung;
    int Rasse = 0; ///< position in the race list; the race number less 1
    /// Race that a stored examination names and the race list does not hold. It is stored again
    /// until the user picks a race; empty otherwise.
    QString Rassenname;
    Geschlecht Tiere = Geschlecht::Arbeiterinnen;

    bool operator==(const Kolonieangaben&) const = default;
};

/// @p neu, the data of a new examination, with breeder, owner and mating of the one before.
[[nodiscard]] Kolonieangaben fürNächstesVolk(Kolonieangaben neu, const Kolonieangaben& vorige);

/// Completes a year of exactly two characters: above 90 with "19", else with "20". Other texts
/// come back unchanged. The cut-over is the breeding books' own: "91" is 1991, "90" is 2090.
[[nodiscard]] QString jahrErgänzt(const QString& text);

/// Queen and breeder number: numeric text as three digits; other text unchanged.
[[nodiscard]] QString nummerDreistellig(const QString& text, const Zahlenformat& format);

/// Region: numeric text as two digits; other text unchanged.
[[nodiscard]] QString nummerZweistellig(const QString& text, const Zahlenformat& format);

} // namespace tarvel
