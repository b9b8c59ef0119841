#include "evaluation/beurteilung.h"

#include "evaluation/merkmale.h"

#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

constexpr auto A = Geschlecht::Arbeiterinnen;
constexpr auto D = Geschlecht::Drohnen;

/// @p anzahl wings of class @p klasse among 100, the others of class 25.
std::vector<int> hundertFlügel(int klasse, int anzahl) {
    std::vector<int> klassen(100, 25);
    std::fill_n(klassen.begin(), anzahl, klasse);
    return klassen;
}

QStringList namen(const std::vector<Prüfwert>& werte) {
    QStringList liste;
    for (const Prüfwert& wert : werte) {
        liste += wert.art == Prüfung::Nebengipfel ? u"Nebengipfel"_s : wert.name;
    }
    return liste;
}

QStringList mängel(const Probe& probe) {
    return namen(beurteile(probe, Rassestandard(), true).mängel());
}

} // namespace

TEST(Beurteilung, sharesAtTheLimit_passAndOnePercentMoreFails) {
    const struct {
        Probe probe;
        QStringList mängel;
    } fälle[] = {
        {{A, {}, {u"O=70%  E=30%  1R=0%  2R=0%"_s}}, {}},
        {{A, {}, {u"O=69%  E=31%  1R=0%  2R=0%"_s}}, {u"E"_s}},
        {{A, {}, {u"O=98%  E=0%  1R=1%  2R=1%"_s}}, {u"1R"_s, u"2R"_s}},
        {{A, {}, {u"k=70%  m=30%  l=0%"_s}}, {}},
        {{A, {}, {u"k=68%  m=31%  l=1%"_s}}, {u"m"_s, u"l"_s}},
        {{A, {}, {u"F=50%  ff=50%  f=0%"_s}}, {}},
        {{A, {}, {u"F=48%  ff=51%  f=1%"_s}}, {u"ff"_s, u"f"_s}},
        {{D, {}, {u"O=90%  I=10%  1R=0%  2R=0%"_s}}, {}},
        {{D, {}, {u"O=87%  I=11%  1R=1%  2R=1%"_s}}, {u"I"_s, u"1R"_s, u"2R"_s}},
        {{D, {}, {u"gr=80%  br=20%  ge=0%  sch=0%"_s}}, {}},
        {{D, {}, {u"gr=77%  br=21%  ge=1%  sch=1%"_s}}, {u"br"_s, u"ge"_s, u"sch"_s}},
        {{A, hundertFlügel(18, 15), {}}, {}},
        {{A, hundertFlügel(17, 15), {}}, {u"Nebengipfel"_s}},
        {{A, hundertFlügel(17, 16), {}}, {u"Klasse 0"_s, u"Nebengipfel"_s}},
        {{A, hundertFlügel(15, 2), {}}, {}},
        {{A, hundertFlügel(15, 3), {}}, {u"Klasse 1"_s}},
        {{A, hundertFlügel(1, 3), {}}, {u"Klasse 1"_s}},
        {{A, hundertFlügel(0, 50), {}}, {}},
        {{D, hundertFlügel(12, 100), {}}, {}},
        {{D, hundertFlügel(11, 1), {}}, {u"Klasse 3"_s}},
        {{D, hundertFlügel(17, 50), {}}, {}},
    };
    for (const auto& fall : fälle) {
        const Beurteilung b = beurteile(fall.probe, Rassestandard(), true);
        EXPECT_EQ(namen(b.mängel()), fall.mängel) << qPrintable(fall.probe.Merkmale.join(u' '));
        EXPECT_EQ(b.urteil(), fall.mängel.isEmpty());
        EXPECT_EQ(b.fehler, std::nullopt);
    }
}

TEST(Beurteilung, failedChecks_tellMeasuredAndAllowedShares) {
    Probe probe{A, hundertFlügel(16, 20), {u"O=60%  E=40%  1R=0%  2R=0%"_s}};
    const Beurteilung b = beurteile(probe, Rassestandard(), true);
    EXPECT_THAT(
        b.mängel(),
        testing::ElementsAre(Prüfwert{Prüfung::Merkmal, u"E"_s, {}, 40, 30, true},
                             Prüfwert{Prüfung::Klassen, u"Klasse 0"_s, {15, 17}, 20, 15, true},
                             Prüfwert{Prüfung::Nebengipfel, u"Klasse 2"_s, {16, 17}, 20, 0, true}));
    EXPECT_EQ(b.nebengipfel, 16);
    EXPECT_FALSE(b.EntsprichtRasse);
}

TEST(Beurteilung, everyCheck_standsInTheOrderOfTheReport) {
    EXPECT_EQ(namen(beurteile({A, {}, {}}, Rassestandard(), true).werte),
              (QStringList{u"O"_s, u"E"_s, u"1R"_s, u"2R"_s, u"k"_s, u"m"_s, u"l"_s, u"F"_s,
                           u"ff"_s, u"f"_s, u"Klasse 0"_s, u"Klasse 1"_s, u"Nebengipfel"_s}));
    EXPECT_EQ(namen(beurteile({D, {}, {}}, Rassestandard(), true).werte),
              (QStringList{u"O"_s, u"I"_s, u"1R"_s, u"2R"_s, u"gr"_s, u"br"_s, u"ge"_s, u"sch"_s,
                           u"Klasse 3"_s}));
}

