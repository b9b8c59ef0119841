#include "lang/sprachpaket.h"
#include "lang/texte.h"
#include "support/testordner.h"

#include <gmock/gmock.h>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

TEST(Sprachpaket, template_filledInGivesEveryTextBack) {
    Texte texte{QString()};
    texte.SpracheEnglisch();
    const Texte unberührt{QString()};
    // The words above each name become its own, marked so that they are told apart.
    QByteArray gefüllt;
    QByteArray wort;
    for (const QByteArray& zeile : sprachpaketvorlage(texte).split('\n')) {
        gefüllt += zeile.endsWith(" = ") ? zeile + "x" + wort : zeile;
        gefüllt += "\r\n";
        wort = zeile.mid(2).trimmed();
    }
    const auto paket = leseSprachpaket(gefüllt);
    ASSERT_TRUE(paket);
    EXPECT_TRUE(paket->abgewiesen.empty());
    EXPECT_EQ(paket->anzahl(), umfangSprachpaket());
    texte.setzePaket(paket);
    texte.SpracheFranzösisch(); // whatever the language below
    EXPECT_EQ(texte(Text::WurdeGeändert).trimmed(),
              u'x' + Texte::eintrag(Text::WurdeGeändert, Sprache::Englisch).trimmed());
    EXPECT_EQ(texte(Text::WurdeGeändert).front(), u' '); // kept around what a line can hold
    EXPECT_EQ(texte(Meldung::HilfeNichtGeöffnet),
              u'x' + Texte::eintrag(Meldung::HilfeNichtGeöffnet, Sprache::Englisch));
    for (const Text wort2 : {Text::Ja, Text::Nein, Text::Arbeiter, Text::Klasse, Text::CI})
        EXPECT_EQ(texte(wort2), Texte::eintrag(wort2, Sprache::Französisch)); // stands in files
    EXPECT_EQ(leseSprachpaket(sprachpaketvorlage(texte)), paket);
    texte.setzePaket(std::nullopt);
    EXPECT_EQ(texte(Text::Schließen), Texte::eintrag(Text::Schließen, Sprache::Französisch));
}

TEST(Sprachpaket, linesThatCannotBeTaken_areNumberedAndTheRestHolds) {
    const auto paket = leseSprachpaket("Tarvel language pack\n"
                                       "language = Slovenski\nlocale = sl\n"
                                       "Text.Ja = da\n"           // stands in files
                                       "Text.Gibtsnicht = x\n"    // unknown
                                       "Text.Schließen = Zapri\n" //
                                       "Text.Schließen = Zapri\n" // repeated
                                       "# comment\n\n"
                                       "Meldung.SprachpaketStand = %1 %2\n" // lacks %3
                                       "no name\n"
                                       "Text.Drucken =\n");
    ASSERT_TRUE(paket);
    EXPECT_EQ(paket->name, u"Slovenski"_s);
    EXPECT_THAT(paket->abgewiesen, ElementsAre(4, 5, 7, 10, 11));
    EXPECT_EQ(paket->anzahl(), 1);
}

TEST(Sprachpaket, whatIsNoPack_isRefused) {
    const Testordner ordner;
    const QString pfad = ordner.filePath(u"paket.txt"_s);
    EXPECT_FALSE(ladeSprachpaket(pfad));
    EXPECT_FALSE(ladeSprachpaket(ordner.path()));
    for (const QByteArray& inhalt :
         {QByteArray(), QByteArray("[Start]\n"), QByteArray("Tarvel language pack\n\xFF\xFE"),
          "Tarvel language pack\n" + QByteArray(GrößtesSprachpaket, '\n')}) {
        EXPECT_FALSE(ladeSprachpaket(lege(pfad, inhalt)));
    }
    EXPECT_TRUE(ladeSprachpaket(lege(pfad, "Tarvel language pack\n")));
}

} // namespace
} // namespace tarvel
