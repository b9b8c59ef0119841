#pragma once

#include "collection/uebersichtsblatt.h"

#include <QByteArray>

namespace tarvel {

/// Heading of a column of the table, and what it means.
[[nodiscard]] QString spaltenkopf(int spalte, const Texte& texte);
[[nodiscard]] QString spaltentipp(int spalte, const Texte& texte);
/// What stands in a cell; empty for the histogram. Figures of a discoidal shift that does not
/// compare stand in brackets.
[[nodiscard]] QString zellentext(const Koloniewerte& kolonie, int spalte,
                                 const Übersichtsworte& worte);
/// Why they do; empty for other cells.
[[nodiscard]] QString zellentipp(const Koloniewerte& kolonie, int spalte, const Texte& texte);
/// What has to be known before discoidal shifts of these examinations are compared.
[[nodiscard]] QStringList DVHinweise(const Kolonieauswahl& kolonien, const Texte& texte);

/// The small histogram of the cubital index: a bar a class, its highest as high as the rectangle.
void maleKleinesHistogramm(QPainter& painter, const QRectF& rahmen, const Koloniewerte& kolonie,
                           const QColor& farbe, const QColor& grundlinie);

/// The most rows that a picture of the table has.
inline constexpr int HöchsteBildzeilen = 60;
/// The size of a picture of the table for that many rows.
[[nodiscard]] QSizeF tabellengröße(std::size_t zeilen);
/// The first rows of the table as a picture; it says how many there are.
void maleTabelle(QPainter& painter, const QRectF& rahmen, const Kolonieauswahl& zeilen,
                 const Übersichtsworte& worte, const Diagrammstil& stil);

} // namespace tarvel
