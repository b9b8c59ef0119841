#include "measure/aufloesungsfenster.h"

#include "measure/aufloesung.h"
#include "measure/bildsuche.h"
#include "measure/indexmuster.h"
#include "measure/statistik.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <set>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

QString dateiname(const QString& pfad) {
    return pfad.sliced(std::max(pfad.lastIndexOf(u'/'), pfad.lastIndexOf(u'\\')) + 1);
}

/// Mean of the wings that count; KeinWert without any.
float mittelDV(const Messreihe& reihe) {
    const std::optional<Kennzahlen> DV = kennzahlen(werte(reihe, &Chartwerte::DV));
    return DV ? static_cast<float>(DV->mittelwert) : Chartwerte::KeinWert;
}

} // namespace

Auflösungsfenster::Auflösungsfenster(const Texte& texte, const Messreihe& reihe,
                                     Zahlenformat format, const QString& bild,
                                     const std::vector<int>& weitere, QWidget* parent)
    : QDialog(parent)
    , texte_(texte)
    , reihe_(reihe)
    , format_(std::move(format))
    , cbo_Bild_(new QComboBox)
    , cbo_Auflösung_(new QComboBox)
    , tab_Wechsel_(new QTableWidget(0, 4))
    , lab_Mittel_(new QLabel) {
    setObjectName(u"Auflösung"_s);
    setWindowTitle(texte_(Meldung::FlügelauflösungTitel));
    auto* layout = new QVBoxLayout(this);
    auto* erklärung = new QLabel(texte_(Meldung::FlügelauflösungErklärung));
    erklärung->setWordWrap(true);
    layout->addWidget(erklärung);

    std::set<int> dpi(Scannerauflösungen.begin(), Scannerauflösungen.end());
    dpi.insert(weitere.begin(), weitere.end());
    std::set<QString> pfade;
    int vorwahl = 0;
    for (const auto& [nummer, messung] : reihe_.messungen()) {
        dpi.insert(messung.aufnahme.dpi);
        if (!pfade.insert(messung.bilddatei).second) {
            continue;
        }
        std::vector<int> darauf;
        for (const auto& [andere, m] : reihe_.messungen()) {
            if (m.bilddatei == messung.bilddatei) {
                darauf.push_back(andere);
            }
        }
        if (messung.bilddatei == bild || flügel_.empty()) {
            vorwahl = static_cast<int>(flügel_.size());
        }
        flügel_.push_back(darauf);
        cbo_Bild_->addItem(texte_(Meldung::BildMitFlügeln)
                               .arg(messung.bilddatei.isEmpty() ? texte_(Meldung::OhneBild)
                                                                : dateiname(messung.bilddatei),
                                    QString::number(darauf.size())));
    }
    for (const int wert : dpi) {
        cbo_Auflösung_->addItem(QString::number(wert) + u' ' + texte_(Meldung::EinheitDpi), wert);
    }
    auto* formular = new QFormLayout;
    const std::pair<QComboBox*, QString> felder[] = {
        {cbo_Bild_, texte_(Meldung::FlügelauflösungBild)},
        {cbo_Auflösung_, texte_(Meldung::NeueAuflösung)}};
    for (const auto& [feld, name] : felder) {
        auto* titel = new QLabel(name);
        titel->setBuddy(feld);
        feld->setAccessibleName(name);
        formular->addRow(titel, feld);
    }
    cbo_Bild_->setObjectName(u"cbo_Bild"_s);
    cbo_Bild_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cbo_Bild_->setMinimumContentsLength(24);
    cbo_Auflösung_->setObjectName(u"cbo_Auflösung"_s);
    layout->addLayout(formular);

    tab_Wechsel_->setObjectName(u"tab_Wechsel"_s);
    tab_Wechsel_->setAccessibleName(texte_(Meldung::FlügelauflösungTitel));
    tab_Wechsel_->setHorizontalHeaderLabels(
        {texte_(Meldung::SpalteFlügel), texte_(Meldung::EinheitDpi), texte_(Meldung::SpalteBisher),
         texte_(Meldung::SpalteNeu)});
    tab_Wechsel_->verticalHeader()->hide();
    tab_Wechsel_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    tab_Wechsel_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tab_Wechsel_->setTabKeyNavigation(false);
    layout->addWidget(tab_Wechsel_, 1);
    lab_Mittel_->setObjectName(u"lab_Mittel"_s);
    layout->addWidget(lab_Mittel_);

    auto* knöpfe = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    bef_OK_ = knöpfe->button(QDialogButtonBox::Ok);
    bef_OK_->setObjectName(u"bef_OK"_s);
    bef_OK_->setText(texte_(Meldung::AuflösungÄndern));
    knöpfe->button(QDialogButtonBox::Cancel)->setObjectName(u"bef_Abbrechen"_s);
    knöpfe->button(QDialogButtonBox::Cancel)->setText(texte_(Text::Abbrechen));
    connect(knöpfe, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(knöpfe, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(knöpfe);

    cbo_Bild_->setCurrentIndex(vorwahl);
    const int bisher = nummern().empty() ? Scannerauflösungen.back()
                                         : reihe_.messung(nummern().back())->aufnahme.dpi;
    cbo_Auflösung_->setCurrentIndex(
        cbo_Auflösung_->findData(weitere.empty() ? bisher : weitere.front()));
    connect(cbo_Bild_, &QComboBox::currentIndexChanged, this, [this] { zeige(); });
    connect(cbo_Auflösung_, &QComboBox::currentIndexChanged, this, [this] { zeige(); });
    zeige();
    resize(sizeHint().expandedTo({460, 420}));
}

const std::vector<int>& Auflösungsfenster::nummern() const {
    static const std::vector<int> keine;
    const int stelle = cbo_Bild_->currentIndex();
    return stelle < 0 ? keine : flügel_.at(static_cast<std::size_t>(stelle));
}

int Auflösungsfenster::dpi() const {
    return cbo_Auflösung_->currentData().toInt();
}

void Auflösungsfenster::zeige() {
    const auto text = [this](float DV) {
        return DV == Chartwerte::KeinWert ? u"–"_s : Format(DV, muster::DV, format_);
    };
    const std::vector<Auflösungswechsel> liste = reihe_.auflösungswechsel(nummern(), dpi());
    tab_Wechsel_->setRowCount(static_cast<int>(nummern().size()));
    int zeile = 0;
    for (const int nummer : nummern()) {
        const auto wechsel = std::find_if(liste.begin(), liste.end(),
                                          [nummer](const auto& w) { return w.nummer == nummer; });
        const float bisher = reihe_.chartwerte(nummer).DV;
        int spalte = 0;
        for (const QString& wert :
             {dreistellig(nummer), QString::number(reihe_.messung(nummer)->aufnahme.dpi),
              text(bisher), text(wechsel == liste.end() ? bisher : wechsel->DVNachher)}) {
            auto* eintrag = new QTableWidgetItem(wert);
            eintrag->setTextAlignment(Qt::AlignCenter);
            tab_Wechsel_->setItem(zeile, spalte++, eintrag);
        }
        ++zeile;
    }
    Messreihe neu = reihe_;
    neu.setzeAuflösung(nummern(), dpi());
    lab_Mittel_->setText(
        texte_(Meldung::MittelwertWechsel).arg(text(mittelDV(reihe_)), text(mittelDV(neu))));
    bef_OK_->setEnabled(!liste.empty());
}

} // namespace tarvel
