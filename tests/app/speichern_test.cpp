#include "app/speichern.h"
#include "platform/profil.h"
#include "results/fluegelsatz.h"
#include "results/tagessicherung.h"
#include "settings/einstellungen.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QCompleter>
#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QTextDocumentFragment>
#include <QTimer>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

const QString nummerFehlt =
    u"Die Untersuchung kann nicht gespeichert werden, da 'Untersuchung Nr.' fehlt.\n"
    "Wollen Sie die Nummer eintragen."_s;
const QString angabenFehlen =
    u"Es fehlen Angaben zu Züchter und Königin.\nWollen Sie diese Angaben noch eintragen."_s;

} // namespace

TEST_F(Speicherntest, firstStart_makesAFileAmongTheDocumentsAndNumbersTheExamination) {
    EXPECT_TRUE(QFile::exists(pfad()));
    EXPECT_EQ(speicher.GetSetting(u"Index"_s, u"0ptionen"_s, u"Tabelle"_s), pfad());
    EXPECT_EQ(nummer(), u"001AB2025"_s);
    EXPECT_FALSE(hg().isWindowModified());
    EXPECT_EQ(hinweis(), u"Klicken Sie im Menü Datei auf den Befehl 'Bild laden'..."_s);
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
    EXPECT_TRUE(hg().close()); // nothing was entered, nothing is asked
    EXPECT_THAT(dialoge.fragen, IsEmpty());
}

TEST_F(Speicherntest, withoutAutomaticNumbers_theFieldStaysEmpty) {
    schreibeIni("[Start]\r\nNeu=False\r\n[Allgemeines]\r\nAutoNummer=0\r\nKurzzeichen=AB\r\n");
    ASSERT_TRUE(starte());
    EXPECT_EQ(nummer(), QString());
}

TEST_F(Speicherntest, closing_asksForNumberThenForQueenThenToSave) {
    feld(u"txt_Volk"_s).setText(u"7"_s);
    feld(u"txt_UNr"_s).clear();
    dialoge.antworten = {Antwort::Ja}; // the number will be typed
    EXPECT_FALSE(hg().close());
    EXPECT_THAT(fragetexte(), ElementsAre(nummerFehlt));
    EXPECT_EQ(dialoge.fragen[0].art, Meldungsart::Stopp);

    dialoge.fragen.clear();
    feld(u"txt_UNr"_s).setText(u"5"_s);
    dialoge.antworten = {Antwort::Ja}; // breeder and queen will be typed
    EXPECT_FALSE(hg().close());
    EXPECT_THAT(fragetexte(), ElementsAre(angabenFehlen));

    dialoge.fragen.clear();
    dialoge.antworten = {Antwort::Nein, Antwort::Abbrechen};
    EXPECT_FALSE(hg().close());
    EXPECT_THAT(
        fragetexte(),
        ElementsAre(angabenFehlen, u"' 5 ' wurde geändert. Wollen Sie die Änderung speichern."_s));
    EXPECT_EQ(dialoge.fragen[1].titel, u"Speichern"_s);
    EXPECT_TRUE(dialoge.fragen[1].mitAbbrechen);
    EXPECT_EQ(zeile(u"5"_s), std::nullopt);
    EXPECT_TRUE(hg().isWindowModified());

    dialoge.antworten = {Antwort::Nein, Antwort::Ja};
    EXPECT_TRUE(hg().close());
    ASSERT_TRUE(zeile(u"5"_s));
    EXPECT_EQ(zeile(u"5"_s)->VOLK, u"7"_s);
    EXPECT_EQ(zeile(u"5"_s)->DATUM, QDate(2025, 6, 15));
}

