#include "results/satzquelle.h"

#include "platform/dateiausgabe.h"
#include "results/ergebnisdatei.h"

#include <QFileInfo>

#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

#include <filesystem>
#include <system_error>

namespace tarvel {

namespace {

template <typename Arbeit>
auto mitQuelle(const QString& pfad, std::chrono::milliseconds wartezeit, Arbeit&& arbeit) {
    return mitErgebnisdatei(pfad, wartezeit, std::forward<Arbeit>(arbeit),
                            Ergebnisdatei::Zugriff::NurLesen);
}

} // namespace

Dateiquelle::Dateiquelle(const QString& pfad, const QString& DatenbankPfad,
                         std::chrono::milliseconds wartezeit)
    : pfad_(pfad)
    , wartezeit_(wartezeit) {
    std::error_code fehler;
    if (std::filesystem::equivalent(systempfad(pfad), systempfad(DatenbankPfad), fehler)) {
        throw Datenbankfehler(Datenbankgrund::QuelleDieselbe, pfad);
    }
    mitQuelle(pfad_, wartezeit_, [](Ergebnisdatei& datei) {
        datei.prüfeAufbau();
        // A damaged file shows some of its rows only, which would look like all.
        if (datei.verbindung().execAndGet("PRAGMA quick_check(1)").getString() != "ok") {
            throw Datenbankfehler(Datenbankgrund::Beschädigt, datei.pfad());
        }
    });
}

QString Dateiquelle::name() const {
    return QFileInfo(pfad_).fileName();
}

std::vector<qint64> Dateiquelle::stellen() const {
    return mitQuelle(pfad_, wartezeit_, [](Ergebnisdatei& datei) {
        SQLite::Statement abfrage(datei.verbindung(), "SELECT " + datei.platz() +
                                                          " FROM Ergebnisse NOT INDEXED ORDER BY " +
                                                          datei.platz());
        std::vector<qint64> alle;
        while (abfrage.executeStep()) {
            alle.push_back(abfrage.getColumn(0).getInt64());
        }
        return alle;
    });
}

void Dateiquelle::lies(std::span<const qint64> stellen,
                       const std::function<bool(const Rohsatz&)>& nimm,
                       const std::function<void(const QString&)>& übergehe) const {
    mitQuelle(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        SQLite::Transaction lesen(datei.verbindung());
        liesRoh(datei, {"Ergebnisse", datei.platz(), {}}, stellen, nimm, übergehe);
    });
}

QHash<QString, Herkunft> Dateiquelle::herkunft() const {
    return mitQuelle(pfad_, wartezeit_, [](Ergebnisdatei& datei) { return liesHerkunft(datei); });
}

Satzliste::Satzliste(QString name, std::vector<Ergebnissatz> sätze)
    : name_(std::move(name))
    , sätze_(std::move(sätze)) {}

std::vector<qint64> Satzliste::stellen() const {
    std::vector<qint64> alle;
    alle.reserve(sätze_.size());
    for (std::size_t i = 0; i < sätze_.size(); ++i) {
        alle.push_back(static_cast<qint64>(i));
    }
    return alle;
}

void Satzliste::lies(std::span<const qint64> stellen,
                     const std::function<bool(const Rohsatz&)>& nimm,
                     const std::function<void(const QString&)>& /*übergehe*/) const {
    for (const qint64 stelle : stellen) {
        const Ergebnissatz& satz = sätze_.at(static_cast<std::size_t>(stelle));
        if (!nimm({stelle, satz, rohzeile(satz)})) {
            return;
        }
    }
}

} // namespace tarvel
