#include "app/nachmessen.h"

#include "measure/messplatz.h"
#include "measure/nachmessfenster.h"
#include "measure/statistik.h"

#include <QPolygonF>
#include <QRandomGenerator>

#include <algorithm>

namespace tarvel {

namespace {

/// The points of a wing in pixels of its picture.
QPolygonF punkte(const Flügelmessung& flügel) {
    QPolygonF orte;
    for (int p = ersterPunkt(flügel.messart); p <= letzterPunkt(flügel.messart); ++p) {
        orte << QPointF(flügel.punkte.PunktX[p], flügel.punkte.PunktY[p]) /
                    flügel.aufnahme.Zoomfaktor;
    }
    return orte;
}

/// What is shown of the scan: a wing of 9.5 mm lies in it however it is turned.
QRect ausschnitt(const Flügelmessung& flügel) {
    constexpr double MillimeterJeZoll = 25.4;
    constexpr double Umkreis = 9;
    const double r = Umkreis / MillimeterJeZoll * flügel.aufnahme.dpi;
    const QPointF mitte = punkte(flügel).boundingRect().center();
    return QRectF(mitte.x() - r, mitte.y() - r, 2 * r, 2 * r).toAlignedRect();
}

/// The indices of the points that the program proposes for the wing, of those @p funde on its part
/// of the scan.
std::optional<Indizes> vorschlag(const Flügelmessung& flügel,
                                 const std::vector<Flügelfund>& funde) {
    const QPolygonF orte = punkte(flügel).translated(-QPointF(ausschnitt(flügel).topLeft()));
    for (const Flügelfund& fund : funde) {
        // Found where it was measured: its points lie within the outline.
        const QPolygonF umriss(QList<QPointF>(fund.umriss.begin(), fund.umriss.end()));
        if (!umriss.containsPoint(orte.boundingRect().center(), Qt::OddEvenFill)) {
            continue;
        }
        Messpunkte p(flügel.messart);
        for (int i = ersterPunkt(flügel.messart); i <= letzterPunkt(flügel.messart); ++i) {
            const QPointF ort = fund.vorschlag.punkte[static_cast<std::size_t>(i - 1)];
            p.setze(flügel.messart, i, static_cast<float>(ort.x()), static_cast<float>(ort.y()),
                    Punktherkunft::Vorgeschlagen);
        }
        return berechneIndizes(p, flügel.messart, {.Zoomfaktor = 1, .dpi = flügel.aufnahme.dpi});
    }
    return std::nullopt;
}

Probenstreuung streuung(const Messreihe& reihe) {
    Probenstreuung werte;
    std::size_t i = 0;
    for (const auto index : {&Chartwerte::CI, &Chartwerte::HI, &Chartwerte::DV}) {
        if (const auto k = kennzahlen(tarvel::werte(reihe, index))) {
            werte.at(i) = k->standardabweichung;
        }
        ++i;
    }
    return werte;
}

/// Wings to be measured again with their parts of the scans, of those whose picture is at hand.
std::vector<Nachmessflügel> nachmessflügel(const Messreihe& reihe, Flügelbilder bilder) {
    const auto zufall = [] { return QRandomGenerator::global()->generate(); };
    std::vector<Nachmessflügel> alle;
    for (const int nummer : nachmessbare(reihe, zufall)) {
        const Flügelmessung& flügel = *reihe.messung(nummer);
        QImage bild = bilder.schneide(flügel, ausschnitt(flügel));
        if (!bild.isNull()) {
            alle.push_back({.erste = flügel, .bild = std::move(bild)});
        }
        if (alle.size() == NachmessFlügel) {
            break;
        }
    }
    return alle;
}

} // namespace

void missNach(const Umgebung& umgebung, const Messreihe& reihe, Messplatz& messplatz) {
    const Texte& texte = umgebung.texte;
    const std::vector<Nachmessflügel> flügel = nachmessflügel(reihe, messplatz.flügelbilder());
    if (flügel.size() < WenigsteNachmessFlügel) {
        umgebung.dialoge.meldung(texte(Meldung::WiederholprobeTitel),
                                 texte(Meldung::WiederholprobeZuWenig).arg(WenigsteNachmessFlügel),
                                 Meldungsart::Hinweis);
        return;
    }
    Nachmessfenster fenster(texte, umgebung.format, flügel, streuung(reihe), messplatz.window());
    std::vector<Flügelfunde::Nebenbild> bilder;
    bilder.reserve(flügel.size());
    for (const Nachmessflügel& f : flügel) {
        bilder.push_back({.pixel = f.bild, .dpi = f.erste.aufnahme.dpi});
    }
    const auto verlauf = std::make_shared<Suchverlauf>();
    messplatz.sucheAuf(std::move(bilder), verlauf, [&](const Flügelfunde::Nebenfunde& funde) {
        std::vector<std::optional<Indizes>> vorschläge;
        for (std::size_t i = 0; i < flügel.size(); ++i) {
            vorschläge.push_back(vorschlag(flügel[i].erste, funde[i]));
        }
        fenster.setzeVorschläge(std::move(vorschläge));
    });
    fenster.exec();
    verlauf->halt = true;
}

} // namespace tarvel
