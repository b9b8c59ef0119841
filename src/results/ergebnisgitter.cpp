#include "results/ergebnisgitter.h"

#include "results/zeileneingabe.h"

#include <QAbstractItemDelegate>
#include <QComboBox>
#include <QFocusEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTimer>
#include <QToolTip>

#include <algorithm>
#include <iterator>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// Columns of names take what room is left.
constexpr Ergebnisspalte Dehnbare[] = {Ergebnisspalte::Züchter, Ergebnisspalte::Besitzer,
                                       Ergebnisspalte::Begattung, Ergebnisspalte::Königin};

/// Offers the words of a column that has such, limits what is typed, and shows a text that is cut
/// as a tool tip.
class Zellendelegat : public QStyledItemDelegate {
public:
    Zellendelegat(const Texte& texte, QObject* parent)
        : QStyledItemDelegate(parent)
        , texte_(texte) {}

    void setzeRassen(const QStringList& rassen) { rassen_ = rassen; }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        const auto spalte = static_cast<Ergebnisspalte>(index.column());
        const QStringList worte =
            spalte == Ergebnisspalte::Rasse ? rassen_ : spaltenworte(texte_, spalte);
        if (worte.isEmpty()) {
            QWidget* feld = QStyledItemDelegate::createEditor(parent, option, index);
            feld->setAccessibleName(spaltentitel(texte_, spalte));
            if (auto* zeile = qobject_cast<QLineEdit*>(feld)) {
                // What another program stored must not be cut by looking at it.
                const qsizetype steht = index.data(Qt::EditRole).toString().size();
                zeile->setMaxLength(std::max(spaltenbreite(spalte), static_cast<int>(steht)));
            }
            return feld;
        }
        auto* auswahl = new QComboBox(parent);
        auswahl->addItems(worte);
        auswahl->view()->setMinimumWidth(auswahl->sizeHint().width()); // the column may be narrower
        auswahl->setAccessibleName(spaltentitel(texte_, spalte));
        return auswahl;
    }

    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        auto* auswahl = qobject_cast<QComboBox*>(editor);
        if (auswahl == nullptr) {
            QStyledItemDelegate::setEditorData(editor, index);
            return;
        }
        const QString wort = index.data(Qt::EditRole).toString();
        int stelle = auswahl->findText(wort, Qt::MatchFixedString);
        if (stelle < 0) { // a word of another language or program stays until another is chosen
            auswahl->insertItem(0, wort);
            stelle = 0;
        }
        auswahl->setCurrentIndex(stelle);
    }

    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override {
        if (const auto* auswahl = qobject_cast<QComboBox*>(editor)) {
            model->setData(index, auswahl->currentText(), Qt::EditRole);
            return;
        }
        QStyledItemDelegate::setModelData(editor, model, index);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        // Another window, or a menu, is no end of what is being typed.
        if (event->type() == QEvent::FocusOut) {
            const Qt::FocusReason grund = static_cast<QFocusEvent*>(event)->reason();
            if (grund == Qt::ActiveWindowFocusReason || grund == Qt::PopupFocusReason ||
                grund == Qt::MenuBarFocusReason) {
                return false;
            }
        }
        return QStyledItemDelegate::eventFilter(watched, event);
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
    QStringList rassen_;
};

} // namespace

Ergebnisgitter::Ergebnisgitter(const Texte& texte, QWidget* parent)
    : QTableView(parent) {
    setItemDelegate(new Zellendelegat(texte, this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(EditKeyPressed | SelectedClicked);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setSortIndicatorShown(true);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int spalte, int /*bisher*/, int breite) {
                if (!verteilt_ && breite > 0 && spalte < eigene_.size()) {
                    eigene_[spalte] = breite;
                }
            });
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
    übliche_.clear();
    for (const int breite : breiten) {
        übliche_ << pixel(breite);
    }
    eigene_ = QList<int>(breiten.size(), 0);
    verteileBreiten();
}

QList<int> Ergebnisgitter::eigeneBreiten() const {
    QList<int> breiten = eigene_;
    for (int spalte = 0; spalte < breiten.size(); ++spalte) {
        if (isColumnHidden(spalte)) {
            breiten[spalte] = -1;
        }
    }
    return breiten;
}

void Ergebnisgitter::setzeEigeneBreiten(const QList<int>& breiten) {
    constexpr int Schmalste = 20;
    constexpr int Breiteste = 2000;
    for (int spalte = 0; spalte < std::min(breiten.size(), eigene_.size()); ++spalte) {
        const int breite = breiten.at(spalte);
        eigene_[spalte] = breite <= 0 ? 0 : std::clamp(breite, Schmalste, Breiteste);
        setColumnHidden(spalte, breite < 0 && spalte >= ErsteZusatzspalte);
    }
    verteileBreiten();
}

void Ergebnisgitter::zeigeSpalte(int spalte, bool zeigen) {
    setColumnHidden(spalte, !zeigen);
    verteileBreiten();
    if (zeigen) {
        scrollTo(model()->index(std::max(0, currentIndex().row()), spalte));
    }
}

void Ergebnisgitter::setzeRassen(const QStringList& rassen) {
    static_cast<Zellendelegat*>(itemDelegate())->setzeRassen(rassen);
}

