#pragma once

#include "lang/meldungen.h"
#include "lang/texte.h"

#include <QKeySequence>

#include <functional>
#include <optional>
#include <variant>

class QAction;
class QMenu;

namespace tarvel {

/// A caption: a text of one of the tables, or a name that is the same in every language.
using Beschriftung = std::variant<Text, Meldung, QString>;
[[nodiscard]] QString wortlaut(const Beschriftung& beschriftung, const Texte& texte);

/// An item of a menu.
struct Menüzeile {
    Beschriftung text;
    std::optional<Meldung> tipp = {};
    QList<QKeySequence> kürzel = {};
};

/// Names a menu, whose items show their tool tips.
void benenneMenü(QMenu& menü, const QString& name);
/// Adds an item to a menu; its name is that of the menu and @p index, "men_Datei_5". @p beiKlick is
/// called with the index.
QAction* fügeHinzu(QMenu& menü, int index, const Menüzeile& zeile,
                   std::function<void(int)> beiKlick);
/// Puts the words of the program's language on an item: caption, short caption for a tool bar, and
/// a tip that names its key.
void beschrifte(QAction& aktion, const Menüzeile& zeile, const Texte& texte);

} // namespace tarvel
