#pragma once

#include "results/datenbankfehler.h"

#include <QDate>
#include <QObject>
#include <QSet>
#include <QString>
#include <QThreadPool>

#include <atomic>
#include <functional>
#include <vector>

namespace tarvel {

/// A daily backup of a results file.
struct Sicherung {
    QString pfad;
    QDate datum;
    qint64 größe = 0; ///< in bytes
};

/// @name The folder "Tarvel Backup" beside a results file, with a copy "NAME yyyy-MM-dd.tdb" a day
/// @{

/// Larger files are not backed up.
constexpr qint64 GrößteGesicherte = qint64{1024} * 1024 * 1024;

/// Full path of the folder, whether it is there or not. In every language the same, so that nobody
/// loses sight of it by changing the language.
[[nodiscard]] QString sicherungsordner(const QString& DatenbankPfad);
/// The backups of that file, the latest first. Files of other names are none.
[[nodiscard]] std::vector<Sicherung> sicherungen(const QString& DatenbankPfad);
/// Those of @p alle, the latest first, that are not kept: beyond the last ten all but the latest of
/// each month.
[[nodiscard]] std::vector<Sicherung> überzählige(const std::vector<Sicherung>& alle);
/// Makes the backup of the day @p heute unless there is one, or nothing was changed since the last,
/// or there is no examination; then removes those that are not kept. A backup is never replaced.
/// Others may work on the file meanwhile. Leaves nothing behind when @p aufhören becomes true.
/// Throws Datenbankfehler.
void sichereTag(const QString& DatenbankPfad, const QDate& heute,
                const std::atomic<bool>& aufhören);
/// @}

/// Makes daily backups on a thread of its own, so that nobody waits for them.
class Tagessicherung {
public:
    /// @p beiFehler is called in the thread of the owner, once for a file that cannot be backed up.
    explicit Tagessicherung(std::function<void(const Datenbankfehler&)> beiFehler);
    /// Gives up what is not finished; the next start makes up for it.
    ~Tagessicherung();
    Tagessicherung(const Tagessicherung&) = delete;
    Tagessicherung& operator=(const Tagessicherung&) = delete;

    /// To be called when the file may have changed. Returns at once.
    void prüfe(const QString& DatenbankPfad, const QDate& heute);
    /// Waits until nothing is under way.
    void warte() { faden_.waitForDone(); }

private:
    void melde(const QString& DatenbankPfad, const Datenbankfehler& fehler);

    std::function<void(const Datenbankfehler&)> beiFehler_;
    QSet<QString> gemeldet_;
    std::atomic<bool> aufhören_ = false;
    std::atomic<bool> unterwegs_ = false;
    QObject eigner_;    ///< takes what the thread tells
    QThreadPool faden_; ///< the last member: it ends before what it uses
};

} // namespace tarvel
