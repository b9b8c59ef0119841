#include "results/ergebnismodell.h"

#include "results/browserprobe.h"

#include <QAbstractItemModelTester>
#include <gmock/gmock.h>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

const QString nachDatum = u"SELECT * FROM Ergebnisse ORDER BY DATUM"_s;

struct Ergebnismodelltest : Browserprobe {
    Texte texte{QString()};
    Ergebnismodell modell{texte};
    std::unique_ptr<QAbstractItemModelTester> prüfer;
    QStringList meldungen;

    Ergebnismodelltest() {
        texte.SpracheDeutsch();
        modell.beiFehler([this](int, const QString& text) { meldungen << text; });
    }
    void zeige() {
        prüfer.reset();
        modell.zeige(pfad_, {.datenquelle = nachDatum});
    }
    /// From here on the toolkit's tester watches the model. It fetches all rows, which it must not
    /// do while a reset is being told.
    void beobachte() {
        prüfer = std::make_unique<QAbstractItemModelTester>(
            &modell, QAbstractItemModelTester::FailureReportingMode::Fatal);
    }
    QString text(int zeile, Ergebnisspalte spalte, int rolle = Qt::DisplayRole) const {
        return modell.index(zeile, static_cast<int>(spalte)).data(rolle).toString();
    }
    bool schreibe(Ergebnisspalte spalte, const QString& wert, int zeile = 0) {
        return modell.setData(modell.index(zeile, static_cast<int>(spalte)), wert, Qt::EditRole);
    }
};

TEST_F(Ergebnismodelltest, RowThatWasNeverJudgedSaysSo) {
    fülle(2);
    Ergebnistabelle tabelle(pfad_);
    Ergebnissatz satz = tabelle.lade(u"0001"_s).value();
    satz.CI = u"#001;2,31;17,3; "_s;
    tabelle.speichere(satz);
    zeige();
    const auto spalte = Ergebnisspalte::Entspricht;
    const int gemessene = modell.nummer(0) == u"0001"_s ? 0 : 1;
    EXPECT_EQ(text(gemessene, spalte, Qt::ToolTipRole), QString());
    EXPECT_EQ(text(1 - gemessene, spalte, Qt::ToolTipRole), u"nicht beurteilt"_s);
}

TEST_F(Ergebnismodelltest, FetchesOnePageAndThenThePlacesOfAllRows) {
    fülle(1000);
    zeige();
    EXPECT_EQ(modell.rowCount(), Ergebnismodell::Seite);
    EXPECT_EQ(text(0, Ergebnisspalte::Nummer), u"001"_s);
    ASSERT_TRUE(modell.canFetchMore({}));
    beobachte();
    EXPECT_EQ(modell.rowCount(), 1000);
    EXPECT_FALSE(modell.canFetchMore({}));
    // Every row is the one that belongs there, at the seams of pages too, forwards and backwards.
    for (const int zeile : {999, 500, 128, 127, 64, 63, 0}) {
        EXPECT_EQ(modell.nummer(zeile), u"%1"_s.arg(zeile + 1, 4, 10, QChar(u'0')));
    }
    for (int zeile = 0; zeile < 1000; ++zeile) {
        ASSERT_EQ(text(zeile, Ergebnisspalte::Züchter),
                  u"Züchter %1"_s.arg(zeile + 1, 4, 10, QChar(u'0')));
    }
}

TEST_F(Ergebnismodelltest, KnowsAtOnceThatOnePageIsAll) {
    for (const int anzahl : {0, 1, Ergebnismodell::Seite - 1}) {
        fremd(u"DELETE FROM Ergebnisse"_s);
        fülle(anzahl);
        zeige();
        EXPECT_FALSE(modell.canFetchMore({})) << anzahl;
        beobachte();
        EXPECT_EQ(modell.rowCount(), anzahl);
    }
    fremd(u"DELETE FROM Ergebnisse"_s);
    fülle(Ergebnismodell::Seite);
    zeige();
    modell.fetchMore({});
    EXPECT_EQ(modell.rowCount(), Ergebnismodell::Seite);
}

TEST_F(Ergebnismodelltest, TakesInWhatOthersDoToTheFileMeanwhile) {
    fülle(200);
    zeige();
    fremd(u"DELETE FROM Ergebnisse WHERE U_NR IN ('0001','0150')"_s);
    modell.fetchMore({});
    beobachte();
    EXPECT_EQ(modell.rowCount(), 199); // the first page had been read already
    fremd(u"DELETE FROM Ergebnisse WHERE U_NR='0190'"_s);
    QStringList nummern;
    for (int zeile = 0; zeile < modell.rowCount(); ++zeile) {
        nummern << modell.nummer(zeile);
    }
    EXPECT_FALSE(nummern.contains(u"0150"_s));
    EXPECT_FALSE(nummern.contains(u"0190"_s));
    EXPECT_EQ(nummern.count(QString()), 1);
    EXPECT_THAT(meldungen, IsEmpty());
}

