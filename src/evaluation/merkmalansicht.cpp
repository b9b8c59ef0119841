#include "evaluation/merkmalansicht.h"

#include <QApplication>
#include <QButtonGroup>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QShortcut>
#include <QStackedWidget>
#include <QStringListModel>
#include <QVBoxLayout>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr int LängsteZahl = 5; // digits

Text überschrift(Merkmalgruppe gruppe) {
    switch (gruppe) {
    case Merkmalgruppe::Panzer:
        return Text::Panzerzeichen;
    case Merkmalgruppe::HaarLänge:
        return Text::Haarlänge;
    case Merkmalgruppe::Filz:
        return Text::Filzbinden;
    case Merkmalgruppe::Haarfarbe:
        return Text::Haarfarbe;
    }
    return Text::KörperMerkmale;
}

QString knopfname(Geschlecht tiere, Merkmalgruppe gruppe) {
    switch (gruppe) {
    case Merkmalgruppe::Panzer:
        return tiere == Geschlecht::Drohnen ? u"opt_Panzer_D"_s : u"opt_Panzer_A"_s;
    case Merkmalgruppe::HaarLänge:
        return u"opt_HaarL"_s;
    case Merkmalgruppe::Filz:
        return u"opt_Filz"_s;
    case Merkmalgruppe::Haarfarbe:
        return u"opt_HaarF"_s;
    }
    return {};
}

} // namespace

Merkmalansicht::Merkmalansicht(const Texte& texte, Dialoge& dialoge, QWidget* parent)
    : QWidget(parent)
    , texte_(texte)
    , dialoge_(dialoge)
    , ziffern_(new QRegularExpressionValidator(
          QRegularExpression(u"[0-9]{0,%1}"_s.arg(LängsteZahl)), this))
    , lab_Hinweis_(new QLabel)
    , seiten_(new QStackedWidget)
    , lab_Bienen_(new QLabel)
    , lab_Fortschritt_(new QLabel)
    , lab_Biene_(new QLabel)
    , lab_Fehler_(new QLabel)
    , Liste_(new QListView)
    , zeilen_(new QStringListModel(this))
    , bef_Übernehmen_(new QPushButton)
    , bef_Entfernen_(new QPushButton) {
    setObjectName(u"Merkmal"_s);
    lab_Hinweis_->setObjectName(u"lab_Merkmalhinweis"_s);
    lab_Bienen_->setObjectName(u"lab_Bienen"_s);
    lab_Fortschritt_->setObjectName(u"lab_MerkmalFortschritt"_s);
    lab_Biene_->setObjectName(u"lab_Biene"_s);
    lab_Fehler_->setObjectName(u"lab_Merkmalfehler"_s);
    for (QLabel* label : {lab_Hinweis_, lab_Biene_, lab_Fehler_}) {
        label->setWordWrap(true);
    }
    QFont fett = lab_Bienen_->font();
    fett.setBold(true);
    lab_Bienen_->setFont(fett);

    auto* eingabe = new QVBoxLayout;
    eingabe->addWidget(modusleiste());
    eingabe->addWidget(lab_Hinweis_);
    seiten_->addWidget(seite(Geschlecht::Arbeiterinnen));
    seiten_->addWidget(seite(Geschlecht::Drohnen));
    eingabe->addWidget(seiten_);
    bef_Übernehmen_->setObjectName(u"bef_Übernehmen"_s);
    auto* knopfzeile = new QHBoxLayout;
    knopfzeile->addWidget(lab_Bienen_, 1);
    knopfzeile->addWidget(bef_Übernehmen_);
    eingabe->addLayout(knopfzeile);
    auto* fortschritt = new QHBoxLayout;
    fortschritt->addWidget(lab_Biene_, 1);
    fortschritt->addWidget(lab_Fortschritt_);
    eingabe->addLayout(fortschritt);
    eingabe->addWidget(lab_Fehler_);
    eingabe->addStretch();

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(eingabe, 3);
    layout->addWidget(listenleiste(), 1);

    connect(bef_Übernehmen_, &QPushButton::clicked, this, [this] { bef_Übernehmen_Click(); });
    connect(&texte_, &Texte::languageChanged, this, [this] { TexteAnwenden(); });
    vergibTasten();
    TexteAnwenden();
    zeige({});
}

