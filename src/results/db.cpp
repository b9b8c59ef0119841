#include "results/db.h"

#include "platform/kuerzel.h"
#include "results/ergebnisgitter.h"
#include "results/ergebnismenues.h"

#include <QAction>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// Widths of the columns in 1/1440 inch.
const QList<int> Spaltenbreiten = {1050, 1500, 1800, 1800, 900, 800, 800,  1500,
                                   900,  1200, 700,  700,  700, 700, 2000, 1000};

} // namespace

DB::DB(DbUmgebung umgebung, QWidget* parent)
    : QDialog(parent)
    , umgebung_(std::move(umgebung))
    , modell_(umgebung_.texte)
    , menüs_(new Ergebnismenüs(umgebung_.texte))
    , grid_(new Ergebnisgitter(umgebung_.texte))
    , filter_(new Filterzeile(umgebung_.texte))
    , lab_Anzahl_(new QLabel)
    , bef_Öffnen_(new QPushButton(umgebung_.texte(Text::MenüÖffnen)))
    , bef_Daten_(new QPushButton(umgebung_.texte(Meldung::AlteDatenBefehl))) {
    setObjectName(u"DB"_s);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    modell_.setObjectName(u"Data1"_s);
    modell_.setzeFormat(umgebung_.format);
    modell_.vorÄnderung(Grid_BeforeUpdate);
    modell_.vorDatum([this](const QDate& datum) {
        const Texte& t = umgebung_.texte;
        return !umgebung_.heute.isValid() || !datum.isValid() || datum <= umgebung_.heute ||
               umgebung_.dialoge.frage(
                   {.titel = t(Text::SpalteDatum),
                    .text = t(Meldung::DatumInZukunft).arg(vollesDatum(t, datum)),
                    .verwirft = true}) == Antwort::Ja;
    });
    modell_.vorTierwechsel([this](const QString& nummer, const QString& wort) {
        return prüfeTierwechsel(nummer, wort);
    });
    // A message must not be waited for within painting, nor while an editor still has its text.
    modell_.beiFehler([this](int DataErr, const QString& text) {
        grid_->lehneAb();
        if (!meldungen_.empty() && meldungen_.back() == std::pair(DataErr, text)) {
            return; // leaving a cell tries it twice
        }
        meldungen_.emplace_back(DataErr, text);
        QTimer::singleShot(0, this, [this] { zeigeMeldungen(); });
    });
    // Our own changes are none to be noticed.
    connect(&modell_, &QAbstractItemModel::dataChanged, this, [this] {
        stand_ = dateistände();
        filter_->veralte();
    });
    baueFenster();
    baueMenüs();
    LadeTabelle();
    stelleFensterHer();
    DB_Open();
    grid_->setFocus();
    if (umgebung_.nachsehen.count() > 0) {
        auto* uhr = new QTimer(this);
        connect(uhr, &QTimer::timeout, this, [this] { siehNach(); });
        uhr->start(umgebung_.nachsehen);
    }
}

void DB::baueFenster() {
    const Texte& texte = umgebung_.texte;
    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(menüs_);
    auto* hinweis = new QLabel(texte(Text::HinweisUntersuchungÖffnen));
    hinweis->setObjectName(u"lab_Hinweis"_s);
    hinweis->setWordWrap(true);
    layout->addWidget(hinweis);
    layout->addLayout(baueSuche());
    layout->addWidget(filter_);
    filter_->beiListen([this] { return filterlisten(); });
    filter_->beiWahl([this] { engeEin(); });

    grid_->setObjectName(u"Grid"_s);
    grid_->setAccessibleName(texte(Text::Ergebnisse));
    grid_->setModel(&modell_);
    if (umgebung_.rassen.isEmpty()) {
        umgebung_.rassen = {u"Carnica"_s, u"Mellifera"_s, u"Ligustica"_s, u"Carpatica"_s};
    }
    grid_->setzeRassen(umgebung_.rassen);
    grid_->beiÖffnen([this] { ÖffnenStart(); });
    grid_->beiEnde([this] { Auf_Tabellenende(); });
    grid_->beiSuche([this](const QString& text) { sucheMit(text); });
    const auto gewählt = [this] {
        vergissWahl();
        zeigeStand();
    };
    connect(grid_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, gewählt);
    connect(grid_, &QAbstractItemView::clicked, this, gewählt); // also of the row that is marked
    connect(grid_->selectionModel(), &QItemSelectionModel::selectionChanged, this, gewählt);
    QHeaderView* kopf = grid_->horizontalHeader();
    connect(kopf, &QHeaderView::sortIndicatorChanged, this,
            [this](int spalte, Qt::SortOrder ordnung) {
                sortiere(spalte, ordnung == Qt::DescendingOrder);
            });
    kopf->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(kopf, &QWidget::customContextMenuRequested, this, [this, kopf](const QPoint& ort) {
        menüs_->menü(Ergebnismenü::Spalten)->popup(kopf->mapToGlobal(ort));
    });
    connect(&modell_, &QAbstractItemModel::dataChanged, this, [this] { zeigeStand(); });
    layout->addWidget(grid_, 1);
    layout->addLayout(baueFuß());
    vergibBuchstaben();
}