TEST_F(Ergebnismodelltest, ShowsNumbersWithThreeDigitsAndDatesInShort) {
    const std::pair<QString, QString> nummern[] = {{u"7"_s, u"007"_s},
                                                   {u"1234"_s, u"1234"_s},
                                                   {u"012E2025"_s, u"012E2025"_s},
                                                   {u"1,5"_s, u"1,5"_s}};
    for (const auto& [gespeichert, gezeigt] : nummern) {
        fremd(u"DELETE FROM Ergebnisse"_s);
        speichere(vollerSatz(gespeichert));
        zeige();
        EXPECT_EQ(text(0, Ergebnisspalte::Nummer), gezeigt);
        EXPECT_EQ(text(0, Ergebnisspalte::Nummer, Qt::EditRole), gespeichert);
    }
    EXPECT_EQ(text(0, Ergebnisspalte::Datum), u"15.06.25"_s);
    EXPECT_EQ(text(0, Ergebnisspalte::Datum, Qt::EditRole), u"15.06.2025"_s);
    texte.SpracheEnglisch();
    EXPECT_EQ(text(0, Ergebnisspalte::Datum), u"15/06/25"_s);
    // What only another program can have stored is not rounded, nor painted without an end.
    fremd(u"UPDATE Ergebnisse SET DATUM=NULL, U_NR='12345678901234567890', "
          u"Z_NAME=hex(zeroblob(600))"_s);
    zeige();
    EXPECT_EQ(text(0, Ergebnisspalte::Datum), QString());
    EXPECT_EQ(text(0, Ergebnisspalte::Nummer), u"12345678901234567890"_s);
    EXPECT_EQ(text(0, Ergebnisspalte::Züchter), QString(1000, u'0') + u'…');
    EXPECT_EQ(text(0, Ergebnisspalte::Züchter, Qt::EditRole).size(), 1200);
}

TEST_F(Ergebnismodelltest, WritesWhatWasTypedAndTheTrimmedRow) {
    speichere(vollerSatz(u"001"_s));
    fremd(u"UPDATE Ergebnisse SET VATER='  Insel ', B_NAME=' '"_s);
    modell.vorÄnderung([](Ergebnismodell::Zeile& zeile) {
        for (QString& wert : zeile.werte) {
            wert = wert.trimmed();
        }
    });
    zeige();
    beobachte();
    EXPECT_TRUE(schreibe(Ergebnisspalte::Züchter, u"  O'Neill "_s));
    EXPECT_EQ(fremd(u"SELECT Z_NAME||'|'||VATER||'|'||B_NAME FROM Ergebnisse"_s),
              u"O'Neill|Insel| "_s);
    EXPECT_EQ(text(0, Ergebnisspalte::Züchter), u"O'Neill"_s);
    EXPECT_EQ(text(0, Ergebnisspalte::Begattung), u"Insel"_s);
    EXPECT_THAT(meldungen, IsEmpty());
}

TEST_F(Ergebnismodelltest, TakesWordsOfAnyLanguageAndDatesInSeveralForms) {
    speichere(vollerSatz(u"001"_s));
    zeige();
    EXPECT_TRUE(schreibe(Ergebnisspalte::Geschlecht, u"mâles"_s));
    EXPECT_TRUE(schreibe(Ergebnisspalte::Entspricht, u"NO"_s));
    EXPECT_EQ(fremd(u"SELECT A_D||'|'||ERGEBNIS FROM Ergebnisse"_s), u"Mâles|No"_s);
    for (const auto& [getippt, datum] : {std::pair{u"1.7.2024"_s, u"2024-07-01"_s},
                                         {u"05.03.24"_s, u"2024-03-05"_s},
                                         {u"31.12.98"_s, u"1998-12-31"_s},
                                         {u"2023-02-28"_s, u"2023-02-28"_s}}) {
        EXPECT_TRUE(schreibe(Ergebnisspalte::Datum, getippt)) << getippt.toStdString();
        EXPECT_EQ(fremd(u"SELECT date(DATUM) FROM Ergebnisse"_s), datum);
    }
}

