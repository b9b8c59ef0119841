#include "app/hinweisgeber.h"

#include "app/hinweiszeile.h"
#include "measure/aufloesung.h"
#include "measure/fluegelprobe.h"
#include "results/arbeitsplatz.h"

#include <QDir>

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
    lab_H_->zeige(hinweis);
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

void Hinweisgeber::warneVorGeringerAuflösung(bool neu) {
    auflösungGemeldet_ = auflösungGemeldet_ && !neu;
    const int dpi = arbeitsplatz_.messung().aufnahme().dpi;
    if (dpi < EmpfohleneAuflösung && !std::exchange(auflösungGemeldet_, true)) {
        zeige({Meldung::AuflösungZuGering, {QString::number(dpi)}});
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
    if (änderung.hinweis != HinweisKeiner) {
        ZeigeHinweis(änderung.hinweis);
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
    // The first wing of a picture says whether its resolution can be right.
    const std::optional<double> länge = längeRadialzelle(messung->punkte, messung->aufnahme);
    if (sätze.empty() && länge && reihe.flügelAufBild(messung->bilddatei).size() == 1 &&
        (*länge < KürzesteRadialzelle || *länge > LängsteRadialzelle)) {
        sätze.push_back(
            {Meldung::RadialzelleUnmöglich,
             {QString::number(messung->aufnahme.dpi), Format(*länge, u"0.0", umgebung_.format)}});
        const std::optional<int> passende = passendeAuflösung(messung->punkte, messung->aufnahme);
        sätze.push_back(passende ? Hinweis(Meldung::AuflösungPasst, {QString::number(*passende)})
                                 : Hinweis(Meldung::AuflösungPrüfen));
    }
    if (!sätze.empty()) {
        Hinweis alles = sätze.front();
        alles.weitere.assign(sätze.begin() + 1, sätze.end());
        zeige(alles);
    }
}

void Hinweisgeber::sageAuflösung() {
    const Messung& messung = arbeitsplatz_.messung();
    if (const auto& wiederholung = messung.stand().wiederholung) {
        zeige({Meldung::AuflösungDesFlügels,
               {QString::number(messung.aufnahme().dpi), dreistellig(wiederholung->nummer),
                QString::number(wiederholung->aufnahme.dpi)}});
        return;
    }
    warneVorGeringerAuflösung(true);
    const int dpi = messung.aufnahme().dpi;
    const Messreihe& reihe = arbeitsplatz_.reihe();
    int andere = 0;
    for (const int nummer : reihe.flügelAufBild(messung.bilddatei(), messung.bild())) {
        andere += reihe.messung(nummer)->aufnahme.dpi == dpi ? 0 : 1;
    }
    if (andere > 0) {
        zeige({Meldung::AuflösungNurNeue, {QString::number(dpi), QString::number(andere)}});
    }
}

} // namespace tarvel
