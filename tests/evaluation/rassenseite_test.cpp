#include "evaluation/rassenseite.h"

#include "evaluation/standarddatei.h"
#include "platform/benutzerspeicher.h"
#include "platform/profil.h"
#include "support/kinder.h"
#include "support/testdialoge.h"
#include "support/testordner.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QCryptographicHash>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTabBar>
#include <QTest>
#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct RassenseiteTest : testing::Test {
    Testordner ordner;
    Texte texte{ordner.path()};
    Einstellungen einstellungen{ordner.filePath(u"Index.ini"_s)};
    Benutzerspeicher speicher{ordner.filePath(u"benutzer.ini"_s)};
    Rassenseite seite{texte, Zahlenformat{}};
    TestDialoge dialoge;
    int pieptöne = 0;

    void SetUp() override {
        seite.beiFalscherTaste([this] { ++pieptöne; });
        seite.setzeQuelle(&einstellungen);
        seite.setzeUmgebung({&dialoge, [] { return QDate(2026, 5, 1); }, ordner.path()});
        seite.setzeRassen(rassenliste(einstellungen));
        seite.lade(einstellungen, 1);
        seite.show();
        seite.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&seite));
    }
    void schreibeIni(const QByteArray& inhalt) const { lege(einstellungen.IniPfad(), inhalt); }
    template <typename T>
    T& kind(const QString& name) {
        return tarvel::kind<T>(seite, name);
    }
    QLineEdit& feld(const QString& name) { return kind<QLineEdit>(name); }
    void tippe(const QString& name, const QString& text) {
        feld(name).setFocus();
        feld(name).selectAll();
        QTest::keyClicks(&feld(name), text);
    }
    void verlasse(const QString& name) { QTest::keyClick(&feld(name), Qt::Key_Tab); }
    void wähleKarte(int index) {
        auto& reiter = kind<QTabBar>(u"tbs_Rasse"_s);
        QTest::mouseClick(&reiter, Qt::LeftButton, {}, reiter.tabRect(index).center());
    }
    bool speichere(int rasse = 1) {
        Profil ini(einstellungen.IniPfad());
        const bool kopiert = seite.speichere(ini, speicher, rasse);
        EXPECT_TRUE(ini.sichere());
        seite.gespeichert();
        return kopiert;
    }
};

} // namespace

TEST_F(RassenseiteTest, raceWithoutEntries_showsTheDefaults) {
    QStringList felder;
    for (const QLineEdit* feld : seite.findChildren<QLineEdit*>(QRegularExpression(u"^txt_"_s))) {
        felder << feld->objectName() + u'=' + feld->text();
    }
    felder.sort();
    const QByteArray alle = felder.join(u'\n').toUtf8();
    EXPECT_TRUE(alle.startsWith("txt_CIK_0=15-17\n"));
    EXPECT_EQ(QCryptographicHash::hash(alle, QCryptographicHash::Md5).toHex().toStdString(),
              "0a14b72ba8ec457c79a49e018ee39688")
        << alle.data();
    EXPECT_TRUE(kind<QRadioButton>(u"opt_Korrelation_0"_s).isChecked());
    EXPECT_FALSE(kind<QCheckBox>(u"chk_CIMittel_0"_s).isChecked());
}

