#include "evaluation/merkmale.h"

#include <gmock/gmock.h>

#include <numeric>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

Merkmale liste(Geschlecht tiere, const std::vector<Merkmalwahl>& bienen, bool ohneHaar = false) {
    Merkmale merkmale;
    merkmale.Tiere = tiere;
    for (const Merkmalwahl& wahl : bienen) {
        EXPECT_TRUE(MerkmalÜbernehmen(merkmale, wahl, ohneHaar));
    }
    return merkmale;
}

Merkmale arbeiterinnen(const std::vector<Merkmalwahl>& bienen, bool ohneHaar = false) {
    return liste(Geschlecht::Arbeiterinnen, bienen, ohneHaar);
}

Merkmale summen(Geschlecht tiere, const Merkmalzahlen& zahlen) {
    return {tiere, Merkmalmodus::Summen, {}, zahlen};
}

/// O/k/F, O/m/ff, E/k/F.
const std::vector<Merkmalwahl> Drei{{0, 0, 0}, {0, 1, 1}, {1, 0, 0}};

} // namespace

TEST(Merkmale, workers_becomeLinesCountsTextsAndRecord) {
    const Merkmale merkmale = arbeiterinnen(Drei);
    EXPECT_THAT(merkmale.Liste, testing::ElementsAre(u"001   O, k,  F"_s, u"002   O, m, ff"_s,
                                                     u"003   E, k,  F"_s));
    const Merkmalauswertung a = MerkmaleAuswerten(merkmale, false);
    EXPECT_EQ(a.Anzahl, (Merkmalzahlen{2, 1, 0, 0, 2, 1, 0, 2, 1, 0}));
    EXPECT_EQ(a.Bienen, 3);
    EXPECT_FALSE(a.Unterschiedlich);
    EXPECT_EQ(a.Fehler, std::nullopt);
    EXPECT_THAT(a.Texte, testing::ElementsAre(u"O=67%  E=33%  1R=0%  2R=0%"_s,
                                              u"k=67%  m=33%  l=0%"_s, u"F=67%  ff=33%  f=0%"_s));
    EXPECT_EQ(a.Satz, u"L#001;OkF; #002;Omf; #003;EkF; "_s);
    EXPECT_EQ(prozentfeld(a), u"O=67% E=33% 1R=0% 2R=0%;k=67% m=33% l=0%;F=67% ff=33% f=0%;3"_s);
}

TEST(Merkmale, hairLengthLeftOut_isNeitherCountedNorMissed) {
    const Merkmale merkmale = arbeiterinnen({{3, 9, 2}, {0, 0, 0}}, true);
    EXPECT_THAT(merkmale.Liste, testing::ElementsAre(u"001  2R, -,  f"_s, u"002   O, -,  F"_s));
    const Merkmalauswertung ohne = MerkmaleAuswerten(merkmale, true);
    EXPECT_EQ(ohne.Satz, u"L#001;R-f; #002;O-F; "_s);
    EXPECT_EQ(ohne.Texte.at(1), u"k=0%  m=0%  l=0%"_s);
    EXPECT_FALSE(ohne.Unterschiedlich);
    EXPECT_TRUE(MerkmaleAuswerten(merkmale, false).Unterschiedlich);

    const Merkmale zahlen = summen(Geschlecht::Arbeiterinnen, {2, 0, 0, 0, 9, 0, 0, 2, 0, 0});
    EXPECT_TRUE(MerkmaleAuswerten(zahlen, false).Unterschiedlich);
    EXPECT_FALSE(MerkmaleAuswerten(zahlen, true).Unterschiedlich);
    EXPECT_EQ(MerkmaleAuswerten(zahlen, true).Texte.at(1), u"k=0%  m=0%  l=0%"_s);
}

