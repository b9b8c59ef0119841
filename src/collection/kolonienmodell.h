#pragma once

#include "collection/kolonieauswahl.h"
#include "collection/kolonietabelle.h"

#include <QAbstractTableModel>
#include <QStyledItemDelegate>

namespace tarvel {

/// The examinations of a choice as rows of a table; sorted by any column.
class Kolonienmodell : public QAbstractTableModel {
public:
    explicit Kolonienmodell(const Übersichtsworte& worte)
        : worte_(worte) {}

    void zeige(Kolonieauswahl auswahl);
    [[nodiscard]] const Kolonieauswahl& zeilen() const { return zeilen_; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    Übersichtsworte worte_;
    Kolonieauswahl zeilen_;
    int spalte_ = static_cast<int>(Kolonienspalte::Datum);
    Qt::SortOrder ordnung_ = Qt::DescendingOrder;
};

/// Paints the small histogram of a row.
class Histogrammzelle : public QStyledItemDelegate {
public:
    explicit Histogrammzelle(const Kolonienmodell& modell, QObject* parent)
        : QStyledItemDelegate(parent)
        , modell_(modell) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

private:
    const Kolonienmodell& modell_;
};

} // namespace tarvel
