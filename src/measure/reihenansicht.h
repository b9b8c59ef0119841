#pragma once

#include "lang/texte.h"
#include "measure/reihenmodelle.h"

#include <QWidget>

#include <functional>
#include <vector>

class QAction;
class QLabel;
class QListView;
class QTableView;

namespace tarvel {

/// The view "Alle": the cubital-index lines and the hantel-index lines of the series side by side.
/// Choosing a wing in one list chooses it in the other.
class Reihenansicht : public QWidget {
public:
    /// The lists get the object names @p präfix + "_CI" and @p präfix + "_HI_DV".
    Reihenansicht(const Texte& texte, Reihenmodelle& modelle, const QString& präfix,
                  Qt::Orientation orientierung, QWidget* parent = nullptr);

    /// Wing numbers of the selected lines, ascending.
    [[nodiscard]] std::vector<int> gewählteNummern() const;
    void wähle(const std::vector<int>& nummern);
    /// What the context menu of the lists offers.
    void setzeBefehle(const QList<QAction*>& befehle);
    /// Called with the selected wings after each change of the selection.
    void beiWahl(std::function<void(const std::vector<int>&)> wahl) { beiWahl_ = std::move(wahl); }

private:
    void beschrifte();
    void übertrage(const QListView& von, QListView& nach);

    const Texte& texte_;
    QLabel* überschriftCi_;
    QLabel* überschriftHiDv_;
    QListView* ci_;
    QListView* hiDv_;
    std::function<void(const std::vector<int>&)> beiWahl_;
    bool überträgt_ = false;
};

/// The view "Tabelle": one row a wing, and below it the figures of the sample.
class Tabellenansicht : public QWidget {
public:
    Tabellenansicht(const Texte& texte, Reihenmodelle& modelle, QWidget* parent = nullptr);

    /// Wing numbers of the selected rows, ascending.
    [[nodiscard]] std::vector<int> gewählteNummern() const;
    /// What the context menu of the wings offers.
    void setzeBefehle(const QList<QAction*>& befehle);
    /// Selects the rows of these wings and makes the first of them the current one.
    void wähle(const std::vector<int>& nummern);
    /// Called with the chosen wings whenever the selection changes.
    void beiWahl(std::function<void(const std::vector<int>&)> wahl) { beiWahl_ = std::move(wahl); }

private:
    void beschrifte();

    const Texte& texte_;
    Reihenmodelle& modelle_;
    std::function<void(const std::vector<int>&)> beiWahl_;
    QTableView* flügel_;
    QTableView* kennzahlen_;
};

} // namespace tarvel
