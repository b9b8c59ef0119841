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

// Each step goes on from the one before.
TEST(Filterwahl, ChoicesInTheMenus_GiveTheRecordSource) {
    const QString nachNummer = u"ORDER BY U_NR"_s;
    const struct {
        void (*wähle)(Filterwahl&);
        bool filtert;
        QString quelle;
    } fälle[] = {
        {[](Filterwahl&) {}, false, u"SELECT * FROM Ergebnisse ORDER BY DATUM"_s},
        // Conditions begin with a blank until they are chosen.
        {[](Filterwahl& w) { w.filtere(true); }, true,
         quelle(u' ' + alleRassen, u' ' + alleErgebnisse, u' ' + alleTiere)},
        {[](Filterwahl& w) { w.wähle(Geschlechtsfilter::Alle); }, true,
         quelle(u' ' + alleRassen, u' ' + alleErgebnisse, alleTiere)},
        {[](Filterwahl& w) { w.wähleAlle(); }, true, quelle(alleRassen, alleErgebnisse, alleTiere)},
        {[](Filterwahl& w) { w.filtere(false), w.wähle(Sortierung::Nummer); }, false,
         u"SELECT * FROM Ergebnisse ORDER BY U_NR"_s},
        {[](Filterwahl& w) { w.wähle(Rassenfilter::Alle); }, false,
         u"SELECT * FROM Ergebnisse ORDER BY U_NR"_s},
        {[](Filterwahl& w) { w.wähle(Rassenfilter::Carnica); }, true,
         quelle(u"RASSE  LIKE 'Carnica'"_s, alleErgebnisse, alleTiere, nachNummer)},
        {[](Filterwahl& w) { w.filtere(false); }, false,
         u"SELECT * FROM Ergebnisse ORDER BY U_NR"_s},
    };
    Filterwahl wahl;
    for (const auto& fall : fälle) {
        fall.wähle(wahl);
        EXPECT_EQ(wahl.filtert(), fall.filtert);
        EXPECT_EQ(wahl.datenquelle(), fall.quelle);
    }
    EXPECT_EQ(wahl.rasse(), Rassenfilter::Carnica);
}

} // namespace
} // namespace tarvel
