#include "measure/koordinatendatei.h"

#include "measure/koordinatenleser.h"
#include "measure/messreihe.h"
#include "platform/zahlen.h"

#include <algorithm>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// TPS when the first line that says anything is a key with its value.
bool istTps(QStringView text) {
    Zeilenleser zeilen(text);
    while (const auto zeile = zeilen.nächste()) {
        if (zeile->trimmed().isEmpty() || istTpsKommentar(*zeile)) {
            continue;
        }
        const auto schlüssel = tpsSchlüssel(*zeile);
        // "sep=;" is what spreadsheets put above a table.
        return schlüssel && schlüssel->name != u"SEP";
    }
    return false;
}

/// "007" and "7" are the same wing.
QString ohneFührendeNullen(const QString& name) {
    bool istZahl = false;
    const int nummer = name.toInt(&istZahl);
    return istZahl ? QString::number(nummer) : name;
}

} // namespace

std::optional<float> koordinate(QStringView text) {
    constexpr double größte = 1e6;
    const std::optional<double> zahl = getippteZahl(text);
    return zahl && *zahl >= 0 && *zahl <= größte ? einfachGenau(*zahl) : std::nullopt;
}

bool istFehlwert(QStringView text) {
    return text.compare(u"NA"_s, Qt::CaseInsensitive) == 0 ||
           text.compare(u"NaN"_s, Qt::CaseInsensitive) == 0;
}

void Flügelsammlung::nimm(Koordinatensatz flügel) {
    if (flügel_.size() >= Messreihe::HöchsteFlügelzahl) {
        throw Lesefehler{{.zeile = flügel.zeile,
                          .grund = Lesegrund::ZuVieleFlügel,
                          .texte = {QString::number(Messreihe::HöchsteFlügelzahl)}}};
    }
    if (!flügel.name.isEmpty()) {
        int& zeile = zeilen_[{ohneFührendeNullen(flügel.name), flügel.bilddatei}];
        if (zeile > 0) {
            throw Lesefehler{{.zeile = flügel.zeile,
                              .grund = Lesegrund::FlügelDoppelt,
                              .texte = {zitat(flügel.name), QString::number(zeile)}}};
        }
        zeile = flügel.zeile;
    }
    flügel_.push_back(std::move(flügel));
}

std::vector<Koordinatensatz> Flügelsammlung::alle() && {
    if (flügel_.empty()) {
        throw Lesefehler{{.grund = Lesegrund::KeinFlügel}};
    }
    return std::move(flügel_);
}

std::variant<Koordinaten, Leseproblem> liesKoordinaten(QByteArrayView bytes, Messart messart) {
    const Dateitext inhalt = dateitext(bytes);
    if (inhalt.problem) {
        return *inhalt.problem;
    }
    try {
        const bool tps = istTps(inhalt.text);
        return Koordinaten{.flügel = tps ? liesTps(inhalt.text) : liesCsv(inhalt.text, messart),
                           .yNachOben = tps};
    } catch (const Lesefehler& fehler) {
        return fehler.problem;
    }
}

std::optional<Messpunkte> gespiegelt(const Messpunkte& punkte, float bildhöhe) {
    Messpunkte neu = punkte;
    for (int p = 1; p <= Messpunkte::Anzahl; ++p) {
        if (!neu.gemessen(p)) {
            continue;
        }
        neu.PunktY[p] = bildhöhe - neu.PunktY[p];
        if (neu.PunktY[p] < 0) {
            return std::nullopt;
        }
    }
    return neu;
}

float eigeneHöhe(const Messpunkte& punkte) {
    std::optional<float> oben;
    float unten = 0;
    for (int p = 1; p <= Messpunkte::Anzahl; ++p) {
        if (punkte.gemessen(p)) {
            oben = std::min(oben.value_or(punkte.PunktY[p]), punkte.PunktY[p]);
            unten = std::max(unten, punkte.PunktY[p]);
        }
    }
    return oben.value_or(0) + unten;
}

} // namespace tarvel
