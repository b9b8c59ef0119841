#include "measure/reihenansicht.h"

#include "measure/fluegelzeile.h"

#include <QBoxLayout>
#include <QFontDatabase>
#include <QHeaderView>
#include <QLabel>
#include <QListView>
#include <QScrollBar>
#include <QTableView>

#include <algorithm>
#include <set>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

int nummerDerZeile(const QModelIndex& index) {
    return index.data().toString().left(3).toInt();
}

std::set<int> nummern(const QListView& liste) {
    std::set<int> gewählt;
    const QModelIndexList indizes = liste.selectionModel()->selectedIndexes();
    for (const QModelIndex& index : indizes) {
        gewählt.insert(nummerDerZeile(index));
    }
    return gewählt;
}

QListView* neueListe(QAbstractItemModel& modell, const QString& name) {
    auto* liste = new QListView;
    liste->setObjectName(name);
    liste->setModel(&modell);
    liste->setItemDelegate(new Flügelzeile(liste));
    liste->setContextMenuPolicy(Qt::ActionsContextMenu);
    liste->setSelectionMode(QAbstractItemView::ExtendedSelection);
    liste->setEditTriggers(QAbstractItemView::NoEditTriggers);
    liste->setUniformItemSizes(true);
    liste->setAlternatingRowColors(true);
    // Digits under digits: the columns of a list line are made of blanks.
    QFont schrift = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    schrift.setPointSizeF(QFont().pointSizeF() * 0.9);
    liste->setFont(schrift);
    // The chosen wing stays in sight, be it a new one or one that is repeated while the list gets
    // another size.
    QObject::connect(liste->verticalScrollBar(), &QScrollBar::rangeChanged, liste, [liste] {
        const QModelIndexList gewählt = liste->selectionModel()->selectedIndexes();
        if (gewählt.isEmpty()) {
            liste->scrollToBottom();
        } else {
            liste->scrollTo(gewählt.constFirst());
        }
    });
    return liste;
}

/// Room for the longest line of any language, so that none is cut.
void gibBreite(QListView& liste) {
    constexpr QStringView Längste = u"200  IH=1.064  Classe 27.3   DD=+10.4 ";
    liste.setMinimumWidth(liste.fontMetrics().horizontalAdvance(Längste.toString()) +
                          Flügelzeile::markenbreite(liste.fontMetrics().height()) +
                          liste.verticalScrollBar()->sizeHint().width() + 2 * liste.frameWidth());
}

} // namespace

Reihenansicht::Reihenansicht(const Texte& texte, Reihenmodelle& modelle, const QString& präfix,
                             Qt::Orientation orientierung, QWidget* parent)
    : QWidget(parent)
    , texte_(texte)
    , überschriftCi_(new QLabel)
    , überschriftHiDv_(new QLabel)
    , ci_(neueListe(modelle.ci(), präfix + u"_CI"_s))
    , hiDv_(neueListe(modelle.hiDv(), präfix + u"_HI_DV"_s)) {
    auto* layout = new QBoxLayout(
        orientierung == Qt::Horizontal ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom, this);
    layout->setContentsMargins(0, 0, 0, 0);
    // A hantel-index line is about half as long again as a cubital-index line.
    const std::tuple<QLabel*, QListView*, int> teile[] = {{überschriftCi_, ci_, 2},
                                                          {überschriftHiDv_, hiDv_, 3}};
    for (const auto& [überschrift, liste, anteil] : teile) {
        auto* spalte = new QVBoxLayout;
        spalte->setSpacing(2);
        überschrift->setBuddy(liste);
        spalte->addWidget(überschrift);
        spalte->addWidget(liste);
        layout->addLayout(spalte, orientierung == Qt::Horizontal ? anteil : 1);
    }
    gibBreite(*hiDv_);
    connect(ci_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { übertrage(*ci_, *hiDv_); });
    connect(hiDv_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { übertrage(*hiDv_, *ci_); });
    connect(&texte_, &Texte::languageChanged, this, [this] { beschrifte(); });
    beschrifte();
}

void Reihenansicht::beschrifte() {
    überschriftCi_->setText(texte_(Text::Cubitalindex));
    überschriftHiDv_->setText(texte_(Text::HantelindexUndDV));
    ci_->setAccessibleName(texte_(Meldung::NameListeCI));
    hiDv_->setAccessibleName(texte_(Meldung::NameListeHIDV));
}

void Reihenansicht::übertrage(const QListView& von, QListView& nach) {
    if (überträgt_) {
        return;
    }
    überträgt_ = true;
    const std::set<int> gewählt = nummern(von);
    QItemSelection auswahl;
    for (int zeile = 0; zeile < nach.model()->rowCount(); ++zeile) {
        const QModelIndex index = nach.model()->index(zeile, 0);
        if (gewählt.contains(nummerDerZeile(index))) {
            auswahl.select(index, index);
        }
    }
    nach.selectionModel()->select(auswahl, QItemSelectionModel::ClearAndSelect);
    überträgt_ = false;
    if (beiWahl_) {
        beiWahl_(gewählteNummern());
    }
}

