#pragma once

#include "platform/dateisystem.h"

#include <QByteArray>
#include <QString>

#include <filesystem>
#include <optional>
#include <system_error>

namespace tarvel {

/// What an error of the system means for a file.
enum class Fehlerart {
    Keiner,
    Voll,     ///< no room, or none that this person may take
    Platz,    ///< the place: not there, not allowed, taken, no place for files
    Laufwerk, ///< the drive or the way to it failed
};
[[nodiscard]] Fehlerart fehlerart(const std::error_code& fehler);

/// Who may read a file that is made.
enum class Dateirecht {
    Bisheriges, ///< whoever could read the file in its place; the system's habit for a new one
    NurEigner,
};

/// A file that comes into being beside the place it is meant for, where it appears only when it is
/// complete and on the drive. Away again otherwise, and what was in the place stays. A link is
/// followed to the file it names.
class Rohfassung {
public:
    /// @p ziel the place, where a file may be.
    explicit Rohfassung(const QString& ziel, Dateirecht recht = Dateirecht::Bisheriges);
    ~Rohfassung();
    Rohfassung(const Rohfassung&) = delete;
    Rohfassung& operator=(const Rohfassung&) = delete;

    /// False when it could not be made, as when the place holds what is no file.
    [[nodiscard]] bool angelegt() const { return fehler_ == 0; }
    /// Full paths of it and of its place.
    [[nodiscard]] QString pfad() const;
    [[nodiscard]] QString ziel() const;

    /// Where there was no file, it gets no more readers than the file @p vorbild has.
    void beschränkeAuf(const QString& vorbild);
    [[nodiscard]] bool schreibe(const QByteArray& inhalt);
    /// Puts it in its place. False when anything on the way failed.
    [[nodiscard]] bool ersetze();
    /// The two halves of it: brings what was written onto the drive, which takes its time; then
    /// takes the place, in one step. The drive has the name only after namenAufDieScheibe().
    [[nodiscard]] bool schließeAb();
    [[nodiscard]] bool nimmPlatz();
    /// The same where there is no file yet, whatever others do meanwhile.
    [[nodiscard]] bool benenne();

    /// Why the last step failed, and the same in the system's words.
    [[nodiscard]] Fehlerart fehlerart() const;
    [[nodiscard]] QString grund() const;

private:
    [[nodiscard]] bool gelang(int fehler);

    std::filesystem::path ziel_;
    std::filesystem::path pfad_;
    Schreibdatei datei_;
    bool da_ = false;
    int fehler_ = 0;
};

/// Writes @p inhalt to the file @p pfad, which is replaced only when all was written. The reason in
/// the system's words when that failed; nullopt when all went well.
[[nodiscard]] std::optional<QString> schreibeDatei(const QString& pfad, const QByteArray& inhalt,
                                                   Dateirecht recht = Dateirecht::Bisheriges);

/// Writes @p inhalt straight into what there is of that name: a pipe, a device.
[[nodiscard]] std::optional<QString> schreibeHinein(const QString& pfad, const QByteArray& inhalt);

/// The path as the file system takes it.
[[nodiscard]] std::filesystem::path systempfad(const QString& pfad);

} // namespace tarvel
