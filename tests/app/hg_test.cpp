#include "app/fenster.h"
#include "app/hinweiszeile.h"

#include <QComboBox>
#include <QLineEdit>
#include <QMimeData>
#include <QToolButton>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

struct HGTest : Fenstertest {
    void SetUp() override {
        ASSERT_TRUE(starte());
        hg().resize(1280, 800);
    }
    QLineEdit& feld(const QString& name) const {
        if (auto* combo = hg().findChild<QComboBox*>(name)) {
            return *combo->lineEdit();
        }
        return kind<QLineEdit>(name);
    }
};

} // namespace

TEST_F(HGTest, fieldsThatAreLeft_areBroughtIntoForm) {
    struct Zeile {
        QString feld, getippt, erwartet;
    };
    for (const Zeile& z : {Zeile{u"txt_Jahr"_s, u"05"_s, u"2005"_s},
                           {u"txt_KNr"_s, u"7"_s, u"007"_s},
                           {u"txt_LV"_s, u"3"_s, u"03"_s},
                           {u"txt_ZNr"_s, u"12a"_s, u"12a"_s},
                           {u"txt_UNr"_s, u"7"_s, u"7"_s}}) {
        QLineEdit& feld = this->feld(z.feld);
        feld.setFocus();
        feld.selectAll();
        QTest::keyClicks(&feld, z.getippt);
        QTest::keyClick(&feld, Qt::Key_Tab);
        EXPECT_EQ(feld.text(), z.erwartet) << qPrintable(z.feld);
    }
    EXPECT_EQ(hg().untersuchung().angaben().Jahr, u"2005"_s);
    EXPECT_EQ(hg().untersuchung().angaben().KNr, u"007"_s);
}

TEST_F(HGTest, everyColonyField_changesTheExaminationAndMarksIt) {
    for (const char16_t* name : {u"txt_Jahr", u"txt_KNr", u"txt_LV", u"txt_ZNr", u"txt_UNr",
                                 u"txt_Volk", u"cbo_Name", u"cbo_Besitzer", u"cbo_Begattung"}) {
        ASSERT_TRUE(starte());
        EXPECT_FALSE(hg().untersuchung().geändert());
        QTest::keyClicks(&feld(QString::fromUtf16(name)), u"x"_s);
        EXPECT_TRUE(hg().untersuchung().angabenGeändert()) << qPrintable(QString::fromUtf16(name));
    }
}

TEST_F(HGTest, pickedRace_isWrittenToTheOtherSection) {
    auto& rassen = kind<QComboBox>(u"cbo_Rasse"_s);
    QTest::keyClick(&rassen, Qt::Key_Down);
    EXPECT_TRUE(ini().contains("[Merkmale Arbeiterinnen]\r\nRasse=1\r\n"));
    EXPECT_FALSE(ini().contains("[Allgemeines]\r\nRasse"));
    EXPECT_EQ(hg().untersuchung().angaben().Rasse, 1);
}

TEST_F(HGTest, hint_blinksFourTimesThenStays) {
    auto& zeile = static_cast<Hinweiszeile&>(kind<QLabel>(u"lab_H"_s));
    auto& timer = kind<QTimer>(u"Timer1"_s);
    hg().messmodus(2);
    EXPECT_TRUE(timer.isActive());
    int versteckt = 0;
    for (int tick = 0; tick < 20; ++tick) {
        zeile.Timer1_Timer();
        versteckt += zeile.isHidden() ? 1 : 0;
    }
    EXPECT_EQ(versteckt, 4);
    EXPECT_FALSE(zeile.isHidden());
    EXPECT_FALSE(timer.isActive());
    hg().messmodus(2);
    zeile.Timer1_Timer();
    EXPECT_TRUE(zeile.isHidden());
}

TEST_F(HGTest, whatCannotBeDoneYet_isDisabledAndTheRestIsNot) {
    for (const char16_t* name :
         {u"men_Datei_6", u"men_Ansicht_6", u"men_Ansicht_7", u"men_Bearbeiten_0",
          u"men_Bearbeiten_1", u"men_Bearbeiten_2", u"men_Bearbeiten_3", u"men_Bearbeiten_4",
          u"men_Bearbeiten_11", u"men_Datei_2", u"men_Datei_21"}) {
        EXPECT_FALSE(kind<QAction>(QString::fromUtf16(name)).isEnabled())
            << qPrintable(QString::fromUtf16(name));
    }
    for (const char16_t* name :
         {u"men_Datei_5", u"men_Datei_14", u"men_Ansicht_0", u"men_Ansicht_11", u"men_Hilfe_4"}) {
        EXPECT_TRUE(kind<QAction>(QString::fromUtf16(name)).isEnabled())
            << qPrintable(QString::fromUtf16(name));
    }
    EXPECT_FALSE(kind<QToolButton>(u"bef_Toolbar_6"_s).isEnabled());
    ASSERT_TRUE(hg().ladeBild(maleBild({900, 320})));
    EXPECT_TRUE(kind<QToolButton>(u"bef_Toolbar_6"_s).isEnabled());
    EXPECT_TRUE(kind<QToolButton>(u"bef_Toolbar_3"_s).isEnabled());
    wähle(u"men_Ansicht_0"_s);
    EXPECT_FALSE(kind<QToolButton>(u"bef_Toolbar_3"_s).isEnabled());
}

TEST_F(HGTest, graphicsProgram_getsThePictureOrIsReportedMissing) {
    const QString pfad = maleBild({900, 320});
    ASSERT_TRUE(hg().ladeBild(pfad));
    QTest::mouseClick(&kind<QToolButton>(u"bef_Toolbar_6"_s), Qt::LeftButton);
    EXPECT_THAT(shell.gestartet, IsEmpty()); // none is named in the settings
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"Das Programm wurde nicht gefunden."_s));
    programm->einstellungen().schreibe(Einstellung::Grafikprogramm, u"/usr/bin/malen"_s);
    wähle(u"men_Datei_6"_s);
    EXPECT_THAT(shell.gestartet, ElementsAre(u"/usr/bin/malen "_s + pfad));
}

