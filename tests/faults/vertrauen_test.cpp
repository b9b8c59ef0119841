// What a person types and what a file says stays text: it is never a statement, never a command and
// never a page. Names of files may be whatever the system allows.

#include "app/fenster.h"
#include "evaluation/diagrammdatei.h"
#include "platform/shell.h"
#include "platform/system_shell.h"
#include "print/protokolldruck.h"
#include "results/db.h"
#include "results/ergebnistabelle.h"
#include "support/testordner.h"

#include <QComboBox>
#include <QDir>
#include <QDirIterator>
#include <QHelpEvent>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTableView>
#include <QTextDocumentFragment>
#include <QToolTip>

#include <sys/stat.h>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

/// Texts that mean something to a statement, a shell, a page, a format or a settings file.
const QStringList feindlich = {u"'; DROP TABLE Ergebnisse; --"_s,
                               u"x' OR '1'='1"_s,
                               u"\"; DELETE FROM x; --"_s,
                               u"%"_s,
                               u"_%' ESCAPE '\\"_s,
                               u"\\"_s,
                               u"%1 %2 %n %s"_s,
                               u"$(touch getan)"_s,
                               u"`touch getan`; touch getan"_s,
                               u"| touch getan &"_s,
                               u"<b>x</b>"_s,
                               u"<img src=getan.png>"_s,
                               u"[Start]"_s,
                               u"Neu=1;#"_s,
                               u"=1+1"_s,
                               u"?1 :a @b $c"_s,
                               u"NULL"_s,
                               u"&amp;&x"_s,
                               u"\u202Egnp.exe"_s,
                               u"\U0001F41D é ß ''"_s};

/// Names that a file or folder may have.
const QStringList namen = {u"100% %1 %2 %n"_s,
                           u"-rf"_s,
                           u"--help"_s,
                           u"'; DROP TABLE Ergebnisse; --"_s,
                           u"\"Zucht\" 'O''Hara'"_s,
                           u"$(touch getan)"_s,
                           u"`touch getan`; touch getan"_s,
                           u"#a?b=c&mode=memory"_s,
                           u"file:x"_s,
                           u"Königin é 蜂 \U0001F41D"_s,
                           u" vorn und hinten "_s,
                           u"zwei\nZeilen"_s,
                           u"<img src=x>"_s,
                           u"\\\\rechner\\x"_s,
                           u"~"_s,
                           u"*"_s,
                           u"a;b,c|d"_s};

/// What a person sees of a text that the toolkit takes for a page when it looks like one.
QString gezeigt(const QString& text) {
    return Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
}

constexpr auto Ausführbar = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

struct Vertrauen : Fenstertest {
    QString tabelle() const { return ordner.filePath(u"Meine Tabelle.tdb"_s); }
    std::vector<Ergebnissatz> zeilen() const {
        std::vector<Ergebnissatz> gelesen;
        const Ergebnistabelle t(tabelle());
        for (const auto& zeile : t.zeilen(u"SELECT * FROM Ergebnisse"_s, {}, 9999)) {
            gelesen.push_back(t.lade(zeile.werte[0]).value_or(Ergebnissatz()));
        }
        return gelesen;
    }
    void tippe(const QString& feld, const QString& text) const {
        auto* auswahl = hg().findChild<QComboBox*>(feld);
        (auswahl != nullptr ? *auswahl->lineEdit() : kind<QLineEdit>(feld)).setText(text);
    }
    /// Labels, and the tips of all controls, whose text is shown otherwise than it stands there.
    QStringList verfälscht() const {
        QStringList gefunden;
        const auto widgets = hg().findChildren<QWidget*>();
        for (const QWidget* widget : widgets) {
            const auto* label = qobject_cast<const QLabel*>(widget);
            if (label != nullptr && label->textFormat() == Qt::AutoText &&
                Qt::mightBeRichText(label->text())) {
                gefunden << label->text();
            }
            if (gezeigt(widget->toolTip()).contains(QChar::ObjectReplacementCharacter)) {
                gefunden << widget->toolTip();
            }
        }
        return gefunden;
    }
    void erwarteNichtsGestartet() const {
        EXPECT_THAT(shell.geöffnet, IsEmpty());
        EXPECT_THAT(shell.gestartet, IsEmpty());
        EXPECT_FALSE(QFile::exists(ordner.filePath(u"getan"_s)));
        EXPECT_FALSE(QFile::exists(u"getan"_s));
    }
};

} // namespace

