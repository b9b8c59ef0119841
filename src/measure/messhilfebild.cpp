#include "measure/messhilfebild.h"

#include "lang/texte.h"
#include "measure/fluegelzeichnung.h"

#include <QLineF>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include <algorithm>
#include <cmath>

namespace tarvel {

namespace {

using namespace Qt::StringLiterals;

// All places and lengths are millimetres of the wing, unless a name says pixel.
constexpr QPointF LinkeObereEcke(-0.25, -0.8);
constexpr double Scheibenradius = 0.17;
constexpr double Schrifthöhe = 0.19;
constexpr double KleinsteSchriftPixel = 9;

/// Where the number of a point stands: off the veins, so that the point itself stays visible.
constexpr std::array<QPointF, 9> Nummernorte{{{},
                                              {4.33, -0.46},
                                              {0.35, 0.12},
                                              {3.62, -0.46},
                                              {2.86, -0.46},
                                              {3.02, 1.70},
                                              {2.45, 2.20},
                                              {1.98, 2.08},
                                              {3.45, 2.55}}};

// The magnified view of points 5 to 7 fills the empty corner below the wing root.
constexpr QPointF Lupenziel(2.64, 1.39);
constexpr double Lupenzielradius = 0.52;
constexpr QPointF Lupenmitte(7.75, 3.05);
constexpr double Lupenradius = 1.36;
constexpr double Lupenfaktor = Lupenradius / Lupenzielradius;
constexpr std::array<QPointF, 3> Lupennummern{{{8.35, 2.27}, {7.2, 4.02}, {6.6, 3.0}}};

struct Farben {
    QColor schrift;
    QColor blass;
    QColor zelle;
    QColor punkt;
    QColor nummer;
    QColor streckeA;
    QColor streckeB;
};

Farben farben(const QPalette& palette) {
    const bool dunkel = palette.color(QPalette::Window).lightness() < 128;
    Farben f;
    f.schrift = palette.color(QPalette::WindowText);
    f.blass = f.schrift;
    f.blass.setAlphaF(0.55F);
    f.zelle = dunkel ? QColor(90, 160, 235, 60) : QColor(60, 130, 210, 45);
    f.punkt = dunkel ? QColor(255, 130, 115) : QColor(190, 20, 30);
    f.nummer = dunkel ? QColor(30, 10, 10) : QColor(255, 255, 255);
    f.streckeA = dunkel ? QColor(115, 190, 255) : QColor(0, 85, 170);
    f.streckeB = dunkel ? QColor(255, 190, 90) : QColor(165, 85, 0);
    return f;
}

class Zeichner {
public:
    Zeichner(QPainter& painter, const QRectF& rahmen, const QPalette& palette, const Texte& texte)
        : painter_(painter)
        , palette_(palette)
        , texte_(texte)
        , farben_(farben(palette)) {
        rahmen_ = rahmen;
        const QSizeF größe = MessHilfeFormat.scaled(rahmen.size(), Qt::KeepAspectRatio);
        maßstab_ = größe.width() / MessHilfeFormat.width();
        ursprung_ = rahmen.center() - QPointF(größe.width(), größe.height()) / 2 -
                    LinkeObereEcke * maßstab_;
    }

    void zeichne() {
        if (maßstab_ <= 0) {
            return;
        }
        painter_.save();
        painter_.setClipRect(rahmen_, Qt::IntersectClip);
        painter_.setRenderHint(QPainter::Antialiasing);
        painter_.save();
        painter_.translate(ursprung_);
        painter_.scale(maßstab_, maßstab_);
        maleFlügel();
        painter_.restore();
        beschrifte();
        maleLupe();
        for (std::size_t i = 1; i < Zeichnungspunkte.size(); ++i) {
            malePunkt(static_cast<int>(i), Zeichnungspunkte[i], Nummernorte[i]);
        }
        painter_.restore();
    }

private:
    [[nodiscard]] QPointF pixel(QPointF ort) const { return ursprung_ + ort * maßstab_; }

    [[nodiscard]] static QPointF inLupe(QPointF ort) {
        return Lupenmitte + (ort - Lupenziel) * Lupenfaktor;
    }

    void setzeSchrift(double höhe, bool fett) {
        QFont schrift = painter_.font();
        schrift.setPixelSize(static_cast<int>(std::max(KleinsteSchriftPixel, höhe * maßstab_)));
        schrift.setBold(fett);
        painter_.setFont(schrift);
    }

    /// The wing with its cells and the base line; the painter's unit is the millimetre.
    void maleFlügel() {
        tarvel::maleFlügel(painter_, Zeichnungsfarben::zeichnung(palette_));
        maleZellen(painter_, farben_.zelle);
        QPen grundlinie(farben_.streckeA, 0.02);
        grundlinie.setDashPattern({6, 4});
        painter_.setPen(grundlinie);
        painter_.drawLine(Zeichnungspunkte[1], Zeichnungspunkte[2]);
    }

    /// Writes into a box of width @p breite whose left edge, middle or right edge is at @p ort.
    void schreibe(const QString& text, QPointF ort, Qt::AlignmentFlag bündig, double breite = 4) {
        const double weit = breite * maßstab_;
        const double hoch = 4.0 * painter_.fontMetrics().height();
        const QPointF mitte = pixel(ort);
        const double links = bündig == Qt::AlignHCenter ? weit / 2
                             : bündig == Qt::AlignRight ? weit
                                                        : 0;
        painter_.drawText(QRectF(mitte.x() - links, mitte.y() - hoch / 2, weit, hoch),
                          int{bündig} | int{Qt::AlignVCenter} | int{Qt::TextWordWrap}, text);
    }

