#include "lang/uebersetz.h"

#include "lang/hilfe.h"

#include "platform/profil.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace tarvel {

namespace {

using namespace Qt::StringLiterals;

/// What a report reads from the settings file of one text.
constexpr int Höchstlänge = 127;

/// Whether row @p zeile is printed on the second page, that of the correlation.
bool aufSeite2(std::size_t zeile) {
    static constexpr Protokollfeld korrelation[] = {
        Text::Hantelindex,
        Text::HI,
        Text::HantelindexUndDV,
        Text::KorrelationHantelindexDiscoidalverschiebung,
        Text::DV,
        Text::NichtImVertrauensbereich,
        Text::Seite2};
    return std::any_of(std::begin(korrelation), std::end(korrelation),
                       [zeile](const Protokollfeld& feld) { return feld.index() == zeile; });
}

/// A pasted text may have several lines, a key of the settings file has one.
QString einzeilig(QString text) {
    std::replace_if(
        text.begin(), text.end(), [](QChar c) { return c.category() == QChar::Other_Control; },
        QChar(u' '));
    return text;
}

void leere(QGridLayout& raster) {
    while (QLayoutItem* teil = raster.takeAt(0)) {
        delete teil;
    }
}

} // namespace

Übersetz::Übersetz(const Texte& texte, QString IniPfad, Dialoge& dialoge, Shell& shell,
                   Testen testen, QWidget* parent)
    : QDialog(parent)
    , texte_(texte)
    , IniPfad_(std::move(IniPfad))
    , dialoge_(dialoge)
    , shell_(shell)
    , testen_(std::move(testen))
    , tbs_Seiten_(new QTabWidget)
    , lab_Hinweis_(new QLabel)
    , bef_OK_(new QPushButton)
    , bef_Abbrechen_(new QPushButton)
    , bef_Test_(new QPushButton)
    , bef_Sprachpaket_(new QPushButton) {
    setObjectName(u"Übersetz"_s);
    setSizeGripEnabled(true);
    tbs_Seiten_->setObjectName(u"tbs_Seiten"_s);
    lab_Hinweis_->setObjectName(u"lab_Hinweis"_s);
    lab_Hinweis_->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tbs_Seiten_, 1);
    layout->addWidget(lab_Hinweis_);

    for (std::size_t i = 0; i < protokolltabelle.size(); ++i) {
        seiten_.at(aufSeite2(i) ? 1 : 0).zeilen.push_back(static_cast<int>(i));
    }
    for (Seite& seite : seiten_) {
        baueSeite(seite);
    }
    baueKnöpfe();
    baueTasten();

    connect(&texte_, &Texte::languageChanged, this, [this] {
        beschrifte();
        zeigeÜbersetzung(false);
    });
    Form_Load();
    txt_Text_.front()->setFocus();
    // One column, so that the preview has room beside it.
    const QSize gewünscht(blockbreite(), fontMetrics().height() * 42);
    resize(gewünscht.boundedTo(screen()->availableSize() * 9 / 10));
}

void Übersetz::baueSeite(Seite& seite) {
    auto* rolle = new QScrollArea;
    rolle->setObjectName(u"rol_Seite_%1"_s.arg(tbs_Seiten_->count()));
    rolle->setFrameShape(QFrame::NoFrame);
    rolle->setWidgetResizable(true);
    rolle->setFocusPolicy(Qt::NoFocus);
    seite.fläche = new QWidget;
    seite.raster = new QGridLayout(seite.fläche);
    for (std::size_t block = 0; block < seite.sprachen.size(); ++block) {
        for (QLabel** kopf : {&seite.sprachen.at(block), &seite.eigene.at(block)}) {
            *kopf = new QLabel(seite.fläche);
            QFont fett = (*kopf)->font();
            fett.setBold(true);
            (*kopf)->setFont(fett);
        }
    }
    for (const int zeile : seite.zeilen) {
        const auto i = static_cast<std::size_t>(zeile);
        auto* label = new QLabel(seite.fläche);
        label->setObjectName(u"lab_Text_%1"_s.arg(zeile));
        label->setWordWrap(true);
        auto* feld = new QLineEdit(seite.fläche);
        feld->setObjectName(u"txt_Text_%1"_s.arg(zeile));
        feld->setMaxLength(Höchstlänge);
        constexpr int Mindestbreite = 14; // characters
        feld->setMinimumWidth(feld->fontMetrics().averageCharWidth() * Mindestbreite);
        label->setBuddy(feld);
        connect(feld, &QLineEdit::textChanged, this, [this] { zeigeAnzahl(); });
        lab_Text_.at(i) = label;
        txt_Text_.at(i) = feld;
    }
    rolle->setWidget(seite.fläche);
    tbs_Seiten_->addTab(rolle, QString());
}

