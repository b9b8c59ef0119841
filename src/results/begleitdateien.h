#pragma once

#include <QString>

namespace tarvel {

/// Whether a file that lies beside a results file under the name of a journal, a log or its index
/// is none that the engine may use: no ordinary file, or a journal that names a further file.
[[nodiscard]] bool istVerweigert(const QString& begleiter);

/// The file beside the results file @p pfad that is refused.
[[nodiscard]] QString verweigerterBegleiter(const QString& pfad);

} // namespace tarvel
