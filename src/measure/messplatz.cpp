#include "measure/messplatz.h"

#include "measure/bild.h"
#include "measure/bildaufloesung.h"
#include "measure/bildmarke.h"
#include "measure/bildort.h"
#include "measure/bildzugang.h"
#include "measure/fluegelort.h"
#include "measure/lupe.h"
#include "measure/tasten.h"
#include "measure/uebersicht.h"

#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

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

Messplatz::Messplatz(const Texte& texte, Dialoge& dialoge, Messbefehle& befehle, QWidget* parent)
    : QWidget(parent)
    , texte_(texte)
    , dialoge_(dialoge)
    , befehle_(befehle)
    , messung_(befehle.messung())
    , reihe_(befehle.reihe())
    , zugang_(std::make_unique<Bildzugang>(texte, dialoge, *this))
    , seiten_(new QStackedWidget)
    , aufforderung_(new QLabel)
    , bef_BildLaden_(new QPushButton)
    , übersicht_(new Übersicht)
    , bild_(new Bild)
    , lupe_(new Lupe)
    , zeigerlupe_(new Lupe(bild_)) {
    setObjectName(u"Messplatz"_s);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(seiten_);
    seiten_->addWidget(leereSeite());
    seiten_->addWidget(übersicht_);
    seiten_->addWidget(bild_);
    zeigerlupe_->setObjectName(u"pic_Zeigerlupe"_s);
    zeigerlupe_->setAttribute(Qt::WA_TransparentForMouseEvents);
    constexpr int Lupengröße = 180;
    zeigerlupe_->resize(Lupengröße, Lupengröße);
    zeigerlupe_->hide();
    bild_->viewport()->installEventFilter(this);
    verbindeBild();
    connect(&texte_, &Texte::languageChanged, this, [this] { beschrifte(); });
    beschrifte();
}

Messplatz::~Messplatz() = default;

Bildzugang& Messplatz::zugang() {
    return *zugang_;
}

QWidget* Messplatz::leereSeite() {
    auto* seite = new QWidget;
    auto* layout = new QVBoxLayout(seite);
    aufforderung_->setWordWrap(true);
    aufforderung_->setAlignment(Qt::AlignCenter);
    QFont groß = aufforderung_->font();
    groß.setPointSizeF(groß.pointSizeF() * 1.3);
    aufforderung_->setFont(groß);
    bef_BildLaden_->setObjectName(u"bef_BildLaden"_s);
    connect(bef_BildLaden_, &QPushButton::clicked, this, [this] {
        if (bildLadenGewünscht) {
            bildLadenGewünscht();
        }
    });
    layout->addStretch(2);
    layout->addWidget(aufforderung_);
    layout->addSpacing(12);
    layout->addWidget(bef_BildLaden_, 0, Qt::AlignHCenter);
    layout->addStretch(3);
    return seite;
}

void Messplatz::verbindeBild() {
    übersicht_->gewählt = [this](const Übersicht::Wahl& wahl) {
        if (!wahl.neu && korrigiereAn(wahl.ort)) {
            return;
        }
        mitte_ = wahl.mitte;
        zeigeMessen();
    };
    übersicht_->erklärung = [this](QPointF ort) {
        const std::optional<int> nummer = gemessenerAn(ort);
        if (!nummer) {
            return QString();
        }
        const QString auskunft = flügelauskunft ? flügelauskunft(*nummer) : QString();
        return texte_(Meldung::TippGemessenerFlügel).arg(dreistellig(*nummer)) +
               (auskunft.isEmpty() ? QString() : u'\n' + auskunft);
    };
    übersicht_->gezeigt = [this](QPointF ort) {
        if (beiWahl) {
            const std::optional<int> nummer = gemessenerAn(ort);
            beiWahl(nummer ? std::vector{*nummer} : std::vector<int>());
        }
    };
    bild_->gedrückt = [this](const Zeigerereignis& e) { drück(e); };
    bild_->bewegt = [this](const Zeigerereignis& e) { beweg(e); };
    bild_->losgelassen = [this](const Zeigerereignis&) { gezogen_ = 0; };
    bild_->tasteGedrückt = [this](QKeyEvent* e) { return taste(*e); };
    bild_->zoomGewünscht = [this](int schritt, QPointF imFenster) {
        wünscheZoom(messung_.aufnahme().Zoomfaktor + schritt, imFenster);
    };
    bild_->ausschnittGeändert = [this] {
        if (zustand_ == Zustand::Messen) {
            mitte_ = bild_->ausschnitt().center();
        }
        zeigeRahmen();
    };
}

