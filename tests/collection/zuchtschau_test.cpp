#include "collection/zuchtschau.h"

#include "evaluation/rassen.h"
#include "results/browserprobe.h"
#include "support/kinder.h"
#include "support/testdialoge.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTimer>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

/// The overview as a window, on a file of its own.
struct Zuchtschautest : Browserprobe {
    Texte texte{QString()};
    TestDialoge dialoge;
    QStringList geladen;
    std::unique_ptr<Zuchtschau> schau;

    Zuchtschautest() { texte.SpracheDeutsch(); }

    void SetUp() override {
        Browserprobe::SetUp();
        kolonie(u"1"_s, u"Carnica"_s, u"Arbeiter"_s, 2.1, QDate(2020, 5, 1));
        kolonie(u"2 "_s, u"Carnica"_s, u"Workers"_s, 2.9, QDate(2022, 5, 1));
        kolonie(u"3"_s, u"Mellifera"_s, u"Arbeiter"_s, 1.7, QDate(2021, 5, 1));
        kolonie(u"4"_s, u"Carnica"_s, u"Drohnen"_s, 2.5, QDate(2021, 5, 1));
    }
    void kolonie(const QString& nummer, const QString& rasse, const QString& tiere, double CI,
                 QDate datum) const {
        Ergebnissatz s = vollerSatz(nummer);
        s.RASSE = rasse;
        s.A_D = tiere;
        s.DATUM = datum;
        s.Grafik[0] = u"CI-HI 1200dpi;"_s;
        for (int i = 1; i <= 30; ++i) {
            const QString wert = QString::number(CI + (i % 2) * 0.1, 'f', 2);
            s.CI += u"#%1;%2;17,3; "_s.arg(dreistellig(i), wert);
            s.HI_DV += u"#%1;0,9%2;22,0;+1,0; "_s.arg(dreistellig(i)).arg(10 + i);
        }
        speichere(s);
    }
    bool öffne(const QString& datei) {
        const Einstellungen einstellungen{QString()};
        schau = std::make_unique<Zuchtschau>(ZuchtschauUmgebung{
            .texte = texte,
            .dialoge = dialoge,
            .DatenbankPfad = datei,
            .speicher = ordner_.filePath(u"Overview"_s),
            .dokumente = ordner_.path(),
            .regeln =
                kolonieregeln({.texte = texte, .format = {}, .rassen = rassenliste(einstellungen)},
                              einstellungen),
            .LadenDB = [this](const QString& nummer) {
                geladen << nummer;
                return true;
            }});
        if (!schau->lies()) {
            return false;
        }
        schau->show();
        return QTest::qWaitForWindowActive(schau.get());
    }
    template <typename T>
    T& kind(const QString& name) const {
        return tarvel::kind<T>(*schau, name);
    }
    QStringList nummern() const {
        const QAbstractItemModel* modell = kind<QTableView>(u"Tabelle"_s).model();
        QStringList liste;
        for (int zeile = 0; zeile < modell->rowCount(); ++zeile) {
            liste << modell->index(zeile, 0).data().toString();
        }
        return liste;
    }
    void zeigeAnsicht(int stelle) const {
        kind<QTabWidget>(u"tab_Ansichten"_s).setCurrentIndex(stelle);
        QApplication::processEvents();
    }
    Kreuzansicht& kreuze() const {
        return static_cast<Kreuzansicht&>(kind<QWidget>(u"pic_Kreuze"_s));
    }
    QPoint kreuz(const QString& nummer) const {
        for (const Kreuzstelle& s : kreuze().stellen()) {
            if (s.kolonie->UNr == nummer) {
                return s.ort.toPoint();
            }
        }
        ADD_FAILURE() << nummer.toStdString();
        return {};
    }
    QString stand() const { return kind<QLabel>(u"lab_Stand"_s).text(); }
};