/// Field and buttons get letters that no menu has.
void DB::vergibBuchstaben() {
    QStringList worte;
    for (const QAction* menü : menüs_->actions()) {
        worte << menü->text().remove(u'&');
    }
    const qsizetype erstes = worte.size();
    auto* lab_Suche = findChild<QLabel*>(u"lab_Suche"_s);
    worte << lab_Suche->text();
    QList<QPushButton*> knöpfe;
    for (const QString& name : {u"bef_AllesZeigen"_s, u"bef_Daten"_s, u"bef_Ändern"_s,
                                u"bef_Öffnen"_s, u"bef_Abbrechen"_s}) {
        knöpfe << findChild<QPushButton*>(name);
        worte << knöpfe.last()->text().remove(u'&');
    }
    worte = mitKürzelbuchstaben(worte);
    lab_Suche->setText(worte.at(erstes));
    for (qsizetype i = 0; i < knöpfe.size(); ++i) {
        knöpfe.at(i)->setText(worte.at(erstes + 1 + i));
    }
}

QLayout* DB::baueSuche() {
    const Texte& texte = umgebung_.texte;
    auto* zeile = new QHBoxLayout;
    txt_Suche_ = new QLineEdit;
    txt_Suche_->setObjectName(u"txt_Suche"_s);
    txt_Suche_->setPlaceholderText(texte(Meldung::SuchfeldInhalt));
    txt_Suche_->setToolTip(texte(Meldung::TippSuchen));
    txt_Suche_->setClearButtonEnabled(true);
    txt_Suche_->installEventFilter(this);
    auto* bef_Alles = new QPushButton(texte(Meldung::AllesZeigen));
    bef_Alles->setObjectName(u"bef_AllesZeigen"_s);
    bef_Alles->setToolTip(texte(Meldung::TippAllesZeigen));
    bef_Alles->setAutoDefault(false);
    connect(bef_Alles, &QPushButton::clicked, this, [this] {
        if (beendeEingabe()) {
            zeigeAlles();
        }
    });
    auto* wort = new QLabel(texte(Meldung::Suchen));
    wort->setObjectName(u"lab_Suche"_s);
    wort->setBuddy(txt_Suche_);
    txt_Suche_->setAccessibleName(texte(Meldung::Suchen));
    zeile->addWidget(wort);
    zeile->addWidget(txt_Suche_, 1);
    zeile->addWidget(bef_Alles);
    connect(txt_Suche_, &QLineEdit::textChanged, this, [this] { engeEin(); });
    return zeile;
}

