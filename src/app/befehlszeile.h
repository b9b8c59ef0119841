#pragma once

#include <QStringList>

#include <variant>

namespace tarvel {

/// What the program was started with.
struct Befehlszeile {
    QString ordner;        ///< --dir: in place of the program's folder; empty: not given
    bool nurStart = false; ///< --exit-after-startup
    QString demo;          ///< --demo: folder for what the demo leaves; empty: no demo
    QStringList dateien;   ///< pictures and other files to open, full paths
    bool hilfe = false;    ///< --help
    bool version = false;  ///< --version

    bool operator==(const Befehlszeile&) const = default;
};

/// Why a command line cannot be carried out; @p text is the toolkit's own words.
struct Befehlszeilenfehler {
    QString text;
};

/// Reads the arguments of the program, the program's name first. Relative paths are taken from
/// @p arbeitsordner, so that they stay right when the program changes its folder.
[[nodiscard]] std::variant<Befehlszeile, Befehlszeilenfehler>
leseBefehlszeile(const QStringList& argumente, const QString& arbeitsordner);

/// The text of --help.
[[nodiscard]] QString befehlszeilenhilfe();

} // namespace tarvel
