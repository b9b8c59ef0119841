#include "results/ausfuhr.h"

#include "measure/statistik.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

struct Größe {
    const char* name;
    float Chartwerte::*wert;
};
constexpr std::array Größen{Größe{"ci", &Chartwerte::CI}, Größe{"hi", &Chartwerte::HI},
                            Größe{"dv", &Chartwerte::DV}};

QByteArray kopf(Ausfuhrart art) {
    if (art == Ausfuhrart::Flügel) {
        return "examination,date,race,caste,wing,ci,ci_class,hi,hi_class,dv,file,dpi,zoom," +
               punktspalten() + ",left_out,points_from,checked";
    }
    QByteArray kopf = "examination,date,year,queen,region,breeder_number,breeder,owner,colony,"
                      "mating,race,caste,conforms,dpi,wings,wings_left_out";
    for (const Größe& g : Größen) {
        for (const char* figur : {"n", "mean", "sd", "min", "max"}) {
            kopf += QByteArray(",") + g.name + '_' + figur;
        }
    }
    return kopf + ",marks_bees,marks";
}

QString urteilsspalte(std::optional<bool> urteil) {
    return urteil ? *urteil ? u"yes"_s : u"no"_s : u"not judged"_s;
}

QByteArray zahl(std::optional<double> zahl) {
    constexpr int stellen = 7; // all that the mean of singles has
    return zahl ? QByteArray::number(*zahl, 'g', stellen) : QByteArray();
}

QByteArray wert(float wert) {
    return wert == Chartwerte::KeinWert ? QByteArray() : vollerWert(wert);
}

QByteArray klasse(float index, float (*position)(float)) {
    return wert(index == Chartwerte::KeinWert ? index : position(index));
}

QString tiere(const Kolonieangaben& angaben) {
    return angaben.Tiere == Geschlecht::Drohnen ? u"drones"_s : u"workers"_s;
}

/// A word for each of the points 1 to 8, "-" where it is not known.
QString ursprünge(const Flügelmessung& messung) {
    QStringList worte;
    for (std::size_t i = 1; i <= Messpunkte::Anzahl; ++i) {
        const QStringView wort = ursprung(messung.punkte.Herkunft[i]);
        worte << (wort.isEmpty() ? u"-"_s : wort.toString());
    }
    return worte.join(u' ');
}

} // namespace

QStringView ursprung(Punktherkunft herkunft) {
    constexpr std::array<QStringView, 6> Worte{u"",      u"clicked",  u"key",
                                               u"moved", u"proposed", u"file"};
    return Worte.at(static_cast<std::size_t>(herkunft));
}

Ausfuhr::Ausfuhr(Ausfuhrart art, Bildhöhe bildhöhe)
    : art_(art)
    , bildhöhe_(std::move(bildhöhe))
    , tabelle_(kopf(art)) {}

QStringList Ausfuhr::nimm(const Ergebnissatz& satz, const Satzumgebung& umgebung) {
    const GeleseneUntersuchung gelesen = untersuchungAus(satz, umgebung);
    switch (art_) {
    case Ausfuhrart::Untersuchungen:
        nimmUntersuchung(satz, gelesen);
        break;
    case Ausfuhrart::Flügel:
        nimmFlügel(satz, gelesen);
        break;
    case Ausfuhrart::Tps:
        nimmPunkte(satz, gelesen);
        break;
    }
    return gelesen.nichtGelesen;
}

const QByteArray& Ausfuhr::inhalt() const {
    return art_ == Ausfuhrart::Tps ? tps_.inhalt : tabelle_.csv();
}

