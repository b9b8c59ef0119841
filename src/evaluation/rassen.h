#pragma once

#include "settings/einstellungen.h"

#include <QStringList>

namespace tarvel {

/// Number of races that have a standard; race numbers run from 1 in the order of the race list.
inline constexpr int Rassenzahl = 4;

/// Names of the races in the order of the race list: "Carnica", "Mellifera", "Ligustica" and the
/// fourth race under the name that the settings give it.
[[nodiscard]] QStringList rassenliste(const Einstellungen& einstellungen);

} // namespace tarvel
