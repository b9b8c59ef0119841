// The wording that users, files and printed reports rely on, odd spellings and blanks included. A
// well-meant correction in the table of texts must show up here.
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
    {Text::BienenJeKlasse, u"Bienen je Klasse", u"Bees per class", u"Classe des abeilles"},
    {Text::Klasse, u"Klasse", u"Class", u"Classe"},
    {Text::CI, u"CI", u"CI", u"IC"},
    {Text::Nummer, u"Nummer", u"Number", u"Numéro"},
    {Text::Züchter, u"Züchter", u"Breeder", u"Apiculteur"},
    {Text::Mittelwert, u"Mittelwert", u"Mean value", u"Valeur moyenne"},
    {Text::Name, u"Name", u"Name", u"Nom"},
    {Text::Cubitalindex, u"Cubitalindex", u"Cubitalindex", u"Indice Cubital"},
    {Text::Hantelindex, u"Hantelindex", u"Hantelindex", u"Indice Hantel"},
    {Text::HantelindexUndDV, u"Hantelindex und DV", u"Hantelindex and DS", u"Indice Hantel et DD"},
    {Text::CubitalindexUndDiscoidalverschiebung, u"Cubitalindex und Discoidalverschiebung", u"Cubitalindex and Discoidalshift", u"Indice Cubital et Décalage Discoïdal"},
    {Text::PanzerzeichenProtokoll, u"Panzerzeichen", u"Body colour", u"Aspect des tergites"},
    {Text::HaarlängeProtokoll, u"Haarlänge", u"Over hair", u"Longueur des poils"},
    {Text::FilzbindenProtokoll, u"Filzbinden", u"Tomentum", u"Largeur du tomentum"},
    {Text::Haarfarbe, u"Haarfarbe", u"Colour of hair", u"Couleur des poils"},
    {Text::Nebengipfel, u"Nebengipfel", u"Secondary peak", u"Sommet secondaire"},
    {Text::MenüBildLaden, u"Bild laden", u"Load picture", u"Charger une image"},
    {Text::MenüHilfe, u"Hilfe", u"Help", u"Aide"},
    {Text::MenüSpeichern, u"Speichern", u"Save", u"Enregistrer"},
    {Text::MenüProtokollDrucken, u"Protokoll drucken", u"Print record", u"Imprimer le résultat"},
    {Text::MenüBeenden, u"Beenden     Alt+F4", u"Exit        Alt+F4", u"Quitter      Alt+F4"},
    {Text::MenüDatei, u"Datei", u"File", u"Fichier"},
    {Text::MenüSprache, u"Sprache", u"Language", u"Langue"},
    {Text::MenüLetzteMessungLöschen, u"Letzte Messung löschen", u"Delete last measurement", u"Annuler la dernière mesure"},
    {Text::MenüAusschneiden, u"Ausschneiden", u"Cut", u"Couper"},
    {Text::MenüKopieren, u"Kopieren", u"Copy", u"Copier"},
    {Text::MenüEinfügen, u"Einfügen", u"Paste", u"Coller"},
    {Text::MenüLöschen, u"Löschen", u"Delete", u"Effacer"},
    {Text::MenüBearbeiten, u"Bearbeiten", u"Edit", u"Traitement"},
    {Text::MenüKurven, u"Kurven", u"Curves", u"Courbes"},
    {Text::MenüKorrelation, u"Korrelation", u"Correlation", u"Corrélation"},
    {Text::KörperMerkmale, u"Körper-Merkmale", u"Body marks", u"Autres caractéristiques"},
    {Text::MenüAnsicht, u"Ansicht", u"View", u"Afficher"},
    {Text::MenüExtras, u"Extras", u"Extras", u"Extra"},
    {Text::Arbeiterinnen, u"Arbeiterinnen", u"Workers", u"Ouvrières"},
    {Text::Drohnen, u"Drohnen", u"Drones", u"Mâles"},
    {Text::Optionen, u"Optionen", u"Options", u"Options"},
    {Text::DateiNichtGefunden, u"Datei wurde nicht gefunden.", u"File could not be found.", u"Le fichier n'est pas trouvé."},
    {Text::BereitsGestartet, u"Tarvel ist bereits gestartet.", u"Tarvel is already started.", u"Tarvel est déjà lancé."},
    {Text::FrageAlleMessungenLöschen, u"Sind Sie sicher, dass Sie alle Messungen löschen wollen?", u"Are you sure you want to delete all measurements?", u"Etes-vous certain de vouloir effacer toutes les mesures ?"},
    {Text::ProgrammNichtGefunden, u"Das Programm wurde nicht gefunden.", u"The program could  not be found.", u"Le programme ne pouvait pas être trouvé."},
    {Text::KnopfBildLaden, u"Bild laden", u"Load picture", u"Charger une image"},
    {Text::MesspunkteLöschen, u"Messpunkte löschen", u"Delete measured points ", u"Effacer toutes les mesures"},
    {Text::Korrelation, u"Korrelation", u"Correlation", u"Corrélation"},
    {Text::AbstandVonLinks, u"Abstand von Links in Millimeter", u"Distance from left in millimetres", u"Distance de la gauche en millimètres"},
    {Text::Standardwerte, u"Einstellen der Standartwerte.", u"Set up of default values.", u"Réglage des caractéristiques."},
    {Text::DatumHeuteLang, u"Datum von Heute - Lang", u"Current date - long", u"Date d'aujourd'hui (Longue)"},
    {Text::NichtGemessen, u"nicht gemessen", u"not measured", u"Non mesuré"},
    {Text::PfadGrafikprogramm, u"Pfad des Grafikprogramms", u"Path of graphic program", u"Chemin du programme graphique"},
    {Text::Straße, u"Straße", u"Street", u"Rue"},
    {Text::Ort, u"Ort", u"City", u"Localité"},
    {Text::Besitzer, u"Besitzer", u"Owner", u"Propriétaire"},
    {Text::Rasse, u"Rasse", u"Race", u"Race"},
    {Text::Begattung, u"Begattung", u"Copulation", u"Fécondation"},
    {Text::Unterschrift, u"Unterschrift", u"Signature", u"Signature"},
    {Text::MerkmalsuntersuchungNr, u"Merkmalsuntersuchung Nr.", u"Number of Test", u"Examen des caractéristiques N°"},
    {Text::AngabenZurKönigin, u"Angaben zur Königin", u"About the Queen", u"Indications sur la reine : "},
    {Text::Volk, u"Volk", u"Colony", u"Colonie"},
    {Text::BesitzerDesVolkes, u"Besitzer des Volkes", u"Beekeeper", u"Propriétaire des colonies"},
    {Text::Zuchtbuch, u"Zuchtbuch", u"Breed book", u"N° ZVR"},
    {Text::Beurteilung, u"Beurteilung", u"Judgement", u"Evaluation"},
    {Text::ArbeiterinnenUntersucht, u"Arbeiterinnen wurden untersucht", u"workers have been tested", u"Ouvrières ont été examinées."},
    {Text::DrohnenUntersucht, u"Drohnen wurden untersucht", u"drones have been tested", u"Mâles ont été examinés."},
    {Text::Seite1Von2, u"Seite 1 von 2", u"Page 1 of 2", u"Page 1 de 2"},
    {Text::Seite2, u"Seite 2", u"Page 2", u"Page 2"},
    {Text::DV, u"DV", u"DS", u"DD"},
    {Text::KorrelationHantelindexDiscoidalverschiebung, u"Korrelation Hantelindex - Discoidalverschiebung", u"Correlation Hantelindex - Discoidalshift", u"Corrélation Indice Hantel/Décalage Discoïdal"},
    {Text::NichtImVertrauensbereich, u"nicht im Vertrauensbereich", u"out of trust area", u"pas dans la tolérance"},
    {Text::Merkmalsformel, u"Merkmalsformel", u"Formula", u"Données caractéristiques"},
    {Text::EntsprichtNichtDenMerkmalen, u"Entspricht nicht den Merkmalen der Rasse", u"The characteristics are not in accordance with the race", u"Pas conforme aux caractéristiques des races"},
    {Text::EntsprichtDenMerkmalen, u"Entspricht den Merkmalen der Rasse", u"The characteristics are in accordance with the race", u"Conforme aux caractéristiques des races"},
    {Text::HI, u"HI", u"HI", u"IH"},
    {Text::SpalteNummer, u"Nummer", u"Number", u"Numéro"},
    {Text::SpalteKönigin, u"Nummer der Königin", u"Number of Queen", u"Reine N°"},
    {Text::SpalteBesitzer, u"Besitzer", u"Owner", u"Propriétaire"},
    {Text::SpalteGeschlecht, u"Geschlecht", u"Sex", u"Sexe"},
    {Text::SpalteEntspricht, u"Entspricht", u"Matching", u"Conforme"},
    {Text::SpalteRasse, u"Rasse", u"Race", u"Race"},
    {Text::SpalteDatum, u"Datum", u"Date", u"Date"},
    {Text::TarvelErgebnisse, u"Tarvel Ergebnisse", u"Tarvel results", u"Résultats de Tarvel"},
    {Text::NeueTabelleSpeichern, u"Neue Tabelle speichern", u"Store new table ", u"Enregistrer le  tableau nouveau "},
    {Text::EntsprichtDerRasse, u"Entspricht der Rasse", u"Matching Race", u"Conforme race"},
    {Text::EntsprichtNicht, u"Entspricht nicht", u"Not matching", u"Ne conforme pas"},
    {Text::Arbeiter, u"Arbeiter", u"Workers", u"Ouvrières"},
    {Text::Ja, u"Ja", u"Yes", u"Oui"},
    {Text::Nein, u"Nein", u"No", u"Non"},
    {Text::FrageZeileLöschen, u"Wollen Sie diese Zeile löschen.", u"Do you want to delete this line.", u"Voulez-vous supprimer cette ligne."},
    {Text::ZeileLöschen, u"Zeile löschen", u"Delete line", u"Annuller ligne"},
    {Text::HinweisPunkteKlicken, u"Mit der linken Maustaste auf die Messpunkte klicken - oder den Cursor auf einen Messpunkt stellen und die Zifferntaste drücken.", u"Click on the measuring points with the left mouse button - or set the cursor to a measuring point and press the figure key.", u"Cliquer avec la touche gauche de la souris sur les points de mesure - ou placer le curseur sur un point de mesure et presser la touche correspondante."},
    {Text::HinweisÜbernehmen, u"Übernehmen Sie die Messung mit der rechten Maustaste.", u"Save the measurement with the right mouse button.", u"Enregistrez la mesure avec la touche droite de la souris."},
    {Text::Feineinstellung, u"Feineinstellung", u"Micro-adjustment", u"Réglage de précision"},
    {Text::Kurzzeichen, u"Kurzzeichen (max. 3 Zeichen)", u"Abbreviation (max. 3 characters)", u"Abréviation (3 signes max.)"},
    {Text::HinweisPunkteFehlen, u"Die Messung kann nicht übernommen werden - es fehlen noch Messpunkte.", u"The measurement cannot be saved - measuring points are still missing.", u"Vous ne pouvez pas enregistrer la mesure  - des points de mesure manquent."},
    {Text::BienenzahlUnterschiedlich, u"Unterschiedliche Zahl der Bienen bei den Merkmalen.", u"The characteristics indicate different numbers of bees.", u"Le nombre des abeilles diffèreaux caractéristiques."},
    {Text::HinweisUntersuchungÖffnen, u"Zum Öffnen einer Untersuchung zuerst auf die Zeile in der Tabelle und dann auf 'Öffnen' klicken.", u"To open an examination first click on the line in the table and then on “opening”.", u"Pour ouvrir un examen cliquez d'abord sur la ligne dans le tableau et puis sur 'ouvrir'."},
    {Text::Organisation, u"Organisation", u"Organization", u"Organisation"},
    {Text::StartÜberschrift, u"Folgende Daten werden für die Programmausführung benötigt:", u"The following data are needed for the program execution:", u"Les données suivantes sont nécessaires pour l'exécution du programme:"},
    {Text::StartFußzeile, u"Änderungen sind später bei 'Optionen' möglich.", u"Changes are later possible with 'Options'.", u"Des modifications sont possibles plus tard avec 'Options'."},
    {Text::AndereOrganisation, u"andere", u"other", u"l'autres"},
    {Text::WurdeGeändert, u" ' wurde geändert. Wollen Sie die Änderung speichern.", u" ' has been changed. Do you want to save the change.", u" ' est été changé. Voullez-vous enregistrer le changement."},
    {Text::ZüchterUndKöniginFehlen, u"Es fehlen Angaben zu Züchter und Königin.", u"Data of breeder and queen are missing.", u"Des informations au cultivateur et reine manquent."},
    {Text::FrageAngabenEintragen, u"Wollen Sie diese Angaben noch eintragen.", u"Do you want to add these data now.", u"Voulez-vous inscrire cettes informations maintenant."},
    {Text::UntersuchungNrFehlt, u"Die Untersuchung kann nicht gespeichert werden, da 'Untersuchung Nr.' fehlt.", u"The examination cannot be saved, since 'investigation No.' is missing.", u"L'examen ne peut pas être enregistrè, parce que 'Examen N°' manque."},
    {Text::FrageNummerEintragen, u"Wollen Sie die Nummer eintragen.", u"Do you want to insert the number.", u"Est-ce que vous voulez inscrire le numéro."},
    {Text::Panzerzeichen, u"Panzerzeichen", u"Body colour", u"Aspect des tergites"},
    {Text::Haarlänge, u"Haarlänge", u"Over hair", u"Longueur des poils"},
    {Text::Filzbinden, u"Filzbinden", u"Tomentum", u"Largeur du tomentum"},
    {Text::ZoomfaktorFrage, u"Wollen Sie den Zoomfaktor ändern?", u"Would you like to change the zoom?", u"Voulez-vous modifier le facteur de zoom ?"},
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
