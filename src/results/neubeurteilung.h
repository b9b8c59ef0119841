#pragma once

#include "evaluation/beurteilung.h"
#include "results/ergebnistabelle.h"
#include "results/untersuchungssatz.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace tarvel {

/// What stored examinations are judged again by.
struct Neubeurteilungsregeln {
    Satzumgebung satz;
    std::vector<Rassestandard> standards; ///< in the order of the race list
    Urteilsregeln regeln;
};

/// What judging a stored examination again comes to.
struct Neuurteil {
    QString nummer;
    std::optional<bool> bisher; ///< empty when it was not judged
    std::optional<bool> neu;    ///< empty when it cannot be judged; its row stays as it is then
    bool andereGrenzen = false; ///< the stored verdict was given by other limits
    QStringList gründe;         ///< why it fails, or why it is not judged

    /// The verdict is another one.
    [[nodiscard]] bool geändert() const { return neu && neu != bisher; }
    /// There is something to be stored.
    [[nodiscard]] bool zuSpeichern() const { return geändert() || (neu && andereGrenzen); }

    bool operator==(const Neuurteil&) const = default;
};

/// "007: Ja → Nein (1R: 4 %, erlaubt 0 %)"
[[nodiscard]] QString urteilszeile(const Neuurteil& urteil, const Texte& texte);

/// Judges rows of a results file by the standards of today. Of a row nothing changes but the
/// verdict and the limits that it was given by.
class Neubeurteilung {
public:
    explicit Neubeurteilung(Neubeurteilungsregeln regeln);

    [[nodiscard]] Neuurteil prüfe(const Ergebnissatz& satz) const;
    /// Stores what prüfe() came to. Empty, or why the row stays as it is: it was changed meanwhile,
    /// or the file refuses.
    [[nodiscard]] QString speichere(const Neuurteil& urteil, Ergebnistabelle& tabelle) const;

private:
    [[nodiscard]] QString grenzen(int rasse) const;
    [[nodiscard]] std::optional<Ergebnissatz> neuerSatz(const Ergebnissatz& satz,
                                                        const Neuurteil& urteil) const;

    Neubeurteilungsregeln regeln_;
};

} // namespace tarvel
