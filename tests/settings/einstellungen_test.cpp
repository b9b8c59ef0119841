#include "settings/einstellungen.h"

#include "support/testordner.h"

#include <QFile>
#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

struct EinstellungenTest : testing::Test {
    Testordner ordner;
    QString pfad = ordner.filePath(u"Index.ini"_s);
    Einstellungen einstellungen{pfad};
};

} // namespace

TEST_F(EinstellungenTest, missingFile_givesDefaultsAndIsNotMade) {
    EXPECT_EQ(einstellungen.zahl(Einstellung::Neu), -1);
    EXPECT_EQ(einstellungen.zahl(Einstellung::ScannMessung), 2);
    EXPECT_EQ(einstellungen.zahl(Einstellung::DefaultZoomHauptfenster), 0);
    EXPECT_EQ(einstellungen.text(Einstellung::VierteRasse), u"Carpatica"_s);
    EXPECT_EQ(einstellungen.text(Einstellung::Kurzzeichen), QString());
    EXPECT_FALSE(QFile::exists(pfad));
}

TEST_F(EinstellungenTest, textKeys_keepWhatWasShownWhenEmptyAndAreCutByTheirBuffer) {
    lege(pfad, "[Allgemeines]\r\nKurzzeichen=\r\n[Briefkopf]\r\nName=" + QByteArray(300, 'n') +
                   "\r\nDatei=" + QByteArray(300, 'd') + "\r\n");
    EXPECT_EQ(einstellungen.text(Einstellung::Kurzzeichen, u"AB"_s), u"AB"_s);
    EXPECT_EQ(einstellungen.text(Einstellung::Name).size(), 127);
    EXPECT_EQ(einstellungen.text(Einstellung::Datei).size(), 254);
}

TEST_F(EinstellungenTest, numbers_areNarrowedTo16BitsAndWordsAreZero) {
    lege(pfad, "[Start]\r\nNeu=False\r\n[Allgemeines]\r\nBetriebsart=65537\r\n");
    EXPECT_EQ(einstellungen.zahl(Einstellung::Neu), 0);
    EXPECT_EQ(einstellungen.zahl(Einstellung::Betriebsart), 1);
}

TEST_F(EinstellungenTest, written_isReadBackAndTheRaceGoesElsewhere) {
    einstellungen.schreibe(Einstellung::Straße, u"Grüner Weg 5 €"_s);
    einstellungen.schreibe(Einstellung::GewählteRasse, 3);
    EXPECT_EQ(einstellungen.text(Einstellung::Straße), u"Grüner Weg 5 €"_s);
    EXPECT_EQ(einstellungen.zahl(Einstellung::Rasse), 0);
    EXPECT_EQ(liesGanz(pfad), QByteArray("[Briefkopf]\r\nStra\xDF"
                                         "e=Gr\xFCner Weg 5 \x80\r\n"
                                         "[Merkmale Arbeiterinnen]\r\nRasse=3\r\n"));
    EXPECT_FALSE(einstellungen.schreibenMisslungen());
}

TEST_F(EinstellungenTest, quotesAndBlanksAround_areReadBack) {
    for (const QString& wert : {u"\"Zum Bienenstock\""_s, u"'s Imkereck'"_s, u" AB "_s, u"\""_s,
                                u"O'Neill"_s, u" Łódź α"_s, u"Ökotyp"_s}) {
        einstellungen.schreibe(Einstellung::Name, wert);
        EXPECT_EQ(einstellungen.text(Einstellung::Name), wert);
    }
}

TEST_F(EinstellungenTest, fileThatCannotBeWritten_isNoticedAndReadsAsDefaults) {
    Einstellungen ohneOrdner(ordner.filePath(u"gibt/es/nicht/Index.ini"_s));
    ohneOrdner.schreibe(Einstellung::Sprache, 2);
    EXPECT_TRUE(ohneOrdner.schreibenMisslungen());
    EXPECT_EQ(ohneOrdner.zahl(Einstellung::Sprache), 0);
}