TEST_F(RassenseiteTest, keysOfEachField_areFilteredWithABeep) {
    struct Fall {
        QString feld;
        QString getippt;
        QString bleibt;
        int pieptöne;
    };
    const QString alles = u"a1 2%3-4.,"_s;
    for (const Fall& f : {Fall{u"txt_CI_0"_s, alles, u"12%34"_s, 5},
                          {u"txt_Filz_1"_s, alles, u"12%34"_s, 5},
                          {u"txt_Haarlänge_0"_s, alles, u"12%34"_s, 5},
                          {u"txt_Haarfarbe_3"_s, alles, u"12%34"_s, 5},
                          {u"txt_Panzer_2"_s, alles, u"12%34"_s, 5},
                          {u"txt_PanzerD_2"_s, alles, u"12%34"_s, 5},
                          {u"txt_CIK_3"_s, alles, u"123-4"_s, 5},
                          {u"txt_CIVal_0"_s, alles, u"1234.,"_s, 4},
                          {u"txt_Linien_2"_s, alles, u"123-4.,"_s, 3}}) {
        pieptöne = 0;
        tippe(f.feld, f.getippt);
        EXPECT_EQ(feld(f.feld).text(), f.bleibt) << qPrintable(f.feld);
        EXPECT_EQ(pieptöne, f.pieptöne) << qPrintable(f.feld);
        QTest::keyClick(&feld(f.feld), Qt::Key_Backspace);
        EXPECT_EQ(feld(f.feld).text(), f.bleibt.chopped(1));
        EXPECT_EQ(pieptöne, f.pieptöne);
    }
    auto& liste = kind<QComboBox>(u"cbo_DV_0"_s);
    pieptöne = 0;
    liste.setFocus();
    QTest::keyClicks(&liste, texte(Text::Unter));
    EXPECT_EQ(liste.currentIndex(), 0);
    EXPECT_EQ(pieptöne, 0);
}

TEST_F(RassenseiteTest, leavingAField_normalisesWhatWasTypedOrPasted) {
    struct Fall {
        QString feld;
        QString text;
        QString danach;
    };
    for (const Fall& f : {Fall{u"txt_CI_0"_s, u"15"_s, u"15%"_s},
                          {u"txt_PanzerD_0"_s, u"7x"_s, u"7%"_s},
                          {u"txt_PanzerD_0"_s, u"-5%"_s, u"7%"_s},
                          {u"txt_PanzerD_0"_s, u"1E+18%"_s, u"7%"_s},
                          {u"txt_CIK_0"_s, u"1-15"_s, u"01-15"_s},
                          {u"txt_CIVal_0"_s, u"2,71"_s, u"2.7"_s},
                          {u"txt_Linien_0"_s, u"1,95"_s, u"1.95"_s},
                          {u"txt_Linien_2"_s, u"-0.5"_s, u"-0.50"_s}}) {
        QApplication::clipboard()->setText(f.text);
        feld(f.feld).setFocus();
        feld(f.feld).selectAll();
        QTest::keyClick(&feld(f.feld), Qt::Key_V, Qt::ControlModifier);
        verlasse(f.feld);
        EXPECT_EQ(feld(f.feld).text(), f.danach) << qPrintable(f.feld + u' ' + f.text);
    }
    EXPECT_EQ(pieptöne, 0);
}

TEST_F(RassenseiteTest, decimalBeyondWhatCanBeStored_givesWayToTheOneBefore) {
    tippe(u"txt_Linien_0"_s, u"400"_s);
    verlasse(u"txt_Linien_0"_s);
    EXPECT_EQ(feld(u"txt_Linien_0"_s).text(), u"2.00"_s);
    EXPECT_EQ(seite.standard(1).linien.Arbeit.CI.gespeichert, 200);
}

TEST_F(RassenseiteTest, editedLine_choosesTheLinesDefinedHere) {
    auto& nachKruber = kind<QRadioButton>(u"opt_Korrelation_0"_s);
    tippe(u"txt_Linien_2"_s, u"0"_s); // what stood there
    verlasse(u"txt_Linien_2"_s);
    tippe(u"txt_Filz_1"_s, u"40"_s); // no line
    verlasse(u"txt_Filz_1"_s);
    EXPECT_TRUE(nachKruber.isChecked());
    tippe(u"txt_Linien_2"_s, u"0.55"_s);
    verlasse(u"txt_Linien_2"_s);
    EXPECT_TRUE(kind<QRadioButton>(u"opt_Korrelation_1"_s).isChecked());
    EXPECT_EQ(seite.standard(1).linien.geltende(Geschlecht::Arbeiterinnen).DV.gespeichert, 55);
    EXPECT_TRUE(seite.standard(2).linien.nachKruber());

    QTest::mouseClick(&nachKruber, Qt::LeftButton, {}, QPoint(8, nachKruber.height() / 2));
    EXPECT_EQ(feld(u"txt_Linien_2"_s).text(), u"0.55"_s);
    EXPECT_TRUE(speichere());
    Rassestandard gespeichert;
    LadenGrenzlinien(gespeichert, 1, einstellungen);
    EXPECT_TRUE(gespeichert.linien.nachKruber());
    EXPECT_EQ(gespeichert.linien.Arbeit.DV.gespeichert, 55);
}

