#include "app/fenster.h"

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

const QByteArray messdatei =
    "Drohnen 1\r\n24\r\n7\r\n5\r\n12\r\n0099\r\nZo\xEB Gro\xDF\r\nx\r\ny\r\n"
    "Besitzer\r\nVolk 3\r\nBelegstelle\r\nkopf\r\nkopf\r\n"
    "001 2.71 19.8\r\n002 2.50 18.8\r\nEndeCI\r\nkopf\r\n"
    "EndeHI\r\n\r\n\r\n\r\n0\r\n";

const QByteArray csvKopf = "wing,x1,y1,x2,y2,x3,y3,x4,y4,x5,y5,x6,y6,x7,y7,x8,y8\n";

/// A plausible wing, @p tiefer pixels further down.
QByteArray flügelzeile(const QByteArray& name, int tiefer) {
    const std::pair<int, int> punkte[] = {{400, 50},  {92, 75},   {360, 56},  {288, 62},
                                          {286, 116}, {237, 147}, {216, 143}, {292, 201}};
    QByteArray zeile = name;
    for (const auto& [x, y] : punkte) {
        zeile += ',' + QByteArray::number(x) + ',' + QByteArray::number(y + tiefer);
    }
    return zeile + '\n';
}

/// Measurement files that become the open examination.
struct Einlesetest : Fenstertest {
    void SetUp() override { ASSERT_TRUE(starte()); }

    QString datei(const QByteArray& inhalt, const QString& name = u"Königin 7.Bee"_s) const {
        return ordner.schreibe(name, inhalt);
    }
    QByteArray inhalt(const QString& name) const { return ordner.lies(name); }
    Ergebnistabelle tabelle() const {
        return Ergebnistabelle(ordner.filePath(u"Meine Tabelle.tdb"_s));
    }
    /// Measurement files that differ in their number, which is their name too.
    QStringList messdateien(int anzahl, const QString& unterordner = {}) const {
        QStringList dateien;
        for (int i = 1; i <= anzahl; ++i) {
            const QByteArray nummer = "B" + QByteArray::number(i).rightJustified(3, '0');
            dateien << datei(QByteArray(messdatei).replace("0099", nummer),
                             unterordner + QString::fromLatin1(nummer) + u".Bee"_s);
        }
        return dateien;
    }
    QString text(const QString& feld) const { return kind<QLineEdit>(feld).text(); }
};

} // namespace

TEST_F(Einlesetest, measurementFile_becomesTheOpenExamination) {
    dialoge.dateien = {datei(messdatei)};
    wähle(u"men_Datei_3"_s);
    EXPECT_TRUE(dialoge.filter.value(0).startsWith(u"Messdateien (*.Bee"_s));
    EXPECT_EQ(text(u"txt_UNr"_s), u"0099"_s);
    EXPECT_EQ(text(u"txt_Jahr"_s), u"2024"_s);
    EXPECT_EQ(text(u"txt_Volk"_s), u"Volk 3"_s);
    EXPECT_EQ(kind<QComboBox>(u"cbo_Name"_s).currentText(), u"Zoë Groß"_s);
    EXPECT_EQ(kind<QComboBox>(u"cbo_Geschlecht"_s).currentIndex(), 1);
    EXPECT_THAT(reihe().ciZeilen(), SizeIs(2));
    EXPECT_TRUE(kind<QAction>(u"men_Ansicht_3"_s).isChecked()); // the chart is redrawn
    EXPECT_TRUE(hg().isWindowModified());
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
}

TEST_F(Einlesetest, unsavedWork_isAskedForFirst) {
    QTest::keyClicks(&kind<QLineEdit>(u"txt_Volk"_s), u"9"_s);
    dialoge.dateien = {datei(messdatei)};
    dialoge.antworten = {Antwort::Nein, Antwort::Abbrechen};
    wähle(u"men_Datei_3"_s);
    EXPECT_EQ(text(u"txt_Volk"_s), u"9"_s);
    EXPECT_TRUE(reihe().leer());
}

