#pragma once

namespace tarvel {

/// Gives all windows the program's symbol. Drawing it in all its sizes takes a tenth of the start,
/// so it comes after the first window was painted, or with a dialog that a person answers anyway.
void zeigeProgrammsymbol();

} // namespace tarvel
