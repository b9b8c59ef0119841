#include "batch/aufruf.h"
#include "results/ergebnistabelle.h"
#include "results/untersuchungssatz.h"

#include <QImage>

#include <sqlite3.h>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#endif

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::AnyOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

class Ausfuhr : public Batchtest {
protected:
    Texte texte_{QString()};

    void SetUp() override {
        texte_.SpracheDeutsch();
        NeueDatenbank(pfad(u"a.tdb"_s));
    }

    /// Two measured wings, the second with its cubital index alone.
    void speichere(const QString& nummer, const QString& name, int ausgelassen = 0,
                   const QString& bild = u"C:\\Völker\\a, b.png"_s, QSize größe = {}) {
        Untersuchung u;
        Kolonieangaben angaben;
        angaben.UNr = nummer;
        angaben.Name = name;
        angaben.Jahr = u"2024"_s;
        u.setzeAngaben(angaben);
        constexpr std::array X{0.F, 400.F, 100.F, 200.F, 230.F, 100.F, 130.F, 130.F, 225.F};
        constexpr std::array Y{0.F, 300.F, 300.F, 100.F, 110.F, 100.F, 100.F, 110.F, 182.F};
        Messreihe reihe;
        for (const int flügel : {1, 2}) {
            const Messart messart = flügel == 1 ? Messart::AlleMessungen : Messart::NurCubitalindex;
            Flügelmessung messung{.punkte = Messpunkte(messart),
                                  .messart = messart,
                                  .aufnahme = {2, 1200},
                                  .bilddatei = bild,
                                  .bild = {.größe = größe, .marke = {}}};
            for (int p = 1; p <= Messpunkte::Anzahl; ++p) {
                messung.punkte.setze(messart, p, 2 * X.at(p), 2 * Y.at(p));
            }
            reihe.trageEin(static_cast<qint16>(flügel),
                           berechneIndizes(messung.punkte, messart, messung.aufnahme), messung, {});
        }
        reihe.lassAus(ausgelassen, true);
        u.setzeReihe(reihe);
        Merkmale merkmale;
        ASSERT_TRUE(MerkmalÜbernehmen(merkmale, {}, false));
        u.setzeMerkmale(merkmale);
        Ergebnistabelle(pfad(u"a.tdb"_s))
            .speichere(satzAus(u, true, 1200, QDate(2025, 6, 7),
                               {.texte = texte_, .format = {}, .rassen = {u"Carnica"_s}}));
    }
};

} // namespace

TEST_F(Ausfuhr, examinations_areRowsWithTheirFigures) {
    speichere(u"U2"_s, u"Grün, \"Jo\""_s);
    speichere(u"U1"_s, {});
    const Lauf lauf = rufe(u"export a.tdb --language de"_s);
    EXPECT_EQ(lauf.status, 0);
    EXPECT_THAT(lauf.fehler, IsEmpty());
    const QList<QByteArray> zeilen = lauf.zeilen();
    ASSERT_EQ(zeilen.size(), 4);
    EXPECT_THAT(zeilen[0].toStdString(), StartsWith("examination,date,year,queen,"));
    EXPECT_EQ(zeilen[1],
              "U1,2025-06-07,2024,,,,,,,,Carnica,workers,yes,1200,2,0,2,3,0,3,3,1,1,,1,1,"
              "1,1.324153,,1.324153,1.324153,1,"
              "O=100% E=0% 1R=0% 2R=0%;k=100% m=0% l=0%;F=100% ff=0% f=0%");
    EXPECT_EQ(zeilen[0].count(','), zeilen[1].count(','));
    EXPECT_THAT(zeilen[2].toStdString(), HasSubstr(",\"Grün, \"\"Jo\"\"\","));
}