void Messplatz::setzeLupeAmZeiger(bool amZeiger) {
    lupeAmZeiger_ = amZeiger;
    lupe_->setVisible(!amZeiger);
    zeigerlupe_->hide(); // until the pointer moves over the picture
}

void Messplatz::setzeLupenbild(const QImage& bild, int zoom) {
    for (Lupe* lupe : {lupe_, zeigerlupe_}) {
        lupe->setBild(bild, zoom);
    }
}

void Messplatz::zeigeInLupe(QPointF ort) {
    for (Lupe* lupe : {lupe_, zeigerlupe_}) {
        lupe->setMitte(ort);
    }
    if (!lupeAmZeiger_ || zustand_ != Zustand::Messen) {
        return;
    }
    // Beside the place, on the side where there is room: never over what is being looked at.
    constexpr int Abstand = 28;
    const QRect feld = bild_->viewport()->geometry();
    const QPoint hier = bild_->zuFenster(ort).toPoint() + feld.topLeft();
    const auto neben = [](int stelle, int länge, int ende) {
        return stelle + Abstand + länge <= ende ? stelle + Abstand : stelle - Abstand - länge;
    };
    zeigerlupe_->move(neben(hier.x(), zeigerlupe_->width(), feld.right()),
                      neben(hier.y(), zeigerlupe_->height(), feld.bottom()));
    zeigerlupe_->setVisible(bild_->zeigerHier());
}

bool Messplatz::eventFilter(QObject* watched, QEvent* event) {
    if (watched == bild_->viewport() && event->type() == QEvent::Leave) {
        zeigerlupe_->hide();
    }
    return QWidget::eventFilter(watched, event);
}

void Messplatz::beschrifte() {
    aufforderung_->setText(texte_(Text::HinweisBildLaden));
    bef_BildLaden_->setText(texte_(Text::KnopfBildLaden));
    übersicht_->setAccessibleName(texte_(Meldung::NameÜbersicht));
    bild_->setAccessibleName(texte_(Meldung::NameFlügelbild));
    for (Lupe* lupe : {lupe_, zeigerlupe_}) {
        lupe->setAccessibleName(texte_(Meldung::Lupe));
    }
}

QString Messplatz::bilddatei() const {
    return datei_ ? datei_->pfad() : QString();
}

QSize Messplatz::bildgröße() const {
    return datei_ ? datei_->größe() : QSize();
}

void Messplatz::hinweis(const Hinweis& hinweis) {
    if (ZeigeHinweis) {
        ZeigeHinweis(hinweis);
    }
}

std::optional<int> Messplatz::gemessenerAn(QPointF ort) const {
    std::optional<int> nummer = flügelAn(reihe_, bilddatei(), ort, messung_.bild());
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
        hinweis({Meldung::FlügelZumKorrigieren, {dreistellig(*nummer)}});
    }
    return true;
}

Flügelmessung Messplatz::aktueller() const {
    return {.punkte = messung_.punkte(),
            .messart = messung_.messart(),
            .aufnahme = messung_.aufnahme(),
            .bilddatei = messung_.bilddatei(),
            .bild = messung_.bild()};
}

bool Messplatz::darfÜbernehmen() {
    const std::optional<int> anderer = liegtAufFlügel(reihe_, aktueller(), messung_.nummer());
    return !anderer ||
           dialoge_.frage(
               {.titel = texte_(Meldung::FlügelNummer).arg(dreistellig(messung_.nummer())),
                .text = texte_(Meldung::FlügelSchonGemessenFrage)
                            .arg(dreistellig(*anderer), dreistellig(messung_.nummer())),
                .art = Meldungsart::Frage,
                .ja = texte_(Meldung::TrotzdemÜbernehmen),
                .nein = texte_(Meldung::NichtÜbernehmen)}) == Antwort::Ja;
}

void Messplatz::sagWieÜbernommenWird() {
    const Messart messart = messung_.messart();
    const Messpunkte& punkte = messung_.punkte();
    if (punkte.vollständig(messart) && !punkte.fertig(messart)) {
        hinweis({Meldung::ÜbernehmenPerTaste, {QString::number(letzterPunkt(messart))}});
    }
}

void Messplatz::wechsle(Zustand zustand) {
    zustand_ = zustand;
    seiten_->setCurrentIndex(static_cast<int>(zustand));
    if (zustandGeändert) {
        zustandGeändert();
    }
}

