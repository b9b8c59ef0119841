#pragma once

#include "platform/benutzerspeicher.h"
#include "platform/dialoge.h"
#include "platform/uhr.h"
#include "results/datenbankfehler.h"
#include "results/ergebnistabelle.h"
#include "results/untersuchungssatz.h"
#include "settings/einstellungen.h"

#include <QString>

#include <optional>

namespace tarvel {

/// What the filing of examinations takes from outside. Everything outlives it.
struct Ablageumgebung {
    const Einstellungen& einstellungen;
    const Texte& texte;
    Dialoge& dialoge;
    const Clock& uhr;
    Zahlenformat format;
    QString dokumente; ///< folder that the first results file is made in
};

/// What an examination is stored with beside its data.
struct Ablagestand {
    std::optional<bool> urteil; ///< empty when it was not judged
    int auflösung = 0;          ///< in dots per inch
    Untersuchungszusatz zusatz = {};
};

/// Why an examination is saved: because the user said so, or because it is about to leave the
/// window, when the user is asked first.
enum class Speicheranlass { Wunsch, Verlassen };

/// What became of a request to save.
struct Speicherergebnis {
    bool fertig = false;              ///< stored, or the user chose not to store
    std::optional<QDate> gespeichert; ///< date that the row was stored with
    /// Body marks that are not understood stay in the row as they were.
    bool merkmaleBewahrt = false;
};

/// What became of a row that others may write to.
struct Zeilenlage {
    enum class Art { Gleich, Geändert, Umbenannt, Verschwunden };
    Art art = Art::Gleich;
    QString nummer = {}; ///< that it lies under now; empty when it is gone
};

/// The results file in use, and the way of the open examination into it and out of it. Whatever
/// goes wrong is told to the user.
class Ablage {
public:
    Ablage(const Ablageumgebung& umgebung, Benutzerspeicher& speicher);

    /// Full path of the results file; empty when there is none.
    [[nodiscard]] const QString& DatenbankPfad() const { return DatenbankPfad_; }
    /// Folder of the user's documents.
    [[nodiscard]] const QString& dokumente() const { return umgebung_.dokumente; }

    /// Finds the results file at start-up: the one that is remembered, made anew when it is gone,
    /// or at the very first start a new one among the user's documents. The user is told when there
    /// was a store that names none.
    void richteEin();

    /// Makes @p pfad the results file and remembers it. False, with a message, when it is none; the
    /// former one stays then.
    bool DatenbankWählen(const QString& pfad);

    /// Number of the examination that the program starts with; nullopt without one, or, with a
    /// message, when the file cannot be read.
    [[nodiscard]] std::optional<QString> letzteNummer() const;

    /// What the results file knows for a field of the colony data, to choose from; empty when it
    /// cannot be read.
    [[nodiscard]] QStringList bekannte(QString Kolonieangaben::*wert) const;

    /// Number that the open examination is stored under; empty for a new one.
    [[nodiscard]] QString gespeicherteNummer() const {
        return gespeichert_ ? gespeichert_->U_NR : QString();
    }
    /// The satzmarke() of its row as it was loaded or stored; empty for a new one.
    [[nodiscard]] const QString& gespeicherteMarke() const { return marke_; }
    /// Takes the open examination for that of @p nummer, as it lies in the file now. With another
    /// @p marke than that of its row somebody changed it meanwhile, which is asked about before it
    /// is replaced; an empty one is not compared.
    void nimmAlsGespeichert(const QString& nummer, const QString& marke = {});

    /// What became of the row of the open examination since it was loaded or stored here.
    [[nodiscard]] Zeilenlage zeilenlage() const;

    /// Saves the open examination if it was changed. Not finished when the user wants to go on with
    /// it, or when storing failed.
    [[nodiscard]] Speicherergebnis SpeichernDB(const Untersuchung& untersuchung,
                                               Speicheranlass anlass, const Ablagestand& stand);

    /// Colony data of a new examination: with automatic numbering it has its number; race and caste
    /// are those of @p bisher. What was open counts as left; SpeichernDB comes before.
    [[nodiscard]] Kolonieangaben NeueUntersuchung(const Kolonieangaben& bisher);

    /// The examination in the row of @p nummer. nullopt, with a message, when it cannot be read.
    [[nodiscard]] std::optional<GeleseneUntersuchung> LadenDB(const QString& nummer);

    /// Brings the stored words into the program's language.
    void SpracheDB();

    void meldeFehler(const Datenbankfehler& fehler) const;

private:
    [[nodiscard]] Satzumgebung satzumgebung() const;
    [[nodiscard]] QDate heute() const { return umgebung_.uhr.now().date(); }
    [[nodiscard]] bool frage(const QString& titel, const QString& text, Meldungsart art) const;
    /// Puts what was not read of the stored row back where nothing of it was edited. Names of the
    /// columns where it was, so that it would be lost.
    [[nodiscard]] QStringList bewahreUngelesenes(Ergebnissatz& satz,
                                                 const Ablagestand& stand) const;
    [[nodiscard]] bool darfUnlesbaresErsetzen(const QString& nummer,
                                              const QStringList& spalten) const;
    [[nodiscard]] bool darfAndereErsetzen(const QString& nummer) const;
    [[nodiscard]] bool istGespeicherte(const QString& nummer) const;
    /// Tells @p vorweg, and that the store did not take the path, in one message.
    void merkePfad(const QString& pfad, const QString& vorweg = {});

    Ablageumgebung umgebung_;
    Benutzerspeicher& speicher_;
    QString DatenbankPfad_;
    /// The row of the open examination as it was loaded or stored; nullopt when it is new. Whatever
    /// else stands under its number is not ours to replace unasked.
    void setzeGespeichert(std::optional<Ergebnissatz> satz);

    std::optional<Ergebnissatz> gespeichert_;
    QString marke_;
    /// Columns of that row that were not understood, and that storing would lose.
    QStringList nichtGelesen_;
    /// False while the file could not even be set up; the user knows then.
    bool brauchbar_ = false;
};

} // namespace tarvel
