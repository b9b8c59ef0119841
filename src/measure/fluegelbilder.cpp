#include "measure/fluegelbilder.h"

#include "measure/offenesbild.h"

#include <QPainter>

namespace tarvel {

QImage Flügelbilder::hole(const Flügelmessung& flügel, const QRect& ausschnitt) {
    const QImage* ganzes = pixel(flügel);
    if (ganzes == nullptr) {
        return {};
    }
    // What lies beyond the edges comes out black otherwise.
    const QRect innen = ausschnitt & ganzes->rect();
    if (innen.isEmpty()) {
        return {};
    }
    QImage bild(ausschnitt.size(), QImage::Format_RGB32);
    bild.fill(Qt::white);
    {
        QPainter painter(&bild);
        painter.drawImage(innen.topLeft() - ausschnitt.topLeft(), ganzes->copy(innen));
    }
    const bool zuGroß = bild.width() > GrößteBreite || bild.height() > GrößteBreite;
    return zuGroß ? bild.scaled(GrößteBreite, GrößteBreite, Qt::KeepAspectRatio,
                                Qt::SmoothTransformation)
                  : bild;
}

const QImage* Flügelbilder::pixel(const Flügelmessung& flügel) {
    if (flügel.bilddatei.isEmpty() || flügel.ohneBildhöhe) {
        return nullptr;
    }
    if (!offen_.leer() && liegtAuf(flügel, offen_.pfad(), flügel.bild)) {
        return offen_.pixel();
    }
    if (vergeblich_.contains(flügel.bilddatei)) {
        return nullptr;
    }
    Bildzugang& zugang = offen_.zugang();
    const Bildfund fund = zugang.suche().suche(gesuchtesBild(reihe_, flügel));
    if (fund.art == Bildfund::Art::Gefunden && (!anderes_ || anderes_->pfad() != fund.pfad)) {
        anderes_.reset(); // never two of them in memory
        anderes_ = zugang.öffneStill(fund.pfad, true);
    }
    if (fund.art != Bildfund::Art::Gefunden || !anderes_) {
        vergeblich_.insert(flügel.bilddatei);
        return nullptr;
    }
    return anderes_->pixel(nullptr);
}

} // namespace tarvel
