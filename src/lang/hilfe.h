#pragma once

#include "lang/texte.h"

#include <QString>
#include <QStringList>

namespace tarvel {

class Dialoge;
class Shell;

/// Real path of a page of the user guide in @p sprache; empty when no folder holds it.
/// @p ordner folders that may hold "guide", searched in order.
[[nodiscard]] QString hilfeseite(const QStringList& ordner, Sprache sprache,
                                 const QString& seite = QStringLiteral("index"));

/// The page in the program's language, looked for where the program and its package keep it.
[[nodiscard]] QString hilfeseite(const Texte& texte,
                                 const QString& seite = QStringLiteral("index"));

/// Whether there is a help file or a guide in the program's language. Looked for once in each
/// language: neither comes or goes while the program runs.
[[nodiscard]] bool hilfeVorhanden(const Texte& texte);

/// Opens the help file HilfeDatei; where there is none, or nothing that shows it, the page of the
/// guide. False when there is neither.
[[nodiscard]] bool öffneHilfe(const Texte& texte, Shell& shell,
                              const QString& seite = QStringLiteral("index"));

/// The same, and tells the user when there is neither.
void zeigeHilfe(const Texte& texte, Shell& shell, Dialoge& dialoge, const QString& seite);

} // namespace tarvel
