#include "collection/tabellenausfuhr.h"

#include "evaluation/merkmale.h"
#include "measure/reihenmodelle.h"
#include "measure/statistik.h"
#include "results/ausfuhr.h"

#include <array>
#include <cmath>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array Untersuchungsspalten{
    Ausfuhrspalte{"examination", "TEXT", "number of the examination, the key of all tables"},
    Ausfuhrspalte{"date", "TEXT", "date of the examination, year-month-day"},
    Ausfuhrspalte{"breeder", "TEXT", "breeder of the queen"},
    Ausfuhrspalte{"owner", "TEXT", "owner of the colony"},
    Ausfuhrspalte{"colony", "TEXT", "name or number of the colony"},
    Ausfuhrspalte{"mating", "TEXT", "mating of the queen"},
    Ausfuhrspalte{"queen", "TEXT", "number of the queen"},
    Ausfuhrspalte{"year", "TEXT", "year of the queen"},
    Ausfuhrspalte{"region", "TEXT", "number of the regional association"},
    Ausfuhrspalte{"breeder_number", "TEXT", "number of the breeder in it"},
    Ausfuhrspalte{"race", "TEXT", "race whose standard it is judged by"},
    Ausfuhrspalte{"caste", "TEXT", "workers or drones; empty when that cannot be read"},
    Ausfuhrspalte{"conforms", "TEXT", "stored verdict: yes, no, not judged"},
    Ausfuhrspalte{"examiner", "TEXT", "who measured it, where that is known"},
    Ausfuhrspalte{"source", "TEXT", "file that it was taken over from, if any"},
    Ausfuhrspalte{"wings", "INTEGER", "wings that count"},
    Ausfuhrspalte{"wings_left_out", "INTEGER", "wings that are left out of the sample"},
    Ausfuhrspalte{"ci_mean", "REAL", "mean cubital index of the wings that count"},
    Ausfuhrspalte{"ci_sd", "REAL", "its standard deviation, with n - 1"},
    Ausfuhrspalte{"hi_mean", "REAL", "mean hantel index"},
    Ausfuhrspalte{"hi_sd", "REAL", "its standard deviation, with n - 1"},
    Ausfuhrspalte{"dv_mean", "REAL", "mean discoidal shift, in 1/20 mm related to the wing's size"},
    Ausfuhrspalte{"dv_sd", "REAL", "its standard deviation, with n - 1"}};
constexpr std::array Flügelspalten{
    Ausfuhrspalte{"examination", "TEXT", "number of the examination"},
    Ausfuhrspalte{"wing", "INTEGER", "number of the wing in it, from 1"},
    Ausfuhrspalte{"left_out", "INTEGER", "1: not part of the sample"},
    Ausfuhrspalte{"ci", "REAL", "cubital index"},
    Ausfuhrspalte{"hi", "REAL", "hantel index"},
    Ausfuhrspalte{"dv", "REAL", "discoidal shift, in 1/20 mm related to the wing's size"},
    Ausfuhrspalte{"dpi", "INTEGER", "resolution of the scan, in dots per inch"},
    Ausfuhrspalte{"picture", "TEXT", "picture file, as it was called when it was measured"},
    Ausfuhrspalte{"picture_width", "INTEGER", "width of the picture in pixels"},
    Ausfuhrspalte{"picture_height", "INTEGER", "height of the picture in pixels"},
    Ausfuhrspalte{"checked", "INTEGER",
                  "0: measured by the program alone, nobody looked at its points"}};
constexpr std::array Punktspalten{
    Ausfuhrspalte{"examination", "TEXT", "number of the examination"},
    Ausfuhrspalte{"wing", "INTEGER", "number of the wing in it"},
    Ausfuhrspalte{"point", "INTEGER", "number of the measuring point, 1 to 8"},
    Ausfuhrspalte{"x", "REAL", "pixels of the scan from its left edge"},
    Ausfuhrspalte{"y", "REAL", "pixels of the scan from its upper edge"},
    Ausfuhrspalte{"origin", "TEXT",
                  "clicked, key, moved, proposed, file; empty when it is not known"}};
constexpr std::array Merkmalspalten{
    Ausfuhrspalte{"examination", "TEXT", "number of the examination"},
    Ausfuhrspalte{"code", "TEXT", "code of the body mark, as the program writes it"},
    Ausfuhrspalte{"bees", "INTEGER", "bees that have it"},
    Ausfuhrspalte{"of", "INTEGER", "bees whose marks were recorded"}};
constexpr std::array Wörterbuchspalten{
    Ausfuhrspalte{"table", "TEXT", "name of the table"},
    Ausfuhrspalte{"column", "TEXT", "name of the column"},
    Ausfuhrspalte{"type", "TEXT", "TEXT, INTEGER or REAL"},
    Ausfuhrspalte{"meaning", "TEXT", "what it holds, with its unit"}};

