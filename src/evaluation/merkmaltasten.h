#pragma once

#include "lang/texte.h"

#include <QString>
#include <QStringView>

#include <optional>

class QKeyEvent;

namespace tarvel {

/// The key of a body mark: the groups of a caste have a row of keys each, their codes a key each.
struct Merkmaltaste {
    int gruppe = 0; ///< from 0: digits, the row below, the lowest row
    int index = 0;  ///< from 0, from the left

    bool operator==(const Merkmaltaste&) const = default;
};

/// The key at a place of the keyboard, whatever letter it types. @p plattform as the toolkit names
/// it; empty where it does not tell of places.
[[nodiscard]] std::optional<Merkmaltaste> tasteAmPlatz(quint32 scancode, QStringView plattform);
/// The key by its place, or, where that is not known or another one, by what it types on the
/// keyboards of the language.
[[nodiscard]] std::optional<Merkmaltaste> merkmaltaste(const QKeyEvent& ereignis, Sprache sprache);
/// What stands on the key on the keyboards of the language: "1", "Q", "Y".
[[nodiscard]] QString tastenname(Merkmaltaste taste, Sprache sprache);

} // namespace tarvel
