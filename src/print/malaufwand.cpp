#include "print/malaufwand.h"

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace tarvel {
namespace {

/// Takes what would be painted and counts it.
class Zählwerk final : public QPaintEngine {
public:
    explicit Zählwerk(QSizeF größe)
        : QPaintEngine(AllFeatures)
        , blatt_(QPointF(), größe) {}

    [[nodiscard]] const Malaufwand& aufwand() const { return aufwand_; }

    bool begin(QPaintDevice* /*gerät*/) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState& /*stand*/) override {}
    [[nodiscard]] Type type() const override { return User; }

    using QPaintEngine::drawEllipse;
    using QPaintEngine::drawLines;
    using QPaintEngine::drawPolygon;
    using QPaintEngine::drawRects;

    void drawPath(const QPainterPath& pfad) override {
        QPointF vorher;
        double länge = 0;
        int ecken = 0;
        for (int i = 0; i < pfad.elementCount(); ++i) {
            const QPointF ort = pfad.elementAt(i);
            if (!pfad.elementAt(i).isMoveTo()) {
                länge += strecke(vorher, ort);
                ++ecken;
            }
            vorher = ort;
        }
        zähle(pfad.controlPointRect(), länge, ecken);
    }
    void drawPolygon(const QPointF* punkte, int anzahl, PolygonDrawMode /*art*/) override {
        double länge = 0;
        QRectF rahmen;
        for (int i = 1; i < anzahl; ++i) {
            länge += strecke(punkte[i - 1], punkte[i]);
            rahmen |= QRectF(punkte[i - 1], punkte[i]).normalized();
        }
        zähle(rahmen, länge, anzahl);
    }
    void drawRects(const QRectF* rechtecke, int anzahl) override {
        for (int i = 0; i < anzahl; ++i) {
            QPainterPath pfad;
            pfad.addRect(rechtecke[i]);
            drawPath(pfad);
        }
    }
    void drawEllipse(const QRectF& rahmen) override {
        QPainterPath pfad;
        pfad.addEllipse(rahmen);
        drawPath(pfad);
    }
    void drawLines(const QLineF* linien, int anzahl) override {
        for (int i = 0; i < anzahl; ++i) {
            const std::array enden{linien[i].p1(), linien[i].p2()};
            drawPolygon(enden.data(), 2, PolylineMode);
        }
    }
    void drawPixmap(const QRectF& ziel, const QPixmap& bild, const QRectF& /*quelle*/) override {
        zähleBild(ziel, bild.size());
    }
    void drawImage(const QRectF& ziel, const QImage& bild, const QRectF& /*quelle*/,
                   Qt::ImageConversionFlags /*wie*/) override {
        zähleBild(ziel, bild.size());
    }
    void drawTextItem(const QPointF& ort, const QTextItem& text) override {
        const double höhe = text.ascent() + text.descent();
        const double umriss = strecke({}, {0, höhe}) * UmrissJeHöhe;
        const auto zeichen = static_cast<double>(text.text().size());
        aufwand_.teile += zeichen;
        aufwand_.umriss += zeichen * umriss;
        aufwand_.fläche += aufDemBlatt({ort.x(), ort.y() - text.ascent(), text.width(), höhe});
    }

private:
    static constexpr double UmrissJeHöhe = 8; // of a letter with many curves
    static constexpr double Umkreis = 3;      // of a round end or corner, for the width of its pen
    static constexpr double HöchstensStriche = 10'000; // the toolkit dashes no line more often

    /// On the sheet; what is longer than the way around it is cut off there.
    [[nodiscard]] double strecke(QPointF von, QPointF nach) const {
        const QTransform lage = painter()->combinedTransform();
        const QPointF weg = lage.map(nach) - lage.map(von);
        const double länge = std::hypot(weg.x(), weg.y());
        const double rundherum = 2 * (blatt_.width() + blatt_.height());
        return std::isfinite(länge) ? std::min(länge, rundherum) : rundherum;
    }
    [[nodiscard]] double aufDemBlatt(const QRectF& rahmen) const {
        const QRectF sichtbar = painter()->combinedTransform().mapRect(rahmen) & blatt_;
        return sichtbar.width() * sichtbar.height();
    }
    void zähleBild(const QRectF& ziel, QSize größe) {
        ++aufwand_.teile;
        aufwand_.fläche += aufDemBlatt(ziel) + static_cast<double>(größe.width()) * größe.height();
    }
    void zähle(QRectF rahmen, double länge, int ecken) {
        ++aufwand_.teile;
        if (painter()->brush().style() != Qt::NoBrush) {
            aufwand_.umriss += länge;
            aufwand_.fläche += aufDemBlatt(rahmen);
        }
        const QPen stift = painter()->pen();
        if (stift.style() == Qt::NoPen) {
            return;
        }
        const double halb = std::max(stift.widthF(), 1.0) / 2;
        const double breite = strecke({}, {stift.widthF(), 0});
        double enden = ecken;
        if (stift.style() != Qt::SolidLine) {
            enden += striche(stift, länge, breite);
        }
        aufwand_.umriss += 2 * länge + enden * Umkreis * breite;
        aufwand_.fläche += aufDemBlatt(rahmen.adjusted(-halb, -halb, halb, halb));
    }
    [[nodiscard]] static double striche(const QPen& stift, double länge, double breite) {
        double muster = 0; // in widths of the pen
        const QList<qreal> teile = stift.dashPattern();
        for (const double teil : teile) {
            muster += std::abs(teil);
        }
        muster *= breite;
        return muster > 0 ? std::min(HöchstensStriche, länge / muster) * 2 : HöchstensStriche;
    }

    QRectF blatt_;
    Malaufwand aufwand_;
};

/// A sheet that keeps nothing.
class Zählblatt final : public QPaintDevice {
public:
    explicit Zählblatt(QSizeF größe)
        : größe_(größe.toSize())
        , werk_(größe) {}

    [[nodiscard]] QPaintEngine* paintEngine() const override { return &werk_; }
    [[nodiscard]] const Malaufwand& aufwand() const { return werk_.aufwand(); }

protected:
    [[nodiscard]] int metric(PaintDeviceMetric was) const override {
        constexpr double Zoll = 25.4;
        constexpr int Auflösung = 72; // of print, so that a point is a unit
        switch (was) {
        case PdmWidth:
            return größe_.width();
        case PdmHeight:
            return größe_.height();
        case PdmWidthMM:
            return static_cast<int>(größe_.width() * Zoll / Auflösung);
        case PdmHeightMM:
            return static_cast<int>(größe_.height() * Zoll / Auflösung);
        case PdmNumColors:
            return 1 << 24;
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        default:
            return Auflösung;
        }
    }

private:
    QSize größe_;
    mutable Zählwerk werk_;
};

} // namespace

Malaufwand malaufwand(QSizeF größe, const std::function<void(QPainter&)>& male) {
    Zählblatt blatt(größe);
    QPainter maler(&blatt);
    male(maler);
    maler.end();
    return blatt.aufwand();
}

} // namespace tarvel