TEST_F(Ausfuhr, wings_haveFullValuesAndTheirPicture) {
    speichere(u"U1"_s, {}, 2);
    const Lauf lauf = rufe(u"export --wings a.tdb"_s);
    const QList<QByteArray> zeilen = lauf.zeilen();
    ASSERT_EQ(zeilen.size(), 4);
    EXPECT_THAT(
        zeilen[0].toStdString(),
        StartsWith(
            "examination,date,race,caste,wing,ci,ci_class,hi,hi_class,dv,file,dpi,zoom,x1,y1,"));
    EXPECT_THAT(zeilen[1].toStdString(),
                StartsWith("U1,2025-06-07,Carnica,workers,1,3,21.006002,1,25,1.324152"));
    EXPECT_THAT(zeilen[2].toStdString(),
                StartsWith("U1,2025-06-07,Carnica,workers,2,3,21.006002,,,,"
                           "\"C:\\Völker\\a, b.png\",1200,2,"));
    EXPECT_TRUE(zeilen[0].endsWith(",left_out,points_from,checked"));
    EXPECT_TRUE(zeilen[1].contains(",no,"));
    EXPECT_TRUE(zeilen[2].contains(",yes,"));
    // Its points are those of the picture, so the table can be evaluated in its turn.
    schreibe(u"a.csv"_s, zeilen.join('\n'));
    const Lauf wieder = rufe(u"evaluate a.csv --format csv"_s);
    EXPECT_THAT(wieder.ausgabe, HasSubstr("\n1,3,21.006002,1,25,1.324152"));
    EXPECT_THAT(wieder.fehler, Not(HasSubstr("assumed")));
    EXPECT_THAT(wieder.ausgabe, EndsWith("\n2,3,21.006002,,,,yes\n"));
    const std::string text = rufe(u"evaluate a.csv"_s).ausgabe;
    EXPECT_THAT(text, HasSubstr("\n002  CI=3.00  Class 21.0\n"));
    EXPECT_THAT(text, HasSubstr("\n1 wing left out: 002\n"));
    EXPECT_THAT(text, HasSubstr("(3.00 … 3.00)  n = 1\n"));
    EXPECT_THAT(text, HasSubstr("\n   21    1  *\n"));
}

TEST_F(Ausfuhr, tablesForResearch_areTheSameAsCsvAndSqlite) {
    speichere(u"007"_s, u"Huber, \"A\""_s, 2);
    ASSERT_EQ(rufe(u"export a.tdb --tables t"_s).status, 0);
    ASSERT_EQ(rufe(u"export a.tdb --tables t.sqlite"_s).status, 0);
    EXPECT_THAT(text(u"t/examinations.csv"_s), HasSubstr("007,2025-06-07,\"Huber, \"\"A\"\"\","));
    EXPECT_THAT(text(u"t/wings.csv"_s), HasSubstr("\n007,1,0,3,1,1.3"));
    EXPECT_THAT(text(u"t/wings.csv"_s), HasSubstr("\n007,2,1,3,,,"));
    EXPECT_THAT(text(u"t/points.csv"_s), HasSubstr("\n007,1,8,225,182,\n")); // of the scan itself
    EXPECT_THAT(text(u"t/marks.csv"_s), HasSubstr("\n007,O,1,1\n"));
    EXPECT_THAT(text(u"t/columns.csv"_s), HasSubstr("points,x,REAL,"));
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(pfad(u"t.sqlite"_s).toUtf8().constData(), &db), SQLITE_OK);
    for (const QString& name :
         {u"examinations"_s, u"wings"_s, u"points"_s, u"marks"_s, u"columns"_s}) {
        sqlite3_stmt* zeilen = nullptr;
        const QByteArray sql = "SELECT COUNT(*) FROM " + name.toUtf8();
        ASSERT_EQ(sqlite3_prepare_v2(db, sql.constData(), -1, &zeilen, nullptr), SQLITE_OK);
        ASSERT_EQ(sqlite3_step(zeilen), SQLITE_ROW);
        EXPECT_EQ(sqlite3_column_int(zeilen, 0), lies(u"t/"_s + name + u".csv"_s).count('\n') - 1);
        sqlite3_finalize(zeilen);
    }
    sqlite3_close(db);
    // What cannot be written leaves what was there.
    schreibe(u"besetzt"_s, "x");
    EXPECT_EQ(rufe(u"export a.tdb --tables besetzt"_s).status, 1);
    EXPECT_EQ(text(u"besetzt"_s), "x");
    EXPECT_EQ(rufe(u"export a.tdb --tables a.tdb"_s).status, 2);
    EXPECT_EQ(rufe(u"export fehlt.tdb --tables neu"_s).status, 1);
    EXPECT_FALSE(QFile::exists(pfad(u"neu"_s)));
}

