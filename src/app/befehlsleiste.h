#pragma once

#include "lang/menue.h"
#include "measure/verteiler.h"

#include <QAction>
#include <QMainWindow>

#include <functional>
#include <map>
#include <vector>

class QMenu;
class QToolBar;

namespace tarvel {

/// Menus of the main window. The items of a menu are told apart by their index in its array.
enum class Menü { Datei, Bearbeiten, Ansicht, Zoom, Extras, Betriebsart, Sprache, Hilfe };

/// Items of the file menu for what other programs read and write.
inline constexpr int DateiOrdnerImportieren = 20;
inline constexpr int DateiExportieren = 21;
/// Begins an examination with the persons of the open one.
inline constexpr int DateiNächstesVolk = 22;
/// What the results file says of the bees.
inline constexpr int DateiZuchtübersicht = 23;

inline constexpr int BearbeitenRückgängig = 3;
inline constexpr int BearbeitenWiederherstellen = 4;
/// The wings chosen in the shown view.
inline constexpr int BearbeitenAuslassen = 12;
inline constexpr int BearbeitenFlügelLöschen = 13;
/// Corrects the resolution of the wings of a picture.
inline constexpr int BearbeitenAuflösung = 20;
inline constexpr int BearbeitenNachmessen = 21;

inline constexpr int BearbeitenVorschlagen = 30;
inline constexpr int BearbeitenNächsterFraglicher = 31;

/// Items of the view menu about wings that were found.
inline constexpr int AnsichtNächsterFund = 30;
inline constexpr int AnsichtVorigerFund = 31;
inline constexpr int AnsichtFlügelSuchen = 32;

/// Items of the view menu that show and hide parts of the window.
inline constexpr int AnsichtLeisteLinks = 20;
inline constexpr int AnsichtLeisteRechts = 21;
inline constexpr int AnsichtWerkzeugtexte = 22;
inline constexpr int AnsichtLupeAmZeiger = 23;
inline constexpr int AnsichtKriterien = 24;

/// What the commands depend on: which make sense now and which are checked.
struct Befehlslage {
    const Verteiler& verteiler;
    QStringView ansicht; ///< command word of the view that is shown; empty for another one
    bool mitBild = false;
    bool amMessplatz = false;
    bool inÜbersicht = false; ///< of the scan
    bool mitFlügeln = false;
    bool erkennung = false; ///< wings can be looked for
    bool mitFunden = false; ///< some that were found are not measured
    bool suchtFlügel = false;
    bool mitFraglichen = false; ///< points that were proposed
    bool zuSpeichern = false;
    bool rückgängig = false;
    bool wiederherstellbar = false;
    bool inTextfeld = false;
    bool zweiseitig = false; ///< the report
    bool mitHilfe = false;
    bool leisteLinks = false;
    bool leisteRechts = false;
    bool kriterien = false;
    bool lupeAmZeiger = false;
    bool werkzeugtexte = false;
    int Zoomfaktor = 1;
    int messart = 0;
    int sprache = -1; ///< -1 for an unknown one
};

/// Menus and tool bar of the main window, built from one table of commands: one action per command,
/// shown by the menu item "men_Datei_5" and, where there is one, by the button "bef_Toolbar_14".
class Befehlsleiste {
public:
    /// Called with the index of the item that was chosen.
    using Handlung = std::function<void(int)>;

    /// Builds menus and tool bar into @p fenster. The texts follow the language of @p texte;
    /// commands with a command word go to @p verteiler.
    Befehlsleiste(QMainWindow& fenster, const Texte& texte, Verteiler& verteiler);

    /// What the items of a menu do that have no command word.
    void beiKlick(Menü menü, Handlung handlung);
    /// Enables and checks all commands.
    void zeige(const Befehlslage& lage);
    /// Only those that act on a text field.
    void zeigeTextbefehle(bool inTextfeld);
    /// Gives an item another caption until the language changes.
    void benenne(Menü menü, int index, const QString& text);

    /// The action of an item that exists.
    [[nodiscard]] QAction& aktion(Menü menü, int index) const;
    [[nodiscard]] QToolBar& werkzeugleiste() const { return *leiste_; }

    void zeigeWerkzeugtexte(bool zeigen);
    [[nodiscard]] bool mitWerkzeugtexten() const;

private:
    void baueMenüs();
    void baueWerkzeugleiste();
    void beschrifteAlle();

    QMainWindow& fenster_;
    const Texte& texte_;
    Verteiler& verteiler_;
    std::map<Menü, QMenu*> menüs_;
    std::map<Menü, Handlung> handlungen_;
    std::vector<QAction*> aktionen_; ///< in the order of the table
    QToolBar* leiste_ = nullptr;
};

} // namespace tarvel
