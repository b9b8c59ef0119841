#include "app/speichern.h"
#include "platform/profil.h"
#include "results/fluegelsatz.h"

#include <QDialog>
#include <QFileInfo>
#include <QPushButton>
#include <QTableView>
#include <QTextDocumentFragment>
#include <QTimer>

using namespace tarvel;
using testing::ElementsAre;
using testing::IsEmpty;

// The open examination beside its row in the results file, when verdict, standard or the row itself
// are others meanwhile.

TEST_F(Speicherntest, storedVerdictThatTheStandardNoLongerGives_isSaid) {
    missFlügel();
    züchter().setText(u"A"_s);
    wähle(u"men_Datei_2"_s);
    Ergebnissatz satz = zeile(nummer()).value();
    const bool ja = satz.ERGEBNIS == u"Ja"_s;
    satz.ERGEBNIS = ja ? u"Nein"_s : u"Ja"_s;
    Ergebnistabelle(pfad()).speichere(satz);
    ASSERT_TRUE(starte());
    EXPECT_EQ(hinweis(),
              u"Gespeichert ist das Urteil '%1'. Nach dem jetzigen Standard lautet es '%2'."_s.arg(
                  satz.ERGEBNIS, ja ? u"Ja"_s : u"Nein"_s));

    // It stays while nothing changes that it rests on …
    züchter().setText(u"B"_s);
    QTest::keyClick(&züchter(), Qt::Key_Return);
    wähle(u"men_Datei_2"_s);
    EXPECT_EQ(zeile(nummer())->Z_NAME, u"B"_s);
    EXPECT_EQ(zeile(nummer())->ERGEBNIS, satz.ERGEBNIS);
    // … and until the user wants the present standard's.
    Q_EMIT kind<QLabel>(u"lab_Gespeichert"_s).linkActivated(u"neu"_s);
    EXPECT_TRUE(hg().isWindowModified());
    EXPECT_TRUE(kind<QLabel>(u"lab_Gespeichert"_s).isHidden());
    wähle(u"men_Bearbeiten_3"_s); // undone
    EXPECT_FALSE(kind<QLabel>(u"lab_Gespeichert"_s).isHidden());
    EXPECT_FALSE(hg().isWindowModified());
    wähle(u"men_Bearbeiten_4"_s);
    wähle(u"men_Datei_2"_s);
    EXPECT_NE(zeile(nummer())->ERGEBNIS, satz.ERGEBNIS);
    wähle(u"men_Bearbeiten_3"_s); // undone, it is not what the file has
    EXPECT_FALSE(kind<QLabel>(u"lab_Gespeichert"_s).isHidden());
    EXPECT_TRUE(hg().isWindowModified());
}

TEST_F(Speicherntest, limitsOfAVerdict_areStoredWithItAndComparedWithTodays) {
    const auto gespeichert = [this] {
        return QTextDocumentFragment::fromHtml(kind<QLabel>(u"lab_Gespeichert"_s).text())
            .toPlainText();
    };
    const auto grenzen = [this] {
        return beiangabenAusSatz(zeile(nummer())->Grafik[3]).inhalt.angaben.zusatz.Grenzen;
    };
    const auto setze = [this](const QByteArray& schlüssel, const QByteArray& wert) {
        Profil profil(inipfad());
        profil.setze("Merkmale Arbeiterinnen", schlüssel, wert);
        ASSERT_TRUE(profil.sichere());
    };
    missFlügel();
    züchter().setText(u"A"_s);
    wähle(u"men_Datei_2"_s);
    EXPECT_EQ(gespeichert(), u"Das gespeicherte Urteil beruht auf dem Standard 'Carnica'."_s);
    const QString damals = grenzen();
    EXPECT_TRUE(damals.contains(u"\nRasse=Carnica\n"_s));
    EXPECT_TRUE(damals.contains(u"\nPanzer E=30%\n"_s));

    setze("Panzer EC-", "20%");
    setze("max 1C-", "5%");
    ASSERT_TRUE(starte());
    EXPECT_EQ(
        gespeichert(),
        u"Das gespeicherte Urteil beruht auf dem Standard 'Carnica'. Jetzt gelten andere Grenzen: "
        "Panzerzeichen E: 30% → 20%, Klasse 1 ≤: 2% → 5%. Nach dem jetzigen Standard beurteilen"_s);
    // Stored again with the same verdict, it keeps the limits that it was given by …
    züchter().setText(u"B"_s);
    QTest::keyClick(&züchter(), Qt::Key_Return);
    wähle(u"men_Datei_2"_s);
    EXPECT_EQ(grenzen(), damals);
    // … also where its race has no standard any more …
    Ergebnissatz satz = zeile(nummer()).value();
    satz.RASSE = u"Sicula"_s;
    Ergebnistabelle(pfad()).speichere(satz);
    ASSERT_TRUE(starte());
    EXPECT_EQ(gespeichert(),
              u"Gespeichert ist das Urteil '%1'. Das gespeicherte Urteil beruht auf dem Standard "
              "'Carnica'."_s.arg(satz.ERGEBNIS));
    satz.RASSE = u"Carnica"_s;
    Ergebnistabelle(pfad()).speichere(satz);
    // … until it is judged by those of today.
    ASSERT_TRUE(starte());
    Q_EMIT kind<QLabel>(u"lab_Gespeichert"_s).linkActivated(u"neu"_s);
    EXPECT_EQ(gespeichert(), QString());
    wähle(u"men_Datei_2"_s);
    EXPECT_NE(grenzen(), damals);
    EXPECT_EQ(gespeichert(), u"Das gespeicherte Urteil beruht auf dem Standard 'Carnica'."_s);
}

