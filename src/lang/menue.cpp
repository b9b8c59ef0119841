#include "lang/menue.h"

#include <QAction>
#include <QMenu>

#include <algorithm>
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

/// A caption in two lines of about the same width, so that all of them fit beside each other.
QString umbrochen(const QString& text) {
    qsizetype beste = -1;
    for (qsizetype i = text.indexOf(u' '); i >= 0; i = text.indexOf(u' ', i + 1)) {
        if (beste < 0 || std::max(i, text.size() - i) < std::max(beste, text.size() - beste)) {
            beste = i;
        }
    }
    return beste < 0 ? text : text.left(beste) + u'\n' + text.mid(beste + 1);
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
    const QString kurz = aktion.text().section(u'\t', 0, 0);
    aktion.setIconText(umbrochen(kurz));
    QString tipp = zeile.tipp ? texte(*zeile.tipp) : kurz;
    if (const QKeySequence kürzel = aktion.shortcut(); !kürzel.isEmpty()) {
        tipp += u" ("_s + kürzel.toString(QKeySequence::NativeText) + u')';
    }
    aktion.setToolTip(tipp);
}

} // namespace tarvel
