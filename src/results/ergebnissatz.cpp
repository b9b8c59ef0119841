#include "results/ergebnissatz.h"

#include <algorithm>
#include <array>

namespace tarvel {

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