QLayout* DB::baueFuß() {
    const Texte& texte = umgebung_.texte;
    lab_Anzahl_->setObjectName(u"lab_Anzahl"_s);
    bef_Öffnen_->setObjectName(u"bef_Öffnen"_s);
    bef_Öffnen_->setToolTip(texte(Meldung::TippUntersuchungÖffnen));
    auto* bef_Ändern = new QPushButton(texte(Meldung::ZelleÄndern));
    bef_Ändern->setObjectName(u"bef_Ändern"_s);
    bef_Ändern->setToolTip(texte(Meldung::TippZelleÄndern));
    auto* bef_Abbrechen = new QPushButton(texte(Text::Schließen));
    bef_Abbrechen->setObjectName(u"bef_Abbrechen"_s);
    // Enter belongs to the row, not to a button.
    for (QPushButton* knopf : {bef_Öffnen_, bef_Ändern, bef_Abbrechen}) {
        knopf->setAutoDefault(false);
    }
    connect(bef_Öffnen_, &QPushButton::clicked, this, [this] { ÖffnenStart(); });
    connect(bef_Ändern, &QPushButton::clicked, this, [this] { grid_->beginneEingabe(); });
    connect(bef_Abbrechen, &QPushButton::clicked, this, [this] { reject(); });
    auto* zeile = new QHBoxLayout;
    zeile->addWidget(lab_Anzahl_);
    zeile->addStretch();
    zeile->addWidget(bef_Ändern);
    bef_Daten_->setObjectName(u"bef_Daten"_s);
    bef_Daten_->setToolTip(texte(Meldung::AlteDatenText));
    bef_Daten_->setAutoDefault(false);
    bef_Daten_->hide();
    connect(bef_Daten_, &QPushButton::clicked, this,
            [this] { sammlungsbefehl(Ergebnismenüs::DatenUmwandeln); });
    zeile->addWidget(bef_Daten_);
    if (umgebung_.zuchtübersicht) {
        const Menüzeile zeileZucht{
            Meldung::Zuchtübersicht, Meldung::TippZuchtübersicht, {Qt::CTRL | Qt::Key_U}};
        auto* taste = new QAction(this);
        taste->setShortcuts(zeileZucht.kürzel);
        beschrifte(*taste, zeileZucht, texte);
        addAction(taste);
        auto* bef_Zucht = new QPushButton(texte(Meldung::Zuchtübersicht) + u" …"_s);
        bef_Zucht->setObjectName(u"bef_Zuchtübersicht"_s);
        bef_Zucht->setToolTip(taste->toolTip());
        connect(taste, &QAction::triggered, bef_Zucht, &QPushButton::click);
        bef_Zucht->setAutoDefault(false);
        connect(bef_Zucht, &QPushButton::clicked, this, [this] {
            if (beendeEingabe() && umgebung_.zuchtübersicht()) {
                accept();
            }
        });
        zeile->addWidget(bef_Zucht);
    }
    zeile->addWidget(bef_Öffnen_);
    zeile->addWidget(bef_Abbrechen);
    return zeile;
}

void DB::baueMenüs() {
    using enum Ergebnismenü;
    const auto befehl = [this](Ergebnismenü menü, const std::function<void(int)>& handlung) {
        menüs_->beiKlick(menü, [this, handlung](int i) {
            if (beendeEingabe()) { // reading rows anew would drop it
                handlung(i);
            }
            menüs_->zeige(wahl_, !spalte_, absteigend_);
            zeigeSpaltenhaken();
        });
    };
    befehl(Ergebnis, [this](int i) { wähle(static_cast<Ergebnisfilter>(i)); });
    befehl(Rasse, [this](int i) { wähle(static_cast<Rassenfilter>(i)); });
    befehl(Geschlecht, [this](int i) { wähle(static_cast<Geschlechtsfilter>(i)); });
    befehl(Sort, [this](int i) { sortierbefehl(i); });
    befehl(Filter, [this](int i) { filterbefehl(i); });
    befehl(Tabelle, [this](int i) { tabellenbefehl(i); });
    befehl(Zeilen, [this](int i) { zeilenbefehl(i); });
    befehl(Spalten, [this](int i) { spaltenbefehl(i); });
    auto* öffnen = new QAction(umgebung_.texte(Text::MenüÖffnen), grid_);
    connect(öffnen, &QAction::triggered, this, [this] { ÖffnenStart(); });
    grid_->addAction(öffnen);
    for (int i = Ergebnismenüs::ZelleÄndern; i <= Ergebnismenüs::FeldÄndern; ++i) {
        grid_->addAction(&menüs_->aktion(Zeilen, i));
    }
    grid_->addAction(&menüs_->aktion(Tabelle, Ergebnismenüs::Löschen));
    grid_->addAction(&menüs_->aktion(Tabelle, Ergebnismenüs::NeuBeurteilen));
}

