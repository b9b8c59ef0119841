#pragma once

#include "print/verband.h"
#include "settings/einstellungen.h"

#include <QString>
#include <QStringList>

namespace tarvel {

/// The letterhead of the report. Distances are millimetres from the paper's left and top edge to
/// the left and top of the text or the graphic.
struct Briefkopf {
    int TextLinks = 60;
    int TextOben = 20;
    QString Name;
    QString Straße;
    QString Ort;
    QString SchriftArt = QStringLiteral("Arial");
    int SchriftGröße = 10; ///< in points
    bool SchriftFett = false;
    bool SchriftKursiv = false;
    bool Zeilenwechsel = false; ///< whether name and street end a line
    int GrafikLinks = 20;
    int GrafikOben = 10;
    int GrafikHöhe = 25; ///< its width follows from its proportions, as far as the paper goes
    Verband Ikone = Verband::Flügel;
    QString Datei; ///< picture of the user's own, for Verband::Andere

    bool operator==(const Briefkopf&) const = default;
};

/// Heights of the graphic that are possible.
inline constexpr int KleinsteGrafikhöhe = 5;
inline constexpr int GrößteGrafikhöhe = 60;

/// The letterhead as the settings file holds it.
[[nodiscard]] Briefkopf ladeBriefkopf(const Einstellungen& einstellungen);

/// The lines of the letterhead's text: one each for name, street and city, or all in one. What was
/// left empty takes no line.
[[nodiscard]] QStringList briefkopfzeilen(const Briefkopf& kopf);

} // namespace tarvel