TEST_F(Ausfuhr, tps_liesInThePictureAndGivesTheSameIndicesAgain) {
    QImage bild(500, 400, QImage::Format_Grayscale8);
    bild.fill(200);
    ASSERT_TRUE(bild.save(pfad(u"b.jpg"_s)));
    speichere(u"U1"_s, {}, 0, pfad(u"b.jpg"_s));
    EXPECT_EQ(rufe(u"export a.tdb --tps --out a.tps"_s).status, 0);
    EXPECT_THAT(text(u"a.tps"_s), StartsWith("LM=8\n400 100\n"));
    EXPECT_THAT(text(u"a.tps"_s), HasSubstr("IMAGE=b.jpg\nID=U1/2\n"));
    EXPECT_EQ(rufe(u"export a.tdb --tps --out -"_s).ausgabe, text(u"a.tps"_s));
    const Lauf lauf = rufe(u"evaluate a.tps --format csv"_s);
    EXPECT_THAT(lauf.ausgabe, HasSubstr("\nU1/1,3,21.006002,1,25,1.324152"));
    EXPECT_THAT(lauf.ausgabe, HasSubstr("\nU1/2,3,21.006002,,,,no\n"));
    // What the wings keep of their picture counts, wherever that is now.
    for (const QString& datei : {u"gone.jpg"_s, pfad(u"b.jpg"_s)}) {
        speichere(u"U1"_s, {}, 0, datei, {500, 600});
        EXPECT_THAT(rufe(u"export a.tdb --tps"_s).ausgabe, StartsWith("LM=8\n400 300\n"));
    }
}

