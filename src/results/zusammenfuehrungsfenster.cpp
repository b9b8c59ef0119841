#include "results/zusammenfuehrungsfenster.h"

#include "results/datenbankfehler.h"
#include "results/papierkorbfenster.h"
#include "results/satzvergleich.h"
#include "results/zeileneingabe.h"
#include "results/zeilenwahl.h"

#include <QAbstractTableModel>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QTableView>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

Meldung standwort(Zeilenstand stand) {
    switch (stand) {
    case Zeilenstand::Gleich:
        return Meldung::StandGleich;
    case Zeilenstand::Verschieden:
        return Meldung::StandVerschieden;
    case Zeilenstand::Neu:
        break;
    }
    return Meldung::StandNeu;
}

} // namespace

/// The rows of the other collection.
class Gegenübermodell : public QAbstractTableModel {
public:
    enum Spalte { Nummer, Züchter, Datum, Stand, Beschluss, Spaltenzahl };

    Gegenübermodell(Zusammenführung& zusammenführung, const Texte& texte, QObject* parent)
        : QAbstractTableModel(parent)
        , texte_(texte) {
        for (Gegenüber& fall : zusammenführung.fälle()) {
            fälle_.push_back(&fall);
            züchter_ << sortierschlüssel(fall.züchter);
        }
    }

    [[nodiscard]] Gegenüber& fall(int zeile) const {
        return *fälle_.at(static_cast<std::size_t>(zeile));
    }
    [[nodiscard]] const std::vector<Gegenüber*>& fälle() const { return fälle_; }
    /// Whether the row at @p links stands before the other one in the order of a column.
    [[nodiscard]] bool vor(int links, int rechts, int spalte) const {
        const Gegenüber& a = fall(links);
        const Gegenüber& b = fall(rechts);
        const auto wörter = [&](const QString& eins, const QString& zwei) {
            return eins.compare(zwei, Qt::CaseInsensitive) < 0;
        };
        switch (spalte) {
        case Nummer:
            return wörter(a.nummer, b.nummer);
        case Züchter:
            return züchter_.at(links) < züchter_.at(rechts);
        case Datum:
            return a.datum < b.datum;
        case Stand:
            return a.stand < b.stand;
        default:
            return wörter(beschluss(a), beschluss(b));
        }
    }
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
            return texte_(standwort(f.stand));
        default:
            return beschluss(f);
        }
    }

private:
    [[nodiscard]] QString beschluss(const Gegenüber& fall) const {
        return fall.stand == Zeilenstand::Gleich ? QString() : texte_(wort(fall));
    }
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
    QStringList züchter_; ///< what they are sorted by
};

/// Those of the rows that are seen, in the order of a column.
class Gegenüberauswahl : public QSortFilterProxyModel {
public:
    explicit Gegenüberauswahl(Gegenübermodell& modell, QObject* parent)
        : QSortFilterProxyModel(parent)
        , modell_(modell) {
        setSourceModel(&modell);
        // A decision must not move the row that it was made for.
        setDynamicSortFilter(false);
    }
    void zeige(Zeilenstand stand, bool zeigen) {
        zeigt_.at(static_cast<std::size_t>(stand)) = zeigen;
        invalidateFilter();
    }

protected:
    [[nodiscard]] bool filterAcceptsRow(int zeile, const QModelIndex& /*eltern*/) const override {
        return zeigt_.at(static_cast<std::size_t>(modell_.fall(zeile).stand));
    }
    [[nodiscard]] bool lessThan(const QModelIndex& links,
                                const QModelIndex& rechts) const override {
        return modell_.vor(links.row(), rechts.row(), links.column());
    }

private:
    const Gegenübermodell& modell_;
    std::array<bool, 3> zeigt_ = {true, false, true}; ///< in the order of Zeilenstand
};