Merkmalansicht::~Merkmalansicht() {
    delete seiten_; // a count that loses the focus is still shown
}

QWidget* Merkmalansicht::modusleiste() {
    auto* leiste = new QWidget;
    auto* layout = new QHBoxLayout(leiste);
    layout->setContentsMargins(0, 0, 0, 0);
    for (const Merkmalmodus modus : {Merkmalmodus::Liste, Merkmalmodus::Summen}) {
        const auto index = static_cast<std::size_t>(modus);
        auto* option = new QRadioButton;
        option->setObjectName(u"opt_Modus_%1"_s.arg(index));
        connect(option, &QRadioButton::clicked, this, [this, modus] { opt_Modus_Click(modus); });
        layout->addWidget(option);
        opt_Modus_.at(index) = option;
    }
    layout->addStretch();
    return leiste;
}

QWidget* Merkmalansicht::listenleiste() {
    auto* leiste = new QWidget;
    auto* layout = new QVBoxLayout(leiste);
    layout->setContentsMargins(0, 0, 0, 0);
    Liste_->setObjectName(u"Liste"_s);
    Liste_->setModel(zeilen_);
    Liste_->installEventFilter(this);
    Liste_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    Liste_->setUniformItemSizes(true);
    Liste_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    // The codes stand at fixed columns of the line.
    Liste_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    Liste_->setMinimumWidth(Liste_->fontMetrics().horizontalAdvance(u"000   O, k,  F"_s) + 40);
    layout->addWidget(Liste_, 1);
    bef_Entfernen_->setObjectName(u"bef_Entfernen"_s);
    connect(bef_Entfernen_, &QPushButton::clicked, this, [this] { bef_Entfernen_Click(); });
    layout->addWidget(bef_Entfernen_);
    return leiste;
}

QWidget* Merkmalansicht::seite(Geschlecht tiere) {
    auto* seite = new QWidget;
    auto* layout = new QHBoxLayout(seite);
    layout->setContentsMargins(0, 0, 0, 0);
    for (const Merkmalgruppe art : merkmalgruppen(tiere)) {
        gruppen_.push_back(gruppe(tiere, art));
        layout->addWidget(gruppen_.back().rahmen, 1);
    }
    return seite;
}

/// One option button and one count a code, and the group's summary below.
Merkmalansicht::Gruppe Merkmalansicht::gruppe(Geschlecht tiere, Merkmalgruppe art) {
    Gruppe neu{tiere, art, new QGroupBox, nullptr, {}, {}, new QLabel, false};
    neu.optionen = new QButtonGroup(neu.rahmen);
    auto* raster = new QGridLayout(neu.rahmen);
    // The keys beside the codes must not make the window wider.
    constexpr int Rand = 6;
    raster->setContentsMargins(Rand, Rand, Rand, Rand);
    raster->setHorizontalSpacing(2);
    const QString name = knopfname(tiere, art);
    const int platz = ersterPlatz(tiere, art);
    int index = 0;
    for (const Merkmalcode& code : merkmalcodes(tiere, art)) {
        auto* option = new QRadioButton;
        option->setObjectName(name + u'_' + QString::number(index));
        option->setChecked(index == 0);
        neu.optionen->addButton(option, index);
        neu.zahlen.push_back(zahlfeld(tiere, platz + index));
        neu.codes.push_back(new QLabel(code.code.toString()));
        neu.codes.back()->setBuddy(neu.zahlen.back());
        raster->addWidget(option, index, 0);
        raster->addWidget(neu.codes.back(), index, 0);
        raster->addWidget(neu.zahlen.back(), index, 1);
        ++index;
    }
    neu.summe->setObjectName(u"lab_Summe_"_s + name.mid(4));
    neu.summe->setWordWrap(true);
    raster->setRowStretch(index, 1);
    raster->addWidget(neu.summe, index + 1, 0, 1, 2);
    raster->setColumnStretch(0, 1);
    return neu;
}

