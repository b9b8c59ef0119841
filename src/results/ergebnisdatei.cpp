#include "results/ergebnisdatei.h"

#include "platform/codepage.h"
#include "platform/dateiausgabe.h"
#include "results/begleitdateien.h"
#include "results/dateizugang.h"
#include "results/ergebnissatz.h"
#include "results/jetdatei.h"
#include "results/sqlfunktionen.h"

#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype GezeigterAnfang = 2000;

QString geprüfterPfad(const QString& pfad) {
    if (pfad.isEmpty()) {
        throw Datenbankfehler(Datenbankgrund::NichtGewählt, pfad);
    }
    const QFileInfo info(pfad);
    if (!info.exists()) {
        throw Datenbankfehler(Datenbankgrund::Verschwunden, pfad);
    }
    if (!info.isFile() && info.isReadable()) {
        throw Datenbankfehler(Datenbankgrund::Keine, pfad);
    }
    return info.absoluteFilePath();
}

/// What a file brings along besides its rows is nothing that we carry out: statements that come
/// with every change, a query in place of the table.
void nimmNurDaten(sqlite3* verbindung) {
    for (const int erlaubnis : {SQLITE_DBCONFIG_ENABLE_TRIGGER, SQLITE_DBCONFIG_ENABLE_VIEW,
                                SQLITE_DBCONFIG_TRUSTED_SCHEMA}) {
        sqlite3_db_config(verbindung, erlaubnis, 0, nullptr);
    }
    sqlite3_db_config(verbindung, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_drop_modules(verbindung, nullptr); // tables that are code, not rows
    sqlite3_limit(verbindung, SQLITE_LIMIT_ATTACHED, 0);
    // Damage is noticed as a page is read, before writing spreads it.
    sqlite3_exec(verbindung, "PRAGMA cell_size_check = ON", nullptr, nullptr, nullptr);
}

/// Whether the file keeps its newest rows in a log beside it, and that log holds none.
bool istVollständigOhneLog(const QString& pfad) {
    constexpr qsizetype schreibart = 18;
    QFile datei(pfad);
    return datei.open(QIODevice::ReadOnly) && datei.read(schreibart + 2).endsWith("\2\2") &&
           QFileInfo(pfad + u"-wal"_s).size() == 0;
}

/// The way to files, on which nothing has failed yet.
const char* neuerZugang() {
    vergissSystemfehler();
    return geschützterZugang();
}

/// How the engine is told of a file that nobody changes meanwhile.
std::string unveränderlich(const QString& pfad) {
    return QUrl::fromLocalFile(pfad).toEncoded().toStdString() + "?immutable=1";
}

int öffnungsart(Ergebnisdatei::Zugriff zugriff) {
    using enum Ergebnisdatei::Zugriff;
    return SQLite::OPEN_NOMUTEX |
           (zugriff == Üblich     ? SQLite::OPEN_READWRITE
            : zugriff == NurLesen ? SQLite::OPEN_READONLY
                                  : SQLite::OPEN_READONLY | SQLite::OPEN_URI);
}

std::string gequotet(QString text) {
    return (u'\'' + text.replace(u'\'', u"''"_s) + u'\'').toStdString();
}

/// @p art of the system's error that the engine met.
Datenbankgrund grundFür(int code, Fehlerart art, const QString& pfad) {
    const QFileInfo info(pfad);
    switch (code) { // what the general code alone does not tell
    case SQLITE_READONLY_DBMOVED:
        return Datenbankgrund::Verschwunden;
    case SQLITE_READONLY_ROLLBACK: // a journal that only one who writes could apply
    case SQLITE_READONLY_RECOVERY:
        return Datenbankgrund::QuelleUnterbrochen;
    case SQLITE_IOERR_SHORT_READ:
        return Datenbankgrund::Beschädigt;
    case SQLITE_IOERR_LOCK:
    case SQLITE_IOERR_RDLOCK:
    case SQLITE_IOERR_UNLOCK:
    case SQLITE_IOERR_CHECKRESERVEDLOCK:
    case SQLITE_IOERR_SHMLOCK:
        return info.exists() ? Datenbankgrund::OhneSperren : Datenbankgrund::Verschwunden;
    default:
        break;
    }
    switch (code & 0xFF) {
    case SQLITE_AUTH:
        return Datenbankgrund::FremdesJournal;
    case SQLITE_NOTADB:
        return istJetDatei(pfad) ? Datenbankgrund::Früher : Datenbankgrund::Keine;
    case SQLITE_CORRUPT:
        return Datenbankgrund::Beschädigt;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return Datenbankgrund::Gesperrt;
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return Datenbankgrund::Schreibgeschützt;
    case SQLITE_FULL:
        return Datenbankgrund::Voll;
    case SQLITE_CANTOPEN: // also the journal beside the file
        if (!info.exists()) {
            return Datenbankgrund::Verschwunden;
        }
        if (art == Fehlerart::Voll || art == Fehlerart::Laufwerk) {
            return art == Fehlerart::Voll ? Datenbankgrund::Voll : Datenbankgrund::Laufwerk;
        }
        return info.isReadable() ? Datenbankgrund::Schreibgeschützt : Datenbankgrund::Sonstiges;
    case SQLITE_IOERR:
        if (!info.exists()) {
            return Datenbankgrund::Verschwunden;
        }
        return art == Fehlerart::Voll     ? Datenbankgrund::Voll
               : art == Fehlerart::Keiner ? Datenbankgrund::Sonstiges
                                          : Datenbankgrund::Laufwerk;
    default:
        return Datenbankgrund::Sonstiges;
    }
}

/// Whether bytes that are no UTF-8 can only be Windows-1252. @p utf8 is what they give as UTF-8: a
/// letter of it among them means a text that was damaged, as does one that was cut at the end.
bool istCodepage1252(QByteArrayView bytes, const QString& utf8) {
    constexpr QByteArrayView ohneZeichen("\x81\x8D\x8F\x90\x9D");
    constexpr QByteArrayView angefangen("\xC2\xC3");
    return std::all_of(
               utf8.begin(), utf8.end(),
               [](QChar c) { return c.unicode() < 0x80 || c == QChar::ReplacementCharacter; }) &&
           std::none_of(bytes.begin(), bytes.end(),
                        [&](char byte) { return ohneZeichen.contains(byte); }) &&
           !angefangen.contains(bytes.back());
}

/// A number and the same with blanks at its end are one; of blanks alone all stay.
QString ohneEndblanks(const QString& nummer) {
    qsizetype ende = nummer.size();
    while (ende > 0 && nummer.at(ende - 1) == u' ') {
        --ende;
    }
    return ende > 0 ? nummer.first(ende) : nummer;
}

struct Index {
    const char* name;
    const char* führend;
    const char* außerdem;
};

constexpr const char* übrigeGezeigte = ", A_D, ERGEBNIS, RASSE, VATER, VOLK";

// The number stands second so that rows of the same day, breeder or owner keep one order. The last
// one is small, for what goes through all rows: the next number, the change of language.
constexpr Index indizes[] = {
    {"Ergebnisse_DATUM", "DATUM, U_NR COLLATE NOCASE, ZB_NR, Z_NAME, B_NAME", übrigeGezeigte},
    {"Ergebnisse_U_NR", "U_NR COLLATE NOCASE, DATUM, ZB_NR, Z_NAME, B_NAME", übrigeGezeigte},
    {"Ergebnisse_ZB_NR", "ZB_NR COLLATE NOCASE, U_NR COLLATE NOCASE, DATUM, Z_NAME, B_NAME",
     übrigeGezeigte},
    {"Ergebnisse_Z_NAME", "Z_NAME COLLATE NOCASE, U_NR COLLATE NOCASE, DATUM, ZB_NR, B_NAME",
     übrigeGezeigte},
    {"Ergebnisse_B_NAME", "B_NAME COLLATE NOCASE, U_NR COLLATE NOCASE, DATUM, ZB_NR, Z_NAME",
     übrigeGezeigte},
    {"Ergebnisse_Klein", "DATUM, U_NR", ", ERGEBNIS, A_D"},
};

} // namespace