Zusammenführungsfenster::Zusammenführungsfenster(Zusammenführung& zusammenführung,
                                                 const QString& titel, const QString& quelle,
                                                 const Satzumgebung& umgebung, QWidget* parent)
    : QDialog(parent)
    , zusammenführung_(zusammenführung)
    , umgebung_(umgebung)
    , modell_(new Gegenübermodell(zusammenführung, umgebung.texte, this))
    , auswahl_(new Gegenüberauswahl(*modell_, this))
    , vorhaben_(new QLabel)
    , grid_(new QTableView)
    , bef_Übernehmen_(new QPushButton) {
    const Texte& t = umgebung_.texte;
    setObjectName(u"Zusammenführung"_s);
    setWindowTitle(titel + u" ["_s + quelle + u']');
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    vorhaben_->setObjectName(u"lab_Vorhaben"_s);
    vergleich_ = vergleichstabelle(u"Gegenüber"_s, t(Meldung::MeineDatei), quelle);
    grid_->setObjectName(u"Vorschaugitter"_s);
    grid_->setAccessibleName(windowTitle());
    grid_->setModel(auswahl_);
    grid_->setSortingEnabled(true);
    grid_->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder); // as they lie there
    grid_->horizontalHeader()->setSortIndicatorClearable(true);
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid_->setTabKeyNavigation(false);
    grid_->verticalHeader()->hide();
    grid_->horizontalHeader()->setStretchLastSection(true);
    const QFontMetrics schrift = fontMetrics();
    constexpr int Spaltenbreiten[] = {16, 34, 16, 18};
    for (int i = 0; i < Gegenübermodell::Beschluss; ++i) {
        grid_->setColumnWidth(i, Spaltenbreiten[i] * schrift.averageCharWidth());
    }

    auto* sicht = new QHBoxLayout;
    sicht->addWidget(new QLabel(t(Meldung::ZeilenZeigen)));
    for (const Zeilenstand stand :
         {Zeilenstand::Neu, Zeilenstand::Verschieden, Zeilenstand::Gleich}) {
        auto* haken =
            new QCheckBox(t(standwort(stand)) + u" (%1)"_s.arg(zusammenführung_.anzahl(stand)));
        haken->setObjectName(u"chk_Stand_%1"_s.arg(static_cast<int>(stand)));
        haken->setChecked(stand != Zeilenstand::Gleich);
        connect(haken, &QCheckBox::toggled, this,
                [this, stand](bool zeigen) { auswahl_->zeige(stand, zeigen); });
        sicht->addWidget(haken);
    }
    sicht->addStretch();

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
    connect(bef_Übernehmen_, &QPushButton::clicked, this, [this] { accept(); });
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
    fuß->addWidget(vorhaben_);
    fuß->addStretch();
    fuß->addWidget(bef_Übernehmen_);
    fuß->addWidget(bef_Abbrechen);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(sicht);
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
    for (Gegenüber* gewählter : gewählte()) {
        Gegenüber& fall = *gewählter;
        if (fall.stand == Zeilenstand::Gleich) {
            continue;
        }
        // A new row has its number to itself.
        fall.entscheidung = fall.stand == Zeilenstand::Neu && entscheidung == Entscheidung::Beide
                                ? Entscheidung::Nehmen
                                : entscheidung;
    }
    modell_->entschieden();
    zeigeStand();
}

/// Rows that are not seen come in, too, so their number is told.
void Zusammenführungsfenster::zeigeStand() {
    const auto& fälle = modell_->fälle();
    const auto kommt = [](const Gegenüber* fall) {
        return fall->stand != Zeilenstand::Gleich && fall->entscheidung != Entscheidung::Lassen;
    };
    const auto alle = std::count_if(fälle.begin(), fälle.end(), kommt);
    const auto ersetzte = std::count_if(fälle.begin(), fälle.end(), [&](const Gegenüber* fall) {
        return kommt(fall) && fall->unsere && fall->entscheidung == Entscheidung::Nehmen;
    });
    vorhaben_->setText(umgebung_.texte(Meldung::VergleichVorhaben)
                           .arg(QString::number(alle), QString::number(ersetzte)));
    bef_Übernehmen_->setEnabled(alle > 0);
}

std::vector<Gegenüber*> Zusammenführungsfenster::gewählte() const {
    std::vector<Gegenüber*> alle;
    for (const QModelIndex& index : grid_->selectionModel()->selectedRows()) {
        alle.push_back(&modell_->fall(auswahl_->mapToSource(index).row()));
    }
    return alle;
}

void Zusammenführungsfenster::zeigeGewählte() {
    const std::vector<Gegenüber*> gewählt = gewählte();
    const bool zuEntscheiden =
        std::any_of(gewählt.begin(), gewählt.end(),
                    [](const Gegenüber* fall) { return fall->stand != Zeilenstand::Gleich; });
    for (QPushButton* knopf : entscheidungen_) {
        knopf->setEnabled(zuEntscheiden);
    }
    std::vector<Vergleichszeile> zeilen;
    if (gewählt.size() == 1) {
        try {
            const auto [andere, unsere] = zusammenführung_.lade(*gewählt.front());
            zeilen = vergleicheSätze(unsere.value_or(Ergebnissatz()), andere, umgebung_);
        } catch (const Datenbankfehler&) {
            zeilen.clear(); // whoever takes it over is told
        }
    }
    zeigeVergleich(*vergleich_, zeilen);
}

} // namespace tarvel
