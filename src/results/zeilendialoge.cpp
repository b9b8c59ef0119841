#include "results/zeilendialoge.h"

#include "platform/kuerzel.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// The columns of names, and what else can be the same in many rows. Number, caste and verdict are
/// none of them: they belong to one examination.
constexpr Ergebnisspalte Namensspalten[] = {Ergebnisspalte::Züchter, Ergebnisspalte::Besitzer,
                                            Ergebnisspalte::Begattung};
constexpr Ergebnisspalte Feldspalten[] = {Ergebnisspalte::Züchter, Ergebnisspalte::Besitzer,
                                          Ergebnisspalte::Rasse,   Ergebnisspalte::Begattung,
                                          Ergebnisspalte::Königin, Ergebnisspalte::Datum};

template <typename Spalten>
QComboBox* spaltenwahl(const Texte& texte, const Spalten& spalten) {
    auto* wahl = new QComboBox;
    wahl->setObjectName(u"cbo_Spalte"_s);
    for (const Ergebnisspalte spalte : spalten) {
        wahl->addItem(spaltentitel(texte, spalte), static_cast<int>(spalte));
    }
    return wahl;
}

/// Enter means @p ja, and Escape gives up.
QLayout* knöpfe(QDialog& dialog, QPushButton* ja, const Texte& texte) {
    auto* nein = new QPushButton;
    const QStringList worte = mitKürzelbuchstaben({ja->text(), texte(Text::Abbrechen)});
    ja->setText(worte.at(0));
    nein->setText(worte.at(1));
    ja->setObjectName(u"bef_OK"_s);
    nein->setObjectName(u"bef_Abbrechen"_s);
    ja->setDefault(true);
    QObject::connect(ja, &QPushButton::clicked, &dialog, [&dialog] { dialog.accept(); });
    QObject::connect(nein, &QPushButton::clicked, &dialog, [&dialog] { dialog.reject(); });
    auto* zeile = new QHBoxLayout;
    zeile->addStretch();
    zeile->addWidget(ja);
    zeile->addWidget(nein);
    return zeile;
}

QString ohnePunkte(QString text) {
    return text.remove(u" …"_s);
}

} // namespace

Feldänderung::Feldänderung(const Texte& texte, int anzahl, const QStringList& rassen,
                           const std::function<std::optional<QString>(Ergebnisspalte)>& bisher,
                           QWidget* parent)
    : QDialog(parent)
    , texte_(texte)
    , rassen_(rassen)
    , bisher_(bisher)
    , spalten_(spaltenwahl(texte, Feldspalten))
    , inhalt_(new QComboBox)
    , jetzt_(new QLabel)
    , einwand_(new QLabel) {
    setObjectName(u"Feldänderung"_s);
    setWindowTitle(ohnePunkte(texte(Meldung::FeldÄndern)));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(
        new QLabel(texte(Meldung::FeldAnzahl).arg(sprachraum(texte).toString(anzahl))));
    auto* form = new QFormLayout;
    const QStringList worte =
        mitKürzelbuchstaben({texte(Meldung::FeldFrage), texte(Meldung::FeldInhalt)});
    form->addRow(worte.at(0), spalten_);
    form->addRow(QString(), jetzt_);
    form->addRow(worte.at(1), inhalt_);
    layout->addLayout(form);
    inhalt_->setObjectName(u"cbo_Inhalt"_s);
    inhalt_->setInsertPolicy(QComboBox::NoInsert);
    constexpr int Breite = 260;
    inhalt_->setMinimumWidth(Breite);
    jetzt_->setTextFormat(Qt::PlainText);
    jetzt_->setWordWrap(true);
    einwand_->setObjectName(u"lab_Einwand"_s);
    einwand_->setTextFormat(Qt::PlainText);
    einwand_->setWordWrap(true);
    layout->addWidget(einwand_);
    layout->addLayout(knöpfe(*this, new QPushButton(texte(Meldung::AuflösungÄndern)), texte));
    connect(spalten_, &QComboBox::currentIndexChanged, this, [this] { zeigeSpalte(); });
    zeigeSpalte();
    inhalt_->setFocus();
}

Ergebnisspalte Feldänderung::spalte() const {
    return static_cast<Ergebnisspalte>(spalten_->currentData().toInt());
}

void Feldänderung::zeigeSpalte() {
    const std::optional<QString> steht = bisher_(spalte());
    inhalt_->clear();
    inhalt_->setEditable(spalte() != Ergebnisspalte::Rasse);
    if (spalte() == Ergebnisspalte::Rasse) {
        inhalt_->addItems(rassen_);
    } else {
        inhalt_->lineEdit()->setMaxLength(spaltenbreite(spalte()));
        inhalt_->setCompleter(nullptr);
        inhalt_->setEditText(steht.value_or(QString()));
        inhalt_->lineEdit()->selectAll();
    }
    jetzt_->setText(
        texte_(Meldung::FeldJetzt).arg(steht ? *steht : texte_(Meldung::FeldVerschieden)));
    einwand_->clear();
}

