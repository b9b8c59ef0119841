#include "print/protokollseite.h"

#include <QPainter>

namespace tarvel {

namespace {

class Blattzeichner {
public:
    Blattzeichner(QPainter& painter, const Protokolldaten& daten)
        : p_(painter)
        , d_(daten)
        , satz_(daten.einstellungen.SchriftArt, daten.einstellungen.SchriftKursiv) {}

    void linie(const Protokolllinie& l) {
        p_.setPen(QPen(Qt::black, l.breite, Qt::SolidLine, Qt::SquareCap));
        p_.drawLine(l.linie);
    }

    void text(const Protokolltext& t) {
        p_.save();
        p_.translate(t.rahmen.left(), t.rahmen.top() + Protokollsatz::grundlinie(t.grad));
        p_.scale(1 / Schriftfeinheit, 1 / Schriftfeinheit);
        p_.setPen(Qt::black);
        p_.setFont(satz_.schrift(t.grad, t.fett));
        p_.drawText(QPointF(), t.text);
        p_.restore();
    }

    void diagramm(const Diagrammrahmen& d) {
        QFont schrift(d_.einstellungen.SchriftArt);
        schrift.setItalic(d_.einstellungen.SchriftKursiv);
        const Diagrammstil stil = Diagrammstil::schwarzweiß(schrift);
        if (d.art == Protokolldiagramm::Korrel) {
            maleKorrel(p_, d.rahmen, d_.korrel, stil);
        } else {
            maleKurven(p_, d.rahmen, d_.kurven, stil);
        }
    }

    void flügel(const Flügelrahmen& f) {
        const Anhangflügel& flügel = d_.anhang.flügel[f.flügel];
        constexpr double Rahmenbreite = 0.12;
        const QColor farbe = flügel.ausgelassen ? Qt::gray : Qt::black;
        p_.setBrush(Qt::NoBrush);
        p_.setPen(QPen(farbe, Rahmenbreite));
        p_.drawRect(f.zelle);
        if (!flügel.größe.isEmpty()) {
            QRectF ziel(QPointF(), QSizeF(flügel.größe).scaled(f.bild.size(), Qt::KeepAspectRatio));
            ziel.moveCenter(f.bild.center());
            if (!flügel.bild.isNull()) {
                p_.drawImage(ziel, flügel.bild);
            }
            punkte(flügel.punkte, ziel, ziel.width() / flügel.größe.width());
        }
        if (flügel.ausgelassen) {
            constexpr double Strichbreite = 0.35;
            p_.setPen(QPen(farbe, Strichbreite));
            p_.drawLine(f.zelle.bottomLeft(), f.zelle.topRight());
        }
    }

private:
    /// Crosses with an edge of paper, so that they are seen on a dark scan too.
    void punkte(const std::vector<QPointF>& orte, const QRectF& ziel, double maßstab) {
        constexpr double Arm = 0.8;
        constexpr double Strich = 0.15;
        for (const auto& [farbe, breite] :
             {std::pair{Qt::white, 3 * Strich}, {Qt::black, Strich}}) {
            p_.setPen(QPen(farbe, breite, Qt::SolidLine, Qt::FlatCap));
            for (const QPointF ort : orte) {
                const QPointF mitte = ziel.topLeft() + ort * maßstab;
                p_.drawLine(mitte - QPointF(Arm, 0), mitte + QPointF(Arm, 0));
                p_.drawLine(mitte - QPointF(0, Arm), mitte + QPointF(0, Arm));
            }
        }
    }

    QPainter& p_;
    const Protokolldaten& d_;
    Protokollsatz satz_;
};

} // namespace

void maleProtokoll(QPainter& painter, const Protokolldaten& daten, const Briefkopfgrafik& grafik,
                   int nummer) {
    maleSeite(painter, protokollseite(daten, grafik, nummer), daten, grafik);
}

void maleSeite(QPainter& painter, const Protokollseite& seite, const Protokolldaten& daten,
               const Briefkopfgrafik& grafik) {
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    Blattzeichner maler(painter, daten);
    // In the order of reading, which is that of a PDF for whoever has it read aloud.
    if (!seite.briefkopfrahmen.isEmpty()) {
        maleBriefkopf(painter, seite.briefkopf, grafik);
    }
    for (const Protokolllinie& l : seite.linien) {
        maler.linie(l);
    }
    for (const Flügelrahmen& f : seite.flügel) {
        maler.flügel(f);
    }
    auto diagramm = seite.diagramme.begin();
    for (const Protokolltext& t : seite.texte) {
        while (diagramm != seite.diagramme.end() && diagramm->rahmen.top() < t.rahmen.top()) {
            maler.diagramm(*diagramm++);
        }
        maler.text(t);
    }
    while (diagramm != seite.diagramme.end()) {
        maler.diagramm(*diagramm++);
    }
    painter.restore();
}

} // namespace tarvel
