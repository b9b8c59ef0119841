#pragma once

#include "evaluation/rassestandard.h"
#include "lang/texte.h"
#include "measure/leseproblem.h"

#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <optional>
#include <variant>
#include <vector>

namespace tarvel {

// A standard that travels is a text of lines, in UTF-8 as a file. An examination keeps the limits
// that it was judged by as the same text.
//
//     Tarvel-Rassestandard 1
//     [Standard]
//     Rasse=Carnica
//     Name=Landesverband Nord
//     Version=2
//     Datum=2026-03-01
//     Marke=5f3a90c1
//     [Merkmale Arbeiterinnen]
//     Filzbinden F_=100%
//     …
//
// The number is that of the layout; another one is not read. Sections and names of the values are
// those of the settings file, without the mark of the race. Values stand as a person types them,
// with a decimal point. All of them have to be there; of the section Standard only the race. Empty
// lines, and those that begin with ';', mean nothing.

/// A standard with the race that it is for.
struct Standarddatei {
    QString Rasse;
    Rassestandard standard;

    bool operator==(const Standarddatei&) const = default;
};

enum class Standardgrund {
    KeinText,      ///< see Standardfehler::problem
    KeinStandard,  ///< another kind of file
    AndererAufbau, ///< text: number of the layout
    Unerwartet,    ///< text: line that does not belong where it stands
    WertFehlt,
    WertDoppelt,
    WertFalsch, ///< text: what the value cannot be
    Bereich,    ///< a range of classes that the race page refuses
};

/// Why a standard was not read.
struct Standardfehler {
    Standardgrund grund = Standardgrund::KeinStandard;
    int zeile = 0;                       ///< from 1; 0 where none is to blame
    const Standardzeile* wert = nullptr; ///< the value, where it is one of the table
    QString text = {};                   ///< what the reason quotes
    std::optional<Bereichsmangel> bereich = {};
    std::optional<Leseproblem> problem = {};
};

[[nodiscard]] QString standardtext(const Standarddatei& datei);
/// @p text as standardtext() wrote it, or as a person changed it. Ranges are read whatever classes
/// they hold; see standardmangel().
[[nodiscard]] std::variant<Standarddatei, Standardfehler> liesStandard(QStringView text);
/// The same for the bytes of a file, with what the race page would refuse.
[[nodiscard]] std::variant<Standarddatei, Standardfehler> liesStandarddatei(QByteArrayView bytes);
/// The first range of classes that the race page refuses.
[[nodiscard]] std::optional<Standardfehler> standardmangel(const Rassestandard& standard);

/// The reason as a sentence, with its line.
[[nodiscard]] QString fehlertext(const Standardfehler& fehler, const Texte& texte);
[[nodiscard]] QString bereichstext(Bereichsmangel mangel, const Texte& texte);

/// A short mark of all values, that tells whether they are those that got a name.
[[nodiscard]] QString standardmarke(const Rassestandard& standard);
/// "Landesverband Nord, Fassung 2", and whether its values were changed since; the name of the race
/// for a standard without a name.
[[nodiscard]] QString standardname(const Rassestandard& standard, const QString& rasse,
                                   const Texte& texte);

/// Name of a value for people: "Arbeiterinnen: Panzerzeichen E".
[[nodiscard]] QString wertname(const Standardzeile& zeile, const Texte& texte);
/// The values that mean something else in two standards.
[[nodiscard]] std::vector<const Standardzeile*> abweichungen(const Rassestandard& alt,
                                                             const Rassestandard& neu);
/// Those that a verdict on @p tiere rests on.
[[nodiscard]] std::vector<const Standardzeile*>
urteilsabweichungen(const Rassestandard& alt, const Rassestandard& neu, Geschlecht tiere);
/// "Arbeiterinnen: Panzerzeichen E: 30% → 20%", without @p mitTieren "Panzerzeichen E: 30% → 20%".
[[nodiscard]] QString abweichungstext(const Standardzeile& zeile, const Rassestandard& alt,
                                      const Rassestandard& neu, const Texte& texte,
                                      const Zahlenformat& format, bool mitTieren = true);

/// What a stored verdict was given by.
struct Urteilsbeleg {
    QString standard;         ///< its name, as standardname() gives it
    QStringList abweichungen; ///< limits that are others today: "Panzerzeichen E: 30% → 20%"
};
/// @p grenzen as the examination keeps them; empty when they are not known.
[[nodiscard]] std::optional<Urteilsbeleg> urteilsbeleg(QStringView grenzen,
                                                       const Rassestandard& jetzt, Geschlecht tiere,
                                                       const Texte& texte,
                                                       const Zahlenformat& format);

/// What is to be said of a stored verdict beside that of today, which is @p urteil: that it is
/// another one, by which standard it was given, and which limits are others now.
struct Urteilsvergleich {
    QString text;
    bool anders = false; ///< verdict or limits
};
[[nodiscard]] Urteilsvergleich urteilsvergleich(bool gespeichert, std::optional<bool> urteil,
                                                const std::optional<Urteilsbeleg>& beleg,
                                                const Texte& texte);

} // namespace tarvel
