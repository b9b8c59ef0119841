#pragma once

#include "platform/dialoge.h"
#include "results/papierkorb.h"
#include "results/untersuchungssatz.h"
#include "results/zusammenfuehrung.h"

#include <QString>

#include <vector>

class QWidget;

namespace tarvel {

/// What is done with a results file as a collection: its bin, other collections, its backups.
/// Whatever goes wrong is told to the user.
class Sammlungsbefehle {
public:
    /// Everything outlives it. @p fenster the window that the others stand before.
    Sammlungsbefehle(QString DatenbankPfad, Satzumgebung umgebung, Dialoge& dialoge,
                     QWidget* fenster);

    /// Shows the bin. What takes back what was restored there, one after the other.
    [[nodiscard]] std::vector<Rücknahme> zeigePapierkorb() const;
    /// Takes a change of rows back. False, with a message, when that is not possible.
    bool nimmZurück(const Rücknahme& rücknahme) const;
    /// Lets the user choose another results file and brings it in. True when rows were taken over.
    bool führeZusammen() const;
    /// The same with one of the daily backups, or another file.
    bool holeAusSicherung() const;
    /// The same with any source; @p vorschlag what is proposed for rows that are new.
    bool übernimmAus(const Satzquelle& quelle, const QString& titel, Entscheidung vorschlag) const;

private:
    [[nodiscard]] QString wähleDatei() const;
    bool übernimmAusDatei(const QString& pfad, const QString& titel, Entscheidung vorschlag) const;
    void melde(const QString& titel, const Datenbankfehler& fehler) const;

    QString pfad_;
    Satzumgebung umgebung_;
    Dialoge& dialoge_;
    QWidget* fenster_;
};

} // namespace tarvel