TEST(Beurteilung, standardOfTheRace_setsLimitsAndRanges) {
    Rassestandard standard;
    standard.arbeiterinnen.Panzer[0] = u"ohne"_s;
    standard.arbeiterinnen.Klasse = {u"20-20"_s, u"21-22"_s, u"23-24"_s};
    standard.arbeiterinnen.max = {u"50%"_s, u""_s};
    Probe probe{A, {20, 20, 21, 23, 23, 24, 25, 25}, {u"O=1%"_s}};
    const Beurteilung b = beurteile(probe, standard, true);
    // Allowed percentages without a number are 0; 23 and 25 are equally high.
    EXPECT_EQ(namen(b.mängel()), (QStringList{u"O"_s, u"Klasse 1"_s}));
    EXPECT_EQ(b.werte.at(10).gemessen, 25);
    EXPECT_EQ(b.werte.at(11).gemessen, 12);
    EXPECT_EQ(b.nebengipfel, std::nullopt);
}

TEST(Beurteilung, emptySample_hasNoVerdict) {
    for (const Geschlecht tiere : {A, D}) {
        const Beurteilung b = beurteile({tiere, {}, {}}, Rassestandard(), true);
        EXPECT_EQ(b.unbeurteilt, Unbeurteilt::NichtsGemessen);
        EXPECT_TRUE(b.EntsprichtRasse);
        EXPECT_EQ(b.urteil(), std::nullopt);
        for (const Prüfwert& wert : b.werte) {
            EXPECT_EQ(wert.gemessen, std::nullopt);
        }
    }
}

TEST(Beurteilung, switchedOff_marksNothing) {
    const Probe probe{A, hundertFlügel(16, 20), {u"O=60%  E=40%"_s}};
    const Beurteilung b = beurteile(probe, Rassestandard(), false);
    EXPECT_TRUE(b.mängel().empty());
    EXPECT_EQ(b.nebengipfel, std::nullopt);
    EXPECT_EQ(b.urteil(), std::nullopt);
    EXPECT_EQ(b.werte.at(1).gemessen, 40);
}

TEST(Beurteilung, shareBeyond16Bits_isReportedInsteadOfAVerdict) {
    Probe probe{A, std::vector<int>(400, 25), {}};
    std::fill_n(probe.Klassen.begin(), 327, 10);
    EXPECT_EQ(mängel(probe), QStringList{u"Klasse 1"_s});
    probe.Klassen[327] = 10;
    const Beurteilung b = beurteile(probe, Rassestandard(), true);
    EXPECT_EQ(b.fehler, Anteilfehler::Überlauf);
    EXPECT_EQ(b.urteil(), std::nullopt);
    EXPECT_EQ(b.werte.at(11).gemessen, std::nullopt);
}

TEST(Beurteilung, marksWithoutShares_areReportedInsteadOfAVerdict) {
    for (const auto& [zahlen, fehler] :
         {std::pair{Merkmalzahlen{0, 0, 0, 400, 400, 0, 0, 400, 0, 0}, Anteilfehler::Überlauf},
          {Merkmalzahlen{0, 0, 0, 0, 3, 0, 0, 3, 0, 0}, Anteilfehler::KeineBienen}}) {
        const Merkmalauswertung marken =
            MerkmaleAuswerten({A, Merkmalmodus::Summen, {}, zahlen}, false);
        for (const std::vector<int>& flügel : {std::vector<int>(), std::vector<int>(9, 25)}) {
            const Beurteilung b =
                beurteile({A, flügel, marken.Texte, marken.Fehler}, Rassestandard(), true);
            EXPECT_EQ(b.fehler, fehler);
            EXPECT_EQ(b.urteil(), std::nullopt);
            EXPECT_EQ(b.unbeurteilt, Unbeurteilt::AnteilUnberechenbar);
        }
    }
}

TEST(Beurteilung, recordedMarks_areJudgedByTheirSummary) {
    Merkmale merkmale;
    for (const Merkmalwahl& wahl : {Merkmalwahl{0, 0, 0}, {0, 1, 1}, {1, 0, 0}}) {
        ASSERT_TRUE(MerkmalÜbernehmen(merkmale, wahl, false));
    }
    EXPECT_EQ(mängel({A, {}, MerkmaleAuswerten(merkmale, false).Texte}),
              (QStringList{u"E"_s, u"m"_s}));
}

TEST(Beurteilung, verdicts_haveTheirTexts) {
    EXPECT_EQ(Texte::eintrag(urteilssatz(true), Sprache::Deutsch),
              u"Entspricht den Merkmalen der Rasse"_s);
    EXPECT_EQ(Texte::eintrag(urteilssatz(false), Sprache::Englisch),
              u"The characteristics are not in accordance with the race"_s);
    EXPECT_EQ(Texte::eintrag(urteilswort(true), Sprache::Französisch), u"Oui"_s);
    EXPECT_EQ(Texte::eintrag(urteilswort(false), Sprache::Deutsch), u"Nein"_s);
}
