#pragma once

#include <QString>
#include <QStringList>

#include <stdexcept>

namespace tarvel {

class Texte;

/// Why an operation on a results file did not happen.
enum class Datenbankgrund {
    Keine,              ///< not a results file at all
    Früher,             ///< a database of the kind that results were kept in formerly
    OhneTabelle,        ///< a database without the table `Ergebnisse`
    SpalteFehlt,        ///< einzelheit: name of the column
    Beschädigt,         ///< truncated or malformed
    Verschwunden,       ///< the file is not there
    Gesperrt,           ///< another program keeps it locked
    Schreibgeschützt,   ///< the file or its folder
    Voll,               ///< no room on the drive
    NichtAnlegbar,      ///< a new file cannot be made there
    SchonVorhanden,     ///< a file of that name exists already
    GleicheDatei,       ///< the backup copy would be the open file itself
    TextZuLang,         ///< einzelheit: column; a text is wider than its column
    NummerDoppelt,      ///< einzelheit: examination number that exists already
    UntersuchungFehlt,  ///< einzelheit: examination number that is not in the file; may be empty
    NichtGewählt,       ///< no file is chosen
    FremdesJournal,     ///< einzelheit: the file beside it that could reach others
    OhneSperren,        ///< the drive keeps no locks
    ZuGroßZumSichern,   ///< beyond what is backed up daily
    QuelleDieselbe,     ///< the other collection is the open file itself
    QuelleUnterbrochen, ///< a crash left the other collection in the middle of a save
    KorbEintragFehlt,   ///< what is to come back is not in the bin any more
    SeitherGeändert,    ///< einzelheit: examination number; not as it was left any more
    Laufwerk,           ///< einzelheit: what the system says; the drive has failed
    Sonstiges,          ///< einzelheit: what the engine says
};

/// Thrown by every operation on a results file that could not be done. The file is then as it was
/// before.
class Datenbankfehler : public std::runtime_error {
public:
    Datenbankfehler(Datenbankgrund grund, QString datei, QString einzelheit = {});

    [[nodiscard]] Datenbankgrund grund() const { return grund_; }
    [[nodiscard]] const QString& datei() const { return datei_; }
    [[nodiscard]] const QString& einzelheit() const { return einzelheit_; }
    /// Length of the text and width of the column, for TextZuLang.
    [[nodiscard]] int länge() const { return länge_; }
    [[nodiscard]] int breite() const { return breite_; }

    /// @p spalte its name in the table, @p länge what the text has, @p breite what it holds.
    [[nodiscard]] static Datenbankfehler zuLang(QString datei, QString spalte, int länge,
                                                int breite);

private:
    Datenbankgrund grund_;
    QString datei_;
    QString einzelheit_;
    int länge_ = 0;
    int breite_ = 0;
};

/// What happened, to which file, why and what to do, in the language of @p texte. Columns are named
/// by the captions that a person knows them by.
[[nodiscard]] QString meldungstext(const Texte& texte, const Datenbankfehler& fehler);

/// What a column of the table `Ergebnisse` holds, as a user knows it; the name of any other column.
[[nodiscard]] QString spaltenname(const Texte& texte, const QString& spalte);
/// The same of several, each once, "Breeder, body marks".
[[nodiscard]] QString spaltennamen(const Texte& texte, const QStringList& spalten);

} // namespace tarvel
