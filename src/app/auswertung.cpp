#include "app/auswertung.h"

#include "evaluation/diagrammansicht.h"
#include "evaluation/merkmalansicht.h"
#include "evaluation/urteilsanzeige.h"

namespace tarvel {

using namespace Qt::StringLiterals;

Auswertung::Auswertung(const Umgebung& umgebung, Arbeitsplatz& arbeitsplatz)
    : umgebung_(umgebung)
    , arbeitsplatz_(arbeitsplatz)
    , kurven_(new Diagrammansicht(Diagrammansicht::Art::Kurven, umgebung.texte, umgebung.dialoge))
    , korrel_(new Diagrammansicht(Diagrammansicht::Art::Korrel, umgebung.texte, umgebung.dialoge))
    , urteil_(new Urteilsanzeige(umgebung.texte)) {
    for (Diagrammansicht* ansicht : {kurven_, korrel_}) {
        ansicht->beiWahl([this](const std::vector<int>& flügel) {
            if (beiWahl_) {
                beiWahl_(flügel);
            }
        });
    }
}

Merkmalansicht& Auswertung::merkmal() {
    if (merkmal_ == nullptr) {
        merkmal_ = new Merkmalansicht(umgebung_.texte, umgebung_.dialoge);
        merkmal_->setzeOhneHaarlänge(arbeitsplatz_.einstellungen().regeln.OhneHaarlänge);
        merkmal_->zeige(arbeitsplatz_.untersuchung().merkmale());
        merkmal_->beiÄnderung(
            [this](const Merkmale& merkmale) { arbeitsplatz_.setzeMerkmale(merkmale); });
    }
    return *merkmal_;
}

void Auswertung::folge(const Änderung& änderung) {
    if (merkmal_ != nullptr && änderung.Einstellungen) {
        merkmal_->setzeOhneHaarlänge(arbeitsplatz_.einstellungen().regeln.OhneHaarlänge);
    }
    const Merkmale& merkmale = arbeitsplatz_.untersuchung().merkmale();
    if (merkmal_ != nullptr && merkmal_->merkmale() != merkmale) {
        merkmal_->zeige(merkmale);
    }
    if (änderung.Urteil) {
        aktualisiere();
    }
    if (änderung.Angaben) {
        benenneBilder();
    }
}

void Auswertung::aktualisiere() {
    const Untersuchung& untersuchung = arbeitsplatz_.untersuchung();
    const Arbeitseinstellungen& e = arbeitsplatz_.einstellungen();
    const Rassestandard& standard = arbeitsplatz_.standard();
    const Beurteilung& beurteilung = arbeitsplatz_.beurteilung();
    const Geschlecht tiere = untersuchung.angaben().Tiere;
    const QString rasse = e.rassen.value(untersuchung.angaben().Rasse);

    Kurvenbild kurven = kurvenbild(untersuchung.reihe(), standard, tiere, beurteilung,
                                   kurvenform(e.Kurvenform), zweiteKurve(e.ZweiteKurve));
    kurven.rasse = rasse;
    kurven.format = umgebung_.format;
    kurven_->zeige(std::move(kurven));
    Korrelbild korrel = korrelbild(untersuchung.reihe(), standard.linien, tiere);
    korrel.format = umgebung_.format;
    korrel_->zeige(std::move(korrel));
    urteil_->zeige(beurteilung, rasse, umgebung_.format);
    benenneBilder();
}

/// Names that saving a chart proposes.
void Auswertung::benenneBilder() {
    const QString nummer = arbeitsplatz_.untersuchung().angaben().UNr.trimmed();
    kurven_->setzeVorschlag(nummer.isEmpty() ? u"kurven"_s : nummer + u"-kurven"_s);
    korrel_->setzeVorschlag(nummer.isEmpty() ? u"korrelation"_s : nummer + u"-korrelation"_s);
}

void Auswertung::hebeHervor(const std::vector<int>& flügel) {
    kurven_->hebeHervor(flügel);
    korrel_->hebeHervor(flügel);
}

void Auswertung::zeigeZweifel(const Zweifelsfälle& zweifel) {
    kurven_->zeigeZweifel(zweifel);
    korrel_->zeigeZweifel(zweifel);
}

} // namespace tarvel
