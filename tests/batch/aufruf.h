#pragma once

#include "support/testordner.h"

#include <QDir>
#include <QProcess>

#include <gmock/gmock.h>

#include <algorithm>
#include <string>

namespace tarvel {

/// How a call of the program ended.
struct Lauf {
    int status = -1;
    std::string ausgabe;
    std::string fehler;

    [[nodiscard]] QList<QByteArray> zeilen() const {
        return QByteArray::fromStdString(ausgabe).split('\n');
    }
    [[nodiscard]] auto fehlerzahl() const { return std::count(fehler.begin(), fehler.end(), '\n'); }
};

/// Tests that call the program itself, in a folder of their own and without a display.
class Batchtest : public testing::Test {
protected:
    Testordner ordner_;

    /// Calls the program in the folder; arguments are separated by blanks.
    Lauf rufe(const QString& argumente, const QByteArray& eingabe = {},
              const QString& eingabedatei = {}, const QString& ausgabedatei = {}) const {
        QProcess programm;
        if (!eingabedatei.isEmpty()) {
            programm.setStandardInputFile(eingabedatei);
        }
        if (!ausgabedatei.isEmpty()) {
            programm.setStandardOutputFile(ausgabedatei);
        }
        programm.setWorkingDirectory(ordner_.path());
        QProcessEnvironment umgebung = QProcessEnvironment::systemEnvironment();
        for (const char* anzeige :
             {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_RUNTIME_DIR"}) {
            umgebung.remove(QString::fromLatin1(anzeige));
        }
        umgebung.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
        programm.setProcessEnvironment(umgebung);
        programm.start(QStringLiteral(TARVEL_BATCH),
                       argumente.split(QChar(u' '), Qt::SkipEmptyParts));
        programm.write(eingabe);
        programm.closeWriteChannel();
        constexpr int einigeMinuten = 300'000;
        if (!programm.waitForFinished(einigeMinuten) ||
            programm.exitStatus() != QProcess::NormalExit) {
            return {};
        }
        return {programm.exitCode(), programm.readAllStandardOutput().toStdString(),
                programm.readAllStandardError().toStdString()};
    }

    [[nodiscard]] QString pfad(const QString& name) const { return ordner_.filePath(name); }
    [[nodiscard]] QStringList dateien() const {
        return QDir(ordner_.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    void schreibe(const QString& name, const QByteArray& inhalt) const {
        ordner_.schreibe(name, inhalt);
    }
    [[nodiscard]] std::string text(const QString& name) const { return lies(name).toStdString(); }
    [[nodiscard]] QByteArray lies(const QString& name) const { return ordner_.lies(name); }
};

} // namespace tarvel
