#include "lang/uebersetz.h"

#include "platform/codepage.h"
#include "support/kinder.h"
#include "support/testdialoge.h"
#include "support/testordner.h"

#include <QApplication>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QTest>
#include <gmock/gmock.h>

#include <optional>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const QByteArray andereEinstellungen = "[Start]\r\nSprache=0\r\n; kept\r\n[Translate]\r\n"
                                       "Item033=Picco\r\n[Protokoll]\r\nArt=2\r\n";

struct ÜbersetzTest : testing::Test {
    Testordner ordner;
    QString pfad = ordner.filePath(u"Index.ini"_s);
    Texte texte{ordner.path()};
    TestDialoge dialoge;
    TestShell shell;
    std::vector<Protokollfelder> getestet;
    int getesteteSeite = 0;
    std::optional<Übersetz> form;

    void SetUp() override { texte.SpracheDeutsch(); }

    void schreibe(const QByteArray& inhalt) const { lege(pfad, inhalt); }
    QByteArray ini() const { return liesGanz(pfad); }
    bool öffne() {
        form.emplace(texte, pfad, dialoge, shell, [this](const Protokollfelder& felder, int auf) {
            getestet.push_back(felder);
            getesteteSeite = auf;
        });
        form->show();
        form->activateWindow();
        return QTest::qWaitForWindowActive(&*form);
    }
    template <typename T>
    T& kind(const QString& name) {
        return tarvel::kind<T>(*form, name);
    }
    QLineEdit& feld(int zeile) { return kind<QLineEdit>(u"txt_Text_%1"_s.arg(zeile)); }
    QLabel& label(int zeile) { return kind<QLabel>(u"lab_Text_%1"_s.arg(zeile)); }
    int seite() { return kind<QTabWidget>(u"tbs_Seiten"_s).currentIndex(); }

    /// In place of what the field holds. Characters beyond ASCII are not on every keyboard and come
    /// the way a clipboard or an input method brings them.
    void tippe(int zeile, const QString& text) {
        feld(zeile).setFocus();
        QTest::keyClick(&feld(zeile), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&feld(zeile), Qt::Key_Delete);
        for (const QChar c : text) {
            QKeyEvent taste(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
            QApplication::sendEvent(&feld(zeile), &taste);
        }
    }
    void drücke(Qt::Key taste, Qt::KeyboardModifiers dazu = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), taste, dazu);
    }
    void klicke(const QString& knopf) {
        QTest::mouseClick(&kind<QPushButton>(knopf), Qt::LeftButton);
    }
    /// What the report finds at the next start.
    Protokollfelder gelesen() const {
        Protokollfelder felder = ProtokolltexteStandard(texte).felder;
        ÜbersetzungLaden(pfad, felder);
        return felder;
    }
};

TEST_F(ÜbersetzTest, load_showsReportTextsAndTheUsersOwn) {
    texte.SpracheFranzösisch();
    schreibe("[Translate]\r\nItem505=Indice cubitale\r\nItem005=\r\n");
    ASSERT_TRUE(öffne());
    EXPECT_EQ(form->windowTitle(), u"Traduire le résultat"_s);
    for (std::size_t i = 0; i < protokolltabelle.size(); ++i) {
        const int zeile = static_cast<int>(i);
        const QString standard = texte(protokolltabelle.at(i).text);
        EXPECT_EQ(label(zeile).text(), standard);
        EXPECT_EQ(label(zeile).buddy(), &feld(zeile));
        EXPECT_EQ(feld(zeile).accessibleName(), standard);
        EXPECT_EQ(feld(zeile).text(), i == 0 ? u"Indice cubitale"_s : QString());
        EXPECT_EQ(feld(zeile).placeholderText(), standard);
    }
    EXPECT_EQ(kind<QLabel>(u"lab_Hinweis"_s).text(), u"1 textes sur 36 sont les vôtres"_s);
}

TEST_F(ÜbersetzTest, enter_writesAllKeysInRowOrderAndCloses) {
    schreibe("[Start]\r\nSprache=0\r\n");
    ASSERT_TRUE(öffne());
    tippe(0, u"Erster"_s);
    tippe(35, u"Letzter"_s);
    drücke(Qt::Key_Return);
    EXPECT_FALSE(form->isVisible());

    QByteArray erwartet = "[Start]\r\nSprache=0\r\n[Translate]\r\n";
    Protokollfelder felder; // what was not changed stays open for the language of the day
    felder.front() = u"Erster"_s;
    felder.back() = u"Letzter"_s;
    for (std::size_t i = 0; i < felder.size(); ++i)
        erwartet += protokollschlüssel(protokolltabelle.at(i).nummer) + '=' +
                    nachCodepage1252(felder.at(i)) + "\r\n";
    EXPECT_EQ(ini(), erwartet);
}

