#include "measure/messplatz.h"

#include "measure/bild.h"
#include "measure/fluegelmarken.h"
#include "measure/fluegelort.h"
#include "measure/lupe.h"
#include "measure/tasten.h"
#include "measure/uebersicht.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

Messplatz::Messplatz(const Texte& texte, Dialoge& dialoge, Messbefehle& befehle,
                     Flügelfunde::Modellquelle modell, QWidget* parent)
    : QWidget(parent)
    , texte_(texte)
    , befehle_(befehle)
    , messung_(befehle.messung())
    , reihe_(befehle.reihe())
    , seiten_(new QStackedWidget)
    , aufforderung_(new QLabel)
    , bef_BildLaden_(new QPushButton)
    , übersicht_(new Übersicht)
    , bild_(new Bild)
    , fragen_(texte, dialoge, messung_, reihe_)
    , offen_(texte, dialoge, *this, befehle)
    , lupen_(*bild_)
    , eingabe_(befehle, fragen_, *bild_, lupen_)
    , funde_(std::move(modell), offen_, befehle) {
    setObjectName(u"Messplatz"_s);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(seiten_);
    seiten_->addWidget(leereSeite());
    seiten_->addWidget(übersicht_);
    seiten_->addWidget(bild_);
    verbindeÜbersicht();
    verbindeBild();
    verbindeFunde();
    connect(&texte_, &Texte::languageChanged, this, [this] { beschrifte(); });
    beschrifte();
}

Messplatz::~Messplatz() = default;

QWidget* Messplatz::leereSeite() {
    auto* seite = new QWidget;
    auto* layout = new QVBoxLayout(seite);
    aufforderung_->setWordWrap(true);
    aufforderung_->setAlignment(Qt::AlignCenter);
    QFont groß = aufforderung_->font();
    groß.setPointSizeF(groß.pointSizeF() * 1.3);
    aufforderung_->setFont(groß);
    bef_BildLaden_->setObjectName(u"bef_BildLaden"_s);
    connect(bef_BildLaden_, &QPushButton::clicked, this, [this] { bildwunsch_(); });
    layout->addStretch(2);
    layout->addWidget(aufforderung_);
    layout->addSpacing(12);
    layout->addWidget(bef_BildLaden_, 0, Qt::AlignHCenter);
    layout->addStretch(3);
    return seite;
}

void Messplatz::verbindeÜbersicht() {
    übersicht_->beiWahl([this](const Übersicht::Wahl& wahl) {
        if (!wahl.neu && korrigiereAn(wahl.ort)) {
            return;
        }
        mitte_ = wahl.mitte;
        if (zeigeMessen()) {
            nimmVorschlagVonSelbst(funde_.an(wahl.ort));
        }
    });
    übersicht_->beiErklärung([this](QPointF ort) {
        const std::optional<int> nummer = gemessenerAn(ort);
        if (!nummer) {
            return fundtipp(ort);
        }
        const QString auskunft = auskunft_(*nummer);
        return texte_(Meldung::TippGemessenerFlügel).arg(dreistellig(*nummer)) +
               (auskunft.isEmpty() ? QString() : u'\n' + auskunft);
    });
    übersicht_->beiRechtsklick([this](QPointF ort) {
        const std::optional<int> nummer = gemessenerAn(ort);
        wahl_(nummer ? std::vector{*nummer} : std::vector<int>());
    });
}

void Messplatz::verbindeBild() {
    bild_->beiZoomwunsch([this](int schritt, QPointF imFenster) {
        wünscheZoom(messung_.aufnahme().Zoomfaktor + schritt, imFenster);
    });
    bild_->beiAusschnitt([this] {
        if (zustand_ == Zustand::Messen) {
            mitte_ = bild_->ausschnitt().center();
        }
        zeigeRahmen();
    });
    eingabe_.beiHinweis([this](const Hinweis& h) { hinweis_(h); });
    eingabe_.beiVerlassen([this] { verlasseMessen(); });
    offen_.beiWechsel([this] {
        // The pixels of the former picture go before those of the new one come.
        leereBild();
        übersicht_->setzeBild(offen_.übersicht(), offen_.größe());
        funde_.folge();
    });
}

void Messplatz::leereBild() {
    bild_->setzeBild({});
    lupen_.setzeBild({}, 1);
}

void Messplatz::beschrifte() {
    aufforderung_->setText(texte_(Text::HinweisBildLaden));
    bef_BildLaden_->setText(texte_(Text::KnopfBildLaden));
    übersicht_->setAccessibleName(texte_(Meldung::NameÜbersicht));
    bild_->setAccessibleName(texte_(Meldung::NameFlügelbild));
    lupen_.setzeName(texte_(Meldung::Lupe));
}

