#include "batch/auswerten.h"

#include "batch/auswertungsausgabe.h"
#include "measure/aufloesung.h"
#include "measure/reihenmodelle.h"

#include <algorithm>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

Auswertungsprobe werteAus(const QString& datei, const Koordinaten& koordinaten,
                          const Auswertungsvorgabe& vorgabe) {
    Koordinatenreihe gelesen = reiheAus(koordinaten, {.messart = vorgabe.messart,
                                                      .aufnahme = vorgabe.aufnahme,
                                                      .eigeneAuflösung = vorgabe.eigeneAuflösung,
                                                      .format = vorgabe.format});
    Auswertungsprobe probe;
    probe.datei = datei;
    probe.vorgabe = vorgabe;
    probe.reihe = std::move(gelesen.reihe);
    probe.mängel = std::move(gelesen.mängel);
    for (std::size_t i = 0; i < koordinaten.flügel.size(); ++i) {
        const Koordinatensatz& satz = koordinaten.flügel[i];
        probe.flügel.push_back({.nummer = static_cast<int>(i) + 1,
                                .name = satz.bezeichnung(),
                                .messung = std::move(gelesen.messungen[i]),
                                .bildhöhe = {},
                                .ausgelassen = satz.ausgelassen});
    }
    Merkmale keine;
    keine.Tiere = vorgabe.tiere;
    probe.beurteilung = urteile({.tiere = vorgabe.tiere, .reihe = probe.reihe, .merkmale = keine},
                                vorgabe.standard, vorgabe.regeln)
                            .beurteilung;
    return probe;
}

namespace {

/// What the discoidal shift rests on where the file leaves it open or says otherwise.
QStringList annahmen(const Koordinaten& koordinaten, const Auswertungsvorgabe& vorgabe,
                     const Texte& t) {
    QStringList sätze;
    if (!misstAchtPunkte(vorgabe.messart)) {
        return sätze;
    }
    const auto& flügel = koordinaten.flügel;
    const bool bildpunkte = std::any_of(flügel.begin(), flügel.end(),
                                        [](const Koordinatensatz& s) { return s.inBildpunkten; });
    if (bildpunkte && vorgabe.aufnahme.Zoomfaktor != 1) {
        sätze << t(Meldung::ZoomNichtVerwendet);
    }
    for (const Koordinatensatz& satz : flügel) {
        const std::optional<int> eigene = auflösungAus(satz);
        if (vorgabe.eigeneAuflösung && !eigene) {
            sätze << t(Meldung::AuflösungAngenommen).arg(vorgabe.aufnahme.dpi);
            break;
        }
        if (!vorgabe.eigeneAuflösung && eigene && *eigene != vorgabe.aufnahme.dpi) {
            sätze << t(Meldung::AuflösungVorgegeben).arg(vorgabe.aufnahme.dpi).arg(*eigene);
            break;
        }
    }
    return sätze;
}

std::optional<Auswertungsprobe> lies(const QString& datei, const Auswertungsvorgabe& vorgabe,
                                     const Batchumgebung& umgebung) {
    const std::optional<QByteArray> bytes = liesOderMelde(umgebung, datei);
    if (!bytes) {
        return std::nullopt;
    }
    const auto gelesen = liesKoordinaten(*bytes, vorgabe.messart);
    if (const auto* problem = std::get_if<Leseproblem>(&gelesen)) {
        melde(umgebung, datei, *problem);
        return std::nullopt;
    }
    const auto& koordinaten = std::get<Koordinaten>(gelesen);
    Auswertungsprobe probe = werteAus(datei, koordinaten, vorgabe);
    probe.annahmen = annahmen(koordinaten, vorgabe, umgebung.texte);
    if (const QString ungeprüft = ungeprüfttext(probe.reihe, umgebung.texte);
        !ungeprüft.isEmpty()) {
        probe.annahmen << ungeprüft + u'.';
    }
    return probe;
}

QByteArray ausgabe(const std::vector<Auswertungsprobe>& proben, Ausgabeformat format,
                   const Texte& texte) {
    switch (format) {
    case Ausgabeformat::Csv:
        return alsCsv(proben);
    case Ausgabeformat::Json:
        return alsJson(proben, texte);
    case Ausgabeformat::Text:
        break;
    }
    return alsText(proben, texte);
}

} // namespace

Status evaluate(const Auswertungsbefehl& befehl, const Batchumgebung& umgebung) {
    const auto einstellungen = ladeEinstellungen(umgebung, befehl.ini);
    if (!einstellungen) {
        return Status::NichtLesbar;
    }
    auto rasse = wähleRasse(umgebung, *einstellungen, befehl.rasse);
    if (!rasse) {
        return Status::FalscherAufruf;
    }
    if (!befehl.standard.isEmpty() && !nimmStandard(umgebung, befehl.standard, *rasse)) {
        return Status::NichtLesbar;
    }
    const int dpi =
        befehl.dpi.value_or(scannerauflösung(einstellungen->zahl(Einstellung::ScannMessung)));
    const Auswertungsvorgabe vorgabe{.messart = befehl.messart,
                                     .aufnahme = {befehl.zoom, dpi},
                                     .eigeneAuflösung = !befehl.dpi,
                                     .tiere = befehl.tiere,
                                     .rasse = rasse->name,
                                     .standard = rasse->standard,
                                     .regeln = ladeUrteilsregeln(*einstellungen),
                                     .format = umgebung.format};
    std::vector<Auswertungsprobe> proben;
    bool alleGelesen = true;
    for (const QString& datei : befehl.dateien) {
        if (auto probe = lies(datei, vorgabe, umgebung)) {
            proben.push_back(std::move(*probe));
        } else {
            alleGelesen = false;
        }
    }
    if (!alleGelesen) {
        return Status::NichtLesbar;
    }
    for (const Auswertungsprobe& probe : proben) {
        for (const QString& annahme : probe.annahmen) {
            melde(umgebung, probe.datei, annahme);
        }
        for (const Flügelmangel& mangel : probe.mängel) {
            melde(umgebung, probe.datei, text(mangel, umgebung.texte), mangel.zeile);
        }
    }
    return schreibe(umgebung, {},
                    ausgabetext(umgebung, {}, ausgabe(proben, befehl.format, umgebung.texte)));
}

} // namespace tarvel
