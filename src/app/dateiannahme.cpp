#include "app/dateiannahme.h"

#include "platform/instanz.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>
#include <QTimer>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

// The one that was started sends its files as UTF-8, each ended by a NUL, and one more NUL; it gets
// an answer, and says that it has seen it. Only then are the files opened: whoever gave up waiting
// has told the user that nothing came of it.
constexpr QByteArrayView Schluss("\0\0", 2);
constexpr char Angenommen = '+';
constexpr char Abgelehnt = '-';
constexpr char Los = '!';
constexpr qsizetype GrößteSendung = qsizetype{1} * 1024 * 1024;
constexpr std::chrono::seconds Höchstdauer{10};

QStringList dateien(const QByteArray& sendung) {
    QStringList liste;
    for (const QByteArray& pfad : sendung.split('\0')) {
        if (const QString datei = QString::fromUtf8(pfad); QDir::isAbsolutePath(datei)) {
            liste << datei;
        }
    }
    return liste;
}

} // namespace

Dateiannahme::Dateiannahme(const QString& ordner, std::function<bool()> bereit,
                           std::function<void(const QStringList&)> nimm)
    : bereit_(std::move(bereit))
    , nimm_(std::move(nimm)) {
    const QString name = Instanz::verbindungsname(ordner);
    QObject::connect(&server_, &QLocalServer::newConnection, &server_,
                     [this] { nimmVerbindungAn(); });
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    QLocalServer::removeServer(name); // of a program that crashed: the lock is ours
    server_.listen(name);
}

void Dateiannahme::nimmVerbindungAn() {
    while (QLocalSocket* verbindung = server_.nextPendingConnection()) {
        verbindung->setReadBufferSize(GrößteSendung);
        QTimer::singleShot(Höchstdauer, verbindung, &QLocalSocket::abort);
        QObject::connect(verbindung, &QLocalSocket::disconnected, verbindung,
                         &QObject::deleteLater);
        QObject::connect(verbindung, &QLocalSocket::readyRead, &server_,
                         [this, verbindung, angenommen = QStringList()]() mutable {
                             if (!angenommen.isEmpty()) {
                                 const bool los = verbindung->read(1) == QByteArrayView(&Los, 1);
                                 const QStringList zuÖffnen = std::exchange(angenommen, {});
                                 verbindung->disconnectFromServer();
                                 if (los) {
                                     QTimer::singleShot(0, &server_,
                                                        [this, zuÖffnen] { nimm_(zuÖffnen); });
                                 }
                                 return;
                             }
                             const QByteArray sendung = verbindung->peek(GrößteSendung);
                             const qsizetype ende = sendung.indexOf(Schluss);
                             if (ende < 0) {
                                 if (sendung.size() >= GrößteSendung) {
                                     verbindung->abort();
                                 }
                                 return;
                             }
                             verbindung->skip(ende + Schluss.size());
                             if (bereit_()) {
                                 angenommen = dateien(sendung.first(ende));
                             }
                             const char antwort = angenommen.isEmpty() ? Abgelehnt : Angenommen;
                             verbindung->write(&antwort, 1);
                         });
    }
}

bool Dateiannahme::übergib(const QString& ordner, const QStringList& dateien,
                           std::chrono::milliseconds geduld) {
    QByteArray sendung;
    for (const QString& datei : dateien) {
        sendung += datei.toUtf8() + '\0';
    }
    sendung += '\0';
    const QString name = Instanz::verbindungsname(ordner);
    if (dateien.isEmpty() || sendung.size() >= GrößteSendung || !Instanz::istEigene(name)) {
        return false;
    }
    const QDeadlineTimer ende(geduld);
    const auto rest = [&ende] { return static_cast<int>(ende.remainingTime()); };
    QLocalSocket verbindung;
    verbindung.connectToServer(name);
    if (!verbindung.waitForConnected(rest())) {
        return false;
    }
    verbindung.write(sendung);
    while (verbindung.bytesAvailable() == 0) {
        if (ende.hasExpired() || !verbindung.waitForReadyRead(rest())) {
            return false;
        }
    }
    if (verbindung.read(1) != QByteArrayView(&Angenommen, 1)) {
        return false;
    }
    verbindung.write(&Los, 1);
    return verbindung.waitForBytesWritten(rest());
}

} // namespace tarvel
