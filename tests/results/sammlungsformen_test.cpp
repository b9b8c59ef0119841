#include "results/datumsformen.h"
#include "results/datumswandlung.h"
#include "results/ergebnisdateien.h"
#include "results/jetdatei.h"
#include "results/tabelleneinfuhr.h"

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::SizeIs;

namespace {

const QDate heute(2026, 3, 1);

QString gelesen(const QString& text, Tagesfolge folge = Tagesfolge::TagZuerst) {
    const auto datum = datumAusForm(text, folge, heute);
    return datum ? datum->toString(Qt::ISODate) : QString();
}

} // namespace

TEST(Datumsformen, formsOfOtherPrograms_areTheDayTheyMean) {
    for (const auto& [text, datum] : {std::pair{u"2015-03-12"_s, u"2015-03-12"_s},
                                      {u" 2015-3-2 00:00:00 "_s, u"2015-03-02"_s},
                                      {u"21.11.2025"_s, u"2025-11-21"_s},
                                      {u"1.2.98"_s, u"1998-02-01"_s},
                                      {u"1.2.27"_s, u"2027-02-01"_s},
                                      {u"1.2.28"_s, u"1928-02-01"_s},
                                      {u"03/12/15"_s, u"2015-12-03"_s},
                                      {u"3-12-2015"_s, u"2015-12-03"_s},
                                      {u"46000"_s, u"2025-12-09"_s},
                                      {u"46000.75"_s, u"2025-12-09"_s},
                                      {u"31.02.2020"_s, QString()},
                                      {u"12/13/2030"_s, QString()},
                                      {u"1.2.3"_s, QString()},
                                      {u"99999"_s, QString()},
                                      {u"1.1.1850"_s, QString()},
                                      {u"2015-03-12x"_s, QString()},
                                      {QString(), QString()}}) {
        EXPECT_EQ(gelesen(text), datum) << qPrintable(text);
    }
    EXPECT_EQ(gelesen(u"03/12/15 10:00:00"_s, Tagesfolge::MonatZuerst), u"2015-03-12"_s);
    EXPECT_EQ(gelesen(u"03.12.15"_s, Tagesfolge::MonatZuerst), u"2015-12-03"_s);
    EXPECT_EQ(tagesfolge({u"03/12/15"_s, u"13/12/15"_s}), Tagesfolge::TagZuerst);
    EXPECT_EQ(tagesfolge({u"03/12/15"_s, u"12/13/15"_s}), Tagesfolge::MonatZuerst);
    EXPECT_EQ(tagesfolge({u"13/12/15"_s, u"12/13/15"_s}), std::nullopt);
    EXPECT_EQ(tagesfolge({u"13.12.15"_s}), std::nullopt); // says nothing of others
    EXPECT_TRUE(istMehrdeutig(u"03/12/15"_s, heute));
    EXPECT_FALSE(istMehrdeutig(u"03/03/15"_s, heute) || istMehrdeutig(u"03/13/15"_s, heute));
}

TEST(Tabelleneinfuhr, columnsStandInAnyOrderAndTextsStayWhole) {
    const Tabelleninhalt inhalt =
        liesTabelle("Foo;datum;CI;u_nr;Z_NAME\r\n"
                    "x;12.03.2015 00:00:00;\"#001;2,31;12,3; \";\" 007 \";M\xFCller\r\n"
                    ";;\"a\r\n\"\"b\"\"\";8;\r\n\r\n"
                    ";31.02.2015;;9;\r\n"
                    ";;;12345678901;\r\n"
                    ";;;10;;;\r\n",
                    {}, heute);
    ASSERT_TRUE(inhalt.istTabelle);
    EXPECT_EQ(inhalt.fremdeSpalten, QStringList{u"Foo"_s});
    ASSERT_THAT(inhalt.sätze, SizeIs(2));
    EXPECT_EQ(inhalt.sätze[0].U_NR, u"007"_s);
    EXPECT_EQ(inhalt.sätze[0].Z_NAME, u"Müller"_s);
    EXPECT_EQ(inhalt.sätze[0].CI, u"#001;2,31;12,3; "_s);
    EXPECT_EQ(inhalt.sätze[0].DATUM, QDate(2015, 3, 12));
    EXPECT_EQ(inhalt.sätze[1].CI, u"a\r\n\"b\""_s);
    Texte texte{QString()};
    texte.SpracheEinstellen(static_cast<int>(Sprache::Englisch));
    QStringList probleme;
    for (const Zeilenproblem& p : inhalt.probleme) {
        probleme << problemtext(p, texte);
    }
    EXPECT_EQ(probleme, (QStringList{u"Line 6: '31.02.2015' is no date."_s,
                                     u"Line 7: U_NR: more than 10 characters."_s,
                                     u"Line 8: The line has 7 fields, the first one 5."_s}));
}

