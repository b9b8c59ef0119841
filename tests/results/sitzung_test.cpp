// The journal of the open session: whatever happens to the file, a whole state comes back or none.

#include "results/sitzung.h"

#include "results/ergebnisdateien.h"
#include "results/sitzungsprobe.h"
#include "results/sitzungstext.h"
#include "support/testordner.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <random>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

class Sitzungstest : public testing::Test {
protected:
    Testordner ordner_;
    QString pfad_ = ordner_.filePath(u"Sitzung.journal"_s);

    [[nodiscard]] QByteArray bytes() const { return liesGanz(pfad_); }
    void schreibe(const QByteArray& inhalt) const { lege(pfad_, inhalt); }
    /// What a start after now finds.
    [[nodiscard]] QString gelesen() const {
        const auto stand = Sitzung(pfad_).lies();
        return stand ? abbild(*stand) : u"nichts"_s;
    }
    [[nodiscard]] QStringList dateien() const {
        return QDir(ordner_.path()).entryList(QDir::Files, QDir::Name);
    }
};

/// The states of a session: an examination, two clicks, a wing taken over, another click.
std::vector<Sitzungsstand> verlauf() {
    return {probesitzung(2, 0), probesitzung(2, 1), probesitzung(2, 2), probesitzung(3, 0),
            probesitzung(3, 1)};
}

} // namespace

TEST_F(Sitzungstest, everyState_comesBackWhoeverWritesNumbers) {
    for (const Zahlenformat& format :
         {Zahlenformat{}, {.dezimal = u',', .tausender = u'.'}, {u',', QChar(0x202F)}}) {
        Sitzung sitzung(pfad_);
        EXPECT_FALSE(sitzung.lies());
        for (const auto& [flügel, punkte] :
             {std::pair{0, 1}, {0, 8}, {1, 0}, {7, 3}, {200, 0}, {199, 5}}) {
            Sitzungsstand stand = probesitzung(flügel, punkte, format);
            stand.wiederholt = static_cast<qint16>(flügel / 2);
            ASSERT_TRUE(sitzung.merke(stand));
            EXPECT_EQ(gelesen(), abbild(stand));
        }
        Sitzungsstand drohnen = probesitzung(1, 0, format);
        drohnen.angaben.Tiere = Geschlecht::Drohnen;
        drohnen.merkmale = {};
        drohnen.merkmale.Tiere = Geschlecht::Drohnen;
        drohnen.merkmale.Modus = Merkmalmodus::Summen;
        drohnen.merkmale.Summen = {3, 0, 2, 1, 0, 0, 1};
        drohnen.datum = {};
        drohnen.flügel.punkte = probepunkte(1, Messart::NurCubitalindex);
        drohnen.flügel.messart = Messart::NurCubitalindex;
        // What the results file leaves out has to survive a crash.
        drohnen.reihe.trageEin(2, {.CI = 0.0F, .HI = {}, .DV = {}, .fehler = {}}, {}, format);
        drohnen.reihe.trageEin(3, {.CI = 1.0F / 3, .HI = 2.0F / 3, .DV = -1e-7F, .fehler = {}}, {},
                               format);
        ASSERT_TRUE(sitzung.merke(drohnen));
        EXPECT_EQ(gelesen(), abbild(drohnen));
        EXPECT_TRUE(sitzung.lösche());
    }
    EXPECT_TRUE(dateien().isEmpty());
}

