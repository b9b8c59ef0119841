#include "lang/protokolltexte.h"

#include "support/testordner.h"

#include <QCryptographicHash>
#include <gmock/gmock.h>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;

TEST(Protokolltexte, keysAndFrenchWords_areThoseOfTheFilesInUse) {
    Texte texte(u"/p"_s);
    texte.SpracheFranzösisch();
    const Protokolltexte protokoll = ProtokolltexteStandard(texte);
    QByteArray alle;
    for (std::size_t i = 0; i < protokolltabelle.size(); ++i)
        alle += protokollschlüssel(protokolltabelle[i].nummer) + '=' +
                protokoll.felder[i].toUtf8() + '\n';
    EXPECT_TRUE(alle.startsWith("Item505=Indice Cubital\nItem005=IC\n")) << alle.data();
    EXPECT_EQ(QCryptographicHash::hash(alle, QCryptographicHash::Md5).toHex().toStdString(),
              "48aa99ddc210131c4cc6849c3339c9ef")
        << alle.data();
    EXPECT_EQ(protokoll(Text::Nebengipfel), u"Sommet secondaire"_s);
}

class Übersetzung : public testing::Test {
protected:
    /// Loads onto German texts what @p inhalt translates and returns what the report then prints.
    Protokolltexte lade(const QByteArray& inhalt) {
        lege(pfad_, inhalt);
        return ladeDatei();
    }
    Protokolltexte ladeDatei() {
        Protokollfelder felder = ProtokolltexteStandard(texte_).felder;
        ÜbersetzungLaden(pfad_, felder);
        return ProtokolltexteÜbersetzt(felder);
    }

    Texte texte_{u"/p"_s};

private:
    Testordner ordner_;
    QString pfad_ = ordner_.filePath(u"Index.ini"_s);
};

TEST_F(Übersetzung, missingFile_leavesEveryField) {
    EXPECT_EQ(ladeDatei().felder, ProtokolltexteStandard(texte_).felder);
}

TEST_F(Übersetzung, firstAndLastKey_fillTheirFields) {
    const auto protokoll = lade("[Translate]\r\nItem505=Indice cubitale\r\nItem033=Picco\r\n"
                                "Item999=niente\r\n");
    EXPECT_EQ(protokoll(Text::Cubitalindex), u"Indice cubitale"_s);
    EXPECT_EQ(protokoll(Text::Nebengipfel), u"Picco"_s);
    EXPECT_EQ(protokoll(Text::CI), u"CI"_s);
}

TEST_F(Übersetzung, emptyKey_leavesItsField) {
    EXPECT_EQ(lade("[Translate]\r\nItem004=\r\n")(Text::Klasse), u"Klasse"_s);
}

TEST_F(Übersetzung, keyOfAnotherSection_isNotRead) {
    EXPECT_EQ(lade("[Protokoll]\r\nItem004=Classe\r\n")(Text::Klasse), u"Klasse"_s);
}

TEST_F(Übersetzung, umlautsOfTheFile_areRead) {
    EXPECT_EQ(lade("[Translate]\r\nItem016=M\xE9"
                   "dia \x80\r\n")(Text::Mittelwert),
              u"Média €"_s);
}

TEST_F(Übersetzung, longText_isCutTo127Characters) {
    const QByteArray lang(200, 'x');
    EXPECT_EQ(lade("[Translate]\r\nItem512=" + lang + "\r\n")(Text::Unterschrift),
              QString(127, u'x'));
}

} // namespace
} // namespace tarvel
