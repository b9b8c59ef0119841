#include "measure/fluegelort.h"

#include <QLineF>
#include <QRectF>

#include <algorithm>
#include <limits>
#include <vector>

namespace tarvel {

namespace {

QPointF punkt(const Flügelmessung& flügel, int nummer) {
    return QPointF(flügel.punkte.PunktX[nummer], flügel.punkte.PunktY[nummer]) /
           flügel.aufnahme.Zoomfaktor;
}

QPointF mitte(const std::vector<QPointF>& orte) {
    QPointF summe;
    for (const QPointF& ort : orte) {
        summe += ort;
    }
    return summe / static_cast<double>(orte.size());
}

/// The largest distance between two of the places.
double ausdehnung(const std::vector<QPointF>& orte) {
    double größte = 0;
    for (const QPointF& a : orte) {
        for (const QPointF& b : orte) {
            größte = std::max(größte, QLineF(a, b).length());
        }
    }
    return größte;
}

std::vector<QPointF> gesetzte(const Flügelmessung& flügel) {
    std::vector<QPointF> orte;
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        if (flügel.punkte.gemessen(i)) {
            orte.push_back(punkt(flügel, i));
        }
    }
    return orte;
}

} // namespace

std::optional<QPointF> flügelmitte(const Flügelmessung& flügel) {
    const std::vector<QPointF> orte = gesetzte(flügel);
    return orte.empty() ? std::nullopt : std::optional(mitte(orte));
}

std::optional<int> flügelAn(const Messreihe& reihe, const QString& bilddatei, QPointF ort,
                            const Bildkennung& bild) {
    std::optional<int> nächster;
    double kleinster = std::numeric_limits<double>::max();
    for (const auto& [nummer, flügel] : reihe.messungen()) {
        const std::vector<QPointF> orte = gesetzte(flügel);
        if (!liegtAuf(flügel, bilddatei, bild) || orte.empty()) {
            continue;
        }
        QRectF feld(orte.front(), QSizeF(0, 0));
        for (const QPointF& p : orte) {
            feld = QRectF(QPointF(std::min(feld.left(), p.x()), std::min(feld.top(), p.y())),
                          QPointF(std::max(feld.right(), p.x()), std::max(feld.bottom(), p.y())));
        }
        // Points 5 to 7 span a third of what all eight do; the wing around them is the same.
        const double rand =
            ausdehnung(orte) * (flügel.messart == Messart::NurCubitalindex ? 1 : 0.15);
        const double abstand = QLineF(mitte(orte), ort).length();
        if (feld.adjusted(-rand, -rand, rand, rand).contains(ort) && abstand < kleinster) {
            kleinster = abstand;
            nächster = nummer;
        }
    }
    return nächster;
}

int gemessenerFlügel(const Messreihe& reihe, const QString& bilddatei, const Bildkennung& bild,
                     std::span<const QPointF, 8> orte) {
    for (const auto& [nummer, flügel] : reihe.messungen()) {
        if (!liegtAuf(flügel, bilddatei, bild)) {
            continue;
        }
        std::vector<QPointF> hier;
        for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
            if (flügel.punkte.gemessen(i)) {
                hier.push_back(orte[static_cast<std::size_t>(i - 1)]);
            }
        }
        const std::vector<QPointF> dort = gesetzte(flügel);
        if (!dort.empty() && QLineF(mitte(hier), mitte(dort)).length() < ausdehnung(dort) / 2) {
            return nummer;
        }
    }
    return 0;
}

std::optional<int> liegtAufFlügel(const Messreihe& reihe, const Flügelmessung& flügel, int eigene) {
    for (const auto& [nummer, andere] : reihe.messungen()) {
        if (nummer == eigene || reihe.ausgelassen(nummer) ||
            !liegtAuf(andere, flügel.bilddatei, flügel.bild)) {
            continue;
        }
        std::vector<QPointF> hier;
        std::vector<QPointF> dort;
        for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
            if (flügel.punkte.gemessen(i) && andere.punkte.gemessen(i)) {
                hier.push_back(punkt(flügel, i));
                dort.push_back(punkt(andere, i));
            }
        }
        if (!hier.empty() && QLineF(mitte(hier), mitte(dort)).length() < ausdehnung(dort) / 2) {
            return nummer;
        }
    }
    return std::nullopt;
}

} // namespace tarvel
