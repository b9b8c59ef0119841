#include "print/drucken.h"

#include "lang/zielwahl.h"
#include "platform/dateiausgabe.h"
#include "platform/kuerzel.h"
#include "print/protokolloptionen.h"
#include "print/protokollseite.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>
#include <QVBoxLayout>

#include <chrono>

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

    chk_Tabelle_ = new QCheckBox;
    chk_Tabelle_->setObjectName(u"chk_Tabelle"_s);
    chk_Tabelle_->setToolTip(t(Meldung::TippDatenDaneben));
    chk_Tabelle_->setChecked(vorlage_.mitTabelle && !vorlage_.tabelle.isEmpty());
    chk_Tabelle_->setEnabled(!vorlage_.tabelle.isEmpty());

    const QStringList worte = mitKürzelbuchstaben(
        {t(Text::Drucken), t(Meldung::AlsPdfSpeichern), t(Text::Abbrechen), t(Text::Drucker),
         t(Text::Protokoll), t(Meldung::FeldKopien), t(Meldung::DatenDaneben)});
    auto* felder = new QFormLayout;
    // The word for the format ends in a colon, in French with a blank before it.
    const QString& letztes = t(Text::Format);
    const QString punkte =
        letztes.right(letztes.size() > 1 && letztes.chopped(1).back().isSpace() ? 2 : 1);
    felder->addRow(worte[3] + punkte, cbo_Drucker_);
    felder->addRow(worte[4] + punkte, cbo_Seiten_);
    felder->addRow(worte[5] + punkte, txt_Kopien_);
    felder->addRow(t(Text::Format), format);
    felder->addRow(QString(), chk_Tabelle_);
    chk_Tabelle_->setText(worte[6]);

    auto* knöpfe = new QDialogButtonBox;
    bef_Drucken_ = knöpfe->addButton(worte[0], QDialogButtonBox::AcceptRole);
    bef_Drucken_->setObjectName(u"bef_Drucken"_s);
    bef_Drucken_->setToolTip(t(Meldung::TippDrucken));
    bef_PDF_ = knöpfe->addButton(worte[1], QDialogButtonBox::ActionRole);
    bef_PDF_->setObjectName(u"bef_PDF"_s);
    bef_PDF_->setToolTip(t(Meldung::TippPdf));
    bef_PDF_->setAutoDefault(false);
    bef_Abbrechen_ = knöpfe->addButton(worte[2], QDialogButtonBox::RejectRole);
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
    const int letzte = seitenzahl(vorlage_.daten.einstellungen.art);
    QStringList namen{t(Text::Seite1)};
    auswahlen_ = {{.von = 1, .bis = 1}};
    if (letzte == 2) {
        namen << t(Text::Seite2);
        auswahlen_.push_back({.von = 2, .bis = 2});
    }
    if (seitenzahl(vorlage_.daten) > letzte) {
        namen << t(Meldung::FeldAnhang);
        auswahlen_.push_back({.von = letzte + 1});
    }
    if (namen.size() > 1) {
        namen.prepend(namen.join(u", "_s));
        auswahlen_.insert(auswahlen_.begin(), Seitenauswahl{});
    }
    cbo_Seiten_->addItems(namen);
    cbo_Seiten_->setEnabled(namen.size() > 1);

    frage_ = umgebung_.drucker.frage();
    wecker_ = new QTimer(this);
    connect(wecker_, &QTimer::timeout, this, [this] { nimmDrucker(); });
    zeigeFortschritt(false);
    bef_PDF_->setDefault(true);
    bef_PDF_->setFocus();
    nimmDrucker();
}

void Drucken_::nimmDrucker() {
    constexpr int Abfrage = 20; // milliseconds
    if (frage_.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
        wecker_->start(Abfrage);
        return;
    }
    wecker_->stop();
    zeigeDrucker(frage_.get());
}

void Drucken_::zeigeDrucker(const Druckerauskunft& auskunft) {
    serverSchweigt_ = !auskunft.antwortet;
    cbo_Drucker_->addItems(auskunft.liste);
    cbo_Drucker_->setCurrentText(auskunft.standard);
    const bool gibtDrucker = cbo_Drucker_->count() > 0;
    if (!isVisible()) {
        bef_Drucken_->setDefault(gibtDrucker);
        bef_PDF_->setDefault(!gibtDrucker);
    }
    zeigeFortschritt(false);
    if (!isVisible()) { // an answer that comes late takes no key from what the user is doing
        (gibtDrucker ? bef_Drucken_ : bef_PDF_)->setFocus();
    }
}

bool Drucken_::mitTabelle() const {
    return chk_Tabelle_->isChecked();
}

Seitenauswahl Drucken_::seiten() const {
    return auswahlen_.at(static_cast<std::size_t>(cbo_Seiten_->currentIndex()));
}

void Drucken_::zeigeFortschritt(bool läuft) {
    const bool gibtDrucker = cbo_Drucker_->count() > 0;
    const Texte& t = umgebung_.texte;
    cbo_Drucker_->setEnabled(!läuft && gibtDrucker);
    lab_Fortschritt_->setText(läuft             ? t(Text::ProtokollWirdGedruckt)
                              : frage_.valid()  ? t(Meldung::DruckerWerdenGesucht)
                              : gibtDrucker     ? QString()
                              : serverSchweigt_ ? t(Meldung::DruckserverSchweigt)
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
        if (!mitTabelle() || schreibeTabelle(pfad)) {
            accept();
        }
        return;
    }
    umgebung_.dialoge.meldung(t(Meldung::AlsPdfSpeichern), nichtGeschrieben(t, pfad, grund),
                              Meldungsart::Ausruf);
}

bool Drucken_::schreibeTabelle(const QString& pdf) {
    const Texte& t = umgebung_.texte;
    const QFileInfo neben(pdf);
    const QString csv = neben.dir().filePath(neben.completeBaseName() + u".csv"_s);
    if (!darfErsetzen(t, umgebung_.dialoge, t(Meldung::AlsPdfSpeichern), csv)) {
        return false;
    }
    const std::optional<QString> grund = schreibeDatei(csv, vorlage_.tabelle);
    if (grund) {
        umgebung_.dialoge.meldung(t(Meldung::AlsPdfSpeichern), nichtGeschrieben(t, csv, *grund),
                                  Meldungsart::Ausruf);
    }
    return !grund;
}

} // namespace tarvel