Spaltentext spaltentext(const SQLite::Column& wert) {
    const char* anfang = wert.getText();
    const qsizetype anzahl = wert.getBytes();
    if (anzahl > LängsterWert) {
        return {QString::fromUtf8(anfang, GezeigterAnfang), true, false, true};
    }
    const QByteArrayView bytes(anfang, anzahl);
    QString utf8 = QString::fromUtf8(bytes);
    if (bytes.isValidUtf8()) {
        return {utf8};
    }
    if (istCodepage1252(bytes, utf8)) {
        return {ausCodepage1252(bytes), false};
    }
    return {std::move(utf8), false, false};
}

Datenbankfehler datenbankfehler(const QString& pfad, const SQLite::Exception& fehler) {
    const int code =
        fehler.getExtendedErrorCode() > 0 ? fehler.getExtendedErrorCode() : fehler.getErrorCode();
    const Datenbankgrund grund =
        grundFür(code, fehlerart({systemfehler(), std::system_category()}), pfad);
    switch (grund) {
    case Datenbankgrund::Sonstiges:
        return {grund, pfad, QString::fromUtf8(fehler.what())};
    case Datenbankgrund::Laufwerk:
        return {grund, pfad, qt_error_string(systemfehler())};
    case Datenbankgrund::FremdesJournal:
        return {grund, pfad, verweigerterBegleiter(pfad)};
    default:
        return {grund, pfad};
    }
}

