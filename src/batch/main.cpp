#include "batch/ausfuhr.h"
#include "batch/ausgabe.h"
#include "batch/auswerten.h"
#include "batch/befehle.h"
#include "batch/einfuhr.h"
#include "batch/messen.h"
#include "batch/protokoll.h"
#include "batch/uebersicht.h"
#include "batch/zusammenfuehren.h"
#include "measure/bildhoehe.h"
#include "platform/prozess.h"
#include "platform/uhr.h"

#include <QFile>
#include <QGuiApplication>
#include <QLoggingCategory>

#include <cstdio>
#include <exception>
#include <memory>

namespace {

using namespace tarvel;
using namespace Qt::StringLiterals;

/// Carries a command out.
class Ausführung {
public:
    Ausführung(const Batchumgebung& umgebung, int& argc, char** argv)
        : umgebung_(umgebung)
        , argc_(argc)
        , argv_(argv) {}

    Status operator()(const Auskunft& auskunft) const {
        return schreibe(umgebung_, {}, auskunft.text.toUtf8());
    }
    Status operator()(const Auswertungsbefehl& befehl) const { return evaluate(befehl, umgebung_); }
    Status operator()(const Ausfuhrbefehl& befehl) const { return exportiere(befehl, umgebung_); }
    Status operator()(const Einfuhrbefehl& befehl) const { return importiere(befehl, umgebung_); }
    Status operator()(const Zusammenführungsbefehl& befehl) const {
        return führeZusammen(befehl, umgebung_);
    }
    Status operator()(const Protokollbefehl& befehl) const {
        const auto app = maler();
        return schreibeProtokoll(befehl, umgebung_);
    }
    Status operator()(const Übersichtsbefehl& befehl) const {
        const auto app = befehl.bild.isEmpty() ? nullptr : maler();
        return schreibeÜbersicht(befehl, umgebung_);
    }
    Status operator()(const Bildmessbefehl& befehl) const {
        const auto app = befehl.zeichnungen.isEmpty() ? nullptr : maler();
        return missBilder(befehl, umgebung_);
    }

private:
    /// Painting needs fonts, never a display. What the toolkit misses of a desktop is no message
    /// for the caller.
    [[nodiscard]] std::unique_ptr<QGuiApplication> maler() const {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QLoggingCategory::setFilterRules(u"default.warning=false"_s);
        return std::make_unique<QGuiApplication>(argc_, argv_);
    }

    const Batchumgebung& umgebung_;
    int& argc_;
    char** argv_;
};

int laufe(int argc, char** argv) {
    richteProzessEin();
    QFile ausgabe;
    QFile fehler;
    QFile eingabe;
    // Closed for a service; few commands read it. As a stream of the C library a pipe's end would
    // be an error on Windows.
    constexpr int Standardeingabe = 0;
    (void)eingabe.open(Standardeingabe, QIODevice::ReadOnly);
    if (!ausgabe.open(stdout, QIODevice::WriteOnly) || !fehler.open(stderr, QIODevice::WriteOnly)) {
        return static_cast<int>(Status::NichtLesbar);
    }
    const auto gelesen = leseAufruf(aufrufargumente(argc, argv));
    if (const auto* falsch = std::get_if<Aufruffehler>(&gelesen)) {
        fehler.write((u"tarvel-batch: "_s + sichtbar(falsch->text, true) +
                      u"\n'tarvel-batch --help' shows how it is used.\n"_s)
                         .toUtf8());
        return static_cast<int>(Status::FalscherAufruf);
    }
    const auto& aufruf = std::get<Aufruf>(gelesen);
    Texte texte{QString()};
    texte.SpracheEinstellen(static_cast<int>(aufruf.sprache));
    const Batchumgebung umgebung{.texte = texte,
                                 .format = zahlenformat(aufruf.sprache),
                                 .heute = SystemClock().now().date(),
                                 .eingabe = eingabe,
                                 .ausgabe = ausgabe,
                                 .fehler = fehler,
                                 .zeigtAusgabe = istTerminal(stdout),
                                 .bildhöhe = bildhöhe};
    const Status status = std::visit(Ausführung(umgebung, argc, argv), aufruf.befehl);
    if (!ausgabe.flush() || ausgabe.error() != QFileDevice::NoError) {
        melde(umgebung, u"tarvel-batch"_s, ausgabe.errorString());
        return static_cast<int>(Status::NichtLesbar);
    }
    return static_cast<int>(status);
}

} // namespace

int main(int argc, char** argv) {
    try {
        return laufe(argc, argv);
    } catch (const std::exception& fehler) {
        std::fputs(qUtf8Printable(sichtbar(QString::fromUtf8(fehler.what()))), stderr);
        return static_cast<int>(Status::NichtLesbar);
    }
}
