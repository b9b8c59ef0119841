#include "app/fenster.h"
#include "print/vorschau.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

/// The report of the open examination: previews, printing and the user's own wording.
struct Protokolltest : Fenstertest {
    void SetUp() override {
        schreibeIni("[Start]\r\nNeu=False\r\nSprache=0\r\n[Protokoll]\r\nWarnung Merkmale=0\r\n"
                    "Warnung K\xF6nigin=0\r\nWarnung Hantelindex=0\r\n");
        ASSERT_TRUE(starte());
        hg().resize(1280, 800);
    }

    QImage vorschau() const { return kind<QWidget>(u"pic_Vorschau"_s).grab().toImage(); }

    /// Opens the print dialog, lets @p handle act on it and closes it if it is still open.
    void drucke(const std::function<void(QDialog&)>& handle) {
        bool offen = false;
        QTimer::singleShot(0, &hg(), [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            ASSERT_EQ(dialog->objectName(), u"Drucken_"_s);
            offen = true;
            handle(*dialog);
            dialog->reject();
        });
        wähle(u"men_Datei_8"_s);
        EXPECT_TRUE(offen);
    }
    template <typename T>
    static T& im(QDialog& dialog, const QString& name) {
        return tarvel::kind<T>(dialog, name);
    }
};

} // namespace

TEST_F(Protokolltest, preview_showsEveryChangeAtOnce) {
    missFlügel();
    wähle(u"men_Datei_9"_s);
    ASSERT_TRUE(kind<QWidget>(u"pic_Vorschau"_s).isVisible());
    const QImage leer = vorschau();
    QTest::keyClicks(&kind<QLineEdit>(u"txt_Volk"_s), u"77"_s);
    const QImage mitVolk = vorschau();
    EXPECT_NE(leer, mitVolk);
    wähle(u"men_Sprache_2"_s);
    EXPECT_NE(vorschau(), mitVolk);
    const QImage seite1 = vorschau();
    wähle(u"men_Datei_10"_s);
    EXPECT_NE(vorschau(), seite1);
}

TEST_F(Protokolltest, secondPreview_isThereForReportsOfTwoPages) {
    EXPECT_TRUE(kind<QAction>(u"men_Datei_10"_s).isEnabled());
    programm->einstellungen().schreibe(Einstellung::Art, 0);
    wähle(u"men_Ansicht_0"_s);
    EXPECT_FALSE(kind<QAction>(u"men_Datei_10"_s).isEnabled());
    EXPECT_TRUE(kind<QAction>(u"men_Datei_9"_s).isEnabled());
}

TEST_F(Protokolltest, reportOfNothing_isRefused) {
    wähle(u"men_Datei_8"_s);
    EXPECT_THAT(dialoge.meldungen,
                ElementsAre(u"Protokoll drucken: Es ist nichts gemessen. Ein Protokoll braucht "
                            "mindestens einen Flügel oder die Körpermerkmale einer Biene."_s));
    EXPECT_THAT(drucker.aufträge, IsEmpty());
}

TEST_F(Protokolltest, missingValues_areNamedAsTheOptionsAsk) {
    for (const Einstellung warnung : {Einstellung::WarnungMerkmale, Einstellung::WarnungKönigin}) {
        programm->einstellungen().schreibe(warnung, 1);
    }
    missFlügel();
    dialoge.antworten = {Antwort::Nein};
    wähle(u"men_Datei_8"_s);
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_EQ(dialoge.fragen[0].text, u"Es fehlen: Körper-Merkmale, Königin. Wollen Sie das "
                                      "Protokoll trotzdem drucken?"_s);
    EXPECT_THAT(drucker.aufträge, IsEmpty());
}

TEST_F(Protokolltest, printing_usesThePickedPrinterAndClosingBringsTheDefaultBack) {
    missFlügel();
    drucke([](QDialog& dialog) {
        auto& liste = im<QComboBox>(dialog, u"cbo_Drucker"_s);
        EXPECT_EQ(liste.currentText(), u"Imkerei"_s);
        liste.setCurrentText(u"Lager"_s);
        im<QSpinBox>(dialog, u"txt_Kopien"_s).setValue(3);
        QTest::mouseClick(&im<QPushButton>(dialog, u"bef_Drucken"_s), Qt::LeftButton);
        EXPECT_FALSE(dialog.isVisible());
    });
    ASSERT_THAT(drucker.aufträge, SizeIs(1));
    EXPECT_EQ(drucker.aufträge[0].drucker, u"Lager"_s);
    EXPECT_EQ(drucker.aufträge[0].exemplare, 3);
    EXPECT_EQ(drucker.vorgabe, u"Lager"_s);
    dialoge.antworten = {Antwort::Nein, Antwort::Nein};
    EXPECT_TRUE(hg().close());
    EXPECT_EQ(drucker.vorgabe, u"Imkerei"_s);
}

