#pragma once

#include "app/eingabefilter.h"
#include "app/hilfetaste.h"
#include "app/umgebung.h"
#include "lang/protokolltexte.h"
#include "lang/qt_uebersetzung.h"
#include "platform/benutzerspeicher.h"
#include "platform/instanz.h"
#include "results/arbeitsplatz.h"

#include <QLocale>

#include <functional>
#include <memory>

namespace tarvel {

class Dateiannahme;
class HG;
class Start;

/// What the program takes from the computer it runs on. Everything outlives the program.
struct Dienste {
    Dialoge& dialoge;
    Shell& shell;
    Benutzerspeicher& speicher;
    const Clock& uhr;
    Druckersystem& drucker;
    Zahlenformat format;
    QString dokumente;                 ///< folder that the first results file is made in
    QLocale::Language benutzersprache; ///< preselects the language at the first run
    /// Shows the first-run window and returns when it is closed.
    std::function<void(Start&)> ersterLauf;
    /// See Umgebung::modell.
    std::function<Modellergebnis()> modell = {};
};

/// The running program: settings, texts and main window, set up in the order of `Hauptstart`.
class Programm {
public:
    /// @p ordner folder of Index.ini, help and samples.
    Programm(const QString& ordner, const Dienste& dienste);
    ~Programm();

    /// Starts the program. False when it has to end at once, because another instance is running;
    /// that one has taken @p dateien over then, or the message was shown.
    [[nodiscard]] bool Hauptstart(const QStringList& dateien = {});

    /// The main window; null before a successful start.
    [[nodiscard]] HG* hauptfenster() const { return hg_.get(); }
    [[nodiscard]] Texte& texte() { return texte_; }
    /// The user's own wording of the report, loaded at start-up when the settings ask for it.
    [[nodiscard]] const Protokollfelder& übersetzung() const { return übersetzung_; }
    [[nodiscard]] Einstellungen& einstellungen() { return einstellungen_; }

private:
    QString ordner_;
    Dienste dienste_;
    Einstellungen einstellungen_;
    Texte texte_;
    QtÜbersetzung qtÜbersetzung_;
    Protokollfelder übersetzung_;
    Hilfetaste hilfetaste_;
    Eingabefilter eingabefilter_;
    Arbeitsplatz arbeitsplatz_;
    std::unique_ptr<Instanz> instanz_;
    std::unique_ptr<HG> hg_;
    std::unique_ptr<Dateiannahme> annahme_;
};

} // namespace tarvel
