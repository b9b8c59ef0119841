#pragma once

#include "measure/fluegelbilder.h"
#include "measure/fluegelfunde.h"
#include "measure/lupenpaar.h"
#include "measure/messeingabe.h"
#include "measure/offenesbild.h"
#include "measure/reihenmodelle.h"

#include <QWidget>

#include <array>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

class QAction;
class QKeyEvent;
class QLabel;
class QPushButton;
class QStackedWidget;

namespace tarvel {

class Bild;
class Übersicht;

/// What the person wants of the places that are found for points.
struct Vorschlagswahl {
    bool jeFlügel = false;  ///< propose them when it is the turn of a wing
    bool einrasten = false; ///< draw clicked points to them
};

/// The place where wings are measured: the overview of the scan and the measuring view of a part
/// of it, with the events of both passed on to the measuring. Asks before points that are not
/// taken over yet would be lost.
class Messplatz : public QWidget {
public:
    enum class Zustand { OhneBild, Übersicht, Messen };

    /// @p modell see Flügelfunde.
    Messplatz(const Texte& texte, Dialoge& dialoge, Messbefehle& befehle,
              Flügelfunde::Modellquelle modell = {}, QWidget* parent = nullptr);
    ~Messplatz() override;

    /// What the surroundings are told, or asked for.
    void beiHinweis(std::function<void(const Hinweis&)> h) { hinweis_ = std::move(h); }
    void beiZustand(std::function<void()> h) { andererZustand_ = std::move(h); }
    /// The user wants to load a picture.
    void beiBildwunsch(std::function<void()> h) { bildwunsch_ = std::move(h); }
    /// Wings that were pointed at with the right button in the overview; none beside them.
    void beiWahl(std::function<void(const std::vector<int>&)> h) { wahl_ = std::move(h); }
    /// What is said of a wing beside its number; empty for nothing.
    void beiAuskunft(std::function<QString(int)> h) { auskunft_ = std::move(h); }
    /// How a measured wing is marked in the overview.
    void beiZweifel(std::function<Zweifelsgrad(int)> h) { zweifel_ = std::move(h); }

    /// See Flügelfunde::beiÄnderung; the views show them already.
    void beiFunden(std::function<void(bool fertig)> h) { andereFunde_ = std::move(h); }
    /// What is to be said of a wing whose points are proposed, before all else.
    void beiVorschlag(std::function<std::vector<Hinweis>(const Flügelfund&)> h) {
        vorschlagshinweise_ = std::move(h);
    }

    [[nodiscard]] Zustand zustand() const { return zustand_; }
    /// The picture that is shown.
    [[nodiscard]] const OffenesBild& bild() const { return offen_; }
    /// Cuts wings of the series out of their scans.
    [[nodiscard]] Flügelbilder flügelbilder() { return {offen_.scanquelle(), befehle_.reihe()}; }
    /// See Flügelfunde::sucheAuf.
    void sucheAuf(std::vector<Flügelfunde::Nebenbild> bilder, std::shared_ptr<Suchverlauf> verlauf,
                  std::function<void(const Flügelfunde::Nebenfunde&)> fertig) {
        funde_.sucheAuf(std::move(bilder), std::move(verlauf), std::move(fertig));
    }
    /// The ways to the picture files.
    [[nodiscard]] Bildzugang& zugang() { return offen_.zugang(); }
    [[nodiscard]] Lupenpaar& lupen() { return lupen_; }
    [[nodiscard]] const Lupenpaar& lupen() const { return lupen_; }

    /// Opens a picture. False, with the present one kept, when it cannot be measured (a message
    /// was shown), or when the user did not want to give up the points of the current wing, chose
    /// no page or stopped it. A file that holds several pictures is asked about unless @p pfad is
    /// the name of one that was open.
    bool ladeBild(const QString& pfad);
    /// Brings the picture back that was worked with last: @p pfad, or that of the last wing of the
    /// series wherever it is now. False, with nothing said, when there is a picture already or none
    /// can be found.
    bool bringeZurück(const QString& pfad);
    /// Leaves a wing that is repeated, after a question when it was changed.
    void zeigeÜbersicht();
    /// The hint that fits what is shown, after something else had the hint line.
    void zeigeStandhinweis();
    /// False when there is no picture or its pixels cannot be read; a message was shown then.
    bool zeigeMessen();
    /// The measured wing below the pointer in the overview; 0 for none.
    [[nodiscard]] int flügelAmZeiger() const;
    /// What the context menu of the overview offers.
    void setzeBefehle(const QList<QAction*>& befehle);
    /// Gives the keyboard to the picture.
    void nimmTastatur();

    /// A digit key pressed anywhere else in the window. True when it went to the picture.
    bool nimmZiffer(const QKeyEvent& ereignis);

    /// Changes zoom or kind of examination, after a question when the current wing has points.
    /// True when the change was made.
    bool wünscheZoom(int zoomfaktor);
    /// The same by the wheel: what is below the pointer stays there.
    bool wünscheZoom(int zoomfaktor, QPointF imFenster);
    bool wünscheMessart(Messart messart);

    /// Brings a wing of the series back onto its picture for correction. False, with a message
    /// shown, when that cannot be done.
    bool wiederhole(int nummer);

