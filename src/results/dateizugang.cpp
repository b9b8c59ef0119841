#include "results/dateizugang.h"

#include "platform/systemrufe.h"
#include "results/begleitdateien.h"

#include <sqlite3.h>

#include <QString>

#include <list>
#include <mutex>

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
        if (!warUnterbrochen(grund)) {
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

void fragNachGründen(sqlite3_vfs* zugang) {
    if (zugang->iVersion < 3 || zugang->xGetSystemCall == nullptr) {
        return;
    }
    for (const Ersatzruf& ruf : ersatzrufe(merke)) {
        *ruf.bisher = zugang->xGetSystemCall(zugang, ruf.name);
        if (*ruf.bisher != nullptr) {
            zugang->xSetSystemCall(zugang, ruf.name, ruf.neu);
        }
    }
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