    void beschrifte() {
        setzeSchrift(Schrifthöhe, false);
        painter_.setPen(farben_.schrift);
        schreibe(texte_(Meldung::Radialzelle), {2.35, 0.41}, Qt::AlignHCenter);
        schreibe(texte_(Meldung::Discoidalzelle), {3.99, 1.52}, Qt::AlignHCenter, 1.4);
        schreibe(texte_(Meldung::Cubitalzelle) + u" 3"_s, {2.02, 1.2}, Qt::AlignRight);
        painter_.setPen(QPen(farben_.blass, 0.012 * maßstab_));
        painter_.drawLine(pixel({2.06, 1.2}), pixel({2.62, 1.2}));
        painter_.setPen(farben_.blass);
        schreibe(u"← "_s + texte_(Meldung::Flügelspitze), {0.3, 1.62}, Qt::AlignLeft);
        schreibe(texte_(Meldung::Flügelwurzel) + u" →"_s, {9.75, 1.48}, Qt::AlignRight);
    }

    void maleLupe() {
        const QPointF mitte = pixel(Lupenmitte);
        const double radius = Lupenradius * maßstab_;
        const double zielradius = Lupenzielradius * maßstab_;
        const QPointF ziel = pixel(Lupenziel);

        // The two lines that touch both circles tell what is magnified.
        painter_.setPen(QPen(farben_.blass, 0.012 * maßstab_));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawEllipse(ziel, zielradius, zielradius);
        QLineF achse(ziel, mitte);
        const double öffnung =
            std::acos(std::clamp((zielradius - radius) / achse.length(), -1.0, 1.0));
        for (const double winkel : {-öffnung, öffnung}) {
            const double richtung = std::atan2(achse.dy(), achse.dx()) + winkel;
            const QPointF quer(std::cos(richtung), std::sin(richtung));
            painter_.drawLine(ziel + quer * zielradius, mitte + quer * radius);
        }

        QPainterPath kreis;
        kreis.addEllipse(mitte, radius, radius);
        painter_.fillPath(kreis, palette_.color(QPalette::Window));
        painter_.save();
        painter_.setClipPath(kreis, Qt::IntersectClip);
        painter_.translate(pixel(inLupe({0, 0})));
        painter_.scale(maßstab_ * Lupenfaktor, maßstab_ * Lupenfaktor);
        maleFlügel();
        const auto strecke = [&](std::size_t von, std::size_t nach, const QColor& farbe) {
            painter_.setPen(QPen(farbe, 0.05, Qt::SolidLine, Qt::FlatCap));
            painter_.drawLine(Zeichnungspunkte[von], Zeichnungspunkte[nach]);
        };
        strecke(5, 6, farben_.streckeA);
        strecke(6, 7, farben_.streckeB);
        painter_.restore();
        painter_.setPen(QPen(farben_.schrift, 0.025 * maßstab_));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawEllipse(mitte, radius, radius);

        for (std::size_t i = 0; i < Lupennummern.size(); ++i) {
            const int nummer = static_cast<int>(i) + 5;
            malePunkt(nummer, inLupe(Zeichnungspunkte[i + 5]), Lupennummern[i]);
        }
        setzeSchrift(1.3 * Schrifthöhe, true);
        const QPointF a = inLupe((Zeichnungspunkte[5] + Zeichnungspunkte[6]) / 2);
        const QPointF b = inLupe((Zeichnungspunkte[6] + Zeichnungspunkte[7]) / 2);
        painter_.setPen(farben_.streckeA);
        schreibe(u"a"_s, a + QPointF(0.14, 0.24), Qt::AlignHCenter);
        painter_.setPen(farben_.streckeB);
        schreibe(u"b"_s, b + QPointF(0.02, -0.22), Qt::AlignHCenter);
    }

    void malePunkt(int nummer, QPointF punkt, QPointF scheibe) {
        const QPointF ort = pixel(punkt);
        const QPointF mitte = pixel(scheibe);
        setzeSchrift(1.1 * Schrifthöhe, true);
        const double radius =
            std::max(Scheibenradius * maßstab_, 0.62 * painter_.fontMetrics().height());
        painter_.setPen(QPen(farben_.punkt, 0.02 * maßstab_));
        painter_.drawLine(mitte, ort);
        painter_.setBrush(farben_.punkt);
        painter_.setPen(QPen(palette_.color(QPalette::Window), 0.018 * maßstab_));
        painter_.drawEllipse(ort, 0.06 * maßstab_, 0.06 * maßstab_);
        painter_.setPen(Qt::NoPen);
        painter_.drawEllipse(mitte, radius, radius);
        painter_.setPen(farben_.nummer);
        painter_.drawText(QRectF(mitte.x() - radius, mitte.y() - radius, 2 * radius, 2 * radius),
                          Qt::AlignCenter, QString::number(nummer));
    }

    QPainter& painter_;
    const QPalette& palette_;
    const Texte& texte_;
    Farben farben_;
    QRectF rahmen_;
    double maßstab_ = 0;
    QPointF ursprung_;
};

} // namespace

void maleMessHilfe(QPainter& painter, const QRectF& rahmen, const QPalette& palette,
                   const Texte& texte) {
    Zeichner(painter, rahmen, palette, texte).zeichne();
}

} // namespace tarvel