TEST_F(RassenseiteTest, rows_nameTheRangesAsTheChartsDo) {
    QStringList köpfe;
    for (const QLabel* label : seite.findChildren<QLabel*>()) {
        köpfe << label->text();
    }
    for (const QString& kopf : {u"Klasse 0"_s, u"Klasse 1"_s, u"Klasse 3"_s}) {
        EXPECT_TRUE(köpfe.contains(kopf)) << qPrintable(kopf);
    }
    EXPECT_EQ(feld(u"txt_CI_1"_s).accessibleName(), u"Klasse 1"_s);
    EXPECT_EQ(feld(u"txt_CIK_3"_s).accessibleName(), u"Klasse 3"_s);
    EXPECT_TRUE(kind<QComboBox>(u"cbo_DV_0"_s).toolTip().contains(u"Hantelindex"_s));
}

TEST_F(RassenseiteTest, tab_showsItsPageAndHidesTheOthers) {
    for (const int gewählt : {2, 0, 3, 1}) {
        wähleKarte(gewählt);
        for (int i = 0; i < Rassenzahl; ++i) {
            EXPECT_EQ(kind<QWidget>(u"Rassenkarte_%1"_s.arg(i)).isVisible(), i == gewählt);
        }
        EXPECT_TRUE(feld(u"txt_Filz_0"_s).isVisible());
    }
}

TEST_F(RassenseiteTest, eachTab_keepsItsOwnRaceWhileOthersAreShown) {
    tippe(u"txt_Filz_1"_s, u"11"_s);
    wähleKarte(2); // the field still has the focus: nothing was left yet
    EXPECT_EQ(feld(u"txt_Filz_1"_s).text(), u"50%"_s);
    tippe(u"txt_Filz_1"_s, u"33"_s);
    wähleKarte(0);
    EXPECT_EQ(feld(u"txt_Filz_1"_s).text(), u"11%"_s);
    EXPECT_TRUE(speichere(1));
    Rassenseite neu(texte, Zahlenformat{});
    neu.lade(einstellungen, 3);
    EXPECT_EQ(kind<QTabBar>(u"tbs_Rasse"_s).currentIndex(), 0);
    EXPECT_EQ(tarvel::kind<QTabBar>(neu, u"tbs_Rasse"_s).currentIndex(), 2);
    EXPECT_EQ(neu.standard(1).arbeiterinnen.Filz[1], u"11%"_s);
    EXPECT_EQ(neu.standard(3).arbeiterinnen.Filz[1], u"33%"_s);
    // What nobody touched is not written: it goes on following the defaults.
    const QByteArray inhalt = liesGanz(einstellungen.IniPfad());
    EXPECT_TRUE(inhalt.contains("Filzbinden ffL-=33%"));
    EXPECT_FALSE(inhalt.contains("M-"));
    EXPECT_FALSE(inhalt.contains("P-"));
}

