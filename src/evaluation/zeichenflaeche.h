#pragma once

#include "evaluation/diagramm.h"

#include <QFont>
#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace tarvel {

/// How a chart fits its rectangle. Charts are laid out in units of their own, at least 820 x 520 of
/// them, and scaled as a whole: every target shows the same picture, only larger or smaller.
struct Diagrammmaß {
    double faktor = 0; ///< units of the rectangle per unit of the chart; 0 when nothing fits
    QPointF ursprung;
    QSizeF größe; ///< size of the rectangle in units of the chart

    [[nodiscard]] static Diagrammmaß für(const QRectF& rahmen);

    [[nodiscard]] QPointF außen(QPointF innen) const { return ursprung + innen * faktor; }
    [[nodiscard]] QRectF außen(const QRectF& innen) const {
        return {außen(innen.topLeft()), innen.size() * faktor};
    }
};

enum class Schriftgrad { Klein, Normal, Titel };

/// Font of a chart in its units, the same for every target.
[[nodiscard]] QFont diagrammschrift(const Diagrammstil& stil, Schriftgrad grad, bool fett = false);
[[nodiscard]] double textbreite(const QString& text, const QFont& schrift);
/// @p text shortened with an ellipsis where it is wider than @p breite.
[[nodiscard]] QString gekürzt(const QString& text, const QFont& schrift, double breite);
/// @p schrift, smaller where @p text would be wider than @p breite, down to what can be read.
[[nodiscard]] QFont verkleinert(QFont schrift, const QString& text, double breite);
/// A text of words and figures that is no wider than @p breite. @p satz makes it with its words
/// shortened to the width it is given, so that the words give way and the figures stay.
[[nodiscard]] QString eingepasst(double breite, const QFont& schrift,
                                 const std::function<QString(double wortbreite)>& satz);
/// Where a text stands that is written at an anchor, as Zeichenfläche::text() writes it.
[[nodiscard]] QRectF textfläche(QPointF anker, Qt::AlignmentFlag bündig, const QString& text,
                                const QFont& schrift);

/// A text's anchor and the side of it that the text is on.
struct Textort {
    QPointF anker;
    Qt::AlignmentFlag bündig = Qt::AlignLeft;
};

/// Where texts stand that may not meet.
class Textplätze {
public:
    explicit Textplätze(const QRectF& feld)
        : feld_(feld) {}

    /// Takes the first of @p orte where the text is within the field and meets none before it;
    /// nullopt when there is none.
    std::optional<Textort> belege(std::span<const Textort> orte, const QString& text,
                                  const QFont& schrift);

private:
    QRectF feld_;
    std::vector<QRectF> belegt_;
};

/// The painter of one chart: prepared when made, restored at its end. All places and widths are
/// units of the chart. It does without clipping, transparency and brush patterns, which vector
/// files render differently or not at all.
class Zeichenfläche {
public:
    Zeichenfläche(QPainter& painter, const Diagrammmaß& maß, const Diagrammstil& stil);
    ~Zeichenfläche();
    Zeichenfläche(const Zeichenfläche&) = delete;
    Zeichenfläche& operator=(const Zeichenfläche&) = delete;

    [[nodiscard]] QPainter& painter() { return painter_; }
    [[nodiscard]] const Diagrammstil& stil() const { return stil_; }

    /// Writes with the anchor at the text's left edge, middle or right edge, on the middle of its
    /// height.
    void text(QPointF anker, Qt::AlignmentFlag bündig, const QString& text, const QFont& schrift,
              const QColor& farbe);
    /// The same on a plate of the ground's colour, so that lines behind do not cross the text. The
    /// plate reaches @p zugabe further right, for a sign beside the text.
    void schild(QPointF anker, Qt::AlignmentFlag bündig, const QString& text, const QFont& schrift,
                const QColor& farbe, double zugabe = 0);
    /// The same with a rim of the ground's colour, which hides less of what lies behind.
    void textMitHof(QPointF anker, Qt::AlignmentFlag bündig, const QString& text,
                    const QFont& schrift, const QColor& farbe);
    /// Upwards, with its middle at the anchor.
    void textHochkant(QPointF mitte, const QString& text, const QFont& schrift,
                      const QColor& farbe);
    void linie(QPointF von, QPointF nach, const QColor& farbe, double breite,
               Qt::PenStyle art = Qt::SolidLine);
    void fülle(const QRectF& fläche, const QColor& farbe);
    void rahmen(const QRectF& fläche, const QColor& farbe, double breite,
                Qt::PenStyle art = Qt::SolidLine);
    /// Parallel lines that rise to the right.
    void schraffur(const QRectF& fläche, const QColor& farbe, double abstand, double breite);
    /// A filled wedge with its tip at @p spitze that points along @p richtung.
    void keil(QPointF spitze, QPointF richtung, const QColor& farbe);
    /// A tick when @p gut, else a cross.
    void urteil(QPointF mitte, bool gut, const QColor& farbe);

private:
    QPainter& painter_;
    const Diagrammstil& stil_;
};

} // namespace tarvel
