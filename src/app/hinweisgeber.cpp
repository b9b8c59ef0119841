#include "app/hinweisgeber.h"

#include "app/hinweiszeile.h"
#include "measure/aufloesung.h"
#include "measure/fluegelprobe.h"
#include "results/arbeitsplatz.h"

#include <QDir>

#include <algorithm>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

Hinweisgeber::Hinweisgeber(const Umgebung& umgebung, const Arbeitsplatz& arbeitsplatz)
    : umgebung_(umgebung)
    , arbeitsplatz_(arbeitsplatz)
    , lab_H_(new Hinweiszeile(umgebung.texte)) {}

void Hinweisgeber::ZeigeHinweis(int nummer) {
    const bool mitFlügel = nummer == HinweisRechteckAufFlügel;
    zeige({nummer, mitFlügel ? arbeitsplatz_.messung().nummer() : 0});
}

void Hinweisgeber::zeige(const Hinweis& hinweis) {
    istErsatz_ = false;
    lab_H_->zeige(hinweis);
}

void Hinweisgeber::zeigeSätze(const std::vector<Hinweis>& sätze) {
    if (!sätze.empty()) {
        Hinweis alles = sätze.front();
        alles.weitere.assign(sätze.begin() + 1, sätze.end());
        zeige(alles);
    }
}

const Hinweis& Hinweisgeber::gezeigter() const {
    return lab_H_->hinweis();
}

void Hinweisgeber::zeigeSchritt(const Schritt& schritt, bool wiederhergestellt) {
    schritt_ = schritt;
    zeige({wiederhergestellt ? Meldung::WiederherstellenSchritt : Meldung::RückgängigSchritt,
           {schrittname(schritt, umgebung_.texte)}});
}

void Hinweisgeber::TexteAnwenden() {
    lab_H_->setAccessibleName(umgebung_.texte(Meldung::NameHinweiszeile));
    // The name of a step is put together from words of the language.
    const auto* const meldung = std::get_if<Meldung>(&gezeigter().was);
    const bool wieder = meldung != nullptr && *meldung == Meldung::WiederherstellenSchritt;
    if (schritt_ && (wieder || (meldung != nullptr && *meldung == Meldung::RückgängigSchritt))) {
        zeigeSchritt(*schritt_, wieder);
    }
}

std::optional<Hinweis> Hinweisgeber::geringeAuflösung(bool neu) {
    auflösungGemeldet_ = auflösungGemeldet_ && !neu;
    const int dpi = arbeitsplatz_.messung().aufnahme().dpi;
    if (dpi >= EmpfohleneAuflösung || std::exchange(auflösungGemeldet_, true)) {
        return std::nullopt;
    }
    return Hinweis(Meldung::AuflösungZuGering, {QString::number(dpi)});
}

void Hinweisgeber::warneVorGeringerAuflösung() {
    if (const std::optional<Hinweis> hinweis = geringeAuflösung(false)) {
        zeige(*hinweis);
    }
}

void Hinweisgeber::warneVorSchreibfehlern() {
    if (!arbeitsplatz_.gesichert() && !std::exchange(sitzungsfehlerGemeldet_, true)) {
        zeige({Meldung::SitzungNichtGesichert, {QDir::toNativeSeparators(umgebung_.ordner)}});
    }
    if (begonnen_ && umgebung_.einstellungen.schreibenMisslungen() &&
        !std::exchange(schreibfehlerGemeldet_, true)) {
        zeige({Meldung::EinstellungenNichtGeschrieben,
               {QDir::toNativeSeparators(umgebung_.einstellungen.IniPfad())}});
    }
}

void Hinweisgeber::sage(const Änderung& änderung) {
    const Texte& t = umgebung_.texte;
    if (änderung.hinweis != Hinweis()) {
        zeige(änderung.hinweis);
    }
    if (änderung.übernommen && !änderung.übernommen->ohne.empty()) {
        QStringList ohne;
        for (const int punkt : änderung.übernommen->ohne) {
            ohne << QString::number(punkt);
        }
        zeige({ohne.size() == 1 ? Meldung::PunktNichtGesetzt : Meldung::PunkteNichtGesetzt,
               {ohne.join(u", "_s)}});
    }
    if (änderung.übernommen) {
        sageZweifel(änderung.übernommen->nummer);
    }
    if (änderung.fehler) {
        umgebung_.dialoge.meldung(t(Text::Fehler),
                                  t(*änderung.fehler == Rechenfehler::DivisionDurchNull
                                        ? Meldung::PunkteFallenZusammen
                                        : Meldung::WurzelNegativ),
                                  Meldungsart::Ausruf);
    }
    if (änderung.reiheVoll) {
        umgebung_.dialoge.meldung(t(Text::Fehler), t(Meldung::ReiheVoll), Meldungsart::Ausruf);
    }
    if (!gilt(gezeigter())) {
        ersatz_();
        istErsatz_ = true;
    }
}