TEST_F(Speicherntest, raceOutsideTheList_isShownAndNotTakenForAnother) {
    Ergebnissatz satz;
    satz.U_NR = u"X1"_s;
    satz.Z_NAME = u"A"_s;
    satz.RASSE = u"Sicula"_s;
    Ergebnistabelle(pfad()).speichere(satz);
    ASSERT_TRUE(starte());
    auto& rasse = kind<QComboBox>(u"cbo_Rasse"_s);
    EXPECT_EQ(rasse.currentIndex(), -1);
    EXPECT_EQ(rasse.placeholderText(), u"Sicula"_s);
    züchter().setText(u"B"_s);
    wähle(u"men_Datei_2"_s);
    EXPECT_EQ(zeile(u"X1"_s)->RASSE, u"Sicula"_s);
    wähle(u"men_Datei_0"_s); // the new one is of the race of the settings
    EXPECT_EQ(rasse.currentIndex(), 0);
}

TEST_F(Speicherntest, examinations_areJudgedAgainFromTheBrowser) {
    missFlügel();
    züchter().setText(u"A"_s);
    wähle(u"men_Datei_2"_s);
    ASSERT_EQ(zeile(nummer())->ERGEBNIS, u"Ja"_s);
    Profil profil(inipfad());
    profil.setze("Merkmale Arbeiterinnen", "Klasse 0C-", "01-30");
    ASSERT_TRUE(profil.sichere());
    ASSERT_TRUE(starte());
    dialoge.antworten = {Antwort::Ja};
    QTimer::singleShot(0, &hg(), [] {
        auto& browser = *QApplication::activeModalWidget();
        tarvel::kind<QAction>(browser, u"men_Tabelle_5"_s).trigger();
        dynamic_cast<QDialog&>(browser).reject();
    });
    wähle(u"men_Datei_1"_s);
    EXPECT_EQ(zeile(nummer())->ERGEBNIS, u"Nein"_s);
    ASSERT_FALSE(dialoge.fragen.empty());
    EXPECT_THAT(dialoge.fragen.back().zeilen,
                ElementsAre(nummer() + u": Ja → Nein (Klassen 01-30: 100 %, erlaubt 15 %)"_s));
    // The open one was loaded again.
    EXPECT_TRUE(kind<QLabel>(u"lab_Gespeichert"_s).text().startsWith(u"Das gespeicherte"_s));
}

TEST_F(Speicherntest, overview_opensAnExaminationAndChangesNoRow) {
    missFlügel();
    züchter().setText(u"A"_s);
    wähle(u"men_Datei_2"_s);
    const QString erste = nummer();
    const auto vorher = zeile(erste);
    wähle(u"men_Datei_0"_s);
    züchter().setText(u"B"_s);
    const QString zweite = nummer();
    const auto öffneErste = [this] {
        QTimer::singleShot(0, &hg(), [] {
            auto& schau = dynamic_cast<QDialog&>(*QApplication::activeModalWidget());
            tarvel::kind<QTableView>(schau, u"Tabelle"_s).selectRow(0);
            tarvel::kind<QPushButton>(schau, u"bef_Öffnen"_s).click();
            schau.reject();
        });
        wähle(u"men_Datei_23"_s);
    };
    dialoge.antworten = {Antwort::Abbrechen}; // the open one is not stored yet
    öffneErste();
    EXPECT_EQ(nummer(), zweite);
    dialoge.antworten = {Antwort::Nein};
    öffneErste();
    EXPECT_EQ(nummer(), erste);
    EXPECT_EQ(züchter().text(), u"A"_s);
    EXPECT_EQ(zeile(erste), vorher);
    EXPECT_TRUE(QFileInfo::exists(QFileInfo(inipfad()).path() + u"/Overview"_s));
}

