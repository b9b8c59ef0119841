#include "app/optionen.h"

#include "evaluation/klassen.h"
#include "evaluation/rassenseite.h"
#include "platform/vektorbild.h"
#include "support/kinder.h"
#include "support/testdialoge.h"
#include "support/testdrucker.h"
#include "support/testordner.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

struct OptionenTest : testing::Test {
    Testordner ordner;
    Texte texte{ordner.path()};
    TestDialoge dialoge;
    TestShell shell;
    TestClock uhr;
    TestDrucker drucker;
    QString inipfad = ordner.filePath(u"Index.ini"_s);
    std::unique_ptr<Einstellungen> einstellungen = std::make_unique<Einstellungen>(inipfad);
    Benutzerspeicher speicher{ordner.filePath(u"benutzer.ini"_s)};
    std::unique_ptr<Optionen> dialog;

    void schreibeIni(const QByteArray& inhalt) const { lege(inipfad, inhalt); }
    QByteArray ini() const { return liesGanz(inipfad); }
    void öffne(int rasse = 1) {
        dialog = std::make_unique<Optionen>(Umgebung{*einstellungen, texte, dialoge, shell, uhr,
                                                     drucker, Zahlenformat{}, ordner.path()},
                                            speicher, rasse);
        dialog->show();
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
    }
    template <typename T>
    T& kind(const QString& name) {
        return tarvel::kind<T>(*dialog, name);
    }
    /// Brings the page to the front that holds the control, as a person would.
    void zeige(const QWidget& feld) {
        auto& karten = kind<QTabWidget>(u"tbs_Optionen"_s);
        for (int i = 0; i < karten.count() && !feld.isVisible(); ++i) {
            QTest::mouseClick(karten.tabBar(), Qt::LeftButton, {},
                              karten.tabBar()->tabRect(i).center());
        }
        ASSERT_TRUE(feld.isVisible()) << qPrintable(feld.objectName());
    }
    void klicke(const QString& name) {
        auto& knopf = kind<QAbstractButton>(name);
        zeige(knopf);
        QTest::mouseClick(&knopf, Qt::LeftButton, {}, QPoint(8, knopf.height() / 2));
    }
    void tippe(const QString& name, const QString& text) {
        auto& feld = kind<QWidget>(name);
        zeige(feld);
        feld.setFocus();
        QTest::keyClick(&feld, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(&feld, text);
    }
    void wähle(const QString& name, int position) {
        auto& liste = kind<QComboBox>(name);
        zeige(liste);
        QTest::keyClick(&liste, Qt::Key_Home);
        for (int i = 0; i < position; ++i) {
            QTest::keyClick(&liste, Qt::Key_Down);
        }
    }
    void ändereAlles() {
        klicke(u"chk_Nummer"_s);
        tippe(u"txt_Kurzzeichen"_s, u"ABCD"_s);
        klicke(u"opt_Betriebsart_2"_s);
        wähle(u"cbo_dpi"_s, 3);
        klicke(u"opt_Zoom_3"_s);
        klicke(u"opt_Kurvenform_2"_s);
        klicke(u"opt_CubiDis_0"_s);
        klicke(u"chk_OhneHaarlänge"_s);
        tippe(u"txt_Rasse"_s, u"Sicula"_s);
        wähle(u"cbo_RasseStart"_s, 2);
        tippe(u"txt_Arbeit_0"_s, u"C:\\Bilder"_s);
        tippe(u"txt_Arbeit_3"_s, u"C:\\Malen.exe"_s);

        tippe(u"txt_TextLinks"_s, u"70"_s);
        tippe(u"txt_TextOben"_s, u"25"_s);
        tippe(u"txt_Bearbeiter_0"_s, u"Theresa Huber"_s);
        tippe(u"txt_Bearbeiter_1"_s, u"Am Hang 12"_s);
        tippe(u"txt_Bearbeiter_2"_s, u"Graz"_s);
        tippe(u"cbo_SchriftArt_0"_s, u"Nicht Da"_s);
        tippe(u"txt_SchriftGröße"_s, u"12"_s);
        klicke(u"chk_Fett"_s);
        klicke(u"chk_Kursiv_0"_s);
        klicke(u"chk_Zeilen"_s);
        klicke(u"opt_Verband_3"_s);
        tippe(u"txt_Datei"_s, u"C:\\wappen.png"_s);
        tippe(u"txt_GrafikLinks"_s, u"15"_s);
        tippe(u"txt_GrafikOben"_s, u"5"_s);

        tippe(u"cbo_SchriftArt_1"_s, u"Fehlt Auch"_s);
        klicke(u"chk_Kursiv_1"_s);
        klicke(u"chk_Übersetzen"_s);
        klicke(u"opt_Datum_3"_s);
        klicke(u"chk_Beurteilung"_s);
        klicke(u"opt_Protokoll_2"_s);
        for (int i = 0; i < 4; ++i) {
            klicke(u"chk_Warnung_%1"_s.arg(i));
        }
        tippe(u"txt_Filz_1"_s, u"40"_s);
    }
    void bestätige() { QTest::mouseClick(&kind<QPushButton>(u"bef_OK"_s), Qt::LeftButton); }
};

constexpr char AllesGeändert[] =
    "[Allgemeines]\r\nAutoNummer=0\r\nKurzzeichen=ABC\r\nBetriebsart=2\r\nScann=3\r\n"
    "Default Zoom=3\r\nKurvenform=2\r\n2. Kurve=0\r\n4.Rasse=Sicula\r\nRasse=2\r\n"
    "[Speichern]\r\nArbeitsverzeichnis=C:\\Bilder\r\nGrafikprogramm=C:\\Malen.exe\r\n"
    "[Briefkopf]\r\nText Links=70\r\nText Oben=25\r\nName=Theresa Huber\r\nStra\xDF"
    "e=Am Hang 12\r\nOrt=Graz\r\nSchriftArt=Nicht Da\r\nSchriftGr\xF6\xDF"
    "e=12\r\nSchriftFett=1\r\nSchriftKursiv=1\r\nZeilenwechsel=1\r\nDatei=C:\\wappen.png\r\n"
    "Grafik Links=15\r\nGrafik Oben=5\r\nIkone=3\r\n"
    "[Protokoll]\r\nSchriftArt=Fehlt Auch\r\nSchriftKursiv=1\r\nSeiten=1\r\n\xDC"
    "bersetzen=1\r\nDatum=3\r\nBeurteilung=0\r\nArt=2\r\nWarnung Cubitalindex=0\r\n"
    "Warnung Hantelindex=0\r\nWarnung Merkmale=0\r\nWarnung K\xF6nigin=0\r\n"
    "[Merkmale Arbeiterinnen]\r\nFilzbinden F_C-=100%\r\nFilzbinden ffC-=40%\r\n";

} // namespace

