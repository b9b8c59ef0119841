// What the browser shows of the file: words, filters and order, columns, the selection that stays,
// and changes that other programs make.

#include "results/db.h"

#include "platform/fortschritt.h"
#include "results/ergebnisgitter.h"
#include "results/ergebnismenues.h"
#include "settings/einstellungen.h"

#include <QAction>
#include <QApplication>
#include <QHash>
#include <QHeaderView>
#include <QLineEdit>
#include <QSignalBlocker>

#include <algorithm>
#include <memory>

namespace tarvel {

using namespace Qt::StringLiterals;

/// The column that the heading shows the order of.
int DB::gezeigteOrdnung() const {
    constexpr Ergebnisspalte spalten[] = {Ergebnisspalte::Datum, Ergebnisspalte::Nummer,
                                          Ergebnisspalte::Königin, Ergebnisspalte::Züchter,
                                          Ergebnisspalte::Besitzer};
    return spalte_.value_or(
        static_cast<int>(spalten[static_cast<std::size_t>(wahl_.sortierung())]));
}

Zeilenwahl DB::zeilenwahl() const {
    return {
        .datenquelle = wahl_.datenquelle(),
        .suchtext = txt_Suche_->text(),
        .datumsworte = [this](const QString& wort) { return gesuchteDaten(umgebung_.texte, wort); },
        .filter = filter_->filter(),
        .spalte = spalte_,
        .absteigend = absteigend_};
}

bool DB::engtEin() const {
    return wahl_.filtert() || filter_->engtEin() || !txt_Suche_->text().trimmed().isEmpty();
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
        txt_Suche_->setFocus(Qt::ShortcutFocusReason);
        txt_Suche_->selectAll();
        break;
    case Ergebnismenüs::AllesZeigen:
        zeigeAlles();
        break;
    default:
        break;
    }
}

void DB::zeigeAlles() {
    {
        const QSignalBlocker still(txt_Suche_);
        txt_Suche_->clear();
    }
    filter_->leere();
    wahl_.filtere(false);
    zeigeZeilen();
}

/// The words or the line of filters are others now.
void DB::engeEin() {
    if (beendeEingabe()) {
        zeigeZeilen();
    }
}

/// Letters that were typed in the grid begin another search.
void DB::sucheMit(const QString& text) {
    txt_Suche_->setFocus(Qt::OtherFocusReason);
    txt_Suche_->setText(text);
}

void DB::sortierbefehl(int index) {
    const int spalte = grid_->currentIndex().column();
    switch (index) {
    case Ergebnismenüs::NachSpalte:
        if (spalte >= 0 && spalte < ErsteZusatzspalte) {
            sortiere(spalte, spalte == gezeigteOrdnung() && !absteigend_);
        }
        break;
    case Ergebnismenüs::Umkehren:
        sortiere(gezeigteOrdnung(), !absteigend_);
        break;
    default:
        spalte_.reset();
        absteigend_ = false;
        wahl_.wähle(static_cast<Sortierung>(index));
        zeigeZeilen();
    }
}

void DB::sortiere(int spalte, bool absteigend) {
    if (spalte >= ErsteZusatzspalte || !beendeEingabe()) {
        zeigeOrdnung();
        return;
    }
    constexpr std::pair<Ergebnisspalte, Sortierung> desMenüs[] = {
        {Ergebnisspalte::Datum, Sortierung::Datum},
        {Ergebnisspalte::Nummer, Sortierung::Nummer},
        {Ergebnisspalte::Königin, Sortierung::Königin},
        {Ergebnisspalte::Züchter, Sortierung::Züchter},
        {Ergebnisspalte::Besitzer, Sortierung::Besitzer}};
    spalte_ = spalte;
    for (const auto& [von, sortierung] : desMenüs) {
        if (static_cast<int>(von) == spalte) {
            wahl_.wähle(sortierung);
            spalte_.reset();
        }
    }
    absteigend_ = absteigend;
    zeigeZeilen();
}

/// The heading only shows what is so.
void DB::zeigeOrdnung() {
    QHeaderView* kopf = grid_->horizontalHeader();
    const QSignalBlocker still(kopf);
    kopf->setSortIndicator(gezeigteOrdnung(),
                           absteigend_ ? Qt::DescendingOrder : Qt::AscendingOrder);
    kopf->viewport()->update();
}

/// What the file offers in the line of filters. A file that cannot be read offers nothing; it was
/// told when its rows were read.
Filterzeile::Listen DB::filterlisten() {
    constexpr int Meiste = 1000;
    const Ergebnistabelle tabelle(umgebung_.DatenbankPfad);
    const auto sortiert = [](QStringList worte) {
        std::sort(worte.begin(), worte.end(), [](const QString& a, const QString& b) {
            return sortierschlüssel(a) < sortierschlüssel(b);
        });
        return worte;
    };
    try {
        return {.saisons = tabelle.saisons(),
                .züchter = sortiert(tabelle.bekannte(&Ergebnissatz::Z_NAME, Meiste)),
                .rassen = sortiert(tabelle.bekannte(&Ergebnissatz::RASSE, Meiste))};
    } catch (const Datenbankfehler&) {
        return {};
    }
}