TEST_F(Sitzungstest, anyOneChange_isKept) {
    const std::vector<std::function<void(Sitzungsstand&)>> änderungen{
        [](auto& s) { s.DatenbankPfad = u"/b.tdb"_s; },
        [](auto& s) { s.gespeicherteNummer.clear(); },
        [](auto& s) { s.datum = QDate(2024, 2, 29); },
        [](auto& s) { s.angabenGeändert = false; },
        [](auto& s) { s.messungenGeändert = false; },
        [](auto& s) { s.angaben.Begattung = u"x"_s; },
        [](auto& s) { s.merkmale.Modus = Merkmalmodus::Summen; },
        [](auto& s) { s.merkmale.Summen[9] = 1; },
        [](auto& s) { s.reihe.löscheLetzte(); },
        [](auto& s) { // a line alone
            auto zeilen = s.reihe.hiDvZeilen();
            zeilen.pop_back();
            s.reihe.stelleHer(s.reihe.ciZeilen(), zeilen, {}, s.reihe.messungen());
        },
        [](auto& s) { // points alone
            auto messungen = s.reihe.messungen();
            messungen.at(2).punkte.PunktX[1] += 0.25F;
            s.reihe.stelleHer(s.reihe.ciZeilen(), s.reihe.hiDvZeilen(),
                              {{1, s.reihe.chartwerte(1)}, {2, s.reihe.chartwerte(2)}}, messungen);
        },
        [](auto& s) { // a chart value alone
            s.reihe.stelleHer(s.reihe.ciZeilen(), s.reihe.hiDvZeilen(),
                              {{1, s.reihe.chartwerte(1)}}, s.reihe.messungen());
        },
        [](auto& s) { s.flügel.punkte.PunktY[1] += 0.25F; },
        [](auto& s) { s.flügel.bilddatei = u"/b.jpg"_s; },
        [](auto& s) { s.wiederholt = 1; },
        [](auto& s) { s.ansicht = u"Karte"_s; },
    };
    const Sitzungsstand vorher = probesitzung(2, 1);
    for (std::size_t i = 0; i < änderungen.size(); ++i) {
        Sitzung sitzung(pfad_);
        ASSERT_TRUE(sitzung.merke(vorher));
        Sitzungsstand nachher = vorher;
        änderungen[i](nachher);
        EXPECT_NE(abbild(nachher), abbild(vorher)) << i;
        EXPECT_TRUE(sitzung.merke(nachher));
        EXPECT_EQ(gelesen(), abbild(nachher)) << i;
        EXPECT_TRUE(sitzung.lösche());
    }
}

TEST_F(Sitzungstest, blockWhoseFieldsMakeNoSense_doesNotCountForAllItsChecksum) {
    const Sitzungsstand stand = probesitzung(2, 1);
    const QByteArray zeilen = untersuchungszeilen(stand) + flügelzeilen(stand);
    ASSERT_TRUE(sitzungAus(sitzungsblock(zeilen)).stand);
    const QList<QByteArray> felder = zeilen.chopped(1).split('\n');
    for (const QByteArray& feld : felder) {
        QByteArray ohne = zeilen;
        ohne.remove(zeilen.indexOf(feld), feld.size() + 1);
        const Sitzungslesung lesung = sitzungAus(sitzungsblock(ohne));
        EXPECT_FALSE(lesung.stand) << feld.left(20).toStdString();
        EXPECT_TRUE(lesung.beschädigt);
    }
    const std::pair<QByteArray, QByteArray> falsche[] = {
        {"Datum=2025-", "Datum=2025+"},
        {"Geaendert=3", "Geaendert=4"},
        {"Rasse=2", "Rasse=4"},
        {"Rasse=2", "Rasse=-1"},
        {"Tiere=0", "Tiere="},
        {"CI=#001;", "CI=#201;"},
        {"HIDV=#001;", "HIDV=001;"},
        {"Werte=001/", "Werte=001/1/"},
        {"Werte=001/", "Werte=x/"},
        {"Punkte=Punkte 1;001/", "Punkte=Punkte 1;003/"},
        {"Angaben=Angaben 1;", "Angaben=Angaben 2;"},
        {"Modus=L;", "Modus=X;"},
        {"Fluegel=Punkte 1;001/", "Fluegel=Punkte 1;002/"},
        {"Ansicht=", "Ansicht"},
    };
    for (const auto& [richtig, falsch] : falsche) {
        ASSERT_TRUE(zeilen.contains(richtig)) << richtig.toStdString();
        const QByteArray geändert = QByteArray(zeilen).replace(richtig, falsch);
        EXPECT_FALSE(sitzungAus(sitzungsblock(geändert)).stand) << falsch.toStdString();
    }
}

