#include "results/dbprobe.h"
#include "results/papierkorb.h"
#include "results/tagessicherung.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>

using namespace tarvel;
using testing::HasSubstr;

namespace {

/// The browser with windows before it that wait for the user.
class DBSammlungstest : public DBTest {
protected:
    QString andere_ = ordner_.filePath(u"Anna.tdb"_s);

    /// Does @p tun in the window that opens next, and closes it where that did not.
    void imFenster(std::function<void(QDialog&)> tun) {
        QTimer::singleShot(0, db.get(), [tun = std::move(tun)] {
            auto& fenster = dynamic_cast<QDialog&>(*QApplication::activeModalWidget());
            tun(fenster);
            if (fenster.isVisible()) {
                fenster.reject();
            }
        });
    }
    static QTableView& gitter(QDialog& fenster, const QString& name) {
        return tarvel::kind<QTableView>(fenster, name);
    }
    static void klicke(QDialog& fenster, const QString& name) {
        QTest::mouseClick(&tarvel::kind<QPushButton>(fenster, name), Qt::LeftButton);
    }
    static QString zeile(const QTableView& gitter, int zeile) {
        QStringList zellen;
        for (int i = 0; i < gitter.model()->columnCount(); ++i) {
            zellen << gitter.model()->index(zeile, i).data().toString();
        }
        return zellen.join(u'|');
    }
    static QString vergleich(QDialog& fenster, const QString& name) {
        const auto& tabelle = tarvel::kind<QTableWidget>(fenster, name);
        QStringList zeilen;
        for (int i = 0; i < tabelle.rowCount(); ++i) {
            zeilen << zeile(tabelle, i);
        }
        return zeilen.join(u';');
    }
    void lösche(int zeile) {
        gehe(zeile, 0);
        dialoge.antworten = {Antwort::Ja};
        taste(Qt::Key_Delete);
    }
    static inline const QString Rückgängig = u"men_Tabelle_7"_s;
    static inline const QString Korb = u"men_Tabelle_8"_s;
    static inline const QString Zusammenführen = u"men_Tabelle_9"_s;
    static inline const QString Umwandeln = u"men_Tabelle_11"_s;
    static inline const QString AusSicherung = u"men_Tabelle_10"_s;
};

} // namespace

