#include "app/ansichtswahl.h"

#include "evaluation/diagrammansicht.h"
#include "evaluation/merkmalansicht.h"
#include "measure/messplatz.h"
#include "measure/reihenansicht.h"

#include <utility>

namespace tarvel {

Ansichtswahl::Ansichtswahl(Verteiler& verteiler, const Arbeitsplatz& arbeitsplatz,
                           Fensterfläche& fläche, Auswertung& auswertung,
                           Protokollausgabe& protokoll, Hinweisgeber& hinweise)
    : arbeitsplatz_(arbeitsplatz)
    , fläche_(fläche)
    , hinweise_(hinweise) {
    verteiler.meldeAn(befehl::Alle, [this] { zeigeAlle(); });
    verteiler.meldeAn(befehl::Tabelle, [this] { zeige(fläche_.tabelle(), reihenhinweis()); });
    verteiler.meldeAn(befehl::Kurven,
                      [this, &auswertung] { zeige(auswertung.kurven(), HinweisKeiner); });
    verteiler.meldeAn(befehl::Korrel,
                      [this, &auswertung] { zeige(auswertung.korrel(), korrelhinweis()); });
    verteiler.meldeAn(befehl::Merkmal, [this] { zeigeMerkmale(); });
    verteiler.meldeAn(befehl::Messen, [this] { zeigeMessplatz(false); });
    for (const auto& [wort, nummer] :
         {std::pair{befehl::Vorschau1, 1}, std::pair{befehl::Vorschau2, 2}}) {
        verteiler.meldeAn(wort, [this, &protokoll, seite = nummer] {
            zeige(protokoll.vorschau(), HinweisKeiner);
            protokoll.zeigeSeite(seite);
        });
    }
    protokoll.beiSeitenwahl([&verteiler, &protokoll](int seite) {
        if (seite > protokoll.seitenzahl()) {
            protokoll.zeigeSeite(seite);
        } else {
            verteiler.führeAus(seite == 2 ? befehl::Vorschau2 : befehl::Vorschau1);
        }
    });
}

int Ansichtswahl::reihenhinweis() const {
    return arbeitsplatz_.reihe().leer() ? HinweisKeiner : HinweisWiederholen;
}

int Ansichtswahl::korrelhinweis() const {
    return arbeitsplatz_.reihe().hiDvZeilen().empty() ? HinweisKeiner : HinweisKreuzZeigen;
}

int Ansichtswahl::merkmalhinweis() const {
    return arbeitsplatz_.untersuchung().merkmale().Modus == Merkmalmodus::Liste
               ? HinweisMerkmaleJeBiene
               : HinweisMerkmaleSummen;
}

void Ansichtswahl::zeige(QWidget& ansicht, int hinweisnummer) {
    fläche_.zeige(&ansicht);
    ansicht.setFocus();
    hinweise_.ZeigeHinweis(hinweisnummer);
}

void Ansichtswahl::zeigeMerkmale() {
    zeige(fläche_.merkmal(), merkmalhinweis());
}

void Ansichtswahl::zeigeAlle() {
    zeige(fläche_.alle(), reihenhinweis());
}

void Ansichtswahl::zeigeMessplatz(bool übersicht) {
    fläche_.zeige(fläche_.messplatz);
    if (übersicht) {
        fläche_.messplatz->zeigeÜbersicht();
    } else {
        fläche_.messplatz->zeigeMessen();
    }
}

void Ansichtswahl::messmodus(int hinweisnummer) {
    fläche_.zeige(fläche_.messplatz);
    hinweise_.ZeigeHinweis(hinweisnummer);
}

bool Ansichtswahl::zumMessplatz(const std::function<bool()>& tun) {
    QWidget* vorher = fläche_.gezeigte();
    fläche_.zeige(fläche_.messplatz);
    const bool getan = tun();
    if (!getan) {
        fläche_.zeige(vorher);
    }
    return getan;
}

void Ansichtswahl::zeigeStandhinweis() {
    if (fläche_.amMessplatz()) {
        fläche_.messplatz->zeigeStandhinweis();
        return;
    }
    const QStringView ansicht = fläche_.ansichtswort();
    hinweise_.ZeigeHinweis(ansicht == befehl::Merkmal  ? merkmalhinweis()
                           : ansicht == befehl::Korrel ? korrelhinweis()
                           : ansicht == befehl::Alle || ansicht == befehl::Tabelle ? reihenhinweis()
                                                                                   : HinweisKeiner);
}

} // namespace tarvel
