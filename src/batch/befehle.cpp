#include "batch/aufrufleser.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr int höchsteAuflösung = 100'000;
constexpr int höchsterZoom = 4;

bool gleicheDatei(const QString& a, const QString& b) {
    const QFileInfo infoA(a);
    const QFileInfo infoB(b);
    return infoA.absoluteFilePath() == infoB.absoluteFilePath() ||
           (infoA.exists() && infoA.canonicalFilePath() == infoB.canonicalFilePath());
}

void prüfeZiel(const QString& ziel, const QString& datenbank) {
    if (!ziel.isEmpty() && ziel != u"-" && gleicheDatei(ziel, datenbank)) {
        throw Aufruffehler{u"The output would replace the database '%1'."_s.arg(datenbank)};
    }
}

Aufrufleser auswertungsleser() {
    Aufrufleser leser(
        {u"evaluate"_s, u"FILE... [options]"_s,
         u"Computes cubital index, hantel index and discoidal shift of wings whose points stand\n"
         "in CSV or TPS files, and judges each file as the sample of one colony. The file '-' is\n"
         "the standard input."_s,
         u"tarvel-batch evaluate --dpi 2400 --race Carnica points.csv"_s});
    leser.option(u"messart"_s,
                 u"Kind of examination: 0 cubital index alone, 1 all measurements (default), 2 "
                 "correlation."_s,
                 u"kind"_s);
    leser.option(u"dpi"_s,
                 u"Resolution of the scans (default: what the file names, by column dpi or "
                 "SCALE= in millimetres, else that of the settings, else 1200)."_s,
                 u"n"_s);
    leser.option(
        u"zoom"_s,
        u"Zoom that the points were measured at, 1 (default) to 4. Points of a file with a "
        "column zoom are pixels of the scan."_s,
        u"n"_s);
    leser.option(u"caste"_s, u"workers (default) or drones."_s, u"caste"_s);
    leser.optionRasse();
    leser.option(u"standard"_s,
                 u"File with the standard of a race, in place of that of the settings."_s,
                 u"file"_s);
    leser.optionIni();
    leser.option(u"format"_s, u"text (default), csv or json."_s, u"format"_s);
    return leser;
}

Auswertungsbefehl auswertung(const Aufrufleser& leser) {
    return {.dateien = leser.dateien(),
            .messart = leser.auswahl(u"messart"_s, Messart::AlleMessungen,
                                     {{"0", Messart::NurCubitalindex},
                                      {"1", Messart::AlleMessungen},
                                      {"2", Messart::Korrelation}}),
            .dpi = leser.zahl(u"dpi"_s, höchsteAuflösung),
            .zoom = static_cast<qint16>(leser.zahl(u"zoom"_s, höchsterZoom).value_or(1)),
            .tiere = leser.auswahl(
                u"caste"_s, Geschlecht::Arbeiterinnen,
                {{"workers", Geschlecht::Arbeiterinnen}, {"drones", Geschlecht::Drohnen}}),
            .rasse = leser.wert(u"race"_s),
            .standard = leser.wert(u"standard"_s),
            .ini = leser.wert(u"ini"_s),
            .format = leser.auswahl(u"format"_s, Ausgabeformat::Text,
                                    {{"text", Ausgabeformat::Text},
                                     {"csv", Ausgabeformat::Csv},
                                     {"json", Ausgabeformat::Json}})};
}

Aufrufleser ausfuhrleser() {
    Aufrufleser leser({u"export"_s, u"DATABASE [options]"_s,
                       u"Writes the examinations of a database as CSV, a row an examination."_s,
                       u"tarvel-batch export --wings --out wings.csv results.tdb"_s});
    leser.option(u"wings"_s, u"A row a wing, with the indices in full precision."_s);
    leser.option(u"tps"_s, u"The measured points of all wings as TPS."_s);
    leser.option(u"tables"_s,
                 u"Tables for research: a row an examination, wing, point and body mark, with a "
                 u"dictionary; CSV files in a folder, or a new SQLite file when the name ends with "
                 u".sqlite."_s,
                 u"folder|file"_s);
    leser.option(u"out"_s, u"File to write instead of the standard output (-)."_s, u"file"_s);
    return leser;
}

