#pragma once

#include "lang/hinweise.h"
#include "measure/bilddatei.h"
#include "measure/messbefehle.h"
#include "measure/reihenmodelle.h"
#include "platform/dialoge.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class QAction;
class QKeyEvent;
class QLabel;
class QPushButton;
class QStackedWidget;

namespace tarvel {

class Bild;
class Bildzugang;
class Lupe;
class Übersicht;
struct Zeigerereignis;

/// The place where wings are measured: the overview of the scan and the measuring view of a part
/// of it, with the events of both passed on to the measuring. Asks before points that are not
/// taken over yet would be lost.
class Messplatz : public QWidget {
public:
    enum class Zustand { OhneBild, Übersicht, Messen };

    Messplatz(const Texte& texte, Dialoge& dialoge, Messbefehle& befehle,
              QWidget* parent = nullptr);
    ~Messplatz() override;

    /// What the surroundings are told; members that are not set are not called.
    std::function<void(const Hinweis&)> ZeigeHinweis;
    std::function<void()> zustandGeändert;
    std::function<void()> bildLadenGewünscht;
    /// Wings that were pointed at with the right button in the overview; none beside them.
    std::function<void(const std::vector<int>&)> beiWahl;
    /// What is said of a wing beside its number; empty for nothing.
    std::function<QString(int)> flügelauskunft;
    /// How a measured wing is marked in the overview.
    std::function<Zweifelsgrad(int)> zweifelsgrad;

    [[nodiscard]] Zustand zustand() const { return zustand_; }
    /// The picture that is shown; empty without one.
    [[nodiscard]] QString bilddatei() const;
    [[nodiscard]] QSize bildgröße() const;
    [[nodiscard]] Lupe& lupe() { return *lupe_; }
    /// Shows the magnifier beside the pointer instead of where it was put.
    void setzeLupeAmZeiger(bool amZeiger);
    [[nodiscard]] bool lupeAmZeiger() const { return lupeAmZeiger_; }

    /// Opens a picture. False, with the present one kept, when it cannot be measured (a message
    /// was shown), or when the user did not want to give up the points of the current wing, chose
    /// no page or stopped it. A file that holds several pictures is asked about unless @p pfad is
    /// the name of one that was open.
    bool ladeBild(const QString& pfad);
    /// Brings the picture back that was worked with last: @p pfad, or that of the last wing of the
    /// series wherever it is now. False, with nothing said, when there is a picture already or none
    /// can be found.
    bool bringeZurück(const QString& pfad);
    /// The ways to the picture files.
    [[nodiscard]] Bildzugang& zugang();
    /// What the file of the picture says, when it can be true; see tarvel::bildauflösung().
    [[nodiscard]] std::optional<int> bildauflösung() const {
        return datei_ ? bildauflösung_ : std::nullopt;
    }

    /// Leaves a wing that is repeated, after a question when it was changed.
    void zeigeÜbersicht();
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

    /// Shows what is measured as it now stands: its picture and zoom, the points, and the wings of
    /// the series. A picture that cannot be opened any more is told of and leaves an empty place.
    void folge();
    /// Goes to the points of the current wing, where they are out of sight.
    void zeigeFlügel();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* leereSeite();
    void setzeLupenbild(const QImage& bild, int zoom);
    /// Puts a place of the zoomed picture into the middle of the magnifiers.
    void zeigeInLupe(QPointF ort);
    void verbindeBild();
    void beschrifte();
    void wechsle(Zustand zustand);
    void hinweis(const Hinweis& hinweis);
    /// Opens a wing that lies at @p ort for correction. False where there is none.
    bool korrigiereAn(QPointF ort);
    [[nodiscard]] std::optional<int> gemessenerAn(QPointF ort) const;
    /// The wing being measured.
    [[nodiscard]] Flügelmessung aktueller() const;
    /// Asks before points that lie on another wing would be taken over.
    [[nodiscard]] bool darfÜbernehmen();
    /// What is to be done where all points are set and the right button still refuses.
    void sagWieÜbernommenWird();
    /// True when the current wing has no points, or when the user gives them up.
    bool gibPunkteAuf(Meldung frage, Meldung ja);
    /// True when leaving the current wing loses nothing, or when the user gives it up.
    bool verlässtFlügel(Meldung frage, Meldung ja);
    void zeigePunkte();
    void zeigeErledigte();
    void folgeBild();
    void folgeZoom();
    /// With @p ganz all pixels are there when it returns.
    bool öffne(const QString& pfad, bool ganz = false);
    /// The same for a picture that was open before and may have been moved.
    bool öffneWieder(const QString& pfad);
    /// From now on @p datei is what is shown.
    void nimm(Bilddatei datei);
    void zeigeStandhinweis();
    void zeigeRahmen();
    /// True when the picture is hardly larger than the view, as that of a single wing is.
    [[nodiscard]] bool einFlügel() const;

    void drück(const Zeigerereignis& ereignis);
    void beweg(const Zeigerereignis& ereignis);
    bool taste(const QKeyEvent& ereignis);
    bool ändereZoom(int zoomfaktor, QPointF fest, QPointF imFenster);
    [[nodiscard]] int nächsterGesetzter(float x, float y) const;

    const Texte& texte_;
    Dialoge& dialoge_;
    Messbefehle& befehle_;
    const Messung& messung_;
    const Messreihe& reihe_;
    std::unique_ptr<Bildzugang> zugang_;
    std::optional<Bilddatei> datei_;
    std::optional<int> bildauflösung_;
    bool wechseltBild_ = false;
    Zustand zustand_ = Zustand::OhneBild;
    QPointF mitte_;                    ///< where measuring goes on, in pixels of the picture
    GesuchtesBild nichtZuÖffnen_ = {}; ///< picture of the current wing that was told of already
    /// Where the series goes on after the wing that is repeated.
    std::optional<QPointF> mitteDerReihe_;
    int gezogen_ = 0; ///< number of the point being dragged, 0 for none
    bool zugBegonnen_ = false;

    QStackedWidget* seiten_;
    QLabel* aufforderung_;
    QPushButton* bef_BildLaden_;
    Übersicht* übersicht_;
    Bild* bild_;
    Lupe* lupe_;
    Lupe* zeigerlupe_; ///< lies over the picture
    bool lupeAmZeiger_ = false;
};

} // namespace tarvel
