// How results files come into being: new ones and backup copies.

#include "results/ergebnisdatei.h"
#include "results/ergebnistabelle.h"

#include <SQLiteCpp/Backup.h>
#include <SQLiteCpp/Transaction.h>
#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <filesystem>
#include <system_error>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

std::filesystem::path systempfad(const QString& pfad) {
    return pfad.toStdU16String();
}

/// Whether both names lead to one file, through links too.
bool gleicheDatei(const QString& a, const QString& b) {
    std::error_code fehler;
    return std::filesystem::equivalent(systempfad(a), systempfad(b), fehler);
}

/// A file that comes into being: away again unless it was completed.
class Rohfassung {
public:
    explicit Rohfassung(QString pfad)
        : pfad_(std::move(pfad)) {
        QFile datei(pfad_);
        if (!datei.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
            throw Datenbankfehler(QFileInfo::exists(pfad_) ? Datenbankgrund::SchonVorhanden
                                                           : Datenbankgrund::NichtAnlegbar,
                                  pfad_);
        }
    }
    ~Rohfassung() {
        if (!fertig_) {
            QFile::remove(pfad_);
            QFile::remove(pfad_ + u"-journal"_s);
        }
    }
    Rohfassung(const Rohfassung&) = delete;
    Rohfassung& operator=(const Rohfassung&) = delete;

    [[nodiscard]] const QString& pfad() const { return pfad_; }
    void behalte() { fertig_ = true; }

private:
    QString pfad_;
    bool fertig_ = false;
};

SQLite::Database öffneRohfassung(const Rohfassung& roh) {
    SQLite::Database verbindung(roh.pfad().toStdString(), SQLite::OPEN_READWRITE);
    verbindung.exec("PRAGMA page_size = 4096");
    return verbindung;
}

/// Copies everything at once, so that the copy is of one moment.
void kopiere(Ergebnisdatei& datei, const Rohfassung& roh, const QString& ziel) {
    int stand = SQLITE_ERROR;
    try {
        SQLite::Database kopie = öffneRohfassung(roh);
        SQLite::Backup sicherung(kopie, datei.verbindung());
        stand = sicherung.executeStep(-1);
    } catch (const SQLite::Exception& fehler) {
        const Datenbankfehler übersetzt = datenbankfehler(ziel, fehler);
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
    Rohfassung roh(QFileInfo(pfad).absoluteFilePath());
    try {
        SQLite::Database verbindung = öffneRohfassung(roh);
        SQLite::Transaction vorgang(verbindung);
        legeTabelleAn(verbindung);
        vorgang.commit();
    } catch (const SQLite::Exception& fehler) {
        throw datenbankfehler(pfad, fehler);
    }
    roh.behalte();
}

void Ergebnistabelle::sichere(const QString& ziel) const {
    const QString absolut = QFileInfo(ziel).absoluteFilePath();
    mitErgebnisdatei(pfad_, wartezeit_, [&](Ergebnisdatei& datei) {
        if (gleicheDatei(pfad_, absolut)) {
            throw Datenbankfehler(Datenbankgrund::GleicheDatei, ziel);
        }
        datei.prüfeAufbau();
        for (const QString& begleiter : {u"-journal"_s, u"-wal"_s}) {
            if (QFileInfo::exists(absolut + begleiter)) { // it would be applied to the copy
                throw Datenbankfehler(Datenbankgrund::Gesperrt, ziel);
            }
        }
        const QString neben = absolut + u'.' + QUuid::createUuid().toString(QUuid::Id128);
        try {
            Rohfassung roh(neben);
            kopiere(datei, roh, ziel);
            std::filesystem::rename(systempfad(neben), systempfad(absolut));
            roh.behalte();
        } catch (const std::filesystem::filesystem_error&) {
            throw Datenbankfehler(Datenbankgrund::NichtAnlegbar, ziel);
        } catch (const Datenbankfehler& fehler) {
            throw fehler.datei() == neben ? Datenbankfehler(Datenbankgrund::NichtAnlegbar, ziel)
                                          : fehler;
        }
    });
}

} // namespace tarvel