Ausfuhrbefehl ausfuhr(const Aufrufleser& leser) {
    const bool wings = leser.gesetzt(u"wings"_s);
    const bool tps = leser.gesetzt(u"tps"_s);
    if (wings && tps) {
        throw Aufruffehler{u"'--wings' and '--tps' exclude each other."_s};
    }
    const bool tabellen = leser.gesetzt(u"tables"_s);
    if (tabellen && (wings || tps || leser.gesetzt(u"out"_s))) {
        throw Aufruffehler{u"'--tables' stands alone."_s};
    }
    Ausfuhrbefehl befehl{.datenbank = leser.genau(1).constFirst(),
                         .art = wings ? Ausfuhrart::Flügel
                                : tps ? Ausfuhrart::Tps
                                      : Ausfuhrart::Untersuchungen,
                         .ziel = leser.wert(u"out"_s),
                         .tabellen = leser.wert(u"tables"_s)};
    prüfeZiel(befehl.ziel, befehl.datenbank);
    prüfeZiel(befehl.tabellen, befehl.datenbank);
    if (tabellen && befehl.tabellen.isEmpty()) {
        throw Aufruffehler{u"'--tables' needs a folder or a file."_s};
    }
    return befehl;
}

Aufrufleser protokollleser() {
    Aufrufleser leser(
        {u"report"_s, u"DATABASE [NUMBER...] --pdf FILE | --each FOLDER [options]"_s,
         u"Writes the reports of examinations as PDF. Several in one file stand behind a\n"
         "summary of them."_s,
         u"tarvel-batch report --language de --pdf 007.pdf results.tdb 0072026"_s});
    leser.option(u"pdf"_s, u"File to write; - for the standard output."_s, u"file"_s);
    leser.option(u"each"_s, u"Folder that gets a file for each, NUMBER.pdf."_s, u"folder"_s);
    leser.option(u"all"_s, u"All examinations of the database."_s);
    leser.optionIni();
    return leser;
}

Protokollbefehl protokoll(const Aufrufleser& leser) {
    QStringList argumente = leser.dateien();
    const bool alle = leser.gesetzt(u"all"_s);
    const bool einzeln = leser.gesetzt(u"each"_s);
    Protokollbefehl befehl{.datenbank = argumente.takeFirst(),
                           .nummern = argumente,
                           .pdf = einzeln ? QString() : leser.nötig(u"pdf"_s),
                           .ordner = leser.wert(u"each"_s),
                           .ini = leser.wert(u"ini"_s)};
    if (argumente.isEmpty() != alle) {
        throw Aufruffehler{u"Name the examinations or give --all, not both."_s};
    }
    if (einzeln && leser.gesetzt(u"pdf"_s)) {
        throw Aufruffehler{u"Give --pdf or --each, not both."_s};
    }
    if (!einzeln) {
        prüfeZiel(befehl.pdf, befehl.datenbank);
    }
    return befehl;
}

Aufrufleser einfuhrleser() {
    Aufrufleser leser(
        {u"import-bee"_s, u"FILE... --into DATABASE [options]"_s,
         u"Stores measurement files (*.Bee) as examinations of a database, which is made\n"
         "if there is none. The number comes from the file; a file without one gets the\n"
         "next automatic number. An examination that exists is never replaced."_s,
         u"tarvel-batch import-bee --into results.tdb old/*.Bee"_s});
    leser.option(u"into"_s, u"Database that takes the examinations."_s, u"database"_s);
    leser.option(u"partial"_s, u"Take what is readable of a file that has faults."_s);
    leser.optionRasse();
    leser.optionIni();
    return leser;
}

Einfuhrbefehl einfuhr(const Aufrufleser& leser) {
    return {.dateien = leser.dateien(),
            .datenbank = leser.nötig(u"into"_s),
            .rasse = leser.wert(u"race"_s),
            .teilweise = leser.gesetzt(u"partial"_s),
            .ini = leser.wert(u"ini"_s)};
}

