// Wings that the program finds on a scan, and the points that it proposes, in the real window.

#include "../bench/musterblatt.h"
#include "app/fenster.h"
#include "measure/messplatz.h"

#include <QComboBox>
#include <QLineF>
#include <QPainter>
#include <QPushButton>

#include <semaphore>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::Each;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr int Dpi = 1200;
constexpr int Blattflügel = 4;
/// Settings file in code page 1252.
const QByteArray VorJedem = "Vorschlag je Fl\xFCgel=1\r\n";

const Musterblatt& blatt() {
    static const Musterblatt eines = [] {
        Musterblatt m = male({.flügel = Blattflügel,
                              .spalten = 2,
                              .dpi = Dpi,
                              .blatt = QSizeF(60, 50),
                              .grau = true});
        m.bild.setDotsPerMeterX(2835); // 72 dpi, which no scanner has
        m.bild.setDotsPerMeterY(2835);
        return m;
    }();
    return eines;
}

struct Fundetest : Fenstertest {
    std::counting_semaphore<8> tor{0}; ///< what a held search waits for

    void SetUp() override { modell = eingebautesModell; }
    void TearDown() override {
        tor.release();
        programm.reset();
    }
    /// Searches begin only when the gate is opened.
    void halteSucheAuf() {
        modell = [this] { // what comes first on the other thread
            tor.acquire();
            return eingebautesModell();
        };
    }
    void beginne(const QByteArray& weitere = {}, int dpi = Dpi) {
        schreibeIni("[Start]\r\nNeu=False\r\nSprache=0\r\n[Allgemeines]\r\n" + weitere);
        ASSERT_TRUE(starte());
        hg().resize(1280, 900);
        stelleAuflösung(dpi);
    }
    void stelleAuflösung(int dpi) const {
        auto& liste = kind<QComboBox>(u"cbo_dpi"_s);
        liste.setCurrentIndex(liste.findData(dpi));
        Q_EMIT liste.activated(liste.currentIndex());
    }
    QString lege(const QImage& bild, const QString& name = u"blatt.bmp"_s) const {
        EXPECT_TRUE(bild.save(ordner.filePath(name)));
        return ordner.filePath(name);
    }
    const Messplatz& platz() const { return kind<Messplatz>(u"Messplatz"_s); }
    const Flügelfunde& funde() const { return platz().funde(); }
    bool warte(Flügelfunde::Stand stand = Flügelfunde::Stand::Fertig) const {
        return QTest::qWaitFor([&] { return funde().stand() == stand; }, 60'000);
    }
    /// The sheet with all its wings found.
    void öffne(const QImage& bild = blatt().bild) {
        ASSERT_TRUE(hg().ladeBild(lege(bild)));
        ASSERT_TRUE(warte());
    }
    QString status() const { return kind<QLabel>(u"lab_Status"_s).text(); }
    void taste(int taste, Qt::KeyboardModifiers umschalt = Qt::NoModifier) const {
        QWidget* ziel = QApplication::focusWidget();
        QTest::keyClick(ziel == nullptr ? &hg() : ziel, Qt::Key(taste), umschalt);
        sieh();
    }
    void sieh() const {
        QTest::qWait(0);
        bild().viewport()->repaint();
    }
    /// Marks as the measuring view has them.
    std::vector<Marke> marken() const { return bild().marken(); }
    /// Largest distance of a wing's points from the true ones of the wing there, in pixels of the
    /// sheet.
    double abstand(int nummer) const {
        const Flügelmessung& m = *reihe().messung(nummer);
        double kleinster = 1e9;
        for (const auto& wahr : blatt().punkte) {
            double größter = 0;
            for (int i = ersterPunkt(m.messart); i <= letzterPunkt(m.messart); ++i) {
                const QPointF ort =
                    (QPointF(m.punkte.PunktX.at(i), m.punkte.PunktY.at(i)) + QPointF(0.5, 0.5)) /
                    m.aufnahme.Zoomfaktor;
                größter = std::max(größter, QLineF(ort, wahr.at(i)).length());
            }
            kleinster = std::min(kleinster, größter);
        }
        return kleinster;
    }
    std::vector<Punktherkunft> herkunft(int nummer) const {
        const auto& alle = reihe().messung(nummer)->punkte.Herkunft;
        return {alle.begin() + 1, alle.end()};
    }
};

} // namespace

