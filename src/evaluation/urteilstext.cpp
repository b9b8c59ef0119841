#include "evaluation/urteilstext.h"

#include "measure/indexmuster.h"

#include <cmath>

namespace tarvel {

using namespace Qt::StringLiterals;

namespace {

/// A part of the basis: none at all, fewer than needed, or enough.
QString teil(int anzahl, int soll, const Texte& texte, Meldung keine, Meldung wenige,
             Meldung genug) {
    if (anzahl == 0) {
        return texte(keine);
    }
    return anzahl < soll ? texte(wenige).arg(anzahl).arg(soll) : texte(genug).arg(anzahl);
}

} // namespace

QString mitteltext(const Prüfwert& wert, const Zahlenformat& format) {
    const double mittel = wert.mittel.value_or(0);
    constexpr double Rundung = 0.005;
    return Format(mittel,
                  wert.fett && std::abs(mittel - wert.erlaubt) <= Rundung ? QStringView(u"0.0000")
                                                                          : muster::CI,
                  format);
}

QString mittelvergleich(const Prüfwert& wert, const Zahlenformat& format) {
    const QString grenze = Format(wert.erlaubt, u"0.0", format);
    const QString zeichen = wert.höchstens == wert.fett ? (wert.fett ? u" > "_s : u" ≥ "_s)
                                                        : (wert.fett ? u" < "_s : u" ≤ "_s);
    return wert.mittel ? mitteltext(wert, format) + zeichen + grenze
                       : zeichen.trimmed() + u' ' + grenze;
}

QString mangeltext(const Prüfwert& mangel, const Texte& texte, const Zahlenformat& format) {
    const QString bereich = klassenbereichtext(mangel.bereich);
    const QString gemessen = QString::number(mangel.gemessen.value_or(0));
    const QString erlaubt = zahltext(mangel.erlaubt, format);
    switch (mangel.art) {
    case Prüfung::Klassen:
        return texte(Meldung::MangelKlassen).arg(bereich, gemessen, erlaubt);
    case Prüfung::Nebengipfel:
        return texte(Text::Nebengipfel) + u' ' + bereich;
    case Prüfung::Mittelwert:
        return texte(mangel.höchstens ? Meldung::MangelMittelZuHoch : Meldung::MangelMittelZuTief)
            .arg(mitteltext(mangel, format), erlaubt);
    case Prüfung::Merkmal:
        break;
    }
    return texte(Meldung::MangelMerkmal).arg(mangel.name, gemessen, erlaubt);
}

QString unbeurteilttext(const Beurteilung& beurteilung, const QString& rasse, const Texte& texte) {
    if (!beurteilung.unbeurteilt) {
        return {};
    }
    switch (*beurteilung.unbeurteilt) {
    case Unbeurteilt::Ausgeschaltet:
        return texte(Meldung::BewertungAus);
    case Unbeurteilt::NichtsGemessen:
        return texte(Meldung::NochKeineMessung);
    case Unbeurteilt::FremdeRasse:
        return texte(Meldung::UnbeurteiltFremdeRasse).arg(rasse);
    case Unbeurteilt::MerkmaleUnlesbar:
        return texte(Meldung::UnbeurteiltMerkmale);
    case Unbeurteilt::AnteilUnberechenbar:
        break;
    }
    return beurteilung.fehler == Anteilfehler::KeineBienen
               ? texte(Meldung::MerkmaleOhnePanzer).arg(texte(Text::Panzerzeichen))
               : texte(Meldung::BewertungUnmöglich);
}

QString grundlagentext(const Umfang& umfang, const Texte& texte) {
    QString text = teil(umfang.Flügel, umfang.SollFlügel, texte, Meldung::GrundlageOhneFlügel,
                        Meldung::GrundlageWenigeFlügel, Meldung::GrundlageFlügel) +
                   u", "_s +
                   teil(umfang.Bienen, umfang.SollBienen, texte, Meldung::GrundlageOhneMerkmale,
                        Meldung::GrundlageWenigeMerkmale, Meldung::GrundlageMerkmale);
    if (umfang.ungleich) {
        text += u", "_s + texte(Meldung::GrundlageUngleich);
    }
    return umfang.vorläufig() ? texte(Meldung::GrundlageVorläufig).arg(text) : text;
}

} // namespace tarvel
