#pragma once

#include <QHash>
#include <QString>

namespace tarvel {

class Ergebnisdatei;

/// Where a row came from that was taken over from another results file.
struct Herkunft {
    QString nummer; ///< it had there
    QString marke;  ///< of its content when it was taken, see quellmarke()
};

/// @name The origins that a results file keeps, in a table of their own
/// @{

/// By the number that the row has here; empty when nothing was ever taken over.
[[nodiscard]] QHash<QString, Herkunft> liesHerkunft(Ergebnisdatei& datei);
/// @p nummer the number it has here, @p woher name of the file that it came from. Within a
/// transaction of the caller.
void vermerkeHerkunft(Ergebnisdatei& datei, const QString& nummer, const Herkunft& herkunft,
                      const QString& woher);
/// The row of that number is not what was taken over any more.
void entferneHerkunft(Ergebnisdatei& datei, const QString& nummer);
/// The row goes by another number now.
void benenneHerkunftUm(Ergebnisdatei& datei, const QString& alt, const QString& neu);
/// @}

} // namespace tarvel