TEST_F(Sitzungstest, examination_goesOnWithWhatWasChanged) {
    for (const auto& [angaben, messungen] : {std::pair{true, false}, {false, true}, {true, true}}) {
        Sitzungsstand stand = probesitzung(3, 0);
        stand.angabenGeändert = angaben;
        stand.messungenGeändert = messungen;
        Untersuchung untersuchung;
        stelleHer(untersuchung, stand);
        EXPECT_EQ(untersuchung.angabenGeändert(), angaben);
        EXPECT_EQ(untersuchung.messungenGeändert(), messungen);
        Sitzungsstand wieder = sitzungsstand(untersuchung);
        for (auto feld : {&Sitzungsstand::DatenbankPfad, &Sitzungsstand::gespeicherteNummer,
                          &Sitzungsstand::ansicht}) {
            wieder.*feld = stand.*feld;
        }
        wieder.flügel = stand.flügel;
        EXPECT_EQ(abbild(wieder), abbild(stand));
    }
}

TEST_F(Sitzungstest, file_isThereOnlyWhileThereIsSomethingToLose) {
    Sitzungsstand unverändert;
    unverändert.angaben.UNr = u"001"_s;
    Sitzungsstand stand = probesitzung(1, 1);
    {
        Sitzung sitzung(pfad_);
        EXPECT_TRUE(sitzung.merke(unverändert));
        EXPECT_TRUE(dateien().isEmpty());

        EXPECT_TRUE(sitzung.merke(stand));
        const QByteArray einmal = bytes();
        EXPECT_TRUE(sitzung.merke(stand));
        EXPECT_EQ(bytes(), einmal); // not written again
        stand.flügel.punkte.setzeNächsten(stand.flügel.messart, 1, 2);
        EXPECT_TRUE(sitzung.merke(stand));
        EXPECT_LT(bytes().size(), einmal.size() + 600); // a click adds no series
    }

    // At the next start it waits for the answer, whatever is open meanwhile.
    Sitzung nächste(pfad_);
    EXPECT_TRUE(nächste.lies());
    EXPECT_TRUE(nächste.merke(unverändert));
    EXPECT_EQ(gelesen(), abbild(stand));
    EXPECT_TRUE(nächste.merke(stand)); // taken up, then stored
    EXPECT_TRUE(nächste.merke(unverändert));
    EXPECT_TRUE(dateien().isEmpty());
}

#ifdef Q_OS_UNIX
TEST_F(Sitzungstest, file_isForItsOwnerAlone) {
    const auto allein = [this] {
        return (QFileInfo(pfad_).permissions() & (QFile::ReadGroup | QFile::ReadOther)) == 0;
    };
    ASSERT_TRUE(Sitzung(pfad_).merke(probesitzung(1, 0)));
    EXPECT_TRUE(allein());
    QFile::setPermissions(pfad_, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther);
    EXPECT_TRUE(Sitzung(pfad_).lies()); // of an earlier version
    EXPECT_TRUE(allein());
}

TEST_F(Sitzungstest, givenUpInAFolderThatKeepsItsNames_doesNotComeBack) {
    Sitzung sitzung(pfad_);
    ASSERT_TRUE(sitzung.merke(probesitzung(2, 3)));
    QFile::setPermissions(pfad_, QFileDevice::Permissions(0x6666));
    QFile::setPermissions(ordner_.path(), QFileDevice::Permissions(0x5555));
    {
        const OhneSonderrechte somebody;
        if (!somebody.istEingeschränkt()) {
            GTEST_SKIP() << "write protection cannot be tried with these rights";
        }
        EXPECT_TRUE(sitzung.lösche());
        EXPECT_EQ(gelesen(), u"nichts"_s);
    }
    QFile::setPermissions(ordner_.path(), QFileDevice::Permissions(0x7777));
    EXPECT_EQ(dateien(), QStringList(u"Sitzung.journal"_s)); // empty, and not put aside
}
#endif

