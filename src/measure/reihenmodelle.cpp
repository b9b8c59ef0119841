#include "measure/reihenmodelle.h"

#include "measure/indexmuster.h"

#include <algorithm>

namespace tarvel {

namespace {

QVariant zahlenausrichtung() {
    return QVariant(Qt::AlignRight | Qt::AlignVCenter);
}

/// What lists and table say of a wing beside its values; empty for other roles.
QVariant flügeldaten(const Messreihe& reihe, const Zweifelsfälle& zweifel, const Texte& texte,
                     int nummer, int role) {
    switch (role) {
    case zeilenrolle::Nummer:
        return nummer;
    case zeilenrolle::Ausgelassen:
        return reihe.ausgelassen(nummer);
    case zeilenrolle::Zweifel:
        return static_cast<int>(zweifelsgrad(zweifel, nummer));
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole: {
        const QString tipp = flügeltipp(reihe, zweifel, nummer, texte);
        return tipp.isEmpty() ? QVariant() : QVariant(tipp);
    }
    default:
        return {};
    }
}

} // namespace

Zweifelsgrad zweifelsgrad(const Zweifelsfälle& fälle, int nummer) {
    const auto fall = fälle.find(nummer);
    if (fall == fälle.end() || fall->second.empty()) {
        return Zweifelsgrad::Keiner;
    }
    return fall->second.front().art == Flügelzweifel::Art::AbseitsDerProbe ? Zweifelsgrad::Abseits
                                                                           : Zweifelsgrad::Fraglich;
}

QString zweifelstext(const Zweifelsfälle& fälle, int nummer, const Texte& texte) {
    QStringList gründe;
    if (const auto fall = fälle.find(nummer); fall != fälle.end()) {
        for (const Flügelzweifel& zweifel : fall->second) {
            gründe += text(zweifel, texte);
        }
    }
    return gründe.join(u'\n');
}

QString flügeltipp(const Messreihe& reihe, const Zweifelsfälle& fälle, int nummer,
                   const Texte& texte) {
    QStringList zeilen(zweifelstext(fälle, nummer, texte));
    if (const Flügelmessung* messung = reihe.messung(nummer)) {
        if (messung->ungeprüft) {
            zeilen.prepend(texte(Meldung::Ungeprüft));
        } else if (messung->punkte.vorgeschlagen()) {
            zeilen.append(texte(Meldung::VorgeschlagenGeprüft));
        }
    }
    if (reihe.ausgelassen(nummer)) {
        zeilen.prepend(texte(Meldung::Ausgelassen));
    }
    zeilen.removeAll(QString());
    return zeilen.join(u'\n');
}

QString ausgelassen(const Messreihe& reihe, const Texte& texte) {
    QStringList nummern;
    for (const int nummer : reihe.ausgelassene()) {
        nummern += dreistellig(nummer);
    }
    if (nummern.isEmpty()) {
        return {};
    }
    const Meldung satz =
        nummern.size() == 1 ? Meldung::EinFlügelAusgelassen : Meldung::FlügelAusgelassen;
    return texte(satz).arg(nummern.size()).arg(nummern.join(QStringLiteral(", ")));
}

Entstehung entstehung(const Messreihe& reihe) {
    Entstehung e;
    for (const auto& [nummer, messung] : reihe.messungen()) {
        if (messung.ungeprüft) {
            ++e.ungeprüft;
        } else if (const Messpunkte& punkte = messung.punkte; punkte.vorgeschlagen()) {
            ++e.vorgeschlagen;
            for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
                const bool eigener = punkte.Herkunft[i] != Punktherkunft::Vorgeschlagen;
                e.berichtigt += punkte.gemessen(i) && eigener ? 1 : 0;
            }
        }
    }
    return e;
}

QString ungeprüfttext(const Messreihe& reihe, const Texte& texte) {
    const int anzahl = entstehung(reihe).ungeprüft;
    return anzahl == 0
               ? QString()
               : texte(Meldung::FlügelUngeprüft).arg(anzahl).arg(std::ssize(reihe.nummern()));
}