bool Messplatz::gibPunkteAuf(Meldung frage, Meldung ja) {
    if (!messung_.punkte().begonnen()) {
        return true;
    }
    const Antwort antwort = dialoge_.frage({.titel = texte_(ja),
                                            .text = texte_(frage),
                                            .art = Meldungsart::Frage,
                                            .verwirft = true,
                                            .ja = texte_(ja),
                                            .nein = texte_(Meldung::WeiterMessen)});
    return antwort == Antwort::Ja;
}

bool Messplatz::verlässtFlügel(Meldung frage, Meldung ja) {
    if (!messung_.etwasZuVerlieren()) {
        return true;
    }
    if (!messung_.wiederholt()) {
        return gibPunkteAuf(frage, ja);
    }
    return dialoge_.frage(
               {.titel = texte_(Meldung::WiederholungAufgeben),
                .text =
                    texte_(Meldung::WiederholungAufgebenFrage).arg(dreistellig(messung_.nummer())),
                .art = Meldungsart::Frage,
                .verwirft = true,
                .ja = texte_(Meldung::WiederholungAufgeben),
                .nein = texte_(Meldung::WeiterMessen)}) == Antwort::Ja;
}

bool Messplatz::ladeBild(const QString& pfad) {
    if (!verlässtFlügel(Meldung::AnderesBildFrage, Meldung::AnderesBildLaden)) {
        return false;
    }
    const QString gewählt = zugang_->wähleSeite(pfad);
    zugang_->suche().vertraue(gewählt);
    if (gewählt.isEmpty() || !öffne(gewählt)) {
        return false;
    }
    mitteDerReihe_.reset();
    nichtZuÖffnen_ = {};
    befehle_.setzeBild(gewählt);
    mitte_ = QRectF(QPointF(), datei_->größe()).center();
    if (einFlügel()) {
        zeigeMessen();
    } else {
        zeigeÜbersicht();
    }
    return true;
}

bool Messplatz::öffne(const QString& pfad, bool ganz) {
    hinweis(HinweisBildWirdGeladen);
    std::optional<Bilddatei> datei = zugang_->öffne(pfad, ganz);
    if (!datei) {
        zeigeStandhinweis();
        return false;
    }
    nimm(std::move(*datei));
    return true;
}

void Messplatz::nimm(Bilddatei datei) {
    datei_ = std::move(datei);
    const QString& pfad = datei_->pfad();
    const QString name = Bildort::aus(pfad).datei;
    bildauflösung_ = tarvel::bildauflösung(name);
    befehle_.zeigtBild({.größe = datei_->größe(), .marke = inhaltsmarke(name)});
    wechseltBild_ = true; // what is measured comes to it only afterwards
    for (const GesuchtesBild& bild : gesuchteBilder(reihe_)) {
        if (zugang_->suche().gehörtZu(bild, pfad, messung_.bild())) {
            // measured where the picture was before
            befehle_.verlegeBild(bild, pfad, datei_->größe(), true);
        }
    }
    wechseltBild_ = false;
    // The pixels of the former picture go before those of the new one come.
    bild_->setBild({});
    setzeLupenbild({}, 1);
    übersicht_->setBild(datei_->übersicht(), datei_->größe());
}

/// The hint that fits what is shown, after something else had the hint line.
void Messplatz::zeigeStandhinweis() {
    switch (zustand_) {
    case Zustand::OhneBild:
        hinweis(HinweisBildLaden);
        break;
    case Zustand::Übersicht:
        hinweis(HinweisRechteck);
        break;
    case Zustand::Messen:
        hinweis(messung_.standhinweis());
        break;
    }
}

bool Messplatz::einFlügel() const {
    // A picture as high as one wing is seen well enough without an overview, and scrolled
    // sideways if need be.
    constexpr double Spielraum = 1.5;
    const QSizeF gezoomt = QSizeF(datei_->größe()) * messung_.aufnahme().Zoomfaktor;
    return gezoomt.width() <= Spielraum * seiten_->width() && gezoomt.height() <= seiten_->height();
}

