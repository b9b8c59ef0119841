#include "evaluation/beurteilung.h"

#include "measure/statistik.h"
#include "settings/einstellungen.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// A mark of the report and the allowed share of the standard.
struct Merkmalgrenze {
    QStringView code;
    const QString& erlaubt;
};

std::vector<Merkmalgrenze> merkmalgrenzen(Geschlecht tiere, const Rassestandard& standard) {
    if (tiere == Geschlecht::Drohnen) {
        const Drohnenstandard& d = standard.drohnen;
        return {{u"O", d.Panzer[0]},     {u"I", d.Panzer[1]},     {u"1R", d.Panzer[2]},
                {u"2R", d.Panzer[3]},    {u"gr", d.Haarfarbe[0]}, {u"br", d.Haarfarbe[1]},
                {u"ge", d.Haarfarbe[2]}, {u"sch", d.Haarfarbe[3]}};
    }
    const Arbeiterinnenstandard& a = standard.arbeiterinnen;
    return {{u"O", a.Panzer[0]},    {u"E", a.Panzer[1]},    {u"1R", a.Panzer[2]},
            {u"2R", a.Panzer[3]},   {u"k", a.Haarlänge[0]}, {u"m", a.Haarlänge[1]},
            {u"l", a.Haarlänge[2]}, {u"F", a.Filz[0]},      {u"ff", a.Filz[1]},
            {u"f", a.Filz[2]}};
}

/// A range of classes with the allowed share of wings.
struct Klassengrenze {
    QStringView name;
    const QString& bereich;
    const QString& erlaubt;
};

std::vector<Klassengrenze> klassengrenzen(Geschlecht tiere, const Rassestandard& standard) {
    if (tiere == Geschlecht::Drohnen) {
        return {{u"Klasse 3", standard.drohnen.Klasse, standard.drohnen.max}};
    }
    const Arbeiterinnenstandard& a = standard.arbeiterinnen;
    return {{u"Klasse 0", a.Klasse[0], a.max[0]}, {u"Klasse 1", a.Klasse[1], a.max[1]}};
}

void prüfeMerkmale(Beurteilung& beurteilung, const Probe& probe, const Rassestandard& standard) {
    // One text for the search: the groups' codes differ.
    const QString alle = probe.Merkmale.join(u"  "_s);
    for (const auto& [code, erlaubt] : merkmalgrenzen(probe.Tiere, standard)) {
        Prüfwert wert{
            Prüfung::Merkmal, code.toString(), {}, merkmalanteil(alle, code), prozentzahl(erlaubt)};
        wert.fett = wert.gemessen && wert.erlaubt < *wert.gemessen;
        beurteilung.werte.push_back(wert);
    }
}

void prüfeMittelwert(Beurteilung& beurteilung, const Probe& probe, const Rassestandard& standard) {
    const Mittelgrenze& grenze = standard.mittelgrenze(probe.Tiere);
    if (!grenze.gilt()) {
        return;
    }
    Prüfwert wert{.art = Prüfung::Mittelwert,
                  .name = u"CI"_s,
                  .bereich = {},
                  .gemessen = {},
                  .erlaubt = grenze.Mittelwert.wert(),
                  .mittel = probe.MittelwertCI,
                  .höchstens = grenze.unter()};
    if (wert.mittel) {
        // Indices are singles, so a mean that equals the limit may differ from it this far.
        constexpr double Rechenfehler = 1e-6;
        const double zuviel =
            wert.höchstens ? *wert.mittel - wert.erlaubt : wert.erlaubt - *wert.mittel;
        wert.fett = zuviel > Rechenfehler;
    }
    beurteilung.werte.push_back(wert);
}

void prüfeKlassen(Beurteilung& beurteilung, const Probe& probe, const Rassestandard& standard) {
    const auto flügel = static_cast<int>(probe.Klassen.size());
    for (const auto& [name, text, erlaubt] : klassengrenzen(probe.Tiere, standard)) {
        const Klassenbereich bereich = klassenbereich(text);
        Prüfwert wert{Prüfung::Klassen, name.toString(), bereich, {}, prozentzahl(erlaubt)};
        const Anteil anteil =
            klassenanteil(ZähleKlassen(probe.Klassen, bereich.von, bereich.bis), flügel);
        if (!anteil.fehler) {
            wert.gemessen = anteil.prozent;
            wert.fett = wert.erlaubt < anteil.prozent;
        } else if (flügel > 0) {
            beurteilung.fehler = anteil.fehler;
        }
        beurteilung.werte.push_back(wert);
    }
}

