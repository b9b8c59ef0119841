#include "results/db.h"

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
const QList<int> Spaltenbreiten = {1050, 1500, 1800, 1800, 900, 800, 800, 1500, 900};

} // namespace

DB::DB(DbUmgebung umgebung, QWidget* parent)
    : QDialog(parent)
    , umgebung_(std::move(umgebung))
    , modell_(umgebung_.texte)
    , menüs_(new Ergebnismenüs(umgebung_.texte))
    , grid_(new Ergebnisgitter(umgebung_.texte))
    , lab_Anzahl_(new QLabel)
    , bef_Öffnen_(new QPushButton(umgebung_.texte(Text::MenüÖffnen))) {
    setObjectName(u"DB"_s);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    modell_.setObjectName(u"Data1"_s);
    modell_.vorÄnderung(Grid_BeforeUpdate);
    // A message must not be waited for within painting, nor while an editor still has its text.
    modell_.beiFehler([this](int DataErr, const QString& text) {
        meldungen_.emplace_back(DataErr, text);
        QTimer::singleShot(0, this, [this] { zeigeMeldungen(); });
    });
    baueFenster();
    baueMenüs();
    LadeTabelle();
    DB_Open();
    grid_->setFocus();
}

void DB::baueFenster() {
    const Texte& texte = umgebung_.texte;
    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(menüs_);
    auto* hinweis = new QLabel(texte(Text::HinweisUntersuchungÖffnen));
    hinweis->setObjectName(u"lab_Hinweis"_s);
    hinweis->setWordWrap(true);
    layout->addWidget(hinweis);
    layout->addWidget(baueSuche());

    grid_->setObjectName(u"Grid"_s);
    grid_->setAccessibleName(texte(Text::Ergebnisse));
    grid_->setModel(&modell_);
    grid_->beiÖffnen([this] { ÖffnenStart(); });
    grid_->beiEnde([this] { Auf_Tabellenende(); });
    connect(grid_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { zeigeStand(); });
    connect(grid_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { zeigeStand(); });
    layout->addWidget(grid_, 1);
    layout->addLayout(baueFuß());
}

QWidget* DB::baueSuche() {
    suche_ = new QWidget;
    auto* zeile = new QHBoxLayout(suche_);
    zeile->setContentsMargins(0, 0, 0, 0);
    txt_Suche_ = new QLineEdit;
    txt_Suche_->setObjectName(u"txt_Suche"_s);
    txt_Suche_->setPlaceholderText(umgebung_.texte(Meldung::SuchfeldInhalt));
    txt_Suche_->setToolTip(umgebung_.texte(Meldung::TippSuchen));
    txt_Suche_->setClearButtonEnabled(true);
    txt_Suche_->installEventFilter(this);
    auto* wort = new QLabel(umgebung_.texte(Meldung::Suchen));
    wort->setBuddy(txt_Suche_);
    txt_Suche_->setAccessibleName(wort->text());
    zeile->addWidget(wort);
    zeile->addWidget(txt_Suche_);
    suche_->hide();
    connect(txt_Suche_, &QLineEdit::textChanged, this, [this] { zeigeZeilen(); });
    return suche_;
}

QLayout* DB::baueFuß() {
    const Texte& texte = umgebung_.texte;
    lab_Anzahl_->setObjectName(u"lab_Anzahl"_s);
    bef_Öffnen_->setObjectName(u"bef_Öffnen"_s);
    bef_Öffnen_->setToolTip(texte(Meldung::TippUntersuchungÖffnen));
    auto* bef_Abbrechen = new QPushButton(texte(Text::Schließen));
    bef_Abbrechen->setObjectName(u"bef_Abbrechen"_s);
    // Enter belongs to the row, not to a button.
    bef_Öffnen_->setAutoDefault(false);
    bef_Abbrechen->setAutoDefault(false);
    connect(bef_Öffnen_, &QPushButton::clicked, this, [this] { ÖffnenStart(); });
    connect(bef_Abbrechen, &QPushButton::clicked, this, [this] { reject(); });
    auto* zeile = new QHBoxLayout;
    zeile->addWidget(lab_Anzahl_);
    zeile->addStretch();
    if (umgebung_.zuchtübersicht) {
        auto* bef_Zucht = new QPushButton(texte(Meldung::Zuchtübersicht) + u" …"_s);
        bef_Zucht->setObjectName(u"bef_Zuchtübersicht"_s);
        bef_Zucht->setToolTip(texte(Meldung::TippZuchtübersicht));
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
            } else {
                menüs_->zeige(wahl_);
            }
        });
    };
    befehl(Ergebnis, [this](int i) { wähle(static_cast<Ergebnisfilter>(i)); });
    befehl(Rasse, [this](int i) { wähle(static_cast<Rassenfilter>(i)); });
    befehl(Geschlecht, [this](int i) { wähle(static_cast<Geschlechtsfilter>(i)); });
    befehl(Sort, [this](int i) { wähle(static_cast<Sortierung>(i)); });
    befehl(Filter, [this](int i) { filterbefehl(i); });
    befehl(Tabelle, [this](int i) { tabellenbefehl(i); });
    auto* öffnen = new QAction(umgebung_.texte(Text::MenüÖffnen), grid_);
    connect(öffnen, &QAction::triggered, this, [this] { ÖffnenStart(); });
    grid_->addAction(öffnen);
    grid_->addAction(&menüs_->aktion(Tabelle, Ergebnismenüs::Löschen));
    grid_->addAction(&menüs_->aktion(Tabelle, Ergebnismenüs::NeuBeurteilen));
}

