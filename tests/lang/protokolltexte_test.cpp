#include "lang/protokolltexte.h"

#include <QFile>
#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;

TEST(Protokolltexte, rows_haveTheirKeysInOrder) {
    const char* const schlüssel[] = {
        "Item505", "Item005", "Item534", "Item626", "Item523", "Item526", "Item528", "Item527",
        "Item529", "Item514", "Item519", "Item518", "Item520", "Item521", "Item517", "Item516",
        "Item004", "Item003", "Item023", "Item532", "Item535", "Item533", "Item513", "Item016",
        "Item524", "Item525", "Item285", "Item536", "Item530", "Item531", "Item522", "Item546",
        "Item550", "Item545", "Item512", "Item033"};
    ASSERT_EQ(std::size(schlüssel), protokolltabelle.size());
    for (std::size_t i = 0; i < protokolltabelle.size(); ++i)
        EXPECT_EQ(protokollschlüssel(protokolltabelle[i].nummer), schlüssel[i]);
}

TEST(Protokolltexte, standardInFrench_isTheReportInFrench) {
    const char16_t* const französisch[] = {
        u"Indice Cubital",
        u"IC",
        u"Indice Hantel",
        u"IH",
        u"Autres caractéristiques",
        u"Aspect des tergites",
        u"Largeur du tomentum",
        u"Longueur des poils",
        u"Couleur des poils",
        u"Indications sur la reine : ",
        u"Apiculteur",
        u"N° ZVR",
        u"Fécondation",
        u"Race",
        u"Propriétaire des colonies",
        u"Colonie",
        u"Classe",
        u"Classe des abeilles",
        u"Indice Cubital et Décalage Discoïdal",
        u"Indice Hantel et DD",
        u"Corrélation Indice Hantel/Décalage Discoïdal",
        u"DD",
        u"Examen des caractéristiques N°",
        u"Valeur moyenne",
        u"Ouvrières ont été examinées.",
        u"Mâles ont été examinés.",
        u"Non mesuré",
        u"pas dans la tolérance",
        u"Page 1 de 2",
        u"Page 2",
        u"Evaluation",
        u"Pas conforme aux caractéristiques des races",
        u"Conforme aux caractéristiques des races",
        u"Données caractéristiques",
        u"Signature",
        u"Sommet secondaire",
    };
    Texte texte(u"/p"_s);
    texte.SpracheFranzösisch();
    const Protokolltexte protokoll = ProtokolltexteStandard(texte);
    ASSERT_EQ(std::size(französisch), protokoll.felder.size());
    for (std::size_t i = 0; i < protokoll.felder.size(); ++i)
        EXPECT_EQ(protokoll.felder[i], QString::fromUtf16(französisch[i]));
    EXPECT_EQ(protokoll(Text::Nebengipfel), u"Sommet secondaire"_s);
}

class Übersetzung : public testing::Test {
protected:
    /// Loads onto German texts what @p inhalt translates and returns what the report then prints.
    Protokolltexte lade(const QByteArray& inhalt) {
        QFile datei(pfad_);
        EXPECT_TRUE(datei.open(QIODevice::WriteOnly));
        datei.write(inhalt);
        datei.close();
        return ladeDatei();
    }
    Protokolltexte ladeDatei() {
        Protokollfelder felder = ProtokolltexteStandard(texte_).felder;
        ÜbersetzungLaden(pfad_, felder);
        return ProtokolltexteÜbersetzt(felder);
    }

    Texte texte_{u"/p"_s};

private:
    QTemporaryDir ordner_;
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
