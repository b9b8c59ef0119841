#include "results/ergebnisdateien.h"
#include "results/untersuchungssatz.h"
#include "results/zusammenfuehrung.h"

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

class Tabellentest : public Dateitest {
protected:
    void speichere(const QStringList& nummern, const QDate& datum = QDate(2025, 6, 15)) {
        for (const QString& nummer : nummern) {
            tabelle().speichere(satz(nummer, datum));
        }
    }
    QString nächste(int jahr, const QString& kurzzeichen) {
        return tabelle().NächsteNummer(QDate(jahr, 3, 1), kurzzeichen);
    }
};

} // namespace

TEST_F(Tabellentest, numbering_countsWithinTheYearOfTheDate) {
    EXPECT_EQ(nächste(2025, u"AB"_s), u"001AB2025"_s);
    speichere({u"0992024"_s, u"850AB2024"_s}, QDate(2024, 12, 31));
    EXPECT_EQ(nächste(2025, u"AB"_s), u"001AB2025"_s);
    speichere({u"011AB2025"_s, u"007XY2025"_s}, QDate(2025, 1, 1));
    EXPECT_EQ(nächste(2025, u"AB"_s), u"012AB2025"_s);
    speichere({u"044AB2024"_s}); // number of another year, examined this year
    EXPECT_EQ(nächste(2025, u"ABCD"_s), u"045ABC2025"_s);
    speichere({u"1234Z2025"_s});
    EXPECT_EQ(nächste(2025, {}), u"12352025"_s);
}

TEST_F(Tabellentest, numbering_readsOnlyTheDigitsInFront) {
    // Such signs would be exponents in a number.
    speichere({u"003E2025"_s, u"002D2025"_s});
    EXPECT_EQ(nächste(2025, u"E"_s), u"004E2025"_s);
    // Without a short sign number and year run together, as agreed.
    speichere({u"0012025"_s});
    EXPECT_EQ(nächste(2025, {}), u"120262025"_s);
    speichere({u"Königin"_s, u"&HFF"_s, u"inf"_s, u"  8"_s}, QDate(2026, 1, 1));
    EXPECT_EQ(nächste(2026, u"Z"_s), u"009Z2026"_s);
}

TEST_F(Tabellentest, everyColumn_comesBackAsItWasStored) {
    Ergebnissatz s = satz(u"012AB2025"_s);
    s.ZB_NR = u"7-33-2024"_s;
    s.A_D = u"Ouvrières"_s;
    s.RASSE = u"Carnica"_s;
    s.B_NAME = u"O'Hara; \"Bienen\" 蜂"_s;
    s.ERGEBNIS = u"Nein"_s;
    s.VATER = u"%_'"_s;
    s.VOLK = u"  mit Blanks  "_s;
    s.CI = u"#007;2,31;12,3; "_s.repeated(200);
    s.HI_DV = u"#007;0,9;-2,5; "_s.repeated(200);
    s.PROZENT = QString(70, u'%');
    s.MERKMAL = u"L#abc1,5\r\nzweite Zeile"_s;
    for (int i = 0; i < 4; ++i) {
        s.Grafik[static_cast<size_t>(i)] = u"Grafik %1;"_s.arg(i).repeated(1000 * i + 1);
    }
    tabelle().speichere(s);
    EXPECT_EQ(tabelle().lade(u"012ab2025"_s), s);
    EXPECT_EQ(tabelle().lade(u"012AB202"_s), std::nullopt);

    tabelle().speichere(satz(u"leer"_s, {})); // empty texts become a blank, no date stays none
    EXPECT_EQ(fremd(u"SELECT DATUM, VOLK = ' ' AND CI = ' ' AND Grafik4 = ' ' FROM Ergebnisse "
                    u"WHERE U_NR = 'leer'"_s),
              u"NULL|1"_s);
    EXPECT_EQ(fremd(u"SELECT DATUM FROM Ergebnisse WHERE U_NR = '012AB2025'"_s), u"2025-06-15"_s);
}

