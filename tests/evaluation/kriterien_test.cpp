// How firm a verdict is: intervals, margins, and the bees behind each check.

#include "evaluation/kriterientabelle.h"
#include "evaluation/urteilstext.h"

#include <gmock/gmock.h>

#include <algorithm>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A series with wings of these cubital indices, numbered from 1.
Messreihe reiheMit(const std::vector<float>& ci) {
    Messreihe reihe;
    for (std::size_t i = 0; i < ci.size(); ++i) {
        Indizes indizes;
        indizes.CI = ci[i];
        reihe.trageEin(static_cast<qint16>(i + 1), indizes, {}, Zahlenformat());
    }
    return reihe;
}

Merkmale bienen(const std::vector<Merkmalwahl>& wahlen) {
    Merkmale merkmale;
    for (const Merkmalwahl& wahl : wahlen) {
        EXPECT_TRUE(MerkmalÜbernehmen(merkmale, wahl, false));
    }
    return merkmale;
}

struct Kriterientest : testing::Test {
    Messreihe reihe;
    Merkmale merkmale;
    Rassestandard standard;
    Urteilsregeln regeln;
    Prüfling prüfling{.reihe = reihe, .merkmale = merkmale};

    [[nodiscard]] Beurteilung beurteilung() const {
        return urteile(prüfling, standard, regeln).beurteilung;
    }
    [[nodiscard]] Kriterium kriterium(const QString& name) const {
        const auto alle = kriterien(prüfling, urteile(prüfling, standard, regeln));
        const auto k = std::find_if(alle.begin(), alle.end(), [&](const Kriterium& eines) {
            return eines.prüfwert.name == name;
        });
        return k == alle.end() ? Kriterium{} : *k;
    }
};

} // namespace

// Figures from tables of the distributions.
TEST(Sicherheit, intervals_areThoseOfWilsonAndStudent) {
    for (const auto& [freiheitsgrade, t] : {std::pair{1, 12.706},
                                            {2, 4.303},
                                            {6, 2.447},
                                            {7, 2.365},
                                            {9, 2.262},
                                            {29, 2.045},
                                            {49, 2.010},
                                            {199, 1.972}}) {
        EXPECT_NEAR(studentT(freiheitsgrade), t, 0.0006) << freiheitsgrade;
    }
    for (const auto& [anzahl, gesamt, von, bis] : {std::tuple{0, 50, 0.0, 7.13},
                                                   {1, 50, 0.35, 10.50},
                                                   {5, 50, 4.35, 21.36},
                                                   {25, 50, 36.64, 63.36},
                                                   {50, 50, 92.87, 100.0},
                                                   {1, 1, 20.65, 100.0}}) {
        const Vertrauensintervall i = anteilsbereich(anzahl, gesamt);
        EXPECT_NEAR(i.von, von, 0.01) << anzahl;
        EXPECT_NEAR(i.bis, bis, 0.01) << anzahl;
    }
    const auto mittel = mittelbereich(
        {.anzahl = 25, .mittelwert = 2.5, .minimum = 2, .maximum = 3, .standardabweichung = 0.5});
    ASSERT_TRUE(mittel);
    EXPECT_NEAR(mittel->von, 2.2936, 0.0001);
    EXPECT_NEAR(mittel->bis, 2.7064, 0.0001);
    EXPECT_EQ(mittelbereich({.anzahl = 1,
                             .mittelwert = 2.5,
                             .minimum = 2.5,
                             .maximum = 2.5,
                             .standardabweichung = {}}),
              std::nullopt);
}

TEST_F(Kriterientest, openOutcome_saysHowManyWingsWouldMakeItFirm) {
    // One wing of twenty in the range that allows 15 %: passes, but a few more could turn it.
    std::vector<float> ci(20, 3.0F);
    ci[4] = 2.1F; // class 17
    reihe = reiheMit(ci);
    const Kriterium k = kriterium(u"Klasse 0"_s);
    EXPECT_FALSE(k.prüfwert.fett);
    EXPECT_EQ(k.anzahl, 1);
    EXPECT_EQ(k.gesamt, 20);
    EXPECT_EQ(k.abstand(), 10);
    EXPECT_THAT(k.flügel, ElementsAre(5));
    EXPECT_EQ(k.gewissheit, Gewissheit::Offen);
    ASSERT_TRUE(k.festAb);
    EXPECT_EQ(festAb(k.anzahl, k.gesamt, 15.5, *k.festAb - 1), std::nullopt);

    // Every wing beyond the limit: nothing can turn that.
    reihe = reiheMit(std::vector<float>(20, 2.1F));
    EXPECT_EQ(kriterium(u"Klasse 0"_s).gewissheit, Gewissheit::Sicher);
    // A limit of none cannot be shown by any sample of wings, one of all cannot be missed.
    standard.arbeiterinnen.max = {u"100%"_s, u"0%"_s};
    EXPECT_EQ(kriterium(u"Klasse 0"_s).gewissheit, Gewissheit::ImmerErfüllt);
    EXPECT_EQ(kriterium(u"Klasse 1"_s).festAb, std::nullopt);
    reihe = {};
    EXPECT_EQ(kriterium(u"Klasse 1"_s).gewissheit, Gewissheit::NichtGemessen);
}

