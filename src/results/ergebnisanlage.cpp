// How results files come into being: new ones and backup copies.

#include "platform/dateiausgabe.h"
#include "results/dateizugang.h"
#include "results/ergebnisdatei.h"
#include "results/ergebnistabelle.h"

#include <SQLiteCpp/Backup.h>
#include <SQLiteCpp/Transaction.h>
#include <sqlite3.h>

#include <QFileInfo>

#include <chrono>
#include <filesystem>
#include <system_error>
#include <thread>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// Whether both names lead to one file, through links too.
bool gleicheDatei(const QString& a, const QString& b) {
    std::error_code fehler;
    return std::filesystem::equivalent(systempfad(a), systempfad(b), fehler);
}

/// Whether a name is taken, be it by a link that leads nowhere.
bool istBelegt(const QString& pfad) {
    std::error_code fehler;
    return std::filesystem::exists(std::filesystem::symlink_status(systempfad(pfad), fehler));
}

/// A results file in the making. The engine writes it without a journal, which nobody could use.
SQLite::Database öffneRohfassung(const Rohfassung& roh) {
    vergissSystemfehler();
    SQLite::Database verbindung(roh.pfad().toStdString(), SQLite::OPEN_READWRITE, 0,
                                geschützterZugang());
    verbindung.exec("PRAGMA journal_mode = MEMORY");
    verbindung.exec("PRAGMA page_size = 4096");
    return verbindung;
}

Datenbankfehler fehlerVon(const Rohfassung& roh, const QString& ziel) {
    switch (roh.fehlerart()) {
    case Fehlerart::Voll:
        return {Datenbankgrund::Voll, ziel};
    case Fehlerart::Laufwerk:
        return {Datenbankgrund::Laufwerk, ziel, roh.grund()};
    default:
        return {Datenbankgrund::NichtAnlegbar, ziel};
    }
}

/// Does @p arbeit on the file in the making. What goes wrong is told of @p ziel.
template <typename Arbeit>
void fülle(const Rohfassung& roh, const QString& ziel, Arbeit&& arbeit) {
    try {
        SQLite::Database verbindung = öffneRohfassung(roh);
        arbeit(verbindung);
    } catch (const SQLite::Exception& fehler) {
        const Datenbankfehler übersetzt = datenbankfehler(roh.pfad(), fehler);
        throw Datenbankfehler(übersetzt.grund(), ziel, übersetzt.einzelheit());
    }
}

bool istHeil(SQLite::Database& verbindung) {
    return verbindung.execAndGet("PRAGMA quick_check(1)").getString() == "ok";
}

/// Copies everything at once, so that the copy is of one moment. A damaged file is not copied: it
/// would take the place of a sound copy.
void kopiere(Ergebnisdatei& datei, const Rohfassung& roh, const QString& ziel) {
    int stand = SQLITE_ERROR;
    try {
        fülle(roh, ziel, [&](SQLite::Database& kopie) {
            SQLite::Backup sicherung(kopie, datei.verbindung());
            stand = sicherung.executeStep(-1);
            if (stand == SQLITE_DONE && !istHeil(kopie)) {
                throw Datenbankfehler(Datenbankgrund::Beschädigt, datei.pfad());
            }
        });
    } catch (const Datenbankfehler& fehler) {
        if (fehler.grund() == Datenbankgrund::Beschädigt) {
            throw Datenbankfehler(Datenbankgrund::Beschädigt, datei.pfad());
        }
        throw;
    }
    if (stand != SQLITE_DONE) { // kept from reading all the time
        throw Datenbankfehler(Datenbankgrund::Gesperrt, datei.pfad());
    }
}

/// Copies a little at a time. False when it was told to stop.
bool kopiereNebenbei(Ergebnisdatei& datei, const Rohfassung& roh, const QString& ziel,
                     const std::atomic<bool>& aufhören) {
    constexpr int SeitenJeSchritt = 128;
    constexpr std::chrono::milliseconds Pause(2); // long enough for one who waits to write
    bool fertig = false;
    fülle(roh, ziel, [&](SQLite::Database& kopie) {
        {
            SQLite::Backup sicherung(kopie, datei.verbindung());
            while (!aufhören && sicherung.executeStep(SeitenJeSchritt) != SQLITE_DONE) {
                std::this_thread::sleep_for(Pause);
            }
            fertig = !aufhören;
        }
        sqlite3_progress_handler(
            kopie.getHandle(), 10'000,
            [](void* flagge) {
                return static_cast<const std::atomic<bool>*>(flagge)->load() ? 1 : 0;
            },
            const_cast<std::atomic<bool>*>(&aufhören)); // NOLINT: the engine's signature
        try {
            if (fertig && !istHeil(kopie)) {
                throw Datenbankfehler(Datenbankgrund::Beschädigt, datei.pfad());
            }
        } catch (const SQLite::Exception&) {
            if (!aufhören) {
                throw;
            }
        }
    });
    return fertig && !aufhören;
}

/// Whether a file lies beside @p ziel that the engine would apply to a copy there.
bool hatBegleiter(const Rohfassung& roh) {
    return QFileInfo::exists(roh.ziel() + u"-journal"_s) ||
           QFileInfo::exists(roh.ziel() + u"-wal"_s);
}

} // namespace

void NeueDatenbank(const QString& pfad) {
    const QString absolut = QFileInfo(pfad).absoluteFilePath();
    if (istBelegt(absolut)) {
        throw Datenbankfehler(Datenbankgrund::SchonVorhanden, pfad);
    }
    Rohfassung roh(absolut);
    if (!roh.angelegt()) {
        throw fehlerVon(roh, pfad);
    }
    fülle(roh, pfad, [](SQLite::Database& verbindung) {
        SQLite::Transaction vorgang(verbindung);
        legeTabelleAn(verbindung);
        vorgang.commit();
    });
    if (!roh.benenne()) {
        throw istBelegt(absolut) ? Datenbankfehler(Datenbankgrund::SchonVorhanden, pfad)
                                 : fehlerVon(roh, pfad);
    }
}

void Ergebnistabelle::sichere(const QString& ziel) const {
    const QString absolut = QFileInfo(ziel).absoluteFilePath();
    mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        if (gleicheDatei(pfad_, absolut)) {
            throw Datenbankfehler(Datenbankgrund::GleicheDatei, ziel);
        }
        datei.prüfeAufbau();
        Rohfassung roh(absolut);
        if (!roh.angelegt()) {
            throw fehlerVon(roh, ziel);
        }
        roh.beschränkeAuf(pfad_);
        if (hatBegleiter(roh)) {
            throw Datenbankfehler(Datenbankgrund::Gesperrt, ziel);
        }
        kopiere(datei, roh, ziel);
        if (!roh.ersetze()) {
            throw fehlerVon(roh, ziel);
        }
    });
}

bool Ergebnistabelle::sichereNebenbei(const QString& ziel,
                                      const std::atomic<bool>& aufhören) const {
    const QString absolut = QFileInfo(ziel).absoluteFilePath();
    return mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        datei.prüfeAufbau();
        if (istBelegt(absolut)) {
            return false;
        }
        Rohfassung roh(absolut);
        if (!roh.angelegt()) {
            throw fehlerVon(roh, ziel);
        }
        roh.beschränkeAuf(pfad_);
        if (hatBegleiter(roh) || !kopiereNebenbei(datei, roh, ziel, aufhören)) {
            return false;
        }
        if (!roh.benenne()) {
            if (istBelegt(absolut)) {
                return false;
            }
            throw fehlerVon(roh, ziel);
        }
        return true;
    });
}

} // namespace tarvel