std::optional<int> Messplatz::gemessenerAn(QPointF ort) const {
    std::optional<int> nummer = flügelAn(reihe_, offen_.pfad(), ort, messung_.bild());
    // The one that is being repeated lies on the picture with its points already.
    return messung_.wiederholt() && nummer == messung_.nummer() ? std::nullopt : nummer;
}

int Messplatz::flügelAmZeiger() const {
    const std::optional<QPointF> ort =
        zustand_ == Zustand::Übersicht ? übersicht_->zeiger() : std::nullopt;
    return ort ? gemessenerAn(*ort).value_or(0) : 0;
}

void Messplatz::setzeBefehle(const QList<QAction*>& befehle) {
    übersicht_->addActions(befehle);
}

bool Messplatz::korrigiereAn(QPointF ort) {
    const std::optional<int> nummer = gemessenerAn(ort);
    if (!nummer) {
        return false;
    }
    if (wiederhole(*nummer)) {
        hinweis_({Meldung::FlügelZumKorrigieren, {dreistellig(*nummer)}});
    }
    return true;
}

void Messplatz::wechsle(Zustand zustand) {
    zustand_ = zustand;
    seiten_->setCurrentIndex(static_cast<int>(zustand));
    andererZustand_();
}

bool Messplatz::ladeBild(const QString& pfad) {
    if (!fragen_.verlässtFlügel(Meldung::AnderesBildFrage, Meldung::AnderesBildLaden)) {
        return false;
    }
    Bildzugang& zugang = offen_.zugang();
    const QString gewählt = zugang.wähleSeite(pfad);
    zugang.suche().vertraue(gewählt);
    if (gewählt.isEmpty() || !öffne(gewählt)) {
        return false;
    }
    reihenort_.reset();
    nichtZuÖffnen_ = {};
    befehle_.setzeBild(gewählt);
    mitte_ = offen_.mitte();
    if (einFlügel()) {
        zeigeMessen();
    } else {
        zeigeÜbersicht();
    }
    return true;
}

bool Messplatz::öffne(const QString& pfad, bool ganz) {
    hinweis_(HinweisBildWirdGeladen);
    const bool geöffnet = offen_.öffne(pfad, ganz);
    if (!geöffnet) {
        zeigeStandhinweis();
    }
    return geöffnet;
}

void Messplatz::zeigeStandhinweis() {
    switch (zustand_) {
    case Zustand::OhneBild:
        hinweis_(HinweisBildLaden);
        break;
    case Zustand::Übersicht:
        hinweis_(reihe_.leer() ? Hinweis(HinweisRechteck)
                               : Hinweis(HinweisRechteckAufFlügel, messung_.nummer()));
        break;
    case Zustand::Messen:
        hinweis_(messung_.punkte().vorgeschlagen() ? vorschlagshinweis() : messung_.standhinweis());
        break;
    }
}

bool Messplatz::einFlügel() const {
    // A picture as high as one wing is seen well enough without an overview, and scrolled
    // sideways if need be.
    constexpr double Spielraum = 1.5;
    const QSizeF gezoomt = QSizeF(offen_.größe()) * messung_.aufnahme().Zoomfaktor;
    return gezoomt.width() <= Spielraum * seiten_->width() && gezoomt.height() <= seiten_->height();
}

void Messplatz::zeigeÜbersicht() {
    if (offen_.leer()) {
        hinweis_(HinweisBildLaden);
        return;
    }
    // The next wing that is clicked there is another one.
    if (!verlässtWiederholung()) {
        return;
    }
    befehle_.gibWiederholungAuf();
    if (offen_.leer()) {
        return; // the picture of the series is gone
    }
    zeigeScan();
}

bool Messplatz::verlässtWiederholung() const {
    return !messung_.wiederholt() || fragen_.verlässtFlügel(Meldung::WiederholungAufgebenFrage,
                                                            Meldung::WiederholungAufgeben);
}

void Messplatz::verlasseMessen() {
    if (!messung_.wiederholt()) {
        zeigeÜbersicht();
    } else if (verlässtWiederholung()) {
        befehle_.gibWiederholungAuf();
    }
}

void Messplatz::zeigeScan() {
    wechsle(Zustand::Übersicht);
    zeigeRahmen();
    übersicht_->setzeMitte(mitte_);
    übersicht_->setFocus();
    zeigeStandhinweis();
}

void Messplatz::kehreZurück(Zustand zustand) {
    if (offen_.leer() || !isVisible()) {
        return; // told already, or chosen when the place is seen again
    }
    if (zustand == Zustand::Messen) {
        zeigeMessen();
    } else {
        zeigeScan();
    }
}

