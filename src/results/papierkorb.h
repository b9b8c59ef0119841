#pragma once

#include "lang/texte.h"
#include "results/ergebnissatz.h"

#include <QDateTime>
#include <QString>

#include <chrono>
#include <optional>
#include <utility>
#include <vector>

namespace tarvel {

class Ergebnisdatei;

/// Why a row came into the bin.
enum class Korbanlass {
    Gelöscht,
    Geändert, ///< edited in the list
    Umbenannt,
    Überschrieben, ///< by saving under its number
    Zusammengeführt,
    Wiederhergestellt, ///< replaced by a former version, or an undo took it back
};
[[nodiscard]] QString anlasstext(const Texte& texte, std::optional<Korbanlass> anlass);

/// What takes a change of rows back: see Papierkorb::nimmZurück.
struct Rücknahme {
    struct Neue {
        QString nummer;
        QString marke;           ///< its satzmarke()
        bool ausAnderer = false; ///< came from another collection, which was noted
    };
    std::vector<qint64> einträge; ///< of the bin, to come back, in the order they went there
    std::vector<Neue> neue;       ///< rows that were not there before

    [[nodiscard]] bool leer() const { return einträge.empty() && neue.empty(); }
    /// Both are taken back in one.
    Rücknahme& operator+=(const Rücknahme& andere) {
        einträge.insert(einträge.end(), andere.einträge.begin(), andere.einträge.end());
        neue.insert(neue.end(), andere.neue.begin(), andere.neue.end());
        return *this;
    }
};

/// A row in the bin.
struct Korbeintrag {
    qint64 nr = 0;
    QDateTime zeit; ///< UTC; invalid when another program wrote something else there
    std::optional<Korbanlass> anlass;
    QString U_NR;
    QString Z_NAME;
};

/// The deleted and overwritten rows of a results file, in a table of their own in it. It is made
/// with the first of them; looking changes nothing. A row is kept while it is among the last
/// Höchstens and not older than Tage; beyond that number for a day.
///
/// All operations throw Datenbankfehler and leave the file as it was then.
class Papierkorb {
public:
    static constexpr int Höchstens = 500;
    static constexpr int Tage = 90;

    explicit Papierkorb(QString DatenbankPfad,
                        std::chrono::milliseconds wartezeit = std::chrono::seconds(2));

    /// The latest first.
    [[nodiscard]] std::vector<Korbeintrag> einträge() const;
    /// A row of the bin and the one that stands in its place today: under the number it got then,
    /// else under its own.
    struct Vergleich {
        Ergebnissatz damals;
        std::optional<Ergebnissatz> heute;
    };
    [[nodiscard]] Vergleich vergleiche(qint64 nr) const;

    /// Those of the entries @p nummern whose number an examination has, one after the other.
    [[nodiscard]] QStringList vergebene(const std::vector<qint64>& nummern) const;

    enum class BeiVergebener { Ersetzen, NeueNummer, Auslassen };
    struct Bericht {
        int zahl = 0;
        std::vector<std::pair<QString, QString>> umbenannt; ///< former and new number
        QStringList ersetzt; ///< numbers of the examinations that were replaced
        Rücknahme rücknahme;
    };
    /// Brings rows back into the table, all or none, with the words of caste and verdict in
    /// @p sprache. They leave the bin; a row that is replaced goes into it.
    Bericht stelleWiederHer(const std::vector<qint64>& nummern, BeiVergebener weise,
                            Sprache sprache) const;

    /// Takes changes back, all or none; the places of the rows that came back. Throws
    /// (SeitherGeändert) when one of their rows is not as they left it any more.
    std::vector<qint64> nimmZurück(const Rücknahme& rücknahme, Sprache sprache) const;

    /// Removes everything for good.
    void leere() const;

private:
    QString pfad_;
    std::chrono::milliseconds wartezeit_;
};

/// @name Within a transaction of the caller, that of the change itself
/// @{

/// Keeps the row at @p id of the table in the bin, before it goes or changes. Number of the entry.
qint64 hebeAuf(Ergebnisdatei& datei, qint64 id, Korbanlass anlass);
/// Notes what stands in the place of an entry now.
void vermerkeNachfolger(Ergebnisdatei& datei, qint64 eintrag, const QString& nummer,
                        const QString& marke);
/// Removes what is beyond number and age.
void räumeKorbAuf(Ergebnisdatei& datei);
/// @}

} // namespace tarvel
