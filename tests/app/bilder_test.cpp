// Pictures in the real window: their resolution, and finding them again after they were moved.

#include "app/fenster.h"
#include "measure/bildsuche.h"

#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::HasSubstr;

namespace {

struct Bildertest : Fenstertest {
    QString status() const { return kind<QLabel>(u"lab_Status"_s).text(); }
    QPushButton& angebot() const { return kind<QPushButton>(u"bef_Bildauflösung"_s); }
    int dpi(int nummer = 1) const { return reihe().messung(nummer)->aufnahme.dpi; }
    QString maleMitAuflösung(int dpi, const QString& name) const {
        QImage bild(906, 320, QImage::Format_Grayscale8);
        bild.fill(210);
        bild.setDotsPerMeterX(qRound(dpi / 0.0254));
        bild.setDotsPerMeterY(qRound(dpi / 0.0254));
        EXPECT_TRUE(bild.save(ordner.filePath(name)));
        return ordner.filePath(name);
    }
    QString datenbank() const {
        const QFileInfoList dateien = QDir(ordner.path()).entryInfoList({u"*.tdb"_s});
        return dateien.isEmpty() ? QString() : dateien.front().absoluteFilePath();
    }
    /// A stored examination with one wing, on a picture that then goes into another folder.
    QString missUndVerlege() {
        EXPECT_TRUE(starte());
        missFlügel();
        wähle(u"men_Datei_2"_s);
        EXPECT_FALSE(hg().untersuchung().geändert());
        EXPECT_TRUE(hg().close());
        EXPECT_TRUE(QDir(ordner.path()).mkpath(u"archiv/2025"_s));
        const QString neu = ordner.filePath(u"archiv/2025/flügel 100%.png"_s);
        EXPECT_TRUE(QFile::rename(ordner.filePath(u"flügel 100%.png"_s), neu));
        EXPECT_TRUE(starte());
        hg().resize(1280, 800);
        QTest::qWait(0);
        EXPECT_EQ(reihe().nummern().size(), 1U);
        return neu;
    }
};

} // namespace

TEST_F(Bildertest, resolutionOfThePicture_isOffered_andNeverWrittenAsAPosition) {
    ASSERT_TRUE(starte());
    hg().resize(1280, 800);
    const QByteArray vorher = ini();
    ASSERT_TRUE(hg().ladeBild(maleMitAuflösung(72, u"72.png"_s)));
    EXPECT_TRUE(angebot().isHidden());
    ASSERT_TRUE(hg().ladeBild(maleMitAuflösung(1600, u"1600.png"_s)));
    EXPECT_THAT(hinweis().toStdString(), HasSubstr("1600 dpi"));
    ASSERT_TRUE(angebot().isVisible());
    QTest::mouseClick(&angebot(), Qt::LeftButton);
    EXPECT_TRUE(angebot().isHidden());
    EXPECT_EQ(kind<QComboBox>(u"cbo_dpi"_s).currentText(), u"1600 dpi"_s);
    EXPECT_EQ(kind<QComboBox>(u"cbo_dpi"_s).findData(2400), 3);
    klickeFlügel();
    EXPECT_EQ(dpi(), 1600);
    EXPECT_EQ(ini(), vorher);
    dialoge.antworten = {Antwort::Nein}; // not saved
    wähle(u"men_Datei_0"_s);
    EXPECT_THAT(status().toStdString(), HasSubstr("1600 dpi")); // the same picture is open
}

TEST_F(Bildertest, resolutionSetForTheNextScan_leavesTheMeasuredWingsTheirs) {
    ASSERT_TRUE(starte());
    hg().resize(1280, 800);
    const auto wähleAuflösung = [this](const QString& wert) {
        auto& box = kind<QComboBox>(u"cbo_dpi"_s);
        box.setCurrentText(wert);
        Q_EMIT box.activated(box.currentIndex());
    };
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    wähleAuflösung(u"2400 dpi"_s);
    klickeFlügel();
    const float DV = reihe().chartwerte(1).DV;
    const QString zeile = reihe().hiDvZeilen().at(0).dv;
    wähleAuflösung(u"1200 dpi"_s);
    EXPECT_THAT(
        hinweis().toStdString(),
        HasSubstr("1200 dpi gelten für die nächsten Flügel. Gemessene Flügel dieses Bildes, "
                  "die bei ihrer Auflösung bleiben: 1"));
    wähle(u"men_Datei_2"_s);
    EXPECT_FALSE(hg().untersuchung().geändert());
    ASSERT_TRUE(hg().close());
    ASSERT_TRUE(starte());
    EXPECT_EQ(dpi(), 2400);
    EXPECT_EQ(reihe().hiDvZeilen().at(0).dv, zeile);
    EXPECT_FLOAT_EQ(reihe().chartwerte(1).DV, DV);
    EXPECT_EQ(kind<QComboBox>(u"cbo_dpi"_s).currentText(), u"2400 dpi"_s);
    wähle(u"men_Datei_0"_s);
    EXPECT_EQ(kind<QComboBox>(u"cbo_dpi"_s).currentText(), u"1200 dpi"_s);
}

