#include "results/tabelleneinfuhr.h"

#include "measure/textdatei.h"
#include "platform/csv.h"

#include <algorithm>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView Datumsspalte = u"DATUM";

/// Where the columns that count stand.
struct Tabellenkopf {
    qsizetype felder = 0;
    std::vector<std::pair<int, QString>> spalten;
    int datum = -1;
    QStringList fremde;

    explicit Tabellenkopf(const QStringList& namen)
        : felder(namen.size()) {
        for (int i = 0; i < namen.size(); ++i) {
            const QString name = namen[i].trimmed();
            const QStringList alle = tabellenspalten();
            const auto spalte = std::find_if(alle.begin(), alle.end(), [&](const QString& eine) {
                return eine.compare(name, Qt::CaseInsensitive) == 0;
            });
            const bool schonDa = spalte != alle.end() && hat(*spalte);
            if (spalte == alle.end() || schonDa) {
                fremde << name;
            } else if (*spalte == Datumsspalte) {
                datum = i;
            } else {
                spalten.emplace_back(i, *spalte);
            }
        }
        fremde.removeAll(QString());
    }

    [[nodiscard]] bool hat(QStringView name) const {
        return name == Datumsspalte
                   ? datum >= 0
                   : std::any_of(spalten.begin(), spalten.end(),
                                 [name](const auto& s) { return s.second == name; });
    }
};

struct Zeile {
    int nummer = 0;
    QStringList felder;
};

class Leser {
public:
    Leser(Tabellenkopf kopf, Tagesfolge folge, const QDate& heute)
        : kopf_(std::move(kopf))
        , folge_(folge)
        , heute_(heute) {}

    void nimm(const Zeile& zeile, Tabelleninhalt& inhalt) const {
        if (zeile.felder.size() > kopf_.felder) {
            inhalt.probleme.push_back(
                {zeile.nummer,
                 Meldung::TabelleFelder,
                 {QString::number(zeile.felder.size()), QString::number(kopf_.felder)}});
            return;
        }
        Ergebnissatz satz;
        for (const auto& [feld, spalte] : kopf_.spalten) {
            *spaltentext(satz, spalte) = ausTextzelle(zeile.felder.value(feld));
        }
        satz.U_NR = satz.U_NR.trimmed();
        if (const auto problem = zuBreit(satz)) {
            inhalt.probleme.push_back({zeile.nummer, Meldung::TabelleZuLang, *problem});
            return;
        }
        const QString datum = zeile.felder.value(kopf_.datum).trimmed();
        if (!datum.isEmpty()) {
            const auto gelesen = datumAusForm(datum, folge_, heute_);
            if (!gelesen) {
                inhalt.probleme.push_back({zeile.nummer, Meldung::TabelleDatum, {datum}});
                return;
            }
            satz.DATUM = *gelesen;
        }
        inhalt.sätze.push_back(std::move(satz));
    }

private:
    [[nodiscard]] static std::optional<QStringList> zuBreit(const Ergebnissatz& satz) {
        for (const Textspalte& spalte : textspalten()) {
            if (zeichenzahl((satz.*spalte.wert).trimmed()) > spalte.breite) {
                return QStringList{spalte.name.toString(), QString::number(spalte.breite)};
            }
        }
        return std::nullopt;
    }

    Tabellenkopf kopf_;
    Tagesfolge folge_;
    QDate heute_;
};

} // namespace

QString problemtext(const Zeilenproblem& problem, const Texte& texte) {
    QString grund = texte(problem.grund);
    if (problem.teile.size() == 1) {
        grund = grund.arg(problem.teile[0]);
    } else if (problem.teile.size() == 2) {
        grund = grund.arg(problem.teile[0], problem.teile[1]);
    }
    return texte(Meldung::TabelleZeile).arg(QString::number(problem.zeile), grund);
}

Tabelleninhalt liesTabelle(QByteArrayView bytes, std::optional<Tagesfolge> folge,
                           const QDate& heute) {
    Tabelleninhalt inhalt;
    const Dateitext datei = dateitext(bytes, GrößteTabelle);
    if (datei.problem) {
        return inhalt;
    }
    CsvLeser leser(datei.text, csvTrenner(datei.text));
    const auto namen = leser.nächster();
    if (!namen) {
        return inhalt;
    }
    Tabellenkopf kopf(*namen);
    inhalt.istTabelle = kopf.hat(u"U_NR") && !leser.offen();
    if (!inhalt.istTabelle) {
        return inhalt;
    }
    inhalt.fremdeSpalten = kopf.fremde;
    std::vector<Zeile> zeilen;
    QStringList daten;
    while (auto felder = leser.nächster()) {
        if (leser.offen()) {
            inhalt.probleme.push_back({leser.zeile(), Meldung::TabelleOffen, {}});
            break;
        }
        if (kopf.datum >= 0) {
            daten << felder->value(kopf.datum);
        }
        zeilen.push_back({leser.zeile(), *std::move(felder)});
    }
    if (!folge) {
        folge = tagesfolge(daten);
        const auto mehrdeutig =
            std::find_if(daten.begin(), daten.end(),
                         [&heute](const QString& d) { return istMehrdeutig(d, heute); });
        if (!folge && mehrdeutig != daten.end()) {
            inhalt.datum = *mehrdeutig;
        }
    }
    const Leser sätze(std::move(kopf), folge.value_or(Tagesfolge::TagZuerst), heute);
    for (const Zeile& zeile : zeilen) {
        sätze.nimm(zeile, inhalt);
    }
    return inhalt;
}

} // namespace tarvel
