#pragma once

#include "lang/texte.h"
#include "results/ergebnissatz.h"
#include "results/papierkorb.h"
#include "results/zeilenwahl.h"

#include <QDate>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace tarvel {

/// Makes a results file at @p pfad with its empty table `Ergebnisse`. An existing file is never
/// overwritten: Datenbankfehler, as for a folder that is missing or write-protected.
void NeueDatenbank(const QString& pfad);

/// The table `Ergebnisse` of one results file. Every operation opens the file, works and closes it
/// again; nothing is held between them, so several programs can work on one file. All of them throw
/// Datenbankfehler and then leave the file as it was.
///
/// Comparing is what LIKE does: without regard to case, umlauts included. An examination number
/// matches only itself, whatever characters it has.
class Ergebnistabelle {
public:
    /// @p DatenbankPfad full path of the file; empty when none is chosen. @p wartezeit how long an
    /// operation waits for another program that writes to the file.
    explicit Ergebnistabelle(QString DatenbankPfad,
                             std::chrono::milliseconds wartezeit = std::chrono::seconds(2));

    [[nodiscard]] const QString& pfad() const { return pfad_; }

    /// Throws unless the file is a results file with all columns.
    void öffneProbeweise() const;

    [[nodiscard]] int anzahl() const;
    /// Number of the examination of the latest date; of several the one stored last.
    [[nodiscard]] std::optional<QString> letzteNummer() const;

    /// The number that the next examination of the year of @p heute gets: running number, short
    /// sign of the examiner (at most 3 characters), year. While an examination has it, the next
    /// one.
    [[nodiscard]] QString NächsteNummer(const QDate& heute, const QString& kurzzeichen) const;

    /// Stores a row in place of the one with the same number: that of the same spelling, else all
    /// that differ only in case. Texts are measured against their columns before anything is
    /// deleted; removing and adding are one transaction. Columns that other programs have added
    /// keep their values. A row that is replaced by another content goes into the bin.
    void speichere(const Ergebnissatz& satz);
    /// The same unless a row that would be replaced differs from @p erwartet, what lade() gave when
    /// it was last looked at: then nothing changes and false comes back. A row that has gone
    /// meanwhile is no difference. Without @p anlass nothing goes into the bin.
    [[nodiscard]] bool ersetze(const Ergebnissatz& satz,
                               const std::optional<Ergebnissatz>& erwartet,
                               std::optional<Korbanlass> anlass = Korbanlass::Überschrieben);
    /// The row of that number, of several spellings the exact one; nullopt when there is none.
    [[nodiscard]] std::optional<Ergebnissatz> lade(const QString& nummer) const;

    /// The texts that stand in a column, without blanks around them and each once, whatever its
    /// case; of more than @p höchstens the most frequent. In the order of the alphabet.
    [[nodiscard]] QStringList bekannte(QString Ergebnissatz::*spalte, int höchstens) const;

    /// Converts the stored words of caste and verdict to @p sprache; does not write when there is
    /// nothing to convert.
    void SpracheDB(Sprache sprache);

    /// Copies the file to @p ziel while others may work on it. An existing file there is replaced
    /// only after the copy is complete. Never the file itself.
    void sichere(const QString& ziel) const;
    /// The same in small steps between which others can write. A file at @p ziel is never replaced.
    /// False when there was one, or when @p aufhören became true; nothing is left over then.
    bool sichereNebenbei(const QString& ziel, const std::atomic<bool>& aufhören) const;

    /// @name Rows by their place in the file, for the browser
    /// @{

    /// The columns that the browser shows, in its order.
    static constexpr int Spaltenzahl = 9;
    static const std::array<QStringView, Spaltenzahl>& spalten();
    /// A row as the browser shows it: the texts of spalten(), the date as "yyyy-MM-dd".
    struct Zeile {
        qint64 id = 0;
        std::array<QString, Spaltenzahl> werte;
    };

