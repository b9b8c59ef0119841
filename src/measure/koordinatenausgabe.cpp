#include "measure/koordinatenausgabe.h"

#include "measure/koordinatendatei.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace tarvel {

namespace {

constexpr double MillimeterJeZoll = 25.4;

/// The shortest text that gives the same single again.
QByteArray zahl(float wert) {
    std::array<char, 128> ziffern{};
    const auto ende = std::to_chars(ziffern.data(), ziffern.data() + ziffern.size(), wert,
                                    std::chars_format::fixed);
    return {ziffern.data(), ende.ptr - ziffern.data()};
}

QByteArray zahl(const std::optional<float>& wert) {
    return wert && std::isfinite(*wert) ? zahl(*wert) : QByteArray();
}

QByteArray bezeichnung(const Ausgabeflügel& flügel) {
    return flügel.name.isEmpty() ? QByteArray::number(flügel.nummer)
                                 : flügel.name.simplified().toUtf8();
}

/// The file's name without its folder, which only means something where it was scanned. The path
/// may come from another system.
QByteArray dateiname(const QString& pfad) {
    const qsizetype ordner = std::max(pfad.lastIndexOf(u'/'), pfad.lastIndexOf(u'\\'));
    return pfad.sliced(ordner + 1).simplified().toUtf8();
}

QByteArray zelle(QByteArray text) {
    if (!text.contains(',') && !text.contains('"')) {
        return text;
    }
    return '"' + text.replace('"', "\"\"") + '"';
}

bool gesetzt(const Messpunkte& punkte, int nummer) {
    return punkte.gemessen(nummer) && std::isfinite(punkte.PunktX[nummer]) &&
           std::isfinite(punkte.PunktY[nummer]);
}

/// The points in pixels of the picture.
Messpunkte ohneZoom(const Flügelmessung& messung) {
    Messpunkte punkte = messung.punkte;
    const auto zoom = static_cast<float>(messung.aufnahme.Zoomfaktor);
    for (int p = 1; p <= Messpunkte::Anzahl; ++p) {
        if (gesetzt(punkte, p)) {
            punkte.PunktX[p] /= zoom;
            punkte.PunktY[p] /= zoom;
        }
    }
    return punkte;
}

/// What y is turned over by: the height of the picture, unless it is not known or cannot be that of
/// the picture the points are from; then twice the height of the wing's middle.
float spiegelhöhe(const Messpunkte& punkte, std::optional<float> bildhöhe) {
    std::optional<float> oben;
    float unten = 0;
    for (int p = 1; p <= Messpunkte::Anzahl; ++p) {
        if (gesetzt(punkte, p)) {
            oben = std::min(oben.value_or(punkte.PunktY[p]), punkte.PunktY[p]);
            unten = std::max(unten, punkte.PunktY[p]);
        }
    }
    return bildhöhe && *bildhöhe >= unten ? *bildhöhe : oben.value_or(0) + unten;
}

} // namespace

QByteArray alsTps(std::span<const Ausgabeflügel> flügel) {
    QByteArray tps;
    for (const Ausgabeflügel& f : flügel) {
        const Messpunkte imBild = ohneZoom(f.messung);
        const Messpunkte punkte = gespiegelt(imBild, spiegelhöhe(imBild, f.bildhöhe));
        tps += "LM=8\n";
        for (int p = 1; p <= Messpunkte::Anzahl; ++p) {
            tps += gesetzt(punkte, p) ? zahl(punkte.PunktX[p]) + ' ' + zahl(punkte.PunktY[p])
                                      : QByteArray("-1 -1");
            tps += '\n';
        }
        tps += "IMAGE=" + dateiname(f.messung.bilddatei) + "\nID=" + bezeichnung(f) +
               "\nSCALE=" + QByteArray::number(MillimeterJeZoll / f.messung.aufnahme.dpi, 'g', 9) +
               '\n';
    }
    return tps;
}

QByteArray alsPunktetabelle(std::span<const Ausgabeflügel> flügel) {
    QByteArray csv = "wing,file";
    for (int p = 1; p <= Messpunkte::Anzahl; ++p) {
        const QByteArray nummer = QByteArray::number(p);
        csv += ",x" + nummer + ",y" + nummer;
    }
    csv += '\n';
    for (const Ausgabeflügel& f : flügel) {
        csv += zelle(bezeichnung(f)) + ',' + zelle(dateiname(f.messung.bilddatei));
        const Messpunkte punkte = ohneZoom(f.messung);
        for (int p = 1; p <= Messpunkte::Anzahl; ++p) {
            csv += gesetzt(punkte, p) ? ',' + zahl(punkte.PunktX[p]) + ',' + zahl(punkte.PunktY[p])
                                      : QByteArray(",,");
        }
        csv += '\n';
    }
    return csv;
}

QByteArray alsIndextabelle(std::span<const Ausgabeflügel> flügel) {
    QByteArray csv = "wing,ci,ci_class,hi,hi_class,dv\n";
    for (const Ausgabeflügel& f : flügel) {
        const Indizes indizes =
            berechneIndizes(f.messung.punkte, f.messung.messart, f.messung.aufnahme);
        const auto klasse = [](std::optional<float> index, float (*position)(float)) {
            return index ? zahl(std::optional(position(*index))) : QByteArray();
        };
        csv += zelle(bezeichnung(f)) + ',' + zahl(indizes.CI) + ',' +
               klasse(indizes.CI, klassenpositionCI) + ',' + zahl(indizes.HI) + ',' +
               klasse(indizes.HI, klassenpositionHI) + ',' + zahl(indizes.DV) + '\n';
    }
    return csv;
}

} // namespace tarvel
