#include "measure/aufloesungsfenster.h"

#include "measure/aufloesung.h"
#include "measure/bildsuche.h"
#include "measure/fluegelprobe.h"
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
                                     std::optional<int> dpiDesBildes, QWidget* parent)
    : QDialog(parent)
    , texte_(texte)
    , reihe_(reihe)
    , format_(std::move(format))
    , bild_(bild)
    , dpiDesBildes_(dpiDesBildes)
    , cbo_Bild_(new QComboBox)
    , cbo_Auflösung_(new QComboBox)
    , lab_Vorschlag_(new QLabel)
    , tab_Wechsel_(new QTableWidget(0, 4))
    , lab_Mittel_(new QLabel) {
    setObjectName(u"Auflösung"_s);
    setWindowTitle(texte_(Meldung::FlügelauflösungTitel));
    auto* layout = new QVBoxLayout(this);
    auto* erklärung = new QLabel(texte_(Meldung::FlügelauflösungErklärung));
    erklärung->setWordWrap(true);
    layout->addWidget(erklärung);

    const int vorwahl = fülleBilder();
    std::set<int> dpi(Scannerauflösungen.begin(), Scannerauflösungen.end());
    if (dpiDesBildes_) {
        dpi.insert(*dpiDesBildes_);
    }
    for (const auto& [nummer, messung] : reihe_.messungen()) {
        dpi.insert(messung.aufnahme.dpi);
        dpi.insert(
            passendeAuflösung(messung.punkte, messung.aufnahme).value_or(messung.aufnahme.dpi));
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
    lab_Vorschlag_->setObjectName(u"lab_Vorschlag"_s);
    lab_Vorschlag_->setWordWrap(true);
    layout->addWidget(lab_Vorschlag_);

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
    schlageVor();
    connect(cbo_Bild_, &QComboBox::currentIndexChanged, this, [this] {
        schlageVor();
        zeige();
    });
    connect(cbo_Auflösung_, &QComboBox::activated, this, [this] { selbstGewählt_ = true; });
    connect(cbo_Auflösung_, &QComboBox::currentIndexChanged, this, [this] { zeige(); });
    zeige();
    resize(sizeHint().expandedTo({460, 420}));
}

int Auflösungsfenster::fülleBilder() {
    std::set<QString> pfade;
    std::vector<int> alle;
    int vorwahl = 0;
    for (const auto& [nummer, messung] : reihe_.messungen()) {
        alle.push_back(nummer);
        if (!pfade.insert(messung.bilddatei).second) {
            continue;
        }
        std::vector<int> darauf;
        for (const auto& [andere, m] : reihe_.messungen()) {
            if (m.bilddatei == messung.bilddatei) {
                darauf.push_back(andere);
            }
        }
        if (messung.bilddatei == bild_) {
            vorwahl = static_cast<int>(flügel_.size());
        }
        flügel_.push_back(darauf);
        const QString name =
            messung.bilddatei.isEmpty() ? texte_(Meldung::OhneBild) : dateiname(messung.bilddatei);
        const QFontMetrics maße = cbo_Bild_->fontMetrics();
        cbo_Bild_->addItem(
            texte_(Meldung::BildMitFlügeln)
                .arg(maße.elidedText(name, Qt::ElideMiddle, 30 * maße.averageCharWidth()),
                     QString::number(darauf.size())));
        cbo_Bild_->setItemData(cbo_Bild_->count() - 1, name, Qt::ToolTipRole);
    }
    if (flügel_.size() > 1) {
        cbo_Bild_->addItem(texte_(Meldung::AlleBilder).arg(alle.size()));
        flügel_.push_back(alle);
    }
    return vorwahl;
}

void Auflösungsfenster::schlageVor() {
    if (nummern().empty()) {
        return;
    }
    // The wing of medium size speaks for all: one with a point beside its place must not.
    std::vector<std::pair<double, int>> längen;
    for (const int nummer : nummern()) {
        const Flügelmessung& m = *reihe_.messung(nummer);
        if (const std::optional<double> länge = längeRadialzelle(m.punkte, m.aufnahme)) {
            längen.emplace_back(*länge, nummer);
        }
    }
    Aufnahme bisher = reihe_.messung(nummern().back())->aufnahme;
    int vorschlag = bisher.dpi;
    QString warum;
    if (!längen.empty()) {
        const auto mitte = längen.begin() + static_cast<std::ptrdiff_t>(längen.size() / 2);
        std::nth_element(längen.begin(), mitte, längen.end());
        const Flügelmessung& m = *reihe_.messung(mitte->second);
        bisher = m.aufnahme;
        if (const auto passende = passendeAuflösung(m.punkte, bisher)) {
            vorschlag = *passende;
            warum = texte_(Meldung::RadialzelleUnmöglich)
                        .arg(QString::number(bisher.dpi), Format(mitte->first, u"0.0", format_)) +
                    u' ' + texte_(Meldung::AuflösungPasst).arg(vorschlag);
        }
        const bool darauf = std::any_of(nummern().begin(), nummern().end(), [this](int nummer) {
            return reihe_.messung(nummer)->bilddatei == bild_;
        });
        if (Aufnahme desBildes = bisher; dpiDesBildes_ && darauf) {
            desBildes.dpi = *dpiDesBildes_;
            const double länge = längeRadialzelle(m.punkte, desBildes).value_or(0);
            if (länge >= KürzesteRadialzelle && länge <= LängsteRadialzelle) {
                vorschlag = *dpiDesBildes_;
            }
        }
    }
    lab_Vorschlag_->setText(warum);
    lab_Vorschlag_->setVisible(!warum.isEmpty());
    if (!selbstGewählt_) {
        cbo_Auflösung_->setCurrentIndex(cbo_Auflösung_->findData(vorschlag));
    }
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
