#pragma once

#include "evaluation/geschlecht.h"
#include "platform/zahlen.h"

#include <QString>
#include <QStringView>

#include <array>
#include <optional>
#include <span>

namespace tarvel {

class Benutzerspeicher;
class Einstellungen;
class Profil;

/// A decimal that the settings file keeps as a whole number of 1 / Teile.
template <int Teile>
struct Teilwert {
    qint16 gespeichert = 0;

    /// The decimal itself: 2.5 for 25 tenths.
    [[nodiscard]] double wert() const { return static_cast<double>(gespeichert) / Teile; }

    bool operator==(const Teilwert&) const = default;
};
using Zehntel = Teilwert<10>;
using Hundertstel = Teilwert<100>;
using Tausendstel = Teilwert<1000>;

/// Classes from the lowest to the highest of a range, both included; empty when bis < von.
struct Klassenbereich {
    int von = 0;
    int bis = 0;

    [[nodiscard]] bool enthält(int klasse) const { return von <= klasse && klasse <= bis; }

    bool operator==(const Klassenbereich&) const = default;
};

/// What the mean cubital index of a sample has to be.
struct Mittelgrenze {
    qint16 CIMittel = 0; ///< state of the switch: 0 for no limit
    Zehntel Mittelwert;  ///< mean cubital index of the race
    qint16 Richtung = 0; ///< 0: at least the mean of the race, 1: at most

    [[nodiscard]] bool gilt() const { return CIMittel != 0; }
    [[nodiscard]] bool unter() const { return Richtung == 1; }

    bool operator==(const Mittelgrenze&) const = default;
};

/// Standard of the workers. Shares are texts such as "30%": the highest allowed ones. Ranges are
/// texts such as "01-15".
struct Arbeiterinnenstandard {
    std::array<QString, 3> Filz;      ///< F, ff, f
    std::array<QString, 3> Haarlänge; ///< k, m, l
    std::array<QString, 4> Panzer;    ///< O, E, 1R, 2R
    Mittelgrenze mittel;
    std::array<QString, 3> Klasse; ///< ranges "Klasse 0" to "Klasse 2"; the last: secondary peak
    std::array<QString, 2> max;    ///< allowed shares of wings in the first two ranges

    bool operator==(const Arbeiterinnenstandard&) const = default;
};

/// Standard of the drones.
struct Drohnenstandard {
    std::array<QString, 4> Haarfarbe; ///< gr, br, ge, sch
    std::array<QString, 4> Panzer;    ///< O, I, 1R, 2R
    Mittelgrenze mittel;
    QString Klasse; ///< range "Klasse 3"
    QString max;    ///< allowed share of wings in it

    bool operator==(const Drohnenstandard&) const = default;
};

/// Boundary lines of the correlation chart for one caste.
struct Linienwerte {
    Hundertstel CI;
    Tausendstel HI;
    Hundertstel DV; ///< twentieths of a millimetre

    bool operator==(const Linienwerte&) const = default;
};

struct Grenzlinien {
    Linienwerte Arbeit;
    Linienwerte Drohn;
    /// As stored: -1 for the lines after Kruber, anything else for those defined here.
    qint16 Korrelation = -1;
    /// Position in the lists `cbo_DV`: 0 for wings above the lines, 1 for wings below them. Workers
    /// and drones share it.
    qint16 DVRichtung = 0;

    [[nodiscard]] bool nachKruber() const { return Korrelation == -1; }
    [[nodiscard]] bool darunter() const { return DVRichtung == 1; }
    /// The lines in force: those after Kruber are the defaults, whatever was defined here.
    [[nodiscard]] Linienwerte geltende(Geschlecht tiere) const;

    bool operator==(const Grenzlinien&) const = default;
};

/// What a standard goes by. It belongs to the values that it was given to.
struct Standardkennung {
    QString Name;
    QString Version;
    QString Datum; ///< day of the version, "2026-03-01"
    QString Marke; ///< of the values, see standardmarke()

    bool operator==(const Standardkennung&) const = default;
};

/// What bees of one race are judged by. A new one holds the defaults, the same for every race.
struct Rassestandard {
    Rassestandard();

    Arbeiterinnenstandard arbeiterinnen;
    Drohnenstandard drohnen;
    Grenzlinien linien;
    Standardkennung kennung;

    [[nodiscard]] const Mittelgrenze& mittelgrenze(Geschlecht tiere) const {
        return tiere == Geschlecht::Drohnen ? drohnen.mittel : arbeiterinnen.mittel;
    }

    /// Nobody has set anything of it yet, or all as it was.
    [[nodiscard]] bool istVorgabe() const { return *this == Rassestandard(); }

