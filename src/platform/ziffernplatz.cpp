#include "platform/ziffernplatz.h"

#include <QGuiApplication>
#include <QKeyEvent>

namespace tarvel {

int ziffernplatz(const QKeyEvent& ereignis) {
    constexpr int Acht = 8;
#ifdef Q_OS_WIN
    const int platz = static_cast<int>(ereignis.nativeVirtualKey()) - '0';
#else
    const QString plattform = QGuiApplication::platformName();
    if (plattform != QLatin1StringView("xcb") &&
        !plattform.startsWith(QLatin1StringView("wayland"))) {
        return 0;
    }
    constexpr int PlatzDerEins = 10; // scan code of the key "1" in the X keyboard protocol
    const int platz = static_cast<int>(ereignis.nativeScanCode()) - PlatzDerEins + 1;
#endif
    return platz >= 1 && platz <= Acht ? platz : 0;
}

} // namespace tarvel
