// What goes wrong with results files: each failure has its reason and leaves the file alone.

#include "results/ergebnisdateien.h"

#include <QDir>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

class Fehlertest : public Dateitest {
protected:
    void SetUp() override {
        Dateitest::SetUp();
        fremd(u"WITH RECURSIVE z(i) AS (SELECT 0 UNION SELECT i + 1 FROM z WHERE i < 19) "
              u"INSERT INTO Ergebnisse(U_NR, Grafik2) SELECT i, hex(zeroblob(10000)) FROM z"_s);
    }

    static Ergebnistabelle::Zeile erste() { return {.id = 1, .werte = {u"0"_s}}; }
    static Ergebnistabelle::Zeile geändert() { return {.id = 1, .werte = {u"0"_s, u"x"_s}}; }

    /// Tries everything that is done with a file; all has to fail for @p grund and leave it as is.
    void allesScheitert(Datenbankgrund grund) {
        const QByteArray vorher = bytes(pfad_);
        auto t = tabelle();
        for (const std::function<void()>& arbeit :
             {std::function<void()>([&] { t.öffneProbeweise(); }),
              {[&] { (void)t.anzahl(); }},
              {[&] { (void)t.NächsteNummer(QDate(2025, 1, 1), {}); }},
              {[&] { (void)t.lade(u"1"_s); }},
              {[&] { t.speichere(satz(u"1"_s)); }},
              {[&] { t.SpracheDB(Sprache::Englisch); }},
              {[&] { (void)t.zeilen(u"SELECT * FROM Ergebnisse"_s, {}, 9); }},
              {[&] { t.ändere(erste(), geändert()); }},
              {[&] { t.lösche(erste()); }},
              {[&] { t.sichere(ordner_.filePath(u"kopie.tdb"_s)); }}}) {
            EXPECT_EQ(grundVon(arbeit), grund);
        }
        EXPECT_EQ(bytes(pfad_), vorher);
        EXPECT_FALSE(QFileInfo::exists(ordner_.filePath(u"kopie.tdb"_s)));
    }
};

} // namespace

TEST_F(Fehlertest, foreignFiles_areNamedForWhatTheyAre) {
    schreibe(pfad_, QByteArray("Lieber Imker, das ist ein Brief.\n").repeated(50));
    allesScheitert(Datenbankgrund::Keine);
    schreibe(pfad_, {});
    allesScheitert(Datenbankgrund::OhneTabelle);
    fremd(u"CREATE TABLE Rezepte(Name TEXT)"_s);
    allesScheitert(Datenbankgrund::OhneTabelle);
}

TEST_F(Fehlertest, missingColumn_isNamed) {
    fremd(u"ALTER TABLE Ergebnisse DROP COLUMN MERKMAL"_s);
    const QByteArray vorher = bytes(pfad_);
    auto t = tabelle();
    for (const std::function<void()>& arbeit : {std::function<void()>([&] { t.öffneProbeweise(); }),
                                                {[&] { (void)t.lade(u"1"_s); }},
                                                {[&] { t.speichere(satz(u"1"_s)); }}}) {
        const auto fehler = fehlerVon(arbeit);
        ASSERT_TRUE(fehler && fehler->grund() == Datenbankgrund::SpalteFehlt);
        EXPECT_EQ(fehler->einzelheit(), u"MERKMAL"_s);
    }
    EXPECT_EQ(bytes(pfad_), vorher);
}

TEST_F(Fehlertest, truncatedFile_isDamaged) {
    const QByteArray ganz = bytes(pfad_);
    for (const qsizetype größe : {ganz.size() / 2, qsizetype(4096), qsizetype(1000)}) {
        schreibe(pfad_, ganz.left(größe));
        allesScheitert(Datenbankgrund::Beschädigt);
    }
}

TEST_F(Fehlertest, vanishedFile_isNotMadeAnew) {
    QFile::rename(pfad_, ordner_.filePath(u"fort"_s));
    allesScheitert(Datenbankgrund::Verschwunden);
    EXPECT_FALSE(QFileInfo::exists(pfad_));
    pfad_ = ordner_.filePath(u"weg/Völker.tdb"_s);
    allesScheitert(Datenbankgrund::Verschwunden);
    pfad_ = ordner_.path();
    EXPECT_EQ(grundVon([&] { tabelle().öffneProbeweise(); }), Datenbankgrund::Keine);
    pfad_.clear();
    EXPECT_EQ(grundVon([&] { tabelle().öffneProbeweise(); }), Datenbankgrund::NichtGewählt);
}

