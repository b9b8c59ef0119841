#pragma once

#include <QString>
#include <QStringList>

namespace tarvel {

// The printers of a system with CUPS, for the person who runs the program. A printer is called by
// its queue; a saved set of options of a queue is a printer of its own, "queue/set". Without a
// print server there are no printers, and nothing here fails louder than that.

/// Milliseconds that a print server may take for its answer, 3000 to begin with.
void setzeCupsFrist(int frist);

/// False when there is a print server that keeps silent.
[[nodiscard]] bool cupsAntwortet();

/// All printers in the order of the print server.
[[nodiscard]] QStringList cupsDrucker();

/// The person's default printer, or else the server's; empty when there is none.
[[nodiscard]] QString cupsStandarddrucker();

/// Makes @p name the person's default printer. The server's own default, or an empty name, takes
/// the person's choice back instead, so that the server decides again. False when there is no such
/// printer or the choice could not be stored; nothing changes then.
bool setzeCupsStandarddrucker(const QString& name);

/// Hands the PDF file @p datei, pages of A4, to @p drucker with the options the person saved for
/// it.
/// @p titel is what the job is called in the queue. Returns as soon as the server has the file;
/// false when it did not accept the job.
bool sendeAnCups(const QString& drucker, const QString& datei, const QString& titel, int exemplare);

} // namespace tarvel
