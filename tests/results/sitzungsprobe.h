#pragma once

#include "results/sitzung.h"

namespace tarvel {

/// Points of a wing of plausible shape, different for every number and with fractions.
inline Messpunkte probepunkte(int nummer, Messart messart) {
    constexpr std::array X{0.F, 100.F, 900.F, 420.F, 560.F, 600.F, 700.F, 742.F, 520.F};
    constexpr std::array Y{0.F, 500.F, 430.F, 420.F, 380.F, 560.F, 610.F, 640.F, 700.F};
    Messpunkte punkte(messart);
    for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
        const auto abweichung = static_cast<float>((nummer * 7 + i * 13) % 17) / 3.0F;
        punkte.setze(messart, i, X[i] + abweichung, Y[i] - abweichung / 7.0F);
    }
    return punkte;
}

/// A session with @p flügel wings in the series and @p punkte points of the next one.
inline Sitzungsstand probesitzung(int flügel, int punkte, const Zahlenformat& format = {}) {
    Sitzungsstand stand;
    stand.DatenbankPfad = QStringLiteral("/Imker/50% Völker;=#.tdb");
    stand.gespeicherteNummer = QStringLiteral("012AB2025");
    stand.angaben.UNr = QStringLiteral("013 Ä/;=");
    stand.angaben.Name = QStringLiteral("Élodie \"Größ\", O'Neill\n2. Zeile");
    stand.angaben.Rasse = 2;
    stand.angaben.Rassenname = QStringLiteral("Caucasica");
    stand.datum = QDate(2025, 5, 17);
    stand.angabenGeändert = true;
    for (int nummer = 1; nummer <= flügel; ++nummer) {
        const Messart messart = nummer % 5 == 0 ? Messart::NurCubitalindex : Messart::AlleMessungen;
        const Flügelmessung messung{
            .punkte = probepunkte(nummer, messart),
            .messart = messart,
            .aufnahme = {static_cast<qint16>(1 + nummer % 4), 1200},
            .bilddatei = QStringLiteral("/Scans/Hain; 50%/Flügel %1.jpg").arg(nummer / 20)};
        stand.reihe.trageEin(static_cast<qint16>(nummer),
                             berechneIndizes(messung.punkte, messart, messung.aufnahme), messung,
                             format);
    }
    stand.reihe.alsUnverändertMerken();
    stand.messungenGeändert = flügel > 0;
    (void)MerkmalÜbernehmen(stand.merkmale, {3, 0, 2}, false);
    stand.flügel.bilddatei = QStringLiteral("/Scans/nächster.jpg");
    for (int i = 0; i < punkte; ++i) {
        stand.flügel.punkte.setzeNächsten(stand.flügel.messart, 100.1F / static_cast<float>(i + 1),
                                          3.7F);
    }
    stand.ansicht = QStringLiteral("Messen");
    return stand;
}

/// All of a session as one text, to compare by. Written for this, not by the code under test.
inline QString abbild(const Sitzungsstand& s) {
    QStringList teile{s.DatenbankPfad,
                      s.gespeicherteNummer,
                      s.datum.toString(Qt::ISODate),
                      QString::number(s.angabenGeändert),
                      QString::number(s.messungenGeändert),
                      QString::number(s.wiederholt),
                      s.ansicht,
                      QString::number(s.angaben.Rasse),
                      QString::number(static_cast<int>(s.angaben.Tiere)),
                      QString::number(static_cast<int>(s.merkmale.Modus)),
                      QString::number(static_cast<int>(s.merkmale.Tiere))};
    const Kolonieangaben& a = s.angaben;
    teile << a.Jahr << a.KNr << a.LV << a.ZNr << a.UNr << a.Volk << a.Name << a.Besitzer
          << a.Begattung << a.Rassenname << s.merkmale.Liste;
    for (const int summe : s.merkmale.Summen) {
        teile << QString::number(summe);
    }
    const auto zahl = [&teile](float wert) { teile << QString::number(wert, 'g', 9); };
    const auto messung = [&](const Flügelmessung& m) {
        for (int i = 1; i <= Messpunkte::Anzahl; ++i) {
            zahl(m.punkte.PunktX.at(i));
            zahl(m.punkte.PunktY.at(i));
        }
        for (const int wert :
             {int(m.punkte.AktuellerPunkt), int(m.punkte.GewählterPunkt),
              static_cast<int>(m.messart), int(m.aufnahme.Zoomfaktor), m.aufnahme.dpi}) {
            teile << QString::number(wert);
        }
        teile << m.bilddatei;
    };
    for (const CiZeile& z : s.reihe.ciZeilen()) {
        teile << QString::number(z.nummer) << z.wert << z.klasse;
    }
    for (const HiDvZeile& z : s.reihe.hiDvZeilen()) {
        teile << QString::number(z.nummer) << z.hi << z.klasse << z.dv;
    }
    for (int nummer = 0; nummer <= Messreihe::HöchsteFlügelzahl; ++nummer) {
        const Chartwerte& w = s.reihe.chartwerte(nummer);
        zahl(w.CI);
        zahl(w.HI);
        zahl(w.DV);
    }
    for (const auto& [nummer, m] : s.reihe.messungen()) {
        teile << QString::number(nummer);
        messung(m);
    }
    messung(s.flügel);
    return teile.join(u'|');
}

} // namespace tarvel