TEST_F(Vertrauen, textsTypedIntoEveryField_areStoredToTheLetter) {
    ASSERT_TRUE(starte());
    int anzahl = 0;
    for (const QString& text : feindlich) {
        SCOPED_TRACE(text.toStdString());
        wähle(u"men_Datei_0"_s);
        const QString nummer = text.left(10);
        tippe(u"txt_UNr"_s, nummer);
        for (const char* feld : {"cbo_Name", "cbo_Besitzer", "cbo_Begattung", "txt_Volk", "txt_LV",
                                 "txt_ZNr", "txt_KNr", "txt_Jahr"}) {
            tippe(QString::fromLatin1(feld), text.left(30));
        }
        for (const char* feld : {"txt_LV", "txt_ZNr", "txt_KNr", "txt_Jahr"}) {
            tippe(QString::fromLatin1(feld), text.left(4)); // all four are one column
        }
        wähle(u"men_Datei_2"_s);
        const auto satz = Ergebnistabelle(tabelle()).lade(nummer.trimmed());
        ASSERT_TRUE(satz);
        for (const QString& wert : {satz->Z_NAME, satz->B_NAME, satz->VATER, satz->VOLK}) {
            EXPECT_EQ(wert.trimmed(), text.left(30).trimmed());
        }
        EXPECT_EQ(Ergebnistabelle(tabelle()).anzahl(), ++anzahl);
        EXPECT_THAT(verfälscht(), IsEmpty());
    }
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
    ASSERT_TRUE(starte()); // the latest is shown, the numbers are counted on
    EXPECT_EQ(Ergebnistabelle(tabelle()).anzahl(), anzahl);
    erwarteNichtsGestartet();
}

TEST_F(Vertrauen, textsTypedIntoTheBrowser_findAndRenameOnlyWhatTheyAre) {
    ASSERT_TRUE(starte());
    for (int i = 0; i < feindlich.size(); ++i) {
        Ergebnissatz satz;
        satz.U_NR = QString::number(i);
        satz.Z_NAME = feindlich[i].leftJustified(30, u'.');
        Ergebnistabelle(tabelle()).speichere(satz);
    }
    DB db({.texte = programm->texte(),
           .dialoge = dialoge,
           .DatenbankPfad = tabelle(),
           .dokumente = ordner.path(),
           .DatenbankWählen = [](const QString&) { return true; },
           .LadenDB = [](const QString&) { return true; }});
    db.show();
    auto& suche = tarvel::kind<QLineEdit>(db, u"txt_Suche"_s);
    auto& grid = tarvel::kind<QTableView>(db, u"Grid"_s);
    grid.setColumnWidth(2, 30); // narrower than its texts, which are then shown as tips
    QAbstractItemModel& tabelle = *grid.model();
    for (const QString& text : feindlich) {
        SCOPED_TRACE(text.toStdString());
        suche.setText(text);
        const QString name = text.leftJustified(30, u'.');
        int erwartet = 0;
        for (const QString& anderer : feindlich) {
            erwartet += anderer.contains(text, Qt::CaseInsensitive) ? 1 : 0;
        }
        EXPECT_EQ(tabelle.rowCount(), erwartet);
        const auto treffer = tabelle.match(tabelle.index(0, 2), Qt::DisplayRole, name, 1,
                                           Qt::MatchFixedString | Qt::MatchCaseSensitive);
        ASSERT_THAT(treffer, SizeIs(1));
        const QModelIndex zelle = treffer[0];
        const QPoint ort = grid.visualRect(zelle).center();
        QHelpEvent hilfe(QEvent::ToolTip, ort, grid.viewport()->mapToGlobal(ort));
        QApplication::sendEvent(grid.viewport(), &hilfe);
        EXPECT_EQ(gezeigt(QToolTip::text()), name);
        QToolTip::hideText();

        for (const int spalte : {1, 3, 7}) { // queen, owner, mating
            EXPECT_TRUE(tabelle.setData(zelle.siblingAtColumn(spalte), text, Qt::EditRole));
            EXPECT_EQ(zelle.siblingAtColumn(spalte).data().toString(), text);
        }
        EXPECT_TRUE(tabelle.setData(zelle.siblingAtColumn(0), u"N"_s + text.left(9), Qt::EditRole));
    }
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
    const auto danach = zeilen();
    ASSERT_EQ(static_cast<int>(danach.size()), feindlich.size());
    for (const Ergebnissatz& satz : danach) {
        EXPECT_EQ(satz.B_NAME.leftJustified(30, u'.'), satz.Z_NAME);
        EXPECT_EQ(satz.VATER, satz.B_NAME);
        EXPECT_EQ(satz.U_NR, (u"N"_s + satz.B_NAME.left(9)).trimmed());
    }
}

