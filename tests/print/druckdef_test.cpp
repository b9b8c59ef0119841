#include "print/druckdef.h"
#include "print/druckerwahl.h"
#include "settings/einstellungen.h"

#include "support/testdialoge.h"
#include "support/testdrucker.h"
#include "support/testdruckertabelle.h"

#include <QTemporaryDir>
#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct TestSammlung final : Druckersammlung {
    QStringList namen = {u"Imkerei"_s, u"Lager"_s};
    QString jetziger = u"Imkerei"_s;
    QStringList gewählt;

    QStringList gerätenamen() const override { return namen; }
    QString aktueller() const override { return jetziger; }
    void wähle(const QString& gerätename) override {
        gewählt << gerätename;
        jetziger = gerätename;
    }
};

struct DruckDefTest : testing::Test {
    TestDruckertabelle tabelle;
    TestSammlung sammlung;
    TestDialoge dialoge;
    Texte texte{QString()};
    DruckDef druckdef{tabelle, sammlung, dialoge, texte};

    void SetUp() override {
        tabelle.profil["windows"] = {{"Device", "Imkerei,winspool,LPT1:"}};
        tabelle.profil["PrinterPorts"] = {{"Imkerei", "winspool,LPT1:,15,45"},
                                          {"Lager", "winspool,Ne01:,15,45"}};
        tabelle.geräte = {{"Imkerei", "LPT1:", 4, 15, 45}, {"Lager", "Ne01:", 0x840, 20000, 45000}};
    }

    QByteArray vorgabe() { return tabelle.wert("windows", "Device"); }

    void erwarteUnverändert() {
        EXPECT_EQ(vorgabe(), "Imkerei,winspool,LPT1:");
        EXPECT_THAT(tabelle.rundrufe, IsEmpty());
        EXPECT_THAT(sammlung.gewählt, IsEmpty());
        EXPECT_EQ(tabelle.offen, 0);
    }
};

struct AttributTest : DruckDefTest {
    void SetUp() override {
        DruckDefTest::SetUp();
        tabelle.platformId = 1;
    }
};

} // namespace

TEST_F(DruckDefTest, list_isTrimmedAndInTheProfilesOrder) {
    tabelle.profil["PrinterPorts"] = {
        {" Zimmer ", "a,b"}, {u"Büro"_s.toLocal8Bit(), "a,b"}, {"Alt 2", "a,b"}};
    QStringList liste{u"von vorher"_s};
    druckdef.DruckerListeFüllen(liste);
    EXPECT_THAT(liste, ElementsAre(u"Zimmer"_s, u"Büro"_s, u"Alt 2"_s));

    tabelle.profil.clear();
    druckdef.DruckerListeFüllen(liste);
    EXPECT_THAT(liste, IsEmpty());
}

TEST_F(DruckDefTest, list_ofAVeryLargeNetworkIsWhole) {
    for (int i = 0; i < 2000; ++i) {
        tabelle.profil["PrinterPorts"].append(
            TestDruckertabelle::Eintrag{"Drucker " + QByteArray::number(i), "a,b"});
    }
    QStringList liste;
    druckdef.DruckerListeFüllen(liste);
    ASSERT_EQ(liste.size(), 2002);
    EXPECT_EQ(liste.last(), u"Drucker 1999"_s);
}

TEST_F(DruckDefTest, profile_entryWithTimeouts_givesNameDriverAndPort) {
    EXPECT_TRUE(druckdef.StandardDruckerSetzen(u"Lager"_s));
    EXPECT_EQ(vorgabe(), "Lager,winspool,Ne01:");
    EXPECT_EQ(druckdef.standarddrucker(), u"Lager"_s);
    EXPECT_THAT(sammlung.gewählt, ElementsAre(u"Lager"_s));
    ASSERT_EQ(tabelle.rundrufe.size(), 1U);
    EXPECT_EQ(tabelle.rundrufe[0].fenster, 0xFFFFU);
    EXPECT_EQ(tabelle.rundrufe[0].nachricht, 26U);
    EXPECT_EQ(tabelle.rundrufe[0].zweiter, "windows");
}

