#include "platform/system_dialoge.h"

#include "support/testordner.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEventLoop>
#include <QFile>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <tuple>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

// Works on the next message box as soon as it waits for the user.
void sobaldOffen(const std::function<void(QMessageBox&)>& tun) {
    QTimer::singleShot(0, qApp, [tun] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        tun(*box);
    });
}

void druecke(QMessageBox& box, int taste) {
    QKeyEvent ereignis(QEvent::KeyPress, taste, Qt::NoModifier);
    QApplication::sendEvent(&box, &ereignis);
}

Antwort antwortAuf(SystemDialoge& dialoge, const Frage& frage, int taste) {
    sobaldOffen([taste](QMessageBox& box) { druecke(box, taste); });
    return dialoge.frage(frage);
}

TEST(SystemDialoge, escape_meansCancelOrElseNo) {
    SystemDialoge dialoge;
    const Frage ohne{u"T"_s, u"Löschen?"_s};
    Frage mit = ohne;
    mit.mitAbbrechen = true;
    EXPECT_EQ(antwortAuf(dialoge, ohne, Qt::Key_Escape), Antwort::Nein);
    EXPECT_EQ(antwortAuf(dialoge, mit, Qt::Key_Escape), Antwort::Abbrechen);
}

TEST(SystemDialoge, enterAndEscape_neverGiveSomethingUp) {
    SystemDialoge dialoge;
    using enum Antwort;
    struct {
        bool verwirft;
        bool neinVerwirft;
        bool mitAbbrechen;
        Antwort enter;
        Antwort escape;
    } const faelle[] = {{false, false, false, Ja, Nein},
                        {true, false, false, Nein, Nein},
                        {false, true, false, Ja, Ja},
                        {false, false, true, Ja, Abbrechen},
                        {true, false, true, Abbrechen, Abbrechen},
                        {false, true, true, Ja, Abbrechen},
                        {true, true, true, Abbrechen, Abbrechen}};
    for (const Meldungsart art : {Meldungsart::Frage, Meldungsart::Stopp}) {
        for (const auto& fall : faelle) {
            const Frage frage{.titel = u"T"_s,
                              .text = u"Löschen?"_s,
                              .art = art,
                              .verwirft = fall.verwirft,
                              .neinVerwirft = fall.neinVerwirft,
                              .mitAbbrechen = fall.mitAbbrechen};
            EXPECT_EQ(antwortAuf(dialoge, frage, Qt::Key_Return), fall.enter);
            EXPECT_EQ(antwortAuf(dialoge, frage, Qt::Key_Escape), fall.escape);
        }
    }
}

TEST(SystemDialoge, questionWithAList_isAnsweredLikeAnyOther) {
    SystemDialoge dialoge;
    dialoge.setzeWorte({u"OK"_s, u"Ja"_s, u"Nein"_s, u"Abbrechen"_s});
    using enum Antwort;
    for (const auto& [verwirft, taste, antwort] : {std::tuple{false, Qt::Key_Return, Ja},
                                                   {true, Qt::Key_Return, Nein},
                                                   {false, Qt::Key_Escape, Nein},
                                                   {true, Qt::Key_Escape, Nein},
                                                   {true, Qt::Key_Y, Ja}}) {
        QTimer::singleShot(0, qApp, [key = taste] {
            QWidget& fenster = *QApplication::activeModalWidget();
            auto* liste = fenster.findChild<QPlainTextEdit*>();
            ASSERT_NE(liste, nullptr);
            EXPECT_EQ(liste->toPlainText(), u"a → b\nc → d"_s);
            if (key == Qt::Key_Y) {
                for (auto* knopf : fenster.findChildren<QPushButton*>()) {
                    if (knopf->text() == u"&Speichern") {
                        knopf->click();
                    }
                }
                return;
            }
            QKeyEvent ereignis(QEvent::KeyPress, key, Qt::NoModifier);
            QApplication::sendEvent(&fenster, &ereignis);
        });
        EXPECT_EQ(dialoge.frage({.titel = u"T"_s,
                                 .text = u"?"_s,
                                 .verwirft = verwirft,
                                 .ja = u"Speichern"_s,
                                 .zeilen = {u"a → b"_s, u"c → d"_s}}),
                  antwort)
            << verwirft << taste;
    }
}

TEST(SystemDialoge, everyAnswer_hasALetterOfItsOwn) {
    SystemDialoge dialoge;
    dialoge.setzeWorte(
        {.ok = u"OK"_s, .ja = u"Ja"_s, .nein = u"Nein"_s, .abbrechen = u"&Jetzt nicht"_s});
    sobaldOffen([](QMessageBox& box) {
        EXPECT_EQ(box.button(QMessageBox::Yes)->text(), u"J&a"_s);
        EXPECT_EQ(box.button(QMessageBox::No)->text(), u"&Nein"_s);
        EXPECT_EQ(box.button(QMessageBox::Cancel)->text(), u"&Jetzt nicht"_s);
        box.button(QMessageBox::No)->click();
    });
    EXPECT_EQ(dialoge.frage({.titel = u"T"_s, .text = u"?"_s, .mitAbbrechen = true}),
              Antwort::Nein);
}

