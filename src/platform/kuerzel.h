#pragma once

#include <QList>

class QAction;

namespace tarvel {

/// Gives each item of a menu a letter of its own to be chosen with, the first of its text that is
/// still free.
void vergibKürzelbuchstaben(const QList<QAction*>& aktionen);

} // namespace tarvel
