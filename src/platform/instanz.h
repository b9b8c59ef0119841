#pragma once

#include <QLockFile>
#include <QString>

#include <memory>

namespace tarvel {

/// Tells whether this is the only running program that uses a settings folder. The first one holds
/// a lock as long as the object lives; the lock of a program that crashed does not count.
class Instanz {
public:
    /// @p ordner the folder of the settings file; the lock file stands beside it, or, where that
    /// folder cannot be written to, in the user's own folder for running programs.
    explicit Instanz(const QString& ordner);

    /// False only when another running program holds the lock. True when no lock file could be
    /// written anywhere: a program that starts twice is better than one that never starts.
    [[nodiscard]] bool erste() const { return erste_; }

    /// A path in the user's own folder for running programs that goes with @p ordner alone.
    [[nodiscard]] static QString eigenerPfad(const QString& ordner, const QString& endung);
    /// The address at which the first program of a settings folder listens for those after it.
    [[nodiscard]] static QString verbindungsname(const QString& ordner);
    /// False when somebody else may listen there: where all users write into one folder.
    [[nodiscard]] static bool istEigene(const QString& verbindungsname);

private:
    std::unique_ptr<QLockFile> sperre_;
    bool erste_ = true;
};

} // namespace tarvel