void Messplatz::zeigeÜbersicht() {
    if (!datei_) {
        hinweis(HinweisBildLaden);
        return;
    }
    // The next wing that is clicked there is another one.
    if (messung_.wiederholt() &&
        !verlässtFlügel(Meldung::WiederholungAufgebenFrage, Meldung::WiederholungAufgeben)) {
        return;
    }
    befehle_.gibWiederholungAuf();
    if (!datei_) {
        return; // the picture of the series is gone
    }
    wechsle(Zustand::Übersicht);
    zeigeRahmen();
    übersicht_->setMitte(mitte_);
    übersicht_->setFocus();
    hinweis(reihe_.leer() ? Hinweis(HinweisRechteck)
                          : Hinweis(HinweisRechteckAufFlügel, messung_.nummer()));
}

bool Messplatz::zeigeMessen() {
    if (!datei_) {
        hinweis(HinweisBildLaden);
        return false;
    }
    const QPointF mitte = mitte_;
    if (bild_->bild().isNull()) {
        hinweis(HinweisBildWirdGeladen);
        const QImage* pixel = zugang_->pixel(*datei_);
        if (pixel == nullptr) {
            // Never a measuring view without a picture: points set there would mean nothing.
            wechsle(Zustand::Übersicht);
            zeigeStandhinweis();
            return false;
        }
        bild_->setBild(*pixel);
    }
    bild_->setZoomfaktor(messung_.aufnahme().Zoomfaktor);
    setzeLupenbild(bild_->bild(), messung_.aufnahme().Zoomfaktor);
    wechsle(Zustand::Messen);
    zeigePunkte();
    zeigeErledigte();
    bild_->zeige(mitte);
    mitte_ = mitte;
    zeigeInLupe(mitte * messung_.aufnahme().Zoomfaktor);
    bild_->sucheZeiger();
    nimmTastatur();
    hinweis(messung_.wiederholt() ? HinweisErneutSpeichern : HinweisPunkteSetzen);
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
    return taste(ereignis);
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
    if (zoom == messung_.aufnahme().Zoomfaktor) {
        return false;
    }
    if (messung_.punkte().begonnen()) {
        const Antwort antwort = dialoge_.frage(
            {.titel = texte_(Text::MenüZoomBeiMessen),
             .text = texte_(Text::ZoomfaktorFrage) + u'\n' + texte_(Text::ZoomfaktorWarnung),
             .art = Meldungsart::Frage,
             .verwirft = true});
        if (antwort != Antwort::Ja) {
            return false;
        }
    }
    befehle_.setzeZoom(zoom);
    if (zustand_ == Zustand::Messen) {
        bild_->zeige(fest, imFenster);
        hinweis(HinweisPunkteSetzen);
    }
    return true;
}

bool Messplatz::wünscheMessart(Messart messart) {
    if (messart == messung_.messart() ||
        !gibPunkteAuf(Meldung::BetriebsartFrage, Meldung::BetriebsartWechseln)) {
        return false;
    }
    befehle_.setzeMessart(messart);
    return true;
}

bool Messplatz::wiederhole(int nummer) {
    const Flügelmessung* messung = reihe_.messung(nummer);
    if (messung == nullptr) {
        dialoge_.meldung(texte_(Text::MessungWiederholen), texte_(Meldung::NichtsZuWiederholen),
                         Meldungsart::Hinweis);
        return false;
    }
    if (!verlässtFlügel(Meldung::WiederholenFrage, Meldung::Wiederholen)) {
        return false;
    }
    if (!liegtAuf(*messung, bilddatei(), messung_.bild())) {
        const GesuchtesBild gesucht = gesuchtesBild(reihe_, *messung);
        const QString pfad = zugang_->finde(gesucht);
        if (pfad.isEmpty()) {
            return false;
        }
        // A picture of that name which is shown here is another one.
        befehle_.verlegeBild(gesucht, pfad, zugang_->suche().größe(pfad),
                             gesucht.pfad != bilddatei());
        if (pfad != bilddatei() && !öffne(pfad, true)) {
            return false;
        }
        messung = reihe_.messung(nummer);
    }
    const QPointF mitte = flügelmitte(*messung).value_or(mitte_);
    if (!mitteDerReihe_) {
        mitteDerReihe_ = mitte_;
    }
    if (!befehle_.wiederhole(nummer)) {
        return false;
    }
    mitte_ = mitte;
    if (!zeigeMessen()) {
        befehle_.gibWiederholungAuf(); // nothing may be replaced out of sight
        return false;
    }
    if (beiWahl) {
        beiWahl({nummer}); // keys that mean chosen wings mean this one
    }
    return true;
}

void Messplatz::folge() {
    folgeBild();
    folgeZoom();
    if (!messung_.wiederholt() && mitteDerReihe_) {
        mitte_ = *std::exchange(mitteDerReihe_, std::nullopt);
    }
    zeigePunkte();
    zeigeErledigte();
    zeigeRahmen();
}

