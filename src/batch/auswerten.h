#pragma once

#include "batch/ausgabe.h"
#include "batch/befehle.h"
#include "evaluation/beurteilung.h"
#include "measure/koordinatenausgabe.h"
#include "measure/koordinatenreihe.h"

#include <QString>

#include <vector>

namespace tarvel {

/// How the wings of a file were measured, and what their sample is judged by.
struct Auswertungsvorgabe {
    Messart messart = Messart::AlleMessungen;
    Aufnahme aufnahme;           ///< of wings that do not say theirs
    bool eigeneAuflösung = true; ///< false: all wings have that of aufnahme
    Geschlecht tiere = Geschlecht::Arbeiterinnen;
    QString rasse;
    Rassestandard standard;
    Urteilsregeln regeln;
    Zahlenformat format;
};

/// The wings of one file, evaluated as the sample of one colony.
struct Auswertungsprobe {
    QString datei;
    Auswertungsvorgabe vorgabe;
    /// All wings of the file in its order, numbered from 1. Those without an index are not in the
    /// series.
    std::vector<Ausgabeflügel> flügel;
    Messreihe reihe;
    Beurteilung beurteilung;
    std::vector<Flügelmangel> mängel;
    QStringList annahmen; ///< what the values rest on beyond the file, a sentence each
};

[[nodiscard]] Auswertungsprobe werteAus(const QString& datei, const Koordinaten& koordinaten,
                                        const Auswertungsvorgabe& vorgabe);

/// The command evaluate. Writes nothing when one of the files cannot be read.
[[nodiscard]] Status evaluate(const Auswertungsbefehl& befehl, const Batchumgebung& umgebung);

} // namespace tarvel