Ergebnisdatei::Ergebnisdatei(const QString& pfad, std::chrono::milliseconds wartezeit,
                             Zugriff zugriff)
    : pfad_(pfad)
    // For reading too: after a crash the reader has to undo what a writer had begun.
    , verbindung_(zugriff == Zugriff::Unveränderlich ? unveränderlich(geprüfterPfad(pfad))
                                                     : geprüfterPfad(pfad).toStdString(),
                  öffnungsart(zugriff), static_cast<int>(wartezeit.count()), neuerZugang()) {
    nimmNurDaten(verbindung_.getHandle());
    registriereVALundYear(verbindung_);
}

void Ergebnisdatei::prüfeAufbau() {
    const std::string alle = tabellenspalten().join(u", "_s).toStdString();
    try {
        const SQLite::Statement probe(verbindung_, "SELECT " + alle + " FROM Ergebnisse");
        return;
    } catch (const SQLite::Exception& fehler) {
        if (!vielleichtAufbau(fehler)) {
            throw;
        }
    }
    if (!verbindung_.tableExists("Ergebnisse")) {
        throw Datenbankfehler(Datenbankgrund::OhneTabelle, pfad_);
    }
    QStringList fehlend = tabellenspalten();
    SQLite::Statement vorhanden(verbindung_, "PRAGMA table_info(Ergebnisse)");
    while (vorhanden.executeStep()) {
        const QString name = QString::fromStdString(vorhanden.getColumn(1).getString());
        fehlend.removeIf(
            [&](const QString& spalte) { return spalte.compare(name, Qt::CaseInsensitive) == 0; });
    }
    throw Datenbankfehler(Datenbankgrund::SpalteFehlt, pfad_, fehlend.join(u", "_s));
}

bool Ergebnisdatei::vielleichtAufbau(const SQLite::Exception& fehler) {
    return fehler.getErrorCode() == SQLITE_ERROR;
}

bool Ergebnisdatei::liegtFest(const QString& pfad, const SQLite::Exception& fehler) {
    const int code = fehler.getErrorCode() & 0xFF;
    return (code == SQLITE_CANTOPEN || code == SQLITE_READONLY) && istVollständigOhneLog(pfad);
}

const std::string& Ergebnisdatei::platz() {
    if (platz_.empty()) {
        QStringList belegt;
        SQLite::Statement vorhanden(verbindung_, "PRAGMA table_xinfo(Ergebnisse)");
        while (vorhanden.executeStep()) {
            belegt << QString::fromStdString(vorhanden.getColumn(1).getString()).toLower();
        }
        for (const char* name : {"rowid", "_rowid_", "oid"}) {
            if (!belegt.contains(QLatin1StringView(name))) {
                return platz_ = name;
            }
        }
        throw Datenbankfehler(Datenbankgrund::SpalteFehlt, pfad_, u"rowid"_s);
    }
    return platz_;
}

void Ergebnisdatei::vergleicheMitUmlauten() {
    registriereLIKE(verbindung_);
}