QString entstehungstext(const Messreihe& reihe, const Texte& texte) {
    const auto mitAnzahl = [&texte](int anzahl, Meldung einer, Meldung mehrere) {
        return texte(anzahl == 1 ? einer : mehrere).arg(anzahl);
    };
    const Entstehung e = entstehung(reihe);
    QStringList teile{ungeprüfttext(reihe, texte)};
    if (e.vorgeschlagen > 0) {
        QString text = mitAnzahl(e.vorgeschlagen, Meldung::EinFlügelVorgeschlagen,
                                 Meldung::FlügelVorgeschlagen);
        if (e.berichtigt > 0) {
            text += QStringLiteral(", ") +
                    mitAnzahl(e.berichtigt, Meldung::EinPunktBerichtigt, Meldung::PunkteBerichtigt);
        }
        teile << text;
    }
    teile.removeAll(QString());
    return teile.join(QStringLiteral("; "));
}

Zeilenliste::Zeilenliste(const Messreihe& reihe, const Zweifelsfälle& zweifel, const Texte& texte)
    : reihe_(reihe)
    , zweifel_(zweifel)
    , texte_(texte) {}

void Zeilenliste::setze(const QStringList& zeilen, std::vector<int> nummern) {
    nummern_ = std::move(nummern);
    setStringList(zeilen);
}

QVariant Zeilenliste::data(const QModelIndex& index, int role) const {
    const QVariant wert = QStringListModel::data(index, role);
    const bool da = index.isValid() && index.row() < std::ssize(nummern_);
    return wert.isValid() || !da
               ? wert
               : flügeldaten(reihe_, zweifel_, texte_,
                             nummern_[static_cast<std::size_t>(index.row())], role);
}

Flügeltabelle::Flügeltabelle(const Messreihe& reihe, const Zweifelsfälle& zweifel,
                             const Texte& texte)
    : reihe_(reihe)
    , zweifel_(zweifel)
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
        return flügeldaten(reihe_, zweifel_, texte_, nummer(index.row()), role);
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
    QStringView form = muster::CI;
    if (spalte == Flügeltabelle::HI) {
        form = muster::HI;
    } else if (spalte == Flügeltabelle::DV) {
        form = zeile == Standardabweichung ? muster::StreuungDV : muster::DV;
    }
    switch (zeile) {
    case Anzahl:
        return QString::number(k->anzahl);
    case Mittelwert:
        return Format(k->mittelwert, form, format_);
    case Minimum:
        return Format(k->minimum, form, format_);
    case Maximum:
        return Format(k->maximum, form, format_);
    default:
        return k->standardabweichung ? Format(*k->standardabweichung, form, format_) : QString();
    }
}

Reihenmodelle::Reihenmodelle(const Messreihe& reihe, const Texte& texte, Zahlenformat format)
    : reihe_(reihe)
    , texte_(texte)
    , format_(std::move(format))
    , ci_(reihe, zweifel_, texte)
    , hiDv_(reihe, zweifel_, texte)
    , flügel_(reihe, zweifel_, texte)
    , kennzahlen_(reihe, texte, format_) {}

void Reihenmodelle::aktualisiere() {
    zweifel_ = prüfer_.prüfe(reihe_);
    const Zeilenwörter wörter = zeilenwörter(texte_);
    const auto nummern = [](const auto& zeilen) {
        std::vector<int> liste;
        liste.reserve(zeilen.size());
        for (const auto& zeile : zeilen) {
            liste.push_back(zeile.nummer);
        }
        return liste;
    };
    ci_.setze(reihe_.ciTexte(wörter), nummern(reihe_.ciZeilen()));
    hiDv_.setze(reihe_.hiDvTexte(wörter), nummern(reihe_.hiDvZeilen()));
    flügel_.aktualisiere();
    kennzahlen_.aktualisiere();
}

} // namespace tarvel
