#pragma once

#include "collection/uebersichtsblatt.h"

namespace tarvel {

/// The years of a choice of examinations.
struct Jahresbild {
    QString name;       ///< what it is of: "Züchter: Müller"; empty for the whole choice
    QStringList rassen; ///< several have no common mean; there is no course then
    Jahresverlauf verlauf;
    std::optional<Koloniegrenzen> grenzen;
    int wenige = 0; ///< examinations of few wings
};
[[nodiscard]] Jahresbild jahresbild(const Kolonieauswahl& auswahl, const QString& name,
                                    const Kolonieregeln& regeln);

/// The most years that are drawn; older ones stand in the table of tarvel-batch.
inline constexpr int HöchsteJahre = 16;

void maleJahre(QPainter& painter, const QRectF& rahmen, const Jahresbild& bild,
               const Übersichtsworte& worte, const Diagrammstil& stil);

} // namespace tarvel
