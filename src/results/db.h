#pragma once

#include "lang/texte.h"
#include "platform/dialoge.h"
#include "results/datenbankfehler.h"
#include "results/ergebnismodell.h"
#include "results/filterwahl.h"
#include "results/neubeurteilung.h"

#include <QDialog>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;

namespace tarvel {

class Ergebnisgitter;
class Ergebnismenüs;

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
    /// What stored examinations are judged again by.
    std::function<Neubeurteilungsregeln()> neubeurteilung = {};
    /// Shows the overview of the file; true when an examination was opened from there.
    std::function<bool()> zuchtübersicht = {};
};

/// The browser of a results file: its rows in a grid, narrowed and sorted by menus, edited and
/// deleted in place; opens one of them.
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

    /// Closes unless a cell that is being edited is refused.
    void reject() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void baueMenüs();
    void baueFenster();
    QWidget* baueSuche();
    QLayout* baueFuß();

    template <typename Filter>
    void wähle(Filter filter);
    void filterbefehl(int index);
    void tabellenbefehl(int index);
    void zeigeZeilen();
    void zeigeNeu();
    [[nodiscard]] bool beendeEingabe();
    bool zeigeMeldungen();
    void ladeRest();
    void zeigeStand();
    void zeigeSuche(bool zeigen);

    void öffneTabelle();
    void neueTabelle();
    void sichereTabelle();
    void exportiereTabelle();
    [[nodiscard]] std::optional<QByteArray> gezeigteAlsCsv();
    void löscheZeile();
    void beurteileNeu();
    [[nodiscard]] std::vector<qint64> gemeinteZeilen();
    [[nodiscard]] std::optional<std::vector<Neuurteil>>
    prüfeNeu(const Neubeurteilung& neubeurteilung, QStringList& übergangen);
    void speichereNeue(const Neubeurteilung& neubeurteilung, const std::vector<Neuurteil>& urteile);
    void nimmTabelle(const QString& pfad);
    [[nodiscard]] QString dateimuster() const;
    [[nodiscard]] QString ordner() const;
    void meldeFehler(const Datenbankfehler& fehler);

    DbUmgebung umgebung_;
    Filterwahl wahl_;
    Ergebnismodell modell_;
    std::vector<std::pair<int, QString>> meldungen_; ///< number and text, not shown yet
    Ergebnismenüs* menüs_;
    Ergebnisgitter* grid_;
    QWidget* suche_ = nullptr;
    QLineEdit* txt_Suche_ = nullptr;
    QLabel* lab_Anzahl_;
    QPushButton* bef_Öffnen_;
};

} // namespace tarvel
