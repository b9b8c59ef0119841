#include "batch/aufruf.h"
#include "results/ergebnistabelle.h"

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class Zusammenführen : public Batchtest {
protected:
    void SetUp() override {
        for (const QString& name : {u"a.tdb"_s, u"b.tdb"_s}) {
            NeueDatenbank(pfad(name));
        }
        speichere(u"a.tdb"_s, u"001AB2025"_s, u"meiner"_s);
        speichere(u"b.tdb"_s, u"001AB2025"_s, u"anderer"_s);
        speichere(u"b.tdb"_s, u"002AB2025"_s, u"neuer"_s);
    }
    void speichere(const QString& datei, const QString& nummer, const QString& name) const {
        Ergebnissatz satz;
        satz.U_NR = nummer;
        satz.Z_NAME = name;
        satz.CI = u"#001;2,31;12,3; "_s;
        Ergebnistabelle(pfad(datei)).speichere(satz);
    }
    [[nodiscard]] std::string züchter(const QString& nummer) const {
        const auto satz = Ergebnistabelle(pfad(u"a.tdb"_s)).lade(nummer);
        return satz ? satz->Z_NAME.toStdString() : "none";
    }
};

} // namespace

TEST_F(Zusammenführen, listsAndDoesWhatTheOptionSays_andAgainNothing) {
    const QByteArray vorher = lies(u"a.tdb"_s);
    const Lauf probe = rufe(u"merge --dry-run --keep-both a.tdb b.tdb"_s);
    EXPECT_EQ(probe.status, 0) << probe.fehler;
    EXPECT_EQ(probe.ausgabe, "b.tdb: 001AB2025: conflicting, keep both\n"
                             "b.tdb: 002AB2025: new\n"
                             "b.tdb: 1 new, 1 conflicting, 0 the same\n");
    EXPECT_EQ(lies(u"a.tdb"_s), vorher);

    const Lauf ohneWahl = rufe(u"merge a.tdb b.tdb"_s);
    EXPECT_EQ(ohneWahl.status, 1) << "nobody said what becomes of the conflicting one";
    EXPECT_EQ(züchter(u"001AB2025"_s), "meiner");
    EXPECT_EQ(züchter(u"002AB2025"_s), "neuer");

    const Lauf beide = rufe(u"merge --keep-both a.tdb b.tdb"_s);
    EXPECT_EQ(beide.status, 0) << beide.fehler;
    EXPECT_THAT(beide.ausgabe, HasSubstr("001AB2025: conflicting, keep both → 003AB2025\n"));
    EXPECT_EQ(züchter(u"003AB2025"_s), "anderer");
    const Lauf wieder = rufe(u"merge --take-theirs a.tdb b.tdb"_s);
    EXPECT_EQ(wieder.status, 0);
    EXPECT_EQ(wieder.ausgabe,
              "b.tdb: 0 new, 0 conflicting, 2 the same\n"
              "b.tdb: Taken over: 0, of them under a new number: 0. Replaced: 0.\n");
    speichere(u"b.tdb"_s, u"001AB2025"_s, u"noch anders"_s);
    EXPECT_EQ(rufe(u"merge --take-theirs --language de a.tdb b.tdb"_s).status, 0);
    EXPECT_EQ(züchter(u"001AB2025"_s), "noch anders");
}

TEST_F(Zusammenführen, whatItChanged_isBackedUpOnceADay_unlessTheSettingsSayOtherwise) {
    const auto sicherungen = [this] {
        return QDir(pfad(u"Tarvel Backup"_s)).entryList(QDir::Files).size();
    };
    schreibe(u"Index.ini"_s, "[Speichern]\r\nTagessicherung=0\r\n");
    EXPECT_EQ(rufe(u"merge --dry-run --keep-mine a.tdb b.tdb"_s).status, 0);
    EXPECT_EQ(rufe(u"merge --keep-mine --ini Index.ini a.tdb b.tdb"_s).status, 0);
    EXPECT_EQ(rufe(u"merge --keep-mine --ini fehlt.ini a.tdb b.tdb"_s).status, 1);
    EXPECT_EQ(rufe(u"merge --keep-mine a.tdb b.tdb"_s).status, 0);
    EXPECT_EQ(sicherungen(), 0) << "nothing came in";
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(rufe(u"merge --keep-both a.tdb b.tdb"_s).status, 0);
        EXPECT_EQ(sicherungen(), 1);
    }
    // What cannot be backed up is told; the merge is done all the same.
    ASSERT_TRUE(QDir(pfad(u"Tarvel Backup"_s)).removeRecursively());
    schreibe(u"Tarvel Backup"_s, "no folder");
    speichere(u"b.tdb"_s, u"009AB2025"_s, u"noch einer"_s);
    const Lauf lauf = rufe(u"merge --keep-both a.tdb b.tdb"_s);
    EXPECT_EQ(lauf.status, 0);
    EXPECT_THAT(lauf.fehler, HasSubstr("daily backup"));
    EXPECT_EQ(züchter(u"009AB2025"_s), "noch einer");
}

TEST_F(Zusammenführen, oneFileThatIsRefused_doesNotStopTheOthers) {
    schreibe(u"kaputt.tdb"_s, "no results file");
    const Lauf lauf = rufe(u"merge --keep-mine a.tdb kaputt.tdb fehlt.tdb a.tdb b.tdb"_s);
    EXPECT_EQ(lauf.status, 1);
    EXPECT_EQ(lauf.fehlerzahl(), 3) << lauf.fehler;
    EXPECT_EQ(züchter(u"002AB2025"_s), "neuer");
    EXPECT_EQ(rufe(u"merge fehlt.tdb b.tdb"_s).status, 1);
    EXPECT_FALSE(dateien().contains(u"fehlt.tdb"_s)) << "no file is made";
}

TEST_F(Zusammenführen, callsThatMakeNoSense_areRefused) {
    for (const QString& falsch :
         {u"merge"_s, u"merge a.tdb"_s, u"merge --keep-mine --keep-both a.tdb b.tdb"_s}) {
        const Lauf lauf = rufe(falsch);
        EXPECT_EQ(lauf.status, 2) << falsch.toStdString();
        EXPECT_THAT(lauf.ausgabe, IsEmpty());
    }
    EXPECT_THAT(rufe(u"merge --help"_s).ausgabe, HasSubstr("--take-theirs"));
}
