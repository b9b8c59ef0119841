#include "results/einlesen.h"

#include <QRegularExpression>

#include <algorithm>
#include <numeric>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// What one body-mark line says about the codes of a caste, by their place in the counts.
struct Merkmalzeile {
    std::array<std::optional<int>, HöchsteMerkmalzahl> zahlen;
    bool prozent = false;
};

using Plätze = std::span<const Merkmalgruppe>;

/// The numbers of group @p gruppe in the order of its codes; nullopt when the line is no such list.
std::optional<Merkmalzeile> ausZahlen(QStringView zeile, Geschlecht tiere, Merkmalgruppe gruppe) {
    const QList<QStringView> teile = zeile.split(u';');
    if (teile.size() != std::ssize(merkmalcodes(tiere, gruppe))) {
        return std::nullopt;
    }
    Merkmalzeile ergebnis;
    int platz = ersterPlatz(tiere, gruppe);
    for (const QStringView teil : teile) {
        bool lesbar = false;
        const int zahl = teil.trimmed().toUShort(&lesbar);
        if (!lesbar) {
            return std::nullopt;
        }
        ergebnis.zahlen.at(platz++) = zahl;
    }
    return ergebnis;
}

/// Codes with numbers behind them.
std::optional<Merkmalzeile> ausCodes(QStringView zeile, Geschlecht tiere) {
    static const QRegularExpression stück(
        u"\\G\\s*(?<code>[12]R|[A-Za-z]{1,3})\\s*[=:]?\\s*(?<zahl>\\d{1,4})\\s*(?<prozent>%?)"
        "\\s*(?:[,;]|\\s|$)\\s*"_s);
    const std::vector<QString> codes = merkmalcodes(tiere);
    const QString text = zeile.toString();
    Merkmalzeile ergebnis;
    qsizetype stelle = 0;
    for (bool erstes = true; stelle < text.size(); erstes = false) {
        const QRegularExpressionMatch treffer = stück.match(text, stelle);
        const auto code = std::find(codes.begin(), codes.end(), treffer.captured(u"code"_s));
        const bool prozent = !treffer.captured(u"prozent"_s).isEmpty();
        if (code == codes.end() || (!erstes && prozent != ergebnis.prozent)) {
            return std::nullopt;
        }
        std::optional<int>& zahl = ergebnis.zahlen.at(code - codes.begin());
        if (zahl) {
            return std::nullopt; // the same code twice
        }
        zahl = treffer.captured(u"zahl"_s).toInt();
        ergebnis.prozent = prozent;
        stelle = treffer.capturedEnd();
    }
    return ergebnis;
}

/// Number of bees whose share of @p bienen is shown as @p prozent; nullopt when there is none.
std::optional<int> anzahlZu(int prozent, int bienen) {
    const int anzahl = (prozent * bienen + 50) / 100;
    const int anteil = (anzahl * 200 + bienen) / (2 * bienen);
    return anteil == prozent ? std::optional(anzahl) : std::nullopt;
}

int summe(const Merkmalzahlen& zahlen, Geschlecht tiere, Merkmalgruppe gruppe) {
    const auto anfang = zahlen.begin() + ersterPlatz(tiere, gruppe);
    return std::accumulate(anfang, anfang + std::ssize(merkmalcodes(tiere, gruppe)), 0);
}

/// Whether the counts can be those of @p bienen bees.
bool stimmig(const Merkmalzahlen& zahlen, Geschlecht tiere, int bienen) {
    const Plätze gruppen = merkmalgruppen(tiere);
    return summe(zahlen, tiere, Merkmalgruppe::Panzer) == bienen &&
           std::all_of(gruppen.begin(), gruppen.end(), [&](Merkmalgruppe gruppe) {
               return summe(zahlen, tiere, gruppe) <= bienen;
           });
}

/// Adds what a line says to the counts. False when it says something about a code a second time or
/// shares that no number of bees has.
bool nimm(const Merkmalzeile& zeile, int bienen, Merkmalzahlen& zahlen,
          std::array<bool, HöchsteMerkmalzahl>& genannt) {
    for (std::size_t platz = 0; platz < zeile.zahlen.size(); ++platz) {
        if (!zeile.zahlen[platz]) {
            continue;
        }
        const std::optional<int> anzahl =
            zeile.prozent ? anzahlZu(*zeile.zahlen[platz], bienen) : zeile.zahlen[platz];
        if (genannt[platz] || !anzahl) {
            return false;
        }
        genannt[platz] = true;
        zahlen[platz] = *anzahl;
    }
    return true;
}

