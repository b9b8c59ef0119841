#include "results/begleitdateien.h"

#include <QFile>
#include <QtEndian>

#include <filesystem>
#include <string>

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

} // namespace

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

QString verweigerterBegleiter(const QString& pfad) {
    for (const QString& endung : {u"-journal"_s, u"-wal"_s, u"-shm"_s}) {
        if (istVerweigert(pfad + endung)) {
            return pfad + endung;
        }
    }
    return pfad + u"-journal"_s; // gone meanwhile
}

} // namespace tarvel
