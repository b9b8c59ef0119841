#pragma once

#include "faults/fassungen.h"
#include "results/datenbankfehler.h"

#include <QElapsedTimer>
#include <QString>

#include <csignal>
#include <cstdlib>
#include <optional>
#include <string>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarvel {

/// The helper program at work, with a pipe that it reports its steps through.
class Opferprozess {
public:
    /// @p störung what stoerung.cpp takes; empty for none.
    Opferprozess(const std::string& arbeit, const QString& ordner, int schritt, int anzahl,
                 const std::string& störung = {}) {
        const std::string pfad = ordner.toStdString();
        const std::string erster = std::to_string(schritt);
        const std::string zahl = std::to_string(anzahl);
        int meldung[2];
        int halt[2];
        if (pipe2(meldung, O_CLOEXEC) != 0 || pipe2(halt, O_CLOEXEC) != 0) {
            return;
        }
        pid_ = fork();
        if (pid_ == 0) {
            dup2(meldung[1], STDOUT_FILENO);
            dup2(halt[0], STDIN_FILENO);
            if (!störung.empty()) {
                setenv("LD_PRELOAD", FAULTS_STOERUNG, 1);
                setenv("STOERUNG", störung.c_str(), 1);
                dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO); // it will complain
            }
            execl(FAULTS_OPFER, FAULTS_OPFER, arbeit.c_str(), pfad.c_str(), erster.c_str(),
                  zahl.c_str(), nullptr);
            _exit(127);
        }
        close(meldung[1]);
        close(halt[0]);
        meldung_ = meldung[0];
        halt_ = halt[1];
    }
    ~Opferprozess() {
        if (pid_ > 0) {
            töte();
        }
        close(meldung_);
    }
    Opferprozess(const Opferprozess&) = delete;
    Opferprozess& operator=(const Opferprozess&) = delete;

    /// Waits until it has reported @p zahl times in all. False when it ended before.
    bool warteAuf(int zahl) {
        char zeichen = 0;
        while (gemeldet_ < zahl && read(meldung_, &zeichen, 1) == 1) {
            ++gemeldet_;
        }
        return gemeldet_ >= zahl;
    }
    /// Steps that it has begun, as far as they were waited for.
    [[nodiscard]] int gemeldet() const { return gemeldet_; }

    /// Kills it and counts the steps that it had begun. False when it had ended by itself.
    bool töte() {
        kill(pid_, SIGKILL);
        const int stand = beende();
        return WIFSIGNALED(stand) && WTERMSIG(stand) == SIGKILL;
    }
    /// Tells it to let go of what it holds and waits for its end. True when all went well.
    bool entlasse() {
        close(halt_);
        halt_ = -1;
        const int stand = beende();
        ende_ = WIFEXITED(stand) ? WEXITSTATUS(stand) : -1;
        return ende_ == EXIT_SUCCESS;
    }
    /// Why a results file was not written, as the person is told; after entlasse().
    [[nodiscard]] std::optional<Datenbankgrund> grund() const {
        return ende_ >= fassung::ErsterGrund
                   ? std::optional(Datenbankgrund(ende_ - fassung::ErsterGrund))
                   : std::nullopt;
    }

private:
    int beende() {
        char zeichen = 0;
        while (read(meldung_, &zeichen, 1) == 1) {
            ++gemeldet_;
        }
        int stand = -1;
        waitpid(pid_, &stand, 0);
        pid_ = -1;
        if (halt_ >= 0) {
            close(halt_);
            halt_ = -1;
        }
        return stand;
    }

    pid_t pid_ = -1;
    int meldung_ = -1;
    int halt_ = -1;
    int gemeldet_ = 0;
    int ende_ = -1;
};

} // namespace tarvel
