#include "batch/aufruf.h"
#include "platform/vektorbild.h"
#include "results/ergebnistabelle.h"

#include <QDir>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

/// Colonies of two breeders in two years, one of them drones.
class Übersicht : public Batchtest {
protected:
    void SetUp() override {
        NeueDatenbank(pfad(u"a.tdb"_s));
        füge(u"1"_s, u"Müller"_s, u"Arbeiter"_s, {u"2,10"_s, u"2,30"_s}, 2020, 1200);
        füge(u"2"_s, u"MÜLLER"_s, u"Ouvrières"_s, {u"2,50"_s, u"2,70"_s}, 2020, 600);
        füge(u"3"_s, u"Maier"_s, u"Arbeiter"_s, {u"1,90"_s}, 2021, 1200);
        füge(u"4"_s, u"Maier"_s, u"Drohnen"_s, {u"1,50"_s}, 2021, 1200);
    }
    void füge(const QString& nummer, const QString& züchter, const QString& tiere,
              const QStringList& CI, int jahr, int dpi, const QString& rasse = u"Carnica"_s) const {
        Ergebnissatz s;
        s.U_NR = nummer;
        s.Z_NAME = züchter;
        s.A_D = tiere;
        s.RASSE = rasse;
        s.ERGEBNIS = u"Ja"_s;
        s.DATUM = QDate(jahr, 6, 1);
        s.Grafik[0] = u"CI-HI %1dpi;"_s.arg(dpi);
        for (qsizetype i = 0; i < CI.size(); ++i) {
            s.CI += u"#00%1;%2;17,0; "_s.arg(i + 1).arg(CI[i]);
            s.HI_DV += u"#00%1;0,950;22,0;+1,0; "_s.arg(i + 1);
        }
        Ergebnistabelle(pfad(u"a.tdb"_s)).speichere(s);
    }
};

} // namespace

TEST_F(Übersicht, table_hasTheFiguresOfWhatWasChosen) {
    const QByteArray vorher = lies(u"a.tdb"_s);
    const Lauf alle = rufe(u"overview a.tdb"_s);
    EXPECT_EQ(alle.status, 0);
    EXPECT_EQ(alle.fehler, "");
    ASSERT_EQ(alle.zeilen().size(), 5); // heading, three of workers, the end
    EXPECT_THAT(alle.ausgabe, AllOf(StartsWith("examination,date,season,breeder,"),
                                    HasSubstr(",workers,yes,1200,0,no,2,2.2,0.1414214,0,100,"),
                                    Not(HasSubstr("drones"))));
    EXPECT_EQ(rufe(u"overview a.tdb --caste drones"_s).zeilen().size(), 3);
    EXPECT_EQ(rufe(u"overview a.tdb --breeder müller --dpi 600 --season 2020"_s).zeilen().size(),
              3);
    EXPECT_THAT(rufe(u"overview a.tdb 3 --format json"_s).ausgabe, HasSubstr("\"ci_mean\": 1.9"));
    EXPECT_EQ(lies(u"a.tdb"_s), vorher);
    EXPECT_EQ(QDir(ordner_.path()).entryList(QDir::Files), QStringList{u"a.tdb"_s});
}

TEST_F(Übersicht, years_areMeansOfColoniesAndResolutionsStayApart) {
    const Lauf lauf = rufe(u"overview a.tdb --by breeder"_s);
    EXPECT_THAT(lauf.ausgabe,
                AllOf(HasSubstr("Maier,Carnica,workers,2021,ci,,1,1,1.9,,,,1,1"),
                      HasSubstr("2020,ci,,2,2,2.4,0.2828428,-0.1412406,4.941241,2,2"),
                      HasSubstr("2020,dv,600,2,1,1,"), HasSubstr("2020,dv,1200,2,1,1,")));
    const Lauf zwei = rufe(u"overview a.tdb 1 2 --view comparison"_s);
    EXPECT_THAT(zwei.ausgabe, AllOf(HasSubstr("ci,mean,1,2,2.2,2.6,-0.4000001,-1.008494"),
                                    HasSubstr("dv,mean,1,2,1,1,,,"))); // 1200 and 600 dpi
}

TEST_F(Übersicht, chart_isMadeOfEachViewWithoutADisplay) {
    for (const QString& ansicht : {u"spread"_s, u"table"_s, u"histograms 1 2 --index dv"_s,
                                   u"years"_s, u"comparison 1 2"_s}) {
        for (const auto& [endung, anfang] :
             {std::pair{u"png"_s, "\x89PNG"}, {u"svg"_s, "<?xml"}, {u"pdf"_s, "%PDF-"}}) {
            if (endung == u"svg" && !kannSvg()) {
                EXPECT_EQ(rufe(u"overview a.tdb --chart bild.svg"_s).status, 2);
                continue;
            }
            const QString datei = u"bild."_s + endung;
            const Lauf lauf = rufe(u"overview a.tdb --out werte.csv --language fr --chart "_s +
                                   datei + u" --view "_s + ansicht);
            EXPECT_EQ(lauf.status, 0) << lauf.fehler;
            EXPECT_THAT(text(datei), StartsWith(anfang));
        }
    }
}

TEST_F(Übersicht, chartWithNothingInIt_saysWhyAndWhatToChoose) {
    füge(u"5"_s, u"Maier"_s, u"Arbeiter"_s, {u"1,70"_s}, 2021, 1200, u"Mellifera"_s);
    const QString aufruf = u"overview a.tdb --out w.csv --chart a.png --view years"_s;
    const Lauf mehrere = rufe(aufruf);
    EXPECT_EQ(mehrere.status, 0);
    EXPECT_THAT(mehrere.fehler, AllOf(HasSubstr("a.png"), HasSubstr("Carnica, Mellifera"),
                                      HasSubstr("--race 'Carnica'")));
    EXPECT_EQ(mehrere.fehlerzahl(), 1);
    EXPECT_EQ(rufe(aufruf + u" --race Carnica"_s).fehler, "");
    EXPECT_EQ(rufe(u"overview a.tdb --out w.csv --chart a.png"_s).fehler, ""); // crosses are there
    EXPECT_THAT(rufe(aufruf + u" --season 1999"_s).fehler, HasSubstr("a.png"));
}

TEST_F(Übersicht, whatIsMissingOrRefused_isNamed) {
    for (const auto& [argumente, meldung] :
         {std::pair{u"overview a.tdb 77"_s, "77"},
          {u"overview fehlt.tdb"_s, "fehlt.tdb"},
          {u"overview a.tdb --chart fehlt/a.png --out b.csv"_s, "fehlt/a.png"},
          {u"overview a.tdb --ini fehlt.ini"_s, "fehlt.ini"}}) {
        const Lauf lauf = rufe(argumente);
        EXPECT_EQ(lauf.status, 1) << argumente.toStdString();
        EXPECT_THAT(lauf.fehler, HasSubstr(meldung));
        EXPECT_EQ(lauf.fehlerzahl(), 1);
    }
}
