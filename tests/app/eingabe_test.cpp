#include "app/fenster.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QWheelEvent>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

struct Eingabetest : Fenstertest {
    void SetUp() override {
        ASSERT_TRUE(starte());
        hg().resize(1280, 800);
        hg().show();
    }
    /// A notch as the system sends it, so that it goes on to what lies around.
    static void raste(QWidget& ziel, Qt::KeyboardModifiers umschalt = Qt::NoModifier,
                      QPointF ort = {5, 5}, int winkel = -120) {
        QWheelEvent rad(ort, ziel.mapToGlobal(ort), {}, {0, winkel}, Qt::NoButton, umschalt,
                        Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&rad);
        qApp->notify(&ziel, &rad);
    }
};

} // namespace

TEST_F(Eingabetest, wheelOverABox_scrollsWhatLiesAround) {
    for (const QString& name : {u"cbo_dpi"_s, u"cbo_Rasse"_s, u"cbo_Geschlecht"_s}) {
        auto& box = kind<QComboBox>(name);
        for (const int winkel : {-120, 120}) {
            const int vorher = box.currentIndex();
            raste(box, {}, {5, 5}, winkel);
            EXPECT_EQ(box.currentIndex(), vorher) << name.toStdString();
            EXPECT_FALSE(box.hasFocus());
        }
    }
    auto& links = kind<QScrollArea>(u"Leiste_Links"_s);
    links.setFixedHeight(200);
    QApplication::processEvents();
    QScrollBar& leiste = *links.verticalScrollBar();
    leiste.setValue(0);
    ASSERT_GT(leiste.maximum(), 0);
    raste(kind<QComboBox>(u"cbo_Rasse"_s));
    EXPECT_GT(leiste.value(), 0);
    // An open list scrolls, and a key still chooses.
    auto& dpi = kind<QComboBox>(u"cbo_dpi"_s);
    dpi.setFocus();
    QTest::keyClick(&dpi, Qt::Key_Down);
    QTest::keyClick(&dpi, Qt::Key_Up);
}

TEST_F(Eingabetest, digitWhileMeasuring_belongsToThePicture) {
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    auto& dpi = kind<QComboBox>(u"cbo_dpi"_s);
    const int vorher = dpi.currentIndex();
    maus(QEvent::MouseMove, {400, 50}, Qt::NoButton);
    QWidget* const andere[] = {&dpi, &kind<QComboBox>(u"cbo_Rasse"_s),
                               &kind<QListView>(u"Leiste_CI"_s)};
    int nummer = 0;
    for (QWidget* anderes : andere) {
        anderes->setFocus();
        QTest::keyClick(anderes, static_cast<Qt::Key>(Qt::Key_3 + nummer));
        ++nummer;
        EXPECT_THAT(bild().marken(), SizeIs(nummer));
        EXPECT_TRUE(bild().hasFocus());
    }
    EXPECT_EQ(dpi.currentIndex(), vorher);
    // Text keeps its digits.
    for (const QString& name : {u"txt_KNr"_s, u"cbo_Name"_s}) {
        auto& feld = kind<QWidget>(name);
        feld.setFocus();
        QTest::keyClick(&feld, Qt::Key_7);
        EXPECT_THAT(bild().marken(), SizeIs(3)) << name.toStdString();
    }
    EXPECT_EQ(hg().untersuchung().angaben().KNr, u"007"_s);
    EXPECT_EQ(hg().untersuchung().angaben().Name, u"7"_s);
}

