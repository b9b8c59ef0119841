#pragma once

#include <QString>

#include <utility>
#include <vector>

namespace tarvel {

/// What an examination carries along beside its data.
struct Untersuchungszusatz {
    QString Grenzen;  ///< limits that it was judged by, as text; empty when they are not known
    QString Herkunft; ///< file or program that it came from; empty when it was measured here
    /// Fields of a stored row that this version does not know, name and text as they stand.
    std::vector<std::pair<QString, QString>> weitere = {};

    bool operator==(const Untersuchungszusatz&) const = default;
};

} // namespace tarvel
