#include "collection/kolonienmodell.h"

#include <QPainter>

namespace tarvel {

void Kolonienmodell::zeige(Kolonieauswahl auswahl) {
    beginResetModel();
    zeilen_ = std::move(auswahl);
    sortiere(zeilen_, spalte_, ordnung_ == Qt::DescendingOrder);
    endResetModel();
}

int Kolonienmodell::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(zeilen_.size());
}

int Kolonienmodell::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Kolonienspalten;
}

QVariant Kolonienmodell::data(const QModelIndex& index, int role) const {
    const Koloniewerte& k = *zeilen_[static_cast<std::size_t>(index.row())];
    const int spalte = index.column();
    const bool zahl = spalte >= static_cast<int>(Kolonienspalte::Dpi) && spalte < SpalteUrteil;
    switch (role) {
    case Qt::DisplayRole:
        return zellentext(k, spalte, worte_);
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole: {
        const QString tipp = zellentipp(k, spalte, worte_.texte);
        return tipp.isEmpty() ? QVariant() : QVariant(tipp);
    }
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(
            Qt::Alignment((zahl ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter));
    default:
        return {};
    }
}

QVariant Kolonienmodell::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) {
        return {};
    }
    return role == Qt::DisplayRole   ? QVariant(spaltenkopf(section, worte_.texte))
           : role == Qt::ToolTipRole ? QVariant(spaltentipp(section, worte_.texte))
                                     : QVariant();
}

void Kolonienmodell::sort(int column, Qt::SortOrder order) {
    spalte_ = column;
    ordnung_ = order;
    zeige(std::move(zeilen_));
}

void Histogrammzelle::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
    QStyledItemDelegate::paint(painter, option, index);
    const bool gewählt = (option.state & QStyle::State_Selected) != 0;
    maleKleinesHistogramm(
        *painter, QRectF(option.rect).adjusted(3, 2, -3, -2),
        *modell_.zeilen()[static_cast<std::size_t>(index.row())],
        option.palette.color(gewählt ? QPalette::HighlightedText : QPalette::Text),
        option.palette.color(QPalette::Mid));
}

} // namespace tarvel
