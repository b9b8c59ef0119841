#pragma once

#include "print/druckersystem.h"

#include <QString>

#include <future>
#include <optional>

namespace tarvel {

class Einstellungen;

/// The choice of a printer for as long as the program runs: remembers the default printer there was
/// at its start and brings it back, after a crash at the next start.
class Druckerwahl {
public:
    /// Both outlive it. The settings keep what is to be brought back.
    Druckerwahl(Druckersystem& system, Einstellungen& einstellungen)
        : system_(system)
        , einstellungen_(einstellungen) {}

    /// Asks for the printer of the start. Does not wait for the answer.
    void merkeVorher();
    /// Whether a run that ended before its time left another default behind. What it was is known
    /// once the answer to merkeVorher() is there.
    [[nodiscard]] bool hatAltes() const;
    [[nodiscard]] bool hatAntwort() const;
    /// Brings that default back, unless somebody set another since. The printer's name, or nullopt
    /// when nothing changed; where nobody answered, the next start tries again.
    std::optional<QString> stelleAltesHer();

    bool wähle(const QString& drucker);

    /// Makes the printer of the start the default again. Does nothing when none was chosen since,
    /// so that a default somebody else has set meanwhile stays.
    void stelleHer();

private:
    [[nodiscard]] const QString& vorher();
    void merke(const QString& vorher, const QString& gesetzt);

    Druckersystem& system_;
    Einstellungen& einstellungen_;
    std::future<std::optional<QString>> frage_;
    std::optional<QString> vorher_;
    bool verändert_ = false;
};

} // namespace tarvel
