#pragma once

#include "lang/texte.h"
#include "platform/zahlen.h"
#include "results/ergebnissatz.h"
#include "results/untersuchung.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace tarvel {

/// What an examination and its row have to be told about each other.
struct Satzumgebung {
    const Texte& texte;
    Zahlenformat format; ///< separator that chart values are written with; readers take either
    QStringList rassen;  ///< the race list
    bool OhneHaarlänge = false;
};

/// The column that a text of the colony data is stored in. The number of the breeder, the region
/// and the year of the queen share one with her number.
[[nodiscard]] QString Ergebnissatz::*textspalte(QString Kolonieangaben::*wert);

/// The row that keeps @p untersuchung. @p urteil is the verdict, empty for an examination
/// that was not judged, which is stored with the word for no and a field that says so; @p auflösung
/// the resolution in dots per inch that the row gets when none of its wings has one, @p heute the
/// date it gets when its colony data were changed or it has none yet. No text of the row is empty:
/// a single blank stands for that. The layout of the long texts is described in fluegelsatz.h.
[[nodiscard]] Ergebnissatz satzAus(const Untersuchung& untersuchung, std::optional<bool> urteil,
                                   int auflösung, const QDate& heute, const Satzumgebung& umgebung);

/// Whether a row was stored without having been judged, although it says no, or as former versions
/// wrote it, yes.
[[nodiscard]] bool unbeurteilt(const Ergebnissatz& satz);

/// An examination as it was read back.
struct GeleseneUntersuchung {
    Kolonieangaben angaben; ///< an empty text field of the row is a single blank
    Messreihe reihe;
    Merkmale merkmale;
    QDate datum;
    std::optional<bool> urteil; ///< the stored verdict; empty when nothing had been judged
    /// In dots per inch: that of the last wing with points, else the row's; empty without either.
    std::optional<int> auflösung;
    Untersuchungszusatz zusatz;
    QStringList nichtGelesen;     ///< columns whose content was not understood, or only in part
    std::optional<QString> rasse; ///< stored name of a race that is not in the list
};

/// The examination that @p satz keeps. Any text is survived: what cannot be understood is left out
/// and named, never guessed. Rows of any language and either decimal separator are read, and rows
/// that hold only lines and marks.
///
/// A race that is not in the list counts as the fourth, the one that a user names.
[[nodiscard]] GeleseneUntersuchung untersuchungAus(const Ergebnissatz& satz,
                                                   const Satzumgebung& umgebung);

} // namespace tarvel