TEST_F(Zuchtschautest, table_sortsAndNarrowsAndNeverMixesCastes) {
    ASSERT_TRUE(öffne(pfad_));
    EXPECT_THAT(nummern(), ElementsAre(u"2"_s, u"3"_s, u"1"_s)); // the latest first
    const QHeaderView& kopf = *kind<QTableView>(u"Tabelle"_s).horizontalHeader();
    const int CI = static_cast<int>(Kolonienspalte::Index) + 1;
    const QPoint ort(kopf.sectionViewportPosition(CI) + 10, kopf.height() / 2);
    QTest::mouseClick(kopf.viewport(), Qt::LeftButton, {}, ort);
    QTest::mouseClick(kopf.viewport(), Qt::LeftButton, {}, ort);
    EXPECT_EQ(nummern().size(), 3);
    EXPECT_EQ(nummern().at(1), u"1"); // either way round
    kind<QComboBox>(u"cbo_Rasse"_s).setCurrentText(u"Mellifera"_s);
    EXPECT_THAT(nummern(), ElementsAre(u"3"_s));
    EXPECT_TRUE(stand().startsWith(u"1 von 4 "_s)) << stand().toStdString();
    QTest::mouseClick(&kind<QPushButton>(u"bef_Alle"_s), Qt::LeftButton);
    kind<QComboBox>(u"cbo_Tiere"_s).setCurrentIndex(1);
    EXPECT_THAT(nummern(), ElementsAre(u"4"_s));
    EXPECT_EQ(kind<QComboBox>(u"cbo_Rasse"_s).count(), 2); // what there is of drones
}

TEST_F(Zuchtschautest, crosses_areOpenedByClickAndKeysAndChosenForComparison) {
    ASSERT_TRUE(öffne(pfad_));
    zeigeAnsicht(1);
    for (const QString& nummer : {u"1"_s, u"2"_s}) {
        QTest::mouseClick(&kreuze(), Qt::LeftButton, Qt::ControlModifier, kreuz(nummer));
    }
    EXPECT_TRUE(stand().contains(u"2 gewählt"_s)) << stand().toStdString();
    EXPECT_EQ(kind<QTableView>(u"Tabelle"_s).selectionModel()->selectedRows().size(), 2);
    for (int ansicht = 0; ansicht < 5; ++ansicht) {
        zeigeAnsicht(ansicht);
        for (const Diagrammformat format : diagrammformate()) {
            const QString ziel = ordner_.filePath(u"bild%1"_s.arg(ansicht) + dateiendung(format));
            dialoge.dateien << ziel;
            QTest::mouseClick(&kind<QPushButton>(u"bef_Speichern"_s), Qt::LeftButton);
            EXPECT_GT(bytes(ziel).size(), 2000) << ziel.toStdString();
        }
    }
    EXPECT_TRUE(dialoge.meldungen.isEmpty());
    dialoge.dateien << ordner_.filePath(u"fehlt/bild.png"_s);
    QTest::mouseClick(&kind<QPushButton>(u"bef_Speichern"_s), Qt::LeftButton);
    EXPECT_EQ(dialoge.meldungen.size(), 1);

    zeigeAnsicht(1);
    kreuze().setFocus();
    QTest::keyClick(&kreuze(), Qt::Key_End);
    QTest::keyClick(&kreuze(), Qt::Key_Home);
    QTest::keyClick(&kreuze(), Qt::Key_Space); // takes the choice of number 2 back
    EXPECT_TRUE(stand().contains(u"1 gewählt"_s)) << stand().toStdString();
    QTest::keyClick(&kreuze(), Qt::Key_Return);
    EXPECT_THAT(geladen, ElementsAre(u"2 "_s)); // as it is stored
    EXPECT_EQ(schau->result(), QDialog::Accepted);
    schau->show();
    QTest::mouseClick(&kreuze(), Qt::LeftButton, {}, kreuz(u"1"_s));
    EXPECT_EQ(geladen.size(), 2);
}