void DB::LadeTabelle() {
    const Texte& texte = umgebung_.texte;
    QList<QStringList> worte;
    for (int spalte = 0; spalte < ErsteZusatzspalte; ++spalte) {
        const auto art = static_cast<Ergebnisspalte>(spalte);
        worte << spaltentitel(texte, art).split(u' ') + spaltenworte(texte, art);
    }
    worte[static_cast<int>(Ergebnisspalte::Rasse)] << u"Mellifera"_s << u"Carpatica"_s;
    worte[static_cast<int>(Ergebnisspalte::Datum)] << kurzesDatum(texte, QDate(2000, 12, 30));
    for (int spalte = ErsteZusatzspalte; spalte < modell_.columnCount(); ++spalte) {
        grid_->setColumnHidden(spalte, true);
    }
    grid_->richteSpaltenEin(Spaltenbreiten, worte);
    constexpr int Zeilen = 14;
    const int breite = grid_->horizontalHeader()->length() +
                       grid_->verticalScrollBar()->sizeHint().width() + 2 * grid_->frameWidth() +
                       layout()->contentsMargins().left() + layout()->contentsMargins().right();
    const int höhe = sizeHint().height() + Zeilen * grid_->verticalHeader()->defaultSectionSize();
    resize(QSize(breite, höhe).boundedTo(screen()->availableSize()));
}

void DB::DB_Open() {
    const Texte& texte = umgebung_.texte;
    const QString name = umgebung_.DatenbankPfad.isEmpty()
                             ? texte(Meldung::DateiUnbekannt)
                             : QFileInfo(umgebung_.DatenbankPfad).fileName();
    setWindowTitle(texte(Text::Ergebnisse) + u" ["_s + name + u']');
    wahl_ = Filterwahl();
    spalte_.reset();
    absteigend_ = false;
    modell_.rücknahmen().clear(); // those of another file
    {
        const QSignalBlocker still(txt_Suche_); // the rows are read once, below
        txt_Suche_->clear();
    }
    filter_->leere();
    gemerkt_.reset();
    grid_->clearSelection();
    zeigeZeilen();
    const auto danach = [this] {
        Auf_Tabellenende();
        zeigeOffene();
        zeigeAlteDaten();
    };
    if (modell_.vollständig()) {
        danach();
    } else {
        grid_->nachMalen(danach);
    }
}

void DB::zeigeZeilen() {
    merkeWahl();
    menüs_->zeige(wahl_, !spalte_, absteigend_);
    zeigeOrdnung();
    const Texte& texte = umgebung_.texte;
    QString leer = engtEin() ? texte(Meldung::KeineUntersuchungGefunden)
                             : texte(Meldung::NochKeineUntersuchung);
    if (const Dateistände jetzt = dateistände(); jetzt != stand_) { // or another file
        stand_ = jetzt;
        gesamt_.reset();
        flügelzahlen_.clear();
        filter_->veralte();
    }
    stelltWahl_ = true;
    if (umgebung_.DatenbankPfad.isEmpty()) {
        leer = texte(Meldung::DatenbankNichtGewählt);
        modell_.leere();
    } else {
        try {
            modell_.zeige(umgebung_.DatenbankPfad, zeilenwahl(), flügelsieb());
        } catch (const Datenbankfehler& fehler) {
            leer = meldungstext(texte, fehler);
            meldeFehler(fehler);
        }
    }
    grid_->setzeLeertext(leer);
    if (!stelleWahlHer()) {
        grid_->wähleZeile(0);
    }
    stelltWahl_ = false;
    if (modell_.vollständig()) {
        ladeRest();
    } else {
        grid_->nachMalen([this] { ladeRest(); });
        zeigeStand();
    }
}

/// The same rows as the file has them now, at about the same place.
void DB::zeigeNeu() {
    const int zeile = grid_->currentIndex().row();
    const int oben = grid_->verticalScrollBar()->value();
    gesamt_.reset();
    filter_->veralte();
    flügelzahlen_.clear();
    zeigeZeilen();
    ladeRest();
    stelltWahl_ = true;
    if (!stelleWahlHer()) {
        grid_->wähleZeile(std::min(zeile, modell_.rowCount() - 1));
    }
    stelltWahl_ = false;
    grid_->verticalScrollBar()->setValue(oben);
}

