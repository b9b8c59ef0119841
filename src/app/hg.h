#pragma once

#include "app/ansichtswahl.h"
#include "app/auswertung.h"
#include "app/befehlsleiste.h"
#include "app/bildgang.h"
#include "app/dateieingang.h"
#include "app/einstellungsgang.h"
#include "app/fensterflaeche.h"
#include "app/fluegelbefehle.h"
#include "app/fundgang.h"
#include "app/hinweisgeber.h"
#include "app/protokollausgabe.h"
#include "app/umgebung.h"
#include "app/untersuchungsgang.h"
#include "measure/reihenmodelle.h"
#include "measure/verteiler.h"
#include "platform/benutzerspeicher.h"
#include "results/arbeitsplatz.h"

#include <QMainWindow>
#include <QPointer>

namespace tarvel {

class MessHilfe;

/// The main window: lays out the views of the workplace, forwards what its user asks for, and
/// shows what the workplace tells. It computes nothing and keeps nothing but what is shown.
class HG : public QMainWindow {
public:
    /// Shows and changes @p arbeitsplatz. Everything handed over outlives the window.
    HG(const Umgebung& umgebung, Benutzerspeicher& speicher, Arbeitsplatz& arbeitsplatz);
    ~HG() override;

    /// Does what is left of the start once the window is seen: makes the views that nobody saw yet
    /// and asks for the default printer. The window does so itself after its first paint.
    void beendeStart();

    [[nodiscard]] const Untersuchung& untersuchung() const { return arbeitsplatz_.untersuchung(); }
    [[nodiscard]] const Beurteilung& beurteilung() const { return arbeitsplatz_.beurteilung(); }

    /// Shows the examination that the program starts with; see Untersuchungsgang::beginne.
    void beginne() { gang_.beginne(); }

    /// Switches the window into measuring and shows a hint, 0 to 15.
    void messmodus(int hinweisnummer) { ansichten_.messmodus(hinweisnummer); }

    /// Loads a wing picture for measuring. False, with a message shown, when it cannot be measured
    /// or the user kept the present one.
    bool ladeBild(const QString& pfad);

    /// Opens what the program was given; see Dateieingang.
    bool öffneDatei(const QString& pfad) { return eingang_.öffneDatei(pfad); }
    bool öffneDateien(const QStringList& pfade) { return eingang_.öffneDateien(pfade); }
    /// Opens, in front of other windows, what a second start of the program was given.
    void übernimmDateien(const QStringList& pfade);
    /// Gives a digit that went to @p ziel to the picture. False when it means nothing there.
    bool gibZifferAnsBild(QKeyEvent& taste, const QWidget& ziel);

protected:
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    // Building, in the order in which it happens.
    void verbindeMessplatz();
    void verbindeFelder();
    void verbindeBefehle();
    void Form_Load();
    /// Puts the words of the program's language on everything that is not labelled by itself.
    void TexteAnwenden();

    // What the menus and the tool bar do.
    void men_Datei_Click(int index);
    void men_Bearbeiten_Click(int index);
    void men_Ansicht_Click(int index);
    void men_Zoom_Click(int index);
    void men_Extras_Click(int index);
    void men_Betriebsart_Click(int index);
    void men_Sprache_Click(int index);
    void men_Hilfe_Click(int index);
    bool Form_Unload();

    void drucke();
    void schalteKriterien(bool zeigen);

    /// Brings everything up to date that shows what a command of the workplace changed.
    void folge(const Änderung& änderung);
    void zeigeZustand();
    void zeigeTitel();
    void zeigeStatus();
    [[nodiscard]] Befehlslage befehlslage() const;

    Umgebung umgebung_;
    Arbeitsplatz& arbeitsplatz_;
    const Messung& messung_;
    Reihenmodelle modelle_;
    Verteiler verteiler_;
    Befehlsleiste befehle_;
    Auswertung auswertung_;
    Protokollausgabe protokoll_;
    Hinweisgeber hinweise_;
    Fensterfläche fläche_;
    Ansichtswahl ansichten_;
    Flügelbefehle flügelbefehle_;
    Einstellungsgang einstellungen_;
    Bildgang bilder_;
    Fundgang funde_;
    Fensterdienste dienste_;
    Untersuchungsgang gang_;
    Dateieingang eingang_;

    QPointer<MessHilfe> messHilfe_;
    bool rechteLeisteGewünscht_ = true;
    bool kriterienGewünscht_ = false;
    bool restAngefordert_ = false; ///< the window was painted once

    Arbeitsplatz::Beobachtung beobachtung_;
};

} // namespace tarvel