TEST_F(Speicherntest, rowRenamedOrDeletedMeanwhile_isNotStoredTwice) {
    const auto währendDerSuche = [this](const std::function<void(Ergebnistabelle&)>& tun) {
        QTimer::singleShot(0, &hg(), [this, &tun] {
            Ergebnistabelle tabelle(pfad());
            tun(tabelle);
            dynamic_cast<QDialog&>(*QApplication::activeModalWidget()).reject();
        });
        wähle(u"men_Datei_1"_s);
    };
    missFlügel();
    züchter().setText(u"A"_s);
    wähle(u"men_Datei_2"_s);
    Ergebnissatz satz = zeile(nummer()).value();
    const auto lösche = [](Ergebnistabelle& tabelle) {
        tabelle.lösche(tabelle.zeilen(u"SELECT * FROM Ergebnisse"_s, {}, 1).front());
    };
    const auto verlege = [&](Ergebnistabelle& tabelle, const QString& auf) {
        Ergebnissatz neu = satz;
        neu.U_NR = auf;
        lösche(tabelle);
        tabelle.speichere(neu);
        satz = neu;
    };
    währendDerSuche([&](Ergebnistabelle& tabelle) { verlege(tabelle, u"X7"_s); });
    EXPECT_EQ(nummer(), u"X7"_s);
    EXPECT_FALSE(hg().isWindowModified());

    züchter().setText(u"B"_s);
    QTest::keyClick(&züchter(), Qt::Key_Return);
    dialoge.antworten = {Antwort::Nein}; // kept in the window, not stored
    währendDerSuche([&](Ergebnistabelle& tabelle) { verlege(tabelle, u"X8"_s); });
    EXPECT_EQ(nummer(), u"X8"_s);
    EXPECT_EQ(züchter().text(), u"B"_s);
    dialoge.fragen.clear();
    wähle(u"men_Datei_2"_s);
    EXPECT_THAT(dialoge.fragen, IsEmpty());
    EXPECT_EQ(Ergebnistabelle(pfad()).zeilen(u"SELECT * FROM Ergebnisse"_s, {}, 9).size(), 1U);

    währendDerSuche(lösche);
    EXPECT_TRUE(hg().isWindowModified()); // only the window has it now
}

TEST_F(Speicherntest, openExaminationWhoseRowIsReplacedByAMerge_countsAsChanged_andAsks) {
    missFlügel();
    züchter().setText(u"A"_s);
    wähle(u"men_Datei_2"_s);
    const QString unr = nummer();
    Ergebnissatz fremd = zeile(unr).value();
    fremd.Z_NAME = u"Anna"_s;
    NeueDatenbank(pfad(u"Anna.tdb"_s));
    Ergebnistabelle(pfad(u"Anna.tdb"_s)).speichere(fremd);
    const auto imBrowser = [this](bool undo) {
        dialoge.dateien = {pfad(u"Anna.tdb"_s)};
        QTimer::singleShot(0, &hg(), [undo] {
            auto& browser = dynamic_cast<QDialog&>(*QApplication::activeModalWidget());
            QTimer::singleShot(0, &browser, [] {
                auto& vorschau = *QApplication::activeModalWidget();
                tarvel::kind<QPushButton>(vorschau, u"bef_Nehmen"_s).click();
                tarvel::kind<QPushButton>(vorschau, u"bef_Übernehmen"_s).click();
            });
            tarvel::kind<QAction>(browser, u"men_Tabelle_9"_s).trigger();
            if (undo) {
                tarvel::kind<QAction>(browser, u"men_Tabelle_7"_s).trigger();
            }
            browser.reject();
        });
        wähle(u"men_Datei_1"_s);
    };
    imBrowser(true);
    EXPECT_FALSE(hg().isWindowModified()) << "it is as it was";
    imBrowser(false);
    EXPECT_EQ(zeile(unr)->Z_NAME, u"Anna"_s);
    EXPECT_EQ(züchter().text(), u"A"_s);
    EXPECT_TRUE(hg().isWindowModified());
    EXPECT_TRUE(hinweis().contains(unr)) << hinweis().toStdString();
    dialoge.fragen.clear();
    for (const Antwort antwort : {Antwort::Nein, Antwort::Ja}) {
        dialoge.antworten = {antwort};
        wähle(u"men_Datei_2"_s);
        ASSERT_EQ(dialoge.fragen.size(), 1U);
        EXPECT_TRUE(dialoge.fragen.back().verwirft);
        EXPECT_EQ(zeile(unr)->Z_NAME, antwort == Antwort::Ja ? u"A"_s : u"Anna"_s);
        dialoge.fragen.clear();
    }
    EXPECT_FALSE(hg().isWindowModified());
}

