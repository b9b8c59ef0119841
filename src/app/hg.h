#pragma once

#include "app/befehlsleiste.h"
#include "app/umgebung.h"
#include "measure/messung.h"
#include "measure/reihenmodelle.h"
#include "measure/verteiler.h"
#include "results/untersuchung.h"

#include <QMainWindow>
#include <QPointer>

class QLabel;
class QSplitter;
class QStackedWidget;

namespace tarvel {

class Hinweiszeile;
class Kolonieformular;
class MessHilfe;
class Messleiste;
class Messplatz;
class Reihenansicht;
class Tabellenansicht;

/// The main window: brings the examination, the measuring and their views together. It composes;
/// what is computed is computed elsewhere.
class HG : public QMainWindow {
public:
    explicit HG(const Umgebung& umgebung);
    ~HG() override;

    [[nodiscard]] const Untersuchung& untersuchung() const { return untersuchung_; }
    [[nodiscard]] Verteiler& verteiler() { return verteiler_; }

    /// Switches the window into measuring and shows a hint, 0 to 15.
    void messmodus(int hinweisnummer);

    /// Loads a wing picture for measuring. False, with a message shown, when it cannot be measured
    /// or the user kept the present one.
    bool ladeBild(const QString& pfad);

    /// Takes over the changes of the settings that the program's own windows made.
    void wendeSpracheAn();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    // Building, in the order in which it happens.
    void baueFläche();
    void baueStatuszeile();
    void verbindeMessung();
    void verbindeFelder();
    void meldeAnsichtenAn();
    void Form_Load();

    void men_Datei_Click(int index);
    void men_Bearbeiten_Click(int index);
    void men_Ansicht_Click(int index);
    void men_Zoom_Click(int index);
    void men_Extras_Click(int index);
    void men_Betriebsart_Click(int index);
    void men_Sprache_Click(int index);
    void men_Hilfe_Click(int index);

    void bildLaden();
    void grafik();
    void zeige(QWidget* ansicht, int hinweisnummer);
    void zeigeMessplatz(bool übersicht);
    void ZeigeHinweis(int nummer);
    void warneVorGeringerAuflösung();
    void warneVorSchreibfehler();
    void ZeigeEigenenHinweis(const QString& text);

    void letzteMessungLöschen();
    void alleMessungenLöschen();
    void messungWiederholen();
    [[nodiscard]] int gewählterFlügel() const;
    void flügelÜbernommen(qint16 nummer, const std::vector<int>& ohne);
    void rechenfehler(Rechenfehler fehler);

    /// Lets an edit command act on the selected text of the field that has the focus.
    void bearbeiteText(int index);

    void reiheGeändert();
    void zeigeZustand();
    void zeigeStatuszeile();
    void leisteSichtbar(QWidget* leiste, bool sichtbar);
    bool Form_Unload();

    Umgebung umgebung_;
    Untersuchung untersuchung_;
    Messung messung_;
    Reihenmodelle modelle_;
    Verteiler verteiler_;
    Befehlsleiste befehle_;

    QSplitter* teiler_ = nullptr;
    QStackedWidget* ansichten_ = nullptr;
    Kolonieformular* kolonie_ = nullptr;
    QWidget* linkeLeiste_ = nullptr;
    Messplatz* messplatz_ = nullptr;
    Messleiste* messleiste_ = nullptr;
    Reihenansicht* alle_ = nullptr;
    Tabellenansicht* tabelle_ = nullptr;
    Hinweiszeile* lab_H_ = nullptr;
    QLabel* status_ = nullptr;
    QPointer<MessHilfe> messHilfe_;

    int hinweisnummer_ = 0;
    bool rechteLeisteGewünscht_ = true;
    bool auflösungGemeldet_ = false;
    bool schreibfehlerGemeldet_ = false;
    bool start_ = true; ///< true while the window is being filled at start-up
};

} // namespace tarvel
