#pragma once

#include "lang/menue.h"
#include "results/filterwahl.h"

#include <QMenuBar>

#include <functional>
#include <map>
#include <vector>

class QAction;

namespace tarvel {

#ifndef Q_MOC_RUN // moc takes no umlauts in the names of an enumeration

/// The menus of the browser.
enum class Ergebnismenü { Ergebnis, Rasse, Geschlecht, Sort, Filter, Tabelle };

#endif

/// The menu bar of the browser. The items of Ergebnis, Rasse, Geschlecht and Sort are numbered as
/// the values of Ergebnisfilter, Rassenfilter, Geschlechtsfilter and Sortierung.
class Ergebnismenüs : public QMenuBar {
public:
    enum Filterbefehl { Filtern, AlleZeigen, Suchen };
    enum Tabellenbefehl {
        Öffnen,
        Neu,
        Sichern,
        Löschen,
        Exportieren,
        NeuBeurteilen,
        Rückgängig,
        Papierkorb,
        Zusammenführen,
        AusSicherung
    };

    explicit Ergebnismenüs(const Texte& texte, QWidget* parent = nullptr);

    void beiKlick(Ergebnismenü menü, std::function<void(int index)> handlung);
    /// Checks the items of the present choice.
    void zeige(const Filterwahl& wahl);
    [[nodiscard]] QAction& aktion(Ergebnismenü menü, int index) const;

private:
    void baue(Ergebnismenü menü, const QString& name, Text titel,
              const std::vector<Menüzeile>& einträge, bool auswahl);

    const Texte& texte_;
    std::map<Ergebnismenü, std::vector<QAction*>> aktionen_;
    std::map<Ergebnismenü, std::function<void(int)>> handlungen_;
};

} // namespace tarvel
