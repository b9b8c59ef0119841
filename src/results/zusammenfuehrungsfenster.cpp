#include "results/zusammenfuehrungsfenster.h"

#include "results/datenbankfehler.h"
#include "results/papierkorb.h"
#include "results/papierkorbfenster.h"
#include "results/satzvergleich.h"
#include "results/zeileneingabe.h"

#include <QAbstractTableModel>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QTableView>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

/// The rows that are not the same on both sides.
class Gegenübermodell : public QAbstractTableModel {
public:
    enum Spalte { Nummer, Züchter, Datum, Stand, Beschluss, Spaltenzahl };

    Gegenübermodell(Zusammenführung& zusammenführung, const Texte& texte, QObject* parent)
        : QAbstractTableModel(parent)
        , texte_(texte) {
        for (Gegenüber& fall : zusammenführung.fälle()) {
            if (fall.stand != Zeilenstand::Gleich) {
                fälle_.push_back(&fall);
            }
        }
    }

    [[nodiscard]] Gegenüber& fall(int zeile) const {
        return *fälle_.at(static_cast<std::size_t>(zeile));
    }
    [[nodiscard]] const std::vector<Gegenüber*>& fälle() const { return fälle_; }
    void entschieden() {
        Q_EMIT dataChanged(index(0, Beschluss), index(rowCount() - 1, Beschluss));
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(fälle_.size());
    }
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : Spaltenzahl;
    }
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
            return {};
        }
        const QString titel[] = {texte_(Text::SpalteNummer), texte_(Text::Züchter),
                                 texte_(Text::SpalteDatum), texte_(Meldung::StandSpalte),
                                 texte_(Meldung::EntscheidungSpalte)};
        return titel[section];
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole) {
            return {};
        }
        const Gegenüber& f = fall(index.row());
        constexpr qsizetype LängsteText = 100;
        switch (index.column()) {
        case Nummer:
            return f.nummer.left(LängsteText);
        case Züchter:
            return f.züchter.left(LängsteText);
        case Datum:
            return kurzesDatum(texte_, f.datum);
        case Stand:
            return texte_(f.stand == Zeilenstand::Neu ? Meldung::StandNeu
                                                      : Meldung::StandVerschieden);
        default:
            return texte_(wort(f));
        }
    }

private:
    static Meldung wort(const Gegenüber& fall) {
        const bool neu = fall.stand == Zeilenstand::Neu;
        switch (fall.entscheidung) {
        case Entscheidung::Nehmen:
            return neu ? Meldung::EntscheidungNehmen : Meldung::EntscheidungAndere;
        case Entscheidung::Beide:
            return Meldung::EntscheidungBeide;
        case Entscheidung::Lassen:
            break;
        }
        return neu ? Meldung::EntscheidungLassen : Meldung::EntscheidungMeine;
    }

    const Texte& texte_;
    std::vector<Gegenüber*> fälle_;
};

