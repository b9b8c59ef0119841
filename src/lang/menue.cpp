#include "lang/menue.h"

#include <QAction>
#include <QMenu>

#include <type_traits>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// A text may carry its key behind a run of blanks ("Beenden     Alt+F4"); the toolkit wants a tab
/// there to show it in the column of the keys.
QString mitTastenspalte(const QString& text) {
    const qsizetype lücke = text.indexOf(u"   "_s);
    return lücke < 0 ? text : text.left(lücke) + u'\t' + text.mid(lücke).trimmed();
}

} // namespace

QString wortlaut(const Beschriftung& beschriftung, const Texte& texte) {
    return std::visit(
        [&texte](const auto& wort) -> QString {
            if constexpr (std::is_same_v<std::decay_t<decltype(wort)>, QString>) {
                return wort;
            } else {
                return texte(wort);
            }
        },
        beschriftung);
}

void benenneMenü(QMenu& menü, const QString& name) {
    menü.setObjectName(name);
    menü.setToolTipsVisible(true);
}

QAction* fügeHinzu(QMenu& menü, int index, const Menüzeile& zeile,
                   std::function<void(int)> beiKlick) {
    QAction* aktion = menü.addAction(QString());
    aktion->setObjectName(u"%1_%2"_s.arg(menü.objectName()).arg(index));
    aktion->setShortcuts(zeile.kürzel);
    QObject::connect(aktion, &QAction::triggered, &menü,
                     [index, beiKlick = std::move(beiKlick)] { beiKlick(index); });
    return aktion;
}

void beschrifte(QAction& aktion, const Menüzeile& zeile, const Texte& texte) {
    aktion.setText(mitTastenspalte(wortlaut(zeile.text, texte)));
    aktion.setIconText(aktion.text().section(u'\t', 0, 0));
    QString tipp = zeile.tipp ? texte(*zeile.tipp) : aktion.iconText();
    if (const QKeySequence kürzel = aktion.shortcut(); !kürzel.isEmpty()) {
        tipp += u" ("_s + kürzel.toString(QKeySequence::NativeText) + u')';
    }
    aktion.setToolTip(tipp);
}

} // namespace tarvel
