#include "evaluation/stellenwahl.h"

#include <QHelpEvent>
#include <QPainter>
#include <QTextDocument>
#include <QToolTip>
#include <QWidget>

#include <algorithm>

namespace tarvel {

std::optional<int> stelleNach(int taste, int stelle, int letzte) {
    switch (taste) {
    case Qt::Key_Right:
    case Qt::Key_Down:
        return std::min(stelle + 1, letzte);
    case Qt::Key_Left:
    case Qt::Key_Up:
        return std::max(stelle - 1, 0);
    case Qt::Key_Home:
        return 0;
    case Qt::Key_End:
        return letzte;
    default:
        return std::nullopt;
    }
}

void zeigeTipp(QHelpEvent& frage, const QString& text, QWidget& ansicht) {
    if (text.isEmpty()) {
        QToolTip::hideText();
        frage.ignore();
    } else {
        QToolTip::showText(frage.globalPos(), tipptext(text), &ansicht);
    }
}

QString tipptext(const QString& text) {
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

void maleTastenrahmen(QPainter& painter, const QWidget& ansicht) {
    painter.setPen(QPen(ansicht.palette().color(QPalette::Highlight), 2));
    painter.drawRect(QRectF(ansicht.rect()).adjusted(1, 1, -1, -1));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ansicht.palette().color(QPalette::Text), 2, Qt::DotLine));
}

} // namespace tarvel