TEST_F(RassenseiteTest, switchesOptionsAndDirection_areSavedAndShownAgain) {
    for (const QString& name : {u"chk_CIMittel_0"_s, u"chk_CIMittel_1"_s}) {
        QTest::mouseClick(&kind<QCheckBox>(name), Qt::LeftButton, {},
                          QPoint(8, kind<QCheckBox>(name).height() / 2));
    }
    auto& option = kind<QRadioButton>(u"opt_Korrelation_1"_s);
    QTest::mouseClick(&option, Qt::LeftButton, {}, QPoint(8, option.height() / 2));
    QTest::keyClick(&kind<QComboBox>(u"cbo_DV_0"_s), Qt::Key_Down);
    EXPECT_EQ(kind<QComboBox>(u"cbo_DV_1"_s).currentIndex(), 1);
    tippe(u"txt_Linien_0"_s, u"1.95"_s); // saved without being left
    EXPECT_TRUE(speichere());

    Rassenseite neu(texte, Zahlenformat{u',', u'.'});
    neu.lade(einstellungen, 1);
    const Rassestandard& s = neu.standard(1);
    EXPECT_EQ(s.arbeiterinnen.mittel.CIMittel, 1);
    EXPECT_EQ(s.drohnen.mittel.CIMittel, 1);
    EXPECT_FALSE(s.linien.nachKruber());
    EXPECT_TRUE(s.linien.darunter());
    EXPECT_EQ(s.linien.Arbeit.CI.gespeichert, 195);
    EXPECT_EQ(tarvel::kind<QLineEdit>(neu, u"txt_Linien_0"_s).text(), u"1,95"_s);
    EXPECT_EQ(tarvel::kind<QComboBox>(neu, u"cbo_DV_1"_s).currentIndex(), 1);
    EXPECT_TRUE(tarvel::kind<QCheckBox>(neu, u"chk_CIMittel_1"_s).isChecked());
    EXPECT_EQ(speicher.GetSetting(u"Index"_s, u"Grenzlinien"_s, u"CI ArbeitC-"_s), u"195"_s);
}

TEST_F(RassenseiteTest, reset_loadsTheStoredValuesAndDefaultsTheTables) {
    schreibeIni("[Merkmale Arbeiterinnen]\r\nFilzbinden ffC-=44%\r\nmax 0C-=\r\n");
    tippe(u"txt_Filz_1"_s, u"99"_s);
    tippe(u"txt_CI_0"_s, u"98"_s);
    QTest::mouseClick(&kind<QPushButton>(u"bef_TestReset"_s), Qt::LeftButton);
    EXPECT_EQ(feld(u"txt_Filz_1"_s).text(), u"44%"_s);
    EXPECT_EQ(feld(u"txt_CI_0"_s).text(), u"15%"_s); // an empty key keeps what was loaded before
    QTest::mouseClick(&kind<QPushButton>(u"bef_Standardwerte"_s), Qt::LeftButton);
    EXPECT_EQ(feld(u"txt_Filz_1"_s).text(), u"50%"_s);
}

TEST_F(RassenseiteTest, noRaceSelected_keepsWhatIsShown) {
    tippe(u"txt_Filz_1"_s, u"77"_s);
    verlasse(u"txt_Filz_1"_s);
    seite.lade(einstellungen, 0);
    EXPECT_EQ(feld(u"txt_Filz_1"_s).text(), u"77%"_s);
}

TEST_F(RassenseiteTest, brokenRangeOfAnotherRace_staysWithItAndComesToTheFront) {
    tippe(u"txt_CIK_3"_s, u"11-"_s);
    wähleKarte(2);
    EXPECT_EQ(feld(u"txt_CIK_3"_s).text(), u"01-11"_s);
    EXPECT_FALSE(kind<QLabel>(u"lab_Mangel_1"_s).isVisible());
    EXPECT_EQ(seite.mangelhaftesFeld(), &feld(u"txt_CIK_3"_s));
    EXPECT_EQ(kind<QTabBar>(u"tbs_Rasse"_s).currentIndex(), 0);
    EXPECT_EQ(feld(u"txt_CIK_3"_s).text(), u"11-"_s);
    EXPECT_TRUE(kind<QLabel>(u"lab_Mangel_1"_s).text().contains(u"Klasse 3"_s));
    QTest::mouseClick(&kind<QPushButton>(u"bef_TestReset"_s), Qt::LeftButton);
    EXPECT_EQ(seite.mangelhaftesFeld(), nullptr);
}

