// process_bench ROUNDS ROW WHAT RATIO MIB COMMAND… -- COMMAND…: runs two commands in turn and
// prints the median wall time of the whole process of the first beside that of the second as a line
// of the table, and its peak memory as another one. RATIO and MIB are the aims, 0 for none.

#include "tabelle.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Lauf {
    double millisekunden;
    double mebibyte;
};

std::optional<Lauf> laufe(const std::vector<char*>& befehl) {
    const auto beginn = std::chrono::steady_clock::now();
    const pid_t kind = fork();
    if (kind < 0) {
        return std::nullopt;
    }
    if (kind == 0) {
        const int nirgends = open("/dev/null", O_WRONLY);
        dup2(nirgends, STDERR_FILENO);
        execvp(befehl.front(), befehl.data());
        _exit(127);
    }
    int status = 0;
    rusage verbrauch{};
    if (wait4(kind, &status, 0, &verbrauch) < 0 || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        return std::nullopt;
    }
    const std::chrono::duration<double, std::milli> dauer =
        std::chrono::steady_clock::now() - beginn;
    return Lauf{dauer.count(), static_cast<double>(verbrauch.ru_maxrss) / 1024.0};
}

double median(std::vector<double> werte) {
    std::sort(werte.begin(), werte.end());
    return werte[werte.size() / 2];
}

} // namespace

int main(int argc, char** argv) {
    std::vector<char*> befehle[2];
    int welcher = 0;
    for (int i = 6; i < argc; ++i) {
        if (std::strcmp(argv[i], "--") == 0 && welcher == 0) {
            welcher = 1;
        } else {
            befehle[welcher].push_back(argv[i]);
        }
    }
    const int runden = argc > 1 ? std::atoi(argv[1]) : 0;
    if (runden < 1 || befehle[0].empty() || befehle[1].empty()) {
        std::fputs("usage: process_bench ROUNDS ROW WHAT RATIO MIB COMMAND... -- COMMAND...\n",
                   stderr);
        return 2;
    }
    std::vector<double> zeit[2];
    std::vector<double> speicher[2];
    for (auto& befehl : befehle) {
        befehl.push_back(nullptr);
        laufe(befehl); // warms the caches
    }
    for (int runde = 0; runde < runden; ++runde) {
        for (int i = 0; i < 2; ++i) {
            const std::optional<Lauf> lauf = laufe(befehle[i]);
            if (!lauf) {
                std::fprintf(stderr, "process_bench: %s failed\n", befehle[i].front());
                return 1;
            }
            zeit[i].push_back(lauf->millisekunden);
            speicher[i].push_back(lauf->mebibyte);
        }
    }
    const auto ziel = [&](int stelle) {
        const double wert = std::atof(argv[stelle]);
        return wert > 0 ? std::optional(wert) : std::nullopt;
    };
    const std::string was = argv[3];
    tabellenzeile(argv[2], was, median(zeit[0]), median(zeit[1]), {.verhältnis = ziel(4)}, "ms");
    tabellenzeile(argv[2], was + ": memory", median(speicher[0]), median(speicher[1]),
                  {.höchstens = ziel(5)}, "MiB");
    return 0;
}
