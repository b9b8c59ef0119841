#pragma once

#include "measure/leseproblem.h"
#include "measure/messreihe.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace tarvel {

// A measurement file "*.Bee": the examination of one colony as text in Windows-1252, a value a
// line.
//
//   1          "D…" for drones, anything else for workers; its last character is the kind of
//              examination, 0 to 2
//   2–7        year, queen number, region, breeder number, examination number, breeder
//   8, 9       not used
//   10–12      owner, colony, mating
//   13, 14     headings
//   …          a wing each, "001 3.07 21.3": number in characters 1 to 3, cubital index in 5 to 9,
//              class position from 10
//   "EndeCI"
//              a heading
//   …          a wing each, "001 0.993 24.7 +0.4": number, hantel index in 5 to 10, class position
//              from 11, discoidal shift in the last four
//   "EndeHI"
//   three body-mark lines
//   number of bees that the body marks were counted on

/// What a measurement file holds.
struct Messdatei {
    /// A line of the hantel-index section this long means that the file holds correlation entries.
    static constexpr int LängeMitKorrelation = 5;
    /// Problems beyond this number are counted, not kept.
    static constexpr int HöchsteProblemzahl = 100;

    /// False when the file is none: then there is one problem, and nothing else counts.
    bool istMessdatei = false;

    bool Drohnen = false;
    std::optional<Messart> messart; ///< of line 1; nullopt when its digit is no kind of examination
    QString Jahr;
    QString KNr;
    QString LV;
    QString ZNr;
    QString UNr;
    QString Name;
    QString Besitzer;
    QString Volk;
    QString Begattung;

    /// Wings 1 to 200 in the order of their numbers, each number once; of several lines with one
    /// number the first. Values keep their text and with it the decimal separator of the file. A
    /// class position that does not stand in the file is computed from the value.
    std::vector<CiZeile> ciZeilen;
    std::vector<HiDvZeile> hiDvZeilen;
    int GrößteLänge = 0; ///< characters of the longest line of the hantel-index section

    QStringList merkmalzeilen;          ///< the body-mark lines, at most three
    std::optional<qint16> Bienenanzahl; ///< bees that the body marks were counted on
    QString merkmaltext;                ///< "A" and these four lines, ";" between them

    std::vector<Leseproblem> probleme; ///< in the order of the file
    int weitereProbleme = 0;

    /// True when reading the file switches the examination to the correlation kind.
    [[nodiscard]] bool korrelation() const { return GrößteLänge >= LängeMitKorrelation; }
};

/// Reads a measurement file. Any bytes will do: what was readable is returned, what was not is
/// named with its line. End markers may be missing: a section goes to the end of the file then.
/// Text that holds neither an end marker nor one readable value, and does not begin with a kind of
/// examination and a year, is taken for another kind of file.
[[nodiscard]] Messdatei liesMessdatei(QByteArrayView bytes);

} // namespace tarvel