/// Lets the rows through that have enough wings. Their number lies in the long texts, so it is read
/// once a row.
Ergebnismodell::Sieb DB::flügelsieb() {
    const int mindestens = filter_->flügel();
    if (mindestens == 0) {
        return {};
    }
    return [this, mindestens](std::vector<qint64>& ids) {
        std::vector<qint64> unbekannte;
        std::copy_if(ids.begin(), ids.end(), std::back_inserter(unbekannte),
                     [this](qint64 id) { return !flügelzahlen_.contains(id); });
        // Ascending places lie beside each other in the file.
        std::sort(unbekannte.begin(), unbekannte.end());
        const Texte& texte = umgebung_.texte;
        constexpr int Schritt = 256;
        const auto anzahl = static_cast<int>(unbekannte.size());
        Fortschritt fortschritt(this, texte(Meldung::SpalteFlügelzahl), texte(Text::Abbrechen),
                                (anzahl + Schritt - 1) / Schritt);
        int gezählt = 0;
        bool abgebrochen = false;
        Ergebnistabelle(umgebung_.DatenbankPfad).flügelzahlen(unbekannte, [&](qint64 id, int zahl) {
            flügelzahlen_[id] = zahl;
            if (gezählt++ % Schritt == 0) {
                abgebrochen = !fortschritt.weiter(
                    gezählt / Schritt, texte(Meldung::FlügelZählen)
                                           .arg(QString::number(gezählt), QString::number(anzahl)));
            }
            return !abgebrochen;
        });
        if (abgebrochen) {
            filter_->leereFlügel();
            return true; // all that the others leave
        }
        std::erase_if(ids, [&](qint64 id) { return flügelzahlen_[id] < mindestens; });
        return true;
    };
}

void DB::spaltenbefehl(int index) {
    if (index == Ergebnismenüs::ÜblicheBreiten) {
        QList<int> breiten = grid_->eigeneBreiten();
        for (int& breite : breiten) {
            breite = std::min(breite, 0);
        }
        grid_->setzeEigeneBreiten(breiten);
        return;
    }
    const int spalte = ErsteZusatzspalte + index;
    grid_->zeigeSpalte(spalte, grid_->isColumnHidden(spalte));
}

void DB::zeigeSpaltenhaken() {
    for (int i = 0; i < AnzahlZusatzspalten; ++i) {
        menüs_->aktion(Ergebnismenü::Spalten, i)
            .setChecked(!grid_->isColumnHidden(ErsteZusatzspalte + i));
    }
}

void DB::stelleFensterHer() {
    if (umgebung_.einstellungen != nullptr) {
        const Einstellungen& e = *umgebung_.einstellungen;
        restoreGeometry(QByteArray::fromBase64(e.text(Einstellung::FensterErgebnisse).toLatin1()));
        const QStringList angaben = e.text(Einstellung::FensterErgebnisspalten).split(u',');
        if (angaben.size() == AnzahlErgebnisspalten) {
            QList<int> breiten;
            std::transform(angaben.begin(), angaben.end(), std::back_inserter(breiten),
                           [](const QString& angabe) { return angabe.toInt(); });
            grid_->setzeEigeneBreiten(breiten);
        }
    }
    zeigeSpaltenhaken();
}

void DB::merkeFenster() {
    if (umgebung_.einstellungen == nullptr) {
        return;
    }
    QStringList angaben;
    for (const int breite : grid_->eigeneBreiten()) {
        angaben << QString::number(breite);
    }
    Einstellungen& e = *umgebung_.einstellungen;
    e.schreibe(Einstellung::FensterErgebnisse, QString::fromLatin1(saveGeometry().toBase64()));
    e.schreibe(Einstellung::FensterErgebnisspalten, angaben.join(u','));
}

QList<int> DB::gewählteZeilen() const {
    QList<int> zeilen;
    for (const QItemSelectionRange& bereich : grid_->selectionModel()->selection()) {
        for (int zeile = bereich.top(); bereich.left() == 0 && zeile <= bereich.bottom(); ++zeile) {
            zeilen << zeile;
        }
    }
    std::sort(zeilen.begin(), zeilen.end());
    return zeilen;
}

int DB::anzahlGewählte() const {
    int anzahl = 0;
    for (const QItemSelectionRange& bereich : grid_->selectionModel()->selection()) {
        anzahl += bereich.left() == 0 ? bereich.height() : 0;
    }
    return anzahl;
}

/// Before the rows come anew. What is not shown at present, since it was filtered away, stays
/// remembered until something else is selected.
void DB::merkeWahl(Nummern nummern) {
    const QModelIndex aktuelle = grid_->currentIndex();
    if (gemerkt_ || !aktuelle.isValid()) {
        return;
    }
    constexpr qsizetype Wenige = 200;
    const QList<int> zeilen = gewählteZeilen();
    const bool mitNummer = zeilen.size() <= Wenige || nummern == Nummern::VonAllen;
    const auto merke = [&](int zeile) {
        return Merkzeile{modell_.id(zeile), mitNummer ? modell_.nummer(zeile) : QString()};
    };
    gemerkt_ = Merker{merke(aktuelle.row()), aktuelle.column(), {}};
    for (const int zeile : zeilen) {
        gemerkt_->gewählte.push_back(merke(zeile));
    }
}

