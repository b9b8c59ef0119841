#pragma once

#include <QDateTime>
#include <QString>
#include <QtGlobal>

#include <optional>

namespace tarvel {

/// What tells without reading a file whether it is still the same, and unchanged.
struct Dateistand {
    quint64 gerät = 0;
    quint64 nummer = 0; ///< of the file on its drive
    qint64 größe = 0;   ///< in bytes
    qint64 geändert = 0;
    qint64 angefasst = 0; ///< content, rights or names, in nanoseconds since 1970

    bool operator==(const Dateistand&) const = default;

    /// True when a change at this moment could leave the times as they are: clocks of drives tick.
    [[nodiscard]] bool frisch() const {
        constexpr qint64 EinTick = 20;
        constexpr qint64 NanosekundenJeMillisekunde = 1'000'000;
        return qAbs(QDateTime::currentMSecsSinceEpoch() - angefasst / NanosekundenJeMillisekunde) <=
               EinTick;
    }
};

/// The state of @p pfad, or of what it links to; nullopt when there is no such file.
[[nodiscard]] std::optional<Dateistand> dateistand(const QString& pfad);

} // namespace tarvel
