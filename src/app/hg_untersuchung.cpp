// How an examination comes into the main window and leaves it.

#include "app/hg.h"

#include "app/hinweiszeile.h"
#include "evaluation/rassen.h"
#include "measure/aufloesung.h"
#include "measure/messplatz.h"
#include "results/db.h"
#include "results/kolonieformular.h"

#include <QDir>
#include <QFileInfo>
#include <QStackedWidget>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr int HinweisBildLaden = 1;

} // namespace

void HG::beginne() {
    if (!setzeSitzungFort()) {
        zeigeLetzte();
    }
    sitzungLäuft_ = true;
    merkeSitzung();
    warneVorSchreibfehler();
}

bool HG::setzeSitzungFort() {
    const Texte& t = umgebung_.texte;
    const std::optional<Sitzungsstand> stand = sitzung_.lies();
    if (!sitzung_.beiseite().isEmpty()) {
        umgebung_.dialoge.meldung(
            t(Text::Untersuchung),
            t(Meldung::SitzungNichtLesbar).arg(QDir::toNativeSeparators(sitzung_.beiseite())),
            Meldungsart::Ausruf);
    }
    if (!stand) {
        return false;
    }
    if (umgebung_.dialoge.frage(
            {.titel = t(Text::Untersuchung),
             .text = t(Meldung::SitzungFrage)
                         .arg(stand->angaben.UNr, QString::number(stand->reihe.nummern().size())),
             .art = Meldungsart::Frage,
             .neinVerwirft = true,
             .ja = t(Meldung::SitzungWeiter),
             .nein = t(Meldung::Verwerfen)}) != Antwort::Ja) {
        sitzung_.lösche();
        return false;
    }
    stelleHer(untersuchung_, *stand);
    ablage_.nimmAlsGespeichert(
        stand->DatenbankPfad == ablage_.DatenbankPfad() ? stand->gespeicherteNummer : QString());
    zeigeUntersuchung();
    if (QFileInfo::exists(stand->flügel.bilddatei) && ladeBild(stand->flügel.bilddatei) &&
        stand->flügel.punkte.begonnen()) {
        messplatz_->zeigeMessen();
    }
    messung_.stelleHer(stand->flügel, stand->wiederholt);
    if (verteiler_.kennt(stand->ansicht)) {
        verteiler_.ausführen(stand->ansicht);
    }
    ZeigeEigenenHinweis(Meldung::SitzungWiederDa);
    return true;
}

void HG::merkeSitzung() {
    if (!sitzungLäuft_) {
        return;
    }
    Sitzungsstand stand = sitzungsstand(untersuchung_);
    stand.DatenbankPfad = ablage_.DatenbankPfad();
    stand.gespeicherteNummer = ablage_.gespeicherteNummer();
    stand.flügel = {.punkte = messung_.punkte(),
                    .messart = messung_.messart(),
                    .aufnahme = messung_.aufnahme(),
                    .bilddatei = messung_.bilddatei()};
    stand.wiederholt = messung_.wiederholt() ? messung_.nummer() : qint16{0};
    const bool amMessplatz = ansichten_->currentWidget() == messplatz_;
    stand.ansicht = (amMessplatz ? befehl::Messen : befehl::Alle).toString();
    if (!sitzung_.merke(stand) && !sitzungsfehlerGemeldet_) {
        sitzungsfehlerGemeldet_ = true;
        ZeigeEigenenHinweis(
            {Meldung::SitzungNichtGesichert, {QDir::toNativeSeparators(umgebung_.ordner)}});
    }
}

void HG::zeigeLetzte() {
    const std::optional<QString> letzte = ablage_.letzteNummer();
    if (letzte && ladeUntersuchung(*letzte)) {
        return;
    }
    beginneNeue();
    messmodus(HinweisBildLaden);
}

void HG::beginneNeue() {
    ablage_.NeueUntersuchung();
    messung_.setzeMessart(eigeneMessart());
    // A loaded examination brings the resolution it was measured with; a new one has the user's.
    messung_.setzeAuflösung(
        scannerauflösung(umgebung_.einstellungen.zahl(Einstellung::ScannMessung)));
    zeigeUntersuchung();
}

Messart HG::eigeneMessart() const {
    return static_cast<Messart>(
        std::clamp<int>(umgebung_.einstellungen.zahl(Einstellung::Betriebsart), 0, 2));
}

