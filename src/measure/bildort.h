#pragma once

#include <QString>

namespace tarvel {

/// Where a picture is: a file and, when it holds several, the page. Its name is what is kept with
/// a wing; that of a first page is the file's alone.
struct Bildort {
    QString datei;
    int seite = 1; ///< from 1

    /// "scan.tif" or "scan.tif#2".
    [[nodiscard]] QString name() const;
    /// The place that @p name means. A file that is really called so goes before a page.
    [[nodiscard]] static Bildort aus(const QString& name);
};

/// The computer that a path names, as in "\\server\scans\1.jpg"; empty for a path of this one.
/// Merely asking whether such a file exists tells that computer who asks.
[[nodiscard]] QString netzrechner(const QString& pfad);

} // namespace tarvel