TEST_F(OptionenTest, everyControlChanged_standsInTheFileInOrderAndIsShownAgain) {
    öffne();
    ändereAlles();
    EXPECT_FALSE(QFile::exists(inipfad));
    bestätige();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    const QByteArray geschrieben = ini();
    EXPECT_EQ(geschrieben.first(qsizetype{sizeof AllesGeändert} - 1), QByteArray(AllesGeändert));
    const QByteArray nachfolger[] = {"Haarl\xE4nge kC-=100%", "Ohne Haarl\xE4nge=1",
                                     "[Merkmale Drohnen]", "[Grenzlinien]", "DV ><C-=0"};
    qsizetype stelle = 0;
    for (const QByteArray& zeile : nachfolger) {
        const qsizetype nächste = geschrieben.indexOf(zeile, stelle);
        EXPECT_GT(nächste, stelle) << zeile.toStdString();
        stelle = nächste;
    }
    EXPECT_EQ(speicher.GetSetting(u"Index"_s, u"Grenzlinien"_s, u"HI DrohnC-"_s), u"880"_s);

    öffne();
    bestätige();
    EXPECT_EQ(ini(), geschrieben);
}

TEST_F(OptionenTest, missingFile_showsTheDefaults) {
    öffne();
    for (const QString& name :
         {u"opt_Betriebsart_1"_s, u"opt_Zoom_1"_s, u"opt_Kurvenform_1"_s, u"opt_CubiDis_1"_s,
          u"opt_Verband_2"_s, u"opt_Datum_0"_s, u"opt_Protokoll_1"_s}) {
        EXPECT_TRUE(kind<QAbstractButton>(name).isChecked()) << qPrintable(name);
    }
    EXPECT_EQ(kind<QComboBox>(u"cbo_dpi"_s).currentText(), u"600 dpi"_s);
    EXPECT_EQ(kind<QSpinBox>(u"txt_TextLinks"_s).value(), 60);
    EXPECT_EQ(kind<QSpinBox>(u"txt_GrafikOben"_s).value(), 10);
    EXPECT_EQ(kind<QComboBox>(u"cbo_SchriftArt_0"_s).currentText(), u"Arial"_s);
}