TEST_F(Fundetest, sheet_isMeasuredByOneTakeOverAWing_andOnlyByThose) {
    beginne(VorJedem);
    const QString pfad = lege(blatt().bild);
    ASSERT_TRUE(hg().ladeBild(pfad));
    EXPECT_TRUE(funde().alle().empty()) << "the window waited";
    const QImage ohne = übersicht().grab().toImage();
    ASSERT_TRUE(warte());
    EXPECT_THAT(status().toStdString(), HasSubstr("gefunden: 4, noch zu messen: 4"));
    EXPECT_NE(übersicht().grab().toImage(), ohne) << "no frames";
    EXPECT_EQ(funde().nummern(), (std::vector{1, 2, 3, 4}));
    wähle(u"men_Ansicht_2"_s); // where the key is that of a body mark
    EXPECT_FALSE(kind<QAction>(u"men_Ansicht_30"_s).isEnabled());
    wähle(u"men_Ansicht_6"_s);
    EXPECT_TRUE(übersicht().isVisible());
    taste(Qt::Key_W);
    ASSERT_TRUE(bild().isVisible());
    EXPECT_EQ(marken().size(), 8U);
    EXPECT_TRUE(reihe().leer());
    for (int nummer = 1; nummer <= Blattflügel; ++nummer) {
        EXPECT_THAT(hinweis().toStdString(), HasSubstr("Vorschlag"));
        EXPECT_TRUE(bild().ausschnitt().contains(funde().alle().at(nummer - 1).mitte));
        taste(Qt::Key_Return);
        ASSERT_NE(reihe().messung(nummer), nullptr);
        EXPECT_LT(abstand(nummer), 8);
        EXPECT_THAT(herkunft(nummer), Each(Punktherkunft::Vorgeschlagen));
    }
    EXPECT_EQ(reihe().letzteNummer(), Blattflügel);
    EXPECT_THAT(status().toStdString(), HasSubstr("noch zu messen: 0"));
    EXPECT_TRUE(übersicht().isVisible());
    EXPECT_FALSE(kind<QAction>(u"men_Ansicht_30"_s).isEnabled());
    // A wing that goes is to be measured again, and gets the next number.
    wähle(u"men_Bearbeiten_0"_s);
    EXPECT_EQ(funde().nummern(), (std::vector{0, 0, 0, 4}));
}

TEST_F(Fundetest, frames_followNumbersOfTheSeries_whateverTheOrder_andWingsOfBefore) {
    beginne();
    öffne();
    taste(Qt::Key_W, Qt::ShiftModifier);
    EXPECT_TRUE(bild().ausschnitt().contains(funde().alle().at(3).mitte));
    taste(Qt::Key_W, Qt::ShiftModifier);
    EXPECT_TRUE(marken().empty());
    klick(bild().ausschnitt().center());
    EXPECT_EQ(funde().nummern(), (std::vector{3, 4, 1, 2})) << "as the panel says";
    taste(Qt::Key_P);
    EXPECT_EQ(funde().nummern(), (std::vector{3, 4, 1, 2}));
    klick({10, 10}, Qt::RightButton); // the points went out of sight
    EXPECT_TRUE(reihe().leer());
    EXPECT_THAT(hinweis().toStdString(), HasSubstr("nicht zu sehen"));
    QTest::qWait(0);
    taste(Qt::Key_Return);
    EXPECT_EQ(funde().nummern(), (std::vector{3, 4, 0, 2}));
    EXPECT_TRUE(bild().ausschnitt().contains(funde().alle().at(3).mitte)) << "the next one";
    wähle(u"men_Bearbeiten_12"_s); // left out: still measured
    EXPECT_EQ(funde().nummern().at(2), 0);
    ASSERT_TRUE(hg().ladeBild(maleBild({3000, 3000}, u"leer.png"_s)));
    taste(Qt::Key_P);
    EXPECT_THAT(hinweis().toStdString(), HasSubstr("noch gesucht")) << "nothing was searched yet";
    ASSERT_TRUE(warte());
    EXPECT_THAT(status().toStdString(), HasSubstr("Keine Flügel gefunden"));
    taste(Qt::Key_P);
    EXPECT_THAT(hinweis().toStdString(), HasSubstr("kein Flügel"));
    ASSERT_TRUE(hg().ladeBild(ordner.filePath(u"blatt.bmp"_s)));
    ASSERT_TRUE(warte());
    EXPECT_EQ(funde().nummern(), (std::vector{3, 4, 0, 2}));
}

