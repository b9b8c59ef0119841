#include "results/filterwahl.h"

#include <QStringView>

#include <array>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

// The double blanks of the race conditions belong to them.
QString bedingung(Rassenfilter rasse) {
    switch (rasse) {
    case Rassenfilter::Carnica:
        return u"RASSE  LIKE 'Carnica'"_s;
    case Rassenfilter::Mellifera:
        return u"RASSE  LIKE 'Mellifera'"_s;
    case Rassenfilter::Ligustica:
        return u"RASSE  LIKE 'Ligustica'"_s;
    case Rassenfilter::Carpatica:
        return u"RASSE  LIKE 'Carpatica'"_s;
    case Rassenfilter::Alle:
        break;
    }
    return u"RASSE  LIKE 'Carnica' OR  RASSE  LIKE 'Mellifera' "
           u"OR  RASSE  LIKE 'Ligustica' OR  RASSE  LIKE 'Carpatica'"_s;
}

QString ordnung(Sortierung sortierung) {
    constexpr std::array<QStringView, 5> Spalten = {u"DATUM", u"U_NR", u"ZB_NR", u"Z_NAME",
                                                    u"B_NAME"};
    return u"ORDER BY "_s + Spalten.at(static_cast<std::size_t>(sortierung)).toString();
}

} // namespace

QString bedingung(Ergebnisfilter ergebnis) {
    QString ja = u"ERGEBNIS LIKE 'Ja' OR ERGEBNIS LIKE 'Yes' OR ERGEBNIS LIKE 'Oui'"_s;
    QString nein = u"ERGEBNIS LIKE 'Nein' OR ERGEBNIS LIKE 'No' OR ERGEBNIS LIKE 'Non'"_s;
    switch (ergebnis) {
    case Ergebnisfilter::Ja:
        return ja;
    case Ergebnisfilter::Nein:
        return nein;
    case Ergebnisfilter::Alle:
        break;
    }
    return ja + u" OR "_s + nein;
}

QString bedingung(Geschlechtsfilter geschlecht) {
    QString arbeiter = u"A_D LIKE 'Arbeiter' OR A_D LIKE 'Workers' OR A_D LIKE 'Ouvrières'"_s;
    QString drohnen = u"A_D LIKE 'Drohnen' OR A_D LIKE 'Drones' OR A_D LIKE 'Mâles'"_s;
    switch (geschlecht) {
    case Geschlechtsfilter::Arbeiter:
        return arbeiter;
    case Geschlechtsfilter::Drohnen:
        return drohnen;
    case Geschlechtsfilter::Alle:
        break;
    }
    return arbeiter + u" OR "_s + drohnen;
}

Filterwahl::Filterwahl()
    // The conditions at the start are those of "all" with a blank before them.
    : ergebnisbedingung_(u' ' + bedingung(ergebnis_))
    , rassenbedingung_(u' ' + bedingung(rasse_))
    , geschlechtsbedingung_(u' ' + bedingung(geschlecht_))
    , ordnung_(ordnung(sortierung_)) {}

void Filterwahl::wähle(Ergebnisfilter ergebnis) {
    ergebnis_ = ergebnis;
    ergebnisbedingung_ = bedingung(ergebnis);
    schalteEin(ergebnis != Ergebnisfilter::Alle);
}

void Filterwahl::wähle(Rassenfilter rasse) {
    rasse_ = rasse;
    rassenbedingung_ = bedingung(rasse);
    schalteEin(rasse != Rassenfilter::Alle);
}

void Filterwahl::wähle(Geschlechtsfilter geschlecht) {
    geschlecht_ = geschlecht;
    geschlechtsbedingung_ = bedingung(geschlecht);
    schalteEin(geschlecht != Geschlechtsfilter::Alle);
}

void Filterwahl::wähle(Sortierung sortierung) {
    sortierung_ = sortierung;
    ordnung_ = ordnung(sortierung);
}

void Filterwahl::wähleAlle() {
    wähle(Ergebnisfilter::Alle);
    wähle(Rassenfilter::Alle);
    wähle(Geschlechtsfilter::Alle);
}

QString Filterwahl::datenquelle() const {
    if (!filtert_) {
        return u"SELECT * FROM Ergebnisse "_s + ordnung_;
    }
    return u"SELECT * FROM Ergebnisse WHERE ("_s + rassenbedingung_ + u") AND ("_s +
           ergebnisbedingung_ + u") AND ("_s + geschlechtsbedingung_ + u") "_s + ordnung_;
}

} // namespace tarvel
