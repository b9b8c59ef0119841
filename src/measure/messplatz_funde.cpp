#include "measure/bild.h"
#include "measure/messplatz.h"
#include "measure/uebersicht.h"

#include <QKeyEvent>
#include <QStackedWidget>

#include <algorithm>

// Wings that the program found, and their points.

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// As far beside the found place, in pixels at 2400 dpi, a click may be to snap to it.
constexpr double Rastweite = 3.0;
/// Zoomed pixels name their corner.
constexpr QPointF Pixelmitte(0.5, 0.5);
/// So near to the edge of the view a mark is not seen whole.
constexpr double Sichtrand = 20;

QPointF ort(const Messpunkte& punkte, int nummer) {
    return {punkte.PunktX.at(nummer), punkte.PunktY.at(nummer)};
}

/// The rectangle that holds all places; empty without any.
QRectF feld(const QPolygonF& orte) {
    return orte.boundingRect();
}

bool fasst(QSizeF sicht, QSizeF was) {
    return was.width() <= sicht.width() && was.height() <= sicht.height();
}

} // namespace

void Messplatz::verbindeFunde() {
    funde_.beobachte(*übersicht_);
    funde_.beobachte(*bild_->viewport());
    bild_->viewport()->installEventFilter(this);
    funde_.beiÄnderung([this](bool fertig) {
        if (fertig) {
            zeigeFunde();
            zeigePunkte();
        }
        andereFunde_(fertig);
        if (fertig && zustand_ == Zustand::Messen && isVisible()) {
            nimmVorschlagVonSelbst(messung_.punkte().begonnen() ? std::nullopt : funde_.an(mitte_));
        }
    });
    eingabe_.vorÜbernahme([this] { return sindVorschlägeGesehen(); });
    eingabe_.beiKlick([this](int nummer, QPointF imBild) { return eingerastet(nummer, imBild); });
}

bool Messplatz::eventFilter(QObject* watched, QEvent* event) {
    if (watched == bild_->viewport() && event->type() == QEvent::Paint) {
        merkeGesehene();
    }
    return QWidget::eventFilter(watched, event);
}

void Messplatz::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && funde_.stand() == Flügelfunde::Stand::Sucht) {
        funde_.halte();
        hinweis_(Meldung::FlügelsucheAngehalten);
        return;
    }
    QWidget::keyPressEvent(event);
}

void Messplatz::zeigeFunde() {
    const std::vector<Fundrahmen> rahmen = funde_.rahmen();
    übersicht_->setzeFunde(rahmen);
    bild_->setzeFunde(rahmen);
}

QString Messplatz::fundtipp(QPointF imBild) const {
    const std::optional<std::size_t> fund = funde_.an(imBild);
    if (!fund) {
        return {};
    }
    QStringList zeilen;
    if (funde_.nummern()[*fund] > 0) {
        zeilen << texte_(Meldung::TippGefundenerFlügel).arg(dreistellig(funde_.nummern()[*fund]));
    }
    if (funde_.alle()[*fund].stand == Flügelfund::Stand::Zweifelhaft) {
        zeilen << texte_(Meldung::TippZweifelhafterFund);
    }
    return zeilen.join(u'\n');
}

bool Messplatz::zeigeFund(std::size_t fund) {
    const int zoom = messung_.aufnahme().Zoomfaktor;
    const Flügelfund& flügel = funde_.alle()[fund];
    const auto& punkte = flügel.vorschlag.punkte;
    const QRectF rahmen = flügel.rahmen();
    // The points, where there is not room for all of the wing.
    mitte_ = fasst(QSizeF(seiten_->size()) / zoom, rahmen.size())
                 ? rahmen.center()
                 : feld(QPolygonF(QList<QPointF>(punkte.begin(), punkte.end()))).center();
    if (!zeigeMessen()) {
        return false;
    }
    nimmVorschlagVonSelbst(fund);
    return true;
}

void Messplatz::geheZuFund(int richtung) {
    if (offen_.leer() || !verlässtWiederholung()) {
        return;
    }
    befehle_.gibWiederholungAuf();
    std::optional<std::size_t> fund;
    if (zustand_ == Zustand::Messen && funde_.an(mitte_)) {
        fund = funde_.nächster(mitte_, richtung);
    } else if (zustand_ == Zustand::Messen && !einFlügel()) {
        fund = funde_.nächsterBei(mitte_);
    } else if (const std::vector<Flügelfund>& alle = funde_.alle(); !alle.empty()) {
        // Where all of them are seen it begins at either end.
        fund = funde_.nächster(richtung > 0 ? alle.back().mitte : alle.front().mitte, richtung);
    }
    if (fund) {
        zeigeFund(*fund);
    }
}

std::optional<std::size_t> Messplatz::vorgeschlagener() const {
    const Messpunkte& punkte = messung_.punkte();
    return punkte.vorgeschlagen() && !punkte.eigene() && !messung_.wiederholt()
               ? funde_.nächsterBei(punktfeld(punkte).center() / messung_.aufnahme().Zoomfaktor)
               : std::nullopt;
}

