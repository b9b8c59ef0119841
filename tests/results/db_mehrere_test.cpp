// What the browser does with several rows.

#include "results/dbprobe.h"
#include "results/schreibweisen.h"

#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <gmock/gmock.h>

namespace tarvel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

struct DBMehrere : DBFiltertest {
    /// Selects rows as Ctrl and the mouse do.
    void wähleZeilen(const QList<int>& zeilen) const {
        grid().clearSelection();
        for (const int zeile : zeilen) {
            QTest::mouseClick(grid().viewport(), Qt::LeftButton, Qt::ControlModifier,
                              grid().visualRect(grid().model()->index(zeile, 2)).center());
        }
    }
    /// Calls @p tue with the dialog that the command at @p name opens.
    void imDialog(const QString& name, const std::function<void(QDialog&)>& tue) const {
        QTimer::singleShot(0, db.get(), [this, tue] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || dialog == db.get()) {
                ADD_FAILURE() << "no dialog";
                return;
            }
            tue(*dialog);
        });
        wähle(name);
    }
};

TEST_F(DBMehrere, DeletesTheChosenRowsAndListsWhatFailed) {
    wähleZeilen({1, 3, 4});
    EXPECT_EQ(anzahl(), u"6 Untersuchungen · 3 gewählt"_s);
    taste(Qt::Key_Delete);
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_EQ(dialoge.fragen.front().text, u"Wollen Sie diese 3 Zeilen löschen?"_s);
    EXPECT_EQ(nummern(), u"001;002;003;004;005;006"_s);
    dialoge.antworten = {Antwort::Ja};
    dialoge.beiFrage = [this] { fremd(u"UPDATE Ergebnisse SET U_NR='103' WHERE U_NR='003'"_s); };
    taste(Qt::Key_Delete);
    EXPECT_EQ(nummern(), u"001;004;006;103"_s);
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_THAT(dialoge.meldungen.front().toStdString(), HasSubstr("Gelöschte Zeilen: 2 von 3."));
    EXPECT_THAT(dialoge.meldungen.front().toStdString(), HasSubstr("003: "));
    EXPECT_EQ(gezeigt(), u"006 004 103 001"_s);
}

