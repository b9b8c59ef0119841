#pragma once

namespace tarvel {

/// Name under which the engine reaches files as a results file needs it, for opening one:
/// - A journal or log beside the file is used only when it is an ordinary file. One that names a
///   further file is not: the engine would delete that file. Opening fails with SQLITE_AUTH then.
/// - A drive that keeps no locks is an error and not one that is locked: SQLITE_IOERR_LOCK or the
///   like.
/// - What the system said of a call that failed is kept for systemfehler().
[[nodiscard]] const char* geschützterZugang();

/// Number of the first error that the system gave the engine in this thread since
/// vergissSystemfehler(); 0 for none. The engine itself loses it on the way.
[[nodiscard]] int systemfehler();
void vergissSystemfehler();

} // namespace tarvel