void Übersetz::baueKnöpfe() {
    bef_OK_->setObjectName(u"bef_OK"_s);
    bef_OK_->setDefault(true);
    bef_Abbrechen_->setObjectName(u"bef_Abbrechen"_s);
    bef_Test_->setObjectName(u"bef_Test"_s);
    connect(bef_OK_, &QPushButton::clicked, this, [this] { bef_OK_Click(); });
    connect(bef_Abbrechen_, &QPushButton::clicked, this, [this] { bef_Abbrechen_Click(); });
    connect(bef_Test_, &QPushButton::clicked, this, [this] { bef_Test_Click(); });
    bef_Sprachpaket_->setObjectName(u"bef_Sprachpaket"_s);
    bef_Sprachpaket_->setAutoDefault(false);
    auto* menü = new QMenu(bef_Sprachpaket_);
    for (const Paketwunsch wunsch :
         {Paketwunsch::Laden, Paketwunsch::Vorlage, Paketwunsch::Ablegen}) {
        const auto i = static_cast<std::size_t>(wunsch);
        men_Sprachpaket_.at(i) = menü->addAction(QString(), this, [this, wunsch] {
            if (paket_) {
                paket_(wunsch);
            }
        });
        men_Sprachpaket_.at(i)->setObjectName(u"men_Sprachpaket_%1"_s.arg(i));
    }
    bef_Sprachpaket_->setMenu(menü);
    auto* knöpfe = new QDialogButtonBox;
    knöpfe->addButton(bef_Sprachpaket_, QDialogButtonBox::ActionRole);
    knöpfe->addButton(bef_Test_, QDialogButtonBox::ActionRole);
    knöpfe->addButton(bef_OK_, QDialogButtonBox::AcceptRole);
    knöpfe->addButton(bef_Abbrechen_, QDialogButtonBox::RejectRole);
    layout()->addWidget(knöpfe);
}

void Übersetz::baueTasten() {
    // Shortcuts, because the scroll areas would take these keys for themselves.
    const std::pair<QList<QKeySequence>, int> tasten[] = {
        {{Qt::Key_PageDown, Qt::CTRL | Qt::Key_PageDown, Qt::CTRL | Qt::Key_Tab}, 1},
        {{Qt::Key_PageUp, Qt::CTRL | Qt::Key_PageUp, Qt::CTRL | Qt::SHIFT | Qt::Key_Tab}, -1}};
    for (const auto& [folgen, um] : tasten) {
        auto* taste = new QShortcut(this);
        taste->setKeys(folgen);
        connect(taste, &QShortcut::activated, this, [this, um = um] { blättere(um); });
    }
}

void Übersetz::blättere(int um) {
    const int seite = std::clamp(tbs_Seiten_->currentIndex() + um, 0, tbs_Seiten_->count() - 1);
    if (seite == tbs_Seiten_->currentIndex()) {
        return;
    }
    tbs_Seiten_->setCurrentIndex(seite);
    const int erste = seiten_.at(static_cast<std::size_t>(seite)).zeilen.front();
    txt_Text_.at(static_cast<std::size_t>(erste))->setFocus(Qt::ShortcutFocusReason);
}

int Übersetz::blockbreite() const {
    constexpr int Zeichen = 64; // a report text and a field it fits into
    return fontMetrics().averageCharWidth() * Zeichen;
}

