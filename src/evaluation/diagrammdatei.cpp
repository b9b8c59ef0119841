#include "evaluation/diagrammdatei.h"

#include "evaluation/zeichenflaeche.h"
#include "platform/dateiausgabe.h"
#include "platform/vektorbild.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Bildbreite = 2000;     ///< pixels
constexpr double BreiteInMm = 170;   ///< of a page in print
constexpr int PunkteJeMeter = 11811; ///< 300 dpi

// Units of the chart.
constexpr double Unterschriftszeile = 20;
constexpr double Unterschriftsrand = 16;

QSizeF aufBreite(const QSizeF& größe, double breite) {
    const QSizeF gültig = größe.isEmpty() ? QSizeF(1, 1) : größe;
    return {breite, std::max(1.0, breite * gültig.height() / gültig.width())};
}

void alsPng(QIODevice& ziel, const QSizeF& größe, const QString& titel,
            const Diagrammmaler& maler) {
    QImage bild = diagrammbild(größe, maler);
    bild.setText(u"Title"_s, titel);
    bild.save(&ziel, "PNG");
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

const std::vector<Diagrammformat>& diagrammformate() {
    static const std::vector<Diagrammformat> formate =
        kannSvg() ? std::vector{Diagrammformat::PNG, Diagrammformat::SVG, Diagrammformat::PDF}
                  : std::vector{Diagrammformat::PNG, Diagrammformat::PDF};
    return formate;
}

QString formatname(Diagrammformat format) {
    return format == Diagrammformat::PNG   ? u"PNG"_s
           : format == Diagrammformat::SVG ? u"SVG"_s
                                           : u"PDF"_s;
}

QString dateiendung(Diagrammformat format) {
    return u'.' + formatname(format).toLower();
}

Diagrammformat formatNach(const QString& pfad) {
    const auto& formate = diagrammformate();
    const auto ort = std::find_if(formate.begin(), formate.end(), [&](Diagrammformat format) {
        return pfad.endsWith(dateiendung(format), Qt::CaseInsensitive);
    });
    return ort == formate.end() ? Diagrammformat::PNG : *ort;
}

Diagrammmaler mitUnterschrift(Diagrammmaler maler, Bildunterschrift unterschrift,
                              Diagrammstil stil) {
    return [maler = std::move(maler), u = std::move(unterschrift),
            stil = std::move(stil)](QPainter& painter, const QRectF& rahmen) {
        const QFont schrift = diagrammschrift(stil, Schriftgrad::Klein);
        const Diagrammmaß ganz = Diagrammmaß::für(rahmen);
        const double breite = ganz.größe.width() - 2 * Unterschriftsrand;
        QStringList zeilen{eingepasst(breite, schrift,
                                      [&](double wortbreite) {
                                          QStringList teile{
                                              gekürzt(u.untersuchung, schrift, wortbreite),
                                              gekürzt(u.rasse, schrift, wortbreite), u.tiere,
                                              u.datum};
                                          teile.removeAll(QString());
                                          return teile.join(u"  ·  "_s);
                                      }),
                           gekürzt(u.bemerkungen, schrift, breite)};
        zeilen.removeAll(QString());
        if (zeilen.empty() || ganz.faktor <= 0) {
            maler(painter, rahmen);
            return;
        }
        const double höhe = Unterschriftszeile * static_cast<double>(zeilen.size()) + 6;
        QRectF oben = rahmen;
        oben.setHeight(rahmen.height() - höhe * ganz.faktor);
        maler(painter, oben);
        Zeichenfläche z(painter, {ganz.faktor, oben.bottomLeft(), QSizeF(ganz.größe.width(), höhe)},
                        stil);
        z.linie({Unterschriftsrand, 1}, {Unterschriftsrand + breite, 1}, stil.gitter, 1);
        double y = 2 + Unterschriftszeile / 2;
        for (const QString& zeile : zeilen) {
            z.text({Unterschriftsrand, y}, Qt::AlignLeft, zeile, schrift, stil.schrift);
            y += Unterschriftszeile;
        }
    };
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
        alsPng(inhalt, größe, titel, maler);
        break;
    case Diagrammformat::SVG:
        schreibeSvg(inhalt, aufBreite(größe, 900), titel, maler);
        break;
    case Diagrammformat::PDF:
        alsPdf(inhalt, größe, titel, maler);
        break;
    }
    return schreibeDatei(pfad, inhalt.data()).value_or(QString());
}

} // namespace tarvel