bool Messplatz::zeigeMessen() {
    if (offen_.leer()) {
        hinweis_(HinweisBildLaden);
        return false;
    }
    const QPointF mitte = mitte_;
    if (bild_->bild().isNull()) {
        hinweis_(HinweisBildWirdGeladen);
        const QImage* pixel = offen_.pixel();
        if (pixel == nullptr) {
            // Never a measuring view without a picture: points set there would mean nothing.
            wechsle(Zustand::Übersicht);
            zeigeStandhinweis();
            return false;
        }
        bild_->setzeBild(*pixel);
    }
    bild_->setzeZoomfaktor(messung_.aufnahme().Zoomfaktor);
    lupen_.setzeBild(bild_->bild(), messung_.aufnahme().Zoomfaktor);
    wechsle(Zustand::Messen);
    zeigePunkte();
    zeigeErledigte();
    zeigeFunde();
    bild_->zeige(mitte);
    mitte_ = mitte;
    lupen_.zeige(mitte * messung_.aufnahme().Zoomfaktor);
    bild_->sucheZeiger();
    nimmTastatur();
    zeigeStandhinweis();
    return true;
}

void Messplatz::nimmTastatur() {
    if (zustand_ == Zustand::Messen) {
        bild_->setFocus();
    } else if (zustand_ == Zustand::Übersicht) {
        übersicht_->setFocus();
    }
}

bool Messplatz::nimmZiffer(const QKeyEvent& ereignis) {
    if (zustand_ != Zustand::Messen || !isVisible() || tastencode(ereignis) < taste::Eins) {
        return false;
    }
    nimmTastatur();
    return eingabe_.taste(ereignis);
}

bool Messplatz::wünscheZoom(int zoomfaktor) {
    const QPointF mitte = mitte_;
    if (!ändereZoom(zoomfaktor, mitte, QRectF(bild_->viewport()->rect()).center())) {
        return false;
    }
    mitte_ = mitte; // also where the picture's edge kept it from the middle
    return true;
}

bool Messplatz::wünscheZoom(int zoomfaktor, QPointF imFenster) {
    return ändereZoom(zoomfaktor, bild_->zuBild(imFenster) / bild_->Zoomfaktor(), imFenster);
}

bool Messplatz::ändereZoom(int zoomfaktor, QPointF fest, QPointF imFenster) {
    const int zoom = std::clamp(zoomfaktor, Bild::KleinsterZoom, Bild::GrößterZoom);
    if (zoom == messung_.aufnahme().Zoomfaktor || !fragen_.gibPunkteAufFürZoom()) {
        return false;
    }
    const std::optional<std::size_t> vorgeschlagen = vorgeschlagener();
    befehle_.setzeZoom(zoom);
    if (zustand_ == Zustand::Messen) {
        bild_->zeige(fest, imFenster);
        hinweis_(HinweisPunkteSetzen);
        if (vorgeschlagen) { // whoever zooms to check it still wants it
            nimmVorschlag(*vorgeschlagen);
        }
    }
    return true;
}

bool Messplatz::wünscheMessart(Messart messart) {
    if (messart == messung_.messart() ||
        !fragen_.gibPunkteAuf(Meldung::BetriebsartFrage, Meldung::BetriebsartWechseln)) {
        return false;
    }
    befehle_.setzeMessart(messart);
    return true;
}

bool Messplatz::wiederhole(int nummer) {
    const Flügelmessung* messung = reihe_.messung(nummer);
    if (messung == nullptr) {
        fragen_.meldeNichtsZuWiederholen();
        return false;
    }
    if (!fragen_.verlässtFlügel(Meldung::WiederholenFrage, Meldung::Wiederholen)) {
        return false;
    }
    const Reihenort hier{mitte_, zustand_}; // another picture has another middle
    if (!liegtAuf(*messung, offen_.pfad(), messung_.bild())) {
        const QString pfad = offen_.finde(*messung);
        if (pfad.isEmpty() || (pfad != offen_.pfad() && !öffne(pfad, true))) {
            return false;
        }
        messung = reihe_.messung(nummer);
    }
    const QPointF mitte = flügelmitte(*messung).value_or(mitte_);
    if (!messung_.wiederholt()) {
        reihenort_ = hier;
    }
    if (!befehle_.wiederhole(nummer)) {
        reihenort_.reset();
        return false;
    }
    mitte_ = mitte;
    if (!zeigeMessen()) {
        befehle_.gibWiederholungAuf(); // nothing may be replaced out of sight
        return false;
    }
    wahl_({nummer}); // keys that mean chosen wings mean this one
    return true;
}

void Messplatz::folgeUntersuchung() {
    offen_.ordneFlügelZu();
}

