#include "app/bildgang.h"

#include "app/fundgang.h"
#include "measure/aufloesungsfenster.h"
#include "measure/bildzugang.h"
#include "measure/messleiste.h"
#include "measure/messplatz.h"

#include <QEvent>
#include <QTimer>

#include <utility>

namespace tarvel {

Bildgang::Bildgang(const Umgebung& umgebung, Arbeitsplatz& arbeitsplatz,
                   const Fensterfläche& fläche, Hinweisgeber& hinweise, QWidget& fenster)
    : umgebung_(umgebung)
    , arbeitsplatz_(arbeitsplatz)
    , fläche_(fläche)
    , hinweise_(hinweise)
    , fenster_(fenster) {
    fenster_.installEventFilter(this);
}

bool Bildgang::lade(const QString& pfad) {
    const int vorher = arbeitsplatz_.messung().aufnahme().dpi;
    if (!fläche_.messplatz->ladeBild(pfad)) {
        return false;
    }
    const int dpi = arbeitsplatz_.messung().aufnahme().dpi;
    const std::optional<int> bild = fläche_.messplatz->bild().auflösung();
    if (bild && *bild != dpi) {
        hinweise_.zeige(
            {Meldung::BildauflösungHinweis, {QString::number(*bild), QString::number(dpi)}});
    } else if (dpi != vorher) {
        hinweise_.zeige({Meldung::BildMitAuflösung, {QString::number(dpi)}});
    } else {
        hinweise_.warneVorGeringerAuflösung();
    }
    return true;
}

void Bildgang::wähleAuflösung(int dpi) {
    arbeitsplatz_.setzeAuflösung(dpi);
    hinweise_.sageAuflösung();
    fläche_.messplatz->nimmTastatur();
}

void Bildgang::berichtigeAuflösung() {
    const Messung& messung = arbeitsplatz_.messung();
    Auflösungsfenster fenster(umgebung_.texte, arbeitsplatz_.reihe(), umgebung_.format,
                              messung.bilddatei(), fläche_.messplatz->bild().auflösung(),
                              &fenster_);
    if (fenster.exec() == QDialog::Accepted) {
        arbeitsplatz_.setzeAuflösung(fenster.nummern(), fenster.dpi());
    }
}

void Bildgang::folge(const Änderung& änderung) {
    if (änderung.Ablage || änderung.Untersuchung) {
        fläche_.messplatz->zugang().suche().setzeErgebnisdatei(
            arbeitsplatz_.ablage().DatenbankPfad());
    }
    if (änderung.Untersuchung && gezeichnet_ && !std::exchange(fällig_, true)) {
        QTimer::singleShot(0, this, [this] { bringeZurück(); });
    }
}

void Bildgang::zeige() {
    fläche_.messleiste->zeigeAuflösung(
        arbeitsplatz_.messung().aufnahme().dpi, fläche_.messplatz->bild().auflösung(),
        passendeAuflösung(arbeitsplatz_, fläche_.messplatz->funde()));
}

void Bildgang::merke() {
    const QString& bild = arbeitsplatz_.messung().bilddatei();
    if (bild != umgebung_.einstellungen.text(Einstellung::LetztesBild)) {
        umgebung_.einstellungen.schreibe(Einstellung::LetztesBild, bild);
    }
}

bool Bildgang::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &fenster_ && event->type() == QEvent::Paint &&
        !std::exchange(gezeichnet_, true)) {
        // Not before the window is seen: a picture takes longer than all the rest of the start.
        QTimer::singleShot(0, this, [this] { bringeZurück(); });
    }
    return QObject::eventFilter(watched, event);
}

void Bildgang::bringeZurück() {
    fällig_ = false;
    const bool start = std::exchange(beimStart_, false);
    fläche_.messplatz->bringeZurück(start ? umgebung_.einstellungen.text(Einstellung::LetztesBild)
                                          : QString());
}

} // namespace tarvel
