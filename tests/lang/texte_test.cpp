#include "lang/texte.h"

#include <QCryptographicHash>
#include <QRegularExpression>
#include <QSet>
#include <gmock/gmock.h>

#include <array>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;

constexpr std::array sprachen{Sprache::Deutsch, Sprache::Englisch, Sprache::Französisch};

using Spalte = std::array<QString, anzahlTexte + anzahlMeldungen>;

template <typename Lies>
Spalte sammle(Lies lies) {
    Spalte alle;
    for (int i = 0; i < anzahlTexte; ++i)
        alle[i] = lies(static_cast<Text>(i));
    for (int i = 0; i < anzahlMeldungen; ++i)
        alle[anzahlTexte + i] = lies(static_cast<Meldung>(i));
    return alle;
}

Spalte spalte(Sprache sprache) {
    return sammle([sprache](auto id) { return Texte::eintrag(id, sprache); });
}

Spalte aktuelle(const Texte& texte) {
    return sammle([&texte](auto id) { return texte(id); });
}

TEST(Texte, everyEntry_hasAValueInThreeLanguages) {
    for (const Sprache sprache : sprachen)
        EXPECT_THAT(spalte(sprache), testing::Each(testing::Property(&QString::isEmpty, false)));
}

// Users, files and printed reports rely on these texts, odd spellings and double blanks included.
TEST(Texte, fixedTexts_keepTheirSpellingAndBlanks) {
    const std::pair<Sprache, const char*> summen[] = {
        {Sprache::Deutsch, "fee0238d6bb1132fbd3af4ead72c8e33"},
        {Sprache::Englisch, "8c94ef002a48ac3e76b06df1c012c0b8"},
        {Sprache::Französisch, "888f42ea02c0c84768a7005090769c62"}};
    for (const auto& [sprache, erwartet] : summen) {
        QByteArray alle = Texte::eintrag(Meldung::SprachwahlAufforderung, sprache).toUtf8();
        for (int i = 0; i < anzahlTexte; ++i)
            alle += '\n' + Texte::eintrag(static_cast<Text>(i), sprache).toUtf8();
        EXPECT_EQ(QCryptographicHash::hash(alle, QCryptographicHash::Md5).toHex().toStdString(),
                  erwartet)
            << "a row of texttabelle.inc, or the question for the language, is another: git diff";
    }
}

TEST(Texte, otherLanguages_holdNoGermanWords) {
    // German marks that neither language writes, small words and the index that no other text
    // contains.
    const QRegularExpression deutsch(
        u"[äöüßÄÖÜ]|\\b(und|der|das|nicht|wird|wurde|von|Sie|bei|DV)\\b"_s);
    for (const Sprache sprache : {Sprache::Englisch, Sprache::Französisch})
        for (const QString& text : spalte(sprache))
            EXPECT_FALSE(deutsch.match(text).hasMatch()) << text.toStdString();
}

TEST(Texte, entriesEqualToGerman_areWordsThatTheLanguagesShare) {
    const QStringList gemeinsam =
        u"CI|HI|Name|Cubitalindex|Hantelindex|Extras|Format:|Details|Horizontal|mm|dpi|%1 dpi: %2|px|pt|Minimum|Maximum|Tarvel|Version %1|Deutsch|English|Français|Organisation|OK|Standard|%1 dpi|Index|Saison|Scan: %1 dpi.|SetPrinter Failed. Error code: "_s
            .split(u'|');
    const auto deutsch = spalte(Sprache::Deutsch);
    for (const Sprache sprache : {Sprache::Englisch, Sprache::Französisch}) {
        const auto andere = spalte(sprache);
        for (std::size_t i = 0; i < deutsch.size(); ++i)
            EXPECT_TRUE(andere[i] != deutsch[i] || gemeinsam.contains(deutsch[i]))
                << deutsch[i].toStdString();
    }
}