QLineEdit* Merkmalansicht::zahlfeld(Geschlecht tiere, int platz) {
    auto* feld = new QLineEdit;
    feld->setObjectName(
        (tiere == Geschlecht::Drohnen ? u"txt_Anzahl_D_%1"_s : u"txt_Anzahl_A_%1"_s).arg(platz));
    feld->setAlignment(Qt::AlignRight);
    feld->setFixedWidth(feld->fontMetrics().horizontalAdvance(u"00000"_s) + 16);
    feld->setValidator(ziffern_);
    connect(feld, &QLineEdit::inputRejected, feld, [] { QApplication::beep(); });
    connect(feld, &QLineEdit::textEdited, this,
            [this, platz](const QString& text) { txt_Anzahl_Change(platz, text); });
    connect(feld, &QLineEdit::editingFinished, this, [this] { zeigeAuswertung(); });
    return feld;
}

/// Enter takes over wherever the focus is; Alt with a digit goes to a group.
void Merkmalansicht::vergibTasten() {
    for (const int taste : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* enter = new QShortcut(QKeySequence(taste), this);
        enter->setContext(Qt::WidgetWithChildrenShortcut);
        connect(enter, &QShortcut::activated, this, [this] { taste_Enter(); });
    }
    auto* löschen = new QShortcut(QKeySequence(Qt::Key_Delete), Liste_);
    löschen->setContext(Qt::WidgetShortcut);
    connect(löschen, &QShortcut::activated, this, [this] { bef_Entfernen_Click(); });
    for (int nummer = 0; nummer < 3; ++nummer) {
        auto* zurGruppe = new QShortcut(QKeySequence(Qt::ALT | (Qt::Key_1 + nummer)), this);
        connect(zurGruppe, &QShortcut::activated, this, [this, nummer] {
            int laufend = 0;
            for (const Gruppe& g : gruppen_) {
                if (g.tiere == merkmale_.Tiere && laufend++ == nummer) {
                    const bool liste = merkmale_.Modus == Merkmalmodus::Liste;
                    (liste ? static_cast<QWidget*>(g.optionen->checkedButton()) : g.zahlen.front())
                        ->setFocus(Qt::ShortcutFocusReason);
                }
            }
        });
    }
}

void Merkmalansicht::TexteAnwenden() {
    opt_Modus_[0]->setText(texte_(Text::InListeEintragen));
    opt_Modus_[1]->setText(texte_(Text::SummenEingeben));
    bef_Übernehmen_->setText(texte_(Text::MerkmalÜbernehmen));
    bef_Entfernen_->setText(texte_(Text::MerkmalEntfernen));
    Liste_->setAccessibleName(texte_(Meldung::NameMerkmalliste));
    for (Gruppe& g : gruppen_) {
        const QString titel = texte_(überschrift(g.art));
        g.rahmen->setTitle(titel);
        for (int i = 0; i < static_cast<int>(g.zahlen.size()); ++i) {
            const QString name = titel + u' ' + g.codes.at(static_cast<std::size_t>(i))->text();
            g.optionen->button(i)->setAccessibleName(name);
            g.zahlen.at(static_cast<std::size_t>(i))
                ->setAccessibleName(texte_(Meldung::NameBienenzahl).arg(name));
        }
    }
    int nummer = 0;
    for (Gruppe& g : gruppen_) {
        nummer = g.art == Merkmalgruppe::Panzer ? 1 : nummer + 1;
        g.rahmen->setToolTip(u"Alt+%1"_s.arg(nummer));
    }
    beschrifteTasten();
    zeigeModus();
    zeigeAuswertung();
}

void Merkmalansicht::zeige(const Merkmale& merkmale) {
    const bool andere = merkmale.Tiere != merkmale_.Tiere;
    merkmale_ = merkmale;
    if (andere) {
        beginneNeu();
    }
    beginneBiene(); // what was undone or loaded is not the bee that was being entered
    auswertung_ = MerkmaleAuswerten(merkmale_, OhneHaarlänge_);
    seiten_->setCurrentIndex(static_cast<int>(merkmale_.Tiere));
    zeigeModus();
    zeigeListe();
    zeigeAuswertung();
}

