#pragma once

#include "results/untersuchungssatz.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>
#include <span>
#include <vector>

namespace tarvel {

/// A column of the tables for research, with what the dictionary says about it.
struct Ausfuhrspalte {
    const char* name;
    const char* art; ///< "TEXT", "INTEGER" or "REAL"
    const char* bedeutung;
};
struct Ausfuhrtabelle {
    const char* name;
    std::span<const Ausfuhrspalte> spalten;
};
/// Their names, columns and meanings: examinations, wings, points, marks, and the dictionary
/// "columns" itself.
[[nodiscard]] std::span<const Ausfuhrtabelle> ausfuhrtabellen();

/// Where rows of tables go. Nothing is there under its name before schließeAb().
class Tabellenziel {
public:
    virtual ~Tabellenziel() = default;

    /// A row of the table at @p tabelle in ausfuhrtabellen(). Texts, numbers, or an invalid
    /// variant for a value that there is none of. Throws Ausfuhrfehler.
    virtual void zeile(std::size_t tabelle, const QVariantList& werte) = 0;
    /// Puts what was written in its place. Throws Ausfuhrfehler; nothing is there then.
    virtual void schließeAb() = 0;
};

/// Why tables could not be written, in the system's words.
struct Ausfuhrfehler {
    QString pfad;
    QString grund;
};

/// A CSV file each, UTF-8, in the folder @p ordner, which is made when it is missing; files of the
/// same names are replaced.
[[nodiscard]] std::unique_ptr<Tabellenziel> csvziel(const QString& ordner);
/// A new SQLite file, which replaces one of its name.
[[nodiscard]] std::unique_ptr<Tabellenziel> sqliteziel(const QString& pfad);

/// Examinations as tables for research: an examination, wing, point and code of body marks a row.
/// Coordinates are pixels of the scan at no magnification, from its upper left corner.
class Tabellenausfuhr {
public:
    /// Writes the dictionary. @p ziel outlives it.
    explicit Tabellenausfuhr(Tabellenziel& ziel);

    /// Adds the examination that @p satz keeps. Returns the columns whose content was not
    /// understood; the rest is there.
    QStringList nimm(const Ergebnissatz& satz, const Satzumgebung& umgebung);

private:
    Tabellenziel& ziel_;
};

} // namespace tarvel