TEST_F(Eingabetest, tab_followsTheWork) {
    ASSERT_TRUE(hg().ladeBild(maleBild({906, 320})));
    const auto gehe = [](QWidget& fenster, QWidget& erster) {
        fenster.activateWindow();
        erster.setFocus();
        EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == &erster; }));
        QStringList weg;
        do {
            weg << QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QWidget* jetzt = QApplication::focusWidget();
            if (jetzt == nullptr || !fenster.isAncestorOf(jetzt)) {
                return weg << u"out of the window"_s;
            }
        } while (QApplication::focusWidget() != &erster && weg.size() < 100);
        return weg;
    };
    EXPECT_EQ(
        gehe(hg(), bild()).join(u' ').toStdString(),
        "Bild cbo_dpi Leiste_CI Leiste_HI_DV txt_UNr txt_LV txt_ZNr txt_KNr txt_Jahr cbo_Name "
        "cbo_Besitzer txt_Volk cbo_Begattung cbo_Rasse cbo_Geschlecht lab_Kriterien lab_Kriterien");
    klickeFlügel();
    wähle(u"men_Datei_2"_s);
    const std::tuple<QString, QString, std::string> wege[] = {
        {u"men_Bearbeiten_20"_s, u"cbo_Bild"_s,
         "cbo_Bild cbo_Auflösung tab_Wechsel bef_OK bef_Abbrechen"},
        {u"men_Datei_1"_s, u"Grid"_s,
         "Grid bef_Ändern bef_Zuchtübersicht bef_Öffnen bef_Abbrechen txt_Suche cbo_Saison "
         "cbo_Züchter cbo_Rasse "
         "cbo_Geschlecht cbo_Ergebnis spn_Flügel"},
        {u"men_Datei_23"_s, u"cbo_Tiere"_s,
         "cbo_Tiere cbo_Rasse cbo_Züchter cbo_Besitzer cbo_Begattung cbo_Königin cbo_Saison "
         "cbo_Dpi bef_Alle qt_tabwidget_tabbar Tabelle bef_Csv bef_Speichern bef_Abbrechen"},
        {u"men_Extras_9"_s, u"chk_Nummer"_s,
         "chk_Nummer txt_Kurzzeichen txt_Zielzahl opt_Betriebsart_0 chk_OhneHaarlänge txt_Rasse "
         "cbo_RasseStart chk_Tagessicherung cbo_dpi opt_Zoom_0 chk_VorschlagJeFlügel "
         "chk_PunkteEinrasten opt_Kurvenform_0 opt_CubiDis_0 "
         "txt_SollFlügel "
         "txt_SollBienen txt_Arbeit_0 "
         "bef_Durchsuchen_0 txt_Arbeit_3 bef_Durchsuchen_3 bef_OK bef_Abbrechen "
         "qt_tabwidget_tabbar"}};
    for (const auto& [befehl, erster, weg] : wege) {
        QTimer::singleShot(0, [&, anfang = erster, erwartet = weg] {
            QWidget& fenster = *QApplication::activeModalWidget();
            EXPECT_TRUE(QTest::qWaitForWindowActive(&fenster));
            auto& feld = tarvel::kind<QWidget>(fenster, anfang);
            EXPECT_EQ(gehe(fenster, feld).join(u' ').toStdString(), erwartet);
            fenster.close();
        });
        wähle(befehl);
    }
}

TEST_F(Eingabetest, doubleClickInTheOverview_setsNoPoint) {
    ASSERT_TRUE(hg().ladeBild(maleBild({3000, 2400})));
    ASSERT_TRUE(übersicht().isVisible());
    const QPoint ort = übersicht().zuFenster({1500, 1200}).toPoint();
    QTest::mouseClick(&übersicht(), Qt::LeftButton, {}, ort);
    ASSERT_TRUE(bild().isVisible());
    maus(QEvent::MouseButtonDblClick, {1500, 1200}, Qt::LeftButton);
    maus(QEvent::MouseButtonRelease, {1500, 1200}, Qt::LeftButton);
    EXPECT_THAT(bild().marken(), IsEmpty());
    klick({1500, 1200});
    maus(QEvent::MouseButtonDblClick, {1500, 1200}, Qt::LeftButton);
    EXPECT_THAT(bild().marken(), SizeIs(2)); // quick clicks on the picture both count
}

TEST_F(Eingabetest, zoomByWheel_keepsThePlaceBelowThePointer) {
    ASSERT_TRUE(hg().ladeBild(maleBild({3000, 2400})));
    wähle(u"men_Ansicht_7"_s);
    bild().zeige({1500, 1200});
    const QPointF zeiger(90, 110);
    const auto darunter = [&] { return bild().zuBild(zeiger) / bild().Zoomfaktor(); };
    const QPointF ort = darunter();
    for (const int winkel : {120, 120, 120, -120, -120}) {
        raste(*bild().viewport(), Qt::ControlModifier, zeiger, winkel);
        EXPECT_LT((darunter() - ort).manhattanLength(), 2) << bild().Zoomfaktor();
    }
    EXPECT_EQ(bild().Zoomfaktor(), 2);
    klick(ort * 2);
    raste(*bild().viewport(), Qt::ControlModifier, zeiger, 120); // points are set: the question
    EXPECT_THAT(dialoge.fragen, SizeIs(1));
    EXPECT_EQ(bild().Zoomfaktor(), 2);
}
