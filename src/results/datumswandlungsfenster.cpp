#include "results/datumswandlungsfenster.h"

#include "results/zeileneingabe.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

enum Spalte { Nummer, WieEsSteht, Wird, Spaltenzahl };

void setze(QTableWidget& tabelle, int zeile, Spalte spalte, const QString& text) {
    auto* zelle = new QTableWidgetItem(text);
    zelle->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    tabelle.setItem(zeile, spalte, zelle);
}

} // namespace

Datumswandlungsfenster::Datumswandlungsfenster(const Texte& texte, std::vector<AltesDatum> daten,
                                               const QDate& heute, QWidget* parent)
    : QDialog(parent)
    , texte_(texte)
    , daten_(std::move(daten))
    , heute_(heute)
    , tabelle_(new QTableWidget)
    , box_Folge_(new QComboBox)
    , bef_Umwandeln_(new QPushButton(texte(Meldung::DatenUmwandeln))) {
    setObjectName(u"Datumswandlung"_s);
    setWindowTitle(texte(Meldung::AlteDaten));
    auto* text = new QLabel(texte(Meldung::AlteDatenText));
    text->setWordWrap(true);
    tabelle_->setObjectName(u"Tabelle_Daten"_s);
    tabelle_->setColumnCount(Spaltenzahl);
    tabelle_->setHorizontalHeaderLabels(
        {texte(Text::UntersuchungNr), texte(Meldung::DatumWieEsSteht), texte(Meldung::DatumWird)});
    tabelle_->verticalHeader()->hide();
    tabelle_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    tabelle_->setSelectionBehavior(QAbstractItemView::SelectRows);
    tabelle_->setTabKeyNavigation(false);

    box_Folge_->setObjectName(u"box_Folge"_s);
    box_Folge_->addItems({texte(Meldung::TagZuerst), texte(Meldung::MonatZuerst)});
    QStringList alle;
    for (const AltesDatum& d : daten_) {
        alle << d.text;
    }
    const auto sagt = tagesfolge(alle);
    const bool monat = sagt == Tagesfolge::MonatZuerst;
    box_Folge_->setCurrentIndex(monat ? 1 : 0);
    const auto mehrdeutig = std::find_if(
        alle.begin(), alle.end(), [this](const QString& d) { return istMehrdeutig(d, heute_); });
    auto* frage = new QWidget;
    auto* zeile = new QHBoxLayout(frage);
    zeile->setContentsMargins(0, 0, 0, 0);
    auto* name = new QLabel;
    name->setBuddy(box_Folge_);
    zeile->addWidget(name);
    zeile->addWidget(box_Folge_);
    zeile->addStretch(1);
    frage->setVisible(mehrdeutig != alle.end());
    if (mehrdeutig != alle.end()) {
        name->setText(texte(Meldung::DatumVorn).arg(*mehrdeutig));
    }

    auto* knöpfe = new QDialogButtonBox;
    bef_Umwandeln_->setObjectName(u"bef_Umwandeln"_s);
    knöpfe->addButton(bef_Umwandeln_, QDialogButtonBox::AcceptRole);
    auto* später = knöpfe->addButton(texte(Meldung::DatenSpäter), QDialogButtonBox::RejectRole);
    später->setObjectName(u"bef_Später"_s);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(tabelle_, 1);
    layout->addWidget(frage);
    layout->addWidget(knöpfe);
    connect(knöpfe, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(knöpfe, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(box_Folge_, &QComboBox::currentIndexChanged, this, [this] { zeige(); });
    constexpr QSize Größe(620, 420);
    resize(Größe);
    zeige();
}

Tagesfolge Datumswandlungsfenster::folge() const {
    return box_Folge_->currentIndex() == 1 ? Tagesfolge::MonatZuerst : Tagesfolge::TagZuerst;
}

void Datumswandlungsfenster::zeige() {
    tabelle_->setRowCount(static_cast<int>(daten_.size()));
    bool eines = false;
    for (int i = 0; i < tabelle_->rowCount(); ++i) {
        const AltesDatum& altes = daten_[static_cast<std::size_t>(i)];
        const auto datum = datumAusForm(altes.text, folge(), heute_);
        setze(*tabelle_, i, Nummer, altes.nummer);
        setze(*tabelle_, i, WieEsSteht, altes.text);
        setze(*tabelle_, i, Wird,
              datum ? vollesDatum(texte_, *datum) : texte_(Meldung::DatumBleibt));
        eines = eines || datum;
    }
    bef_Umwandeln_->setEnabled(eines);
}

} // namespace tarvel