enum Tabelle : std::size_t { Untersuchungen, Flügel, Punkte, Codes, Wörterbuch };
constexpr std::array Tabellen{
    Ausfuhrtabelle{"examinations", Untersuchungsspalten}, Ausfuhrtabelle{"wings", Flügelspalten},
    Ausfuhrtabelle{"points", Punktspalten}, Ausfuhrtabelle{"marks", Merkmalspalten},
    Ausfuhrtabelle{"columns", Wörterbuchspalten}};

QVariant zahl(float wert) {
    return wert == Chartwerte::KeinWert ? QVariant() : QVariant(wert);
}

QVariant positiv(int wert) {
    return wert > 0 ? QVariant(wert) : QVariant();
}

} // namespace

std::span<const Ausfuhrtabelle> ausfuhrtabellen() {
    return Tabellen;
}

Tabellenausfuhr::Tabellenausfuhr(Tabellenziel& ziel)
    : ziel_(ziel) {
    for (const Ausfuhrtabelle& tabelle : Tabellen) {
        for (const Ausfuhrspalte& spalte : tabelle.spalten) {
            ziel_.zeile(Wörterbuch,
                        {QString::fromLatin1(tabelle.name), QString::fromLatin1(spalte.name),
                         QString::fromLatin1(spalte.art), QString::fromLatin1(spalte.bedeutung)});
        }
    }
}

QStringList Tabellenausfuhr::nimm(const Ergebnissatz& satz, const Satzumgebung& umgebung) {
    const GeleseneUntersuchung gelesen = untersuchungAus(satz, umgebung);
    const Kolonieangaben& a = gelesen.angaben;
    const Messreihe& reihe = gelesen.reihe;
    const QString nummer = satz.U_NR.trimmed();
    const QString urteil = !gelesen.urteil ? u"not judged"_s : *gelesen.urteil ? u"yes"_s : u"no"_s;
    QVariantList zeile{nummer,
                       gelesen.datum.toString(Qt::ISODate),
                       a.Name.trimmed(),
                       a.Besitzer.trimmed(),
                       a.Volk.trimmed(),
                       a.Begattung.trimmed(),
                       a.KNr.trimmed(),
                       a.Jahr.trimmed(),
                       a.LV.trimmed(),
                       a.ZNr.trimmed(),
                       satz.RASSE.trimmed(),
                       gelesen.nichtGelesen.contains(u"A_D"_s) ? QString()
                       : a.Tiere == Geschlecht::Drohnen        ? u"drones"_s
                                                               : u"workers"_s,
                       urteil,
                       gelesen.zusatz.Untersucher,
                       gelesen.zusatz.Herkunft,
                       static_cast<int>(std::ssize(reihe.gewertete())),
                       static_cast<int>(std::ssize(reihe.ausgelassene()))};
    for (const auto index : {&Chartwerte::CI, &Chartwerte::HI, &Chartwerte::DV}) {
        const auto k = kennzahlen(werte(reihe, index));
        zeile << (k ? QVariant(k->mittelwert) : QVariant())
              << (k && k->standardabweichung ? QVariant(*k->standardabweichung) : QVariant());
    }
    ziel_.zeile(Untersuchungen, zeile);
    for (const int flügel : reihe.nummern()) {
        const Chartwerte& w = reihe.chartwerte(flügel);
        const Flügelmessung* m = reihe.messung(flügel);
        const Flügelmessung messung = m == nullptr ? Flügelmessung{} : *m;
        ziel_.zeile(Flügel,
                    {nummer, flügel, reihe.ausgelassen(flügel) ? 1 : 0, zahl(w.CI), zahl(w.HI),
                     zahl(w.DV), m == nullptr ? QVariant() : positiv(messung.aufnahme.dpi),
                     messung.bilddatei, positiv(messung.bild.größe.width()),
                     positiv(messung.bild.größe.height()),
                     m == nullptr ? QVariant() : QVariant(messung.ungeprüft ? 0 : 1)});
        for (std::size_t i = 1; m != nullptr && i <= Messpunkte::Anzahl; ++i) {
            if (messung.punkte.PunktX[i] != Messpunkte::NichtGemessen) {
                const auto zoom = static_cast<float>(messung.aufnahme.Zoomfaktor);
                ziel_.zeile(Punkte,
                            {nummer, flügel, static_cast<int>(i), messung.punkte.PunktX[i] / zoom,
                             messung.punkte.PunktY[i] / zoom,
                             ursprung(messung.punkte.Herkunft[i]).toString()});
            }
        }
    }
    const Merkmalauswertung marken = MerkmaleAuswerten(gelesen.merkmale, umgebung.OhneHaarlänge);
    const std::vector<QString> codes = merkmalcodes(a.Tiere);
    for (std::size_t i = 0; i < codes.size() && marken.Bienen > 0; ++i) {
        ziel_.zeile(Codes, {nummer, codes[i], marken.Anzahl.at(i), marken.Bienen});
    }
    return gelesen.nichtGelesen;
}

} // namespace tarvel
