#include "results/arbeitsplatz.h"

#include "evaluation/rassen.h"
#include "evaluation/standarddatei.h"
#include "measure/aufloesung.h"

#include <algorithm>
#include <utility>

namespace tarvel {

namespace {

bool gleicherOrt(const Messpunkte& a, const Messpunkte& b) {
    return a.PunktX == b.PunktX && a.PunktY == b.PunktY && a.AktuellerPunkt == b.AktuellerPunkt;
}

bool gleicheAufnahme(const Messstand& a, const Messstand& b) {
    return a.messart == b.messart && a.aufnahme == b.aufnahme && a.bilddatei == b.bilddatei &&
           a.angefangen == b.angefangen && a.wiederholung == b.wiederholung;
}

} // namespace

Aufnahme aufnahmeBeimStart(const Einstellungen& einstellungen) {
    return {static_cast<qint16>(
                std::clamp(einstellungen.zahl(Einstellung::DefaultZoomHauptfenster) + 1, 1, 4)),
            scannerauflösung(einstellungen.zahl(Einstellung::ScannMessung))};
}

bool Änderung::etwas() const {
    return Punkte || Aufnahme || Reihe || Merkmale || Angaben || Urteil || Ablage ||
           Einstellungen || Untersuchung || Schritte || hinweis != Hinweis() || übernommen ||
           fehler || reiheVoll;
}

Arbeitsplatz::Arbeitsplatz(const Ablageumgebung& umgebung, Einstellungen& einstellungen,
                           Benutzerspeicher& speicher, const QString& journal)
    : ini_(einstellungen)
    , ablage_(umgebung, speicher)
    , sitzung_(journal)
    , messung_(untersuchung_.reihe(), umgebung.format) {
    jetzt_ = stand();
    journal_ = beobachte([this](const Änderung&) { sichere(); });
}

Arbeitsplatz::Beobachtung Arbeitsplatz::beobachte(Beobachter beobachter) {
    auto neue = std::make_shared<Beobachter>(std::move(beobachter));
    beobachter_.push_back(neue);
    return neue;
}

Ablagestand Arbeitsplatz::ablagestand() const {
    // A wing of the series that is corrected meanwhile may have another resolution.
    const auto& wiederholung = messung_.stand().wiederholung;
    const int dpi = wiederholung ? wiederholung->aufnahme.dpi : messung_.aufnahme().dpi;
    Ablagestand stand{gespeichertesUrteil(), dpi, untersuchung_.zusatz()};
    stand.zusatz.Untersucher = untersucher(untersuchung_, ini_.text(Einstellung::Name).trimmed());
    if (stand.zusatz.Urteil == Ablageurteil::Keines) {
        stand.urteil = beurteilung().urteil();
        stand.zusatz.Grenzen =
            stand.urteil ? standardtext({einstellungen_.rassen.value(untersuchung_.angaben().Rasse),
                                         standard_})
                         : QString();
    }
    return stand;
}

std::optional<bool> Arbeitsplatz::gespeichertesUrteil() const {
    const Untersuchungszusatz& zusatz = untersuchung_.zusatz();
    return zusatz.Urteil == Ablageurteil::Ja     ? std::optional(true)
           : zusatz.Urteil == Ablageurteil::Nein ? std::optional(false)
                                                 : std::nullopt;
}

Prüfling Arbeitsplatz::prüfling() const {
    return tarvel::prüfling(untersuchung_);
}

Arbeitsplatz::Stand Arbeitsplatz::stand() const {
    const Untersuchung& u = untersuchung_;
    const bool gleiche = jetzt_.reihe && *jetzt_.reihe == u.reihe();
    return {.angaben = u.angaben(),
            .reihe = gleiche ? jetzt_.reihe : std::make_shared<const Messreihe>(u.reihe()),
            .merkmale = u.merkmale(),
            .messung = messung_.stand(),
            .zusatz = u.zusatz(),
            .angabenGeändert = u.angabenGeändert(),
            .messungenGeändert = u.messungenGeändert()};
}

void Arbeitsplatz::schließeAb(const std::optional<Schritt>& schritt) {
    const Stand vorher = std::exchange(jetzt_, stand());
    Änderung& ä = änderung_;
    ä.Punkte = ä.Punkte || vorher.messung.punkte != jetzt_.messung.punkte;
    ä.Aufnahme = ä.Aufnahme || !gleicheAufnahme(vorher.messung, jetzt_.messung);
    ä.Reihe = ä.Reihe || vorher.reihe != jetzt_.reihe;
    ä.Merkmale = ä.Merkmale || vorher.merkmale != jetzt_.merkmale;
    ä.Angaben = ä.Angaben || vorher.angaben != jetzt_.angaben;
    ä.Ablage = ä.Ablage || vorher.angabenGeändert != jetzt_.angabenGeändert ||
               vorher.messungenGeändert != jetzt_.messungenGeändert;
    const bool neuerStandard = ä.Einstellungen || standardRasse_ != jetzt_.angaben.Rasse;
    if (neuerStandard) {
        standardRasse_ = jetzt_.angaben.Rasse;
        standard_ = ladeRassestandard(standardRasse_ + 1, ini_);
    }
    if (neuerStandard || ä.Reihe || ä.Merkmale || ä.Untersuchung ||
        vorher.zusatz != jetzt_.zusatz || vorher.angaben.Tiere != jetzt_.angaben.Tiere) {
        urteil_ = urteile(prüfling(), standard_, einstellungen_.regeln);
        ä.Urteil = true;
    }
    const bool offen = std::exchange(bleibtOffen_, false);
    if (schritt) {
        legeAb(*schritt, vorher, offen);
    }
    schrittOffen_ = offen && (schritt || schrittOffen_);
    if (const Änderung fertig = std::exchange(änderung_, {}); fertig.etwas()) {
        melde(fertig);
    }
}

void Arbeitsplatz::legeAb(const Schritt& schritt, const Stand& vorher, bool offen) {
    const bool weiter =
        offen && schrittOffen_ && !zurück_.empty() && zurück_.back().schritt == schritt;
    if (!weiter) {
        zurück_.push_back({schritt, vorher, vorher.messung != jetzt_.messung});
        änderung_.Schritte = true;
    }
    änderung_.Schritte = änderung_.Schritte || !vor_.empty();
    vor_.clear();
}

void Arbeitsplatz::melde(const Änderung& änderung) {
    ausstehend_.push_back(änderung);
    if (meldet_) {
        return; // a command of an observer; all see one notice after the other
    }
    meldet_ = true;
    while (!ausstehend_.empty()) {
        const Änderung nächste = std::move(ausstehend_.front());
        ausstehend_.pop_front();
        const auto alle = beobachter_;
        for (const std::weak_ptr<Beobachter>& beobachter : alle) {
            if (const Beobachtung lebender = beobachter.lock()) {
                (*lebender)(nächste);
            }
        }
    }
    meldet_ = false;
    std::erase_if(beobachter_, [](const auto& b) { return b.expired(); });
}

// Measuring

bool Arbeitsplatz::messe(const std::function<Messergebnis()>& tun) {
    bool verstanden = false;
    führeAus([&]() -> std::optional<Schritt> {
        const Messpunkte vorher = messung_.punkte();
        Messergebnis ergebnis = tun();
        verstanden = ergebnis.verstanden;
        änderung_.hinweis = ergebnis.hinweis;
        änderung_.fehler = ergebnis.fehler;
        änderung_.reiheVoll = ergebnis.reiheVoll;
        änderung_.übernommen = ergebnis.übernommen;
        if (ergebnis.reihe) {
            untersuchung_.setzeReihe(*ergebnis.reihe);
            return Schritt{Schrittart::Übernehmen,
                           ergebnis.übernommen ? ergebnis.übernommen->nummer : messung_.nummer()};
        }
        const Messpunkte& jetzt = messung_.punkte();
        return gleicherOrt(vorher, jetzt)
                   ? std::nullopt
                   : std::optional(Schritt{Schrittart::Punkt, jetzt.GewählterPunkt});
    });
    return verstanden;
}

void Arbeitsplatz::Bild_MouseDown(Maustaste taste, int umschalt, float X, float Y) {
    messe([&] { return messung_.Bild_MouseDown(taste, umschalt, X, Y); });
}

void Arbeitsplatz::Bild_MouseMove(Maustaste taste, int umschalt, float X, float Y) {
    messung_.Bild_MouseMove(taste, umschalt, X, Y); // nothing that anybody sees
}

bool Arbeitsplatz::Bild_KeyDown(int keyCode, int umschalt) {
    if (keyCode == taste::Rücktaste && umschalt == umschaltung::Keine) {
        const Schritt* letzter = rückgängig();
        const bool punktschritt = letzter != nullptr && (letzter->art == Schrittart::Punkt ||
                                                         letzter->art == Schrittart::Vorschlag ||
                                                         letzter->art == Schrittart::PunkteLöschen);
        return punktschritt && macheRückgängig();
    }
    return messe([&] { return messung_.Bild_KeyDown(keyCode, umschalt); });
}

void Arbeitsplatz::opt_Fein_Click(int index) {
    führeAus([&] { messung_.opt_Fein_Click(index); });
}

void Arbeitsplatz::zieh(int nummer, float x, float y, bool neuerZug) {
    schrittOffen_ = schrittOffen_ && !neuerZug;
    bleibtOffen_ = true;
    messe([&] {
        Messergebnis ergebnis;
        ergebnis.verstanden = messung_.zieh(nummer, x, y);
        return ergebnis;
    });
}

void Arbeitsplatz::schlageVor(const Messpunkte& punkte) {
    führeAus([&] {
        messung_.schlageVor(punkte);
        return std::optional(Schritt{Schrittart::Vorschlag});
    });
}

void Arbeitsplatz::NeuerFlügel() {
    führeAus([&]() -> std::optional<Schritt> {
        const bool begonnen = messung_.punkte().begonnen();
        messung_.NeuerFlügel();
        return begonnen ? std::optional(Schritt{Schrittart::PunkteLöschen}) : std::nullopt;
    });
}

void Arbeitsplatz::setzeZoom(int zoomfaktor) {
    führeAus([&]() -> std::optional<Schritt> {
        const bool verloren = messung_.punkte().begonnen();
        messung_.setzeZoomfaktor(zoomfaktor);
        return verloren ? std::optional(Schritt{Schrittart::Zoom}) : std::nullopt;
    });
}

void Arbeitsplatz::setzeMessart(Messart messart) {
    führeAus([&]() -> std::optional<Schritt> {
        const bool andere = messart != messung_.messart();
        messung_.setzeMessart(messart);
        merkeWahl(Schrittart::Messart);
        return andere ? std::optional(Schritt{Schrittart::Messart}) : std::nullopt;
    });
}

bool Arbeitsplatz::wiederhole(int nummer) {
    bool gelungen = false;
    führeAus([&]() -> std::optional<Schritt> {
        gelungen = messung_.wiederhole(nummer);
        if (!gelungen) {
            return std::nullopt;
        }
        änderung_.hinweis = messung_.standhinweis();
        return Schritt{Schrittart::Wiederholen, nummer};
    });
    return gelungen;
}

void Arbeitsplatz::gibWiederholungAuf() {
    führeAus([&]() -> std::optional<Schritt> {
        const int nummer = messung_.nummer();
        return messung_.gibWiederholungAuf()
                   ? std::optional(Schritt{Schrittart::WiederholungAufgeben, nummer})
                   : std::nullopt;
    });
}

// Series, marks and colony data

void Arbeitsplatz::ändereReihe(const Messreihe& neu, const Schritt& schritt) {
    führeAus([&]() -> std::optional<Schritt> {
        if (messung_.wiederholt() && !neu.enthält(messung_.nummer())) {
            messung_.gibWiederholungAuf();
        }
        untersuchung_.setzeReihe(neu);
        return schritt;
    });
}

bool Arbeitsplatz::löscheFlügel(const std::vector<int>& nummern) {
    Messreihe neu = reihe();
    const auto anzahl = std::count_if(nummern.begin(), nummern.end(),
                                      [&](int nummer) { return neu.löscheFlügel(nummer); });
    if (anzahl > 0) {
        ändereReihe(neu, {Schrittart::FlügelLöschen, nummern.size() == 1 ? nummern.front() : 0});
    }
    return anzahl > 0;
}

bool Arbeitsplatz::lassAus(const std::vector<int>& nummern, bool aus) {
    Messreihe neu = reihe();
    const auto anzahl = std::count_if(nummern.begin(), nummern.end(),
                                      [&](int nummer) { return neu.lassAus(nummer, aus); });
    if (anzahl > 0) {
        ändereReihe(neu, {aus ? Schrittart::Auslassen : Schrittart::Wiederaufnehmen,
                          nummern.size() == 1 ? nummern.front() : 0});
    }
    return anzahl > 0;
}

void Arbeitsplatz::löscheAlle() {
    if (!reihe().leer()) {
        Messreihe neu = reihe();
        neu.löscheAlle();
        ändereReihe(neu, {Schrittart::AlleLöschen});
    }
}

void Arbeitsplatz::setzeMerkmale(const Merkmale& merkmale) {
    const Merkmale& bisher = untersuchung_.merkmale();
    if (merkmale == bisher) {
        return;
    }
    führeAus([&]() -> std::optional<Schritt> {
        const int summe = getippteSumme(bisher, merkmale);
        bleibtOffen_ = summe != 0;
        untersuchung_.setzeMerkmale(merkmale);
        return Schritt{Schrittart::Merkmale, summe};
    });
}

void Arbeitsplatz::setzeAngaben(const Kolonieangaben& angaben) {
    const Kolonieangaben& bisher = untersuchung_.angaben();
    if (angaben == bisher) {
        return;
    }
    führeAus([&]() -> std::optional<Schritt> {
        Schritt schritt{Schrittart::Rasse};
        if (QString Kolonieangaben::*feld = geändertesFeld(bisher, angaben)) {
            schritt = {Schrittart::Feld, 0, feld};
            bleibtOffen_ = true;
        }
        untersuchung_.setzeAngaben(angaben);
        return schritt;
    });
}

void Arbeitsplatz::beendeEingabe() {
    if (!std::exchange(schrittOffen_, false) || zurück_.empty()) {
        return;
    }
    const Stand& vorher = zurück_.back().vorher;
    if (vorher.angaben == jetzt_.angaben && vorher.merkmale == jetzt_.merkmale &&
        vorher.reihe == jetzt_.reihe && !zurück_.back().mitMessung) {
        führeAus([&] {
            zurück_.pop_back(); // typed and taken away again
            änderung_.Schritte = true;
        });
    }
}

void Arbeitsplatz::wähleRasse(int index) {
    ini_.schreibe(Einstellung::GewählteRasse, index);
    Kolonieangaben angaben = untersuchung_.angaben();
    angaben.Rasse = index;
    angaben.Rassenname.clear();
    setzeAngaben(angaben);
}

void Arbeitsplatz::wähleTiere(Geschlecht tiere) {
    führeAus([&]() -> std::optional<Schritt> {
        Kolonieangaben angaben = untersuchung_.angaben();
        angaben.Tiere = tiere;
        untersuchung_.setzeAngaben(angaben);
        Merkmale merkmale = untersuchung_.merkmale();
        setzeTiere(merkmale, tiere);
        untersuchung_.setzeMerkmale(merkmale);
        return Schritt{Schrittart::Tiere};
    });
}

void Arbeitsplatz::beurteileNeu() {
    führeAus([&]() -> std::optional<Schritt> {
        Untersuchungszusatz zusatz = untersuchung_.zusatz();
        zusatz.Urteil = Ablageurteil::Keines;
        untersuchung_.setzeZusatz(zusatz);
        untersuchung_.alsGeändertMerken(untersuchung_.angabenGeändert(), true);
        return Schritt{Schrittart::Beurteilung};
    });
}

// Undo

const Schritt* Arbeitsplatz::rückgängig() const {
    return zurück_.empty() ? nullptr : &zurück_.back().schritt;
}

const Schritt* Arbeitsplatz::wiederherstellbar() const {
    return vor_.empty() ? nullptr : &vor_.back().schritt;
}

std::optional<Schritt> Arbeitsplatz::macheRückgängig() {
    return geheZurück(zurück_, vor_);
}

std::optional<Schritt> Arbeitsplatz::stelleWiederHer() {
    return geheZurück(vor_, zurück_);
}

std::optional<Schritt> Arbeitsplatz::geheZurück(std::vector<Rückschritt>& von,
                                                std::vector<Rückschritt>& nach) {
    if (von.empty()) {
        return std::nullopt;
    }
    const Rückschritt ziel = std::move(von.back());
    von.pop_back();
    führeAus([&] {
        nach.push_back({ziel.schritt, jetzt_, ziel.mitMessung});
        untersuchung_.lade(ziel.vorher.angaben, *ziel.vorher.reihe, ziel.vorher.merkmale,
                           untersuchung_.datum(), ziel.vorher.zusatz);
        untersuchung_.alsGeändertMerken(ziel.vorher.angabenGeändert, ziel.vorher.messungenGeändert);
        // Picture and zoom may have changed since without a step; what is being measured goes back
        // only where the step was one of measuring, and then with the picture it belongs to.
        if (ziel.mitMessung) {
            messung_.setzeStand(ziel.vorher.messung);
            merkeWahl(ziel.schritt.art);
            änderung_.hinweis = messung_.standhinweis();
        }
        änderung_.Schritte = true;
    });
    return ziel.schritt;
}

void Arbeitsplatz::vergissSchritte() {
    zurück_.clear();
    vor_.clear();
    änderung_.Schritte = true;
}

/// After storing: which of the states that undo leads to differ from the stored one.
void Arbeitsplatz::bewerteGespeichertes() {
    const Untersuchung& u = untersuchung_;
    for (std::vector<Rückschritt>* schritte : {&zurück_, &vor_}) {
        for (Rückschritt& r : *schritte) {
            r.vorher.angabenGeändert = r.vorher.angaben != u.angaben();
            // Otherwise they are not in the row any more.
            r.vorher.zusatz.merkmaleUnlesbar =
                r.vorher.zusatz.merkmaleUnlesbar && u.zusatz().merkmaleUnlesbar;
            r.vorher.messungenGeändert = r.vorher.merkmale != u.merkmale() ||
                                         *r.vorher.reihe != u.reihe() ||
                                         (r.vorher.zusatz.Urteil != Ablageurteil::Keines &&
                                          r.vorher.zusatz.Urteil != u.zusatz().Urteil);
        }
    }
}

// Journal

void Arbeitsplatz::setzeFort(const Sitzungsstand& stand) {
    führeAus([&] {
        stelleHer(untersuchung_, stand);
        ablage_.nimmAlsGespeichert(
            stand.DatenbankPfad == ablage_.DatenbankPfad() ? stand.gespeicherteNummer : QString(),
            stand.gespeicherteMarke);
        richteMessungEin({}, {});
        // After a repeat the series goes on with the picture that is there.
        messung_.setzeBilddatei(stand.flügel.bilddatei);
        messung_.setzeZoomfaktor(stand.flügel.aufnahme.Zoomfaktor);
        messung_.stelleHer(stand.flügel, stand.wiederholt);
    });
}

void Arbeitsplatz::beginneSitzung() {
    sitzungLäuft_ = true;
    sichere();
}

void Arbeitsplatz::beendeSitzung() {
    sitzungLäuft_ = false;
    sitzung_.lösche(); // what is given up here shall not come back
}

void Arbeitsplatz::merkeAnsicht(QStringView ansicht) {
    if (ansicht_ != ansicht) {
        ansicht_ = ansicht.toString();
        sichere();
    }
}

void Arbeitsplatz::sichere() {
    if (!sitzungLäuft_) {
        return;
    }
    Sitzungsstand stand = sitzungsstand(untersuchung_);
    stand.DatenbankPfad = ablage_.DatenbankPfad();
    stand.gespeicherteNummer = ablage_.gespeicherteNummer();
    stand.gespeicherteMarke = ablage_.gespeicherteMarke();
    stand.flügel = {.punkte = messung_.punkte(),
                    .messart = messung_.messart(),
                    .aufnahme = messung_.aufnahme(),
                    .bilddatei = messung_.bilddatei(),
                    .bild = messung_.stand().bild};
    stand.wiederholt = messung_.wiederholt() ? messung_.nummer() : qint16{0};
    stand.ansicht = ansicht_;
    gesichert_ = sitzung_.merke(stand);
}

} // namespace tarvel
