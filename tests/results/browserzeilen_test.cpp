// The rows of a results file as the browser reads and changes them.

#include "results/ergebnisdateien.h"

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

constexpr int Nummer = 0;
constexpr int Züchter = 2;
constexpr int Begattung = 7;
constexpr int Datum = 8;

class Browserzeilen : public Dateitest {
protected:
    static void lege(Ergebnistabelle tabelle, const QString& nummer, const QString& züchter,
                     const QString& tiere, const QString& volk, int tag) {
        Ergebnissatz s = satz(nummer, QDate(2025, 6, tag));
        s.Z_NAME = züchter;
        s.A_D = tiere;
        s.VOLK = volk;
        tabelle.speichere(s);
    }
    void SetUp() override {
        Dateitest::SetUp();
        lege(tabelle(), u"3"_s, u"Änders"_s, u"Drohnen"_s, u"100%"_s, 1);
        lege(tabelle(), u"1"_s, u"berg"_s, u"MÂLES"_s, u"b"_s, 3);
        lege(tabelle(), u"2"_s, u"Zander"_s, u"Workers"_s, u"c"_s, 2);
        lege(tabelle(), u"4"_s, u"Berg"_s, u"Mâles"_s, u"1000"_s, 2);
    }
    /// Numbers of the rows in order; the same from both ways to read them.
    QStringList finde(const QString& ende, const QString& suchtext = {}, int höchstens = 99) {
        const QString quelle = u"SELECT * FROM Ergebnisse "_s + ende;
        std::vector<qint64> folge = tabelle().zeilenfolge(quelle, suchtext);
        folge.resize(std::min(folge.size(), static_cast<size_t>(höchstens)));
        QStringList einzeln;
        for (const auto& zeile : tabelle().zeilen(folge)) {
            einzeln << zeile.werte[Nummer];
        }
        QStringList erste;
        for (const auto& zeile : tabelle().zeilen(quelle, suchtext, höchstens)) {
            erste << zeile.werte[Nummer];
        }
        EXPECT_EQ(erste, einzeln);
        return erste;
    }
    Ergebnistabelle::Zeile zeile(const QString& nummer) {
        const qint64 id =
            fremd(u"SELECT rowid FROM Ergebnisse WHERE U_NR = '%1'"_s.arg(nummer)).toLongLong();
        return tabelle().zeilen({id}).at(0);
    }
    void ändere(const QString& nummer, int spalte, const QString& wert) {
        const auto alt = zeile(nummer);
        auto neu = alt;
        neu.werte.at(static_cast<size_t>(spalte)) = wert;
        tabelle().ändere(alt, neu);
    }
};

} // namespace

TEST_F(Browserzeilen, order_isThatOfTheColumnAndThenOfTheNumber) {
    EXPECT_EQ(finde(u"ORDER BY DATUM"_s).join(u' '), u"3 2 4 1"_s);
    EXPECT_EQ(finde(u"ORDER BY U_NR"_s, {}, 3).join(u' '), u"1 2 3"_s);
    // An umlaut stands with its vowel, as a German, English or French reader expects.
    EXPECT_EQ(finde(u"ORDER BY Z_NAME"_s).join(u' '), u"3 4 1 2"_s);
    EXPECT_EQ(tabelle().zeilen(u"SELECT * FROM Ergebnisse ORDER BY DATUM"_s, {}, 1)[0].werte,
              (std::array{u"3"_s, u" "_s, u"Änders"_s, u" "_s, u"Drohnen"_s, u" "_s, u" "_s, u" "_s,
                          u"2025-06-01"_s}));
}

TEST_F(Browserzeilen, filterAndSearch_knowUmlautsAndTakeWildcardsLiterally) {
    EXPECT_EQ(finde(u"WHERE (A_D LIKE 'Drohnen' OR A_D LIKE 'Mâles') ORDER BY U_NR"_s).join(u' '),
              u"1 3 4"_s);
    EXPECT_EQ(finde(u"WHERE (A_D LIKE 'Mâles') ORDER BY U_NR"_s, u"ERG"_s).join(u' '), u"1 4"_s);
    EXPECT_EQ(finde(u"ORDER BY U_NR"_s, u"änd"_s).join(u' '), u"3"_s);
    EXPECT_EQ(finde(u"ORDER BY U_NR"_s, u"0%"_s).join(u' '), u"3"_s);
    EXPECT_EQ(finde(u"ORDER BY U_NR"_s, u"100"_s).join(u' '), u"3 4"_s);
    EXPECT_EQ(finde(u"ORDER BY U_NR"_s, u"' OR 1"_s).size(), 0);
}

