#include "measure/messeingabe.h"

#include "measure/bild.h"
#include "measure/lupenpaar.h"
#include "measure/tasten.h"

#include <QCursor>
#include <QKeyEvent>

#include <cmath>

namespace tarvel {

namespace {

/// How near to a mark, in zoomed pixels, the pointer takes hold of it.
constexpr float Griffweite = 14.0F;

Maustaste maustaste(Qt::MouseButton taste) {
    switch (taste) {
    case Qt::RightButton:
        return Maustaste::Rechts;
    case Qt::MiddleButton:
        return Maustaste::Mitte;
    default:
        return Maustaste::Links;
    }
}

} // namespace

Messeingabe::Messeingabe(Messbefehle& befehle, const Messfragen& fragen, Bild& bild,
                         Lupenpaar& lupen)
    : befehle_(befehle)
    , messung_(befehle.messung())
    , fragen_(fragen)
    , bild_(bild)
    , lupen_(lupen) {
    bild_.beiDruck([this](const Zeigerereignis& e) { drück(e); });
    bild_.beiBewegung([this](const Zeigerereignis& e) { beweg(e); });
    bild_.beiLoslassen([this](const Zeigerereignis&) { gezogen_ = 0; });
    bild_.beiTaste([this](QKeyEvent* e) { return taste(*e); });
}

int Messeingabe::nächsterGesetzter(float x, float y) const {
    const Messpunkte& punkte = messung_.punkte();
    int nächster = 0;
    float kleinster = Griffweite;
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        const float abstand = std::hypot(punkte.PunktX[i] - x, punkte.PunktY[i] - y);
        if (punkte.gemessen(i) && abstand < kleinster) {
            kleinster = abstand;
            nächster = i;
        }
    }
    return nächster;
}

bool Messeingabe::darfÜbernehmen() const {
    return vorÜbernahme_() && fragen_.darfÜbernehmen();
}

void Messeingabe::drück(const Zeigerereignis& e) {
    if (bild_.bild().isNull()) {
        return;
    }
    if (e.taste == Qt::LeftButton && e.umschalt.testFlag(Qt::ControlModifier)) {
        gezogen_ = nächsterGesetzter(e.x, e.y);
        zugBegonnen_ = false;
        befehle_.opt_Fein_Click(gezogen_);
        return;
    }
    if (e.taste == Qt::RightButton && messung_.punkte().fertig(messung_.messart()) &&
        ((e.doppelt && messung_.punkte().vorgeschlagen()) || !darfÜbernehmen())) {
        return; // nobody checks a proposal between the clicks of a double click
    }
    QPointF ort(e.x, e.y);
    if (e.taste == Qt::LeftButton) {
        ort = klickort_(messung_.punkte().nächster(messung_.messart()), ort);
    }
    befehle_.Bild_MouseDown(maustaste(e.taste), umschaltung::von(e.umschalt),
                            static_cast<float>(ort.x()), static_cast<float>(ort.y()));
    // A key that follows means the pointer.
    befehle_.Bild_MouseMove(Maustaste::Links, umschaltung::von(e.umschalt), e.x, e.y);
    sagWieÜbernommenWird();
}

void Messeingabe::beweg(const Zeigerereignis& e) {
    befehle_.Bild_MouseMove(Maustaste::Links, umschaltung::von(e.umschalt), e.x, e.y);
    if (gezogen_ != 0 && e.tasten.testFlag(Qt::LeftButton)) {
        befehle_.zieh(gezogen_, e.x, e.y, !zugBegonnen_);
        zugBegonnen_ = true;
    }
    lupen_.zeige(QPointF(e.x, e.y));
}

bool Messeingabe::taste(const QKeyEvent& e) {
    if (e.key() == Qt::Key_Escape) {
        verlassen_();
        return true;
    }
    const int code = tastencode(e);
    const int umschalt = umschaltung::von(e.modifiers());
    if (umschalt == umschaltung::Umschalt) {
        // Moves the pointer itself, so that a wing can be measured without the mouse.
        if (const QPoint schritt = pfeilrichtung(code); !schritt.isNull()) {
            QCursor::setPos(QCursor::pos() + schritt);
            return true;
        }
    }
    if (code >= taste::Eins && umschalt == umschaltung::Keine && !bild_.zeigerHier()) {
        hinweis_(HinweisPunkteSetzen); // the key means the place of the pointer, and there is none
        return true;
    }
    const Messpunkte vorher = messung_.punkte();
    if (code == taste::Eingabe && umschalt == umschaltung::Keine &&
        (vorher.vollständig(messung_.messart()) || vorher.fertig(messung_.messart())) &&
        (e.isAutoRepeat() || !darfÜbernehmen())) {
        return true; // a key that is held takes one wing, not all that are proposed
    }
    if (!befehle_.Bild_KeyDown(code, umschalt)) {
        return false;
    }
    if (messung_.punkte() != vorher) {
        sagWieÜbernommenWird();
    }
    const Messpunkte& punkte = messung_.punkte();
    if (punkte.GewählterPunkt != 0 && punkte.gemessen(punkte.GewählterPunkt)) {
        const QPointF ort(punkte.PunktX[punkte.GewählterPunkt],
                          punkte.PunktY[punkte.GewählterPunkt]);
        bild_.macheSichtbar(ort);
        lupen_.zeige(ort);
    }
    return true;
}

void Messeingabe::sagWieÜbernommenWird() {
    const Messart messart = messung_.messart();
    const Messpunkte& punkte = messung_.punkte();
    if (punkte.vollständig(messart) && !punkte.fertig(messart)) {
        hinweis_(messung_.standhinweis());
    }
}

} // namespace tarvel