TEST_F(Tabellentest, saving_replacesTheRowOfThatNumberOnly) {
    speichere({u"001AB2025"_s, u"002AB2025"_s});
    Ergebnissatz neu = satz(u"001ab2025"_s);
    neu.VOLK = u"12"_s;
    tabelle().speichere(neu);
    EXPECT_EQ(tabelle().anzahl(), 2);
    EXPECT_EQ(tabelle().lade(u"001AB2025"_s)->VOLK, u"12"_s);
    speichere({u"003AB2025"_s});
    EXPECT_EQ(nummern(), u"001ab2025;002AB2025;003AB2025"_s);
    EXPECT_EQ(tabelle().letzteNummer(), u"003AB2025"_s);
    speichere({u"002AB2025"_s});
    EXPECT_EQ(tabelle().letzteNummer(), u"002AB2025"_s);
}

TEST_F(Tabellentest, tooLongText_isRefusedBeforeTheOldRowGoes) {
    for (const Textspalte& spalte : textspalten()) {
        Ergebnissatz s = satz(u"1"_s);
        s.*spalte.wert = QString(spalte.breite, u'ä');
        EXPECT_EQ(grundVon([&] { tabelle().speichere(s); }), std::nullopt)
            << spalte.name.toString().toStdString();
        s.*spalte.wert += u'x';
        const QString vorher = nummern();
        const auto fehler = fehlerVon([&] { tabelle().speichere(s); });
        ASSERT_TRUE(fehler && fehler->grund() == Datenbankgrund::TextZuLang);
        EXPECT_EQ(fehler->einzelheit(), spalte.name);
        EXPECT_EQ(fehler->breite(), spalte.breite);
        EXPECT_EQ(fehler->länge(), spalte.breite + 1);
        EXPECT_EQ(nummern(), vorher);
    }
    Ergebnissatz bienen = satz(u"1"_s); // a character beyond the basic plane is one
    bienen.Z_NAME = u"\U0001F41D"_s.repeated(30);
    tabelle().speichere(bienen);
    bienen.Z_NAME += u'x';
    EXPECT_EQ(grundVon([&] { tabelle().speichere(bienen); }), Datenbankgrund::TextZuLang);
}

TEST_F(Tabellentest, hostileNumber_matchesOnlyItself) {
    const QStringList feindlich = {u"1'2"_s,    u"1''2"_s, u"1%2"_s,   u"1_2"_s, u"1*2"_s,
                                   u"1?2"_s,    u"1#2"_s,  u"1[a]2"_s, u"1a2"_s, u"1\\2"_s,
                                   u"1\\%2"_s,  u"1\"2"_s, u"1;--2"_s, u"%"_s,   u"_"_s,
                                   u"' OR 1"_s, u"1ä2"_s,  u"1ä%"_s,   u"1'ä"_s, u"ß2"_s,
                                   u"1\\"_s,    u"12"_s,   u"1 2"_s,   u"äöü"_s, u"蜂_1"_s};
    speichere(feindlich);
    ASSERT_EQ(tabelle().anzahl(), feindlich.size());
    for (const QString& nummer : feindlich) {
        Ergebnissatz s = satz(nummer);
        s.VOLK = u"zu "_s + nummer;
        tabelle().speichere(s);
        EXPECT_EQ(tabelle().anzahl(), feindlich.size()) << nummer.toStdString();
    }
    for (const QString& nummer : feindlich) {
        const auto geladen = tabelle().lade(nummer);
        ASSERT_TRUE(geladen) << nummer.toStdString();
        EXPECT_EQ(geladen->U_NR, nummer);
        EXPECT_EQ(geladen->VOLK, u"zu "_s + nummer);
    }
}

