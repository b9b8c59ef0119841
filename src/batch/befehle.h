#pragma once

#include "collection/kolonieauswahl.h"
#include "evaluation/geschlecht.h"
#include "lang/texte.h"
#include "measure/messpunkte.h"
#include "results/ausfuhr.h"
#include "results/datumsformen.h"
#include "results/zusammenfuehrung.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace tarvel {

/// Exit statuses of tarvel-batch.
enum class Status {
    Gut = 0,
    NichtLesbar = 1, ///< something could not be read or written
    FalscherAufruf = 2,
};

enum class Ausgabeformat { Text, Csv, Json };

/// evaluate: indices and judgement of coordinate files, a sample each.
struct Auswertungsbefehl {
    QStringList dateien; ///< at least one
    Messart messart = Messart::AlleMessungen;
    std::optional<int> dpi; ///< nullopt: that of the file, else of the settings
    qint16 zoom = 1;        ///< zoom that the points were measured at, 1 to 4
    Geschlecht tiere = Geschlecht::Arbeiterinnen;
    QString rasse;         ///< empty: race of the settings
    QString standard = {}; ///< file with a standard; empty: that of the race
    QString ini;           ///< settings file; empty: default settings
    Ausgabeformat format = Ausgabeformat::Text;

    bool operator==(const Auswertungsbefehl&) const = default;
};

/// export: a database as a table or as points.
struct Ausfuhrbefehl {
    QString datenbank;
    Ausfuhrart art = Ausfuhrart::Untersuchungen;
    QString ziel;          ///< file to write; empty: standard output
    QString tabellen = {}; ///< folder, or file *.sqlite, for the tables for research instead

    bool operator==(const Ausfuhrbefehl&) const = default;
};

/// report: examinations of a database as PDF.
struct Protokollbefehl {
    QString datenbank;
    QStringList nummern; ///< none: all of the database
    QString pdf;         ///< one file of all, with a summary when there are several; or
    QString ordner;      ///< where each gets a file of its own
    QString ini;

    bool operator==(const Protokollbefehl&) const = default;
};

/// import-bee: measurement files into a database, an examination each.
struct Einfuhrbefehl {
    QStringList dateien; ///< at least one
    QString datenbank;
    QString rasse;          ///< empty: race of the settings
    bool teilweise = false; ///< take what is readable of a file that has faults
    QString ini;

    bool operator==(const Einfuhrbefehl&) const = default;
};

/// merge: other databases into one.
struct Zusammenführungsbefehl {
    QString datenbank;
    QStringList andere; ///< at least one
    /// What becomes of rows whose number another one has; nullopt: they stay, and count as fault.
    std::optional<Entscheidung> beiVerschiedenen;
    bool nurZeigen = false;
    /// What comes first in dates of tables that do not say it.
    std::optional<Tagesfolge> folge = {};
    QString ini = {};

    bool operator==(const Zusammenführungsbefehl&) const = default;
};

/// What a picture of a database shows.
enum class Übersichtsansicht { Tabelle, Kreuze, Histogramme, Jahre, Vergleich };

/// overview: the examinations of a database side by side.
struct Übersichtsbefehl {
    QString datenbank;
    QStringList nummern; ///< examinations pointed out, or compared
    Koloniefilter filter;
    std::optional<Merkmalsfeld> nach; ///< seasons of each group in place of the examinations
    Ausgabeformat format = Ausgabeformat::Csv;
    QString ziel; ///< file of the table; empty: standard output
    QString bild; ///< file of a picture, *.png, *.svg or *.pdf; empty for none
    Übersichtsansicht ansicht = Übersichtsansicht::Kreuze;
    Größe index = Größe::CI; ///< of histograms
    QString ini;

    bool operator==(const Übersichtsbefehl&) const = default;
};

enum class Messformat { Csv, Tps, Json };

/// measure: wings found on pictures, with their proposed points.
struct Bildmessbefehl {
    QStringList bilder;     ///< at least one
    std::optional<int> dpi; ///< nullopt: what each picture says
    Messart messart = Messart::AlleMessungen;
    Messformat format = Messformat::Csv;
    QString ziel;        ///< file of the table; empty: standard output
    QString zeichnungen; ///< folder for pictures to look through; empty for none
    double mindestgüte = 0.7;
    double höchsterFehler = 2; ///< pixels at 2400 dpi
    int zugleich = 1;          ///< pictures
    QString modell;            ///< file; empty: the one of the program
    QString datenbank;         ///< gets an examination a picture; empty for none
    QString rasse;             ///< of these; empty: race of the settings
    QString ini;

    bool operator==(const Bildmessbefehl&) const = default;
};

/// A text that was asked for: help or version.
struct Auskunft {
    QString text;

    bool operator==(const Auskunft&) const = default;
};

/// What the program was called for.
struct Aufruf {
    /// Language of texts and messages.
    Sprache sprache = Sprache::Englisch;
    std::variant<Auskunft, Auswertungsbefehl, Ausfuhrbefehl, Protokollbefehl, Einfuhrbefehl,
                 Zusammenführungsbefehl, Übersichtsbefehl, Bildmessbefehl>
        befehl;
};

/// Why a call cannot be carried out. In English, as option names are.
struct Aufruffehler {
    QString text;
};

/// Reads the arguments of the program, the program's name first.
[[nodiscard]] std::variant<Aufruf, Aufruffehler> leseAufruf(const QStringList& argumente);

} // namespace tarvel