void Reihenansicht::setzeBefehle(const QList<QAction*>& befehle) {
    ci_->addActions(befehle);
    hiDv_->addActions(befehle);
}

std::vector<int> Reihenansicht::gewählteNummern() const {
    std::set<int> alle = nummern(*ci_);
    alle.merge(nummern(*hiDv_));
    return {alle.begin(), alle.end()};
}

void Reihenansicht::wähle(const std::vector<int>& gewählt) {
    for (QListView* liste : {ci_, hiDv_}) {
        liste->clearSelection();
        for (int zeile = 0; zeile < liste->model()->rowCount(); ++zeile) {
            const QModelIndex index = liste->model()->index(zeile, 0);
            if (std::find(gewählt.begin(), gewählt.end(), nummerDerZeile(index)) != gewählt.end()) {
                liste->selectionModel()->select(index, QItemSelectionModel::Select);
                liste->scrollTo(index);
            }
        }
    }
}

Tabellenansicht::Tabellenansicht(const Texte& texte, Reihenmodelle& modelle, QWidget* parent)
    : QWidget(parent)
    , texte_(texte)
    , modelle_(modelle)
    , flügel_(new QTableView)
    , kennzahlen_(new QTableView) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    flügel_->setObjectName(u"Tabelle_Flügel"_s);
    flügel_->setModel(&modelle_.flügel());
    flügel_->setItemDelegate(new Flügelzeile(flügel_));
    flügel_->setContextMenuPolicy(Qt::ActionsContextMenu);
    flügel_->setSelectionBehavior(QAbstractItemView::SelectRows);
    flügel_->setAlternatingRowColors(true);
    kennzahlen_->setObjectName(u"Tabelle_Kennzahlen"_s);
    kennzahlen_->setModel(&modelle_.kennzahlen());
    kennzahlen_->setSelectionMode(QAbstractItemView::NoSelection);
    kennzahlen_->setFocusPolicy(Qt::NoFocus);
    kennzahlen_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    kennzahlen_->horizontalHeader()->hide();
    for (QTableView* tabelle : {flügel_, kennzahlen_}) {
        tabelle->verticalHeader()->hide();
        tabelle->setShowGrid(false);
        tabelle->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
        tabelle->setEditTriggers(QAbstractItemView::NoEditTriggers);
    }
    // The figures stay in sight under their columns while the wings scroll: both tables keep
    // room for the scroll bar.
    flügel_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    const int leiste = flügel_->verticalScrollBar()->sizeHint().width();
    auto* fuß = new QHBoxLayout;
    fuß->setContentsMargins(0, 0, leiste, 0);
    fuß->addWidget(kennzahlen_);
    kennzahlen_->setFixedHeight(kennzahlen_->verticalHeader()->defaultSectionSize() *
                                    Kennzahlentabelle::Zeilenzahl +
                                2 * kennzahlen_->frameWidth());
    layout->addWidget(flügel_, 1);
    layout->addLayout(fuß);
    connect(flügel_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (beiWahl_) {
            beiWahl_(gewählteNummern());
        }
    });
    connect(&texte_, &Texte::languageChanged, this, [this] { beschrifte(); });
    beschrifte();
}

void Tabellenansicht::beschrifte() {
    flügel_->setAccessibleName(texte_(Text::Tabelle));
    kennzahlen_->setAccessibleName(texte_(Meldung::LeisteStatistik));
}

void Tabellenansicht::wähle(const std::vector<int>& gewählt) {
    QItemSelectionModel& auswahl = *flügel_->selectionModel();
    auswahl.clear();
    for (int zeile = 0; zeile < modelle_.flügel().rowCount(); ++zeile) {
        if (std::find(gewählt.begin(), gewählt.end(), modelle_.flügel().nummer(zeile)) ==
            gewählt.end()) {
            continue;
        }
        const QModelIndex index = modelle_.flügel().index(zeile, 0);
        if (!auswahl.currentIndex().isValid()) {
            auswahl.setCurrentIndex(index, QItemSelectionModel::NoUpdate);
            flügel_->scrollTo(index);
        }
        auswahl.select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
}

std::vector<int> Tabellenansicht::gewählteNummern() const {
    std::set<int> nummern;
    const QModelIndexList zeilen = flügel_->selectionModel()->selectedIndexes();
    for (const QModelIndex& index : zeilen) {
        nummern.insert(modelle_.flügel().nummer(index.row()));
    }
    return {nummern.begin(), nummern.end()};
}

void Tabellenansicht::setzeBefehle(const QList<QAction*>& befehle) {
    flügel_->addActions(befehle);
}

} // namespace tarvel
