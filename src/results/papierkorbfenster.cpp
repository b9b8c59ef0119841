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

/// The entries, the difference of each found when it is looked at.
class Korbmodell : public QAbstractTableModel {
public:
    enum Spalte { Nummer, Züchter, Zeit, Anlass, Unterschied, Spaltenzahl };

    Korbmodell(const Papierkorb& korb, const Satzumgebung& umgebung, QObject* parent)
        : QAbstractTableModel(parent)
        , korb_(korb)
        , umgebung_(umgebung) {}

    void zeige(std::vector<Korbeintrag> einträge) {
        beginResetModel();
        einträge_ = std::move(einträge);
        unterschiede_.assign(einträge_.size(), {});
        endResetModel();
    }
    [[nodiscard]] const Korbeintrag& eintrag(int zeile) const {
        return einträge_.at(static_cast<std::size_t>(zeile));
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(einträge_.size());
    }
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : Spaltenzahl;
    }
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
            return {};
        }
        const Texte& t = umgebung_.texte;
        const QString titel[] = {t(Text::SpalteNummer), t(Text::Züchter), t(Meldung::KorbZeit),
                                 t(Meldung::KorbAnlass), t(Meldung::KorbUnterschied)};
        return titel[section];
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole && (role != Qt::ToolTipRole || index.column() != Unterschied)) {
            return {};
        }
        const Korbeintrag& e = eintrag(index.row());
        switch (index.column()) {
        case Nummer:
            return e.U_NR.trimmed().left(LängsteText);
        case Züchter:
            return e.Z_NAME.trimmed().left(LängsteText);
        case Zeit: {
            const QDateTime hier = e.zeit.toLocalTime();
            return e.zeit.isValid() ? vollesDatum(umgebung_.texte, hier.date()) + u' ' +
                                          hier.time().toString(u"HH:mm"_s)
                                    : QString();
        }
        case Anlass:
            return anlasstext(umgebung_.texte, e.anlass);
        default:
            return unterschied(index.row());
        }
    }

private:
    static constexpr qsizetype LängsteText = 100;

    [[nodiscard]] QString unterschied(int zeile) const {
        auto& bekannt = unterschiede_.at(static_cast<std::size_t>(zeile));
        if (!bekannt) {
            bekannt = findeUnterschied(eintrag(zeile).nr);
        }
        return *bekannt;
    }
    [[nodiscard]] QString findeUnterschied(qint64 nr) const {
        try {
            const Papierkorb::Vergleich v = korb_.vergleiche(nr);
            if (!v.heute) {
                return umgebung_.texte(Meldung::KorbFehltHeute);
            }
            QStringList namen;
            for (const Vergleichszeile& z : vergleicheSätze(v.damals, *v.heute, umgebung_)) {
                namen << z.name;
            }
            return namen.isEmpty() ? umgebung_.texte(Meldung::KorbWieHeute) : namen.join(u", "_s);
        } catch (const Datenbankfehler&) {
            return {}; // whoever restores it is told
        }
    }

    const Papierkorb& korb_;
    const Satzumgebung& umgebung_;
    std::vector<Korbeintrag> einträge_;
    mutable std::vector<std::optional<QString>> unterschiede_;
};

QTableWidget* vergleichstabelle(const QString& name, const QString& links, const QString& rechts) {
    auto* tabelle = new QTableWidget(0, 3);
    tabelle->setObjectName(name);
    tabelle->setHorizontalHeaderLabels({QString(), links, rechts});
    tabelle->setAccessibleName(links + u" / "_s + rechts);
    tabelle->verticalHeader()->hide();
    tabelle->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tabelle->setTabKeyNavigation(false);
    tabelle->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    return tabelle;
}

void zeigeVergleich(QTableWidget& tabelle, const std::vector<Vergleichszeile>& zeilen) {
    tabelle.setRowCount(static_cast<int>(zeilen.size()));
    for (int i = 0; i < tabelle.rowCount(); ++i) {
        const Vergleichszeile& zeile = zeilen.at(static_cast<std::size_t>(i));
        int spalte = 0;
        for (const QString& text : {zeile.name, zeile.links, zeile.rechts}) {
            constexpr qsizetype Gezeigt = 1000;
            auto* zelle = new QTableWidgetItem(text.left(Gezeigt));
            zelle->setToolTip(zelle->text().toHtmlEscaped());
            tabelle.setItem(i, spalte++, zelle);
        }
    }
}

