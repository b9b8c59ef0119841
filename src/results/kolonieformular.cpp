#include "results/kolonieformular.h"

#include "lang/meldungen.h"

#include <QComboBox>
#include <QCompleter>
#include <QEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

Kolonieformular::Kolonieformular(const Texte& texte, Zahlenformat format, QWidget* parent)
    : QWidget(parent)
    , texte_(texte)
    , format_(std::move(format)) {
    auto* layout = new QFormLayout(this);
    layout->setRowWrapPolicy(QFormLayout::WrapAllRows);
    layout->setVerticalSpacing(4);

    // Created in the order in which the Tab key walks through them.
    QLineEdit* unr = textfeld(u"txt_UNr"_s, &Kolonieangaben::UNr);
    constexpr int LängeUNr = 10; // three digits, short sign and year
    unr->setMaxLength(LängeUNr);
    layout->addRow(beschriftung(Text::UntersuchungNr, unr), unr);
    QWidget* nummern = königin();
    layout->addRow(beschriftung(Text::Königin, nummern), nummern);
    for (const auto& [name, text, wert] :
         {std::tuple{u"cbo_Name"_s, Text::Züchter, &Kolonieangaben::Name},
          {u"cbo_Besitzer"_s, Text::Besitzer, &Kolonieangaben::Besitzer}}) {
        QComboBox* feld = namensfeld(name, wert);
        layout->addRow(beschriftung(text, feld), feld);
    }
    QLineEdit* volk = textfeld(u"txt_Volk"_s, &Kolonieangaben::Volk);
    layout->addRow(beschriftung(Text::Volk, volk), volk);
    QComboBox* begattung = namensfeld(u"cbo_Begattung"_s, &Kolonieangaben::Begattung);
    layout->addRow(beschriftung(Text::Begattung, begattung), begattung);

    cbo_Rasse_ = new QComboBox;
    cbo_Rasse_->setObjectName(u"cbo_Rasse"_s);
    layout->addRow(beschriftung(Text::Rasse, cbo_Rasse_), cbo_Rasse_);
    cbo_Geschlecht_ = new QComboBox;
    cbo_Geschlecht_->setObjectName(u"cbo_Geschlecht"_s);
    cbo_Geschlecht_->addItems({QString(), QString()});
    layout->addRow(beschriftung(Text::SpalteGeschlecht, cbo_Geschlecht_), cbo_Geschlecht_);

    connect(cbo_Rasse_, &QComboBox::activated, this, [this](int index) {
        angaben_.Rasse = index;
        angaben_.Rassenname.clear();
        melde();
        if (rassenwahl_) {
            rassenwahl_(index);
        }
    });
    connect(cbo_Geschlecht_, &QComboBox::activated, this, [this](int index) {
        const auto tiere = static_cast<Geschlecht>(index);
        if (tiere == angaben_.Tiere) {
            return;
        }
        if (geschlechtswahl_ && !geschlechtswahl_(tiere)) {
            cbo_Geschlecht_->setCurrentIndex(static_cast<int>(angaben_.Tiere));
            return;
        }
        angaben_.Tiere = tiere;
        melde();
    });
    connect(&texte_, &Texte::languageChanged, this, [this] { beschrifte(); });
    beschrifte();
}

/// The four numbers that together identify the queen, side by side as in the stud book.
QWidget* Kolonieformular::königin() {
    auto* gruppe = new QWidget;
    auto* raster = new QGridLayout(gruppe);
    raster->setContentsMargins(0, 0, 0, 0);
    raster->setHorizontalSpacing(4);
    raster->setVerticalSpacing(0);
    const auto dreistellig = [this](const QString& t) { return nummerDreistellig(t, format_); };
    const auto zweistellig = [this](const QString& t) { return nummerZweistellig(t, format_); };
    const std::tuple<QLineEdit*, Text> spalten[] = {
        {textfeld(u"txt_LV"_s, &Kolonieangaben::LV, zweistellig), Text::LV},
        {textfeld(u"txt_ZNr"_s, &Kolonieangaben::ZNr, dreistellig), Text::Züchter},
        {textfeld(u"txt_KNr"_s, &Kolonieangaben::KNr, dreistellig), Text::Nummer},
        {textfeld(u"txt_Jahr"_s, &Kolonieangaben::Jahr, jahrErgänzt), Text::Jahr},
    };
    int spalte = 0;
    for (const auto& [feld, text] : spalten) {
        feld->setMinimumWidth(feld->fontMetrics().horizontalAdvance(u"00000"_s) + 12);
        QLabel* kopf = beschriftung(text, feld);
        QFont klein = kopf->font();
        klein.setPointSizeF(klein.pointSizeF() * 0.85);
        kopf->setFont(klein);
        raster->addWidget(feld, 0, spalte);
        raster->addWidget(kopf, 1, spalte);
        ++spalte;
    }
    return gruppe;
}

QLineEdit* Kolonieformular::textfeld(const QString& name, QString Kolonieangaben::*wert,
                                     std::function<QString(const QString&)> normalisiert) {
    auto* feld = new QLineEdit;
    feld->setObjectName(name);
    nimmAuf(feld, feld, wert, std::move(normalisiert));
    return feld;
}

