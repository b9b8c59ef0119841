#include "platform/system_dialoge.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

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

} // namespace
} // namespace tarvel
