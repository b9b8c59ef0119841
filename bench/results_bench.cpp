// results_bench make FILE ROWS: a results file with that many examinations of sixty wings.
// results_bench measure FILE [ROUNDS]: what is done with it, in turn with what the engine itself
// needs for the same. Medians in milliseconds; the file is converted between languages on the way.

#include "tabelle.h"

#include "collection/kolonieauswahl.h"
#include "evaluation/rassen.h"
#include "results/ergebnisdatei.h"
#include "results/ergebnistabelle.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <random>
#include <vector>

#ifdef __linux__
#include <sys/syscall.h>
#include <unistd.h>
#endif

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

/// Milliseconds on the wall and of this process.
struct Zeitpunkt {
    double uhr = 0;
    double rechenzeit = 0;
};

Zeitpunkt jetzt() {
    using namespace std::chrono;
    const duration<double, std::milli> uhr = steady_clock::now().time_since_epoch();
    return {uhr.count(), 1e3 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC};
}

int syncs = 0;
Zeitpunkt syncZeit;

} // namespace

#ifdef __linux__
// The engine calls these instead of the system's, so they can be counted and left out of a time.
namespace {
int gezählterSync(long aufruf, int datei) {
    const Zeitpunkt beginn = jetzt();
    const auto ergebnis = static_cast<int>(syscall(aufruf, datei));
    const Zeitpunkt ende = jetzt();
    ++syncs;
    syncZeit.uhr += ende.uhr - beginn.uhr;
    syncZeit.rechenzeit += ende.rechenzeit - beginn.rechenzeit;
    return ergebnis;
}
} // namespace
extern "C" int fsync(int datei) {
    return gezählterSync(SYS_fsync, datei);
}
extern "C" int fdatasync(int datei) {
    return gezählterSync(SYS_fdatasync, datei);
}
#endif