TEST_F(Fundetest, proposal_isOneStep_correctedLikeAnyPoints_andClicksKeepTheirMeaning) {
    beginne();
    öffne();
    taste(Qt::Key_W);
    klick(bild().ausschnitt().center());
    taste(Qt::Key_P);
    EXPECT_EQ(marken().size(), 8U);
    EXPECT_THAT(hinweis().toStdString(), HasSubstr("Strg+Z"));
    wähle(u"men_Bearbeiten_3"_s);
    ASSERT_EQ(marken().size(), 1U);
    EXPECT_FALSE(marken().front().vorgeschlagen);
    wähle(u"men_Bearbeiten_4"_s);
    ASSERT_EQ(marken().size(), 8U);
    taste(Qt::Key_4, Qt::ControlModifier);
    taste(Qt::Key_Left);
    EXPECT_FALSE(marken().at(3).vorgeschlagen);
    EXPECT_TRUE(marken().at(4).vorgeschlagen);
    klick(marken().at(0).position + QPointF(2, 0)); // the cycle begins again
    klick(marken().at(7).position, Qt::RightButton);
    EXPECT_TRUE(reihe().leer());
    taste(Qt::Key_Return);
    ASSERT_FALSE(reihe().leer());
    EXPECT_EQ(herkunft(1).at(0), Punktherkunft::Geklickt);
    EXPECT_EQ(herkunft(1).at(3), Punktherkunft::Verschoben);
    EXPECT_EQ(herkunft(1).at(7), Punktherkunft::Vorgeschlagen);
}

TEST_F(Fundetest, kindWithThreePoints_proposesThose_atAnyZoom_untilAllWereSeen) {
    beginne();
    wähle(u"men_Betriebsart_0"_s);
    öffne();
    taste(Qt::Key_W);
    taste(Qt::Key_P);
    wähle(u"men_Zoom_4"_s); // to look closer; nothing of a person is lost
    EXPECT_TRUE(dialoge.fragen.empty());
    EXPECT_EQ(marken().size(), 3U);
    sieh();
    klick(marken().at(2).position, Qt::RightButton);
    ASSERT_FALSE(reihe().leer());
    EXPECT_LT(abstand(1), 8);
    EXPECT_EQ(funde().offene(), 3);

    wähle(u"men_Betriebsart_1"_s);
    hg().resize(900, 500);
    QTest::qWait(0);
    taste(Qt::Key_P);
    ASSERT_EQ(marken().size(), 8U);
    // Larger than the view: each try shows what was not seen.
    int versuche = 0;
    while (reihe().letzteNummer() < 2 && versuche < 9) {
        taste(Qt::Key_Return);
        ++versuche;
    }
    EXPECT_EQ(reihe().letzteNummer(), 2);
    EXPECT_GT(versuche, 1);
}