Papierkorbfenster::Papierkorbfenster(const QString& DatenbankPfad, Satzumgebung umgebung,
                                     Dialoge& dialoge, QWidget* parent)
    : QDialog(parent)
    , korb_(DatenbankPfad)
    , umgebung_(std::move(umgebung))
    , dialoge_(dialoge)
    , modell_(new Korbmodell(korb_, umgebung_, this))
    , grid_(new QTableView)
    , leer_(new QLabel)
    , bef_Wiederherstellen_(new QPushButton)
    , bef_Leeren_(new QPushButton) {
    const Texte& t = umgebung_.texte;
    setObjectName(u"Papierkorb"_s);
    setWindowTitle(t(Meldung::MenüPapierkorb));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    vergleich_ =
        vergleichstabelle(u"Korbvergleich"_s, t(Meldung::KorbDamals), t(Meldung::KorbHeute));
    auto* hinweis = new QLabel(
        t(Meldung::KorbHinweis)
            .arg(QString::number(Papierkorb::Höchstens), QString::number(Papierkorb::Tage)));
    hinweis->setWordWrap(true);
    leer_->setObjectName(u"lab_Leer"_s);
    leer_->setText(t(Meldung::KorbLeer));
    grid_->setObjectName(u"Korbgitter"_s);
    grid_->setAccessibleName(windowTitle());
    grid_->setModel(modell_);
    grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
    grid_->setTabKeyNavigation(false);
    grid_->verticalHeader()->hide();
    grid_->horizontalHeader()->setStretchLastSection(true);
    bef_Wiederherstellen_->setObjectName(u"bef_Wiederherstellen"_s);
    bef_Wiederherstellen_->setText(t(Meldung::KorbWiederherstellen));
    bef_Leeren_->setObjectName(u"bef_Leeren"_s);
    bef_Leeren_->setText(t(Meldung::KorbLeeren));
    auto* bef_Abbrechen = new QPushButton(t(Text::Schließen));
    bef_Abbrechen->setObjectName(u"bef_Abbrechen"_s);
    for (QPushButton* knopf : {bef_Wiederherstellen_, bef_Leeren_, bef_Abbrechen}) {
        knopf->setAutoDefault(false); // Enter in the list means none of them
    }
    connect(bef_Wiederherstellen_, &QPushButton::clicked, this, [this] { stelleWiederHer(); });
    connect(bef_Leeren_, &QPushButton::clicked, this, [this] { leere(); });
    connect(bef_Abbrechen, &QPushButton::clicked, this, [this] { reject(); });
    connect(grid_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { zeigeGewählte(); });

    auto* teiler = new QSplitter(Qt::Vertical);
    teiler->addWidget(grid_);
    teiler->addWidget(vergleich_);
    teiler->setStretchFactor(0, 3);
    teiler->setStretchFactor(1, 2);
    teiler->setChildrenCollapsible(false);
    auto* knöpfe = new QHBoxLayout;
    knöpfe->addWidget(bef_Wiederherstellen_);
    knöpfe->addWidget(bef_Leeren_);
    knöpfe->addStretch();
    knöpfe->addWidget(bef_Abbrechen);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(hinweis);
    layout->addWidget(leer_);
    layout->addWidget(teiler, 1);
    layout->addLayout(knöpfe);
    const QFontMetrics schrift = fontMetrics();
    constexpr int Breite = 130;
    constexpr int Höhe = 34;
    resize(QSize(Breite * schrift.averageCharWidth(), Höhe * schrift.lineSpacing())
               .boundedTo(screen()->availableSize()));
    modell_->zeige(korb_.einträge());
    constexpr int Spaltenbreiten[] = {14, 26, 20, 28};
    for (int i = 0; i < Korbmodell::Unterschied; ++i) {
        grid_->setColumnWidth(i, Spaltenbreiten[i] * schrift.averageCharWidth());
    }
    if (modell_->rowCount() > 0) {
        grid_->selectRow(0);
    }
    zeigeGewählte();
}

Papierkorbfenster::~Papierkorbfenster() = default;

