#include "platform/shell.h"

#include <QFileInfo>
#include <QProcess>

namespace tarvel {

bool starteProgramm(const QString& program, const QString& document) {
    if (program.isEmpty()) {
        return false;
    }
    QStringList argumente;
    if (!document.isEmpty()) {
        argumente += QFileInfo(document).absoluteFilePath();
    }
    return QProcess::startDetached(program, argumente);
}

} // namespace tarvel
