#pragma once

#include "results/untersuchungssatz.h"
#include "results/zusammenfuehrung.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QTableView;
class QTableWidget;

namespace tarvel {

class Gegenüberauswahl;
class Gegenübermodell;

/// The rows of another collection, those that are new or conflicting at first, each side by side
/// with ours, and what is to become of them. Accepted when something is to be taken over.
class Zusammenführungsfenster : public QDialog {
public:
    /// @p zusammenführung compared already; decisions are made in it. Everything outlives it.
    Zusammenführungsfenster(Zusammenführung& zusammenführung, const QString& titel,
                            const QString& quelle, const Satzumgebung& umgebung, QWidget* parent);

private:
    void entscheide(Entscheidung entscheidung);
    void zeigeGewählte();
    void zeigeStand();
    [[nodiscard]] std::vector<Gegenüber*> gewählte() const;

    Zusammenführung& zusammenführung_;
    const Satzumgebung& umgebung_;
    Gegenübermodell* modell_;
    Gegenüberauswahl* auswahl_;
    QLabel* vorhaben_; ///< how many come in
    QTableView* grid_;
    QTableWidget* vergleich_;
    QPushButton* bef_Übernehmen_;
    std::vector<QPushButton*> entscheidungen_; ///< in the order of Entscheidung
};

} // namespace tarvel
