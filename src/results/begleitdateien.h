#pragma once

#include <QString>

namespace tarvel {

/// Name under which the engine reaches files as a results file needs it, for opening one:
/// - A journal or log beside the file is used only when it is an ordinary file. One that names a
///   further file is not: the engine would delete that file. Opening fails with SQLITE_AUTH then.
/// - A drive that keeps no locks is an error and not one that is locked: SQLITE_IOERR_LOCK or the
///   like.
[[nodiscard]] const char* geschützterZugang();

/// The file beside the results file @p pfad that geschützterZugang refuses.
[[nodiscard]] QString verweigerterBegleiter(const QString& pfad);

} // namespace tarvel
