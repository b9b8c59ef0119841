#include "results/filterwahl.h"

#include <QStringList>
#include <gmock/gmock.h>

namespace tarvel {
namespace {

using namespace Qt::StringLiterals;

const QString alleRassen = u"RASSE  LIKE 'Carnica' OR  RASSE  LIKE 'Mellifera' OR  RASSE  LIKE "
                           u"'Ligustica' OR  RASSE  LIKE 'Carpatica'"_s;
const QString alleErgebnisse =
    u"ERGEBNIS LIKE 'Ja' OR ERGEBNIS LIKE 'Yes' OR ERGEBNIS LIKE 'Oui' OR ERGEBNIS LIKE 'Nein' OR "
    u"ERGEBNIS LIKE 'No' OR ERGEBNIS LIKE 'Non'"_s;
const QString alleTiere =
    u"A_D LIKE 'Arbeiter' OR A_D LIKE 'Workers' OR A_D LIKE 'Ouvrières' OR A_D LIKE 'Drohnen' OR "
    u"A_D LIKE 'Drones' OR A_D LIKE 'Mâles'"_s;

QString quelle(const QString& rasse, const QString& ergebnis, const QString& tiere,
               const QString& ordnung = u"ORDER BY DATUM"_s) {
    return u"SELECT * FROM Ergebnisse WHERE (%1) AND (%2) AND (%3) %4"_s.arg(rasse, ergebnis, tiere,
                                                                             ordnung);
}

TEST(Filterwahl, ShowsEverythingByDateAtTheStart) {
    EXPECT_EQ(Filterwahl().datenquelle(), u"SELECT * FROM Ergebnisse ORDER BY DATUM"_s);
}

TEST(Filterwahl, ConditionsAtTheStartBeginWithABlankUntilTheyAreChosen) {
    Filterwahl wahl;
    wahl.filtere(true);
    EXPECT_EQ(wahl.datenquelle(),
              quelle(u' ' + alleRassen, u' ' + alleErgebnisse, u' ' + alleTiere));
    wahl.wähle(Geschlechtsfilter::Alle);
    EXPECT_EQ(wahl.datenquelle(), quelle(u' ' + alleRassen, u' ' + alleErgebnisse, alleTiere));
    wahl.wähleAlle();
    EXPECT_EQ(wahl.datenquelle(), quelle(alleRassen, alleErgebnisse, alleTiere));
}

TEST(Filterwahl, EachChoiceHasItsCondition) {
    Filterwahl wahl;
    wahl.wähleAlle();
    const std::pair<Ergebnisfilter, QString> ergebnisse[] = {
        {Ergebnisfilter::Ja, u"ERGEBNIS LIKE 'Ja' OR ERGEBNIS LIKE 'Yes' OR ERGEBNIS LIKE 'Oui'"_s},
        {Ergebnisfilter::Nein,
         u"ERGEBNIS LIKE 'Nein' OR ERGEBNIS LIKE 'No' OR ERGEBNIS LIKE 'Non'"_s},
        {Ergebnisfilter::Alle, alleErgebnisse}};
    for (const auto& [filter, bedingung] : ergebnisse) {
        wahl.wähle(filter);
        EXPECT_EQ(wahl.datenquelle(), quelle(alleRassen, bedingung, alleTiere));
    }
    const std::pair<Rassenfilter, QString> rassen[] = {
        {Rassenfilter::Carnica, u"RASSE  LIKE 'Carnica'"_s},
        {Rassenfilter::Mellifera, u"RASSE  LIKE 'Mellifera'"_s},
        {Rassenfilter::Ligustica, u"RASSE  LIKE 'Ligustica'"_s},
        {Rassenfilter::Carpatica, u"RASSE  LIKE 'Carpatica'"_s},
        {Rassenfilter::Alle, alleRassen}};
    for (const auto& [filter, bedingung] : rassen) {
        wahl.wähle(filter);
        EXPECT_EQ(wahl.datenquelle(), quelle(bedingung, alleErgebnisse, alleTiere));
    }
    const std::pair<Geschlechtsfilter, QString> tiere[] = {
        {Geschlechtsfilter::Arbeiter,
         u"A_D LIKE 'Arbeiter' OR A_D LIKE 'Workers' OR A_D LIKE 'Ouvrières'"_s},
        {Geschlechtsfilter::Drohnen,
         u"A_D LIKE 'Drohnen' OR A_D LIKE 'Drones' OR A_D LIKE 'Mâles'"_s},
        {Geschlechtsfilter::Alle, alleTiere}};
    for (const auto& [filter, bedingung] : tiere) {
        wahl.wähle(filter);
        EXPECT_EQ(wahl.datenquelle(), quelle(alleRassen, alleErgebnisse, bedingung));
    }
}

TEST(Filterwahl, OrderHoldsWithAndWithoutFilter) {
    const std::pair<Sortierung, QString> ordnungen[] = {
        {Sortierung::Nummer, u"ORDER BY U_NR"_s},
        {Sortierung::Königin, u"ORDER BY ZB_NR"_s},
        {Sortierung::Züchter, u"ORDER BY Z_NAME"_s},
        {Sortierung::Besitzer, u"ORDER BY B_NAME"_s},
        {Sortierung::Datum, u"ORDER BY DATUM"_s}};
    Filterwahl wahl;
    wahl.wähleAlle();
    for (const auto& [sortierung, ordnung] : ordnungen) {
        wahl.wähle(sortierung);
        wahl.filtere(false);
        EXPECT_EQ(wahl.datenquelle(), u"SELECT * FROM Ergebnisse "_s + ordnung);
        wahl.filtere(true);
        EXPECT_EQ(wahl.datenquelle(), quelle(alleRassen, alleErgebnisse, alleTiere, ordnung));
    }
}

TEST(Filterwahl, OnlyAConditionThatNarrowsSwitchesFilteringOn) {
    Filterwahl wahl;
    wahl.wähle(Rassenfilter::Alle);
    wahl.wähle(Sortierung::Nummer);
    EXPECT_FALSE(wahl.filtert());
    wahl.wähle(Rassenfilter::Carnica);
    EXPECT_TRUE(wahl.filtert());
    wahl.filtere(false);
    EXPECT_EQ(wahl.rasse(), Rassenfilter::Carnica);
    EXPECT_EQ(wahl.datenquelle(), u"SELECT * FROM Ergebnisse ORDER BY U_NR"_s);
}

} // namespace
} // namespace tarvel
