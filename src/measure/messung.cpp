#include "measure/messung.h"

#include <algorithm>
#include <utility>

namespace tarvel {

namespace {

/// Point number of a digit key, 0 for any other key.
int ziffer(int keyCode) {
    for (const int eins : {taste::Eins, taste::ZiffernblockEins}) {
        if (keyCode >= eins && keyCode < eins + Messpunkte::Anzahl) {
            return keyCode - eins + 1;
        }
    }
    return 0;
}

Messergebnis nichtVerstanden() {
    Messergebnis ergebnis;
    ergebnis.verstanden = false;
    return ergebnis;
}

Messergebnis hinweis(Hinweisnummer nummer) {
    Messergebnis ergebnis;
    ergebnis.hinweis = nummer;
    return ergebnis;
}

} // namespace

Messung::Messung(const Messreihe& reihe, Zahlenformat format)
    : reihe_(reihe)
    , format_(std::move(format)) {}

Messergebnis Messung::Bild_MouseDown(Maustaste taste, int /*umschalt*/, float X, float Y) {
    LetzteMausX_ = X;
    LetzteMausY_ = Y;
    switch (taste) {
    case Maustaste::Links:
        stand_.punkte.setzeNächsten(stand_.messart, X, Y);
        return hinweis(Fußzeile_MessungFertig());
    case Maustaste::Rechts:
        return übernimm();
    case Maustaste::Mitte:
        break;
    }
    return nichtVerstanden();
}

void Messung::Bild_MouseMove(Maustaste /*taste*/, int /*umschalt*/, float X, float Y) {
    LetzteMausX_ = X;
    LetzteMausY_ = Y;
}

Messergebnis Messung::Bild_KeyDown(int keyCode, int umschalt) {
    if (const int nummer = ziffer(keyCode); nummer != 0) {
        if (umschalt == umschaltung::Strg) {
            opt_Fein_Click(nummer);
            return {};
        }
        return umschalt == umschaltung::Keine ? setzePerTaste(nummer) : nichtVerstanden();
    }
    if (umschalt != umschaltung::Keine) {
        return nichtVerstanden();
    }
    float dx = 0;
    float dy = 0;
    switch (keyCode) {
    case taste::Links:
        dx = -1;
        break;
    case taste::Auf:
        dy = -1;
        break;
    case taste::Rechts:
        dx = 1;
        break;
    case taste::Ab:
        dy = 1;
        break;
    case taste::Eingabe:
        return übernimmFertige();
    default:
        return nichtVerstanden();
    }
    return stand_.punkte.verschiebe(dx, dy, grenze()) ? Messergebnis() : nichtVerstanden();
}

Messergebnis Messung::setzePerTaste(int nummer) {
    if (!grenze().enthält(LetzteMausX_, LetzteMausY_)) {
        return hinweis(HinweisPunkteSetzen);
    }
    if (!stand_.punkte.setze(stand_.messart, nummer, LetzteMausX_, LetzteMausY_,
                             Punktherkunft::PerTaste)) {
        return nichtVerstanden();
    }
    return hinweis(Fußzeile_MessungFertig());
}

void Messung::opt_Fein_Click(int index) {
    stand_.punkte.wähle(stand_.messart, index);
}

void Messung::NeuerFlügel() {
    stand_.angefangen = 0;
    stand_.punkte.NeuerFlügel(stand_.messart);
}

bool Messung::gibWiederholungAuf() {
    if (!stand_.wiederholung) {
        return false;
    }
    const Messstand::Wiederholung vorher = *std::exchange(stand_.wiederholung, std::nullopt);
    stand_.messart = vorher.messart;
    stand_.aufnahme = vorher.aufnahme;
    if (!vorher.bilddatei.isEmpty()) { // else the series goes on with the one of this wing
        stand_.bilddatei = vorher.bilddatei;
        stand_.bild = vorher.bild;
    }
    NeuerFlügel();
    return true;
}

Messergebnis Messung::übernimm() {
    return stand_.punkte.fertig(stand_.messart) ? trageEin() : hinweis(HinweisPunkteFehlen);
}

Messergebnis Messung::übernimmFertige() {
    return stand_.punkte.vollständig(stand_.messart) ? trageEin() : übernimm();
}

Messergebnis Messung::trageEin() {
    if (nummer() > Messreihe::HöchsteFlügelzahl) {
        Messergebnis voll;
        voll.reiheVoll = true;
        return voll;
    }
    return BerechneIndizes(nummer());
}

Flügelmessung Messung::flügel() const {
    return {.punkte = stand_.punkte,
            .messart = stand_.messart,
            .aufnahme = stand_.aufnahme,
            .bilddatei = stand_.bilddatei,
            .bild = bild_};
}

Messergebnis Messung::BerechneIndizes(qint16 nummer) {
    const Indizes indizes = berechneIndizes(stand_.punkte, stand_.messart, stand_.aufnahme);
    Messergebnis ergebnis;
    ergebnis.fehler = indizes.fehler;
    if (indizes.fehler && wiederholt()) {
        return ergebnis; // it keeps its good values until the corrected ones are all there
    }
    Messreihe neu = reihe_;
    if (neu.trageEin(nummer, indizes, flügel(), format_)) {
        ergebnis.reihe = std::move(neu);
    }
    if (indizes.fehler) {
        if (ergebnis.reihe) {
            stand_.angefangen = nummer;
        }
        return ergebnis;
    }
    if (!ergebnis.reihe) {
        return hinweis(HinweisPunkteFehlen);
    }
    ergebnis.übernommen = Übernahme{nummer, {}, wiederholt()};
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        if (benutzt(stand_.messart, i) && !stand_.punkte.gemessen(i)) {
            ergebnis.übernommen->ohne.push_back(i);
        }
    }
    if (!gibWiederholungAuf()) {
        NeuerFlügel();
    }
    return ergebnis;
}