TEST_F(Tabellentest, umlautsOfANumber_compareWithoutCase) {
    speichere({u"01Ä2025"_s, u"01Ö2025"_s, u"01A2025"_s});
    EXPECT_EQ(tabelle().lade(u"01ä2025"_s)->U_NR, u"01Ä2025"_s);
    speichere({u"01ä2025"_s});
    EXPECT_EQ(nummern(), u"01A2025;01Ö2025;01ä2025"_s);
}

TEST_F(Tabellentest, blanksAtTheEndOfANumber_areNone) {
    for (const QString& nummer : {u"007"_s, u"00Ä"_s}) {
        fremd(u"DELETE FROM Ergebnisse"_s);
        speichere({nummer, nummer + u"1"_s, nummer + u" 2"_s});
        fremd(u"UPDATE Ergebnisse SET U_NR = U_NR || '  ' WHERE U_NR = '%1'"_s.arg(nummer));
        EXPECT_TRUE(tabelle().lade(nummer));
        speichere({nummer});
        EXPECT_EQ(nummern(), QStringList({nummer, nummer + u" 2"_s, nummer + u"1"_s}).join(u';'));
        EXPECT_TRUE(tabelle().lade(nummer + u' '));
    }
    Untersuchung typed;
    Kolonieangaben angaben;
    angaben.UNr = u"008  "_s;
    typed.setzeAngaben(angaben);
    Texte texte{QString()};
    texte.SpracheDeutsch();
    EXPECT_EQ(satzAus(typed, true, 1200, QDate(2025, 1, 1), {texte, {}, {}, false}).U_NR, u"008"_s);
}

TEST_F(Tabellentest, numbersThatDifferOnlyInCase_areKeptApartByTheirSpelling) {
    // Only other programs store several spellings.
    fremd(u"INSERT INTO Ergebnisse(U_NR, VOLK) VALUES('7ab', 'a'), ('7AB', 'b'), ('Ö7x', 'c'), "
          u"('ö7x', 'd')"_s);
    EXPECT_EQ(tabelle().lade(u"7ab"_s)->VOLK, u"a"_s);
    EXPECT_EQ(tabelle().lade(u"7AB"_s)->VOLK, u"b"_s);
    EXPECT_EQ(tabelle().lade(u"Ö7x"_s)->VOLK, u"c"_s);
    EXPECT_EQ(tabelle().lade(u"ö7x"_s)->VOLK, u"d"_s);
    speichere({u"7AB"_s, u"ö7x"_s});
    EXPECT_EQ(nummern(), u"7AB;7ab;Ö7x;ö7x"_s);
    EXPECT_EQ(tabelle().lade(u"7ab"_s)->VOLK, u"a"_s);
    EXPECT_EQ(tabelle().lade(u"Ö7x"_s)->VOLK, u"c"_s);
    speichere({u"7Ab"_s, u"Ö7X"_s}); // a spelling that is not there takes the place of all
    EXPECT_EQ(nummern(), u"7Ab;Ö7X"_s);
}

TEST_F(Tabellentest, replacing_refusesARowThatIsNotTheOneExpected) {
    Ergebnissatz meiner = satz(u"007"_s);
    EXPECT_TRUE(tabelle().ersetze(meiner, std::nullopt));
    EXPECT_FALSE(tabelle().ersetze(meiner, std::nullopt));
    EXPECT_TRUE(tabelle().ersetze(meiner, meiner)); // what was written is expected as well
    const auto gesehen = tabelle().lade(u"007"_s);
    const QByteArray vorher = bytes(pfad_);
    fremd(u"UPDATE Ergebnisse SET Grafik3 = 'anders'"_s);
    meiner.VOLK = u"mein"_s;
    EXPECT_FALSE(tabelle().ersetze(meiner, gesehen));
    EXPECT_EQ(fremd(u"SELECT Grafik3, VOLK FROM Ergebnisse"_s), u"anders| "_s);

    fremd(u"DELETE FROM Ergebnisse"_s);
    EXPECT_TRUE(tabelle().ersetze(meiner, gesehen)); // nothing there that could be lost
    EXPECT_EQ(tabelle().lade(u"007"_s)->VOLK, u"mein"_s);
    EXPECT_EQ(tabelle().anzahl(), 1);
}