Geschlecht tiereAus(const Messdatei& datei) {
    return datei.Drohnen ? Geschlecht::Drohnen : Geschlecht::Arbeiterinnen;
}

Merkmale keineMerkmale(Geschlecht tiere) {
    Merkmale merkmale;
    merkmale.Tiere = tiere;
    return merkmale;
}

Kolonieangaben angabenAus(const Messdatei& datei, int Rasse, const Zahlenformat& format) {
    Kolonieangaben angaben;
    angaben.Jahr = jahrErgänzt(datei.Jahr.trimmed());
    angaben.KNr = nummerDreistellig(datei.KNr.trimmed(), format);
    angaben.LV = nummerZweistellig(datei.LV.trimmed(), format);
    angaben.ZNr = nummerDreistellig(datei.ZNr.trimmed(), format);
    angaben.UNr = datei.UNr.trimmed();
    angaben.Volk = datei.Volk.trimmed();
    angaben.Name = datei.Name.trimmed();
    angaben.Besitzer = datei.Besitzer.trimmed();
    angaben.Begattung = datei.Begattung.trimmed();
    angaben.Rasse = Rasse;
    angaben.Tiere = tiereAus(datei);
    return angaben;
}

} // namespace

std::optional<Merkmale> merkmaleAus(const Messdatei& datei) {
    const Geschlecht tiere = tiereAus(datei);
    Merkmale merkmale = keineMerkmale(tiere);
    const bool leer = std::all_of(datei.merkmalzeilen.begin(), datei.merkmalzeilen.end(),
                                  [](const QString& zeile) { return zeile.trimmed().isEmpty(); });
    if (leer) {
        return merkmale;
    }
    const int bienen = datei.Bienenanzahl.value_or(0);
    if (bienen <= 0) {
        return std::nullopt;
    }
    const Plätze gruppen = merkmalgruppen(tiere);
    std::array<bool, HöchsteMerkmalzahl> genannt{};
    for (qsizetype i = 0; i < datei.merkmalzeilen.size(); ++i) {
        const QString zeile = datei.merkmalzeilen[i].trimmed();
        if (zeile.isEmpty()) {
            continue;
        }
        std::optional<Merkmalzeile> gelesen = ausCodes(zeile, tiere);
        if (!gelesen && i < std::ssize(gruppen)) {
            gelesen = ausZahlen(zeile, tiere, gruppen[i]);
        }
        if (!gelesen || !nimm(*gelesen, bienen, merkmale.Summen, genannt)) {
            return std::nullopt;
        }
    }
    if (!stimmig(merkmale.Summen, tiere, bienen)) {
        return std::nullopt;
    }
    merkmale.Modus = Merkmalmodus::Summen;
    return merkmale;
}

EingeleseneUntersuchung untersuchungAusMessdatei(const Messdatei& datei, int Rasse,
                                                 const Zahlenformat& format,
                                                 const QString& herkunft) {
    const Geschlecht tiere = tiereAus(datei);
    EingeleseneUntersuchung eingelesen;
    Untersuchung& u = eingelesen.untersuchung;
    u.setzeAngaben(angabenAus(datei, Rasse, format));
    Messreihe reihe;
    reihe.stelleHer(datei.ciZeilen, datei.hiDvZeilen, {}, {});
    u.setzeReihe(reihe);
    const std::optional<Merkmale> merkmale = merkmaleAus(datei);
    eingelesen.merkmaleVerstanden = merkmale.has_value();
    Untersuchungszusatz zusatz;
    zusatz.merkmaleUnlesbar = !merkmale;
    zusatz.Herkunft = herkunft;
    u.setzeZusatz(zusatz);
    u.setzeMerkmale(merkmale.value_or(keineMerkmale(tiere)));
    eingelesen.messart = datei.korrelation() ? Messart::Korrelation : Messart::NurCubitalindex;
    return eingelesen;
}

} // namespace tarvel
