#include "results/ergebnisgitter.h"

#include "results/zeileneingabe.h"

#include <QAbstractItemDelegate>
#include <QComboBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTimer>
#include <QToolTip>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// Offers the words of a column that has such, and shows a text that is cut as a tool tip.
class Zellendelegat : public QStyledItemDelegate {
public:
    Zellendelegat(const Texte& texte, QObject* parent)
        : QStyledItemDelegate(parent)
        , texte_(texte) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        const auto spalte = static_cast<Ergebnisspalte>(index.column());
        const QStringList worte = spaltenworte(texte_, spalte);
        if (worte.isEmpty()) {
            QWidget* feld = QStyledItemDelegate::createEditor(parent, option, index);
            feld->setAccessibleName(spaltentitel(texte_, spalte));
            return feld;
        }
        auto* auswahl = new QComboBox(parent);
        auswahl->setEditable(true);
        auswahl->setInsertPolicy(QComboBox::NoInsert);
        auswahl->addItems(worte);
        auswahl->view()->setMinimumWidth(auswahl->sizeHint().width()); // the column may be narrower
        auswahl->setAccessibleName(spaltentitel(texte_, spalte));
        return auswahl;
    }

    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        if (auto* auswahl = qobject_cast<QComboBox*>(editor)) {
            auswahl->setEditText(index.data(Qt::EditRole).toString());
            auswahl->lineEdit()->selectAll(); // typing replaces the word
            return;
        }
        QStyledItemDelegate::setEditorData(editor, index);
    }

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override {
        if (event->type() == QEvent::ToolTip &&
            sizeHint(option, index).width() > option.rect.width()) {
            // A tip that looks like a page would be shown as one, with what the page asks for.
            QToolTip::showText(event->globalPos(),
                               Qt::convertFromPlainText(index.data().toString()), view);
            return true;
        }
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }

private:
    const Texte& texte_;
};

} // namespace

Ergebnisgitter::Ergebnisgitter(const Texte& texte, QWidget* parent)
    : QTableView(parent) {
    setItemDelegate(new Zellendelegat(texte, this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(EditKeyPressed | AnyKeyPressed | SelectedClicked);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignCenter | Qt::Alignment(Qt::TextWordWrap));
    connect(this, &QTableView::doubleClicked, this, [this] {
        if (öffnen_) {
            öffnen_();
        }
    });
}

void Ergebnisgitter::richteSpaltenEin(const QList<int>& breiten, const QList<QStringList>& worte) {
    constexpr double TwipsJeZoll = 1440;
    const auto pixel = [this](int twips) { return qRound(twips * logicalDpiX() / TwipsJeZoll); };
    // Margins of a cell, its line and what a laid out text is wider than its letters.
    const int rand =
        2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1) + 4;
    const auto passt = [&](const QFont& schrift) {
        const QFontMetrics maß(schrift);
        for (int spalte = 0; spalte < worte.size(); ++spalte) {
            for (const QString& wort : worte.at(spalte)) {
                if (maß.horizontalAdvance(wort) + rand > pixel(breiten.at(spalte))) {
                    return false;
                }
            }
        }
        return true;
    };
    // The widths are fixed, fonts are not: a wide one becomes somewhat smaller and then narrower.
    // What still does not fit is shown cut, with a tool tip.
    QFont schrift = font();
    const double kleinste = schrift.pointSizeF() * 0.85;
    constexpr double Stufe = 0.25;
    while (!passt(schrift) && schrift.pointSizeF() - Stufe >= kleinste) {
        schrift.setPointSizeF(schrift.pointSizeF() - Stufe);
    }
    constexpr int Schmalste = 85; // percent
    for (int dehnung = QFont::Unstretched; !passt(schrift) && dehnung >= Schmalste; --dehnung) {
        schrift.setStretch(dehnung);
    }
    setFont(schrift);
    horizontalHeader()->setFont(schrift);
    constexpr int Luft = 6;
    const int höhe = QFontMetrics(schrift).height();
    verticalHeader()->setMinimumSectionSize(höhe + Luft);
    verticalHeader()->setDefaultSectionSize(höhe + Luft);
    horizontalHeader()->setMinimumSectionSize(höhe);
    horizontalHeader()->setFixedHeight(2 * höhe + Luft); // a heading may take two lines
    for (int spalte = 0; spalte < breiten.size(); ++spalte) {
        setColumnWidth(spalte, pixel(breiten.at(spalte)));
    }
}

void Ergebnisgitter::nachMalen(std::function<void()> handlung) {
    nachMalen_ = std::move(handlung);
    viewport()->update();
}

void Ergebnisgitter::setzeLeertext(const QString& text) {
    leertext_ = text;
    setAccessibleDescription(text);
    viewport()->update();
}

void Ergebnisgitter::wähleZeile(int zeile) {
    const QModelIndex ziel = model()->index(zeile, std::max(0, currentIndex().column()));
    if (ziel.isValid()) {
        // Whatever key is down meanwhile, such as Ctrl of the command that opened the list.
        selectionModel()->setCurrentIndex(ziel, QItemSelectionModel::ClearAndSelect |
                                                    QItemSelectionModel::Rows);
        scrollTo(ziel);
    }
}

void Ergebnisgitter::beendeEingabe() {
    if (QWidget* editor = state() == EditingState ? indexWidget(currentIndex()) : nullptr) {
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

void Ergebnisgitter::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // While a cell is edited, the key is that of its editor.
        if (state() != EditingState && öffnen_) {
            öffnen_();
        }
        event->accept();
        return;
    case Qt::Key_Home:
        wähleZeile(0);
        return;
    case Qt::Key_End:
        if (ende_) {
            ende_();
        }
        return;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        return; // would begin to edit the cell
    default:
        QTableView::keyPressEvent(event);
    }
}

void Ergebnisgitter::mousePressEvent(QMouseEvent* event) {
    const QModelIndex getroffen = indexAt(event->position().toPoint());
    nochmalGeklickt_ = getroffen.isValid() && geklickt_ == getroffen && currentIndex() == getroffen;
    geklickt_ = getroffen;
    QTableView::mousePressEvent(event);
}

bool Ergebnisgitter::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    // A click on another cell of the selected row only goes there, and the blank of a key pressed
    // by mistake must not replace a text.
    if (trigger == SelectedClicked && !nochmalGeklickt_) {
        return false;
    }
    if (trigger == AnyKeyPressed && event != nullptr && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->text().trimmed().isEmpty()) {
        return false;
    }
    return QTableView::edit(index, trigger, event);
}

void Ergebnisgitter::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (model() != nullptr && model()->rowCount() == 0) {
        QPainter maler(viewport());
        maler.setPen(palette().color(QPalette::Text));
        constexpr int Rand = 24;
        maler.drawText(viewport()->rect().adjusted(Rand, Rand, -Rand, -Rand),
                       Qt::AlignCenter | Qt::TextWordWrap, leertext_);
    }
    if (nachMalen_) {
        QTimer::singleShot(0, this, std::exchange(nachMalen_, nullptr));
    }
}

} // namespace tarvel
