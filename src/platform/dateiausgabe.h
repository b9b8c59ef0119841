#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tarvel {

/// Writes @p inhalt to the file @p pfad, which is replaced only when all was written. The reason in
/// the system's words when that failed; nullopt when all went well.
[[nodiscard]] std::optional<QString> schreibeDatei(const QString& pfad, const QByteArray& inhalt);

} // namespace tarvel
