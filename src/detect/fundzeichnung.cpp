#include "detect/fundzeichnung.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace tarvel {

namespace {

const QColor Sicher(0, 90, 200);
const QColor Fraglich(200, 70, 0);
/// Nothing is drawn smaller than this, in pixels of the drawing.
constexpr double KleinstesKreuz = 3;

/// A number that shows on veins and paper alike.
void schreibe(QPainter& painter, QPointF ort, const QString& text, const QColor& farbe) {
    QPainterPath pfad;
    pfad.addText(ort, painter.font(), text);
    painter.strokePath(pfad, QPen(Qt::white, painter.fontMetrics().height() / 6.0));
    painter.fillPath(pfad, farbe);
}

class Zeichnung {
public:
    Zeichnung(QPainter& painter, const Fundzeichnungswahl& wahl, double teiler)
        : painter_(painter)
        , wahl_(wahl)
        , teiler_(teiler) {}

    void male(const Flügelfund& fund, int nummer) {
        QPolygonF umriss;
        for (const QPointF& ecke : fund.umriss) {
            umriss << ecke / teiler_;
        }
        const QRectF rahmen = umriss.boundingRect();
        const double länge = std::max(rahmen.width(), rahmen.height());
        const bool sicher = fund.stand == Flügelfund::Stand::Sicher;
        const QColor farbe = sicher ? Sicher : Fraglich;
        painter_.setPen(
            QPen(farbe, std::max(1.0, länge / 300), sicher ? Qt::SolidLine : Qt::DashLine));
        painter_.drawPolygon(umriss);
        setzeSchrift(länge / 14);
        schreibe(painter_, rahmen.topLeft() + QPointF(0, länge / 14), QString::number(nummer),
                 farbe);
        setzeSchrift(länge / 32);
        for (int p = wahl_.ersterPunkt; p <= wahl_.letzterPunkt; ++p) {
            const auto i = static_cast<std::size_t>(p - 1);
            malePunkt(fund.vorschlag.punkte[i] / teiler_, p,
                      fund.vorschlag.fehler[i] > wahl_.höchsterFehler,
                      std::max(KleinstesKreuz, länge / 80));
        }
    }

private:
    void setzeSchrift(double höhe) {
        QFont schrift = painter_.font();
        schrift.setPixelSize(std::max(8, static_cast<int>(std::lround(höhe))));
        painter_.setFont(schrift);
    }

    /// A cross that is open in the middle, so that the vein below it stays visible.
    void malePunkt(QPointF ort, int nummer, bool fraglich, double arm) {
        const QColor farbe = fraglich ? Fraglich : Sicher;
        for (const auto& [stift, breite] :
             {std::pair{QColor(Qt::white), arm / 2}, {farbe, arm / 5}}) {
            painter_.setPen(QPen(stift, breite));
            for (const QPointF richtung : {QPointF(1, 0), QPointF(-1, 0), {0, 1}, {0, -1}}) {
                painter_.drawLine(ort + richtung * arm / 3, ort + richtung * arm);
            }
            if (fraglich) {
                painter_.drawEllipse(ort, 1.6 * arm, 1.6 * arm);
            }
        }
        schreibe(painter_, ort + QPointF(1.2, -1.2) * arm,
                 QString::number(nummer) + (fraglich ? QStringLiteral(" !") : QString()), farbe);
    }

    QPainter& painter_;
    const Fundzeichnungswahl& wahl_;
    double teiler_;
};

} // namespace

QImage fundzeichnung(const Pixelquelle& quelle, std::span<const Flügelfund> funde,
                     const Fundzeichnungswahl& wahl) {
    const QSize größe = quelle.größe();
    const int teiler = (std::max(größe.width(), größe.height()) - 1) / wahl.längsteSeite + 1;
    const Graubild grau = verkleinert(quelle, QRect(QPoint(), größe), teiler);
    QImage bild(grau.breite, grau.höhe, QImage::Format_RGB32);
    if (bild.isNull()) {
        return bild;
    }
    for (int y = 0; y < grau.höhe; ++y) {
        const std::uint8_t* von = grau.zeile(y);
        auto* nach = reinterpret_cast<QRgb*>(bild.scanLine(y));
        for (int x = 0; x < grau.breite; ++x) {
            nach[x] = qRgb(von[x], von[x], von[x]);
        }
    }
    QPainter painter(&bild);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    Zeichnung zeichnung(painter, wahl, teiler);
    for (std::size_t i = 0; i < funde.size(); ++i) {
        zeichnung.male(funde[i], static_cast<int>(i) + 1);
    }
    return bild;
}

} // namespace tarvel