TEST_F(Kriterientest, reasons_nameTheirBees) {
    merkmale = bienen({{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {2, 1, 0}});
    EXPECT_THAT(kriterium(u"1R"_s).bienen, ElementsAre(1, 3));
    EXPECT_EQ(kriterium(u"1R"_s).anzahl, 2);
    EXPECT_THAT(kriterium(u"l"_s).bienen, ElementsAre(2));
    // Nobody is sent for more bees than can be judged.
    EXPECT_EQ(kriterium(u"2R"_s).gewissheit, Gewissheit::Offen);
    EXPECT_EQ(kriterium(u"2R"_s).festAb, std::nullopt);
    reihe = reiheMit({2.9F, 2.05F, 2.0F, 3.1F, 2.05F, 4.0F});
    reihe.lassAus(3, true);
    EXPECT_THAT(kriterium(u"Klasse 2"_s).flügel, ElementsAre(2, 5)); // the secondary peak
    EXPECT_EQ(kriterium(u"Klasse 2"_s).gewissheit, Gewissheit::OhneStreuung);
}

TEST_F(Kriterientest, limitOfTheMean_holdsForTheUnroundedMeanAndPassesWhenEqual) {
    merkmale = bienen({{0, 0, 0}});
    standard.arbeiterinnen.max = {u"100%"_s, u"100%"_s};
    standard.arbeiterinnen.Klasse[2] = u"30-30"_s;
    Mittelgrenze& grenze = standard.arbeiterinnen.mittel;
    grenze = {.CIMittel = 1, .Mittelwert = {23}, .Richtung = 0};
    struct Fall {
        std::vector<float> ci;
        bool über, unter; ///< passes
    };
    for (const auto& [ci, über, unter] : {Fall{{2.3F, 2.3F, 2.3F}, true, true},
                                          {{2.2F, 2.4F}, true, true},
                                          {{2.3F, 2.299F}, false, true},
                                          {{2.3F, 2.301F}, true, false}}) {
        reihe = reiheMit(ci);
        grenze.Richtung = 0;
        EXPECT_EQ(beurteilung().urteil(), über) << ci.back();
        grenze.Richtung = 1;
        EXPECT_EQ(beurteilung().urteil(), unter) << ci.back();
    }
    reihe = reiheMit({3.0F, 3.1F, 3.05F});
    EXPECT_EQ(kriterium(u"CI"_s).gewissheit, Gewissheit::Sicher);
    Texte texte{QString()};
    texte.SpracheDeutsch();
    EXPECT_EQ(mangeltext(beurteilung().mängel().front(), texte, {u',', u'.'}),
              u"Mittelwert CI 3,05, verlangt höchstens 2,3"_s);
    grenze.CIMittel = 0;
    EXPECT_EQ(beurteilung().urteil(), true);
    reihe = {};
    grenze.CIMittel = 1;
    EXPECT_EQ(beurteilung().urteil(), true); // what was not measured fails nothing
}

TEST_F(Kriterientest, meanThatRoundsToItsLimit_isShownWithMoreDecimals) {
    Texte texte{QString()};
    texte.SpracheDeutsch();
    struct Fall {
        float ci;
        qint16 richtung;
        QString vergleich;
    };
    for (const Fall& f : {Fall{2.61F, 0, u"2.61 ≥ 2.5"_s},
                          {2.4996F, 0, u"2.4996 < 2.5"_s},
                          {2.41F, 1, u"2.41 ≤ 2.5"_s},
                          {2.504F, 1, u"2.5040 > 2.5"_s}}) {
        reihe = reiheMit({f.ci, f.ci});
        standard.arbeiterinnen.mittel = {.CIMittel = 1, .Mittelwert = {25}, .Richtung = f.richtung};
        EXPECT_EQ(mittelvergleich(kriterium(u"CI"_s).prüfwert, {}), f.vergleich);
    }
    // The bees that pull the mean over its limit.
    reihe = reiheMit({2.4F, 2.6F, 2.8F, 2.5F});
    EXPECT_THAT(kriterium(u"CI"_s).flügel, ElementsAre(2, 3));
}

TEST_F(Kriterientest, table_hasARowForWhatWasNotRecordedAndNamesHowManyMore) {
    Texte texte{QString()};
    texte.SpracheDeutsch();
    std::vector<float> ci(20, 3.0F);
    ci[4] = 2.1F; // class 17
    reihe = reiheMit(ci);
    merkmale = bienen({{0, 0, 0}, {1, 0, 0}});
    regeln.OhneHaarlänge = true;
    merkmale.Liste = {u"001   O, -,  F"_s, u"002   E, -,  F"_s};
    standard.arbeiterinnen.max[1] = u"100%"_s;
    const auto tabelle = [&](bool weitere) {
        Kriterienworte worte = kriterienworte(texte, texte, {u',', u'.'});
        worte.weitere = weitere;
        return kriterientabelle(prüfling, urteile(prüfling, standard, regeln), worte);
    };
    std::string zeilen;
    for (const Kriterienzeile& zeile : tabelle(true)) {
        zeilen += QStringList(zeile.spalten.begin(), zeile.spalten.end()).join(u'|').toStdString() +
                  (zeile.fett ? "!" : "") + (zeile.blass ? "*" : "") + '\n';
    }
    EXPECT_EQ(zeilen,
              "Panzerzeichen O|50 %|≤ 100 %|+50|1 von 2|9–91 %|immer erfüllt*\n"
              "Panzerzeichen E|50 %|≤ 30 %|−20|1 von 2|9–91 %|offen, sicher mit 20 weiteren!\n"
              "Panzerzeichen 1R|0 %|≤ 0 %|0|0 von 2|0–66 %|offen\n"
              "Panzerzeichen 2R|0 %|≤ 0 %|0|0 von 2|0–66 %|offen\n"
              "Haarlänge|nicht gemessen|–|–|–|–|–*\n"
              "Filzbinden F|100 %|≤ 100 %|0|2 von 2|34–100 %|immer erfüllt*\n"
              "Filzbinden ff|0 %|≤ 50 %|+50|0 von 2|0–66 %|offen, sicher mit 2 weiteren\n"
              "Filzbinden f|0 %|≤ 0 %|0|0 von 2|0–66 %|offen\n"
              "Klasse 15-17|5 %|≤ 15 %|+10|1 von 20|1–24 %|offen, sicher mit 26 weiteren\n"
              "Klasse 01-15|0 %|≤ 100 %|+100|0 von 20|0–16 %|immer erfüllt*\n"
              "Nebengipfel 16-17|1|≤ 0|−1|1 von 20|–|–!\n"
              "Mittelwert CI|2,95|–|–|20|2,86–3,05|–\n");
    EXPECT_EQ(tabelle(false)[1].spalten.back(), u"offen, sicher ab 22"_s);
    regeln.BewertungAktiv = false;
    EXPECT_THAT(tabelle(true), IsEmpty());
}

TEST_F(Kriterientest, whatWasNotJudged_saysWhy) {
    EXPECT_EQ(beurteilung().unbeurteilt, Unbeurteilt::NichtsGemessen);
    reihe = reiheMit({3.0F});
    EXPECT_EQ(beurteilung().unbeurteilt, std::nullopt);
    for (const auto grund :
         {Unbeurteilt::FremdeRasse, Unbeurteilt::MerkmaleUnlesbar, Unbeurteilt::Ausgeschaltet}) {
        Prüfling anderer{.reihe = reihe,
                         .merkmale = merkmale,
                         .fremdeRasse = grund == Unbeurteilt::FremdeRasse,
                         .merkmaleUnlesbar = grund == Unbeurteilt::MerkmaleUnlesbar};
        regeln.BewertungAktiv = grund != Unbeurteilt::Ausgeschaltet;
        const Beurteilung b = urteile(anderer, standard, regeln).beurteilung;
        EXPECT_EQ(b.unbeurteilt, grund);
        EXPECT_EQ(b.urteil(), std::nullopt);
    }
}

TEST_F(Kriterientest, basis_saysWhatIsMissing) {
    Texte texte{QString()};
    texte.SpracheDeutsch();
    reihe = reiheMit(std::vector<float>(12, 3.0F));
    EXPECT_EQ(grundlagentext(beurteilung().umfang, texte),
              u"12 von 50 Flügeln, Körpermerkmale fehlen: vorläufig"_s);
    merkmale = {
        Geschlecht::Arbeiterinnen, Merkmalmodus::Summen, {}, {50, 0, 0, 0, 49, 0, 0, 50, 0, 0}};
    reihe = reiheMit(std::vector<float>(50, 3.0F));
    EXPECT_FALSE(beurteilung().umfang.vorläufig());
    EXPECT_EQ(grundlagentext(beurteilung().umfang, texte),
              u"50 Flügel, Körpermerkmale von 50 Bienen, Merkmale verschieden vieler Bienen"_s);
    // More bees with a mark than there are bees: a share, but none that has an interval.
    merkmale.Summen = {5, 0, 0, 0, 50, 0, 0, 5, 0, 0};
    EXPECT_EQ(kriterium(u"k"_s).gewissheit, Gewissheit::OhneStreuung);
    EXPECT_EQ(kriterium(u"k"_s).bereich, std::nullopt);
    merkmale.Summen = {50, 0, 0, 0, 49, 0, 0, 50, 0, 0};
    regeln.SollBienen = 60;
    texte.SpracheEinstellen(1);
    EXPECT_EQ(
        grundlagentext(beurteilung().umfang, texte),
        u"50 wings, body marks of 50 of 60 bees, marks of unequal numbers of bees: preliminary"_s);
}