TEST_F(Einlesetest, fileThatIsNone_isNamedAndTheExaminationStays) {
    QTest::keyClicks(&kind<QLineEdit>(u"txt_Volk"_s), u"9"_s);
    const QByteArray zeile = flügelzeile("1", 0);
    QByteArray zuViele = csvKopf;
    for (int i = 0; i <= 200; ++i) {
        zuViele += flügelzeile(QByteArray::number(i), 0);
    }
    struct Fall {
        QString name;
        QByteArray inhalt;
        int zeile;
    };
    const QByteArray riesig(17 * 1024 * 1024, '1');
    for (const Fall& fall :
         {Fall{u"leer.Bee"_s, {}, 1},
          {u"binär.Bee"_s, QByteArray(300, '\0'), 1},
          {u"text.Bee"_s, "x\r\ny\r\n", 1},
          {u"riesig.Bee"_s, riesig, 1},
          {u"leer.csv"_s, {}, 1},
          {u"binär.csv"_s, QByteArray(300, '\0'), 1},
          {u"riesig.csv"_s, riesig, 1},
          {u"messdatei.csv"_s, messdatei, 1},
          {u"nur kopf.csv"_s, csvKopf, 1},
          {u"kurz.csv"_s, csvKopf + zeile + "2,5\n", 3},
          {u"zahl.csv"_s, csvKopf + zeile + flügelzeile("2", 0).replace("400", "4oo"), 3},
          {u"doppelt.csv"_s, csvKopf + zeile + zeile, 3},
          {u"zu viele.csv"_s, zuViele, 202},
          {u"punkte.tps"_s, "LM=7\n1 1\n", 1},
          {u"kurz.tps"_s, "LM=8\n1 1\n2 2\n", 3}}) {
        dialoge.meldungen.clear();
        EXPECT_FALSE(hg().öffneDateien({datei(fall.inhalt, fall.name)}));
        ASSERT_THAT(dialoge.meldungen, SizeIs(1)) << qPrintable(fall.name);
        EXPECT_TRUE(dialoge.meldungen[0].contains(fall.name)) << qPrintable(dialoge.meldungen[0]);
        EXPECT_TRUE(dialoge.meldungen[0].contains(u"Zeile %1:"_s.arg(fall.zeile)))
            << qPrintable(dialoge.meldungen[0]);
    }
    EXPECT_FALSE(hg().öffneDatei(ordner.filePath(u"fehlt.bee"_s)));
    EXPECT_FALSE(hg().öffneDatei(ordner.filePath(u"fehlt.tps"_s)));
#ifdef Q_OS_UNIX
    // Nobody writes into these pipes, and nobody will.
    const QStringList rohre{ordner.filePath(u"rohr.Bee"_s), ordner.filePath(u"rohr.csv"_s)};
    for (const QString& rohr : rohre) {
        ASSERT_EQ(::mkfifo(QFile::encodeName(rohr).constData(), 0600), 0);
        EXPECT_FALSE(hg().öffneDatei(rohr));
        EXPECT_TRUE(dialoge.meldungen.last().endsWith(u"zu einem Programm, keine Datei."_s));
    }
    hg().öffneDateien({rohre[0], rohre[0]}); // as several are imported
    EXPECT_TRUE(dialoge.meldungen.last().contains(rohre[0]));
#endif
    EXPECT_EQ(text(u"txt_Volk"_s), u"9"_s);
    EXPECT_THAT(dialoge.fragen, IsEmpty());
}

