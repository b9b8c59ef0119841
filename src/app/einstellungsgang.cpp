#include "app/einstellungsgang.h"

#include "app/optionen.h"
#include "measure/messleiste.h"
#include "measure/messplatz.h"

#include <QGuiApplication>

#include <vector>

namespace tarvel {

Einstellungsgang::Einstellungsgang(const Umgebung& umgebung, Benutzerspeicher& speicher,
                                   Arbeitsplatz& arbeitsplatz, Fensterfläche& fläche,
                                   Hinweisgeber& hinweise, Befehlsleiste& befehle)
    : umgebung_(umgebung)
    , speicher_(speicher)
    , arbeitsplatz_(arbeitsplatz)
    , fläche_(fläche)
    , hinweise_(hinweise)
    , befehle_(befehle) {}

void Einstellungsgang::richteEin() {
    const Einstellungen& e = umgebung_.einstellungen;
    arbeitsplatz_.richteEin();
    befehle_.zeigeWerkzeugtexte(e.schalter(Einstellung::FensterWerkzeugtexte));
    fläche_.messplatz->lupen().setzeAmZeiger(e.schalter(Einstellung::FensterLupeAmZeiger));
    fläche_.messleiste->setzeZiel(e.zahl(Einstellung::Zielzahl));
    übernimmVorschlagswahl();
}

void Einstellungsgang::übernimmVorschlagswahl() {
    const Einstellungen& e = umgebung_.einstellungen;
    fläche_.messplatz->setzeVorschlagswahl({.jeFlügel = e.schalter(Einstellung::VorschlagJeFlügel),
                                            .einrasten = e.schalter(Einstellung::PunkteEinrasten)});
}

void Einstellungsgang::optionen(QWidget* fenster) {
    const Aufnahme vorher = aufnahmeBeimStart(umgebung_.einstellungen);
    Optionen dialog(umgebung_, speicher_, arbeitsplatz_.untersuchung().angaben().Rasse + 1, fenster,
                    arbeitsplatz_.ablage().dokumente());
    dialog.exec();
    übernimmVorschlagswahl();
    // The standard follows the file, whether the dialog was confirmed or cancelled; what is being
    // measured changes only where the user changed it. For a missing key the dialog shows, and
    // writes, another default than the one that is being measured with.
    const bool andereAuflösung = dialog.geändert(Einstellung::ScannOptionen);
    arbeitsplatz_.übernimmEinstellungen(andereAuflösung);
    const Arbeitseinstellungen e = arbeitsplatz_.einstellungen();
    if (andereAuflösung) {
        arbeitsplatz_.setzeAuflösung(e.auflösung);
    }
    const bool andererZoom = dialog.geändert(Einstellung::DefaultZoomOptionen);
    if (andererZoom) {
        fläche_.messplatz->wünscheZoom(e.Zoomfaktor);
    }
    if (dialog.geändert(Einstellung::Betriebsart)) {
        fläche_.messplatz->wünscheMessart(e.messart);
    }
    const Aufnahme neue = aufnahmeBeimStart(umgebung_.einstellungen);
    std::vector<Hinweis> sätze;
    if (const auto gering = hinweise_.geringeAuflösung(andereAuflösung)) {
        sätze.push_back(*gering);
    }
    if (const auto gemessene = hinweise_.auflösungshinweis(); andereAuflösung && gemessene) {
        sätze.push_back(*gemessene);
    }
    if (!andereAuflösung && neue.dpi != vorher.dpi) {
        sätze.emplace_back(
            Meldung::AuflösungBeimNächstenStart,
            std::vector<Hinweis::Argument>{QString::number(arbeitsplatz_.messung().aufnahme().dpi),
                                           QString::number(neue.dpi)});
    }
    if (!andererZoom && neue.Zoomfaktor != vorher.Zoomfaktor) {
        sätze.emplace_back(Meldung::ZoomBeimNächstenStart,
                           std::vector<Hinweis::Argument>{QString::number(vorher.Zoomfaktor),
                                                          QString::number(neue.Zoomfaktor)});
    }
    hinweise_.zeigeSätze(sätze);
}

void Einstellungsgang::wähleSprache(int index) {
    umgebung_.einstellungen.schreibe(Einstellung::Sprache, index);
    umgebung_.texte.SpracheEinstellen(index);
    // A large results file takes some seconds.
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    arbeitsplatz_.SpracheDB();
    QGuiApplication::restoreOverrideCursor();
}

void Einstellungsgang::schalteLupe() {
    Lupenpaar& lupen = fläche_.messplatz->lupen();
    lupen.setzeAmZeiger(!lupen.amZeiger());
    umgebung_.einstellungen.schreibe(Einstellung::FensterLupeAmZeiger, lupen.amZeiger() ? 1 : 0);
}

void Einstellungsgang::schalteWerkzeugtexte() {
    const bool zeigen = !befehle_.mitWerkzeugtexten();
    befehle_.zeigeWerkzeugtexte(zeigen);
    umgebung_.einstellungen.schreibe(Einstellung::FensterWerkzeugtexte, zeigen ? 1 : 0);
}

} // namespace tarvel
