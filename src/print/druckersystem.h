#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class QPagedPaintDevice;

namespace tarvel {

struct Druckauftrag {
    QString drucker;
    QString titel; ///< what the job is called in the printer's queue
    int exemplare = 1;
};

/// Paints a whole document onto a device that is set to A4 portrait with the origin in the corner
/// of the paper. False when it could not be painted whole.
using Seitenmaler = std::function<bool(QPagedPaintDevice&)>;

/// The printers of the computer, called by the names that the system shows. Comes in from outside,
/// so a test prints on none of them.
class Druckersystem {
public:
    virtual ~Druckersystem() = default;

    [[nodiscard]] virtual QStringList liste() = 0;
    /// The default printer; empty when there is none.
    [[nodiscard]] virtual QString standard() = 0;
    /// Makes @p drucker the default printer. An empty name takes an earlier choice back where the
    /// system knows what holds without one. False when nothing changed; the person has been told
    /// where telling is due.
    virtual bool setzeStandard(const QString& drucker) = 0;
    /// Prints what @p maler paints. False when the printer did not take the job.
    [[nodiscard]] virtual bool drucke(const Druckauftrag& auftrag, const Seitenmaler& maler) = 0;
};

/// The choice of a printer for as long as the program runs: remembers the default printer there was
/// at its start and brings it back.
class Druckerwahl {
public:
    explicit Druckerwahl(Druckersystem& system)
        : system_(system) {}

    /// Asks for the printer of the start. The answer takes its time, so a window that is not there
    /// yet should not wait for it.
    void merkeVorher() {
        if (!vorher_) {
            vorher_ = system_.standard();
        }
    }

    bool wähle(const QString& drucker) {
        merkeVorher();
        const bool gesetzt = system_.setzeStandard(drucker);
        verändert_ = verändert_ || gesetzt;
        return gesetzt;
    }

    /// Makes the printer of the start the default again. Does nothing when none was chosen since,
    /// so that a default somebody else has set meanwhile stays.
    void stelleHer() {
        if (verändert_ && (system_.standard() == *vorher_ || system_.setzeStandard(*vorher_))) {
            verändert_ = false;
        }
    }

private:
    Druckersystem& system_;
    std::optional<QString> vorher_;
    bool verändert_ = false;
};

} // namespace tarvel