void Merkmalansicht::wähle(const std::vector<int>& bienen) {
    QItemSelection wahl;
    for (const int biene : bienen) {
        const QModelIndex zeile = zeilen_->index(biene);
        wahl.select(zeile, zeile);
    }
    Liste_->selectionModel()->select(wahl, QItemSelectionModel::ClearAndSelect);
    if (!wahl.isEmpty()) {
        Liste_->scrollTo(wahl.indexes().front());
    }
}

void Merkmalansicht::setzeOhneHaarlänge(bool ohne) {
    OhneHaarlänge_ = ohne;
    zeige(Merkmale(merkmale_));
}

Merkmalwahl Merkmalansicht::wahl() const {
    Merkmalwahl wahl;
    for (const Gruppe& g : gruppen_) {
        if (g.tiere != merkmale_.Tiere) {
            continue;
        }
        const int index = g.optionen->checkedId();
        switch (g.art) {
        case Merkmalgruppe::Panzer:
            wahl.Panzer = index;
            break;
        case Merkmalgruppe::Filz:
            wahl.Filz = index;
            break;
        case Merkmalgruppe::HaarLänge:
        case Merkmalgruppe::Haarfarbe:
            wahl.Haar = index;
            break;
        }
    }
    return wahl;
}

void Merkmalansicht::bef_Übernehmen_Click() {
    if (merkmale_.Modus == Merkmalmodus::Liste) {
        nimmListenzeile();
        return;
    }
    zeigeAuswertung();
    meldeFehler();
}

void Merkmalansicht::nimmListenzeile() {
    const QString titel = texte_(Text::KörperMerkmale);
    Merkmale neu = merkmale_;
    if (!MerkmalÜbernehmen(neu, wahl(), OhneHaarlänge_)) {
        dialoge_.meldung(titel, texte_(Meldung::MerkmallisteVoll).arg(HöchsteBienennummer),
                         Meldungsart::Ausruf);
        return;
    }
    // A bee whose shares can no longer be computed would cost the whole sample its summary.
    if (MerkmaleAuswerten(neu, OhneHaarlänge_).Fehler == Anteilfehler::Überlauf) {
        dialoge_.meldung(titel, fehlertext(Anteilfehler::Überlauf), Meldungsart::Ausruf);
        return;
    }
    merkmale_ = neu;
    geändert();
    zeigeListe();
    meldeFehler();
}

void Merkmalansicht::bef_Entfernen_Click() {
    std::vector<int> bienen;
    for (const QModelIndex& eine : Liste_->selectionModel()->selectedIndexes()) {
        bienen.push_back(eine.row());
    }
    if (bienen.empty()) {
        bienen.push_back(static_cast<int>(merkmale_.Liste.size()) - 1);
    }
    std::sort(bienen.begin(), bienen.end(), std::greater());
    bool entfernt = false;
    for (const int zeile : bienen) {
        entfernt |= merkmale_.Modus == Merkmalmodus::Liste && MerkmalEntfernen(merkmale_, zeile);
    }
    if (entfernt) {
        geändert();
        zeigeListe();
        const int nächste = std::min(bienen.back(), zeilen_->rowCount() - 1);
        Liste_->setCurrentIndex(zeilen_->index(nächste));
    }
}

void Merkmalansicht::opt_Modus_Click(Merkmalmodus modus) {
    if (modus == merkmale_.Modus) {
        return;
    }
    setzeModus(merkmale_, modus);
    geändert();
    zeigeModus();
}

void Merkmalansicht::txt_Anzahl_Change(int platz, const QString& text) {
    merkmale_.Summen.at(static_cast<std::size_t>(platz)) = anzahlAusText(text);
    auswertung_ = MerkmaleAuswerten(merkmale_, OhneHaarlänge_);
    zeigeZusammenfassung(); // the field itself keeps what is being typed
    if (änderung_) {
        änderung_(merkmale_);
    }
}

void Merkmalansicht::taste_Enter() {
    if (bef_Entfernen_->hasFocus()) {
        bef_Entfernen_Click();
    } else {
        bef_Übernehmen_Click();
    }
}

