#pragma once

#include "lang/texte.h"
#include "measure/messung.h"

#include <QLabel>

namespace tarvel {

class Flügelfunde;
class OffenesBild;

/// What is said below everything: picture, wings found on it, zoom and resolution, the wing that is
/// measured, and the results file in use.
class Statuszeile : public QLabel {
public:
    Statuszeile();

    /// @p DatenbankPfad full path of the results file; empty without one.
    void zeige(const Texte& texte, const OffenesBild& bild, const Flügelfunde& funde,
               const Messung& messung, const QString& DatenbankPfad);
};

} // namespace tarvel