    /// After a wing was taken over: on to the next, in the overview of a scan with several wings.
    void nächsterFlügel();

    /// @name Wings that were found
    /// @{
    [[nodiscard]] const Flügelfunde& funde() const { return funde_; }
    void setzeVorschlagswahl(const Vorschlagswahl& wahl) { vorschlagswahl_ = wahl; }
    /// Looks for wings again.
    void sucheFlügel() { funde_.suche(); }
    /// Goes to the next (1) or previous (-1) one that is not measured.
    void geheZuFund(int richtung);
    /// Proposes the points of the wing that is seen, or says why not.
    void schlageVor();
    /// Points of the current wing whose proposal is doubtful.
    [[nodiscard]] std::vector<int> fragliche() const { return funde_.fragliche(messung_.punkte()); }
    /// Selects the next of them.
    void wähleFraglichen();
    /// @}

    /// To be called when another examination is open: some of its wings may lie on the picture that
    /// is shown.
    void folgeUntersuchung();
    /// Shows what is measured as it now stands: its picture and zoom, the points, and the wings of
    /// the series. A picture that cannot be opened any more is told of and leaves an empty place.
    /// After a repeat it goes back to where the series stood.
    void folge();
    /// Goes to the points of the current wing, where they are out of sight.
    void zeigeFlügel();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* leereSeite();
    void verbindeFunde();
    void verbindeÜbersicht();
    void verbindeBild();
    void leereBild();
    void beschrifte();
    void wechsle(Zustand zustand);
    /// Opens a wing that lies at @p ort for correction. False where there is none.
    bool korrigiereAn(QPointF ort);
    [[nodiscard]] std::optional<int> gemessenerAn(QPointF ort) const;
    void zeigePunkte();
    void zeigeErledigte();
    void zeigeFunde();
    [[nodiscard]] QString fundtipp(QPointF ort) const;
    /// Brings a wing into the measuring view. False as zeigeMessen().
    bool zeigeFund(std::size_t fund);
    void nimmVorschlag(std::size_t fund);
    [[nodiscard]] Hinweis vorschlagshinweis() const;
    /// The wing whose proposal is shown, as long as nothing of it was corrected.
    [[nodiscard]] std::optional<std::size_t> vorgeschlagener() const;
    /// The same where the person wants it for every wing and nothing of theirs would be lost.
    void nimmVorschlagVonSelbst(std::optional<std::size_t> fund);
    [[nodiscard]] QPointF eingerastet(int nummer, QPointF ort) const;
    /// Notes which points of the current wing are in sight as the view is painted.
    void merkeGesehene();
    /// True when all points of a proposal can be seen, or were seen where they do not fit into the
    /// view; else shows those that were not.
    bool sindVorschlägeGesehen();
    void folgeBild();
    void folgeZoom();
    /// Ends a repeat or, without one, goes to the overview, as Escape does.
    void verlasseMessen();
    [[nodiscard]] bool verlässtWiederholung() const;
    void zeigeScan();
    void kehreZurück(Zustand zustand);
    /// With @p ganz all pixels are there when it returns.
    bool öffne(const QString& pfad, bool ganz = false);
    void zeigeRahmen();
    /// True when the picture is hardly larger than the view, as that of a single wing is.
    [[nodiscard]] bool einFlügel() const;
    bool ändereZoom(int zoomfaktor, QPointF fest, QPointF imFenster);

    std::function<void(const Hinweis&)> hinweis_ = [](const Hinweis&) {};
    std::function<void()> andererZustand_ = [] {};
    std::function<void()> bildwunsch_ = [] {};
    std::function<void(const std::vector<int>&)> wahl_ = [](const std::vector<int>&) {};
    std::function<QString(int)> auskunft_ = [](int) { return QString(); };
    std::function<void(bool)> andereFunde_ = [](bool) {};
    std::function<std::vector<Hinweis>(const Flügelfund&)> vorschlagshinweise_ =
        [](const Flügelfund&) { return std::vector<Hinweis>(); };
    std::function<Zweifelsgrad(int)> zweifel_ = [](int) { return Zweifelsgrad::Keiner; };

    const Texte& texte_;
    Messbefehle& befehle_;
    const Messung& messung_;
    const Messreihe& reihe_;
    Zustand zustand_ = Zustand::OhneBild;
    QPointF mitte_;                    ///< where measuring goes on, in pixels of the picture
    GesuchtesBild nichtZuÖffnen_ = {}; ///< picture of the current wing that was told of already
    /// Where the series goes on after the wing that is repeated.
    struct Reihenort {
        QPointF mitte;
        Zustand zustand;
    };
    std::optional<Reihenort> reihenort_;
    Vorschlagswahl vorschlagswahl_;
    /// Where each point was when it was in sight, zoomed pixels.
    std::array<std::optional<QPointF>, Messpunkte::Anzahl + 1> gesehen_;

    QStackedWidget* seiten_;
    QLabel* aufforderung_;
    QPushButton* bef_BildLaden_;
    Übersicht* übersicht_;
    Bild* bild_;
    Messfragen fragen_;
    OffenesBild offen_;
    Lupenpaar lupen_;
    Messeingabe eingabe_;
    Flügelfunde funde_;
};

} // namespace tarvel
