#pragma once

#include "measure/messdatei.h"
#include "results/einlesen.h"
#include "results/ergebnistabelle.h"
#include "results/sitzungsprobe.h"
#include "results/untersuchungssatz.h"

#include <QString>

// What the program that is killed writes in its step of a number, and what the test therefore
// expects to find: the work of the last step that was finished or of the one that was begun.

namespace tarvel::fassung {

/// Its status for the first of the reasons why a results file was not written.
constexpr int ErsterGrund = 64;

/// A row of which every column tells its step, long enough to fill many pages of the file.
inline Ergebnissatz satz(int schritt) {
    const QString zahl = QString::number(schritt);
    Ergebnissatz satz;
    for (const Textspalte& spalte : textspalten()) {
        satz.*spalte.wert = zahl;
    }
    satz.U_NR = QStringLiteral("A");
    satz.DATUM = QDate(2025, 1, 1).addDays(schritt % 365);
    const QString lang = (zahl + u';').repeated(1 + schritt % 3 * 4000);
    satz.CI = lang;
    satz.HI_DV = lang;
    satz.MERKMAL = lang;
    satz.Grafik = {lang, lang, lang, lang};
    return satz;
}

inline Sprache sprache(int schritt) {
    return static_cast<Sprache>(schritt % anzahlSprachen);
}

/// The row that a measurement file of that step becomes.
inline Ergebnissatz eingelesen(int schritt) {
    QByteArray datei = "A1\n2025\n017\n07\n003\nNR\nName\n\n\nOwner\nHive\nMating\n\n\n";
    datei.replace("NR", QByteArray::number(schritt));
    for (int flügel = 1; flügel <= 1 + schritt % 50; ++flügel) {
        datei += QByteArray::number(flügel).rightJustified(3, '0') + " 2.31 12.3\n";
    }
    datei += "EndeCI\n\nEndeHI\n";
    Texte texte{QString()};
    texte.SpracheDeutsch();
    const EingeleseneUntersuchung gelesen = untersuchungAusMessdatei(liesMessdatei(datei), 0, {});
    return satzAus(gelesen.untersuchung, false, 1200, QDate(2025, 5, 17),
                   {texte, {}, {QStringLiteral("Carnica")}, false});
}

/// What is written out: long enough for several calls of the system.
inline QByteArray ausfuhr(int schritt) {
    return (QByteArray::number(schritt) + '\n').repeated(20'000);
}

inline constexpr int Schlüsselzahl = 40;
inline QByteArray schlüssel(int nummer) {
    return "Schlüssel" + QByteArray::number(nummer);
}

/// Every seventh step begins an examination anew, which takes the file away first.
inline bool beginntNeu(int schritt) {
    return schritt % 7 == 0;
}
inline Sitzungsstand sitzung(int schritt) {
    Sitzungsstand stand = probesitzung(schritt / 3 % 40, schritt % 8);
    stand.angaben.Volk = QString::number(schritt / 3);
    stand.ansicht = QString::number(schritt);
    return stand;
}

} // namespace tarvel::fassung