TEST(Merkmale, drones_haveAnotherOrderInTheSummaryThanOnTheButtons) {
    const Merkmale merkmale = liste(Geschlecht::Drohnen, {{0, 0}, {1, 1}, {2, 2}, {3, 3}, {0, 1}});
    EXPECT_THAT(merkmale.Liste,
                testing::ElementsAre(u"001   O,  gr"_s, u"002   I,  ge"_s, u"003  1R,  br"_s,
                                     u"004  2R, sch"_s, u"005   O,  ge"_s));
    // Hair length is no mark of drones, so the option does not concern them.
    const Merkmalauswertung a = MerkmaleAuswerten(merkmale, true);
    EXPECT_EQ(a, MerkmaleAuswerten(merkmale, false));
    EXPECT_EQ(a.Anzahl, (Merkmalzahlen{2, 1, 1, 1, 1, 2, 1, 1, 0, 0}));
    EXPECT_THAT(a.Texte, testing::ElementsAre(u"O=40%  I=20%  1R=20%  2R=20%"_s,
                                              u"gr=20%  br=20%  ge=40%  sch=20%"_s));
    EXPECT_EQ(a.Satz, u"L#001;Ogr; #002;Ige; #003;1Rbr; #004;2Rsch; #005;Oge; "_s);
}

TEST(Merkmale, everyButton_countsForItsCode) {
    for (const Geschlecht tiere : {Geschlecht::Arbeiterinnen, Geschlecht::Drohnen}) {
        const bool drohnen = tiere == Geschlecht::Drohnen;
        for (const Merkmalgruppe gruppe : merkmalgruppen(tiere)) {
            for (int i = 0; i < std::ssize(merkmalcodes(tiere, gruppe)); ++i) {
                Merkmalwahl wahl;
                (gruppe == Merkmalgruppe::Panzer ? wahl.Panzer
                 : gruppe == Merkmalgruppe::Filz ? wahl.Filz
                                                 : wahl.Haar) = i;
                const auto anzahl = MerkmaleAuswerten(liste(tiere, {wahl}), false).Anzahl;
                EXPECT_EQ(anzahl.at(ersterPlatz(tiere, gruppe) + i), 1);
                EXPECT_EQ(std::accumulate(anzahl.begin(), anzahl.end(), 0), drohnen ? 2 : 3);
            }
        }
    }
    EXPECT_THAT(merkmalcodes(Geschlecht::Arbeiterinnen),
                testing::ElementsAre(u"O"_s, u"E"_s, u"1R"_s, u"2R"_s, u"k"_s, u"m"_s, u"l"_s,
                                     u"F"_s, u"ff"_s, u"f"_s));
    EXPECT_THAT(merkmalcodes(Geschlecht::Drohnen),
                testing::ElementsAre(u"O"_s, u"I"_s, u"1R"_s, u"2R"_s, u"gr"_s, u"ge"_s, u"br"_s,
                                     u"sch"_s));
    EXPECT_EQ(ersterPlatz(Geschlecht::Drohnen, Merkmalgruppe::Filz), -1);
}

TEST(Merkmale, beeNumbers_followTheLastLine) {
    Merkmale merkmale = arbeiterinnen(std::vector<Merkmalwahl>(9));
    EXPECT_TRUE(MerkmalÜbernehmen(merkmale, {}, false));
    EXPECT_EQ(merkmale.Liste.back(), u"010   O, k,  F"_s);

    EXPECT_TRUE(MerkmalEntfernen(merkmale, 3));
    EXPECT_EQ(merkmale.Liste.at(3).first(3), u"005"_s);
    EXPECT_EQ(nächsteBiene(merkmale), 11);
    EXPECT_TRUE(MerkmalEntfernen(merkmale, 8));
    EXPECT_EQ(nächsteBiene(merkmale), 10);
    EXPECT_FALSE(MerkmalEntfernen(merkmale, 8));
    EXPECT_FALSE(MerkmalEntfernen(merkmale, -1));

    merkmale.Liste = {u"999   O, k,  F"_s};
    EXPECT_FALSE(MerkmalÜbernehmen(merkmale, {}, false));
    EXPECT_EQ(merkmale.Liste.size(), 1);
}