TEST_F(Fundetest, doubtfulPoints_standOut_andNGoesRound) {
    beginne();
    QImage scan = blatt().bild;
    QPainter painter(&scan); // a flake over points 1 and 3, another over point 2
    const auto& wahr = blatt().punkte.front();
    painter.setBrush(QColor(60, 60, 60));
    painter.drawEllipse((wahr[1] + wahr[3]) / 2, 40, 30);
    painter.drawEllipse(wahr[2], 30, 30);
    painter.end();
    öffne(scan);
    EXPECT_FALSE(kind<QAction>(u"men_Bearbeiten_31"_s).isEnabled());
    do {
        taste(Qt::Key_W);
    } while (!bild().ausschnitt().contains(wahr[5]));
    taste(Qt::Key_P);
    std::vector<int> fragliche = platz().fragliche();
    ASSERT_GE(fragliche.size(), 2U);
    EXPECT_LT(fragliche.size(), 8U);
    EXPECT_THAT(hinweis().toStdString(),
                HasSubstr("fragliche Punkte: " + std::to_string(fragliche[0])));
    const auto gewählt = [&] {
        const auto alle = marken();
        const auto stelle =
            std::find_if(alle.begin(), alle.end(), [](const Marke& m) { return m.gewählt; });
        return stelle == alle.end() ? 0 : stelle->text.toInt();
    };
    for (const int nummer : fragliche) {
        EXPECT_TRUE(marken().at(nummer - 1).fraglich);
        EXPECT_EQ(gewählt(), nummer);
        taste(Qt::Key_N);
    }
    EXPECT_EQ(gewählt(), fragliche.front());
    taste(Qt::Key_Right); // corrected by the person
    const std::string berichtigt = "fragliche Punkte: " + std::to_string(fragliche[0]);
    fragliche.erase(fragliche.begin());
    EXPECT_EQ(platz().fragliche(), fragliche);
    EXPECT_THAT(hinweis().toStdString(), Not(HasSubstr(berichtigt)));
    stelleAuflösung(2400); // no wing is found any more that says so
    ASSERT_TRUE(warte());
    EXPECT_EQ(platz().fragliche().size(), 7U);
}

TEST_F(Fundetest, heldEnter_andDoubleClick_takeNoWingThatNobodyLookedAt) {
    beginne(VorJedem);
    öffne();
    taste(Qt::Key_W);
    struct Ereignis {
        QEvent::Type art;
        bool wiederholt;
        quint64 zeit;
    };
    for (const auto& [art, wiederholt, zeit] : {Ereignis{QEvent::KeyPress, false, 1000},
                                                {QEvent::KeyPress, true, 1500},
                                                {QEvent::KeyRelease, false, 1530},
                                                {QEvent::KeyPress, false, 1530}}) {
        QKeyEvent e(art, Qt::Key_Return, Qt::NoModifier, {}, wiederholt);
        e.setTimestamp(zeit);
        QApplication::sendEvent(&bild(), &e);
        sieh();
    }
    EXPECT_EQ(reihe().letzteNummer(), 1);
    QTest::mouseClick(bild().viewport(), Qt::RightButton);
    sieh();
    QTest::mouseDClick(bild().viewport(), Qt::RightButton); // the second press alone
    EXPECT_EQ(reihe().letzteNummer(), 2);
    for (int i = 0; i < 2; ++i) { // keys of a moment when the window was busy
        QTest::keyClick(&bild(), Qt::Key_Return);
    }
    EXPECT_EQ(reihe().letzteNummer(), 3);
}

TEST_F(Fundetest, repeatedWing_isOverwrittenOnlyWhenAsked) {
    beginne(VorJedem);
    öffne();
    taste(Qt::Key_W);
    klick(marken().at(0).position + QPointF(9, 9));
    taste(Qt::Key_Return);
    const Flügelmessung vorher = *reihe().messung(1);
    taste(Qt::Key_F7);
    taste(Qt::Key_R, Qt::ControlModifier);
    EXPECT_FALSE(marken().at(0).vorgeschlagen);
    EXPECT_EQ(*reihe().messung(1), vorher);
    taste(Qt::Key_P);
    EXPECT_TRUE(marken().at(0).vorgeschlagen);
    dialoge.antworten = {Antwort::Ja};
    taste(Qt::Key_Escape);
    EXPECT_EQ(*reihe().messung(1), vorher);
}