TEST_F(ÜbersetzTest, ok_leavesTheOtherSettingsAsTheyWere) {
    schreibe(andereEinstellungen);
    ASSERT_TRUE(öffne());
    EXPECT_EQ(feld(35).text(), u"Picco"_s);
    tippe(35, u"Punta"_s);
    klicke(u"bef_OK"_s);
    EXPECT_FALSE(form->isVisible());
    const QByteArray neu = ini();
    EXPECT_TRUE(neu.startsWith("[Start]\r\nSprache=0\r\n; kept\r\n[Translate]\r\nItem033=Punta\r\n"
                               "Item505=\r\n"));
    EXPECT_TRUE(neu.endsWith("Item512=\r\n[Protokoll]\r\nArt=2\r\n"));
}

TEST_F(ÜbersetzTest, cancelled_leavesTheFileAndForgetsTheEdits) {
    const std::function<void()> wege[] = {[this] { drücke(Qt::Key_Escape); },
                                          [this] { klicke(u"bef_Abbrechen"_s); },
                                          [this] { form->close(); },
                                          [this] {
                                              kind<QPushButton>(u"bef_Abbrechen"_s).setFocus();
                                              drücke(Qt::Key_Enter);
                                          }};
    for (const auto& weg : wege) {
        schreibe(andereEinstellungen);
        ASSERT_TRUE(öffne());
        tippe(0, u"verworfen"_s);
        weg();
        EXPECT_FALSE(form->isVisible());
        EXPECT_EQ(ini(), andereEinstellungen);
        EXPECT_EQ(form->felder(), gelesen());
    }
}

TEST_F(ÜbersetzTest, emptyField_writesAnEmptyValueThatMeansTheProgramsText) {
    schreibe("[Translate]\r\nItem004=Classe\r\n");
    ASSERT_TRUE(öffne());
    tippe(16, QString());
    EXPECT_EQ(form->felder()[16], u"Klasse"_s);
    drücke(Qt::Key_Enter);
    EXPECT_THAT(ini().toStdString(), HasSubstr("Item004=\r\n"));
    form->show();
    EXPECT_EQ(feld(16).text(), QString());
    // A file that an earlier version filled with the words of the day is freed of them.
    schreibe("[Translate]\r\nItem004=Klasse\r\nItem005=IC\r\n");
    form->Form_Load();
    EXPECT_EQ(form->eigene(), 1);
}

TEST_F(ÜbersetzTest, anyText_comesBackAsItWasWritten) {
    ASSERT_TRUE(öffne());
    const QString eigene[] = {u"\"Volk\""_s,   u"  mit Rand  "_s,  u"; kein Kommentar"_s, u"'x'"_s,
                              u"Größe in €"_s, u"[a]=b"_s,         u"\"halb"_s,           u"''"_s,
                              u" "_s,          QString(127, u'ß'), u"Skrzydło Ω"_s};
    int zeile = 0;
    for (const QString& text : eigene)
        tippe(zeile++, text);
    drücke(Qt::Key_Return);
    zeile = 0;
    for (const QString& text : eigene) {
        EXPECT_EQ(gelesen().at(static_cast<std::size_t>(zeile)), text);
        EXPECT_EQ(feld(zeile++).text(), text);
    }
}

TEST_F(ÜbersetzTest, textBeyondLengthOrLine_isCut) {
    ASSERT_TRUE(öffne());
    tippe(0, QString(130, u'x'));
    EXPECT_EQ(feld(0).text().size(), 127);
    feld(2).setText(u"zwei\nZeilen"_s);
    drücke(Qt::Key_Return);
    EXPECT_EQ(gelesen()[2], u"zwei Zeilen"_s);
}

TEST_F(ÜbersetzTest, test_savesShowsTheReportAndStaysOpen) {
    ASSERT_TRUE(öffne());
    tippe(10, u"Allevatore"_s);
    tippe(11, QString());
    klicke(u"bef_Test"_s);
    ASSERT_EQ(getestet.size(), 1U);
    EXPECT_EQ(getestet.front(), gelesen());
    EXPECT_EQ(getestet.front()[10], u"Allevatore"_s);
    EXPECT_EQ(getestet.front()[11], u"Zuchtbuch"_s);
    EXPECT_EQ(getesteteSeite, 1);
    EXPECT_TRUE(form->isVisible());
    drücke(Qt::Key_Escape);
    EXPECT_EQ(gelesen()[10], u"Allevatore"_s);
}