void DB::vergissWahl() {
    if (!stelltWahl_) {
        gemerkt_.reset();
    }
}

void DB::wähleNachher(const std::vector<qint64>& ids) {
    if (ids.empty()) {
        return;
    }
    gemerkt_ = Merker{{ids.back(), {}}, std::max(0, grid_->currentIndex().column()), {}};
    for (const qint64 id : ids) {
        gemerkt_->gewählte.push_back({id, {}});
    }
}

/// Of several rows of one day the last one need not be the one that the main window shows.
void DB::zeigeOffene() {
    const QString nummer = umgebung_.offene ? umgebung_.offene() : QString();
    if (nummer.isEmpty()) {
        return;
    }
    try {
        const auto platz = Ergebnistabelle(umgebung_.DatenbankPfad).platz(nummer);
        const std::vector<qint64>& ids = modell_.ids();
        const auto stelle = platz ? std::find(ids.begin(), ids.end(), *platz) : ids.end();
        if (stelle != ids.end()) {
            grid_->wähleZeile(static_cast<int>(stelle - ids.begin()));
        }
    } catch (const Datenbankfehler&) { // NOLINT(bugprone-empty-catch)
        // Reading the rows tells why.
    }
}

/// Selects what was selected. False when the current row is not among those that are known.
bool DB::stelleWahlHer() {
    if (!gemerkt_) {
        return false;
    }
    // Few are found by going through the rows, many by a table of all.
    constexpr std::size_t Wenige = 8;
    const std::vector<qint64>& ids = modell_.ids();
    std::unordered_map<qint64, int> zeilen;
    if (gemerkt_->gewählte.size() > Wenige) {
        zeilen.reserve(ids.size());
        for (const qint64 id : ids) {
            zeilen.emplace(id, static_cast<int>(zeilen.size()));
        }
    }
    const auto zeileVon = [&](qint64 id) {
        if (zeilen.empty()) {
            const auto stelle = std::find(ids.begin(), ids.end(), id);
            return stelle == ids.end() ? -1 : static_cast<int>(stelle - ids.begin());
        }
        const auto stelle = zeilen.find(id);
        return stelle == zeilen.end() ? -1 : stelle->second;
    };
    // A row that was stored anew has another place; its number is still the same.
    QHash<QString, qint64> plätze;
    const auto finde = [&](const Merkzeile& gesucht) {
        if (gesucht.nummer.isEmpty() || !modell_.vollständig()) {
            return zeileVon(gesucht.id);
        }
        const auto platz = plätze.constFind(gesucht.nummer);
        return platz == plätze.constEnd() ? -1 : zeileVon(*platz);
    };
    try {
        if (modell_.vollständig()) {
            QStringList nummern{gemerkt_->aktuelle.nummer};
            for (const Merkzeile& merkzeile : gemerkt_->gewählte) {
                nummern << merkzeile.nummer;
            }
            nummern.removeAll(QString());
            plätze = Ergebnistabelle(umgebung_.DatenbankPfad).plätze(nummern);
        }
        QList<int> gefundene;
        const int aktuelle = finde(gemerkt_->aktuelle);
        for (const Merkzeile& merkzeile : gemerkt_->gewählte) {
            if (const int zeile = finde(merkzeile); zeile >= 0 && zeile != aktuelle) {
                gefundene << zeile;
            }
        }
        if (aktuelle < 0 && gefundene.isEmpty()) {
            return false;
        }
        gefundene.prepend(aktuelle >= 0 ? aktuelle : gefundene.takeFirst());
        grid_->wähleZeilen(gefundene, gemerkt_->spalte);
        return true;
    } catch (const Datenbankfehler&) {
        return false; // reading the rows tells why
    }
}

/// The file and its log, where it has one.
DB::Dateistände DB::dateistände() const {
    return {dateistand(umgebung_.DatenbankPfad), dateistand(umgebung_.DatenbankPfad + u"-wal"_s)};
}

/// Shows what another program wrote, unless something is being done here.
void DB::siehNach() {
    const QWidget* vorn = QApplication::activeModalWidget();
    if (!isVisible() || (vorn != nullptr && vorn != this) || grid_->bearbeitet() ||
        QApplication::activePopupWidget() != nullptr || umgebung_.DatenbankPfad.isEmpty()) {
        return;
    }
    if (dateistände() != stand_) {
        zeigeNeu();
    }
}

bool DB::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate) {
        siehNach();
    }
    return QDialog::event(event);
}

void DB::done(int ergebnis) {
    merkeFenster();
    QDialog::done(ergebnis);
}

} // namespace tarvel