Sprache Papierkorbfenster::sprache() const {
    return umgebung_.texte.sprache().value_or(Sprache::Deutsch);
}

std::vector<qint64> Papierkorbfenster::gewählte() const {
    std::vector<qint64> nummern;
    for (const QModelIndex& index : grid_->selectionModel()->selectedRows()) {
        nummern.push_back(modell_->eintrag(index.row()).nr);
    }
    std::sort(nummern.begin(), nummern.end()); // in the order that they were deleted
    return nummern;
}

void Papierkorbfenster::zeigeGewählte() {
    const std::vector<qint64> nummern = gewählte();
    leer_->setVisible(modell_->rowCount() == 0);
    bef_Wiederherstellen_->setEnabled(!nummern.empty());
    bef_Leeren_->setEnabled(modell_->rowCount() > 0);
    std::vector<Vergleichszeile> zeilen;
    if (nummern.size() == 1) {
        try {
            const Papierkorb::Vergleich v = korb_.vergleiche(nummern.front());
            zeilen = vergleicheSätze(v.damals, v.heute.value_or(Ergebnissatz()), umgebung_);
        } catch (const Datenbankfehler&) {
            zeilen.clear(); // whoever restores it is told
        }
    }
    zeigeVergleich(*vergleich_, zeilen);
}

void Papierkorbfenster::melde(const Datenbankfehler& fehler) {
    dialoge_.meldung(windowTitle(), meldungstext(umgebung_.texte, fehler), Meldungsart::Ausruf);
}

void Papierkorbfenster::liesNeu() {
    try {
        modell_->zeige(korb_.einträge());
    } catch (const Datenbankfehler& fehler) {
        modell_->zeige({});
        melde(fehler);
    }
    if (modell_->rowCount() > 0) {
        grid_->selectRow(0);
    }
    zeigeGewählte();
}

void Papierkorbfenster::stelleWiederHer() {
    const Texte& t = umgebung_.texte;
    const std::vector<qint64> nummern = gewählte();
    auto weise = Papierkorb::BeiVergebener::Auslassen;
    try {
        if (const QStringList vergebene = korb_.vergebene(nummern); !vergebene.isEmpty()) {
            constexpr qsizetype Genannte = 12;
            QString genannt = vergebene.first(std::min(Genannte, vergebene.size())).join(u", "_s);
            genannt += vergebene.size() > Genannte ? u" …"_s : QString();
            const auto wahl = dialoge_.auswahl(
                windowTitle(), t(Meldung::KorbNummerVorhanden).arg(genannt),
                {t(Meldung::KorbErsetzen), t(Meldung::UnterNeuerNummer), t(Meldung::Auslassen)}, 1);
            if (!wahl) {
                return;
            }
            weise = static_cast<Papierkorb::BeiVergebener>(*wahl);
        }
        const Papierkorb::Bericht bericht = korb_.stelleWiederHer(nummern, weise, sprache());
        if (!bericht.rücknahme.leer()) {
            rücknahmen_.push_back(bericht.rücknahme);
        }
        ersetzte_ << bericht.ersetzt;
        QStringList zeilen;
        for (const auto& [alt, neu] : bericht.umbenannt) {
            zeilen << t(Meldung::JetztUnterNummer).arg(alt, neu);
        }
        const QString fertig = t(Meldung::KorbFertig).arg(bericht.zahl);
        if (zeilen.isEmpty()) {
            dialoge_.meldung(windowTitle(), fertig, Meldungsart::Hinweis);
        } else {
            dialoge_.bericht(windowTitle(), fertig, zeilen);
        }
    } catch (const Datenbankfehler& fehler) {
        melde(fehler);
    }
    liesNeu();
}

void Papierkorbfenster::leere() {
    const Texte& t = umgebung_.texte;
    if (dialoge_.frage({.titel = windowTitle(),
                        .text = t(Meldung::KorbLeerenFrage).arg(modell_->rowCount()),
                        .art = Meldungsart::Ausruf,
                        .verwirft = true,
                        .ja = t(Meldung::KorbLeeren),
                        .nein = t(Text::Abbrechen)}) != Antwort::Ja) {
        return;
    }
    try {
        korb_.leere();
    } catch (const Datenbankfehler& fehler) {
        melde(fehler);
    }
    liesNeu();
}

} // namespace tarvel
