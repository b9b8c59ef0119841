#include "batch/aufruf.h"
#include "platform/csv.h"
#include "support/testordner.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr int Flügelzahl = 8;

/// A folder with the sample sheet, whose true points are known.
class Messen : public Batchtest {
protected:
    void SetUp() override { kopiere(u"a.png"_s); }
    void kopiere(const QString& name) const {
        ASSERT_TRUE(QFile::copy(QStringLiteral(TARVEL_DATA "/musterblatt.png"), pfad(name)));
    }
    static QList<QStringList> zeilen(const QString& text) {
        CsvLeser leser(text, u',');
        QList<QStringList> alle;
        while (const auto zeile = leser.nächster()) {
            alle << *zeile;
        }
        return alle;
    }
};

} // namespace

TEST_F(Messen, sampleSheet_givesItsWingsInEveryFormat) {
    const Lauf lauf = rufe(u"measure a.png --dpi 1200 --max-error 20"_s);
    EXPECT_EQ(lauf.status, 0);
    EXPECT_EQ(lauf.fehler, "");
    const QList<QStringList> gefunden = zeilen(QString::fromStdString(lauf.ausgabe));
    ASSERT_EQ(gefunden.size(), Flügelzahl + 1);
    EXPECT_EQ(gefunden[0].join(u','), u"file,wing,x,y,angle,mirrored,size,score,state,"
                                      "x1,y1,x2,y2,x3,y3,x4,y4,x5,y5,x6,y6,x7,y7,x8,y8,"
                                      "e1,e2,e3,e4,e5,e6,e7,e8,ci,hi,dv"_s);
    const QList<QStringList> wahre =
        zeilen(QString::fromUtf8(liesGanz(QStringLiteral(TARVEL_DATA "/musterblatt.csv"))));
    for (int i = 1; i <= Flügelzahl; ++i) {
        EXPECT_EQ(gefunden[i].mid(0, 2), QStringList({u"a.png"_s, QString::number(i)}));
        for (int k = 0; k < 16; k += 2) {
            const double dx = gefunden[i][9 + k].toDouble() - wahre[i][1 + k].toDouble();
            const double dy = gefunden[i][10 + k].toDouble() - wahre[i][2 + k].toDouble();
            EXPECT_LT(std::hypot(dx, dy), 8) << i << ' ' << k;
        }
    }
    // What other commands read gives the same indices.
    const QByteArray ci = "\n1," + gefunden[1][33].toUtf8().first(4);
    schreibe(u"w.csv"_s, QByteArray::fromStdString(lauf.ausgabe));
    const Lauf wieder = rufe(u"evaluate w.csv --dpi 1200 --format csv"_s);
    EXPECT_THAT(wieder.ausgabe, HasSubstr(ci.toStdString()));
    EXPECT_EQ(wieder.fehler,
              "w.csv: 8 of 8 wings measured by the program, not checked by a person.\n");
    EXPECT_EQ(rufe(u"measure a.png --dpi 1200 --format tps --out w.tps"_s).status, 0);
    EXPECT_THAT(rufe(u"evaluate w.tps --format csv"_s).ausgabe, HasSubstr(ci.toStdString()));
    const auto json = QJsonDocument::fromJson(QByteArray::fromStdString(
        rufe(u"measure a.png --dpi 1200 --format json --messart 0"_s).ausgabe));
    ASSERT_EQ(json.array().size(), Flügelzahl);
    const QJsonObject erster = json.array()[0].toObject();
    EXPECT_EQ(QString::number(erster[u"ci"_s].toDouble()).left(4), gefunden[1][33].left(4));
    EXPECT_EQ(erster[u"points"_s].toArray().size(), 3); // all that this kind measures
    EXPECT_TRUE(erster[u"dv"_s].isNull());
}

TEST_F(Messen, picturesAtOnce_changeNothing) {
    kopiere(u"b.png"_s);
    schreibe(u"kaputt.png"_s, "x");
    const QString zeile = u"measure a.png kaputt.png b.png fehlt.png --dpi 1200 "_s;
    const Lauf einzeln = rufe(zeile);
    const Lauf zugleich = rufe(zeile + u"-j 4"_s);
    EXPECT_EQ(einzeln.ausgabe, zugleich.ausgabe);
    EXPECT_EQ(einzeln.fehler, zugleich.fehler);
    EXPECT_EQ(einzeln.status, 1);
    EXPECT_EQ(einzeln.zeilen().size(), 2 * Flügelzahl + 2);
    EXPECT_THAT(einzeln.fehler, AllOf(HasSubstr("kaputt.png: "), HasSubstr("fehlt.png: ")));
}