TEST_F(Ausfuhr, valuesOfAnySize_areGivenOutAsNumbersOrNamed) {
    int anzahl = 0;
    QString befehle = u"BEGIN;"_s;
    for (const char* spalte :
         {"DATUM", "CI", "HI_DV", "PROZENT", "Grafik1", "Grafik2", "Grafik3", "Grafik4"}) {
        for (const char* wert :
             {"1e308", "-9e999", "9223372036854775807", "printf('%.*c', 300, '9')", "'NaN'",
              "x'fffe00'", "replace(%1, '00', 'e308')", "replace(%1, '1', '99999999999999999999')",
              "replace(%1, '2', '3.4028235e38')", "replace(%1, '3', 'nan')"}) {
            const QString nummer = u"U%1"_s.arg(++anzahl);
            speichere(nummer, {}, 0, u"a.png"_s, {2000, 1000});
            const QString neu = u"UPDATE Ergebnisse SET %1 = "_s + QLatin1StringView(wert) +
                                u" WHERE U_NR = '%2';"_s;
            befehle += neu.arg(QLatin1StringView(spalte), nummer);
        }
    }
    sqlite3* db = nullptr;
    sqlite3_open(QFile::encodeName(pfad(u"a.tdb"_s)).constData(), &db);
    const QByteArray alle = (befehle + u"COMMIT"_s).toUtf8();
    EXPECT_EQ(sqlite3_exec(db, alle.constData(), nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(db);
    for (const QString& art : {u""_s, u"--wings"_s, u"--tps"_s}) {
        const Lauf lauf = rufe(u"export a.tdb "_s + art);
        EXPECT_EQ(lauf.status, 0) << lauf.fehler;
        EXPECT_GT(lauf.fehlerzahl(), 20);
        for (const std::string vor : {",", " ", "-"}) {
            EXPECT_THAT(lauf.ausgabe, Not(AnyOf(HasSubstr(vor + "inf"), HasSubstr(vor + "nan"))));
        }
        EXPECT_TRUE(!art.isEmpty() || lauf.zeilen().size() == anzahl + 2);
    }
}

TEST_F(Ausfuhr, textThatWouldBeAFormula_isATextAndComesBack) {
    speichere(u"=1+1"_s, u"@SUM(A1);=x y"_s);
    speichere(u"-0.9"_s, u"'=1+1"_s);
    const Lauf lauf = rufe(u"export a.tdb"_s);
    EXPECT_THAT(lauf.ausgabe, HasSubstr("\n'=1+1,2025"));
    EXPECT_THAT(lauf.ausgabe, HasSubstr(",'@SUM(A1);'=x y,"));
    EXPECT_THAT(lauf.ausgabe, HasSubstr("\n'-0.9,2025"));
    EXPECT_THAT(lauf.ausgabe, HasSubstr(",''=1+1,"));

    const QByteArray punkte = "400,300,100,300,200,100,230,110,100,100,130,100,130,110,225,182\n";
    schreibe(u"f.csv"_s, "wing,x1,y1,x2,y2,x3,y3,x4,y4,x5,y5,x6,y6,x7,y7,x8,y8\n'=1+1," + punkte +
                             "''=1+1," + punkte + "a;'-b," + punkte + "it's," + punkte);
    const std::string text = rufe(u"evaluate f.csv"_s).ausgabe;
    for (const char* name : {"001  =1+1\n", "002  '=1+1\n", "003  a;-b\n", "004  it's\n"}) {
        EXPECT_THAT(text, HasSubstr(name));
    }
    EXPECT_THAT(rufe(u"evaluate f.csv --format csv"_s).ausgabe, HasSubstr("\n'=1+1,3,"));
}

#ifdef Q_OS_UNIX // no other lets a name have such letters
TEST_F(Ausfuhr, namesThatWouldSteerTheTerminal_areShownInstead) {
    const QString name = u"\x1b]0;x\a\u202eb\u009b2J.Bee"_s;
    schreibe(name, "A1\n");
    schreibe(u"\x1b[2J.csv"_s, "wing,x1\n");
    schreibe(u"w.csv"_s,
             "wing,x1,y1,x2,y2,x3,y3,x4,y4,x5,y5,x6,y6,x7,y7,x8,y8\na\u009b2J,400,300,100,"
             "300,200,100,230,110,100,100,130,100,130,110,225,182\n");
    const QString aufrufe[] = {u"import-bee --into a.tdb "_s + name, u"export \x1b[2J.tdb"_s,
                               u"evaluate \x1b[2J.csv"_s, u"evaluate --dpi \x1b[2J a.csv"_s,
                               u"evaluate w.csv"_s};
    for (const QString& aufruf : aufrufe) {
        const Lauf lauf = rufe(aufruf);
        const QString alles = QString::fromStdString(lauf.fehler + lauf.ausgabe);
        EXPECT_TRUE(alles.contains(u"\\x1B"_s) || alles.contains(u"\\x9B"_s));
        for (const QChar c : alles) {
            EXPECT_TRUE(c == u'\n' || (c.category() != QChar::Other_Control && c != u'\u202e'));
        }
    }
}

TEST_F(Ausfuhr, tableOnATerminal_doesNotSteerIt) {
    speichere(u"\x1b[2Jx"_s, u"A"_s);
    EXPECT_THAT(rufe(u"export a.tdb"_s).ausgabe, HasSubstr("\n\x1b[2Jx,2025")); // as it is stored
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0) {
        GTEST_SKIP() << "no terminals here";
    }
    QProcess programm;
    programm.setWorkingDirectory(ordner_.path());
    programm.setStandardOutputFile(QString::fromLocal8Bit(ptsname(terminal)));
    programm.start(QStringLiteral(TARVEL_BATCH), {u"export"_s, u"a.tdb"_s});
    EXPECT_TRUE(programm.waitForFinished());
    QByteArray gezeigt;
    std::array<char, 4000> teil{};
    for (ssize_t n = 0; (n = read(terminal, teil.data(), teil.size())) > 0;) { // line by line
        gezeigt.append(teil.data(), n);
    }
    close(terminal);
    EXPECT_THAT(gezeigt.toStdString(), HasSubstr("\n\\x1B[2Jx,2025"));
    EXPECT_FALSE(gezeigt.contains('\x1b'));
}
#endif

TEST_F(Ausfuhr, tpsWithoutAPicture_isRefusedAndTheWingsAreNamed) {
    speichere(u"U1"_s, {});
    const Lauf lauf = rufe(u"export a.tdb --tps --out a.tps"_s);
    EXPECT_EQ(lauf.status, 1);
    EXPECT_THAT(lauf.fehler, StartsWith("a.tdb: U1/1 (a, b.png): the height of the picture"));
    EXPECT_EQ(lauf.fehlerzahl(), 3);
    EXPECT_EQ(dateien(), QStringList({u"a.tdb"_s}));
}

TEST_F(Ausfuhr, failure_leavesTheOutputAsItWas) {
    schreibe(u"kaputt.tdb"_s, "no database");
    schreibe(u"alt.csv"_s, "old");
    for (const QString& datenbank : {u"kaputt.tdb"_s, u"fehlt.tdb"_s}) {
        const Lauf lauf = rufe(u"export --out alt.csv "_s + datenbank);
        EXPECT_EQ(lauf.status, 1);
        EXPECT_THAT(lauf.fehler, StartsWith((datenbank + u": "_s).toStdString()));
        EXPECT_EQ(lies(u"alt.csv"_s), "old");
    }
    EXPECT_EQ(rufe(u"export a.tdb --out nowhere/b.csv"_s).status, 1);
    EXPECT_EQ(dateien(), QStringList({u"a.tdb"_s, u"alt.csv"_s, u"kaputt.tdb"_s}));
}

TEST_F(Ausfuhr, resultsFileOfAnyName_isNeverOverwritten) {
    speichere(u"U1"_s, {});
    ASSERT_TRUE(QFile::copy(pfad(u"a.tdb"_s), pfad(u"b.sqlite"_s)));
    ASSERT_TRUE(QFile::copy(pfad(u"a.tdb"_s), pfad(u"b.csv"_s)));
    const QByteArray vorher = lies(u"b.csv"_s);
    for (const QString& aufruf :
         {u"export a.tdb --tables b.sqlite"_s, u"export a.tdb --out b.csv"_s,
          u"report a.tdb --all --pdf b.sqlite"_s, u"overview a.tdb --out b.csv"_s}) {
        const Lauf lauf = rufe(aufruf);
        EXPECT_EQ(lauf.status, 1) << aufruf.toStdString();
        EXPECT_THAT(lauf.fehler, HasSubstr("a results file"));
    }
    EXPECT_EQ(lies(u"b.csv"_s), vorher);
    EXPECT_EQ(lies(u"b.sqlite"_s), vorher);
    // Other files are replaced, also the tables of another time.
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(rufe(u"export a.tdb --tables t.sqlite"_s).status, 0);
    }
}