TEST_F(Vertrauen, textsTypedIntoTheOptions_changeTheirOwnSettingOnly) {
    ASSERT_TRUE(starte());
    Einstellungen& e = programm->einstellungen();
    const auto alle = [&e] {
        QStringList werte;
        for (const Einstellungszeile& zeile : einstellungstabelle()) {
            werte << (zeile.art == Einstellungsart::Text ? e.text(zeile.id)
                                                         : QString::number(e.zahl(zeile.id)));
        }
        return werte;
    };
    for (const Einstellungszeile& zeile : einstellungstabelle()) {
        for (const QString& text : feindlich) {
            if (zeile.art == Einstellungsart::Text) {
                SCOPED_TRACE((zeile.schlüssel.toString() + u' ' + text).toStdString());
                QStringList erwartet = alle();
                e.schreibe(zeile.id, text + u"\r\n[Start]\r\nSprache=2"_s);
                erwartet[static_cast<int>(zeile.id)] = e.text(zeile.id);
                EXPECT_EQ(alle(), erwartet);
            }
        }
    }
    // Among them the programme for pictures and the short sign in the numbers.
    ASSERT_TRUE(starte());
    wähle(u"men_Datei_0"_s);
    erwarteNichtsGestartet();
}

TEST_F(Vertrauen, measurementFile_isTextWhateverItSays) {
    ASSERT_TRUE(starte());
    for (const QString& text : feindlich) {
        SCOPED_TRACE(text.toStdString());
        const QByteArray t = text.toLatin1();
        const QString pfad = ordner.schreibe(
            u"Königin.Bee"_s, "A1\n2025\n" + t + "\n" + t + "\n" + t + "\n" + t.left(10) + "\n" +
                                  t + "\n\n\n" + t + "\n" + t + "\n" + t + "\n" + t + "\n" + t +
                                  "\n001 2.31 12.3\nEndeCI\n" + t + "\nEndeHI\n" + t + "\n" + t +
                                  "\n" + t + "\n0\n");
        dialoge.antworten = {Antwort::Nein, Antwort::Nein, Antwort::Nein};
        EXPECT_TRUE(hg().öffneDatei(pfad));
        EXPECT_EQ(kind<QComboBox>(u"cbo_Name"_s).currentText(), QString::fromLatin1(t).trimmed());
        EXPECT_THAT(verfälscht(), IsEmpty());
        erwarteNichtsGestartet();
    }
}

