#include "print/anhang.h"

#include "evaluation/merkmale.h"
#include "measure/fluegelprobe.h"
#include "results/untersuchung.h"

#include <algorithm>
#include <cmath>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// What a cut-out shows around the points, as a part of their extent.
constexpr double Rand = 0.25;
/// Pixels of the scan that a cut-out has at most, far more than a wing at any resolution. Points of
/// a file may lie anywhere.
constexpr double GrößterAusschnitt = 20000;

/// The set points in pixels of the unzoomed picture.
std::vector<QPointF> gesetzte(const Flügelmessung& flügel) {
    std::vector<QPointF> orte;
    const Messpunkte& p = flügel.punkte;
    for (std::size_t i = 1; i <= Messpunkte::Anzahl; ++i) {
        if (p.PunktX[i] != Messpunkte::NichtGemessen) {
            orte.push_back(QPointF(p.PunktX[i], p.PunktY[i]) / flügel.aufnahme.Zoomfaktor);
        }
    }
    return orte;
}

/// Empty where the points are too far apart for a wing, or lie nowhere.
QRect ausschnitt(const std::vector<QPointF>& punkte) {
    const auto [links, rechts] = std::minmax_element(
        punkte.begin(), punkte.end(), [](QPointF a, QPointF b) { return a.x() < b.x(); });
    const auto [oben, unten] = std::minmax_element(
        punkte.begin(), punkte.end(), [](QPointF a, QPointF b) { return a.y() < b.y(); });
    const double luft = 1 + std::max(rechts->x() - links->x(), unten->y() - oben->y()) * Rand;
    const QRectF rahmen = QRectF(QPointF(links->x(), oben->y()), QPointF(rechts->x(), unten->y()))
                              .adjusted(-luft, -luft, luft, luft);
    constexpr double FernsterOrt = 1e6;
    const bool möglich =
        rahmen.width() <= GrößterAusschnitt && rahmen.height() <= GrößterAusschnitt &&
        std::abs(rahmen.left()) < FernsterOrt && std::abs(rahmen.top()) < FernsterOrt;
    return möglich ? rahmen.toAlignedRect() : QRect();
}

void nimmPunkte(Anhangflügel& zelle, const Flügelmessung& flügel, const Flügelbild& bild) {
    zelle.punkte = gesetzte(flügel);
    if (zelle.punkte.empty()) {
        return;
    }
    const QRect rahmen = ausschnitt(zelle.punkte);
    if (rahmen.isEmpty()) {
        zelle.punkte.clear();
        return;
    }
    for (QPointF& punkt : zelle.punkte) {
        punkt -= rahmen.topLeft();
    }
    zelle.größe = rahmen.size();
    if (bild && !flügel.ohneBildhöhe) {
        zelle.bild = bild(flügel, rahmen);
    }
}

} // namespace

Anhang anhang(const Untersuchung& untersuchung, const Texte& texte, const Zahlenformat& format,
              const Flügelbild& bild) {
    const Messreihe& reihe = untersuchung.reihe();
    const auto zweifel = flügelzweifel(reihe);
    const Zeilenwörter worte = zeilenwörter(texte);
    // Lines keep the decimal sign that they were made with; the paper has one.
    const auto zahl = [&format](QString text) {
        return text.replace(u'.', format.dezimal).replace(u',', format.dezimal);
    };
    Anhang a;
    for (const int nummer : reihe.nummern()) {
        Anhangflügel zelle;
        zelle.kopf = dreistellig(nummer) + (zweifel.contains(nummer) ? u" !"_s : QString());
        zelle.ausgelassen = reihe.ausgelassen(nummer);
        const auto ist = [nummer](const auto& zeile) { return zeile.nummer == nummer; };
        const auto& ci = reihe.ciZeilen();
        if (const auto z = std::find_if(ci.begin(), ci.end(), ist); z != ci.end()) {
            zelle.kopf += u"  "_s + worte.CI + u' ' + zahl(z->wert) + u"  "_s + worte.Klasse +
                          u' ' + zahl(z->klasse);
        }
        const auto& hiDv = reihe.hiDvZeilen();
        if (const auto z = std::find_if(hiDv.begin(), hiDv.end(), ist); z != hiDv.end()) {
            zelle.werte = worte.HI + u' ' + zahl(z->hi) + u"  "_s + worte.DV + u' ' + zahl(z->dv);
        }
        if (const Flügelmessung* messung = reihe.messung(nummer)) {
            nimmPunkte(zelle, *messung, bild);
        }
        a.flügel.push_back(std::move(zelle));
    }
    const Merkmale& merkmale = untersuchung.merkmale();
    if (merkmale.Modus == Merkmalmodus::Liste) {
        a.bienen = merkmale.Liste;
    }
    return a;
}

} // namespace tarvel