#ifdef Q_OS_UNIX
TEST_F(Ausfuhr, outputThatIsNoFile_isWrittenInto) {
    speichere(u"U1"_s, {});
    const std::string csv = rufe(u"export a.tdb"_s).ausgabe;
    for (const QString& ziel : {u"-"_s, u"/dev/stdout"_s, u"/dev/fd/1"_s}) {
        const Lauf lauf = rufe(u"export a.tdb --out "_s + ziel);
        EXPECT_EQ(lauf.status, 0) << lauf.fehler;
        EXPECT_EQ(lauf.ausgabe, csv);
        EXPECT_THAT(rufe(u"report a.tdb U1 --pdf "_s + ziel).ausgabe, StartsWith("%PDF-"));
    }
    EXPECT_EQ(rufe(u"export a.tdb --out /dev/null"_s).status, 0);
    const Lauf voll = rufe(u"export a.tdb --out /dev/full"_s);
    EXPECT_EQ(voll.status, 1);
    EXPECT_THAT(voll.fehler, HasSubstr("/dev/full"));
    for (const QString& befehl : {u"export a.tdb"_s, u"report a.tdb U1 --pdf -"_s}) {
        const Lauf lauf = rufe(befehl, {}, {}, u"/dev/full"_s);
        EXPECT_EQ(lauf.status, 1);
        EXPECT_THAT(lauf.fehler, HasSubstr("space")) << "more or less than fits a buffer";
    }

    const QByteArray rohr = QFile::encodeName(pfad(u"rohr"_s));
    ASSERT_EQ(::mkfifo(rohr.constData(), 0600), 0);
    const int ende = ::open(rohr.constData(), O_RDWR); // so that nobody waits for a reader
    ASSERT_GT(::fcntl(ende, F_SETPIPE_SZ, 1 << 20), 0);
    for (const QString& befehl : {u"export a.tdb --out rohr"_s, u"report a.tdb U1 --pdf rohr"_s}) {
        EXPECT_EQ(rufe(befehl).status, 0);
        QByteArray gelesen(1 << 20, '\0');
        gelesen.truncate(::read(ende, gelesen.data(), gelesen.size()));
        EXPECT_THAT(gelesen.toStdString(),
                    befehl.startsWith(u"export") ? StartsWith(csv) : StartsWith("%PDF-"));
    }
    ::close(ende);
    EXPECT_EQ(dateien(), QStringList(u"a.tdb"_s));

    // A file that whoever calls has open already, with something of theirs in it.
    const int nummer = ::open(QFile::encodeName(pfad(u"offen"_s)).constData(), O_RDWR | O_CREAT,
                              0600); // NOLINT(android-cloexec-open): for the call
    ASSERT_EQ(::write(nummer, "# mine\n", 7), 7);
    for (const QString& ziel : {u"/dev/fd/%1"_s, u"/proc/self/fd/%1"_s}) {
        ASSERT_EQ(::lseek(nummer, 7, SEEK_SET), 7);
        const Lauf lauf = rufe(u"export a.tdb --out "_s + ziel.arg(nummer));
        EXPECT_EQ(lauf.status, 0) << lauf.fehler;
        EXPECT_EQ(text(u"offen"_s), "# mine\n" + csv);
    }
    struct stat stand {};
    ASSERT_EQ(::fstat(nummer, &stand), 0);
    EXPECT_EQ(stand.st_nlink, 1U);
    ::close(nummer);
    EXPECT_EQ(rufe(u"export a.tdb --out /dev/fd/%1"_s.arg(nummer)).status, 1);
    EXPECT_EQ(dateien(), QStringList({u"a.tdb"_s, u"offen"_s}));
}
#endif