/// The first page is on the screen; now all rows get their place.
void DB::ladeRest() {
    if (!modell_.vollständig()) {
        modell_.fetchMore({});
        stelltWahl_ = true;
        (void)stelleWahlHer();
        stelltWahl_ = false;
    }
    if (modell_.vollständig() && engtEin() && !gesamt_) {
        try {
            gesamt_ = Ergebnistabelle(umgebung_.DatenbankPfad).anzahl();
        } catch (const Datenbankfehler&) {
            gesamt_.reset(); // whoever reads rows is told
        }
    }
    zeigeStand();
}

void DB::Auf_Tabellenende() {
    ladeRest();
    grid_->wähleZeile(modell_.rowCount() - 1);
}

void DB::zeigeStand() {
    const Texte& texte = umgebung_.texte;
    const QLocale raum = sprachraum(texte);
    const int zahl = modell_.rowCount();
    QString stand;
    if (!modell_.vollständig()) {
        stand = texte(Meldung::AnzahlUntersuchungenMehr).arg(raum.toString(zahl));
    } else if (engtEin() && gesamt_) {
        stand = texte(Meldung::AnzahlGefiltert).arg(raum.toString(zahl), raum.toString(*gesamt_));
    } else {
        stand = zahl == 1 ? texte(Meldung::EineUntersuchung)
                          : texte(Meldung::AnzahlUntersuchungen).arg(raum.toString(zahl));
    }
    const int gewählte = anzahlGewählte();
    const QString wieviele = raum.toString(gewählte);
    if (gewählte > 1) {
        stand += u" · "_s + texte(Meldung::AnzahlGewählt).arg(wieviele);
    }
    lab_Anzahl_->setText(stand);
    using enum Ergebnismenü;
    // What is done with one row does not say which of several it means.
    const bool eine = grid_->currentIndex().isValid() && gewählte < 2;
    bef_Öffnen_->setEnabled(eine);
    menüs_->aktion(Tabelle, Ergebnismenüs::Löschen).setEnabled(gewählte > 0);
    menüs_->aktion(Tabelle, Ergebnismenüs::Sichern).setEnabled(!umgebung_.DatenbankPfad.isEmpty());
    menüs_->aktion(Tabelle, Ergebnismenüs::Exportieren).setEnabled(zahl > 0);
    QAction& neu = menüs_->aktion(Tabelle, Ergebnismenüs::NeuBeurteilen);
    neu.setEnabled(gewählte > 0 && umgebung_.neubeurteilung);
    neu.setText(gewählte == 0   ? texte(Meldung::MenüNeuBeurteilen)
                : gewählte == 1 ? texte(Meldung::EineNeuBeurteilen)
                                : texte(Meldung::MehrereNeuBeurteilen).arg(wieviele));
    for (const int i : {Ergebnismenüs::ProtokolleEinPdf, Ergebnismenüs::ProtokolleEinzeln}) {
        menüs_->aktion(Zeilen, i).setEnabled(gewählte > 0 && umgebung_.protokolle);
    }
    for (const int i : {Ergebnismenüs::GewählteExportieren, Ergebnismenüs::FeldÄndern}) {
        menüs_->aktion(Zeilen, i).setEnabled(gewählte > 0);
    }
    menüs_->aktion(Zeilen, Ergebnismenüs::ZelleÄndern).setEnabled(zahl > 0);
    menüs_->aktion(Zeilen, Ergebnismenüs::Schreibweisen)
        .setEnabled(!umgebung_.DatenbankPfad.isEmpty());
    menüs_->aktion(Filter, Ergebnismenüs::AllesZeigen).setEnabled(engtEin());
    findChild<QPushButton*>(u"bef_AllesZeigen"_s)->setEnabled(engtEin());
    menüs_->aktion(Tabelle, Ergebnismenüs::Rückgängig).setEnabled(!modell_.rücknahmen().empty());
    for (const auto befehl : {Ergebnismenüs::Papierkorb, Ergebnismenüs::Zusammenführen,
                              Ergebnismenüs::AusSicherung, Ergebnismenüs::DatenUmwandeln}) {
        menüs_->aktion(Tabelle, befehl).setEnabled(!umgebung_.DatenbankPfad.isEmpty());
    }
}

