#include "measure/messung.h"

#include <algorithm>

namespace tarvel {

namespace {

constexpr int HinweisPunkteFehlen = 3;
constexpr int HinweisPunkteSetzen = 4;
constexpr int HinweisÜbernehmen = 5;
constexpr int HinweisErneutSpeichern = 8;

/// Point number of a digit key, 0 for any other key.
int ziffer(int keyCode) {
    for (const int eins : {taste::Eins, taste::ZiffernblockEins}) {
        if (keyCode >= eins && keyCode < eins + Messpunkte::Anzahl) {
            return keyCode - eins + 1;
        }
    }
    return 0;
}

} // namespace

Messung::Messung(Messreihe& reihe, Zahlenformat format)
    : reihe_(reihe)
    , format_(std::move(format)) {}

void Messung::Bild_MouseDown(Maustaste taste, int /*umschalt*/, float X, float Y) {
    LetzteMausX_ = X;
    LetzteMausY_ = Y;
    if (taste == Maustaste::Links) {
        merkeStand();
        punkte_.setzeNächsten(messart_, X, Y);
        punkteGeändert();
        Fußzeile_MessungFertig();
    } else if (taste == Maustaste::Rechts) {
        übernimm();
    }
}

void Messung::Bild_MouseMove(Maustaste /*taste*/, int /*umschalt*/, float X, float Y) {
    LetzteMausX_ = X;
    LetzteMausY_ = Y;
}

bool Messung::Bild_KeyDown(int keyCode, int umschalt) {
    if (const int nummer = ziffer(keyCode); nummer != 0) {
        if (umschalt == umschaltung::Strg) {
            opt_Fein_Click(nummer);
            return true;
        }
        return umschalt == umschaltung::Keine && setzePerTaste(nummer);
    }
    if (umschalt != umschaltung::Keine) {
        return false;
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
        übernimmFertige();
        return true;
    case taste::Rücktaste:
        return macheRückgängig();
    default:
        return false;
    }
    const Messpunkte vorher = punkte_;
    if (!punkte_.verschiebe(dx, dy)) {
        return false;
    }
    verlauf_.push_back(vorher);
    punkteGeändert();
    return true;
}

bool Messung::setzePerTaste(int nummer) {
    const Messpunkte vorher = punkte_;
    if (!punkte_.setze(messart_, nummer, LetzteMausX_, LetzteMausY_)) {
        return false;
    }
    verlauf_.push_back(vorher);
    punkteGeändert();
    Fußzeile_MessungFertig();
    return true;
}

void Messung::opt_Fein_Click(int index) {
    if (punkte_.wähle(messart_, index)) {
        punkteGeändert();
    }
}

void Messung::NeuerFlügel() {
    // A repeated wing cannot come back by undo: it would return as a new one.
    if (nummerInArbeit_) {
        verlauf_.clear();
    } else if (punkte_.begonnen()) {
        merkeStand();
    }
    beendeWiederholung();
    punkte_.NeuerFlügel(messart_);
    punkteGeändert();
}

void Messung::beendeWiederholung() {
    nummerInArbeit_.reset();
    if (vorWiederholung_) {
        messart_ = vorWiederholung_->messart;
        aufnahme_.dpi = vorWiederholung_->dpi;
        vorWiederholung_.reset();
    }
}

void Messung::übernimm() {
    if (punkte_.fertig(messart_)) {
        trageEin();
    } else {
        ZeigeHinweis(HinweisPunkteFehlen);
    }
}

void Messung::übernimmFertige() {
    if (punkte_.vollständig(messart_)) {
        trageEin();
    } else {
        übernimm();
    }
}

void Messung::trageEin() {
    if (nummer() > Messreihe::HöchsteFlügelzahl) {
        if (an_.reiheVoll) {
            an_.reiheVoll();
        }
        return;
    }
    BerechneIndizes(nummer());
}

void Messung::BerechneIndizes(qint16 nummer) {
    const Indizes indizes = berechneIndizes(punkte_, messart_, aufnahme_);
    // A repeated wing keeps its good values until the corrected ones are all there.
    const bool eingetragen =
        !(indizes.fehler && wiederholt()) &&
        reihe_.trageEin(nummer, indizes, {punkte_, messart_, aufnahme_, bilddatei_}, format_);
    if (indizes.fehler) {
        if (eingetragen) {
            nummerInArbeit_ = nummer;
        }
        if (an_.rechenfehler) {
            an_.rechenfehler(*indizes.fehler);
        }
        return;
    }
    if (!eingetragen) {
        ZeigeHinweis(HinweisPunkteFehlen);
        return;
    }
    std::vector<int> ohne;
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        if (benutzt(messart_, i) && !punkte_.gemessen(i)) {
            ohne.push_back(i);
        }
    }
    beendeWiederholung();
    punkte_.NeuerFlügel(messart_);
    verlauf_.clear();
    punkteGeändert();
    if (an_.flügelÜbernommen) {
        an_.flügelÜbernommen(nummer, std::move(ohne));
    }
}

