#include "evaluation/kriterien.h"

#include <algorithm>
#include <cmath>

namespace tarvel {

namespace {

/// Wings of a series; of bees no more can be judged than HöchsteAnzahl.
constexpr int MeisteFlügel = 200;

/// A share passes when it is at most @p erlaubt after rounding, so its limit lies half a percent
/// above the last whole percent that passes.
double anteilsgrenze(double erlaubt) {
    constexpr double Halbes = 0.5;
    return std::floor(erlaubt) + Halbes;
}

std::vector<int> flügelMitKlasse(const Messreihe& reihe, Klassenbereich bereich) {
    std::vector<int> nummern;
    for (const CiZeile& zeile : reihe.ciZeilen()) {
        if (!reihe.ausgelassen(zeile.nummer) && bereich.enthält(klasseAusPosition(zeile.klasse))) {
            nummern.push_back(zeile.nummer);
        }
    }
    return nummern;
}

int platzDesCodes(Geschlecht tiere, const QString& code) {
    const std::vector<QString> codes = merkmalcodes(tiere);
    return static_cast<int>(std::find(codes.begin(), codes.end(), code) - codes.begin());
}

void bewerteAnteil(Kriterium& k, int höchstens) {
    if (!k.prüfwert.gemessen || k.gesamt <= 0) {
        return;
    }
    constexpr double Alles = 100;
    if (k.anzahl > k.gesamt) { // groups of marks that contradict each other: no share of a sample
        k.gewissheit = Gewissheit::OhneStreuung;
        return;
    }
    k.bereich = anteilsbereich(k.anzahl, k.gesamt);
    if (k.prüfwert.erlaubt >= Alles) {
        k.gewissheit = Gewissheit::ImmerErfüllt;
        return;
    }
    const double grenze = anteilsgrenze(k.prüfwert.erlaubt);
    const std::optional<int> fest = festAb(k.anzahl, k.gesamt, grenze, höchstens);
    k.gewissheit = fest == k.gesamt ? Gewissheit::Sicher : Gewissheit::Offen;
    k.festAb = fest;
}

void bewerteMittel(Kriterium& k, const Messreihe& reihe) {
    const auto angabe = mittelangabe(reihe, &Chartwerte::CI);
    if (!k.prüfwert.mittel || !angabe) {
        return;
    }
    k.anzahl = angabe->kennzahlen.anzahl;
    k.gesamt = k.anzahl;
    k.bereich = angabe->bereich;
    for (const CiZeile& zeile : reihe.ciZeilen()) {
        const float wert = reihe.chartwerte(zeile.nummer).CI;
        const bool gut =
            k.prüfwert.höchstens ? wert <= k.prüfwert.erlaubt : wert >= k.prüfwert.erlaubt;
        if (!reihe.ausgelassen(zeile.nummer) && wert != Chartwerte::KeinWert && !gut) {
            k.flügel.push_back(zeile.nummer);
        }
    }
    const std::optional<int> fest = festAb(angabe->kennzahlen, k.prüfwert.erlaubt, MeisteFlügel);
    k.gewissheit = fest == k.gesamt ? Gewissheit::Sicher : Gewissheit::Offen;
    k.festAb = fest;
}

} // namespace

std::optional<double> Kriterium::abstand() const {
    const std::optional<double> wert = prüfwert.mittel ? prüfwert.mittel
                                       : prüfwert.gemessen
                                           ? std::optional<double>(*prüfwert.gemessen)
                                           : std::nullopt;
    if (!wert) {
        return std::nullopt;
    }
    return prüfwert.höchstens ? prüfwert.erlaubt - *wert : *wert - prüfwert.erlaubt;
}

std::vector<Kriterium> kriterien(const Prüfling& prüfling, const Urteil& urteil) {
    const Messreihe& reihe = prüfling.reihe;
    std::vector<Kriterium> liste;
    liste.reserve(urteil.beurteilung.werte.size());
    for (const Prüfwert& wert : urteil.beurteilung.werte) {
        Kriterium k;
        k.prüfwert = wert;
        switch (wert.art) {
        case Prüfung::Merkmal:
            k.anzahl = urteil.merkmale.Anzahl.at(platzDesCodes(prüfling.tiere, wert.name));
            k.gesamt = urteil.merkmale.Bienen;
            k.bienen = zeilenMitCode(prüfling.merkmale, wert.name);
            bewerteAnteil(k, HöchsteAnzahl);
            break;
        case Prüfung::Mittelwert:
            bewerteMittel(k, reihe);
            break;
        case Prüfung::Klassen:
            k.flügel = flügelMitKlasse(reihe, wert.bereich);
            k.anzahl = static_cast<int>(k.flügel.size());
            k.gesamt = urteil.beurteilung.umfang.Flügel;
            bewerteAnteil(k, MeisteFlügel);
            break;
        case Prüfung::Nebengipfel:
            k.anzahl = wert.gemessen.value_or(0);
            k.gesamt = urteil.beurteilung.umfang.Flügel;
            if (wert.gemessen) {
                k.gewissheit = Gewissheit::OhneStreuung;
            }
            if (const std::optional<int> klasse = urteil.beurteilung.nebengipfel) {
                k.flügel = flügelMitKlasse(reihe, {*klasse, *klasse});
            }
            break;
        }
        liste.push_back(std::move(k));
    }
    return liste;
}

std::optional<Mittelangabe> mittelangabe(const Messreihe& reihe, float Chartwerte::*index) {
    const auto k = kennzahlen(werte(reihe, index));
    return k ? std::optional<Mittelangabe>({*k, mittelbereich(*k)}) : std::nullopt;
}

} // namespace tarvel
