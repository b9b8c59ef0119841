// Coordinate files, CSV and TPS. The input is the file.

#include "fuzz/fuzz.h"
#include "measure/koordinatenausgabe.h"
#include "measure/koordinatendatei.h"
#include "measure/koordinatenreihe.h"
#include "measure/messreihe.h"
#include "measure/textdatei.h"

#include <algorithm>
#include <cmath>

using namespace tarvel;
using namespace Qt::StringLiterals;

namespace {

constexpr float HöchsteKoordinate = 1e6F;

void prüfe(const Leseproblem& problem, QByteArrayView bytes) {
    const QString text = dateitext(bytes).text;
    Zeilenleser zeilen(text);
    while (zeilen.nächste()) {
    }
    verlange(problem.zeile >= 1 && problem.zeile <= std::max(1, zeilen.nummer()),
             "a problem lies in a line of the file");
    for (const QString& zitiert : problem.texte) {
        verlange(zitiert.size() <= 40, "a problem quotes no more than a reader can use");
    }
    static const Texte texte{QString()};
    verlange(!textMitZeile(problem, texte).contains(u'\n'), "a problem is told on one line");
}

void prüfe(const Messpunkte& punkte) {
    for (int p = 1; p <= Messpunkte::Anzahl; ++p) {
        const float x = punkte.PunktX.at(p);
        const float y = punkte.PunktY.at(p);
        if (punkte.gemessen(p)) {
            verlange(x >= 0 && x <= HöchsteKoordinate && y >= 0 && y <= HöchsteKoordinate,
                     "a point lies in a picture");
        } else {
            verlange(y == Messpunkte::NichtGemessen, "a point is set or not");
        }
    }
}

std::vector<Ausgabeflügel> ausgabe(const Koordinaten& koordinaten) {
    std::vector<Ausgabeflügel> flügel;
    for (const Koordinatensatz& satz : koordinaten.flügel) {
        Flügelmessung messung;
        messung.punkte = satz.punkte;
        messung.aufnahme = {1, 1200};
        messung.bilddatei = satz.bezeichnung(); // any text has to do as a file name
        const int nummer = static_cast<int>(flügel.size()) + 1;
        flügel.push_back({nummer, {}, messung, HöchsteKoordinate});
    }
    return flügel;
}

QByteArray alsTabelle(const std::vector<Ausgabeflügel>& flügel) {
    CsvTabelle tabelle("wing,file," + punktspalten());
    for (const Ausgabeflügel& f : flügel) {
        tabelle.zelle(QByteArray::number(f.nummer));
        tabelle.text(bildname(f.messung.bilddatei));
        schreibePunkte(tabelle, f.messung);
        tabelle.zeilenende();
    }
    return tabelle.csv();
}

const Koordinaten* gelesen(const std::variant<Koordinaten, Leseproblem>& ergebnis, bool yNachOben,
                           std::size_t anzahl) {
    const auto* wieder = std::get_if<Koordinaten>(&ergebnis);
    verlange(wieder != nullptr && wieder->yNachOben == yNachOben, "what is written can be read");
    verlange(wieder->flügel.size() == anzahl, "no wing is lost");
    return wieder;
}

void prüfeAusgabe(const Koordinaten& koordinaten) {
    const std::vector<Ausgabeflügel> flügel = ausgabe(koordinaten);
    const auto tabelle = liesKoordinaten(alsTabelle(flügel));
    const auto tps = liesKoordinaten(alsTps(flügel).inhalt);
    const Koordinaten* ausTabelle = gelesen(tabelle, false, flügel.size());
    const Koordinaten* ausTps = gelesen(tps, true, flügel.size());
    for (std::size_t i = 0; i < flügel.size(); ++i) {
        const Messpunkte& punkte = flügel[i].messung.punkte;
        const Koordinatensatz& zeile = ausTabelle->flügel[i];
        verlange(zeile.punkte.PunktX == punkte.PunktX && zeile.punkte.PunktY == punkte.PunktY,
                 "a table keeps the points");
        verlange(zeile.name.toInt() == flügel[i].nummer, "a table keeps the number");
        verlange(zeile.bilddatei == bildname(flügel[i].messung.bilddatei), "and the picture");
        const Messpunkte& gedreht = ausTps->flügel[i].punkte;
        verlange(gedreht.PunktX == punkte.PunktX, "TPS keeps x");
        for (int p = 1; p <= Messpunkte::Anzahl; ++p) {
            verlange(gedreht.gemessen(p) == punkte.gemessen(p), "TPS keeps which points are set");
        }
    }
    (void)alsIndextabelle(flügel);
}

void prüfeReihe(const Koordinaten& koordinaten) {
    const auto reihe = reiheAus(koordinaten, {.aufnahme = {1, 1200}, .eigeneAuflösung = true});
    verlange(reihe.messungen.size() == koordinaten.flügel.size(), "all wings are entered");
    for (const int nummer : reihe.reihe.nummern()) {
        const Chartwerte& werte = reihe.reihe.chartwerte(nummer);
        verlange(std::isfinite(werte.CI) && std::isfinite(werte.HI) && std::isfinite(werte.DV),
                 "an index is a number");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t größe) {
    const QByteArrayView bytes = eingabe(daten, größe);
    const auto ergebnis = liesKoordinaten(bytes);
    if (const auto* problem = std::get_if<Leseproblem>(&ergebnis)) {
        prüfe(*problem, bytes);
        return 0;
    }
    const auto& koordinaten = std::get<Koordinaten>(ergebnis);
    verlange(!koordinaten.flügel.empty() &&
                 koordinaten.flügel.size() <= Messreihe::HöchsteFlügelzahl,
             "1 to 200 wings");
    for (const Koordinatensatz& satz : koordinaten.flügel) {
        prüfe(satz.punkte);
        verlange(!satz.maßstab || *satz.maßstab > 0, "a scale is above 0");
    }
    prüfeAusgabe(koordinaten);
    prüfeReihe(koordinaten);
    return 0;
}
