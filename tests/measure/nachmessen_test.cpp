#include "../bench/musterblatt.h"
#include "measure/bild.h"
#include "measure/nachmessfenster.h"

#include <QLabel>
#include <QMouseEvent>
#include <QTest>
#include <gmock/gmock.h>

#include <cmath>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace {

Flügelmessung messung(const std::array<QPointF, 9>& orte, QPointF ursprung = {},
                      Punktherkunft herkunft = Punktherkunft::Geklickt) {
    Flügelmessung m;
    m.bilddatei = u"/a.png"_s;
    for (int p = 1; p <= Messpunkte::Anzahl; ++p) {
        const QPointF ort = orte[static_cast<std::size_t>(p)] - ursprung;
        m.punkte.setze(m.messart, p, static_cast<float>(ort.x()), static_cast<float>(ort.y()),
                       herkunft);
    }
    return m;
}

const Musterblatt& blatt() {
    static const Musterblatt eines = male({.flügel = 2, .spalten = 1});
    return eines;
}

Indizes indizes(const Flügelmessung& m) {
    return berechneIndizes(m.punkte, m.messart, m.aufnahme);
}

} // namespace

TEST(Nachmessung, wingsThatAPersonMeasured_areChosenAtRandom) {
    Messreihe reihe;
    qint16 nummer = 0;
    const auto füge = [&](const Flügelmessung& m) { reihe.trageEin(++nummer, indizes(m), m, {}); };
    const auto& orte = blatt().punkte[0];
    for (int i = 0; i < 4; ++i) {
        füge(messung(orte));
    }
    reihe.lassAus(4, true);
    Flügelmessung m = messung(orte);
    m.punkte.Herkunft[3] = Punktherkunft::Vorgeschlagen;
    füge(m);
    m = messung(orte);
    m.ungeprüft = true;
    füge(m);
    m = messung(orte);
    m.bilddatei.clear();
    füge(m);
    EXPECT_THAT(nachmessbare(reihe, [] { return 0U; }), ElementsAre(2, 3, 1));
    EXPECT_THAT(nachmessbare(reihe, [] { return 5U; }), UnorderedElementsAre(1, 2, 3));
    EXPECT_NE(nachmessbare(reihe, [] { return 5U; }), nachmessbare(reihe, [] { return 0U; }));
}

TEST(Nachmessung, error_isThatOfASingleMeasurement) {
    const auto mit = [](float CI) { return Indizes{.CI = CI, .HI = {}, .DV = {}, .fehler = {}}; };
    std::vector<Nachmessung> messungen{{mit(2.0F), mit(2.25F), mit(2.0F)}};
    EXPECT_EQ(einzelmessfehler(messungen, &Indizes::CI), std::nullopt); // one tells nothing
    messungen.push_back({mit(3.0F), mit(2.75F), std::nullopt});
    EXPECT_DOUBLE_EQ(einzelmessfehler(messungen, &Indizes::CI).value(), std::sqrt(2 * 0.0625 / 4));
    EXPECT_EQ(einzelmessfehler(messungen, &Indizes::HI), std::nullopt);
    EXPECT_EQ(einzelmessfehler(messungen, &Indizes::CI, Nachmessvergleich::ErsteMitVorschlag),
              std::nullopt);
}

namespace {

/// Both wings of the sheet, each on its half.
class NachmessTest : public testing::Test {
protected:
    Texte texte_{QString()};
    std::vector<Nachmessflügel> flügel_;

    void SetUp() override {
        const int halb = blatt().bild.height() / 2;
        for (int i = 0; i < 2; ++i) {
            const QRect teil(0, i * halb, blatt().bild.width(), halb);
            const auto& orte = blatt().punkte[static_cast<std::size_t>(i)];
            flügel_.push_back(
                {.erste = messung(orte, teil.topLeft()), .bild = blatt().bild.copy(teil)});
        }
    }
    static void klick(Nachmessfenster& fenster, QPointF imBild,
                      Qt::MouseButton taste = Qt::LeftButton) {
        auto& bild = *fenster.findChild<Bild*>();
        bild.macheSichtbar(imBild);
        QWidget& ziel = *bild.viewport();
        const QPointF ort = bild.zuFenster(imBild);
        for (const auto art :
             {QEvent::MouseMove, QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent e(art, ort, ziel.mapToGlobal(ort),
                          art == QEvent::MouseMove ? Qt::NoButton : taste,
                          art == QEvent::MouseButtonPress ? taste : Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&ziel, &e);
        }
    }
    /// Clicks the points of the wing that is shown, the sixth off by so much.
    void miss(Nachmessfenster& fenster, double daneben) {
        const Messpunkte& p = flügel_[fenster.ergebnis().size()].erste.punkte;
        for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
            klick(fenster, QPointF(p.PunktX[i] + (i == 6 ? daneben : 0), p.PunktY[i]));
        }
        klick(fenster, {5, 5}, Qt::RightButton);
    }
};

} // namespace

TEST_F(NachmessTest, measuringAgain_saysHowExactThatWas) {
    Nachmessfenster fenster(texte_, {}, flügel_, {0.31, std::nullopt, 1.0}, nullptr);
    fenster.show();
    const auto text = [&fenster](const QString& name) {
        const auto* label = fenster.findChild<QLabel*>(name);
        return label == nullptr ? u"none"_s : label->text();
    };
    EXPECT_TRUE(fenster.findChild<Bild*>()->marken().empty()); // the former points are hidden
    EXPECT_EQ(text(u"lab_Nachmessflügel"_s), u"Flügel 1 von 2"_s);
    klick(fenster, {50, 50});
    klick(fenster, {5, 5}, Qt::RightButton); // not a whole wing
    EXPECT_TRUE(fenster.ergebnis().empty());
    QTest::keyClick(fenster.findChild<Bild*>(), Qt::Key_Backspace);
    miss(fenster, 0);
    EXPECT_EQ(text(u"lab_Nachmessflügel"_s), u"Flügel 2 von 2"_s);
    miss(fenster, 3);
    ASSERT_EQ(fenster.ergebnis().size(), 2U);
    EXPECT_NEAR(fenster.ergebnis()[0].zweite.CI.value(), fenster.ergebnis()[0].erste.CI.value(),
                0.01);
    const double fehler = einzelmessfehler(fenster.ergebnis(), &Indizes::CI).value();
    EXPECT_GT(fehler, 0.05);
    EXPECT_EQ(text(u"lab_Nachmess_Sie_0"_s), Format(fehler, u"0.00", {}));
    EXPECT_EQ(text(u"lab_Nachmess_Vorschlag_0"_s), u"none"_s);
    fenster.setzeVorschläge({indizes(flügel_[0].erste), indizes(flügel_[1].erste)});
    EXPECT_EQ(text(u"lab_Nachmess_Vorschlag_0"_s), u"0.00"_s);
    EXPECT_EQ(text(u"lab_Nachmess_Probe_0"_s), u"0.31"_s);
    EXPECT_EQ(text(u"lab_Nachmess_Probe_1"_s), u"–"_s);
}

TEST_F(NachmessTest, escape_endsItAnywhere) {
    for (const int gemessen : {0, 1}) {
        Nachmessfenster fenster(texte_, {}, flügel_, {}, nullptr);
        fenster.show();
        for (int i = 0; i < gemessen; ++i) {
            miss(fenster, 0);
        }
        klick(fenster, {50, 50});
        QTest::keyClick(fenster.findChild<Bild*>(), Qt::Key_Escape);
        EXPECT_FALSE(fenster.isVisible());
        EXPECT_EQ(fenster.result(), QDialog::Rejected);
    }
}