TEST_F(Einlesetest, wingsOfSeveralResolutions_keepTheirOwnAndTheOthersAreAskedFor) {
    const QByteArray kopf = "dpi," + csvKopf;
    const QString beide =
        datei(kopf + "1200," + flügelzeile("a", 0) + "2400," + flügelzeile("b", 0), u"beide.csv"_s);
    ASSERT_TRUE(hg().öffneDatei(beide));
    EXPECT_THAT(dialoge.auswahlen, IsEmpty()); // the file says it all
    EXPECT_EQ(reihe().messung(1)->aufnahme.dpi, 1200);
    EXPECT_EQ(reihe().messung(2)->aufnahme.dpi, 2400);
    EXPECT_TRUE(hinweis().contains(u"1200, 2400 dpi"_s)) << qPrintable(hinweis());
    dialoge.antworten = {Antwort::Nein};
    const QString gleiche =
        datei(kopf + "2400," + flügelzeile("a", 0) + "2400," + flügelzeile("b", 0), u"gl.csv"_s);
    ASSERT_TRUE(hg().öffneDatei(gleiche));
    EXPECT_THAT(dialoge.auswahlen, IsEmpty());
    EXPECT_EQ(reihe().messung(2)->aufnahme.dpi, 2400);
    EXPECT_EQ(hinweis(),
              u"Eingelesene Flügel: 2, gerechnet mit den 2400 dpi, die in der Datei stehen."_s);

    dialoge.antworten = {Antwort::Nein};
    dialoge.wahl = 3;
    const QString eine =
        datei(kopf + "600," + flügelzeile("a", 0) + "," + flügelzeile("b", 0), u"eine.csv"_s);
    ASSERT_TRUE(hg().öffneDatei(eine));
    ASSERT_THAT(dialoge.auswahlen, SizeIs(1));
    EXPECT_TRUE(dialoge.auswahlen[0].startsWith(u"Flügel in 'eine.csv' ohne Auflösung: 1."_s));
    EXPECT_EQ(reihe().messung(1)->aufnahme.dpi, 600);
    EXPECT_EQ(reihe().messung(2)->aufnahme.dpi, 2400);

    dialoge.antworten = {Antwort::Nein};
    QByteArray tps = "LM=8\n400 50\n92 75\n360 56\n288 62\n286 116\n237 147\n216 143\n292 201\n";
    ASSERT_TRUE(hg().öffneDatei(datei(tps + "ID=1\nSCALE=0.02117\n", u"maß.tps"_s)));
    EXPECT_TRUE(dialoge.auswahlen.last().contains(u"Millimeter je Bildpunkt"_s));

    // Scales that differ say nothing about their unit: what was made of them is not overlooked.
    EXPECT_THAT(dialoge.meldungen, SizeIs(1)); // that there is no picture
    dialoge.antworten = {Antwort::Nein};
    const QString maße =
        datei(tps + "ID=1\nSCALE=0.02117\n" + tps + "ID=2\nSCALE=0.01058\n" + tps + "ID=3\n",
              u"maße.tps"_s);
    ASSERT_TRUE(hg().öffneDatei(maße));
    EXPECT_EQ(reihe().messung(2)->aufnahme.dpi, 2401);
    ASSERT_THAT(dialoge.meldungen, SizeIs(3));
    for (const QString& teil :
         {u"1200 dpi: Flügel 001 (aus SCALE"_s, u"2401 dpi: Flügel 002 (aus"_s,
          u"2400 dpi: Flügel 003 (angenommen)"_s}) {
        EXPECT_TRUE(dialoge.meldungen[1].contains(teil)) << qPrintable(dialoge.meldungen[1]);
    }
}

TEST_F(Einlesetest, pictureThatIsNone_isNotAskedForItsSizeAndTheWingsAreTaken) {
    datei("<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink'>"
          "<image width='9' height='9' xlink:href='rec.svg'/></svg>",
          u"rec.svg"_s);
    QByteArray punkte = "LM=8\n400 50\n92 75\n360 56\n288 62\n286 116\n237 147\n216 143\n292 201\n";
    const QString pfad =
        datei(punkte + "IMAGE=rec.svg\nID=1\n" + punkte + "IMAGE=.\nID=2\n", u"bilder.tps"_s);
    ASSERT_TRUE(hg().öffneDatei(pfad));
    EXPECT_THAT(reihe().ciZeilen(), SizeIs(2));
    ASSERT_THAT(dialoge.meldungen, SizeIs(1)); // they lie in no picture
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"rec.svg"_s));
    dialoge.dateien = {ordner.filePath(u"hinaus.tps"_s)};
    wähle(u"men_Datei_21"_s);
    EXPECT_THAT(dialoge.meldungen, SizeIs(2));
    EXPECT_FALSE(QFile::exists(ordner.filePath(u"hinaus.tps"_s)));
}

TEST_F(Einlesetest, unreadableLines_areNamedAndTheRestIsTaken) {
    QByteArray inhalt = messdatei;
    inhalt.replace("002 2.50 18.8", "00x 2.50 18.8");
    EXPECT_TRUE(hg().öffneDatei(datei(inhalt)));
    EXPECT_THAT(reihe().ciZeilen(), SizeIs(1));
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"16"_s)) << qPrintable(dialoge.meldungen[0]);
}

