#pragma once

#include "results/sitzung.h"

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace tarvel {

// The file of a session is a row of blocks, the last state last. Lines end with LF, texts are
// percent-encoded, numbers have a point:
//
//   Sitzung 1
//   Datenbank=… Nummer=… … UNr=… … Datum=2025-05-17 Geaendert=3 Rasse=0 Tiere=0
//   CI=#007;2,31;12,3; … HIDV=… Werte=007/2.31415892/0.993011177/-1000; …
//   Punkte=…  Angaben=…                 the series and body marks as in fluegelsatz.h
//   Fluegel=…  Aufnahme=…  Wiederholt=0  Ansicht=…
//   Summe=<SHA-1 of everything above, of this block>
//
// A field a line. A block without the examination (the fields before Fluegel) changes only the wing
// being measured and belongs to the examination before it. Another version is not read.

/// The lines of the examination; those of the wing being measured and the view.
[[nodiscard]] QByteArray untersuchungszeilen(const Sitzungsstand& stand);
[[nodiscard]] QByteArray flügelzeilen(const Sitzungsstand& stand);
/// A block of these lines.
[[nodiscard]] QByteArray sitzungsblock(const QByteArray& zeilen);

/// What a file of blocks says.
struct Sitzungslesung {
    std::optional<Sitzungsstand> stand;
    qsizetype ende = 0;      ///< behind the last block that counts
    bool beschädigt = false; ///< something in it is no block of ours, other than a cut-off end
};
/// Any content is survived. What follows a damaged block counts only from the next examination on.
[[nodiscard]] Sitzungslesung sitzungAus(QByteArrayView inhalt);

} // namespace tarvel
