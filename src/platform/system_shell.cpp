#include "platform/system_shell.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

namespace tarvel {

namespace {

/// Where the desktop decides, it takes every file and says nothing when it has no program for it.
/// Help files of this kind often have none.
bool hatBetrachter([[maybe_unused]] const QFileInfo& datei) {
#ifdef Q_OS_LINUX
    if (datei.suffix().compare(QStringLiteral("chm"), Qt::CaseInsensitive) != 0) {
        return true;
    }
    constexpr int Wartezeit = 2000;
    for (const QString& art :
         {QStringLiteral("application/vnd.ms-htmlhelp"), QStringLiteral("application/x-chm")}) {
        QProcess frage;
        frage.start(QStringLiteral("xdg-mime"),
                    {QStringLiteral("query"), QStringLiteral("default"), art});
        if (frage.waitForFinished(Wartezeit) &&
            !frage.readAllStandardOutput().trimmed().isEmpty()) {
            return true;
        }
    }
    return false;
#else
    return true;
#endif
}

} // namespace

bool SystemShell::openDocument(const QString& path) {
    const QFileInfo datei(path);
    return datei.exists() && hatBetrachter(datei) &&
           QDesktopServices::openUrl(QUrl::fromLocalFile(datei.absoluteFilePath()));
}

bool SystemShell::runProgram(const QString& program, const QString& document) {
    return starteProgramm(program, document);
}

} // namespace tarvel