TEST_F(Speicherntest, closingWithoutNumberOrSaving_isTheUsersChoice) {
    feld(u"txt_Volk"_s).setText(u"7"_s);
    dialoge.antworten = {Antwort::Nein, Antwort::Nein}; // no queen; do not save
    EXPECT_TRUE(hg().close());
    EXPECT_EQ(Ergebnistabelle(pfad()).anzahl(), 0);

    ASSERT_TRUE(starte());
    feld(u"txt_UNr"_s).clear();
    dialoge.antworten = {Antwort::Nein};
    EXPECT_TRUE(hg().close());
}

TEST_F(Speicherntest, savedExamination_isThereAgainAtTheNextStart) {
    missFlügel();
    züchter().setText(u"Zoë Groß"_s);
    feld(u"txt_LV"_s).setText(u"05"_s);
    feld(u"txt_Jahr"_s).setText(u"24"_s);
    wähle(u"men_Ansicht_2"_s);
    kind<QAbstractButton>(u"opt_Panzer_A_2"_s).click();
    kind<QAbstractButton>(u"bef_Übernehmen"_s).click();
    const QString urteil = kind<QLabel>(u"lab_Urteil"_s).text();
    const Merkmale merkmale = hg().untersuchung().merkmale();
    const QStringList ci = liste(u"Liste_CI"_s);
    ASSERT_THAT(ci, SizeIs(1));
    wähle(u"men_Datei_2"_s); // asked for, so nothing is asked
    EXPECT_THAT(dialoge.fragen, IsEmpty());
    EXPECT_EQ(hinweis(), u"Die Untersuchung 001AB2025 ist gespeichert."_s);
    EXPECT_FALSE(hg().isWindowModified());
    EXPECT_FALSE(kind<QAction>(u"men_Datei_2"_s).isEnabled());
    EXPECT_TRUE(hg().close());

    ASSERT_TRUE(starte({.dezimal = u',', .tausender = u'.'}));
    EXPECT_EQ(nummer(), u"001AB2025"_s);
    EXPECT_EQ(züchter().text(), u"Zoë Groß"_s);
    EXPECT_EQ(feld(u"txt_LV"_s).text(), u"05"_s);
    EXPECT_EQ(feld(u"txt_Jahr"_s).text(), u"2024"_s);
    EXPECT_EQ(liste(u"Liste_CI"_s), ci);
    EXPECT_EQ(hg().untersuchung().merkmale(), merkmale);
    EXPECT_EQ(kind<QLabel>(u"lab_Urteil"_s).text(), urteil);
    EXPECT_TRUE(kind<QAction>(u"men_Ansicht_0"_s).isChecked()); // all measurements
    EXPECT_EQ(kind<QComboBox>(u"cbo_dpi"_s).currentText(), u"1200 dpi"_s);
    EXPECT_TRUE(hg().close());
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
}

TEST_F(Speicherntest, newExamination_savesTheOpenOneAndTakesTheNextNumber) {
    missFlügel();
    züchter().setText(u"A"_s);
    dialoge.antworten = {Antwort::Abbrechen};
    wähle(u"men_Datei_0"_s);
    EXPECT_THAT(reihe().nummern(), SizeIs(1)); // still there
    dialoge.antworten = {Antwort::Ja};
    wähle(u"men_Datei_0"_s);
    EXPECT_EQ(nummer(), u"002AB2025"_s);
    EXPECT_TRUE(reihe().leer());
    EXPECT_EQ(züchter().text(), QString());
    EXPECT_FALSE(hg().isWindowModified());
    EXPECT_TRUE(zeile(u"001AB2025"_s));
}

TEST_F(Speicherntest, pointsOfAWingInWork_areNotLostWithoutAQuestion) {
    hg().resize(1280, 800);
    ASSERT_TRUE(hg().ladeBild(maleBild({900, 320})));
    klick({100, 100});
    dialoge.antworten = {Antwort::Nein};
    wähle(u"men_Datei_0"_s);
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_EQ(dialoge.fragen[0].nein, u"Weiter messen"_s);
    EXPECT_TRUE(dialoge.fragen[0].verwirft);
    dialoge.antworten = {Antwort::Nein};
    EXPECT_FALSE(hg().close());
    dialoge.antworten = {Antwort::Ja};
    EXPECT_TRUE(hg().close());
}

