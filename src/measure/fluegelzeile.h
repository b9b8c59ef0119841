#pragma once

#include <QStyledItemDelegate>

namespace tarvel {

/// Draws the lines of wings by what their model says of them: struck out and grey when left out of
/// the sample, and with the mark of a doubt in the first column, on the side without text.
class Flügelzeile : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    /// Width that the mark takes beside the text, in a line of that height.
    [[nodiscard]] static int markenbreite(int zeilenhöhe) { return zeilenhöhe; }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

} // namespace tarvel
