#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <future>
#include <optional>
#include <utility>

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

/// What the system knows of its printers.
struct Druckerauskunft {
    QStringList liste;
    QString standard;      ///< empty when there is none
    bool antwortet = true; ///< false when who knows does not answer
};

/// The printers of the computer, called by the names that the system shows. Comes in from outside,
/// so a test prints on none of them.
class Druckersystem {
public:
    virtual ~Druckersystem() = default;

    [[nodiscard]] virtual QStringList liste() = 0;
    /// The default printer; empty when there is none.
    [[nodiscard]] virtual QString standard() = 0;
    /// The same, asked beside, where the answer may take its time; ready at once elsewhere. nullopt
    /// when nobody answered.
    [[nodiscard]] virtual std::future<std::optional<QString>> frageStandard() {
        return bereit(std::optional(standard()));
    }
    [[nodiscard]] virtual std::future<Druckerauskunft> frage() {
        return bereit(Druckerauskunft{liste(), standard()});
    }
    /// Makes @p drucker the default printer. An empty name takes an earlier choice back where the
    /// system knows what holds without one. False when nothing changed; the person has been told
    /// where telling is due.
    virtual bool setzeStandard(const QString& drucker) = 0;
    /// Prints what @p maler paints. False when the printer did not take the job.
    [[nodiscard]] virtual bool drucke(const Druckauftrag& auftrag, const Seitenmaler& maler) = 0;

private:
    template <typename Wert>
    static std::future<Wert> bereit(Wert wert) {
        std::promise<Wert> versprechen;
        versprechen.set_value(std::move(wert));
        return versprechen.get_future();
    }
};

} // namespace tarvel