TEST_F(Vertrauen, awkwardNames_workForEveryFile) {
    const QTemporaryDir wurzel;
    for (const QString& name : namen) {
        SCOPED_TRACE(name.toStdString());
        programm.reset();
        shell = TestShell();
        dialoge = TestDialoge();
        const QString heim = wurzel.path() + u'/' + name;
        ASSERT_TRUE(QDir().mkdir(heim));
        ordner = Testordner(heim + u"/XXXXXX"_s); // settings and results in a folder of the name
        ASSERT_TRUE(ordner.isValid());
        const auto in = [&](const QString& endung) { return ordner.filePath(name + endung); };
        speicher = Benutzerspeicher(ordner.filePath(u"benutzer.ini"_s));
        schreibeIni("[Start]\r\nNeu=False\r\n[Speichern]\r\nGrafikprogramm=/usr/bin/malen\r\n");
        ASSERT_TRUE(starte());

        NeueDatenbank(in(u".tdb"_s));
        EXPECT_TRUE(hg().öffneDatei(in(u".tdb"_s)));
        missFlügel();
        EXPECT_TRUE(hg().ladeBild(maleBild({900, 320}, name + u".png"_s)));
        EXPECT_THAT(verfälscht(), IsEmpty());
        EXPECT_TRUE(gezeigt(kind<QLabel>(u"lab_Status"_s).toolTip()).contains(name.simplified()) ||
                    name != name.simplified());
        wähle(u"men_Datei_6"_s);
        EXPECT_THAT(shell.gestartet, ElementsAre(u"/usr/bin/malen "_s + in(u".png"_s)));
        kind<QLineEdit>(u"txt_UNr"_s).setText(u"7"_s);
        wähle(u"men_Datei_2"_s);
        EXPECT_EQ(Ergebnistabelle(in(u".tdb"_s)).anzahl(), 1);

        Ergebnistabelle(in(u".tdb"_s)).sichere(in(u" kopie.tdb"_s));
        EXPECT_EQ(Ergebnistabelle(in(u" kopie.tdb"_s)).lade(u"7"_s),
                  Ergebnistabelle(in(u".tdb"_s)).lade(u"7"_s));
        EXPECT_EQ(speichereDiagramm(in(u".svg"_s), Diagrammformat::SVG, {100, 50}, name,
                                    [](QPainter&, const QRectF&) {}),
                  QString());
        EXPECT_EQ(speichereProtokoll(in(u".pdf"_s), {}, {}, {1, 1}), QString());
        EXPECT_TRUE(QFile::copy(in(u".png"_s), in(u".Bee"_s)));
        EXPECT_FALSE(hg().öffneDatei(in(u".Bee"_s))); // none, and named for it
        ASSERT_THAT(dialoge.meldungen, SizeIs(1));
        EXPECT_TRUE(dialoge.meldungen[0].contains(in(u".Bee"_s)));

        // The wing's picture is gone: its name comes out of the file with the results.
        QFile::remove(ordner.filePath(u"flügel 100%.png"_s));
        ASSERT_TRUE(starte());
        wähle(u"men_Bearbeiten_1"_s);
        ASSERT_FALSE(dialoge.fragen.empty()); // where it is now
        EXPECT_TRUE(dialoge.fragen.back().text.contains(u"flügel 100%.png"_s));
        EXPECT_THAT(QDir(heim).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), SizeIs(1));
    }
    EXPECT_FALSE(QFile::exists(u"getan"_s));
    EXPECT_EQ(QDir(wurzel.path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(),
              namen.size());
}

