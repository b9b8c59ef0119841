#pragma once

#include "measure/bildzugang.h"
#include "measure/fluegelbilder.h"
#include "measure/messbefehle.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace tarvel {

/// The picture that is open: opened by name, found again where it was moved to, and tied to the
/// wings of the series that were measured on it.
class OffenesBild {
public:
    /// Everything outlives it; see Bildzugang.
    OffenesBild(const Texte& texte, Dialoge& dialoge, QWidget& fenster, Messbefehle& befehle);

    /// Called when another picture is open, before its pixels are read.
    void beiWechsel(std::function<void()> handlung) { beiWechsel_ = std::move(handlung); }

    /// True without a picture.
    [[nodiscard]] bool leer() const { return !datei_; }
    /// Empty, invalid, or null without a picture.
    [[nodiscard]] QString pfad() const;
    [[nodiscard]] QSize größe() const;
    [[nodiscard]] QImage übersicht() const;
    /// What the file says, when it can be true; see bildauflösung().
    [[nodiscard]] std::optional<int> auflösung() const;
    [[nodiscard]] QPointF mitte() const { return QRectF(QPointF(), größe()).center(); }
    /// All pixels; null, with a message, when they cannot be had.
    [[nodiscard]] const QImage* pixel();

    /// What they come from, for another thread; null without a picture.
    [[nodiscard]] std::shared_ptr<Pixelladung> ladung() const;

    [[nodiscard]] Bildzugang& zugang() { return zugang_; }
    /// This picture and, without a word, the others on which wings were measured.
    [[nodiscard]] Scanquelle scanquelle();

    /// Makes @p pfad the open picture. False, with the present one kept, when it cannot be had; see
    /// Bildzugang::öffne.
    [[nodiscard]] bool öffne(const QString& pfad, bool ganz);
    void schließe() { datei_.reset(); }
    /// True while wings are tied to a picture that what is measured comes to only afterwards.
    [[nodiscard]] bool wechselt() const { return wechselt_; }

    /// Where the picture of @p flügel is now; the series follows. Empty when the user gave up, or,
    /// with a message, showed another one.
    [[nodiscard]] QString finde(const Flügelmessung& flügel);
    /// The same of a picture of that name which was open before.
    [[nodiscard]] QString findeWieder(const QString& pfad);
    /// Opens, without a word, @p pfad or else the picture of the last wing of the series wherever
    /// it is now. False when neither can be had.
    [[nodiscard]] bool öffneLetztes(const QString& pfad);
    /// Ties wings that were measured on the open picture, wherever it was then, to where it is now.
    void ordneFlügelZu();

private:
    [[nodiscard]] QString finde(const GesuchtesBild& gesucht);
    void nimm(Bilddatei datei);

    Messbefehle& befehle_;
    Bildzugang zugang_;
    std::function<void()> beiWechsel_ = [] {};
    std::optional<Bilddatei> datei_;
    std::optional<int> auflösung_;
    bool wechselt_ = false;
};

} // namespace tarvel