TEST_F(Speicherntest, numberOfAnotherExamination_isNotTakenWithoutAQuestion) {
    züchter().setText(u"erste"_s);
    wähle(u"men_Datei_2"_s);
    wähle(u"men_Datei_0"_s);
    züchter().setText(u"zweite"_s);
    feld(u"txt_UNr"_s).setText(u"001ab2025"_s);
    dialoge.antworten = {Antwort::Nein};
    wähle(u"men_Datei_2"_s);
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_TRUE(dialoge.fragen[0].verwirft);
    EXPECT_EQ(zeile(u"001AB2025"_s)->Z_NAME, u"erste"_s);
    EXPECT_TRUE(hg().isWindowModified());
    dialoge.antworten = {Antwort::Ja};
    wähle(u"men_Datei_2"_s);
    EXPECT_EQ(zeile(u"001AB2025"_s)->Z_NAME, u"zweite"_s);
    EXPECT_EQ(Ergebnistabelle(pfad()).anzahl(), 1);
    // Its own number written otherwise is still its own.
    dialoge.fragen.clear();
    feld(u"txt_UNr"_s).setText(u"001aB2025"_s);
    züchter().setText(u"dritte"_s);
    wähle(u"men_Datei_2"_s);
    EXPECT_THAT(dialoge.fragen, IsEmpty());
    EXPECT_EQ(zeile(u"001AB2025"_s)->Z_NAME, u"dritte"_s);
}

TEST_F(Speicherntest, savingThatFails_saysWhyAndKeepsEverything) {
    züchter().setText(u"A"_s);
    ASSERT_TRUE(QFile::remove(pfad()));
    dialoge.antworten = {Antwort::Ja};
    EXPECT_FALSE(hg().close());
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(dialoge.meldungen[0].startsWith(u"Speichern: Speichern ist nicht möglich.\n"_s));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"Meine Tabelle.tdb"_s));
    EXPECT_EQ(züchter().text(), u"A"_s);
    EXPECT_TRUE(hg().isWindowModified());
}

TEST_F(Speicherntest, textThatIsTooLong_isRefusedByTheFieldsName) {
    züchter().setText(QString(31, u'x'));
    wähle(u"men_Datei_2"_s);
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"Das Feld 'Züchter' fasst höchstens 30 Zeichen"_s))
        << qPrintable(dialoge.meldungen[0]);
    EXPECT_EQ(Ergebnistabelle(pfad()).anzahl(), 0);
}

TEST_F(Speicherntest, changeOfLanguage_convertsTheStoredWords) {
    züchter().setText(u"A"_s);
    wähle(u"men_Datei_2"_s);
    EXPECT_EQ(zeile(nummer())->A_D, u"Arbeiter"_s);
    wähle(u"men_Sprache_2"_s);
    EXPECT_EQ(zeile(nummer())->A_D, u"Ouvrières"_s);
    EXPECT_FALSE(hg().isWindowModified());
    züchter().setText(u"B"_s);
    wähle(u"men_Datei_2"_s); // the row says the same in other words: nobody changed it
    EXPECT_THAT(dialoge.fragen, IsEmpty());
    EXPECT_EQ(zeile(nummer())->Z_NAME, u"B"_s);
}

TEST_F(Speicherntest, resultsFileThatIsGone_isMadeAnewAndTheUserIsTold) {
    programm.reset();
    ASSERT_TRUE(QFile::remove(pfad()));
    ASSERT_TRUE(starte());
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"war nicht mehr da"_s));
    EXPECT_TRUE(QFile::exists(pfad()));
}