void Messplatz::folgeBild() {
    const QString pfad = messung_.bilddatei();
    const GesuchtesBild gesucht{.pfad = pfad, .kennung = messung_.stand().bild};
    const bool gezeigt = pfad == bilddatei() && verträglich(messung_.stand().bild, messung_.bild());
    if (wechseltBild_ || gezeigt || (!pfad.isEmpty() && gesucht == nichtZuÖffnen_)) {
        return;
    }
    nichtZuÖffnen_ = {};
    if (pfad.isEmpty() || !öffneWieder(pfad)) {
        // By now it may be known to be elsewhere.
        nichtZuÖffnen_ = {.pfad = messung_.bilddatei(), .kennung = messung_.stand().bild};
        datei_.reset();
        bild_->setBild({});
        setzeLupenbild({}, 1);
        wechsle(Zustand::OhneBild);
        return;
    }
    mitte_ = flügelmitte(aktueller()).value_or(QRectF(QPointF(), datei_->größe()).center());
    if (zustand_ != Zustand::Messen) {
        wechsle(Zustand::Übersicht);
    } else {
        zeigeMessen();
    }
}

bool Messplatz::öffneWieder(const QString& pfad) {
    const Bildkennung kennung = messung_.stand().bild;
    const QString datei = Bildort::aus(pfad).datei;
    if (QFileInfo(datei).isFile() &&
        (kennung.marke.isEmpty() || inhaltsmarke(datei) == kennung.marke)) {
        return öffne(pfad);
    }
    const auto& messungen = reihe_.messungen();
    const auto flügel = std::find_if(messungen.begin(), messungen.end(), [&](const auto& m) {
        return m.second.bilddatei == pfad && verträglich(m.second.bild, kennung);
    });
    const GesuchtesBild gesucht = flügel == messungen.end()
                                      ? GesuchtesBild{.pfad = pfad, .kennung = kennung}
                                      : gesuchtesBild(reihe_, flügel->second);
    const QString jetzt = zugang_->finde(gesucht);
    if (jetzt.isEmpty()) {
        return false;
    }
    befehle_.verlegeBild(gesucht, jetzt, zugang_->suche().größe(jetzt), true);
    return öffne(jetzt);
}

bool Messplatz::bringeZurück(const QString& pfad) {
    if (datei_ || !messung_.bilddatei().isEmpty() || messung_.punkte().begonnen()) {
        return false;
    }
    QStringList orte;
    if (!pfad.isEmpty()) {
        zugang_->suche().vertraue(pfad);
        orte += pfad;
    }
    if (const auto& messungen = reihe_.messungen();
        !messungen.empty() && !messungen.rbegin()->second.bilddatei.isEmpty()) {
        const GesuchtesBild gesucht = gesuchtesBild(reihe_, messungen.rbegin()->second);
        if (const Bildfund fund = zugang_->suche().suche(gesucht);
            fund.art == Bildfund::Art::Gefunden) {
            befehle_.verlegeBild(gesucht, fund.pfad, zugang_->suche().größe(fund.pfad), true);
            orte += fund.pfad;
        }
    }
    for (const QString& ort : std::as_const(orte)) {
        std::optional<Bilddatei> datei = zugang_->öffneStill(ort);
        if (!datei) {
            continue;
        }
        nimm(std::move(*datei));
        mitte_ = QRectF(QPointF(), datei_->größe()).center();
        befehle_.setzeBild(ort);
        wechsle(Zustand::Übersicht);
        zeigeRahmen();
        übersicht_->setMitte(mitte_);
        if (isVisible()) {
            zeigeStandhinweis();
        }
        return true;
    }
    return false;
}

void Messplatz::folgeZoom() {
    const int zoom = messung_.aufnahme().Zoomfaktor;
    if (bild_->Zoomfaktor() == zoom) {
        return;
    }
    const QPointF mitte = mitte_;
    bild_->setZoomfaktor(zoom);
    setzeLupenbild(bild_->bild(), zoom);
    if (zustand_ == Zustand::Messen) {
        bild_->zeige(mitte);
    }
    mitte_ = mitte;
}

void Messplatz::zeigeFlügel() {
    if (zustand_ == Zustand::Messen || !messung_.punkte().begonnen()) {
        return;
    }
    mitte_ = flügelmitte(aktueller()).value_or(mitte_);
    zeigeMessen();
}

