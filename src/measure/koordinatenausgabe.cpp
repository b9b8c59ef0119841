#include "measure/koordinatenausgabe.h"

#include "measure/koordinatendatei.h"

#include <algorithm>
#include <cmath>

namespace tarvel {

namespace {

constexpr double MillimeterJeZoll = 25.4;

QByteArray zahl(const std::optional<float>& wert) {
    return wert && std::isfinite(*wert) ? vollerWert(*wert) : QByteArray();
}

QString bezeichnung(const Ausgabeflügel& flügel) {
    return flügel.name.isEmpty() ? QString::number(flügel.nummer) : flügel.name.simplified();
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

} // namespace

QString bildname(const QString& pfad) {
    const qsizetype ordner = std::max(pfad.lastIndexOf(u'/'), pfad.lastIndexOf(u'\\'));
    return pfad.sliced(ordner + 1).simplified();
}

Tps alsTps(std::span<const Ausgabeflügel> flügel) {
    Tps tps;
    for (const Ausgabeflügel& f : flügel) {
        const std::optional<Messpunkte> punkte =
            f.bildhöhe ? gespiegelt(ohneZoom(f.messung), *f.bildhöhe) : std::nullopt;
        const QString bild = bildname(f.messung.bilddatei);
        if (!punkte) {
            tps.ohneBildhöhe << QStringLiteral("%1 (%2)").arg(bezeichnung(f), bild);
            continue;
        }
        tps.inhalt += "LM=8\n";
        for (int p = 1; p <= Messpunkte::Anzahl; ++p) {
            tps.inhalt += gesetzt(*punkte, p)
                              ? vollerWert(punkte->PunktX[p]) + ' ' + vollerWert(punkte->PunktY[p])
                              : QByteArray("-1 -1");
            tps.inhalt += '\n';
        }
        tps.inhalt += "IMAGE=" + bild.toUtf8() + "\nID=" + bezeichnung(f).toUtf8() + "\nSCALE=" +
                      QByteArray::number(MillimeterJeZoll / f.messung.aufnahme.dpi, 'g', 9) + '\n';
    }
    return tps;
}

QByteArray punktspalten() {
    QByteArray spalten;
    for (int p = 1; p <= Messpunkte::Anzahl; ++p) {
        const QByteArray nummer = QByteArray::number(p);
        spalten += ",x" + nummer + ",y" + nummer;
    }
    return spalten.sliced(1);
}

void schreibePunkte(CsvTabelle& tabelle, const Flügelmessung& messung) {
    const Messpunkte punkte = ohneZoom(messung);
    for (int p = 1; p <= Messpunkte::Anzahl; ++p) {
        const bool da = gesetzt(punkte, p);
        tabelle.zelle(da ? vollerWert(punkte.PunktX[p]) : QByteArray());
        tabelle.zelle(da ? vollerWert(punkte.PunktY[p]) : QByteArray());
    }
}

QByteArray alsIndextabelle(std::span<const Ausgabeflügel> flügel) {
    CsvTabelle tabelle("wing,ci,ci_class,hi,hi_class,dv,left_out");
    for (const Ausgabeflügel& f : flügel) {
        const Indizes indizes =
            berechneIndizes(f.messung.punkte, f.messung.messart, f.messung.aufnahme);
        const auto klasse = [](std::optional<float> index, float (*position)(float)) {
            return index ? vollerWert(position(*index)) : QByteArray();
        };
        tabelle.text(bezeichnung(f));
        tabelle.zelle(zahl(indizes.CI));
        tabelle.zelle(klasse(indizes.CI, klassenpositionCI));
        tabelle.zelle(zahl(indizes.HI));
        tabelle.zelle(klasse(indizes.HI, klassenpositionHI));
        tabelle.zelle(zahl(indizes.DV));
        tabelle.zelle(f.ausgelassen ? "yes" : "no");
        tabelle.zeilenende();
    }
    return tabelle.csv();
}

} // namespace tarvel