Zusammenführungsfenster::Zusammenführungsfenster(Zusammenführung& zusammenführung,
                                                 const QString& titel, const QString& quelle,
                                                 const Satzumgebung& umgebung, Dialoge& dialoge,
                                                 QWidget* parent)
    : QDialog(parent)
    , zusammenführung_(zusammenführung)
    , umgebung_(umgebung)
    , dialoge_(dialoge)
    , modell_(new Gegenübermodell(zusammenführung, umgebung.texte, this))
    , grid_(new QTableView)
    , bef_Übernehmen_(new QPushButton) {
    const Texte& t = umgebung_.texte;
    setObjectName(u"Zusammenführung"_s);
    setWindowTitle(titel + u" ["_s + quelle + u']');
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    const auto zahl = [&](Zeilenstand stand) {
        return QString::number(zusammenführung_.anzahl(stand));
    };
    auto* summe = new QLabel(t(Meldung::VergleichSumme)
                                 .arg(zahl(Zeilenstand::Neu), zahl(Zeilenstand::Verschieden),
                                      zahl(Zeilenstand::Gleich)));
    summe->setObjectName(u"lab_Summe"_s);
    vergleich_ = vergleichstabelle(u"Gegenüber"_s, t(Meldung::MeineDatei), quelle);
    grid_->setObjectName(u"Vorschaugitter"_s);
    grid_->setAccessibleName(windowTitle());
    grid_->setModel(modell_);
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid_->setTabKeyNavigation(false);
    grid_->verticalHeader()->hide();
    grid_->horizontalHeader()->setStretchLastSection(true);
    const QFontMetrics schrift = fontMetrics();
    constexpr int Spaltenbreiten[] = {16, 34, 16, 18};
    for (int i = 0; i < Gegenübermodell::Beschluss; ++i) {
        grid_->setColumnWidth(i, Spaltenbreiten[i] * schrift.averageCharWidth());
    }

    auto* wahl = new QHBoxLayout;
    wahl->addWidget(new QLabel(t(Meldung::FürGewählte)));
    const std::pair<Meldung, QString> worte[] = {{Meldung::EntscheidungLassen, u"bef_Lassen"_s},
                                                 {Meldung::EntscheidungNehmen, u"bef_Nehmen"_s},
                                                 {Meldung::EntscheidungBeide, u"bef_Beide"_s}};
    for (const auto& [wort, name] : worte) {
        auto* knopf = new QPushButton(t(wort));
        knopf->setObjectName(name);
        knopf->setAutoDefault(false);
        const auto entscheidung = static_cast<Entscheidung>(entscheidungen_.size());
        connect(knopf, &QPushButton::clicked, this,
                [this, entscheidung] { entscheide(entscheidung); });
        wahl->addWidget(knopf);
        entscheidungen_.push_back(knopf);
    }
    entscheidungen_.back()->setToolTip(t(Meldung::UnterNeuerNummer));
    wahl->addStretch();

    bef_Übernehmen_->setObjectName(u"bef_Übernehmen"_s);
    bef_Übernehmen_->setText(t(Text::Übernehmen));
    auto* bef_Abbrechen = new QPushButton(t(Text::Abbrechen));
    bef_Abbrechen->setObjectName(u"bef_Abbrechen"_s);
    bef_Übernehmen_->setAutoDefault(false);
    bef_Abbrechen->setAutoDefault(false);
    connect(bef_Übernehmen_, &QPushButton::clicked, this, [this] { übernimm(); });
    connect(bef_Abbrechen, &QPushButton::clicked, this, [this] { reject(); });
    connect(grid_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { zeigeGewählte(); });

    auto* oben = new QWidget;
    auto* obenLayout = new QVBoxLayout(oben);
    obenLayout->setContentsMargins(0, 0, 0, 0);
    obenLayout->addWidget(grid_, 1);
    obenLayout->addLayout(wahl);
    auto* teiler = new QSplitter(Qt::Vertical);
    teiler->addWidget(oben);
    teiler->addWidget(vergleich_);
    teiler->setStretchFactor(0, 3);
    teiler->setStretchFactor(1, 2);
    teiler->setChildrenCollapsible(false);
    auto* fuß = new QHBoxLayout;
    fuß->addStretch();
    fuß->addWidget(bef_Übernehmen_);
    fuß->addWidget(bef_Abbrechen);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(summe);
    layout->addWidget(teiler, 1);
    layout->addLayout(fuß);
    constexpr int Breite = 120;
    constexpr int Höhe = 34;
    resize(QSize(Breite * schrift.averageCharWidth(), Höhe * schrift.lineSpacing())
               .boundedTo(screen()->availableSize()));
    grid_->selectRow(0);
    zeigeGewählte();
    zeigeStand();
}

void Zusammenführungsfenster::entscheide(Entscheidung entscheidung) {
    for (const QModelIndex& index : grid_->selectionModel()->selectedRows()) {
        Gegenüber& fall = modell_->fall(index.row());
        // A new row has its number to itself.
        fall.entscheidung = fall.stand == Zeilenstand::Neu && entscheidung == Entscheidung::Beide
                                ? Entscheidung::Nehmen
                                : entscheidung;
    }
    modell_->entschieden();
    zeigeStand();
}

void Zusammenführungsfenster::zeigeStand() {
    const auto& fälle = modell_->fälle();
    bef_Übernehmen_->setEnabled(std::any_of(fälle.begin(), fälle.end(), [](const Gegenüber* fall) {
        return fall->entscheidung != Entscheidung::Lassen;
    }));
}

void Zusammenführungsfenster::zeigeGewählte() {
    const QModelIndexList gewählt = grid_->selectionModel()->selectedRows();
    for (QPushButton* knopf : entscheidungen_) {
        knopf->setEnabled(!gewählt.isEmpty());
    }
    std::vector<Vergleichszeile> zeilen;
    if (gewählt.size() == 1) {
        try {
            const auto [andere, unsere] =
                zusammenführung_.lade(modell_->fall(gewählt.front().row()));
            zeilen = vergleicheSätze(unsere.value_or(Ergebnissatz()), andere, umgebung_);
        } catch (const Datenbankfehler&) {
            zeilen.clear(); // whoever takes it over is told
        }
    }
    zeigeVergleich(*vergleich_, zeilen);
}

void Zusammenführungsfenster::übernimm() {
    const Texte& t = umgebung_.texte;
    const auto& fälle = modell_->fälle();
    const auto ersetzte = std::count_if(fälle.begin(), fälle.end(), [](const Gegenüber* fall) {
        return fall->unsere && fall->entscheidung == Entscheidung::Nehmen;
    });
    if (ersetzte > Papierkorb::Höchstens &&
        dialoge_.frage(
            {.titel = windowTitle(),
             .text = t(Meldung::ErsetztMehrAlsKorb)
                         .arg(QString::number(Papierkorb::Höchstens), QString::number(ersetzte)),
             .art = Meldungsart::Ausruf,
             .verwirft = true,
             .ja = t(Meldung::Fortfahren),
             .nein = t(Text::Abbrechen)}) != Antwort::Ja) {
        return;
    }
    accept();
}

} // namespace tarvel
