#include "results/ergebnismodell.h"

#include "measure/statistik.h"
#include "results/untersuchungssatz.h"

#include <QDate>

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype Datumslänge = 10; ///< "2025-06-15"; a time may follow

constexpr int Blöcke = 64; // pages that are kept
constexpr int Gruppe = 16; // rows whose long texts are read together, about half a screen
constexpr int Gruppen = 256;

bool istZentriert(Ergebnisspalte spalte) {
    switch (spalte) {
    case Ergebnisspalte::Nummer:
    case Ergebnisspalte::Königin:
    case Ergebnisspalte::Geschlecht:
    case Ergebnisspalte::Entspricht:
    case Ergebnisspalte::Rasse:
    case Ergebnisspalte::Flügel:
    case Ergebnisspalte::MittelCI:
    case Ergebnisspalte::MittelHI:
    case Ergebnisspalte::MittelDV:
    case Ergebnisspalte::Auflösung:
        return true;
    default:
        return false;
    }
}

bool istZiffernfolge(const QString& text) {
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

/// What a cell shows of a text: other programs store texts that take a minute to paint.
QString kurz(const QString& text) {
    constexpr qsizetype sichtbar = 1000;
    return text.size() > sichtbar ? text.first(sichtbar) + u'…' : text;
}

/// A number with a short sign is a text; "012E2025" must not be taken for a power of ten.
QString dreistellig(const QString& nummer) {
    constexpr qsizetype genau = 15; // digits that a number keeps
    return istZiffernfolge(nummer) && nummer.size() <= genau
               ? Format(nummer, u"000", Zahlenformat{})
               : nummer;
}

} // namespace

Ergebnismodell::Ergebnismodell(const Texte& texte, QObject* parent)
    : QAbstractTableModel(parent)
    , texte_(texte)
    , blöcke_(Blöcke)
    , zusätze_(Gruppen) {}

void Ergebnismodell::vergiss() {
    ids_.clear();
    blöcke_.clear();
    zusätze_.clear();
    vollständig_ = true;
    gestört_ = false;
}

void Ergebnismodell::leere() {
    beginResetModel();
    vergiss();
    endResetModel();
}

void Ergebnismodell::zeige(const QString& datei, const Zeilenwahl& wahl, const Sieb& sieb) {
    beginResetModel();
    vergiss();
    tabelle_ = Ergebnistabelle(datei);
    wahl_ = wahl;
    try {
        if (sieb || wahl.brauchtAlle()) {
            std::vector<qint64> alle = tabelle_.zeilenfolge(wahl);
            if (sieb && !sieb(alle)) {
                alle.clear();
            }
            ids_ = std::move(alle);
        } else {
            auto erster = std::make_unique<Block>();
            for (const Zeile& zeile : tabelle_.zeilen(wahl, Seite)) {
                ids_.push_back(zeile.id);
                erster->emplace_back(zeile);
            }
            vollständig_ = ids_.size() < Seite;
            blöcke_.insert(0, erster.release());
        }
    } catch (...) {
        vergiss();
        endResetModel();
        throw;
    }
    endResetModel();
}

bool Ergebnismodell::canFetchMore(const QModelIndex& parent) const {
    return !parent.isValid() && !vollständig_ && !gestört_;
}

void Ergebnismodell::fetchMore(const QModelIndex& parent) {
    // After a failure the view does not ask by itself any more, but whoever calls this may try.
    if (parent.isValid() || vollständig_) {
        return;
    }
    std::vector<qint64> alle;
    try {
        alle = tabelle_.zeilenfolge(wahl_);
    } catch (const Datenbankfehler& fehler) {
        gestört_ = true;
        melde(fehler);
        return;
    }
    vollständig_ = true;
    gestört_ = false;
    // Others may have written meanwhile; the rows already shown stay where they are.
    const std::unordered_set<qint64> gezeigt(ids_.begin(), ids_.end());
    std::erase_if(alle, [&](qint64 id) { return gezeigt.contains(id); });
    if (alle.empty()) {
        return;
    }
    const int anfang = static_cast<int>(ids_.size());
    beginInsertRows({}, anfang, anfang + static_cast<int>(alle.size()) - 1);
    ids_.insert(ids_.end(), alle.begin(), alle.end());
    endInsertRows();
}

