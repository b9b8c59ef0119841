// Odd spellings and blanks that users, files and printed reports rely on. A well-meant correction
// in the table of texts must show up here.
#include "lang/texte.h"

#include <gtest/gtest.h>

namespace tarvel {
namespace {

struct Wortlaut {
    Text id;
    const char16_t* deutsch;
    const char16_t* englisch;
    const char16_t* französisch;
};

// clang-format off
const Wortlaut wortlaute[] = {
    {Text::CubitalindexUndDiscoidalverschiebung, u"Cubitalindex und Discoidalverschiebung", u"Cubitalindex and Discoidalshift", u"Indice Cubital et Décalage Discoïdal"},
    {Text::PanzerzeichenProtokoll, u"Panzerzeichen", u"Body colour", u"Aspect des tergites"},
    {Text::HaarlängeProtokoll, u"Haarlänge", u"Over hair", u"Longueur des poils"},
    {Text::MenüBeenden, u"Beenden     Alt+F4", u"Exit        Alt+F4", u"Quitter      Alt+F4"},
    {Text::FrageAlleMessungenLöschen, u"Sind Sie sicher, dass Sie alle Messungen löschen wollen?", u"Are you sure you want to delete all measurements?", u"Etes-vous certain de vouloir effacer toutes les mesures ?"},
    {Text::ProgrammNichtGefunden, u"Das Programm wurde nicht gefunden.", u"The program could  not be found.", u"Le programme ne pouvait pas être trouvé."},
    {Text::MesspunkteLöschen, u"Messpunkte löschen", u"Delete measured points ", u"Effacer toutes les mesures"},
    {Text::Standardwerte, u"Einstellen der Standartwerte.", u"Set up of default values.", u"Réglage des caractéristiques."},
    {Text::Begattung, u"Begattung", u"Copulation", u"Fécondation"},
    {Text::AngabenZurKönigin, u"Angaben zur Königin", u"About the Queen", u"Indications sur la reine : "},
    {Text::Zuchtbuch, u"Zuchtbuch", u"Breed book", u"N° ZVR"},
    {Text::ArbeiterinnenUntersucht, u"Arbeiterinnen wurden untersucht", u"workers have been tested", u"Ouvrières ont été examinées."},
    {Text::NichtImVertrauensbereich, u"nicht im Vertrauensbereich", u"out of trust area", u"pas dans la tolérance"},
    {Text::EntsprichtDenMerkmalen, u"Entspricht den Merkmalen der Rasse", u"The characteristics are in accordance with the race", u"Conforme aux caractéristiques des races"},
    {Text::NeueTabelleSpeichern, u"Neue Tabelle speichern", u"Store new table ", u"Enregistrer le  tableau nouveau "},
    {Text::EntsprichtDerRasse, u"Entspricht der Rasse", u"Matching Race", u"Conforme race"},
    {Text::EntsprichtNicht, u"Entspricht nicht", u"Not matching", u"Ne conforme pas"},
    {Text::FrageZeileLöschen, u"Wollen Sie diese Zeile löschen.", u"Do you want to delete this line.", u"Voulez-vous supprimer cette ligne."},
    {Text::ZeileLöschen, u"Zeile löschen", u"Delete line", u"Annuller ligne"},
    {Text::HinweisPunkteFehlen, u"Die Messung kann nicht übernommen werden - es fehlen noch Messpunkte.", u"The measurement cannot be saved - measuring points are still missing.", u"Vous ne pouvez pas enregistrer la mesure  - des points de mesure manquent."},
    {Text::BienenzahlUnterschiedlich, u"Unterschiedliche Zahl der Bienen bei den Merkmalen.", u"The characteristics indicate different numbers of bees.", u"Le nombre des abeilles diffèreaux caractéristiques."},
    {Text::HinweisUntersuchungÖffnen, u"Zum Öffnen einer Untersuchung zuerst auf die Zeile in der Tabelle und dann auf 'Öffnen' klicken.", u"To open an examination first click on the line in the table and then on “opening”.", u"Pour ouvrir un examen cliquez d'abord sur la ligne dans le tableau et puis sur 'ouvrir'."},
    {Text::StartÜberschrift, u"Folgende Daten werden für die Programmausführung benötigt:", u"The following data are needed for the program execution:", u"Les données suivantes sont nécessaires pour l'exécution du programme:"},
    {Text::AndereOrganisation, u"andere", u"other", u"l'autres"},
    {Text::WurdeGeändert, u" ' wurde geändert. Wollen Sie die Änderung speichern.", u" ' has been changed. Do you want to save the change.", u" ' est été changé. Voullez-vous enregistrer le changement."},
    {Text::ZüchterUndKöniginFehlen, u"Es fehlen Angaben zu Züchter und Königin.", u"Data of breeder and queen are missing.", u"Des informations au cultivateur et reine manquent."},
    {Text::FrageAngabenEintragen, u"Wollen Sie diese Angaben noch eintragen.", u"Do you want to add these data now.", u"Voulez-vous inscrire cettes informations maintenant."},
    {Text::UntersuchungNrFehlt, u"Die Untersuchung kann nicht gespeichert werden, da 'Untersuchung Nr.' fehlt.", u"The examination cannot be saved, since 'investigation No.' is missing.", u"L'examen ne peut pas être enregistrè, parce que 'Examen N°' manque."},
    {Text::FrageNummerEintragen, u"Wollen Sie die Nummer eintragen.", u"Do you want to insert the number.", u"Est-ce que vous voulez inscrire le numéro."},
    {Text::ZoomfaktorWarnung, u"Wenn Sie den Zoomfaktor jetzt ändern, dann müssen Sie mit der Messung des Flügels neu beginnen. ", u"If you change the zoom now, you will have to restart measuring of the wing.", u"Si vous modifiez maintenant le facteur de Zoom, vous devez recommencer à mesurer l'aile"},
};
// clang-format on

TEST(Wortlaut, fixedTexts_keepTheirSpellingAndBlanks) {
    for (const Wortlaut& w : wortlaute) {
        EXPECT_EQ(Texte::eintrag(w.id, Sprache::Deutsch), QString::fromUtf16(w.deutsch));
        EXPECT_EQ(Texte::eintrag(w.id, Sprache::Englisch), QString::fromUtf16(w.englisch));
        EXPECT_EQ(Texte::eintrag(w.id, Sprache::Französisch), QString::fromUtf16(w.französisch));
    }
}

} // namespace
} // namespace tarvel