TEST_F(DruckDefTest, profile_entryWithoutDriverOrPort_changesNothing) {
    for (const QByteArray eintrag : {"", "winspool", "winspool,", ",Ne01:", ",", "winspool,,15"}) {
        SCOPED_TRACE(eintrag.constData());
        tabelle.profil["PrinterPorts"] = {{"Lager", eintrag}};
        EXPECT_FALSE(druckdef.StandardDruckerSetzen(u"Lager"_s));
        erwarteUnverändert();
    }
    EXPECT_FALSE(druckdef.StandardDruckerSetzen(u"Keller"_s));
    erwarteUnverändert();
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
}

TEST_F(DruckDefTest, profile_entryIsReadUpToItsBuffer) {
    const QByteArray treiber(1100, 't');
    tabelle.profil["PrinterPorts"] = {{"Lager", treiber + ",Ne01:"}};
    EXPECT_FALSE(druckdef.StandardDruckerSetzen(u"Lager"_s));
    tabelle.profil["PrinterPorts"] = {{"Lager", treiber.left(1020) + ",Ne01:"}};
    EXPECT_TRUE(druckdef.StandardDruckerSetzen(u"Lager"_s));
    EXPECT_EQ(vorgabe(), "Lager," + treiber.left(1020) + ",Ne");
}

TEST_F(DruckDefTest, currentPrinter_isNotSelectedAgain) {
    for (const std::uint32_t system : {1U, 2U}) {
        tabelle.platformId = system;
        EXPECT_TRUE(druckdef.StandardDruckerSetzen(u"Imkerei"_s));
        EXPECT_THAT(sammlung.gewählt, IsEmpty());
    }
}

TEST_F(DruckDefTest, selection_takesOnlyTheExactDeviceName) {
    druckdef.DruckerObjektWählen(u"lager"_s);
    druckdef.DruckerObjektWählen(u"Lag"_s);
    EXPECT_EQ(sammlung.jetziger, u"Imkerei"_s);
    druckdef.DruckerObjektWählen(u"Lager"_s);
    EXPECT_EQ(sammlung.jetziger, u"Lager"_s);
}

TEST_F(DruckDefTest, onlyPlatformOne_usesTheAttribute) {
    for (const std::optional<std::uint32_t> system :
         {std::optional<std::uint32_t>(0), std::optional<std::uint32_t>(2),
          std::optional<std::uint32_t>(3), std::optional<std::uint32_t>()}) {
        tabelle.platformId = system;
        EXPECT_TRUE(druckdef.StandardDruckerSetzen(u"Lager"_s));
        EXPECT_EQ(tabelle.geräte[1].attribute, 0x840U);
    }
    EXPECT_EQ(tabelle.rundrufe.size(), 4U);
    EXPECT_THAT(tabelle.satzarten, IsEmpty());
}

TEST_F(AttributTest, changesOnlyTheAttributesOfTheRecord) {
    EXPECT_TRUE(druckdef.StandardDruckerSetzen(u"Lager"_s));
    EXPECT_EQ(tabelle.zugriff, 0xF000CU);
    EXPECT_THAT(tabelle.satzarten, ElementsAre(5, 5, 5));
    const TestDruckertabelle::Gerät& lager = tabelle.geräte[1];
    EXPECT_EQ(lager.name, "Lager");
    EXPECT_EQ(lager.anschluss, "Ne01:");
    EXPECT_EQ(lager.attribute, 4U);
    EXPECT_EQ(lager.wartezeit, 20000U);
    EXPECT_EQ(lager.wiederholzeit, 45000U);
    EXPECT_THAT(sammlung.gewählt, ElementsAre(u"Lager"_s));
    EXPECT_EQ(tabelle.offen, 0);
    EXPECT_EQ(vorgabe(), "Imkerei,winspool,LPT1:");
    EXPECT_THAT(tabelle.rundrufe, IsEmpty());
}

TEST_F(AttributTest, namesAreCutAt512Characters) {
    const QByteArray lang(600, 'n');
    tabelle.geräte[1] = {lang, QByteArray(512, 'p'), 0, 1, 2};
    EXPECT_TRUE(druckdef.StandardDruckerSetzen(QString::fromLatin1(lang)));
    EXPECT_EQ(tabelle.geräte[1].name, lang.left(512));
    EXPECT_EQ(tabelle.geräte[1].anschluss, QByteArray(512, 'p'));
}

TEST_F(AttributTest, printerThatCannotBeOpened_isLeftWithoutAMessage) {
    EXPECT_FALSE(druckdef.StandardDruckerSetzen(u"Keller"_s));
    erwarteUnverändert();
    EXPECT_THAT(tabelle.satzarten, IsEmpty());
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
}

