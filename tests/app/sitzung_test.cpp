#include "app/fenster.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

/// A program that ends without being asked to.
struct Absturztest : Fenstertest {
    QString journal() const { return ordner.filePath(u"Sitzung.journal"_s); }

    void SetUp() override {
        ASSERT_TRUE(starte());
        hg().resize(1280, 800);
    }
    void missUndBeginneNächsten() {
        missFlügel();
        klick({120, 80});
        QTest::keyClicks(&kind<QLineEdit>(u"txt_Volk"_s), u"9"_s);
    }
    /// What is on the disk now is all that the next start finds.
    void stürzeAb() {
        const QString beiseite = ordner.filePath(u"beiseite"_s);
        ASSERT_TRUE(QFile::copy(journal(), beiseite));
        programm.reset();
        QFile::remove(journal());
        ASSERT_TRUE(QFile::rename(beiseite, journal()));
    }
};

} // namespace

TEST_F(Absturztest, nextStart_goesOnWithEveryWingAndEveryPoint) {
    missUndBeginneNächsten();
    const Untersuchung vorher = hg().untersuchung();
    stürzeAb();
    dialoge.antworten = {Antwort::Ja};
    ASSERT_TRUE(starte());
    ASSERT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_TRUE(dialoge.fragen[0].neinVerwirft);
    EXPECT_TRUE(dialoge.fragen[0].text.contains(u"(Flügel: 1)"_s));
    EXPECT_EQ(hg().untersuchung().angaben(), vorher.angaben());
    EXPECT_EQ(reihe().ciZeilen(), vorher.reihe().ciZeilen());
    EXPECT_EQ(reihe().messungen(), vorher.reihe().messungen());
    EXPECT_TRUE(hg().isWindowModified());
    EXPECT_TRUE(kind<QAbstractButton>(u"opt_Fein_1"_s).isChecked());
    EXPECT_TRUE(QFile::exists(journal()));
    EXPECT_THAT(dialoge.meldungen, IsEmpty());
}

TEST_F(Absturztest, discardedOrSaved_nothingComesBack) {
    missUndBeginneNächsten();
    stürzeAb();
    dialoge.antworten = {Antwort::Nein};
    ASSERT_TRUE(starte());
    EXPECT_TRUE(reihe().leer());
    EXPECT_FALSE(QFile::exists(journal()));

    QTest::keyClicks(&kind<QLineEdit>(u"txt_Volk"_s), u"9"_s);
    EXPECT_TRUE(QFile::exists(journal()));
    dialoge.antworten = {Antwort::Nein};
    wähle(u"men_Datei_2"_s);
    EXPECT_FALSE(hg().isWindowModified());
    EXPECT_FALSE(QFile::exists(journal()));
}

TEST_F(Absturztest, closingWithoutSaving_isNoCrash) {
    QTest::keyClicks(&kind<QLineEdit>(u"txt_Volk"_s), u"9"_s);
    dialoge.antworten = {Antwort::Nein, Antwort::Nein};
    EXPECT_TRUE(hg().close());
    EXPECT_FALSE(QFile::exists(journal()));
}

TEST_F(Absturztest, damagedRecord_isPutAsideAndSaid) {
    programm.reset();
    lege(journal(), "kein Journal");
    ASSERT_TRUE(starte());
    ASSERT_THAT(dialoge.meldungen, SizeIs(1));
    EXPECT_TRUE(dialoge.meldungen[0].contains(u"defekt"_s)) << qPrintable(dialoge.meldungen[0]);
}