TEST_F(Protokolltest, printerThatRefuses_isNamedAndTheDialogStays) {
    missFlügel();
    drucker.nimmtAn = false;
    drucke([](QDialog& dialog) {
        QTest::keyClick(&dialog, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
    });
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"'Imkerei' nimmt den Auftrag nicht an"_s));
}

TEST_F(Protokolltest, withoutAPrinter_aPdfIsWritten) {
    missFlügel();
    drucker.namen.clear();
    drucker.vorgabe.clear();
    const QString pfad = ordner.filePath(u"Protokoll 100%"_s);
    dialoge.dateien = {pfad};
    drucke([](QDialog& dialog) {
        EXPECT_FALSE(im<QPushButton>(dialog, u"bef_Drucken"_s).isEnabled());
        QTest::keyClick(&dialog, Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(liesGanz(pfad + u".pdf"_s).startsWith("%PDF-"));
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
    EXPECT_EQ(hinweis(), u"'%1.pdf' ist geschrieben."_s.arg(pfad));
}

TEST_F(Protokolltest, dataBesideThePdf_isWrittenAndNeverReplacesUnasked) {
    missFlügel();
    const QString csv = ordner.filePath(u"p.csv"_s);
    for (const Antwort ersetzen : {Antwort::Nein, Antwort::Ja}) {
        dialoge.dateien = {ordner.filePath(u"p.pdf"_s)};
        dialoge.antworten = {ersetzen};
        drucke([&](QDialog& dialog) {
            auto& tabelle = im<QCheckBox>(dialog, u"chk_Tabelle"_s);
            EXPECT_EQ(tabelle.isChecked(), ersetzen == Antwort::Ja); // as it was left last time
            tabelle.setChecked(true);
            if (ersetzen == Antwort::Nein) {
                lege(csv);
            }
            im<QPushButton>(dialog, u"bef_PDF"_s).click();
            EXPECT_EQ(QFileInfo(csv).size() > 0, ersetzen == Antwort::Ja);
        });
    }
    EXPECT_THAT(liesGanz(csv).toStdString(), HasSubstr("x1,y1"));
}

TEST_F(Protokolltest, appendix_followsThePagesOfTheReport) {
    missFlügel();
    programm->einstellungen().schreibe(Einstellung::Anhang, 1);
    wähle(u"men_Datei_10"_s);
    auto& blatt = kind<QWidget>(u"pic_Vorschau"_s);
    const QImage zweite = vorschau();
    QTest::keyClick(&blatt, Qt::Key_PageDown);
    const QImage anhang = vorschau();
    EXPECT_NE(anhang, zweite);
    QTest::keyClick(&blatt, Qt::Key_PageDown);
    EXPECT_EQ(vorschau(), anhang); // the last
    wähle(u"men_Extras_8"_s);      // the texts are tried out on the report's own pages
    EXPECT_EQ(vorschau(), zweite);
    kind<QDialog>(u"Übersetz"_s).close();
    for (const auto& [wahl, seitenzahl] : {std::pair{u"Seite 1, Seite 2, Anhang"_s, 3},
                                           {u"Seite 1"_s, 1},
                                           {u"Seite 2"_s, 1},
                                           {u"Anhang"_s, 1}}) {
        const QString pfad = ordner.filePath(wahl + u".pdf"_s);
        dialoge.dateien = {pfad};
        drucke([&eintrag = wahl](QDialog& dialog) {
            im<QComboBox>(dialog, u"cbo_Seiten"_s).setCurrentText(eintrag);
            im<QPushButton>(dialog, u"bef_PDF"_s).click();
        });
        EXPECT_EQ(liesGanz(pfad).count("/Type /Page\n"), seitenzahl) << qPrintable(wahl);
    }
}

TEST_F(Protokolltest, defaultPrinterOfACrashedRun_isBroughtBackAndSaid) {
    Einstellungen& e = programm->einstellungen();
    e.schreibe(Einstellung::DruckerVorher, u"Imkerei"_s);
    e.schreibe(Einstellung::DruckerGesetzt, u"Lager"_s);
    dialoge.antworten = {Antwort::Nein, Antwort::Nein};
    programm.reset();
    drucker.vorgabe = u"Lager"_s;
    ASSERT_TRUE(starte());
    QTRY_COMPARE(drucker.vorgabe, u"Imkerei"_s);
    EXPECT_TRUE(hinweis().endsWith(u"Standarddrucker ist wieder 'Imkerei'."_s));
}

TEST_F(Protokolltest, bodyMarksAlone_giveAReport) {
    wähle(u"men_Ansicht_2"_s);
    kind<QAbstractButton>(u"bef_Übernehmen"_s).click();
    dialoge.dateien = {ordner.filePath(u"marken.pdf"_s)};
    dialoge.antworten = {Antwort::Ja}; // the indices are missing
    drucke([](QDialog& dialog) { im<QPushButton>(dialog, u"bef_PDF"_s).click(); });
    EXPECT_TRUE(QFile::exists(ordner.filePath(u"marken.pdf"_s)));
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
}

TEST_F(Protokolltest, pdfThatCannotBeWritten_isSaid) {
    missFlügel();
    drucker.namen.clear();
    dialoge.dateien = {ordner.filePath(u"fehlt/p.pdf"_s)};
    drucke([](QDialog& dialog) {
        QTest::mouseClick(&im<QPushButton>(dialog, u"bef_PDF"_s), Qt::LeftButton);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_FALSE(im<QPushButton>(dialog, u"bef_Drucken"_s).isEnabled());
    });
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"p.pdf"_s));
}

TEST_F(Protokolltest, ownWording_isTestedInThePreviewAndPrintedWhenTheOptionsSaySo) {
    missFlügel();
    wähle(u"men_Datei_9"_s);
    const QImage standard = vorschau();
    wähle(u"men_Extras_8"_s);
    auto& editor = kind<QDialog>(u"Übersetz"_s);
    ASSERT_TRUE(editor.isVisible());
    tarvel::kind<QLineEdit>(editor, u"txt_Text_0"_s).setText(u"Flügelindex"_s);
    tarvel::kind<QPushButton>(editor, u"bef_Test"_s).click();
    const QImage getestet = vorschau();
    EXPECT_NE(getestet, standard);
    wähle(u"men_Datei_10"_s); // the other page is tried out too, and so is this one again
    wähle(u"men_Datei_9"_s);
    EXPECT_EQ(vorschau(), getestet);
    editor.close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    wähle(u"men_Datei_9"_s);
    EXPECT_EQ(vorschau(), standard); // the option is off
    programm->einstellungen().schreibe(Einstellung::Übersetzen, 1);
    wähle(u"men_Datei_9"_s);
    EXPECT_EQ(vorschau(), getestet);
}

TEST_F(Protokolltest, ownWordsStored_areOfferedForTheReportAtOnce) {
    missFlügel();
    for (const Antwort antwort : {Antwort::Nein, Antwort::Ja}) {
        wähle(u"men_Extras_8"_s);
        auto& editor = kind<QDialog>(u"Übersetz"_s);
        tarvel::kind<QLineEdit>(editor, u"txt_Text_0"_s).setText(u"Flügelindex"_s);
        dialoge.antworten = {antwort};
        tarvel::kind<QPushButton>(editor, u"bef_OK"_s).click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(programm->einstellungen().schalter(Einstellung::Übersetzen),
                  antwort == Antwort::Ja);
    }
    wähle(u"men_Extras_8"_s); // used by now: nothing to ask
    tarvel::kind<QPushButton>(kind<QDialog>(u"Übersetz"_s), u"bef_OK"_s).click();
    EXPECT_THAT(dialoge.antworten, IsEmpty());
}

TEST_F(Protokolltest, languagePack_isLoadedKeptForTheNextStartAndTakenAway) {
    const QString pfad =
        ordner.schreibe(u"sl.txt"_s, "Tarvel language pack\nlanguage = Slovenski\nText.Ja = x\n"
                                     "Text.MenüProtokollDrucken = Natisni poro\xC4\x8Dilo\n");
    wähle(u"men_Extras_8"_s);
    dialoge.dateien = {pfad};
    kind<QAction>(u"men_Sprachpaket_0"_s).trigger();
    EXPECT_EQ(kind<QAction>(u"men_Datei_8"_s).text().remove(u'&').left(15), u"Natisni poročil"_s);
    ASSERT_THAT(dialoge.meldungen, SizeIs(1)); // the line with a word that stands in files
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"1 Zeilen (3)"_s));
    kind<QDialog>(u"Übersetz"_s).close();
    programm.reset();
    ASSERT_TRUE(starte());
    EXPECT_EQ(kind<QAction>(u"men_Datei_8"_s).text().remove(u'&').left(15), u"Natisni poročil"_s);
    wähle(u"men_Extras_8"_s);
    kind<QAction>(u"men_Sprachpaket_2"_s).trigger();
    EXPECT_EQ(kind<QAction>(u"men_Datei_8"_s).text().remove(u'&').left(9), u"Protokoll"_s);
}

TEST_F(Protokolltest, closingWithOwnWordsNotStored_asksForThem) {
    wähle(u"men_Extras_8"_s);
    auto& editor = kind<QDialog>(u"Übersetz"_s);
    auto& feld = tarvel::kind<QLineEdit>(editor, u"txt_Text_0"_s);
    feld.end(false);
    QTest::keyClicks(&feld, u"x"_s);
    dialoge.antworten = {Antwort::Abbrechen};
    EXPECT_FALSE(hg().close());
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_EQ(dialoge.fragen[0].text, u"' Protokoll übersetzen ' wurde geändert. Wollen Sie die "
                                      "Änderung speichern."_s);
    dialoge.antworten = {Antwort::Ja};
    EXPECT_TRUE(hg().close());
    EXPECT_TRUE(ini().contains("Item505=x\r\n")) << ini().toStdString();
}