TEST_F(Einlesetest, severalFiles_becomeExaminationsOfTheResultsFile) {
    QTest::keyClicks(&kind<QLineEdit>(u"txt_Volk"_s), u"9"_s);
    dialoge.dateien = messdateien(3);
    dialoge.dateien.insert(1, datei("nichts", u"A.Bee"_s));
    dialoge.dateien << dialoge.dateien.constFirst(); // its number is there by then
    wähle(u"men_Datei_3"_s);
    EXPECT_EQ(hinweis(), u"Als Untersuchungen gespeichert: 3 von 5 Dateien."_s);
    EXPECT_EQ(tabelle().anzahl(), 3);
    EXPECT_EQ(tabelle().lade(u"B002"_s)->VOLK, u"Volk 3"_s);
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"A.Bee – nicht gespeichert. Zeile 1: "_s));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"B001.Bee – nicht gespeichert. Zeile 6: "_s));
    EXPECT_EQ(text(u"txt_Volk"_s), u"9"_s);
    EXPECT_THAT(dialoge.fragen, IsEmpty());
}

TEST_F(Einlesetest, folder_isStoredInTheOrderOfItsNames) {
    QDir(ordner.path()).mkdir(u"alt"_s);
    dialoge.dateien = {ordner.filePath(u"alt"_s)};
    wähle(u"men_Datei_20"_s);
    ASSERT_THAT(dialoge.meldungen, SizeIs(1)); // no file in it
    messdateien(2, u"alt/"_s);
    datei(QByteArray(messdatei).replace("0099", ""), u"alt/c.BEE"_s); // gets the next number
    EXPECT_EQ(text(u"txt_UNr"_s), u"0012025"_s);
    EXPECT_TRUE(hg().öffneDateien({ordner.filePath(u"alt"_s)}));
    EXPECT_EQ(tabelle().anzahl(), 3);
    EXPECT_TRUE(tabelle().lade(u"0012025"_s));
    EXPECT_NE(text(u"txt_UNr"_s), u"0012025"_s); // the one that is not begun gives way
}

TEST_F(Einlesetest, importIntoAResultsFileThatHasGone_isToldAndMakesNone) {
    const QString pfad = tabelle().pfad();
    ASSERT_TRUE(QFile::remove(pfad));
    EXPECT_FALSE(hg().öffneDateien(messdateien(2)));
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"Meine Tabelle.tdb"_s));
    EXPECT_FALSE(QFile::exists(pfad));
}

TEST_F(Einlesetest, stoppedImport_keepsWhatIsStored) {
    constexpr int anzahl = 12;
    QTimer taste;
    QObject::connect(&taste, &QTimer::timeout, &hg(), [] {
        if (auto* fenster = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget())) {
            QTest::keyClick(fenster, Qt::Key_Escape);
        }
    });
    taste.start(0);
    EXPECT_TRUE(hg().öffneDateien(messdateien(anzahl)));
    EXPECT_GT(tabelle().anzahl(), 0);
    EXPECT_LT(tabelle().anzahl(), anzahl);
    EXPECT_EQ(hinweis(),
              u"Als Untersuchungen gespeichert: %1 von 12 Dateien."_s.arg(tabelle().anzahl()));
}

TEST_F(Einlesetest, coordinates_becomeANewExaminationAtTheResolutionThatIsChosen) {
    const QString csv = datei(csvKopf + flügelzeile("a", 0) + flügelzeile("b", 7) + "c" +
                                  QByteArray(16, ',') + '\n',
                              u"Flügel.csv"_s);
    dialoge.wahl = -1;
    EXPECT_FALSE(hg().öffneDatei(csv));
    EXPECT_TRUE(reihe().leer());
    dialoge.wahl = 3;
    dialoge.dateien = {csv};
    wähle(u"men_Datei_3"_s);
    ASSERT_THAT(dialoge.auswahlen, SizeIs(2));
    EXPECT_TRUE(dialoge.auswahlen[1].contains(u"Flügel.csv"_s));
    EXPECT_TRUE(dialoge.auswahlen[1].endsWith(u": 2"_s)); // 1200 dpi
    EXPECT_THAT(reihe().nummern(), ElementsAre(1, 2));
    EXPECT_EQ(reihe().messung(2)->aufnahme.dpi, 2400);
    EXPECT_EQ(reihe().ciZeilen()[0].wert, reihe().ciZeilen()[1].wert);
    EXPECT_EQ(hinweis(), u"Eingelesene Flügel: 2, gerechnet mit 2400 dpi."_s);
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"Zeile 4: 'c': "_s));
    EXPECT_TRUE(hg().isWindowModified());
}

