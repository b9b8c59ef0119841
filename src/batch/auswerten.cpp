#include "batch/auswerten.h"

#include "batch/auswertungsausgabe.h"
#include "measure/aufloesung.h"

#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

Auswertungsprobe werteAus(const QString& datei, const Koordinaten& koordinaten,
                          const Auswertungsvorgabe& vorgabe) {
    Koordinatenreihe gelesen =
        reiheAus(koordinaten, vorgabe.messart, vorgabe.aufnahme, vorgabe.format);
    Auswertungsprobe probe;
    probe.datei = datei;
    probe.vorgabe = vorgabe;
    probe.reihe = std::move(gelesen.reihe);
    probe.mängel = std::move(gelesen.mängel);
    for (std::size_t i = 0; i < koordinaten.flügel.size(); ++i) {
        probe.flügel.push_back({static_cast<int>(i) + 1, koordinaten.flügel[i].bezeichnung(),
                                std::move(gelesen.messungen[i]), std::nullopt});
    }
    probe.beurteilung =
        urteile(vorgabe.tiere, probe.reihe, {}, vorgabe.standard, {vorgabe.BewertungAktiv})
            .beurteilung;
    return probe;
}

namespace {

std::optional<Auswertungsprobe> lies(const QString& datei, const Auswertungsvorgabe& vorgabe,
                                     const Batchumgebung& umgebung) {
    const std::optional<QByteArray> bytes = lesenOderMelden(umgebung, datei);
    if (!bytes) {
        return std::nullopt;
    }
    const auto gelesen = liesKoordinaten(*bytes);
    if (const auto* problem = std::get_if<Leseproblem>(&gelesen)) {
        melde(umgebung, datei, *problem);
        return std::nullopt;
    }
    return werteAus(datei, std::get<Koordinaten>(gelesen), vorgabe);
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
    const auto rasse = wähleRasse(umgebung, *einstellungen, befehl.rasse);
    if (!rasse) {
        return Status::FalscherAufruf;
    }
    const int dpi =
        befehl.dpi.value_or(scannerauflösung(einstellungen->zahl(Einstellung::ScannMessung)));
    const Auswertungsvorgabe vorgabe{.messart = befehl.messart,
                                     .aufnahme = {befehl.zoom, dpi},
                                     .tiere = befehl.tiere,
                                     .rasse = rasse->name,
                                     .standard = rasse->standard,
                                     .BewertungAktiv =
                                         einstellungen->schalter(Einstellung::Beurteilung),
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
        for (const Flügelmangel& mangel : probe.mängel) {
            melde(umgebung, probe.datei, text(mangel, umgebung.texte), mangel.zeile);
        }
    }
    return schreibe(umgebung, {}, ausgabe(proben, befehl.format, umgebung.texte));
}

} // namespace tarvel
