#include "app/fenster.h"

#include <QComboBox>
#include <QLineEdit>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

/// Measurement files that become the open examination.
struct Einlesetest : Fenstertest {
    void SetUp() override { ASSERT_TRUE(starte()); }

    QString datei(const QByteArray& inhalt) const {
        const QString pfad = ordner.filePath(u"Königin 7.Bee"_s);
        QFile ziel(pfad);
        EXPECT_TRUE(ziel.open(QIODevice::WriteOnly));
        ziel.write(inhalt);
        return pfad;
    }
    QString text(const QString& feld) const { return kind<QLineEdit>(feld).text(); }
};

const QByteArray messdatei =
    "Drohnen 1\r\n24\r\n7\r\n5\r\n12\r\n0099\r\nZo\xEB Gro\xDF\r\nx\r\ny\r\n"
    "Besitzer\r\nVolk 3\r\nBelegstelle\r\nkopf\r\nkopf\r\n"
    "001 2.71 19.8\r\n002 2.50 18.8\r\nEndeCI\r\nkopf\r\n"
    "EndeHI\r\n\r\n\r\n\r\n0\r\n";

} // namespace

TEST_F(Einlesetest, measurementFile_becomesTheOpenExamination) {
    dialoge.dateien = {datei(messdatei)};
    wähle(u"men_Datei_3"_s);
    EXPECT_EQ(dialoge.filter.value(0), u"Messdateien (*.Bee *.bee *.BEE)"_s);
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
    for (const QByteArray& inhalt :
         {QByteArray(), QByteArray(300, '\0'), QByteArray("x\r\ny\r\n")}) {
        dialoge.meldungen.clear();
        EXPECT_FALSE(hg().öffneDatei(datei(inhalt)));
        ASSERT_THAT(dialoge.meldungen, SizeIs(1));
        EXPECT_TRUE(dialoge.meldungen[0].contains(u"Königin 7.Bee"_s));
    }
    EXPECT_FALSE(hg().öffneDatei(ordner.filePath(u"fehlt.bee"_s)));
    EXPECT_EQ(text(u"txt_Volk"_s), u"9"_s);
    EXPECT_THAT(dialoge.fragen, IsEmpty());
}

TEST_F(Einlesetest, unreadableLines_areNamedAndTheRestIsTaken) {
    QByteArray inhalt = messdatei;
    inhalt.replace("002 2.50 18.8", "00x 2.50 18.8");
    EXPECT_TRUE(hg().öffneDatei(datei(inhalt)));
    EXPECT_THAT(reihe().ciZeilen(), SizeIs(1));
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"16"_s)) << qPrintable(dialoge.meldungen[0]);
}