std::vector<Fundstelle> Ergebnisdatei::finde(const QString& gesucht) {
    const QString nummer = ohneEndblanks(gesucht);
    const auto anders = std::find_if(nummer.begin(), nummer.end(),
                                     [](QChar c) { return c.unicode() >= 0x80 || c.isNull(); });
    // The engine compares only ASCII letters without regard to case, and nothing behind a zero.
    // Those in front keep the index in use; the rest is compared here.
    const std::string muster =
        anders == nummer.end()
            ? likeWörtlich(nummer) + " OR U_NR LIKE " +
                  gequotet(ohnePlatzhalter(nummer) + u" %"_s) + " ESCAPE '\\'"
            : gequotet(ohnePlatzhalter(nummer.left(anders - nummer.begin())) + u'%') +
                  " ESCAPE '\\'";
    SQLite::Statement kandidaten(
        verbindung_, "SELECT " + platz() + ", U_NR FROM Ergebnisse WHERE U_NR LIKE " + muster);
    std::vector<Fundstelle> gefunden;
    int anzahl = 0;
    while (kandidaten.executeStep()) {
        ++anzahl;
        Fundstelle stelle{kandidaten.getColumn(0).getInt64(), spaltentext(kandidaten.getColumn(1))};
        if (ohneEndblanks(stelle.U_NR.text).compare(nummer, Qt::CaseInsensitive) == 0) {
            gefunden.push_back(std::move(stelle));
        }
    }
    if (gefunden.size() == 1) {
        gefunden.front().allein = anzahl == 1 && anders == nummer.end();
    }
    return gefunden;
}

void legeTabelleAn(SQLite::Database& verbindung) {
    verbindung.exec("CREATE TABLE Ergebnisse("
                    "U_NR TEXT(10) CONSTRAINT U_NR Primary Key"
                    ", ZB_NR TEXT(30), Z_NAME TEXT(30),A_D TEXT(9), RASSE TEXT(30), B_NAME TEXT(30)"
                    ", ERGEBNIS TEXT(4), DATUM DATETIME, VATER TEXT(30), VOLK TEXT(30)"
                    ", CI LONGTEXT, HI_DV LONGTEXT, PROZENT TEXT(70), MERKMAL LONGTEXT"
                    ", Grafik1 LONGTEXT, Grafik2 LONGTEXT, Grafik3 LONGTEXT, Grafik4 LONGTEXT"
                    ");");
    ergänzeIndizes(verbindung);
}

bool indizesVollständig(SQLite::Database& verbindung) {
    QStringList namen;
    SQLite::Statement vorhandene(verbindung, "SELECT name FROM sqlite_master WHERE type = 'index'");
    while (vorhandene.executeStep()) {
        namen << QString::fromStdString(vorhandene.getColumn(0).getString());
    }
    return std::all_of(std::begin(indizes), std::end(indizes), [&](const Index& index) {
        return namen.contains(QString::fromLatin1(index.name));
    });
}

void ergänzeIndizes(SQLite::Database& verbindung) {
    for (const auto& [name, führend, außerdem] : indizes) {
        verbindung.exec(std::string("CREATE INDEX IF NOT EXISTS ") + name + " ON Ergebnisse(" +
                        führend + außerdem + ")");
    }
}

Schreibvorgang::Schreibvorgang(Ergebnisdatei& datei, Indizes wann)
    : datei_(datei)
    , vorgang_(datei.verbindung(), SQLite::TransactionBehavior::IMMEDIATE) {
    if (wann == Indizes::Zuvor) {
        ergänzeIndizes(datei.verbindung());
    }
}

void Schreibvorgang::commit() {
    vorgang_.commit();
    SQLite::Database& verbindung = datei_.verbindung();
    try {
        if (!indizesVollständig(verbindung)) {
            verbindung.setBusyTimeout(0); // nobody waits for them
            SQLite::Transaction nachtrag(verbindung, SQLite::TransactionBehavior::IMMEDIATE);
            ergänzeIndizes(verbindung);
            nachtrag.commit();
        }
    } catch (const SQLite::Exception&) { // NOLINT(bugprone-empty-catch)
        // Without them the file serves as well, only slower; the next change tries again.
    }
}

void entferneIndizes(SQLite::Database& verbindung) {
    for (const auto& index : indizes) {
        verbindung.exec("DROP INDEX IF EXISTS " + std::string(index.name));
    }
}

std::string likeWörtlich(const QString& text) {
    const QString maskiert = ohnePlatzhalter(text);
    return gequotet(maskiert) + (maskiert == text ? "" : " ESCAPE '\\'");
}

QString ohnePlatzhalter(QString text) {
    return text.replace(u'\\', u"\\\\"_s).replace(u'%', u"\\%"_s).replace(u'_', u"\\_"_s);
}

} // namespace tarvel