TEST_F(ÜbersetzTest, unwritableFile_isToldAndNothingIsLost) {
    ASSERT_TRUE(QDir().mkdir(pfad));
    ASSERT_TRUE(öffne());
    tippe(0, u"Indice"_s);
    drücke(Qt::Key_Return);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(feld(0).text(), u"Indice"_s);
    ASSERT_EQ(dialoge.meldungen.size(), 1);
    EXPECT_TRUE(dialoge.meldungen.front().contains(QDir::toNativeSeparators(pfad)));
    klicke(u"bef_Test"_s);
    EXPECT_EQ(dialoge.meldungen.size(), 2);
    EXPECT_THAT(getestet, IsEmpty());
}

TEST_F(ÜbersetzTest, f1_opensTheHelpFileOrSaysThatItIsMissing) {
    ASSERT_TRUE(öffne());
    drücke(Qt::Key_F1);
    EXPECT_THAT(shell.geöffnet, ElementsAre(texte.HilfeDatei()));
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
    shell.gelingt = false;
    drücke(Qt::Key_F1);
    ASSERT_EQ(dialoge.meldungen.size(), 1);
    EXPECT_TRUE(dialoge.meldungen.front().startsWith(u"Hilfe: Datei wurde nicht gefunden."_s));
    EXPECT_TRUE(form->isVisible());
}

TEST_F(ÜbersetzTest, keys_changeThePageAndTabWalksDownTheRows) {
    ASSERT_TRUE(öffne());
    EXPECT_EQ(QApplication::focusWidget(), &feld(0));
    drücke(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &feld(1));
    drücke(Qt::Key_PageDown);
    EXPECT_EQ(seite(), 1);
    EXPECT_EQ(QApplication::focusWidget(), &feld(2));
    drücke(Qt::Key_PageDown);
    EXPECT_EQ(seite(), 1);
    drücke(Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(seite(), 0);
    drücke(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(seite(), 1);
    drücke(Qt::Key_PageUp);
    EXPECT_EQ(QApplication::focusWidget(), &feld(0));
}

TEST_F(ÜbersetzTest, rows_areLaidOutAnewForTheWidth) {
    ASSERT_TRUE(öffne());
    const auto ort = [this](int zeile) { return feld(zeile).mapTo(&*form, QPoint()); };
    form->resize(1600, 700);
    QCoreApplication::processEvents();
    EXPECT_GT(ort(35).x(), ort(0).x());
    form->resize(400, 300);
    QCoreApplication::processEvents();
    EXPECT_EQ(ort(35).x(), ort(0).x());
    EXPECT_GT(ort(35).y(), form->height());
    const auto& rolle = kind<QScrollArea>(u"rol_Seite_0"_s);
    EXPECT_LE(rolle.widget()->width(), rolle.viewport()->width());
    for (int i = 0; i < 28; ++i)
        drücke(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &feld(35));
    EXPECT_LT(ort(35).y(), form->height());
}

TEST_F(ÜbersetzTest, languagePack_liesOverTheTextsAndIsCounted) {
    ASSERT_TRUE(öffne());
    QList<Paketwunsch> wünsche;
    form->beiSprachpaket([&](Paketwunsch wunsch) { wünsche << wunsch; });
    kind<QAction>(u"men_Sprachpaket_0"_s).trigger();
    EXPECT_EQ(wünsche, QList{Paketwunsch::Laden});
    EXPECT_FALSE(kind<QAction>(u"men_Sprachpaket_2"_s).isEnabled());
    texte.setzePaket(leseSprachpaket("Tarvel language pack\nlanguage = Slovenski\n"
                                     "Text.Cubitalindex = Kubitalni indeks\n"));
    EXPECT_EQ(label(0).text(), u"Kubitalni indeks"_s);
    EXPECT_TRUE(kind<QAction>(u"men_Sprachpaket_2"_s).isEnabled());
    EXPECT_EQ(
        kind<QLabel>(u"lab_Hinweis"_s).text(),
        u"0 von 36 Texten sind Ihre eigenen\nSprachpaket 'Slovenski': 1 von %1 Texten übersetzt"_s
            .arg(umfangSprachpaket()));
}

TEST_F(ÜbersetzTest, languageChange_reachesEverythingButTheUsersOwnTexts) {
    schreibe(andereEinstellungen);
    ASSERT_TRUE(öffne());
    tippe(0, u"Indice"_s);
    texte.SpracheEnglisch();
    EXPECT_EQ(form->windowTitle(), u"Translate record"_s);
    EXPECT_EQ(label(4).text(), u"Body marks"_s);
    EXPECT_EQ(feld(4).placeholderText(), u"Body marks"_s);
    EXPECT_EQ(feld(35).text(), u"Picco"_s);
    EXPECT_EQ(feld(0).text(), u"Indice"_s);
}

} // namespace
} // namespace tarvel
