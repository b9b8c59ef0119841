#include "print/drucken.h"

#include "lang/zielwahl.h"
#include "print/protokolloptionen.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr int HöchsteKopienzahl = 99;

} // namespace

Drucken_::Drucken_(const Druckumgebung& umgebung, const Druckvorlage& vorlage, QWidget* parent)
    : QDialog(parent)
    , umgebung_(umgebung)
    , vorlage_(vorlage) {
    setObjectName(u"Drucken_"_s);
    setWindowTitle(umgebung_.texte(Text::MenüProtokollDrucken));
    baue();
    Form_Activate();
}

void Drucken_::baue() {
    const Texte& t = umgebung_.texte;
    cbo_Drucker_ = new QComboBox;
    cbo_Drucker_->setObjectName(u"cbo_Drucker"_s);
    cbo_Drucker_->setMinimumContentsLength(24);
    cbo_Seiten_ = new QComboBox;
    cbo_Seiten_->setObjectName(u"cbo_Seiten"_s);
    txt_Kopien_ = new QSpinBox;
    txt_Kopien_->setObjectName(u"txt_Kopien"_s);
    txt_Kopien_->setRange(1, HöchsteKopienzahl);
    auto* format = new QLabel(t(Text::A4Hochformat));
    format->setObjectName(u"lab_Format"_s);
    lab_Fortschritt_ = new QLabel;
    lab_Fortschritt_->setObjectName(u"lab_Fortschritt"_s);
    lab_Fortschritt_->setWordWrap(true);

    auto* felder = new QFormLayout;
    felder->addRow(t(Text::Drucker), cbo_Drucker_);
    felder->addRow(t(Text::Protokoll), cbo_Seiten_);
    felder->addRow(t(Meldung::FeldKopien), txt_Kopien_);
    felder->addRow(t(Text::Format), format);

    auto* knöpfe = new QDialogButtonBox;
    bef_Drucken_ = knöpfe->addButton(t(Text::Drucken), QDialogButtonBox::AcceptRole);
    bef_Drucken_->setObjectName(u"bef_Drucken"_s);
    bef_Drucken_->setToolTip(t(Meldung::TippDrucken));
    bef_PDF_ = knöpfe->addButton(t(Meldung::AlsPdfSpeichern), QDialogButtonBox::ActionRole);
    bef_PDF_->setObjectName(u"bef_PDF"_s);
    bef_PDF_->setToolTip(t(Meldung::TippPdf));
    bef_PDF_->setAutoDefault(false);
    bef_Abbrechen_ = knöpfe->addButton(t(Text::Abbrechen), QDialogButtonBox::RejectRole);
    bef_Abbrechen_->setObjectName(u"bef_Abbrechen"_s);
    connect(bef_Drucken_, &QPushButton::clicked, this, [this] { bef_Drucken_Click(); });
    connect(bef_PDF_, &QPushButton::clicked, this, [this] { bef_PDF_Click(); });
    connect(bef_Abbrechen_, &QPushButton::clicked, this, [this] { reject(); });

    auto* untereinander = new QVBoxLayout(this);
    untereinander->addLayout(felder);
    untereinander->addWidget(lab_Fortschritt_);
    untereinander->addWidget(knöpfe);
}

void Drucken_::Form_Activate() {
    const Texte& t = umgebung_.texte;
    cbo_Drucker_->addItems(umgebung_.drucker.liste());
    cbo_Drucker_->setCurrentText(umgebung_.drucker.standard());
    const bool gibtDrucker = cbo_Drucker_->count() > 0;
    cbo_Drucker_->setEnabled(gibtDrucker);
    bef_Drucken_->setDefault(gibtDrucker);
    bef_PDF_->setDefault(!gibtDrucker);
    (gibtDrucker ? bef_Drucken_ : bef_PDF_)->setFocus();
    zeigeFortschritt(false);
    const bool zweiSeiten = seitenzahl(vorlage_.daten.einstellungen.art) == 2;
    cbo_Seiten_->addItem(zweiSeiten ? t(Text::Seite1) + u", "_s + t(Text::Seite2)
                                    : t(Text::Seite1));
    if (zweiSeiten) {
        cbo_Seiten_->addItems({t(Text::Seite1), t(Text::Seite2)});
    }
    cbo_Seiten_->setEnabled(zweiSeiten);
}

Seitenauswahl Drucken_::seiten() const {
    const int seite = cbo_Seiten_->currentIndex();
    return seite == 0 ? Seitenauswahl{} : Seitenauswahl{.von = seite, .bis = seite};
}

void Drucken_::zeigeFortschritt(bool läuft) {
    const bool gibtDrucker = cbo_Drucker_->count() > 0;
    const Texte& t = umgebung_.texte;
    lab_Fortschritt_->setText(läuft         ? t(Text::ProtokollWirdGedruckt)
                              : gibtDrucker ? QString()
                                            : t(Meldung::KeinDrucker));
    for (QPushButton* knopf : {bef_PDF_, bef_Abbrechen_}) {
        knopf->setEnabled(!läuft);
    }
    bef_Drucken_->setEnabled(!läuft && gibtDrucker);
    lab_Fortschritt_->repaint(); // nothing is painted while a job is handed over
}

void Drucken_::bef_Drucken_Click() {
    const QString drucker = cbo_Drucker_->currentText();
    zeigeFortschritt(true);
    umgebung_.wahl.wähle(drucker);
    const bool gedruckt = umgebung_.drucker.drucke(
        {.drucker = drucker, .titel = vorlage_.titel, .exemplare = txt_Kopien_->value()},
        [this](QPagedPaintDevice& gerät) {
            return Druckstart(gerät, vorlage_.daten, vorlage_.grafik, seiten());
        });
    zeigeFortschritt(false);
    if (gedruckt) {
        accept();
        return;
    }
    umgebung_.dialoge.meldung(umgebung_.texte(Text::Drucken),
                              umgebung_.texte(Meldung::DruckNichtMöglich).arg(drucker),
                              Meldungsart::Ausruf);
}

void Drucken_::bef_PDF_Click() {
    const Texte& t = umgebung_.texte;
    const QString pfad = wähleZiel(t, umgebung_.dialoge,
                                   {.titel = t(Meldung::AlsPdfSpeichern),
                                    .vorschlag = vorlage_.pdf,
                                    .muster = t(Meldung::PdfDateien) + u" (*.pdf)"_s,
                                    .endungen = {u".pdf"_s}});
    if (pfad.isEmpty()) {
        return;
    }
    zeigeFortschritt(true);
    const QString grund = speichereProtokoll(pfad, vorlage_.daten, vorlage_.grafik, seiten());
    zeigeFortschritt(false);
    if (grund.isEmpty()) {
        geschrieben_ = pfad;
        accept();
        return;
    }
    umgebung_.dialoge.meldung(t(Meldung::AlsPdfSpeichern), nichtGeschrieben(t, pfad, grund),
                              Meldungsart::Ausruf);
}

} // namespace tarvel