TEST_F(HGTest, help_opensTheHelpFileOrNamesIt) {
    EXPECT_FALSE(kind<QAction>(u"men_Hilfe_0"_s).isEnabled()); // without the file
    QFile hilfe(ordner.filePath(u"Tarvel.chm"_s));
    ASSERT_TRUE(hilfe.open(QIODevice::WriteOnly));
    wähle(u"men_Sprache_1"_s); // a language has help of its own, which is looked for
    wähle(u"men_Sprache_0"_s);
    wähle(u"men_Hilfe_0"_s);
    EXPECT_THAT(shell.geöffnet, ElementsAre(ordner.filePath(u"Tarvel.chm"_s)));
    shell.gelingt = false;
    wähle(u"men_Hilfe_0"_s);
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"Datei wurde nicht gefunden."_s));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"Tarvel.chm"_s));
}

TEST_F(HGTest, editMenu_actsOnTheFieldWithTheFocus) {
    hg().activateWindow();
    QLineEdit& volk = feld(u"txt_Volk"_s);
    volk.setText(u"Volk 12"_s);
    volk.setFocus();
    volk.selectAll();
    wähle(u"men_Bearbeiten_5"_s);
    EXPECT_EQ(volk.text(), QString());
    wähle(u"men_Bearbeiten_7"_s);
    EXPECT_EQ(volk.text(), u"Volk 12"_s);
    volk.setCursorPosition(2);
    wähle(u"men_Bearbeiten_8"_s);
    EXPECT_EQ(volk.text(), u"Volk 12"_s) << "nothing is selected";
    // An editable list is a field as well.
    auto& züchter = kind<QComboBox>(u"cbo_Name"_s);
    züchter.setFocus();
    for (const int index : {5, 6, 7, 8}) {
        EXPECT_TRUE(kind<QAction>(u"men_Bearbeiten_%1"_s.arg(index)).isEnabled());
    }
    wähle(u"men_Bearbeiten_7"_s);
    EXPECT_EQ(züchter.currentText(), u"Volk 12"_s);
    züchter.lineEdit()->selectAll();
    wähle(u"men_Bearbeiten_8"_s);
    EXPECT_EQ(züchter.currentText(), QString());
    kind<QComboBox>(u"cbo_Rasse"_s).setFocus();
    EXPECT_FALSE(kind<QAction>(u"men_Bearbeiten_5"_s).isEnabled());
}

TEST_F(HGTest, pictureFilter_namesTheKindsOfFiles) {
    wähle(u"men_Datei_5"_s); // cancelled: the chooser gives no file
    ASSERT_THAT(dialoge.filter, SizeIs(1));
    EXPECT_TRUE(dialoge.filter[0].startsWith(u"Alle Bild-Dateien (*.BMP *.GIF *.JPG"_s));
    EXPECT_TRUE(dialoge.filter[0].contains(u"Bitmap-Dateien (*.BMP)"_s));
    EXPECT_TRUE(dialoge.filter[0].contains(u"GIF-Dateien (*.GIF)"_s));
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
}

TEST_F(HGTest, droppedPicture_isLoaded) {
    QMimeData daten;
    daten.setUrls(
        {QUrl(u"https://example.org/bild.png"_s), QUrl::fromLocalFile(maleBild({900, 320}))});
    QDragEnterEvent herein({10, 10}, Qt::CopyAction, &daten, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&hg(), &herein);
    EXPECT_TRUE(herein.isAccepted());
    QDropEvent fallen({10, 10}, Qt::CopyAction, &daten, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&hg(), &fallen);
    EXPECT_TRUE(bild().bild().size() == QSize(900, 320));
}

TEST_F(HGTest, closing_completesTheYearAsLeavingTheFieldDoes) {
    feld(u"txt_Jahr"_s).setText(u"24"_s);
    dialoge.antworten = {Antwort::Nein, Antwort::Abbrechen};
    EXPECT_FALSE(hg().close());
    EXPECT_TRUE(hg().isVisible());
    EXPECT_EQ(feld(u"txt_Jahr"_s).text(), u"2024"_s);
}

TEST_F(HGTest, windowPlaces_areThereAgainAtTheNextStart) {
    hg().resize(1111, 711);
    wähle(u"men_Ansicht_20"_s);
    wähle(u"men_Ansicht_22"_s);
    EXPECT_TRUE(hg().close());
    ASSERT_TRUE(starte());
    EXPECT_EQ(hg().size(), QSize(1111, 711));
    EXPECT_TRUE(kind<QWidget>(u"Leiste_Links"_s).isHidden());
    EXPECT_FALSE(kind<QAction>(u"men_Ansicht_20"_s).isChecked());
    EXPECT_TRUE(kind<QAction>(u"men_Ansicht_22"_s).isChecked());
}

TEST_F(HGTest, settingsFileThatCannotBeWritten_isSaidOnceInTheHintLineAndTheProgramGoesOn) {
    ASSERT_TRUE(QFile::remove(inipfad()));
    ASSERT_TRUE(QDir(ordner.path()).mkdir(u"Index.ini"_s)); // a folder in the file's place
    wähle(u"men_Sprache_1"_s);
    EXPECT_EQ(kind<QAction>(u"men_Datei_5"_s).iconText(), u"Load\npicture"_s);
    EXPECT_TRUE(hinweis().contains(u"could not be written"_s)) << qPrintable(hinweis());
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
}
