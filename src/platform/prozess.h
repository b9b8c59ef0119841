#pragma once

#include <QStringList>

#include <cstdio>

namespace tarvel {

/// The arguments this program was called with, its own name first. Needs no application object.
[[nodiscard]] QStringList aufrufargumente(int argc, char** argv);

/// Whether a stream of this program is a terminal in front of a person.
[[nodiscard]] bool istTerminal(std::FILE* strom);

/// Sets right what this system does otherwise than others, before anything else is called: standard
/// streams carry bytes as they are, without another end of line.
void richteProzessEin();

/// True when there is no display that a window could be shown on.
[[nodiscard]] bool ohneAnzeige();

} // namespace tarvel