void Messplatz::folge() {
    if (messung_.wiederholt() && !reihenort_) {
        reihenort_ = {mitte_, zustand_};
    }
    folgeBild();
    folgeZoom();
    std::optional<Reihenort> zurück;
    if (!messung_.wiederholt()) {
        zurück = std::exchange(reihenort_, std::nullopt);
    }
    if (zurück && zurück->zustand != Zustand::OhneBild) {
        mitte_ = zurück->mitte;
    }
    funde_.folge();
    zeigePunkte();
    zeigeErledigte();
    zeigeFunde();
    zeigeRahmen();
    if (zurück) {
        kehreZurück(zurück->zustand);
    }
}

void Messplatz::folgeBild() {
    const QString pfad = messung_.bilddatei();
    const GesuchtesBild gesucht{.pfad = pfad, .kennung = messung_.stand().bild};
    const bool gezeigt = pfad == offen_.pfad() && verträglich(gesucht.kennung, messung_.bild());
    if (offen_.wechselt() || gezeigt || (!pfad.isEmpty() && gesucht == nichtZuÖffnen_)) {
        return;
    }
    nichtZuÖffnen_ = {};
    const QString jetzt = pfad.isEmpty() ? QString() : offen_.findeWieder(pfad);
    if (jetzt.isEmpty() || !öffne(jetzt)) {
        // By now it may be known to be elsewhere.
        nichtZuÖffnen_ = {.pfad = messung_.bilddatei(), .kennung = messung_.stand().bild};
        offen_.schließe();
        leereBild();
        wechsle(Zustand::OhneBild);
        return;
    }
    mitte_ = flügelmitte(messung_.flügel()).value_or(offen_.mitte());
    if (zustand_ != Zustand::Messen) {
        wechsle(Zustand::Übersicht);
    } else {
        zeigeMessen();
    }
}

bool Messplatz::bringeZurück(const QString& pfad) {
    if (!offen_.leer() || !messung_.bilddatei().isEmpty() || messung_.punkte().begonnen() ||
        !offen_.öffneLetztes(pfad)) {
        return false;
    }
    mitte_ = offen_.mitte();
    befehle_.setzeBild(offen_.pfad());
    wechsle(Zustand::Übersicht);
    zeigeRahmen();
    übersicht_->setzeMitte(mitte_);
    if (isVisible()) {
        zeigeStandhinweis();
    }
    return true;
}

void Messplatz::folgeZoom() {
    const int zoom = messung_.aufnahme().Zoomfaktor;
    if (bild_->Zoomfaktor() == zoom) {
        return;
    }
    const QPointF mitte = mitte_;
    bild_->setzeZoomfaktor(zoom);
    lupen_.setzeBild(bild_->bild(), zoom);
    if (zustand_ == Zustand::Messen) {
        bild_->zeige(mitte);
    }
    mitte_ = mitte;
}

void Messplatz::zeigeFlügel() {
    const Messpunkte& punkte = messung_.punkte();
    if (!punkte.begonnen()) {
        return;
    }
    if (zustand_ == Zustand::Messen) {
        for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
            if (punkte.gemessen(i)) {
                bild_->macheSichtbar(QPointF(punkte.PunktX[i], punkte.PunktY[i]));
            }
        }
        return;
    }
    mitte_ = flügelmitte(messung_.flügel()).value_or(mitte_);
    zeigeMessen();
}

void Messplatz::nächsterFlügel() {
    const std::optional<std::size_t> dieser = funde_.gemessener(reihe_.letzteNummer());
    const QPointF hier = dieser ? funde_.alle()[*dieser].mitte : mitte_;
    if (const auto nächster = funde_.nächster(hier, 1, true)) {
        zeigeFund(*nächster);
        return;
    }
    if (!offen_.leer() && !einFlügel()) {
        zeigeÜbersicht();
    } else {
        hinweis_(HinweisPunkteSetzen);
    }
}

void Messplatz::zeigeRahmen() {
    const int zoom = messung_.aufnahme().Zoomfaktor;
    übersicht_->setzeRahmen(QSizeF(seiten_->size()) / zoom);
}

void Messplatz::zeigePunkte() {
    std::vector<Marke> marken = punktmarken(messung_.punkte(), fragliche());
    lupen_.setzeMarken(marken);
    bild_->setzeMarken(std::move(marken));
}

void Messplatz::zeigeErledigte() {
    Erledigtmarken marken = erledigtmarken(reihe_, messung_, offen_.pfad(), zweifel_);
    übersicht_->setzeErledigte(std::move(marken.imScan));
    bild_->setzeErledigte(std::move(marken.imBild));
}

} // namespace tarvel