Aufrufleser zusammenführungsleser() {
    Aufrufleser leser(
        {u"merge"_s, u"DATABASE OTHER... [options]"_s,
         u"Brings the examinations of other databases into one. New ones come in as they\n"
         "stand; one whose number another examination has stays out unless an option says\n"
         "what becomes of it. What is replaced goes into the bin of the database. Doing it\n"
         "again changes nothing. The others are only read: results files, tables (CSV) with\n"
         "the names of their columns, and Jet databases where mdb-export is installed."_s,
         u"tarvel-batch merge --keep-both association.tdb anna.tdb paul.tdb"_s});
    leser.option(u"keep-mine"_s, u"Conflicting ones stay out."_s);
    leser.option(u"take-theirs"_s, u"Conflicting ones take the place of those in DATABASE."_s);
    leser.option(u"keep-both"_s, u"Conflicting ones come in under a new number."_s);
    leser.option(u"dry-run"_s, u"Only list what is new and what is conflicting."_s);
    leser.option(u"day-first"_s, u"Dates such as 03/12/15 of a table begin with the day."_s);
    leser.option(u"month-first"_s, u"They begin with the month."_s);
    leser.optionIni();
    return leser;
}

Zusammenführungsbefehl zusammenführung(const Aufrufleser& leser) {
    QStringList dateien = leser.dateien();
    Zusammenführungsbefehl befehl{.datenbank = dateien.takeFirst(),
                                  .andere = dateien,
                                  .beiVerschiedenen = {},
                                  .nurZeigen = leser.gesetzt(u"dry-run"_s),
                                  .ini = leser.wert(u"ini"_s)};
    if (leser.gesetzt(u"day-first"_s) && leser.gesetzt(u"month-first"_s)) {
        throw Aufruffehler{u"'--day-first' and '--month-first' exclude each other."_s};
    }
    if (leser.gesetzt(u"day-first"_s) || leser.gesetzt(u"month-first"_s)) {
        befehl.folge =
            leser.gesetzt(u"day-first"_s) ? Tagesfolge::TagZuerst : Tagesfolge::MonatZuerst;
    }
    if (dateien.isEmpty()) {
        throw Aufruffehler{u"'merge' needs a database and at least one other."_s};
    }
    const std::pair<QString, Entscheidung> wahl[] = {{u"keep-mine"_s, Entscheidung::Lassen},
                                                     {u"take-theirs"_s, Entscheidung::Nehmen},
                                                     {u"keep-both"_s, Entscheidung::Beide}};
    for (const auto& [name, entscheidung] : wahl) {
        if (leser.gesetzt(name) && befehl.beiVerschiedenen) {
            throw Aufruffehler{
                u"'--keep-mine', '--take-theirs' and '--keep-both' exclude each other."_s};
        }
        if (leser.gesetzt(name)) {
            befehl.beiVerschiedenen = entscheidung;
        }
    }
    return befehl;
}

Aufrufleser übersichtsleser() {
    Aufrufleser leser(
        {u"overview"_s, u"DATABASE [NUMBER...] [options]"_s,
         u"Writes the examinations of a database side by side: of each index the number of\n"
         "wings, mean, standard deviation and the shares below and above the boundary\n"
         "line. With --by a row an index and season: the mean of the colonies, its 95 %\n"
         "interval between colonies, and how many of the judged ones conform. Workers and\n"
         "drones never mix, nor discoidal shifts of different resolution."_s,
         u"tarvel-batch overview --race Carnica --by breeder --chart years.pdf results.tdb"_s});
    leser.option(u"caste"_s, u"workers (default) or drones."_s, u"caste"_s);
    leser.option(u"race"_s, u"Only this race."_s, u"name"_s);
    leser.option(u"breeder"_s, u"Only this breeder."_s, u"name"_s);
    leser.option(u"owner"_s, u"Only this owner."_s, u"name"_s);
    leser.option(u"mating"_s, u"Only this mating."_s, u"name"_s);
    leser.option(u"queen"_s, u"Only this queen number."_s, u"number"_s);
    leser.option(u"season"_s, u"Only examinations of this year."_s, u"year"_s);
    leser.option(u"dpi"_s, u"Only this resolution."_s, u"n"_s);
    leser.option(u"by"_s, u"Seasons of each breeder, mating or queen."_s, u"field"_s);
    leser.option(u"format"_s, u"csv (default) or json."_s, u"format"_s);
    leser.option(u"out"_s, u"File to write instead of the standard output (-)."_s, u"file"_s);
    leser.option(u"chart"_s, u"File of a picture besides: *.png, *.svg or *.pdf."_s, u"file"_s);
    leser.option(
        u"view"_s,
        u"What the picture shows: spread (default), table, histograms of up to six NUMBERs, "
        "years (default with --by) of all that was chosen, comparison of two NUMBERs, which "
        "the table then has, too."_s,
        u"view"_s);
    leser.option(u"index"_s, u"Index of the histograms: ci (default), hi or dv."_s, u"index"_s);
    leser.optionIni();
    return leser;
}

