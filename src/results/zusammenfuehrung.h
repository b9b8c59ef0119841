#pragma once

#include "lang/texte.h"
#include "results/papierkorb.h"
#include "results/satzquelle.h"

#include <QDate>
#include <QSet>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace tarvel {

/// How a row of the other collection stands to ours.
enum class Zeilenstand {
    Neu,
    Gleich,      ///< the same content, or taken over earlier
    Verschieden, ///< another examination has its number
};

/// What becomes of a row of the other collection.
enum class Entscheidung {
    Lassen, ///< ours stays, or nothing is taken over
    Nehmen, ///< it comes in, in the place of ours where there is one
    Beide,  ///< it comes in under a new number
};

/// A row of the other collection beside ours.
struct Gegenüber {
    qint64 stelle = 0; ///< in the other collection
    QString nummer;
    QString züchter;
    QDate datum;
    QString marke; ///< of its content
    Zeilenstand stand = Zeilenstand::Neu;
    Entscheidung entscheidung = Entscheidung::Lassen;
    std::optional<QString> unsere; ///< number of our row that it stands against
    QString unsereMarke;
};

struct Zusammenführungsbericht {
    /// A row that was not taken over, since it is another than it was compared as.
    struct Übergangen {
        enum class Grund { Geändert, HierGelöscht, DortGelöscht };
        QString nummer; ///< in the other collection
        Grund grund = Grund::Geändert;

        bool operator==(const Übergangen&) const = default;
    };
    int übernommen = 0;
    QStringList ersetzt;                                ///< our numbers, of those
    std::vector<std::pair<QString, QString>> umbenannt; ///< number there and here
    std::vector<Übergangen> übergangen;
    Rücknahme rücknahme; ///< takes all of it back
};
/// What is said about a row that was passed over.
[[nodiscard]] QString übergehungstext(const Texte& texte,
                                      Zusammenführungsbericht::Übergangen::Grund grund);

/// Brings the examinations of another collection into a results file. First it compares, then the
/// decisions are made, then all that is wanted comes in at once: when it is stopped or fails the
/// file is as it was. Rows come in as they stand, with the resolution of their wings; only the
/// words of caste and verdict are those of the program's language. A row that is replaced goes into
/// the bin. Where a row came from is kept, so that doing it twice changes nothing.
class Zusammenführung {
public:
    /// Both outlive it.
    Zusammenführung(QString DatenbankPfad, const Satzquelle& quelle,
                    std::chrono::milliseconds wartezeit = std::chrono::seconds(2));

    /// Is told the number of the row, from 0, and of all; false stops it.
    using Weiter = std::function<bool(int schritt, int alle)>;

    /// Compares all rows. False when it was stopped.
    [[nodiscard]] bool vergleiche(const Weiter& weiter);
    [[nodiscard]] std::vector<Gegenüber>& fälle() { return fälle_; }
    [[nodiscard]] const std::vector<Gegenüber>& fälle() const { return fälle_; }
    [[nodiscard]] int anzahl(Zeilenstand stand) const;
    /// Numbers of rows that cannot be taken over because a value is beyond all measure.
    [[nodiscard]] const QStringList& zuGroß() const { return zuGroß_; }

    /// Sets the decision for all rows of that state.
    void entscheide(Zeilenstand stand, Entscheidung entscheidung);

    /// Theirs and ours, to be shown side by side.
    [[nodiscard]] std::pair<Ergebnissatz, std::optional<Ergebnissatz>>
    lade(const Gegenüber& fall) const;

    /// Takes over what was decided; nullopt when it was stopped.
    [[nodiscard]] std::optional<Zusammenführungsbericht> übernimm(Sprache sprache,
                                                                  const Weiter& weiter) const;

private:
    [[nodiscard]] QSet<QString> hinzugekommene() const;

    QString pfad_;
    const Satzquelle& quelle_;
    std::chrono::milliseconds wartezeit_;
    std::vector<Gegenüber> fälle_;
    QStringList zuGroß_;
};

} // namespace tarvel
