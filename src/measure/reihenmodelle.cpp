#include "measure/reihenmodelle.h"

#include <algorithm>

namespace tarvel {

namespace {

QVariant zahlenausrichtung() {
    return QVariant(Qt::AlignRight | Qt::AlignVCenter);
}

QString dreistellig(int nummer) {
    return QStringLiteral("%1").arg(nummer, 3, 10, QChar(u'0'));
}

} // namespace

Flügeltabelle::Flügeltabelle(const Messreihe& reihe, const Texte& texte)
    : reihe_(reihe)
    , texte_(texte) {}

void Flügeltabelle::aktualisiere() {
    beginResetModel();
    zeilen_.clear();
    for (const int nummer : reihe_.nummern()) {
        zeilen_.push_back({dreistellig(nummer), {}, {}, {}, {}, {}});
    }
    auto zeile = [this](qint16 nummer) -> Zeile& {
        const QString gesucht = dreistellig(nummer);
        return *std::find_if(zeilen_.begin(), zeilen_.end(),
                             [&](const Zeile& z) { return z[Nummer] == gesucht; });
    };
    for (const CiZeile& ci : reihe_.ciZeilen()) {
        Zeile& z = zeile(ci.nummer);
        z[CI] = ci.wert;
        z[KlasseCI] = ci.klasse;
    }
    for (const HiDvZeile& hiDv : reihe_.hiDvZeilen()) {
        Zeile& z = zeile(hiDv.nummer);
        z[HI] = hiDv.hi;
        z[KlasseHI] = hiDv.klasse;
        z[DV] = hiDv.dv;
    }
    endResetModel();
}

int Flügeltabelle::nummer(int zeile) const {
    return zeile >= 0 && zeile < rowCount()
               ? zeilen_[static_cast<std::size_t>(zeile)][Nummer].toInt()
               : 0;
}

int Flügeltabelle::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(zeilen_.size());
}

int Flügeltabelle::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Spaltenzahl;
}

QVariant Flügeltabelle::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return zeilen_[static_cast<std::size_t>(index.row())]
                      [static_cast<std::size_t>(index.column())];
    case Qt::TextAlignmentRole:
        return zahlenausrichtung();
    default:
        return {};
    }
}

QVariant Flügeltabelle::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= Spaltenzahl) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        return zahlenausrichtung();
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    const QString klasse = texte_(Text::Klasse) + u' ';
    switch (section) {
    case Nummer:
        return texte_(Text::Flügel);
    case CI:
        return texte_(Text::CI);
    case KlasseCI:
        return klasse + texte_(Text::CI);
    case HI:
        return texte_(Text::HI);
    case KlasseHI:
        return klasse + texte_(Text::HI);
    default:
        return texte_(Text::DV);
    }
}

Kennzahlentabelle::Kennzahlentabelle(const Messreihe& reihe, const Texte& texte,
                                     Zahlenformat format)
    : reihe_(reihe)
    , texte_(texte)
    , format_(std::move(format)) {}

void Kennzahlentabelle::aktualisiere() {
    beginResetModel();
    kennzahlen_ = {};
    kennzahlen_[Flügeltabelle::CI] = tarvel::kennzahlen(werte(reihe_, &Chartwerte::CI));
    kennzahlen_[Flügeltabelle::HI] = tarvel::kennzahlen(werte(reihe_, &Chartwerte::HI));
    kennzahlen_[Flügeltabelle::DV] = tarvel::kennzahlen(werte(reihe_, &Chartwerte::DV));
    endResetModel();
}

int Kennzahlentabelle::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Zeilenzahl;
}

int Kennzahlentabelle::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Flügeltabelle::Spaltenzahl;
}

QVariant Kennzahlentabelle::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    if (role == Qt::TextAlignmentRole && index.column() != Flügeltabelle::Nummer) {
        return zahlenausrichtung();
    }
    return role == Qt::DisplayRole ? kennzahl(index.row(), index.column()) : QVariant();
}

QString Kennzahlentabelle::kennzahl(int zeile, int spalte) const {
    if (spalte == Flügeltabelle::Nummer) {
        switch (zeile) {
        case Anzahl:
            return texte_(Meldung::Anzahl);
        case Mittelwert:
            return texte_(Text::Mittelwert);
        case Minimum:
            return texte_(Meldung::Minimum);
        case Maximum:
            return texte_(Meldung::Maximum);
        default:
            return texte_(Meldung::Standardabweichung);
        }
    }
    const std::optional<Kennzahlen>& k = kennzahlen_.at(static_cast<std::size_t>(spalte));
    if (!k) {
        return {};
    }
    QStringView muster = u"0.00";
    if (spalte == Flügeltabelle::HI) {
        muster = u"0.000";
    } else if (spalte == Flügeltabelle::DV && zeile != Standardabweichung) {
        muster = u"+0.0;-0.0";
    }
    switch (zeile) {
    case Anzahl:
        return QString::number(k->anzahl);
    case Mittelwert:
        return Format(k->mittelwert, muster, format_);
    case Minimum:
        return Format(k->minimum, muster, format_);
    case Maximum:
        return Format(k->maximum, muster, format_);
    default:
        return k->standardabweichung ? Format(*k->standardabweichung, muster, format_) : QString();
    }
}

Reihenmodelle::Reihenmodelle(const Messreihe& reihe, const Texte& texte, Zahlenformat format)
    : reihe_(reihe)
    , texte_(texte)
    , format_(std::move(format))
    , flügel_(reihe, texte)
    , kennzahlen_(reihe, texte, format_) {}

void Reihenmodelle::aktualisiere() {
    const Zeilenwörter wörter = zeilenwörter(texte_);
    ci_.setStringList(reihe_.ciTexte(wörter));
    hiDv_.setStringList(reihe_.hiDvTexte(wörter));
    flügel_.aktualisiere();
    kennzahlen_.aktualisiere();
}

} // namespace tarvel
