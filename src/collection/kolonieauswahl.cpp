#include "collection/kolonieauswahl.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <set>
#include <tuple>
#include <unordered_set>
#include <utility>

namespace tarvel {

namespace {

constexpr QString Koloniewerte::*Felder[] = {&Koloniewerte::Züchter, &Koloniewerte::Besitzer,
                                             &Koloniewerte::Rasse, &Koloniewerte::Begattung,
                                             &Koloniewerte::Königin};

bool gleich(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

constexpr int ersteSpalte(Größe g) {
    return static_cast<int>(Kolonienspalte::Index) + static_cast<int>(g) * SpaltenJeIndex;
}

std::optional<double> zahlIn(const Koloniewerte& k, int spalte) {
    if (spalte == static_cast<int>(Kolonienspalte::Datum)) {
        return k.datum.isValid() ? std::optional<double>(k.datum.toJulianDay()) : std::nullopt;
    }
    if (spalte == static_cast<int>(Kolonienspalte::Dpi)) {
        return k.dpi;
    }
    if (spalte == SpalteUrteil) {
        return k.urteil ? std::optional<double>(*k.urteil ? 1 : 0) : std::nullopt;
    }
    if (spalte == SpalteHistogramm) { // a histogram is told by where it lies
        return indexzahl(k, ersteSpalte(Größe::CI) + 1);
    }
    return indexzahl(k, spalte);
}

/// Sorts by what @p schlüssel gives; rows without one stay behind the others.
template <typename Schlüssel>
void sortiereNach(Kolonieauswahl& auswahl, bool absteigend, Schlüssel schlüssel) {
    using Wert = decltype(schlüssel(*auswahl.front()));
    std::vector<std::pair<Wert, const Koloniewerte*>> alle;
    alle.reserve(auswahl.size());
    for (const Koloniewerte* k : auswahl) {
        alle.emplace_back(schlüssel(*k), k);
    }
    std::stable_sort(alle.begin(), alle.end(), [absteigend](const auto& a, const auto& b) {
        if (!a.first || !b.first) {
            return a.first.has_value() && !b.first.has_value();
        }
        return absteigend ? *b.first < *a.first : *a.first < *b.first;
    });
    std::transform(alle.begin(), alle.end(), auswahl.begin(),
                   [](const auto& paar) { return paar.second; });
}

/// The words behind their sorting texts, each once whatever its case.
QStringList sortiert(std::vector<std::pair<QString, QString>> worte) {
    std::sort(worte.begin(), worte.end());
    QStringList liste;
    for (const auto& [schlüssel, wort] : worte) {
        if (liste.isEmpty() || !gleich(liste.constLast(), wort)) {
            liste << wort;
        }
    }
    return liste;
}

/// Series of an index, or of one resolution of it.
std::optional<Jahresreihe> reihe(const Kolonieauswahl& auswahl, Größe größe,
                                 std::optional<int> dpi) {
    std::map<int, std::vector<double>> jahre;
    for (const Koloniewerte* k : auswahl) {
        const Kennzahlen& zahlen = (*k)[größe].kennzahlen;
        if (k->saison() && zahlen.anzahl > 0 && (!dpi || *dpi == k->dpi)) {
            jahre[*k->saison()].push_back(zahlen.mittelwert);
        }
    }
    Jahresreihe ergebnis{größe, dpi.value_or(0), {}};
    for (const auto& [jahr, mittel] : jahre) {
        Jahresmittel m{jahr, {}, {}};
        Kennzahlen& z = m.kennzahlen;
        z.anzahl = static_cast<int>(mittel.size());
        z.mittelwert = std::accumulate(mittel.begin(), mittel.end(), 0.0) / z.anzahl;
        z.minimum = *std::min_element(mittel.begin(), mittel.end());
        z.maximum = *std::max_element(mittel.begin(), mittel.end());
        if (z.anzahl > 1) {
            double quadrate = 0;
            for (const double wert : mittel) {
                quadrate += (wert - z.mittelwert) * (wert - z.mittelwert);
            }
            z.standardabweichung = std::sqrt(quadrate / (z.anzahl - 1));
        }
        m.bereich = mittelbereich(z);
        ergebnis.jahre.push_back(m);
    }
    return ergebnis.jahre.empty() ? std::nullopt : std::optional(ergebnis);
}

} // namespace

const QString& feld(const Koloniewerte& kolonie, Merkmalsfeld feld) {
    return kolonie.*Felder[static_cast<std::size_t>(feld)];
}

Kolonieauswahl wähle(const Koloniesammlung& sammlung, const Koloniefilter& filter) {
    Kolonieauswahl auswahl;
    auswahl.reserve(sammlung.kolonien.size());
    for (const Koloniewerte& k : sammlung.kolonien) {
        const bool passt =
            k.tiere == filter.tiere && (!filter.saison || k.saison() == filter.saison) &&
            (!filter.dpi || k.dpi == *filter.dpi) &&
            std::all_of(Merkmalsfelder.begin(), Merkmalsfelder.end(), [&](Merkmalsfeld f) {
                return filter[f].isEmpty() || gleich(feld(k, f), filter[f]);
            });
        if (passt) {
            auswahl.push_back(&k);
        }
    }
    return auswahl;
}

Filterwerte filterwerte(const Koloniesammlung& sammlung, Geschlecht tiere) {
    Filterwerte werte;
    std::set<int> saisons;
    std::set<int> dpi;
    for (const Koloniewerte& k : sammlung.kolonien) {
        if (k.tiere != tiere) {
            continue;
        }
        if (k.saison()) {
            saisons.insert(*k.saison());
        }
        dpi.insert(k.dpi);
    }
    werte.saisons.assign(saisons.rbegin(), saisons.rend());
    werte.dpi.assign(dpi.begin(), dpi.end());
    for (const Merkmalsfeld f : Merkmalsfelder) {
        // Rows mostly share the texts of others, also in memory.
        std::unordered_set<const QChar*> orte;
        std::unordered_set<QString> genau;
        std::vector<std::pair<QString, QString>> worte;
        for (const Koloniewerte& k : sammlung.kolonien) {
            const QString& text = feld(k, f);
            if (k.tiere == tiere && !text.isEmpty() && orte.insert(text.constData()).second &&
                genau.insert(text).second) {
                worte.emplace_back(sortiertext(text) + QChar(u'\0') + text.toCaseFolded(), text);
            }
        }
        werte.texte.at(static_cast<std::size_t>(f)) = sortiert(std::move(worte));
    }
    return werte;
}

Geschlecht häufigsteTiere(const Koloniesammlung& sammlung) {
    const auto drohnen =
        std::count_if(sammlung.kolonien.begin(), sammlung.kolonien.end(),
                      [](const Koloniewerte& k) { return k.tiere == Geschlecht::Drohnen; });
    return 2 * drohnen > std::ssize(sammlung.kolonien) ? Geschlecht::Drohnen
                                                       : Geschlecht::Arbeiterinnen;
}

QString sortiertext(const QString& text) {
    QString ergebnis = text.normalized(QString::NormalizationForm_KD).toCaseFolded();
    ergebnis.removeIf([](QChar c) { return c.category() == QChar::Mark_NonSpacing; });
    return ergebnis;
}

const QString& textIn(const Koloniewerte& k, int spalte) {
    switch (static_cast<Kolonienspalte>(spalte)) {
    case Kolonienspalte::Volk:
        return k.Volk;
    case Kolonienspalte::Königin:
        return k.Königin;
    case Kolonienspalte::Züchter:
        return k.Züchter;
    default:
        return k.UNr;
    }
}

std::optional<double> indexzahl(const Koloniewerte& k, int spalte) {
    constexpr double Hundert = 100;
    const int ort = spalte - static_cast<int>(Kolonienspalte::Index);
    if (ort < 0 || spalte >= SpalteUrteil) {
        return std::nullopt;
    }
    const Indexwerte& werte = k.index.at(static_cast<std::size_t>(ort / SpaltenJeIndex));
    const Kennzahlen& z = werte.kennzahlen;
    const int art = ort % SpaltenJeIndex;
    if (art == 0) {
        return z.anzahl;
    }
    if (z.anzahl == 0 || (art > 2 && k.rasse == Koloniewerte::OhneRasse)) {
        return std::nullopt;
    }
    return art == 1   ? std::optional(z.mittelwert)
           : art == 2 ? z.standardabweichung
                      : std::optional(Hundert * (art == 3 ? werte.unter : werte.über) / z.anzahl);
}

void sortiere(Kolonieauswahl& auswahl, int spalte, bool absteigend) {
    const bool text = spalte < static_cast<int>(Kolonienspalte::Datum);
    if (text) {
        sortiereNach(auswahl, absteigend, [spalte](const Koloniewerte& k) {
            const QString wort = sortiertext(textIn(k, spalte));
            return wort.isEmpty() ? std::nullopt : std::optional(wort);
        });
    } else {
        sortiereNach(auswahl, absteigend,
                     [spalte](const Koloniewerte& k) { return zahlIn(k, spalte); });
    }
}

QStringList rassenVon(const Kolonieauswahl& auswahl) {
    std::map<QString, std::pair<QString, int>> zahl;
    for (const Koloniewerte* k : auswahl) {
        const auto [ort, neu] = zahl.try_emplace(k->Rasse.toCaseFolded(), k->Rasse, 0);
        ++ort->second.second;
    }
    std::vector<std::pair<QString, int>> alle;
    alle.reserve(zahl.size());
    for (const auto& [schlüssel, rasse] : zahl) {
        alle.push_back(rasse);
    }
    std::stable_sort(alle.begin(), alle.end(),
                     [](const auto& a, const auto& b) { return a.second > b.second; });
    QStringList namen;
    for (const auto& [name, wieOft] : alle) {
        namen << name;
    }
    return namen;
}

std::vector<int> auflösungenVon(const Kolonieauswahl& auswahl) {
    std::set<int> dpi;
    for (const Koloniewerte* k : auswahl) {
        if ((*k)[Größe::DV].kennzahlen.anzahl > 0) {
            dpi.insert(k->dpi);
        }
    }
    return {dpi.begin(), dpi.end()};
}

int mitWenigenFlügeln(const Kolonieauswahl& auswahl) {
    return static_cast<int>(
        std::count_if(auswahl.begin(), auswahl.end(), [](const Koloniewerte* k) {
            return k->flügel() > 0 && k->flügel() < WenigeFlügel;
        }));
}

bool DVUnvergleichbar(const Koloniewerte& kolonie) {
    return kolonie[Größe::DV].kennzahlen.anzahl > 0 && !kolonie.dpiEindeutig();
}

Jahresverlauf jahresverlauf(const Kolonieauswahl& auswahl) {
    Jahresverlauf verlauf;
    std::set<std::tuple<int, QString, QString, QString>> völker;
    for (const Koloniewerte* k : auswahl) {
        if (!k->saison()) {
            ++verlauf.ohneDatum;
            continue;
        }
        Jahresstand& stand = verlauf.jahre[*k->saison()];
        ++stand.kolonien;
        stand.beurteilt += k->urteil ? 1 : 0;
        stand.konform += k->urteil.value_or(false) ? 1 : 0;
        if ((!k->Volk.isEmpty() || !k->Königin.isEmpty()) &&
            !völker
                 .emplace(*k->saison(), k->Besitzer.toCaseFolded(), k->Volk.toCaseFolded(),
                          k->Königin.toCaseFolded())
                 .second) {
            ++verlauf.mehrmals;
        }
        verlauf.ohneDpi += DVUnvergleichbar(*k) ? 1 : 0;
    }
    for (const Größe g : {Größe::CI, Größe::HI}) {
        if (auto r = reihe(auswahl, g, std::nullopt)) {
            verlauf.reihen.push_back(std::move(*r));
        }
    }
    for (const int dpi : auflösungenVon(auswahl)) {
        if (dpi > 0) {
            if (auto r = reihe(auswahl, Größe::DV, dpi)) {
                verlauf.reihen.push_back(std::move(*r));
            }
        }
    }
    return verlauf;
}

std::vector<Koloniegruppe> gruppen(const Kolonieauswahl& auswahl, Merkmalsfeld nach) {
    std::map<std::pair<QString, QString>, Koloniegruppe> alle;
    for (const Koloniewerte* k : auswahl) {
        const QString& name = feld(*k, nach);
        if (name.isEmpty()) {
            continue;
        }
        Koloniegruppe& gruppe = alle[{name.toCaseFolded(), k->Rasse.toCaseFolded()}];
        if (gruppe.kolonien.empty()) {
            gruppe.name = name;
            gruppe.rasse = k->Rasse;
        }
        gruppe.kolonien.push_back(k);
    }
    std::vector<Koloniegruppe> liste;
    liste.reserve(alle.size());
    for (auto& [schlüssel, gruppe] : alle) {
        liste.push_back(std::move(gruppe));
    }
    std::stable_sort(liste.begin(), liste.end(), [](const auto& a, const auto& b) {
        return sortiertext(a.name) < sortiertext(b.name);
    });
    return liste;
}

} // namespace tarvel
