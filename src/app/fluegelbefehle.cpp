#include "app/fluegelbefehle.h"

#include "app/ansichtswahl.h"
#include "app/auswertung.h"
#include "app/befehlsleiste.h"
#include "app/fensterflaeche.h"
#include "app/hinweisgeber.h"
#include "app/nachmessen.h"
#include "evaluation/merkmalansicht.h"
#include "measure/messplatz.h"
#include "results/arbeitsplatz.h"

#include <algorithm>

namespace tarvel {

Flügelbefehle::Flügelbefehle(const Umgebung& umgebung, Arbeitsplatz& arbeitsplatz,
                             Reihenmodelle& modelle, Fensterfläche& fläche, Auswertung& auswertung,
                             Hinweisgeber& hinweise, Ansichtswahl& ansichten,
                             const Befehlsleiste& befehle)
    : umgebung_(umgebung)
    , arbeitsplatz_(arbeitsplatz)
    , modelle_(modelle)
    , fläche_(fläche)
    , auswertung_(auswertung)
    , hinweise_(hinweise)
    , ansichten_(ansichten) {
    QList<QAction*> flügelbefehle;
    for (const int index : {1, BearbeitenAuslassen, BearbeitenFlügelLöschen}) {
        flügelbefehle += &befehle.aktion(Menü::Bearbeiten, index);
    }
    fläche_.setzeFlügelbefehle(flügelbefehle);
    const auto wähle = [this](const std::vector<int>& flügel) { fläche_.wähle(flügel); };
    fläche_.messplatz->beiWahl(wähle);
    auswertung_.beiWahl([this](const std::vector<int>& flügel) {
        if (fläche_.ansichtswort() == befehl::Merkmal) {
            ansichten_.zeigeAlle(); // where they are seen
        }
        fläche_.wähle(flügel);
    });
    auswertung_.beiMerkmalwahl([this](const std::vector<int>& bienen) {
        ansichten_.zeigeMerkmale();
        fläche_.merkmal().wähle(bienen);
    });
    fläche_.messplatz->beiAuskunft([this](int nummer) {
        return flügeltipp(arbeitsplatz_.reihe(), modelle_.zweifel(), nummer, umgebung_.texte);
    });
    fläche_.messplatz->beiZweifel(
        [this](int nummer) { return zweifelsgrad(modelle_.zweifel(), nummer); });
}

std::vector<int> Flügelbefehle::gewählte() const {
    std::vector<int> flügel = fläche_.gewählteFlügel();
    if (flügel.empty()) {
        hinweise_.zeige(Meldung::ErstFlügelWählen);
    }
    return flügel;
}

void Flügelbefehle::lassAusOderNimmAuf() {
    const std::vector<int> flügel = gewählte();
    if (flügel.empty()) {
        return;
    }
    const bool aus = std::any_of(flügel.begin(), flügel.end(), [this](int nummer) {
        return !arbeitsplatz_.reihe().ausgelassen(nummer);
    });
    arbeitsplatz_.lassAus(flügel, aus);
    fläche_.wähle(flügel); // the key that takes them back means the same wings
    QStringList nummern;
    for (const int nummer : arbeitsplatz_.reihe().ausgelassene()) {
        nummern += dreistellig(nummer);
    }
    if (nummern.isEmpty()) {
        hinweise_.zeige(Meldung::AlleFlügelZählen);
    } else {
        hinweise_.zeige(
            {nummern.size() == 1 ? Meldung::EinFlügelAusgelassen : Meldung::FlügelAusgelassen,
             {QString::number(nummern.size()), nummern.join(QStringLiteral(", "))}});
    }
}

void Flügelbefehle::lösche() {
    if (const std::vector<int> flügel = gewählte(); !flügel.empty()) {
        arbeitsplatz_.löscheFlügel(flügel);
        hinweise_.zeige(flügel.size() == 1
                            ? Hinweis(Meldung::FlügelGelöscht, {dreistellig(flügel.front())})
                            : Hinweis(Meldung::MehrereGelöscht, {QString::number(flügel.size())}));
    }
}

void Flügelbefehle::löscheLetzte() {
    arbeitsplatz_.löscheLetzte();
    ansichten_.zeigeAlle();
}

void Flügelbefehle::löscheAlle() {
    ansichten_.zeigeAlle();
    if (umgebung_.dialoge.frage({.titel = umgebung_.texte(Text::MenüAlleMessungenLöschen),
                                 .text = umgebung_.texte(Text::FrageAlleMessungenLöschen),
                                 .art = Meldungsart::Frage,
                                 .verwirft = true}) == Antwort::Ja) {
        arbeitsplatz_.löscheAlle();
    }
}

void Flügelbefehle::missNach() {
    tarvel::missNach(umgebung_, arbeitsplatz_.reihe(), *fläche_.messplatz);
}

void Flügelbefehle::wiederhole() {
    const int nummer = fläche_.gewählterFlügel();
    ansichten_.zumMessplatz([&] { return fläche_.messplatz->wiederhole(nummer); });
}

void Flügelbefehle::beginneNeuen() {
    arbeitsplatz_.NeuerFlügel();
    ansichten_.zeigeMessplatz(false);
}

void Flügelbefehle::geheZurück(bool wiederherstellen) {
    const Hinweis vorher = hinweise_.gezeigter();
    const std::optional<Schritt> schritt =
        wiederherstellen ? arbeitsplatz_.stelleWiederHer() : arbeitsplatz_.macheRückgängig();
    // Whoever undoes must see what it did.
    if (schritt && istMessschritt(schritt->art) && arbeitsplatz_.messung().punkte().begonnen()) {
        fläche_.zeige(fläche_.messplatz);
        fläche_.messplatz->zeigeFlügel();
    }
    // What the line said of the step is no longer so.
    if (schritt && (hinweise_.istErsatz() || hinweise_.gezeigter() == vorher)) {
        hinweise_.zeigeSchritt(*schritt, wiederherstellen);
    }
}

void Flügelbefehle::aktualisiere() {
    const std::vector<int> flügel = fläche_.gewählteFlügel();
    modelle_.aktualisiere();
    fläche_.wähle(flügel);
    auswertung_.zeigeZweifel(modelle_.zweifel());
}

} // namespace tarvel