void Übersetz::ordneAn(Seite& seite, int blöcke) {
    if (blöcke == seite.blöcke) {
        return;
    }
    seite.blöcke = blöcke;
    QGridLayout& raster = *seite.raster;
    leere(raster);
    const int anzahl = static_cast<int>(seite.zeilen.size());
    const int jeBlock = (anzahl + blöcke - 1) / blöcke;
    constexpr int Spalten = 3; // text, field and the gap to the next block
    for (int block = 0; block < static_cast<int>(seite.sprachen.size()); ++block) {
        const auto b = static_cast<std::size_t>(block);
        const bool sichtbar = block < blöcke;
        seite.sprachen.at(b)->setVisible(sichtbar);
        seite.eigene.at(b)->setVisible(sichtbar);
        if (sichtbar) {
            raster.addWidget(seite.sprachen.at(b), 0, block * Spalten);
            raster.addWidget(seite.eigene.at(b), 0, block * Spalten + 1);
        }
        raster.setColumnStretch(block * Spalten, sichtbar ? 2 : 0);
        raster.setColumnStretch(block * Spalten + 1, sichtbar ? 3 : 0);
    }
    raster.setColumnMinimumWidth(2, blöcke > 1 ? fontMetrics().averageCharWidth() * 3 : 0);
    for (int i = 0; i < anzahl; ++i) {
        const auto zeile = static_cast<std::size_t>(seite.zeilen.at(static_cast<std::size_t>(i)));
        const int spalte = i / jeBlock * Spalten;
        raster.addWidget(lab_Text_.at(zeile), 1 + i % jeBlock, spalte);
        raster.addWidget(txt_Text_.at(zeile), 1 + i % jeBlock, spalte + 1);
    }
    for (int i = 0; i <= anzahl + 1; ++i) {
        raster.setRowStretch(i, i == jeBlock + 1 ? 1 : 0);
    }
}

void Übersetz::Form_Load() {
    beschrifte();
    zeigeÜbersetzung(true);
}

void Übersetz::beschrifte() {
    setWindowTitle(texte_(Text::ProtokollÜbersetzen));
    tbs_Seiten_->setTabText(0, texte_(Text::Seite1));
    tbs_Seiten_->setTabText(1, texte_(Text::Seite2));
    bef_OK_->setText(texte_(Meldung::KnopfOK));
    bef_Abbrechen_->setText(texte_(Text::Abbrechen));
    bef_Test_->setText(texte_(Text::Testen));
    bef_Test_->setToolTip(texte_(Meldung::TippÜbersetzungTesten));
    bef_Sprachpaket_->setText(texte_(Meldung::Sprachpaket));
    bef_Sprachpaket_->setToolTip(texte_(Meldung::TippSprachpaket));
    men_Sprachpaket_[0]->setText(texte_(Meldung::SprachpaketLaden));
    men_Sprachpaket_[1]->setText(texte_(Meldung::SprachpaketVorlage));
    men_Sprachpaket_[2]->setText(texte_(Meldung::SprachpaketAblegen));
    men_Sprachpaket_[2]->setEnabled(texte_.paket().has_value());
    const QString sprache = texte_(sprachname(texte_.sprache().value_or(Sprache::Deutsch)));
    for (const Seite& seite : seiten_) {
        for (QLabel* kopf : seite.sprachen) {
            kopf->setText(sprache);
        }
        for (QLabel* kopf : seite.eigene) {
            kopf->setText(texte_(Meldung::SpalteEigenerText));
        }
    }
    const Protokollfelder standard = ProtokolltexteStandard(texte_).felder;
    for (std::size_t i = 0; i < standard.size(); ++i) {
        lab_Text_.at(i)->setText(standard.at(i));
        txt_Text_.at(i)->setAccessibleName(standard.at(i));
        txt_Text_.at(i)->setPlaceholderText(standard.at(i));
        txt_Text_.at(i)->setToolTip(texte_(Meldung::TippEigenerText));
    }
    zeigeAnzahl();
}

void Übersetz::zeigeÜbersetzung(bool auchBearbeitete) {
    const Protokollfelder standard = ProtokolltexteStandard(texte_).felder;
    Protokollfelder felder = standard;
    ÜbersetzungLaden(IniPfad_, felder);
    for (std::size_t i = 0; i < felder.size(); ++i) {
        if (!auchBearbeitete && txt_Text_.at(i)->isModified()) {
            continue;
        }
        // The program's own word stays open, so that it follows the language.
        txt_Text_.at(i)->setText(felder.at(i) == standard.at(i) ? QString() : felder.at(i));
        txt_Text_.at(i)->setCursorPosition(0);
    }
}