TEST_F(OptionenTest, cancelled_leavesTheFileByteForByte) {
    const QByteArray vorher = "; von Hand\n[allgemeines]\nkurzzeichen = \"XY\"\n"
                              "Scann=2\n\n[Briefkopf]\nName=Alt\nOrt=";
    for (const bool mitEscape : {false, true}) {
        schreibeIni(vorher);
        öffne();
        ändereAlles();
        if (mitEscape) {
            QTest::keyClick(dialog.get(), Qt::Key_Escape);
        } else {
            QTest::mouseClick(&kind<QPushButton>(u"bef_Abbrechen"_s), Qt::LeftButton);
        }
        EXPECT_FALSE(dialog->isVisible());
        EXPECT_EQ(dialog->result(), QDialog::Rejected);
        EXPECT_EQ(ini(), vorher);
        EXPECT_FALSE(QFile::exists(ordner.filePath(u"benutzer.ini"_s)));
        // What was typed is gone, keys without a value in the file included.
        EXPECT_EQ(kind<QLineEdit>(u"txt_Kurzzeichen"_s).text(), u"XY"_s);
        EXPECT_EQ(kind<QLineEdit>(u"txt_Bearbeiter_2"_s).text(), QString());
        EXPECT_EQ(kind<QLineEdit>(u"txt_Rasse"_s).text(), u"Carpatica"_s);
        EXPECT_EQ(kind<QLineEdit>(u"txt_Filz_1"_s).text(), u"50%"_s);
    }
}

TEST_F(OptionenTest, fileThatCannotBeWritten_isAMessageAndTheDialogStays) {
    ASSERT_TRUE(QDir().mkpath(inipfad)); // a folder in its place
    öffne();
    tippe(u"txt_Bearbeiter_0"_s, u"Huber"_s);
    tippe(u"txt_Linien_0"_s, u"1.5"_s);
    bestätige();
    EXPECT_TRUE(dialog->isVisible());
    ASSERT_EQ(dialoge.meldungen.size(), 1);
    EXPECT_TRUE(dialoge.meldungen.first().contains(inipfad));
    EXPECT_EQ(kind<QLineEdit>(u"txt_Bearbeiter_0"_s).text(), u"Huber"_s);
    EXPECT_EQ(speicher.GetSetting(u"Index"_s, u"Grenzlinien"_s, u"CI ArbeitC-"_s), u"200"_s);

    ASSERT_TRUE(QDir().rmdir(inipfad));
    bestätige();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_TRUE(ini().contains("Name=Huber"));
    EXPECT_TRUE(ini().contains("CI ArbeitC-=150"));
}

TEST_F(OptionenTest, confirmedUnchanged_keepsEveryValueOfAFileInUse) {
    QByteArray vorher = AllesGeändert;
    vorher.replace("Seiten=1", "Seiten=7"); // written from the kind of report, never read
    schreibeIni(vorher);
    öffne(0); // no race: none of the standards is written
    bestätige();
    EXPECT_EQ(ini(), QByteArray(AllesGeändert));
}

TEST_F(OptionenTest, changedControls_areToldFromUntouchedOnes) {
    öffne();
    klicke(u"opt_Zoom_3"_s);
    wähle(u"cbo_dpi"_s, 3);
    wähle(u"cbo_dpi"_s, 1); // as it was
    bestätige();
    EXPECT_TRUE(dialog->geändert(Einstellung::DefaultZoomOptionen));
    for (const Einstellung id : {Einstellung::ScannOptionen, Einstellung::Betriebsart}) {
        EXPECT_FALSE(dialog->geändert(id)); // written, though not in the file before
    }
    EXPECT_TRUE(ini().contains("Scann=1\r\nDefault Zoom=3\r\n"));
    öffne();
    klicke(u"opt_Zoom_0"_s);
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    EXPECT_FALSE(dialog->geändert(Einstellung::DefaultZoomOptionen));
}

