#pragma once

#include <QString>

namespace tarvel {

/// The settings that belong to the person instead of the program's folder. Each has an application
/// name, a section and a key, none of them empty and none with '/' or '\\' in it. Every read goes
/// to the store, every write at once into it; one that fails leaves the store as it was.
class Benutzerspeicher {
public:
    /// The person's own store: on Windows the registry place where settings of this style live, on
    /// other systems "tarvel/benutzer.ini" in the folder of the user's configuration.
    Benutzerspeicher();
    /// The file @p pfad in place of it; it need not exist.
    explicit Benutzerspeicher(QString pfad);

    /// Whether the store is there, be it empty or unreadable.
    [[nodiscard]] bool vorhanden() const;
    /// Where it lies, for messages.
    [[nodiscard]] const QString& pfad() const { return pfad_; }

    /// False when the value did not reach the store or a name is not valid.
    [[nodiscard]] bool SaveSetting(const QString& app, const QString& section, const QString& key,
                                   const QString& value);
    /// @p vorgabe when there is no such setting or the store cannot be read.
    [[nodiscard]] QString GetSetting(const QString& app, const QString& section, const QString& key,
                                     const QString& vorgabe = {}) const;

private:
    QString pfad_;
    bool istDatei_ = true;
};

} // namespace tarvel
