#pragma once

#include "lang/hinweise.h"
#include "measure/messbefehle.h"
#include "measure/messfragen.h"

#include <QPointF>

#include <functional>
#include <utility>

class QKeyEvent;

namespace tarvel {

class Bild;
class Lupenpaar;
struct Zeigerereignis;

/// What mouse and keys over the measuring view mean: passes them on to the measuring, drags points,
/// and brings into sight what a key moved.
class Messeingabe {
public:
    /// Takes the events of @p bild. Everything outlives it.
    Messeingabe(Messbefehle& befehle, const Messfragen& fragen, Bild& bild, Lupenpaar& lupen);

    void beiHinweis(std::function<void(const Hinweis&)> h) { hinweis_ = std::move(h); }
    /// Escape was pressed.
    void beiVerlassen(std::function<void()> h) { verlassen_ = std::move(h); }

    /// Asked before a wing is taken over; false to leave it as it is.
    void vorÜbernahme(std::function<bool()> h) { vorÜbernahme_ = std::move(h); }
    /// Where a point goes that was clicked at a place; pixels of the zoomed picture.
    void beiKlick(std::function<QPointF(int nummer, QPointF ort)> h) { klickort_ = std::move(h); }

    /// A key that was pressed over the picture, or is meant for it. True when it meant something.
    bool taste(const QKeyEvent& ereignis);

private:
    void drück(const Zeigerereignis& ereignis);
    void beweg(const Zeigerereignis& ereignis);
    [[nodiscard]] bool darfÜbernehmen() const;
    /// What is to be done where all points are set and the right button still refuses.
    void sagWieÜbernommenWird();
    [[nodiscard]] int nächsterGesetzter(float x, float y) const;

    Messbefehle& befehle_;
    const Messung& messung_;
    const Messfragen& fragen_;
    Bild& bild_;
    Lupenpaar& lupen_;
    std::function<void(const Hinweis&)> hinweis_ = [](const Hinweis&) {};
    std::function<void()> verlassen_ = [] {};
    std::function<bool()> vorÜbernahme_ = [] { return true; };
    std::function<QPointF(int, QPointF)> klickort_ = [](int, QPointF ort) { return ort; };
    int gezogen_ = 0; ///< number of the point being dragged, 0 for none
    bool zugBegonnen_ = false;
};

} // namespace tarvel
