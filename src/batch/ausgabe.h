#pragma once

#include "batch/befehle.h"
#include "evaluation/rassestandard.h"
#include "lang/texte.h"
#include "measure/leseproblem.h"
#include "platform/zahlen.h"
#include "settings/einstellungen.h"

#include <QByteArray>
#include <QDate>
#include <QString>

#include <functional>
#include <optional>

class QIODevice;

namespace tarvel {

/// What the commands take from outside.
struct Batchumgebung {
    const Texte& texte; ///< in the language of the call
    Zahlenformat format;
    QDate heute;
    QIODevice& eingabe;        ///< what is read in place of a file "-"
    QIODevice& ausgabe;        ///< results
    QIODevice& fehler;         ///< messages
    bool zeigtAusgabe = false; ///< whether results go to a terminal, where somebody looks at them
    /// Height in pixels of a picture that a file names; nullopt when it cannot be had.
    std::function<std::optional<float>(const QString& pfad, const QString& quelle)> bildhöhe;
};

/// The decimal separator that goes with a language. The system's own does not matter here, so that
/// a script gives the same everywhere.
[[nodiscard]] Zahlenformat zahlenformat(Sprache sprache);

/// @p text without what a terminal carries out instead of showing it: control characters and signs
/// that turn the direction stand there as "\\x1B"; line ends too, unless @p mehrzeilig.
[[nodiscard]] QString sichtbar(const QString& text, bool mehrzeilig = false);

/// A text of lines as it goes to @p ziel: sichtbar where that is a terminal, else as it is.
[[nodiscard]] QByteArray ausgabetext(const Batchumgebung& umgebung, const QString& ziel,
                                     const QByteArray& text);

/// @name Messages: "FILE:LINE: reason", a line each; "FILE: reason" where no line is to blame
/// @{
void melde(const Batchumgebung& umgebung, const QString& datei, const QString& grund,
           std::optional<int> zeile = std::nullopt);
void melde(const Batchumgebung& umgebung, const QString& datei, const Leseproblem& problem);
/// @}

/// The name that means the standard input, or output, in place of a file.
inline constexpr QStringView Standardstrom = u"-";

/// The content of a text file, or of the standard input, as far as one can be large; nullopt, with
/// a message, when it cannot be read.
[[nodiscard]] std::optional<QByteArray> liesOderMelde(const Batchumgebung& umgebung,
                                                      const QString& datei);

/// Whether a results file stands at @p ziel, or one that is too damaged or locked to tell; that is
/// told, for nothing else takes the place of one.
[[nodiscard]] bool wäreErgebnisdatei(const Batchumgebung& umgebung, const QString& ziel);

/// Makes the daily backup of a results file that was changed just now, unless the settings say
/// otherwise. A message when that is not possible; what was done stays done.
void sichereTäglich(const Batchumgebung& umgebung, const Einstellungen& einstellungen,
                    const QString& datenbank);

/// Writes @p inhalt to the file @p ziel, which is replaced only when all was written; straight into
/// a pipe or a device; to the standard output when the name is empty or "-". NichtLesbar, with a
/// message, when that failed.
[[nodiscard]] Status schreibe(const Batchumgebung& umgebung, const QString& ziel,
                              const QByteArray& inhalt);

/// The settings of @p ini, the default ones without a name; nullopt, with a message, when the file
/// cannot be read.
[[nodiscard]] std::optional<Einstellungen> ladeEinstellungen(const Batchumgebung& umgebung,
                                                             const QString& ini);

/// A race of the settings.
struct Rassenwahl {
    int position = 0; ///< in the race list
    QString name;
    Rassestandard standard;
};

/// The race of that name, upper and lower case alike, or the chosen one of the settings when the
/// name is empty; nullopt, with a message, when there is none.
[[nodiscard]] std::optional<Rassenwahl>
wähleRasse(const Batchumgebung& umgebung, const Einstellungen& einstellungen, const QString& name);

/// Puts the standard of a file in place of that of the settings, with the name of its race. False,
/// with a message, when there is none to be read.
[[nodiscard]] bool nimmStandard(const Batchumgebung& umgebung, const QString& datei,
                                Rassenwahl& rasse);

} // namespace tarvel
