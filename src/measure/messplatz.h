#pragma once

#include "measure/fluegelbilder.h"
#include "measure/lupenpaar.h"
#include "measure/messeingabe.h"
#include "measure/offenesbild.h"
#include "measure/reihenmodelle.h"

#include <QWidget>

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

/// The place where wings are measured: the overview of the scan and the measuring view of a part
/// of it, with the events of both passed on to the measuring. Asks before points that are not
/// taken over yet would be lost.
class Messplatz : public QWidget {
public:
    enum class Zustand { OhneBild, Übersicht, Messen };

    Messplatz(const Texte& texte, Dialoge& dialoge, Messbefehle& befehle,
              QWidget* parent = nullptr);
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

    [[nodiscard]] Zustand zustand() const { return zustand_; }
    /// The picture that is shown.
    [[nodiscard]] const OffenesBild& bild() const { return offen_; }
    /// Cuts wings of the series out of their scans.
    [[nodiscard]] Flügelbilder flügelbilder() { return {offen_.scanquelle(), befehle_.reihe()}; }
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

    /// To be called when another examination is open: some of its wings may lie on the picture that
    /// is shown.
    void folgeUntersuchung();
    /// Shows what is measured as it now stands: its picture and zoom, the points, and the wings of
    /// the series. A picture that cannot be opened any more is told of and leaves an empty place.
    /// After a repeat it goes back to where the series stood.
    void folge();
    /// Goes to the points of the current wing, where they are out of sight.
    void zeigeFlügel();

private:
    QWidget* leereSeite();
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

    QStackedWidget* seiten_;
    QLabel* aufforderung_;
    QPushButton* bef_BildLaden_;
    Übersicht* übersicht_;
    Bild* bild_;
    Messfragen fragen_;
    OffenesBild offen_;
    Lupenpaar lupen_;
    Messeingabe eingabe_;
};

} // namespace tarvel
