#pragma once

#include "evaluation/achsen.h"
#include "evaluation/diagramm.h"
#include "measure/messreihe.h"

#include <QImage>
#include <QPainter>

#include <vector>

namespace tarvel {

/// Adds a wing; an index that is KeinWert was not measured.
inline void misst(Messreihe& reihe, const Chartwerte& werte) {
    const auto gemessen = [](float wert) {
        return wert == Chartwerte::KeinWert ? std::nullopt : std::optional(wert);
    };
    Indizes indizes;
    indizes.CI = gemessen(werte.CI);
    indizes.HI = gemessen(werte.HI);
    indizes.DV = gemessen(werte.DV);
    reihe.trageEin(reihe.nächsteNummer(), indizes, {}, {});
}

/// Wings 001, 002, … whose cubital indices lie in the middle of the given classes.
inline Messreihe ciReihe(const std::vector<int>& klassen) {
    Messreihe reihe;
    for (const int klasse : klassen)
        misst(reihe, {.CI = static_cast<float>(CIBeiKlassenlage(klasse + 0.5))});
    return reihe;
}

/// A style in which every part has a colour of its own, told apart pixel by pixel.
inline Diagrammstil prüfstil() {
    Diagrammstil stil = Diagrammstil::farbdruck({});
    stil.grund = Qt::white;
    stil.schrift = stil.blass = Qt::black;
    stil.gitter = QColor(240, 240, 240);
    stil.fläche = QColor(0, 255, 255);
    stil.probe = QColor(0, 0, 255);
    stil.bereich = QColor(255, 255, 0);
    stil.rasse = QColor(160, 160, 0);
    stil.verfehlt = QColor(255, 0, 0);
    stil.gewählt = QColor(0, 128, 0);
    return stil;
}

template <typename Maler>
QImage leinwand(const QSize& größe, Maler maler) {
    QImage bild(größe, QImage::Format_RGB32);
    bild.fill(Qt::magenta);
    QPainter painter(&bild);
    maler(painter, QRectF(QPointF(), größe));
    return bild;
}

inline QColor farbe(const QImage& bild, QPointF ort) {
    return bild.pixelColor(ort.toPoint());
}

/// Pixels of a colour within a part of the picture.
inline int zähle(const QImage& bild, const QColor& gesucht, const QRectF& teil) {
    int anzahl = 0;
    const QRect r = teil.toAlignedRect() & bild.rect();
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x)
            anzahl += bild.pixelColor(x, y) == gesucht ? 1 : 0;
    return anzahl;
}

/// Mean difference of two pictures of one size, 0 to 255.
inline double unterschied(const QImage& a, const QImage& b) {
    double summe = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            summe += std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y)));
    return summe / (static_cast<double>(a.width()) * a.height());
}

} // namespace tarvel