TEST(Merkmale, impossibleChoices_areRefused) {
    for (const Merkmalwahl& wahl : {Merkmalwahl{4, 0, 0}, {0, 3, 0}, {0, 0, 3}, {-1, 0, 0}}) {
        Merkmale merkmale;
        EXPECT_FALSE(MerkmalÜbernehmen(merkmale, wahl, false));
        EXPECT_EQ(merkmale, Merkmale());
    }
    Merkmale zahlen = summen(Geschlecht::Arbeiterinnen, {});
    EXPECT_FALSE(MerkmalÜbernehmen(zahlen, {}, false));
}

TEST(Merkmale, sharesThatCannotBeComputed_areReportedAndTheRecordIsKept) {
    const struct {
        Merkmalzahlen zahlen;
        std::optional<Anteilfehler> fehler;
        QString satz;
    } fälle[] = {
        {{327, 0, 0, 0, 327, 0, 0, 327, 0, 0}, {}, u"A327;327;0;0;0;327;0;0;327;0;0"_s},
        {{328, 0, 0, 0, 328, 0, 0, 328, 0, 0},
         Anteilfehler::Überlauf,
         u"A328;328;0;0;0;328;0;0;328;0;0"_s},
        {{1, 0, 0, 0, 1, 0, 0, 328, 0, 0}, Anteilfehler::Überlauf, u"A1;1;0;0;0;1;0;0;328;0;0"_s},
        {{0, 0, 0, 0, 1, 0, 0, 1, 0, 0}, Anteilfehler::KeineBienen, u"A0;0;0;0;0;1;0;0;1;0;0"_s},
        {{}, {}, {}},
    };
    for (const auto& fall : fälle) {
        const Merkmale merkmale = summen(Geschlecht::Arbeiterinnen, fall.zahlen);
        const Merkmalauswertung a = MerkmaleAuswerten(merkmale, false);
        EXPECT_EQ(a.Fehler, fall.fehler);
        EXPECT_EQ(a.Satz, fall.satz);
        EXPECT_EQ(a.Texte.isEmpty(), fall.fehler.has_value() || merkmale.leer());
    }
    // Lines that no code matches count nothing.
    Merkmale fremd;
    fremd.Liste = {u"001"_s, u""_s, u"quer"_s};
    EXPECT_EQ(MerkmaleAuswerten(fremd, false).Fehler, Anteilfehler::KeineBienen);
    EXPECT_EQ(MerkmaleAuswerten(Merkmale(), false).Satz, QString());
}

TEST(Merkmale, shares_areTakenOfTheColourTotalAndRoundHalvesUp) {
    const Merkmale merkmale = summen(Geschlecht::Arbeiterinnen, {1, 7, 0, 0, 4, 0, 0, 8, 1, 0});
    const Merkmalauswertung a = MerkmaleAuswerten(merkmale, false);
    EXPECT_TRUE(a.Unterschiedlich);
    EXPECT_THAT(a.Texte, testing::ElementsAre(u"O=13%  E=88%  1R=0%  2R=0%"_s,
                                              u"k=50%  m=0%  l=0%"_s, u"F=100%  ff=13%  f=0%"_s));
}

TEST(Merkmale, modeAndCaste_keepOrClearWhatWasEntered) {
    Merkmale merkmale = arbeiterinnen(Drei);
    setzeModus(merkmale, Merkmalmodus::Summen);
    EXPECT_EQ(merkmale.Summen, (Merkmalzahlen{2, 1, 0, 0, 2, 1, 0, 2, 1, 0}));
    setzeModus(merkmale, Merkmalmodus::Liste);
    EXPECT_EQ(merkmale.Liste.size(), 3);

    const Merkmale vorher = merkmale;
    setzeTiere(merkmale, Geschlecht::Arbeiterinnen);
    EXPECT_EQ(merkmale, vorher);
    setzeModus(merkmale, Merkmalmodus::Summen);
    setzeTiere(merkmale, Geschlecht::Drohnen);
    EXPECT_EQ(merkmale, summen(Geschlecht::Drohnen, {}));
}