void Merkmalansicht::geändert() {
    auswertung_ = MerkmaleAuswerten(merkmale_, OhneHaarlänge_);
    zeigeAuswertung();
    if (änderung_) {
        änderung_(merkmale_);
    }
}

QString Merkmalansicht::fehlertext(Anteilfehler fehler) const {
    return fehler == Anteilfehler::Überlauf
               ? texte_(Meldung::MerkmalÜberlauf).arg(HöchsteAnzahl)
               : texte_(Meldung::MerkmaleOhnePanzer).arg(texte_(Text::Panzerzeichen));
}

void Merkmalansicht::meldeFehler() {
    const QString titel = texte_(Text::KörperMerkmale);
    if (auswertung_.Unterschiedlich) {
        dialoge_.meldung(titel, texte_(Text::BienenzahlUnterschiedlich), Meldungsart::Ausruf);
    }
    if (auswertung_.Fehler) {
        dialoge_.meldung(titel, fehlertext(*auswertung_.Fehler), Meldungsart::Ausruf);
    }
}

void Merkmalansicht::zeigeListe() {
    zeilen_->setStringList(merkmale_.Liste);
    Liste_->scrollToBottom();
}

void Merkmalansicht::zeigeModus() {
    const bool liste = merkmale_.Modus == Merkmalmodus::Liste;
    opt_Modus_[liste ? 0 : 1]->setChecked(true);
    lab_Hinweis_->setText(
        texte_(liste ? Text::HinweisMerkmaleJeBiene : Text::HinweisMerkmaleSummen));
    for (const Gruppe& g : gruppen_) {
        const bool ausgelassen = OhneHaarlänge_ && g.art == Merkmalgruppe::HaarLänge;
        for (QAbstractButton* option : g.optionen->buttons()) {
            option->setVisible(liste);
            option->setEnabled(!ausgelassen);
        }
        for (QLabel* code : g.codes) {
            code->setVisible(!liste);
        }
        for (QLineEdit* zahl : g.zahlen) {
            const bool nurAnzeige = liste || ausgelassen;
            zahl->setReadOnly(nurAnzeige);
            zahl->setFocusPolicy(nurAnzeige ? Qt::ClickFocus : Qt::StrongFocus);
            // What only shows a count must not look as if it could be typed into.
            zahl->setFrame(!nurAnzeige);
            QPalette farben;
            if (nurAnzeige) {
                farben.setBrush(QPalette::Base, Qt::transparent);
            }
            zahl->setPalette(farben);
        }
    }
    Liste_->setEnabled(liste);
    bef_Entfernen_->setEnabled(liste);
}

void Merkmalansicht::zeigeAuswertung() {
    for (const Gruppe& g : gruppen_) {
        if (g.tiere == merkmale_.Tiere) {
            auto platz = static_cast<std::size_t>(ersterPlatz(g.tiere, g.art));
            for (QLineEdit* zahl : g.zahlen) {
                zahl->setText(QString::number(auswertung_.Anzahl.at(platz++)));
            }
        }
    }
    zeigeZusammenfassung();
}

void Merkmalansicht::zeigeZusammenfassung() {
    qsizetype nummer = 0;
    for (const Gruppe& g : gruppen_) {
        if (g.tiere == merkmale_.Tiere) {
            g.summe->setText(auswertung_.Texte.value(nummer++));
        }
    }
    const bool drohnen = merkmale_.Tiere == Geschlecht::Drohnen;
    lab_Bienen_->setText(QString::number(auswertung_.Bienen) + u' ' +
                         texte_(drohnen ? Text::DrohnenUntersucht : Text::ArbeiterinnenUntersucht));
    QStringList fehler;
    if (auswertung_.Unterschiedlich) {
        fehler << texte_(Text::BienenzahlUnterschiedlich);
    }
    if (auswertung_.Fehler) {
        fehler << fehlertext(*auswertung_.Fehler);
    }
    zeigeFortschritt();
    lab_Fehler_->setText(fehler.join(u'\n'));
}

} // namespace tarvel
