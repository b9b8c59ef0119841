#include "print/briefkopfbild.h"

#include <QFont>
#include <QFontMetricsF>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>

namespace tarvel {

namespace {

// Fonts are laid out in whole units of hundredths of a millimetre, fine enough for any printer.
constexpr double Feinheit = 100;
constexpr double MillimeterJePunkt = 25.4 / 72;

// A picture of this width fills the paper's width at 600 dpi; more would only cost time.
constexpr int GrößteBreite = 5000;

QImage leseBild(const QString& datei) {
    QImageReader leser(datei);
    leser.setAutoTransform(true);
    leser.setDecideFormatFromContent(true);
    const QSize größe = leser.size();
    if (größe.isValid() && std::max(größe.width(), größe.height()) > GrößteBreite) {
        leser.setScaledSize(größe.scaled(GrößteBreite, GrößteBreite, Qt::KeepAspectRatio));
    }
    return leser.read();
}

QFont briefkopfschrift(const Briefkopf& kopf) {
    QFont schrift(kopf.SchriftArt);
    schrift.setPixelSize(std::max(1, qRound(kopf.SchriftGröße * MillimeterJePunkt * Feinheit)));
    schrift.setBold(kopf.SchriftFett);
    schrift.setItalic(kopf.SchriftKursiv);
    schrift.setHintingPreference(QFont::PreferNoHinting);
    return schrift;
}

} // namespace

Briefkopfgrafik::Briefkopfgrafik() = default;
Briefkopfgrafik::Briefkopfgrafik(Briefkopfgrafik&&) noexcept = default;
Briefkopfgrafik& Briefkopfgrafik::operator=(Briefkopfgrafik&&) noexcept = default;
Briefkopfgrafik::~Briefkopfgrafik() = default;

Briefkopfgrafik::Briefkopfgrafik(const Briefkopf& kopf) {
    const QString datei = kopf.Ikone == Verband::Andere ? kopf.Datei : emblem(kopf.Ikone);
    if (datei.isEmpty()) {
        return;
    }
    if (datei.endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive)) {
        zeichnung_ = std::make_unique<QSvgRenderer>(datei);
        zeichnung_->setAspectRatioMode(Qt::KeepAspectRatio);
        format_ = zeichnung_->isValid() ? zeichnung_->viewBoxF().size() : QSizeF();
    } else {
        bild_ = leseBild(datei);
        format_ = bild_.size();
    }
}

void Briefkopfgrafik::paint(QPainter& painter, const QRectF& rahmen) const {
    if (!vorhanden()) {
        return;
    }
    if (zeichnung_) {
        zeichnung_->render(&painter, rahmen);
    } else {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(rahmen, bild_);
    }
}

QRectF Briefkopfgrafik::rahmen(const Briefkopf& kopf) const {
    if (!vorhanden()) {
        return {};
    }
    const double breite = std::max(1.0, PapierA4.width() - kopf.GrafikLinks);
    return {QPointF(kopf.GrafikLinks, kopf.GrafikOben),
            format_.scaled(breite, Grafikhöhe, Qt::KeepAspectRatio)};
}

void paintBriefkopf(QPainter& painter, const Briefkopf& kopf, const Briefkopfgrafik& grafik) {
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    grafik.paint(painter, grafik.rahmen(kopf));

    painter.translate(kopf.TextLinks, kopf.TextOben);
    painter.scale(1 / Feinheit, 1 / Feinheit);
    painter.setPen(Qt::black);
    painter.setFont(briefkopfschrift(kopf));
    const QFontMetricsF maße(painter.font());
    double grundlinie = maße.ascent();
    const QStringList zeilen = briefkopfzeilen(kopf);
    for (const QString& zeile : zeilen) {
        painter.drawText(QPointF(0, grundlinie), zeile);
        grundlinie += maße.lineSpacing();
    }
    painter.restore();
}

} // namespace tarvel