const Ergebnismodell::Block* Ergebnismodell::block(int nummer) const {
    if (const Block* bekannt = blöcke_.object(nummer)) {
        return bekannt;
    }
    if (gestört_) {
        return nullptr;
    }
    const auto anfang = static_cast<std::size_t>(nummer) * Seite;
    const std::size_t ende = std::min(anfang + Seite, ids_.size());
    const std::vector<qint64> ids(ids_.begin() + static_cast<std::ptrdiff_t>(anfang),
                                  ids_.begin() + static_cast<std::ptrdiff_t>(ende));
    std::unordered_map<qint64, Zeile> gelesen;
    try {
        for (Zeile& zeile : tabelle_.zeilen(ids)) {
            gelesen.emplace(zeile.id, std::move(zeile));
        }
    } catch (const Datenbankfehler& fehler) {
        gestört_ = true;
        melde(fehler);
        return nullptr;
    }
    auto neu = std::make_unique<Block>();
    for (const qint64 id : ids) {
        const auto stelle = gelesen.find(id);
        neu->push_back(stelle == gelesen.end() ? std::nullopt
                                               : std::optional(std::move(stelle->second)));
    }
    blöcke_.insert(nummer, neu.release());
    return blöcke_.object(nummer);
}

const Ergebnismodell::Zeile* Ergebnismodell::zeile(int nummer) const {
    if (nummer < 0 || nummer >= rowCount()) {
        return nullptr;
    }
    const Block* seite = block(nummer / Seite);
    if (seite == nullptr) {
        return nullptr;
    }
    const auto& stelle = seite->at(static_cast<std::size_t>(nummer % Seite));
    return stelle ? &*stelle : nullptr;
}

std::optional<Ergebnismodell::Zeile> Ergebnismodell::gezeigte(int nummer) const {
    const Zeile* gesucht = zeile(nummer);
    return gesucht == nullptr ? std::nullopt : std::optional(*gesucht);
}

Ergebnismodell::Zusatz Ergebnismodell::zusatzVon(const Ergebnissatz& satz) const {
    const GeleseneUntersuchung gelesen =
        untersuchungAus(satz, {.texte = texte_, .format = format_, .rassen = {}});
    const auto mittel = [&](float Chartwerte::*größe, QStringView muster) {
        const auto k = kennzahlen(werte(gelesen.reihe, größe));
        return k ? Format(k->mittelwert, muster, format_) : QString();
    };
    const QString prozent = satz.PROZENT.trimmed();
    return {satz.VOLK.trimmed(),
            QString::number(satz.CI.count(u'#')),
            mittel(&Chartwerte::CI, u"0.00"),
            mittel(&Chartwerte::HI, u"0.000"),
            mittel(&Chartwerte::DV, u"+0.0;-0.0"),
            prozent.left(std::max<qsizetype>(prozent.lastIndexOf(u';'), 0)),
            gelesen.auflösung ? QString::number(*gelesen.auflösung) + u" dpi"_s : QString()};
}

