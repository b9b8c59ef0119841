#include "measure/fluegelzeile.h"

#include "measure/marken.h"

#include <QPainter>

namespace tarvel {

void Flügelzeile::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.data(zeilenrolle::Ausgelassen).toBool()) {
        option->font.setStrikeOut(true);
        option->palette.setColor(QPalette::Text,
                                 option->palette.color(QPalette::Disabled, QPalette::Text));
    }
}

void Flügelzeile::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
    QStyledItemDelegate::paint(painter, option, index);
    const auto grad = static_cast<Zweifelsgrad>(index.data(zeilenrolle::Zweifel).toInt());
    if (index.column() != 0 || grad == Zweifelsgrad::Keiner) {
        return;
    }
    const int kante = qMin(option.fontMetrics.height(), option.rect.height());
    QRect feld({}, QSize(kante, kante));
    feld.moveCenter(option.rect.center());
    if (index.data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight) {
        feld.moveLeft(option.rect.left() + 2);
    } else {
        feld.moveRight(option.rect.right() - 2);
    }
    maleZweifel(*painter, feld, grad);
}

} // namespace tarvel
