#include "results/satzvergleich.h"

#include "measure/statistik.h"
#include "results/datenbankfehler.h"
#include "results/satzzugriff.h"
#include "results/zeileneingabe.h"

#include <array>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// The word of caste or verdict in the program's language.
QString wort(const QString& gespeichert, const Texte& texte) {
    for (const Text text : {Text::Arbeiter, Text::Drohnen, Text::Ja, Text::Nein}) {
        if (bedeutet(gespeichert, text)) {
            return texte(text);
        }
    }
    return gespeichert;
}

QString feld(const Ergebnissatz& satz, const Textspalte& spalte, const Texte& texte) {
    if (spalte.wert == &Ergebnissatz::ERGEBNIS && unbeurteilt(satz)) {
        return texte(Meldung::NichtBeurteilt);
    }
    const QString text = (satz.*spalte.wert).trimmed();
    const bool wörtlich =
        spalte.wert != &Ergebnissatz::A_D && spalte.wert != &Ergebnissatz::ERGEBNIS;
    return wörtlich ? text : wort(text, texte);
}

QString mittel(const Messreihe& reihe, float Chartwerte::*größe, const Zahlenformat& format) {
    const auto zahlen = kennzahlen(werte(reihe, größe));
    return zahlen ? Format(zahlen->mittelwert, u"0.00", format) : QString();
}

/// What the long texts of a row say, as far as a person counts it.
std::vector<Vergleichszeile> messwerte(const Ergebnissatz& satz, const Satzumgebung& umgebung) {
    const Texte& t = umgebung.texte;
    const GeleseneUntersuchung u = untersuchungAus(satz, umgebung);
    const auto zeile = [](const QString& name, const QString& wert) {
        return Vergleichszeile{name, wert, {}};
    };
    const QString vor = t(Text::Mittelwert) + u' ';
    return {zeile(t(Meldung::SollFlügel), QString::number(u.reihe.gewertete().size())),
            zeile(vor + t(Text::Cubitalindex), mittel(u.reihe, &Chartwerte::CI, umgebung.format)),
            zeile(vor + t(Text::Hantelindex), mittel(u.reihe, &Chartwerte::HI, umgebung.format)),
            zeile(vor + t(Text::Discoidalverschiebung),
                  mittel(u.reihe, &Chartwerte::DV, umgebung.format)),
            zeile(t(Text::AuflösungDesScanners),
                  u.auflösung ? QString::number(*u.auflösung) + u' ' + t(Meldung::EinheitDpi)
                              : QString())};
}

} // namespace

std::vector<Vergleichszeile> vergleicheSätze(const Ergebnissatz& links, const Ergebnissatz& rechts,
                                             const Satzumgebung& umgebung) {
    const Texte& t = umgebung.texte;
    std::vector<Vergleichszeile> zeilen;
    const auto füge = [&](const QString& name, const QString& l, const QString& r) {
        if (l != r) {
            zeilen.push_back({name, l, r});
        }
    };
    for (const Textspalte& spalte : textspalten()) {
        if (spalte.wert != &Ergebnissatz::PROZENT) { // follows from what was measured
            füge(spaltenname(t, spalte.name.toString()), feld(links, spalte, t),
                 feld(rechts, spalte, t));
        }
    }
    füge(spaltenname(t, u"DATUM"_s), kurzesDatum(t, links.DATUM), kurzesDatum(t, rechts.DATUM));
    const auto anders = [&](auto... texte) { return ((links.*texte != rechts.*texte) || ...); };
    if (links.CI != rechts.CI || links.HI_DV != rechts.HI_DV || links.Grafik != rechts.Grafik) {
        const auto l = messwerte(links, umgebung);
        const auto r = messwerte(rechts, umgebung);
        const std::size_t vorher = zeilen.size();
        for (std::size_t i = 0; i < l.size(); ++i) {
            füge(l.at(i).name, l.at(i).links, r.at(i).links);
        }
        if (zeilen.size() == vorher && !stehenGleich(links, rechts)) {
            zeilen.push_back({t(Meldung::FlügelEinzeln), {}, t(Meldung::AndereWerte)});
        }
    }
    if (anders(&Ergebnissatz::MERKMAL)) {
        const auto kurz = [](const QString& text) {
            constexpr qsizetype Gezeigt = 60;
            const QString knapp = text.trimmed();
            return knapp.size() > Gezeigt ? knapp.left(Gezeigt) + u'…' : knapp;
        };
        füge(t(Text::KörperMerkmale), kurz(links.MERKMAL), kurz(rechts.MERKMAL));
    }
    return zeilen;
}

} // namespace tarvel
