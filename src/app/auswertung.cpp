#include "app/auswertung.h"

#include "evaluation/diagrammansicht.h"
#include "evaluation/kriterien.h"
#include "evaluation/kriterienansicht.h"
#include "evaluation/merkmalansicht.h"
#include "evaluation/standarddatei.h"
#include "evaluation/urteilsanzeige.h"
#include "evaluation/urteilstext.h"
#include "print/protokolleinstellungen.h"

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

Auswertung::Auswertung(const Umgebung& umgebung, Arbeitsplatz& arbeitsplatz)
    : umgebung_(umgebung)
    , arbeitsplatz_(arbeitsplatz)
    , kurven_(new Diagrammansicht(Diagrammansicht::Art::Kurven, umgebung.texte, umgebung.dialoge))
    , korrel_(new Diagrammansicht(Diagrammansicht::Art::Korrel, umgebung.texte, umgebung.dialoge))
    , urteil_(new Urteilsanzeige(umgebung.texte)) {
    urteil_->beiMangelwahl([this](const Prüfwert& mangel) { zeigeVerursacher(mangel); });
    urteil_->setzeBemerkung(
        [this] { return entstehungstext(arbeitsplatz_.reihe(), umgebung_.texte); });
    urteil_->beiNeubeurteilung([this] { arbeitsplatz_.beurteileNeu(); });
    for (Diagrammansicht* ansicht : {kurven_, korrel_}) {
        ansicht->beiWahl([this](const std::vector<int>& flügel) {
            if (beiWahl_) {
                beiWahl_(flügel);
            }
        });
        ansicht->setzeUnterschrift([this] { return unterschrift(); });
    }
}

Merkmalansicht& Auswertung::merkmal() {
    if (merkmal_ == nullptr) {
        merkmal_ = new Merkmalansicht(umgebung_.texte, umgebung_.dialoge);
        merkmal_->setzeOhneHaarlänge(arbeitsplatz_.einstellungen().regeln.OhneHaarlänge);
        merkmal_->setzeFlügelzahl(static_cast<int>(arbeitsplatz_.reihe().gewertete().size()));
        merkmal_->zeige(arbeitsplatz_.untersuchung().merkmale());
        merkmal_->beiÄnderung(
            [this](const Merkmale& merkmale) { arbeitsplatz_.setzeMerkmale(merkmale); });
    }
    return *merkmal_;
}

Kriterienansicht& Auswertung::kriterien() {
    if (kriterien_ == nullptr) {
        kriterien_ = new Kriterienansicht(umgebung_.texte);
        kriterien_->beiWahl([this](const Prüfwert& eines) { zeigeVerursacher(eines); });
        zeigeKriterien();
    }
    return *kriterien_;
}

void Auswertung::zeigeKriterien() {
    if (kriterien_ == nullptr) {
        return;
    }
    const Texte& t = umgebung_.texte;
    const Kolonieangaben& angaben = arbeitsplatz_.untersuchung().angaben();
    Kriterienworte worte = kriterienworte(t, t, umgebung_.format);
    worte.weitere = true;
    kriterien_->zeige(kriterientabelle(arbeitsplatz_.prüfling(), arbeitsplatz_.urteil(), worte),
                      unbeurteilttext(arbeitsplatz_.beurteilung(), angaben.Rassenname, t));
}

void Auswertung::folge(const Änderung& änderung) {
    if (merkmal_ != nullptr && änderung.Einstellungen) {
        merkmal_->setzeOhneHaarlänge(arbeitsplatz_.einstellungen().regeln.OhneHaarlänge);
    }
    const Merkmale& merkmale = arbeitsplatz_.untersuchung().merkmale();
    if (merkmal_ != nullptr && merkmal_->merkmale() != merkmale) {
        merkmal_->zeige(merkmale);
    }
    if (merkmal_ != nullptr && änderung.Untersuchung) {
        merkmal_->beginneNeu();
    }
    if (merkmal_ != nullptr) {
        merkmal_->setzeFlügelzahl(static_cast<int>(arbeitsplatz_.reihe().gewertete().size()));
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
    Korrelbild korrel = korrelbild(untersuchung.reihe(), standard.linien, tiere,
                                   untersuchung.angaben().Rassenname.isEmpty());
    korrel.format = umgebung_.format;
    korrel_->zeige(std::move(korrel));
    const QString& fremde = untersuchung.angaben().Rassenname;
    urteil_->zeige(beurteilung, fremde.isEmpty() ? rasse : fremde, umgebung_.format,
                   arbeitsplatz_.gespeichertesUrteil(),
                   urteilsbeleg(untersuchung.zusatz().Grenzen, standard, tiere, umgebung_.texte,
                                umgebung_.format),
                   standard.istVorgabe());
    zeigeKriterien();
    benenneBilder();
}

Bildunterschrift Auswertung::unterschrift() const {
    const Texte& texte = umgebung_.texte;
    const Untersuchung& untersuchung = arbeitsplatz_.untersuchung();
    const Kolonieangaben& angaben = untersuchung.angaben();
    const QString nummer = angaben.UNr.trimmed();
    QStringList bemerkungen{ausgelassen(untersuchung.reihe(), texte),
                            entstehungstext(untersuchung.reihe(), texte)};
    bemerkungen.removeAll(QString());
    return {
        .untersuchung = nummer.isEmpty() ? QString() : texte(Text::UntersuchungNr) + u' ' + nummer,
        .rasse = angaben.Rassenname.isEmpty()
                     ? arbeitsplatz_.einstellungen().rassen.value(angaben.Rasse)
                     : angaben.Rassenname,
        .tiere = texte(angaben.Tiere == Geschlecht::Drohnen ? Text::Drohnen : Text::Arbeiterinnen),
        .datum = datumstext(Datumsform::ÄnderungLang, umgebung_.uhr.now().date(),
                            untersuchung.datum(), texte.sprache().value_or(Sprache::Deutsch),
                            texte.paket().value_or(Sprachpaket()).gebiet),
        .bemerkungen = bemerkungen.join(u"  ·  "_s)};
}

void Auswertung::zeigeVerursacher(const Prüfwert& mangel) {
    const auto liste = tarvel::kriterien(arbeitsplatz_.prüfling(), arbeitsplatz_.urteil());
    const auto k = std::find_if(liste.begin(), liste.end(),
                                [&](const Kriterium& eines) { return eines.prüfwert == mangel; });
    if (k == liste.end()) {
        return;
    }
    if (mangel.art == Prüfung::Merkmal) {
        if (beiMerkmalwahl_) {
            beiMerkmalwahl_(k->bienen);
        }
    } else if (beiWahl_) {
        beiWahl_(k->flügel);
    }
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
