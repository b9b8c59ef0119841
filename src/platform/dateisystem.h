#pragma once

#include <filesystem>
#include <string_view>

namespace tarvel {

/// What lies under a name, links followed.
enum class Dateiart {
    Keine,
    Gewöhnlich,
    Ordner,
    Sonstige, ///< a pipe, a device, or what cannot be looked at
};

/// A file that is open for writing. What the system is asked here is done or the number of its
/// error comes back, 0 for none; a call that a signal interrupted is made again.
class Schreibdatei {
public:
    Schreibdatei() = default;
    /// Closes without a look at errors.
    ~Schreibdatei() { (void)schließe(); }
    Schreibdatei(const Schreibdatei&) = delete;
    Schreibdatei& operator=(const Schreibdatei&) = delete;

    /// Makes a file that must not be there yet. @p nurEigner keeps it from all but the person who
    /// runs the program; otherwise the system's habit decides.
    [[nodiscard]] int legeAn(const std::filesystem::path& pfad, bool nurEigner);
    /// Opens a file, pipe or device that is there. What this process has open already is gone on
    /// with, from the place that is reached.
    [[nodiscard]] int öffne(const std::filesystem::path& pfad);
    /// Gives it owner and rights of the file @p vorbild, as far as the system lets it.
    void nimmRechteVon(const std::filesystem::path& vorbild);
    /// Keeps it from all who may not read or write the file @p vorbild either, but for its owner.
    void beschränkeAuf(const std::filesystem::path& vorbild);
    /// Keeps it from all but its owner.
    void verschließe();
    [[nodiscard]] int kürze(long long länge);
    /// Writes all of @p inhalt, from the place that is reached or from the end.
    [[nodiscard]] int schreibe(std::string_view inhalt);
    [[nodiscard]] int schreibeAnsEnde(std::string_view inhalt);
    /// Waits until the drive has it.
    [[nodiscard]] int aufDieScheibe();
    [[nodiscard]] int schließe();

private:
    int nummer_ = -1;
};

[[nodiscard]] Dateiart dateiart(const std::filesystem::path& pfad);
/// Whether @p pfad names what this process has open already.
[[nodiscard]] bool istOffen(const std::filesystem::path& pfad);
/// 0 when a file that is there may be written.
[[nodiscard]] int beschreibbar(const std::filesystem::path& pfad);
/// Whether @p pfad is what the program's standard output goes to.
[[nodiscard]] bool istStandardausgabe(const std::filesystem::path& pfad);
/// Puts a file in the place of another, in one step.
[[nodiscard]] int ersetzeDatei(const std::filesystem::path& neu, const std::filesystem::path& ziel);
/// Waits until the drive has the names of a folder. 0 too where folders cannot be waited for.
[[nodiscard]] int namenAufDieScheibe(const std::filesystem::path& ordner);

} // namespace tarvel
