#include "results/dbprobe.h"

#include <gmock/gmock.h>

namespace tarvel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(DBFiltertest, TakesAnotherFileOnlyWhenItIsOne) {
    const QString andere = ordner_.filePath(u"andere.tdb"_s);
    NeueDatenbank(andere);
    Ergebnistabelle(andere).speichere(vollerSatz(u"900"_s));
    const QString schlecht = ordner_.filePath(u"schlecht.tdb"_s);
    schreibe(schlecht, "nothing");
    wähle(u"men_Rasse_1"_s);
    dialoge.dateien = {schlecht, QString(), andere};
    wähle(u"men_Tabelle_0"_s);
    EXPECT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_EQ(gezeigt(), u"002 001"_s);
    wähle(u"men_Tabelle_0"_s); // cancelled
    EXPECT_THAT(gewählt, IsEmpty());
    wähle(u"men_Tabelle_0"_s);
    EXPECT_THAT(gewählt, ElementsAre(andere));
    EXPECT_EQ(db->windowTitle(), u"Ergebnisse [andere.tdb]"_s);
    EXPECT_EQ(gezeigt(), u"900"_s);
    kind<QLineEdit>(u"txt_Suche"_s).setText(u"9"_s);
    EXPECT_EQ(anzahl(), u"1 von 1, gefiltert"_s) << "nothing is left of the former file";
    EXPECT_FALSE(filtert());
    EXPECT_THAT(dialoge.filter, Contains(u"Tarvel Ergebnisse (*.tdb)"_s));
}

TEST_F(DBFiltertest, MakesANewFileButNeverOverAnother) {
    const QString neu = ordner_.filePath(u"neu"_s);
    const QByteArray vorher = bytes(pfad_);
    dialoge.dateien = {pfad_, neu, ordner_.filePath(u"kein Ordner/x.tdb"_s),
                       ordner_.filePath(u"Verein 2025.06"_s)};
    wähle(u"men_Tabelle_1"_s);
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_THAT(dialoge.meldungen.first().toStdString(), HasSubstr("ist bereits vorhanden."));
    EXPECT_EQ(bytes(pfad_), vorher);
    wähle(u"men_Tabelle_1"_s);
    EXPECT_THAT(gewählt, ElementsAre(neu + u".tdb"_s));
    EXPECT_EQ(gezeigt(), QString());
    wähle(u"men_Tabelle_1"_s);
    EXPECT_THAT(dialoge.meldungen, SizeIs(2));
    EXPECT_EQ(db->windowTitle(), u"Ergebnisse [neu.tdb]"_s);
    wähle(u"men_Tabelle_1"_s);
    EXPECT_EQ(db->windowTitle(), u"Ergebnisse [Verein 2025.06.tdb]"_s);
}

TEST_F(DBFiltertest, BackupIsACopyAndNeverTheFileItself) {
    const QString kopie = ordner_.filePath(u"kopie"_s);
    dialoge.dateien = {pfad_, kopie, kopie};
    wähle(u"men_Tabelle_2"_s);
    EXPECT_THAT(dialoge.meldungen.last().toStdString(), HasSubstr("geöffnete Datei selbst"));
    EXPECT_EQ(nummern(), u"001;002;003;004;005;006"_s);
    wähle(u"men_Tabelle_2"_s);
    EXPECT_THAT(dialoge.meldungen.last().toStdString(), HasSubstr("kopie.tdb"));
    EXPECT_EQ(dialoge.arten.back(), Meldungsart::Hinweis);
    EXPECT_EQ(Ergebnistabelle(kopie + u".tdb"_s).anzahl(), 6);
    EXPECT_EQ(db->windowTitle(), u"Ergebnisse [%1]"_s.arg(QFileInfo(pfad_).fileName()));
    // A copy that is there already is replaced only on Yes.
    fremd(u"DELETE FROM Ergebnisse WHERE U_NR='001'"_s);
    wähle(u"men_Tabelle_2"_s);
    EXPECT_EQ(Ergebnistabelle(kopie + u".tdb"_s).anzahl(), 6);
}

TEST_F(DBTest, Export_WritesTheRowsThatAreShownInTheirOrder) {
    fülle(100);
    Ergebnissatz andere = vollerSatz(u"X, \"1\""_s);
    andere.RASSE = u"Ligustica"_s;
    speichere(andere);
    andere.U_NR = u"Y"_s;
    speichere(andere);
    öffne();
    wähle(u"men_Rasse_3"_s);
    ASSERT_EQ(grid().model()->rowCount(), 2);
    dialoge.dateien = {ordner_.filePath(u"Auszug"_s), ordner_.filePath(u"fehlt/a.csv"_s)};
    wähle(u"men_Tabelle_4"_s);
    const QList<QByteArray> zeilen = ordner_.lies(u"Auszug.csv"_s).split('\n');
    ASSERT_THAT(zeilen, SizeIs(4));
    EXPECT_TRUE(zeilen[1].startsWith("\"X, \"\"1\"\"\","));
    EXPECT_TRUE(zeilen[2].startsWith("Y,"));
    EXPECT_EQ(zeilen[1].count(",\"") + zeilen[1].count(','), zeilen[0].count(',') + 1);
    wähle(u"men_Tabelle_4"_s);
    EXPECT_THAT(dialoge.meldungen, SizeIs(2));
    EXPECT_TRUE(dialoge.meldungen[1].contains(u"a.csv"_s));
    wähle(u"men_Rasse_2"_s); // shows nothing
    EXPECT_FALSE(aktion(u"men_Tabelle_4"_s).isEnabled());
}

} // namespace
} // namespace tarvel
