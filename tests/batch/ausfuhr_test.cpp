#include "batch/aufruf.h"
#include "results/ergebnistabelle.h"
#include "results/untersuchungssatz.h"

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::HasSubstr;
using testing::IsEmpty;
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
    void speichere(const QString& nummer, const QString& name) {
        Untersuchung u;
        Kolonieangaben angaben;
        angaben.UNr = nummer;
        angaben.Name = name;
        angaben.Jahr = u"2024"_s;
        u.setzeAngaben(angaben);
        constexpr std::array X{0.F, 400.F, 100.F, 200.F, 230.F, 100.F, 130.F, 130.F, 225.F};
        constexpr std::array Y{0.F, 300.F, 300.F, 100.F, 110.F, 100.F, 100.F, 110.F, 182.F};
        for (const int flügel : {1, 2}) {
            const Messart messart = flügel == 1 ? Messart::AlleMessungen : Messart::NurCubitalindex;
            Flügelmessung messung{.punkte = Messpunkte(messart),
                                  .messart = messart,
                                  .aufnahme = {2, 1200},
                                  .bilddatei = u"C:\\Völker\\a, b.png"_s};
            for (int p = 1; p <= Messpunkte::Anzahl; ++p) {
                messung.punkte.setze(messart, p, 2 * X.at(p), 2 * Y.at(p));
            }
            Messreihe reihe = u.reihe();
            reihe.trageEin(static_cast<qint16>(flügel),
                           berechneIndizes(messung.punkte, messart, messung.aufnahme), messung, {});
            u.setzeReihe(reihe);
        }
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
    EXPECT_EQ(zeilen[1], "U1,2025-06-07,2024,,,,,,,,Carnica,workers,yes,1200,2,2,3,0,3,3,1,1,,1,1,"
                         "1,1.324153,,1.324153,1.324153,1,"
                         "O=100% E=0% 1R=0% 2R=0%;k=100% m=0% l=0%;F=100% ff=0% f=0%");
    EXPECT_EQ(zeilen[0].count(','), zeilen[1].count(','));
    EXPECT_THAT(zeilen[2].toStdString(), HasSubstr(",\"Grün, \"\"Jo\"\"\","));
}

TEST_F(Ausfuhr, wings_haveFullValuesAndTheirPicture) {
    speichere(u"U1"_s, {});
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
    // Its points are those of the picture, so the table can be evaluated in its turn.
    schreibe(u"a.csv"_s, zeilen.join('\n'));
    EXPECT_THAT(rufe(u"evaluate a.csv --format csv"_s).ausgabe,
                HasSubstr("\n1,3,21.006002,1,25,1.324152"));
}

TEST_F(Ausfuhr, tps_givesTheSameIndicesAgain) {
    speichere(u"U1"_s, {});
    EXPECT_EQ(rufe(u"export a.tdb --tps --out a.tps"_s).status, 0);
    EXPECT_THAT(text(u"a.tps"_s), HasSubstr("ID=U1/2\n"));
    const Lauf lauf = rufe(u"evaluate a.tps --format csv"_s);
    EXPECT_THAT(lauf.ausgabe, HasSubstr("\nU1/1,3,21.006002,1,25,1.324152"));
    EXPECT_THAT(lauf.ausgabe, HasSubstr("\nU1/2,3,21.006002,,,\n"));
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