TEST_F(Bildertest, resolutionOfMeasuredWings_isCorrectedAfterShowingTheChange_inOneStep) {
    ASSERT_TRUE(starte());
    missFlügel();
    ASSERT_TRUE(hg().ladeBild(maleBild({910, 320}, u"zwei.png"_s)));
    klickeFlügel();
    ASSERT_TRUE(hinweis().contains(u"Dazu würden 2400 dpi passen."_s)) << qPrintable(hinweis());
    const int vorher = dpi();
    const float DV = reihe().chartwerte(1).DV;
    for (const bool ja : {false, true}) {
        QTimer::singleShot(0, [ja] {
            auto& fenster = *qobject_cast<QDialog*>(QApplication::activeModalWidget());
            auto& bef_OK = tarvel::kind<QPushButton>(fenster, u"bef_OK"_s);
            auto& wahl = tarvel::kind<QComboBox>(fenster, u"cbo_Auflösung"_s);
            EXPECT_EQ(wahl.currentData(), 2400); // what fits the wings
            wahl.setCurrentIndex(wahl.findData(1200));
            EXPECT_FALSE(bef_OK.isEnabled()); // nothing would change
            wahl.setCurrentIndex(wahl.findData(2400));
            auto& tabelle = tarvel::kind<QTableWidget>(fenster, u"tab_Wechsel"_s);
            EXPECT_EQ(tabelle.rowCount(), 1);
            EXPECT_NE(tabelle.item(0, 2)->text(), tabelle.item(0, 3)->text());
            EXPECT_TRUE(bef_OK.isEnabled());
            auto& bilder = tarvel::kind<QComboBox>(fenster, u"cbo_Bild"_s);
            bilder.setCurrentIndex(bilder.findText(u"alle Bilder der Untersuchung (Flügel: 2)"_s));
            EXPECT_EQ(tabelle.rowCount(), 2);
            EXPECT_EQ(wahl.currentData(), 2400);
            QTest::mouseClick(ja ? &bef_OK
                                 : &tarvel::kind<QPushButton>(fenster, u"bef_Abbrechen"_s),
                              Qt::LeftButton);
        });
        wähle(u"men_Bearbeiten_20"_s);
        EXPECT_EQ(dpi(1), ja ? 2400 : vorher);
        EXPECT_EQ(dpi(2), ja ? 2400 : vorher);
        EXPECT_EQ(reihe().chartwerte(1).DV == DV, !ja);
        EXPECT_EQ(hinweis().contains(u"2400 dpi passen"_s), !ja) << qPrintable(hinweis());
    }
    EXPECT_THAT(status().toStdString(), HasSubstr("2400 dpi"));
    wähle(u"men_Bearbeiten_3"_s);
    EXPECT_EQ(dpi(1), vorher);
    EXPECT_EQ(dpi(2), vorher);
    EXPECT_EQ(reihe().chartwerte(1).DV, DV);
}

TEST_F(Bildertest, movedPicture_isAskedFor_andServesWithoutChangingTheExamination) {
    const QString neu = missUndVerlege();
    wähle(u"men_Bearbeiten_1"_s);
    EXPECT_THAT(dialoge.fragen.back().text.toStdString(), HasSubstr("Wo liegt es jetzt?"));
    EXPECT_FALSE(bild().isVisible());
    dialoge.antworten = {Antwort::Ja};
    dialoge.dateien = {maleBild({906, 320}, u"anderes.bmp"_s)};
    wähle(u"men_Bearbeiten_1"_s);
    EXPECT_THAT(dialoge.meldungen.back().toStdString(), HasSubstr("ist ein anderes Bild"));
    dialoge.antworten = {Antwort::Ja};
    dialoge.dateien = {neu};
    wähle(u"men_Bearbeiten_1"_s);
    EXPECT_TRUE(bild().isVisible());
    EXPECT_EQ(reihe().messung(1)->bilddatei, neu);
    QTest::keyClick(&bild(), Qt::Key_Escape);
    EXPECT_TRUE(übersicht().isVisible()); // what was found stays open
    EXPECT_FALSE(hg().untersuchung().geändert());
}

TEST_F(Bildertest, pictureLoadedByHandElsewhere_showsItsWings_andComesBackAtTheNextStart) {
    const QString neu = missUndVerlege();
    ASSERT_TRUE(hg().ladeBild(neu));
    EXPECT_EQ(reihe().messung(1)->bilddatei, neu);
    EXPECT_FALSE(hg().untersuchung().geändert());
    EXPECT_FALSE(kind<QAction>(u"men_Bearbeiten_3"_s).isEnabled());       // no step
    EXPECT_NE(hg().untersuchung().zusatz().Urteil, Ablageurteil::Keines); // nothing was judged anew
    hg().öffneDateien({datenbank()}); // the stored examination once more, with the picture open
    EXPECT_EQ(reihe().messung(1)->bilddatei, neu);
    EXPECT_FALSE(hg().untersuchung().geändert());
    ASSERT_TRUE(hg().close());
    ASSERT_TRUE(starte());
    EXPECT_TRUE(QTest::qWaitFor([&] { return status().contains(u"flügel 100%.png"_s); }));
    EXPECT_EQ(reihe().messung(1)->bilddatei, neu);
    EXPECT_THAT(dialoge.meldungen, testing::IsEmpty());
}

TEST_F(Bildertest, pictureThatIsTooLarge_isRefusedWithWhatWouldBePossible) {
    ASSERT_TRUE(starte());
    QFile datei(maleBild({9, 9}, u"riesig.bmp"_s));
    for (const auto& [bits, möglich] : {std::pair{24, "600 000 000 px"}, {32, "524 000 000 px"}}) {
        ASSERT_TRUE(datei.open(QIODevice::ReadWrite));
        datei.seek(18);
        datei.write("\x60\xEA\0\0\x60\xEA\0\0\1\0", 10); // the size, and one layer
        datei.putChar(static_cast<char>(bits));
        datei.close();
        EXPECT_FALSE(hg().ladeBild(datei.fileName()));
        EXPECT_THAT(dialoge.meldungen.back().toStdString(),
                    testing::AllOf(HasSubstr("60000 × 60000 px"), HasSubstr(möglich)));
    }
}
