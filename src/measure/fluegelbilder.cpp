#include "measure/fluegelbilder.h"

#include <QPainter>

namespace tarvel {

QImage Flügelbilder::schneide(const Flügelmessung& flügel, const QRect& ausschnitt) {
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
    return bild;
}

QImage Flügelbilder::hole(const Flügelmessung& flügel, const QRect& ausschnitt) {
    QImage bild = schneide(flügel, ausschnitt);
    const bool zuGroß = bild.width() > GrößteBreite || bild.height() > GrößteBreite;
    return zuGroß ? bild.scaled(GrößteBreite, GrößteBreite, Qt::KeepAspectRatio,
                                Qt::SmoothTransformation)
                  : bild;
}

const QImage* Flügelbilder::pixel(const Flügelmessung& flügel) {
    if (flügel.bilddatei.isEmpty() || flügel.ohneBildhöhe) {
        return nullptr;
    }
    if (const auto offen = quelle_.offener ? quelle_.offener(flügel) : std::nullopt) {
        return *offen;
    }
    if (vergeblich_.contains(flügel.bilddatei)) {
        return nullptr;
    }
    const Bildfund fund = quelle_.suche.suche(gesuchtesBild(reihe_, flügel));
    if (fund.art == Bildfund::Art::Gefunden && (!anderer_ || anderer_->pfad() != fund.pfad)) {
        anderer_.reset(); // never two of them in memory
        anderer_ = quelle_.öffne(fund.pfad);
    }
    if (fund.art != Bildfund::Art::Gefunden || !anderer_) {
        vergeblich_.insert(flügel.bilddatei);
        return nullptr;
    }
    return anderer_->pixel(nullptr);
}

} // namespace tarvel
