#include "platform/dateistand.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace tarvel {

bool Dateistand::frisch() const {
    constexpr qint64 einTick = 20;
    constexpr qint64 NanosekundenJeMillisekunde = 1'000'000;
    const qint64 alter =
        QDateTime::currentMSecsSinceEpoch() - angefasst / NanosekundenJeMillisekunde;
    return qAbs(alter) <= einTick;
}

#ifdef Q_OS_UNIX
std::optional<Dateistand> dateistand(const QString& pfad) {
    struct stat stand {};
    if (::stat(QFile::encodeName(pfad).constData(), &stand) != 0) {
        return std::nullopt;
    }
    const auto nanosekunden = [](const timespec& zeit) {
        return qint64{zeit.tv_sec} * 1'000'000'000 + zeit.tv_nsec;
    };
    return Dateistand{stand.st_dev, stand.st_ino, stand.st_size, nanosekunden(stand.st_mtim),
                      nanosekunden(stand.st_ctim)};
}
#else
std::optional<Dateistand> dateistand(const QString& pfad) {
    const QFileInfo info(pfad);
    if (!info.exists()) {
        return std::nullopt;
    }
    const qint64 geändert = info.lastModified().toMSecsSinceEpoch() * 1'000'000;
    return Dateistand{0, 0, info.size(), geändert, geändert};
}
#endif

} // namespace tarvel
