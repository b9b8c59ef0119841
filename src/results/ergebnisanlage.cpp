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

/// Whether a name is taken, be it by a link that leads nowhere.
bool istBelegt(const QString& pfad) {
    std::error_code fehler;
    return std::filesystem::exists(std::filesystem::symlink_status(systempfad(pfad), fehler));
}

/// A file that comes into being beside the place it is meant for, where it appears only when it is
/// complete. Away again otherwise.
class Rohfassung {
public:
    /// @p ziel full path of the place; @p genannt what the user calls it.
    Rohfassung(const QString& ziel, const QString& genannt)
        : pfad_(ziel + u'.' + QUuid::createUuid().toString(QUuid::Id128)) {
        QFile datei(pfad_);
        if (!datei.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
            throw Datenbankfehler(Datenbankgrund::NichtAnlegbar, genannt);
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
    /// Gives the file its name; false when the name is taken or can't be given.
    [[nodiscard]] bool benenne(const QString& ziel) {
        std::error_code fehler;
        // A second name is given only where there is no file, whatever others do meanwhile.
        std::filesystem::create_hard_link(systempfad(pfad_), systempfad(ziel), fehler);
        if (!fehler) {
            return true; // the first name goes with this object
        }
        return !istBelegt(ziel) && ersetze(ziel); // a drive that knows no second names
    }
    /// The same in place of a file that is there.
    [[nodiscard]] bool ersetze(const QString& ziel) {
        std::error_code fehler;
        std::filesystem::rename(systempfad(pfad_), systempfad(ziel), fehler);
        fertig_ = !fehler;
        return fertig_;
    }

private:
    QString pfad_;
    bool fertig_ = false;
};

SQLite::Database öffneRohfassung(const Rohfassung& roh) {
    SQLite::Database verbindung(roh.pfad().toStdString(), SQLite::OPEN_READWRITE);
    verbindung.exec("PRAGMA page_size = 4096");
    return verbindung;
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
    Rohfassung roh(absolut, pfad);
    try {
        SQLite::Database verbindung = öffneRohfassung(roh);
        SQLite::Transaction vorgang(verbindung);
        legeTabelleAn(verbindung);
        vorgang.commit();
    } catch (const SQLite::Exception& fehler) {
        const Datenbankfehler übersetzt = datenbankfehler(roh.pfad(), fehler);
        throw Datenbankfehler(übersetzt.grund(), pfad, übersetzt.einzelheit());
    }
    if (!roh.benenne(absolut)) {
        throw Datenbankfehler(istBelegt(absolut) ? Datenbankgrund::SchonVorhanden
                                                 : Datenbankgrund::NichtAnlegbar,
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
        for (const QString& begleiter : {u"-journal"_s, u"-wal"_s}) {
            if (QFileInfo::exists(absolut + begleiter)) { // it would be applied to the copy
                throw Datenbankfehler(Datenbankgrund::Gesperrt, ziel);
            }
        }
        Rohfassung roh(absolut, ziel);
        kopiere(datei, roh, ziel);
        if (!roh.ersetze(absolut)) {
            throw Datenbankfehler(Datenbankgrund::NichtAnlegbar, ziel);
        }
    });
}

} // namespace tarvel