/// Read when they are looked at, with those around them: they lie in the long texts.
QString Ergebnismodell::zusatz(int zeile, int stelle) const {
    const int gruppe = zeile / Gruppe;
    const std::vector<Zusatz>* werte = zusätze_.object(gruppe);
    if (werte == nullptr) {
        if (gestört_) {
            return {};
        }
        const auto anfang = static_cast<std::size_t>(gruppe) * Gruppe;
        const std::size_t ende = std::min(anfang + Gruppe, ids_.size());
        auto neu = std::make_unique<std::vector<Zusatz>>();
        try {
            for (std::size_t i = anfang; i < ende; ++i) {
                Zusatz& einer = neu->emplace_back();
                tabelle_.sätze(
                    {ids_[i]},
                    [&](const Ergebnissatz& satz) {
                        einer = zusatzVon(satz);
                        return true;
                    },
                    [](const QString&) {}); // too large to be read: nothing is said of it
            }
        } catch (const Datenbankfehler& fehler) {
            gestört_ = true;
            melde(fehler);
            return {};
        }
        zusätze_.insert(gruppe, neu.release());
        werte = zusätze_.object(gruppe);
    }
    const auto ort = static_cast<std::size_t>(zeile % Gruppe);
    return ort < werte->size() ? (*werte)[ort].at(static_cast<std::size_t>(stelle)) : QString();
}

QString Ergebnismodell::nummer(int nummer) const {
    const Zeile* gesucht = zeile(nummer);
    return gesucht == nullptr ? QString() : gesucht->werte.front();
}

int Ergebnismodell::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(ids_.size());
}

int Ergebnismodell::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : AnzahlErgebnisspalten;
}

QString Ergebnismodell::anzeige(const QString& wert, Ergebnisspalte spalte) const {
    if (spalte == Ergebnisspalte::Nummer) {
        return kurz(dreistellig(wert));
    }
    if (spalte == Ergebnisspalte::Datum) {
        const QDate datum = QDate::fromString(wert.left(Datumslänge), Qt::ISODate);
        return datum.isValid() ? kurzesDatum(texte_, datum) : kurz(wert); // of other programs
    }
    return kurz(wert);
}

QVariant Ergebnismodell::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const auto spalte = static_cast<Ergebnisspalte>(index.column());
    if (role == Qt::TextAlignmentRole) {
        const Qt::Alignment waagerecht = istZentriert(spalte) ? Qt::AlignHCenter : Qt::AlignLeft;
        return QVariant::fromValue(waagerecht | Qt::AlignVCenter);
    }
    if (role == Qt::ToolTipRole && spalte == Ergebnisspalte::Entspricht) {
        return tipp(index.row());
    }
    if (role != Qt::DisplayRole && role != Qt::EditRole) {
        return {};
    }
    if (index.column() >= ErsteZusatzspalte) {
        return zusatz(index.row(), index.column() - ErsteZusatzspalte);
    }
    const Zeile* gezeigt = zeile(index.row());
    if (gezeigt == nullptr) {
        return {};
    }
    const QString& wert = gezeigt->werte.at(static_cast<std::size_t>(index.column()));
    if (role == Qt::DisplayRole) {
        return anzeige(wert, spalte);
    }
    if (spalte == Ergebnisspalte::Datum) {
        const QDate datum = QDate::fromString(wert.left(Datumslänge), Qt::ISODate);
        return datum.isValid() ? vollesDatum(texte_, datum) : wert;
    }
    return wert.trimmed();
}

QVariant Ergebnismodell::tipp(int nummer) const {
    try {
        const std::optional<Ergebnissatz> satz = tabelle_.lade(this->nummer(nummer));
        return satz && unbeurteilt(*satz) ? QVariant(texte_(Meldung::NichtBeurteilt)) : QVariant();
    } catch (const Datenbankfehler&) {
        return {}; // whoever opens the row is told
    }
}

QVariant Ergebnismodell::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section < columnCount()) {
        return spaltentitel(texte_, static_cast<Ergebnisspalte>(section));
    }
    if (orientation == Qt::Horizontal && role == Qt::ToolTipRole) {
        return texte_(section < ErsteZusatzspalte ? Meldung::TippSpaltenkopf
                                                  : Meldung::TippSpaltenkopfOhneSortieren);
    }
    return QAbstractTableModel::headerData(section, orientation, role);
}

Qt::ItemFlags Ergebnismodell::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (!index.isValid()) {
        return flags;
    }
    return flags | Qt::ItemNeverHasChildren |
           (index.column() < ErsteZusatzspalte ? Qt::ItemIsEditable : Qt::NoItemFlags);
}

