#include "collection/koloniewerte.h"

#include "collection/inhaltsmarke.h"
#include "evaluation/achsen.h"
#include "evaluation/klassen.h"
#include "evaluation/rassen.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarvel {

namespace {

constexpr float Chartwerte::*Größenwert[] = {&Chartwerte::CI, &Chartwerte::HI, &Chartwerte::DV};

float Chartwerte::*wertVon(Größe g) {
    return Größenwert[static_cast<std::size_t>(g)];
}

void zähleKlasse(Indexwerte& werte, int klasse) {
    const bool drin = klasse > 0 && klasse < static_cast<int>(Indexwerte::Klassenzahl);
    quint8& zahl = werte.klassen.at(drin ? static_cast<std::size_t>(klasse) : 0);
    zahl = static_cast<quint8>(std::min<int>(zahl + 1, std::numeric_limits<quint8>::max()));
}

/// Classes of CI and HI are those of the lines, which the judgement counts, too.
void zähleKlassen(Koloniewerte& k, const Messreihe& reihe) {
    for (const CiZeile& zeile : reihe.ciZeilen()) {
        if (!reihe.ausgelassen(zeile.nummer)) {
            zähleKlasse(k[Größe::CI], klasseAusPosition(zeile.klasse));
        }
    }
    for (const HiDvZeile& zeile : reihe.hiDvZeilen()) {
        if (reihe.ausgelassen(zeile.nummer)) {
            continue;
        }
        const Chartwerte& werte = reihe.chartwerte(zeile.nummer);
        if (werte.HI != Chartwerte::KeinWert) {
            zähleKlasse(k[Größe::HI], klasseAusPosition(zeile.klasse));
        }
        if (werte.DV != Chartwerte::KeinWert) {
            const double teile = feinheit(Größe::DV);
            const double wert = std::round(static_cast<double>(werte.DV) * teile) / teile;
            zähleKlasse(k[Größe::DV], klasseDV(wert));
        }
    }
}

/// Resolution of the wings whose discoidal shift counts; @p zeile that of the row, for wings
/// without points.
int auflösungVon(const Messreihe& reihe, std::optional<int> zeile) {
    std::optional<int> gemeinsam;
    for (const int nummer : reihe.gewertete()) {
        if (reihe.chartwerte(nummer).DV == Chartwerte::KeinWert) {
            continue;
        }
        const Flügelmessung* messung = reihe.messung(nummer);
        const int dpi =
            messung != nullptr ? messung->aufnahme.dpi : zeile.value_or(Koloniewerte::Unbekannt);
        if (gemeinsam && *gemeinsam != dpi) {
            return Koloniewerte::Gemischt;
        }
        gemeinsam = dpi;
    }
    return std::max(gemeinsam ? *gemeinsam : zeile.value_or(Koloniewerte::Unbekannt),
                    Koloniewerte::Unbekannt);
}

void rechne(Indexwerte& ziel, const std::vector<float>& werte, std::optional<double> grenze,
            double teile) {
    const std::optional<Kennzahlen> zahlen = kennzahlen(werte);
    if (!zahlen) {
        return;
    }
    ziel.kennzahlen = *zahlen;
    if (!grenze) {
        return;
    }
    const double linie = std::round(*grenze * teile);
    for (const float wert : werte) {
        if (wert != Chartwerte::KeinWert) {
            const double stelle = std::round(static_cast<double>(wert) * teile);
            ziel.unter += stelle < linie ? 1 : 0;
            ziel.über += stelle > linie ? 1 : 0;
        }
    }
}

} // namespace

int Koloniewerte::flügel() const {
    int meiste = 0;
    for (const Indexwerte& werte : index) {
        meiste = std::max(meiste, werte.kennzahlen.anzahl);
    }
    return meiste;
}

int klassenzahl(Größe größe) {
    return größe == Größe::CI ? KlassenzahlCI : größe == Größe::HI ? KlassenzahlHI : KlassenzahlDV;
}

double feinheit(Größe größe) {
    return größe == Größe::HI ? 1000 : 100;
}

std::optional<Koloniegrenzen> Kolonieregeln::grenzen(int rasse, Geschlecht tiere) const {
    if (rasse < 0 || rasse >= static_cast<int>(linien.size())) {
        return std::nullopt;
    }
    const Grenzlinien& l = linien[static_cast<std::size_t>(rasse)];
    const Linienwerte werte = l.geltende(tiere);
    return Koloniegrenzen{{werte.CI.wert(), werte.HI.wert(), werte.DV.wert()}, l.darunter()};
}

quint64 Kolonieregeln::marke() const {
    Inhaltsmarke marke;
    for (int rasse = 0; rasse < static_cast<int>(linien.size()); ++rasse) {
        for (const Geschlecht tiere : {Geschlecht::Arbeiterinnen, Geschlecht::Drohnen}) {
            const std::optional<Koloniegrenzen> g = grenzen(rasse, tiere);
            for (const double wert : g->werte) {
                marke.füge(QByteArray::number(wert, 'g', 9));
            }
        }
        marke.füge(satz.rassen.value(rasse).toUtf8());
    }
    return marke.wert();
}

Kolonieregeln kolonieregeln(const Satzumgebung& satz, const Einstellungen& einstellungen) {
    Kolonieregeln regeln{.satz = satz, .linien = {}};
    for (int rasse = 1; rasse <= Rassenzahl; ++rasse) {
        regeln.linien.push_back(ladeRassestandard(rasse, einstellungen).linien);
    }
    return regeln;
}

Koloniewerte koloniewerte(const Ergebnissatz& satz, const Kolonieregeln& regeln) {
    const GeleseneUntersuchung gelesen = untersuchungAus(satz, regeln.satz);
    const Kolonieangaben& a = gelesen.angaben;
    const Messreihe& reihe = gelesen.reihe;
    Koloniewerte k;
    k.UNr = a.UNr.trimmed();
    k.Satznummer = satz.U_NR;
    k.Volk = a.Volk.trimmed();
    k.Königin = a.KNr.trimmed();
    k.Züchter = a.Name.trimmed();
    k.Besitzer = a.Besitzer.trimmed();
    k.Begattung = a.Begattung.trimmed();
    k.Rasse = satz.RASSE.trimmed();
    k.rasse = a.Rassenname.isEmpty() ? a.Rasse : Koloniewerte::OhneRasse;
    if (k.rasse >= 0) {
        k.Rasse = regeln.satz.rassen.value(k.rasse);
    }
    k.tiere = a.Tiere;
    k.datum = gelesen.datum;
    k.urteil = gelesen.urteil;
    k.dpi = auflösungVon(reihe, gelesen.auflösung);
    k.ausgelassen = static_cast<int>(reihe.ausgelassene().size());
    k.teilweise = !gelesen.nichtGelesen.isEmpty();
    if (gelesen.nichtGelesen.contains(QStringLiteral("A_D"))) {
        return k; // workers or drones: its figures belong to neither
    }
    const std::optional<Koloniegrenzen> grenzen = regeln.grenzen(k.rasse, k.tiere);
    for (const Größe g : Größen) {
        rechne(k[g], werte(reihe, wertVon(g)),
               grenzen ? std::optional((*grenzen)[g]) : std::nullopt, feinheit(g));
    }
    zähleKlassen(k, reihe);
    return k;
}

} // namespace tarvel
