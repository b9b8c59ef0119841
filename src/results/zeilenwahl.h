#pragma once

#include "results/filterwahl.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <functional>
#include <optional>

namespace tarvel {

/// What narrows the rows of the browser beside its menus. Each part that is empty takes all.
struct Zeilenfilter {
    QString saison;  ///< year of the date in four digits, or OhneSaison
    QString züchter; ///< without blanks around it, whatever case
    QString rasse;   ///< the same
    Geschlechtsfilter tiere = Geschlechtsfilter::Alle;
    Ergebnisfilter ergebnis = Ergebnisfilter::Alle;

    /// Stands for a date that tells no year.
    static constexpr QStringView OhneSaison = u"-";

    bool operator==(const Zeilenfilter&) const = default;
};

/// Which rows of a results file are shown, and in which order.
struct Zeilenwahl {
    QString datenquelle; ///< a "SELECT * FROM Ergebnisse …" with its conditions and order
    /// Words that all occur in a row: in a column of spalten() or the colony, whatever case. A word
    /// is a text without blanks.
    QString suchtext = {};
    /// Dates in the ISO form by the word that stands for them, such as the date as it is shown.
    std::function<QStringList(const QString& wort)> datumsworte = {};
    Zeilenfilter filter = {};
    /// A column of spalten() that takes the place of the order of datenquelle.
    std::optional<int> spalte = {};
    bool absteigend = false;

    /// Whether the order takes all rows before the first of them is known: texts are sorted as a
    /// reader expects, an umlaut with its vowel, which no index of the file does.
    [[nodiscard]] bool brauchtAlle() const;
};

/// What a text is sorted by: without case, accents and blanks around it.
[[nodiscard]] QString sortierschlüssel(const QString& text);

} // namespace tarvel