bool Hinweisgeber::gilt(const Hinweis& hinweis) const {
    if (!std::all_of(hinweis.weitere.begin(), hinweis.weitere.end(),
                     [this](const Hinweis& weiterer) { return gilt(weiterer); })) {
        return false;
    }
    if (const int* nummer = std::get_if<int>(&hinweis.was)) {
        return gilt(*nummer, hinweis.flügel);
    }
    const auto* const meldung = std::get_if<Meldung>(&hinweis.was);
    return meldung == nullptr || gilt(*meldung, hinweis);
}

bool Hinweisgeber::gilt(int hinweisnummer, int flügel) const {
    const Messung& messung = arbeitsplatz_.messung();
    const bool jeBiene = arbeitsplatz_.untersuchung().merkmale().Modus == Merkmalmodus::Liste;
    switch (hinweisnummer) {
    case HinweisÜbernehmen:
    case HinweisErneutSpeichern:
        return messung.standhinweis() == Hinweis(hinweisnummer);
    case HinweisRechteckAufFlügel:
        return messung.nummer() == flügel;
    case HinweisWiederholen:
        return !arbeitsplatz_.reihe().leer();
    case HinweisKreuzZeigen:
        return !arbeitsplatz_.reihe().hiDvZeilen().empty();
    case HinweisMerkmaleJeBiene:
        return jeBiene;
    case HinweisMerkmaleSummen:
        return !jeBiene;
    default:
        return true;
    }
}

bool Hinweisgeber::gilt(Meldung meldung, const Hinweis& hinweis) const {
    const Messung& messung = arbeitsplatz_.messung();
    const Messreihe& reihe = arbeitsplatz_.reihe();
    const auto nennt = [&hinweis](std::size_t stelle, int zahl) {
        const auto* const wert = std::get_if<QString>(&hinweis.argumente.at(stelle));
        return wert != nullptr && wert->toInt() == zahl;
    };
    const int dpi = messung.aufnahme().dpi;
    switch (meldung) {
    case Meldung::AuflösungZuGering:
    case Meldung::BildMitAuflösung:
    case Meldung::FundKeiner:
    case Meldung::RadialzelleUnmöglich:
        return nennt(0, dpi);
    case Meldung::BildauflösungHinweis:
    case Meldung::FlügelauflösungAnders:
        return nennt(1, dpi);
    case Meldung::PunkteVorgeschlagenFraglich: {
        const QStringList nummern = std::get<QString>(hinweis.argumente.front()).split(u", "_s);
        return std::all_of(nummern.begin(), nummern.end(), [&messung](const QString& nummer) {
            return messung.punkte().Herkunft.at(nummer.toUInt()) == Punktherkunft::Vorgeschlagen;
        });
    }
    case Meldung::PunkteVorgeschlagen:
    case Meldung::VorschlagErstAnsehen:
    case Meldung::VorschlagBeiDrohnen:
    case Meldung::VorschlagAndereRasse:
    case Meldung::VorschlagUnsicher:
    case Meldung::VorschlagErsetztPunkte:
        return messung.punkte().vorgeschlagen();
    case Meldung::AuflösungNurNeue:
    case Meldung::AuflösungDesFlügels:
        return auflösungshinweis() == hinweis;
    case Meldung::AuflösungBeimNächstenStart:
        return nennt(0, dpi) && nennt(1, aufnahmeBeimStart(umgebung_.einstellungen).dpi);
    case Meldung::ZoomBeimNächstenStart:
        return nennt(1, aufnahmeBeimStart(umgebung_.einstellungen).Zoomfaktor);
    case Meldung::ÜbernehmenPerTaste:
        return messung.standhinweis() == hinweis;
    case Meldung::FlügelZumKorrigieren:
        return messung.wiederholt() && nennt(0, messung.nummer());
    case Meldung::FlügelFraglich:
        return reihe.enthält(std::get<QString>(hinweis.argumente.front()).toInt());
    case Meldung::EinFlügelAusgelassen:
    case Meldung::FlügelAusgelassen:
        return nennt(0, static_cast<int>(reihe.ausgelassene().size()));
    case Meldung::AlleFlügelZählen:
        return reihe.ausgelassene().empty();
    case Meldung::FlügelGelöscht:
    case Meldung::MehrereGelöscht: {
        const Schritt* const letzter = arbeitsplatz_.rückgängig();
        return letzter != nullptr && letzter->art == Schrittart::FlügelLöschen;
    }
    case Meldung::UntersuchungGespeichert:
        return !arbeitsplatz_.untersuchung().geändert();
    case Meldung::UrteilAnders:
        return arbeitsplatz_.gespeichertesUrteil() && arbeitsplatz_.beurteilung().urteil() &&
               arbeitsplatz_.gespeichertesUrteil() != arbeitsplatz_.beurteilung().urteil();
    case Meldung::SitzungNichtGesichert:
        return !arbeitsplatz_.gesichert();
    default:
        return true;
    }
}

