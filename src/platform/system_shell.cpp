#include "platform/system_shell.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace tarvel {

bool SystemShell::openDocument(const QString& path) {
    const QFileInfo datei(path);
    return datei.exists() &&
           QDesktopServices::openUrl(QUrl::fromLocalFile(datei.absoluteFilePath()));
}

bool SystemShell::runProgram(const QString& program, const QString& document) {
    return starteProgramm(program, document);
}

} // namespace tarvel
