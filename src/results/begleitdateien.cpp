#include "results/begleitdateien.h"

#include <sqlite3.h>

#include <QFile>
#include <QtEndian>

#include <filesystem>
#include <string>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <cstdarg>
#endif

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// Whether a journal ends in the name of the file that ties it to those of other databases. Ours
/// never do: nothing is attached to a results file.
bool nenntWeitereDatei(const QString& journal) {
    constexpr QByteArrayView kennung("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7", 8);
    constexpr qint64 schluss = 16; // length of the name, its sum, the mark
    QFile datei(journal);
    if (!datei.open(QIODevice::ReadOnly) || datei.size() < schluss) {
        return false;
    }
    datei.seek(datei.size() - schluss);
    const QByteArray ende = datei.read(schluss);
    return ende.endsWith(kennung) && qFromBigEndian<quint32>(ende.constData()) != 0;
}

bool istVerweigert(const QString& begleiter) {
    using std::filesystem::file_type;
    std::error_code fehler;
    const file_type art =
        std::filesystem::symlink_status(std::filesystem::path(begleiter.toStdU16String()), fehler)
            .type();
    if (art == file_type::not_found) {
        return false;
    }
    return art != file_type::regular ||
           (begleiter.endsWith(u"-journal") && nenntWeitereDatei(begleiter));
}

sqlite3_vfs* systemzugang() {
    return sqlite3_vfs_find(nullptr);
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
    sqlite3_vfs* const system = systemzugang();
    return system->xOpen(system, name, datei, art, wie);
}

#ifdef Q_OS_UNIX
using Systemruf = int (*)(int, int, ...);
Systemruf systemFcntl = nullptr;

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
#endif

void unterscheideFehlendeSperren(sqlite3_vfs* zugang) {
#ifdef Q_OS_UNIX
    if (zugang->iVersion < 3 || zugang->xGetSystemCall == nullptr) {
        return;
    }
    systemFcntl = reinterpret_cast<Systemruf>(zugang->xGetSystemCall(zugang, "fcntl"));
    if (systemFcntl != nullptr) {
        zugang->xSetSystemCall(zugang, "fcntl",
                               reinterpret_cast<sqlite3_syscall_ptr>(fcntlMitGrund));
    }
#else
    (void)zugang;
#endif
}

} // namespace

const char* geschützterZugang() {
    static sqlite3_vfs zugang = [] {
        sqlite3_initialize();
        sqlite3_vfs neu = *systemzugang();
        unterscheideFehlendeSperren(systemzugang());
        neu.zName = "tarvel";
        neu.pNext = nullptr;
        neu.xOpen = öffne;
        return neu;
    }();
    [[maybe_unused]] static const int angemeldet = sqlite3_vfs_register(&zugang, 0);
    return zugang.zName;
}

QString verweigerterBegleiter(const QString& pfad) {
    for (const QString& endung : {u"-journal"_s, u"-wal"_s, u"-shm"_s}) {
        if (istVerweigert(pfad + endung)) {
            return pfad + endung;
        }
    }
    return pfad + u"-journal"_s; // gone meanwhile
}

} // namespace tarvel