TEST_F(Fundetest, clickedPoints_snapToTheFoundPlace_butOnlyNearIt) {
    beginne("Punkte einrasten=1\r\n");
    öffne();
    taste(Qt::Key_W);
    const auto& gefunden = funde().alle().front().vorschlag.punkte;
    const QPointF ecke(0.5, 0.5);
    klick(gefunden[0] - ecke + QPointF(1, 0.5));
    klick(gefunden[1] - ecke + QPointF(2, 0));
    EXPECT_LT(QLineF(marken().at(0).position, gefunden[0] - ecke).length(), 1e-3);
    EXPECT_NEAR(QLineF(marken().at(1).position, gefunden[1] - ecke).length(), 2, 1e-3);
    EXPECT_FALSE(marken().at(0).vorgeschlagen);
}

TEST_F(Fundetest, otherResolution_isSaidAndTakenByOneClick) {
    beginne({}, 2400);
    öffne();
    EXPECT_THAT(hinweis().toStdString(),
                HasSubstr("sehen nach 1200 dpi aus, eingestellt sind 2400"));
    auto& knopf = kind<QPushButton>(u"bef_Flügelauflösung"_s);
    ASSERT_TRUE(knopf.isVisible());
    taste(Qt::Key_P);
    EXPECT_THAT(hinweis().toStdString(), HasSubstr("Bei 2400 dpi ist kein Flügel"));
    // Drones have larger wings: those look like a finer scan at any resolution.
    auto& tiere = kind<QComboBox>(u"cbo_Geschlecht"_s);
    QTest::keyClick(&tiere, Qt::Key_Down);
    EXPECT_FALSE(knopf.isVisible());
    QTest::keyClick(&tiere, Qt::Key_Up);
    ASSERT_TRUE(knopf.isVisible());
    QTest::mouseClick(&knopf, Qt::LeftButton);
    EXPECT_FALSE(knopf.isVisible());
    EXPECT_THAT(hinweis().toStdString(), Not(HasSubstr("eingestellt sind 2400")));
    ASSERT_TRUE(warte());
    EXPECT_EQ(funde().offene(), Blattflügel);
}

TEST_F(Fundetest, searchOfAnotherPicture_reportsNothing) {
    halteSucheAuf();
    beginne();
    ASSERT_TRUE(hg().ladeBild(lege(blatt().bild)));
    ASSERT_TRUE(warte(Flügelfunde::Stand::Sucht));
    EXPECT_THAT(status().toStdString(), HasSubstr("werden gesucht"));
    taste(Qt::Key_P);
    EXPECT_THAT(hinweis().toStdString(), HasSubstr("noch gesucht"));
    ASSERT_TRUE(hg().ladeBild(maleBild({3000, 3000}, u"leer.png"_s)));
    tor.release();
    ASSERT_TRUE(warte());
    EXPECT_TRUE(funde().alle().empty());
}

TEST_F(Fundetest, search_isStoppedByEscape_waitsForNobody_andEndsWithTheWindow) {
    halteSucheAuf();
    beginne();
    ASSERT_TRUE(hg().ladeBild(lege(blatt().bild, u"blatt.jpg"_s)));
    ASSERT_TRUE(warte(Flügelfunde::Stand::Sucht));
    taste(Qt::Key_Escape);
    EXPECT_EQ(funde().stand(), Flügelfunde::Stand::Angehalten);
    EXPECT_THAT(hinweis().toStdString(), HasSubstr("Umschalt+F7"));
    EXPECT_TRUE(übersicht().isVisible());
    taste(Qt::Key_F8); // pixels that the other thread has not read
    EXPECT_TRUE(bild().isVisible());
    tor.release();
    taste(Qt::Key_F7, Qt::ShiftModifier);
    ASSERT_TRUE(warte());
    EXPECT_EQ(funde().offene(), Blattflügel);
    wähle(u"men_Sprache_1"_s);
    EXPECT_THAT(status().toStdString(), HasSubstr("Wings found: 4"));
    taste(Qt::Key_F7, Qt::ShiftModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return funde().stand() != Flügelfunde::Stand::Ohne; }));
    programm.reset();
}