TEST_F(Speicherntest, rowChangedWhileASessionLayCrashed_isAskedAboutBeforeItIsReplaced) {
    missFlügel();
    züchter().setText(u"A"_s);
    wähle(u"men_Datei_2"_s);
    züchter().setText(u"B"_s);
    QTest::keyClick(&züchter(), Qt::Key_Return);
    const QString unr = nummer();
    const QString journal = ordner.filePath(u"Sitzung.journal"_s);
    ASSERT_TRUE(QFile::copy(journal, journal + u'2'));
    programm.reset();
    QFile::remove(journal);
    ASSERT_TRUE(QFile::rename(journal + u'2', journal));
    for (const bool geändert : {false, true}) {
        Ergebnissatz satz = zeile(unr).value();
        if (geändert) {
            satz.VOLK = u"of somebody else"_s;
            Ergebnistabelle(pfad()).speichere(satz);
            ASSERT_TRUE(QFile::copy(journal + u'3', journal));
        } else {
            ASSERT_TRUE(QFile::copy(journal, journal + u'3'));
        }
        dialoge.antworten = {Antwort::Ja}; // go on
        ASSERT_TRUE(starte());
        dialoge.fragen.clear();
        dialoge.antworten.clear(); // Nein, when it is asked
        wähle(u"men_Datei_2"_s);
        EXPECT_EQ(dialoge.fragen.size(), geändert ? 1U : 0U);
        EXPECT_EQ(hg().isWindowModified(), geändert);
        QFile::remove(journal);
        programm.reset();
        QFile::remove(journal);
    }
}

TEST_F(Speicherntest, whatWasNotReadOfARowThatOthersChangedSinceACrash_isNotReplacedUnasked) {
    missFlügel();
    züchter().setText(u"A"_s);
    wähle(u"men_Datei_2"_s);
    const QString unr = nummer();
    const QString journal = ordner.filePath(u"Sitzung.journal"_s);
    const auto schreibeMarken = [&](const QString& marken) {
        Ergebnissatz satz = zeile(unr).value();
        satz.MERKMAL = marken;
        Ergebnistabelle(pfad()).speichere(satz);
    };
    schreibeMarken(u"Xerste Fassung"_s);
    ASSERT_TRUE(starte());
    züchter().setText(u"B"_s);
    QTest::keyClick(&züchter(), Qt::Key_Return);
    ASSERT_TRUE(QFile::copy(journal, journal + u'2'));
    programm.reset();
    QFile::remove(journal);
    ASSERT_TRUE(QFile::rename(journal + u'2', journal));
    schreibeMarken(u"Xandere Fassung"_s);
    dialoge.antworten = {Antwort::Ja}; // go on
    ASSERT_TRUE(starte());
    // What stood there when it was opened is not known any more, so nothing can be put back.
    for (const std::deque<Antwort>& antworten :
         {std::deque{Antwort::Nein}, std::deque{Antwort::Ja, Antwort::Nein}}) {
        dialoge.fragen.clear();
        dialoge.antworten = antworten;
        wähle(u"men_Datei_2"_s);
        ASSERT_EQ(dialoge.fragen.size(), antworten.size());
        EXPECT_TRUE(dialoge.fragen.front().text.contains(u"Körpermerkmale"_s))
            << dialoge.fragen.front().text.toStdString();
        EXPECT_EQ(zeile(unr)->MERKMAL, u"Xandere Fassung"_s);
        EXPECT_EQ(zeile(unr)->Z_NAME, u"A"_s);
    }
}

TEST_F(Speicherntest, whatWasNotJudged_isNotStoredAsConforming) {
    züchter().setText(u"A"_s); // neither wings nor marks
    wähle(u"men_Datei_2"_s);
    EXPECT_EQ(zeile(nummer())->ERGEBNIS, u"Nein"_s);
    EXPECT_EQ(hg().beurteilung().urteil(), std::nullopt);
    missFlügel();
    EXPECT_NE(hg().beurteilung().urteil(), std::nullopt);
}