TEST_F(OptionenTest, lettersBeyondTheCodePage_areKept) {
    öffne();
    QApplication::clipboard()->setText(u"  Kovač \"Łukasz\" "_s);
    tippe(u"txt_Bearbeiter_0"_s, {});
    QTest::keyClick(&kind<QLineEdit>(u"txt_Bearbeiter_0"_s), Qt::Key_V, Qt::ControlModifier);
    tippe(u"txt_Bearbeiter_1"_s, QString(300, u'x'));
    EXPECT_EQ(kind<QLineEdit>(u"txt_Bearbeiter_0"_s).text(), u"Kovač \"Łukasz\""_s);
    tippe(u"txt_Rasse"_s, u" "_s);
    bestätige();
    öffne();
    EXPECT_EQ(kind<QLineEdit>(u"txt_Bearbeiter_0"_s).text(), u"Kovač \"Łukasz\""_s);
    EXPECT_EQ(kind<QLineEdit>(u"txt_Bearbeiter_1"_s).text(), QString(127, u'x'));
    EXPECT_EQ(kind<QLineEdit>(u"txt_Rasse"_s).text(), u"Carpatica"_s);
}

TEST_F(OptionenTest, emptiedField_staysEmpty) {
    schreibeIni("[Allgemeines]\r\nKurzzeichen=AB\r\n");
    öffne();
    tippe(u"txt_Kurzzeichen"_s, u" "_s);
    bestätige();
    dialog->LadenKarte1_2();
    EXPECT_EQ(kind<QLineEdit>(u"txt_Kurzzeichen"_s).text(), QString());
    // A value that somebody else takes out of the file keeps what is shown.
    schreibeIni("[Allgemeines]\r\nKurzzeichen=CD\r\n");
    dialog->LadenKarte1_2();
    schreibeIni("[Allgemeines]\r\nKurzzeichen=\r\n");
    dialog->LadenKarte1_2();
    EXPECT_EQ(kind<QLineEdit>(u"txt_Kurzzeichen"_s).text(), u"CD"_s);
}

TEST_F(OptionenTest, browsing_takesTheFolderAndTheFiles) {
    öffne();
    EXPECT_FALSE(kind<QLineEdit>(u"txt_Datei"_s).isEnabled());
    klicke(u"opt_Verband_3"_s);
    dialoge.dateien = {ordner.filePath(u"flügel.jpg"_s), ordner.filePath(u"malen"_s),
                       ordner.filePath(u"wappen.png"_s)};
    for (int durchgang = 0; durchgang < 2; ++durchgang) { // cancelled the second time
        for (const QString& knopf :
             {u"bef_Durchsuchen_0"_s, u"bef_Durchsuchen_3"_s, u"bef_Datei"_s}) {
            klicke(knopf);
        }
    }
    const auto pfad = [this](const QString& name) {
        return QDir::toNativeSeparators(name.isEmpty() ? QDir(ordner.path()).absolutePath()
                                                       : ordner.filePath(name));
    };
    EXPECT_EQ(kind<QLineEdit>(u"txt_Arbeit_0"_s).text(), pfad({}));
    EXPECT_EQ(kind<QLineEdit>(u"txt_Arbeit_1"_s).text(), pfad({}));
    EXPECT_EQ(kind<QLineEdit>(u"txt_Arbeit_3"_s).text(), pfad(u"malen"_s));
    EXPECT_EQ(kind<QLineEdit>(u"txt_Datei"_s).text(), pfad(u"wappen.png"_s));
}

TEST_F(OptionenTest, preview_followsTheTypingAndTellsAboutAMissingPicture) {
    öffne();
    auto& vorschau = kind<QWidget>(u"pic_Briefkopf"_s);
    zeige(vorschau);
    const QImage leer = vorschau.grab().toImage();
    tippe(u"txt_Bearbeiter_0"_s, u"Huber"_s);
    const QImage mitName = vorschau.grab().toImage();
    EXPECT_NE(mitName, leer);
    tippe(u"txt_TextLinks"_s, u"100"_s);
    EXPECT_NE(vorschau.grab().toImage(), mitName);
    klicke(u"opt_Verband_3"_s);
    auto& fehler = kind<QLabel>(u"lab_Grafikfehler"_s);
    EXPECT_EQ(fehler.text(), QString());
    tippe(u"txt_Datei"_s, ordner.filePath(u"nicht da.png"_s));
    EXPECT_EQ(fehler.text(), texte(Text::DateiNichtGefunden));
    for (const auto& [name, inhalt, meldung] :
         {std::tuple{u"kaputt.svg"_s, QByteArray("<svg"),
                     kannSvg() ? Meldung::BildKeinBild : Meldung::BriefkopfZeichnungZuAufwendig},
          {u"fremd.svg"_s, "<svg><image href='a.png'/></svg>",
           Meldung::BriefkopfZeichnungZuAufwendig}}) {
        const QString datei = ordner.schreibe(name, inhalt);
        tippe(u"txt_Datei"_s, datei);
        EXPECT_EQ(fehler.text(), texte(meldung).arg(datei));
    }
}

