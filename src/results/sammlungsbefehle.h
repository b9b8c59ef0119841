#pragma once

#include "platform/dialoge.h"
#include "results/papierkorb.h"
#include "results/untersuchungssatz.h"
#include "results/zusammenfuehrung.h"

#include <QString>
#include <QStringList>

#include <vector>

class QWidget;

namespace tarvel {

/// What a command did to the rows of a results file.
struct Sammlungsänderung {
    std::vector<Rücknahme> rücknahmen; ///< take it back, the last one first
    QStringList ersetzt;               ///< numbers of examinations that others took the place of
};

/// What is done with a results file as a collection: its bin, other collections, its backups.
/// Whatever goes wrong is told to the user.
class Sammlungsbefehle {
public:
    /// Everything outlives it. @p fenster the window that the others stand before.
    Sammlungsbefehle(QString DatenbankPfad, Satzumgebung umgebung, Dialoge& dialoge,
                     QWidget* fenster);

    /// Shows the bin, where rows are restored.
    [[nodiscard]] Sammlungsänderung zeigePapierkorb() const;
    /// What became of what is to be taken back.
    enum class Rückweg {
        Zurück,
        NichtJetzt, ///< another program keeps the file, or it cannot be written: try again
        Versperrt,  ///< a row is another by now, for good
    };
    /// Takes a change of rows back; a message where that is not possible. @p ids gets the
    /// places of the rows that came back.
    [[nodiscard]] Rückweg nimmZurück(const Rücknahme& rücknahme, std::vector<qint64>& ids) const;
    /// Lets the user choose another results file and brings it in.
    [[nodiscard]] Sammlungsänderung führeZusammen() const;
    /// The same with one of the daily backups, or another file.
    [[nodiscard]] Sammlungsänderung holeAusSicherung() const;
    /// The same with any source; @p vorschlag what is proposed for rows that are new.
    [[nodiscard]] Sammlungsänderung übernimmAus(const Satzquelle& quelle, const QString& titel,
                                                Entscheidung vorschlag) const;

private:
    [[nodiscard]] QString wähleDatei() const;
    [[nodiscard]] Sammlungsänderung übernimmAusDatei(const QString& pfad, const QString& titel,
                                                     Entscheidung vorschlag) const;
    void melde(const QString& titel, const Datenbankfehler& fehler) const;

    QString pfad_;
    Satzumgebung umgebung_;
    Dialoge& dialoge_;
    QWidget* fenster_;
};

} // namespace tarvel
