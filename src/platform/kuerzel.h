#pragma once

#include <QList>
#include <QStringList>

class QAction;

namespace tarvel {

/// @p texte with a letter of its own marked in each, the first that is still free.
[[nodiscard]] QStringList mitKürzelbuchstaben(QStringList texte);

/// Gives each item of a menu a letter of its own to be chosen with, the first of its text that is
/// still free.
void vergibKürzelbuchstaben(const QList<QAction*>& aktionen);

} // namespace tarvel
