#pragma once

#include "results/datenbankfehler.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>
#include <SQLiteCpp/Transaction.h>

#include <QStringList>

#include <chrono>
#include <string>
#include <vector>

namespace tarvel {

/// Longer values, in bytes, are none of an examination, and their texts would fill the memory.
inline constexpr qsizetype LängsterWert = qsizetype{64} * 1024 * 1024;

/// A text as a column holds it. The engine takes whatever bytes a program gives it: those that are
/// no UTF-8 are taken for Windows-1252.
struct Spaltentext {
    QString text;
    bool istUtf8 = true;
    bool istLesbar = true;  ///< false when the bytes can be neither of them
    bool istZuGroß = false; ///< beyond all measure; the text is its beginning
};
[[nodiscard]] Spaltentext spaltentext(const SQLite::Column& wert);

/// A row that a number was found in.
struct Fundstelle {
    qint64 id = 0; ///< its place in the file
    Spaltentext U_NR;
    /// No other number of the file matches it by LIKE, which looks no further than a zero.
    bool allein = false;
};

/// A results file while one operation works on it: open from the first line to the last.
class Ergebnisdatei {
public:
    enum class Zugriff {
        Üblich,
        NurLesen,       ///< never writes, not even what a crash left to be undone
        Unveränderlich, ///< reads where no file can be made beside it, and asks for no lock
    };
    /// Opens a file that exists. @p wartezeit how long to wait for another program that writes.
    /// Throws Datenbankfehler.
    Ergebnisdatei(const QString& pfad, std::chrono::milliseconds wartezeit,
                  Zugriff zugriff = Zugriff::Üblich);

    [[nodiscard]] SQLite::Database& verbindung() { return verbindung_; }
    [[nodiscard]] const QString& pfad() const { return pfad_; }

    /// The name that the place of a row goes by in this file: a table may have a column `rowid` of
    /// its own. Throws Datenbankfehler when it has one of each such name.
    [[nodiscard]] const std::string& platz();

    /// From here on LIKE on this file knows umlauts; see registriereLIKE.
    void vergleicheMitUmlauten();

    /// The rows of that number in every spelling that differs only in case, umlauts included, or in
    /// blanks at its end.
    [[nodiscard]] std::vector<Fundstelle> finde(const QString& nummer);

    /// Throws Datenbankfehler when the table or one of its columns is missing.
    void prüfeAufbau();
    /// Whether the lack of a table or a column can be the reason why a statement failed.
    [[nodiscard]] static bool vielleichtAufbau(const SQLite::Exception& fehler);
    /// Whether a statement failed only because the log of a file that is complete without it cannot
    /// be made. It can be read as one that does not change.
    [[nodiscard]] static bool liegtFest(const QString& pfad, const SQLite::Exception& fehler);

private:
    QString pfad_;
    SQLite::Database verbindung_;
    std::string platz_;
};

/// What the engine reported, in our terms, with what the system said since the file was opened.
[[nodiscard]] Datenbankfehler datenbankfehler(const QString& pfad, const SQLite::Exception& fehler);

/// Does @p arbeit on the open file; whatever the engine reports becomes a Datenbankfehler.
template <typename Arbeit>
auto mitErgebnisdatei(const QString& pfad, std::chrono::milliseconds wartezeit, Arbeit&& arbeit,
                      Ergebnisdatei::Zugriff zugang = Ergebnisdatei::Zugriff::Üblich) {
    using enum Ergebnisdatei::Zugriff;
    const auto versuche = [&](Ergebnisdatei::Zugriff zugriff) {
        Ergebnisdatei datei(pfad, wartezeit, zugriff);
        try {
            return arbeit(datei);
        } catch (const SQLite::Exception& fehler) {
            if (Ergebnisdatei::vielleichtAufbau(fehler)) {
                datei.prüfeAufbau();
            }
            throw;
        }
    };
    try {
        try {
            return versuche(zugang);
        } catch (const SQLite::Exception& fehler) {
            if (!Ergebnisdatei::liegtFest(pfad, fehler)) {
                throw;
            }
        }
        return versuche(Unveränderlich);
    } catch (const SQLite::Exception& fehler) {
        throw datenbankfehler(pfad, fehler);
    }
}

/// @name What the file is made of
/// @{

/// Makes the table and its indexes in an empty file.
void legeTabelleAn(SQLite::Database& verbindung);
[[nodiscard]] bool indizesVollständig(SQLite::Database& verbindung);
/// Makes the indexes that are missing. Each holds all that the browser shows, so that it never
/// reads the long texts; none contains a function, so every program with the engine can write the
/// file.
void ergänzeIndizes(SQLite::Database& verbindung);
/// A change of a results file, which rolls back unless it is committed. Begins with the wish to
/// write, so that two programs never wait for each other half-way. A file without our indexes gains
/// them with the first change, never by being looked at.
class Schreibvorgang {
public:
    /// Whether the indexes come after the change, which is safe by then whatever becomes of them,
    /// or in front of it, because it looks up many rows.
    enum class Indizes { Danach, Zuvor };
    explicit Schreibvorgang(Ergebnisdatei& datei, Indizes wann = Indizes::Danach);
    void commit();

private:
    Ergebnisdatei& datei_;
    SQLite::Transaction vorgang_;
};
/// Takes the indexes away, which makes changing every row quicker.
void entferneIndizes(SQLite::Database& verbindung);
/// @}

/// @p text as it stands behind LIKE to match only itself: quoted, wildcards escaped.
[[nodiscard]] std::string likeWörtlich(const QString& text);
/// @p text for a bound pattern with ESCAPE '\': wildcards escaped.
[[nodiscard]] QString ohnePlatzhalter(QString text);

} // namespace tarvel
