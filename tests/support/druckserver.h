#pragma once

#include "platform/cupsdrucker.h"

#include <QByteArrayList>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <chrono>
#include <optional>

#ifdef Q_OS_LINUX
#include <csignal>
#include <sys/prctl.h>
#endif

namespace tarvel {

/// A print server of the test's own: configuration, socket and spool lie in a temporary folder, and
/// what its printers would print is put down there as files. While it lives, the print library of
/// this process knows no other server. That library looks for the person's home folder only once in
/// a process, so a program starts one server before it asks for any printer.
class Druckserver {
public:
    /// What came out of a printer.
    struct Ausdruck {
        QByteArray pdf;
        QString titel;
        QByteArray optionen; ///< "name=value" with blanks between
    };

    /// Path of the server's program; empty when it is not installed.
    static QString programm() {
        const QString name = QStringLiteral("cupsd");
        const QString imPfad = QStandardPaths::findExecutable(name);
        return imPfad.isEmpty()
                   ? QStandardPaths::findExecutable(
                         name, {QStringLiteral("/usr/sbin"), QStringLiteral("/usr/local/sbin")})
                   : imPfad;
    }

    /// Starts the server with the default printer "Imkerei", the printer "Lager" and the printer
    /// "Gesperrt", which takes no jobs.
    Druckserver() {
        for (const char* name : {"etc", "spool", "run", "cache", "tmp", "home/.cups", "aus",
                                 "bin/backend", "bin/filter", "bin/notifier"}) {
            QDir(ordner_.path()).mkpath(QLatin1String(name));
        }
        schreibeEinrichtung();
        qputenv("CUPS_SERVER", pfad("run/socket"));
        qputenv("HOME", pfad("home"));
        qunsetenv("LPDEST");
        qunsetenv("PRINTER");
        starte();
    }

    ~Druckserver() {
        server_.terminate();
        if (!server_.waitForFinished(5000)) {
            server_.kill();
            server_.waitForFinished(5000);
        }
        qunsetenv("CUPS_SERVER");
        qputenv("HOME", zuhause_);
    }

    Druckserver(const Druckserver&) = delete;
    Druckserver& operator=(const Druckserver&) = delete;

    /// Waits until the server answers; false when it does not, see protokoll().
    [[nodiscard]] bool bereit() {
        return warte([] { return !cupsDrucker().isEmpty(); });
    }

    /// What the server said about itself and its jobs.
    [[nodiscard]] QByteArray protokoll() {
        return server_.readAllStandardError() + lies("fehler.log");
    }

    /// File with the person's saved choices and options, as the print library keeps it.
    [[nodiscard]] QByteArray wahl() const { return lies("home/.cups/lpoptions"); }
    void setzeWahl(const QByteArray& inhalt) { schreibe("home/.cups/lpoptions", inhalt); }

    /// Takes the next sheet out of a printer; waits for it a while.
    [[nodiscard]] std::optional<Ausdruck> hole(const QByteArray& drucker) {
        const QByteArray blatt = "aus/" + drucker;
        if (!warte([&] { return QFile::exists(QFile::decodeName(pfad(blatt + ".pdf"))); })) {
            return std::nullopt;
        }
        const QByteArrayList zettel = lies(blatt + ".zettel").split('\n');
        Ausdruck ausdruck{lies(blatt + ".pdf"), QString::fromUtf8(zettel.value(0)),
                          zettel.value(1)};
        QFile::remove(QFile::decodeName(pfad(blatt + ".pdf")));
        return ausdruck;
    }

private:
    [[nodiscard]] QByteArray pfad(const QByteArray& name) const {
        return QFile::encodeName(ordner_.path()) + '/' + name;
    }
    [[nodiscard]] QByteArray lies(const QByteArray& name) const {
        QFile datei(QFile::decodeName(pfad(name)));
        return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray();
    }
    void schreibe(const QByteArray& name, const QByteArray& inhalt) {
        QFile datei(QFile::decodeName(pfad(name)));
        if (datei.open(QIODevice::WriteOnly)) {
            datei.write(inhalt);
        }
    }

    void schreibeEinrichtung() {
        // Everything that would lie in the system lies in the folder. The folder belongs to the
        // one who runs the test alone, so the device below runs as that person too (its mode).
        schreibe("dateien.conf",
                 "ServerRoot " + pfad("etc") + "\nServerBin " + pfad("bin") + "\nRequestRoot " +
                     pfad("spool") + "\nStateDir " + pfad("run") + "\nCacheDir " + pfad("cache") +
                     "\nTempDir " + pfad("tmp") + "\nErrorLog " + pfad("fehler.log") +
                     "\nPrintcap " + pfad("run/printcap") + "\nDataDir /usr/share/cups\n");
        schreibe("server.conf", "Listen " + pfad("run/socket") +
                                    "\nLogLevel info\nPreserveJobFiles Yes\n"
                                    "DefaultAuthType None\nBrowsing Off\nWebInterface No\n"
                                    "<Location />\nOrder allow,deny\nAllow all\n</Location>\n"
                                    "<Policy default>\n<Limit All>\nOrder allow,deny\nAllow all\n"
                                    "</Limit>\n</Policy>\n");
        // A queue without a driver: the device gets the bytes that the program sent.
        const auto drucker = [this](const QByteArray& art, const QByteArray& name,
                                    const QByteArray& annahme) {
            return "<" + art + " " + name + ">\nDeviceURI ablage:" + pfad("aus/" + name) +
                   "\nState Idle\nAccepting " + annahme + "\n</" + art + ">\n";
        };
        schreibe("etc/printers.conf", drucker("DefaultPrinter", "Imkerei", "Yes") +
                                          drucker("Printer", "Lager", "Yes") +
                                          drucker("Printer", "Gesperrt", "No"));
        QFile::link(QStringLiteral("/usr/lib/cups/daemon"), QFile::decodeName(pfad("bin/daemon")));
        // Arguments: job, user, title, copies, options, file.
        schreibe("bin/backend/ablage", "#!/bin/sh\n"
                                       "[ $# -ge 6 ] || exit 0\n"
                                       "ziel=\"${DEVICE_URI#ablage:}\"\n"
                                       "printf '%s\\n' \"$3\" \"copies=$4 $5\" > \"$ziel.zettel\"\n"
                                       "cat \"$6\" > \"$ziel.neu\"\n"
                                       "mv \"$ziel.neu\" \"$ziel.pdf\"\n");
        QFile::setPermissions(QFile::decodeName(pfad("bin/backend/ablage")),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void starte() {
#ifdef Q_OS_LINUX
        // A test that crashes leaves no server behind.
        server_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
#endif
        server_.start(programm(), {QStringLiteral("-f"), QStringLiteral("-c"),
                                   QFile::decodeName(pfad("server.conf")), QStringLiteral("-s"),
                                   QFile::decodeName(pfad("dateien.conf"))});
        server_.waitForStarted();
    }

    /// Until @p erfüllt holds, the server ends or the time is over. Between two looks it waits for
    /// the end of the server.
    template <typename Bedingung>
    bool warte(Bedingung erfüllt) {
        const QDeadlineTimer frist(std::chrono::seconds(30));
        while (!erfüllt()) {
            if (frist.hasExpired() || server_.state() != QProcess::Running ||
                server_.waitForFinished(20)) {
                return false;
            }
        }
        return true;
    }

    QTemporaryDir ordner_;
    QByteArray zuhause_ = qgetenv("HOME");
    QProcess server_;
};

} // namespace tarvel
