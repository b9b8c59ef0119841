#pragma once

#include "app/hinweisgeber.h"
#include "app/umgebung.h"
#include "measure/verteiler.h"
#include "results/arbeitsplatz.h"
#include "results/neubeurteilung.h"
#include "results/tagessicherung.h"

#include <functional>

class QWidget;

namespace tarvel {

/// What the ways of examinations and files need of the window. Everything outlives them.
struct Fensterdienste {
    QWidget* fenster;
    Verteiler& verteiler;
    Hinweisgeber& hinweise;
    /// Completes the field that is being typed in.
    std::function<void()> vervollständige;
    /// Shows the place of measuring for the first wing of an examination.
    std::function<void()> beginneMessen;
    /// Loads a picture for measuring; false when the present one stays.
    std::function<bool(const QString& pfad)> ladeBild;
};

/// How examinations come into the window and leave it: at the start, new, from the results file,
/// and into it.
class Untersuchungsgang {
public:
    Untersuchungsgang(const Umgebung& umgebung, Arbeitsplatz& arbeitsplatz,
                      const Fensterdienste& dienste);

    /// Shows the examination that the program starts with: one that a crash interrupted, if the
    /// user wants to go on with it, else the latest one of the results file, or a new one where
    /// there is none.
    void beginne();
    void neueUntersuchung(Personen personen = Personen::Neue);
    /// Lets the user choose one in the browser.
    void öffne();
    /// Shows what the results file says of the bees; one of its examinations may be opened there.
    void zeigeZuchtübersicht();
    /// Makes another results file the one in use. False when the user stays, or it is none.
    bool öffneDatenbank(const QString& pfad);
    bool lade(const QString& nummer);
    /// Asks what becomes of the open examination. False when it has to stay.
    [[nodiscard]] bool verlasse();
    /// True when nothing of the examination is left to be stored, as SpeichernDB says.
    bool speichere(Speicheranlass anlass);
    /// Changes the caste. Asks before body marks that do not fit the other one are cleared; false
    /// when the present one stays.
    [[nodiscard]] bool wechsleGeschlecht(Geschlecht tiere);
    /// To be called when the results file may have changed: begins its daily backup, if it is due.
    void prüfeSicherung();

private:
    [[nodiscard]] bool setzeSitzungFort();
    void zeigeLetzte();
    /// Brings what the browser did to the row of the open examination into the window; @p ersetzte
    /// numbers of rows that others took the place of, which is followed only on the next save.
    void folgeDerZeile(const QStringList& ersetzte);
    [[nodiscard]] Neubeurteilungsregeln neubeurteilungsregeln() const;
    [[nodiscard]] Satzumgebung satzumgebung() const;
    /// True when @p lade has opened an examination.
    bool zeigeZuchtübersicht(QWidget* über, const std::function<bool(const QString&)>& lade);

    Umgebung umgebung_;
    Arbeitsplatz& arbeitsplatz_;
    const Fensterdienste& dienste_;
    Tagessicherung sicherung_;
};

} // namespace tarvel