TEST(Merkmale, typedSums_areNotLostToTheList) {
    const Merkmalzahlen getippt{5, 0, 0, 0, 5, 0, 0, 5, 0, 0};
    Merkmale merkmale = summen(Geschlecht::Arbeiterinnen, getippt);
    setzeModus(merkmale, Merkmalmodus::Liste);
    EXPECT_TRUE(merkmale.leer());
    EXPECT_TRUE(merkmale.etwasEingetragen()); // in the other mode
    ASSERT_TRUE(MerkmalÜbernehmen(merkmale, {}, false));
    setzeModus(merkmale, Merkmalmodus::Summen);
    EXPECT_EQ(merkmale.Summen, getippt);

    // Sums that only repeat the list follow it, and nothing is left of them without it.
    Merkmale gezählt = arbeiterinnen(Drei);
    setzeModus(gezählt, Merkmalmodus::Summen);
    setzeModus(gezählt, Merkmalmodus::Liste);
    ASSERT_TRUE(MerkmalÜbernehmen(gezählt, {}, false));
    setzeModus(gezählt, Merkmalmodus::Summen);
    EXPECT_EQ(gezählt.Summen, (Merkmalzahlen{3, 1, 0, 0, 3, 1, 0, 3, 1, 0}));
    setzeModus(gezählt, Merkmalmodus::Liste);
    while (MerkmalEntfernen(gezählt, 0)) {
    }
    EXPECT_FALSE(gezählt.etwasEingetragen());
}

TEST(Merkmale, storedRecord_givesTheSameMarksBack) {
    const Merkmale alle[] = {
        arbeiterinnen(Drei),
        arbeiterinnen({{2, 2, 1}, {2, 0, 1}, {0, 1, 0}, {3, 0, 2}}),
        arbeiterinnen({{3, 0, 2}, {3, 0, 2}, {0, 0, 0}}, true),
        liste(Geschlecht::Drohnen, {{0, 3}, {1, 2}, {2, 1}, {3, 0}}),
        summen(Geschlecht::Arbeiterinnen, {2, 1, 0, 0, 2, 1, 0, 2, 1, 0}),
        summen(Geschlecht::Drohnen, {2, 1, 0, 400, 2, 1, 0, 0}),
    };
    for (const Merkmale& merkmale : alle) {
        const Merkmalauswertung a = MerkmaleAuswerten(merkmale, true);
        EXPECT_EQ(merkmaleAusSatz(a.Satz, prozentfeld(a), merkmale.Tiere), merkmale)
            << qPrintable(a.Satz);
    }
}

TEST(Merkmale, mixedSampleFromItsRecord_keepsTheSummaryThough1RAnd2RLookAlike) {
    // Of every size a sample with all splits of R and f.
    for (const int bienen : {3, 40, 100, 151, 200}) {
        for (int ringe = 0; ringe <= bienen; ringe += bienen / 3) {
            std::vector<Merkmalwahl> wahlen(static_cast<std::size_t>(bienen));
            for (int i = 0; i < bienen; ++i) {
                wahlen[i] = {i < ringe ? 3 : i % 3, 0, i < ringe ? 1 + i % 2 : 2};
            }
            const Merkmale merkmale = arbeiterinnen(wahlen);
            const Merkmalauswertung a = MerkmaleAuswerten(merkmale, false);
            const auto zurück = merkmaleAusSatz(a.Satz, prozentfeld(a), Geschlecht::Arbeiterinnen);
            ASSERT_TRUE(zurück.has_value());
            const Merkmalauswertung b = MerkmaleAuswerten(*zurück, false);
            EXPECT_EQ(b.Texte, a.Texte) << bienen << ", " << ringe;
            EXPECT_EQ(b.Satz, a.Satz);
            if (bienen <= 100) {
                EXPECT_EQ(b.Anzahl, a.Anzahl);
            }
        }
    }
    const auto ohneSumme =
        merkmaleAusSatz(u"L#001;RkF; #007;O-f; ", u"", Geschlecht::Arbeiterinnen);
    ASSERT_TRUE(ohneSumme.has_value());
    EXPECT_THAT(ohneSumme->Liste, testing::ElementsAre(u"001  1R, k,  F"_s, u"007   O, -,  f"_s));
}

