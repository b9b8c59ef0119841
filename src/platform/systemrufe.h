#pragma once

#include <span>

namespace tarvel {

using Systemruf = void (*)();

/// One of this program's calls to the system in the place of the system's own.
struct Ersatzruf {
    const char* name;  ///< "fcntl"
    Systemruf neu;     ///< goes on to the system's own
    Systemruf* bisher; ///< where that one is to be put first
};

/// For an engine that loses why a call failed: calls that keep or correct the reason. @p merke gets
/// the system's number of each failure to open a file for writing. A system that cannot be locked
/// (ENOLCK) fails with EIO, so that it is not taken for a file that somebody holds. Empty where
/// the system has no such calls.
[[nodiscard]] std::span<const Ersatzruf> ersatzrufe(void (*merke)(int grund));

/// Whether a call failed only because a signal came in between.
[[nodiscard]] bool warUnterbrochen(int grund);

} // namespace tarvel
