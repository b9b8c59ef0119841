#pragma once

#include "app/fensterflaeche.h"
#include "app/hinweisgeber.h"
#include "app/umgebung.h"
#include "results/arbeitsplatz.h"

#include <QObject>

namespace tarvel {

/// How pictures and their resolution come into the window: loaded by the user, brought back at the
/// start and with an examination that was measured on one, and corrected.
class Bildgang : public QObject {
public:
    /// Everything outlives it.
    Bildgang(const Umgebung& umgebung, Arbeitsplatz& arbeitsplatz, const Fensterfläche& fläche,
             Hinweisgeber& hinweise, QWidget& fenster);

    /// See HG::ladeBild.
    bool lade(const QString& pfad);
    /// The user picked a resolution for what is measured next.
    void wähleAuflösung(int dpi);
    /// Lets the user correct the resolution of all wings of a picture.
    void berichtigeAuflösung();

    /// Once the window is there, and whenever another examination is, its picture comes back.
    void folge(const Änderung& änderung);
    /// Brings the resolution up to date that the panel shows and offers.
    void zeige();
    /// Keeps which picture is open for the next start.
    void merke();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void bringeZurück();

    Umgebung umgebung_;
    Arbeitsplatz& arbeitsplatz_;
    const Fensterfläche& fläche_;
    Hinweisgeber& hinweise_;
    QWidget& fenster_;
    bool gezeichnet_ = false; ///< the window was painted once
    bool fällig_ = true;      ///< a picture is to come back
    bool beimStart_ = true;
};

} // namespace tarvel
