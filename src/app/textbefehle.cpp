#include "app/textbefehle.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>

namespace tarvel {

QLineEdit* textfeldMitFokus() {
    QWidget* fokus = QApplication::focusWidget();
    if (auto* liste = qobject_cast<QComboBox*>(fokus)) {
        return liste->lineEdit();
    }
    return qobject_cast<QLineEdit*>(fokus);
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
        if (feld->hasSelectedText()) {
            feld->del();
        }
        break;
    default:
        break;
    }
}

} // namespace tarvel
