#include "results/datumswandlung.h"

#include "results/ergebnisdatei.h"

#include <SQLiteCpp/Statement.h>

namespace tarvel {

namespace {

/// Dates of the years 1900 to 2099 lie in two ranges of the index on DATUM; numbers come before
/// all texts. Of the dates within, those with a time or more behind them are found by their length.
constexpr const char* Außerhalb = "DATUM < '190' OR (DATUM >= '1:' AND DATUM < '200') OR "
                                  "DATUM >= '21'";

bool stehtRichtig(const QString& text) {
    constexpr qsizetype Länge = 10;
    return text.trimmed().isEmpty() || QDate::fromString(text.left(Länge), Qt::ISODate).isValid();
}

} // namespace

Datumswandlung::Datumswandlung(QString DatenbankPfad, std::chrono::milliseconds wartezeit)
    : pfad_(std::move(DatenbankPfad))
    , wartezeit_(wartezeit) {}

bool Datumswandlung::gibtEs() const {
    return mitErgebnisdatei(pfad_, wartezeit_, [](Ergebnisdatei& datei) {
        SQLite::Statement abfrage(datei.verbindung(),
                                  std::string("SELECT DATUM FROM Ergebnisse WHERE ") + Außerhalb);
        while (abfrage.executeStep()) {
            if (!stehtRichtig(spaltentext(abfrage.getColumn(0)).text)) {
                return true;
            }
        }
        return false;
    });
}

std::vector<AltesDatum> Datumswandlung::finde() const {
    return mitErgebnisdatei(pfad_, wartezeit_, [](Ergebnisdatei& datei) {
        SQLite::Statement abfrage(datei.verbindung(), "SELECT " + datei.platz() +
                                                          ", U_NR, DATUM FROM Ergebnisse WHERE " +
                                                          Außerhalb + " ORDER BY " + datei.platz());
        std::vector<AltesDatum> daten;
        while (abfrage.executeStep()) {
            QString text = spaltentext(abfrage.getColumn(2)).text;
            if (!stehtRichtig(text)) {
                daten.push_back({abfrage.getColumn(0).getInt64(),
                                 spaltentext(abfrage.getColumn(1)).text, std::move(text)});
            }
        }
        return daten;
    });
}

int Datumswandlung::wandle(const std::vector<AltesDatum>& daten, Tagesfolge folge,
                           const QDate& heute) const {
    return mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        Schreibvorgang vorgang(datei);
        SQLite::Statement ändern(datei.verbindung(), "UPDATE Ergebnisse SET DATUM = ? WHERE " +
                                                         datei.platz() +
                                                         " = ? AND CAST(DATUM AS TEXT) = ?");
        int zahl = 0;
        for (const AltesDatum& altes : daten) {
            const auto datum = datumAusForm(altes.text, folge, heute);
            if (!datum) {
                continue;
            }
            ändern.bind(1, datum->toString(Qt::ISODate).toStdString());
            ändern.bind(2, static_cast<int64_t>(altes.id));
            ändern.bind(3, altes.text.toStdString());
            zahl += ändern.exec();
            ändern.reset();
        }
        vorgang.commit();
        return zahl;
    });
}

} // namespace tarvel
