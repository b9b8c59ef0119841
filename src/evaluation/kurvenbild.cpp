#include "evaluation/klassen.h"
#include "evaluation/kurven.h"

#include <vector>

namespace tarvel {

namespace {

constexpr double AußerhalbDerKlassen = -1000;

/// The ranges of the standard that the judgement looked at: "Klasse 0" and so on.
std::vector<Bereichsangabe> bereichsangaben(const Beurteilung& beurteilung) {
    std::vector<Bereichsangabe> bereiche;
    for (const Prüfwert& wert : beurteilung.werte) {
        if (wert.art == Prüfung::Merkmal) {
            continue;
        }
        Bereichsangabe b;
        b.nummer = wert.name.isEmpty() ? 0 : wert.name.back().digitValue();
        b.klassen = wert.bereich;
        b.verfehlt = wert.fett;
        if (wert.art == Prüfung::Klassen) {
            b.anteil = wert.gemessen;
            b.erlaubt = wert.erlaubt;
        }
        bereiche.push_back(b);
    }
    return bereiche;
}

} // namespace

Kurvenform kurvenform(int option) {
    return option == 0 ? Kurvenform::Balken : option == 2 ? Kurvenform::Linie : Kurvenform::Stufen;
}

ZweiteKurve zweiteKurve(int option) {
    return option == 0   ? ZweiteKurve::Keine
           : option == 2 ? ZweiteKurve::Discoidalverschiebung
                         : ZweiteKurve::Hantelindex;
}

Kurvenbild kurvenbild(const Messreihe& reihe, const Rassestandard& standard, Geschlecht tiere,
                      const Beurteilung& beurteilung, Kurvenform form, ZweiteKurve zweite) {
    const bool drohnen = tiere == Geschlecht::Drohnen;
    const Linienwerte linien = standard.linien.geltende(tiere);
    Kurvenbild bild;
    bild.form = form;
    bild.art = zweite;
    bild.rassemittel =
        (drohnen ? standard.drohnen.Mittelwert : standard.arbeiterinnen.Mittelwert).wert();
    bild.beurteilt = beurteilung.BewertungAktiv;
    bild.nebengipfel = beurteilung.nebengipfel;
    bild.bereiche = bereichsangaben(beurteilung);

    bild.CI.grenzlinie = linien.CI.wert();
    std::vector<float> CI;
    for (const CiZeile& zeile : reihe.ciZeilen()) {
        if (reihe.ausgelassen(zeile.nummer)) {
            ++bild.CI.ausgelassen;
            continue;
        }
        bild.CI.flügel.push_back({zeile.nummer, klasseAusPosition(zeile.klasse)});
        CI.push_back(chartwert(reihe, zeile.nummer, &Chartwerte::CI, zeile.wert));
    }
    bild.CI.kennzahlen = kennzahlen(CI);

    const bool hantel = zweite == ZweiteKurve::Hantelindex;
    bild.zweite.grenzlinie = hantel ? linien.HI.wert() : linien.DV.wert();
    std::vector<float> werte;
    for (const HiDvZeile& zeile : reihe.hiDvZeilen()) {
        if (reihe.ausgelassen(zeile.nummer)) {
            ++bild.zweite.ausgelassen;
            continue;
        }
        const int klasse = hantel ? klasseAusPosition(zeile.klasse)
                                  : klasseDV(getippteZahl(zeile.dv).value_or(AußerhalbDerKlassen));
        bild.zweite.flügel.push_back({zeile.nummer, klasse});
        werte.push_back(hantel ? chartwert(reihe, zeile.nummer, &Chartwerte::HI, zeile.hi)
                               : chartwert(reihe, zeile.nummer, &Chartwerte::DV, zeile.dv));
    }
    bild.zweite.kennzahlen = kennzahlen(werte);
    return bild;
}

} // namespace tarvel