QComboBox* Kolonieformular::namensfeld(const QString& name, QString Kolonieangaben::*wert) {
    auto* feld = new QComboBox;
    feld->setObjectName(name);
    feld->setEditable(true);
    feld->setInsertPolicy(QComboBox::NoInsert);
    feld->setMinimumContentsLength(12);
    feld->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    // The box would put a known name in place of a typed one that differs in case only.
    disconnect(feld->lineEdit(), &QLineEdit::editingFinished, feld, nullptr);
    disconnect(feld->lineEdit(), &QLineEdit::returnPressed, feld, nullptr);
    feld->completer()->setCompletionMode(QCompleter::PopupCompletion);
    feld->completer()->setFilterMode(Qt::MatchContains);
    feld->installEventFilter(this);
    nimmAuf(feld, feld->lineEdit(), wert, {});
    return feld;
}

void Kolonieformular::nimmAuf(QWidget* eingabe, QLineEdit* zeile, QString Kolonieangaben::*wert,
                              std::function<QString(const QString&)> normalisiert) {
    felder_.push_back({eingabe, zeile, wert, std::move(normalisiert)});
    const std::size_t stelle = felder_.size() - 1;
    connect(zeile, &QLineEdit::textChanged, this, [this, wert](const QString& text) {
        angaben_.*wert = text;
        melde();
    });
    connect(zeile, &QLineEdit::editingFinished, this,
            [this, stelle] { normalisiere(felder_[stelle]); });
}

QLabel* Kolonieformular::beschriftung(Text text, QWidget* feld) {
    auto* label = new QLabel;
    label->setBuddy(feld);
    beschriftungen_.emplace_back(label, text);
    return label;
}

void Kolonieformular::beschrifte() {
    for (const auto& [label, text] : beschriftungen_) {
        label->setText(texte_(text));
        label->buddy()->setAccessibleName(texte_(text));
    }
    const std::pair<const char*, Meldung> bedeutungen[] = {
        {"txt_LV", Meldung::FeldRegion},
        {"txt_ZNr", Meldung::FeldZüchternummer},
        {"txt_KNr", Meldung::FeldKöniginnummer},
        {"txt_Jahr", Meldung::FeldJahr},
    };
    for (const auto& [name, meldung] : bedeutungen) {
        auto* feld = findChild<QLineEdit*>(QLatin1StringView(name));
        feld->setToolTip(texte_(meldung));
        feld->setAccessibleName(texte_(meldung));
    }
    cbo_Geschlecht_->setItemText(0, texte_(Text::Arbeiterinnen));
    cbo_Geschlecht_->setItemText(1, texte_(Text::Drohnen));
}

void Kolonieformular::setzeRassen(const QStringList& namen) {
    const QSignalBlocker still(cbo_Rasse_);
    cbo_Rasse_->clear();
    cbo_Rasse_->addItems(namen);
    zeigeRasse();
}

void Kolonieformular::zeigeRasse() {
    // A race outside the list is none of its entries.
    const QString fremde = angaben_.Rassenname.trimmed();
    cbo_Rasse_->setPlaceholderText(fremde);
    cbo_Rasse_->setCurrentIndex(fremde.isEmpty() ? angaben_.Rasse : -1);
}

void Kolonieformular::zeige(const Kolonieangaben& angaben) {
    angaben_ = angaben;
    for (const Feld& feld : felder_) {
        const QSignalBlocker still(feld.zeile);
        const QString& text = angaben.*feld.wert;
        // The results file has a blank where nothing was typed; a name must not be typed behind it.
        feld.zeile->setText(text.trimmed().isEmpty() ? QString() : text);
    }
    ungefüllte_.clear();
    for (const Feld& feld : felder_) {
        if (auto* liste = qobject_cast<QComboBox*>(feld.eingabe)) {
            ungefüllte_.emplace_back(liste, feld.wert);
        }
    }
    zeigeRasse();
    cbo_Geschlecht_->setCurrentIndex(static_cast<int>(angaben.Tiere));
}

bool Kolonieformular::eventFilter(QObject* watched, QEvent* event) {
    // Before the field itself sees what opens its list or begins a word.
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::MouseButtonPress) {
        if (auto* liste = qobject_cast<QComboBox*>(watched)) {
            fülleListe(*liste);
        }
    }
    return QWidget::eventFilter(watched, event);
}

void Kolonieformular::fülleListe(QComboBox& liste) {
    const auto stelle = std::find_if(ungefüllte_.begin(), ungefüllte_.end(),
                                     [&liste](const auto& u) { return u.first == &liste; });
    if (stelle == ungefüllte_.end() || !vorschläge_) {
        return;
    }
    const QStringList bekannte = vorschläge_(stelle->second);
    ungefüllte_.erase(stelle);
    const QSignalBlocker stilleListe(&liste);
    const QSignalBlocker stilleZeile(liste.lineEdit());
    const QString text = liste.currentText();
    const int ort = liste.lineEdit()->cursorPosition();
    liste.clear();
    liste.addItems(bekannte);
    liste.setCurrentIndex(static_cast<int>(bekannte.indexOf(text)));
    liste.setEditText(text);
    liste.lineEdit()->setCursorPosition(ort);
}

void Kolonieformular::normalisiere(const Feld& feld) {
    if (feld.normalisiert) {
        const QString neu = feld.normalisiert(feld.zeile->text());
        if (neu != feld.zeile->text()) {
            feld.zeile->setText(neu);
        }
    }
}

void Kolonieformular::vervollständige() {
    for (const Feld& feld : felder_) {
        if (feld.wert == &Kolonieangaben::Jahr || feld.zeile->hasFocus()) {
            normalisiere(feld);
        }
    }
}

void Kolonieformular::melde() {
    if (änderung_) {
        änderung_(angaben_);
    }
}

} // namespace tarvel
