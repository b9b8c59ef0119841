// The rows of a results file as the browser reads and changes them.

#include "results/ergebnisdateien.h"

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

constexpr int Nummer = 0;
constexpr int Züchter = 2;
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
    qint64 id(const QString& nummer) {
        return fremd(u"SELECT rowid FROM Ergebnisse WHERE U_NR = '%1'"_s.arg(nummer)).toLongLong();
    }
};

} // namespace

TEST_F(Browserzeilen, order_isThatOfTheColumnAndThenOfTheNumber) {
    EXPECT_EQ(finde(u"ORDER BY DATUM"_s).join(u' '), u"3 2 4 1"_s);
    EXPECT_EQ(finde(u"ORDER BY U_NR"_s, {}, 3).join(u' '), u"1 2 3"_s);
    EXPECT_EQ(finde(u"ORDER BY Z_NAME"_s).join(u' '), u"1 4 2 3"_s);
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
    const qint64 zeile = id(u"1"_s);
    t.ändere(zeile, Züchter, u"Groß"_s);
    t.ändere(zeile, Datum, u"2024-02-29"_s);
    EXPECT_EQ(t.lade(u"1"_s)->Z_NAME, u"Groß"_s);
    EXPECT_EQ(t.lade(u"1"_s)->DATUM, QDate(2024, 2, 29));
    t.ändere(zeile, Züchter, {});
    EXPECT_EQ(t.lade(u"1"_s)->Z_NAME, u" "_s);

    EXPECT_EQ(grundVon([&] { t.ändere(zeile, Züchter, QString(31, u'x')); }),
              Datenbankgrund::TextZuLang);
    EXPECT_EQ(grundVon([&] { t.ändere(zeile, Nummer, u"4"_s); }), Datenbankgrund::NummerDoppelt);
    t.ändere(zeile, Nummer, u"_Ä"_s);
    EXPECT_EQ(grundVon([&] { t.ändere(id(u"4"_s), Nummer, u"_ä"_s); }),
              Datenbankgrund::NummerDoppelt);
    t.ändere(zeile, Nummer, u"_ä"_s); // its own number in another case
    EXPECT_EQ(nummern(), u"2;3;4;_ä"_s);
}

TEST_F(Browserzeilen, rowThatHasGone_isLeftOutAndNotChanged) {
    auto t = tabelle();
    const qint64 zeile = id(u"2"_s);
    t.lösche(zeile);
    t.lösche(zeile);
    EXPECT_EQ(nummern(), u"1;3;4"_s);
    EXPECT_EQ(grundVon([&] { t.ändere(zeile, Züchter, u"x"_s); }),
              Datenbankgrund::UntersuchungFehlt);
    const auto übrig = t.zeilen({id(u"4"_s), zeile, id(u"1"_s)});
    ASSERT_EQ(übrig.size(), 2U);
    EXPECT_EQ(übrig[0].werte[Nummer] + übrig[1].werte[Nummer], u"41"_s);
}