    /// The first @p höchstens rows of @p wahl, a record source or one with a search and more. Texts
    /// are sorted without regard to case and accents, rows that are equal by their number.
    [[nodiscard]] std::vector<Zeile> zeilen(const Zeilenwahl& wahl, int höchstens) const;
    [[nodiscard]] std::vector<Zeile> zeilen(const QString& datenquelle, const QString& suchtext,
                                            int höchstens) const {
        return zeilen(Zeilenwahl{.datenquelle = datenquelle, .suchtext = suchtext}, höchstens);
    }
    /// The places of all rows of @p wahl in its order.
    [[nodiscard]] std::vector<qint64> zeilenfolge(const Zeilenwahl& wahl) const;
    [[nodiscard]] std::vector<qint64> zeilenfolge(const QString& datenquelle,
                                                  const QString& suchtext) const {
        return zeilenfolge(Zeilenwahl{.datenquelle = datenquelle, .suchtext = suchtext});
    }
    /// The rows at @p ids; one that has gone meanwhile is left out.
    [[nodiscard]] std::vector<Zeile> zeilen(const std::vector<qint64>& ids) const;

    /// Gives the whole rows at @p ids to @p nimm one after the other, until it returns false; one
    /// that has gone meanwhile is left out. @p übergehe gets the number of a row that is left out
    /// because a value of it is beyond all measure. The file is closed between small groups of
    /// rows, so that others can write to it.
    void sätze(const std::vector<qint64>& ids, const std::function<bool(const Ergebnissatz&)>& nimm,
               const std::function<void(const QString&)>& übergehe) const;

    /// The place of the row that lade() would give; nullopt when there is none.
    [[nodiscard]] std::optional<qint64> platz(const QString& nummer) const;
    /// The same of several numbers, of very many only in their exact spelling; without those that
    /// there is no row of.
    [[nodiscard]] QHash<QString, qint64> plätze(const QStringList& nummern) const;
    /// The years of the dates that stand in the file, the latest first, and OhneSaison where a date
    /// tells none.
    [[nodiscard]] QStringList saisons() const;
    struct Anzahl {
        QString text;
        int zeilen = 0;
    };
    /// The texts of a column as they are stored, other than blanks, and how many rows have each.
    [[nodiscard]] std::vector<Anzahl> schreibweisen(int spalte) const;
    /// The places of the rows with one of @p texte in a column, exactly as they are stored.
    [[nodiscard]] std::vector<qint64> zeilenMit(int spalte, const QStringList& texte) const;
    /// Gives the number of measured wings of each row at @p ids to @p nimm, until it returns false;
    /// 0 for a row that has gone.
    void flügelzahlen(const std::vector<qint64>& ids,
                      const std::function<bool(qint64 id, int zahl)>& nimm) const;

    /// Another program has changed a row since it was read; this is how it stands now.
    class Zeilenkonflikt : public std::runtime_error {
    public:
        explicit Zeilenkonflikt(Zeile jetzt)
            : std::runtime_error("row changed meanwhile")
            , jetzt_(std::move(jetzt)) {}
        [[nodiscard]] const Zeile& jetzt() const { return jetzt_; }

    private:
        Zeile jetzt_;
    };

    /// Writes what differs between @p alt, a row as it was read, and @p neu, all of it or nothing.
    /// Texts are measured against their widths unless only blanks at their ends went; a number must
    /// not exist yet. An empty text is stored as a single blank, an empty date as none; so blank
    /// and empty do not differ. UntersuchungFehlt when the row has gone or its place belongs to
    /// another number now, Zeilenkonflikt when another text stands in it now. The row goes into the
    /// bin as it was; what is returned takes it back.
    Rücknahme ändere(const Zeile& alt, const Zeile& neu);
    /// Deletes a row as it was read, into the bin. UntersuchungFehlt as above.
    Rücknahme lösche(const Zeile& zeile);
    /// @}

private:
    QString pfad_;
    std::chrono::milliseconds wartezeit_;
};

} // namespace tarvel