void prüfeBildname(const QString& datei) {
    const QStringList endungen{u".png"_s, u".svg"_s, u".pdf"_s};
    if (std::none_of(endungen.begin(), endungen.end(), [&datei](const QString& endung) {
            return datei.endsWith(endung, Qt::CaseInsensitive);
        })) {
        throw Aufruffehler{u"'--chart' takes a file *.png, *.svg or *.pdf, not '%1'."_s.arg(datei)};
    }
}

Übersichtsbefehl übersichtsbefehl(const Aufrufleser& leser) {
    using enum Übersichtsansicht;
    QStringList argumente = leser.dateien();
    Übersichtsbefehl befehl;
    befehl.datenbank = argumente.takeFirst();
    befehl.nummern = argumente;
    befehl.filter.tiere =
        leser.auswahl(u"caste"_s, Geschlecht::Arbeiterinnen,
                      {{"workers", Geschlecht::Arbeiterinnen}, {"drones", Geschlecht::Drohnen}});
    for (const auto& [option, feld] :
         {std::pair(u"race"_s, Merkmalsfeld::Rasse), std::pair(u"breeder"_s, Merkmalsfeld::Züchter),
          std::pair(u"owner"_s, Merkmalsfeld::Besitzer),
          std::pair(u"mating"_s, Merkmalsfeld::Begattung),
          std::pair(u"queen"_s, Merkmalsfeld::Königin)}) {
        befehl.filter[feld] = leser.wert(option);
    }
    constexpr int letztesJahr = 9999;
    befehl.filter.saison = leser.zahl(u"season"_s, letztesJahr);
    befehl.filter.dpi = leser.zahl(u"dpi"_s, höchsteAuflösung);
    befehl.nach = leser.auswahl<std::optional<Merkmalsfeld>>(u"by"_s, std::nullopt,
                                                             {{"breeder", Merkmalsfeld::Züchter},
                                                              {"mating", Merkmalsfeld::Begattung},
                                                              {"queen", Merkmalsfeld::Königin}});
    befehl.format = leser.auswahl(u"format"_s, Ausgabeformat::Csv,
                                  {{"csv", Ausgabeformat::Csv}, {"json", Ausgabeformat::Json}});
    befehl.ansicht = leser.auswahl(u"view"_s, befehl.nach ? Jahre : Kreuze,
                                   {{"spread", Kreuze},
                                    {"table", Tabelle},
                                    {"histograms", Histogramme},
                                    {"years", Jahre},
                                    {"comparison", Vergleich}});
    befehl.index = leser.auswahl(u"index"_s, Größe::CI,
                                 {{"ci", Größe::CI}, {"hi", Größe::HI}, {"dv", Größe::DV}});
    befehl.ziel = leser.wert(u"out"_s);
    befehl.bild = leser.wert(u"chart"_s);
    befehl.ini = leser.wert(u"ini"_s);
    prüfeZiel(befehl.ziel, befehl.datenbank);
    if (!befehl.bild.isEmpty()) {
        prüfeBildname(befehl.bild);
        prüfeZiel(befehl.bild, befehl.datenbank);
        if (befehl.bild == befehl.ziel) {
            throw Aufruffehler{u"'--out' and '--chart' name the same file."_s};
        }
    }
    const qsizetype zahl = befehl.nummern.size();
    if (befehl.ansicht == Vergleich && (zahl != 2 || befehl.nach)) {
        throw Aufruffehler{u"A comparison needs two examinations, and no '--by'."_s};
    }
    if (befehl.ansicht == Histogramme && (zahl < 1 || zahl > 6)) {
        throw Aufruffehler{u"Histograms need one to six examinations."_s};
    }
    return befehl;
}