TEST_F(Messen, doubtsAndFaults_areNamed) {
    QImage leer(400, 300, QImage::Format_Grayscale8);
    leer.fill(230);
    ASSERT_TRUE(leer.save(pfad(u"leer.png"_s)));
    schreibe(u"m.bin"_s, "no model at all");
    struct Fall {
        QString optionen;
        int status;
        int flügel;
        const char* meldung;
    };
    for (const Fall& fall :
         {Fall{u"a.png --dpi 1200 --max-error 0.1"_s, 0, Flügelzahl, "Wing 8: points"},
          {u"a.png --dpi 1200 --min-score 1"_s, 0, 0, "below 1: 8"},
          {u"a.png --dpi 2400"_s, 0, 0, "at 1200 dpi"},
          {u"a.png --dpi 2400 --language fr"_s, 0, 0, "à 1200 dpi"},
          {u"leer.png --dpi 1200"_s, 0, 0, "No wing is found at 1200 dpi"},
          {u"leer.png"_s, 1, 0, "--dpi"},
          {u"a.png --dpi 1200 --model fehlt.bin"_s, 1, -1, "fehlt.bin"},
          {u"a.png --dpi 1200 --model m.bin --language de"_s, 1, -1, "kein Modell"}}) {
        const Lauf lauf = rufe(u"measure "_s + fall.optionen);
        EXPECT_EQ(lauf.status, fall.status) << fall.meldung;
        EXPECT_EQ(lauf.zeilen().size(), fall.flügel + 2) << fall.meldung; // heading and end
        EXPECT_THAT(lauf.fehler, HasSubstr(fall.meldung));
    }
}

TEST_F(Messen, drawings_neverReplaceAPicture) {
    kopiere(u"a-wings.png"_s);
    const QByteArray vorher = lies(u"a.png"_s);
    const Lauf lauf = rufe(u"measure a.png a-wings.png --overlay . --dpi 1200 --out w.csv"_s);
    EXPECT_EQ(lauf.status, 0) << lauf.fehler;
    EXPECT_EQ(dateien(), QStringList({u"a-wings-2.png"_s, u"a-wings-wings.png"_s, u"a-wings.png"_s,
                                      u"a.png"_s, u"w.csv"_s}));
    EXPECT_EQ(lies(u"a-wings.png"_s), vorher);
    const QImage blatt(pfad(u"a.png"_s));
    const QImage zeichnung(pfad(u"a-wings-2.png"_s));
    EXPECT_EQ(zeichnung.size(), blatt.size());
    EXPECT_FALSE(zeichnung.allGray());
    EXPECT_EQ(rufe(u"measure a.png --overlay w.csv --dpi 1200"_s).status, 1);
    EXPECT_THAT(text(u"w.csv"_s), StartsWith("file,"));
}

TEST_F(Messen, intoADatabase_saysThatNobodyChecked) {
    const Lauf lauf =
        rufe(u"measure a.png --dpi 1200 --into neu.tdb --unchecked --out w.csv --max-error 20"_s);
    EXPECT_EQ(lauf.status, 0) << lauf.fehler;
    EXPECT_THAT(lauf.fehler, HasSubstr("8 of 8 wings measured by the program, not checked"));
    EXPECT_EQ(lauf.fehlerzahl(), 1);
    EXPECT_EQ(QDir(pfad(u"Tarvel Backup"_s)).entryList(QDir::Files).size(), 1);
    const Lauf flügel = rufe(u"export neu.tdb --wings"_s);
    EXPECT_EQ(flügel.zeilen().size(), Flügelzahl + 2);
    EXPECT_THAT(flügel.zeilen()[1].toStdString(),
                AllOf(HasSubstr("/a.png,1200,1,"), HasSubstr(",no,proposed proposed "),
                      HasSubstr(" proposed,no")));
    EXPECT_THAT(rufe(u"report neu.tdb --all --pdf p.pdf"_s).fehler, "");
    EXPECT_EQ(rufe(u"measure a.png --dpi 2400 --into leer.tdb --unchecked"_s).status, 0);
    EXPECT_FALSE(QFile::exists(pfad(u"leer.tdb"_s))); // nothing to store
}