TEST_F(Browserzeilen, edit_keepsWidthsAndNumbersApart) {
    auto t = tabelle();
    ändere(u"1"_s, Züchter, u"Groß"_s);
    ändere(u"1"_s, Datum, u"2024-02-29"_s);
    EXPECT_EQ(t.lade(u"1"_s)->Z_NAME, u"Groß"_s);
    EXPECT_EQ(t.lade(u"1"_s)->DATUM, QDate(2024, 2, 29));
    ändere(u"1"_s, Züchter, {});
    EXPECT_EQ(t.lade(u"1"_s)->Z_NAME, u" "_s);

    EXPECT_EQ(grundVon([&] { ändere(u"1"_s, Züchter, QString(31, u'x')); }),
              Datenbankgrund::TextZuLang);
    EXPECT_EQ(grundVon([&] { ändere(u"1"_s, Nummer, u"4"_s); }), Datenbankgrund::NummerDoppelt);
    ändere(u"1"_s, Nummer, u"_Ä"_s);
    EXPECT_EQ(grundVon([&] { ändere(u"4"_s, Nummer, u"_ä"_s); }), Datenbankgrund::NummerDoppelt);
    ändere(u"_Ä"_s, Nummer, u"_ä"_s); // its own number in another case
    EXPECT_EQ(nummern(), u"2;3;4;_ä"_s);
}

TEST_F(Browserzeilen, editOfSeveralColumns_isWrittenAsAWholeOrNotAtAll) {
    fremd(u"UPDATE Ergebnisse SET VATER = 'überlanger Text aus einem anderen Programm ' "
          u"WHERE U_NR = '1'"_s);
    const auto alt = zeile(u"1"_s);
    auto neu = alt;
    neu.werte[Züchter] = u"neu"_s;
    neu.werte[Begattung] = alt.werte[Begattung].trimmed(); // no text of the user's
    neu.werte[Nummer] = u"4"_s;
    const QString alles = u"SELECT * FROM Ergebnisse"_s;
    QString vorher = fremd(alles);
    EXPECT_EQ(grundVon([&] { tabelle().ändere(alt, neu); }), Datenbankgrund::NummerDoppelt);
    EXPECT_EQ(fremd(alles), vorher);
    // The last column fails after others were written.
    fremd(u"UPDATE Ergebnisse SET DATUM = '2020-01-01' WHERE U_NR = '2'; "
          u"CREATE UNIQUE INDEX t ON Ergebnisse(DATUM) WHERE DATUM = '2020-01-01'"_s);
    vorher = fremd(alles);
    neu.werte[Nummer] = u"9"_s;
    neu.werte[Datum] = u"2020-01-01"_s;
    EXPECT_TRUE(grundVon([&] { tabelle().ändere(alt, neu); }));
    EXPECT_EQ(fremd(alles), vorher);
    fremd(u"DROP INDEX t"_s);
    tabelle().ändere(alt, neu);
    EXPECT_EQ(fremd(u"SELECT Z_NAME, VATER, DATUM FROM Ergebnisse WHERE U_NR = '9'"_s),
              u"neu|überlanger Text aus einem anderen Programm|2020-01-01"_s);
}

TEST_F(Browserzeilen, rowThatHasGone_isLeftOutAndNeitherChangedNorDeleted) {
    auto t = tabelle();
    const auto alt = zeile(u"2"_s);
    auto neu = alt;
    neu.werte[Züchter] = u"x"_s;
    const auto scheitert = [&] {
        for (const std::function<void()>& arbeit :
             {std::function<void()>([&] { t.ändere(alt, neu); }), {[&] { t.lösche(alt); }}}) {
            const auto fehler = fehlerVon(arbeit);
            ASSERT_TRUE(fehler && fehler->grund() == Datenbankgrund::UntersuchungFehlt);
            EXPECT_EQ(fehler->einzelheit(), u"2"_s);
        }
    };
    t.lösche(alt);
    EXPECT_EQ(nummern(), u"1;3;4"_s);
    scheitert();
    const auto übrig = t.zeilen({zeile(u"4"_s).id, alt.id, zeile(u"1"_s).id});
    ASSERT_EQ(übrig.size(), 2U);
    EXPECT_EQ(übrig[0].werte[Nummer] + übrig[1].werte[Nummer], u"41"_s);

    fremd(u"INSERT INTO Ergebnisse(rowid, U_NR, Z_NAME) VALUES(%1, '5', 'fremd')"_s.arg(alt.id));
    scheitert(); // the place belongs to another one now
    EXPECT_EQ(t.lade(u"5"_s)->Z_NAME, u"fremd"_s);
}

TEST_F(Browserzeilen, rowWithoutNumberOrOfForeignBytes_canBeChangedAndDeleted) {
    fremd(u"INSERT INTO Ergebnisse(rowid, U_NR) VALUES(90, NULL), (91, CAST(x'4BF6' AS TEXT))"_s);
    for (const qint64 id : {90, 91}) {
        const auto alt = tabelle().zeilen({id}).at(0);
        auto neu = alt;
        neu.werte[Züchter] = u"x"_s;
        tabelle().ändere(alt, neu);
        tabelle().lösche(neu);
    }
    EXPECT_EQ(nummern(), u"1;2;3;4"_s);
}
