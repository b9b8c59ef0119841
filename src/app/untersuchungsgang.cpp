#include "app/untersuchungsgang.h"

#include "app/protokollserie.h"
#include "collection/zuchtschau.h"
#include "evaluation/rassen.h"
#include "results/db.h"

#include <QApplication>
#include <QDir>

#include <algorithm>
#include <chrono>

namespace tarvel {

using namespace Qt::StringLiterals;

Untersuchungsgang::Untersuchungsgang(const Umgebung& umgebung, Arbeitsplatz& arbeitsplatz,
                                     const Fensterdienste& dienste)
    : umgebung_(umgebung)
    , arbeitsplatz_(arbeitsplatz)
    , dienste_(dienste)
    , sicherung_([this](const Datenbankfehler& fehler) {
        const QString grund = meldungstext(umgebung_.texte, fehler);
        dienste_.hinweise.zeige(fehler.grund() == Datenbankgrund::ZuGroßZumSichern
                                    ? Hinweis(grund)
                                    : Hinweis(Meldung::TagessicherungGescheitert, {grund}));
    }) {}

void Untersuchungsgang::prüfeSicherung() {
    if (umgebung_.einstellungen.schalter(Einstellung::Tagessicherung)) {
        sicherung_.prüfe(arbeitsplatz_.ablage().DatenbankPfad(), umgebung_.uhr.now().date());
    }
}

void Untersuchungsgang::beginne() {
    if (!setzeSitzungFort()) {
        zeigeLetzte();
    }
    arbeitsplatz_.beginneSitzung();
    dienste_.hinweise.beginne();
    dienste_.hinweise.warneVorSchreibfehlern();
}

bool Untersuchungsgang::setzeSitzungFort() {
    const Texte& t = umgebung_.texte;
    const std::optional<Sitzungsstand> stand = arbeitsplatz_.liesSitzung();
    if (const QString& beiseite = arbeitsplatz_.sitzungBeiseite(); !beiseite.isEmpty()) {
        umgebung_.dialoge.meldung(
            t(Text::Untersuchung),
            t(Meldung::SitzungNichtLesbar).arg(QDir::toNativeSeparators(beiseite)),
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
        arbeitsplatz_.verwirfSitzung();
        return false;
    }
    arbeitsplatz_.setzeFort(*stand);
    if (dienste_.verteiler.kennt(stand->ansicht)) {
        dienste_.verteiler.führeAus(stand->ansicht);
    }
    dienste_.hinweise.zeige(Meldung::SitzungWiederDa);
    return true;
}

void Untersuchungsgang::zeigeLetzte() {
    const std::optional<QString> letzte = arbeitsplatz_.ablage().letzteNummer();
    if (letzte && lade(*letzte)) {
        return;
    }
    arbeitsplatz_.beginneNeue();
    dienste_.beginneMessen();
}

bool Untersuchungsgang::verlasse() {
    const Texte& t = umgebung_.texte;
    if (arbeitsplatz_.messung().etwasZuVerlieren() &&
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

bool Untersuchungsgang::speichere(Speicheranlass anlass) {
    const Untersuchung& untersuchung = arbeitsplatz_.untersuchung();
    const bool warGeändert = untersuchung.geändert();
    const bool fertig = arbeitsplatz_.speichere(anlass);
    if (warGeändert && !untersuchung.geändert()) {
        dienste_.hinweise.zeige({Meldung::UntersuchungGespeichert, {untersuchung.angaben().UNr}});
        prüfeSicherung();
    }
    return fertig;
}

void Untersuchungsgang::neueUntersuchung(Personen personen) {
    dienste_.vervollständige();
    if (!verlasse()) {
        return;
    }
    arbeitsplatz_.beginneNeue(personen);
    dienste_.beginneMessen();
}

Satzumgebung Untersuchungsgang::satzumgebung() const {
    const Einstellungen& e = umgebung_.einstellungen;
    return {.texte = umgebung_.texte,
            .format = umgebung_.format,
            .rassen = rassenliste(e),
            .OhneHaarlänge = e.schalter(Einstellung::OhneHaarlänge)};
}

Neubeurteilungsregeln Untersuchungsgang::neubeurteilungsregeln() const {
    const Einstellungen& e = umgebung_.einstellungen;
    Neubeurteilungsregeln regeln{
        .satz = satzumgebung(), .standards = {}, .regeln = ladeUrteilsregeln(e)};
    for (int rasse = 1; rasse <= Rassenzahl; ++rasse) {
        regeln.standards.push_back(ladeRassestandard(rasse, e));
    }
    return regeln;
}

void Untersuchungsgang::öffne() {
    dienste_.vervollständige();
    if (!verlasse()) {
        return;
    }
    const Ablage& ablage = arbeitsplatz_.ablage();
    const Hinweis vorher = dienste_.hinweise.gezeigter();
    dienste_.hinweise.zeige(Text::HinweisUntersuchungÖffnen);
    DB db({.texte = umgebung_.texte,
           .dialoge = umgebung_.dialoge,
           .DatenbankPfad = ablage.DatenbankPfad(),
           .dokumente = ablage.dokumente(),
           .DatenbankWählen =
               [this](const QString& pfad) { return arbeitsplatz_.DatenbankWählen(pfad); },
           .LadenDB = [this](const QString& nummer) { return lade(nummer); },
           .offene = [this] { return arbeitsplatz_.ablage().gespeicherteNummer(); },
           .neubeurteilung = [this] { return neubeurteilungsregeln(); },
           .protokolle =
               [this] {
                   return neueProtokollserie(umgebung_, arbeitsplatz_.ablage().DatenbankPfad());
               },
           .rassen = rassenliste(umgebung_.einstellungen),
           .format = umgebung_.format,
           .heute = umgebung_.uhr.now().date(),
           .einstellungen = &umgebung_.einstellungen,
           .nachsehen = std::chrono::milliseconds(1500),
           .zuchtübersicht =
               [this] {
                   return zeigeZuchtübersicht(
                       QApplication::activeWindow(),
                       [this](const QString& nummer) { return lade(nummer); });
               }},
          dienste_.fenster);
    if (db.exec() != QDialog::Accepted) {
        dienste_.hinweise.zeige(vorher);
        folgeDerZeile(db.ersetzte());
    }
    prüfeSicherung();
}

void Untersuchungsgang::zeigeZuchtübersicht() {
    dienste_.vervollständige();
    zeigeZuchtübersicht(dienste_.fenster,
                        [this](const QString& nummer) { return verlasse() && lade(nummer); });
}

bool Untersuchungsgang::zeigeZuchtübersicht(QWidget* über,
                                            const std::function<bool(const QString&)>& lade) {
    const Ablage& ablage = arbeitsplatz_.ablage();
    Zuchtschau schau({.texte = umgebung_.texte,
                      .dialoge = umgebung_.dialoge,
                      .DatenbankPfad = ablage.DatenbankPfad(),
                      .speicher = QDir(umgebung_.ordner).filePath(Übersichtsordner.toString()),
                      .dokumente = ablage.dokumente(),
                      .regeln = kolonieregeln(satzumgebung(), umgebung_.einstellungen),
                      .LadenDB = lade},
                     über);
    return schau.lies() && schau.exec() == QDialog::Accepted;
}

void Untersuchungsgang::folgeDerZeile(const QStringList& ersetzte) {
    using Art = Zeilenlage::Art;
    const Ablage& ablage = arbeitsplatz_.ablage();
    const Zeilenlage lage = ablage.zeilenlage();
    if (lage.art == Art::Verschwunden) {
        arbeitsplatz_.nimmAlsGelöscht();
    } else if (lage.art == Art::Geändert &&
               ersetzte.contains(ablage.gespeicherteNummer(), Qt::CaseInsensitive)) {
        arbeitsplatz_.nimmAlsErsetzt();
        dienste_.hinweise.zeige({Meldung::OffeneZeileErsetzt, {lage.nummer}});
    } else if (lage.art != Art::Gleich && !arbeitsplatz_.untersuchung().geändert()) {
        lade(lage.nummer);
    } else if (lage.art == Art::Umbenannt) {
        arbeitsplatz_.nimmUmbenannt(lage.nummer);
    }
}

bool Untersuchungsgang::öffneDatenbank(const QString& pfad) {
    dienste_.vervollständige();
    if (!verlasse() || !arbeitsplatz_.DatenbankWählen(pfad)) {
        return false;
    }
    zeigeLetzte();
    return true;
}

bool Untersuchungsgang::lade(const QString& nummer) {
    const std::optional<GeleseneUntersuchung> gelesen = arbeitsplatz_.lade(nummer);
    if (!gelesen) {
        return false;
    }
    dienste_.verteiler.führeAus(befehl::Kurven);
    dienste_.verteiler.führeAus(befehl::Alle);
    const Texte& t = umgebung_.texte;
    if (const std::optional<bool> urteil = arbeitsplatz_.beurteilung().urteil();
        urteil && gelesen->urteil && *urteil != *gelesen->urteil) {
        dienste_.hinweise.zeige(
            {Meldung::UrteilAnders, {urteilswort(*gelesen->urteil), urteilswort(*urteil)}});
    }
    if (gelesen->rasse) {
        dienste_.hinweise.zeige({Meldung::RasseNichtInListe, {*gelesen->rasse}});
    }
    if (!gelesen->nichtGelesen.isEmpty()) {
        umgebung_.dialoge.meldung(
            t(Text::Untersuchung),
            t(Meldung::UntersuchungNichtLesbar).arg(nummer, spaltennamen(t, gelesen->nichtGelesen)),
            Meldungsart::Ausruf);
    }
    return true;
}

bool Untersuchungsgang::wechsleGeschlecht(Geschlecht tiere) {
    const Texte& t = umgebung_.texte;
    if (arbeitsplatz_.untersuchung().merkmale().etwasEingetragen() &&
        umgebung_.dialoge.frage({.titel = t(Text::KörperMerkmale),
                                 .text = t(Text::UmschaltenWarnung1) + t(Text::UmschaltenWarnung2) +
                                         u'\n' + t(Text::UmschaltenFrage),
                                 .art = Meldungsart::Frage,
                                 .verwirft = true}) != Antwort::Ja) {
        return false;
    }
    arbeitsplatz_.wähleTiere(tiere);
    return true;
}

} // namespace tarvel
