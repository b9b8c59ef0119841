#pragma once

#include <QString>

#include <utility>
#include <vector>

namespace tarvel {

/// The verdict that an examination was stored with. It holds until something changes that it rests
/// on: wings, body marks, caste or race.
enum class Ablageurteil {
    Keines, ///< never stored, or changed since
    Ja,
    Nein,
    Unbeurteilt, ///< stored with the word for no, because nothing had been judged
};

/// What an examination carries along beside its data.
struct Untersuchungszusatz {
    /// Limits that the stored verdict was given by, see standardtext(); empty when they are not
    /// known.
    QString Grenzen;
    Ablageurteil Urteil = Ablageurteil::Keines;
    bool merkmaleUnlesbar = false; ///< the row has body marks that are not understood
    QString Herkunft; ///< file or program that it came from; empty when it was measured here
    QString Untersucher = {}; ///< who measured it; empty when that is not known
    /// Fields of a stored row that this version does not know, name and text as they stand.
    std::vector<std::pair<QString, QString>> weitere = {};

    bool operator==(const Untersuchungszusatz&) const = default;
};

} // namespace tarvel