void prüfeNebengipfel(Beurteilung& beurteilung, const Probe& probe, const Rassestandard& standard) {
    const Klassenbereich bereich = klassenbereich(standard.arbeiterinnen.Klasse[2]);
    Prüfwert wert{Prüfung::Nebengipfel, u"Klasse 2"_s, bereich, {}};
    if (!probe.Klassen.empty()) {
        const Gipfel befund = gipfel(probe.Klassen, bereich);
        wert.gemessen = befund.größte;
        wert.erlaubt = befund.bezug;
        wert.fett = befund.nebengipfel();
        if (wert.fett) {
            beurteilung.nebengipfel = befund.klasse;
        }
    }
    beurteilung.werte.push_back(wert);
}

} // namespace

std::vector<Prüfwert> Beurteilung::mängel() const {
    std::vector<Prüfwert> verfehlt;
    std::copy_if(werte.begin(), werte.end(), std::back_inserter(verfehlt),
                 [](const Prüfwert& wert) { return wert.fett; });
    return verfehlt;
}

std::optional<bool> Beurteilung::urteil() const {
    return unbeurteilt ? std::nullopt : std::optional(EntsprichtRasse);
}

Beurteilung beurteile(const Probe& probe, const Rassestandard& standard, bool BewertungAktiv) {
    Beurteilung beurteilung;
    beurteilung.BewertungAktiv = BewertungAktiv;
    beurteilung.fehler = probe.Merkmalfehler;
    prüfeMerkmale(beurteilung, probe, standard);
    prüfeMittelwert(beurteilung, probe, standard);
    prüfeKlassen(beurteilung, probe, standard);
    if (probe.Tiere == Geschlecht::Arbeiterinnen) {
        prüfeNebengipfel(beurteilung, probe, standard);
    }
    if (!BewertungAktiv) {
        // Without the judgement the values are shown, but none is marked.
        for (Prüfwert& wert : beurteilung.werte) {
            wert.fett = false;
        }
        beurteilung.nebengipfel.reset();
    }
    beurteilung.EntsprichtRasse =
        beurteilung.mängel().empty() && !(BewertungAktiv && beurteilung.fehler);
    beurteilung.unbeurteilt = !BewertungAktiv      ? std::optional(Unbeurteilt::Ausgeschaltet)
                              : probe.leer()       ? std::optional(Unbeurteilt::NichtsGemessen)
                              : beurteilung.fehler ? std::optional(Unbeurteilt::AnteilUnberechenbar)
                                                   : std::nullopt;
    beurteilung.umfang.Flügel = static_cast<int>(probe.Klassen.size());
    return beurteilung;
}

Urteilsregeln ladeUrteilsregeln(const Einstellungen& einstellungen) {
    return {.BewertungAktiv = einstellungen.schalter(Einstellung::Beurteilung),
            .OhneHaarlänge = einstellungen.schalter(Einstellung::OhneHaarlänge),
            .SollFlügel = einstellungen.zahl(Einstellung::SollFlügel),
            .SollBienen = einstellungen.zahl(Einstellung::SollBienen)};
}

Urteil urteile(const Prüfling& prüfling, const Rassestandard& standard,
               const Urteilsregeln& regeln) {
    Urteil urteil{.merkmale = MerkmaleAuswerten(prüfling.merkmale, regeln.OhneHaarlänge),
                  .beurteilung = {}};
    const auto ci = kennzahlen(werte(prüfling.reihe, &Chartwerte::CI));
    Beurteilung& b = urteil.beurteilung;
    b = beurteile({.Tiere = prüfling.tiere,
                   .Klassen = klassenCI(prüfling.reihe),
                   .Merkmale = urteil.merkmale.Texte,
                   .Merkmalfehler = urteil.merkmale.Fehler,
                   .MittelwertCI = ci ? std::optional(ci->mittelwert) : std::nullopt},
                  standard, regeln.BewertungAktiv && !prüfling.fremdeRasse);
    b.umfang.Bienen = urteil.merkmale.Bienen;
    b.umfang.ungleich = urteil.merkmale.Unterschiedlich;
    b.umfang.SollFlügel = regeln.SollFlügel;
    b.umfang.SollBienen = regeln.SollBienen;
    if (prüfling.fremdeRasse) {
        b.unbeurteilt = Unbeurteilt::FremdeRasse;
    } else if (regeln.BewertungAktiv && prüfling.merkmaleUnlesbar) {
        b.unbeurteilt = Unbeurteilt::MerkmaleUnlesbar;
    }
    return urteil;
}

Text urteilssatz(bool EntsprichtRasse) {
    return EntsprichtRasse ? Text::EntsprichtDenMerkmalen : Text::EntsprichtNichtDenMerkmalen;
}

Text urteilswort(bool EntsprichtRasse) {
    return EntsprichtRasse ? Text::Ja : Text::Nein;
}

} // namespace tarvel
