#include "measure/tasten.h"

#include <QGuiApplication>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// Digit 1 to 8 that stands on the key of the main keyboard whatever the layout; 0 for other keys.
int zifferNachPlatz(const QKeyEvent& ereignis) {
#ifdef Q_OS_WIN
    const int platz = static_cast<int>(ereignis.nativeVirtualKey()) - 0x30;
#else
    const QString plattform = QGuiApplication::platformName();
    if (plattform != "xcb"_L1 && !plattform.startsWith("wayland"_L1)) {
        return 0;
    }
    constexpr int PlatzDerEins = 10; // scan code of the key "1" in the X keyboard protocol
    const int platz = static_cast<int>(ereignis.nativeScanCode()) - PlatzDerEins + 1;
#endif
    return platz >= 1 && platz <= Messpunkte::Anzahl ? platz : 0;
}

} // namespace

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
    const int ziffer = zifferNachPlatz(ereignis);
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
