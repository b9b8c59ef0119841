#include "app/befehlszeile.h"
#include "app/dateiannahme.h"
#include "app/demo.h"
#include "app/fenster.h"
#include "platform/instanz.h"
#include "platform/profil.h"

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <future>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct Starttest : Fenstertest {};

} // namespace

TEST_F(Starttest, firstRun_writesLanguageAndDataInOrderAndNeverShowsAgain) {
    int läufe = 0;
    ersterLauf = [&](Start& start) {
        ++läufe;
        start.show();
        EXPECT_EQ(start.focusWidget()->objectName(), u"txt_Name"_s);
        tarvel::kind<QRadioButton>(start, u"opt_Sprache_2"_s).click();
        tarvel::kind<QLineEdit>(start, u"txt_Name"_s).insert(u"Zoë Groß"_s);
        auto& kurz = tarvel::kind<QLineEdit>(start, u"txt_Kurzzeichen"_s);
        QTest::keyClicks(&kurz, u"ZGXY"_s);
        EXPECT_EQ(kurz.text(), u"ZGX"_s);
        QTest::keyClicks(&tarvel::kind<QLineEdit>(start, u"txt_Straße"_s), u"Weg 1"_s);
        auto& verband = tarvel::kind<QComboBox>(start, u"cbo_Organisation"_s);
        EXPECT_EQ(verband.itemText(verband.count() - 1), u"l'autres"_s);
        EXPECT_EQ(verband.currentIndex(), 2);
        verband.setCurrentIndex(1);
        EXPECT_EQ(tarvel::kind<QLabel>(start, u"lab_Fußzeile"_s).text(),
                  u"Des modifications sont possibles plus tard avec 'Options'."_s);
        QTest::mouseClick(&tarvel::kind<QPushButton>(start, u"lab_OK"_s), Qt::LeftButton);
        EXPECT_FALSE(start.isVisible());
    };
    ASSERT_TRUE(starteUnvorbereitet());
    EXPECT_EQ(läufe, 1);
    EXPECT_EQ(ini(), QByteArray("[Start]\r\nSprache=2\r\nNeu=False\r\n"
                                "[Briefkopf]\r\nName=Zo\xEB Gro\xDF\r\nStra\xDF"
                                "e=Weg 1\r\nOrt=\r\nIkone=1\r\n"
                                "[Allgemeines]\r\nKurzzeichen=ZGX\r\n"));
    EXPECT_EQ(kind<QAction>(u"men_Datei_5"_s).iconText(), u"Charger\nune image"_s);
    ASSERT_TRUE(starteUnvorbereitet());
    EXPECT_EQ(läufe, 1);
}

TEST_F(Starttest, firstRun_preselectsTheUsersLanguageAndShowsAllThreePrompts) {
    for (const auto& [sprache, index] : {std::pair{QLocale::German, 0},
                                         {QLocale::French, 2},
                                         {QLocale::English, 1},
                                         {QLocale::Italian, 1}}) {
        QFile::remove(inipfad());
        benutzersprache = sprache;
        ersterLauf = [index = index](Start& start) {
            start.show();
            EXPECT_TRUE(
                tarvel::kind<QRadioButton>(start, u"opt_Sprache_%1"_s.arg(index)).isChecked());
            EXPECT_TRUE(
                tarvel::kind<QLabel>(start, u"lab_Sprache_0"_s)
                    .text()
                    .startsWith(u"Bitte wählen Sie jetzt die Sprache. \nDie Sprache kann"_s));
            EXPECT_EQ(tarvel::kind<QLabel>(start, u"lab_Sprache_2"_s).text(),
                      u"Choisissez s'il vous plaît la langue maintenant. Plus tard vous pouvez "
                      "changer la langue dans le menu ' Extra '."_s);
            start.reject();
        };
        ASSERT_TRUE(starteUnvorbereitet());
        EXPECT_FALSE(ini().contains("Neu")); // closed without OK: it asks again
    }
}

TEST_F(Starttest, secondInstance_isToldInItsLanguageAndEnds) {
    schreibeIni("[Start]\r\nNeu=False\r\nSprache=1\r\n");
    ASSERT_TRUE(starte());
    TestDialoge andere;
    Programm zweites(ordner.path(), dienste(andere));
    EXPECT_FALSE(zweites.Hauptstart());
    EXPECT_THAT(andere.meldungen, ElementsAre(u"Tarvel: Tarvel is already started."_s));
    EXPECT_EQ(zweites.hauptfenster(), nullptr);
}

TEST_F(Starttest, filesOfASecondStart_openInTheRunningWindow) {
    ASSERT_TRUE(starte());
    const QString bildpfad = maleBild({300, 200});
    const auto zweiter = [&](const QStringList& dateien) {
        auto ergebnis = std::async(std::launch::async, [&ordner = ordner, dateien] {
            return Dateiannahme::übergib(ordner.path(), dateien);
        });
        const auto fertig = [&] {
            return ergebnis.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
        };
        return QTest::qWaitFor(fertig) && ergebnis.get();
    };
    EXPECT_TRUE(zweiter({bildpfad}));
    const auto offen = [&] { return hinweis() == u"Tarvel ist bereits gestartet."_s; };
    EXPECT_TRUE(QTest::qWaitFor(offen)) << qPrintable(hinweis());
    EXPECT_TRUE(bild().isVisible());
    EXPECT_FALSE(zweiter({u"nur ein Name.png"_s}));
    EXPECT_FALSE(zweiter({QString(2'000'000, u'/')}));

    QDialog frage(&hg()); // an answer of the user comes first
    frage.setModal(true);
    frage.show();
    EXPECT_FALSE(zweiter({bildpfad}));
    frage.close();
    EXPECT_TRUE(zweiter({bildpfad}));
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
    const QString csv =
        ordner.schreibe(u"a.csv"_s, "wing,dpi,x5,y5,x6,y6,x7,y7\n1,2400,286,116,237,147,216,143\n");
    kind<QAction>(u"men_Betriebsart_0"_s).trigger();
    EXPECT_TRUE(zweiter({csv}));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return hinweis() == u"Tarvel ist bereits gestartet. Eingelesene Flügel: 1, gerechnet mit "
                            "den 2400 dpi, die in der Datei stehen."_s;
    })) << qPrintable(hinweis());
}

