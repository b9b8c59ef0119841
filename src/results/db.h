#pragma once

#include "lang/texte.h"
#include "platform/dateistand.h"
#include "platform/dialoge.h"
#include "platform/zahlen.h"
#include "results/datenbankfehler.h"
#include "results/ergebnismodell.h"
#include "results/filterwahl.h"
#include "results/filterzeile.h"
#include "results/neubeurteilung.h"

#include <QDialog>

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;

namespace tarvel {

class Einstellungen;
class Ergebnisgitter;
class Ergebnismenüs;

/// Reports of stored examinations, which a room above knows how to make.
class Protokollserie {
public:
    Protokollserie() = default;
    Protokollserie(const Protokollserie&) = delete;
    Protokollserie& operator=(const Protokollserie&) = delete;
    virtual ~Protokollserie() = default;

    /// Adds the report of a row. Empty, or why there is none.
    [[nodiscard]] virtual QString nimm(const Ergebnissatz& satz) = 0;
    /// The report that was added last, as PDF; empty when it could not be painted.
    [[nodiscard]] virtual QByteArray einzeln() = 0;
    /// All that were added behind a summary, as PDF; empty when they could not be painted.
    [[nodiscard]] virtual QByteArray alle() = 0;
};

/// What the browser takes from outside. References and functions outlive it.
struct DbUmgebung {
    const Texte& texte;
    Dialoge& dialoge;
    QString DatenbankPfad; ///< the results file in use; empty when there is none
    QString dokumente;     ///< folder that file choosers start in without a results file
    /// Makes a file the results file in use. False when it can't be used; the user has been told
    /// and the former one stays.
    std::function<bool(const QString& pfad)> DatenbankWählen;
    /// Opens an examination in the main window; true when the browser has done its work.
    std::function<bool(const QString& nummer)> LadenDB;
    /// Number of the row that is open in the main window; empty when none is.
    std::function<QString()> offene = {};
    /// What stored examinations are judged again by.
    std::function<Neubeurteilungsregeln()> neubeurteilung = {};
    /// Begins a series of reports.
    std::function<std::unique_ptr<Protokollserie>()> protokolle = {};
    QStringList rassen = {};                ///< the race list
    Zahlenformat format = {};               ///< of means and resolutions
    QDate heute = {};                       ///< later dates are asked about; invalid: none is
    Einstellungen* einstellungen = nullptr; ///< keep place, widths and columns of the window
    /// How often to look whether another program has changed the file; 0 for never.
    std::chrono::milliseconds nachsehen{0};
    /// Shows the overview of the file; true when an examination was opened from there.
    std::function<bool()> zuchtübersicht = {};
};

/// The browser of a results file: its rows in a grid, narrowed by menus, words and filters, sorted,
/// edited and deleted in place; opens one of them, and does with several what is done with many.
/// What is selected stays selected however the rows are shown.
class DB : public QDialog {
public:
    explicit DB(DbUmgebung umgebung, QWidget* parent = nullptr);

    /// Sets up the columns of the grid.
    void LadeTabelle();
    /// Shows the file in use from the start: everything, by date, the last row selected.
    void DB_Open();
    /// Moves to the last row.
    void Auf_Tabellenende();
    /// Opens the examination of the current row.
    void ÖffnenStart();

    /// Asks whether the current row is to be deleted.
    [[nodiscard]] bool Grid_BeforeDelete();
    /// Trims the text of every column of a row that is about to be written.
    static void Grid_BeforeUpdate(Ergebnismodell::Zeile& zeile);
    /// Error number of an action in the grid that was cancelled.
    static constexpr int Abgebrochen = 16389;
    /// Shows what went wrong in the grid, except that an action was cancelled. Reads the rows anew
    /// when one of them has gone.
    void Grid_Error(int DataErr, const QString& text);

    /// Numbers of examinations that others took the place of here, from another file or the bin.
    [[nodiscard]] const QStringList& ersetzte() const { return ersetzte_; }

    /// Closes unless a cell that is being edited is refused.
    void reject() override;
    void done(int ergebnis) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Rows by their places, and their numbers for those that another place was given meanwhile.
    struct Merkzeile {
        qint64 id = 0;
        QString nummer;
    };
    struct Merker {
        Merkzeile aktuelle;
        int spalte = 0;
        std::vector<Merkzeile> gewählte;
    };
    using Dateistände = std::array<std::optional<Dateistand>, 2>;
    /// Error number of a change of caste that is to be asked about.
    static constexpr int Tierwechsel = -3;

