#include "batch/aufruf.h"
#include "results/ergebnistabelle.h"

#include <QDate>
#include <QtEndian>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

/// A measurement file, in pieces that tests exchange.
struct Messung {
    QByteArray nummer = "U5";
    QByteArray züchter = "J\xFCrgen";
    QByteArray ci = "001 3.07 21.3\n002 2.91 20.7\n";
    QByteArray endeCI = "EndeCI\nHI\n";
    QByteArray hi = "001 0.993 24.7 +0.4\n";
    QByteArray merkmale = "O 20\nk 20\nF 20\n";
    QByteArray ende = "20\n";

    [[nodiscard]] QByteArray bytes() const {
        return "A1\n2019\n17\n7\n3\n" + nummer + '\n' + züchter +
               "\n\n\nOwner\nHive\nMating\nCI\nCI\n" + ci + endeCI + hi + "EndeHI\n" + merkmale +
               ende;
    }
};

class Einfuhr : public Batchtest {
protected:
    [[nodiscard]] std::optional<Ergebnissatz> satz(const QString& nummer) const {
        return Ergebnistabelle(pfad(u"a.tdb"_s)).lade(nummer);
    }
};

} // namespace

TEST_F(Einfuhr, files_becomeExaminationsOfANewDatabase) {
    schreibe(u"a.Bee"_s, Messung().bytes());
    schreibe(u"b.Bee"_s, Messung{.nummer = ""}.bytes().replace('\n', "\r\n"));
    const Lauf lauf = rufe(u"import-bee a.Bee b.Bee --into a.tdb"_s);
    EXPECT_EQ(lauf.status, 0);
    EXPECT_THAT(lauf.fehler, IsEmpty());
    const auto u5 = satz(u"U5"_s);
    ASSERT_TRUE(u5);
    EXPECT_EQ(u5->Z_NAME, u"Jürgen"_s);
    EXPECT_EQ(u5->ZB_NR, u"017"_s);
    EXPECT_EQ(u5->CI, u"#001;3.07;21.3; #002;2.91;20.7; "_s);
    EXPECT_EQ(u5->HI_DV, u"#001;0.993;24.7;+0.4; "_s);
    EXPECT_EQ(u5->MERKMAL, u"A20;20;0;0;0;20;0;0;20;0;0"_s);
    EXPECT_EQ(u5->RASSE, u"Carnica"_s);
    EXPECT_EQ(u5->ERGEBNIS, u"Yes"_s);
    EXPECT_TRUE(u5->DATUM.isValid());
    EXPECT_THAT(lauf.ausgabe, EndsWith("\nStored as examinations: 2 of 2 files.\n"));
    // The file without a number got the next one of this year.
    const QString nummer = u"001"_s + u5->DATUM.toString(u"yyyy"_s);
    EXPECT_TRUE(satz(nummer));
    EXPECT_THAT(lauf.ausgabe, HasSubstr("b.Bee: The examination " + nummer.toStdString()));
}

TEST_F(Einfuhr, existingNumber_isNeverReplaced) {
    schreibe(u"a.Bee"_s, Messung().bytes());
    schreibe(u"b.Bee"_s, Messung{.nummer = "u5", .züchter = "Other"}.bytes());
    schreibe(u"c.Bee"_s, Messung{.nummer = "U6"}.bytes());
    const Lauf lauf = rufe(u"import-bee a.Bee b.Bee c.Bee --into a.tdb"_s);
    EXPECT_EQ(lauf.status, 1);
    EXPECT_THAT(lauf.fehler, StartsWith("b.Bee:6: "));
    EXPECT_EQ(lauf.fehlerzahl(), 1);
    EXPECT_EQ(satz(u"U5"_s)->Z_NAME, u"Jürgen"_s);
    EXPECT_EQ(Ergebnistabelle(pfad(u"a.tdb"_s)).anzahl(), 2);
}

TEST_F(Einfuhr, badInput_isNamedWithItsLineAndLeavesTheDatabase) {
    schreibe(u"gut.Bee"_s, Messung{.nummer = "U1"}.bytes());
    ASSERT_EQ(rufe(u"import-bee gut.Bee --into a.tdb"_s).status, 0);
    const QByteArray vorher = lies(u"a.tdb"_s);
    struct Fall {
        const char* name;
        QByteArray inhalt;
        int zeile;
    };
    for (const Fall& fall : {Fall{"leer", "", 1},
                             {"bild", QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16), 1},
                             {"tabelle", "wing,x1,y1\n1,2,3\n", 1},
                             {"marke", Messung{.endeCI = ""}.bytes(), 17},
                             {"kurz", Messung{.ci = "001 3.07 21.3\n002\n"}.bytes(), 16},
                             {"zahl", Messung{.ci = "001 abc\n"}.bytes(), 15},
                             {"nummer", Messung{.ci = "201 3.07\n"}.bytes(), 15},
                             {"doppelt", Messung{.ci = "001 3.07\n001 3.08\n"}.bytes(), 16},
                             {"ende", Messung{.ende = ""}.bytes(), 23},
                             {"langer_name", Messung{.züchter = QByteArray(31, 'x')}.bytes(), 7},
                             {"lange_nummer", Messung{.nummer = QByteArray(11, 'x')}.bytes(), 6}}) {
        const QString name = QString::fromLatin1(fall.name) + u".Bee"_s;
        schreibe(name, fall.inhalt);
        const Lauf lauf = rufe(u"import-bee --into a.tdb "_s + name);
        EXPECT_EQ(lauf.status, 1) << fall.name;
        EXPECT_THAT(lauf.fehler, StartsWith(u"%1:%2: "_s.arg(name).arg(fall.zeile).toStdString()));
        EXPECT_THAT(lauf.ausgabe, IsEmpty()) << fall.name;
        EXPECT_EQ(lies(u"a.tdb"_s), vorher) << fall.name;
        EXPECT_EQ(rufe(u"import-bee --into neu.tdb "_s + name).status, 1);
        EXPECT_FALSE(QFile::exists(pfad(u"neu.tdb"_s))) << fall.name;
    }
    schreibe(u"keine.tdb"_s, "no database");
    EXPECT_EQ(rufe(u"import-bee gut.Bee --into keine.tdb"_s).status, 1);
    EXPECT_EQ(lies(u"keine.tdb"_s), "no database");
}

