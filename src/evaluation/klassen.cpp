#include "evaluation/klassen.h"

#include "lang/texte.h"
#include "measure/messreihe.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace tarvel {

int klasseAusPosition(QStringView position) {
    const double zahl = std::trunc(Val(position.toString().replace(u',', u'.')));
    return ganzzahl16(zahl).value_or(0);
}

std::optional<int> klasseAusZeile(QStringView zeile) {
    for (const Sprache sprache : {Sprache::Deutsch, Sprache::Englisch, Sprache::Französisch}) {
        const QString wort = Texte::eintrag(Text::Klasse, sprache) + u' ';
        if (const qsizetype stelle = zeile.indexOf(wort); stelle >= 0) {
            return klasseAusPosition(zeile.sliced(stelle + wort.size()));
        }
    }
    return std::nullopt;
}

std::vector<int> klassenCI(const Messreihe& reihe) {
    std::vector<int> klassen;
    klassen.reserve(reihe.ciZeilen().size());
    for (const CiZeile& zeile : reihe.ciZeilen()) {
        if (!reihe.ausgelassen(zeile.nummer)) {
            klassen.push_back(klasseAusPosition(zeile.klasse));
        }
    }
    return klassen;
}

int ZähleKlassen(std::span<const int> klassen, int von, int bis) {
    const auto zahl = std::count_if(klassen.begin(), klassen.end(), [von, bis](int klasse) {
        return von <= klasse && klasse <= bis;
    });
    return static_cast<int>(zahl);
}

int ZähleKlassen(const QStringList& zeilen, int von, int bis) {
    std::vector<int> klassen;
    for (const QString& zeile : zeilen) {
        if (const std::optional<int> klasse = klasseAusZeile(zeile)) {
            klassen.push_back(*klasse);
        }
    }
    return ZähleKlassen(klassen, von, bis);
}

Anteil klassenanteil(int anzahl, int gesamt) {
    if (gesamt <= 0) {
        return {0, Anteilfehler::KeineBienen};
    }
    if (anzahl > HöchsteAnzahl) {
        return {0, Anteilfehler::Überlauf};
    }
    return {ganzzahl16(anzahl * 100.0 / gesamt).value_or(0), std::nullopt};
}

Gipfel gipfel(std::span<const int> klassen, Klassenbereich bereich) {
    std::map<int, int> anzahl;
    for (const int klasse : klassen) {
        ++anzahl[klasse];
    }
    Gipfel ergebnis;
    ergebnis.bezug = std::max(anzahl[bereich.von - 1], anzahl[bereich.bis + 1]);
    for (const auto& [klasse, bienen] : anzahl) {
        if (bereich.enthält(klasse) && bienen > ergebnis.größte) {
            ergebnis.größte = bienen;
            ergebnis.klasse = klasse;
        }
    }
    return ergebnis;
}

} // namespace tarvel
