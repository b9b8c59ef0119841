#include "platform/systemrufe.h"

#include <array>
#include <cerrno>
#include <cstdarg>

#include <fcntl.h>

namespace tarvel {

namespace {

void (*merkeGrund)(int) = nullptr;
Systemruf systemFcntl = nullptr;
Systemruf systemOpen = nullptr;

int fcntlMitGrund(int datei, int was, ...) {
    va_list rest;
    va_start(rest, was);
    void* wert = va_arg(rest, void*);
    va_end(rest);
    const int ergebnis = reinterpret_cast<int (*)(int, int, ...)>(systemFcntl)(datei, was, wert);
    if (ergebnis < 0 && errno == ENOLCK) {
        errno = EIO;
    }
    return ergebnis;
}

/// The engine tries to read what it could not make, which fails for another reason.
int openMitGrund(const char* pfad, int art, int rechte) {
    const int ergebnis =
        reinterpret_cast<int (*)(const char*, int, int)>(systemOpen)(pfad, art, rechte);
    if (ergebnis < 0 && (art & O_CREAT) != 0 && errno != EINTR) {
        merkeGrund(errno);
    }
    return ergebnis;
}

} // namespace

std::span<const Ersatzruf> ersatzrufe(void (*merke)(int grund)) {
    static const std::array rufe{
        Ersatzruf{"fcntl", reinterpret_cast<Systemruf>(fcntlMitGrund), &systemFcntl},
        Ersatzruf{"open", reinterpret_cast<Systemruf>(openMitGrund), &systemOpen}};
    merkeGrund = merke;
    return rufe;
}

bool warUnterbrochen(int grund) {
    return grund == EINTR;
}

} // namespace tarvel
