#pragma once

#include "lang/texte.h"

#include <QString>
#include <QStringList>

namespace tarvel {

class Dialoge;

/// What is to be written, for whoever chooses the place.
struct Zielfrage {
    QString titel;
    QString vorschlag;    ///< folder, or file
    QString muster;       ///< as Dialoge takes it
    QStringList endungen; ///< with their point; the first is added to a name with none of them
};

/// The file that the user wants something written to; empty when there shall be none. Asks before
/// an existing file is replaced, also when its name came about by adding the ending.
[[nodiscard]] QString wähleZiel(const Texte& texte, Dialoge& dialoge, const Zielfrage& frage);

/// Whether a file may be written to @p pfad; the user is asked when there is one already.
[[nodiscard]] bool darfErsetzen(const Texte& texte, Dialoge& dialoge, const QString& titel,
                                const QString& pfad);

/// A number of an examination, which may have any characters, as the name of a file.
[[nodiscard]] QString alsDateiname(const QString& nummer);

/// That @p pfad could not be written and why; @p systemgrund in the system's words, for what we
/// have none of our own for.
[[nodiscard]] QString nichtGeschrieben(const Texte& texte, const QString& pfad,
                                       const QString& systemgrund);

} // namespace tarvel
