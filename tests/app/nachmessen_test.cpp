#include "app/fenster.h"
#include "measure/nachmessfenster.h"

#include <QThread>
#include <QTimer>

#include <atomic>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

class Nachmessen : public Fenstertest {
protected:
    std::atomic<bool> imFenster = false; ///< the window itself waits for the finder

    void SetUp() override {
        modell = [this] {
            imFenster = imFenster || QThread::currentThread() == qApp->thread();
            return eingebautesModell();
        };
        ASSERT_TRUE(starte());
        ASSERT_TRUE(QFile::copy(u":/tarvel/musterblatt.png"_s, blatt()));
        ASSERT_TRUE(hg().ladeBild(blatt()));
        wähle(u"men_Ansicht_7"_s);
    }
    QString blatt() const { return ordner.filePath(u"blatt.png"_s); }
    /// What the command shows, and then leaves by Escape.
    std::optional<int> gezeigt() {
        std::optional<int> flügel;
        QTimer::singleShot(0, &hg(), [&flügel] {
            auto* fenster = dynamic_cast<Nachmessfenster*>(QApplication::activeModalWidget());
            if (fenster != nullptr) {
                const QString text = fenster->findChild<QLabel*>(u"lab_Nachmessflügel"_s)->text();
                flügel = text.section(u' ', -1).toInt();
                EXPECT_TRUE(QTest::qWaitFor([&] { return fenster->mitVorschlägen(); }, 60'000));
                QTest::keyClick(fenster->findChild<Bild*>(), Qt::Key_Escape);
            }
        });
        wähle(u"men_Bearbeiten_21"_s);
        QCoreApplication::processEvents();
        return flügel;
    }
};

} // namespace

TEST_F(Nachmessen, command_takesWingsWhosePictureIsThereAndChangesNothing) {
    EXPECT_FALSE(kind<QAction>(u"men_Bearbeiten_21"_s).isEnabled());
    klickeFlügel();
    EXPECT_EQ(gezeigt(), std::nullopt); // one wing tells nothing
    ASSERT_EQ(dialoge.meldungen.size(), 1U);
    for (int i = 0; i < 6; ++i) {
        dialoge.antworten = {Antwort::Ja};
        klickeFlügel();
    }
    const Messreihe vorher = reihe();
    EXPECT_EQ(gezeigt(), 5);
    EXPECT_EQ(reihe(), vorher);
    EXPECT_EQ(dialoge.meldungen.size(), 1U);
    EXPECT_FALSE(imFenster);
}
