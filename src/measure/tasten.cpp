#include "measure/tasten.h"

#include "platform/ziffernplatz.h"

namespace tarvel {

using namespace Qt::StringLiterals;

int tastencode(const QKeyEvent& ereignis) {
    const int key = ereignis.key();
    if (key >= Qt::Key_1 && key <= Qt::Key_8) {
        const int eins = ereignis.modifiers().testFlag(Qt::KeypadModifier) ? taste::ZiffernblockEins
                                                                           : taste::Eins;
        return eins + key - Qt::Key_1;
    }
    switch (key) {
    case Qt::Key_Left:
        return taste::Links;
    case Qt::Key_Up:
        return taste::Auf;
    case Qt::Key_Right:
        return taste::Rechts;
    case Qt::Key_Down:
        return taste::Ab;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return taste::Eingabe;
    case Qt::Key_Backspace:
        return taste::Rücktaste;
    default:
        break;
    }
    const int ziffer = ziffernplatz(ereignis);
    return ziffer == 0 ? 0 : taste::Eins + ziffer - 1;
}

QPoint pfeilrichtung(int tastencode) {
    switch (tastencode) {
    case taste::Links:
        return {-1, 0};
    case taste::Auf:
        return {0, -1};
    case taste::Rechts:
        return {1, 0};
    case taste::Ab:
        return {0, 1};
    default:
        return {};
    }
}

int umschaltung::von(Qt::KeyboardModifiers tasten) {
    int summe = Keine;
    summe += tasten.testFlag(Qt::ShiftModifier) ? Umschalt : 0;
    summe += tasten.testFlag(Qt::ControlModifier) ? Strg : 0;
    summe += tasten.testFlag(Qt::AltModifier) ? Alt : 0;
    return summe;
}

} // namespace tarvel
