// Other programs and people at the same files: locks, removal, replacement, a drive that is full.

#include "faults/fassungen.h"
#include "faults/opferprozess.h"
#include "platform/benutzerspeicher.h"
#include "platform/profil.h"
#include "results/dateizugang.h"
#include "results/ergebnisdatei.h"
#include "results/ergebnisdateien.h"
#include "results/sitzung.h"

#include <SQLiteCpp/Statement.h>

#include <QDir>

#include <sys/resource.h>
#include <sys/stat.h>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

class Fremdtest : public Dateitest {
protected:
    void SetUp() override {
        Dateitest::SetUp();
        for (int i = 1; i <= 20; ++i) {
            Ergebnissatz zeile = fassung::satz(i);
            zeile.U_NR = QString::number(i);
            tabelle().speichere(zeile);
        }
        vorher_ = bytes(pfad_);
    }

    /// Runs @p versuch in a process that cannot write beyond @p grenze bytes of a file, which
    /// stands for a full drive. True when it says so.
    static bool beiVollemLaufwerk(qint64 grenze, const std::function<bool()>& versuch) {
        const pid_t kind = fork();
        if (kind == 0) {
            (void)std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{static_cast<rlim_t>(grenze), RLIM_INFINITY};
            setrlimit(RLIMIT_FSIZE, &limit);
            _exit(versuch() ? 0 : 1);
        }
        int ende = -1;
        waitpid(kind, &ende, 0);
        return ende == 0;
    }

    QByteArray vorher_;
};

} // namespace

TEST_F(Fremdtest, fileLockedForASecond_isWaitedFor) {
    Opferprozess anderer("sperren", ordner_.path(), 1000, 1);
    ASSERT_TRUE(anderer.warteAuf(2));
    Ergebnistabelle(pfad_, std::chrono::seconds(60)).speichere(fassung::satz(99));
    EXPECT_TRUE(anderer.entlasse());
    EXPECT_EQ(tabelle().lade(u"A"_s), fassung::satz(99));
    EXPECT_EQ(tabelle().anzahl(), 21);
}

TEST_F(Fremdtest, fileLockedForLong_isToldAndUntouched) {
    Opferprozess anderer("sperren", ordner_.path(), -1, 1);
    ASSERT_TRUE(anderer.warteAuf(2));
    for (const std::function<void()>& arbeit :
         {std::function<void()>([&] { tabelle().speichere(satz(u"1"_s)); }),
          {[&] { tabelle().SpracheDB(Sprache::Deutsch); }},
          {[&] { tabelle().sichere(ordner_.filePath(u"kopie.tdb"_s)); }},
          {[&] { tabelle().öffneProbeweise(); }}}) {
        EXPECT_EQ(grundVon(arbeit), Datenbankgrund::Gesperrt);
    }
    Texte texte{QString()};
    texte.SpracheEnglisch();
    const auto fehler = fehlerVon([&] { tabelle().speichere(satz(u"1"_s)); });
    EXPECT_TRUE(meldungstext(texte, *fehler).contains(u"Völker 100% 'neu'.tdb"_s));
    EXPECT_TRUE(anderer.entlasse());
    EXPECT_EQ(bytes(pfad_), vorher_);
    tabelle().speichere(satz(u"1"_s));
    EXPECT_EQ(fremd(u"PRAGMA integrity_check"_s), u"ok"_s);
}

TEST_F(Fremdtest, programThatHoldsTheFile_isWaitedForTwoSeconds) {
    static qint64 gewartet = 0; // microseconds that were asked for, none of which passes
    sqlite3_vfs* const zugang = sqlite3_vfs_find(geschützterZugang());
    const auto schlafe = zugang->xSleep;
    zugang->xSleep = [](sqlite3_vfs*, int mikrosekunden) {
        gewartet += mikrosekunden;
        return mikrosekunden;
    };
    Opferprozess anderer("sperren", ordner_.path(), -1, 1);
    ASSERT_TRUE(anderer.warteAuf(2));
    Ergebnistabelle t(pfad_);
    for (const std::function<void()>& arbeit :
         {std::function<void()>([&] { t.speichere(satz(u"1"_s)); }),
          {[&] { (void)t.lade(u"1"_s); }},
          {[&] { (void)t.NächsteNummer(QDate(2025, 1, 1), {}); }},
          {[&] { (void)t.zeilen(u"SELECT * FROM Ergebnisse"_s, {}, 1); }},
          {[&] { t.SpracheDB(Sprache::Deutsch); }},
          {[&] { t.sichere(ordner_.filePath(u"kopie.tdb"_s)); }},
          {[&] { t.öffneProbeweise(); }}}) {
        gewartet = 0;
        EXPECT_EQ(grundVon(arbeit), Datenbankgrund::Gesperrt);
        EXPECT_EQ(gewartet, 2'000'000);
    }
    zugang->xSleep = schlafe;
}

