#include "measure/marken.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

namespace tarvel {
namespace {

constexpr double ArmInnen = 3.5;
constexpr double ArmAußen = 10.0;
constexpr double Ringradius = 13.0;
constexpr double Schildrand = 5.0;
constexpr double Vorschlagradius = 7.0;
constexpr double Rautenradius = 16.0;

// Vermilion: stands apart from blue, green and grey for colour-blind eyes too.
const QColor Kern(0x10, 0x10, 0x10);
const QColor Hell(0xFF, 0xFF, 0xFF);
const QColor Auswahl(0xD5, 0x5E, 0x00);

QFont nummernschrift(QFont schrift) {
    schrift.setBold(true);
    return schrift;
}

/// A ring in pieces, open in the middle, where the point lies.
QPainterPath vorschlagsring(QPointF ort) {
    constexpr int Stücke = 6;
    constexpr double Bogen = 34; // degrees
    const QRectF kreis(ort - QPointF(Vorschlagradius, Vorschlagradius),
                       QSizeF(Vorschlagradius, Vorschlagradius) * 2);
    QPainterPath pfad;
    for (int i = 0; i < Stücke; ++i) {
        const double von = i * 360.0 / Stücke;
        pfad.arcMoveTo(kreis, von);
        pfad.arcTo(kreis, von, Bogen);
    }
    return pfad;
}

/// A square on its corner around the point.
QPainterPath raute(QPointF ort) {
    QPainterPath pfad(ort + QPointF(0, -Rautenradius));
    for (const QPointF ecke : {QPointF(1, 0), QPointF(0, 1), QPointF(-1, 0)}) {
        pfad.lineTo(ort + ecke * Rautenradius);
    }
    pfad.closeSubpath();
    return pfad;
}

QPainterPath kreuz(QPointF ort) {
    QPainterPath pfad;
    for (const QPointF arm : {QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1), QPointF(0, -1)}) {
        pfad.moveTo(ort + arm * ArmInnen);
        pfad.lineTo(ort + arm * ArmAußen);
    }
    return pfad;
}

QString beschriftung(const Marke& marke) {
    return marke.fraglich ? marke.text + u'?' : marke.text;
}

/// Place of the text: above and to the right of the cross.
QRectF textfeld(const QFont& schrift, const QString& text, QPointF ort) {
    const QFontMetricsF maße(schrift);
    const QSizeF größe(maße.horizontalAdvance(text), maße.height());
    return {ort + QPointF(Ringradius - 2, -Ringradius + 4 - größe.height()), größe};
}

void maleHofUndKern(QPainter& painter, const QPainterPath& pfad, const QColor& kern,
                    double stärke) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Hell, stärke + 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(pfad);
    painter.setPen(QPen(kern, stärke, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    painter.drawPath(pfad);
}

void maleSchild(QPainter& painter, const QRectF& feld, const QColor& grund) {
    painter.setPen(QPen(Hell, 1.5));
    painter.setBrush(grund);
    painter.drawRoundedRect(feld.adjusted(-Schildrand, -1, Schildrand, 1), 3, 3);
}

} // namespace

void maleMarke(QPainter& painter, const QFont& schrift, const Marke& marke, QPointF ort) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    maleHofUndKern(painter, marke.vorgeschlagen ? vorschlagsring(ort) : kreuz(ort), Kern, 1.3);
    if (marke.fraglich) {
        maleHofUndKern(painter, raute(ort), Kern, 1.5);
    }
    if (marke.gewählt) {
        QPainterPath ring;
        ring.addEllipse(ort, Ringradius, Ringradius);
        maleHofUndKern(painter, ring, Auswahl, 2.5);
    }
    if (const QString text = beschriftung(marke); !text.isEmpty()) {
        const QFont nummern = nummernschrift(schrift);
        const QRectF feld = textfeld(nummern, text, ort);
        const QPointF grundlinie(feld.left(), feld.top() + QFontMetricsF(nummern).ascent());
        if (marke.gewählt) {
            maleSchild(painter, feld, Kern);
        }
        QPainterPath ziffern;
        ziffern.addText(grundlinie, nummern, text);
        if (!marke.gewählt) {
            painter.setPen(QPen(Hell, 3.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter.setBrush(Qt::NoBrush);
            painter.drawPath(ziffern);
        }
        painter.fillPath(ziffern, marke.gewählt ? Hell : Kern);
        if (marke.aktiv) {
            QPainterPath strich(grundlinie + QPointF(0, 2.5));
            strich.lineTo(grundlinie + QPointF(feld.width(), 2.5));
            if (marke.gewählt) {
                painter.strokePath(strich, QPen(Hell, 1.5));
            } else {
                maleHofUndKern(painter, strich, Kern, 1.5);
            }
        }
    }
    painter.restore();
}

void maleErledigte(QPainter& painter, const QFont& schrift, const Marke& marke, QPointF ort) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(0.6);
    if (marke.text.isEmpty()) {
        painter.setPen(QPen(Hell, 1.5));
        painter.setBrush(marke.ausgelassen ? QBrush(Qt::NoBrush) : QBrush(Kern));
        painter.drawEllipse(ort, 3, 3);
    } else {
        QRectF feld = textfeld(schrift, marke.text, ort);
        feld.moveCenter(ort);
        maleSchild(painter, feld, marke.ausgelassen ? Hell : Kern);
        painter.setOpacity(1.0);
        QFont nummern = schrift;
        nummern.setStrikeOut(marke.ausgelassen);
        painter.setPen(marke.ausgelassen ? Kern : Hell);
        painter.setFont(nummern);
        painter.drawText(feld, Qt::AlignCenter, marke.text);
        maleZweifel(painter,
                    {feld.right() + Schildrand + 2, feld.top(), feld.height(), feld.height()},
                    marke.zweifel);
    }
    painter.restore();
}

void maleZweifel(QPainter& painter, const QRectF& feld, Zweifelsgrad grad) {
    if (grad == Zweifelsgrad::Keiner) {
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const double rand = feld.width() / 10;
    const QRectF f = feld.adjusted(rand, rand, -rand, -rand);
    const QPointF oben(f.center().x(), f.top());
    const bool fraglich = grad == Zweifelsgrad::Fraglich;
    QPolygonF umriss{oben, f.bottomRight(), f.bottomLeft()};
    if (!fraglich) {
        umriss = {oben,
                  {f.right(), f.center().y()},
                  {f.center().x(), f.bottom()},
                  {f.left(), f.center().y()}};
    }
    painter.setPen(QPen(fraglich ? Kern : Auswahl, fraglich ? 1 : 2, Qt::SolidLine, Qt::RoundCap,
                        Qt::RoundJoin));
    painter.setBrush(fraglich ? Auswahl : Hell);
    painter.drawPolygon(umriss);
    if (fraglich) {
        const double h = f.height();
        painter.setPen(QPen(Hell, h / 7, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(oben + QPointF(0, h * 0.38), oben + QPointF(0, h * 0.65));
        painter.drawPoint(oben + QPointF(0, h * 0.85));
    }
    painter.restore();
}

QRectF markenRahmen(const QFont& schrift, const Marke& marke, QPointF ort) {
    const QFont nummern = nummernschrift(schrift);
    QRectF feld =
        textfeld(nummern, beschriftung(marke), ort).adjusted(-Schildrand, 0, Schildrand, 0);
    // As wide again on both sides as the sign of doubt beside the plate.
    feld |= QRectF(ort - QPointF(feld.width() / 2, feld.height() / 2), feld.size())
                .adjusted(-feld.height(), 0, feld.height(), 0);
    feld |=
        QRectF(ort - QPointF(Rautenradius, Rautenradius), QSizeF(Rautenradius, Rautenradius) * 2);
    return feld.adjusted(-4, -4, 4, 4);
}

void maleRahmen(QPainter& painter, const QRectF& rahmen, double stärke) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Hell, stärke * 3, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(rahmen);
    painter.setPen(QPen(Kern, stärke, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(rahmen);
    painter.restore();
}

} // namespace tarvel
