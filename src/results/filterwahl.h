#pragma once

#include <QString>

namespace tarvel {

#ifndef Q_MOC_RUN // moc takes no umlauts in the names of an enumeration

/// What the browser shows of the verdicts, races and castes, and in which order. The values are the
/// places of the items in their menus.
enum class Ergebnisfilter { Alle, Ja, Nein };
enum class Rassenfilter { Alle, Carnica, Mellifera, Ligustica, Carpatica };
enum class Geschlechtsfilter { Alle, Arbeiter, Drohnen };
enum class Sortierung { Datum, Nummer, Königin, Züchter, Besitzer };

#endif

/// What of a statement lets through the rows of that choice.
[[nodiscard]] QString bedingung(Ergebnisfilter ergebnis);
[[nodiscard]] QString bedingung(Geschlechtsfilter geschlecht);

/// The choice in the menus of the browser and the record source that follows from it.
///
/// The race filter knows the four races by their fixed words, so rows of a fourth race under a name
/// of the user's own are shown only while filtering is off; the same holds for rows without a
/// verdict.
class Filterwahl {
public:
    /// Everything by date, not filtered.
    Filterwahl();

    void wähle(Ergebnisfilter ergebnis);
    void wähle(Rassenfilter rasse);
    void wähle(Geschlechtsfilter geschlecht);
    void wähle(Sortierung sortierung);
    /// Switches filtering on or off; the conditions stay chosen.
    void filtere(bool filtern) { filtert_ = filtern; }
    /// Puts every condition back to "all".
    void wähleAlle();

    [[nodiscard]] Ergebnisfilter ergebnis() const { return ergebnis_; }
    [[nodiscard]] Rassenfilter rasse() const { return rasse_; }
    [[nodiscard]] Geschlechtsfilter geschlecht() const { return geschlecht_; }
    [[nodiscard]] Sortierung sortierung() const { return sortierung_; }
    [[nodiscard]] bool filtert() const { return filtert_; }

    /// The statement whose rows are shown.
    [[nodiscard]] QString datenquelle() const;

private:
    /// A condition that narrows is wanted at once; "all" narrows nothing and leaves filtering as it
    /// is.
    void schalteEin(bool engtEin) { filtert_ = filtert_ || engtEin; }

    Ergebnisfilter ergebnis_ = Ergebnisfilter::Alle;
    Rassenfilter rasse_ = Rassenfilter::Alle;
    Geschlechtsfilter geschlecht_ = Geschlechtsfilter::Alle;
    Sortierung sortierung_ = Sortierung::Datum;
    bool filtert_ = false;
    QString ergebnisbedingung_;
    QString rassenbedingung_;
    QString geschlechtsbedingung_;
    QString ordnung_;
};

} // namespace tarvel