bool HG::verlasseUntersuchung() {
    const Texte& t = umgebung_.texte;
    if (messung_.punkte().begonnen() &&
        umgebung_.dialoge.frage({.titel = t(Text::Untersuchung),
                                 .text = t(Meldung::PunkteVerwerfenFrage),
                                 .art = Meldungsart::Ausruf,
                                 .verwirft = true,
                                 .ja = t(Meldung::Verwerfen),
                                 .nein = t(Meldung::WeiterMessen)}) != Antwort::Ja) {
        return false;
    }
    return speichere(Speicheranlass::Verlassen);
}

Ablagestand HG::stand() const {
    return {.EntsprichtRasse = auswertung_.beurteilung().EntsprichtRasse,
            .auflösung = messung_.aufnahme().dpi};
}

bool HG::speichere(Speicheranlass anlass) {
    const bool warGeändert = untersuchung_.geändert();
    const bool fertig = ablage_.SpeichernDB(anlass, stand());
    if (warGeändert && !untersuchung_.geändert()) {
        ZeigeEigenenHinweis({Meldung::UntersuchungGespeichert, {untersuchung_.angaben().UNr}});
    }
    zeigeZustand();
    return fertig;
}

bool HG::neueUntersuchung() {
    kolonie_->vervollständige();
    if (!verlasseUntersuchung()) {
        return false;
    }
    beginneNeue();
    if (messplatz_->zustand() == Messplatz::Zustand::OhneBild) {
        messmodus(HinweisBildLaden);
    } else {
        zeigeMessplatz(true);
    }
    return true;
}

void HG::nächstesVolk() {
    kolonie_->vervollständige();
    const Kolonieangaben vorige = untersuchung_.angaben();
    if (!neueUntersuchung()) {
        return;
    }
    untersuchung_.setzeAngaben(fürNächstesVolk(untersuchung_.angaben(), vorige));
    untersuchung_.alsUnverändertMerken(); // nothing was typed or measured yet
    kolonie_->zeige(untersuchung_.angaben());
    zeigeZustand();
}

void HG::öffnen() {
    kolonie_->vervollständige();
    if (!verlasseUntersuchung()) {
        return;
    }
    const Hinweis vorher = lab_H_->hinweis();
    ZeigeEigenenHinweis(Text::HinweisUntersuchungÖffnen);
    DB db({.texte = umgebung_.texte,
           .dialoge = umgebung_.dialoge,
           .DatenbankPfad = ablage_.DatenbankPfad(),
           .dokumente = ablage_.dokumente(),
           .DatenbankWählen = [this](const QString& pfad) { return ablage_.DatenbankWählen(pfad); },
           .LadenDB = [this](const QString& nummer) { return ladeUntersuchung(nummer); }},
          this);
    if (db.exec() != QDialog::Accepted) {
        ZeigeEigenenHinweis(vorher);
        zeigeStatuszeile();
        if (const auto nummer = ablage_.inDateiGeändert(); nummer && !untersuchung_.geändert()) {
            ladeUntersuchung(*nummer); // edited in the browser
        }
    }
}

bool HG::ladeUntersuchung(const QString& nummer) {
    const std::optional<GeleseneUntersuchung> gelesen = ablage_.LadenDB(nummer);
    if (!gelesen) {
        return false;
    }
    if (gelesen->auflösung) {
        messung_.setzeAuflösung(*gelesen->auflösung);
    }
    zeigeUntersuchung();
    verteiler_.ausführen(befehl::Kurven);
    verteiler_.ausführen(befehl::Alle);
    const Texte& t = umgebung_.texte;
    if (const std::optional<bool> urteil = auswertung_.beurteilung().urteil();
        urteil && *urteil != gelesen->EntsprichtRasse) {
        ZeigeEigenenHinweis(
            {Meldung::UrteilAnders, {urteilswort(gelesen->EntsprichtRasse), urteilswort(*urteil)}});
    }
    if (gelesen->rasse) {
        const QStringList rassen = rassenliste(umgebung_.einstellungen);
        ZeigeEigenenHinweis(
            {Meldung::RasseNichtInListe, {*gelesen->rasse, rassen.value(gelesen->angaben.Rasse)}});
    }
    if (!gelesen->nichtGelesen.isEmpty()) {
        umgebung_.dialoge.meldung(
            t(Text::Untersuchung),
            t(Meldung::UntersuchungNichtLesbar).arg(nummer, gelesen->nichtGelesen.join(u", "_s)),
            Meldungsart::Ausruf);
    }
    return true;
}

void HG::zeigeUntersuchung() {
    messung_.NeuerFlügel();
    kolonie_->zeige(untersuchung_.angaben());
    auswertung_.ladeStandard();
    auswertung_.zeigeMerkmale();
    reiheGeändert();
}

} // namespace tarvel
