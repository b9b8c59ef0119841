#pragma once

#include <QLocalServer>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>

namespace tarvel {

/// How a program that was started with files hands them to the one that runs already with the same
/// settings folder. Only programs of the same user reach each other.
class Dateiannahme {
public:
    /// Takes files over for as long as it lives. @p bereit whether files can be opened just now;
    /// @p nimm opens them, from the event loop. Where nothing can be listened to, nothing comes.
    Dateiannahme(const QString& ordner, std::function<bool()> bereit,
                 std::function<void(const QStringList&)> nimm);

    /// Hands full paths to the running program. False when there is none, or none that takes them
    /// within @p geduld: it hangs, or waits for an answer of the user. It does not open them later
    /// then.
    [[nodiscard]] static bool übergib(const QString& ordner, const QStringList& dateien,
                                      std::chrono::milliseconds geduld = std::chrono::seconds(3));

private:
    void nimmVerbindungAn();

    QLocalServer server_;
    std::function<bool()> bereit_;
    std::function<void(const QStringList&)> nimm_;
};

} // namespace tarvel