TEST_F(DBMehrere, ExportsTheChosenRowsInTheOrderShown) {
    wähle(u"men_Sort_1"_s);
    wähleZeilen({4, 1});
    dialoge.dateien = {ordner_.filePath(u"a.csv"_s)};
    taste(Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
    const QList<QByteArray> zeilen = ordner_.lies(u"a.csv"_s).split('\n');
    ASSERT_THAT(zeilen, SizeIs(4));
    EXPECT_EQ(zeilen[1].left(4) + zeilen[2].left(4), "002,005,");
}

TEST_F(DBMehrere, OneFieldOfAllChosenRowsIsChangedAtOnce) {
    wähleZeilen({0, 1, 2});
    fremd(u"UPDATE Ergebnisse SET VATER='überlanger Text aus einem anderen Programm ' "
          u"WHERE U_NR='005'"_s);
    taste(Qt::Key_F5);
    imDialog(u"men_Zeilen_4"_s, [](QDialog& dialog) {
        auto& spalte = tarvel::kind<QComboBox>(dialog, u"cbo_Spalte"_s);
        spalte.setCurrentText(u"Datum"_s);
        auto* inhalt = dialog.findChild<QComboBox*>(u"cbo_Inhalt"_s);
        inhalt->setEditText(u"morgen"_s);
        auto* ok = dialog.findChild<QPushButton*>(u"bef_OK"_s);
        QTest::mouseClick(ok, Qt::LeftButton);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_THAT(dialog.findChild<QLabel*>(u"lab_Einwand"_s)->text().toStdString(),
                    HasSubstr("'morgen' ist kein Datum"));
        spalte.setCurrentText(u"Besitzer"_s);
        inhalt->setEditText({});
        QTest::keyClicks(inhalt, u"Imkerverein mit einem viel zu langen Namen"_s);
        EXPECT_EQ(inhalt->currentText().size(), 30);
        inhalt->setEditText(u"  Verein Süd "_s);
        QTest::keyClick(inhalt, Qt::Key_Return);
    });
    EXPECT_EQ(fremd(u"SELECT group_concat(B_NAME) FROM Ergebnisse WHERE U_NR>='004'"_s),
              u"Verein Süd,Verein Süd,Verein Süd"_s);
    EXPECT_EQ(fremd(u"SELECT count(*) FROM Ergebnisse WHERE B_NAME='Verein Süd'"_s), u"3"_s);
    EXPECT_THAT(dialoge.meldungen.last().toStdString(), HasSubstr("Geänderte Zeilen: 3 von 3."));
    EXPECT_EQ(anzahl(), u"6 Untersuchungen · 3 gewählt"_s) << "still selected";
    const QByteArray vorher = bytes(pfad_);
    imDialog(u"men_Zeilen_4"_s, [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(bytes(pfad_), vorher);
}

TEST_F(DBMehrere, SpellingsOfOneNameBecomeOne) {
    const std::pair<QString, QString> namen[] = {
        {u"001"_s, u"Müller"_s}, {u"002"_s, u"Mueller"_s}, {u"003"_s, u"mueller "_s},
        {u"004"_s, u"Müller"_s}, {u"005"_s, u"Muller"_s},  {u"006"_s, u"Maier"_s}};
    for (const auto& [nummer, name] : namen) {
        fremd(u"UPDATE Ergebnisse SET Z_NAME='%2' WHERE U_NR='%1'"_s.arg(nummer, name));
    }
    taste(Qt::Key_F5);
    imDialog(u"men_Zeilen_5"_s, [](QDialog& dialog) {
        auto* liste = dialog.findChild<QTreeWidget*>();
        auto* ok = dialog.findChild<QPushButton*>(u"bef_OK"_s);
        EXPECT_EQ(liste->topLevelItemCount(), 1);
        EXPECT_EQ(liste->topLevelItem(0)->text(0), u"Müller (2), Mueller (1), \"mueller \" (1)"_s);
        EXPECT_FALSE(ok->isEnabled()) << "nothing is ticked";
        liste->topLevelItem(0)->setCheckState(0, Qt::Checked);
        EXPECT_TRUE(ok->isEnabled());
        dialog.findChild<QComboBox*>(u"cbo_Schreibweise_0"_s)->setCurrentText(u"Mueller"_s);
        tarvel::kind<QComboBox>(dialog, u"cbo_Spalte"_s).setCurrentText(u"Besitzer"_s);
        EXPECT_FALSE(ok->isEnabled());
        EXPECT_TRUE(dialog.findChild<QLabel*>(u"lab_Keine"_s)->isVisible());
        tarvel::kind<QComboBox>(dialog, u"cbo_Spalte"_s).setCurrentText(u"Züchter"_s);
        liste->topLevelItem(0)->setCheckState(0, Qt::Checked);
        QTest::mouseClick(ok, Qt::LeftButton);
    });
    EXPECT_EQ(fremd(u"SELECT group_concat(Z_NAME) FROM (SELECT Z_NAME FROM Ergebnisse ORDER BY "
                    u"U_NR)"_s),
              u"Müller,Müller,Müller,Müller,Muller,Maier"_s);
    EXPECT_THAT(dialoge.meldungen.last().toStdString(), HasSubstr("Geänderte Zeilen: 2 von 2."));
}

TEST(Schreibweisen, groupWhatDiffersOnlyInForm) {
    const auto gruppen = [](const QStringList& texte) {
        std::vector<Ergebnistabelle::Anzahl> alle;
        for (const QString& text : texte) {
            alle.push_back({text, 1});
        }
        QStringList gefunden;
        for (const Schreibweisen& gruppe : gruppiereSchreibweisen(alle)) {
            QStringList worte;
            for (const auto& einer : gruppe) {
                worte << einer.text;
            }
            gefunden << worte.join(u'=');
        }
        return gefunden.join(u' ');
    };
    EXPECT_EQ(gruppen({u"Weiß"_s, u"WEISS"_s, u"Weis"_s}), u"Weiß=WEISS"_s);
    EXPECT_EQ(gruppen({u"Lefèvre"_s, u"Lefevre"_s, u"A. Öz"_s, u"a.oez"_s}),
              u"A. Öz=a.oez Lefèvre=Lefevre"_s);
    EXPECT_EQ(gruppen({u"Bauer"_s, u"Baur"_s, u"Bäuer"_s, u"1"_s, u"-"_s, u"."_s}), QString());
}

/// Reports as plain bytes.
class Probeserie final : public Protokollserie {
public:
    QString nimm(const Ergebnissatz& satz) override {
        if (satz.U_NR == u"005") {
            return u"nichts gemessen"_s;
        }
        alle_ += satz.U_NR.toUtf8() + ' ';
        letzte_ = satz.U_NR.toUtf8();
        return {};
    }
    QByteArray einzeln() override { return letzte_; }
    QByteArray alle() override { return alle_; }

private:
    QByteArray alle_;
    QByteArray letzte_;
};

TEST_F(DBMehrere, ReportsOfTheChosenRowsComeAsOneFileOrEach) {
    protokolle = [] { return std::make_unique<Probeserie>(); };
    öffne();
    wähleZeilen({0, 1, 2, 4});
    const QString pdf = ordner_.filePath(u"alle.pdf"_s);
    const QString mappe = ordner_.filePath(u"mappe"_s);
    ASSERT_TRUE(QDir().mkdir(mappe));
    dialoge.dateien = {pdf, mappe};
    taste(Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(bytes(pdf), "006 004 002 ");
    EXPECT_THAT(dialoge.meldungen.last().toStdString(),
                HasSubstr("Geschriebene Protokolle: 3 von 4."));
    EXPECT_THAT(dialoge.meldungen.last().toStdString(), HasSubstr("005: nichts gemessen"));
    // A report that is there already is asked about.
    schreibe(mappe + u"/004.pdf"_s, "alt");
    dialoge.antworten = {Antwort::Nein};
    taste(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_THAT(QDir(mappe).entryList(QDir::Files),
                ElementsAre(u"002.pdf"_s, u"004.pdf"_s, u"006.pdf"_s));
    EXPECT_EQ(bytes(mappe + u"/004.pdf"_s), "alt");
    EXPECT_THAT(dialoge.meldungen.last().toStdString(),
                HasSubstr("Geschriebene Protokolle: 2 von 4."));
    taste(Qt::Key_P, Qt::ControlModifier); // no place chosen: nothing happens
    EXPECT_THAT(dialoge.meldungen, SizeIs(2));
    dialoge.dateien = {ordner_.filePath(u"fehlt/x.pdf"_s)};
    taste(Qt::Key_P, Qt::ControlModifier);
    EXPECT_THAT(dialoge.meldungen.last().toStdString(),
                HasSubstr("Geschriebene Protokolle: 0 von 4."));
}

TEST_F(DBTest, ASelectionOfVeryManyStaysOneInAnyOrder) {
    fülle(4000);
    fremd(u"UPDATE Ergebnisse SET Z_NAME=CASE WHEN rowid%2 THEN 'zzz' ELSE 'b' END"_s);
    öffne();
    wähle(u"men_Sort_3"_s); // 2,000 of each
    kind<QLineEdit>(u"txt_Suche"_s).setText(u"zzz"_s);
    QApplication::processEvents();
    grid().setFocus();
    taste(Qt::Key_A, Qt::ControlModifier);
    ASSERT_EQ(anzahl(), u"2.000 von 4.000, gefiltert · 2.000 gewählt"_s);
    kind<QLineEdit>(u"txt_Suche"_s).clear();
    wähle(u"men_Sort_1"_s); // every second
    EXPECT_TRUE(QTest::qWaitFor([this] {
        return anzahl() == u"4.000 Untersuchungen · 2.000 gewählt"_s;
    })) << anzahl().toStdString();
}

TEST_F(DBTest, LongWorkOnRowsCanBeStopped) {
    fülle(40);
    öffne();
    grid().selectAll();
    dialoge.antworten = {Antwort::Ja};
    QTimer::singleShot(0, db.get(), [this] {
        for (auto* fenster : db->findChildren<QProgressDialog*>()) {
            fenster->cancel();
        }
    });
    taste(Qt::Key_Delete);
    EXPECT_GT(tabelle().anzahl(), 30);
    EXPECT_EQ(grid().model()->rowCount(), tabelle().anzahl());
    EXPECT_THAT(dialoge.meldungen.last().toStdString(), HasSubstr(" von 40."));
}

} // namespace
} // namespace tarvel