    bool operator==(const Rassestandard&) const = default;
};

/// Sections of the settings file that hold a standard.
enum class Standardgruppe { Arbeiterinnen, Drohnen, Grenzlinien };
[[nodiscard]] QStringView abschnitt(Standardgruppe gruppe);

/// How a value is kept, shown and typed.
enum class Werteart {
    Prozent,        ///< text "30%"
    Bereich,        ///< text "01-15"
    InZehnteln,     ///< whole number, shown by "#.0"
    InHundertsteln, ///< whole number, shown by "0.00"
    InTausendsteln, ///< whole number, shown by "0.000"
    Schalter,       ///< whole number: state of a check box
    Option,         ///< whole number: -1 first, else second option button
    Listenplatz,    ///< whole number: position in a list
};
/// Whether the value is a text in the struct; otherwise it is a whole number.
[[nodiscard]] constexpr bool istText(Werteart art) {
    return art == Werteart::Prozent || art == Werteart::Bereich;
}

/// One value of a standard.
struct Standardzeile {
    Standardgruppe gruppe;
    QStringView schlüssel; ///< base name of the key; the mark of the race follows it directly
    Werteart art;
    QStringView vorgabe;              ///< default as it would stand in the file
    QString& (*text)(Rassestandard&); ///< place of a text, else null
    qint16& (*zahl)(Rassestandard&);  ///< place of a whole number, else null
};

/// All values in the order in which they are loaded and saved.
[[nodiscard]] std::span<const Standardzeile> standardtabelle();

/// The row of a key, which exists.
[[nodiscard]] const Standardzeile& standardzeile(Standardgruppe gruppe, QStringView schlüssel);

/// End of the keys of race 1 to 4: "C-", "M-", "L-", "P-"; empty for any other number.
[[nodiscard]] QStringView rassenendung(int rasse);

/// These fill their part of @p standard from the settings file for race 1 to 4. A missing key gives
/// its default, an empty text keeps the one that was there, ranges come out normalised. For any
/// other race number nothing changes.
void LadenMerkmaleArbeiterinnen(Rassestandard& standard, int rasse,
                                const Einstellungen& einstellungen);
void LadenMerkmaleDrohnen(Rassestandard& standard, int rasse, const Einstellungen& einstellungen);
void LadenGrenzlinien(Rassestandard& standard, int rasse, const Einstellungen& einstellungen);
/// What the standard goes by; empty texts where it has no name.
void LadenKennung(Rassestandard& standard, int rasse, const Einstellungen& einstellungen);
/// All of them on a new standard.
[[nodiscard]] Rassestandard ladeRassestandard(int rasse, const Einstellungen& einstellungen);

/// These set their keys in @p ini, key by key in the order of the table; the caller writes the file
/// with Profil::sichern. Nothing happens for a race number other than 1 to 4.
void SpeichernKarte5Arbeiterinnen(const Rassestandard& standard, int rasse, Profil& ini);
void SpeichernKarte5Drohnen(const Rassestandard& standard, int rasse, Profil& ini);
void SpeichernKennung(const Rassestandard& standard, int rasse, Profil& ini);
/// Other programs of the same person read the boundary lines from the user's store, so the same
/// section, keys and texts go there too, under application "Index". False when that store did not
/// take them all; @p ini has them in any case.
[[nodiscard]] bool SpeichernKarte5Linien(const Rassestandard& standard, int rasse, Profil& ini,
                                         Benutzerspeicher& speicher);

/// The range a text means: the number it begins with and the number of its last two characters,
/// halves to the even number. A '-' among these two separates, so "1-5" ends at class 5. What is no
/// number, or none of 16 bits, is 0.
[[nodiscard]] Klassenbereich klassenbereich(QStringView text);
/// "01-15".
[[nodiscard]] QString klassenbereichtext(Klassenbereich bereich);
/// Why a text that was typed is no range of classes.
enum class Bereichsmangel {
    Unfertig, ///< one of the two classes is missing, or there are more
    Verkehrt, ///< the first class lies above the last
    ZuHoch,   ///< a class above HöchsteKlasse
};
inline constexpr int HöchsteKlasse = 30;
/// Judges the text as it was typed, before it is normalised. A single class is a range of its own;
/// words, which can only be pasted, count as the 0 that they are normalised to.
[[nodiscard]] std::optional<Bereichsmangel> bereichsmangel(QStringView getippt);

/// The number a percentage text begins with; 0 when there is none.
[[nodiscard]] double prozentzahl(QStringView text);

/// The whole number that the settings file keeps for a decimal typed as tenths, hundredths or
/// thousandths: the number the text begins with ('.' and ',' are both the decimal separator, 0 when
/// there is none), taken as a single, times 10, 100 or 1000, halves to the even number. @p bisher
/// when that is beyond 16 bits.
[[nodiscard]] qint16 gespeicherteZahl(Werteart art, QStringView getippt, qint16 bisher);

/// The text of a field that shows a value of the standard.
[[nodiscard]] QString anzeigetext(const Standardzeile& zeile, const Rassestandard& standard,
                                  const Zahlenformat& format);
/// Takes the text of such a field over. Texts are taken as they stand, so normalise them before.
void übernehme(const Standardzeile& zeile, Rassestandard& standard, const QString& text);

/// What a field turns its text into when it is left: "15" into "15%", "1-15" into "01-15", "1,946"
/// into "1.95" in the separator of @p format. Switches, options and lists keep theirs.
[[nodiscard]] QString normalisiert(Werteart art, const QString& text, const Zahlenformat& format);

/// Which keys a field accepts; any other is swallowed, with a beep except for Nichts.
enum class Tastenfilter {
    Ziffern,           ///< digits
    Prozent,           ///< digits and '%'
    Bereich,           ///< digits and '-'
    Dezimal,           ///< digits, '.' and ','
    DezimalVorzeichen, ///< digits, '.', ',' and '-'
    Nichts,            ///< no key at all, not even backspace
};
[[nodiscard]] Tastenfilter tastenfilter(Werteart art);
/// Whether a key's character is accepted. Backspace is, but for Nichts.
[[nodiscard]] bool erlaubt(Tastenfilter filter, QChar zeichen);

} // namespace tarvel
