#pragma once

#include "detect/erkennungsmodell.h"
#include "lang/texte.h"
#include "platform/dialoge.h"
#include "platform/shell.h"
#include "platform/uhr.h"
#include "platform/zahlen.h"
#include "print/druckersystem.h"
#include "settings/einstellungen.h"

#include <QString>

#include <functional>

namespace tarvel {

/// What the windows take from outside. Everything outlives them.
struct Umgebung {
    Einstellungen& einstellungen;
    Texte& texte;
    Dialoge& dialoge;
    Shell& shell;
    const Clock& uhr;
    Druckersystem& drucker;
    Zahlenformat format;
    QString ordner; ///< folder of Index.ini, help and samples
    /// Where the model comes from that wings are found by; asked on another thread. Without one
    /// nothing is looked for.
    std::function<Modellergebnis()> modell = {};
};

} // namespace tarvel