TEST_F(Tabellentest, replacing_looksAtEverySpellingThatWouldGo) {
    speichere({u"7a"_s});
    const auto gesehen = tabelle().lade(u"7a"_s);
    EXPECT_TRUE(tabelle().ersetze(satz(u"7A"_s), gesehen)); // only the case was changed
    EXPECT_EQ(nummern(), u"7A"_s);
    const auto groß = tabelle().lade(u"7A"_s);
    fremd(u"INSERT INTO Ergebnisse(U_NR) VALUES('7a'), ('xy'), ('Xy')"_s);
    EXPECT_TRUE(tabelle().ersetze(satz(u"7A"_s), groß)); // the other one stays
    EXPECT_FALSE(tabelle().ersetze(satz(u"XY"_s), tabelle().lade(u"xy"_s)));
    EXPECT_EQ(nummern(), u"7A;7a;Xy;xy"_s);
}

TEST_F(Tabellentest, columnsOfOtherPrograms_keepTheirTypedValues) {
    speichere({u"1"_s, u"2"_s});
    fremd(u"ALTER TABLE Ergebnisse ADD COLUMN \"Gewicht (\"\"kg\"\")\";"
          u"ALTER TABLE Ergebnisse ADD COLUMN Bild BLOB; ALTER TABLE Ergebnisse ADD COLUMN Zahl;"
          u"ALTER TABLE Ergebnisse ADD COLUMN Ort TEXT DEFAULT 'daheim';"
          u"UPDATE Ergebnisse SET \"Gewicht (\"\"kg\"\")\" = 1.5, Bild = x'00ff', "
          u"Zahl = 9007199254740993, Ort = NULL WHERE U_NR = '1'; "
          u"ALTER TABLE Ergebnisse ADD COLUMN Notiz; "
          u"UPDATE Ergebnisse SET Notiz = '007''' WHERE U_NR = '1'"_s);
    const QString lies =
        u"SELECT typeof(\"Gewicht (\"\"kg\"\")\"), hex(Bild), typeof(Bild), Zahl, typeof(Zahl), "
        u"Ort, Notiz FROM Ergebnisse WHERE U_NR = '%1'"_s;
    const QString vorher = u"real|00FF|blob|9007199254740993|integer|NULL|007'"_s;
    ASSERT_EQ(fremd(lies.arg(1)), vorher);
    speichere({u"1"_s});
    EXPECT_EQ(fremd(lies.arg(1)), vorher);
    EXPECT_TRUE(tabelle().ersetze(satz(u"1"_s), tabelle().lade(u"1"_s)));
    EXPECT_EQ(fremd(lies.arg(1)), vorher);
    speichere({u"3"_s}); // a new row has what its program wants for a beginning
    EXPECT_EQ(fremd(lies.arg(3)), u"null||null|NULL|null|daheim|NULL"_s);
}

