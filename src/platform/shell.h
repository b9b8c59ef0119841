#pragma once

#include <QString>

namespace tarvel {

/// Other programs of the computer. Comes in from outside, so a test records instead of starting.
class Shell {
public:
    virtual ~Shell() = default;

    /// Opens a file in the program the system has chosen for its kind. False when there is no such
    /// file or no such program.
    virtual bool openDocument(const QString& path) = 0;
    /// Starts @p program with @p document as its only argument (none when empty) and does not wait
    /// for it. False when it could not be started.
    virtual bool runProgram(const QString& program, const QString& document) = 0;
};

/// Shell::runProgram of the real system. Never goes through a command line; the document's path
/// goes as an absolute one, so that none is taken for an option of the program.
bool starteProgramm(const QString& program, const QString& document);

} // namespace tarvel
