#include "app/nachmessen.h"

#include "detect/bildpixel.h"
#include "detect/fluegelerkennung.h"
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

/// The indices of the points that the program proposes for the wing.
std::optional<Indizes> vorschlag(const Flügelerkennung& erkennung, const Flügelmessung& flügel,
                                 const QImage& bild, QPointF ursprung) {
    Suchverlauf verlauf;
    const QPolygonF orte = punkte(flügel).translated(-ursprung);
    for (const Flügelfund& fund : erkennung.finde(Bildpixel(bild), flügel.aufnahme.dpi, verlauf)) {
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
std::vector<Nachmessflügel> nachmessflügel(const Umgebung& umgebung, const Messreihe& reihe,
                                           Flügelbilder bilder) {
    const auto zufall = [] { return QRandomGenerator::global()->generate(); };
    std::vector<Nachmessflügel> alle;
    for (const int nummer : nachmessbare(reihe, zufall)) {
        const Flügelmessung& flügel = *reihe.messung(nummer);
        QImage bild = bilder.schneide(flügel, ausschnitt(flügel));
        if (!bild.isNull()) {
            alle.push_back({.erste = flügel, .bild = std::move(bild), .vorschlag = {}});
        }
        if (alle.size() == NachmessFlügel) {
            break;
        }
    }
    const Modellergebnis modell =
        umgebung.modell ? umgebung.modell() : Modellergebnis(Modellfehler::KeinModell);
    if (const auto* m = std::get_if<std::shared_ptr<const Erkennungsmodell>>(&modell)) {
        const Flügelerkennung erkennung(*m);
        for (Nachmessflügel& f : alle) {
            f.vorschlag = vorschlag(erkennung, f.erste, f.bild, ausschnitt(f.erste).topLeft());
        }
    }
    return alle;
}

} // namespace

void missNach(const Umgebung& umgebung, const Messreihe& reihe, Flügelbilder bilder,
              QWidget& fenster) {
    const Texte& texte = umgebung.texte;
    auto flügel = nachmessflügel(umgebung, reihe, std::move(bilder));
    if (flügel.size() < WenigsteNachmessFlügel) {
        umgebung.dialoge.meldung(texte(Meldung::WiederholprobeTitel),
                                 texte(Meldung::WiederholprobeZuWenig).arg(WenigsteNachmessFlügel),
                                 Meldungsart::Hinweis);
        return;
    }
    Nachmessfenster(texte, umgebung.format, std::move(flügel), streuung(reihe), &fenster).exec();
}

} // namespace tarvel