TEST_F(Tabellentest, foreignContent_isReadOrNamed) {
    // Bytes of "König", "Jörg 5 €", a broken "Österreich", a cut "Mü".
    fremd(u"INSERT INTO Ergebnisse(U_NR, Z_NAME, B_NAME, VOLK, DATUM) VALUES("
          u"CAST(x'4BF66E6967' AS TEXT), CAST(x'4AF67267203520803D' AS TEXT), "
          u"CAST(x'C39673746572F6' AS TEXT), CAST(x'4DC3' AS TEXT), '15.06.2025')"_s);
    auto geladen = tabelle().lade(u"König"_s);
    ASSERT_TRUE(geladen);
    EXPECT_EQ(geladen->U_NR, u"König"_s);
    EXPECT_EQ(geladen->Z_NAME, u"Jörg 5 €="_s);
    EXPECT_THAT(geladen->unlesbar,
                testing::UnorderedElementsAre(u"B_NAME"_s, u"VOLK"_s, u"DATUM"_s));
    EXPECT_FALSE(geladen->DATUM.isValid());
    EXPECT_EQ(tabelle().zeilen(u"SELECT * FROM Ergebnisse"_s, {}, 9)[0].werte[0], u"König"_s);

    geladen->unlesbar.clear();
    geladen->DATUM = QDate(2025, 6, 15);
    tabelle().speichere(*geladen);
    EXPECT_EQ(fremd(u"SELECT U_NR, DATUM FROM Ergebnisse"_s), u"König|2025-06-15"_s);
    EXPECT_THAT(tabelle().lade(u"KÖNIG"_s)->unlesbar, testing::IsEmpty());

    for (const QString& datum : {u"NULL"_s, u"' '"_s, u"'2025-06-15 08:30'"_s}) {
        fremd(u"UPDATE Ergebnisse SET DATUM = "_s + datum);
        EXPECT_THAT(tabelle().lade(u"König"_s)->unlesbar, testing::IsEmpty());
    }
    fremd(u"UPDATE Ergebnisse SET DATUM = 2460841.5"_s);
    EXPECT_THAT(tabelle().lade(u"König"_s)->unlesbar, testing::ElementsAre(u"DATUM"_s));
}

TEST_F(Tabellentest, language_convertsEverySpellingToAndFro) {
    const QString lies = u"SELECT ERGEBNIS || ' ' || A_D FROM Ergebnisse ORDER BY U_NR"_s;
    for (const auto& [nummer, ergebnis, tiere] : {std::tuple{u"1"_s, u"ja"_s, u"OUVRIÈRES"_s},
                                                  {u"2"_s, u"Yes"_s, u"drones"_s},
                                                  {u"3"_s, u"NON"_s, u"mÂles"_s},
                                                  {u"4"_s, u"Nein"_s, u"Arbeiter"_s},
                                                  {u"5"_s, u"Jaja"_s, u"Maden"_s}}) {
        Ergebnissatz s = satz(nummer);
        s.ERGEBNIS = ergebnis;
        s.A_D = tiere;
        tabelle().speichere(s);
    }
    tabelle().SpracheDB(Sprache::Französisch);
    EXPECT_EQ(fremd(lies), u"Oui OUVRIÈRES;Oui Mâles;NON mÂles;Non Ouvrières;Jaja Maden"_s);
    tabelle().SpracheDB(Sprache::Deutsch);
    EXPECT_EQ(fremd(lies), u"Ja Arbeiter;Ja Drohnen;Nein Drohnen;Nein Arbeiter;Jaja Maden"_s);
    tabelle().SpracheDB(Sprache::Englisch);
    EXPECT_EQ(fremd(lies), u"Yes Workers;Yes Drones;No Drones;No Workers;Jaja Maden"_s);

    const QByteArray vorher = bytes(pfad_);
    tabelle().SpracheDB(Sprache::Englisch);
    EXPECT_EQ(bytes(pfad_), vorher); // nothing to convert, nothing written
}

TEST_F(Tabellentest, plainEngine_readsAndWritesTheFile) {
    EXPECT_EQ(fremd(u"INSERT INTO Ergebnisse(U_NR, Z_NAME, DATUM) VALUES('077X', 'Öttl', "
                    u"'2025-05-01 10:00:00'); UPDATE Ergebnisse SET RASSE = 'Carnica'; "
                    u"PRAGMA integrity_check"_s),
              u"ok"_s);
    const auto geladen = tabelle().lade(u"077x"_s);
    ASSERT_TRUE(geladen);
    EXPECT_EQ(geladen->DATUM, QDate(2025, 5, 1));
    EXPECT_EQ(geladen->VOLK, QString());
    EXPECT_EQ(nächste(2025, u"A"_s), u"078A2025"_s);
    EXPECT_EQ(fremd(u"DELETE FROM Ergebnisse WHERE Z_NAME LIKE 'Ö%'; PRAGMA integrity_check"_s),
              u"ok"_s);
    EXPECT_EQ(tabelle().anzahl(), 0);
    EXPECT_EQ(tabelle().letzteNummer(), std::nullopt);
}

