#include "results/ergebnismodell.h"

#include "platform/zahlen.h"
#include "results/untersuchungssatz.h"

#include <QDate>

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Blöcke = 64; // pages that are kept

bool istZentriert(Ergebnisspalte spalte) {
    switch (spalte) {
    case Ergebnisspalte::Nummer:
    case Ergebnisspalte::Königin:
    case Ergebnisspalte::Geschlecht:
    case Ergebnisspalte::Entspricht:
    case Ergebnisspalte::Rasse:
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
    , blöcke_(Blöcke) {}

void Ergebnismodell::vergiss() {
    ids_.clear();
    blöcke_.clear();
    vollständig_ = true;
    gestört_ = false;
}

void Ergebnismodell::leere() {
    beginResetModel();
    vergiss();
    endResetModel();
}

void Ergebnismodell::zeige(const QString& datei, const QString& datenquelle,
                           const QString& suchtext) {
    beginResetModel();
    vergiss();
    tabelle_ = Ergebnistabelle(datei);
    datenquelle_ = datenquelle;
    suchtext_ = suchtext;
    try {
        const std::vector<Zeile> seite = tabelle_.zeilen(datenquelle, suchtext, Seite);
        auto erster = std::make_unique<Block>();
        for (const Zeile& zeile : seite) {
            ids_.push_back(zeile.id);
            erster->emplace_back(zeile);
        }
        vollständig_ = ids_.size() < Seite;
        blöcke_.insert(0, erster.release());
    } catch (...) {
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
        alle = tabelle_.zeilenfolge(datenquelle_, suchtext_);
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

QString Ergebnismodell::nummer(int nummer) const {
    const Zeile* gesucht = zeile(nummer);
    return gesucht == nullptr ? QString() : gesucht->werte.front();
}

int Ergebnismodell::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(ids_.size());
}

int Ergebnismodell::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Ergebnistabelle::Spaltenzahl;
}

QString Ergebnismodell::anzeige(const QString& wert, Ergebnisspalte spalte) const {
    if (spalte == Ergebnisspalte::Nummer) {
        return kurz(dreistellig(wert));
    }
    if (spalte == Ergebnisspalte::Datum) {
        return kurzesDatum(texte_, QDate::fromString(wert, Qt::ISODate));
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
    const Zeile* gezeigt = zeile(index.row());
    if (gezeigt == nullptr) {
        return {};
    }
    const QString& wert = gezeigt->werte.at(static_cast<std::size_t>(index.column()));
    if (role == Qt::DisplayRole) {
        return anzeige(wert, spalte);
    }
    if (spalte == Ergebnisspalte::Datum) {
        return vollesDatum(texte_, QDate::fromString(wert, Qt::ISODate));
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
    return QAbstractTableModel::headerData(section, orientation, role);
}

Qt::ItemFlags Ergebnismodell::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return index.isValid() ? flags | Qt::ItemIsEditable | Qt::ItemNeverHasChildren : flags;
}

void Ergebnismodell::melde(const Datenbankfehler& fehler) const {
    if (beiFehler_) {
        beiFehler_(static_cast<int>(fehler.grund()), meldungstext(texte_, fehler));
    }
}

bool Ergebnismodell::setData(const QModelIndex& index, const QVariant& value, int role) {
    const Zeile* gezeigt = role == Qt::EditRole ? zeile(index.row()) : nullptr;
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
    bool gelungen = true;
    try {
        rücknahmen_.push_back(tabelle_.ändere(alt, neu));
    } catch (const Datenbankfehler& fehler) {
        gelungen = false;
        melde(fehler);
    }
    blöcke_.remove(index.row() / Seite); // what the file holds now is shown
    Q_EMIT dataChanged(index.siblingAtColumn(0), index.siblingAtColumn(columnCount() - 1));
    return gelungen;
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
    endRemoveRows();
}

} // namespace tarvel