TEST(Merkmale, recordsThatAreNone_areRefused) {
    for (const QString& satz : {u"X"_s,
                                u"L001;OkF; "_s,
                                u"L#"_s,
                                u"L#001;OkF; #"_s,
                                u"L#001"_s,
                                u"L#001;"_s,
                                u"L#001;Ok; "_s,
                                u"L#001;OkFF; "_s,
                                u"L#001;QkF; "_s,
                                u"L#001;OQF; "_s,
                                u"L#001;OkQ; "_s,
                                u"L#abc;OkF; "_s,
                                u"L#1000;OkF; "_s,
                                u"L#-01;OkF; "_s,
                                u"L#001;Ogr; "_s,
                                u"A"_s,
                                u"A3;2;1"_s,
                                u"A3;2;1;0;0;2;1;0;2;1;x"_s,
                                u"A3;2;1;0;0;2;1;0;2;1;-1"_s,
                                u"A3;2;1;0;0;2;1;0;2;1;99999"_s}) {
        EXPECT_EQ(merkmaleAusSatz(satz, u"", Geschlecht::Arbeiterinnen), std::nullopt)
            << qPrintable(satz);
    }
    for (const QString& satz : {u"L#001;OkF; "_s, u"L#001;O; "_s, u"L#001;Rgr; "_s}) {
        EXPECT_EQ(merkmaleAusSatz(satz, u"", Geschlecht::Drohnen), std::nullopt);
    }
    for (const QString& satz : {u""_s, u" "_s, u"L"_s}) {
        const auto keine = merkmaleAusSatz(satz, u"", Geschlecht::Drohnen);
        ASSERT_TRUE(keine.has_value());
        EXPECT_TRUE(keine->leer());
        EXPECT_EQ(keine->Tiere, Geschlecht::Drohnen);
    }
}

TEST(Merkmale, shareOfACode_isFoundAsAWholeWord) {
    const QString text = u"O=67%  E=1%  1R=2%  2R=3%;F=4%  ff=5%  f=6% sch=7% k=quer"_s;
    const struct {
        QStringView code;
        std::optional<int> anteil;
    } fälle[] = {{u"O", 67}, {u"E", 1}, {u"1R", 2},  {u"2R", 3}, {u"R", {}}, {u"F", 4},
                 {u"ff", 5}, {u"f", 6}, {u"sch", 7}, {u"h", {}}, {u"e", {}}, {u"k", 0}};
    for (const auto& fall : fälle) {
        EXPECT_EQ(merkmalanteil(text, fall.code), fall.anteil) << qPrintable(fall.code.toString());
    }
}

TEST(Merkmale, countBoxes_readWholeNumbersOfBees) {
    const struct {
        QStringView text;
        int anzahl;
    } fälle[] = {{u"", 0},    {u"12", 12}, {u" 7 ", 7},       {u"-3", 0},
                 {u"abc", 0}, {u"3,9", 3}, {u"32768", 32767}, {u"1e300", 32767}};
    for (const auto& fall : fälle) {
        EXPECT_EQ(anzahlAusText(fall.text), fall.anzahl) << qPrintable(fall.text.toString());
    }
}