TEST_F(Fremdtest, programThatDiesWhileItWrites_leavesNoLock) {
    Opferprozess anderer("sperren", ordner_.path(), -1, 1);
    ASSERT_TRUE(anderer.warteAuf(2));
    EXPECT_TRUE(anderer.töte());
    tabelle().speichere(satz(u"1"_s));
    EXPECT_EQ(tabelle().anzahl(), 20);
}

TEST_F(Fremdtest, twoProgramsOnOneFile_loseNoRow) {
    constexpr int Zeilen = 100;
    Opferprozess einer("nummern", ordner_.path(), 1000, Zeilen);
    Opferprozess anderer("nummern", ordner_.path(), 2000, Zeilen);
    EXPECT_TRUE(einer.entlasse());
    EXPECT_TRUE(anderer.entlasse());
    EXPECT_EQ(tabelle().anzahl(), 20 + 2 * Zeilen);
    for (int i = 0; i < Zeilen; ++i) {
        for (const int nummer : {1000 + i, 2000 + i}) {
            Ergebnissatz erwartet = fassung::satz(nummer);
            erwartet.U_NR = QString::number(nummer);
            EXPECT_TRUE(tabelle().lade(erwartet.U_NR) == erwartet) << nummer;
        }
    }
    EXPECT_EQ(fremd(u"PRAGMA integrity_check"_s), u"ok"_s);
}

TEST_F(Fremdtest, fileRemovedWhileItIsWritten_isToldAsGone) {
    const auto grund = grundVon([&] {
        mitErgebnisdatei(pfad_, std::chrono::milliseconds(20), [&](Ergebnisdatei& datei) {
            (void)datei.verbindung().execAndGet("SELECT COUNT(*) FROM Ergebnisse");
            QFile::remove(pfad_);
            datei.verbindung().exec("DELETE FROM Ergebnisse");
        });
    });
    EXPECT_EQ(grund, Datenbankgrund::Verschwunden);
    EXPECT_FALSE(QFileInfo::exists(pfad_)); // nothing new in its place
}

TEST_F(Fremdtest, fileReplacedWhileItIsWritten_isLeftAlone) {
    const QString andere = ordner_.filePath(u"andere.tdb"_s);
    NeueDatenbank(andere);
    const QByteArray neu = bytes(andere);
    const auto grund = grundVon([&] {
        mitErgebnisdatei(pfad_, std::chrono::milliseconds(20), [&](Ergebnisdatei& datei) {
            (void)datei.verbindung().execAndGet("SELECT COUNT(*) FROM Ergebnisse");
            QFile::rename(pfad_, ordner_.filePath(u"alt.tdb"_s));
            QFile::rename(andere, pfad_);
            datei.verbindung().exec("DELETE FROM Ergebnisse");
        });
    });
    EXPECT_EQ(grund, Datenbankgrund::Verschwunden);
    EXPECT_EQ(bytes(pfad_), neu);
    EXPECT_EQ(bytes(ordner_.filePath(u"alt.tdb"_s)), vorher_);
    tabelle().speichere(satz(u"1"_s)); // the next work is done on what is there now
    EXPECT_EQ(nummern(), u"1"_s);
}

TEST_F(Fremdtest, copyOntoALink_goesToItsFileAndKeepsWhoMayReadIt) {
    const QString ziel = ordner_.filePath(u"anderswo.tdb"_s);
    const QString verweis = ordner_.filePath(u"kopie.tdb"_s);
    schreibe(ziel, "an older copy");
    QFile::setPermissions(ziel, QFile::ReadOwner | QFile::WriteOwner);
    const auto rechte = QFileInfo(ziel).permissions();
    ASSERT_TRUE(QFile::link(ziel, verweis));
    tabelle().sichere(verweis);
    EXPECT_TRUE(QFileInfo(verweis).isSymLink());
    EXPECT_EQ(QFileInfo(ziel).permissions(), rechte);
    EXPECT_EQ(Ergebnistabelle(ziel).anzahl(), 20);
    schreibe(ziel + u"-journal"_s, "x"); // would be applied to the copy
    EXPECT_EQ(grundVon([&] { tabelle().sichere(verweis); }), Datenbankgrund::Gesperrt);
}

