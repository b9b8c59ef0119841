#pragma once

#include "app/austausch.h"
#include "app/auswertung.h"
#include "app/befehlsleiste.h"
#include "app/protokollausgabe.h"
#include "app/umgebung.h"
#include "lang/hinweise.h"
#include "measure/messung.h"
#include "measure/reihenmodelle.h"
#include "measure/verteiler.h"
#include "platform/benutzerspeicher.h"
#include "results/ablage.h"
#include "results/sitzung.h"
#include "results/untersuchung.h"

#include <QMainWindow>
#include <QPointer>

class QKeyEvent;
class QLabel;
class QLineEdit;
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
    /// Shows and changes @p untersuchung, which @p ablage files and @p sitzung
    /// keeps for the case of a crash. All outlive the window.
    HG(const Umgebung& umgebung, Benutzerspeicher& speicher, Untersuchung& untersuchung,
       Ablage& ablage, Sitzung& sitzung);
    ~HG() override;

    [[nodiscard]] const Untersuchung& untersuchung() const { return untersuchung_; }
    [[nodiscard]] const Beurteilung& beurteilung() const { return auswertung_.beurteilung(); }

    /// Shows the examination that the program starts with: one that a crash interrupted, if the
    /// user wants to go on with it, else the latest one of the results file, or a new one where
    /// there is none.
    void beginne();

    /// Switches the window into measuring and shows a hint, 0 to 15.
    void messmodus(int hinweisnummer);

    /// Loads a wing picture for measuring. False, with a message shown, when it cannot be measured
    /// or the user kept the present one.
    bool ladeBild(const QString& pfad);

    /// Opens what the program was given: a results file, a picture, a measurement or coordinate
    /// file; measurement files of a folder are stored. False, with a message, when that failed.
    bool öffneDatei(const QString& pfad);
    /// Opens several: one of each kind, but stores measurement files when there are more than one.
    bool öffneDateien(const QStringList& pfade);

    /// Gives a digit that went to @p ziel to the picture. False when it means nothing there.
    bool gibZifferAnsBild(QKeyEvent& taste, const QWidget& ziel);

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
    void verbindeAuswertung();
    void Form_Load();
    /// Puts the words of the program's language on everything that is not labelled by itself.
    void TexteAnwenden();

    void men_Datei_Click(int index);
    void men_Bearbeiten_Click(int index);
    void men_Ansicht_Click(int index);
    void men_Zoom_Click(int index);
    void men_Extras_Click(int index);
    void men_Betriebsart_Click(int index);
    void men_Sprache_Click(int index);
    void men_Hilfe_Click(int index);
    /// Page of the guide about the view that is shown.
    [[nodiscard]] QString hilfethema() const;

    void optionen();
    /// Asks before body marks that do not fit the other caste are cleared.
    [[nodiscard]] bool wechsleGeschlecht(Geschlecht tiere);

    [[nodiscard]] bool setzeSitzungFort();
    void merkeSitzung();
    /// Shows the latest examination of the results file, or begins a new one.
    void zeigeLetzte();
    /// False when the open examination has to stay.
    bool neueUntersuchung();
    void nächstesVolk();
    void beginneNeue();
    /// The kind of examination that the user chose; a file that was read in may have brought
    /// another.
    [[nodiscard]] Messart eigeneMessart() const;
    /// Asks what becomes of the open examination. False when it has to stay.
    [[nodiscard]] bool verlasseUntersuchung();
    /// True when nothing of the examination is left to be stored, as SpeichernDB says.
    bool speichere(Speicheranlass anlass);
    [[nodiscard]] Ablagestand stand() const;
    void öffnen();
    void LadenBee();
    void importiereOrdner();
    /// What follows an import into the results file. False when nothing came of it.
    bool importiert(const QString& ergebnis);
    void exportiere();
    [[nodiscard]] std::optional<QByteArray> lesEin(const QString& pfad);
    void berichte(Meldung ergebnis, const QString& pfad, const QStringList& gründe);
    [[nodiscard]] std::optional<int> frageAuflösung(const QString& pfad,
                                                    std::optional<int> ausDatei);
    /// Takes the measurement file @p pfad over as a new examination. False, with a message, when it
    /// is none.
    bool lesMessdatei(const QString& pfad);
    /// The same for the wings of a coordinate file.
    bool lesKoordinaten(const QString& pfad);
    bool ladeUntersuchung(const QString& nummer);
    void zeigeUntersuchung();

    void bildLaden();
    void grafik();
    void drucke();
    void zeige(QWidget* ansicht, int hinweisnummer);
    void zeigeMessplatz(bool übersicht);
    void ZeigeHinweis(int nummer);
    void warneVorGeringerAuflösung();
    void warneVorSchreibfehler();
    void ZeigeEigenenHinweis(const Hinweis& hinweis);

    void letzteMessungLöschen();
    void alleMessungenLöschen();
    void messungWiederholen();
    [[nodiscard]] int gewählterFlügel() const;
    void flügelÜbernommen(qint16 nummer, const std::vector<int>& ohne);
    void rechenfehler(Rechenfehler fehler);

    /// Lets an edit command act on the selected text of the field that has the focus.
    void bearbeiteText(int index);
    /// The line that text is being typed into, that of an editable list too; null without one.
    [[nodiscard]] static QLineEdit* textfeldMitFokus();

    void reiheGeändert();
    void zeigeZustand();
    void erlaubeTextbefehle();
    void zeigeStatuszeile();
    void leisteSichtbar(QWidget* leiste, bool sichtbar);
    bool Form_Unload();

    Umgebung umgebung_;
    Benutzerspeicher& speicher_;
    Untersuchung& untersuchung_;
    Ablage& ablage_;
    Sitzung& sitzung_;
    bool sitzungLäuft_ = false;
    bool sitzungsfehlerGemeldet_ = false;
    Messung messung_;
    Reihenmodelle modelle_;
    Verteiler verteiler_;
    Befehlsleiste befehle_;
    Auswertung auswertung_;
    Protokollausgabe protokoll_;
    Austausch austausch_;

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

    bool rechteLeisteGewünscht_ = true;
    bool auflösungGemeldet_ = false;
    bool schreibfehlerGemeldet_ = false;
};

} // namespace tarvel
