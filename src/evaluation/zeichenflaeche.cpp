#include "evaluation/zeichenflaeche.h"

#include <QFontMetricsF>
#include <QPainterPath>

#include <algorithm>
#include <array>

namespace tarvel {

namespace {

constexpr QSizeF KleinsteGröße(820, 520);
constexpr double HöchstePlatte = 18;

QPointF grundlinie(QPointF anker, Qt::AlignmentFlag bündig, const QString& text,
                   const QFont& schrift) {
    const QFontMetricsF metrik(schrift);
    return {textfläche(anker, bündig, text, schrift).left(),
            anker.y() + (metrik.ascent() - metrik.descent()) / 2};
}

} // namespace

Diagrammmaß Diagrammmaß::für(const QRectF& rahmen) {
    Diagrammmaß maß;
    if (!(rahmen.width() >= 1) || !(rahmen.height() >= 1)) {
        return maß;
    }
    maß.faktor =
        std::min(rahmen.width() / KleinsteGröße.width(), rahmen.height() / KleinsteGröße.height());
    maß.ursprung = rahmen.topLeft();
    maß.größe = rahmen.size() / maß.faktor;
    return maß;
}

QFont diagrammschrift(const Diagrammstil& stil, Schriftgrad grad, bool fett) {
    QFont schrift(stil.schriftart);
    schrift.setPixelSize(grad == Schriftgrad::Klein ? 13 : grad == Schriftgrad::Normal ? 15 : 19);
    schrift.setBold(fett);
    schrift.setItalic(stil.kursiv);
    // Hinted glyphs have other widths at other sizes, and the chart would not look alike.
    schrift.setHintingPreference(QFont::PreferNoHinting);
    return schrift;
}

double textbreite(const QString& text, const QFont& schrift) {
    return QFontMetricsF(schrift).horizontalAdvance(text);
}

QString gekürzt(const QString& text, const QFont& schrift, double breite) {
    return QFontMetricsF(schrift).elidedText(text, Qt::ElideRight, breite);
}

QFont verkleinert(QFont schrift, const QString& text, double breite) {
    constexpr int KleinsteSchrift = 8;
    while (schrift.pixelSize() > KleinsteSchrift && textbreite(text, schrift) > breite) {
        schrift.setPixelSize(schrift.pixelSize() - 1);
    }
    return schrift;
}

QString eingepasst(double breite, const QFont& schrift,
                   const std::function<QString(double wortbreite)>& satz) {
    constexpr std::array Wortbreiten{1e6, 240.0, 180.0, 130.0, 100.0, 75.0, 50.0, 35.0};
    QString text;
    for (const double wortbreite : Wortbreiten) {
        text = satz(wortbreite);
        if (textbreite(text, schrift) <= breite) {
            return text;
        }
    }
    return gekürzt(text, schrift, breite);
}

QRectF textfläche(QPointF anker, Qt::AlignmentFlag bündig, const QString& text,
                  const QFont& schrift) {
    const QFontMetricsF metrik(schrift);
    const double breite = metrik.horizontalAdvance(text);
    const double links = anker.x() - (bündig == Qt::AlignRight     ? breite
                                      : bündig == Qt::AlignHCenter ? breite / 2
                                                                   : 0);
    return {links, anker.y() - metrik.height() / 2, breite, metrik.height()};
}

std::optional<Textort> Textplätze::belege(std::span<const Textort> orte, const QString& text,
                                          const QFont& schrift) {
    for (const Textort& ort : orte) {
        const QRectF fläche = textfläche(ort.anker, ort.bündig, text, schrift);
        const bool frei =
            feld_.contains(fläche) &&
            std::none_of(belegt_.begin(), belegt_.end(),
                         [&fläche](const QRectF& andere) { return andere.intersects(fläche); });
        if (frei) {
            belegt_.push_back(fläche.adjusted(-4, 0, 4, 0));
            return ort;
        }
    }
    return std::nullopt;
}

Zeichenfläche::Zeichenfläche(QPainter& painter, const Diagrammmaß& maß, const Diagrammstil& stil)
    : painter_(painter)
    , stil_(stil) {
    painter_.save();
    painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter_.translate(maß.ursprung);
    painter_.scale(maß.faktor, maß.faktor);
    painter_.setBrush(Qt::NoBrush);
    if (stil_.grund.isValid()) {
        fülle(QRectF(QPointF(), maß.größe), stil_.grund);
    }
}

Zeichenfläche::~Zeichenfläche() {
    painter_.restore();
}

void Zeichenfläche::text(QPointF anker, Qt::AlignmentFlag bündig, const QString& text,
                         const QFont& schrift, const QColor& farbe) {
    painter_.setFont(schrift);
    painter_.setPen(farbe);
    painter_.drawText(grundlinie(anker, bündig, text, schrift), text);
}

void Zeichenfläche::schild(QPointF anker, Qt::AlignmentFlag bündig, const QString& text,
                           const QFont& schrift, const QColor& farbe, double zugabe) {
    if (stil_.grund.isValid()) {
        const QRectF platte =
            textfläche(anker, bündig, text, schrift).adjusted(-3, 0, 3 + zugabe, 0);
        // Fonts with much air must not hide what stands in the rows above and below.
        const double luft = std::max(0.0, platte.height() - HöchstePlatte) / 2;
        fülle(platte.adjusted(0, luft, 0, -luft), stil_.grund);
    }
    this->text(anker, bündig, text, schrift, farbe);
}

void Zeichenfläche::textMitHof(QPointF anker, Qt::AlignmentFlag bündig, const QString& text,
                               const QFont& schrift, const QColor& farbe) {
    if (stil_.grund.isValid()) {
        QPainterPath umriss;
        umriss.addText(grundlinie(anker, bündig, text, schrift), schrift, text);
        painter_.strokePath(umriss,
                            QPen(stil_.grund, 3.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }
    this->text(anker, bündig, text, schrift, farbe);
}

void Zeichenfläche::textHochkant(QPointF mitte, const QString& text, const QFont& schrift,
                                 const QColor& farbe) {
    painter_.save();
    painter_.translate(mitte);
    painter_.rotate(-90);
    this->text({0, 0}, Qt::AlignHCenter, text, schrift, farbe);
    painter_.restore();
}

void Zeichenfläche::linie(QPointF von, QPointF nach, const QColor& farbe, double breite,
                          Qt::PenStyle art) {
    painter_.setPen(QPen(farbe, breite, art, Qt::FlatCap));
    painter_.drawLine(von, nach);
}

void Zeichenfläche::fülle(const QRectF& fläche, const QColor& farbe) {
    painter_.fillRect(fläche, farbe);
}

void Zeichenfläche::rahmen(const QRectF& fläche, const QColor& farbe, double breite,
                           Qt::PenStyle art) {
    painter_.setPen(QPen(farbe, breite, art, Qt::FlatCap, Qt::MiterJoin));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawRect(fläche);
}

void Zeichenfläche::schraffur(const QRectF& fläche, const QColor& farbe, double abstand,
                              double breite) {
    painter_.setPen(QPen(farbe, breite, Qt::SolidLine, Qt::FlatCap));
    // Each line holds the points with x + y = c.
    const double erste = fläche.left() + fläche.top();
    const double letzte = fläche.right() + fläche.bottom();
    for (double c = erste + abstand / 2; c < letzte; c += abstand) {
        const double links = std::max(fläche.left(), c - fläche.bottom());
        const double rechts = std::min(fläche.right(), c - fläche.top());
        painter_.drawLine(QPointF(links, c - links), QPointF(rechts, c - rechts));
    }
}

void Zeichenfläche::keil(QPointF spitze, QPointF richtung, const QColor& farbe) {
    const QPointF quer(-richtung.y(), richtung.x());
    const QPointF ecken[] = {spitze, spitze - richtung * 11 + quer * 6,
                             spitze - richtung * 11 - quer * 6};
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(farbe);
    painter_.drawPolygon(ecken, 3);
}

void Zeichenfläche::urteil(QPointF mitte, bool gut, const QColor& farbe) {
    painter_.setPen(QPen(farbe, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (gut) {
        const QPointF haken[] = {mitte + QPointF(-5, 0), mitte + QPointF(-1.5, 4),
                                 mitte + QPointF(5, -5)};
        painter_.drawPolyline(haken, 3);
        return;
    }
    painter_.drawLine(mitte + QPointF(-4.5, -4.5), mitte + QPointF(4.5, 4.5));
    painter_.drawLine(mitte + QPointF(-4.5, 4.5), mitte + QPointF(4.5, -4.5));
}

} // namespace tarvel
