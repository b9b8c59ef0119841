#include "results/jetdatei.h"

#include "results/tabelleneinfuhr.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace tarvel {

using namespace Qt::StringLiterals;

bool istJetDatei(QByteArrayView anfang) {
    constexpr qsizetype Zeichenfolge = 4; // behind four bytes of the page
    const QByteArrayView name =
        anfang.size() > Zeichenfolge ? anfang.sliced(Zeichenfolge) : QByteArrayView();
    return name.startsWith("Standard Jet DB") || name.startsWith("Standard ACE DB");
}

bool istJetDatei(const QString& pfad) {
    constexpr qint64 Anfang = 32;
    QFile datei(pfad);
    return QFileInfo(pfad).isFile() && datei.open(QIODevice::ReadOnly) &&
           istJetDatei(QByteArrayView(datei.read(Anfang)));
}

Jetinhalt liesJetDatei(const QString& pfad, const std::function<bool()>& weiter) {
    using enum Jetinhalt::Ausgang;
    const QString programm = QStandardPaths::findExecutable(u"mdb-export"_s);
    if (programm.isEmpty()) {
        return {};
    }
    QProcess prozess;
    // A path from the root is never taken for an option.
    prozess.start(programm, {u"-D"_s, u"%Y-%m-%d"_s, u"-T"_s, u"%Y-%m-%d"_s,
                             QFileInfo(pfad).absoluteFilePath(), u"Ergebnisse"_s});
    prozess.closeWriteChannel();
    QByteArray tabelle;
    QByteArray fehler;
    constexpr int Takt = 100;
    constexpr qsizetype LängsteMeldung = 500;
    bool fertig = false;
    while (!fertig) {
        fertig = prozess.waitForFinished(Takt) || prozess.state() == QProcess::NotRunning;
        tabelle += prozess.readAllStandardOutput();
        fehler += prozess.readAllStandardError().left(LängsteMeldung);
        const bool abgebrochen = !weiter();
        if (abgebrochen || tabelle.size() > GrößteTabelle) {
            prozess.kill();
            prozess.waitForFinished();
            return {abgebrochen ? Abgebrochen : Gescheitert, {}, {}};
        }
    }
    const bool gut = prozess.error() == QProcess::UnknownError ||
                     prozess.error() == QProcess::Timedout; // of waiting alone
    if (!gut || prozess.exitStatus() != QProcess::NormalExit || prozess.exitCode() != 0 ||
        tabelle.isEmpty()) {
        return {Gescheitert, {}, QString::fromLocal8Bit(fehler.left(LängsteMeldung)).simplified()};
    }
    return {Gelesen, std::move(tabelle), {}};
}

} // namespace tarvel
