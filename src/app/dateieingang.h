#pragma once

#include "app/austausch.h"
#include "app/untersuchungsgang.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace tarvel {

struct Koordinaten;

/// How files come into the window: pictures, results files, and what other programs wrote.
class Dateieingang {
public:
    /// Everything outlives it.
    Dateieingang(const Umgebung& umgebung, Arbeitsplatz& arbeitsplatz, Untersuchungsgang& gang,
                 const Fensterdienste& dienste);

    /// Opens what the program was given: a results file, a picture, a measurement or coordinate
    /// file; measurement files of a folder are stored. False, with a message, when that failed.
    bool öffneDatei(const QString& pfad);
    /// Opens several: one of each kind, but stores measurement files when there are more than one.
    bool öffneDateien(const QStringList& pfade);

    /// Asks for measurement or coordinate files and opens them.
    void LadenBee();
    void importiereOrdner();
    void exportiere();

private:
    /// What follows an import into the results file. False when nothing came of it.
    bool importiert(const QString& ergebnis);
    /// The bytes of a file that is read in; nullopt, with a message, when there are none.
    [[nodiscard]] std::optional<QByteArray> lesEin(const QString& pfad);
    void berichte(Meldung ergebnis, const QString& pfad, const QStringList& gründe) const;
    /// The resolution that coordinates were measured at, which the discoidal shift depends on: of
    /// the @p ohne wings that bring none along, or of all for 0. nullopt when the user gave up.
    [[nodiscard]] std::optional<int>
    frageAuflösung(const QString& pfad, const Koordinaten& koordinaten, std::ptrdiff_t ohne) const;
    /// Takes the measurement file @p pfad over as a new examination. False, with a message, when it
    /// is none.
    bool lesMessdatei(const QString& pfad);
    /// The same for the wings of a coordinate file.
    bool lesKoordinaten(const QString& pfad);

    Umgebung umgebung_;
    Arbeitsplatz& arbeitsplatz_;
    Untersuchungsgang& gang_;
    const Fensterdienste& dienste_;
    Austausch austausch_;
};

} // namespace tarvel
