#include "platform/dateistand.h"

#include <QFile>

#include <sys/stat.h>

namespace tarvel {

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

} // namespace tarvel
