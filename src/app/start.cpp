#include "app/start.h"

#include "lang/meldungen.h"
#include "print/verband.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

Start::Start(Einstellungen& einstellungen, Texte& texte, QLocale::Language benutzersprache,
             QWidget* parent)
    : QDialog(parent)
    , einstellungen_(einstellungen)
    , texte_(texte) {
    setObjectName(u"Start"_s);
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(12);
    layout->addWidget(sprachwahl());

    überschrift_ = new QLabel;
    überschrift_->setObjectName(u"lab_Überschrift"_s);
    überschrift_->setWordWrap(true);
    QFont fett = überschrift_->font();
    fett.setBold(true);
    überschrift_->setFont(fett);
    layout->addWidget(überschrift_);

    auto* formular = new QFormLayout;
    formular->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    txt_Name_ = new QLineEdit;
    txt_Kurzzeichen_ = new QLineEdit;
    txt_Kurzzeichen_->setMaxLength(LängeKurzzeichen);
    txt_Straße_ = new QLineEdit;
    txt_Ort_ = new QLineEdit;
    cbo_Organisation_ = new QComboBox;
    const std::pair<QWidget*, QString> felder[] = {{txt_Name_, u"txt_Name"_s},
                                                   {txt_Kurzzeichen_, u"txt_Kurzzeichen"_s},
                                                   {txt_Straße_, u"txt_Straße"_s},
                                                   {txt_Ort_, u"txt_Ort"_s},
                                                   {cbo_Organisation_, u"cbo_Organisation"_s}};
    std::size_t i = 0;
    for (const auto& [feld, name] : felder) {
        feld->setObjectName(name);
        beschriftungen_.at(i) = new QLabel;
        beschriftungen_.at(i)->setBuddy(feld);
        formular->addRow(beschriftungen_.at(i), feld);
        ++i;
    }
    layout->addLayout(formular);

    fußzeile_ = new QLabel;
    fußzeile_->setObjectName(u"lab_Fußzeile"_s);
    fußzeile_->setWordWrap(true);
    layout->addWidget(fußzeile_);

    auto* knöpfe = new QDialogButtonBox(QDialogButtonBox::Ok);
    lab_OK_ = knöpfe->button(QDialogButtonBox::Ok);
    lab_OK_->setObjectName(u"lab_OK"_s);
    connect(lab_OK_, &QPushButton::clicked, this, [this] { lab_OK_Click(); });
    layout->addWidget(knöpfe);

    Form_Load(benutzersprache);
}

/// The prompt stands there in all three languages, because nobody was asked yet.
QWidget* Start::sprachwahl() {
    auto* rahmen = new QWidget;
    auto* layout = new QFormLayout(rahmen);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setLabelAlignment(Qt::AlignLeft);
    layout->setVerticalSpacing(10);
    for (const Sprache sprache : {Sprache::Deutsch, Sprache::Englisch, Sprache::Französisch}) {
        const int index = static_cast<int>(sprache);
        auto* wahl = new QRadioButton(texte_(sprachname(sprache)));
        wahl->setObjectName(u"opt_Sprache_%1"_s.arg(index));
        auto* text = new QLabel(Texte::eintrag(Meldung::SprachwahlAufforderung, sprache));
        text->setObjectName(u"lab_Sprache_%1"_s.arg(index));
        text->setBuddy(wahl);
        layout->addRow(wahl, text);
        connect(wahl, &QRadioButton::toggled, this, [this, index](bool gesetzt) {
            if (gesetzt) {
                opt_Sprache_Click(index);
            }
        });
        opt_Sprache_.at(index) = wahl;
    }
    return rahmen;
}

void Start::Form_Load(QLocale::Language benutzersprache) {
    Sprache sprache = Sprache::Englisch;
    if (benutzersprache == QLocale::German) {
        sprache = Sprache::Deutsch;
    } else if (benutzersprache == QLocale::French) {
        sprache = Sprache::Französisch;
    }
    opt_Sprache_.at(static_cast<std::size_t>(sprache))->setChecked(true);
    cbo_Organisation_->setCurrentIndex(
        std::clamp<int>(einstellungen_.zahl(Einstellung::Ikone), 0, Verbandzahl - 1));
    // One field on from the language, which is chosen already.
    txt_Name_->setFocus();
}

void Start::opt_Sprache_Click(int index) {
    texte_.SpracheEinstellen(index);
    einstellungen_.schreibe(Einstellung::Sprache, index);
    beschrifte();
}

void Start::beschrifte() {
    setWindowTitle(texte_(Meldung::Programmname));
    überschrift_->setText(texte_(Text::StartÜberschrift));
    const Text texte[] = {Text::Name, Text::Kurzzeichen, Text::Straße, Text::Ort,
                          Text::Organisation};
    for (std::size_t i = 0; i < beschriftungen_.size(); ++i) {
        beschriftungen_.at(i)->setText(texte_(texte[i]));
        beschriftungen_.at(i)->buddy()->setAccessibleName(texte_(texte[i]));
    }
    const int gewählt = cbo_Organisation_->currentIndex();
    cbo_Organisation_->clear();
    cbo_Organisation_->addItems(verbandsnamen(texte_));
    for (int i = 0; i < Verbandzahl; ++i) {
        cbo_Organisation_->setItemIcon(i, QIcon(emblem(static_cast<Verband>(i))));
    }
    cbo_Organisation_->setCurrentIndex(gewählt);
    fußzeile_->setText(texte_(Text::StartFußzeile));
    lab_OK_->setText(texte_(Meldung::KnopfOK));
}

void Start::lab_OK_Click() {
    // "Neu" goes first: text that is no number reads as 0, and from then on the program counts as
    // set up.
    einstellungen_.schreibe(Einstellung::Neu, u"False"_s);
    einstellungen_.schreibe(Einstellung::Name, txt_Name_->text());
    einstellungen_.schreibe(Einstellung::Straße, txt_Straße_->text());
    einstellungen_.schreibe(Einstellung::Ort, txt_Ort_->text());
    einstellungen_.schreibe(Einstellung::Ikone, cbo_Organisation_->currentIndex());
    einstellungen_.schreibe(Einstellung::Kurzzeichen, txt_Kurzzeichen_->text());
    accept();
}

} // namespace tarvel