Aufrufleser bildmessleser() {
    Aufrufleser leser(
        {u"measure"_s, u"SHEET... [options]"_s,
         u"Finds the wings on scans and proposes their points: a row a wing, with its place,\n"
         "the points in pixels of the picture, the error to expect of each in pixels at\n"
         "2400 dpi, and the indices. Nobody has checked them then: look through the pictures\n"
         "of --overlay. Doubtful wings are listed on the standard error. All pages of a\n"
         "TIFF are measured."_s,
         u"tarvel-batch measure --dpi 2400 --overlay check --out wings.csv scans/*.png"_s});
    leser.option(u"dpi"_s,
                 u"Resolution of the scans, 300 or more (default: what each picture says)."_s,
                 u"n"_s);
    leser.option(u"messart"_s,
                 u"Kind of examination: 0 cubital index alone, 1 all measurements (default), 2 "
                 "correlation."_s,
                 u"kind"_s);
    leser.option(u"format"_s, u"csv (default), tps or json."_s, u"format"_s);
    leser.option(u"out"_s, u"File to write instead of the standard output (-)."_s, u"file"_s);
    leser.option(u"overlay"_s,
                 u"Folder for pictures to look through, a PNG a sheet, with outlines, points and "
                 "numbers."_s,
                 u"folder"_s);
    leser.option(u"min-score"_s,
                 u"Wings that are less like a wing than this, 0 to 1, are left away (0.7)."_s,
                 u"score"_s);
    leser.option(u"max-error"_s,
                 u"Wings with a point whose error to expect is larger are listed (2)."_s,
                 u"pixels"_s);
    leser.kurzoption(u"j"_s, u"jobs"_s,
                     u"Pictures at once; the output does not depend on it (1)."_s, u"n"_s);
    leser.option(u"model"_s, u"File with another model to find wings with."_s, u"file"_s);
    leser.option(u"into"_s,
                 u"Database that gets an examination a picture, marked as not checked by a "
                 "person; only with --unchecked."_s,
                 u"database"_s);
    leser.option(u"unchecked"_s, u"You know that nobody has checked what goes into --into."_s);
    leser.optionRasse();
    leser.optionIni();
    return leser;
}

Bildmessbefehl bildmessung(const Aufrufleser& leser) {
    constexpr int geringsteAuflösung = 300;
    constexpr int meisteZugleich = 64;
    constexpr double höchsterFehler = 1000;
    Bildmessbefehl befehl{
        .bilder = leser.argumente(),
        .dpi = leser.zahl(u"dpi"_s, höchsteAuflösung),
        .messart = leser.auswahl(u"messart"_s, Messart::AlleMessungen,
                                 {{"0", Messart::NurCubitalindex},
                                  {"1", Messart::AlleMessungen},
                                  {"2", Messart::Korrelation}}),
        .format = leser.auswahl(
            u"format"_s, Messformat::Csv,
            {{"csv", Messformat::Csv}, {"tps", Messformat::Tps}, {"json", Messformat::Json}}),
        .ziel = leser.wert(u"out"_s),
        .zeichnungen = leser.wert(u"overlay"_s),
        .mindestgüte = leser.bruchzahl(u"min-score"_s, 0.7, 1),
        .höchsterFehler = leser.bruchzahl(u"max-error"_s, 2, höchsterFehler),
        .zugleich = leser.zahl(u"jobs"_s, meisteZugleich).value_or(1),
        .modell = leser.wert(u"model"_s),
        .datenbank = leser.wert(u"into"_s),
        .rasse = leser.wert(u"race"_s),
        .ini = leser.wert(u"ini"_s)};
    if (befehl.bilder.isEmpty()) {
        throw Aufruffehler{u"'measure' needs at least one picture."_s};
    }
    if (befehl.bilder.contains(u"-"_s)) {
        throw Aufruffehler{u"'measure' reads files, not the standard input."_s};
    }
    if (befehl.dpi.value_or(geringsteAuflösung) < geringsteAuflösung) {
        throw Aufruffehler{
            u"'--dpi' takes a resolution from 300 on, not '%1'."_s.arg(leser.wert(u"dpi"_s))};
    }
    if (befehl.datenbank.isEmpty() == leser.gesetzt(u"unchecked"_s)) {
        throw Aufruffehler{u"'--into' and '--unchecked' go together only."_s};
    }
    if (befehl.datenbank.isEmpty() && leser.gesetzt(u"race"_s)) {
        throw Aufruffehler{u"'--race' needs '--into'."_s};
    }
    QStringList gelesene = befehl.bilder;
    if (!befehl.modell.isEmpty()) {
        gelesene << befehl.modell;
    }
    for (const QString& datei : gelesene) {
        for (const QString& ziel : {befehl.ziel, befehl.datenbank}) {
            if (!ziel.isEmpty() && ziel != u"-" && gleicheDatei(ziel, datei)) {
                throw Aufruffehler{u"The output would replace '%1', which is read."_s.arg(datei)};
            }
        }
    }
    if (!befehl.datenbank.isEmpty()) {
        prüfeZiel(befehl.ziel, befehl.datenbank);
    }
    return befehl;
}

