#include "collection/kolonievergleich.h"

namespace tarvel {

namespace {

constexpr double Hundert = 100;

int anzahl(const Indexwerte& w, Kolonievergleichszeile::Art art) {
    return art == Kolonievergleichszeile::Art::AnteilUnter ? w.unter : w.über;
}

std::optional<double> figur(const Koloniewerte& k, Größe g, Kolonievergleichszeile::Art art) {
    const Indexwerte& w = k[g];
    if (w.kennzahlen.anzahl == 0) {
        return std::nullopt;
    }
    if (art == Kolonievergleichszeile::Art::Mittelwert) {
        return w.kennzahlen.mittelwert;
    }
    return k.rasse == Koloniewerte::OhneRasse
               ? std::nullopt
               : std::optional(Hundert * anzahl(w, art) / w.kennzahlen.anzahl);
}

} // namespace

Kolonievergleich vergleiche(const Koloniewerte& a, const Koloniewerte& b,
                            const Kolonieregeln& regeln) {
    using Art = Kolonievergleichszeile::Art;
    Kolonievergleich v;
    v.tiereVerschieden = a.tiere != b.tiere;
    v.dpiVerschieden = a[Größe::DV].kennzahlen.anzahl > 0 && b[Größe::DV].kennzahlen.anzahl > 0 &&
                       (a.dpi != b.dpi || !a.dpiEindeutig());
    const auto grenzenA = regeln.grenzen(a.rasse, a.tiere);
    const auto grenzenB = regeln.grenzen(b.rasse, b.tiere);
    v.grenzenVerschieden = !grenzenA || !grenzenB || grenzenA->werte != grenzenB->werte;
    for (const Größe g : Größen) {
        for (const Art art : {Art::Mittelwert, Art::AnteilUnter, Art::AnteilÜber}) {
            Kolonievergleichszeile zeile{g, art, figur(a, g, art), figur(b, g, art), {}};
            const bool vergleichbar = !v.tiereVerschieden &&
                                      !(g == Größe::DV && v.dpiVerschieden) &&
                                      !(art != Art::Mittelwert && v.grenzenVerschieden);
            if (zeile.a && zeile.b && vergleichbar) {
                const Kennzahlen& ka = a[g].kennzahlen;
                const Kennzahlen& kb = b[g].kennzahlen;
                zeile.unterschied = art == Art::Mittelwert
                                        ? mittelunterschied(ka, kb)
                                        : anteilsunterschied(anzahl(a[g], art), ka.anzahl,
                                                             anzahl(b[g], art), kb.anzahl);
            }
            v.zeilen.push_back(zeile);
        }
    }
    return v;
}

} // namespace tarvel