TEST_F(Sitzungstest, fileCutOffAtAnyByte_isOneOfTheStates) {
    QList<QByteArray> dateistände{{}};
    QStringList stände{u"nichts"_s};
    {
        Sitzung sitzung(pfad_);
        for (const Sitzungsstand& stand : verlauf()) {
            ASSERT_TRUE(sitzung.merke(stand));
            dateistände << bytes();
            stände << abbild(stand);
        }
    }
    const QByteArray ganz = dateistände.last();
    for (qsizetype länge = 0; länge <= ganz.size(); ++länge) {
        qsizetype letzter = 0;
        while (letzter + 1 < dateistände.size() && dateistände[letzter + 1].size() <= länge) {
            ++letzter;
        }
        // A power cut can leave the room of a block without its content.
        for (const QByteArray& ende :
             {QByteArray(), QByteArray(länge % 7 == 0 ? ganz.size() - länge : 0, '\0')}) {
            const Sitzungslesung lesung = sitzungAus(ganz.left(länge) + ende);
            const QString stand = lesung.stand ? abbild(*lesung.stand) : u"nichts"_s;
            ASSERT_EQ(stand, stände[letzter]) << länge;
            ASSERT_EQ(lesung.ende, dateistände[letzter].size()) << länge;
        }
    }

    // The program goes on behind the cut.
    schreibe(dateistände[4].chopped(10));
    Sitzung sitzung(pfad_);
    EXPECT_EQ(abbild(*sitzung.lies()), stände[3]);
    EXPECT_TRUE(sitzung.beiseite().isEmpty());
    const Sitzungsstand weiter = probesitzung(2, 3);
    EXPECT_TRUE(sitzung.merke(weiter));
    EXPECT_EQ(gelesen(), abbild(weiter));
    EXPECT_EQ(dateien().size(), 1);
}

TEST_F(Sitzungstest, clickBehindADamagedExamination_isNotTakenForOneOfTheFormer) {
    QStringList stände;
    QList<qsizetype> enden;
    Sitzung sitzung(pfad_);
    for (const Sitzungsstand& stand : verlauf()) {
        ASSERT_TRUE(sitzung.merke(stand));
        enden << bytes().size();
        stände << abbild(stand);
    }
    QByteArray inhalt = bytes();
    inhalt[enden[2] + 100] = '\x01'; // in the examination of the wing taken over
    EXPECT_EQ(abbild(*sitzungAus(inhalt).stand), stände[2]);

    inhalt = bytes();
    inhalt[enden[2] - 45] = '\x01'; // in the end of the block before it
    const Sitzungslesung lesung = sitzungAus(inhalt);
    EXPECT_EQ(abbild(*lesung.stand), stände[4]);
    EXPECT_TRUE(lesung.beschädigt);
}

TEST_F(Sitzungstest, randomDamage_givesOneOfTheStatesAndKeepsTheFile) {
    QStringList stände;
    QByteArray ganz;
    {
        Sitzung sitzung(pfad_);
        for (const Sitzungsstand& stand : verlauf()) {
            ASSERT_TRUE(sitzung.merke(stand));
            stände << abbild(stand);
        }
        ganz = bytes();
    }
    std::mt19937 zufall(7); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same in every run
    int verschieden = 0;
    for (int versuch = 0; versuch < 400; ++versuch) {
        QByteArray inhalt = ganz;
        for (unsigned schaden = 0; schaden <= zufall() % 3; ++schaden) {
            const auto stelle = static_cast<qsizetype>(zufall() % inhalt.size());
            switch (zufall() % 3) {
            case 0:
                inhalt[stelle] = static_cast<char>(inhalt[stelle] ^ (1U << (zufall() % 8)));
                break;
            case 1:
                inhalt.remove(stelle, static_cast<qsizetype>(zufall() % 400));
                break;
            default:
                inhalt.insert(stelle, inhalt.mid(static_cast<qsizetype>(zufall() % 500), 90));
            }
        }
        const Sitzungslesung lesung = sitzungAus(inhalt);
        if (lesung.stand) {
            ASSERT_TRUE(stände.contains(abbild(*lesung.stand))) << versuch;
            verschieden += abbild(*lesung.stand) == stände.last() ? 0 : 1;
        }
    }
    EXPECT_GT(verschieden, 20);

    ganz[ganz.size() / 2] = '\x01';
    schreibe(ganz);
    Sitzung sitzung(pfad_);
    const auto stand = sitzung.lies();
    ASSERT_TRUE(stand);
    EXPECT_EQ(liesGanz(sitzung.beiseite()), ganz);
    EXPECT_EQ(gelesen(), abbild(*stand)); // still offered by the start after this one
}

