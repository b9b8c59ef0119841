#include "app/textbefehle.h"

#include <QApplication>
#include <QLineEdit>

namespace tarvel {

QLineEdit* textfeldMitFokus() {
    return qobject_cast<QLineEdit*>(QApplication::focusWidget());
}

void bearbeiteText(int index) {
    QLineEdit* feld = textfeldMitFokus();
    if (feld == nullptr) {
        return;
    }
    switch (index) {
    case 5:
        feld->cut();
        break;
    case 6:
        feld->copy();
        break;
    case 7:
        feld->paste();
        break;
    case 8:
        feld->del();
        break;
    default:
        break;
    }
}

} // namespace tarvel