template <typename Filter>
void DB::wähle(Filter filter) {
    wahl_.wähle(filter);
    zeigeZeilen();
}

void DB::ÖffnenStart() {
    const int zeile = grid_->currentIndex().row();
    if (!beendeEingabe() || zeile < 0) {
        return;
    }
    const QString nummer = modell_.nummer(zeile);
    if (!modell_.istVorhanden(zeile)) {
        meldeFehler({Datenbankgrund::UntersuchungFehlt, umgebung_.DatenbankPfad, nummer});
    } else if (nummer.trimmed().isEmpty()) {
        Grid_Error(Ergebnismodell::Einwand,
                   umgebung_.texte(Meldung::UntersuchungOhneNummer)
                       .arg(spaltentitel(umgebung_.texte, Ergebnisspalte::Nummer)));
    } else if (umgebung_.LadenDB(nummer)) {
        accept();
    }
}

void DB::reject() {
    if (beendeEingabe()) {
        QDialog::reject();
    }
}

/// Whether nothing speaks against going on: a cell that is being edited is written first. When it
/// is refused, the user is told.
bool DB::beendeEingabe() {
    grid_->beendeEingabe();
    return !zeigeMeldungen();
}

/// Whether something was refused and not settled.
bool DB::zeigeMeldungen() {
    bool offen = false;
    const bool keine = meldungen_.empty();
    // Messages and editors that close take the focus along, to whatever comes next.
    const bool imGitter =
        focusWidget() == nullptr || focusWidget() == grid_ || grid_->isAncestorOf(focusWidget());
    while (!meldungen_.empty()) {
        const auto [DataErr, text] = meldungen_.front();
        meldungen_.erase(meldungen_.begin());
        if (DataErr == Ergebnismodell::Fremdgeändert) {
            offen = !frageErsetzen(text) || offen;
        } else if (DataErr == Tierwechsel) {
            offen = !frageTierwechsel() || offen;
        } else {
            Grid_Error(DataErr, text);
            offen = true;
        }
    }
    if (offen && grid_->bearbeitet()) {
        grid_->kehreZurEingabe();
    } else if (!keine && !grid_->bearbeitet() && (imGitter || (offen && !txt_Suche_->hasFocus()))) {
        grid_->setFocus();
    }
    return offen;
}

bool DB::Grid_BeforeDelete() {
    const Texte& texte = umgebung_.texte;
    return umgebung_.dialoge.frage({.titel = texte(Text::ZeileLöschen),
                                    .text = texte(Text::FrageZeileLöschen),
                                    .verwirft = true}) == Antwort::Ja;
}

void DB::Grid_BeforeUpdate(Ergebnismodell::Zeile& zeile) {
    for (QString& text : zeile.werte) {
        text = text.trimmed();
    }
}

void DB::Grid_Error(int DataErr, const QString& text) {
    if (DataErr != Abgebrochen) {
        umgebung_.dialoge.meldung(umgebung_.texte(Text::Ergebnisse), text, Meldungsart::Ausruf);
    }
    if (DataErr == static_cast<int>(Datenbankgrund::UntersuchungFehlt)) {
        zeigeNeu();
    }
}

void DB::meldeFehler(const Datenbankfehler& fehler) {
    Grid_Error(static_cast<int>(fehler.grund()), meldungstext(umgebung_.texte, fehler));
}

void DB::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Escape:
        // First it takes back what was searched for or filtered, then it closes.
        if (txt_Suche_->hasFocus()) {
            txt_Suche_->clear();
            grid_->setFocus();
            return;
        }
        if (engtEin()) {
            zeigeAlles();
            return;
        }
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // Comes here also from the editor of a cell, so it must not press a button by itself.
        if (auto* knopf = qobject_cast<QPushButton*>(focusWidget())) {
            knopf->click();
        }
        return;
    default:
        break;
    }
    QDialog::keyPressEvent(event);
}

bool DB::eventFilter(QObject* watched, QEvent* event) {
    if (watched == txt_Suche_ && event->type() == QEvent::KeyPress) {
        const int taste = static_cast<QKeyEvent*>(event)->key();
        if (taste == Qt::Key_Return || taste == Qt::Key_Enter || taste == Qt::Key_Down) {
            grid_->setFocus();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace tarvel