TEST_F(Zuchtschautest, F5_readsAgainAndEscapeStopsAReading) {
    ASSERT_TRUE(öffne(pfad_));
    kind<QTableView>(u"Tabelle"_s).selectAll();
    fremd(u"DELETE FROM Ergebnisse WHERE U_NR = '1'"_s);
    QTest::keyClick(schau.get(), Qt::Key_F5);
    EXPECT_THAT(nummern(), ElementsAre(u"2"_s, u"3"_s));
    // Nothing is left of rows that have gone.
    zeigeAnsicht(2);
    zeigeAnsicht(4);
    const QByteArray csv = ordner_.filePath(u"alle.csv"_s).toUtf8();
    dialoge.dateien << QString::fromUtf8(csv);
    QTest::mouseClick(&kind<QPushButton>(u"bef_Csv"_s), Qt::LeftButton);
    EXPECT_EQ(bytes(QString::fromUtf8(csv)).count('\n'), 3);

    fülle(40);
    QTimer::singleShot(0,
                       [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    QTest::keyClick(schau.get(), Qt::Key_F5);
    EXPECT_EQ(nummern().size(), 2); // what was shown stays
    QTest::keyClick(schau.get(), Qt::Key_Escape);
    EXPECT_FALSE(schau->isVisible());
}

TEST_F(Zuchtschautest, table_writesDatesAsTheListDoesAndMarksDVThatDoesNotCompare) {
    Ergebnissatz gemischt = tabelle().lade(u"1"_s).value();
    gemischt.U_NR = u"5"_s;
    gemischt.Grafik[3] = u"Angaben 1;Felder;001/1/1200/1/a.bmp;002/1/600/1/a.bmp;"_s;
    gemischt.Grafik[2] = u"Punkte 1;001/8/5/1/1/2/2/3/3/4/4/5/5/6/6/7/7/8/8;"
                         "002/8/5/1/1/2/2/3/3/4/4/5/5/6/6/7/7/8/8;"_s;
    speichere(gemischt);
    const int DV = static_cast<int>(Kolonienspalte::Index) + 2 * SpaltenJeIndex;
    struct Fall {
        Sprache sprache;
        QString datum;
        QString hinweis;
    };
    for (const Fall& f : {Fall{Sprache::Deutsch, u"01.05.22"_s, u"DV in Klammern"_s},
                          Fall{Sprache::Englisch, u"01/05/22"_s, u"DS in brackets"_s},
                          Fall{Sprache::Französisch, u"01/05/22"_s, u"DD entre parenthèses"_s}}) {
        texte.SpracheEinstellen(static_cast<int>(f.sprache));
        ASSERT_TRUE(öffne(pfad_));
        const QAbstractItemModel& modell = *kind<QTableView>(u"Tabelle"_s).model();
        EXPECT_EQ(modell.index(0, static_cast<int>(Kolonienspalte::Datum)).data(), f.datum);
        EXPECT_TRUE(stand().contains(f.hinweis)) << stand().toStdString();
        const auto zeile = static_cast<int>(nummern().indexOf(u"5"_s));
        for (int spalte = DV; spalte < SpalteUrteil; ++spalte) {
            const auto zelle = [&](int z, int rolle) {
                return modell.index(z, spalte).data(rolle).toString();
            };
            const bool wert = spalte > DV; // the number of wings is none
            EXPECT_EQ(zelle(zeile, Qt::DisplayRole).startsWith(u'('), wert) << spalte;
            EXPECT_EQ(zelle(zeile, Qt::ToolTipRole).isEmpty(), !wert) << spalte;
            EXPECT_FALSE(zelle(0, Qt::DisplayRole).startsWith(u'(')); // of one resolution
            EXPECT_EQ(zelle(0, Qt::ToolTipRole), QString());
        }
    }
}

TEST_F(Zuchtschautest, whatIsNoResultsFile_isSaid) {
    schreibe(ordner_.filePath(u"kaputt.tdb"_s), QByteArray(5000, 'x'));
    EXPECT_FALSE(öffne(ordner_.filePath(u"kaputt.tdb"_s)));
    EXPECT_FALSE(öffne({}));
    EXPECT_EQ(dialoge.meldungen.size(), 2);
}

} // namespace
} // namespace tarvel
