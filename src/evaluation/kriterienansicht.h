#pragma once

#include "evaluation/kriterientabelle.h"
#include "lang/texte.h"

#include <QAbstractTableModel>
#include <QWidget>

#include <functional>
#include <utility>
#include <vector>

class QLabel;
class QTableView;

namespace tarvel {

/// The rows of the table of criteria for a view. What fails has a sign and is bold, what cannot
/// fail is set back.
class Kriterienmodell : public QAbstractTableModel {
public:
    explicit Kriterienmodell(const Texte& texte);

    void setze(std::vector<Kriterienzeile> zeilen);
    [[nodiscard]] const std::vector<Kriterienzeile>& zeilen() const { return zeilen_; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    const Texte& texte_;
    std::vector<Kriterienzeile> zeilen_;
};

/// The table of criteria below the views: what the verdict looks at, and how firm it is.
class Kriterienansicht : public QWidget {
public:
    explicit Kriterienansicht(const Texte& texte, QWidget* parent = nullptr);

    /// @p statt what is said in place of rows when there are none.
    void zeige(std::vector<Kriterienzeile> zeilen, const QString& statt);
    /// Called with the check whose bees the user wants to see: by a click, or Enter.
    void beiWahl(std::function<void(const Prüfwert&)> wahl) { beiWahl_ = std::move(wahl); }
    void nimmTastatur();

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void beschrifte();
    void wähle(int zeile) const;

    const Texte& texte_;
    std::function<void(const Prüfwert&)> beiWahl_;
    Kriterienmodell modell_;
    QTableView* tabelle_;
    QLabel* lab_Statt_;
};

} // namespace tarvel
