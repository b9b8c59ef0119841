#pragma once

#include "platform/dialoge.h"
#include "results/datenbankfehler.h"
#include "results/papierkorb.h"
#include "results/untersuchungssatz.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QTableView;
class QTableWidget;

namespace tarvel {

class Korbmodell;
struct Vergleichszeile;

/// Shows @p zeilen in a table of three columns, name and two values.
void zeigeVergleich(QTableWidget& tabelle, const std::vector<Vergleichszeile>& zeilen);
/// Such a table; @p links and @p rechts are the headings of the values.
[[nodiscard]] QTableWidget* vergleichstabelle(const QString& name, const QString& links,
                                              const QString& rechts);

/// What the bin of a results file holds, each beside the row of today; restores one or many.
class Papierkorbfenster : public QDialog {
public:
    /// Everything outlives it. Throws Datenbankfehler when the file cannot be read.
    Papierkorbfenster(const QString& DatenbankPfad, Satzumgebung umgebung, Dialoge& dialoge,
                      QWidget* parent);
    ~Papierkorbfenster() override;

    /// What takes back all that was restored here.
    [[nodiscard]] const std::vector<Rücknahme>& rücknahmen() const { return rücknahmen_; }
    /// Numbers of the examinations that others took the place of.
    [[nodiscard]] const QStringList& ersetzte() const { return ersetzte_; }

private:
    void zeigeGewählte();
    void stelleWiederHer();
    void leere();
    void liesNeu();
    void melde(const Datenbankfehler& fehler);
    [[nodiscard]] std::vector<qint64> gewählte() const;
    [[nodiscard]] Sprache sprache() const;

    Papierkorb korb_;
    Satzumgebung umgebung_;
    Dialoge& dialoge_;
    Korbmodell* modell_;
    QTableView* grid_;
    QTableWidget* vergleich_;
    QLabel* leer_;
    QPushButton* bef_Wiederherstellen_;
    QPushButton* bef_Leeren_;
    std::vector<Rücknahme> rücknahmen_;
    QStringList ersetzte_;
};

} // namespace tarvel