TEST_F(Ergebnismodelltest, RefusesWhatAColumnDoesNotTakeAndChangesNothing) {
    speichere(vollerSatz(u"001"_s));
    speichere(vollerSatz(u"002ab2025"_s));
    zeige();
    beobachte();
    const QString vorher = fremd(u"SELECT * FROM Ergebnisse"_s);
    const std::tuple<Ergebnisspalte, QString, const char*> eingaben[] = {
        {Ergebnisspalte::Geschlecht, u"Weisel"_s, "Arbeiter, Drohnen"},
        {Ergebnisspalte::Entspricht, u"vielleicht"_s, "Ja, Nein"},
        {Ergebnisspalte::Entspricht, u""_s, "Ja, Nein"},
        {Ergebnisspalte::Datum, u"30.02.2025"_s, "15.06.2025"},
        {Ergebnisspalte::Nummer, u"  "_s, "'Untersuchung Nr.' fehlt"},
        {Ergebnisspalte::Nummer, u"002AB2025"_s, "002AB2025"},
        {Ergebnisspalte::Nummer, u"12345678901"_s, "10"},
        {Ergebnisspalte::Züchter, QString(31, u'x'), "30"}};
    for (const auto& [spalte, wert, grund] : eingaben) {
        meldungen.clear();
        EXPECT_FALSE(schreibe(spalte, wert));
        ASSERT_THAT(meldungen, SizeIs(1)) << wert.toStdString();
        EXPECT_THAT(meldungen.first().toStdString(), HasSubstr(grund));
    }
    EXPECT_EQ(fremd(u"SELECT * FROM Ergebnisse"_s), vorher);
    EXPECT_EQ(text(0, Ergebnisspalte::Nummer), u"001"_s);
}

TEST_F(Ergebnismodelltest, DeletedRowsGoFromFileAndPages) {
    fülle(130);
    zeige();
    beobachte();
    modell.lösche(63);
    EXPECT_EQ(modell.rowCount(), 129);
    EXPECT_EQ(modell.nummer(62), u"0063"_s);
    EXPECT_EQ(modell.nummer(63), u"0065"_s);
    EXPECT_EQ(modell.nummer(128), u"0130"_s);
    EXPECT_EQ(fremd(u"SELECT count(*) FROM Ergebnisse WHERE U_NR='0064'"_s), u"0"_s);
}

TEST_F(Ergebnismodelltest, AVanishedFileIsToldOnceAndNotForEveryCell) {
    fülle(300);
    zeige();
    modell.fetchMore({});
    ASSERT_TRUE(QFile::rename(pfad_, pfad_ + u".weg"_s));
    for (int zeile = 64; zeile < 300; ++zeile) {
        EXPECT_EQ(text(zeile, Ergebnisspalte::Nummer), QString());
    }
    EXPECT_THAT(meldungen, SizeIs(1));
    EXPECT_THROW(zeige(), Datenbankfehler);
    EXPECT_EQ(modell.rowCount(), 0);
}

TEST_F(Ergebnismodelltest, FetchesTheRestOnceTheFileCanBeReadAgain) {
    fülle(300);
    zeige();
    ASSERT_TRUE(QFile::rename(pfad_, pfad_ + u".weg"_s));
    modell.fetchMore({});
    EXPECT_THAT(meldungen, SizeIs(1));
    EXPECT_FALSE(modell.vollständig());
    EXPECT_FALSE(modell.canFetchMore({})) << "a view would ask with every step";
    ASSERT_TRUE(QFile::rename(pfad_ + u".weg"_s, pfad_));
    modell.fetchMore({});
    EXPECT_TRUE(modell.vollständig());
    EXPECT_EQ(modell.rowCount(), 300);
    EXPECT_EQ(modell.nummer(299), u"0300"_s);
}

TEST_F(Ergebnismodelltest, ColumnsHaveHeadingsAndAlignmentOfTheGrid) {
    speichere(vollerSatz(u"001"_s));
    zeige();
    QStringList köpfe;
    QString zentriert;
    for (int spalte = 0; spalte < ErsteZusatzspalte; ++spalte) {
        köpfe << modell.headerData(spalte, Qt::Horizontal, Qt::DisplayRole).toString();
        const auto lage =
            modell.index(0, spalte).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
        zentriert += lage.testFlag(Qt::AlignHCenter) ? u'z' : u'-';
    }
    EXPECT_THAT(köpfe, ElementsAre(u"Nummer"_s, u"Nummer der Königin"_s, u"Züchter"_s,
                                   u"Besitzer"_s, u"Geschlecht"_s, u"Entspricht"_s, u"Rasse"_s,
                                   u"Begattung"_s, u"Datum"_s));
    EXPECT_EQ(zentriert, u"zz--zzz--"_s);
}

} // namespace
} // namespace tarvel