TEST(Texte, pieces_joinWithABlankInEveryLanguage) {
    for (const Sprache sprache : sprachen) {
        for (const Text id : {Text::UmschaltenWarnung1, Text::VersionVerwendet,
                              Text::UpdateAufVersion, Text::HinweisRechteckAufFlügel})
            EXPECT_TRUE(Texte::eintrag(id, sprache).endsWith(u' '));
        for (const Text id : {Text::UpdateStehtZurVerfügung, Text::WurdeGeändert})
            EXPECT_TRUE(Texte::eintrag(id, sprache).startsWith(u' '));
        EXPECT_TRUE(Texte::eintrag(Text::UndÖffnenSieEinBild, sprache).endsWith(u".\""_s));
    }
}

TEST(Texte, beforeAnyLoader_entriesAreGermanAndNoLanguageIsSet) {
    const Texte texte(u"/p"_s);
    EXPECT_EQ(aktuelle(texte), spalte(Sprache::Deutsch));
    EXPECT_EQ(texte.sprache(), std::nullopt);
    EXPECT_EQ(texte.HilfeDatei(), QString());
}

TEST(Texte, languageNumber_picksLoaderOrNone) {
    struct Fall {
        int nummer;
        bool geladen;
        std::optional<Sprache> sprache;
        const char16_t* ja;
    };
    const Fall fälle[] = {
        {0, true, Sprache::Deutsch, u"Ja"},      {1, true, Sprache::Englisch, u"Yes"},
        {2, true, Sprache::Französisch, u"Oui"}, {3, false, std::nullopt, u"Ja"},
        {-1, false, std::nullopt, u"Ja"},        {32767, false, std::nullopt, u"Ja"},
    };
    for (const Fall& fall : fälle) {
        Texte texte(u"/p"_s);
        int gemeldet = 0;
        QString jaBeimMelden;
        QObject::connect(&texte, &Texte::languageChanged, &texte, [&] {
            ++gemeldet;
            jaBeimMelden = texte(Text::Ja);
        });
        EXPECT_EQ(texte.SpracheEinstellen(fall.nummer), fall.geladen) << fall.nummer;
        EXPECT_EQ(texte.sprache(), fall.sprache) << fall.nummer;
        EXPECT_EQ(texte(Text::Ja), QString::fromUtf16(fall.ja)) << fall.nummer;
        EXPECT_EQ(texte.HilfeDatei(), fall.geladen ? u"/p/Tarvel.chm"_s : QString());
        EXPECT_EQ(gemeldet, fall.geladen ? 1 : 0) << fall.nummer;
        EXPECT_EQ(jaBeimMelden, fall.geladen ? texte(Text::Ja) : QString());
    }
}

TEST(Texte, unknownNumberAfterALoader_keepsTheLanguage) {
    Texte texte(u"/p"_s);
    texte.SpracheEnglisch();
    EXPECT_FALSE(texte.SpracheEinstellen(3));
    EXPECT_EQ(texte.sprache(), Sprache::Englisch);
    EXPECT_EQ(texte(Text::Klasse), u"Class"_s);
}

TEST(Meldungen, arguments_areTheSameInEveryLanguage) {
    const auto argumente = [](const QString& text) {
        QSet<QString> gefunden;
        auto treffer = QRegularExpression(u"%\\d"_s).globalMatch(text);
        while (treffer.hasNext())
            gefunden.insert(treffer.next().captured());
        return gefunden;
    };
    for (int i = 0; i < anzahlMeldungen; ++i) {
        const auto id = static_cast<Meldung>(i);
        const QString deutsch = Texte::eintrag(id, Sprache::Deutsch);
        for (const Sprache sprache : {Sprache::Englisch, Sprache::Französisch})
            EXPECT_EQ(argumente(Texte::eintrag(id, sprache)), argumente(deutsch))
                << deutsch.toStdString();
    }
}

TEST(Meldungen, pointDescription_beginsWithItsNumber) {
    for (int nummer = 1; nummer <= 8; ++nummer)
        for (const Sprache sprache : sprachen)
            EXPECT_TRUE(Texte::eintrag(messpunktbeschreibung(nummer), sprache)
                            .startsWith(QString::number(nummer) + u"  "_s));
    EXPECT_EQ(messpunktbeschreibung(0), Meldung::Messpunkt1);
    EXPECT_EQ(messpunktbeschreibung(9), Meldung::Messpunkt8);
}

} // namespace
} // namespace tarvel