void Ausfuhr::nimmUntersuchung(const Ergebnissatz& satz, const GeleseneUntersuchung& gelesen) {
    const Kolonieangaben& a = gelesen.angaben;
    const Messreihe& reihe = gelesen.reihe;
    for (const QString& text :
         {satz.U_NR, gelesen.datum.toString(Qt::ISODate), a.Jahr, a.KNr, a.LV, a.ZNr, a.Name,
          a.Besitzer, a.Volk, a.Begattung, satz.RASSE, tiere(a), urteilsspalte(gelesen.urteil)}) {
        tabelle_.text(text);
    }
    tabelle_.zelle(gelesen.auflösung ? QByteArray::number(*gelesen.auflösung) : QByteArray());
    tabelle_.zelle(QByteArray::number(std::ssize(reihe.gewertete())));
    tabelle_.zelle(QByteArray::number(std::ssize(reihe.ausgelassene())));
    for (const Größe& g : Größen) {
        const auto k = kennzahlen(werte(reihe, g.wert));
        tabelle_.zelle(QByteArray::number(k ? static_cast<qsizetype>(k->anzahl) : 0));
        tabelle_.zelle(zahl(k ? std::optional(k->mittelwert) : std::nullopt));
        tabelle_.zelle(zahl(k ? k->standardabweichung : std::nullopt));
        tabelle_.zelle(zahl(k ? std::optional(k->minimum) : std::nullopt));
        tabelle_.zelle(zahl(k ? std::optional(k->maximum) : std::nullopt));
    }
    const QString prozent = satz.PROZENT.trimmed();
    const qsizetype anteile = prozent.lastIndexOf(u';');
    tabelle_.text(prozent.sliced(anteile + 1));
    tabelle_.text(prozent.left(std::max<qsizetype>(anteile, 0)));
    tabelle_.zeilenende();
}

void Ausfuhr::nimmFlügel(const Ergebnissatz& satz, const GeleseneUntersuchung& gelesen) {
    for (const int nummer : gelesen.reihe.nummern()) {
        for (const QString& text : {satz.U_NR, gelesen.datum.toString(Qt::ISODate), satz.RASSE,
                                    tiere(gelesen.angaben), QString::number(nummer)}) {
            tabelle_.text(text);
        }
        const Chartwerte& w = gelesen.reihe.chartwerte(nummer);
        for (const QByteArray& zelle : {wert(w.CI), klasse(w.CI, klassenpositionCI), wert(w.HI),
                                        klasse(w.HI, klassenpositionHI), wert(w.DV)}) {
            tabelle_.zelle(zelle);
        }
        const Flügelmessung* messung = gelesen.reihe.messung(nummer);
        // Read again, the points would be taken for places on that picture.
        tabelle_.text(messung == nullptr || messung->ohneBildhöhe ? QString() : messung->bilddatei);
        tabelle_.text(messung == nullptr ? QString() : QString::number(messung->aufnahme.dpi));
        tabelle_.text(messung == nullptr ? QString()
                                         : QString::number(messung->aufnahme.Zoomfaktor));
        schreibePunkte(tabelle_, messung == nullptr ? Flügelmessung{} : *messung);
        tabelle_.text(gelesen.reihe.ausgelassen(nummer) ? u"yes"_s : u"no"_s);
        tabelle_.text(messung == nullptr ? QString() : ursprünge(*messung));
        tabelle_.text(messung == nullptr ? QString() : messung->ungeprüft ? u"no"_s : u"yes"_s);
        tabelle_.zeilenende();
    }
}

void Ausfuhr::nimmPunkte(const Ergebnissatz& satz, const GeleseneUntersuchung& gelesen) {
    std::vector<Ausgabeflügel> flügel;
    // Wings of a sample are on few pictures.
    std::map<QString, std::optional<float>> höhen;
    const auto höheDerDatei = [&](const QString& pfad) {
        const auto [höhe, neu] = höhen.try_emplace(pfad);
        if (neu && bildhöhe_) {
            höhe->second = bildhöhe_(pfad);
        }
        return höhe->second;
    };
    for (const auto& [nummer, messung] : gelesen.reihe.messungen()) {
        const QSize größe = messung.bild.größe;
        std::optional<float> höhe;
        if (größe.isValid()) {
            höhe = static_cast<float>(größe.height());
        } else if (!messung.ohneBildhöhe) {
            höhe = höheDerDatei(messung.bilddatei);
        }
        flügel.push_back({.nummer = nummer,
                          .name = satz.U_NR.trimmed() + u'/' + QString::number(nummer),
                          .messung = messung,
                          .bildhöhe = höhe});
    }
    const Tps tps = alsTps(flügel);
    tps_.inhalt += tps.inhalt;
    tps_.ohneBildhöhe += tps.ohneBildhöhe;
}

} // namespace tarvel
