#pragma once

#include "lang/meldungen.h"
#include "lang/texte.h"

#include <QAction>
#include <QActionGroup>
#include <QMainWindow>

#include <functional>
#include <map>
#include <variant>
#include <vector>

class QMenu;
class QToolBar;

namespace tarvel {

/// Menus of the main window. The items of a menu are told apart by their index in its array.
enum class Menue { Datei, Bearbeiten, Ansicht, Zoom, Extras, Betriebsart, Sprache, Hilfe };

/// Items of the file menu for what other programs read and write.
inline constexpr int DateiOrdnerImportieren = 20;
inline constexpr int DateiExportieren = 21;
/// Begins an examination with the persons of the open one.
inline constexpr int DateiNächstesVolk = 22;

/// Items of the view menu that show and hide parts of the window.
inline constexpr int AnsichtLeisteLinks = 20;
inline constexpr int AnsichtLeisteRechts = 21;
inline constexpr int AnsichtWerkzeugtexte = 22;
inline constexpr int AnsichtLupeAmZeiger = 23;

/// Menus and tool bar of the main window: one action per command, shown by the menu item
/// "men_Datei_5" and, where there is one, by the tool-bar button "bef_Toolbar_14".
class Befehlsleiste {
public:
    /// Called with the index of the item that was chosen.
    using Handlung = std::function<void(int)>;

    /// Builds menus and tool bar into @p fenster. The texts follow the language of @p texte.
    Befehlsleiste(QMainWindow& fenster, const Texte& texte);

    void beiKlick(Menue menü, Handlung handlung);

    /// The action of an item that exists.
    [[nodiscard]] QAction& aktion(Menue menü, int index) const;
    [[nodiscard]] QToolBar& werkzeugleiste() const { return *leiste_; }

    void zeigeWerkzeugtexte(bool zeigen);

private:
    using Beschriftung = std::variant<Text, Meldung, QString>;

    struct Eintrag {
        Menue menü;
        int index;
        Beschriftung text;
        Meldung erklärung;
        QAction* aktion;
    };

    QMenu* neuesMenü(QMenu* darüber, Menue menü, Beschriftung text);
    void füge(Menue menü, int index, Beschriftung text, Meldung erklärung,
              const QString& symbolname, const QKeySequence& kürzel);
    void trenne(Menue menü);
    void baueMenüs();
    void baueWerkzeugleiste();
    void beschrifte();
    [[nodiscard]] QString wortlaut(const Beschriftung& text) const;

    QMainWindow& fenster_;
    const Texte& texte_;
    std::map<Menue, QMenu*> menüs_;
    std::map<Menue, Beschriftung> titel_;
    std::map<Menue, Handlung> handlungen_;
    std::map<Menue, QActionGroup*> gruppen_;
    std::vector<Eintrag> einträge_;
    QToolBar* leiste_ = nullptr;
};

} // namespace tarvel