TEST_F(Einfuhr, journalThatNamesAnotherFile_isRefusedByEveryCommand) {
    schreibe(u"a.Bee"_s, Messung().bytes());
    schreibe(u"b.Bee"_s, Messung{.nummer = "U6\n"}.bytes());
    ASSERT_EQ(rufe(u"import-bee a.Bee --into a.tdb"_s).status, 0);
    const QByteArray opfer = QFile::encodeName(pfad(u"opfer"_s));
    const QByteArray länge = QByteArray(3, '\0') + static_cast<char>(opfer.size());
    quint32 summe = 0;
    for (const char c : opfer) {
        summe += static_cast<quint32>(c);
    }
    QByteArray prüfzahl(4, '\0');
    qToBigEndian(summe, prüfzahl.data());
    const QByteArray kennung = QByteArray::fromHex("d9d505f920a163d7");
    const QByteArray journal = kennung + QByteArray(504, '\0') + opfer + länge + prüfzahl + kennung;
    schreibe(u"opfer"_s, "of the user");
    schreibe(u"a.tdb-journal"_s, journal);
    const QByteArray vorher = lies(u"a.tdb"_s);
    for (const QString& befehl : {u"import-bee b.Bee --into a.tdb"_s, u"export a.tdb"_s,
                                  u"export a.tdb --tps"_s, u"report a.tdb U5 --pdf aus.pdf"_s}) {
        const Lauf lauf = rufe(befehl);
        EXPECT_EQ(lauf.status, 1) << befehl.toStdString();
        EXPECT_THAT(lauf.fehler, HasSubstr("a.tdb-journal"));
        EXPECT_EQ(lies(u"opfer"_s), "of the user");
        EXPECT_EQ(lies(u"a.tdb"_s), vorher);
        EXPECT_EQ(lies(u"a.tdb-journal"_s), journal);
    }
    EXPECT_FALSE(dateien().contains(u"aus.pdf"_s));
}

TEST_F(Einfuhr, partial_takesWhatIsReadable) {
    schreibe(u"a.Bee"_s, Messung{.ci = "001 abc\n002 2.91 20.7\n"}.bytes());
    const Lauf lauf = rufe(u"import-bee a.Bee --partial --into a.tdb"_s);
    EXPECT_EQ(lauf.status, 0);
    EXPECT_THAT(lauf.fehler, StartsWith("a.Bee:15: "));
    EXPECT_EQ(satz(u"U5"_s)->CI, u"#002;2.91;20.7; "_s);
}

TEST_F(Einfuhr, fileInAnotherCharacterSet_isReadAndNamed) {
    schreibe(u"a.Bee"_s, Messung{.züchter = "J\xC3\xBCrgen"}.bytes());
    const Lauf lauf = rufe(u"import-bee a.Bee --into a.tdb"_s);
    EXPECT_EQ(lauf.status, 0);
    EXPECT_THAT(lauf.fehler, HasSubstr("UTF-8"));
    EXPECT_EQ(satz(u"U5"_s)->Z_NAME, u"Jürgen"_s);
}

TEST_F(Einfuhr, bodyMarksThatAreNoCounts_areKeptAsTheyStand) {
    schreibe(u"a.Bee"_s, Messung{.merkmale = "yellow\nlong\n\n"}.bytes());
    const Lauf lauf = rufe(u"import-bee a.Bee --into a.tdb"_s);
    EXPECT_EQ(lauf.status, 0);
    EXPECT_THAT(lauf.fehler, HasSubstr("Ayellow;long;;20"));
    EXPECT_EQ(satz(u"U5"_s)->MERKMAL, u"Ayellow;long;;20"_s);
}

TEST_F(Einfuhr, numberThatGrewTooLong_isNotBlamedOnTheFile) {
    QStringList dateien;
    for (const QString& name : {u"a.Bee"_s, u"b.Bee"_s, u"c.Bee"_s}) {
        schreibe(name, Messung{.nummer = ""}.bytes());
        dateien << name;
    }
    const Lauf lauf = rufe(u"import-bee --into a.tdb "_s + dateien.join(u' '));
    EXPECT_EQ(lauf.status, 1);
    EXPECT_THAT(lauf.fehler, StartsWith("c.Bee: The next number would be '"));
    EXPECT_THAT(lauf.fehler, HasSubstr("abbreviation"));
    EXPECT_EQ(Ergebnistabelle(pfad(u"a.tdb"_s)).anzahl(), 2);
}
