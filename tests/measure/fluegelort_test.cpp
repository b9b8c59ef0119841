#include "measure/fluegelmarken.h"
#include "measure/fluegelort.h"

#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

/// The points of a plausible wing at @p versatz of a picture, all eight or 5 to 7.
Flügelmessung flügel(QPointF versatz, Messart messart = Messart::AlleMessungen, qint16 zoom = 1) {
    const QPointF punkte[] = {{},         {400, 50},  {92, 75},   {360, 56}, {288, 62},
                              {286, 116}, {237, 147}, {216, 143}, {292, 201}};
    Flügelmessung f{Messpunkte(messart), messart, {zoom, 2400}, u"scan.png"_s};
    for (int i = ersterPunkt(messart); i <= letzterPunkt(messart); ++i) {
        f.punkte.PunktX[i] = static_cast<float>((punkte[i].x() + versatz.x()) * zoom);
        f.punkte.PunktY[i] = static_cast<float>((punkte[i].y() + versatz.y()) * zoom);
    }
    return f;
}

Messreihe reiheMit(const std::vector<Flügelmessung>& flügel) {
    Messreihe reihe;
    for (const Flügelmessung& f : flügel) {
        reihe.trageEin(reihe.nächsteNummer(), berechneIndizes(f.punkte, f.messart, f.aufnahme), f,
                       Zahlenformat{});
    }
    return reihe;
}

} // namespace

TEST(Flügelort, placeOnTheScan_isTheWingAroundIt) {
    const Messreihe reihe = reiheMit({flügel({0, 0}), flügel({0, 220}, Messart::AlleMessungen, 2),
                                      flügel({700, 0}, Messart::NurCubitalindex)});
    const std::pair<QPointF, std::optional<int>> orte[] = {
        {{246, 125}, 1},  {{80, 60}, 1},    {{410, 200}, 1},  {{246, 350}, 2},
        {{246, 215}, 1},  {{246, 240}, 2},  {{950, 130}, 3},  {{900, 60}, 3},
        {{700, 300}, {}}, {{600, 100}, {}}, {{246, 520}, {}},
    };
    for (const auto& [ort, nummer] : orte) {
        EXPECT_EQ(flügelAn(reihe, u"scan.png"_s, ort), nummer) << ort.x() << ' ' << ort.y();
    }
    EXPECT_EQ(flügelAn(reihe, u"anderer.png"_s, {246, 125}), std::nullopt);
    EXPECT_EQ(flügelmitte(Flügelmessung{}), std::nullopt);
}

TEST(Flügelort, wingMeasuredTwice_isFoundAtAnyZoomAndKind) {
    const Messreihe reihe = reiheMit({flügel({0, 0}), flügel({0, 220})});
    EXPECT_EQ(liegtAufFlügel(reihe, flügel({6, 224}), 3), 2);
    EXPECT_EQ(liegtAufFlügel(reihe, flügel({4, -3}, Messart::NurCubitalindex, 3), 3), 1);
    EXPECT_EQ(liegtAufFlügel(reihe, flügel({0, 0}), 1), std::nullopt) << "itself";
    EXPECT_EQ(liegtAufFlügel(reihe, flügel({0, 440}), 3), std::nullopt) << "the wing below";
    EXPECT_EQ(liegtAufFlügel(reihe, flügel({60, 30}, Messart::NurCubitalindex), 3), std::nullopt);
    Flügelmessung woanders = flügel({0, 0});
    woanders.bilddatei = u"anderer.png"_s;
    EXPECT_EQ(liegtAufFlügel(reihe, woanders, 3), std::nullopt);
}

TEST(Flügelmarken, measuredWings_areMarkedOnTheirPictureAtAnyZoom) {
    Flügelmessung woanders = flügel({0, 0});
    woanders.bilddatei = u"anderer.png"_s;
    const Messreihe reihe =
        reiheMit({flügel({0, 0}, Messart::AlleMessungen, 2), flügel({0, 220}), woanders});
    Messung messung(reihe, {});
    messung.setzeZoomfaktor(3);
    const Erledigtmarken marken =
        erledigtmarken(reihe, messung, u"scan.png"_s, [](int) { return Zweifelsgrad::Keiner; });
    ASSERT_EQ(marken.imScan.size(), 2U);
    ASSERT_EQ(marken.imBild.size(), 2U * 9);
    EXPECT_EQ(marken.imScan[1].text, u"002"_s);
    EXPECT_EQ(marken.imBild[0].position, marken.imScan[0].position * 3);
    EXPECT_EQ(marken.imBild[1].position, QPointF(400, 50) * 3);
    EXPECT_EQ(marken.imBild[10].position, QPointF(400, 270) * 3);
}
