// How an examination comes into the main window and leaves it.

#include "app/hg.h"

#include "app/hinweiszeile.h"
#include "evaluation/rassen.h"
#include "measure/messplatz.h"
#include "results/db.h"
#include "results/kolonieformular.h"

#include <QFileInfo>
#include <QStackedWidget>

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr int HinweisKeiner = 0;
constexpr int HinweisBildLaden = 1;

} // namespace

void HG::beginne() {
    const std::optional<QString> letzte = ablage_.letzteNummer();
    if (letzte && ladeUntersuchung(*letzte)) {
        return;
    }
    ablage_.NeueUntersuchung();
    zeigeUntersuchung();
    messmodus(HinweisBildLaden);
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

bool HG::speichere(Speicheranlass anlass) {
    const bool warGeändert = untersuchung_.geändert();
    const bool fertig =
        ablage_.SpeichernDB(anlass, {.EntsprichtRasse = auswertung_.beurteilung().EntsprichtRasse,
                                     .auflösung = messung_.aufnahme().dpi});
    if (warGeändert && !untersuchung_.geändert()) {
        ZeigeEigenenHinweis(
            umgebung_.texte(Meldung::UntersuchungGespeichert).arg(untersuchung_.angaben().UNr));
    }
    zeigeZustand();
    return fertig;
}

void HG::neueUntersuchung() {
    kolonie_->vervollständige();
    if (!verlasseUntersuchung()) {
        return;
    }
    ablage_.NeueUntersuchung();
    zeigeUntersuchung();
    if (messplatz_->zustand() == Messplatz::Zustand::OhneBild) {
        messmodus(HinweisBildLaden);
    } else {
        zeigeMessplatz(true);
    }
}

void HG::öffnen() {
    kolonie_->vervollständige();
    if (!verlasseUntersuchung()) {
        return;
    }
    const int vorher = hinweisnummer_;
    ZeigeEigenenHinweis(umgebung_.texte(Text::HinweisUntersuchungÖffnen));
    DB db({.texte = umgebung_.texte,
           .dialoge = umgebung_.dialoge,
           .DatenbankPfad = ablage_.DatenbankPfad(),
           .dokumente = ablage_.dokumente(),
           .DatenbankWählen = [this](const QString& pfad) { return ablage_.DatenbankWählen(pfad); },
           .LadenDB = [this](const QString& nummer) { return ladeUntersuchung(nummer); }},
          this);
    if (db.exec() != QDialog::Accepted) {
        ZeigeHinweis(std::max(vorher, HinweisKeiner));
        zeigeStatuszeile();
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
    if (gelesen->rasse) {
        const QStringList rassen = rassenliste(umgebung_.einstellungen);
        ZeigeEigenenHinweis(t(Meldung::RasseNichtInListe)
                                .arg(*gelesen->rasse, rassen.value(gelesen->angaben.Rasse)));
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

bool HG::öffneDatei(const QString& pfad) {
    if (QFileInfo(pfad).suffix().compare(u"tdb"_s, Qt::CaseInsensitive) != 0) {
        return ladeBild(pfad);
    }
    kolonie_->vervollständige();
    if (!verlasseUntersuchung() || !ablage_.DatenbankWählen(pfad)) {
        return false;
    }
    beginne();
    return true;
}

} // namespace tarvel
