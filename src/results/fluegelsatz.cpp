#include "results/fluegelsatz.h"

#include "results/satztext.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvel {

using namespace Qt::StringLiterals;
using namespace satztext;

namespace {

// Bounds of what is taken for a measurement; a text beyond them was not written by a measuring
// program. The longest value that is written is the largest single with two decimals.
constexpr qsizetype LängsterWert = 45;
constexpr float HöchsteKoordinate = 1'000'000;

constexpr QStringView KopfCiHi = u"CI-HI";
constexpr QStringView KopfHiDv = u"HI-DV";
constexpr QStringView KopfPunkte = u"Punkte 1";

std::optional<float> einzelwert(QStringView text) {
    const bool leerzeichen =
        std::any_of(text.begin(), text.end(), [](QChar c) { return c.isSpace(); });
    if (text.size() > LängsterWert || leerzeichen) {
        return std::nullopt;
    }
    const std::optional<double> zahl = getippteZahl(text);
    return zahl ? einfachGenau(*zahl) : std::nullopt;
}

bool istIndex(QStringView text) {
    const std::optional<float> wert = einzelwert(text);
    return wert && *wert >= 0;
}

bool istKlasse(QStringView text, float höchste) {
    const std::optional<float> wert = einzelwert(text);
    return wert && *wert >= 0 && *wert <= höchste;
}

// --- CI and HI_DV

std::optional<CiZeile> ciZeile(const std::vector<QStringView>& felder) {
    const std::optional<int> nummer = flügelnummer(felder[0]);
    if (!nummer || !istIndex(felder[1]) || !istKlasse(felder[2], HöchsteKlasseCI)) {
        return std::nullopt;
    }
    return CiZeile{static_cast<qint16>(*nummer), felder[1].toString(), felder[2].toString()};
}

std::optional<HiDvZeile> hiDvZeile(const std::vector<QStringView>& felder) {
    const std::optional<int> nummer = flügelnummer(felder[0]);
    if (!nummer || !istIndex(felder[1]) || !istKlasse(felder[2], HöchsteKlasseHI) ||
        !einzelwert(felder[3])) {
        return std::nullopt;
    }
    return HiDvZeile{static_cast<qint16>(*nummer), felder[1].toString(), felder[2].toString(),
                     felder[3].toString()};
}

/// Lines of a text of items "#…;…; " with @p feldzahl fields each.
template <typename Zeile, typename Leser>
Gelesen<std::vector<Zeile>> zeilenAus(QStringView satz, std::size_t feldzahl, Leser leser) {
    Gelesen<std::vector<Zeile>> gelesen;
    std::map<int, Zeile> zeilen;
    bool vorspann = true;
    for (const QStringView stück : satz.tokenize(u'#')) {
        const QStringView item = stück.trimmed();
        if (std::exchange(vorspann, false)) {
            gelesen.vollständig = item.isEmpty();
            continue;
        }
        std::optional<Zeile> zeile;
        if (item.endsWith(u';')) {
            const std::vector<QStringView> felder = teile(item.chopped(1), u';', feldzahl);
            if (felder.size() == feldzahl) {
                zeile = leser(felder);
            }
        }
        gelesen.vollständig &= zeile && zeilen.try_emplace(zeile->nummer, *zeile).second;
    }
    for (auto& [nummer, zeile] : zeilen) {
        gelesen.inhalt.push_back(std::move(zeile));
    }
    return gelesen;
}

// --- Grafik1 and Grafik2

QString chartsatz(const Messreihe& reihe, QStringView kopf, float Chartwerte::*erster,
                  float Chartwerte::*zweiter, int auflösung, const Zahlenformat& format) {
    QString satz = kopf.toString() + u' ' + QString::number(auflösung) + u"dpi;"_s;
    for (int nummer = 1; nummer <= Messreihe::HöchsteFlügelzahl; ++nummer) {
        const Chartwerte& werte = reihe.chartwerte(nummer);
        if (werte.*erster > 0) {
            satz += dreistellig(nummer) + u'/' + zahltext(werte.*erster, format) + u'/' +
                    zahltext(werte.*zweiter, format) + u';';
        }
    }
    return satz;
}

/// A chart value; what lies at the marker or below is no value.
float chartwert(float wert) {
    return wert > Chartwerte::KeinWert ? wert : Chartwerte::KeinWert;
}

bool liesChartwerte(QStringView stück, std::map<int, Wertepaar>& werte) {
    const std::vector<QStringView> felder = teile(stück, u'/', 3);
    if (felder.size() != 3) {
        return false;
    }
    const std::optional<int> nummer = flügelnummer(felder[0]);
    const std::optional<float> erster = einzelwert(felder[1]);
    const std::optional<float> zweiter = einzelwert(felder[2]);
    return nummer && erster && zweiter &&
           werte.try_emplace(*nummer, Wertepaar{chartwert(*erster), chartwert(*zweiter)}).second;
}

/// The resolution that stands before "dpi" in a header. True when the header is understood; one
/// without a resolution is, unless it looks like a damaged item.
bool liesAuflösung(QStringView kopf, std::optional<int>& auflösung) {
    constexpr qsizetype LängsterKopf = 255;
    static const QRegularExpression muster(u"(?<![0-9.,])([0-9]{1,9})\\s*dpi"_s,
                                           QRegularExpression::CaseInsensitiveOption);
    if (kopf.size() > LängsterKopf) {
        return false;
    }
    const QRegularExpressionMatch treffer = muster.match(kopf.toString());
    if (treffer.hasMatch()) {
        auflösung = ganzeZahl(treffer.capturedView(1), 1, HöchsteAuflösung);
    }
    return auflösung || !(kopf.contains(u'/') || kopf.contains("dpi"_L1, Qt::CaseInsensitive));
}

// --- Grafik3

QString koordinate(float wert) {
    return QString::number(static_cast<double>(wert), 'g', 9);
}

QString punktetext(const Messpunkte& punkte) {
    QString text =
        QString::number(punkte.AktuellerPunkt) + u'/' + QString::number(punkte.GewählterPunkt);
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        text += punkte.gemessen(i)
                    ? u'/' + koordinate(punkte.PunktX[i]) + u'/' + koordinate(punkte.PunktY[i])
                    : u"//"_s;
    }
    return text;
}

