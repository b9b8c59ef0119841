#pragma once

#include "evaluation/beurteilung.h"
#include "results/ergebnistabelle.h"
#include "results/untersuchungssatz.h"

#include <QDate>
#include <QString>

#include <optional>
#include <vector>

namespace tarvel {

struct Messdatei;

/// What examinations become that come from measurement files.
struct Einfuhrumgebung {
    Satzumgebung satz;
    QDate heute;
    QString kurzzeichen; ///< of the examiner, for numbers of files that have none
    int auflösung = 0;   ///< in dots per inch
    int rasse = 0;       ///< position in the race list
    Rassestandard standard;
    Urteilsregeln regeln;
    bool teilweise = false; ///< take what is readable of a file that has faults
};

/// What became of a file.
struct Einfuhrbericht {
    struct Hinweis {
        std::optional<int> zeile; ///< of the file; nullopt where no line is to blame
        QString text;
    };
    QString nummer; ///< of its examination; empty when it was not stored
    std::vector<Hinweis> hinweise;
};

/// Stores measurement files in a results file, an examination each. Each is stored whole or not at
/// all, whatever becomes of the others. A file with a fault, or with the number of an examination
/// that is there already, is not stored. The results file is made when the first one is stored.
class Einfuhr {
public:
    /// Throws Datenbankfehler when the file @p DatenbankPfad is there and is no results file.
    Einfuhr(const QString& DatenbankPfad, Einfuhrumgebung umgebung);

    [[nodiscard]] Einfuhrbericht nimm(const QString& pfad);
    /// The same for the content of a file.
    [[nodiscard]] Einfuhrbericht nimmInhalt(QByteArrayView bytes, const QString& herkunft);
    /// Stores an examination that came about otherwise.
    [[nodiscard]] Einfuhrbericht nimm(const Untersuchung& untersuchung);

private:
    void speichere(const Messdatei& datei, const QString& herkunft, Einfuhrbericht& bericht);
    /// Judges it and stores it; @p merkmaltext in place of its body marks, if any. Returns its
    /// number.
    [[nodiscard]] QString speichere(Untersuchung untersuchung,
                                    const std::optional<QString>& merkmaltext);
    /// Tells in the report why storing failed.
    template <typename Handlung>
    void versuche(Einfuhrbericht& bericht, const Handlung& handlung) const;
    [[nodiscard]] QString speichere(Ergebnissatz& satz);
    [[nodiscard]] std::optional<bool> urteil(const Untersuchung& untersuchung) const;

    Einfuhrumgebung umgebung_;
    Ergebnistabelle tabelle_;
    bool vorhanden_;
};

} // namespace tarvel
