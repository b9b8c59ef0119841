#include "app/befehlszeile.h"

#include <QCommandLineParser>
#include <QDir>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

// The command line speaks English, as its option names do; it is read before the language is known.
struct Leser {
    QCommandLineOption ordner{u"dir"_s,
                              u"Use <path> in place of the program's folder for Index.ini, help "
                              "and samples."_s,
                              u"path"_s};
    QCommandLineOption nurStart{
        u"exit-after-startup"_s,
        u"Start, paint the first window, and the picture if one is named, and end."_s};
    QCommandLineOption demo{u"demo"_s,
                            u"Work through a sample examination and leave its pictures in "
                            "<path>."_s,
                            u"path"_s};
    QCommandLineOption hilfe{{u"h"_s, u"help"_s}, u"Show this help."_s};
    QCommandLineOption version{{u"v"_s, u"version"_s}, u"Show the version."_s};
    QCommandLineParser parser;

    Leser() {
        parser.setApplicationDescription(u"Wing morphometrics for bee breeders."_s);
        parser.addOptions({ordner, nurStart, demo, hilfe, version});
        parser.addPositionalArgument(
            u"FILE"_s,
            u"Wing picture to load for measuring, results file (*.tdb) to use, measurement file "
            "(*.Bee) or coordinates (*.csv, *.tps) to read in. Several measurement files, or a "
            "folder of them, go into the results file."_s,
            u"[FILE...]"_s);
    }
};

QString vollerPfad(const QString& pfad, const QString& arbeitsordner) {
    return QDir::cleanPath(QDir(arbeitsordner).absoluteFilePath(pfad));
}

} // namespace

std::variant<Befehlszeile, Befehlszeilenfehler> leseBefehlszeile(const QStringList& argumente,
                                                                 const QString& arbeitsordner) {
    Leser leser;
    if (!leser.parser.parse(argumente)) {
        return Befehlszeilenfehler{leser.parser.errorText()};
    }
    Befehlszeile zeile;
    for (const auto& [option, ziel] :
         {std::pair{&leser.ordner, &zeile.ordner}, std::pair{&leser.demo, &zeile.demo}}) {
        if (!leser.parser.isSet(*option)) {
            continue;
        }
        if (leser.parser.value(*option).isEmpty()) {
            return Befehlszeilenfehler{
                u"Missing value after '--%1'."_s.arg(option->names().constFirst())};
        }
        *ziel = vollerPfad(leser.parser.value(*option), arbeitsordner);
    }
    zeile.nurStart = leser.parser.isSet(leser.nurStart);
    zeile.hilfe = leser.parser.isSet(leser.hilfe);
    zeile.version = leser.parser.isSet(leser.version);
    const QStringList dateien = leser.parser.positionalArguments();
    for (const QString& datei : dateien) {
        zeile.dateien.append(vollerPfad(datei, arbeitsordner));
    }
    return zeile;
}

QString befehlszeilenhilfe() {
    // The toolkit's text begins with a line of usage that does not know the program yet.
    const QString text = Leser().parser.helpText();
    return u"Usage: tarvel [options] [FILE...]"_s + text.sliced(text.indexOf(u'\n'));
}

} // namespace tarvel
