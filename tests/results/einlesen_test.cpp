#include "results/einlesen.h"

#include "results/untersuchungssatz.h"

#include <gmock/gmock.h>

using namespace tarvel;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

Messdatei beispiel() {
    return liesMessdatei("A1\n19\n17 \n7\n3\nU5\nName\n8\n9\nOwner\nHive\nMating\n13\n14\n"
                         "001 3,07 21,3\n002 2,31 17,5\nEndeCI\nHI\n001 0,993 24,7 +0,4\nEndeHI\n"
                         "O 20\nk 20\nF 20\n20\n");
}

Messdatei mitMerkmalen(const QStringList& zeilen, qint16 bienen, bool drohnen = false) {
    Messdatei datei = beispiel();
    datei.Drohnen = drohnen;
    datei.merkmalzeilen = zeilen;
    datei.Bienenanzahl = bienen;
    return datei;
}

} // namespace

TEST(Einlesen, file_becomesAnExaminationThatIsNotStoredYet) {
    const auto [u, messart, verstanden] = untersuchungAusMessdatei(beispiel(), 2, {});
    const Kolonieangaben& a = u.angaben();
    EXPECT_EQ(
        QStringList({a.Jahr, a.KNr, a.LV, a.ZNr, a.UNr, a.Name, a.Besitzer, a.Volk, a.Begattung}),
        QStringList({u"2019"_s, u"017"_s, u"07"_s, u"003"_s, u"U5"_s, u"Name"_s, u"Owner"_s,
                     u"Hive"_s, u"Mating"_s}));
    EXPECT_EQ(a.Rasse, 2);
    EXPECT_EQ(a.Tiere, Geschlecht::Arbeiterinnen);
    EXPECT_THAT(u.reihe().ciZeilen(),
                ElementsAre(CiZeile{1, u"3,07"_s, u"21,3"_s}, CiZeile{2, u"2,31"_s, u"17,5"_s}));
    EXPECT_EQ(u.reihe().chartwerte(1), (Chartwerte{3.07F, 0.993F, 0.4F}));
    EXPECT_TRUE(u.angabenGeändert());
    EXPECT_TRUE(u.messungenGeändert());
    EXPECT_FALSE(u.datum().isValid());
    EXPECT_EQ(messart, Messart::Korrelation);
    EXPECT_TRUE(verstanden);
    EXPECT_EQ(u.merkmale().Summen, (Merkmalzahlen{20, 0, 0, 0, 20, 0, 0, 20, 0, 0}));
}

TEST(Einlesen, kind_isCubitalIndexAloneWithoutCorrelationEntries) {
    Messdatei datei = beispiel();
    datei.GrößteLänge = 4;
    datei.messart = Messart::Korrelation;
    EXPECT_EQ(untersuchungAusMessdatei(datei, 0, {}).messart, Messart::NurCubitalindex);
}

TEST(Einlesen, bodyMarks_areCountsWhenTheyAgreeWithTheNumberOfBees) {
    struct Fall {
        QStringList zeilen;
        qint16 bienen;
        bool drohnen;
        Merkmalzahlen summen;
    };
    for (const Fall& fall :
         {Fall{{u"18;2;0;0"_s, u"20;0;0"_s, u"10;10;0"_s},
               20,
               false,
               {18, 2, 0, 0, 20, 0, 0, 10, 10, 0}},
          // codes in any line, a group that was left out
          {{u"F 12, ff 8"_s, u""_s, u"O=18 1R=2"_s}, 20, false, {18, 0, 2, 0, 0, 0, 0, 12, 8, 0}},
          // shares as the program itself writes them
          {{u"O=67%  E=33%  1R=0%  2R=0%"_s, u"k=67%  m=33%  l=0%"_s, u"F=67%  ff=33%  f=0%"_s},
           3,
           false,
           {2, 1, 0, 0, 2, 1, 0, 2, 1, 0}},
          {{u"O=50%  I=50%"_s, u"gr=10%  br=20%  ge=30%  sch=40%"_s, u""_s},
           10,
           true,
           {5, 5, 0, 0, 1, 3, 2, 4}}}) {
        const auto merkmale = merkmaleAus(mitMerkmalen(fall.zeilen, fall.bienen, fall.drohnen));
        ASSERT_TRUE(merkmale) << fall.zeilen.join(u'|').toStdString();
        EXPECT_EQ(merkmale->Modus, Merkmalmodus::Summen);
        EXPECT_EQ(merkmale->Summen, fall.summen);
        EXPECT_EQ(MerkmaleAuswerten(*merkmale, false).Bienen, fall.bienen);
    }
    EXPECT_TRUE(merkmaleAus(mitMerkmalen({u" "_s, u""_s, u""_s}, 20))->leer());
}

TEST(Einlesen, bodyMarksThatAreNotClear_areNotGuessed) {
    for (const QStringList& zeilen :
         {QStringList{u"O"_s, u"k"_s, u"F"_s},
          {u"O 18"_s, u"k 20"_s, u"F 20"_s}, // two bees without a colour
          {u"O 20"_s, u"k 21"_s, u""_s},     // more hair than bees
          {u"O 20"_s, u"O 20"_s, u""_s},     // the same code twice
          {u"O=90%  E=10"_s, u""_s, u""_s},  // a share and a count
          {u"O=93%  E=7%"_s, u""_s, u""_s},  // no twentieth
          {u"o 20"_s, u""_s, u""_s},         // no code
          {u"I 20"_s, u""_s, u""_s},         // a code of the drones
          {u"O 20, O 0"_s, u""_s, u""_s},
          {u"20;0;0;x"_s, u""_s, u""_s},
          {u"20;0;0"_s, u""_s, u""_s}, // not the codes of the group
          {u"O 20 yellow"_s, u""_s, u""_s}}) {
        const Messdatei datei = mitMerkmalen(zeilen, 20);
        EXPECT_FALSE(merkmaleAus(datei)) << zeilen.join(u'|').toStdString();
        const auto eingelesen = untersuchungAusMessdatei(datei, 0, {});
        EXPECT_FALSE(eingelesen.merkmaleVerstanden);
        EXPECT_FALSE(eingelesen.untersuchung.merkmale().etwasEingetragen());
    }
    EXPECT_FALSE(merkmaleAus(mitMerkmalen({u"O 0"_s, u""_s, u""_s}, 0)));
}
