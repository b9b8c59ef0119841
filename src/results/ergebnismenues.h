#pragma once

#include "lang/menue.h"
#include "results/filterwahl.h"
#include "results/zeileneingabe.h"

#include <QMenuBar>

#include <functional>
#include <map>
#include <vector>

class QAction;
class QMenu;

namespace tarvel {

#ifndef Q_MOC_RUN // moc takes no umlauts in the names of an enumeration

/// The menus of the browser.
enum class Ergebnismenü { Ergebnis, Rasse, Geschlecht, Sort, Filter, Tabelle, Zeilen, Spalten };

#endif

/// The menu bar of the browser. The items of Ergebnis, Rasse, Geschlecht and Sort are numbered as
/// the values of Ergebnisfilter, Rassenfilter, Geschlechtsfilter and Sortierung.
class Ergebnismenüs : public QMenuBar {
public:
    enum Filterbefehl { Filtern, AlleZeigen, Suchen, AllesZeigen };
    enum Tabellenbefehl {
        Öffnen,
        Neu,
        Sichern,
        Löschen,
        Exportieren,
        NeuBeurteilen,
        NeuLesen,
        Rückgängig,
        Papierkorb,
        Zusammenführen,
        AusSicherung,
        DatenUmwandeln
    };
    /// Behind the values of Sortierung.
    enum Sortierbefehl { NachSpalte = 5, Umkehren };
    enum Zeilenbefehl {
        ZelleÄndern,
        ProtokolleEinPdf,
        ProtokolleEinzeln,
        GewählteExportieren,
        FeldÄndern,
        Schreibweisen
    };
    /// Behind the columns that are shown on demand.
    static constexpr int ÜblicheBreiten = AnzahlZusatzspalten;

    explicit Ergebnismenüs(const Texte& texte, QWidget* parent = nullptr);

    void beiKlick(Ergebnismenü menü, std::function<void(int index)> handlung);
    /// Checks the items of the present choice; of the orders none when the rows are in another one.
    void zeige(const Filterwahl& wahl, bool sortiert, bool absteigend);
    [[nodiscard]] QMenu* menü(Ergebnismenü menü) const { return menüs_.at(menü); }
    [[nodiscard]] QAction& aktion(Ergebnismenü menü, int index) const;

private:
    /// The first @p auswahl items exclude each other.
    void baue(Ergebnismenü menü, const QString& name, const Beschriftung& titel,
              const std::vector<Menüzeile>& einträge, int auswahl);

    const Texte& texte_;
    std::map<Ergebnismenü, QMenu*> menüs_;
    std::map<Ergebnismenü, std::vector<QAction*>> aktionen_;
    std::map<Ergebnismenü, std::function<void(int)>> handlungen_;
};

} // namespace tarvel