TEST_F(RassenseiteTest, criterionThatAllowsEverything_isNamed) {
    EXPECT_TRUE(kind<QLabel>(u"lab_Hinweis_0"_s)
                    .text()
                    .endsWith(u"Panzerzeichen O, Haarlänge k, Filzbinden F"_s));
    tippe(u"txt_CI_1"_s, u"100"_s);
    verlasse(u"txt_CI_1"_s);
    EXPECT_TRUE(kind<QLabel>(u"lab_Hinweis_0"_s).text().endsWith(u"Filzbinden F, Klasse 1"_s));
}

TEST_F(RassenseiteTest, meanOfCI_isCheckedInTheChosenDirection) {
    auto& schalter = kind<QCheckBox>(u"chk_CIMittel_1"_s);
    auto& richtung = kind<QComboBox>(u"cbo_CIMittel_1"_s);
    EXPECT_EQ(richtung.currentText(), u"Mittelwert über"_s);
    QTest::mouseClick(&schalter, Qt::LeftButton, {}, QPoint(8, schalter.height() / 2));
    QTest::keyClick(&richtung, Qt::Key_Down);
    EXPECT_TRUE(speichere());
    Rassenseite neu(texte, Zahlenformat{});
    neu.lade(einstellungen, 1);
    EXPECT_TRUE(neu.standard(1).drohnen.mittel.unter());
    EXPECT_FALSE(neu.standard(1).arbeiterinnen.mittel.unter());
    EXPECT_EQ(tarvel::kind<QComboBox>(neu, u"cbo_CIMittel_1"_s).currentIndex(), 1);
}

TEST_F(RassenseiteTest, standard_travelsWithItsNameAsAFile) {
    const QString pfad = ordner.filePath(u"Nord 1.tstd"_s);
    const auto stand = [this] { return kind<QLabel>(u"lab_Standardstand"_s).text(); };
    const auto klicke = [this](const QString& knopf) { kind<QPushButton>(knopf).click(); };
    tippe(u"txt_Panzer_1"_s, u"20"_s);
    tippe(u"txt_Standardname"_s, u"Nord"_s);
    tippe(u"txt_Standardversion"_s, u"1"_s);
    dialoge.dateien = {QString(), ordner.filePath(u"fehlt/a.tstd"_s), pfad};
    klicke(u"bef_StandardExport"_s); // cancelled
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
    klicke(u"bef_StandardExport"_s);
    klicke(u"bef_StandardExport"_s);
    EXPECT_THAT(dialoge.arten, ElementsAre(Meldungsart::Ausruf, Meldungsart::Hinweis));
    EXPECT_EQ(stand(), u"Nord, Fassung 1 (2026-05-01)"_s);
    tippe(u"txt_Panzer_1"_s, u"25"_s);
    verlasse(u"txt_Panzer_1"_s);
    EXPECT_EQ(stand(), u"Nord, Fassung 1, danach geändert (2026-05-01)"_s);

    // Another race: shown first, refused, then taken.
    wähleKarte(1);
    dialoge.dateien = {pfad, pfad, pfad};
    dialoge.antworten = {Antwort::Nein, Antwort::Ja};
    const Rassestandard vorher = seite.standard(2);
    klicke(u"bef_StandardImport"_s);
    EXPECT_EQ(seite.standard(2), vorher);
    EXPECT_TRUE(dialoge.fragen.back().text.startsWith(
        u"Die Datei ist für die Rasse 'Carnica' geschrieben, nicht für 'Mellifera'!\n"_s));
    EXPECT_TRUE(dialoge.fragen.back().verwirft);
    EXPECT_THAT(dialoge.fragen.back().zeilen,
                ElementsAre(u"Standard: Mellifera → Nord, Fassung 1"_s,
                            u"Arbeiterinnen: Panzerzeichen E: 30% → 20%"_s));
    klicke(u"bef_StandardImport"_s);
    EXPECT_EQ(feld(u"txt_Panzer_1"_s).text(), u"20%"_s);
    EXPECT_EQ(stand(), u"Nord, Fassung 1 (2026-05-01)"_s);
    klicke(u"bef_StandardImport"_s);
    EXPECT_TRUE(dialoge.meldungen.last().contains(u"derselbe"_s));

    // Name and version are kept with their race; those of the other are gone with Reset.
    speichere(2);
    Texte englisch{ordner.path()};
    Rassenseite wieder{englisch, Zahlenformat{}};
    wieder.lade(einstellungen, 1);
    EXPECT_EQ(wieder.standard(2), seite.standard(2));
    EXPECT_EQ(wieder.standard(1).kennung.Version, u"1"_s);
    EXPECT_EQ(standardname(wieder.standard(1), u"Carnica"_s, texte),
              u"Nord, Fassung 1, danach geändert"_s);
    tippe(u"txt_Standardversion"_s, u"7"_s);
    kind<QPushButton>(u"bef_TestReset"_s).click();
    EXPECT_EQ(feld(u"txt_Standardversion"_s).text(), u"1"_s);
}