TEST_F(OptionenTest, fourthRaceRenamed_renamesTabAndStartList) {
    öffne(2);
    tippe(u"txt_Rasse"_s, u"Sicula"_s);
    EXPECT_EQ(kind<QTabBar>(u"tbs_Rasse"_s).tabText(3), u"Sicula"_s);
    EXPECT_EQ(kind<QTabBar>(u"tbs_Rasse"_s).currentIndex(), 1);
    EXPECT_EQ(kind<QComboBox>(u"cbo_RasseStart"_s).itemText(3), u"Sicula"_s);
}

TEST_F(OptionenTest, everyLanguage_fitsASmallScreenAndRelabels) {
    öffne();
    for (const Sprache sprache : {Sprache::Englisch, Sprache::Französisch, Sprache::Deutsch}) {
        ASSERT_TRUE(texte.SpracheEinstellen(static_cast<int>(sprache)));
        EXPECT_EQ(dialog->windowTitle(), Texte::eintrag(Text::Optionen, sprache));
        EXPECT_EQ(kind<QPushButton>(u"bef_Abbrechen"_s).text(),
                  Texte::eintrag(Text::Abbrechen, sprache));
        EXPECT_EQ(kind<QRadioButton>(u"opt_Datum_0"_s).text(),
                  Texte::eintrag(Text::DatumHeuteLang, sprache));
        EXPECT_LE(dialog->minimumSizeHint().width(), 1280);
        EXPECT_LE(dialog->minimumSizeHint().height(), 680); // without title and task bar
    }
}

TEST_F(OptionenTest, impossibleClassRange_isNamedAndMendedBeforeAnythingIsSaved) {
    struct Fall {
        QString getippt;
        Meldung grund;
    };
    öffne();
    auto& feld = kind<QLineEdit>(u"txt_CIK_1"_s);
    const QColor sonst = feld.palette().color(QPalette::Base);
    for (const Fall& f : {Fall{u"15-01"_s, Meldung::BereichVerkehrt},
                          {u"15-"_s, Meldung::BereichUnfertig},
                          {u"-15"_s, Meldung::BereichUnfertig},
                          {u"1-5-7"_s, Meldung::BereichUnfertig},
                          {u""_s, Meldung::BereichUnfertig},
                          {u"1-31"_s, Meldung::BereichZuHoch},
                          {u"1-115"_s, Meldung::BereichZuHoch},
                          {u"99999-17"_s, Meldung::BereichZuHoch}}) {
        tippe(u"txt_CIK_1"_s, f.getippt);
        QTest::keyClick(&feld, f.getippt.isEmpty() ? Qt::Key_Backspace : Qt::Key_End);
        zeige(kind<QCheckBox>(u"chk_Nummer"_s));
        bestätige();
        EXPECT_TRUE(dialog->isVisible()) << qPrintable(f.getippt);
        EXPECT_TRUE(feld.hasFocus()) << qPrintable(f.getippt);
        EXPECT_EQ(feld.text(), f.getippt);
        QString grund = texte(f.grund);
        grund.replace(u"%1"_s, u"30"_s);
        EXPECT_TRUE(kind<QLabel>(u"lab_Mangel_0"_s).text().contains(grund));
        EXPECT_EQ(feld.accessibleDescription(), grund);
        EXPECT_NE(feld.palette().color(QPalette::Base), sonst);
        EXPECT_FALSE(QFile::exists(inipfad));
    }
    tippe(u"txt_CIK_1"_s, u"1-15"_s);
    EXPECT_FALSE(kind<QLabel>(u"lab_Mangel_0"_s).isVisible());
    bestätige();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_TRUE(ini().contains("Klasse 1C-=01-15"));
}

TEST_F(OptionenTest, minimumSizes_areKept) {
    öffne();
    tippe(u"txt_SollFlügel"_s, u"30"_s);
    tippe(u"txt_SollBienen"_s, u"400"_s); // no share is computed of so many
    bestätige();
    EXPECT_EQ(einstellungen->zahl(Einstellung::SollFlügel), 30);
    EXPECT_LE(einstellungen->zahl(Einstellung::SollBienen), HöchsteAnzahl);
    EXPECT_FALSE(ini().contains("Zielzahl"));
}
