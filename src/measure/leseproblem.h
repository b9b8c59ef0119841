#pragma once

#include "lang/texte.h"

#include <QString>
#include <QStringList>

namespace tarvel {

/// What is wrong with a file that was to be read.
enum class Lesegrund {
    Leer,
    KeinText,           ///< binary content, or a text that is damaged
    ZuGroß,             ///< texts: megabytes that are taken
    KeineMessdatei,     ///< text, but not that of a measurement file
    AndererZeichensatz, ///< texts: its name; the file was read all the same
    DateiEndet,         ///< before everything that belongs into it
    ZeileZuKurz,        ///< texts: the line
    KeineZahl,          ///< texts: the text that is no number, or none that can stand there
    FeldKeineZahl,      ///< texts: name of the field, its text
    Flügelnummer,       ///< texts: the text that is no wing number, greatest wing number
    FlügelDoppelt,      ///< texts: number or name of the wing, line where it stands already
    ZuVieleFlügel,      ///< texts: greatest number of wings
    KeinFlügel,
    SpalteFehlt, ///< texts: name of the column
    Feldzahl,    ///< texts: fields of the line, fields of the header
    HalberPunkt, ///< texts: number of the point
    Punktzahl,   ///< texts: number of points, number needed
    Unerwartet,  ///< texts: what does not belong where it stands
};

/// One thing that is wrong, and where.
struct Leseproblem {
    int zeile = 1; ///< from 1; what concerns the whole file has 1
    Lesegrund grund = Lesegrund::Leer;
    QStringList texte = {}; ///< what the reason quotes

    bool operator==(const Leseproblem&) const = default;
};

/// The reason as a sentence, without the line: "'abc' is not a valid number."
[[nodiscard]] QString text(const Leseproblem& problem, const Texte& texte);
/// With the line before it: "Line 12: 'abc' is not a valid number."
[[nodiscard]] QString textMitZeile(const Leseproblem& problem, const Texte& texte);

/// Why a file cannot be read at all: it is not there, or may not be read.
[[nodiscard]] QString textUnlesbar(const QString& pfad, const Texte& texte);

/// @p text as a reason quotes it: on one line and no longer than a reader can use.
[[nodiscard]] QString zitat(QStringView text);

} // namespace tarvel
