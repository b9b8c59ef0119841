#include "evaluation/rassen.h"
#include "results/arbeitsplatz.h"

#include <algorithm>
#include <utility>

// The workplace's ways to the results file and from it, and what begins another examination.

namespace tarvel {

void Arbeitsplatz::richteAblageEin() {
    ablage_.richteEin();
}

void Arbeitsplatz::richteEin() {
    führeAus([&] {
        übernimmEinstellungen();
        Kolonieangaben angaben;
        angaben.Rasse = einstellungen_.Rasse;
        untersuchung_.setzeAngaben(angaben);
        untersuchung_.alsUnverändertMerken();
        messung_.setzeZoomfaktor(einstellungen_.Zoomfaktor);
        richteMessungEin(einstellungen_.auflösung, einstellungen_.messart);
    });
}

bool Arbeitsplatz::DatenbankWählen(const QString& pfad) {
    const bool gewählt = ablage_.DatenbankWählen(pfad);
    führeAus([&] { änderung_.Ablage = true; });
    return gewählt;
}

/// The measuring at the beginning of another examination; picture and zoom stay.
void Arbeitsplatz::richteMessungEin(std::optional<int> auflösung, std::optional<Messart> messart) {
    messung_.gibWiederholungAuf();
    messung_.setzeMessart(messart.value_or(messung_.messart()));
    messung_.setzeAuflösung(auflösung.value_or(messung_.aufnahme().dpi));
    vergissSchritte();
    änderung_.Untersuchung = true;
}

void Arbeitsplatz::beginneNeue(Personen personen) {
    const Kolonieangaben vorige = untersuchung_.angaben();
    const Kolonieangaben neu = ablage_.NeueUntersuchung(vorige);
    führeAus([&] {
        untersuchung_.beginneNeu(personen == Personen::Dieselben ? fürNächstesVolk(neu, vorige)
                                                                 : neu);
        // A loaded examination brings the resolution it was measured with; a new one has the
        // user's: the one chosen for the picture that is open, else the usual one.
        const auto gewählt = bildauflösungen_.find(messung_.bilddatei());
        richteMessungEin(gewählt == bildauflösungen_.end() ? einstellungen_.auflösung
                                                           : gewählt->second,
                         einstellungen_.messart);
    });
}

std::optional<GeleseneUntersuchung> Arbeitsplatz::lade(const QString& nummer) {
    std::optional<GeleseneUntersuchung> gelesen = ablage_.LadenDB(nummer);
    if (gelesen) {
        führeAus([&] {
            untersuchung_.lade(gelesen->angaben, gelesen->reihe, gelesen->merkmale, gelesen->datum,
                               gelesen->zusatz);
            richteMessungEin(gelesen->auflösung, {});
        });
    }
    return gelesen;
}

void Arbeitsplatz::nimmEin(const Untersuchung& untersuchung, std::optional<int> auflösung,
                           std::optional<Messart> messart) {
    const Kolonieangaben neu = ablage_.NeueUntersuchung(untersuchung_.angaben());
    führeAus([&] {
        Kolonieangaben angaben = untersuchung.angaben();
        if (angaben.UNr.trimmed().isEmpty()) {
            angaben.UNr = neu.UNr;
        }
        untersuchung_.lade(angaben, untersuchung.reihe(), untersuchung.merkmale(),
                           untersuchung.datum(), untersuchung.zusatz());
        untersuchung_.alsGeändertMerken(untersuchung.angabenGeändert(),
                                        untersuchung.messungenGeändert());
        richteMessungEin(auflösung.value_or(einstellungen_.auflösung),
                         messart.value_or(einstellungen_.messart));
    });
}

bool Arbeitsplatz::speichere(Speicheranlass anlass) {
    // Asks questions, so nothing of the state may be in the middle of a change.
    const Ablagestand stand = ablagestand();
    const Speicherergebnis ergebnis = ablage_.SpeichernDB(untersuchung_, anlass, stand);
    const Ablageurteil urteil = !stand.urteil   ? Ablageurteil::Unbeurteilt
                                : *stand.urteil ? Ablageurteil::Ja
                                                : Ablageurteil::Nein;
    if (ergebnis.gespeichert) {
        führeAus([&] {
            Untersuchungszusatz zusatz = stand.zusatz;
            zusatz.Urteil = urteil;
            zusatz.merkmaleUnlesbar = zusatz.merkmaleUnlesbar && ergebnis.merkmaleBewahrt;
            untersuchung_.alsGespeichertMerken(*ergebnis.gespeichert, zusatz);
            bewerteGespeichertes();
            änderung_.Ablage = true;
        });
    }
    return ergebnis.fertig;
}

void Arbeitsplatz::übernimmEinstellungen(bool auflösung) {
    führeAus([&] {
        const int bisher = einstellungen_.auflösung;
        const Aufnahme amStart = aufnahmeBeimStart(ini_);
        const QStringList rassen = rassenliste(ini_);
        einstellungen_ = {.regeln = ladeUrteilsregeln(ini_),
                          .Kurvenform = ini_.zahl(Einstellung::Kurvenform),
                          .ZweiteKurve = ini_.zahl(Einstellung::ZweiteKurve),
                          .rassen = rassen,
                          .Rasse = std::clamp<int>(ini_.zahl(Einstellung::Rasse), 0,
                                                   static_cast<int>(rassen.size()) - 1),
                          .messart = static_cast<Messart>(
                              std::clamp<int>(ini_.zahl(Einstellung::Betriebsart), 0, 2)),
                          .auflösung = auflösung ? amStart.dpi : bisher,
                          .Zoomfaktor = amStart.Zoomfaktor};
        änderung_.Einstellungen = true;
    });
}

void Arbeitsplatz::nimmUmbenannt(const QString& nummer) {
    führeAus([&] {
        ablage_.nimmAlsGespeichert(nummer);
        Kolonieangaben angaben = untersuchung_.angaben();
        angaben.UNr = nummer.trimmed();
        const bool angabenGeändert = untersuchung_.angabenGeändert();
        const bool messungenGeändert = untersuchung_.messungenGeändert();
        untersuchung_.setzeAngaben(angaben);
        untersuchung_.alsGeändertMerken(angabenGeändert, messungenGeändert);
        änderung_.Ablage = true;
    });
}

void Arbeitsplatz::nimmAlsGelöscht() {
    führeAus([&] {
        ablage_.nimmAlsGespeichert({});
        nimmAlsErsetzt();
    });
}

void Arbeitsplatz::nimmAlsErsetzt() {
    führeAus([&] {
        untersuchung_.alsGeändertMerken(true, true);
        for (std::vector<Rückschritt>* schritte : {&zurück_, &vor_}) {
            for (Rückschritt& r : *schritte) {
                r.vorher.angabenGeändert = r.vorher.messungenGeändert = true;
            }
        }
        änderung_.Ablage = true;
    });
}

} // namespace tarvel