TEST_F(Einlesetest, coordinatesWithoutAnyValue_changeNothing) {
    QTest::keyClicks(&kind<QLineEdit>(u"txt_Volk"_s), u"9"_s);
    const QByteArray zusammen = flügelzeile("7", 0).replace("216,143", "237,147");
    EXPECT_FALSE(hg().öffneDatei(datei(csvKopf + zusammen, u"a.csv"_s)));
    EXPECT_EQ(text(u"txt_Volk"_s), u"9"_s);
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"bleibt, wie sie ist"_s));
    EXPECT_THAT(dialoge.fragen, IsEmpty());
}

TEST_F(Einlesetest, kindThatAFileBrought_endsWithItsExamination) {
    EXPECT_TRUE(hg().öffneDatei(datei(QByteArray(messdatei).replace("Drohnen 1", "A0"))));
    EXPECT_TRUE(kind<QAction>(u"men_Betriebsart_0"_s).isChecked());
    EXPECT_TRUE(hg().öffneDatei(datei(csvKopf + flügelzeile("a", 0), u"a.csv"_s)));
    EXPECT_TRUE(kind<QAction>(u"men_Betriebsart_1"_s).isChecked());
    EXPECT_THAT(reihe().hiDvZeilen(), SizeIs(1));
}

TEST_F(Einlesetest, exportedWings_comeBackTheSame) {
    wähle(u"men_Betriebsart_1"_s);
    kind<QComboBox>(u"cbo_dpi"_s).setCurrentIndex(3);
    kind<QComboBox>(u"cbo_dpi"_s).activated(3);
    missFlügel();
    kind<QComboBox>(u"cbo_dpi"_s).setCurrentIndex(1);
    kind<QComboBox>(u"cbo_dpi"_s).activated(1);
    const HiDvZeile gemessen = reihe().hiDvZeilen().at(0);
    for (const QString& name : {u"Flügel 5 %1.csv"_s, u"-punkte.tps"_s}) {
        dialoge.dateien = {ordner.filePath(name)};
        wähle(u"men_Datei_21"_s);
        EXPECT_TRUE(hinweis().contains(name)) << qPrintable(hinweis());
        ASSERT_TRUE(hg().öffneDateien({ordner.filePath(name)})) << qPrintable(name);
        EXPECT_THAT(reihe().hiDvZeilen(), ElementsAre(gemessen)); // at its own resolution
        // Laid onto the picture again, which lies beside.
        EXPECT_NEAR(reihe().messung(1)->punkte.PunktY[8], 201, 0.01);
    }
    EXPECT_EQ(inhalt(u"-punkte.tps"_s).count("LM=8"), 1);
    EXPECT_TRUE(inhalt(u"Flügel 5 %1.csv"_s).contains("\n0012025,2025-06-15,Carnica,workers,1,"));
}

TEST_F(Einlesetest, tpsWithoutThePicture_isWrittenOnlyOfWingsThatKeepItsSizeAndNotedWhenRead) {
    missFlügel();
    const HiDvZeile gemessen = reihe().hiDvZeilen().at(0);
    const QString tps = ordner.filePath(u"a.tps"_s);
    dialoge.dateien = {tps};
    wähle(u"men_Datei_21"_s);
    EXPECT_TRUE(inhalt(u"a.tps"_s).startsWith("LM=8\n400 270\n"));
    EXPECT_THAT(dialoge.meldungen, IsEmpty());

    ASSERT_TRUE(QFile::remove(ordner.filePath(u"flügel 100%.png"_s)));
    dialoge.dateien = {ordner.filePath(u"b.tps"_s)};
    wähle(u"men_Datei_21"_s);
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
    EXPECT_EQ(inhalt(u"b.tps"_s), inhalt(u"a.tps"_s));

    dialoge.antworten = {Antwort::Nein};
    ASSERT_TRUE(hg().öffneDateien({tps}));
    EXPECT_THAT(reihe().hiDvZeilen(), ElementsAre(gemessen));
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"'flügel 100%.png' ist nicht da"_s));
    dialoge.dateien = {ordner.filePath(u"c.tps"_s)};
    wähle(u"men_Datei_21"_s);
    ASSERT_THAT(dialoge.meldungen, SizeIs(2));
    EXPECT_TRUE(dialoge.meldungen[1].contains(u"/1 (flügel 100%.png)"_s));
    EXPECT_FALSE(QFile::exists(ordner.filePath(u"c.tps"_s)));
}

