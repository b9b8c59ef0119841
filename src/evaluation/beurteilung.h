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

/// Why there is no verdict on an examination.
enum class Unbeurteilt {
    Ausgeschaltet,       ///< the settings say so
    NichtsGemessen,      ///< neither wings nor body marks
    FremdeRasse,         ///< a race without a standard here
    MerkmaleUnlesbar,    ///< stored body marks that are not understood
    AnteilUnberechenbar, ///< a share of marks or classes; see Beurteilung::fehler
};

/// How much the judgement rests on, and how much a full one needs.
struct Umfang {
    int Flügel = 0;
    int Bienen = 0; ///< with body marks
    int SollFlügel = 50;
    int SollBienen = 50;
    bool ungleich = false; ///< the groups of marks do not cover the same number of bees

    /// Fewer than a full judgement needs.
    [[nodiscard]] bool vorläufig() const { return Flügel < SollFlügel || Bienen < SollBienen; }

    bool operator==(const Umfang&) const = default;
};

/// What is judged.
struct Probe {
    Geschlecht Tiere = Geschlecht::Arbeiterinnen;
    std::vector<int> Klassen; ///< classes of the cubital index, one for each wing
    QStringList Merkmale;     ///< summary texts of the body marks: Merkmalauswertung::Texte
    /// Why there are marks but no summary of them: Merkmalauswertung::Fehler.
    std::optional<Anteilfehler> Merkmalfehler = {};
    /// Mean cubital index; empty without any.
    std::optional<double> MittelwertCI = {};

    [[nodiscard]] bool leer() const {
        return Klassen.empty() && Merkmale.isEmpty() && !Merkmalfehler;
    }
};

/// One check of the judgement.
enum class Prüfung {
    Merkmal,    ///< share of a body-mark code
    Mittelwert, ///< mean cubital index, where the standard limits it
    Klassen,    ///< share of wings in a range of classes
    Nebengipfel ///< secondary peak in a range of classes
};

struct Prüfwert {
    Prüfung art = Prüfung::Merkmal;
    QString name;           ///< code ("1R") or key of the range ("Klasse 0"); "CI" of the mean
    Klassenbereich bereich; ///< of a range
    /// Measured share in percent; of a secondary peak the largest count. Empty when the sample has
    /// no such mark, no wings, or the share could not be computed.
    std::optional<int> gemessen;
    /// Highest allowed share in percent; of a secondary peak the count it must not exceed; of a
    /// mean its limit.
    double erlaubt = 0;
    /// Above what is allowed: printed bold, and the sample does not conform.
    bool fett = false;
    std::optional<double> mittel = {}; ///< the measured mean
    bool höchstens = true;             ///< false: the limit is the lowest allowed value

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
    /// Why there is no verdict; empty when there is one.
    std::optional<Unbeurteilt> unbeurteilt = Unbeurteilt::NichtsGemessen;
    Umfang umfang;

    /// There is a verdict, or nothing yet that it could be about: checks may be shown with their
    /// outcome.
    [[nodiscard]] bool wirdBeurteilt() const {
        return BewertungAktiv && (!unbeurteilt || unbeurteilt == Unbeurteilt::NichtsGemessen);
    }
    /// The failed checks in the order of the report.
    [[nodiscard]] std::vector<Prüfwert> mängel() const;
    /// EntsprichtRasse where it is a verdict.
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
    int SollFlügel = 50;        ///< wings that a full judgement needs
    int SollBienen = 50;        ///< bees with body marks that it needs

    bool operator==(const Urteilsregeln&) const = default;
};
[[nodiscard]] Urteilsregeln ladeUrteilsregeln(const Einstellungen& einstellungen);

/// What the judgement of an examination looks at. It lives as long as the call.
struct Prüfling {
    Geschlecht tiere = Geschlecht::Arbeiterinnen;
    const Messreihe& reihe;
    const Merkmale& merkmale;
    bool fremdeRasse = false;      ///< a race that there is no standard of
    bool merkmaleUnlesbar = false; ///< there are stored marks that are not understood
};

/// The summary of the body marks and the judgement that follows from them and the wings.
struct Urteil {
    Merkmalauswertung merkmale;
    Beurteilung beurteilung;
};

/// Judges wings and body marks of an examination by the standard of its race. Window, report,
/// import and batch all judge by this.
[[nodiscard]] Urteil urteile(const Prüfling& prüfling, const Rassestandard& standard,
                             const Urteilsregeln& regeln);

/// Verdict of the report, which the name of the race follows.
[[nodiscard]] Text urteilssatz(bool EntsprichtRasse);
/// Word of the examination's result field.
[[nodiscard]] Text urteilswort(bool EntsprichtRasse);

} // namespace tarvel