TEST_F(Speicherntest, storeThatLostTheNameOfTheFile_isTold) {
    programm.reset();
    ordner.schreibe(u"benutzer.ini"_s);
    ASSERT_TRUE(starte());
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"steht nicht mehr"_s));
    EXPECT_TRUE(dialoge.meldungen[0].contains(QDir::toNativeSeparators(pfad())));
    ASSERT_TRUE(starte());
    EXPECT_THAT(dialoge.meldungen, SizeIs(1)); // it has the name again
}

TEST_F(Speicherntest, otherFileOfThatNameAmongTheDocuments_staysAndTheNextNameIsTaken) {
    programm.reset();
    ASSERT_TRUE(QFile::remove(ordner.filePath(u"benutzer.ini"_s)));
    lege(pfad(), "Lieber Imker");
    ASSERT_TRUE(starte());
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
    EXPECT_TRUE(QFile::exists(pfad(u"Meine Tabelle 2.tdb"_s)));
    EXPECT_EQ(liesGanz(pfad()), "Lieber Imker");
}

TEST_F(Speicherntest, settingsLost_theFileAmongTheDocumentsIsTakenUpAgain) {
    züchter().setText(u"A"_s);
    wähle(u"men_Datei_2"_s);
    programm.reset();
    ASSERT_TRUE(QFile::remove(ordner.filePath(u"benutzer.ini"_s)));
    ASSERT_TRUE(starte());
    EXPECT_EQ(züchter().text(), u"A"_s);
    EXPECT_THAT(QDir(ordner.path()).entryList({u"*.tdb"_s}), SizeIs(1));
}

TEST_F(Speicherntest, droppedResultsFile_becomesTheCurrentOne) {
    const QString andere = pfad(u"andere 100%.tdb"_s);
    NeueDatenbank(andere);
    Ergebnissatz satz;
    satz.U_NR = u"X1"_s;
    satz.Z_NAME = u"drüben"_s;
    Ergebnistabelle(andere).speichere(satz);
    ASSERT_TRUE(hg().öffneDatei(andere));
    EXPECT_EQ(nummer(), u"X1"_s);
    EXPECT_EQ(züchter().text(), u"drüben"_s);
    EXPECT_EQ(speicher.GetSetting(u"Index"_s, u"0ptionen"_s, u"Tabelle"_s), andere);
    EXPECT_TRUE(kind<QLabel>(u"lab_Status"_s).text().contains(u"andere 100%.tdb"_s));
}

TEST_F(Speicherntest, unsavedWork_isAskedForBeforeAnotherExaminationTakesItsPlace) {
    const QString andere = pfad(u"andere.tdb"_s);
    NeueDatenbank(andere);
    züchter().setText(u"A"_s);
    bool offen = false;
    QTimer::singleShot(0, &hg(), [&offen] {
        if (auto* browser = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            offen = true;
            browser->reject();
        }
    });
    dialoge.antworten = {Antwort::Abbrechen, Antwort::Abbrechen};
    wähle(u"men_Datei_1"_s);
    EXPECT_FALSE(hg().öffneDatei(andere));
    QApplication::processEvents();
    EXPECT_FALSE(offen);
    EXPECT_THAT(dialoge.fragen, SizeIs(2));
    EXPECT_EQ(züchter().text(), u"A"_s);
    EXPECT_TRUE(hg().isWindowModified());
}

TEST_F(Speicherntest, rowChangedInTheFileMeanwhile_isNotReplacedWithoutAQuestion) {
    züchter().setText(u"erste"_s);
    wähle(u"men_Datei_2"_s);
    Ergebnissatz anderswo = zeile(nummer()).value();
    anderswo.B_NAME = u"von drüben"_s;
    Ergebnistabelle(pfad()).speichere(anderswo);

    züchter().setText(u"geändert"_s);
    dialoge.antworten = {Antwort::Nein};
    wähle(u"men_Datei_2"_s);
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_TRUE(dialoge.fragen[0].text.contains(u"in der Datei geändert worden"_s));
    EXPECT_TRUE(dialoge.fragen[0].verwirft);
    EXPECT_EQ(zeile(nummer()), anderswo);
    EXPECT_TRUE(hg().isWindowModified());
    dialoge.antworten = {Antwort::Ja};
    wähle(u"men_Datei_2"_s);
    EXPECT_EQ(zeile(nummer())->Z_NAME, u"geändert"_s);
    züchter().setText(u"noch einmal"_s);
    wähle(u"men_Datei_2"_s); // now it is ours again
    EXPECT_THAT(dialoge.fragen, SizeIs(2));
}

