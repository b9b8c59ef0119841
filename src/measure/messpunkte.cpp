#include "measure/messpunkte.h"

#include <algorithm>

namespace tarvel {

void Messpunkte::NeuerFlügel(Messart messart) {
    PunktX.fill(NichtGemessen);
    PunktY.fill(NichtGemessen);
    Herkunft.fill(Punktherkunft::Unbekannt);
    AktuellerPunkt = static_cast<qint16>(ersterPunkt(messart) - 1);
    GewählterPunkt = 0;
}

qint16 Messpunkte::setzeNächsten(Messart messart, float x, float y) {
    setze(messart, nächster(messart), x, y, Punktherkunft::Geklickt);
    return AktuellerPunkt;
}

qint16 Messpunkte::nächster(Messart messart) const {
    const bool weiter =
        AktuellerPunkt >= ersterPunkt(messart) - 1 && AktuellerPunkt < letzterPunkt(messart);
    return weiter ? static_cast<qint16>(AktuellerPunkt + 1) : ersterPunkt(messart);
}

bool Messpunkte::setze(Messart messart, int nummer, float x, float y, Punktherkunft herkunft) {
    if (!wähle(messart, nummer)) {
        return false;
    }
    PunktX[nummer] = x;
    PunktY[nummer] = y;
    Herkunft[nummer] = herkunft;
    AktuellerPunkt = static_cast<qint16>(nummer);
    return true;
}

void Messpunkte::schlageVor(Messart messart, const std::array<float, Anzahl + 1>& x,
                            const std::array<float, Anzahl + 1>& y) {
    NeuerFlügel(messart);
    for (int i = ersterPunkt(messart); i <= letzterPunkt(messart); ++i) {
        setze(messart, i, x[i], y[i], Punktherkunft::Vorgeschlagen);
    }
}

bool Messpunkte::vorgeschlagen() const {
    return std::find(Herkunft.begin(), Herkunft.end(), Punktherkunft::Vorgeschlagen) !=
           Herkunft.end();
}

bool Messpunkte::eigene() const {
    for (int i = 1; i <= Anzahl; ++i) {
        if (gemessen(i) && Herkunft.at(i) != Punktherkunft::Vorgeschlagen) {
            return true;
        }
    }
    return false;
}

bool Messpunkte::wähle(Messart messart, int nummer) {
    if (!benutzt(messart, nummer)) {
        return false;
    }
    GewählterPunkt = static_cast<qint16>(nummer);
    return true;
}

bool Messpunkte::ziehe(Messart messart, int nummer, float x, float y) {
    if (!benutzt(messart, nummer) || !gemessen(nummer)) {
        return false;
    }
    GewählterPunkt = static_cast<qint16>(nummer);
    PunktX[nummer] = x;
    PunktY[nummer] = y;
    Herkunft[nummer] = Punktherkunft::Verschoben;
    return true;
}

bool Messpunkte::verschiebe(float dx, float dy, const Bildgrenze& grenze) {
    if (GewählterPunkt == 0 || !gemessen(GewählterPunkt)) {
        return false;
    }
    const float x = PunktX[GewählterPunkt] + dx;
    const float y = PunktY[GewählterPunkt] + dy;
    if (!grenze.enthält(x, y)) {
        return false;
    }
    return ziehe(Messart::AlleMessungen, GewählterPunkt, x, y);
}

bool Messpunkte::fertig(Messart messart) const {
    return AktuellerPunkt == letzterPunkt(messart);
}

bool Messpunkte::vollständig(Messart messart) const {
    for (int i = ersterPunkt(messart); i <= letzterPunkt(messart); ++i) {
        if (!gemessen(i)) {
            return false;
        }
    }
    return true;
}

bool Messpunkte::begonnen() const {
    return std::any_of(PunktX.begin() + 1, PunktX.end(),
                       [](float x) { return x != NichtGemessen; });
}

} // namespace tarvel
