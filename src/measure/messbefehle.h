#pragma once

#include "measure/bildsuche.h"
#include "measure/messung.h"

namespace tarvel {

/// What the measuring views read, and the commands that they give. Whoever carries a command out
/// tells everybody what changed; the views draw from there.
class Messbefehle {
public:
    virtual ~Messbefehle() = default;

    [[nodiscard]] virtual const Messung& messung() const = 0;
    [[nodiscard]] virtual const Messreihe& reihe() const = 0;

    /// Events of the picture and of the option buttons of the points, as Messung takes them.
    virtual void Bild_MouseDown(Maustaste taste, int umschalt, float X, float Y) = 0;
    virtual void Bild_MouseMove(Maustaste taste, int umschalt, float X, float Y) = 0;
    /// True when the key meant something here.
    virtual bool Bild_KeyDown(int keyCode, int umschalt) = 0;
    virtual void opt_Fein_Click(int index) = 0;
    /// Drags a point; the moves after the first (@p neuerZug) belong to the same step.
    virtual void zieh(int nummer, float x, float y, bool neuerZug) = 0;

    /// See Messung::schlageVor.
    virtual void schlageVor(const Messpunkte& punkte) = 0;

    virtual void setzeBild(const QString& pfad) = 0;
    /// See Messung::zeigtBild. Changes nothing that is observed.
    virtual void zeigtBild(const Bildkennung& bild) = 0;
    /// The picture of measured wings is at @p jetzt now, @p größe in pixels; see
    /// Messreihe::verlegeBild. With @p messung so is that of the wing being measured, if it has the
    /// same path.
    virtual void verlegeBild(const GesuchtesBild& bild, const QString& jetzt, QSize größe,
                             bool messung) = 0;
    virtual void setzeZoom(int zoomfaktor) = 0;
    virtual void setzeMessart(Messart messart) = 0;
    virtual bool wiederhole(int nummer) = 0;
    virtual void gibWiederholungAuf() = 0;
};

} // namespace tarvel
