#include "platform/instanz.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#ifndef Q_OS_WIN
#include <unistd.h>
#endif

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

QString eigenerOrdner() {
#ifdef Q_OS_WIN
    return QDir::tempPath();
#else
    const QString ordner = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return ordner.isEmpty() ? QDir::tempPath() : ordner;
#endif
}

QLockFile::LockError sperre(QLockFile& datei) {
    datei.setStaleLockTime(0);
    if (datei.tryLock(0)) {
        return QLockFile::NoError;
    }
    // A crash can leave a lock file without its contents, and a computer can get a new name: such
    // a lock names no dead program, yet nobody holds the file. Removing fails while someone does.
    if (datei.error() == QLockFile::LockFailedError && datei.removeStaleLockFile() &&
        datei.tryLock(0)) {
        return QLockFile::NoError;
    }
    return datei.error();
}

} // namespace

QString Instanz::eigenerPfad(const QString& ordner, const QString& endung) {
    const QFileInfo info(ordner);
    const QString echter = info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
    const QByteArray kennung =
        QCryptographicHash::hash(echter.toUtf8(), QCryptographicHash::Sha1).toHex().first(16);
    return eigenerOrdner() + "/tarvel-"_L1 + QLatin1StringView(kennung) + endung;
}

QString Instanz::verbindungsname(const QString& ordner) {
    QString pfad = eigenerPfad(ordner, u".socket"_s);
#ifdef Q_OS_WIN
    pfad = QFileInfo(pfad).fileName();
#endif
    return pfad;
}

bool Instanz::istEigene([[maybe_unused]] const QString& verbindungsname) {
#ifdef Q_OS_WIN
    return true;
#else
    return QFileInfo(verbindungsname).ownerId() == ::geteuid();
#endif
}

Instanz::Instanz(const QString& ordner)
    : sperre_(std::make_unique<QLockFile>(QDir(ordner).filePath(u"Index.lock"_s))) {
    QLockFile::LockError fehler = sperre(*sperre_);
    if (fehler == QLockFile::PermissionError || fehler == QLockFile::UnknownError) {
        sperre_ = std::make_unique<QLockFile>(eigenerPfad(ordner, u".lock"_s));
        fehler = sperre(*sperre_);
    }
    erste_ = fehler != QLockFile::LockFailedError;
}

} // namespace tarvel
