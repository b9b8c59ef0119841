// How results files come into being: new ones and backup copies.

#include "platform/dateiausgabe.h"
#include "results/ergebnisdatei.h"
#include "results/ergebnistabelle.h"

#include <SQLiteCpp/Backup.h>
#include <SQLiteCpp/Transaction.h>
#include <sqlite3.h>

#include <QFileInfo>

#include <filesystem>
#include <system_error>

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
    SQLite::Database verbindung(roh.pfad().toStdString(), SQLite::OPEN_READWRITE);
    verbindung.exec("PRAGMA journal_mode = MEMORY");
    verbindung.exec("PRAGMA page_size = 4096");
    return verbindung;
}

Datenbankgrund grundVon(const Rohfassung& roh) {
    return roh.voll() ? Datenbankgrund::Voll : Datenbankgrund::NichtAnlegbar;
}

bool istHeil(SQLite::Database& verbindung) {
    return verbindung.execAndGet("PRAGMA quick_check(1)").getString() == "ok";
}

/// Copies everything at once, so that the copy is of one moment. A damaged file is not copied: it
/// would take the place of a sound copy.
void kopiere(Ergebnisdatei& datei, const Rohfassung& roh, const QString& ziel) {
    int stand = SQLITE_ERROR;
    try {
        SQLite::Database kopie = öffneRohfassung(roh);
        SQLite::Backup sicherung(kopie, datei.verbindung());
        stand = sicherung.executeStep(-1);
        if (stand == SQLITE_DONE && !istHeil(kopie)) {
            throw Datenbankfehler(Datenbankgrund::Beschädigt, datei.pfad());
        }
    } catch (const SQLite::Exception& fehler) {
        const Datenbankfehler übersetzt = datenbankfehler(roh.pfad(), fehler);
        const bool quelle = übersetzt.grund() == Datenbankgrund::Beschädigt;
        throw Datenbankfehler(übersetzt.grund(), quelle ? datei.pfad() : ziel,
                              übersetzt.einzelheit());
    }
    if (stand != SQLITE_DONE) { // kept from reading all the time
        throw Datenbankfehler(Datenbankgrund::Gesperrt, datei.pfad());
    }
}

} // namespace

void NeueDatenbank(const QString& pfad) {
    const QString absolut = QFileInfo(pfad).absoluteFilePath();
    if (istBelegt(absolut)) {
        throw Datenbankfehler(Datenbankgrund::SchonVorhanden, pfad);
    }
    Rohfassung roh(absolut);
    if (!roh.angelegt()) {
        throw Datenbankfehler(grundVon(roh), pfad);
    }
    try {
        SQLite::Database verbindung = öffneRohfassung(roh);
        SQLite::Transaction vorgang(verbindung);
        legeTabelleAn(verbindung);
        vorgang.commit();
    } catch (const SQLite::Exception& fehler) {
        const Datenbankfehler übersetzt = datenbankfehler(roh.pfad(), fehler);
        throw Datenbankfehler(übersetzt.grund(), pfad, übersetzt.einzelheit());
    }
    if (!roh.benenne()) {
        throw Datenbankfehler(istBelegt(absolut) ? Datenbankgrund::SchonVorhanden : grundVon(roh),
                              pfad);
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
            throw Datenbankfehler(grundVon(roh), ziel);
        }
        for (const QString& begleiter : {u"-journal"_s, u"-wal"_s}) {
            if (QFileInfo::exists(roh.ziel() + begleiter)) { // it would be applied to the copy
                throw Datenbankfehler(Datenbankgrund::Gesperrt, ziel);
            }
        }
        kopiere(datei, roh, ziel);
        if (!roh.ersetze()) {
            throw Datenbankfehler(grundVon(roh), ziel);
        }
    });
}

} // namespace tarvel