void Messplatz::schlageVor() {
    if (funde_.stehtAus()) {
        hinweis_(Meldung::FlügelNochGesucht);
        return;
    }
    const bool hier = zustand_ == Zustand::Messen;
    std::optional<std::size_t> fund = messung_.wiederholt() ? funde_.gemessener(messung_.nummer())
                                      : hier                ? funde_.nächsterBei(mitte_)
                                             : funde_.nächsterBei(übersicht_->mitte());
    if (fund && hier && !funde_.alle()[*fund].rahmen().intersects(bild_->ausschnitt())) {
        fund.reset();
    }
    if (!fund) {
        hinweis_(funde_.stand() != Flügelfunde::Stand::Fertig
                     ? Hinweis(Meldung::FlügelsucheAngehalten)
                 : funde_.alle().empty()
                     ? Hinweis(Meldung::FundKeiner, {QString::number(messung_.aufnahme().dpi)})
                     : Hinweis(Meldung::KeinFlügelHier));
        return;
    }
    if (hier || zeigeFund(*fund)) {
        nimmVorschlag(*fund);
    }
}

void Messplatz::nimmVorschlagVonSelbst(std::optional<std::size_t> fund) {
    if (fund && vorschlagswahl_.jeFlügel && !messung_.wiederholt() && !messung_.punkte().eigene()) {
        nimmVorschlag(*fund);
    }
}

void Messplatz::nimmVorschlag(std::size_t fund) {
    const bool ersetzt = messung_.punkte().eigene();
    const Messpunkte punkte = funde_.vorschlag(fund);
    if (punkte == messung_.punkte()) {
        return;
    }
    std::vector<Hinweis> sätze = vorschlagshinweise_(funde_.alle()[fund]);
    befehle_.schlageVor(punkte);
    const QRectF gesetzte = punktfeld(punkte);
    const QRectF sicht(bild_->zuBild({0, 0}), QSizeF(bild_->viewport()->size()));
    if (fasst(sicht.size(), gesetzte.size())) {
        if (!sicht.adjusted(Sichtrand, Sichtrand, -Sichtrand, -Sichtrand).contains(gesetzte)) {
            bild_->zeige(gesetzte.center() / bild_->Zoomfaktor());
        }
    } else {
        bild_->macheSichtbar(ort(punkte, punkte.GewählterPunkt));
    }
    lupen_.zeige(ort(punkte, punkte.GewählterPunkt));
    if (ersetzt) {
        sätze.emplace_back(Meldung::VorschlagErsetztPunkte);
    }
    sätze.push_back(vorschlagshinweis());
    Hinweis alles = sätze.front();
    alles.weitere.assign(sätze.begin() + 1, sätze.end());
    hinweis_(alles);
}

Hinweis Messplatz::vorschlagshinweis() const {
    QStringList nummern;
    for (const int nummer : fragliche()) {
        nummern << QString::number(nummer);
    }
    if (nummern.isEmpty()) {
        return Meldung::PunkteVorgeschlagen;
    }
    return {Meldung::PunkteVorgeschlagenFraglich, {nummern.join(u", "_s)}};
}

void Messplatz::wähleFraglichen() {
    const std::vector<int> alle = fragliche();
    if (alle.empty() || zustand_ != Zustand::Messen) {
        return;
    }
    const auto danach =
        std::upper_bound(alle.begin(), alle.end(), int{messung_.punkte().GewählterPunkt});
    const int nummer = danach == alle.end() ? alle.front() : *danach;
    befehle_.opt_Fein_Click(nummer);
    bild_->macheSichtbar(ort(messung_.punkte(), nummer));
    lupen_.zeige(ort(messung_.punkte(), nummer));
    nimmTastatur();
}

QPointF Messplatz::eingerastet(int nummer, QPointF imBild) const {
    if (!vorschlagswahl_.einrasten) {
        return imBild;
    }
    const Aufnahme& aufnahme = messung_.aufnahme();
    const double weite = Rastweite * aufnahme.dpi / 2400;
    const std::optional<QPointF> punkt =
        funde_.punktBei(nummer, (imBild + Pixelmitte) / aufnahme.Zoomfaktor, weite);
    return punkt ? *punkt * aufnahme.Zoomfaktor - Pixelmitte : imBild;
}

void Messplatz::merkeGesehene() {
    const QRectF sicht(bild_->zuBild({0, 0}), QSizeF(bild_->viewport()->size()));
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        const QPointF hier = ort(messung_.punkte(), i);
        if (messung_.punkte().gemessen(i) && sicht.contains(hier)) {
            gesehen_.at(i) = hier;
        }
    }
}

bool Messplatz::sindVorschlägeGesehen() {
    const Messpunkte& punkte = messung_.punkte();
    if (!punkte.vorgeschlagen()) {
        return true;
    }
    int ungesehen = 0; // in view is not seen: it has to be painted, too
    for (int i = Messpunkte::Anzahl; i >= 1; --i) {
        if (punkte.gemessen(i) && punkte.Herkunft.at(i) == Punktherkunft::Vorgeschlagen &&
            gesehen_.at(i) != ort(punkte, i)) {
            ungesehen = i;
        }
    }
    const QRectF alle = punktfeld(punkte);
    const QRectF sicht(bild_->zuBild({0, 0}), QSizeF(bild_->viewport()->size()));
    const bool fürAlle = fasst(sicht.size(), alle.size());
    if (ungesehen == 0 && (!fürAlle || sicht.contains(alle))) {
        return true;
    }
    bild_->zeige((fürAlle ? alle.center() : ort(punkte, ungesehen)) / bild_->Zoomfaktor());
    hinweis_(Meldung::VorschlagErstAnsehen);
    return false;
}

} // namespace tarvel
