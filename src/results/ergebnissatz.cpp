#include "results/ergebnissatz.h"

#include <algorithm>
#include <array>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr Textspalte alle[] = {
    {u"U_NR", LängsteNummer, &Ergebnissatz::U_NR},
    {u"ZB_NR", 30, &Ergebnissatz::ZB_NR},
    {u"Z_NAME", 30, &Ergebnissatz::Z_NAME},
    {u"A_D", 9, &Ergebnissatz::A_D},
    {u"RASSE", 30, &Ergebnissatz::RASSE},
    {u"B_NAME", 30, &Ergebnissatz::B_NAME},
    {u"ERGEBNIS", 4, &Ergebnissatz::ERGEBNIS},
    {u"VATER", 30, &Ergebnissatz::VATER},
    {u"VOLK", 30, &Ergebnissatz::VOLK},
    {u"PROZENT", 70, &Ergebnissatz::PROZENT},
};

} // namespace

std::span<const Textspalte> textspalten() {
    return alle;
}

QStringList tabellenspalten() {
    return {u"U_NR"_s,     u"ZB_NR"_s,   u"Z_NAME"_s,  u"A_D"_s,     u"RASSE"_s,   u"B_NAME"_s,
            u"ERGEBNIS"_s, u"DATUM"_s,   u"VATER"_s,   u"VOLK"_s,    u"CI"_s,      u"HI_DV"_s,
            u"PROZENT"_s,  u"MERKMAL"_s, u"Grafik1"_s, u"Grafik2"_s, u"Grafik3"_s, u"Grafik4"_s};
}

QString* spaltentext(Ergebnissatz& satz, QStringView spalte) {
    for (const Textspalte& eine : alle) {
        if (eine.name == spalte) {
            return &(satz.*eine.wert);
        }
    }
    for (std::size_t i = 0; i < satz.Grafik.size(); ++i) {
        if (spalte == u"Grafik%1"_s.arg(i + 1)) {
            return &satz.Grafik.at(i);
        }
    }
    return spalte == u"CI"        ? &satz.CI
           : spalte == u"HI_DV"   ? &satz.HI_DV
           : spalte == u"MERKMAL" ? &satz.MERKMAL
                                  : nullptr;
}

bool bedeutet(QStringView wort, Text text) {
    constexpr std::array sprachen{Sprache::Deutsch, Sprache::Englisch, Sprache::Französisch};
    return std::any_of(sprachen.begin(), sprachen.end(), [&](Sprache sprache) {
        return wort.trimmed().compare(Texte::eintrag(text, sprache), Qt::CaseInsensitive) == 0;
    });
}

int zeichenzahl(QStringView text) {
    int zahl = 0;
    for (const QChar c : text) {
        zahl += c.isLowSurrogate() ? 0 : 1;
    }
    return zahl;
}

} // namespace tarvel
