#include "evaluation/diagrammdatei.h"

#include "platform/dateiausgabe.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Bildbreite = 2000;     ///< pixels
constexpr double BreiteInMm = 170;   ///< of a page in print
constexpr int PunkteJeMeter = 11811; ///< 300 dpi

QSizeF aufBreite(const QSizeF& größe, double breite) {
    const QSizeF gültig = größe.isEmpty() ? QSizeF(1, 1) : größe;
    return {breite, std::max(1.0, breite * gültig.height() / gültig.width())};
}

void alsPng(QIODevice& ziel, const QSizeF& größe, const Diagrammmaler& maler) {
    diagrammbild(größe, maler).save(&ziel, "PNG");
}

void alsSvg(QIODevice& ziel, const QSizeF& größe, const QString& titel,
            const Diagrammmaler& maler) {
    const QRectF rahmen(QPointF(), aufBreite(größe, 900));
    QSvgGenerator svg;
    svg.setOutputDevice(&ziel);
    svg.setTitle(titel);
    svg.setSize(rahmen.size().toSize());
    svg.setViewBox(rahmen);
    QPainter painter(&svg);
    maler(painter, rahmen);
}

void alsPdf(QIODevice& ziel, const QSizeF& größe, const QString& titel,
            const Diagrammmaler& maler) {
    QPdfWriter pdf(&ziel);
    pdf.setTitle(titel);
    pdf.setPageSize(
        QPageSize(aufBreite(größe, BreiteInMm), QPageSize::Millimeter, {}, QPageSize::ExactMatch));
    pdf.setPageMargins({});
    QPainter painter(&pdf);
    maler(painter, QRectF(0, 0, pdf.width(), pdf.height()));
}

} // namespace

QString formatname(Diagrammformat format) {
    return format == Diagrammformat::PNG   ? u"PNG"_s
           : format == Diagrammformat::SVG ? u"SVG"_s
                                           : u"PDF"_s;
}

QImage diagrammbild(const QSizeF& größe, const Diagrammmaler& maler) {
    const QSize pixel = aufBreite(größe, Bildbreite).toSize();
    QImage bild(pixel, QImage::Format_RGB32);
    bild.fill(Qt::white);
    bild.setDotsPerMeterX(PunkteJeMeter);
    bild.setDotsPerMeterY(PunkteJeMeter);
    QPainter painter(&bild);
    maler(painter, QRectF(QPointF(), pixel));
    return bild;
}

QString speichereDiagramm(const QString& pfad, Diagrammformat format, const QSizeF& größe,
                          const QString& titel, const Diagrammmaler& maler) {
    // The writers do not tell when their target is full; they get one that never is.
    QBuffer inhalt;
    inhalt.open(QIODevice::WriteOnly);
    switch (format) {
    case Diagrammformat::PNG:
        alsPng(inhalt, größe, maler);
        break;
    case Diagrammformat::SVG:
        alsSvg(inhalt, größe, titel, maler);
        break;
    case Diagrammformat::PDF:
        alsPdf(inhalt, größe, titel, maler);
        break;
    }
    return schreibeDatei(pfad, inhalt.data()).value_or(QString());
}

} // namespace tarvel
