// What the results file computes with while it searches and numbers.

#include "results/sqlfunktionen.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <gmock/gmock.h>

using namespace tarvel;

TEST(SqlFunktionen, like_knowsEveryAlphabetAndGoesBackForAnotherFit) {
    struct Fall {
        std::string_view text;
        std::string_view muster;
        bool wie;
    };
    for (const Fall& fall : {
             Fall{"M\u00FCller", "m\u00DCLLER", true},
             {"\u03A3\u03AF\u03C3", "\u03C3\u03AF_", true},
             {"a\u20ACb", "a_b", true}, // three bytes, one character
             {"\U0001F41Dx", "_x", true},
             {"\U0001F41D", "__", false},
             {"\u20AC", "\u20AD", false},
             {"\xE2\x82", "_", true}, // cut off within a character
             {"x\xC3", "x_", true},
             {"", "", true},
             {"", "%", true},
             {"", "_", false},
             {"x", "", false},
             {"aab", "%ab", true},
             {"abcabd", "a%bd", true},
             {"abcabc", "%b%bd%", false},
             {"ab", "a%b%", true},
             {"50%", "50!%", true},
             {"50x", "50!%", false},
             {"a_b", "a!_b", true},
             {"axb", "a!_b", false},
             {"a!", "a!!", true},
             {"a!", "a!", true}, // nothing left to escape
         }) {
        EXPECT_EQ(istWie(fall.text, fall.muster, U'!'), fall.wie) << fall.text << fall.muster;
    }
    EXPECT_FALSE(istWie("50%", "50!%"));
}

TEST(SqlFunktionen, numbersAndYears_areReadFromTheFront) {
    const std::pair<std::string_view, double> zahlen[] = {
        {"012AB2025", 12}, {" \t7", 7}, {"+7", 7}, {"-3x", -3}, {".5", 0.5}, {"1.2.3", 1.2},
        {"1E5", 1},        {"inf", 0},  {"+", 0},  {"-", 0},    {"", 0},     {"  ", 0},
    };
    for (const auto& [text, zahl] : zahlen) {
        EXPECT_EQ(zahlAmAnfang(text), zahl) << text;
    }
    EXPECT_EQ(jahrVon("2025-05-17"), 2025);
    EXPECT_EQ(jahrVon("2025-05-17 08:00:00"), 2025);
    for (const std::string_view kein :
         {"", "2025-5-17", "2O25-05-17", "2025/05-17", "2025-05/17", "17.05.2025"}) {
        EXPECT_EQ(jahrVon(kein), 0) << kein;
    }
}

TEST(SqlFunktionen, wordsAreFound_howeverTheirUmlautsAreWritten) {
    struct Fall {
        const char *text, *wort;
        bool findet;
    };
    for (const Fall& fall : {Fall{"Anna Müller", "mueller", true},
                             {"Anna MUELLER", "müller", true},
                             {"Müller", "mu", true}, // on the way to it
                             {"Weiß-Ökonom", "weiss-oekonom", true},
                             {"Groß-Strasse", "gross-straße", true}, // each for itself
                             {"Sœur Elsa", "soeur", true},
                             {"für", "er", false}, // no e stands there
                             {"Muller", "müller", false},
                             {"Müller", "muller", false}}) {
        SQLite::Database verbindung(":memory:");
        registriereSuche(verbindung, {{fall.wort}});
        SQLite::Statement abfrage(verbindung, "SELECT findet(?, '')");
        abfrage.bind(1, fall.text);
        ASSERT_TRUE(abfrage.executeStep());
        EXPECT_EQ(abfrage.getColumn(0).getInt() != 0, fall.findet) << fall.text << fall.wort;
    }
}

TEST(SqlFunktionen, nothing_staysNothing) {
    SQLite::Database verbindung(":memory:");
    registriereVALundYear(verbindung);
    registriereLIKE(verbindung);
    for (const char* ausdruck :
         {"VAL(NULL) IS NULL", "Year(NULL) IS NULL", "Year('soon') IS NULL", "VAL(x'') = 0",
          "NULL LIKE 'a' IS NULL", "'a' LIKE NULL IS NULL", "'5%' LIKE '5!%' ESCAPE '!'",
          "'5x' NOT LIKE '5!%' ESCAPE '!'", "'\u00C4' LIKE '\u00E4'", "x'' LIKE '%'"}) {
        SQLite::Statement abfrage(verbindung, std::string("SELECT ") + ausdruck);
        ASSERT_TRUE(abfrage.executeStep());
        EXPECT_EQ(abfrage.getColumn(0).getInt(), 1) << ausdruck;
    }
}