template <typename Befehl>
Aufruf lies(Aufrufleser leser, Befehl (*befehl)(const Aufrufleser&), const QStringList& argumente) {
    leser.lies(argumente);
    if (leser.gesetzt(u"help"_s)) {
        return {.befehl = Auskunft{leser.hilfe()}};
    }
    return {.sprache = leser.sprache(), .befehl = befehl(leser)};
}

const QString& übersicht() {
    static const QString text =
        u"Usage: tarvel-batch COMMAND [options]\n\n"
        "Wing morphometrics for bee breeders, without windows.\n\n"
        "Commands:\n"
        "  evaluate    indices and judgement of coordinate files (CSV, TPS)\n"
        "  export      a database as CSV or TPS\n"
        "  report      the report of an examination as PDF\n"
        "  import-bee  measurement files (*.Bee) into a database\n"
        "  merge       other databases into one\n"
        "  overview    the examinations of a database side by side\n"
        "  measure     wings found on scans, with proposed points\n\n"
        "'tarvel-batch COMMAND --help' tells more.\n\n"
        "Options:\n"
        "  -h, --help     Show this help.\n"
        "  -v, --version  Show the version.\n\n"
        "Examples:\n"
        "  tarvel-batch evaluate --dpi 2400 --race Carnica points.csv\n"
        "  tarvel-batch export --wings --out wings.csv results.tdb\n"
        "  tarvel-batch report --language de --pdf 007.pdf results.tdb 0072026\n"
        "  tarvel-batch import-bee --into results.tdb old/*.Bee\n"
        "  tarvel-batch merge --keep-both association.tdb anna.tdb paul.tdb\n"
        "  tarvel-batch overview --race Carnica --by breeder --chart years.pdf results.tdb\n"
        "  tarvel-batch measure --dpi 2400 --overlay check --out wings.csv scans/*.png\n"_s;
    return text;
}

Aufruf lies(const QStringList& argumente) {
    if (argumente.size() < 2) {
        throw Aufruffehler{u"A command is missing."_s};
    }
    const QString& befehl = argumente[1];
    if (befehl == u"--help" || befehl == u"-h") {
        return {.befehl = Auskunft{übersicht()}};
    }
    if (befehl == u"--version" || befehl == u"-v") {
        return {.befehl = Auskunft{u"tarvel-batch " TARVEL_VERSION "\n"_s}};
    }
    const QStringList rest = argumente.sliced(1); // the parser takes the first for a program's name
    if (befehl == u"evaluate") {
        return lies(auswertungsleser(), auswertung, rest);
    }
    if (befehl == u"export") {
        return lies(ausfuhrleser(), ausfuhr, rest);
    }
    if (befehl == u"report") {
        return lies(protokollleser(), protokoll, rest);
    }
    if (befehl == u"import-bee") {
        return lies(einfuhrleser(), einfuhr, rest);
    }
    if (befehl == u"merge") {
        return lies(zusammenführungsleser(), zusammenführung, rest);
    }
    if (befehl == u"overview") {
        return lies(übersichtsleser(), übersichtsbefehl, rest);
    }
    if (befehl == u"measure") {
        return lies(bildmessleser(), bildmessung, rest);
    }
    throw Aufruffehler{u"There is no command '%1'."_s.arg(befehl)};
}

} // namespace

std::variant<Aufruf, Aufruffehler> leseAufruf(const QStringList& argumente) {
    try {
        return lies(argumente);
    } catch (const Aufruffehler& fehler) {
        return fehler;
    }
}

} // namespace tarvel
