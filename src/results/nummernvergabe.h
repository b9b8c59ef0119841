#pragma once

#include <QHash>
#include <QSet>
#include <QString>

namespace tarvel {

class Ergebnisdatei;

/// Finds new numbers for examinations whose own is taken: the running part goes on behind the
/// highest of the same sign and year, "005AB2026" to "013AB2026". A number without such a part gets
/// one at its end.
class Nummernvergabe {
public:
    /// Counts a number as taken; case and blanks at its ends do not matter.
    void kenne(const QString& nummer);
    /// The same for all numbers of a results file.
    void kenneAlle(Ergebnisdatei& datei);
    /// A number of at most LängsteNummer characters that nobody has; it is taken from now on.
    [[nodiscard]] QString neue(const QString& alt);

    /// A number as it is compared.
    [[nodiscard]] static QString schlüssel(const QString& nummer);

private:
    QSet<QString> vergeben_;
    QHash<QString, int> höchste_; ///< by what follows the running part
};

} // namespace tarvel
