#pragma once

#include "evaluation/diagramm.h"

#include <QFontMetricsF>
#include <QHash>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <vector>

namespace tarvel {

/// What a chart really wrote and filled, in the units of its rectangle.
struct Mitschrift {
    struct Schrift {
        QString text;
        QRectF fläche; ///< of the ink
        QColor farbe;
    };
    struct Füllung {
        QPainterPath pfad;
        QRectF fläche; ///< around it
        QColor farbe;
        std::size_t davor = 0; ///< texts written before
    };
    std::vector<Schrift> texte;
    std::vector<Füllung> füllungen;
};

/// A paint device that keeps notes instead of pixels.
class Mitschreiber : public QPaintDevice {
public:
    explicit Mitschreiber(const QSize& größe)
        : größe_(größe) {}

    Mitschrift mitschrift;

    [[nodiscard]] QPaintEngine* paintEngine() const override { return &werk_; }

protected:
    int metric(PaintDeviceMetric art) const override {
        switch (art) {
        case PdmWidth:
            return größe_.width();
        case PdmHeight:
            return größe_.height();
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        case PdmDevicePixelRatio:
        case PdmNumColors:
        case PdmDepth:
            return 1;
        default:
            return 96;
        }
    }

private:
    class Werk : public QPaintEngine {
    public:
        explicit Werk(Mitschrift& notiz)
            : QPaintEngine(AllFeatures)
            , notiz_(notiz) {}

        bool begin(QPaintDevice*) override { return true; }
        bool end() override { return true; }
        [[nodiscard]] Type type() const override { return User; }
        void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}

        void updateState(const QPaintEngineState& stand) override {
            if (stand.state() & DirtyTransform) {
                transform_ = stand.transform();
            }
            if (stand.state() & DirtyPen) {
                stift_ = stand.pen().color();
            }
            if (stand.state() & DirtyBrush) {
                pinsel_ = stand.brush();
            }
        }

        void drawTextItem(const QPointF& ort, const QTextItem& item) override {
            const QString schlüssel = item.font().key() + item.text();
            auto tinte = tinte_.constFind(schlüssel);
            if (tinte == tinte_.cend()) {
                tinte = tinte_.insert(schlüssel,
                                      QFontMetricsF(item.font()).tightBoundingRect(item.text()));
            }
            notiz_.texte.push_back(
                {item.text(), transform_.mapRect(tinte->translated(ort)), stift_});
        }

        void drawPath(const QPainterPath& pfad) override {
            if (pinsel_.style() == Qt::SolidPattern) {
                const QPainterPath außen = transform_.map(pfad);
                notiz_.füllungen.push_back(
                    {außen, außen.boundingRect(), pinsel_.color(), notiz_.texte.size()});
            }
        }
        void drawPolygon(const QPointF* punkte, int anzahl, PolygonDrawMode art) override {
            if (art != PolylineMode) {
                QPainterPath pfad;
                pfad.addPolygon(QPolygonF(QList<QPointF>(punkte, punkte + anzahl)));
                drawPath(pfad);
            }
        }
        void drawRects(const QRectF* rechtecke, int anzahl) override {
            for (int i = 0; i < anzahl; ++i) {
                QPainterPath pfad;
                pfad.addRect(rechtecke[i]);
                drawPath(pfad);
            }
        }
        void drawLines(const QLineF*, int) override {}
        void drawEllipse(const QRectF&) override {}
        using QPaintEngine::drawEllipse;
        using QPaintEngine::drawLines;
        using QPaintEngine::drawPolygon;
        using QPaintEngine::drawRects;

    private:
        Mitschrift& notiz_;
        QTransform transform_;
        QColor stift_;
        QBrush pinsel_;
        inline static QHash<QString, QRectF> tinte_;
    };

    QSize größe_;
    mutable Werk werk_{mitschrift};
};

/// Whether two boxes share more than a hair.
inline bool treffenSich(const QRectF& a, const QRectF& b, double haar) {
    const QRectF c = a & b;
    return c.width() > haar && c.height() > haar;
}

/// What is wrong with the texts of a chart in @p rahmen: text on text, text or its plate on bars of
/// the colour @p balken, text beyond the rectangle. Widths of a hair are units of the chart.
inline QStringList textfehler(const Mitschrift& m, const QRectF& rahmen, const Diagrammstil& stil,
                              bool aufBalken) {
    const double haar = std::min(rahmen.width() / 820, rahmen.height() / 520);
    QStringList fehler;
    for (std::size_t i = 0; i < m.texte.size(); ++i) {
        const auto& a = m.texte[i];
        if (!rahmen.adjusted(-haar, -haar, haar, haar).contains(a.fläche)) {
            fehler << QStringLiteral("außerhalb: ") + a.text;
        }
        for (std::size_t j = i + 1; j < m.texte.size(); ++j) {
            if (treffenSich(a.fläche, m.texte[j].fläche, haar)) {
                fehler << a.text + QStringLiteral(" × ") + m.texte[j].text;
            }
        }
        for (const auto& f : m.füllungen) {
            const bool säule = aufBalken && f.farbe == stil.fläche;
            const bool schild = f.farbe == stil.grund && f.davor > i;
            if ((säule || schild) && treffenSich(a.fläche, f.fläche, haar) &&
                f.pfad.intersects(a.fläche.adjusted(haar, haar, -haar, -haar))) {
                fehler << a.text + (säule ? QStringLiteral(" auf Balken")
                                          : QStringLiteral(" unter einem Schild"));
            }
        }
    }
    for (std::size_t i = 0; i < m.füllungen.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            if (m.füllungen[i].farbe == stil.grund && m.füllungen[j].farbe == stil.fläche &&
                treffenSich(m.füllungen[i].fläche, m.füllungen[j].fläche, haar) &&
                m.füllungen[j].pfad.intersects(m.füllungen[i].fläche)) {
                fehler << QStringLiteral("Schild auf Balken");
            }
        }
    }
    return fehler;
}

} // namespace tarvel