void Hinweisgeber::sageZweifel(int flügel) {
    const Messreihe& reihe = arbeitsplatz_.reihe();
    const Flügelmessung* const messung = reihe.messung(flügel);
    if (messung == nullptr) {
        return;
    }
    std::vector<Hinweis> sätze;
    const bool aus = reihe.ausgelassen(flügel);
    if (aus) {
        sätze.push_back({Meldung::BleibtAusgelassen, {dreistellig(flügel)}});
    }
    if (const std::vector<Flügelzweifel> zweifel = flügelzweifel(*messung); !zweifel.empty()) {
        sätze.push_back({Meldung::FlügelFraglich, {dreistellig(flügel)}});
        for (const Flügelzweifel& einer : zweifel) {
            sätze.push_back(hinweis(einer));
        }
        if (!aus) {
            sätze.push_back(Meldung::TasteLässtAus);
        }
    }
    // The first wing of a picture, or of another resolution on it, says whether that can be right.
    const std::optional<double> länge = längeRadialzelle(messung->punkte, messung->aufnahme);
    const auto mitDieser = [&](int nummer) {
        return reihe.messung(nummer)->aufnahme.dpi == messung->aufnahme.dpi;
    };
    const std::vector<int> nachbarn = reihe.flügelAufBild(messung->bilddatei);
    if (sätze.empty() && länge && std::count_if(nachbarn.begin(), nachbarn.end(), mitDieser) == 1 &&
        (*länge < KürzesteRadialzelle || *länge > LängsteRadialzelle)) {
        sätze.push_back(
            {Meldung::RadialzelleUnmöglich,
             {QString::number(messung->aufnahme.dpi), Format(*länge, u"0.0", umgebung_.format)}});
        const std::optional<int> passende = passendeAuflösung(messung->punkte, messung->aufnahme);
        sätze.push_back(passende ? Hinweis(Meldung::AuflösungPasst, {QString::number(*passende)})
                                 : Hinweis(Meldung::AuflösungPrüfen));
    }
    // What was said of the next wing meanwhile stays.
    if (const auto* nächster = std::get_if<Meldung>(&gezeigter().was);
        !sätze.empty() && nächster != nullptr && arbeitsplatz_.messung().punkte().vorgeschlagen() &&
        gilt(*nächster, gezeigter())) {
        sätze.push_back(gezeigter());
    }
    zeigeSätze(sätze);
}

void Hinweisgeber::sageAuflösung() {
    std::vector<Hinweis> sätze;
    if (!arbeitsplatz_.messung().wiederholt()) {
        if (const std::optional<Hinweis> gering = geringeAuflösung(true)) {
            sätze.push_back(*gering);
        }
    }
    if (const std::optional<Hinweis> auflösung = auflösungshinweis()) {
        sätze.push_back(*auflösung);
    }
    zeigeSätze(sätze);
}

std::optional<Hinweis> Hinweisgeber::auflösungshinweis() const {
    const Messung& messung = arbeitsplatz_.messung();
    if (const auto& wiederholung = messung.stand().wiederholung) {
        return Hinweis(Meldung::AuflösungDesFlügels,
                       {QString::number(messung.aufnahme().dpi), dreistellig(wiederholung->nummer),
                        QString::number(wiederholung->aufnahme.dpi)});
    }
    const int dpi = messung.aufnahme().dpi;
    const Messreihe& reihe = arbeitsplatz_.reihe();
    int andere = 0;
    for (const int nummer : reihe.flügelAufBild(messung.bilddatei(), messung.bild())) {
        andere += reihe.messung(nummer)->aufnahme.dpi == dpi ? 0 : 1;
    }
    if (andere == 0) {
        return std::nullopt;
    }
    return Hinweis(Meldung::AuflösungNurNeue, {QString::number(dpi), QString::number(andere)});
}

} // namespace tarvel
