#pragma once

#include "evaluation/korrel.h"
#include "evaluation/kriterientabelle.h"
#include "evaluation/kurven.h"
#include "lang/protokolltexte.h"
#include "print/anhang.h"
#include "print/protokolleinstellungen.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <vector>

namespace tarvel {

class Untersuchung;

/// A value of the report with its name.
struct Protokollwert {
    QString name;
    QString wert;   ///< empty stays a gap to be filled in by hand
    QString zusatz; ///< number of wings, or the allowed share
    bool fett = false;

    bool operator==(const Protokollwert&) const = default;
};

/// A group of body marks and the shares of its codes.
struct Merkmalreihe {
    QString gruppe;
    std::vector<Protokollwert> werte; ///< in the order of the report
    bool gemessen = false;

    bool operator==(const Merkmalreihe&) const = default;
};

/// Everything that stands on the report, in the words that it is printed with. The charts carry
/// theirs too.
struct Protokolldaten {
    Protokolleinstellungen einstellungen;
    Protokolltexte texte;
    QString nummer;      ///< of the examination
    QString titel;       ///< with that number
    QString untersucht;  ///< "25 Arbeiterinnen wurden untersucht"
    QString gemessen;    ///< the same where wings were measured, else empty
    QString ausgelassen; ///< "2 Flügel ausgelassen: 003, 017"; empty without any
    QString entstehung;  ///< what the program proposed or measured alone; empty without any
    std::vector<Protokollwert> königin;
    std::vector<Protokollwert> volk;
    std::vector<Protokollwert> indizes;     ///< means, shares of classes, secondary peak
    std::vector<Protokollwert> korrelation; ///< means and shares of the second page
    std::vector<Merkmalreihe> merkmale;
    QString merkmalszahl; ///< "n = 25", empty without marks
    QString merkmalsformel;
    QString nichtGemessen;          ///< in place of marks that there are none of
    std::optional<bool> entspricht; ///< the verdict; empty when there is none
    QString urteil;                 ///< in words, or why there is none; empty without judgement
    QString grundlage;              ///< what the verdict rests on
    bool vorläufig = false;         ///< that is less than a full verdict needs
    QString drohnen;                ///< the word for drones where they are; empty for workers
    QStringList gründe;             ///< why it fails
    std::vector<Kriterienzeile> kriterien; ///< the first line holds the names of the columns
    QString kriterienüberschrift;
    QString kriterienerklärung;
    QString datum;
    QString datumswort;                  ///< whose date it is
    std::array<QStringList, 2> fußnoten; ///< of each page
    Kurvenbild kurven;
    Korrelbild korrel;
    Anhang anhang; ///< empty unless the settings ask for it
    Anhangworte anhangworte;
};

/// Where the report comes from. Everything is read while protokolldaten() runs.
struct Protokollquelle {
    const Untersuchung& untersuchung;
    const Rassestandard& standard; ///< of the examination's race
    const Protokolleinstellungen& einstellungen;
    const Texte& texte;
    const Protokolltexte& protokolltexte;
    Zahlenformat format;
    QDate heute;
    Flügelbild bild = {}; ///< of the wings in the appendix
};

/// Judges the examination by the standard and puts together what the report says about it. An
/// examination without wings gives a report too; whether it is worth printing is the caller's
/// question.
[[nodiscard]] Protokolldaten protokolldaten(const Protokollquelle& quelle);

} // namespace tarvel
