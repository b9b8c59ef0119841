#pragma once

#include "app/umgebung.h"
#include "results/db.h"

#include <memory>

namespace tarvel {

/// Begins a series of reports of that results file as the settings want them now. @p umgebung
/// outlives it.
[[nodiscard]] std::unique_ptr<Protokollserie> neueProtokollserie(const Umgebung& umgebung,
                                                                 const QString& DatenbankPfad);

} // namespace tarvel
