#pragma once

#include <QSize>
#include <QString>

#include <optional>

namespace tarvel {

/// What a picture is told by wherever its file lies.
struct Bildkennung {
    QSize größe;   ///< whole picture in pixels; invalid when it is not known
    QString marke; ///< inhaltsmarke() of the file; empty when it is not known

    bool operator==(const Bildkennung&) const = default;
};

/// False when the contents of both are known and differ.
[[nodiscard]] inline bool verträglich(const Bildkennung& a, const Bildkennung& b) {
    return a.marke.isEmpty() || b.marke.isEmpty() || a == b;
}

/// A short text that two files share when they hold the same bytes, and otherwise practically
/// never: the size and a hash of 64 blocks of 4 KiB spread evenly over the file, beginning and end
/// included. A scan of any size is thereby told in a few milliseconds. Made of digits, letters and
/// '-'. Empty when the file cannot be read.
[[nodiscard]] QString inhaltsmarke(const QString& pfad);

} // namespace tarvel
