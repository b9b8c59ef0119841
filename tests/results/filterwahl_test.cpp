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