TEST_F(Speicherntest, resolutionOfALoadedExamination_doesNotStayForANewOne) {
    missFlügel();
    züchter().setText(u"A"_s);
    wähle(u"men_Datei_2"_s);
    Ergebnissatz satz = zeile(nummer()).value();
    satz.Grafik[3].replace(u"/1200/"_s, u"/2400/"_s);
    Ergebnistabelle(pfad()).speichere(satz);
    ASSERT_TRUE(starte());
    EXPECT_EQ(kind<QComboBox>(u"cbo_dpi"_s).currentText(), u"2400 dpi"_s);
    wähle(u"men_Datei_0"_s);
    EXPECT_EQ(kind<QComboBox>(u"cbo_dpi"_s).currentText(), u"1200 dpi"_s);
}

TEST_F(Speicherntest, loadedExamination_isNotChangedByLookingAtIt) {
    Ergebnissatz satz;
    satz.U_NR = u"X1"_s;
    satz.ZB_NR = u"7"_s;
    satz.Z_NAME = u"A"_s;
    satz.DATUM = QDate(2024, 5, 1);
    Ergebnistabelle(pfad()).speichere(satz);
    ASSERT_TRUE(starte());
    EXPECT_EQ(nummer(), u"X1"_s);
    EXPECT_TRUE(hg().close());
    EXPECT_THAT(dialoge.fragen, IsEmpty());
    EXPECT_EQ(zeile(u"X1"_s)->ZB_NR, u"7"_s);
    EXPECT_EQ(zeile(u"X1"_s)->DATUM, QDate(2024, 5, 1));
}

TEST_F(Speicherntest, partsThatWereNotUnderstood_stayAsTheyAreUntilTheyAreEdited) {
    Ergebnissatz satz;
    satz.U_NR = u"X1"_s;
    satz.Z_NAME = u"A"_s;
    satz.A_D = u"Arbeiter"_s;
    satz.ERGEBNIS = u"Ja"_s;
    satz.CI = u"#001;2,5;18,0; "_s;
    satz.MERKMAL = u"Lunbekannt"_s;
    satz.PROZENT = u"O=90%; 7"_s;
    satz.Grafik[0] = u"CI-HI 2; neuere Fassung"_s;
    satz.Grafik[3] = u"Angaben 9;Neues=1;"_s;
    Ergebnistabelle(pfad()).speichere(satz);
    ASSERT_TRUE(starte());
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    for (const char* teil : {"Körpermerkmale", "Werte der Diagramme", "Angaben zu Scans"}) {
        EXPECT_TRUE(dialoge.meldungen[0].contains(QString::fromUtf8(teil))) << teil;
    }
    EXPECT_FALSE(dialoge.meldungen[0].contains(u"Grafik"_s));
    for (const QString& name : {u"B"_s, u"C"_s}) { // and again after a save
        züchter().setText(name);
        wähle(u"men_Datei_2"_s);
        const Ergebnissatz jetzt = zeile(u"X1"_s).value();
        EXPECT_EQ(jetzt.Z_NAME, name);
        EXPECT_EQ(jetzt.MERKMAL, satz.MERKMAL);
        EXPECT_EQ(jetzt.PROZENT, satz.PROZENT);
        EXPECT_EQ(jetzt.Grafik[0], satz.Grafik[0]);
        EXPECT_EQ(jetzt.Grafik[3], satz.Grafik[3]);
        EXPECT_EQ(jetzt.ERGEBNIS, satz.ERGEBNIS);
    }
    EXPECT_THAT(dialoge.fragen, IsEmpty());
    // The year has its place there, so what stood there would be lost.
    feld(u"txt_Jahr"_s).setText(u"2020"_s);
    dialoge.antworten = {Antwort::Nein};
    wähle(u"men_Datei_2"_s);
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_TRUE(dialoge.fragen[0].text.contains(u"Angaben zu Scans"_s));
    EXPECT_FALSE(dialoge.fragen[0].text.contains(u"Körpermerkmale"_s));
    EXPECT_EQ(zeile(u"X1"_s)->Grafik[3], satz.Grafik[3]);
    dialoge.antworten = {Antwort::Ja};
    wähle(u"men_Datei_2"_s);
    EXPECT_NE(zeile(u"X1"_s)->Grafik[3], satz.Grafik[3]);
    EXPECT_EQ(zeile(u"X1"_s)->MERKMAL, satz.MERKMAL);
}