void Messung::Fußzeile_MessungFertig() {
    if (punkte_.fertig(messart_)) {
        ZeigeHinweis(wiederholt() ? HinweisErneutSpeichern : HinweisÜbernehmen);
    }
}

bool Messung::macheRückgängig() {
    if (verlauf_.empty()) {
        return false;
    }
    punkte_ = verlauf_.back();
    verlauf_.pop_back();
    punkteGeändert();
    if (punkte_.fertig(messart_)) {
        Fußzeile_MessungFertig();
    } else {
        ZeigeHinweis(HinweisPunkteSetzen);
    }
    return true;
}

void Messung::zieh(int nummer, float x, float y, bool neuerZug) {
    if (!benutzt(messart_, nummer) || !punkte_.gemessen(nummer)) {
        return;
    }
    if (neuerZug) {
        merkeStand();
    }
    punkte_.GewählterPunkt = static_cast<qint16>(nummer);
    punkte_.PunktX[nummer] = x;
    punkte_.PunktY[nummer] = y;
    punkteGeändert();
}

bool Messung::wiederhole(int nummer) {
    const Flügelmessung* messung = reihe_.messung(nummer);
    if (messung == nullptr) {
        return false;
    }
    beendeWiederholung();
    vorWiederholung_ = Vorher{messart_, aufnahme_.dpi};
    punkte_ = messung->punkte;
    messart_ = messung->messart;
    aufnahme_ = messung->aufnahme;
    bilddatei_ = messung->bilddatei;
    nummerInArbeit_ = static_cast<qint16>(nummer);
    verlauf_.clear();
    punkteGeändert();
    Fußzeile_MessungFertig();
    return true;
}

void Messung::stelleHer(const Flügelmessung& flügel, qint16 wiederholt) {
    beendeWiederholung();
    if (wiederholt != 0) {
        vorWiederholung_ = Vorher{messart_, aufnahme_.dpi};
        nummerInArbeit_ = wiederholt;
    }
    punkte_ = flügel.punkte;
    messart_ = flügel.messart;
    aufnahme_ = flügel.aufnahme;
    bilddatei_ = flügel.bilddatei;
    verlauf_.clear();
    punkteGeändert();
}

void Messung::setzeMessart(Messart messart) {
    beendeWiederholung();
    messart_ = messart;
    verwirf();
}

void Messung::setzeZoomfaktor(int zoomfaktor) {
    beendeWiederholung();
    aufnahme_.Zoomfaktor = static_cast<qint16>(std::clamp(zoomfaktor, 1, 4));
    verwirf();
}

void Messung::verwirf() {
    verlauf_.clear();
    punkte_.NeuerFlügel(messart_);
    punkteGeändert();
}

void Messung::setzeAuflösung(int dpi) {
    Q_ASSERT(dpi > 0);
    aufnahme_.dpi = dpi;
}

void Messung::setzeBilddatei(const QString& pfad) {
    beendeWiederholung();
    bilddatei_ = pfad;
    verwirf();
}

qint16 Messung::nummer() const {
    return nummerInArbeit_ && reihe_.enthält(*nummerInArbeit_) ? *nummerInArbeit_
                                                               : reihe_.nächsteNummer();
}

void Messung::ZeigeHinweis(int hinweisnummer) {
    if (an_.ZeigeHinweis) {
        an_.ZeigeHinweis(hinweisnummer);
    }
}

void Messung::merkeStand() {
    verlauf_.push_back(punkte_);
}

void Messung::punkteGeändert() {
    if (an_.punkteGeändert) {
        an_.punkteGeändert();
    }
}

} // namespace tarvel
