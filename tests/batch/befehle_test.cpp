#include "batch/befehle.h"

#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::HasSubstr;

namespace {

std::variant<Aufruf, Aufruffehler> lese(const QString& zeile) {
    return leseAufruf((u"tarvel-batch "_s + zeile).split(u' ', Qt::SkipEmptyParts));
}

template <typename Befehl>
Befehl befehl(const QString& zeile) {
    const auto gelesen = lese(zeile);
    const auto* aufruf = std::get_if<Aufruf>(&gelesen);
    const auto* befehl = aufruf == nullptr ? nullptr : std::get_if<Befehl>(&aufruf->befehl);
    EXPECT_NE(befehl, nullptr) << zeile.toStdString();
    return befehl == nullptr ? Befehl{} : *befehl;
}

} // namespace

TEST(Befehle, goodLines_giveWhatTheySay) {
    Auswertungsbefehl auswertung;
    auswertung.dateien = {u"a.csv"_s};
    EXPECT_EQ(befehl<Auswertungsbefehl>(u"evaluate a.csv"_s), auswertung);
    auswertung = {.dateien = {u"a.csv"_s, u"-b.tps"_s},
                  .messart = Messart::NurCubitalindex,
                  .dpi = 2400,
                  .zoom = 4,
                  .tiere = Geschlecht::Drohnen,
                  .rasse = u"Buckfast"_s,
                  .ini = u"x/Index.ini"_s,
                  .format = Ausgabeformat::Json};
    EXPECT_EQ(befehl<Auswertungsbefehl>(
                  u"evaluate --messart 0 --dpi=2400 a.csv --zoom 4 --caste drones --race Buckfast "
                  "--ini x/Index.ini --format json -- -b.tps"_s),
              auswertung);

    EXPECT_EQ(befehl<Ausfuhrbefehl>(u"export a.tdb"_s),
              (Ausfuhrbefehl{u"a.tdb"_s, Ausfuhrart::Untersuchungen, {}}));
    EXPECT_EQ(befehl<Ausfuhrbefehl>(u"export --wings a.tdb --out b.csv"_s),
              (Ausfuhrbefehl{u"a.tdb"_s, Ausfuhrart::Flügel, u"b.csv"_s}));
    EXPECT_EQ(befehl<Protokollbefehl>(u"report a.tdb 7 --pdf b.pdf"_s),
              (Protokollbefehl{u"a.tdb"_s, {u"7"_s}, u"b.pdf"_s, {}, {}}));
    EXPECT_EQ(befehl<Protokollbefehl>(u"report a.tdb --all --each out"_s),
              (Protokollbefehl{u"a.tdb"_s, {}, {}, u"out"_s, {}}));
    EXPECT_EQ(befehl<Einfuhrbefehl>(u"import-bee a.Bee b.Bee --into c.tdb --partial"_s),
              (Einfuhrbefehl{{u"a.Bee"_s, u"b.Bee"_s}, u"c.tdb"_s, {}, true, {}}));
}

TEST(Befehle, language_isEnglishUnlessAskedFor) {
    EXPECT_EQ(std::get<Aufruf>(lese(u"export a.tdb"_s)).sprache, Sprache::Englisch);
    EXPECT_EQ(std::get<Aufruf>(lese(u"export a.tdb --language de"_s)).sprache, Sprache::Deutsch);
    EXPECT_EQ(std::get<Aufruf>(lese(u"evaluate a --language fr"_s)).sprache, Sprache::Französisch);
}

