#pragma once

#include "detect/fluegelerkennung.h"
#include "measure/fundrahmen.h"
#include "measure/messung.h"
#include "measure/offenesbild.h"

#include <QObject>
#include <QPointer>
#include <QThreadPool>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QWidget;

namespace tarvel {

/// What the points that are set span, pixels of the zoomed picture; null without any.
[[nodiscard]] QRectF punktfeld(const Messpunkte& punkte);

/// The wings that the program finds on the open picture: looked for on another thread once the
/// picture is seen, numbered as long as they are not measured, and where their points are likely to
/// lie. Everything here belongs to the thread of the window; the other one gets pixels and hands
/// one result back.
class Flügelfunde : public QObject {
public:
    using Modellquelle = std::function<Modellergebnis()>;
    enum class Stand {
        Ohne, ///< no picture, or its pixels cannot be read
        Sucht,
        Fertig,
        Angehalten,
        Unbrauchbar ///< there is no model to look for wings with
    };

    /// With an empty @p quelle nothing is ever looked for; it is asked on the other thread, once.
    Flügelfunde(Modellquelle quelle, const OffenesBild& offen, const Messbefehle& befehle);
    ~Flügelfunde() override;

    /// Called when the state changed, on the way also when only prozent() did.
    void beiÄnderung(std::function<void(bool fertig)> h) { geändert_ = std::move(h); }
    /// A view of the picture: the search begins after one of them was painted.
    void beobachte(QWidget& ansicht);

    [[nodiscard]] Stand stand() const { return stand_; }
    /// The search is under way, or begins as soon as the picture was seen.
    [[nodiscard]] bool stehtAus() const { return fällig_ || stand_ == Stand::Sucht; }
    /// How far the search is.
    [[nodiscard]] int prozent() const;
    /// Why there is no model.
    [[nodiscard]] std::optional<Modellfehler> modellfehler() const { return modellfehler_; }
    /// False where wings cannot be looked for at all.
    [[nodiscard]] bool brauchbar() const { return quelle_ && !modellfehler_; }

    /// Brings everything up to date after picture, resolution or series changed: looks for wings
    /// where that was not done with these, and numbers them.
    void folge();
    /// Looks for the wings again.
    void suche();
    /// Stops the search.
    void halte();

    [[nodiscard]] const std::vector<Flügelfund>& alle() const { return funde_; }
    /// The number that each wing is likely to get when one goes on with the one that has points, or
    /// after the last one measured; 0 for those measured, and -1 where the series has no room.
    [[nodiscard]] const std::vector<int>& nummern() const { return nummern_; }
    /// How many are not measured.
    [[nodiscard]] int offene() const;
    /// The resolution that the wings look like, where it is another than the one they were looked
    /// for with.
    [[nodiscard]] std::optional<int> passendeAuflösung() const { return passend_; }
    /// Frames of those not measured.
    [[nodiscard]] std::vector<Fundrahmen> rahmen() const;

    /// @name Places in pixels of the unzoomed picture
    /// @{
    /// The unmeasured wing after (@p richtung 1) or before (-1) the one that lies nearest to @p
    /// ort, round and round; with @p nurMitNummer only one that the series has room for.
    [[nodiscard]] std::optional<std::size_t> nächster(QPointF ort, int richtung,
                                                      bool nurMitNummer = false) const;
    /// The unmeasured wing that lies nearest to @p ort.
    [[nodiscard]] std::optional<std::size_t> nächsterBei(QPointF ort) const;
    /// The unmeasured wing at @p ort.
    [[nodiscard]] std::optional<std::size_t> an(QPointF ort) const;
    /// The one that wing @p nummer of the series is.
    [[nodiscard]] std::optional<std::size_t> gemessener(int nummer) const;
    /// The one whose point @p nummer lies within @p weite of @p ort.
    [[nodiscard]] std::optional<QPointF> punktBei(int nummer, QPointF ort, double weite) const;
    /// @}

    /// The points of a wing that was found as a full cycle of the kind, pixels of the zoomed
    /// picture, the first doubtful one selected.
    [[nodiscard]] Messpunkte vorschlag(std::size_t fund) const;
    /// The points of @p punkte that are still where they were proposed and doubtful there, and
    /// those of which the present search says nothing, as when it has another resolution.
    [[nodiscard]] std::vector<int> fragliche(const Messpunkte& punkte) const;

    /// A picture beside the open one.
    struct Nebenbild {
        QImage pixel;
        int dpi = 0;
    };
    using Nebenfunde = std::vector<std::vector<Flügelfund>>;
    /// Looks for wings on @p bilder, on the other thread after the search under way. @p fertig gets
    /// those of each picture, none where there is no model; it is not called after @p verlauf was
    /// told to stop.
    void sucheAuf(std::vector<Nebenbild> bilder, std::shared_ptr<Suchverlauf> verlauf,
                  std::function<void(const Nebenfunde&)> fertig);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// What is looked for on which picture.
    struct Suchziel {
        std::shared_ptr<Pixelladung> ladung;
        int dpi = 0;

        bool operator==(const Suchziel&) const = default;
    };
    struct Werkbank;
    struct Auftrag;
    /// Where a point is proposed, pixels of the zoomed picture.
    struct Ort {
        QPointF imBild;
        bool fraglich;
    };

    [[nodiscard]] Suchziel ziel() const;
    [[nodiscard]] Ort ort(const Flügelfund& fund, int nummer) const;
    [[nodiscard]] bool fraglich(int nummer, QPointF imBild) const;
    void beginne();
    void nimm(const std::shared_ptr<Auftrag>& auftrag);
    void nummeriere();
    /// The unmeasured one that has points now.
    [[nodiscard]] std::optional<std::size_t> begonnener() const;
    void vergiss();
    [[nodiscard]] int zoom() const { return messung_.aufnahme().Zoomfaktor; }

    Modellquelle quelle_;
    const OffenesBild& offen_;
    const Messung& messung_;
    const Messreihe& reihe_;
    std::function<void(bool)> geändert_ = [](bool) {};
    std::vector<QPointer<QWidget>> ansichten_;
    QTimer takt_;

    Suchziel ziel_;       ///< that was looked for last
    bool fällig_ = false; ///< to be looked for when the picture was painted
    Stand stand_ = Stand::Ohne;
    std::optional<Modellfehler> modellfehler_;
    std::vector<Flügelfund> funde_;
    std::vector<int> gemessen_; ///< number in the series of each; 0 for none
    std::vector<int> nummern_;
    std::optional<int> passend_;
    std::shared_ptr<Werkbank> werkbank_;
    std::shared_ptr<Auftrag> auftrag_; ///< that runs
    QThreadPool faden_;                ///< one thread: searches follow each other
};

} // namespace tarvel
