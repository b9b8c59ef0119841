#include "feld.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarvel {

Feld unscharf(const Feld& feld, double breite) {
    const int r = std::max(1, int(std::ceil(3 * breite)));
    std::vector<float> kern;
    double summe = 0;
    for (int i = -r; i <= r; ++i) {
        kern.push_back(float(std::exp(-i * i / (2 * breite * breite))));
        summe += double(kern.back());
    }
    for (float& k : kern)
        k /= float(summe);
    Feld quer(feld.breite, feld.höhe);
    std::vector<float> zeile(std::size_t(feld.breite + 2 * r));
    for (int y = 0; y < feld.höhe; ++y) {
        for (int x = -r; x < feld.breite + r; ++x)
            zeile[std::size_t(x + r)] = feld.bei(std::clamp(x, 0, feld.breite - 1), y);
        for (int i = 0; i <= 2 * r; ++i)
            for (int x = 0; x < feld.breite; ++x)
                quer.bei(x, y) += kern[std::size_t(i)] * zeile[std::size_t(x + i)];
    }
    Feld aus(feld.breite, feld.höhe);
    for (int y = 0; y < feld.höhe; ++y)
        for (int i = -r; i <= r; ++i) {
            const int v = std::clamp(y + i, 0, feld.höhe - 1);
            for (int x = 0; x < feld.breite; ++x)
                aus.bei(x, y) += kern[std::size_t(i + r)] * quer.bei(x, v);
        }
    return aus;
}

Feld verkleinert(const Feld& feld, double teiler) {
    const auto eineRichtung = [&](const Feld& von, bool quer) {
        const int länge = quer ? von.breite : von.höhe;
        const int neu = std::max(1, int(std::floor(länge / teiler + 1e-6)));
        Feld aus(quer ? neu : von.breite, quer ? von.höhe : neu);
        for (int i = 0; i < neu; ++i) {
            const double a = i * teiler;
            const double b = std::min<double>(länge, (i + 1) * teiler);
            for (int p = int(a); p < std::min<double>(länge, std::ceil(b - 1e-9)); ++p) {
                const auto anteil =
                    float((std::min<double>(b, p + 1) - std::max<double>(a, p)) / (b - a));
                if (quer)
                    for (int y = 0; y < von.höhe; ++y)
                        aus.bei(i, y) += anteil * von.bei(p, y);
                else
                    for (int x = 0; x < von.breite; ++x)
                        aus.bei(x, i) += anteil * von.bei(x, p);
            }
        }
        return aus;
    };
    return eineRichtung(eineRichtung(feld, false), true);
}

Feld gestreckt(const Feld& feld, int breite, int höhe) {
    Feld aus(breite, höhe);
    for (int y = 0; y < höhe; ++y)
        for (int x = 0; x < breite; ++x)
            aus.bei(x, y) = kubisch(feld, (float(x) + 0.5F) * float(feld.breite) / float(breite),
                                    (float(y) + 0.5F) * float(feld.höhe) / float(höhe));
    return aus;
}

Feld wolken(Zufall& zufall, int spalten, int zeilen, double von, double bis, int breite, int höhe) {
    Feld klein(spalten, zeilen);
    for (float& w : klein.werte)
        w = float(zufall.gleich(von, bis));
    return gestreckt(klein, breite, höhe);
}

void maleScheibe(Feld& feld, QPointF mitte, double radius, float wert) {
    const int r = int(std::ceil(radius)) + 1;
    for (int y = std::max(0, int(mitte.y()) - r); y <= std::min(feld.höhe - 1, int(mitte.y()) + r);
         ++y)
        for (int x = std::max(0, int(mitte.x()) - r);
             x <= std::min(feld.breite - 1, int(mitte.x()) + r); ++x) {
            const double d = std::hypot(x + 0.5 - mitte.x(), y + 0.5 - mitte.y());
            const auto deckung = float(std::clamp(radius - d + 0.5, 0.0, 1.0));
            feld.bei(x, y) += deckung * (wert - feld.bei(x, y));
        }
}

void maleLinie(Feld& feld, QPointF von, QPointF bis, double dicke, float wert) {
    const QPointF weg = bis - von;
    const double quadrat = std::max(1e-9, weg.x() * weg.x() + weg.y() * weg.y());
    const double r = dicke / 2 + 1;
    const int x0 = std::max(0, int(std::min(von.x(), bis.x()) - r));
    const int x1 = std::min(feld.breite - 1, int(std::max(von.x(), bis.x()) + r));
    const int y0 = std::max(0, int(std::min(von.y(), bis.y()) - r));
    const int y1 = std::min(feld.höhe - 1, int(std::max(von.y(), bis.y()) + r));
    for (int y = y0; y <= y1; ++y)
        for (int x = x0; x <= x1; ++x) {
            const QPointF p = QPointF(x + 0.5, y + 0.5) - von;
            const double t = std::clamp((p.x() * weg.x() + p.y() * weg.y()) / quadrat, 0.0, 1.0);
            const QPointF q = p - t * weg;
            const auto deckung =
                float(std::clamp(dicke / 2 + 0.5 - std::hypot(q.x(), q.y()), 0.0, 1.0));
            feld.bei(x, y) += deckung * (wert - feld.bei(x, y));
        }
}

void maleHaar(Feld& feld, Zufall& zufall, QPointF anfang, double schritt, double dicke,
              float wert) {
    constexpr int Stücke = 8;
    QPointF richtung(zufall.normal(), zufall.normal());
    for (int i = 0; i < Stücke; ++i) {
        const QPointF weiter = anfang + schritt * richtung;
        maleLinie(feld, anfang, weiter, dicke, wert);
        anfang = weiter;
        richtung += QPointF(zufall.normal(0, 0.5), zufall.normal(0, 0.5));
    }
}

Graubild alsGrau(const Feld& feld, double weiß, double rauschen, Zufall& zufall) {
    Graubild bild(feld.breite, feld.höhe);
    // Drawn from a list: a picture has millions of pixels.
    constexpr int Vorrat = 1 << 14;
    std::vector<float> vorrat(Vorrat);
    for (float& v : vorrat)
        v = float(zufall.normal(0, rauschen));
    for (std::size_t i = 0; i < bild.werte.size(); ++i) {
        const double w =
            double(feld.werte[i]) * weiß + double(vorrat[std::size_t(zufall.ganz(Vorrat))]);
        bild.werte[i] = std::uint8_t(std::clamp(w, 0.0, 255.0));
    }
    return bild;
}

QImage alsBild(const Graubild& bild) {
    QImage aus(bild.breite, bild.höhe, QImage::Format_Grayscale8);
    for (int y = 0; y < bild.höhe; ++y)
        std::copy_n(bild.zeile(y), bild.breite, aus.scanLine(y));
    return aus;
}

} // namespace tarvel
