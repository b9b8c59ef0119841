// Loaded in front of the system's own calls: makes one of them fail, for files of one folder.
//
//   STOERUNG="<call> <number> <error> <how> <folder>"
//
// The number counts such calls from 1. "einmal" fails that one alone, "fortan" all from it on, as a
// full drive does; "halb" writes half of what it is given before that. A byte on the standard
// output tells that it has happened.

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct Auftrag {
    char ruf[16] = "";
    int nummer = 0;
    int fehler = 0;
    char art[16] = "";
    char ordner[512] = "";
    int gezählt = 0;
    bool gemeldet = false;
};

std::mutex sperre;

template <typename Ruf>
Ruf echter(const char* name) {
    return reinterpret_cast<Ruf>(dlsym(RTLD_NEXT, name));
}

Auftrag& auftrag() {
    static Auftrag einer = [] {
        Auftrag a;
        const char* text = std::getenv("STOERUNG");
        if (text != nullptr) {
            (void)std::sscanf(text, "%15s %d %d %15s %511[^\n]", a.ruf, &a.nummer, &a.fehler, a.art,
                              a.ordner);
        }
        return a;
    }();
    return einer;
}

bool betrifft(const char* pfad) {
    const Auftrag& a = auftrag();
    return a.ordner[0] != '\0' && std::strncmp(pfad, a.ordner, std::strlen(a.ordner)) == 0;
}

bool betrifft(int nummer) {
    char pfad[1024] = "";
    const std::string verweis = "/proc/self/fd/" + std::to_string(nummer);
    return readlink(verweis.c_str(), pfad, sizeof pfad - 1) > 0 && betrifft(pfad);
}

/// Whether this call is the one. @p wen its file, as number or path.
template <typename Wen>
bool trifft(const char* ruf, Wen wen) {
    Auftrag& a = auftrag();
    if (std::strcmp(a.ruf, ruf) != 0 || !betrifft(wen)) {
        return false;
    }
    const std::lock_guard wache(sperre);
    ++a.gezählt;
    if (a.gezählt < a.nummer || (a.gezählt > a.nummer && std::strcmp(a.art, "einmal") == 0)) {
        return false;
    }
    if (!a.gemeldet) {
        a.gemeldet = true;
        (void)(echter<ssize_t (*)(int, const void*, size_t)>("write")(STDOUT_FILENO, "!", 1) == 1);
    }
    errno = a.fehler;
    return true;
}

bool erstHalb() {
    const Auftrag& a = auftrag();
    return a.gezählt == a.nummer && std::strcmp(a.art, "halb") == 0;
}

int öffne(const char* name, const char* pfad, int art, va_list rest) {
    const bool neu = (art & O_CREAT) != 0;
    const unsigned rechte = neu ? va_arg(rest, unsigned) : 0;
    // Reading may fail too, but what cannot be read is not written.
    if ((art & O_ACCMODE) != O_RDONLY && trifft("open", pfad)) {
        return -1;
    }
    return echter<int (*)(const char*, int, ...)>(name)(pfad, art, rechte);
}

} // namespace

extern "C" {

int open(const char* pfad, int art, ...) {
    va_list rest;
    va_start(rest, art);
    const int nummer = öffne("open", pfad, art, rest);
    va_end(rest);
    return nummer;
}

int open64(const char* pfad, int art, ...) {
    va_list rest;
    va_start(rest, art);
    const int nummer = öffne("open64", pfad, art, rest);
    va_end(rest);
    return nummer;
}

ssize_t write(int nummer, const void* bytes, size_t anzahl) {
    const auto ruf = echter<ssize_t (*)(int, const void*, size_t)>("write");
    if (!trifft("write", nummer)) {
        return ruf(nummer, bytes, anzahl);
    }
    return erstHalb() && anzahl > 1 ? ruf(nummer, bytes, anzahl / 2) : -1;
}

ssize_t pwrite64(int nummer, const void* bytes, size_t anzahl, off64_t ort) {
    const auto ruf = echter<ssize_t (*)(int, const void*, size_t, off64_t)>("pwrite64");
    if (!trifft("write", nummer)) {
        return ruf(nummer, bytes, anzahl, ort);
    }
    return erstHalb() && anzahl > 1 ? ruf(nummer, bytes, anzahl / 2, ort) : -1;
}

int fsync(int nummer) {
    return trifft("fsync", nummer) ? -1 : echter<int (*)(int)>("fsync")(nummer);
}

int fdatasync(int nummer) {
    return trifft("fsync", nummer) ? -1 : echter<int (*)(int)>("fdatasync")(nummer);
}

int ftruncate64(int nummer, off64_t länge) {
    return trifft("truncate", nummer) ? -1
                                      : echter<int (*)(int, off64_t)>("ftruncate64")(nummer, länge);
}

int close(int nummer) {
    const bool geschrieben = (fcntl(nummer, F_GETFL) & O_ACCMODE) != O_RDONLY;
    const bool scheitert = geschrieben && trifft("close", nummer);
    const int fehler = errno;
    const int stand = echter<int (*)(int)>("close")(nummer); // it is closed whatever it says
    if (scheitert) {
        errno = fehler;
        return -1;
    }
    return stand;
}

int rename(const char* alt, const char* neu) {
    return trifft("rename", neu) ? -1
                                 : echter<int (*)(const char*, const char*)>("rename")(alt, neu);
}

int link(const char* alt, const char* neu) {
    return trifft("link", neu) ? -1 : echter<int (*)(const char*, const char*)>("link")(alt, neu);
}

int unlink(const char* pfad) {
    return trifft("unlink", pfad) ? -1 : echter<int (*)(const char*)>("unlink")(pfad);
}

} // extern "C"