QString Übersetz::text(std::size_t zeile) const {
    return einzeilig(txt_Text_.at(zeile)->text());
}

Protokollfelder Übersetz::felder() const {
    Protokollfelder felder = ProtokolltexteStandard(texte_).felder;
    for (std::size_t i = 0; i < felder.size(); ++i) {
        if (const QString eigener = text(i); !eigener.isEmpty()) {
            felder.at(i) = eigener;
        }
    }
    return felder;
}

bool Übersetz::SpeichernInINI() {
    Profil ini(IniPfad_);
    for (std::size_t i = 0; i < protokolltabelle.size(); ++i) {
        ini.setzeText("Translate", protokollschlüssel(protokolltabelle.at(i).nummer),
                      alsProfilwert(text(i)));
    }
    if (!ini.sichere()) {
        dialoge_.meldung(
            windowTitle(),
            texte_(Meldung::ÜbersetzungNichtGeschrieben).arg(QDir::toNativeSeparators(IniPfad_)),
            Meldungsart::Ausruf);
        return false;
    }
    for (QLineEdit* feld : txt_Text_) {
        feld->setModified(false);
    }
    return true;
}

int Übersetz::eigene() const {
    return static_cast<int>(std::count_if(txt_Text_.begin(), txt_Text_.end(),
                                          [](const QLineEdit* f) { return !f->text().isEmpty(); }));
}

void Übersetz::zeigeAnzahl() {
    QStringList zeilen{texte_(Meldung::EigeneTexteZahl).arg(eigene()).arg(protokolltabelle.size())};
    if (const auto& paket = texte_.paket()) {
        zeilen << texte_(Meldung::SprachpaketStand)
                      .arg(paket->name, QString::number(paket->anzahl()),
                           QString::number(umfangSprachpaket()));
    }
    lab_Hinweis_->setText(zeilen.join(u'\n'));
}

void Übersetz::bef_OK_Click() {
    if (SpeichernInINI()) {
        accept();
    }
}

void Übersetz::bef_Abbrechen_Click() {
    reject();
}

void Übersetz::pic_Cancel_Click() {
    reject();
}

void Übersetz::bef_Test_Click() {
    if (SpeichernInINI()) {
        testen_(felder(), tbs_Seiten_->currentIndex() + 1);
    }
}

// The report of a running program reads the fields even while the window is closed: they go back to
// what the file holds.
void Übersetz::accept() {
    QDialog::accept();
    Form_Load();
}

void Übersetz::reject() {
    QDialog::reject();
    Form_Load();
}

void Übersetz::Form_KeyDown(QKeyEvent& taste) {
    switch (taste.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // On a button, Enter means that button.
        if (auto* knopf = qobject_cast<QPushButton*>(focusWidget())) {
            knopf->click();
        } else {
            bef_OK_Click();
        }
        break;
    case Qt::Key_Escape:
        bef_Abbrechen_Click();
        break;
    case Qt::Key_F1:
        hilfe();
        break;
    default:
        QDialog::keyPressEvent(&taste);
        break;
    }
}

bool Übersetz::geändert() const {
    return std::any_of(txt_Text_.begin(), txt_Text_.end(),
                       [](const QLineEdit* feld) { return feld->isModified(); });
}

void Übersetz::hilfe() {
    zeigeHilfe(texte_, shell_, dialoge_, u"protokoll"_s);
}

void Übersetz::Form_Resize() {
    const bool breit = width() >= blockbreite() * 2;
    constexpr std::size_t kurz = 10; // rows that need no second block
    for (Seite& seite : seiten_) {
        ordneAn(seite, breit && seite.zeilen.size() > kurz ? 2 : 1);
    }
}

void Übersetz::keyPressEvent(QKeyEvent* event) {
    Form_KeyDown(*event);
}

void Übersetz::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    Form_Resize();
}

void Übersetz::closeEvent(QCloseEvent* event) {
    pic_Cancel_Click();
    event->accept();
}

} // namespace tarvel