TEST_F(Vertrauen, pictureNamedInADatabase_isReadAndNeverStarted) {
    ASSERT_TRUE(starte());
    const QString skript = ordner.filePath(u"tu was.png"_s);
    missFlügel();
    kind<QLineEdit>(u"txt_UNr"_s).setText(u"7"_s);
    wähle(u"men_Datei_2"_s);
    auto satz = Ergebnistabelle(tabelle()).lade(u"7"_s);
    ASSERT_TRUE(satz);
    const QString vorher = satz->Grafik[3];
    satz->Grafik[3].replace(u"fl%C3%BCgel 100%25"_s, u"tu was"_s);
    ASSERT_NE(satz->Grafik[3], vorher);
    Ergebnistabelle(tabelle()).speichere(*satz);
    lege(skript, "#!/bin/sh\ntouch getan\n");
    ASSERT_TRUE(QFile::setPermissions(skript, Ausführbar));
    programm->einstellungen().schreibe(Einstellung::Grafikprogramm, u"/usr/bin/malen"_s);
    ASSERT_TRUE(starte());
    erwarteNichtsGestartet();
    wähle(u"men_Bearbeiten_1"_s);         // asks for the picture of the wing
    ASSERT_FALSE(dialoge.fragen.empty()); // what lies there is not the picture
    EXPECT_TRUE(dialoge.fragen.back().text.contains(QFileInfo(skript).fileName()));
    erwarteNichtsGestartet();
    wähle(u"men_Datei_6"_s); // what is no picture was not chosen, and is not handed on
    for (const QString& gestartet : std::as_const(shell.gestartet)) {
        EXPECT_FALSE(gestartet.contains(skript));
    }
    EXPECT_FALSE(QFile::exists(ordner.filePath(u"getan"_s)));
}

TEST_F(Vertrauen, programForPictures_getsTheNameAsOneArgument) {
    const QString skript = ordner.filePath(u"zeig's mir.sh"_s);
    const QString antwort = ordner.filePath(u"antwort"_s);
    ASSERT_EQ(mkfifo(antwort.toUtf8().constData(), 0600), 0); // waits for both ends
    lege(skript, "#!/bin/sh\nprintf '%s|%s' \"$#\" \"$1\" > '" + antwort.toUtf8() + "'\n");
    ASSERT_TRUE(QFile::setPermissions(skript, Ausführbar));
    for (const QString& name : namen) {
        ASSERT_TRUE(SystemShell().runProgram(skript, name));
        EXPECT_EQ(QString::fromUtf8(liesGanz(antwort)),
                  u"1|"_s + QFileInfo(name).absoluteFilePath());
    }
}

TEST(Vertrauensfrage, otherProgramsAndNetworks_areReachedFromNowhereElse) {
    const QRegularExpression start(
        u"\\b(openDocument|runProgram|starteProgramm|QProcess|QDesktopServices|openUrl|std::system|"
        u"popen|execvp?|posix_spawn|ShellExecute|CreateProcess|QLibrary|QPluginLoader|dlopen|"
        u"setOpenExternalLinks|load_extension)\\b"_s);
    const QRegularExpression netz(u"\\bQ(Tcp|Udp|Ssl|Sctp|Network|Host|Dns|Web|Http)[A-Z]|"
                                  u"<sys/socket\\.h>|<curl/"_s);
    QStringList stellen;
    const QString wurzel = QStringLiteral(TARVEL_SOURCE);
    for (QDirIterator i(wurzel, {u"*.cpp"_s, u"*.h"_s}, QDir::Files, QDirIterator::Subdirectories);
         i.hasNext();) {
        const QString inhalt = QString::fromUtf8(liesGanz(i.next()));
        EXPECT_FALSE(inhalt.contains(netz)) << i.filePath().toStdString();
        if (inhalt.contains(start)) {
            stellen << i.filePath().mid(wurzel.size() + 1);
        }
    }
    stellen.sort();
    // The printing system's own library is loaded by its fixed name; so is the program that reads
    // databases of the former kind, with a full path as its only argument from outside.
    EXPECT_THAT(stellen, ElementsAre(u"app/bildwahl.cpp"_s, u"lang/hilfe.cpp"_s,
                                     u"platform/cupsdrucker.cpp"_s, u"platform/shell.cpp"_s,
                                     u"platform/shell.h"_s, u"platform/system_shell.cpp"_s,
                                     u"platform/system_shell.h"_s, u"results/jetdatei.cpp"_s));
}