TEST_F(RassenseiteTest, fileThatIsNoStandard_changesNothing) {
    const Rassestandard vorher = seite.standard(1);
    dialoge.dateien = {
        ordner.schreibe(u"a.tstd"_s, "Tarvel-Rassestandard 1\n[Standard]\nRasse=Carnica\n"),
        ordner.filePath(u"fehlt"_s)};
    kind<QPushButton>(u"bef_StandardImport"_s).click();
    EXPECT_THAT(dialoge.meldungen,
                ElementsAre(u"Importieren: Der Standard wurde nicht übernommen. Die Datei ist "
                            "beschädigt: 'Arbeiterinnen: Filzbinden F' fehlt."_s));
    kind<QPushButton>(u"bef_StandardImport"_s).click();
    EXPECT_EQ(dialoge.meldungen.size(), 2);
    EXPECT_THAT(dialoge.fragen, IsEmpty());
    // A range that the page refuses is not given on either.
    tippe(u"txt_CIK_0"_s, u"17-15"_s);
    kind<QPushButton>(u"bef_StandardExport"_s).click();
    EXPECT_EQ(dialoge.meldungen.last(), u"Exportieren: Arbeiterinnen: Klasse 0: Die erste Klasse "
                                        "ist höher als die letzte."_s);
    feld(u"txt_CIK_0"_s).setText(u"15-17"_s);
    verlasse(u"txt_CIK_0"_s);
    EXPECT_EQ(seite.standard(1).kennung, vorher.kennung);
}

TEST_F(RassenseiteTest, linesAfterKruber_standBesideTheStoredOnes) {
    schreibeIni("[Grenzlinien]\r\nHI DrohnC-=901\r\nKorrelationC-=0\r\n");
    seite.lade(einstellungen, 1);
    const QColor schrift = feld(u"txt_Linien_4"_s).palette().color(QPalette::Text);
    EXPECT_FALSE(kind<QLabel>(u"lab_Geltend_4"_s).isVisible());
    auto& nachKruber = kind<QRadioButton>(u"opt_Korrelation_0"_s);
    QTest::mouseClick(&nachKruber, Qt::LeftButton, {}, QPoint(8, nachKruber.height() / 2));
    EXPECT_EQ(feld(u"txt_Linien_4"_s).text(), u"0.901"_s);
    EXPECT_NE(feld(u"txt_Linien_4"_s).palette().color(QPalette::Text), schrift);
    EXPECT_TRUE(kind<QLabel>(u"lab_Geltend_4"_s).isVisible());
    EXPECT_EQ(kind<QLabel>(u"lab_Geltend_4"_s).text(), u"gilt: 0.880"_s);
}