TEST(SystemDialoge, markupAndWords_areShownAsTheyAre) {
    SystemDialoge dialoge;
    dialoge.setzeWorte({u"Gut"_s, u"Ja"_s, u"Nein"_s, u"Abbrechen"_s});
    sobaldOffen([](QMessageBox& box) {
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.text(), u"<b>a</b>.jpg"_s);
        EXPECT_EQ(box.button(QMessageBox::Yes)->text(), u"&Verwerfen"_s);
        EXPECT_EQ(box.button(QMessageBox::No)->text(), u"&Nein"_s);
        box.button(QMessageBox::No)->click();
    });
    const Frage frage{.titel = u"T"_s, .text = u"<b>a</b>.jpg"_s, .ja = u"Verwerfen"_s};
    EXPECT_EQ(dialoge.frage(frage), Antwort::Nein);
    sobaldOffen([](QMessageBox& box) {
        EXPECT_EQ(box.icon(), QMessageBox::Critical);
        EXPECT_EQ(box.button(QMessageBox::Ok)->text(), u"Gut"_s);
        druecke(box, Qt::Key_Escape);
    });
    dialoge.meldung(u"T"_s, u"M"_s, Meldungsart::Stopp);
}

// What can be done to the files in a chooser of the toolkit's own.
void prüfeChooser(const QString& ordner, const std::function<void()>& öffne, bool neuerOrdner) {
    const QString datei = lege(ordner + u"/Untersuchungen.tdb"_s);
    QTimer::singleShot(0, qApp, [&] {
        auto* chooser = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(chooser, nullptr);
        auto& modell = *chooser->findChild<QFileSystemModel*>();
        const QModelIndex wurzel = modell.index(ordner);
        if (modell.rowCount(wurzel) == 0) {
            QEventLoop laden;
            QObject::connect(&modell, &QFileSystemModel::directoryLoaded, &laden,
                             &QEventLoop::quit);
            laden.exec();
        }
        for (auto* ansicht : chooser->findChildren<QAbstractItemView*>()) {
            if (ansicht->model() == nullptr || ansicht->objectName() == u"sidebar"_s) {
                continue;
            }
            EXPECT_TRUE(modell.isReadOnly() ||
                        (ansicht->editTriggers() == QAbstractItemView::NoEditTriggers &&
                         ansicht->dragDropMode() == QAbstractItemView::NoDragDrop));
        }
        auto& liste = *chooser->findChild<QListView*>(u"listView"_s);
        liste.setCurrentIndex(liste.model()->index(0, 0, liste.rootIndex()));
        QTimer::singleShot(0, qApp, [&] { // the menu waits for an answer
            auto* menü = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menü, nullptr);
            for (const QAction* befehl : menü->actions()) {
                if (befehl->objectName() == u"qt_new_folder_action"_s) {
                    EXPECT_EQ(befehl->isEnabled(), neuerOrdner);
                } else if (befehl->objectName() == u"qt_rename_action"_s ||
                           befehl->objectName() == u"qt_delete_action"_s) {
                    EXPECT_FALSE(befehl->isEnabled() && befehl->isVisible());
                }
            }
            menü->close();
        });
        Q_EMIT liste.customContextMenuRequested(QPoint(5, 5));
        for (const int taste : {Qt::Key_F2, Qt::Key_Delete}) {
            QKeyEvent ereignis(QEvent::KeyPress, taste, Qt::NoModifier);
            QApplication::sendEvent(&liste, &ereignis);
            EXPECT_EQ(liste.findChild<QLineEdit*>(), nullptr);
        }
        chooser->reject();
    });
    öffne();
    EXPECT_TRUE(QFile::exists(datei));
}

TEST(SystemDialoge, choosers_leaveTheFilesAsTheyAre) {
#ifdef Q_OS_WIN
    GTEST_SKIP() << "the choosers are those of the system";
#endif
    SystemDialoge dialoge;
    const Testordner ordner;
    const QString pfad = ordner.path();
    prüfeChooser(
        pfad, [&] { (void)dialoge.wähleDatei(u"T"_s, pfad, u"x (*.tdb)"_s); }, false);
    prüfeChooser(
        pfad, [&] { (void)dialoge.wähleDateien(u"T"_s, pfad, u"x (*.tdb)"_s); }, false);
    prüfeChooser(
        pfad, [&] { (void)dialoge.wähleZieldatei(u"T"_s, pfad + u"/a.tdb"_s, u"x (*.tdb)"_s); },
        true);
}

} // namespace
} // namespace tarvel