TEST_F(Tabellentest, indexes_comeWithTheFirstChange_neverByLooking) {
    const QString zähle = u"SELECT COUNT(*) FROM sqlite_master WHERE name LIKE 'Ergebnisse_%'"_s;
    const QString anfangs = fremd(zähle);
    EXPECT_NE(anfangs, u"0"_s);
    speichere({u"2"_s, u"1"_s, u"3"_s});
    const auto zeilen = [this] {
        return tabelle().zeilen(u"SELECT * FROM Ergebnisse ORDER BY U_NR"_s, {}, 9);
    };
    Rücknahme rücknahme;
    const std::function<void()> änderungen[] = {
        [&] { speichere({u"4"_s}); },
        [&] { rücknahme = tabelle().lösche(zeilen().front()); },
        [&] { Papierkorb(pfad_).nimmZurück(rücknahme, Sprache::Deutsch); },
        [&] {
            auto neu = zeilen().front();
            neu.werte[2] = u"x"_s;
            tabelle().ändere(zeilen().front(), neu);
        },
        [&] { Papierkorb(pfad_).leere(); },
        [&] {
            const Satzliste liste(u"Liste"_s, {satz(u"5"_s)});
            Zusammenführung z(pfad_, liste);
            const auto weiter = [](int, int) { return true; };
            ASSERT_TRUE(z.vergleiche(weiter));
            z.entscheide(Zeilenstand::Neu, Entscheidung::Nehmen);
            EXPECT_EQ(z.übernimm(Sprache::Deutsch, weiter)->übernommen, 1);
        }};
    for (const auto& ändere : änderungen) {
        for (const QString& spalte :
             {u"DATUM"_s, u"U_NR"_s, u"ZB_NR"_s, u"Z_NAME"_s, u"B_NAME"_s, u"Klein"_s}) {
            fremd(u"DROP INDEX Ergebnisse_"_s + spalte);
        }
        const QByteArray vorher = bytes(pfad_);
        tabelle().öffneProbeweise();
        EXPECT_FALSE(zeilen().empty()) << "a file without them serves as it is";
        tabelle().SpracheDB(Sprache::Deutsch); // nothing to convert
        EXPECT_EQ(bytes(pfad_), vorher);
        ändere();
        EXPECT_EQ(fremd(zähle), anfangs);
    }
    EXPECT_EQ(nummern(), u"1;2;3;4;5"_s);
}

TEST_F(Tabellentest, knownTexts_areEachGivenOnceAndTheMostFrequentOfTooMany) {
    int nummer = 100;
    for (const QString& name :
         {u"Zoë"_s, u"Meyer"_s, u" Meyer "_s, u" "_s, u""_s, u"MEYER"_s, u"Anna"_s, u"Zoë"_s}) {
        Ergebnissatz s = satz(u"%1AB2025"_s.arg(nummer++));
        s.Z_NAME = name;
        tabelle().speichere(s);
    }
    EXPECT_EQ(tabelle().bekannte(&Ergebnissatz::Z_NAME, 500).size(), 3);
    const QStringList häufigste = tabelle().bekannte(&Ergebnissatz::Z_NAME, 2);
    ASSERT_EQ(häufigste.size(), 2);
    EXPECT_EQ(häufigste.front().toLower(), u"meyer"_s);
    EXPECT_EQ(häufigste.back(), u"Zoë"_s);
}