void Ergebnismodell::melde(const Datenbankfehler& fehler) const {
    if (beiFehler_) {
        beiFehler_(static_cast<int>(fehler.grund()), meldungstext(texte_, fehler));
    }
}

/// What stands in the columns of a row that differ from what was shown.
QString Ergebnismodell::unterschied(const Zeile& alt, const Zeile& jetzt) const {
    QString text = texte_(Meldung::ZeileFremdGeändert).arg(alt.werte.front().trimmed());
    for (int i = 0; i < Ergebnistabelle::Spaltenzahl; ++i) {
        const auto stelle = static_cast<std::size_t>(i);
        if (alt.werte.at(stelle) != jetzt.werte.at(stelle)) {
            const auto spalte = static_cast<Ergebnisspalte>(i);
            text += u'\n' + spaltentitel(texte_, spalte) + u": "_s +
                    anzeige(jetzt.werte.at(stelle), spalte);
        }
    }
    return text;
}

bool Ergebnismodell::setData(const QModelIndex& index, const QVariant& value, int role) {
    const Zeile* gezeigt =
        role == Qt::EditRole && index.column() < ErsteZusatzspalte ? zeile(index.row()) : nullptr;
    if (gezeigt == nullptr || value.toString().trimmed() == data(index, role).toString()) {
        return false;
    }
    const auto spalte = static_cast<Ergebnisspalte>(index.column());
    const auto [wert, einwand] = prüfeEingabe(texte_, spalte, value.toString().trimmed());
    if (!einwand.isEmpty()) {
        if (beiFehler_) {
            beiFehler_(Einwand, einwand);
        }
        return false;
    }
    const Zeile alt = *gezeigt;
    Zeile neu = alt;
    neu.werte.at(static_cast<std::size_t>(index.column())) = wert;
    if (vorÄnderung_) {
        vorÄnderung_(neu);
    }
    if (spalte == Ergebnisspalte::Datum && vorDatum_ &&
        !vorDatum_(QDate::fromString(wert, Qt::ISODate))) {
        return false;
    }
    if (spalte == Ergebnisspalte::Geschlecht && vorTierwechsel_) {
        switch (vorTierwechsel_(alt.werte.front(), wert)) {
        case Wortwechsel::Schreiben:
            break;
        case Wortwechsel::Erledigt:
            frische(index.row());
            return true;
        case Wortwechsel::Ablehnen:
            return false;
        }
    }
    try {
        rücknahmen_.push_back(tabelle_.ändere(alt, neu));
    } catch (const Ergebnistabelle::Zeilenkonflikt& konflikt) {
        blöcke_.remove(index.row() / Seite); // the next attempt starts from what stands there now
        if (beiFehler_) {
            beiFehler_(Fremdgeändert, unterschied(alt, konflikt.jetzt()));
        }
        return false;
    } catch (const Datenbankfehler& fehler) {
        melde(fehler);
        return false;
    }
    frische(index.row());
    return true;
}

/// What the file holds now of a row is shown.
void Ergebnismodell::frische(int zeile) {
    blöcke_.remove(zeile / Seite);
    zusätze_.remove(zeile / Gruppe);
    Q_EMIT dataChanged(index(zeile, 0), index(zeile, columnCount() - 1));
}

void Ergebnismodell::lösche(int zeile) {
    const Zeile* gezeigt = this->zeile(zeile);
    if (gezeigt == nullptr) {
        throw Datenbankfehler(Datenbankgrund::UntersuchungFehlt, tabelle_.pfad());
    }
    rücknahmen_.push_back(tabelle_.lösche(*gezeigt));
    beginRemoveRows({}, zeile, zeile);
    ids_.erase(ids_.begin() + zeile);
    blöcke_.clear(); // every row behind it moves up
    zusätze_.clear();
    endRemoveRows();
}

} // namespace tarvel