namespace {

constexpr int flügel = 60;
const QDate ersterTag(2005, 1, 1);

/// The long texts of an examination: what the wings of a sample give.
Ergebnissatz beispielFlügel(unsigned art) {
    std::minstd_rand zufall(art + 1);
    const auto bis = [&](unsigned ende) { return static_cast<int>(zufall() % ende); };
    Ergebnissatz s;
    for (int f = 1; f <= flügel; ++f) {
        const QString nummer = u"%1"_s.arg(f, 3, 10, QChar(u'0'));
        s.CI += u"#%1;%2;%3; "_s.arg(nummer).arg(1.5 + bis(150) / 100.0).arg(bis(200) / 10.0);
        s.HI_DV += u"#%1;%2;%3; "_s.arg(nummer).arg(0.8 + bis(30) / 100.0).arg(bis(80) / 10.0);
        for (size_t g = 0; g < 3; ++g) {
            s.Grafik[g] += u"%1/%2/%3;"_s.arg(nummer).arg(bis(9999) / 1e3).arg(bis(9999) / 1e3);
        }
        for (int p = 0; p < 8; ++p) {
            s.Grafik[3] += u"%1/%2/"_s.arg(bis(9999)).arg(bis(9999));
        }
    }
    s.Grafik[0].prepend(u"1200 dpi;"_s);
    s.MERKMAL = u"A12;"_s + QString(150, u'1');
    s.PROZENT = u"61,7;80,0;95,0;12"_s;
    return s;
}

/// A row as breeders store it, the same for the same number every time.
Ergebnissatz beispiel(int i) {
    static const auto arten = [] {
        std::vector<Ergebnissatz> liste;
        for (unsigned art = 0; art < 64; ++art) {
            liste.push_back(beispielFlügel(art));
        }
        return liste;
    }();
    std::minstd_rand zufall(static_cast<unsigned>(i) + 1);
    const auto bis = [&](unsigned ende) { return static_cast<int>(zufall() % ende); };
    Ergebnissatz s = arten[static_cast<size_t>(i) % arten.size()];
    s.DATUM = ersterTag.addDays(bis(20 * 365));
    s.U_NR = u"%1%2%3"_s.arg(i, 5, 10, QChar(u'0'))
                 .arg(i < 100'000 ? u"K"_s : QString())
                 .arg(s.DATUM.year());
    s.ZB_NR = u"%1-%2-%3"_s.arg(bis(40)).arg(bis(999)).arg(s.DATUM.year() - 1);
    s.Z_NAME = u"Züchterin %1"_s.arg(bis(3000));
    s.B_NAME = u"Besitzer %1"_s.arg(bis(8000));
    s.A_D = bis(4) == 0 ? u"Drohnen"_s : u"Arbeiter"_s;
    s.ERGEBNIS = bis(3) == 0 ? u"Nein"_s : u"Ja"_s;
    s.RASSE = QStringList{u"Carnica"_s, u"Mellifera"_s, u"Ligustica"_s, u"Buckfast"_s}[bis(4)];
    s.VATER = u"Belegstelle %1"_s.arg(bis(60));
    s.VOLK = u"Volk %1"_s.arg(bis(500));
    return s;
}

void bindeAlles(SQLite::Statement& einfügen, const Ergebnissatz& s) {
    int stelle = 0;
    for (const QString& wert :
         {s.U_NR, s.ZB_NR, s.Z_NAME, s.A_D, s.RASSE, s.B_NAME, s.ERGEBNIS,
          s.DATUM.toString(Qt::ISODate), s.VATER, s.VOLK, s.CI, s.HI_DV, s.PROZENT, s.MERKMAL,
          s.Grafik[0], s.Grafik[1], s.Grafik[2], s.Grafik[3]}) {
        einfügen.bind(++stelle, wert.toStdString());
    }
}

void mache(const QString& pfad, int zeilen) {
    QFile::remove(pfad);
    NeueDatenbank(pfad);
    SQLite::Database db(pfad.toStdString(), SQLite::OPEN_READWRITE);
    db.exec("PRAGMA synchronous = OFF; PRAGMA cache_size = -200000");
    SQLite::Transaction vorgang(db);
    entferneIndizes(db);
    SQLite::Statement einfügen(db, "INSERT INTO Ergebnisse "
                                   "VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    for (int i = 0; i < zeilen; ++i) {
        bindeAlles(einfügen, beispiel(i));
        einfügen.exec();
        einfügen.reset();
    }
    ergänzeIndizes(db);
    vorgang.commit();
}

int zeilenzahl = 0; ///< of the file that is measured

std::string beiZeilen(const std::string& was) {
    return std::to_string(zeilenzahl) + ": " + was;
}

double median(std::vector<double> werte) {
    std::sort(werte.begin(), werte.end());
    return werte[werte.size() / 2];
}

/// Milliseconds of @p arbeit.
double zeit(const std::function<void()>& arbeit) {
    const double beginn = jetzt().uhr;
    arbeit();
    return jetzt().uhr - beginn;
}

/// Both in turn; the first round only warms up. @p mal how often each does its work.
void vergleiche(const char* nummer, const std::string& was, const Ziel& ziel, int runden,
                const std::function<void()>& unsere, const std::function<void()>& grenze,
                double mal = 1) {
    std::vector<double> zeiten;
    std::vector<double> grenzzeiten;
    for (int i = 0; i <= runden; ++i) {
        const double a = zeit(unsere);
        const double b = grenze ? zeit(grenze) : 0;
        if (i > 0) {
            zeiten.push_back(a);
            grenzzeiten.push_back(b);
        }
    }
    tabellenzeile(nummer, beiZeilen(was), median(zeiten) / mal,
                  grenze ? std::optional(median(grenzzeiten) / mal) : std::nullopt, ziel, "ms");
}

/// What the engine does for one look-up: open, find, read, close.
void sucheMitGleich(const QString& pfad, const QString& nummer, const char* spalten) {
    SQLite::Database db(pfad.toStdString(), SQLite::OPEN_READONLY);
    SQLite::Statement suche(db, std::string("SELECT ") + spalten +
                                    " FROM Ergebnisse WHERE U_NR = '" + nummer.toStdString() + "'");
    suche.executeStep();
    for (int i = 0; i < suche.getColumnCount(); ++i) {
        (void)QString::fromStdString(suche.getColumn(i).getString());
    }
}

void sucheWieWir(const QString& pfad, const QString& nummer) {
    mitErgebnisdatei(pfad, std::chrono::seconds(1),
                     [&](Ergebnisdatei& datei) { (void)datei.finde(nummer); });
}

void shell(const QString& pfad, const QString& sql) {
    QProcess programm;
    programm.setStandardOutputFile(QProcess::nullDevice());
    programm.start(u"sqlite3"_s, {pfad, sql});
    if (!programm.waitForFinished(-1) || programm.exitCode() != 0) {
        std::fprintf(stderr, "the sqlite3 shell is missing or failed: %s\n",
                     programm.readAllStandardError().constData());
    }
}

const QString filter = u"WHERE (RASSE  LIKE 'Carnica') AND (ERGEBNIS LIKE 'Ja' OR ERGEBNIS LIKE "
                       u"'Yes' OR ERGEBNIS LIKE 'Oui') AND (A_D LIKE 'Arbeiter' OR A_D LIKE "
                       u"'Workers' OR A_D LIKE 'Ouvrières') "_s;
const QString keinFilter;

void ansichten(const QString& pfad, int runden) {
    const Ergebnistabelle tabelle(pfad);
    for (const QString& bedingung : {keinFilter, filter}) {
        const QString name = bedingung.isEmpty() ? u"all"_s : u"filter"_s;
        for (const QString& spalte :
             {u"DATUM"_s, u"U_NR"_s, u"ZB_NR"_s, u"Z_NAME"_s, u"B_NAME"_s}) {
            const QString ende = bedingung + u"ORDER BY "_s + spalte;
            const QString quelle = u"SELECT * FROM Ergebnisse "_s + ende;
            const auto titel = [&](const char* was) {
                return u"%1, by %2, %3"_s.arg(name, spalte, QLatin1String(was)).toStdString();
            };
            // Texts are sorted as people read them, which takes all rows.
            const Zeilenwahl wahl{.datenquelle = quelle};
            vergleiche("D2", titel("first 50"), wahl.brauchtAlle() ? Ziel{} : Ziel{.höchstens = 5},
                       runden, [&] { (void)tabelle.zeilen(quelle, {}, 50); }, {});
            vergleiche(
                "D2", titel("all"), {.verhältnis = 1}, runden,
                [&] { (void)tabelle.zeilenfolge(quelle, {}); },
                [&] {
                    shell(pfad, u"SELECT U_NR, ZB_NR, Z_NAME, B_NAME, A_D, ERGEBNIS, RASSE, "
                                u"VATER, DATUM FROM Ergebnisse "_s +
                                    ende);
                });
        }
    }
    // What is laid around the record source, beside the plain list of all rows.
    const QString alles = u"SELECT U_NR, ZB_NR, Z_NAME, B_NAME, A_D, ERGEBNIS, RASSE, VATER, DATUM "
                          u"FROM Ergebnisse ORDER BY DATUM"_s;
    Zeilenwahl suche{.datenquelle = u"SELECT * FROM Ergebnisse ORDER BY DATUM"_s,
                     .suchtext = u"züchterin 29"_s};
    Zeilenwahl selten = suche;
    selten.suchtext = u"züchterin 2900 belegstelle drohnen"_s;
    Zeilenwahl eng = suche;
    eng.suchtext.clear();
    eng.filter = {.saison = u"2012"_s, .züchter = u"Züchterin 29"_s, .rasse = u"Carnica"_s};
    Zeilenwahl begattung = suche;
    begattung.suchtext.clear();
    begattung.spalte = 7;
    begattung.absteigend = true;
    const std::pair<const char*, const Zeilenwahl*> wahlen[] = {{"two words", &suche},
                                                                {"rare words", &selten},
                                                                {"line of filters", &eng},
                                                                {"mating downwards", &begattung}};
    for (const auto& [was, wahl] : wahlen) {
        vergleiche("D2", std::string(was) + ", first 50", {}, runden,
                   [&] { (void)tabelle.zeilen(*wahl, 50); }, {});
        vergleiche(
            "D2", std::string(was) + ", all", {.verhältnis = 1}, runden,
            [&] { (void)tabelle.zeilenfolge(*wahl); }, [&] { shell(pfad, alles); });
    }
    const std::vector<qint64> ids = tabelle.zeilenfolge(eng.datenquelle, {});
    vergleiche("D2", "number of wings of all, read once", {}, 1,
               [&] { tabelle.flügelzahlen(ids, [](qint64, int) { return true; }); }, {});
}

void speichern(const QString& pfad, int runden, int anzahl) {
    Ergebnistabelle tabelle(pfad);
    std::vector<double> daneben;
    std::vector<double> gerechnet;
    tabelle.speichere(beispiel(1)); // warms up
    int meiste = 0;
    for (int i = 0; i < runden * 5; ++i) {
        Ergebnissatz satz = beispiel(i * (anzahl / (runden * 5)));
        satz.VOLK = QString::number(i); // so that the old one goes into the bin
        syncs = 0;
        syncZeit = {};
        const Zeitpunkt beginn = jetzt();
        tabelle.speichere(satz);
        const Zeitpunkt ende = jetzt();
        daneben.push_back(ende.uhr - beginn.uhr - syncZeit.uhr);
        gerechnet.push_back(ende.rechenzeit - beginn.rechenzeit - syncZeit.rechenzeit);
        meiste = std::max(meiste, syncs);
    }
    tabellenzeile("D4", beiZeilen("save over an old one: syncs"), meiste, {}, {.höchstens = 4}, "");
    tabellenzeile("D4", beiZeilen("save: all besides syncs"), median(daneben), {}, {.höchstens = 2},
                  "ms");
    tabellenzeile("D4", beiZeilen("save: computing"), median(gerechnet), {}, {}, "ms");
}

void sprache(const QString& pfad) {
    Ergebnistabelle tabelle(pfad);
    // The same work each time: every row is in one language and changes both words.
    const QString französisch =
        u"BEGIN; UPDATE Ergebnisse SET ERGEBNIS = 'Oui' WHERE  ERGEBNIS LIKE 'Yes' OR ERGEBNIS "
        u"LIKE "
        u"'Ja'; UPDATE Ergebnisse SET ERGEBNIS = 'Non' WHERE  ERGEBNIS LIKE 'No' OR ERGEBNIS LIKE "
        u"'Nein'; UPDATE Ergebnisse SET A_D = 'Ouvrières' WHERE A_D LIKE 'Workers' OR A_D LIKE "
        u"'Arbeiter'; UPDATE Ergebnisse SET A_D = 'Mâles' WHERE A_D LIKE 'Drones' OR A_D LIKE "
        u"'Drohnen'; COMMIT"_s;
    tabelle.SpracheDB(Sprache::Deutsch);
    Sprache nächste = Sprache::Englisch;
    vergleiche(
        "D6", "change of language", {.verhältnis = 1.1}, 3,
        [&] {
            tabelle.SpracheDB(nächste);
            nächste = nächste == Sprache::Deutsch ? Sprache::Englisch : Sprache::Deutsch;
        },
        [&] { shell(pfad, französisch); });
    vergleiche("D6", "the same again", {.höchstens = 100}, 5,
               [&] { tabelle.SpracheDB(Sprache::Französisch); }, {});
    tabelle.SpracheDB(Sprache::Deutsch);
}

/// All that the overview needs before it paints: figures, what filters offer, rows in their order.
void übersicht(const QString& pfad, int runden, int anzahl) {
    const QTemporaryDir speicher;
    const Texte texte{QString()};
    const Einstellungen einstellungen{QString()};
    const Kolonieregeln regeln = kolonieregeln(
        {.texte = texte, .format = {}, .rassen = rassenliste(einstellungen)}, einstellungen);
    const auto lies = [&] {
        const auto sammlung =
            liesKolonien(pfad, speicher.path(), regeln, [](int, int) { return true; });
        (void)filterwerte(*sammlung, Geschlecht::Arbeiterinnen);
        Kolonieauswahl auswahl = wähle(*sammlung, {});
        sortiere(auswahl, static_cast<int>(Kolonienspalte::Datum), true);
    };
    const Ziel ziel{.höchstens = anzahl <= 3000      ? std::optional(300.0)
                                 : anzahl <= 100'000 ? std::optional(2000.0)
                                                     : std::nullopt};
    tabellenzeile("D7", beiZeilen("overview, first reading"), zeit(lies), {}, {}, "ms");
    vergleiche("D7", "overview, file untouched", ziel, runden, lies, {});
    std::vector<double> zeiten;
    for (int i = 0; i < runden; ++i) {
        // A row less and a row more, as another program saves it.
        Ergebnissatz satz = beispiel(i * (anzahl / runden));
        satz.VOLK += u'+';
        Ergebnistabelle(pfad).speichere(satz);
        zeiten.push_back(zeit(lies));
    }
    tabellenzeile("D7", beiZeilen("overview, a row changed"), median(zeiten), {}, ziel, "ms");
}

void miss(const QString& pfad, int runden) {
    const Ergebnistabelle tabelle(pfad);
    const int anzahl = tabelle.anzahl();
    zeilenzahl = anzahl;
    ansichten(pfad, runden);
    std::vector<QString> nummern;
    nummern.reserve(500);
    for (int i = 0; i < 500; ++i) {
        nummern.push_back(beispiel(anzahl / 50 * (i % 50)).U_NR);
    }
    const auto alle = [&](const std::function<void(const QString&)>& arbeit) {
        return [&nummern, arbeit] { std::for_each(nummern.begin(), nummern.end(), arbeit); };
    };
    vergleiche("D3", "find one by its number", {.verhältnis = 2}, runden,
               alle([&](const QString& nummer) { sucheWieWir(pfad, nummer); }),
               alle([&](const QString& nummer) { sucheMitGleich(pfad, nummer, "U_NR"); }), 500);
    vergleiche("D3", "load it, beside SELECT *", {}, runden,
               alle([&](const QString& nummer) { (void)tabelle.lade(nummer); }),
               alle([&](const QString& nummer) { sucheMitGleich(pfad, nummer, "*"); }), 500);
    speichern(pfad, runden, anzahl);
    übersicht(pfad, runden, anzahl);
    vergleiche("D5", "next number of a year", {.höchstens = 25}, runden,
               [&] { (void)tabelle.NächsteNummer(QDate(2020, 6, 1), u"K"_s); }, {});
    if (anzahl <= 200'000) { // beyond that it only shows how quick the drive is
        sprache(pfad);
    }
}

} // namespace

int main(int argc, char** argv) try {
    const QString befehl = argc > 2 ? QString::fromLocal8Bit(argv[1]) : QString();
    const int zahl = argc > 3 ? std::max(1, std::atoi(argv[3])) : 5;
    if (befehl == u"make" && argc > 3) {
        mache(QString::fromLocal8Bit(argv[2]), zahl);
    } else if (befehl == u"measure") {
        miss(QString::fromLocal8Bit(argv[2]), zahl);
    } else {
        std::fprintf(stderr, "usage: results_bench make FILE ROWS | measure FILE [ROUNDS]\n");
        return 2;
    }
    return 0;
} catch (const std::exception& fehler) {
    std::fprintf(stderr, "%s\n", fehler.what());
    return 1;
}
