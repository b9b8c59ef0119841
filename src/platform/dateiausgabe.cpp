#include "platform/dateiausgabe.h"

#include <QSaveFile>

namespace tarvel {

std::optional<QString> schreibeDatei(const QString& pfad, const QByteArray& inhalt) {
    QSaveFile datei(pfad);
    if (datei.open(QIODevice::WriteOnly) && datei.write(inhalt) == inhalt.size() && datei.flush() &&
        datei.commit()) {
        return std::nullopt;
    }
    return datei.errorString();
}

} // namespace tarvel