TEST_F(Fundetest, unusableModel_isSaidOnce_andMeasuringGoesOn) {
    modell = [] { return Modellergebnis(Modellfehler::Beschädigt); };
    beginne();
    ASSERT_TRUE(hg().ladeBild(lege(blatt().bild)));
    ASSERT_TRUE(warte(Flügelfunde::Stand::Unbrauchbar));
    EXPECT_THAT(hinweis().toStdString(), HasSubstr("Modell fehlt oder ist beschädigt"));
    for (const auto* const aktion : {u"men_Bearbeiten_30", u"men_Ansicht_30", u"men_Ansicht_32"}) {
        EXPECT_FALSE(kind<QAction>(QString::fromUtf16(aktion)).isEnabled());
    }
    taste(Qt::Key_F8);
    klickeFlügel();
    EXPECT_FALSE(reihe().leer());
    ASSERT_TRUE(hg().ladeBild(maleBild({3000, 3000}, u"leer.png"_s)));
    QTest::qWait(0);
    EXPECT_THAT(hinweis().toStdString(), Not(HasSubstr("Modell")));
}

TEST_F(Fundetest, whatWasNotLearnt_isSaidOnceASample) {
    beginne("Rasse=1\r\n");
    öffne();
    taste(Qt::Key_W);
    taste(Qt::Key_P);
    EXPECT_THAT(hinweis().toStdString(), HasSubstr("Carnica"));
    taste(Qt::Key_Return);
    taste(Qt::Key_P);
    EXPECT_THAT(hinweis().toStdString(), Not(HasSubstr("Carnica")));
    dialoge.antworten = {Antwort::Nein}; // not saved
    wähle(u"men_Datei_0"_s);
    taste(Qt::Key_P);
    EXPECT_THAT(hinweis().toStdString(), HasSubstr("Carnica"));
    QTest::keyClick(&kind<QComboBox>(u"cbo_Geschlecht"_s), Qt::Key_Down); // as the proposal stands
    EXPECT_THAT(hinweis().toStdString(), HasSubstr("Drohnen"));
}

TEST_F(Fundetest, fullSeries_givesNoNumbers_andRefuses) {
    beginne();
    öffne();
    taste(Qt::Key_W);

    QByteArray zeilen = "wing,x1,y1,x2,y2,x3,y3,x4,y4,x5,y5,x6,y6,x7,y7,x8,y8\n";
    for (int i = 1; i <= 198; ++i) {
        zeilen +=
            QByteArray::number(i) + ",400,50,92,75,360,56,288,62,286,116,237,147,216,143,292,201\n";
    }
    ASSERT_TRUE(hg().öffneDatei(ordner.schreibe(u"viele.csv"_s, zeilen)));
    ASSERT_EQ(reihe().letzteNummer(), 198);
    ASSERT_TRUE(hg().ladeBild(ordner.filePath(u"blatt.bmp"_s)));
    ASSERT_TRUE(warte());
    EXPECT_EQ(funde().nummern(), (std::vector{199, 200, -1, -1}));
    taste(Qt::Key_W);
    for (int i = 0; i < 2; ++i) {
        taste(Qt::Key_P);
        taste(Qt::Key_Return);
    }
    EXPECT_EQ(reihe().letzteNummer(), 200);
    EXPECT_TRUE(übersicht().isVisible()) << "nothing left to go to by itself";
    taste(Qt::Key_W);
    taste(Qt::Key_P);
    taste(Qt::Key_Return);
    EXPECT_EQ(reihe().letzteNummer(), 200);
    EXPECT_THAT(dialoge.meldungen.join(u' ').toStdString(), HasSubstr("200"));
}

TEST_F(Fundetest, crash_bringsProposalBackAsOne) {
    beginne();
    öffne();
    taste(Qt::Key_W);
    taste(Qt::Key_P);
    QFile::copy(ordner.filePath(u"Sitzung.journal"_s), ordner.filePath(u"j"_s));
    programm.reset();
    QFile::remove(ordner.filePath(u"Sitzung.journal"_s));
    ASSERT_TRUE(QFile::rename(ordner.filePath(u"j"_s), ordner.filePath(u"Sitzung.journal"_s)));
    dialoge.antworten = {Antwort::Ja};
    ASSERT_TRUE(starte());
    QTest::qWait(0);
    ASSERT_EQ(marken().size(), 8U);
    EXPECT_TRUE(marken().front().vorgeschlagen);
}