TEST_F(Sitzungstest, filesOfOthers_arePutAside) {
    Sitzung(pfad_).merke(probesitzung(1, 1));
    QByteArray andereVersion = bytes();
    andereVersion.replace("Sitzung 1", "Sitzung 2");
    QByteArray zuGroßerPunkt =
        sitzungsblock(untersuchungszeilen(probesitzung(1, 1)) +
                      flügelzeilen(probesitzung(1, 1)).replace("Wiederholt=0", "Wiederholt=201"));
    QStringList beiseite;
    for (const QByteArray& inhalt :
         {andereVersion, zuGroßerPunkt, sitzungsblock("x\n"), QByteArray("Lieber Imker\n"),
          QByteArray(5000, '\0'), QByteArray("\nSumme=").repeated(500)}) {
        schreibe(inhalt);
        Sitzung sitzung(pfad_);
        EXPECT_FALSE(sitzung.lies());
        EXPECT_EQ(liesGanz(sitzung.beiseite()), inhalt);
        beiseite << sitzung.beiseite();
        EXPECT_TRUE(sitzung.merke(probesitzung(1, 2)));
        EXPECT_EQ(gelesen(), abbild(probesitzung(1, 2)));
    }
    EXPECT_EQ(beiseite.removeDuplicates(), 0);
    schreibe({});
    Sitzung leer(pfad_);
    EXPECT_FALSE(leer.lies());
    EXPECT_TRUE(leer.beiseite().isEmpty());
#ifdef Q_OS_LINUX
    QFile::remove(pfad_);
    ASSERT_TRUE(QFile::link(u"/proc/self/mem"_s, pfad_)); // reading it fails as a bad drive does
    Sitzung unlesbar(pfad_);
    EXPECT_FALSE(unlesbar.lies());
    EXPECT_FALSE(unlesbar.beiseite().isEmpty());
#endif
}

TEST_F(Sitzungstest, fileThatGoesMeanwhile_isMadeAnewAsAWhole) {
    Sitzung sitzung(pfad_);
    ASSERT_TRUE(sitzung.merke(probesitzung(2, 1)));
    ASSERT_TRUE(QFile::remove(pfad_));
    EXPECT_TRUE(sitzung.merke(probesitzung(2, 2)));
    EXPECT_EQ(gelesen(), abbild(probesitzung(2, 2)));
    schreibe("short");
    EXPECT_TRUE(sitzung.merke(probesitzung(2, 3)));
    EXPECT_EQ(gelesen(), abbild(probesitzung(2, 3)));
}

