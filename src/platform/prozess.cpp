#include "platform/prozess.h"

#include <unistd.h>

namespace tarvel {

QStringList aufrufargumente(int argc, char** argv) {
    QStringList liste;
    for (int i = 0; i < argc; ++i) {
        liste << QString::fromLocal8Bit(argv[i]);
    }
    return liste;
}

bool istTerminal(std::FILE* strom) {
    return isatty(fileno(strom)) != 0;
}

void richteProzessEin() {}

bool ohneAnzeige() {
#ifdef Q_OS_LINUX
    return qEnvironmentVariableIsEmpty("DISPLAY") &&
           qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
           qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
#else
    return false;
#endif
}

} // namespace tarvel