TEST_F(Speicherntest, nameFields_offerWhatTheResultsFileKnows) {
    for (const auto& [nummer, name] : {std::pair{u"001AB2025"_s, u"Zoë Ängström"_s},
                                       {u"002AB2025"_s, u" "_s},
                                       {u"003AB2025"_s, u"Meyer "_s},
                                       {u"004AB2025"_s, u"Meyer"_s}}) {
        Ergebnissatz satz;
        satz.U_NR = nummer;
        satz.Z_NAME = name;
        satz.VATER = u"Insel"_s;
        Ergebnistabelle(pfad()).speichere(satz);
    }
    auto& namen = kind<QComboBox>(u"cbo_Name"_s);
    EXPECT_EQ(namen.count(), 0) << "the file is not asked before anybody wants to know";
    const auto einträge = [](const QComboBox& liste) {
        QStringList texte;
        for (int i = 0; i < liste.count(); ++i) {
            texte << liste.itemText(i);
        }
        return texte;
    };
    züchter().setFocus();
    EXPECT_THAT(einträge(namen), ElementsAre(u"Meyer"_s, u"Zoë Ängström"_s));
    kind<QComboBox>(u"cbo_Begattung"_s).setFocus();
    EXPECT_THAT(einträge(kind<QComboBox>(u"cbo_Begattung"_s)), ElementsAre(u"Insel"_s));
    EXPECT_FALSE(hg().untersuchung().geändert()) << "by looking at it";
    // What is typed stays as it is typed.
    namen.setFocus();
    QTest::keyClicks(&namen, u"meyer"_s);
    QTest::keyClick(&namen, Qt::Key_Escape);
    feld(u"txt_Volk"_s).setFocus();
    EXPECT_EQ(hg().untersuchung().angaben().Name, u"meyer"_s);
    // A part of a name offers it, and Enter takes the one chosen.
    namen.setFocus();
    namen.lineEdit()->selectAll();
    QTest::keyClicks(&namen, u"ngstr"_s);
    QWidget* const angebot = namen.completer()->popup();
    ASSERT_TRUE(angebot->isVisible());
    EXPECT_EQ(namen.completer()->completionCount(), 1);
    QTest::keyClick(angebot, Qt::Key_Down);
    QTest::keyClick(angebot, Qt::Key_Return);
    EXPECT_FALSE(angebot->isVisible());
    EXPECT_EQ(hg().untersuchung().angaben().Name, u"Zoë Ängström"_s);
}

