#pragma once

#include "platform/dialoge.h"
#include "results/untersuchungssatz.h"
#include "results/zusammenfuehrung.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QTableView;
class QTableWidget;

namespace tarvel {

class Gegenübermodell;

/// The rows of another collection that are new or conflicting, each side by side with ours, and
/// what is to become of them. Accepted when something is to be taken over.
class Zusammenführungsfenster : public QDialog {
public:
    /// @p zusammenführung compared already; decisions are made in it. Everything outlives it.
    Zusammenführungsfenster(Zusammenführung& zusammenführung, const QString& titel,
                            const QString& quelle, const Satzumgebung& umgebung, Dialoge& dialoge,
                            QWidget* parent);

private:
    void entscheide(Entscheidung entscheidung);
    void zeigeGewählte();
    void zeigeStand();
    void übernimm();

    Zusammenführung& zusammenführung_;
    const Satzumgebung& umgebung_;
    Dialoge& dialoge_;
    Gegenübermodell* modell_;
    QTableView* grid_;
    QTableWidget* vergleich_;
    QPushButton* bef_Übernehmen_;
    std::vector<QPushButton*> entscheidungen_; ///< in the order of Entscheidung
};

} // namespace tarvel
