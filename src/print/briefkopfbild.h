#pragma once

#include "lang/meldungen.h"
#include "platform/vektorbild.h"
#include "print/briefkopf.h"

#include <QImage>
#include <QRectF>
#include <QSizeF>
#include <QString>

class QPainter;

namespace tarvel {

inline constexpr QSizeF PapierA4{210, 297}; ///< width and height in millimetres

/// Why the graphic of a letterhead is not shown.
enum class Grafikfehler {
    Keiner, ///< it is, or none was chosen
    NichtGefunden,
    KeinBild,
    ZuAufwendig ///< a drawing that would take too long, or that needs other files
};

/// How that is told; %1 is the file.
[[nodiscard]] Meldung meldung(Grafikfehler fehler);

/// The graphic of a letterhead, read once and painted often: an emblem or a picture file.
class Briefkopfgrafik {
public:
    Briefkopfgrafik() = default;
    explicit Briefkopfgrafik(const Briefkopf& kopf);

    /// False when there is nothing to paint: no file was chosen, or it is no readable picture.
    [[nodiscard]] bool vorhanden() const { return format_.isValid() && !format_.isEmpty(); }
    [[nodiscard]] Grafikfehler fehler() const { return fehler_; }
    void paint(QPainter& painter, const QRectF& rahmen) const;
    /// Where the graphic lies on the paper, in millimetres; empty when there is none.
    [[nodiscard]] QRectF rahmen(const Briefkopf& kopf) const;

private:
    Vektorbild zeichnung_;
    QImage bild_;
    QSizeF format_;
    Grafikfehler fehler_ = Grafikfehler::Keiner;
};

/// Where the letterhead's text lies on the paper, in millimetres; empty without text. A line that
/// is too long for the paper, or meets the graphic on its right, is broken.
[[nodiscard]] QRectF briefkopftext(const Briefkopf& kopf, const Briefkopfgrafik& grafik);

/// The letterhead, its text and graphic each moved up as far as needed to end above @p unten
/// millimetres from the top, and to the left where it would leave the paper. Text that is higher
/// than that gets a smaller font, a graphic gets smaller. Text that would lie on the graphic goes
/// to its right or below it.
[[nodiscard]] Briefkopf eingepasst(const Briefkopf& kopf, const Briefkopfgrafik& grafik,
                                   double unten);

/// Paints the letterhead in black on what is there. A unit of @p painter is a millimetre and its
/// origin the paper's top left corner, so screen, printer and PDF show the same.
void maleBriefkopf(QPainter& painter, const Briefkopf& kopf, const Briefkopfgrafik& grafik);

} // namespace tarvel