TEST_F(Einlesetest, tpsWhosePictureIsFoundLater_hasItsPointsInTheirPlaceThen) {
    enum class Fund { VonHand, BeimWiederholen, NachDemSpeichern };
    missFlügel();
    const Messpunkte gemessen = reihe().messung(1)->punkte;
    const QString tps = ordner.filePath(u"a.tps"_s);
    dialoge.dateien = {tps};
    wähle(u"men_Datei_21"_s);
    const QString bildpfad = ordner.filePath(u"flügel 100%.png"_s);
    const QString fort = ordner.filePath(u"fort.png"_s);
    for (const Fund fund : {Fund::VonHand, Fund::BeimWiederholen, Fund::NachDemSpeichern}) {
        ASSERT_TRUE(QFile::rename(bildpfad, fort));
        dialoge.antworten = {Antwort::Nein};
        ASSERT_TRUE(hg().öffneDateien({tps}));
        EXPECT_TRUE(dialoge.meldungen.last().contains(u"kommen sie an ihren Ort"_s));
        EXPECT_NE(reihe().messung(1)->punkte.PunktY, gemessen.PunktY);
        if (fund == Fund::NachDemSpeichern) {
            wähle(u"men_Datei_2"_s);
            ASSERT_TRUE(hg().close());
            ASSERT_TRUE(starte());
        }
        ASSERT_TRUE(QFile::rename(fort, bildpfad));
        // Not even where the picture is there for anybody to see, before it was looked at.
        dialoge.dateien = {ordner.filePath(u"b.tps"_s)};
        wähle(u"men_Datei_21"_s);
        EXPECT_FALSE(QFile::exists(ordner.filePath(u"b.tps"_s)));
        dialoge.dateien = {bildpfad};
        if (fund == Fund::VonHand) {
            ASSERT_TRUE(hg().ladeBild(bildpfad));
        } else {
            dialoge.antworten = {Antwort::Ja, Antwort::Ja};
            wähle(u"men_Bearbeiten_1"_s);
            EXPECT_TRUE(bild().isVisible());
        }
        EXPECT_EQ(reihe().messung(1)->bilddatei, bildpfad);
        EXPECT_EQ(reihe().messung(1)->punkte.PunktY, gemessen.PunktY);
        QFile::remove(ordner.filePath(u"c.tps"_s));
        dialoge.dateien = {ordner.filePath(u"c.tps"_s)};
        wähle(u"men_Datei_21"_s);
        EXPECT_EQ(inhalt(u"c.tps"_s), inhalt(u"a.tps"_s));
    }
}

TEST_F(Einlesetest, exportThatCannotBe_isToldAndWritesNothing) {
    ASSERT_TRUE(hg().öffneDatei(datei(messdatei)));
    dialoge.dateien = {ordner.filePath(u"punkte.tps"_s), ordner.filePath(u"fehlt/a.csv"_s)};
    wähle(u"men_Datei_21"_s); // a measurement file has no points
    wähle(u"men_Datei_21"_s);
    EXPECT_THAT(dialoge.meldungen, SizeIs(2));
    EXPECT_FALSE(QFile::exists(ordner.filePath(u"punkte.tps"_s)));
    dialoge.dateien = {ordner.filePath(u"Königin 7.Bee"_s)}; // never a file of another kind
    wähle(u"men_Datei_21"_s);
    EXPECT_EQ(inhalt(u"Königin 7.Bee"_s), messdatei);
    EXPECT_TRUE(inhalt(u"Königin 7.Bee.csv"_s).startsWith("examination,"));
}

TEST_F(Einlesetest, severalFilesOfAKind_openTheFirstAndTell) {
    const QString zweites = maleBild({300, 200}, u"b.png"_s);
    EXPECT_TRUE(hg().öffneDateien({maleBild({300, 200}, u"a.png"_s), zweites}));
    EXPECT_TRUE(hinweis().contains(u"a.png"_s));
}

TEST_F(Einlesetest, helpKey_opensTheGuideInDialogsToo) {
    for (const QString& befehl : {u"men_Extras_9"_s, u"men_Datei_1"_s, u"men_Hilfe_1"_s}) {
        shell.geöffnet.clear();
        QTimer taste;
        QObject::connect(&taste, &QTimer::timeout, &hg(), [] {
            QWidget* fenster = QApplication::activeModalWidget();
            if (fenster != nullptr && fenster->isAncestorOf(QApplication::focusWidget())) {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_F1);
                fenster->close();
            }
        });
        taste.start(0);
        wähle(befehl);
        EXPECT_THAT(shell.geöffnet, SizeIs(1)) << qPrintable(befehl);
    }
}