Hinweisnummer Messung::Fußzeile_MessungFertig() const {
    if (!stand_.punkte.fertig(stand_.messart)) {
        return HinweisKeiner;
    }
    return wiederholt() ? HinweisErneutSpeichern : HinweisÜbernehmen;
}

Hinweis Messung::standhinweis() const {
    const Hinweisnummer fertig = Fußzeile_MessungFertig();
    if (fertig == HinweisKeiner && stand_.punkte.vollständig(stand_.messart)) {
        // The right button still refuses.
        return {Meldung::ÜbernehmenPerTaste, {QString::number(letzterPunkt(stand_.messart))}};
    }
    return fertig != HinweisKeiner ? fertig : HinweisPunkteSetzen;
}

bool Messung::zieh(int nummer, float x, float y) {
    const auto imBild = [](float wert, float länge) {
        return std::clamp(wert, 0.0F, std::max(0.0F, länge - 1));
    };
    return stand_.punkte.ziehe(stand_.messart, nummer, imBild(x, grenze().breite),
                               imBild(y, grenze().höhe));
}

bool Messung::wiederhole(int nummer) {
    const Flügelmessung* messung = reihe_.messung(nummer);
    if (messung == nullptr) {
        return false;
    }
    gibWiederholungAuf();
    stelleHer(*messung, static_cast<qint16>(nummer));
    return true;
}

void Messung::stelleHer(const Flügelmessung& flügel, qint16 wiederholt) {
    Messstand neu{.messart = flügel.messart,
                  .aufnahme = flügel.aufnahme,
                  .bilddatei = flügel.bilddatei,
                  .bild = flügel.bild,
                  .punkte = flügel.punkte,
                  .angefangen = 0,
                  .wiederholung = {}};
    if (wiederholt != 0) {
        neu.wiederholung = {wiederholt, stand_.messart, stand_.aufnahme, stand_.bilddatei,
                            stand_.bild};
    }
    stand_ = std::move(neu);
}

bool Messung::etwasZuVerlieren() const {
    if (!wiederholt()) {
        return stand_.punkte.eigene();
    }
    const Flügelmessung* alt = reihe_.messung(stand_.wiederholung->nummer);
    return alt == nullptr || alt->messart != stand_.messart || alt->aufnahme != stand_.aufnahme ||
           alt->punkte.PunktX != stand_.punkte.PunktX || alt->punkte.PunktY != stand_.punkte.PunktY;
}

void Messung::setzeMessart(Messart messart) {
    stand_.messart = messart;
    NeuerFlügel();
}

void Messung::setzeZoomfaktor(int zoomfaktor) {
    stand_.aufnahme.Zoomfaktor = static_cast<qint16>(std::clamp(zoomfaktor, 1, 4));
    NeuerFlügel();
}

void Messung::setzeAuflösung(int dpi) {
    Q_ASSERT(dpi > 0);
    stand_.aufnahme.dpi = dpi;
}

void Messung::setzeBilddatei(const QString& pfad) {
    gibWiederholungAuf();
    stand_.bilddatei = pfad;
    stand_.bild = bild_;
    NeuerFlügel();
}

Bildgrenze Messung::grenze() const {
    if (!bild_.größe.isValid()) {
        return {};
    }
    const QSizeF gezoomt = QSizeF(bild_.größe) * stand_.aufnahme.Zoomfaktor;
    return {static_cast<float>(gezoomt.width()), static_cast<float>(gezoomt.height())};
}

qint16 Messung::nummer() const {
    if (stand_.wiederholung) {
        return stand_.wiederholung->nummer;
    }
    return reihe_.enthält(stand_.angefangen) ? stand_.angefangen : reihe_.nächsteNummer();
}

} // namespace tarvel