/// What is left of the window goes to the names, in the proportion of their widths.
void Ergebnisgitter::verteileBreiten() {
    verteilt_ = true;
    int belegt = 0;
    int dehnbar = 0;
    const auto grundbreite = [this](int spalte) {
        return eigene_.at(spalte) > 0 ? eigene_.at(spalte) : übliche_.at(spalte);
    };
    for (int spalte = 0; spalte < übliche_.size(); ++spalte) {
        belegt += isColumnHidden(spalte) ? 0 : grundbreite(spalte);
    }
    for (const Ergebnisspalte spalte : Dehnbare) {
        const auto stelle = static_cast<int>(spalte);
        dehnbar += stelle < eigene_.size() && eigene_.at(stelle) == 0 ? übliche_.at(stelle) : 0;
    }
    // The place of a scroll bar that is not needed is none to be given away.
    int frei = viewport()->width() - belegt;
    frei = frei > 2 * verticalScrollBar()->sizeHint().width() && dehnbar > 0 ? frei : 0;
    for (int spalte = 0; spalte < übliche_.size(); ++spalte) {
        int breite = grundbreite(spalte);
        const bool nimmt = std::find(std::begin(Dehnbare), std::end(Dehnbare),
                                     static_cast<Ergebnisspalte>(spalte)) != std::end(Dehnbare);
        if (frei > 0 && nimmt && eigene_.at(spalte) == 0) {
            const int anteil = frei * breite / dehnbar;
            frei -= anteil;
            dehnbar -= breite;
            breite += anteil;
        }
        if (!isColumnHidden(spalte)) {
            setColumnWidth(spalte, breite);
        }
    }
    verteilt_ = false;
}

void Ergebnisgitter::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    verteileBreiten();
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

void Ergebnisgitter::wähleZeile(int zeile, int spalte) {
    const QModelIndex ziel =
        model()->index(zeile, std::max(0, spalte < 0 ? currentIndex().column() : spalte));
    if (ziel.isValid()) {
        // Whatever key is down meanwhile, such as Ctrl of the command that opened the list.
        selectionModel()->setCurrentIndex(ziel, QItemSelectionModel::ClearAndSelect |
                                                    QItemSelectionModel::Rows);
        scrollTo(ziel);
    }
}

void Ergebnisgitter::wähleZeilen(const QList<int>& zeilen, int spalte) {
    if (zeilen.isEmpty()) {
        return;
    }
    wähleZeile(zeilen.first(), spalte);
    QList<int> sortiert = zeilen;
    std::sort(sortiert.begin(), sortiert.end());
    QItemSelection alle; // rows beside each other as one piece, for there may be very many
    for (qsizetype von = 0; von < sortiert.size();) {
        qsizetype bis = von;
        while (bis + 1 < sortiert.size() && sortiert.at(bis + 1) <= sortiert.at(bis) + 1) {
            ++bis;
        }
        alle.append({model()->index(sortiert.at(von), 0), model()->index(sortiert.at(bis), 0)});
        von = bis + 1;
    }
    selectionModel()->select(alle, QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void Ergebnisgitter::selectAll() {
    if (model()->canFetchMore({})) {
        model()->fetchMore({});
    }
    QTableView::selectAll();
}

bool Ergebnisgitter::bearbeitet() const {
    return bearbeitet_.isValid() && indexWidget(bearbeitet_) != nullptr;
}

void Ergebnisgitter::beginneEingabe() {
    if (bearbeitet()) {
        kehreZurEingabe();
    } else if (currentIndex().isValid()) {
        setFocus();
        edit(currentIndex(), EditKeyPressed, nullptr);
    }
}

void Ergebnisgitter::beendeEingabe() {
    if (bearbeitet()) {
        QWidget* editor = indexWidget(bearbeitet_);
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

void Ergebnisgitter::kehreZurEingabe() {
    if (bearbeitet()) {
        QWidget* editor = indexWidget(bearbeitet_);
        setCurrentIndex(bearbeitet_);
        editor->setFocus();
    }
}

void Ergebnisgitter::verwirfEingabe() {
    if (bearbeitet()) {
        closeEditor(indexWidget(bearbeitet_), QAbstractItemDelegate::RevertModelCache);
    }
}

void Ergebnisgitter::commitData(QWidget* editor) {
    abgelehnt_ = false;
    QTableView::commitData(editor);
}

void Ergebnisgitter::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    if (std::exchange(abgelehnt_, false) && hint != QAbstractItemDelegate::RevertModelCache) {
        return;
    }
    bearbeitet_ = QPersistentModelIndex();
    QTableView::closeEditor(editor, hint);
}

void Ergebnisgitter::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // While a cell is edited, the key is that of its editor.
        if (!bearbeitet() && öffnen_) {
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
        break;
    }
    constexpr Qt::KeyboardModifiers Befehl =
        Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    const QString text = event->text();
    if (suche_ && !bearbeitet() && !text.trimmed().isEmpty() && text.front().isPrint() &&
        (event->modifiers() & Befehl) == 0) {
        suche_(text);
        return;
    }
    QTableView::keyPressEvent(event);
}

void Ergebnisgitter::mousePressEvent(QMouseEvent* event) {
    const QModelIndex getroffen = indexAt(event->position().toPoint());
    nochmalGeklickt_ = getroffen.isValid() && geklickt_ == getroffen && currentIndex() == getroffen;
    geklickt_ = getroffen;
    QTableView::mousePressEvent(event);
}

bool Ergebnisgitter::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    // A click on another cell of the selected row only goes there.
    if (trigger == SelectedClicked && !nochmalGeklickt_) {
        return false;
    }
    const bool beginnt = QTableView::edit(index, trigger, event);
    if (beginnt && state() == EditingState) {
        bearbeitet_ = index;
    }
    return beginnt;
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
