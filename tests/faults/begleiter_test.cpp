// What lies beside a results file under the names that the engine gives its own files: journals
// that somebody built, pipes and links. Also drives that keep no locks, and folders that take
// nothing.

#include "results/ergebnisdateien.h"

#include <QDir>
#include <QProcess>
#include <QtEndian>

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstddef>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

QByteArray zahl32(quint32 zahl) {
    QByteArray bytes(4, '\0');
    qToBigEndian(zahl, bytes.data());
    return bytes;
}

const QByteArray kennung = QByteArray::fromHex("d9d505f920a163d7");

/// A journal that undoes nothing, and names a file that the engine shall take away.
QByteArray gefälscht(const QString& opfer, int seiten) {
    const QByteArray name = opfer.toUtf8();
    quint32 summe = 0;
    for (const char c : name) {
        summe += static_cast<quint32>(static_cast<int>(c));
    }
    const QByteArray kopf =
        kennung + zahl32(0) + zahl32(7) + zahl32(seiten) + zahl32(512) + zahl32(4096);
    return kopf.leftJustified(512, '\0') + zahl32(262145) + name +
           zahl32(static_cast<quint32>(name.size())) + zahl32(summe) + kennung;
}

/// From here on the system keeps no lock on any file.
bool nimmSperrenWeg() {
    constexpr auto stelle = [](std::size_t feld) { return static_cast<__u32>(feld); };
    std::array<sock_filter, 7> regeln{{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, stelle(offsetof(seccomp_data, nr))),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_fcntl, 0, 4),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, stelle(offsetof(seccomp_data, args[1]))),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, F_SETLK, 1, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, F_GETLK, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOLCK),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    const sock_fprog programm{static_cast<unsigned short>(regeln.size()), regeln.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &programm) == 0;
}

class Begleitertest : public Dateitest {
protected:
    QString opfer_ = ordner_.filePath(u"Rechnung.txt"_s);

    void SetUp() override {
        Dateitest::SetUp();
        tabelle().speichere(satz(u"7"_s));
        schreibe(opfer_, "of the user");
    }

    [[nodiscard]] int seiten() const { return static_cast<int>(bytes(pfad_).size() / 4096); }

    /// What leads to opening the file, by name.
    [[nodiscard]] std::vector<std::pair<const char*, std::function<void()>>> wege() const {
        return {
            {"try", [this] { tabelle().öffneProbeweise(); }},
            {"browse", [this] { (void)tabelle().zeilen(u"SELECT * FROM Ergebnisse"_s, {}, 9); }},
            {"load", [this] { (void)tabelle().lade(u"7"_s); }},
            {"save", [this] { tabelle().speichere(satz(u"8"_s)); }},
            {"backup", [this] { tabelle().sichere(ordner_.filePath(u"kopie.tdb"_s)); }},
            {"export",
             [this] { tabelle().sätze({1}, [](const Ergebnissatz&) { return true; }, {}); }}};
    }

    /// Runs @p versuch in a process of its own, which ends by force when it waits for ever. True
    /// when it says so.
    static bool inEigenemProzess(const std::function<bool()>& versuch) {
        const pid_t kind = fork();
        if (kind == 0) {
            alarm(20);
            _exit(versuch() ? 0 : 1);
        }
        int ende = -1;
        waitpid(kind, &ende, 0);
        return ende == 0;
    }
};

} // namespace

