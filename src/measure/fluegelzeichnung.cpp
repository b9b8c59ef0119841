#include "measure/fluegelzeichnung.h"

#include "platform/vektorbild.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <cmath>

namespace tarvel {

namespace {

using namespace Qt::StringLiterals;

/// The file as it came; empty when it is missing.
QByteArray inhalt(const QString& pfad) {
    QFile datei(pfad);
    return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray();
}

/// In pixels, those of the pictures that stand in for the drawings in a build that cannot draw
/// them. The build makes them in these sizes.
constexpr std::array Bildbreiten{960, 2400};

/// A picture in red, green and blue, in which the colours stand for @p farben.
void färbe(QImage& bild, const Zeichnungsfarben& farben) {
    const QRgb rot = farben.häutchen.rgb();
    const QRgb grün = farben.rand.rgb();
    const QRgb blau = farben.adern.rgb();
    for (int y = 0; y < bild.height(); ++y) {
        auto* zeile = reinterpret_cast<QRgb*>(bild.scanLine(y));
        std::transform(zeile, zeile + bild.width(), zeile, [=](QRgb p) {
            const auto kanal = [p](int r, int g, int b) {
                return std::min((qRed(p) * r + qGreen(p) * g + qBlue(p) * b) / 255, qAlpha(p));
            };
            return qRgba(kanal(qRed(rot), qRed(grün), qRed(blau)),
                         kanal(qGreen(rot), qGreen(grün), qGreen(blau)),
                         kanal(qBlue(rot), qBlue(grün), qBlue(blau)), qAlpha(p));
        });
    }
}

/// Paints one of the drawings, whose red, green and blue stand for @p farben.
void male(QPainter& painter, const QString& name, const Zeichnungsfarben& farben) {
    const QString ort = u":/tarvel/wing/"_s + name;
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (kannSvg()) {
        QByteArray svg = inhalt(ort + u".svg"_s);
        // With the quotation mark: a colour put in must not be taken for the next one.
        svg.replace("#f00\"", farben.häutchen.name().toLatin1() + '"');
        svg.replace("#0f0\"", farben.rand.name().toLatin1() + '"');
        svg.replace("#00f\"", farben.adern.name().toLatin1() + '"');
        Vektorbild(svg).male(painter, Zeichnungsrahmen);
    } else {
        const double maßstab = std::sqrt(std::abs(painter.deviceTransform().determinant()));
        const int breite = static_cast<int>(std::lround(Zeichnungsrahmen.width() * maßstab));
        const auto* genug = std::lower_bound(Bildbreiten.begin(), Bildbreiten.end() - 1, breite);
        QImage bild(ort + u"-%1.png"_s.arg(*genug));
        if (breite < bild.width()) {
            bild = bild.scaledToWidth(std::max(breite, 1), Qt::SmoothTransformation);
        }
        bild.convertTo(QImage::Format_ARGB32_Premultiplied);
        färbe(bild, farben);
        painter.drawImage(Zeichnungsrahmen, bild);
    }
    painter.restore();
}

} // namespace

Zeichnungsfarben Zeichnungsfarben::zeichnung(const QPalette& palette) {
    const QColor vorn = palette.color(QPalette::WindowText);
    const QColor hinten = palette.color(QPalette::Window);
    const auto gemischt = [&](float anteil) {
        return QColor::fromRgbF(std::lerp(hinten.redF(), vorn.redF(), anteil),
                                std::lerp(hinten.greenF(), vorn.greenF(), anteil),
                                std::lerp(hinten.blueF(), vorn.blueF(), anteil));
    };
    return {.häutchen = gemischt(0.06F), .rand = gemischt(0.45F), .adern = gemischt(0.72F)};
}

void maleFlügel(QPainter& painter, const Zeichnungsfarben& farben) {
    male(painter, u"fluegel"_s, farben);
}

void maleZellen(QPainter& painter, const QColor& farbe) {
    painter.save();
    painter.setOpacity(painter.opacity() * farbe.alphaF());
    male(painter, u"zellen"_s, {farbe, farbe, farbe});
    painter.restore();
}

} // namespace tarvel
