#include "evaluation/klassen.h"
#include "evaluation/kurven.h"

#include <cmath>
#include <vector>

namespace tarvel {

namespace {

double aufHundertstel(double wert) {
    return std::round(wert * 100) / 100;
}

/// The ranges of the standard that the judgement looked at: "Klasse 0" and so on.
std::vector<Bereichsangabe> bereichsangaben(const Beurteilung& beurteilung) {
    std::vector<Bereichsangabe> bereiche;
    for (const Prüfwert& wert : beurteilung.werte) {
        if (wert.art == Prüfung::Merkmal || wert.art == Prüfung::Mittelwert) {
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
        (drohnen ? standard.drohnen.mittel : standard.arbeiterinnen.mittel).Mittelwert.wert();
    for (const Prüfwert& wert : beurteilung.werte) {
        if (wert.art == Prüfung::Mittelwert && beurteilung.BewertungAktiv) {
            bild.mittelregel = wert;
        }
    }
    bild.beurteilt = beurteilung.wirdBeurteilt();
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
    bild.darunter = standard.linien.darunter();
    bild.zweite.grenzlinie = hantel ? linien.HI.wert() : linien.DV.wert();
    if (beurteilung.unbeurteilt == Unbeurteilt::FremdeRasse) {
        // Limits of another race would look as if the sample were held against them.
        bild.bereiche.clear();
        bild.rassemittel.reset();
        bild.CI.grenzlinie.reset();
        bild.zweite.grenzlinie.reset();
    }
    std::vector<float> werte;
    for (const HiDvZeile& zeile : reihe.hiDvZeilen()) {
        const QString& liste = hantel ? zeile.hi : zeile.dv;
        if (!getippteZahl(liste)) {
            continue;
        }
        if (reihe.ausgelassen(zeile.nummer)) {
            ++bild.zweite.ausgelassen;
            continue;
        }
        const float wert =
            chartwert(reihe, zeile.nummer, hantel ? &Chartwerte::HI : &Chartwerte::DV, liste);
        werte.push_back(wert);
        // Counted on the side of the boundary line where the correlation draws the cross.
        const int klasse =
            hantel ? klasseAusPosition(zeile.klasse) : klasseDV(aufHundertstel(wert));
        bild.zweite.flügel.push_back({zeile.nummer, klasse});
    }
    bild.zweite.kennzahlen = kennzahlen(werte);
    return bild;
}

} // namespace tarvel