TEST_F(AttributTest, refusedChange_isToldAndTheOldDefaultStays) {
    tabelle.fehler = 5;
    EXPECT_FALSE(druckdef.StandardDruckerSetzen(u"Lager"_s));
    EXPECT_THAT(dialoge.meldungen, ElementsAre(u"Tarvel: SetPrinter Failed. Error code: 5"_s));
    EXPECT_THAT(dialoge.arten, ElementsAre(Meldungsart::Schlicht));
    EXPECT_EQ(tabelle.geräte[0].attribute, 4U);
    EXPECT_EQ(tabelle.geräte[1].attribute, 0x840U);
    erwarteUnverändert();
}

struct DruckerwahlTest : testing::Test {
    QTemporaryDir ordner;
    Einstellungen einstellungen{ordner.filePath(u"Index.ini"_s)};
    TestDrucker drucker;
    Druckerwahl wahl{drucker, einstellungen};
};

TEST_F(DruckerwahlTest, bringsTheDefaultOfTheStartBack) {
    EXPECT_FALSE(wahl.wähle(u"Keller"_s));
    EXPECT_TRUE(wahl.wähle(u"Lager"_s));
    EXPECT_TRUE(wahl.wähle(u"Lager"_s));
    wahl.stelleHer();
    wahl.stelleHer();
    EXPECT_THAT(drucker.gesetzt, ElementsAre(u"Lager"_s, u"Lager"_s, u"Imkerei"_s));
    // The window may stay open after all, and another printer be chosen.
    wahl.wähle(u"Lager"_s);
    wahl.stelleHer();
    EXPECT_EQ(drucker.vorgabe, u"Imkerei"_s);
}

TEST_F(DruckerwahlTest, afterACrash_theNextStartBringsItBackUnlessSomebodyChangedIt) {
    EXPECT_FALSE(wahl.wähle(u"Keller"_s));
    EXPECT_FALSE(wahl.hatAltes()); // nothing was changed
    ASSERT_TRUE(wahl.wähle(u"Lager"_s));
    for (const auto& [meanwhile, after] :
         {std::pair{u"Lager"_s, u"Imkerei"_s}, {u"Büro"_s, u"Büro"_s}}) {
        einstellungen.schreibe(Einstellung::DruckerVorher, u"Imkerei"_s);
        einstellungen.schreibe(Einstellung::DruckerGesetzt, u"Lager"_s);
        drucker.vorgabe = meanwhile;
        Druckerwahl nächste(drucker, einstellungen);
        nächste.merkeVorher();
        ASSERT_TRUE(nächste.hatAltes() && nächste.hatAntwort());
        EXPECT_EQ(nächste.stelleAltesHer().value_or(u"Büro"_s), after);
        EXPECT_EQ(drucker.vorgabe, after);
        EXPECT_FALSE(nächste.hatAltes());
        // What the program brings back at its end is the person's own default.
        nächste.wähle(u"Lager"_s);
        nächste.stelleHer();
        EXPECT_EQ(drucker.gesetzt.back(), after == u"Büro"_s ? u"Lager"_s : after);
    }
}

TEST_F(DruckerwahlTest, whenNobodyAnswers_theOldDefaultIsNotForgotten) {
    einstellungen.schreibe(Einstellung::DruckerVorher, u"Imkerei"_s);
    einstellungen.schreibe(Einstellung::DruckerGesetzt, u"Lager"_s);
    drucker.vorgabe = u"Lager"_s;
    drucker.antwortet = false;
    wahl.merkeVorher();
    EXPECT_EQ(wahl.stelleAltesHer(), std::nullopt);
    EXPECT_TRUE(wahl.hatAltes());
    // The program's own choice is never taken for the person's.
    EXPECT_TRUE(wahl.wähle(u"Lager"_s));
    wahl.stelleHer();
    EXPECT_EQ(drucker.vorgabe, u"Imkerei"_s);
    EXPECT_FALSE(wahl.hatAltes());
}

TEST_F(DruckerwahlTest, withoutAChoice_leavesWhatOthersHaveSet) {
    wahl.merkeVorher();
    drucker.vorgabe = u"Lager"_s;
    wahl.stelleHer();
    EXPECT_THAT(drucker.gesetzt, IsEmpty());
}
