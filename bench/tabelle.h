#pragma once

#include <cstdio>
#include <optional>
#include <string>

#if __has_include(<sys/resource.h>)
#include <sys/resource.h>
#endif

/// Most memory that the program has had so far, in MiB; 0 where the system does not say.
inline double spitzenspeicher() {
#ifdef RUSAGE_SELF
    rusage verbrauch{};
    getrusage(RUSAGE_SELF, &verbrauch);
    return static_cast<double>(verbrauch.ru_maxrss) / 1024.0;
#else
    return 0;
#endif
}

/// What a figure is to be at most: a multiple of the limit that was measured beside it, or a figure
/// of its own.
struct Ziel {
    std::optional<double> verhältnis = {};
    std::optional<double> höchstens = {};
};

/// A line of the table that bench/run prints: which figure, what was measured, ours, the limit of
/// the same run (where there is one), their ratio, the aim, and whether it is met.
inline void tabellenzeile(const std::string& nummer, const std::string& was, double wir,
                          std::optional<double> grenze, const Ziel& ziel, const char* einheit) {
    const auto zahl = [](double wert, int stellen) {
        char text[32];
        std::snprintf(text, sizeof text, "%.*f", stellen, wert);
        return std::string(text);
    };
    const auto wert = [&](double w) { return zahl(w, w < 10 ? 2 : w < 100 ? 1 : 0); };
    std::string aim;
    bool erfüllt = true;
    if (ziel.verhältnis && grenze) {
        aim = zahl(*ziel.verhältnis, 2) + " x";
        erfüllt = wir <= *ziel.verhältnis * *grenze;
    }
    if (ziel.höchstens) {
        aim += (aim.empty() ? "" : ", ") + wert(*ziel.höchstens) + ' ' + einheit;
        erfüllt = erfüllt && wir <= *ziel.höchstens;
    }
    std::printf("| %-2s | %-56s | %9s | %9s | %5s | %-9s | %-6s |\n", nummer.c_str(), was.c_str(),
                (wert(wir) + ' ' + einheit).c_str(),
                grenze ? (wert(*grenze) + ' ' + einheit).c_str() : "",
                grenze ? zahl(wir / *grenze, 2).c_str() : "", aim.c_str(),
                aim.empty() ? ""
                : erfüllt   ? "met"
                            : "MISSED");
    std::fflush(stdout);
}