    void baueMenüs();
    void baueFenster();
    void vergibBuchstaben();
    QLayout* baueSuche();
    QLayout* baueFuß();

    template <typename Filter>
    void wähle(Filter filter);
    void filterbefehl(int index);
    void tabellenbefehl(int index);
    void zeilenbefehl(int index);
    void spaltenbefehl(int index);
    void sortierbefehl(int index);
    void sortiere(int spalte, bool absteigend);
    void engeEin();
    void zeigeAlles();
    void sucheMit(const QString& text);
    [[nodiscard]] bool engtEin() const;
    [[nodiscard]] Zeilenwahl zeilenwahl() const;
    [[nodiscard]] int gezeigteOrdnung() const;
    [[nodiscard]] Ergebnismodell::Sieb flügelsieb();
    [[nodiscard]] Filterzeile::Listen filterlisten();
    void zeigeZeilen();
    void zeigeNeu();
    [[nodiscard]] bool beendeEingabe();
    bool zeigeMeldungen();
    [[nodiscard]] bool frageErsetzen(const QString& text);
    [[nodiscard]] bool frageTierwechsel();
    [[nodiscard]] Ergebnismodell::Wortwechsel prüfeTierwechsel(const QString& nummer,
                                                               const QString& wort);
    void ladeRest();
    void zeigeStand();
    void zeigeSpaltenhaken();
    void zeigeOrdnung();

    /// Numbers cost a look into the file; of a great many they are known only when wanted.
    enum class Nummern { VonWenigen, VonAllen };
    void merkeWahl(Nummern nummern = Nummern::VonWenigen);
    /// Rows to be selected when the rows come anew.
    void wähleNachher(const std::vector<qint64>& ids);
    void zeigeOffene();
    [[nodiscard]] bool stelleWahlHer();
    void vergissWahl();
    [[nodiscard]] Dateistände dateistände() const;
    void siehNach();
    void stelleFensterHer();
    void merkeFenster();

    void öffneTabelle();
    void neueTabelle();
    void sichereTabelle();
    void exportiere(const std::vector<qint64>& ids);
    [[nodiscard]] std::optional<QByteArray> alsCsv(const std::vector<qint64>& ids);
    void löscheZeile();
    void merke(const Rücknahme& rücknahme);
    void löscheMehrere(const QList<int>& zeilen);
    void beurteileNeu();
    [[nodiscard]] QList<int> gewählteZeilen() const;
    [[nodiscard]] int anzahlGewählte() const;
    [[nodiscard]] std::vector<qint64> gewählteIds();
    void sammlungsbefehl(int index);
    void zeigeAlteDaten();
    bool wandleDaten();
    [[nodiscard]] Satzumgebung satzumgebung() const;
    [[nodiscard]] std::optional<std::vector<Neuurteil>>
    prüfeNeu(const Neubeurteilung& neubeurteilung, QStringList& übergangen);
    void speichereNeue(const Neubeurteilung& neubeurteilung, const std::vector<Neuurteil>& urteile);
    void schreibeProtokolle(bool einzeln);
    void ändereFeld();
    void führeZusammen();
    void trageEin(const QString& titel, const std::vector<qint64>& ids,
                  const std::function<bool(Ergebnismodell::Zeile&)>& ändere);
    void berichte(const QString& titel, const QString& text, const QStringList& gescheitert);
    void nimmTabelle(const QString& pfad);
    [[nodiscard]] QString dateimuster() const;
    [[nodiscard]] QString ordner() const;
    void meldeFehler(const Datenbankfehler& fehler);

    DbUmgebung umgebung_;
    Filterwahl wahl_;
    std::optional<int> spalte_; ///< that the rows are sorted by in place of the choice of the menu
    bool absteigend_ = false;
    Ergebnismodell modell_;
    std::vector<std::pair<int, QString>> meldungen_; ///< number and text, not shown yet
    std::pair<QString, QString> tierwechsel_;        ///< examination and word that it asks about
    std::optional<Merker> gemerkt_;
    QStringList ersetzte_;
    bool stelltWahl_ = false;                      ///< the selection changes by itself
    std::optional<int> gesamt_;                    ///< rows of the file
    std::unordered_map<qint64, int> flügelzahlen_; ///< by the place of the row
    Dateistände stand_;
    Ergebnismenüs* menüs_;
    Ergebnisgitter* grid_;
    Filterzeile* filter_;
    QLineEdit* txt_Suche_ = nullptr;
    QLabel* lab_Anzahl_;
    QPushButton* bef_Öffnen_;
    QPushButton* bef_Daten_; ///< tells of dates in another form
};

} // namespace tarvel