bool liesPunkt(QStringView x, QStringView y, int nummer, Messpunkte& punkte) {
    if (x.isEmpty() && y.isEmpty()) {
        return true;
    }
    const std::optional<float> wertX = einzelwert(x);
    const std::optional<float> wertY = einzelwert(y);
    if (!wertX || !wertY || std::abs(*wertX) > HöchsteKoordinate ||
        std::abs(*wertY) > HöchsteKoordinate) {
        return false;
    }
    punkte.PunktX[nummer] = *wertX;
    punkte.PunktY[nummer] = *wertY;
    return true;
}

bool liesPunkte(QStringView stück, std::map<int, Messpunkte>& messungen) {
    constexpr int Vorspann = 3;
    constexpr int Feldzahl = Vorspann + 2 * Messpunkte::Anzahl;
    const std::vector<QStringView> felder = teile(stück, u'/', Feldzahl);
    if (felder.size() != Feldzahl) {
        return false;
    }
    const std::optional<int> nummer = flügelnummer(felder[0]);
    const std::optional<int> aktueller = ganzeZahl(felder[1], 0, Messpunkte::Anzahl);
    const std::optional<int> gewählter = ganzeZahl(felder[2], 0, Messpunkte::Anzahl);
    if (!nummer || !aktueller || !gewählter) {
        return false;
    }
    Messpunkte punkte(Messart::AlleMessungen);
    punkte.AktuellerPunkt = static_cast<qint16>(*aktueller);
    punkte.GewählterPunkt = static_cast<qint16>(*gewählter);
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        const int feld = Vorspann + 2 * (i - 1);
        if (!liesPunkt(felder[feld], felder[feld + 1], i, punkte)) {
            return false;
        }
    }
    return messungen.try_emplace(*nummer, punkte).second;
}

} // namespace

QString ciSatz(const std::vector<CiZeile>& zeilen) {
    QString satz;
    for (const CiZeile& z : zeilen) {
        if (getippteZahl(z.wert) != 0.0) {
            satz += u'#' + dreistellig(z.nummer) + u';' + z.wert + u';' + z.klasse + u"; "_s;
        }
    }
    return satz;
}

QString hiDvSatz(const std::vector<HiDvZeile>& zeilen) {
    QString satz;
    for (const HiDvZeile& z : zeilen) {
        satz +=
            u'#' + dreistellig(z.nummer) + u';' + z.hi + u';' + z.klasse + u';' + z.dv + u"; "_s;
    }
    return satz;
}

Gelesen<std::vector<CiZeile>> ciAusSatz(QStringView satz) {
    return zeilenAus<CiZeile>(satz, 3, ciZeile);
}

Gelesen<std::vector<HiDvZeile>> hiDvAusSatz(QStringView satz) {
    return zeilenAus<HiDvZeile>(satz, 4, hiDvZeile);
}

QString chartsatzCiHi(const Messreihe& reihe, int auflösung, const Zahlenformat& format) {
    return chartsatz(reihe, KopfCiHi, &Chartwerte::CI, &Chartwerte::HI, auflösung, format);
}

QString chartsatzHiDv(const Messreihe& reihe, int auflösung, const Zahlenformat& format) {
    return chartsatz(reihe, KopfHiDv, &Chartwerte::HI, &Chartwerte::DV, auflösung, format);
}

Gelesen<Chartsatz> chartAusSatz(QStringView satz) {
    Gelesen<Chartsatz> gelesen;
    bool erstes = true;
    const bool abgeschlossen = jedesStück(satz, u';', [&](QStringView stück) {
        const bool istWert = liesChartwerte(stück, gelesen.inhalt.werte);
        const bool istKopf = !istWert && erstes && liesAuflösung(stück, gelesen.inhalt.auflösung);
        gelesen.vollständig &= istWert || istKopf;
        erstes = false;
    });
    gelesen.vollständig &= abgeschlossen;
    return gelesen;
}

QString punktesatz(const std::map<int, Flügelmessung>& messungen) {
    QString satz = KopfPunkte.toString() + u';';
    for (const auto& [nummer, messung] : messungen) {
        satz += dreistellig(nummer) + u'/' + punktetext(messung.punkte) + u';';
    }
    return satz;
}

Gelesen<std::map<int, Messpunkte>> punkteAusSatz(QStringView satz) {
    Gelesen<std::map<int, Messpunkte>> gelesen;
    gelesen.vollständig = jederEintrag(
        satz, KopfPunkte, [&](QStringView stück) { return liesPunkte(stück, gelesen.inhalt); });
    return gelesen;
}

} // namespace tarvel
