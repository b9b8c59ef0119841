#pragma once

namespace tarvel {

/// Caste of the bees of a sample. The standards of a race differ for the two.
enum class Geschlecht { Arbeiterinnen, Drohnen };

} // namespace tarvel
