#include "platform/prozess.h"

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

namespace tarvel {

QStringList aufrufargumente(int /*argc*/, char** /*argv*/) {
    // What main() gets is in the code page, which lacks most letters of the world.
    QStringList liste;
    int anzahl = 0;
    wchar_t** worte = CommandLineToArgvW(GetCommandLineW(), &anzahl);
    for (int i = 0; worte != nullptr && i < anzahl; ++i) {
        liste << QString::fromWCharArray(worte[i]);
    }
    LocalFree(worte);
    return liste;
}

bool istTerminal(std::FILE* strom) {
    return _isatty(_fileno(strom)) != 0;
}

void richteProzessEin() {
    // The toolkit keeps a stack for compiled expressions for each thread, whose destructor runs, as
    // this compiler makes it, when the thread's variables are freed already.
    qputenv("QT_ENABLE_REGEXP_JIT", "0");
    for (std::FILE* strom : {stdin, stdout, stderr}) {
        if (_fileno(strom) >= 0) { // a program with windows has none
            (void)_setmode(_fileno(strom), _O_BINARY);
        }
    }
}

bool ohneAnzeige() {
    return false;
}

} // namespace tarvel