void DB::LadeTabelle() {
    const Texte& texte = umgebung_.texte;
    QList<QStringList> worte;
    for (int spalte = 0; spalte < modell_.columnCount(); ++spalte) {
        const auto art = static_cast<Ergebnisspalte>(spalte);
        worte << spaltentitel(texte, art).split(u' ') + spaltenworte(texte, art);
    }
    worte[static_cast<int>(Ergebnisspalte::Rasse)] << u"Mellifera"_s << u"Carpatica"_s;
    worte[static_cast<int>(Ergebnisspalte::Datum)] << kurzesDatum(texte, QDate(2000, 12, 30));
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
    {
        const QSignalBlocker still(txt_Suche_); // the rows are read once, below
        zeigeSuche(false);
    }
    zeigeZeilen();
    if (modell_.vollständig()) {
        Auf_Tabellenende();
    } else {
        grid_->nachMalen([this] { Auf_Tabellenende(); });
    }
}

void DB::zeigeZeilen() {
    menüs_->zeige(wahl_);
    const Texte& texte = umgebung_.texte;
    QString leer = wahl_.filtert() || !txt_Suche_->text().trimmed().isEmpty()
                       ? texte(Meldung::KeineUntersuchungGefunden)
                       : texte(Meldung::NochKeineUntersuchung);
    if (umgebung_.DatenbankPfad.isEmpty()) {
        leer = texte(Meldung::DatenbankNichtGewählt);
        modell_.leere();
    } else {
        try {
            modell_.zeige(umgebung_.DatenbankPfad, wahl_.datenquelle(),
                          txt_Suche_->text().trimmed());
        } catch (const Datenbankfehler& fehler) {
            leer = meldungstext(texte, fehler);
            meldeFehler(fehler);
        }
    }
    grid_->setzeLeertext(leer);
    grid_->wähleZeile(0);
    if (!modell_.vollständig()) {
        grid_->nachMalen([this] { ladeRest(); });
    }
    zeigeStand();
}

/// The same rows as the file has them now, at about the same place.
void DB::zeigeNeu() {
    const int zeile = grid_->currentIndex().row();
    zeigeZeilen();
    ladeRest();
    grid_->wähleZeile(std::min(zeile, modell_.rowCount() - 1));
}

/// The first page is on the screen; now all rows get their place.
void DB::ladeRest() {
    modell_.fetchMore({});
    zeigeStand();
}

void DB::Auf_Tabellenende() {
    ladeRest();
    grid_->wähleZeile(modell_.rowCount() - 1);
}

void DB::zeigeStand() {
    const Texte& texte = umgebung_.texte;
    const int zahl = modell_.rowCount();
    const Meldung meldung = !modell_.vollständig() ? Meldung::AnzahlUntersuchungenMehr
                            : zahl == 1            ? Meldung::EineUntersuchung
                                                   : Meldung::AnzahlUntersuchungen;
    lab_Anzahl_->setText(meldung == Meldung::EineUntersuchung ? texte(meldung)
                                                              : texte(meldung).arg(zahl));
    // What is done with one row does not say which of several it means.
    const bool gewählt =
        grid_->currentIndex().isValid() && grid_->selectionModel()->selectedRows().size() < 2;
    bef_Öffnen_->setEnabled(gewählt);
    menüs_->aktion(Ergebnismenü::Tabelle, Ergebnismenüs::Löschen).setEnabled(gewählt);
    menüs_->aktion(Ergebnismenü::Tabelle, Ergebnismenüs::Sichern)
        .setEnabled(!umgebung_.DatenbankPfad.isEmpty());
    menüs_->aktion(Ergebnismenü::Tabelle, Ergebnismenüs::NeuBeurteilen)
        .setEnabled(zahl > 0 && umgebung_.neubeurteilung);
    menüs_->aktion(Ergebnismenü::Tabelle, Ergebnismenüs::Exportieren).setEnabled(zahl > 0);
}

template <typename Filter>
void DB::wähle(Filter filter) {
    wahl_.wähle(filter);
    zeigeZeilen();
}

void DB::filterbefehl(int index) {
    switch (index) {
    case Ergebnismenüs::Filtern:
        wahl_.filtere(!wahl_.filtert());
        zeigeZeilen();
        break;
    case Ergebnismenüs::AlleZeigen:
        wahl_.wähleAlle();
        zeigeZeilen();
        break;
    case Ergebnismenüs::Suchen:
        zeigeSuche(suche_->isHidden() || !txt_Suche_->hasFocus());
        break;
    default:
        break;
    }
}

void DB::zeigeSuche(bool zeigen) {
    menüs_->aktion(Ergebnismenü::Filter, Ergebnismenüs::Suchen).setChecked(zeigen);
    suche_->setVisible(zeigen);
    if (zeigen) {
        txt_Suche_->setFocus(Qt::ShortcutFocusReason);
        txt_Suche_->selectAll();
    } else {
        txt_Suche_->clear(); // what is out of sight must not hide rows
        grid_->setFocus();
    }
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

/// Whether there were any.
bool DB::zeigeMeldungen() {
    const auto offene = std::exchange(meldungen_, {});
    for (const auto& [DataErr, text] : offene) {
        Grid_Error(DataErr, text);
    }
    return !offene.empty();
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
        if (txt_Suche_->hasFocus()) {
            zeigeSuche(false);
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