TEST_F(Speicherntest, loadedExamination_isDrawnOnce) {
    missFlügel();
    wähle(u"men_Datei_2"_s);
    wähle(u"men_Datei_0"_s);
    wähle(u"men_Ansicht_3"_s);
    struct Zähler : QObject {
        std::map<QObject*, int> gemalt;
        bool eventFilter(QObject* wen, QEvent* ereignis) override {
            gemalt[wen] += ereignis->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    } zähler;
    QWidget& kurven = kind<QWidget>(u"pic_Kurven"_s);
    QWidget& liste = *kind<QListView>(u"Liste_CI"_s).viewport();
    QWidget& urteil = kind<QLabel>(u"lab_Urteil"_s);
    QTest::qWait(0);
    for (QWidget* ansicht : {&kurven, &liste, &urteil}) {
        ansicht->installEventFilter(&zähler);
    }
    ASSERT_TRUE(hg().öffneDatei(pfad()));
    QTest::qWait(0);
    ASSERT_EQ(reihe().nummern().size(), 1U);
    EXPECT_EQ(zähler.gemalt[&kurven], 0);
    EXPECT_EQ(zähler.gemalt[&liste], 1);
    EXPECT_EQ(zähler.gemalt[&urteil], 1);
}

TEST_F(Speicherntest, nameFilledIntoALoadedBlankField_hasNoBlankInFront) {
    feld(u"txt_Volk"_s).setText(u"12"_s);
    dialoge.antworten = {Antwort::Nein};
    wähle(u"men_Datei_2"_s);
    const QString gespeichert = nummer();
    ASSERT_EQ(zeile(gespeichert)->Z_NAME, u" "_s);
    ASSERT_TRUE(starte());
    auto& namen = kind<QComboBox>(u"cbo_Name"_s);
    EXPECT_FALSE(hg().untersuchung().geändert());
    namen.setFocus();
    QTest::keyClicks(&namen, u"Maria"_s);
    dialoge.antworten = {Antwort::Nein};
    wähle(u"men_Datei_2"_s);
    EXPECT_EQ(zeile(gespeichert)->Z_NAME, u"Maria"_s);
}

TEST_F(Speicherntest, nextColony_hasThePersonsOfTheOneBefore) {
    züchter().setText(u"Meyer"_s);
    kind<QComboBox>(u"cbo_Besitzer"_s).setEditText(u"Kaya"_s);
    kind<QComboBox>(u"cbo_Begattung"_s).setEditText(u"Insel"_s);
    feld(u"txt_Volk"_s).setText(u"12"_s);
    const QString vorige = nummer();
    dialoge.antworten = {Antwort::Abbrechen};
    wähle(u"men_Datei_22"_s);
    EXPECT_EQ(nummer(), vorige) << "the open one had to stay";
    dialoge.antworten = {Antwort::Ja};
    wähle(u"men_Datei_22"_s);
    EXPECT_NE(nummer(), vorige);
    const Kolonieangaben& neu = hg().untersuchung().angaben();
    EXPECT_EQ(QStringList({neu.Name, neu.Besitzer, neu.Begattung, neu.Volk}),
              QStringList({u"Meyer"_s, u"Kaya"_s, u"Insel"_s, QString()}));
    EXPECT_EQ(züchter().text(), u"Meyer"_s);
    EXPECT_FALSE(hg().untersuchung().geändert());
}

TEST_F(Speicherntest, saving_makesTheBackupOfTheDay_unlessSwitchedOff) {
    const auto speichere = [this](const QString& name) {
        züchter().setText(name);
        wähle(u"men_Datei_2"_s);
    };
    const QString kopie = sicherungsordner(pfad()) + u"/Meine Tabelle "_s +
                          uhr.now().date().toString(Qt::ISODate) + u".tdb"_s;
    Einstellungen(inipfad()).schreibe(Einstellung::Tagessicherung, 0);
    speichere(u"Meyer"_s);
    ASSERT_TRUE(zeile(nummer()));
    EXPECT_FALSE(QFileInfo::exists(sicherungsordner(pfad())));
    Einstellungen(inipfad()).schreibe(Einstellung::Tagessicherung, 1);
    speichere(u"Huber"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFileInfo::exists(kopie); }));
    EXPECT_EQ(sicherungen(pfad()).size(), 1U);
}
