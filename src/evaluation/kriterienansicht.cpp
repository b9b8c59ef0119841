#include "evaluation/kriterienansicht.h"

#include <QEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPalette>
#include <QTableView>
#include <QVBoxLayout>

namespace tarvel {

using namespace Qt::StringLiterals;

Kriterienmodell::Kriterienmodell(const Texte& texte)
    : texte_(texte) {}

void Kriterienmodell::setze(std::vector<Kriterienzeile> zeilen) {
    if (zeilen.size() == zeilen_.size()) {
        zeilen_ = std::move(zeilen); // where the user is stays where it is
        dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
        return;
    }
    beginResetModel();
    zeilen_ = std::move(zeilen);
    endResetModel();
}

int Kriterienmodell::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(zeilen_.size());
}

int Kriterienmodell::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(Kriterienspaltenzahl);
}

QVariant Kriterienmodell::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const Kriterienzeile& zeile = zeilen_.at(static_cast<std::size_t>(index.row()));
    const QString& text = zeile.spalten.at(static_cast<std::size_t>(index.column()));
    switch (role) {
    case Qt::DisplayRole:
        return zeile.fett && index.column() == 0 ? u"✗ "_s + text : text;
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignVCenter | Qt::AlignLeft);
    case Qt::FontRole: {
        QFont schrift;
        schrift.setBold(zeile.fett);
        schrift.setItalic(zeile.blass);
        return schrift;
    }
    case Qt::ForegroundRole:
        return zeile.blass ? QVariant(QGuiApplication::palette().color(QPalette::PlaceholderText))
                           : QVariant();
    case Qt::ToolTipRole:
        return zeile.blass && zeile.prüfwert ? texte_(Meldung::HinweisWirkungslos)
               : zeile.prüfwert              ? texte_(Meldung::TippMangel)
                                             : QString();
    default:
        return {};
    }
}

QVariant Kriterienmodell::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return kriterienspalten(texte_).at(static_cast<std::size_t>(section));
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignVCenter | Qt::AlignLeft);
    case Qt::ToolTipRole:
        return texte_(Meldung::ErklärungKriterien);
    default:
        return {};
    }
}

Kriterienansicht::Kriterienansicht(const Texte& texte, QWidget* parent)
    : QWidget(parent)
    , texte_(texte)
    , modell_(texte)
    , tabelle_(new QTableView)
    , lab_Statt_(new QLabel) {
    setObjectName(u"Kriterien"_s);
    tabelle_->setObjectName(u"Tabelle_Kriterien"_s);
    tabelle_->setModel(&modell_);
    tabelle_->setSelectionBehavior(QAbstractItemView::SelectRows);
    tabelle_->setSelectionMode(QAbstractItemView::SingleSelection);
    tabelle_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tabelle_->setAlternatingRowColors(true);
    tabelle_->setShowGrid(false);
    tabelle_->setWordWrap(false);
    tabelle_->setTabKeyNavigation(false);
    tabelle_->verticalHeader()->hide();
    tabelle_->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    tabelle_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    tabelle_->horizontalHeader()->setStretchLastSection(true);
    tabelle_->horizontalHeader()->setHighlightSections(false);
    tabelle_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    lab_Statt_->setObjectName(u"lab_KriterienStatt"_s);
    lab_Statt_->setTextFormat(Qt::PlainText);
    lab_Statt_->setWordWrap(true);
    lab_Statt_->setAlignment(Qt::AlignCenter);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tabelle_, 1);
    layout->addWidget(lab_Statt_, 1);
    connect(tabelle_, &QTableView::clicked, this,
            [this](const QModelIndex& index) { wähle(index.row()); });
    connect(tabelle_, &QTableView::activated, this,
            [this](const QModelIndex& index) { wähle(index.row()); });
    connect(&texte_, &Texte::languageChanged, this, [this] { beschrifte(); });
    beschrifte();
}

void Kriterienansicht::beschrifte() {
    tabelle_->setAccessibleName(texte_(Meldung::Kriterien));
    tabelle_->setAccessibleDescription(texte_(Meldung::ErklärungKriterien));
    modell_.headerDataChanged(Qt::Horizontal, 0, modell_.columnCount() - 1);
}

void Kriterienansicht::zeige(std::vector<Kriterienzeile> zeilen, const QString& statt) {
    const bool leer = zeilen.empty();
    modell_.setze(std::move(zeilen));
    lab_Statt_->setText(statt);
    tabelle_->setVisible(!leer);
    lab_Statt_->setVisible(leer);
}

void Kriterienansicht::nimmTastatur() {
    if (!tabelle_->currentIndex().isValid()) {
        tabelle_->setCurrentIndex(modell_.index(0, 0));
    }
    tabelle_->setFocus(Qt::OtherFocusReason);
}

QSize Kriterienansicht::sizeHint() const {
    constexpr int Zeilen = 8;
    constexpr int Breite = 60;
    return {fontMetrics().averageCharWidth() * Breite,
            (Zeilen + 1) * tabelle_->verticalHeader()->defaultSectionSize()};
}

void Kriterienansicht::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && modell_.rowCount() > 0) {
        modell_.setze(modell_.zeilen());
    }
}

void Kriterienansicht::wähle(int zeile) const {
    if (zeile < 0 || zeile >= modell_.rowCount() || !beiWahl_) {
        return;
    }
    // What follows may form the rows anew.
    if (const auto prüfwert = modell_.zeilen().at(static_cast<std::size_t>(zeile)).prüfwert) {
        beiWahl_(*prüfwert);
    }
}

} // namespace tarvel
