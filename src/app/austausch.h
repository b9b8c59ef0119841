#pragma once

#include "app/umgebung.h"
#include "results/arbeitsplatz.h"

#include <QString>
#include <QStringList>

class QWidget;

namespace tarvel {

/// The wings of the open examination as a table with their points, as it would be stored; empty
/// when there are no points.
[[nodiscard]] QByteArray flügeltabelle(const Umgebung& umgebung, const Arbeitsplatz& arbeitsplatz);

/// The ways between the program and the files of others that do not change the open examination.
class Austausch {
public:
    /// Both outlive it.
    Austausch(const Umgebung& umgebung, const Arbeitsplatz& arbeitsplatz);

    /// Stores measurement files in the results file, an examination each, with progress that can be
    /// stopped; what was stored before stays. Tells what was not readable and why. Returns what was
    /// done as a sentence; empty when nothing could be.
    [[nodiscard]] QString importiere(QWidget* fenster, const QStringList& dateien) const;
    /// The same for all measurement files of a folder, in the order of their names.
    [[nodiscard]] QString importiereOrdner(QWidget* fenster, const QString& ordner) const;

    /// Asks for a place and writes the wings of the open examination there, as a table or as
    /// points, as it would be stored. Returns what was done as a sentence; empty when nothing was.
    [[nodiscard]] QString exportiere() const;

    /// Folder that choosers start in: the user's working folder, else that of the documents.
    [[nodiscard]] QString ordner() const;

private:
    [[nodiscard]] Satzumgebung satzumgebung() const;
    void melde(const QString& titel, const QString& text) const;

    const Umgebung& umgebung_;
    const Arbeitsplatz& arbeitsplatz_;
};

} // namespace tarvel
