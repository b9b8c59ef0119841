#pragma once

#include "print/briefkopfbild.h"
#include "print/protokolldaten.h"
#include "print/protokollsatz.h"

#include <QLineF>
#include <QRectF>
#include <QString>

#include <array>
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

/// Where the picture of a wing of the appendix lies.
struct Flügelrahmen {
    std::size_t flügel = 0; ///< place in the appendix
    QRectF zelle;           ///< with its texts
    QRectF bild;            ///< empty where no wing of the row has points
};

/// Where everything stands on a page of the report: millimetres from the top left corner of an A4
/// sheet in portrait.
struct Protokollseite {
    Briefkopf briefkopf;    ///< moved where its place in the settings leaves the report no room
    QRectF briefkopfrahmen; ///< empty on a page without letterhead
    std::vector<Protokolltext> texte;
    std::vector<Protokolllinie> linien;
    std::vector<Diagrammrahmen> diagramme;
    std::vector<Flügelrahmen> flügel;
};

/// What the report keeps free at the left and right, and at the bottom, in millimetres.
inline constexpr double Protokollrand = 20;
inline constexpr double ProtokollrandUnten = 15;

/// What every page prints into, in millimetres of the paper.
namespace satzspiegel {
inline constexpr double Links = Protokollrand;
inline constexpr double Rechts = PapierA4.width() - Protokollrand;
inline constexpr double Breite = Rechts - Links;
inline constexpr double Unten = PapierA4.height() - ProtokollrandUnten;
inline constexpr double Zellenluft = 0.8; ///< around a text in its cell
} // namespace satzspiegel

/// Widths of the columns of the table of criteria: criterion, measured, allowed, margin, bees,
/// interval, outcome.
inline constexpr std::array<double, Kriterienspaltenzahl> Kriterienspalten{39.5, 21.5, 17.0, 15.0,
                                                                           19.0, 24.0, 34.0};

/// Pages of the report, those of its appendix included.
[[nodiscard]] int seitenzahl(const Protokolldaten& daten);

/// Lays out a page; a number that there is not gives page 1. The body begins below the letterhead.
/// Long texts are broken and at last shortened.
[[nodiscard]] Protokollseite protokollseite(const Protokolldaten& daten,
                                            const Briefkopfgrafik& grafik, int nummer);

/// Pages of the appendix alone, and the one of them with this number, from 1.
[[nodiscard]] int anhangseiten(const Protokolldaten& daten);
[[nodiscard]] Protokollseite anhangseite(const Protokolldaten& daten, int nummer);

/// Paints a page in black on what is there, which is white paper. A unit of @p painter is a
/// millimetre and its origin the paper's top left corner, so preview, printer, PDF and picture show
/// the same.
void maleProtokoll(QPainter& painter, const Protokolldaten& daten, const Briefkopfgrafik& grafik,
                   int nummer);
/// The same of a page that was laid out.
void maleSeite(QPainter& painter, const Protokollseite& seite, const Protokolldaten& daten,
               const Briefkopfgrafik& grafik);

} // namespace tarvel
