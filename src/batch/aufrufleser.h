#pragma once

#include "batch/befehle.h"

#include <QCommandLineParser>

#include <initializer_list>
#include <memory>
#include <utility>

namespace tarvel {

/// A value that an option takes, and what it means.
template <typename Wert>
using Optionsauswahl = std::initializer_list<std::pair<const char*, Wert>>;

/// How a command is explained. The example stands in the manual too.
struct Befehlsbeschreibung {
    QString befehl;
    QString argumente;
    QString text;
    QString beispiel;
};

/// The command line of one command. Its readers throw Aufruffehler.
class Aufrufleser {
public:
    explicit Aufrufleser(Befehlsbeschreibung beschreibung)
        : beschreibung_(std::move(beschreibung)) {
        option(QStringLiteral("language"),
               QStringLiteral("Language of texts and messages: de, en (default) or fr."),
               QStringLiteral("language"));
        parser_->addOption(
            {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")});
    }

    void option(const QString& name, const QString& text, const QString& wert = {}) {
        parser_->addOption({name, text, wert});
    }

    /// One that has a letter, too.
    void kurzoption(const QString& buchstabe, const QString& name, const QString& text,
                    const QString& wert) {
        parser_->addOption({{buchstabe, name}, text, wert});
    }

    void optionIni() {
        option(QStringLiteral("ini"),
               QStringLiteral("Settings file (Index.ini) with race standards and options."),
               QStringLiteral("file"));
    }
    void optionRasse() {
        option(QStringLiteral("race"), QStringLiteral("Race whose standard the judgement uses."),
               QStringLiteral("name"));
    }

    void lies(const QStringList& argumente) {
        if (!parser_->parse(argumente)) {
            throw Aufruffehler{parser_->errorText()};
        }
    }

    [[nodiscard]] bool gesetzt(const QString& name) const { return parser_->isSet(name); }
    [[nodiscard]] QStringList argumente() const { return parser_->positionalArguments(); }

    [[nodiscard]] QString hilfe() const {
        // The toolkit's text begins with a line of usage that does not know the command.
        const QString optionen = parser_->helpText();
        return QStringLiteral("Usage: tarvel-batch ") + beschreibung_.befehl + u' ' +
               beschreibung_.argumente + QStringLiteral("\n\n") + beschreibung_.text +
               QStringLiteral("\n\nExample:\n  ") + beschreibung_.beispiel + u'\n' +
               optionen.sliced(optionen.indexOf(u'\n'));
    }

    /// The value of an option; empty when it is not given.
    [[nodiscard]] QString wert(const QString& name) const {
        QString wert = parser_->value(name);
        if (gesetzt(name) && wert.isEmpty()) {
            throw Aufruffehler{QStringLiteral("Missing value after '--%1'.").arg(name)};
        }
        return wert;
    }

    [[nodiscard]] QString nötig(const QString& name) const {
        if (!gesetzt(name)) {
            throw Aufruffehler{
                QStringLiteral("'%1' needs the option '--%2'.").arg(beschreibung_.befehl, name)};
        }
        return wert(name);
    }

    [[nodiscard]] std::optional<int> zahl(const QString& name, int höchste) const {
        const QString text = wert(name);
        if (text.isEmpty()) {
            return std::nullopt;
        }
        bool lesbar = false;
        const int zahl = text.toInt(&lesbar);
        if (!lesbar || zahl < 1 || zahl > höchste) {
            throw Aufruffehler{QStringLiteral("'--%1' takes a whole number from 1 to %2, not '%3'.")
                                   .arg(name, QString::number(höchste), text)};
        }
        return zahl;
    }

    /// With a point, whatever the language.
    [[nodiscard]] double bruchzahl(const QString& name, double vorgabe, double höchste) const {
        const QString text = wert(name);
        if (text.isEmpty()) {
            return vorgabe;
        }
        bool lesbar = false;
        const double zahl = text.toDouble(&lesbar);
        if (!lesbar || !(zahl >= 0 && zahl <= höchste)) {
            throw Aufruffehler{QStringLiteral("'--%1' takes a number from 0 to %2, not '%3'.")
                                   .arg(name, QString::number(höchste), text)};
        }
        return zahl;
    }

    template <typename Wert>
    [[nodiscard]] Wert auswahl(const QString& name, Wert vorgabe,
                               Optionsauswahl<Wert> möglich) const {
        const QString text = wert(name);
        if (text.isEmpty()) {
            return vorgabe;
        }
        QStringList namen;
        for (const auto& [möglichkeit, bedeutung] : möglich) {
            if (text == QLatin1StringView(möglichkeit)) {
                return bedeutung;
            }
            namen << QString::fromLatin1(möglichkeit);
        }
        throw Aufruffehler{QStringLiteral("'--%1' takes %2, not '%3'.")
                               .arg(name, namen.join(QStringLiteral(", ")), text)};
    }

    [[nodiscard]] Sprache sprache() const {
        return auswahl(
            QStringLiteral("language"), Sprache::Englisch,
            {{"de", Sprache::Deutsch}, {"en", Sprache::Englisch}, {"fr", Sprache::Französisch}});
    }

    /// Positional arguments, @p anzahl of them.
    [[nodiscard]] QStringList genau(qsizetype anzahl) const {
        if (argumente().size() != anzahl) {
            throw Aufruffehler{QStringLiteral("'%1' takes %2.")
                                   .arg(beschreibung_.befehl, beschreibung_.argumente)};
        }
        return argumente();
    }
    [[nodiscard]] QStringList dateien() const {
        if (argumente().isEmpty()) {
            throw Aufruffehler{
                QStringLiteral("'%1' needs at least one file.").arg(beschreibung_.befehl)};
        }
        if (argumente().count(QStringLiteral("-")) > 1) {
            throw Aufruffehler{QStringLiteral("The standard input '-' can be read only once.")};
        }
        return argumente();
    }

private:
    Befehlsbeschreibung beschreibung_;
    std::unique_ptr<QCommandLineParser> parser_ = std::make_unique<QCommandLineParser>();
};

} // namespace tarvel