/// The longest examination, clicked on until the file was made anew beside the clicks.
TEST_F(Sitzungstest, grownFile_isMadeAnewWithoutHoldingUpAClick) {
    constexpr int Höchstens = 50000;
    Sitzung sitzung(pfad_);
    Sitzungsstand stand = probesitzung(200, 1);
    ASSERT_TRUE(sitzung.merke(stand));
    const qint64 ganz = QFileInfo(pfad_).size();
    stand.flügel.punkte.PunktX[1] += 1;
    ASSERT_TRUE(sitzung.merke(stand));
    RecordProperty("bytes of an examination", static_cast<int>(ganz));
    RecordProperty("bytes of a click", static_cast<int>(QFileInfo(pfad_).size() - ganz));
    qint64 schlechteste = 0;
    bool gewachsen = false;
    bool neu = false;
    for (int i = 0; i < Höchstens && !neu; ++i) {
        stand.flügel.punkte.PunktX[1] += 0.25F;
        if (!gewachsen) {
            stand.angaben.Volk = QString::number(i); // all of it is written
        }
        QElapsedTimer uhr;
        uhr.start();
        ASSERT_TRUE(sitzung.merke(stand));
        schlechteste = std::max(schlechteste, uhr.nsecsElapsed() / 1000);
        const qint64 größe = QFileInfo(pfad_).size();
        neu = gewachsen && größe < Sitzung::Neuanfang;
        gewachsen = gewachsen || größe >= Sitzung::Neuanfang;
        if (größe >= Sitzung::Neuanfang || neu) {
            ASSERT_EQ(gelesen(), abbild(stand));
        }
    }
    EXPECT_TRUE(neu);
    RecordProperty("longest call in microseconds", static_cast<int>(schlechteste));
    std::printf("journal: %lld bytes an examination, longest call %lld us\n",
                static_cast<long long>(ganz), static_cast<long long>(schlechteste));
    stand.wiederholt = 5;
    EXPECT_TRUE(sitzung.merke(stand));
    EXPECT_EQ(gelesen(), abbild(stand));
    EXPECT_TRUE(sitzung.lösche());
    EXPECT_TRUE(dateien().isEmpty());
}

TEST_F(Sitzungstest, nowhereToWrite_isSaidAndTriedAgain) {
    Sitzung nirgends(ordner_.filePath(u"fehlt/Sitzung.journal"_s));
    EXPECT_FALSE(nirgends.lies());
    EXPECT_FALSE(nirgends.merke(probesitzung(1, 1)));
    EXPECT_FALSE(nirgends.merke(probesitzung(1, 1)));
    ASSERT_TRUE(QDir(ordner_.path()).mkdir(u"fehlt"_s));
    EXPECT_TRUE(nirgends.merke(probesitzung(1, 1)));
    EXPECT_TRUE(nirgends.lösche());

    ASSERT_TRUE(QDir(ordner_.path()).mkdir(u"Sitzung.journal"_s));
    Sitzung ordner(pfad_);
    EXPECT_FALSE(ordner.lies());
    EXPECT_FALSE(ordner.merke(probesitzung(1, 1)));
}

#ifdef Q_OS_UNIX
TEST_F(Sitzungstest, fullDrive_keepsTheFormerState) {
    Sitzung sitzung(pfad_);
    ASSERT_TRUE(sitzung.merke(probesitzung(2, 1)));
    const QByteArray vorher = bytes();
    const pid_t kind = fork();
    if (kind == 0) { // a limit on the size of files stands for the drive
        (void)std::signal(SIGXFSZ, SIG_IGN);
        rlimit grenze{static_cast<rlim_t>(vorher.size() + 100), RLIM_INFINITY};
        setrlimit(RLIMIT_FSIZE, &grenze);
        Sitzung andere(pfad_);
        bool gut = andere.lies().has_value() && !andere.merke(probesitzung(2, 2)) &&
                   bytes() == vorher && !andere.merke(probesitzung(3, 0)) && bytes() == vorher;
        grenze.rlim_cur = RLIM_INFINITY;
        setrlimit(RLIMIT_FSIZE, &grenze);
        gut = gut && andere.merke(probesitzung(3, 0));
        _exit(gut ? 0 : 1);
    }
    int ende = -1;
    waitpid(kind, &ende, 0);
    EXPECT_EQ(ende, 0);
    EXPECT_EQ(gelesen(), abbild(probesitzung(3, 0)));
}
#endif