TEST_F(Starttest, filesThatNobodyTakes_areToldLikeNone) {
    const Instanz andere(ordner.path());
    const QString adresse = Instanz::eigenerPfad(ordner.path(), u".socket"_s);
    QLocalServer hängt;
    for (const bool lauscht : {false, true}) {
        ASSERT_EQ(lauscht && hängt.listen(adresse), lauscht);
        EXPECT_FALSE(
            Dateiannahme::übergib(ordner.path(), {u"/a.png"_s}, std::chrono::milliseconds(50)));
    }
    hängt.close();
    lege(adresse); // of a program that crashed
    schreibeIni("[Start]\r\nNeu=False\r\n");
    Programm zweites(ordner.path(), dienste(dialoge));
    EXPECT_FALSE(zweites.Hauptstart({u"/a.png"_s}));
    EXPECT_THAT(dialoge.meldungen, ElementsAre(u"Tarvel: Tarvel ist bereits gestartet."_s));
    QFile::remove(adresse);
}

TEST_F(Starttest, demoInAFolderOfSomebodyElse_leavesItAlone) {
    ordner.schreibe(u"protokoll.pdf"_s);
    Befehlszeile zeile;
    zeile.demo = ordner.path();
    EXPECT_EQ(demo(zeile), 1);
    EXPECT_EQ(QDir(ordner.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList(u"protokoll.pdf"_s));
}

TEST_F(Starttest, settingsFile_isReadOnceUntilItChanges) {
    schreibeIni("[Start]\r\nNeu=False\r\nSprache=0\r\n");
    const Einstellungen einstellungen(inipfad());
    const auto liest = [&](const auto& was) {
        const int vorher = Profil::lesungen();
        was();
        return Profil::lesungen() - vorher;
    };
    while (liest([&] { (void)einstellungen.zahl(Einstellung::Sprache); }) > 0) {
    }
    EXPECT_EQ(liest([&] { ASSERT_TRUE(starteUnvorbereitet()); }), 0);
    EXPECT_EQ(liest([&] { missFlügel(); }), 0);
}

TEST_F(Starttest, startUp_showsMeasuringWithTheLoadHintAndTheSettings) {
    schreibeIni("[Start]\r\nNeu=False\r\n[Allgemeines]\r\n4.Rasse=Buckfast\r\nRasse=1\r\n"
                "Default Zoom=2\r\nScann=3\r\nBetriebsart=0\r\n");
    ASSERT_TRUE(starte());
    EXPECT_EQ(hinweis(), u"Klicken Sie im Menü Datei auf den Befehl 'Bild laden'..."_s);
    EXPECT_TRUE(kind<QAction>(u"men_Sprache_0"_s).isChecked());
    EXPECT_TRUE(kind<QAction>(u"men_Zoom_3"_s).isChecked());
    EXPECT_TRUE(kind<QAction>(u"men_Betriebsart_0"_s).isChecked());
    EXPECT_EQ(kind<QComboBox>(u"cbo_dpi"_s).currentText(), u"2400 dpi"_s);
    auto& rassen = kind<QComboBox>(u"cbo_Rasse"_s);
    EXPECT_EQ(rassen.currentText(), u"Mellifera"_s);
    EXPECT_EQ(rassen.itemText(3), u"Buckfast"_s);
    EXPECT_FALSE(kind<QAbstractButton>(u"opt_Fein_4"_s).isEnabled());
    EXPECT_TRUE(kind<QAbstractButton>(u"opt_Fein_5"_s).isEnabled());
}

TEST_F(Starttest, ownWordingOfTheReport_isLoadedWhenTheSettingsAskForIt) {
    schreibeIni("[Start]\r\nNeu=False\r\nSprache=1\r\n[Protokoll]\r\nÜbersetzen=0\r\n"
                "[Translate]\r\nItem505=Cubital index\r\n");
    ASSERT_TRUE(starte());
    EXPECT_EQ(programm->übersetzung().front(), QString());
    programm->einstellungen().schreibe(Einstellung::Übersetzen, 1);
    ASSERT_TRUE(starte());
    EXPECT_EQ(programm->übersetzung().front(), u"Cubital index"_s);
    EXPECT_EQ(programm->übersetzung().back(), u"Secondary peak"_s);
}

TEST_F(Starttest, languageNumberOutOfRange_loadsNoneAndTheProgramStaysUsable) {
    schreibeIni("[Start]\r\nNeu=False\r\nSprache=3\r\n");
    ASSERT_TRUE(starte());
    EXPECT_FALSE(programm->texte().sprache());
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(kind<QAction>(u"men_Sprache_%1"_s.arg(i)).isChecked());
    }
    wähle(u"men_Sprache_1"_s);
    EXPECT_TRUE(kind<QAction>(u"men_Sprache_1"_s).isChecked());
    EXPECT_TRUE(ini().contains("Sprache=1\r\n"));
}