TEST(Befehle, badLines_giveTheReason) {
    struct Fall {
        const char16_t* zeile;
        const char* grund;
    };
    for (const Fall& fall : {Fall{u"", "command"},
                             {u"plot a.csv", "plot"},
                             {u"--verbose", "verbose"},
                             {u"evaluate", "file"},
                             {u"evaluate a.csv --colour red", "colour"},
                             {u"evaluate a.csv --dpi", "dpi"},
                             {u"evaluate a.csv --dpi 0", "'0'"},
                             {u"evaluate a.csv --dpi 12e2", "'12e2'"},
                             {u"evaluate a.csv --zoom 5", "1 to 4"},
                             {u"evaluate a.csv --messart 3", "0, 1, 2"},
                             {u"evaluate a.csv --caste queens", "workers, drones"},
                             {u"evaluate a.csv --format xml", "text, csv, json"},
                             {u"evaluate a.csv --race=", "race"},
                             {u"evaluate a.csv --language it", "de, en, fr"},
                             {u"export", "DATABASE"},
                             {u"export a.tdb b.tdb", "DATABASE"},
                             {u"export a.tdb --wings --tps", "exclude"},
                             {u"export a.tdb --out ./a.tdb", "replace"},
                             {u"report --pdf b.pdf", "file"},
                             {u"report a.tdb --pdf b.pdf", "--all"},
                             {u"report a.tdb 7 --all --pdf b.pdf", "--all"},
                             {u"report a.tdb 7 --pdf b.pdf --each c", "--each"},
                             {u"report a.tdb 7", "pdf"},
                             {u"report a.tdb 7 --pdf x/../a.tdb", "replace"},
                             {u"overview", "file"},
                             {u"overview a.tdb --by owner", "breeder, mating, queen"},
                             {u"overview a.tdb --season soon", "'soon'"},
                             {u"overview a.tdb --chart a.gif", "'a.gif'"},
                             {u"overview a.tdb --out ./a.tdb", "replace"},
                             {u"overview a.tdb 1 --view comparison", "two"},
                             {u"overview a.tdb --view histograms", "six"},
                             {u"measure", "picture"},
                             {u"measure -", "standard input"},
                             {u"measure a.png --dpi 150", "300"},
                             {u"measure a.png --min-score 2", "from 0 to 1"},
                             {u"measure a.png --max-error nan", "'nan'"},
                             {u"measure a.png -j 0", "'0'"},
                             {u"measure a.png --into a.tdb", "together"},
                             {u"measure a.png --unchecked", "together"},
                             {u"measure a.png b.png --out x/../b.png", "replace"},
                             {u"measure a.png --unchecked --into ./a.png", "replace"},
                             {u"measure a.png --model m.bin --out m.bin", "replace"},
                             {u"measure a.png --unchecked --into a.tdb --out a.tdb", "replace"},
                             {u"import-bee a.Bee", "into"},
                             {u"import-bee --into a.tdb", "file"}}) {
        const auto gelesen = lese(QString::fromUtf16(fall.zeile));
        const auto* fehler = std::get_if<Aufruffehler>(&gelesen);
        ASSERT_NE(fehler, nullptr) << fall.grund;
        EXPECT_THAT(fehler->text.toStdString(), HasSubstr(fall.grund));
    }
}

TEST(Befehle, help_hasAnExampleThatTheProgramTakes) {
    for (const QString& name : {u"evaluate"_s, u"export"_s, u"report"_s, u"import-bee"_s,
                                u"merge"_s, u"overview"_s, u"measure"_s}) {
        const QString hilfe = befehl<Auskunft>(name + u" --help"_s).text;
        const QString anfang = u"Example:\n  tarvel-batch "_s;
        const qsizetype beispiel = hilfe.indexOf(anfang + name);
        ASSERT_GE(beispiel, 0) << name.toStdString();
        const QString zeile = hilfe.sliced(beispiel + anfang.size()).section(u'\n', 0, 0);
        EXPECT_TRUE(std::holds_alternative<Aufruf>(lese(zeile))) << zeile.toStdString();
        EXPECT_TRUE(befehl<Auskunft>(u"--help"_s).text.contains(u"tarvel-batch "_s + zeile));
        EXPECT_TRUE(hilfe.contains(u"--language"_s));
    }
    EXPECT_TRUE(befehl<Auskunft>(u"--version"_s).text.startsWith(u"tarvel-batch "_s));
}
