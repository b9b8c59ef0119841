#include "lang/hinweise.h"

#include "lang/texte.h"

#include <QCryptographicHash>
#include <gtest/gtest.h>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;

TEST(Hinweise, numbers1To15_giveTheirTexts) {
    const Texte texte(u"/p"_s);
    QStringList alle;
    for (int nummer = 1; nummer <= 15; ++nummer)
        alle << hinweistext(texte, nummer);
    const QByteArray zeilen = alle.join(u'\n').toUtf8();
    EXPECT_EQ(QCryptographicHash::hash(zeilen, QCryptographicHash::Md5).toHex().toStdString(),
              "06ecbcd11903275b3541423abe8ed211")
        << zeilen.toStdString();
}

TEST(Hinweise, otherNumbers_giveNoText) {
    const Texte texte(u"/p"_s);
    for (const int nummer : {0, -1, 16, 32767})
        EXPECT_EQ(hinweistext(texte, nummer), QString()) << nummer;
}

TEST(Hinweise, wingHint_endsWithThreeDigits) {
    Texte texte(u"/p"_s);
    EXPECT_EQ(hinweistext(texte, 6, 7), u"Drücken Sie die linke Maustaste und schieben Sie das "
                                        "Rechteck auf Flügel 007"_s);
    texte.SpracheFranzösisch();
    EXPECT_TRUE(hinweistext(texte, 6, 200).endsWith(u"l'aile 200"_s));
}

TEST(Hinweise, messageWithArguments_isWordedInTheLanguageOfTheMoment) {
    Texte texte(u"/p"_s);
    const Hinweis zahl(Meldung::AuflösungZuGering, {u"600"_s});
    const Hinweis wort(Meldung::UrteilAnders, {Text::Ja, u"100 %2"_s});
    EXPECT_TRUE(hinweistext(texte, zahl).startsWith(u"Mit 600 dpi"_s));
    texte.SpracheEnglisch();
    EXPECT_TRUE(hinweistext(texte, zahl).startsWith(u"At 600 dpi"_s));
    EXPECT_TRUE(hinweistext(texte, wort).contains(texte(Text::Ja)));
    EXPECT_TRUE(hinweistext(texte, wort).contains(u"100 %2"_s)) << "an argument is no pattern";
    EXPECT_EQ(hinweistext(texte, Hinweis(6, 7)), hinweistext(texte, 6, 7));
    EXPECT_EQ(hinweistext(texte, Hinweis(u"schon fertig"_s)), u"schon fertig"_s);
}

} // namespace
} // namespace tarvel
