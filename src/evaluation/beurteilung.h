#pragma once

#include "evaluation/geschlecht.h"
#include "evaluation/klassen.h"
#include "evaluation/merkmale.h"
#include "evaluation/rassestandard.h"
#include "lang/texte.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace tarvel {

/// What is judged.
struct Probe {
    Geschlecht Tiere = Geschlecht::Arbeiterinnen;
    std::vector<int> Klassen; ///< classes of the cubital index, one for each wing
    QStringList Merkmale;     ///< summary texts of the body marks: Merkmalauswertung::Texte
    /// Why there are marks but no summary of them: Merkmalauswertung::Fehler.
    std::optional<Anteilfehler> Merkmalfehler = {};

    [[nodiscard]] bool leer() const {
        return Klassen.empty() && Merkmale.isEmpty() && !Merkmalfehler;
    }
};

/// One check of the judgement.
enum class Prüfung {
    Merkmal,    ///< share of a body-mark code
    Klassen,    ///< share of wings in a range of classes
    Nebengipfel ///< secondary peak in a range of classes
};

struct Prüfwert {
    Prüfung art = Prüfung::Merkmal;
    QString name;           ///< code ("1R") or key of the range ("Klasse 0")
    Klassenbereich bereich; ///< of a range
    /// Measured share in percent; of a secondary peak the largest count. Empty when the sample has
    /// no such mark, no wings, or the share could not be computed.
    std::optional<int> gemessen;
    /// Highest allowed share in percent; of a secondary peak the count it must not exceed.
    double erlaubt = 0;
    /// Above what is allowed: printed bold, and the sample does not conform.
    bool fett = false;

    bool operator==(const Prüfwert&) const = default;
};

/// What a sample is worth as bees of a race.
struct Beurteilung {
    bool BewertungAktiv = false; ///< off: nothing is marked and there is no verdict
    /// No check failed. False when a share could not be computed: nothing is known to conform then.
    bool EntsprichtRasse = true;
    /// Every check in the order of the report: body colour, hair, tomentum, classes, secondary
    /// peak.
    std::vector<Prüfwert> werte;
    /// Class of the secondary peak, if there is one.
    std::optional<int> nebengipfel;
    /// Set when a share of marks or classes could not be computed.
    std::optional<Anteilfehler> fehler;
    /// Neither wings nor marks were judged.
    bool leer = true;

    /// The failed checks in the order of the report.
    [[nodiscard]] std::vector<Prüfwert> mängel() const;
    /// EntsprichtRasse where it is a verdict: nullopt with the judgement off, for an empty sample,
    /// and when a share could not be computed.
    [[nodiscard]] std::optional<bool> urteil() const;

    bool operator==(const Beurteilung&) const = default;
};

/// Judges a sample by the standard of a race. A share passes up to and with the allowed one. What
/// was not measured fails no check: without wings the classes pass, without marks the marks do.
[[nodiscard]] Beurteilung beurteile(const Probe& probe, const Rassestandard& standard,
                                    bool BewertungAktiv);

/// What the settings say about judging.
struct Urteilsregeln {
    bool BewertungAktiv = true;
    bool OhneHaarlänge = false; ///< workers' hair length is left out

    bool operator==(const Urteilsregeln&) const = default;
};

/// The summary of the body marks and the judgement that follows from them and the wings.
struct Urteil {
    Merkmalauswertung merkmale;
    Beurteilung beurteilung;
};

/// Judges wings and body marks of an examination by the standard of its race. Window, report,
/// import and batch all judge by this.
[[nodiscard]] Urteil urteile(Geschlecht tiere, const Messreihe& reihe, const Merkmale& merkmale,
                             const Rassestandard& standard, const Urteilsregeln& regeln);

/// Verdict of the report, which the name of the race follows.
[[nodiscard]] Text urteilssatz(bool EntsprichtRasse);
/// Word of the examination's result field.
[[nodiscard]] Text urteilswort(bool EntsprichtRasse);

} // namespace tarvel
