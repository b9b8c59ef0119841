#include "evaluation/klassen.h"

#include "measure/messreihe.h"

#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

/// Classes with the counts of @p anzahl from class @p erste on.
std::vector<int> klassen(int erste, const std::vector<int>& anzahl) {
    std::vector<int> alle;
    for (const int n : anzahl) {
        alle.insert(alle.end(), static_cast<std::size_t>(n), erste);
        ++erste;
    }
    return alle;
}

} // namespace

TEST(Klassen, linesInAnyLanguageAndSeparator_countByTheWholePart) {
    const QStringList zeilen{
        u"001  CI=3.07  Klasse 17.3"_s, u"002  CI=3,07  Klasse 17,9"_s,
        u"003  CI=3.07  Class 18.0"_s,  u"004  IC=3,07  Classe 16,9"_s,
        u"005  CI=9.99  Klasse 0.0"_s,  u"006  HI=0.993  Klasse 17.7   DV=+0.4"_s,
        u"kein Flügel 17.3"_s,          u"007  Klasse"_s,
    };
    EXPECT_EQ(ZähleKlassen(zeilen, 17, 17), 3);
    EXPECT_EQ(ZähleKlassen(zeilen, 16, 18), 5);
    EXPECT_EQ(ZähleKlassen(zeilen, 18, 17), 0);
    EXPECT_EQ(ZähleKlassen(zeilen, 0, 0), 1);
    EXPECT_EQ(ZähleKlassen(QStringList(), 1, 30), 0);
}

TEST(Klassen, series_givesOneClassForEveryWing) {
    Messreihe reihe;
    EXPECT_TRUE(klassenCI(reihe).empty());
    for (const Zahlenformat& format : {Zahlenformat{}, Zahlenformat{u',', u'.'}}) {
        Indizes indizes;
        indizes.CI = 3.07F;
        ASSERT_TRUE(reihe.trageEin(reihe.nächsteNummer(), indizes, {}, format));
    }
    EXPECT_EQ(klassenCI(reihe), (std::vector<int>{21, 21}));
}

TEST(Klassen, shares_roundHalvesToEvenAndReportWhatCannotBeComputed) {
    const struct {
        int anzahl;
        int gesamt;
        Anteil anteil;
    } fälle[] = {
        {0, 10, {0, {}}},
        {1, 200, {0, {}}},
        {3, 200, {2, {}}},
        {1, 8, {12, {}}},
        {2, 3, {67, {}}},
        {327, 327, {100, {}}},
        {328, 328, {0, Anteilfehler::Überlauf}},
        {0, 0, {0, Anteilfehler::KeineBienen}},
    };
    for (const auto& fall : fälle) {
        EXPECT_EQ(klassenanteil(fall.anzahl, fall.gesamt), fall.anteil)
            << fall.anzahl << " of " << fall.gesamt;
    }
}

TEST(Klassen, secondaryPeak_mustExceedTheLargerNeighbour) {
    const struct {
        std::vector<int> anzahl; ///< of classes 15, 16, 17, 18
        Gipfel gipfel;
        bool nebengipfel;
    } fälle[] = {
        {{3, 5, 5, 2}, {3, 5, 16}, true},  {{5, 5, 4, 2}, {5, 5, 16}, false},
        {{2, 4, 5, 5}, {5, 5, 17}, false}, {{2, 3, 6, 5}, {5, 6, 17}, true},
        {{0, 0, 1, 0}, {0, 1, 17}, true},  {{4, 0, 0, 4}, {4, 0, 0}, false},
        {{0, 0, 0, 0}, {0, 0, 0}, false},
    };
    for (const auto& fall : fälle) {
        const Gipfel befund = gipfel(klassen(15, fall.anzahl), {16, 17});
        EXPECT_EQ(befund, fall.gipfel);
        EXPECT_EQ(befund.nebengipfel(), fall.nebengipfel);
    }
    EXPECT_EQ(gipfel(klassen(15, {3, 5, 5, 2}), {17, 16}), (Gipfel{5, 0, 0}));
    EXPECT_EQ(gipfel(klassen(15, {3, 5}), {-32768, 32767}), (Gipfel{0, 5, 16}));
}
