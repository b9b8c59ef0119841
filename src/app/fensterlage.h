#pragma once

#include "settings/einstellungen.h"

class QMainWindow;
class QSplitter;

namespace tarvel {

/// Which side panels of the main window the user wants to see.
struct Leistenwahl {
    bool links = true;
    bool rechts = true;
};

/// Writes where the main window stands and how its panels are divided.
void merkeFensterlage(Einstellungen& einstellungen, const QMainWindow& fenster,
                      const QSplitter& teiler, Leistenwahl leisten);

/// Puts the main window where it was when it was last closed; without a memory of that it gets a
/// size that fits small screens. Returns which panels were shown.
Leistenwahl stelleFensterlageHer(const Einstellungen& einstellungen, QMainWindow& fenster,
                                 QSplitter& teiler);

} // namespace tarvel
