#include "measure/fluegelmarken.h"

#include "measure/fluegelort.h"

#include <algorithm>

namespace tarvel {

std::vector<Marke> punktmarken(const Messpunkte& punkte, const std::vector<int>& fragliche) {
    std::vector<Marke> marken;
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        if (punkte.gemessen(i)) {
            marken.push_back(
                {.position = QPointF(punkte.PunktX[i], punkte.PunktY[i]),
                 .text = QString::number(i),
                 .gewählt = punkte.GewählterPunkt == i,
                 .aktiv = punkte.AktuellerPunkt == i,
                 .vorgeschlagen = punkte.Herkunft.at(i) == Punktherkunft::Vorgeschlagen,
                 .fraglich = std::find(fragliche.begin(), fragliche.end(), i) != fragliche.end()});
        }
    }
    return marken;
}

Erledigtmarken erledigtmarken(const Messreihe& reihe, const Messung& messung,
                              const QString& bilddatei,
                              const std::function<Zweifelsgrad(int)>& zweifel) {
    Erledigtmarken marken;
    const int zoom = messung.aufnahme().Zoomfaktor;
    for (const auto& [nummer, flügel] : reihe.messungen()) {
        if (!liegtAuf(flügel, bilddatei, messung.bild()) ||
            (messung.wiederholt() && nummer == messung.nummer())) {
            continue;
        }
        const QPointF mitte = flügelmitte(flügel).value_or(QPointF());
        const QString text = dreistellig(nummer);
        const bool aus = reihe.ausgelassen(nummer);
        marken.imScan.push_back(
            {.position = mitte, .text = text, .ausgelassen = aus, .zweifel = zweifel(nummer)});
        marken.imBild.push_back({.position = mitte * zoom, .text = text, .ausgelassen = aus});
        for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
            if (flügel.punkte.gemessen(i)) {
                marken.imBild.push_back(
                    {.position = QPointF(flügel.punkte.PunktX[i], flügel.punkte.PunktY[i]) * zoom /
                                 flügel.aufnahme.Zoomfaktor,
                     .ausgelassen = aus});
            }
        }
    }
    return marken;
}

} // namespace tarvel