void Messplatz::nächsterFlügel() {
    if (datei_ && !einFlügel()) {
        zeigeÜbersicht();
    } else {
        hinweis(HinweisPunkteSetzen);
    }
}

void Messplatz::zeigeRahmen() {
    const int zoom = messung_.aufnahme().Zoomfaktor;
    übersicht_->setRahmen(QSizeF(seiten_->size()) / zoom);
}

void Messplatz::zeigePunkte() {
    const Messpunkte& punkte = messung_.punkte();
    std::vector<Marke> marken;
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        if (punkte.gemessen(i)) {
            marken.push_back({.position = QPointF(punkte.PunktX[i], punkte.PunktY[i]),
                              .text = QString::number(i),
                              .gewählt = punkte.GewählterPunkt == i,
                              .aktiv = punkte.AktuellerPunkt == i});
        }
    }
    for (Lupe* lupe : {lupe_, zeigerlupe_}) {
        lupe->setMarken(marken);
    }
    bild_->setMarken(std::move(marken));
}

void Messplatz::zeigeErledigte() {
    std::vector<Marke> imScan;
    std::vector<Marke> imBild;
    const int zoom = messung_.aufnahme().Zoomfaktor;
    for (const auto& [nummer, messung] : reihe_.messungen()) {
        if (!liegtAuf(messung, bilddatei(), messung_.bild()) ||
            (messung_.wiederholt() && nummer == messung_.nummer())) {
            continue;
        }
        const QPointF mitte = flügelmitte(messung).value_or(QPointF());
        const QString text = dreistellig(nummer);
        const bool aus = reihe_.ausgelassen(nummer);
        imScan.push_back({.position = mitte,
                          .text = text,
                          .ausgelassen = aus,
                          .zweifel = zweifelsgrad ? zweifelsgrad(nummer) : Zweifelsgrad::Keiner});
        imBild.push_back({.position = mitte * zoom, .text = text, .ausgelassen = aus});
        for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
            if (messung.punkte.gemessen(i)) {
                imBild.push_back(
                    {.position = QPointF(messung.punkte.PunktX[i], messung.punkte.PunktY[i]) *
                                 zoom / messung.aufnahme.Zoomfaktor,
                     .ausgelassen = aus});
            }
        }
    }
    übersicht_->setErledigte(std::move(imScan));
    bild_->setErledigte(std::move(imBild));
}

int Messplatz::nächsterGesetzter(float x, float y) const {
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

void Messplatz::drück(const Zeigerereignis& e) {
    if (bild_->bild().isNull()) {
        return;
    }
    if (e.taste == Qt::LeftButton && e.umschalt.testFlag(Qt::ControlModifier)) {
        gezogen_ = nächsterGesetzter(e.x, e.y);
        zugBegonnen_ = false;
        befehle_.opt_Fein_Click(gezogen_);
        return;
    }
    if (e.taste == Qt::RightButton && messung_.punkte().fertig(messung_.messart()) &&
        !darfÜbernehmen()) {
        return;
    }
    befehle_.Bild_MouseDown(maustaste(e.taste), umschaltung::von(e.umschalt), e.x, e.y);
    sagWieÜbernommenWird();
}

void Messplatz::beweg(const Zeigerereignis& e) {
    befehle_.Bild_MouseMove(Maustaste::Links, umschaltung::von(e.umschalt), e.x, e.y);
    if (gezogen_ != 0 && e.tasten.testFlag(Qt::LeftButton)) {
        befehle_.zieh(gezogen_, e.x, e.y, !zugBegonnen_);
        zugBegonnen_ = true;
    }
    zeigeInLupe(QPointF(e.x, e.y));
}

bool Messplatz::taste(const QKeyEvent& e) {
    if (e.key() == Qt::Key_Escape) {
        zeigeÜbersicht();
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
    if (code >= taste::Eins && umschalt == umschaltung::Keine && !bild_->zeigerHier()) {
        hinweis(HinweisPunkteSetzen); // the key means the place of the pointer, and there is none
        return true;
    }
    const Messpunkte vorher = messung_.punkte();
    if (code == taste::Eingabe && umschalt == umschaltung::Keine &&
        (vorher.vollständig(messung_.messart()) || vorher.fertig(messung_.messart())) &&
        !darfÜbernehmen()) {
        return true;
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
        bild_->macheSichtbar(ort);
        zeigeInLupe(ort);
    }
    return true;
}

} // namespace tarvel