TEST_F(Fehlertest, fileThatAnotherProgramWrites_isLocked) {
    sqlite3* andere = nullptr;
    sqlite3_open(pfad_.toUtf8().constData(), &andere);
    sqlite3_exec(andere, "BEGIN IMMEDIATE; DELETE FROM Ergebnisse", nullptr, nullptr, nullptr);
    EXPECT_EQ(grundVon([&] { tabelle().speichere(satz(u"1"_s)); }), Datenbankgrund::Gesperrt);
    EXPECT_EQ(tabelle().anzahl(), 20); // reading goes on until the other one commits
    sqlite3_exec(andere, "ROLLBACK; BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
    allesScheitert(Datenbankgrund::Gesperrt);
    sqlite3_close(andere);
    EXPECT_EQ(tabelle().lade(u"1"_s)->Grafik[1].size(), 20'000);
}

#ifdef Q_OS_UNIX
TEST_F(Fehlertest, writeProtectedFile_isReadAsItIs) {
    fremd(u"DROP INDEX Ergebnisse_DATUM"_s);
    const QByteArray vorher = bytes(pfad_);
    QFile::setPermissions(pfad_, QFileDevice::Permissions(0x4444));
    QFile::setPermissions(ordner_.path(), QFileDevice::Permissions(0x5555));
    const OhneSonderrechte somebody;
    if (!somebody.istEingeschränkt()) {
        GTEST_SKIP() << "write protection cannot be tried with these rights";
    }
    auto t = tabelle();
    t.öffneProbeweise();
    EXPECT_EQ(t.anzahl(), 20);
    EXPECT_TRUE(t.lade(u"1"_s));
    for (const std::function<void()>& arbeit :
         {std::function<void()>([&] { t.speichere(satz(u"1"_s)); }),
          {[&] { t.ändere(erste(), geändert()); }},
          {[&] { t.lösche(erste()); }}}) {
        EXPECT_EQ(grundVon(arbeit), Datenbankgrund::Schreibgeschützt);
    }
    EXPECT_EQ(grundVon([&] { NeueDatenbank(ordner_.filePath(u"neu.tdb"_s)); }),
              Datenbankgrund::NichtAnlegbar);
    EXPECT_EQ(grundVon([&] { t.sichere(ordner_.filePath(u"kopie.tdb"_s)); }),
              Datenbankgrund::NichtAnlegbar);
    EXPECT_EQ(bytes(pfad_), vorher);
}

TEST_F(Fehlertest, writeProtectedFolder_isToldAsSuch) {
    QFile::setPermissions(pfad_, QFileDevice::Permissions(0x6666));
    QFile::setPermissions(ordner_.path(), QFileDevice::Permissions(0x5555));
    const OhneSonderrechte somebody;
    if (!somebody.istEingeschränkt()) {
        GTEST_SKIP() << "write protection cannot be tried with these rights";
    }
    EXPECT_EQ(grundVon([&] { tabelle().speichere(satz(u"1"_s)); }),
              Datenbankgrund::Schreibgeschützt);
    EXPECT_EQ(tabelle().anzahl(), 20);
}

TEST_F(Fehlertest, fullDrive_keepsTheOldRow) {
    // A limit on the size of files stands for the drive; a child process takes it on.
    const pid_t kind = fork();
    if (kind == 0) {
        (void)std::signal(SIGXFSZ, SIG_IGN);
        const rlimit grenze{static_cast<rlim_t>(QFileInfo(pfad_).size()), RLIM_INFINITY};
        setrlimit(RLIMIT_FSIZE, &grenze);
        Ergebnissatz s = satz(u"1"_s);
        s.CI = QString(200'000, u'y');
        const auto grund = grundVon([&] { tabelle().speichere(s); });
        _exit(grund == Datenbankgrund::Voll ? 0 : 1);
    }
    int ende = -1;
    waitpid(kind, &ende, 0);
    EXPECT_EQ(ende, 0);
    EXPECT_EQ(tabelle().anzahl(), 20);
    EXPECT_EQ(tabelle().lade(u"1"_s)->Grafik[1].size(), 20'000);
    EXPECT_EQ(fremd(u"PRAGMA integrity_check"_s), u"ok"_s);
}

TEST_F(Fehlertest, crashWhileANewFileIsMade_leavesNothingOfThatName) {
    const QString neu = ordner_.filePath(u"neu.tdb"_s);
    const pid_t kind = fork();
    if (kind == 0) {
        const rlimit keine{0, 0};
        setrlimit(RLIMIT_CORE, &keine);
        const rlimit grenze{5000, RLIM_INFINITY}; // the signal ends the process as it writes
        setrlimit(RLIMIT_FSIZE, &grenze);
        NeueDatenbank(neu);
        _exit(0);
    }
    int ende = 0;
    waitpid(kind, &ende, 0);
    EXPECT_TRUE(WIFSIGNALED(ende));
    EXPECT_FALSE(QFileInfo::exists(neu));
    NeueDatenbank(neu);
    Ergebnistabelle(neu).öffneProbeweise();
}
#endif

TEST_F(Fehlertest, newFile_neverReplacesAnother) {
    const QByteArray vorher = bytes(pfad_);
    EXPECT_EQ(grundVon([&] { NeueDatenbank(pfad_); }), Datenbankgrund::SchonVorhanden);
    EXPECT_EQ(bytes(pfad_), vorher);
    const QString verweis = ordner_.filePath(u"Verweis.tdb"_s);
    QFile::link(ordner_.filePath(u"nirgends"_s), verweis);
    EXPECT_EQ(grundVon([&] { NeueDatenbank(verweis); }), Datenbankgrund::SchonVorhanden);
    EXPECT_EQ(grundVon([&] { NeueDatenbank(ordner_.filePath(u"fehlt/neu.tdb"_s)); }),
              Datenbankgrund::NichtAnlegbar);
    NeueDatenbank(ordner_.filePath(u"neu.tdb"_s));
    EXPECT_THAT(QDir(ordner_.path()).entryList({u"neu*"_s}), testing::ElementsAre(u"neu.tdb"_s));
}

TEST_F(Fehlertest, backup_isCompleteAndNeverTheFileItself) {
    const QString kopie = ordner_.filePath(u"Sicherung %1 ü.tdb"_s);
    schreibe(kopie, "an older copy");
    tabelle().sichere(kopie);
    EXPECT_EQ(Ergebnistabelle(kopie).anzahl(), 20);
    EXPECT_EQ(Ergebnistabelle(kopie).lade(u"7"_s), tabelle().lade(u"7"_s));
    EXPECT_EQ(QDir(ordner_.path()).entryList(QDir::Files).size(), 2); // nothing is left over

    const QByteArray vorher = bytes(pfad_);
    QStringList gleiche{pfad_, ordner_.path() + u"/./"_s + QFileInfo(pfad_).fileName()};
#ifdef Q_OS_UNIX // a link is a file of its own elsewhere
    gleiche << ordner_.filePath(u"Verweis.tdb"_s);
    QFile::link(pfad_, gleiche.last());
#endif
    for (const QString& ziel : gleiche) {
        EXPECT_EQ(grundVon([&] { tabelle().sichere(ziel); }), Datenbankgrund::GleicheDatei);
    }
    EXPECT_EQ(bytes(pfad_), vorher);
    EXPECT_EQ(grundVon([&] { tabelle().sichere(ordner_.filePath(u"fehlt/kopie.tdb"_s)); }),
              Datenbankgrund::NichtAnlegbar);
}

TEST(Datenbankmeldung, saysInTheLanguageWhichFileAndWhy) {
    Texte texte(u"/"_s);
    const QString datei = QDir::toNativeSeparators(u"/Imker/%2 Völker.tdb"_s);
    for (int sprache = 0; sprache < anzahlSprachen; ++sprache) {
        texte.SpracheEinstellen(sprache);
        QStringList alle;
        for (int grund = 0; grund <= static_cast<int>(Datenbankgrund::Sonstiges); ++grund) {
            const Datenbankfehler fehler(static_cast<Datenbankgrund>(grund), datei,
                                         u"%1 MERKMAL"_s);
            const QString meldung = meldungstext(texte, fehler);
            EXPECT_FALSE(meldung.contains(u"%3"_s)) << meldung.toStdString();
            EXPECT_TRUE(meldung.contains(datei.mid(1)) || grund >= 9) << meldung.toStdString();
            alle << meldung;
        }
        EXPECT_EQ(alle.removeDuplicates(), 0);
    }
    texte.SpracheDeutsch();
    EXPECT_EQ(meldungstext(texte, Datenbankfehler::zuLang(datei, u"Z_NAME"_s, 31, 30)),
              u"Das Feld 'Züchter' fasst höchstens 30 Zeichen, der Text hat 31. Kürzen Sie ihn."_s);
    EXPECT_EQ(meldungstext(texte, Datenbankfehler(Datenbankgrund::SchonVorhanden, datei)),
              u"Die Datenbank '"_s + datei + u"' ist bereits vorhanden."_s);
}