TEST_F(Begleitertest, journalThatNamesAnotherFile_isRefusedAndNothingGoes) {
    const QString journal = pfad_ + u"-journal"_s;
    const QByteArray vorher = bytes(pfad_);
    for (const QByteArray& inhalt : {gefälscht(opfer_, seiten()), gefälscht(opfer_, 0),
                                     gefälscht(opfer_, seiten()).replace(0, 8, "another")}) {
        for (const auto& [was, arbeit] : wege()) {
            SCOPED_TRACE(was);
            schreibe(journal, inhalt);
            const auto fehler = fehlerVon(arbeit);
            ASSERT_TRUE(fehler);
            EXPECT_EQ(fehler->grund(), Datenbankgrund::FremdesJournal);
            EXPECT_EQ(bytes(opfer_), "of the user");
            EXPECT_EQ(bytes(journal), inhalt);
            EXPECT_EQ(bytes(pfad_), vorher);
        }
    }
    Texte texte{QString()};
    for (int sprache = 0; sprache < anzahlSprachen; ++sprache) {
        texte.SpracheEinstellen(sprache);
        const auto fehler = fehlerVon([&] { (void)tabelle().lade(u"7"_s); });
        EXPECT_TRUE(meldungstext(texte, *fehler).contains(journal));
    }
    QFile::remove(journal);
    EXPECT_TRUE(tabelle().lade(u"7"_s));
}

TEST_F(Begleitertest, whatIsNoFile_isNeitherFollowedNorWaitedFor) {
    const auto pipe = [](const QString& wo) { mkfifo(qUtf8Printable(wo), 0666); };
    const auto link = [this](const QString& wo) { QFile::link(opfer_, wo); };
    const auto toterLink = [this](const QString& wo) {
        QFile::link(ordner_.filePath(u"neu"_s), wo);
    };
    const auto ordner = [](const QString& wo) { QDir().mkdir(wo); };
    for (const char* begleiter : {"-journal", "-wal", "-shm"}) {
        for (const std::function<void(const QString&)>& lege :
             {std::function<void(const QString&)>(pipe), {link}, {toterLink}, {ordner}}) {
            const QString wo = pfad_ + QString::fromLatin1(begleiter);
            SCOPED_TRACE(begleiter);
            for (const char* art : {"DELETE", "WAL"}) {
                fremd(u"PRAGMA journal_mode = "_s + QString::fromLatin1(art));
                lege(wo);
                const QByteArray vorher = bytes(pfad_);
                EXPECT_TRUE(inEigenemProzess([&] {
                    const auto lesen = grundVon([&] { (void)tabelle().lade(u"7"_s); });
                    const auto schreiben = grundVon([&] { tabelle().speichere(satz(u"7"_s)); });
                    const auto erlaubt = [](const auto& grund) {
                        return !grund || grund == Datenbankgrund::FremdesJournal;
                    };
                    return erlaubt(lesen) && erlaubt(schreiben);
                })) << art;
                EXPECT_EQ(bytes(opfer_), "of the user");
                EXPECT_FALSE(QFile::exists(ordner_.filePath(u"neu"_s)));
                QFile::remove(wo);
                QDir().rmdir(wo);
            }
        }
    }
    EXPECT_EQ(tabelle().anzahl(), 1);
}

TEST_F(Begleitertest, driveWithoutLocks_isToldAsSuch) {
    EXPECT_TRUE(inEigenemProzess([&] {
        if (!nimmSperrenWeg()) {
            return true; // this system lets nobody try it
        }
        return grundVon([&] { (void)tabelle().lade(u"7"_s); }) == Datenbankgrund::OhneSperren &&
               grundVon([&] { tabelle().speichere(satz(u"7"_s)); }) == Datenbankgrund::OhneSperren;
    }));
}

TEST_F(Begleitertest, fileWithALogOfWrites_isReadInAFolderThatTakesNothing) {
    fremd(u"PRAGMA journal_mode = WAL"_s);
    ASSERT_EQ(QDir(ordner_.path()).entryList(QDir::Files).size(), 2);
    QFile::setPermissions(ordner_.path(), QFileDevice::Permissions(0x5555));
    const OhneSonderrechte jemand;
    if (!jemand.istEingeschränkt()) {
        GTEST_SKIP() << "write protection cannot be tried with these rights";
    }
    EXPECT_EQ(grundVon([&] { tabelle().öffneProbeweise(); }), std::nullopt);
    EXPECT_EQ(tabelle().anzahl(), 1);
    EXPECT_TRUE(tabelle().lade(u"7"_s));
    EXPECT_EQ(grundVon([&] { tabelle().speichere(satz(u"8"_s)); }),
              Datenbankgrund::Schreibgeschützt);
}