TEST(Tabelleneinfuhr, orderOfDayAndMonth_isAskedForOnlyWhenNothingSaysIt) {
    const auto lies = [](const QByteArray& daten, std::optional<Tagesfolge> folge = {}) {
        return liesTabelle("U_NR,DATUM\n1,03/12/15\n" + daten, folge, heute);
    };
    EXPECT_EQ(lies("").datum, u"03/12/15"_s);
    EXPECT_EQ(lies("2,13/12/15\n").datum, std::nullopt);
    EXPECT_EQ(lies("2,12/13/15\n").sätze.at(0).DATUM, QDate(2015, 3, 12));
    EXPECT_EQ(lies("", Tagesfolge::MonatZuerst).sätze.at(0).DATUM, QDate(2015, 3, 12));
}

TEST(Tabelleneinfuhr, whatIsNoTable_isSaid) {
    for (const char* bytes : {"", "Name,Datum\n1,2\n", "\"U_NR\n1\n", "\xFF\xFE\x00", "a\0b"}) {
        EXPECT_FALSE(liesTabelle(bytes, {}, heute).istTabelle) << bytes;
    }
    const Tabelleninhalt offen = liesTabelle("U_NR\n1\n\"2\n3\n", {}, heute);
    EXPECT_THAT(offen.sätze, SizeIs(1));
    EXPECT_THAT(offen.probleme, SizeIs(1));
}

using Datumswandlungstest = Dateitest;

TEST_F(Datumswandlungstest, datesOfOtherProgramsComeIntoOurFormAndNothingElseChanges) {
    const Datumswandlung wandlung(pfad_);
    fremd(u"INSERT INTO Ergebnisse(U_NR, DATUM) VALUES('1', '2015-03-12'), ('2', NULL), "
          "('3', ' '), ('4', '2015-03-12 10:00:00');"_s);
    EXPECT_FALSE(wandlung.gibtEs());
    fremd(u"INSERT INTO Ergebnisse(U_NR, DATUM) VALUES('5', '03/12/15'), "
          "('6', '21.11.2025'), ('7', 46000), ('8', 'Mai'), ('9', '20.11.2025');"_s);
    EXPECT_TRUE(wandlung.gibtEs());
    const std::vector<AltesDatum> alte = wandlung.finde();
    ASSERT_THAT(alte, SizeIs(5));
    EXPECT_EQ(alte[2].text, u"46000"_s);
    fremd(u"UPDATE Ergebnisse SET DATUM = '22.11.2025' WHERE U_NR = '6';"_s);
    EXPECT_EQ(wandlung.wandle(alte, Tagesfolge::MonatZuerst, heute), 3);
    EXPECT_EQ(tabelle().lade(u"5"_s)->DATUM, QDate(2015, 3, 12));
    EXPECT_EQ(tabelle().lade(u"7"_s)->DATUM, QDate(2025, 12, 9));
    EXPECT_EQ(tabelle().lade(u"9"_s)->DATUM, QDate(2025, 11, 20));
    QStringList rest;
    for (const AltesDatum& a : wandlung.finde()) {
        rest << a.text;
    }
    EXPECT_EQ(rest, (QStringList{u"22.11.2025"_s, u"Mai"_s}));
}

using Jetdateitest = Dateitest;

#ifdef Q_OS_UNIX
TEST_F(Jetdateitest, isKnownByItsBeginningAndReadByMdbExport) {
    const QString pfad = ordner_.filePath(u"-alt.mdb"_s);
    schreibe(pfad, QByteArray("\0\1\0\0Standard Jet DB\0", 20));
    EXPECT_TRUE(istJetDatei(pfad));
    EXPECT_FALSE(istJetDatei(QByteArrayView("SQLite format 3")));
    EXPECT_FALSE(istJetDatei(ordner_.path()));

    const QByteArray pfade = qgetenv("PATH");
    qputenv("PATH", ordner_.path().toUtf8());
    const auto immer = [] { return true; };
    using Ausgang = Jetinhalt::Ausgang;
    EXPECT_EQ(liesJetDatei(pfad, immer).ausgang, Ausgang::OhneProgramm);
    // A stand-in that answers as the real program does.
    const QString programm = ordner_.filePath(u"mdb-export"_s);
    const auto schreibeProgramm = [&programm](const QByteArray& inhalt) {
        schreibe(programm, "#!/bin/sh\n" + inhalt);
        QFile::setPermissions(programm, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    };
    schreibeProgramm("[ \"$6\" = Ergebnisse ] || exit 2\n[ -f \"$5\" ] || exit 3\n"
                     "echo 'U_NR,DATUM'\necho '\"007\",\"2015-03-12\"'\n");
    const Jetinhalt gut = liesJetDatei(pfad, immer);
    EXPECT_EQ(gut.ausgang, Ausgang::Gelesen);
    EXPECT_EQ(liesTabelle(gut.tabelle, {}, heute).sätze.at(0).DATUM, QDate(2015, 3, 12));
    schreibeProgramm("echo 'no such table' >&2\nexit 1\n");
    const Jetinhalt schlecht = liesJetDatei(pfad, immer);
    EXPECT_EQ(schlecht.ausgang, Ausgang::Gescheitert);
    EXPECT_EQ(schlecht.meldung, u"no such table"_s);
    schreibeProgramm("read x < /dev/zero\n");
    EXPECT_EQ(liesJetDatei(pfad, [] { return false; }).ausgang, Ausgang::Abgebrochen);
    qputenv("PATH", pfade);
}
#endif
