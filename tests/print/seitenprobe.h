#pragma once

#include "print/protokollprobe.h"
#include "print/protokollseite.h"

#include <gtest/gtest.h>

// Pages of the report as their texts, and what may be wrong with how they are laid out.

namespace tarvel {

inline QStringList zeilen(const Protokollseite& seite) {
    QStringList liste;
    for (const Protokolltext& t : seite.texte) {
        liste << t.text;
    }
    return liste;
}

inline QStringList zeilen(const Protokolldaten& daten, int nummer = 1) {
    return zeilen(protokollseite(daten, Briefkopfgrafik(), nummer));
}

/// Whether two rectangles share more than an edge; a hundredth of a millimetre is none.
inline bool berühren(const QRectF& a, const QRectF& b) {
    const QRectF s = a.intersected(b);
    return s.width() > 0.01 && s.height() > 0.01;
}

/// What is wrong with a page: text beyond the margins, on other text, on a chart or on a line.
inline QStringList fehler(const Protokollseite& seite) {
    QStringList liste;
    const QRectF satzspiegel(
        QPointF(Protokollrand, seite.briefkopfrahmen.bottom()),
        QPointF(PapierA4.width() - Protokollrand, PapierA4.height() - ProtokollrandUnten + 0.01));
    std::vector<std::pair<QString, QRectF>> kästen;
    for (const Protokolltext& t : seite.texte) {
        kästen.emplace_back(t.text, t.rahmen);
    }
    for (const Diagrammrahmen& d : seite.diagramme) {
        kästen.emplace_back(QStringLiteral("Diagramm"), d.rahmen);
        if (d.rahmen.height() < 60 || d.rahmen.width() < 150) {
            liste << QStringLiteral("Diagramm zu klein");
        }
    }
    for (const Flügelrahmen& f : seite.flügel) {
        if (!f.bild.isEmpty()) {
            kästen.emplace_back(QStringLiteral("Flügel"), f.bild);
        }
    }
    for (std::size_t i = 0; i < kästen.size(); ++i) {
        if (!satzspiegel.adjusted(-0.01, 0, 0.01, 0).contains(kästen[i].second)) {
            liste << QStringLiteral("außerhalb: ") + kästen[i].first;
        }
        for (std::size_t k = 0; k < i; ++k) {
            if (berühren(kästen[i].second, kästen[k].second)) {
                liste << kästen[i].first + QStringLiteral(" auf ") + kästen[k].first;
            }
        }
        for (const Protokolllinie& l : seite.linien) {
            // A line is crossed when it passes through the letters, not when it touches the box.
            const QRectF kern = kästen[i].second.adjusted(0.1, 0.5, -0.1, -0.5);
            const QRectF strich = QRectF(l.linie.p1(), l.linie.p2()).normalized();
            if (kern.intersects(strich.adjusted(-0.01, -0.01, 0.01, 0.01))) {
                liste << kästen[i].first + QStringLiteral(" auf einer Linie");
            }
        }
    }
    return liste;
}

struct ProtokollTest : testing::Test, Protokollprobe {
    void miss25() {
        for (int i = 0; i < 25; ++i) {
            miss(18 + i % 5);
        }
    }
};

} // namespace tarvel