/// What the column does not take stays in the field, with what speaks against it.
void Feldänderung::accept() {
    const auto [wert, einwand] = prüfeEingabe(texte_, spalte(), inhalt_->currentText().trimmed());
    einwand_->setText(einwand);
    if (einwand.isEmpty()) {
        wert_ = wert;
        QDialog::accept();
    } else {
        inhalt_->setFocus();
    }
}

Schreibweisenwahl::Schreibweisenwahl(const Texte& texte, Gruppen gruppen, QWidget* parent)
    : QDialog(parent)
    , texte_(texte)
    , quelle_(std::move(gruppen))
    , spalten_(spaltenwahl(texte, Namensspalten))
    , liste_(new QTreeWidget)
    , keine_(new QLabel)
    , zusammen_(new QPushButton(texte(Meldung::Zusammenführen))) {
    setObjectName(u"Schreibweisenwahl"_s);
    setWindowTitle(ohnePunkte(texte(Meldung::SchreibweisenMenü)));
    auto* layout = new QVBoxLayout(this);
    auto* text = new QLabel(texte(Meldung::SchreibweisenText));
    text->setWordWrap(true);
    layout->addWidget(text);
    auto* form = new QFormLayout;
    form->addRow(mitKürzelbuchstaben({texte(Meldung::FeldFrage)}).first(), spalten_);
    layout->addLayout(form);
    liste_->setObjectName(u"Grid_Schreibweisen"_s);
    liste_->setAccessibleName(windowTitle());
    liste_->setColumnCount(2);
    liste_->setHeaderHidden(true);
    liste_->setRootIsDecorated(false);
    liste_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    liste_->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    liste_->header()->setStretchLastSection(false);
    layout->addWidget(liste_, 1);
    keine_->setObjectName(u"lab_Keine"_s);
    keine_->setWordWrap(true);
    layout->addWidget(keine_, 1);
    layout->addLayout(knöpfe(*this, zusammen_, texte));
    connect(spalten_, &QComboBox::currentIndexChanged, this, [this] { zeigeSpalte(); });
    connect(liste_, &QTreeWidget::itemChanged, this, [this] { zeigeStand(); });
    constexpr QSize Gewohnt(640, 420);
    resize(Gewohnt);
    zeigeSpalte();
}

Ergebnisspalte Schreibweisenwahl::spalte() const {
    return static_cast<Ergebnisspalte>(spalten_->currentData().toInt());
}

void Schreibweisenwahl::zeigeSpalte() {
    gruppen_ = quelle_(spalte());
    liste_->clear();
    for (const Schreibweisen& gruppe : gruppen_) {
        QStringList worte;
        for (const auto& [wort, zeilen] : gruppe) {
            // A blank at an end would not be seen.
            const QString sichtbar = wort == wort.trimmed() ? wort : u'"' + wort + u'"';
            worte << u"%1 (%2)"_s.arg(sichtbar, sprachraum(texte_).toString(zeilen));
        }
        auto* eintrag = new QTreeWidgetItem(liste_, {worte.join(u", "_s)});
        eintrag->setToolTip(0, Qt::convertFromPlainText(worte.join(u'\n')));
        eintrag->setCheckState(0, Qt::Unchecked); // only the user knows who is the same
        auto* wahl = new QComboBox;
        wahl->setObjectName(u"cbo_Schreibweise_%1"_s.arg(liste_->topLevelItemCount() - 1));
        wahl->setAccessibleName(worte.join(u", "_s));
        for (const auto& [wort, zeilen] : gruppe) {
            if (wahl->findText(wort.trimmed(), Qt::MatchExactly | Qt::MatchCaseSensitive) < 0) {
                wahl->addItem(wort.trimmed());
            }
        }
        liste_->setItemWidget(eintrag, 1, wahl);
    }
    keine_->setText(texte_(Meldung::SchreibweisenKeine).arg(spaltentitel(texte_, spalte())));
    keine_->setVisible(gruppen_.empty());
    liste_->setVisible(!gruppen_.empty());
    zeigeStand();
}

void Schreibweisenwahl::zeigeStand() {
    zusammen_->setEnabled(!gewählte().empty());
}

std::vector<Schreibweisenwahl::Zusammenführung> Schreibweisenwahl::gewählte() const {
    std::vector<Zusammenführung> liste;
    for (int i = 0; i < liste_->topLevelItemCount(); ++i) {
        QTreeWidgetItem* eintrag = liste_->topLevelItem(i);
        const auto* wahl = qobject_cast<const QComboBox*>(liste_->itemWidget(eintrag, 1));
        if (wahl == nullptr || eintrag->checkState(0) != Qt::Checked) {
            continue;
        }
        Zusammenführung eine{{}, wahl->currentText()};
        for (const auto& [wort, zeilen] : gruppen_.at(static_cast<std::size_t>(i))) {
            if (wort != eine.nach) {
                eine.von << wort;
            }
        }
        liste.push_back(eine);
    }
    return liste;
}

} // namespace tarvel
