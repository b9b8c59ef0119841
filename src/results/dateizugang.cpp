#include "results/dateizugang.h"

#include "results/begleitdateien.h"

#include <sqlite3.h>

#include <QString>

#include <list>
#include <mutex>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <cstdarg>
#include <fcntl.h>
#endif

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

thread_local int erster = 0;

void merke(int fehler) {
    if (erster == 0) {
        erster = fehler;
    }
}

sqlite3_vfs* systemzugang() {
    return sqlite3_vfs_find(nullptr);
}

#ifdef Q_OS_UNIX
constexpr int Unterbrochen = EINTR;
#else
constexpr int Unterbrochen = -1; // happens to nobody
#endif

/// Passes on how a call ended, and keeps why the system failed it. One that a signal interrupted is
/// made again, as the engine does with some of them only.
template <typename Ruf>
int gemerkt(Ruf&& ruf) {
    sqlite3_vfs* const system = systemzugang();
    for (;;) {
        const int stand = ruf();
        if ((stand & 0xFF) != SQLITE_IOERR || stand == SQLITE_IOERR_SHORT_READ) {
            return stand;
        }
        const int grund = system->xGetLastError(system, 0, nullptr);
        if (grund != Unterbrochen) {
            merke(grund);
            return stand;
        }
    }
}

/// The calls for an open file, with those of the system behind them. The engine knows the first
/// part only.
struct Dateirufe {
    sqlite3_io_methods rufe;
    const sqlite3_io_methods* system;
};

const sqlite3_io_methods& system(sqlite3_file* datei) {
    return *reinterpret_cast<const Dateirufe*>(datei->pMethods)->system;
}

int lies(sqlite3_file* datei, void* ziel, int anzahl, sqlite3_int64 ort) {
    return gemerkt([&] { return system(datei).xRead(datei, ziel, anzahl, ort); });
}

int schreibe(sqlite3_file* datei, const void* bytes, int anzahl, sqlite3_int64 ort) {
    return gemerkt([&] { return system(datei).xWrite(datei, bytes, anzahl, ort); });
}

int kürze(sqlite3_file* datei, sqlite3_int64 länge) {
    return gemerkt([&] { return system(datei).xTruncate(datei, länge); });
}

int bringeAufDieScheibe(sqlite3_file* datei, int wie) {
    return gemerkt([&] { return system(datei).xSync(datei, wie); });
}

/// A system has few kinds of calls, one for each kind of lock.
const sqlite3_io_methods* gemerkteRufe(const sqlite3_io_methods* von) {
    static std::mutex sperre;
    static std::list<Dateirufe> arten;
    const std::lock_guard wache(sperre);
    for (const Dateirufe& art : arten) {
        if (art.system == von) {
            return &art.rufe;
        }
    }
    Dateirufe& neu = arten.emplace_back(Dateirufe{*von, von});
    neu.rufe.xRead = lies;
    neu.rufe.xWrite = schreibe;
    neu.rufe.xTruncate = kürze;
    neu.rufe.xSync = bringeAufDieScheibe;
    return &neu.rufe;
}

/// What the engine calls for every file that it opens, also when it finds a journal and is about to
/// undo what a crash has left.
int öffne(sqlite3_vfs* /*zugang*/, const char* name, sqlite3_file* datei, int art, int* wie) {
    const auto verweigert = [&] {
        if ((art & SQLITE_OPEN_SUPER_JOURNAL) != 0) {
            return true;
        }
        const QString begleiter = QString::fromUtf8(name);
        if ((art & SQLITE_OPEN_WAL) != 0) { // its index is opened without asking
            return istVerweigert(begleiter) || istVerweigert(begleiter.chopped(4) + u"-shm"_s);
        }
        return (art & SQLITE_OPEN_MAIN_JOURNAL) != 0 && istVerweigert(begleiter);
    };
    if (name != nullptr && verweigert()) {
        datei->pMethods = nullptr;
        return SQLITE_AUTH;
    }
    sqlite3_vfs* const zugang = systemzugang();
    const int stand = zugang->xOpen(zugang, name, datei, art, wie);
    if (datei->pMethods != nullptr) {
        datei->pMethods = gemerkteRufe(datei->pMethods);
    }
    return stand;
}

int entferne(sqlite3_vfs* /*zugang*/, const char* name, int bleibend) {
    sqlite3_vfs* const zugang = systemzugang();
    return gemerkt([&] { return zugang->xDelete(zugang, name, bleibend); });
}

#ifdef Q_OS_UNIX
using Fcntl = int (*)(int, int, ...);
Fcntl systemFcntl = nullptr;
using Open = int (*)(const char*, int, int);
Open systemOpen = nullptr;

/// The engine takes a system without locks for another program that holds one.
int fcntlMitGrund(int datei, int was, ...) {
    va_list rest;
    va_start(rest, was);
    void* wert = va_arg(rest, void*);
    va_end(rest);
    const int ergebnis = systemFcntl(datei, was, wert);
    if (ergebnis < 0 && errno == ENOLCK) {
        errno = EIO;
    }
    return ergebnis;
}

/// The engine tries to read what it could not make, which fails for another reason.
int openMitGrund(const char* pfad, int art, int rechte) {
    const int ergebnis = systemOpen(pfad, art, rechte);
    if (ergebnis < 0 && (art & O_CREAT) != 0 && errno != EINTR) {
        merke(errno);
    }
    return ergebnis;
}
#endif

void fragNachGründen(sqlite3_vfs* zugang) {
#ifdef Q_OS_UNIX
    if (zugang->iVersion < 3 || zugang->xGetSystemCall == nullptr) {
        return;
    }
    const auto nimm = [zugang](const char* ruf, auto& bisher, auto neuer) {
        bisher =
            reinterpret_cast<std::decay_t<decltype(bisher)>>(zugang->xGetSystemCall(zugang, ruf));
        if (bisher != nullptr) {
            zugang->xSetSystemCall(zugang, ruf, reinterpret_cast<sqlite3_syscall_ptr>(neuer));
        }
    };
    nimm("fcntl", systemFcntl, fcntlMitGrund);
    nimm("open", systemOpen, openMitGrund);
#else
    (void)zugang;
#endif
}

} // namespace

const char* geschützterZugang() {
    static sqlite3_vfs zugang = [] {
        sqlite3_initialize();
        sqlite3_vfs neu = *systemzugang();
        fragNachGründen(systemzugang());
        neu.zName = "tarvel";
        neu.pNext = nullptr;
        neu.xOpen = öffne;
        neu.xDelete = entferne;
        return neu;
    }();
    [[maybe_unused]] static const int angemeldet = sqlite3_vfs_register(&zugang, 0);
    return zugang.zName;
}

int systemfehler() {
    return erster;
}

void vergissSystemfehler() {
    erster = 0;
}

} // namespace tarvel
