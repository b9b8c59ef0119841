#pragma once

#include "print/briefkopfbild.h"
#include "print/protokolldaten.h"
#include "print/protokollsatz.h"

#include <QLineF>
#include <QRectF>
#include <QString>

#include <vector>

class QPainter;

namespace tarvel {

/// One line of text on the page.
struct Protokolltext {
    QRectF rahmen; ///< as wide as the text
    QString text;
    Protokollgrad grad = Protokollgrad::Text;
    bool fett = false; ///< beyond the standard
};

struct Protokolllinie {
    QLineF linie;
    double breite = 0;
};

enum class Protokolldiagramm { Kurven, Korrel };

struct Diagrammrahmen {
    Protokolldiagramm art = Protokolldiagramm::Kurven;
    QRectF rahmen;
};

/// Where everything stands on a page of the report: millimetres from the top left corner of an A4
/// sheet in portrait.
struct Protokollseite {
    Briefkopf briefkopf; ///< moved where its place in the settings leaves the report no room
    QRectF briefkopfrahmen;
    std::vector<Protokolltext> texte;
    std::vector<Protokolllinie> linien;
    std::vector<Diagrammrahmen> diagramme;
};

/// What the report keeps free at the left and right, and at the bottom, in millimetres.
inline constexpr double Protokollrand = 20;
inline constexpr double ProtokollrandUnten = 15;

/// Lays out page 1 or 2; any other number, and 2 of a report with one page, gives page 1. The body
/// begins below the letterhead. Long texts are broken and at last shortened.
[[nodiscard]] Protokollseite protokollseite(const Protokolldaten& daten,
                                            const Briefkopfgrafik& grafik, int nummer);

/// Paints a page in black on what is there, which is white paper. A unit of @p painter is a
/// millimetre and its origin the paper's top left corner, so preview, printer, PDF and picture show
/// the same.
void maleProtokoll(QPainter& painter, const Protokolldaten& daten, const Briefkopfgrafik& grafik,
                   int nummer);

} // namespace tarvel
