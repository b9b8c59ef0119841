#include "app/auswertung.h"

#include "evaluation/diagrammansicht.h"
#include "evaluation/klassen.h"
#include "evaluation/merkmalansicht.h"
#include "evaluation/rassen.h"
#include "evaluation/urteilsanzeige.h"

namespace tarvel {

using namespace Qt::StringLiterals;

Auswertung::Auswertung(const Umgebung& umgebung, Untersuchung& untersuchung)
    : umgebung_(umgebung)
    , untersuchung_(untersuchung)
    , kurven_(new Diagrammansicht(Diagrammansicht::Art::Kurven, umgebung.texte, umgebung.dialoge))
    , korrel_(new Diagrammansicht(Diagrammansicht::Art::Korrel, umgebung.texte, umgebung.dialoge))
    , merkmal_(new Merkmalansicht(umgebung.texte, umgebung.dialoge))
    , urteil_(new Urteilsanzeige(umgebung.texte)) {
    for (Diagrammansicht* ansicht : {kurven_, korrel_}) {
        ansicht->beiWahl = [this](const std::vector<int>& flügel) {
            if (flügelGewählt) {
                flügelGewählt(flügel);
            }
        };
    }
    merkmal_->beiÄnderung([this](const Merkmale& merkmale) {
        untersuchung_.setzeMerkmale(merkmale);
        aktualisiere();
        if (merkmaleGeändert) {
            merkmaleGeändert();
        }
    });
}

void Auswertung::ladeStandard() {
    standard_ = ladeRassestandard(untersuchung_.angaben().Rasse + 1, umgebung_.einstellungen);
    merkmal_->setzeOhneHaarlänge(umgebung_.einstellungen.schalter(Einstellung::OhneHaarlänge));
    aktualisiere();
}

void Auswertung::aktualisiere() {
    const Einstellungen& e = umgebung_.einstellungen;
    const Geschlecht tiere = untersuchung_.angaben().Tiere;
    const Messreihe& reihe = untersuchung_.reihe();
    const Merkmalauswertung marken =
        MerkmaleAuswerten(untersuchung_.merkmale(), e.schalter(Einstellung::OhneHaarlänge));
    beurteilung_ = beurteile({.Tiere = tiere,
                              .Klassen = klassenCI(reihe),
                              .Merkmale = marken.Texte,
                              .Merkmalfehler = marken.Fehler},
                             standard_, e.schalter(Einstellung::Beurteilung));

    Kurvenbild kurven = kurvenbild(reihe, standard_, tiere, beurteilung_,
                                   kurvenform(e.zahl(Einstellung::Kurvenform)),
                                   zweiteKurve(e.zahl(Einstellung::ZweiteKurve)));
    const QString rasse = rassenliste(e).value(untersuchung_.angaben().Rasse);
    kurven.rasse = rasse;
    kurven.format = umgebung_.format;
    kurven_->zeige(std::move(kurven));
    Korrelbild korrel = korrelbild(reihe, standard_.linien, tiere);
    korrel.format = umgebung_.format;
    korrel_->zeige(std::move(korrel));
    const QString nummer = untersuchung_.angaben().UNr.trimmed();
    kurven_->setVorschlag(nummer.isEmpty() ? u"kurven"_s : nummer + u"-kurven"_s);
    korrel_->setVorschlag(nummer.isEmpty() ? u"korrelation"_s : nummer + u"-korrelation"_s);
    urteil_->zeige(beurteilung_, rasse, umgebung_.format);
}

void Auswertung::zeigeMerkmale() {
    merkmal_->zeige(untersuchung_.merkmale());
    aktualisiere();
}

void Auswertung::hebeHervor(const std::vector<int>& flügel) {
    kurven_->hebeHervor(flügel);
    korrel_->hebeHervor(flügel);
}

} // namespace tarvel