TEST_F(Fremdtest, newFiles_areForWhomTheHabitSays) {
    const auto rechte = [](const QString& pfad) {
        struct stat stand {};
        return ::stat(QFile::encodeName(pfad).constData(), &stand) == 0 ? stand.st_mode & 0777U : 0;
    };
    const mode_t gewohnt = ::umask(022);
    const QString journal = ordner_.filePath(u"Sitzung.journal"_s);
    EXPECT_TRUE(Sitzung(journal).merke(probesitzung(1, 0)));
    EXPECT_EQ(rechte(journal), 0600U);
    for (const mode_t maske : {022U, 077U}) {
        ::umask(maske);
        const QString neu = ordner_.filePath(u"%1.tdb"_s.arg(maske));
        const QString kopie = neu + u".kopie"_s;
        NeueDatenbank(neu);
        EXPECT_EQ(rechte(neu), 0666U & ~maske);
        tabelle().sichere(kopie);
        EXPECT_EQ(rechte(kopie), 0666U & ~maske);
    }
    ::umask(022);
    ASSERT_EQ(::chmod(QFile::encodeName(pfad_).constData(), 0600), 0);
    const QString eigene = ordner_.filePath(u"eigene.tdb"_s);
    tabelle().sichere(eigene);
    EXPECT_EQ(rechte(eigene), 0600U) << "a copy is for more people than the file";
    ::umask(gewohnt);
}

TEST_F(Fremdtest, fullDrive_keepsEveryFileAsItWas) {
    const QString ini = ordner_.filePath(u"Index.ini"_s);
    schreibe(ini, "[Voll]\r\nx=1\r\n");
    const QString benutzer = ordner_.filePath(u"benutzer.ini"_s);
    ASSERT_TRUE(Benutzerspeicher(benutzer).SaveSetting(u"A"_s, u"B"_s, u"C"_s, u"/path"_s));
    const QString kopie = ordner_.filePath(u"kopie.tdb"_s);
    schreibe(kopie, "an older copy");
    const QString journal = ordner_.filePath(u"Sitzung.journal"_s);
    const QStringList dateien = QDir(ordner_.path()).entryList(QDir::Files);
    const qint64 kaumPlatz = 8192;

    for (const QString& ziel : {kopie, ordner_.filePath(u"erste Kopie.tdb"_s)}) {
        EXPECT_TRUE(beiVollemLaufwerk(kaumPlatz, [&] {
            return grundVon([&] { tabelle().sichere(ziel); }) == Datenbankgrund::Voll;
        })) << ziel.toStdString();
    }
    EXPECT_TRUE(beiVollemLaufwerk(kaumPlatz, [&] {
        return grundVon([&] { NeueDatenbank(ordner_.filePath(u"neu.tdb"_s)); }) ==
               Datenbankgrund::Voll;
    }));
    EXPECT_TRUE(beiVollemLaufwerk(vorher_.size(), [&] {
        Ergebnissatz groß = satz(u"1"_s);
        groß.CI = QString(500'000, u'y');
        return grundVon([&] { tabelle().speichere(groß); }) == Datenbankgrund::Voll;
    }));
    EXPECT_TRUE(beiVollemLaufwerk(kaumPlatz, [&] {
        return !Sitzung(journal).merke(probesitzung(40, 0)) && !QFileInfo::exists(journal);
    }));
    EXPECT_TRUE(beiVollemLaufwerk(
        10, [&] { return !WritePrivateProfileStringA("Voll", "x", "a longer value", ini); }));
    EXPECT_TRUE(beiVollemLaufwerk(10, [&] {
        return !Benutzerspeicher(benutzer).SaveSetting(u"A"_s, u"B"_s, u"C"_s, u"/longer/path"_s);
    }));

    EXPECT_EQ(bytes(pfad_), vorher_);
    EXPECT_EQ(bytes(kopie), "an older copy");
    EXPECT_EQ(bytes(ini), "[Voll]\r\nx=1\r\n");
    EXPECT_EQ(Benutzerspeicher(benutzer).GetSetting(u"A"_s, u"B"_s, u"C"_s), u"/path"_s);
    EXPECT_EQ(QDir(ordner_.path()).entryList(QDir::Files), dateien); // no half file is left over
}