TEST_F(DBSammlungstest, undo_takesEditsAndDeletionsBack_oneByOne) {
    speichere(vollerSatz(u"001"_s));
    speichere(vollerSatz(u"002"_s));
    öffne();
    EXPECT_FALSE(aktion(Rückgängig).isEnabled());
    tippe(0, 2, u"Müller"_s);
    lösche(1);
    ASSERT_EQ(gezeigt(), u"001"_s);
    grid().setFocus();
    taste(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(gezeigt(), u"001 002"_s);
    EXPECT_EQ(zelle(0, 2), u"Müller"_s);
    EXPECT_EQ(grid().currentIndex().row(), 1) << "what came back is selected";
    taste(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(zelle(0, 2), u"Anna Weiß"_s);
    EXPECT_FALSE(aktion(Rückgängig).isEnabled());

    tippe(0, 2, u"Maier"_s);
    fremd(u"UPDATE Ergebnisse SET VOLK = 'anders' WHERE U_NR = '001'"_s);
    taste(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_THAT(dialoge.meldungen.last().toStdString(), HasSubstr("seither noch einmal geändert"));
    EXPECT_EQ(zelle(0, 2), u"Maier"_s);
}

TEST_F(DBSammlungstest, bin_showsWhatDiffersFromToday_andRestores) {
    speichere(vollerSatz(u"001"_s));
    speichere(vollerSatz(u"002"_s));
    öffne();
    tippe(0, 2, u"Müller"_s);
    lösche(1);
    imFenster([&](QDialog& fenster) {
        auto& liste = gitter(fenster, u"Korbgitter"_s);
        ASSERT_EQ(liste.model()->rowCount(), 2);
        EXPECT_THAT(zeile(liste, 0).toStdString(),
                    HasSubstr("|gelöscht|steht nicht mehr in der Datei"));
        EXPECT_THAT(zeile(liste, 1).toStdString(), HasSubstr("|in der Liste geändert|Züchter"));
        liste.selectRow(1);
        EXPECT_EQ(vergleich(fenster, u"Korbvergleich"_s), u"Züchter|Anna Weiß|Müller"_s);
        liste.selectRow(0);
        klicke(fenster, u"bef_Wiederherstellen"_s);
        EXPECT_EQ(liste.model()->rowCount(), 1);
        dialoge.wahl = -1; // not decided: nothing happens
        klicke(fenster, u"bef_Wiederherstellen"_s);
        EXPECT_EQ(liste.model()->rowCount(), 1);
        dialoge.wahl = 0;
        klicke(fenster, u"bef_Wiederherstellen"_s);
    });
    wähle(Korb);
    EXPECT_EQ(gezeigt(), u"001 002"_s);
    EXPECT_EQ(zelle(0, 2), u"Anna Weiß"_s);
    wähle(Rückgängig);
    EXPECT_EQ(zelle(0, 2), u"Müller"_s);
    wähle(Rückgängig);
    EXPECT_EQ(gezeigt(), u"001"_s);

    imFenster([&](QDialog& fenster) {
        dialoge.antworten = {Antwort::Nein, Antwort::Ja};
        klicke(fenster, u"bef_Leeren"_s);
        EXPECT_GT(gitter(fenster, u"Korbgitter"_s).model()->rowCount(), 0);
        klicke(fenster, u"bef_Leeren"_s);
        EXPECT_EQ(gitter(fenster, u"Korbgitter"_s).model()->rowCount(), 0);
        EXPECT_FALSE(tarvel::kind<QPushButton>(fenster, u"bef_Wiederherstellen"_s).isEnabled());
    });
    wähle(Korb);
    EXPECT_TRUE(Papierkorb(pfad_).einträge().empty());
}

TEST_F(DBSammlungstest, merge_showsBothSides_andDoesWhatWasDecided) {
    NeueDatenbank(andere_);
    for (const QString& nummer : {u"001"_s, u"002"_s, u"003"_s}) {
        Ergebnissatz satz = vollerSatz(nummer);
        speichere(satz);
        satz.Z_NAME = u"Anna"_s;
        Ergebnistabelle(andere_).speichere(satz);
    }
    Ergebnistabelle(andere_).speichere(vollerSatz(u"004"_s));
    Ergebnistabelle(andere_).speichere(vollerSatz(u"005"_s));
    speichere(vollerSatz(u"005"_s));
    const QString inhalt = u"SELECT U_NR, Z_NAME FROM Ergebnisse ORDER BY U_NR"_s;
    const QString vorher = fremd(inhalt);
    öffne();
    const auto entscheide = [&](QDialog& fenster, int zeile, const QString& knopf) {
        gitter(fenster, u"Vorschaugitter"_s).selectRow(zeile);
        klicke(fenster, knopf);
    };
    dialoge.dateien = {andere_, andere_, pfad_};
    imFenster([&](QDialog& fenster) {
        const auto vorhaben = [&] {
            return tarvel::kind<QLabel>(fenster, u"lab_Vorhaben"_s).text();
        };
        EXPECT_EQ(vorhaben(), u"Zu übernehmen: 1, davon anstelle einer eigenen: 0"_s);
        const auto& liste = gitter(fenster, u"Vorschaugitter"_s);
        EXPECT_EQ(vergleich(fenster, u"Gegenüber"_s), u"Züchter|Anna Weiß|Anna"_s);
        EXPECT_THAT(zeile(liste, 0).toStdString(), HasSubstr("|verschieden|meine behalten"));
        EXPECT_THAT(zeile(liste, 3).toStdString(), HasSubstr("|neu|übernehmen"));
        entscheide(fenster, 1, u"bef_Nehmen"_s);
        entscheide(fenster, 2, u"bef_Beide"_s);
        EXPECT_THAT(zeile(liste, 1).toStdString(), HasSubstr("die andere nehmen"));
        EXPECT_EQ(vorhaben(), u"Zu übernehmen: 3, davon anstelle einer eigenen: 1"_s);
        // What is not seen comes in all the same, and what is seen can be narrowed and sorted.
        const auto nummern = [&] {
            QStringList alle;
            for (int i = 0; i < liste.model()->rowCount(); ++i) {
                alle << zeile(liste, i).left(3);
            }
            return alle.join(u' ');
        };
        const auto kreuze = [&](int stand) -> QCheckBox& {
            return tarvel::kind<QCheckBox>(fenster, u"chk_Stand_%1"_s.arg(stand));
        };
        EXPECT_EQ(kreuze(0).text() + kreuze(1).text() + kreuze(2).text(),
                  u"neu (1)gleich (1)verschieden (3)"_s);
        EXPECT_EQ(nummern(), u"001 002 003 004"_s);
        kreuze(2).click();
        EXPECT_EQ(nummern(), u"004"_s);
        kreuze(1).click();
        EXPECT_EQ(nummern(), u"004 005"_s);
        kreuze(2).click();
        EXPECT_EQ(vorhaben(), u"Zu übernehmen: 3, davon anstelle einer eigenen: 1"_s);
        const auto klickeKopf = [&](int spalte) {
            const QHeaderView& kopf = *liste.horizontalHeader();
            QTest::mouseClick(kopf.viewport(), Qt::LeftButton, {},
                              QPoint(kopf.sectionViewportPosition(spalte) + 5, 5));
        };
        klickeKopf(3);
        EXPECT_EQ(nummern(), u"004 005 001 002 003"_s);
        klickeKopf(0);
        klickeKopf(0);
        EXPECT_EQ(nummern(), u"005 004 003 002 001"_s);
        klickeKopf(1);
        EXPECT_EQ(nummern(), u"003 002 001 005 004"_s); // equal ones stay in their order
        gitter(fenster, u"Vorschaugitter"_s).selectRow(3);
        EXPECT_FALSE(tarvel::kind<QPushButton>(fenster, u"bef_Nehmen"_s).isEnabled())
            << "there is nothing to decide about the same";
        gitter(fenster, u"Vorschaugitter"_s).selectAll();
        klicke(fenster, u"bef_Lassen"_s);
        EXPECT_EQ(vorhaben(), u"Zu übernehmen: 0, davon anstelle einer eigenen: 0"_s);
    });
    wähle(Zusammenführen); // closed without applying
    EXPECT_EQ(fremd(inhalt), vorher);
    imFenster([&](QDialog& fenster) {
        entscheide(fenster, 1, u"bef_Nehmen"_s);
        entscheide(fenster, 2, u"bef_Beide"_s);
        klicke(fenster, u"bef_Übernehmen"_s);
    });
    wähle(Zusammenführen);
    EXPECT_EQ(fremd(inhalt),
              u"001|Anna Weiß;002|Anna;003|Anna Weiß;004|Anna Weiß;005|Anna Weiß;006|Anna"_s);
    EXPECT_EQ(db->ersetzte(), QStringList(u"002"_s));
    EXPECT_THAT(dialoge.meldungen.last().toStdString(),
                HasSubstr("Übernommen: 3, davon unter neuer Nummer: 1. Ersetzt: 1."));
    wähle(Zusammenführen);
    EXPECT_THAT(dialoge.meldungen.last().toStdString(), HasSubstr("selbst"));
    // While another program keeps the file, nothing is taken back, and it can be tried again.
    sqlite3* fremde = nullptr;
    sqlite3_open(pfad_.toUtf8().constData(), &fremde);
    sqlite3_exec(fremde, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    wähle(Rückgängig);
    sqlite3_close(fremde);
    EXPECT_THAT(dialoge.meldungen.last().toStdString(), HasSubstr("wird gerade"));
    wähle(Rückgängig);
    EXPECT_EQ(fremd(inhalt), vorher);
    EXPECT_EQ(zelle(grid().currentIndex().row(), 0), u"002"_s);
    EXPECT_FALSE(aktion(Rückgängig).isEnabled());
}

TEST_F(DBSammlungstest, rowsComeBackFromABackup) {
    speichere(vollerSatz(u"001"_s));
    speichere(vollerSatz(u"002"_s));
    sichereTag(pfad_, QDate(2026, 11, 22), false);
    öffne();
    lösche(1);
    imFenster([&](QDialog& fenster) {
        const auto& übernehmen = tarvel::kind<QPushButton>(fenster, u"bef_Übernehmen"_s);
        EXPECT_FALSE(übernehmen.isEnabled()) << "nothing is chosen yet";
        klicke(fenster, u"bef_Nehmen"_s);
        EXPECT_TRUE(übernehmen.isEnabled());
        klicke(fenster, u"bef_Übernehmen"_s);
    });
    wähle(AusSicherung);
    EXPECT_EQ(gezeigt(), u"001 002"_s);
    wähle(AusSicherung);
    EXPECT_THAT(dialoge.meldungen.last().toStdString(), HasSubstr("stehen schon gleich"));
}

TEST_F(DBSammlungstest, deletingSeveral_isUndoneAtOnce) {
    for (const QString& nummer : {u"001"_s, u"002"_s, u"003"_s}) {
        speichere(vollerSatz(nummer));
    }
    öffne();
    grid().selectAll();
    dialoge.antworten = {Antwort::Ja};
    taste(Qt::Key_Delete);
    ASSERT_EQ(gezeigt(), QString());
    wähle(Rückgängig);
    EXPECT_EQ(gezeigt(), u"001 002 003"_s);
    EXPECT_FALSE(aktion(Rückgängig).isEnabled());
}

TEST_F(DBSammlungstest, tableOfText_comesInThroughTheSamePreview) {
    speichere(vollerSatz(u"001"_s));
    öffne();
    const QString csv = ordner_.filePath(u"alt.csv"_s);
    const auto hole = [&](const QByteArray& inhalt, const std::deque<Antwort>& antworten) {
        schreibe(csv, inhalt);
        dialoge.dateien = {csv};
        dialoge.antworten = antworten;
        imFenster([&](QDialog& fenster) { klicke(fenster, u"bef_Übernehmen"_s); });
        wähle(Zusammenführen);
    };
    hole("U_NR;Z_NAME;DATUM\n009;Maier;03/12/15\n010;Huber;1.2.2016\n011;Zorn;31.2.2016\n",
         {Antwort::Nein}); // the month comes first
    EXPECT_EQ(gezeigt(), u"009 010 001"_s);
    EXPECT_EQ(zelle(0, 2), u"Maier"_s);
    EXPECT_EQ(this->tabelle().lade(u"009"_s)->DATUM, QDate(2015, 3, 12));
    EXPECT_TRUE(dialoge.meldungen.join(u' ').contains(u"Zeile 4: '31.2.2016' ist kein Datum."_s));
    // What can be read by nobody is named by what it is.
    dialoge.meldungen.clear();
    for (const auto& [inhalt, wort] :
         {std::pair<QByteArray, const char*>{"Name;Datum\n1;2\n", "U_NR"},
          {QByteArray("\0\1\0\0Standard Jet DB\0", 20), "Jet"}}) {
        const QByteArray pfade = qgetenv("PATH");
        qputenv("PATH", "/nowhere");
        schreibe(csv, inhalt);
        dialoge.dateien = {csv};
        wähle(Zusammenführen);
        qputenv("PATH", pfade);
        EXPECT_THAT(dialoge.meldungen.last().toStdString(), HasSubstr(wort));
    }
    EXPECT_EQ(gezeigt(), u"009 010 001"_s);
}

TEST_F(DBSammlungstest, datesOfOtherPrograms_areShownAndOfferedForConversion) {
    heute = QDate(2026, 3, 1);
    speichere(vollerSatz(u"001"_s));
    öffne();
    auto& hinweis = kind<QPushButton>(u"bef_Daten"_s);
    EXPECT_FALSE(hinweis.isVisible());
    fremd(u"UPDATE Ergebnisse SET DATUM = '03/12/15'"_s);
    db->DB_Open();
    ASSERT_TRUE(hinweis.isVisible());
    EXPECT_EQ(zelle(0, 8), u"03/12/15"_s);
    imFenster([](QDialog&) {}); // not now
    QTest::mouseClick(&hinweis, Qt::LeftButton);
    EXPECT_EQ(zelle(0, 8), u"03/12/15"_s);
    imFenster([&](QDialog& fenster) {
        const auto& daten = tarvel::kind<QTableWidget>(fenster, u"Tabelle_Daten"_s);
        EXPECT_EQ(zeile(daten, 0), u"001|03/12/15|03.12.2015"_s);
        tarvel::kind<QComboBox>(fenster, u"box_Folge"_s).setCurrentIndex(1);
        EXPECT_EQ(zeile(daten, 0), u"001|03/12/15|12.03.2015"_s);
        klicke(fenster, u"bef_Umwandeln"_s);
    });
    QTest::mouseClick(&hinweis, Qt::LeftButton);
    EXPECT_EQ(fremd(u"SELECT DATUM FROM Ergebnisse"_s), u"2015-03-12"_s);
    EXPECT_FALSE(hinweis.isVisible());
    wähle(Umwandeln); // there is nothing left, which is said
    EXPECT_THAT(dialoge.meldungen.last().toStdString(), HasSubstr("Alle Daten"));
}

TEST_F(DBSammlungstest, dateInTheFuture_isAskedAbout) {
    heute = QDate(2026, 3, 1);
    speichere(vollerSatz(u"001"_s));
    QString datum = fremd(u"SELECT DATUM FROM Ergebnisse"_s);
    for (const Antwort antwort : {Antwort::Nein, Antwort::Ja}) {
        öffne();
        dialoge.antworten = {antwort};
        tippe(0, 8, u"01.03.2027"_s);
        EXPECT_THAT(dialoge.fragen.back().text.toStdString(), HasSubstr("in der Zukunft"));
        EXPECT_TRUE(dialoge.fragen.back().verwirft) << "Enter means No";
        datum = antwort == Antwort::Ja ? u"2027-03-01"_s : datum;
        EXPECT_EQ(fremd(u"SELECT DATUM FROM Ergebnisse"_s), datum);
    }
}
